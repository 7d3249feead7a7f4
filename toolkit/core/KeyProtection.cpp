#include "toolkit/core/KeyProtection.h"

#include <algorithm>
#include <array>
#include <climits>
#include <openssl/core_names.h>
#include <openssl/params.h>

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

constexpr std::size_t maxSaltLength = 1024;
constexpr std::size_t seedKeyLength = 16;
constexpr std::size_t pbkdf1Length = 20;
constexpr std::string_view fixedSeedIv = "0123456789012345";

struct CipherRow
{
    KeyCipher cipher;
    std::string_view oid;
    const char* name;
};

constexpr std::array cipherRows{
    CipherRow{KeyCipher::Seed, "1.2.410.200004.1.4", "SEED-CBC"},
    CipherRow{KeyCipher::Aria128, "1.2.410.200046.1.1.2", "ARIA-128-CBC"},
    CipherRow{KeyCipher::Aria192, "1.2.410.200046.1.1.7", "ARIA-192-CBC"},
    CipherRow{KeyCipher::Aria256, "1.2.410.200046.1.1.12", "ARIA-256-CBC"},
    CipherRow{KeyCipher::Aes128, "2.16.840.1.101.3.4.1.2", "AES-128-CBC"},
    CipherRow{KeyCipher::Aes192, "2.16.840.1.101.3.4.1.22", "AES-192-CBC"},
    CipherRow{KeyCipher::Aes256, "2.16.840.1.101.3.4.1.42", "AES-256-CBC"},
    CipherRow{KeyCipher::TripleDes, "1.2.840.113549.3.7", "DES-EDE3-CBC"},
};

struct PrfRow
{
    KeyPrf prf;
    std::string_view oid;
    const char* digest;
    int nid;
};

constexpr std::array prfRows{
    PrfRow{KeyPrf::Sha1, "1.2.840.113549.2.7", "SHA1", NID_hmacWithSHA1},
    PrfRow{KeyPrf::Sha224, "1.2.840.113549.2.8", "SHA224", NID_hmacWithSHA224},
    PrfRow{KeyPrf::Sha256, "1.2.840.113549.2.9", "SHA256", NID_hmacWithSHA256},
    PrfRow{KeyPrf::Sha384, "1.2.840.113549.2.10", "SHA384", NID_hmacWithSHA384},
    PrfRow{KeyPrf::Sha512, "1.2.840.113549.2.11", "SHA512", NID_hmacWithSHA512},
};

/** What the key is derived from. */
struct Derivation
{
    const char* kdf;
    const char* digest;
    std::string_view password;
    ByteView salt;
    unsigned iterations;
};

template <typename Rows>
const auto& rowOf(const Rows& rows, const ASN1_OBJECT* object)
{
    const std::string oid = dottedOid(object);
    const auto row = std::ranges::find(rows, oid, [](const auto& candidate) { return candidate.oid; });
    require(row != rows.end(), Code::KeyAlgorithmUnknown);
    return *row;
}

ByteView checkedSalt(const ASN1_STRING* salt)
{
    const ByteView bytes = contentOf(salt);
    require(!bytes.empty() && bytes.size() <= maxSaltLength, Code::KeyParameters);
    return bytes;
}

unsigned checkedIterations(const ASN1_INTEGER* count, int maxIterations)
{
    std::int64_t iterations = 0;
    const bool negative = (ASN1_STRING_type(count) & V_ASN1_NEG) != 0;
    require(negative || ASN1_INTEGER_get_int64(&iterations, count) == 1, Code::KeyTooCostly);
    require(iterations >= 1, Code::KeyParameters);
    require(iterations <= maxIterations, Code::KeyTooCostly);
    return static_cast<unsigned>(iterations);
}

