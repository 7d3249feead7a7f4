#pragma once

#include "quillgate/algorithms.h"
#include "toolkit/core/AsymmetricCipher.h"
#include "toolkit/core/Hash.h"
#include "toolkit/core/KeyAgreement.h"
#include "toolkit/core/KeyGeneration.h"
#include "toolkit/core/Mac.h"
#include "toolkit/core/Pem.h"
#include "toolkit/core/Signature.h"
#include "toolkit/interface/Interface.h"

namespace qgtk {

/** OpenSSL's name of the hash that a caller means; 0 is the context's. */
inline const char* digestFor(const Context& context, int hashAlg)
{
    return digestOfCode(hashAlg == QG_HASH_CONTEXT ? context.hashAlgorithm : hashAlg);
}

inline SignatureForm signatureForm(const Context& context, int hashAlg)
{
    return {digestFor(context, hashAlg), context.cryptoSettings.rsa};
}

inline EncryptionForm encryptionForm(const Context& context)
{
    return {context.cryptoSettings.rsa, digestOfCode(context.hashAlgorithm)};
}

/** A pass with the context's key. Throws NoCipherKey. */
inline CipherPass cipherPass(const Context& context, bool encrypts)
{
    const CryptoSettings& settings = context.cryptoSettings;
    require(settings.cipherKey.has_value(), Code::NoCipherKey);
    return {*settings.cipherKey, encrypts, settings.pads};
}

/** Encrypts or decrypts a byte string with the context's key. */
inline int runOnBytes(void* handle, bool encrypts, const BINSTR* data, BINSTR* result) noexcept
{
    return callOn(handle, [&](Context& context) {
        assign(result, cipherBytes(context.crypto(), cipherPass(context, encrypts), viewOf(data)));
    });
}

/** The same from file to file. */
inline int runOnFile(void* handle, bool encrypts, const char* source, const char* target) noexcept
{
    return callOn(handle, [&](Context& context) {
        cipherFile(context.crypto(), cipherPass(context, encrypts), pathArgument(source),
                   pathArgument(target));
    });
}

/** Signs data with a private key to which the certificate or public key belongs. */
inline Bytes signWithPair(Context& context, const BINSTR* publicKey, const BINSTR* privateKey, int hashAlg,
                          const DataInput& data)
{
    const KeyHandle key = privateKeyFrom(context.crypto(), viewOf(privateKey));
    requirePair(publicKeyFrom(context.crypto(), viewOf(publicKey)), key);
    return signData(context.crypto(), key, signatureForm(context, hashAlg), data);
}

/** Signs a file and writes the bare signature to another. */
inline int signFile(void* handle, const BINSTR* publicKey, const BINSTR* privateKey, int hashAlg,
                    const char* source, const char* signature) noexcept
{
    return callOn(handle, [&](Context& context) {
        const std::string target = pathArgument(signature);
        writeFile(target, signWithPair(context, publicKey, privateKey, hashAlg, pathArgument(source)));
    });
}

/** Verifies a file by such a signature. */
inline int verifyFile(void* handle, const BINSTR* publicKey, int hashAlg, const char* source,
                      const char* signature) noexcept
{
    return callOn(handle, [&](Context& context) {
        const KeyHandle key = publicKeyFrom(context.crypto(), viewOf(publicKey));
        const SecretBytes value = readFile(pathArgument(signature), maxObjectLength);
        verifyData(context.crypto(), key, signatureForm(context, hashAlg), pathArgument(source), value);
    });
}

/** Whether a caller gives the public half of a pair. Throws AlgorithmCodeUnknown. */
inline bool isPublicKey(int keyType)
{
    require(keyType == QG_KEY_PUBLIC || keyType == QG_KEY_PRIVATE, Code::AlgorithmCodeUnknown);
    return keyType == QG_KEY_PUBLIC;
}

/** Encrypts or decrypts with the half of a pair that a caller gives. */
template <typename WithPublic, typename WithPrivate>
int runOnKey(void* handle, int keyType, const BINSTR* key, const BINSTR* data, BINSTR* result,
             WithPublic withPublic, WithPrivate withPrivate) noexcept
{
    return callOn(handle, [&](Context& context) {
        const Crypto& crypto = context.crypto();
        const EncryptionForm form = encryptionForm(context);
        assign(result, isPublicKey(keyType)
                           ? withPublic(crypto, publicKeyFrom(crypto, viewOf(key)), form, viewOf(data))
                           : withPrivate(crypto, privateKeyFrom(crypto, viewOf(key)), form, viewOf(data)));
    });
}

} // namespace qgtk
