#include "toolkit/core/Signature.h"

#include <openssl/rsa.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

bool setScheme(EVP_PKEY_CTX* run, const KeyHandle& key, const SignatureForm& form, int saltLength)
{
    // Keys of elliptic curves, and RSA keys that are for PSS alone, have but one form.
    if (form.rsa == RsaScheme::V15 || !EVP_PKEY_is_a(key.get(), "RSA"))
        return true;
    return EVP_PKEY_CTX_set_rsa_padding(run, RSA_PKCS1_PSS_PADDING) == 1 &&
           EVP_PKEY_CTX_set_rsa_pss_saltlen(run, saltLength) == 1;
}

/** Begins with EVP_DigestSignInit_ex or its counterpart and goes through the data with the update function.
 */
template <typename Init, typename Update>
DigestRun digestData(Init init, Update update, const Crypto& crypto, const KeyHandle& key,
                     const SignatureForm& form, int saltLength, const DataInput& data)
{
    DigestRun run = owned<DigestRun>(EVP_MD_CTX_new());
    EVP_PKEY_CTX* keyRun = nullptr;
    const bool begun =
        init(run.get(), &keyRun, form.digest, crypto.context(), nullptr, key.get(), nullptr) == 1 &&
        setScheme(keyRun, key, form, saltLength);
    require(begun, Code::KeyUnsuitable);
    data.forEachPiece([&](ByteView piece) {
        require(update(run.get(), piece.data(), piece.size()) == 1, Code::CryptoUnavailable);
    });
    return run;
}

} // namespace

Bytes signData(const Crypto& crypto, const KeyHandle& key, const SignatureForm& form, const DataInput& data)
{
    const DigestRun run = digestData(EVP_DigestSignInit_ex, EVP_DigestSignUpdate, crypto, key, form,
                                     RSA_PSS_SALTLEN_DIGEST, data);
    std::size_t length = 0;
    require(EVP_DigestSignFinal(run.get(), nullptr, &length) == 1, Code::KeyUnsuitable);
    Bytes signature(length);
    require(EVP_DigestSignFinal(run.get(), signature.data(), &length) == 1, Code::KeyUnsuitable);
    signature.resize(length);
    return signature;
}

void verifyData(const Crypto& crypto, const KeyHandle& key, const SignatureForm& form, const DataInput& data,
                ByteView signature)
{
    const DigestRun run = digestData(EVP_DigestVerifyInit_ex, EVP_DigestVerifyUpdate, crypto, key, form,
                                     RSA_PSS_SALTLEN_AUTO, data);
    require(EVP_DigestVerifyFinal(run.get(), signature.data(), signature.size()) == 1, Code::SignatureWrong);
}

} // namespace qgtk