SecretBytes derive(const Crypto& crypto, const Derivation& from, std::size_t length)
{
    const KdfHandle kdf = crypto.kdf(from.kdf);
    const KdfRun run = owned<KdfRun>(EVP_KDF_CTX_new(kdf.get()));
    // An empty view may hold a null pointer, which the parameter would take for a missing password.
    const char* password = from.password.empty() ? "" : from.password.data();
    unsigned iterations = from.iterations;
    int anyLengths = 1;
    OSSL_PARAM parameters[] = {
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_PASSWORD, const_cast<char*>(password),
                                          from.password.size()),
        OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_SALT, const_cast<std::uint8_t*>(from.salt.data()),
                                          from.salt.size()),
        OSSL_PARAM_construct_uint(OSSL_KDF_PARAM_ITER, &iterations),
        OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, const_cast<char*>(from.digest), 0),
        OSSL_PARAM_construct_int(OSSL_KDF_PARAM_PKCS5, &anyLengths),
        OSSL_PARAM_construct_end()};
    SecretBytes key(length);
    require(EVP_KDF_derive(run.get(), key.data(), key.size(), parameters) == 1, Code::KeyUndecryptable);
    return key;
}

CipherSetup setupPbkdf1(const Crypto& crypto, const X509_ALGOR* algorithm, std::string_view password,
                        int maxIterations, bool fixedIv)
{
    const auto parameters = parametersOf<PbeHandle>(algorithm, ASN1_ITEM_rptr(PBEPARAM));
    require(parameters != nullptr, Code::KeyDamaged);
    const Derivation from{"PBKDF1", "SHA1", password, checkedSalt(parameters->salt),
                          checkedIterations(parameters->iter, maxIterations)};
    SecretBytes derived = derive(crypto, from, pbkdf1Length);
    const auto rest = derived.begin() + seedKeyLength;
    SecretBytes iv(fixedSeedIv.begin(), fixedSeedIv.end());
    if (!fixedIv) {
        Bytes hashed = crypto.hash("SHA1", {&*rest, pbkdf1Length - seedKeyLength});
        iv.assign(hashed.begin(), hashed.begin() + static_cast<std::ptrdiff_t>(fixedSeedIv.size()));
        OPENSSL_cleanse(hashed.data(), hashed.size());
    }
    derived.resize(seedKeyLength);
    return {crypto.cipher("SEED-CBC"), std::move(derived), std::move(iv)};
}

const char* prfDigest(const X509_ALGOR* prf)
{
    if (!prf)
        return "SHA1";
    return hmacDigest(objectOf(prf));
}

/** The initial value: an octet string of one block. */
SecretBytes checkedIv(const X509_ALGOR* encryption, const EVP_CIPHER* cipher)
{
    const void* parameters = nullptr;
    int type = V_ASN1_UNDEF;
    X509_ALGOR_get0(nullptr, &type, &parameters, encryption);
    require(type == V_ASN1_OCTET_STRING, Code::KeyParameters);
    const ByteView iv = contentOf(static_cast<const ASN1_STRING*>(parameters));
    require(iv.size() == static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher)), Code::KeyParameters);
    return {iv.begin(), iv.end()};
}

Pbes2Handle pbes2Parameters(const X509_ALGOR* algorithm)
{
    auto parameters = parametersOf<Pbes2Handle>(algorithm, ASN1_ITEM_rptr(PBE2PARAM));
    require(parameters != nullptr, Code::KeyDamaged);
    return parameters;
}

const CipherRow& cipherRowOf(const PBE2PARAM* parameters)
{
    return rowOf(cipherRows, objectOf(parameters->encryption));
}

CipherSetup setupPbes2(const Crypto& crypto, const X509_ALGOR* algorithm, std::string_view password,
                       int maxIterations)
{
    const Pbes2Handle parameters = pbes2Parameters(algorithm);
    CipherHandle cipher = crypto.cipher(cipherRowOf(parameters.get()).name);
    SecretBytes iv = checkedIv(parameters->encryption, cipher.get());
    SecretBytes key = derivePbkdf2(crypto, parameters->keyfunc, password, maxIterations,
                                   EVP_CIPHER_get_key_length(cipher.get()));
    return {std::move(cipher), std::move(key), std::move(iv)};
}

/** The scheme's identifier. Throws KeyAlgorithmUnknown for one that is none of the three. */
std::string schemeOf(const X509_ALGOR* algorithm)
{
    std::string oid = dottedOid(objectOf(algorithm));
    require(oid == oids::pbes2 || oid == oids::pbkdf1Seed || oid == oids::seedCbc, Code::KeyAlgorithmUnknown);
    return oid;
}

