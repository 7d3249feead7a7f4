#include "toolkit/core/AsymmetricCipher.h"

#include <openssl/rsa.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

/** One of OpenSSL's operations of a key on bytes, and what it means when it fails. */
struct KeyOperation
{
    int (*begin)(EVP_PKEY_CTX*);
    int (*run)(EVP_PKEY_CTX*, unsigned char*, std::size_t*, const unsigned char*, std::size_t);
    Code failure;
};

constexpr KeyOperation encryption{EVP_PKEY_encrypt_init, EVP_PKEY_encrypt, Code::DataLength};
constexpr KeyOperation decryption{EVP_PKEY_decrypt_init, EVP_PKEY_decrypt, Code::NotDecryptable};
constexpr KeyOperation signing{EVP_PKEY_sign_init, EVP_PKEY_sign, Code::DataLength};
constexpr KeyOperation recovery{EVP_PKEY_verify_recover_init, EVP_PKEY_verify_recover, Code::NotDecryptable};

bool setPadding(EVP_PKEY_CTX* run, const EncryptionForm& form)
{
    if (form.rsa == RsaScheme::V15)
        return EVP_PKEY_CTX_set_rsa_padding(run, RSA_PKCS1_PADDING) == 1;
    return EVP_PKEY_CTX_set_rsa_padding(run, RSA_PKCS1_OAEP_PADDING) == 1 &&
           EVP_PKEY_CTX_set_rsa_oaep_md_name(run, form.oaepDigest, nullptr) == 1;
}

SecretBytes apply(const KeyOperation& operation, const Crypto& crypto, const KeyHandle& key,
                  const EncryptionForm& form, ByteView data)
{
    require(EVP_PKEY_is_a(key.get(), "RSA") == 1, Code::KeyUnsuitable);
    const KeyRun run = runWith(crypto, key);
    require(operation.begin(run.get()) == 1 && setPadding(run.get(), form), Code::KeyUnsuitable);
    std::size_t length = static_cast<std::size_t>(EVP_PKEY_get_size(key.get()));
    SecretBytes result(length);
    require(operation.run(run.get(), result.data(), &length, data.data(), data.size()) == 1,
            operation.failure);
    result.resize(length);
    return result;
}

} // namespace

SecretBytes encryptFor(const Crypto& crypto, const KeyHandle& publicKey, const EncryptionForm& form,
                       ByteView data)
{
    return apply(encryption, crypto, publicKey, form, data);
}

SecretBytes decryptWith(const Crypto& crypto, const KeyHandle& privateKey, const EncryptionForm& form,
                        ByteView data)
{
    return apply(decryption, crypto, privateKey, form, data);
}

SecretBytes encryptWithPrivate(const Crypto& crypto, const KeyHandle& privateKey, const EncryptionForm& form,
                               ByteView data)
{
    require(form.rsa == RsaScheme::V15, Code::NotSupported);
    return apply(signing, crypto, privateKey, form, data);
}

SecretBytes decryptWithPublic(const Crypto& crypto, const KeyHandle& publicKey, const EncryptionForm& form,
                              ByteView data)
{
    require(form.rsa == RsaScheme::V15, Code::NotSupported);
    return apply(recovery, crypto, publicKey, form, data);
}

} // namespace qgtk
