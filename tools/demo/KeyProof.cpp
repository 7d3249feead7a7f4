#include "KeyProof.h"

#include <array>
#include <memory>
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <openssl/x509.h>
#include <vector>

namespace {

template <auto Free>
struct Deleter
{
    template <typename T>
    void operator()(T* object) const
    {
        Free(object);
    }
};
using KeyPtr = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using CertificatePtr = std::unique_ptr<X509, Deleter<X509_free>>;
using DigestPtr = std::unique_ptr<EVP_MD_CTX, Deleter<EVP_MD_CTX_free>>;

const unsigned char* bytes(const char* data)
{
    return reinterpret_cast<const unsigned char*>(data);
}

KeyPtr readKey(const char* key, int length)
{
    const unsigned char* cursor = bytes(key);
    return KeyPtr(d2i_AutoPrivateKey(nullptr, &cursor, length));
}

std::vector<unsigned char> sign(EVP_PKEY* key, const std::array<unsigned char, 64>& text)
{
    const DigestPtr context(EVP_MD_CTX_new());
    std::size_t length = 0;
    if (EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, key) != 1 ||
        EVP_DigestSign(context.get(), nullptr, &length, text.data(), text.size()) != 1)
        return {};
    std::vector<unsigned char> signature(length);
    if (EVP_DigestSign(context.get(), signature.data(), &length, text.data(), text.size()) != 1)
        return {};
    signature.resize(length);
    return signature;
}

} // namespace

std::string sha256(const char* data, int length)
{
    if (length < 1)
        return {};
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int digestLength = 0;
    EVP_Digest(data, static_cast<std::size_t>(length), digest.data(), &digestLength, EVP_sha256(), nullptr);
    std::string text;
    for (unsigned int i = 0; i < digestLength; ++i) {
        static const char digits[] = "0123456789abcdef";
        text += digits[digest.at(i) >> 4];
        text += digits[digest.at(i) & 15];
    }
    return text;
}

std::string proveKey(const char* certificate, int certificateLength, const char* key, int keyLength)
{
    const unsigned char* cursor = bytes(certificate);
    const CertificatePtr holder(d2i_X509(nullptr, &cursor, certificateLength));
    if (!holder)
        return "the certificate cannot be read";
    const KeyPtr privateKey = readKey(key, keyLength);
    if (!privateKey)
        return "the key cannot be read";

    std::array<unsigned char, 64> text{};
    RAND_bytes(text.data(), static_cast<int>(text.size()));
    const std::vector<unsigned char> signature = sign(privateKey.get(), text);
    if (signature.empty())
        return "the key does not sign";

    const DigestPtr context(EVP_MD_CTX_new());
    if (EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, X509_get0_pubkey(holder.get())) !=
            1 ||
        EVP_DigestVerify(context.get(), signature.data(), signature.size(), text.data(), text.size()) != 1)
        return "the signature does not verify with the certificate";
    return {};
}