AlgorithmHandle makePbkdf1(const char* oid, int iterations, Bytes salt)
{
    auto parameters = owned<PbeHandle>(PBEPARAM_new());
    auto packed = owned<StringHandle>(ASN1_STRING_type_new(V_ASN1_SEQUENCE));
    auto algorithm = owned<AlgorithmHandle>(X509_ALGOR_new());
    ASN1_STRING* target = packed.get();
    const bool made = ASN1_OCTET_STRING_set(parameters->salt, salt.data(), static_cast<int>(salt.size())) &&
                      ASN1_INTEGER_set(parameters->iter, iterations) &&
                      ASN1_item_pack(parameters.get(), ASN1_ITEM_rptr(PBEPARAM), &target) &&
                      X509_ALGOR_set0(algorithm.get(), OBJ_txt2obj(oid, 1), V_ASN1_SEQUENCE, packed.get());
    if (!made)
        throw std::bad_alloc();
    (void)packed.release();
    return algorithm;
}

AlgorithmHandle makePbes2(const Crypto& crypto, const KeyProtection& protection, Bytes salt)
{
    const auto cipherRow = std::ranges::find(cipherRows, protection.cipher, &CipherRow::cipher);
    const auto prfRow = std::ranges::find(prfRows, protection.prf, &PrfRow::prf);
    require(cipherRow != cipherRows.end() && prfRow != prfRows.end(), Code::KeyParameters);
    const CipherHandle cipher = crypto.cipher(cipherRow->name);
    Bytes iv(static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get())));
    crypto.random(iv);
    AlgorithmHandle algorithm(PKCS5_pbe2_set_iv_ex(cipher.get(), protection.iterations, salt.data(),
                                                   static_cast<int>(salt.size()), iv.data(), prfRow->nid,
                                                   crypto.context()));
    require(algorithm != nullptr, Code::CryptoUnavailable);
    return algorithm;
}

} // namespace

const char* hmacDigest(const ASN1_OBJECT* object)
{
    return rowOf(prfRows, object).digest;
}

SecretBytes derivePbkdf2(const Crypto& crypto, const X509_ALGOR* keyFunction, std::string_view password,
                         int maxIterations, int keyLength)
{
    require(OBJ_obj2nid(objectOf(keyFunction)) == NID_id_pbkdf2, Code::KeyAlgorithmUnknown);
    const auto parameters = parametersOf<Pbkdf2Handle>(keyFunction, ASN1_ITEM_rptr(PBKDF2PARAM));
    require(parameters != nullptr, Code::KeyDamaged);
    require(parameters->salt->type == V_ASN1_OCTET_STRING, Code::KeyParameters);
    const bool lengthFits = !parameters->keylength || ASN1_INTEGER_get(parameters->keylength) == keyLength;
    require(lengthFits, Code::KeyParameters);
    const Derivation from{"PBKDF2", prfDigest(parameters->prf), password,
                          checkedSalt(parameters->salt->value.octet_string),
                          checkedIterations(parameters->iter, maxIterations)};
    return derive(crypto, from, static_cast<std::size_t>(keyLength));
}

CipherSetup setupFromAlgorithm(const Crypto& crypto, const X509_ALGOR* algorithm, std::string_view password,
                               int maxIterations)
{
    const std::string scheme = schemeOf(algorithm);
    if (scheme == oids::pbes2)
        return setupPbes2(crypto, algorithm, password, maxIterations);
    return setupPbkdf1(crypto, algorithm, password, maxIterations, scheme == oids::seedCbc);
}

KeyCipher cipherOfAlgorithm(const X509_ALGOR* algorithm)
{
    if (schemeOf(algorithm) != oids::pbes2)
        return KeyCipher::Seed;
    return cipherRowOf(pbes2Parameters(algorithm).get()).cipher;
}

AlgorithmHandle makeAlgorithm(const Crypto& crypto, const KeyProtection& protection)
{
    const bool saltFits =
        protection.saltLength >= 1 && protection.saltLength <= static_cast<int>(maxSaltLength);
    require(saltFits && protection.iterations >= 1, Code::KeyParameters);
    Bytes salt(static_cast<std::size_t>(protection.saltLength));
    crypto.random(salt);
    if (protection.scheme == KeyScheme::Pbes2)
        return makePbes2(crypto, protection, std::move(salt));
    const bool old = protection.scheme == KeyScheme::Pbkdf1SeedOld;
    return makePbkdf1(old ? oids::seedCbc : oids::pbkdf1Seed, protection.iterations, std::move(salt));
}

} // namespace qgtk
