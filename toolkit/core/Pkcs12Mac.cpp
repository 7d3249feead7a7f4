#include "toolkit/core/Pkcs12Mac.h"

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/KeyProtection.h"
#include "toolkit/core/Oid.h"
#include "toolkit/core/Pkcs12Encryption.h"

namespace qgtk {

namespace {

constexpr int saltLength = 16;

/** What is stored to compare with, and how it comes about. */
struct StoredMac
{
    const X509_ALGOR* algorithm = nullptr;
    ByteView value;
    bool isPbmac1 = false;
};

StoredMac storedMac(const MacParts* mac)
{
    StoredMac stored;
    const ASN1_OCTET_STRING* value = nullptr;
    X509_SIG_get0(mac->digest, &stored.algorithm, &value);
    stored.value = contentOf(value);
    stored.isPbmac1 = OBJ_obj2nid(objectOf(stored.algorithm)) == NID_pbmac1;
    return stored;
}

/** Parameters of PBMAC1, which have the shape of those of PBES2: a derivation and an algorithm. */
Pbes2Handle pbmac1Parameters(const X509_ALGOR* algorithm)
{
    auto parameters = parametersOf<Pbes2Handle>(algorithm, ASN1_ITEM_rptr(PBE2PARAM));
    require(parameters && OBJ_obj2nid(objectOf(parameters->keyfunc)) == NID_id_pbkdf2, Code::PfxAlgorithm);
    return parameters;
}

Pbkdf2Handle pbkdf2Parameters(const X509_ALGOR* derivation)
{
    auto parameters = parametersOf<Pbkdf2Handle>(derivation, ASN1_ITEM_rptr(PBKDF2PARAM));
    require(parameters && parameters->keylength, Code::PfxAlgorithm);
    return parameters;
}

Bytes hmac(const Crypto& crypto, const char* digest, const SecretBytes& key, ByteView content)
{
    Bytes value(EVP_MAX_MD_SIZE);
    std::size_t length = 0;
    require(EVP_Q_mac(crypto.context(), "HMAC", nullptr, digest, nullptr, key.data(), key.size(),
                      content.data(), content.size(), value.data(), value.size(), &length) != nullptr,
            Code::PfxAlgorithm);
    value.resize(length);
    return value;
}

/** The check of RFC 7292 under a password. */
Bytes classicMac(const Crypto& crypto, const EVP_MD* digest, const Pkcs12Source& source, ByteView content)
{
    const auto length = static_cast<std::size_t>(EVP_MD_get_size(digest));
    const SecretBytes key = derivePkcs12(digest, Pkcs12Purpose::Mac, source, length);
    return hmac(crypto, EVP_MD_get0_name(digest), key, content);
}

bool isEqual(ByteView left, ByteView right)
{
    return left.size() == right.size() && CRYPTO_memcmp(left.data(), right.data(), left.size()) == 0;
}

DigestHandle digestOf(const Crypto& crypto, const X509_ALGOR* algorithm)
{
    DigestHandle digest(EVP_MD_fetch(crypto.context(), dottedOid(objectOf(algorithm)).c_str(), nullptr));
    require(digest != nullptr, Code::PfxAlgorithm);
    return digest;
}

std::optional<std::size_t> verifyPbmac1(const Crypto& crypto, const StoredMac& stored, ByteView content,
                                        const std::vector<PasswordReading>& readings)
{
    const Pbes2Handle parameters = pbmac1Parameters(stored.algorithm);
    const char* digest = hmacDigest(objectOf(parameters->encryption));
    const int length = static_cast<int>(ASN1_INTEGER_get(pbkdf2Parameters(parameters->keyfunc)->keylength));
    require(length >= 16 && length <= EVP_MAX_MD_SIZE, Code::PfxAlgorithm);
    return firstReading(readings, &PasswordReading::narrow, [&](const PasswordReading& reading) {
        const SecretBytes key =
            derivePbkdf2(crypto, parameters->keyfunc, textOf(reading.narrow), INT_MAX, length);
        return isEqual(hmac(crypto, digest, key, content), stored.value);
    });
}

} // namespace

std::int64_t macIterations(const MacParts* mac)
{
    const StoredMac stored = storedMac(mac);
    if (!stored.isPbmac1) {
        saltBytes(mac->salt);
        return iterationCount(mac->iterations);
    }
    const Pbes2Handle parameters = pbmac1Parameters(stored.algorithm);
    return iterationCount(pbkdf2Parameters(parameters->keyfunc)->iter);
}

std::optional<std::size_t> verifyMac(const Crypto& crypto, const MacParts* mac, ByteView content,
                                     const std::vector<PasswordReading>& readings)
{
    const StoredMac stored = storedMac(mac);
    if (stored.isPbmac1)
        return verifyPbmac1(crypto, stored, content, readings);
    const DigestHandle digest = digestOf(crypto, stored.algorithm);
    const ByteView salt = saltBytes(mac->salt);
    const int iterations = static_cast<int>(iterationCount(mac->iterations));
    return firstReading(readings, &PasswordReading::wide, [&](const PasswordReading& reading) {
        return isEqual(classicMac(crypto, digest.get(), {reading.wide, salt, iterations}, content),
                       stored.value);
    });
}

void makeMac(const Crypto& crypto, PfxParts* pfx, ByteView content, const PasswordReading& password,
             const char* digest, int iterations)
{
    Bytes salt(saltLength);
    crypto.random(salt);
    const DigestHandle fetched = crypto.digest(digest);
    const Bytes value = classicMac(crypto, fetched.get(), {password.wide, salt, iterations}, content);
    pfx->mac = newItem<Handle<MacParts, freeMac>>(macItem()).release();
    X509_ALGOR* algorithm = nullptr;
    ASN1_OCTET_STRING* stored = nullptr;
    X509_SIG_getm(pfx->mac->digest, &algorithm, &stored);
    pfx->mac->iterations = owned<Handle<ASN1_INTEGER, ASN1_INTEGER_free>>(ASN1_INTEGER_new()).release();
    const bool made =
        X509_ALGOR_set0(algorithm, OBJ_nid2obj(EVP_MD_get_type(fetched.get())), V_ASN1_NULL, nullptr) &&
        ASN1_OCTET_STRING_set(stored, value.data(), static_cast<int>(value.size())) &&
        ASN1_OCTET_STRING_set(pfx->mac->salt, salt.data(), saltLength) &&
        ASN1_INTEGER_set(pfx->mac->iterations, iterations);
    if (!made)
        throw std::bad_alloc();
}

} // namespace qgtk
