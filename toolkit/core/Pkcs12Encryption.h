#pragma once

#include "toolkit/core/Crypto.h"
#include "toolkit/core/Pkcs12Password.h"

namespace qgtk {

/** What is derived from a password (RFC 7292, B.3). */
enum class Pkcs12Purpose : std::uint8_t
{
    Key = 1,
    InitialValue = 2,
    Mac = 3
};

/** What a derivation of PKCS#12's own starts from. */
struct Pkcs12Source
{
    ByteView password; /**< see PasswordReading::wide */
    ByteView salt;     /**< not empty */
    int iterations;    /**< at least 1 */
};

/** Derives secret bytes (RFC 7292, B.2). OpenSSL's own leaves the password in freed memory. */
SecretBytes derivePkcs12(const EVP_MD* digest, Pkcs12Purpose purpose, const Pkcs12Source& source,
                         std::size_t length);

/**
 * The number in an iteration count; 1 for an absent one. Throws PfxAlgorithm below 1, PfxTooCostly when it
 * needs more than 64 bits.
 */
std::int64_t iterationCount(const ASN1_INTEGER* count);

/** A salt's bytes. Throws PfxAlgorithm unless it has 1 to 1024. */
ByteView saltBytes(const ASN1_STRING* salt);

/**
 * The iterations that an encryption asks for; nothing is derived yet. Throws PfxAlgorithm for one that is
 * unknown or has unusable parameters, PfxTooCostly.
 */
std::int64_t iterationsOf(const X509_ALGOR* algorithm);

/** Says whether an encryption takes the password in its wide form, else in the narrow one. */
bool takesWidePassword(const X509_ALGOR* algorithm);

/**
 * Encrypts or decrypts with the algorithm that an AlgorithmIdentifier names: PKCS#12's own (RFC 7292, C),
 * PBES1 and PBES2 with every cipher that OpenSSL has, and the SEED schemes of the Korean PKIs. False when the
 * padding does not come out right. Throws PfxAlgorithm, CryptoUnavailable. iterationsOf comes first.
 */
template <typename Buffer>
bool runPbe(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password, bool encrypt,
            ByteView data, Buffer& result);

/** Begins what runPbe does. */
CipherRun startPbe(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password,
                   bool encrypt);

/** Begins to decrypt what runPbe decrypts. */
CipherRun startDecryption(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password);

/** Begins to decrypt what hasMozillaForm, with the wide password. iterationsOf comes first. Throws as runPbe.
 */
CipherRun startMozillaDecryption(const Crypto& crypto, const X509_ALGOR* algorithm,
                                 const PasswordReading& password);

} // namespace qgtk

#include "toolkit/core/CipherRun.h"

template <typename Buffer>
bool qgtk::runPbe(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password,
                  bool encrypt, ByteView data, Buffer& result)
{
    return runCipher(startPbe(crypto, algorithm, password, encrypt).get(), data, result);
}
