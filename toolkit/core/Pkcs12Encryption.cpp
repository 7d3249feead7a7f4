#include "toolkit/core/Pkcs12Encryption.h"

#include <algorithm>
#include <array>
#include <openssl/pkcs12.h>

#include "toolkit/core/AlgorithmParameters.h"
#include "toolkit/core/MozillaPbe.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

constexpr std::size_t maxSaltLength = 1024;

struct Pkcs12Row
{
    int nid;
    const char* cipher;
};

/** PKCS#12's own encryptions, all with SHA-1. */
constexpr std::array pkcs12Rows{
    Pkcs12Row{NID_pbe_WithSHA1And128BitRC4, "RC4"},
    Pkcs12Row{NID_pbe_WithSHA1And40BitRC4, "RC4-40"},
    Pkcs12Row{NID_pbe_WithSHA1And3_Key_TripleDES_CBC, "DES-EDE3-CBC"},
    Pkcs12Row{NID_pbe_WithSHA1And2_Key_TripleDES_CBC, "DES-EDE-CBC"},
    Pkcs12Row{NID_pbe_WithSHA1And128BitRC2_CBC, "RC2-CBC"},
    Pkcs12Row{NID_pbe_WithSHA1And40BitRC2_CBC, "RC2-40-CBC"},
};

/** The cipher of an encryption of PKCS#12's own; null for any other. */
const char* pkcs12Cipher(const X509_ALGOR* algorithm)
{
    const auto row = std::ranges::find(pkcs12Rows, OBJ_obj2nid(objectOf(algorithm)), &Pkcs12Row::nid);
    return row == pkcs12Rows.end() ? nullptr : row->cipher;
}

/** The older SEED schemes, which OpenSSL doesn't know as encryptions by password. */
bool isKoreanScheme(const X509_ALGOR* algorithm)
{
    const std::string oid = dottedOid(objectOf(algorithm));
    return oid == oids::pbkdf1Seed || oid == oids::seedCbc;
}

bool isKnown(const X509_ALGOR* algorithm)
{
    const int nid = OBJ_obj2nid(objectOf(algorithm));
    return pkcs12Cipher(algorithm) || isKoreanScheme(algorithm) ||
           EVP_PBE_find(EVP_PBE_TYPE_OUTER, nid, nullptr, nullptr, nullptr) == 1;
}

/** The source as often as it takes to fill whole blocks. */
void appendRepeated(SecretBytes& target, ByteView source, std::size_t block)
{
    const std::size_t length = block * ((source.size() + block - 1) / block);
    for (std::size_t i = 0; i < length; ++i)
        target.push_back(source[i % source.size()]);
}

/** Adds a number and 1 to another of the same length, both big-endian; the carry is dropped. */
void addAndOne(std::span<std::uint8_t> number, ByteView addend)
{
    unsigned carry = 1;
    for (std::size_t i = number.size(); i-- > 0; carry >>= 8) {
        carry += number[i] + addend[i];
        number[i] = static_cast<std::uint8_t>(carry);
    }
}

using DigestRun = Handle<EVP_MD_CTX, EVP_MD_CTX_free>;

/** Digests some bytes, and the digest again and again. */
void digestRepeatedly(EVP_MD_CTX* run, const EVP_MD* digest, ByteView data, int iterations,
                      std::span<std::uint8_t> result)
{
    for (int i = 0; i < iterations; ++i) {
        const ByteView input = i == 0 ? data : ByteView(result);
        const bool done = EVP_DigestInit_ex2(run, digest, nullptr) == 1 &&
                          EVP_DigestUpdate(run, input.data(), input.size()) == 1 &&
                          EVP_DigestFinal_ex(run, result.data(), nullptr) == 1;
        require(done, Code::CryptoUnavailable);
    }
}

CipherSetup pkcs12Setup(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password)
{
    const auto parameters = parametersOf<PbeHandle>(algorithm, ASN1_ITEM_rptr(PBEPARAM));
    require(parameters != nullptr, Code::PfxAlgorithm);
    const Pkcs12Source source{password.wide, saltBytes(parameters->salt),
                              static_cast<int>(iterationCount(parameters->iter))};
    const DigestHandle sha1 = crypto.digest("SHA1");
    CipherHandle cipher = crypto.cipher(pkcs12Cipher(algorithm));
    const auto keyLength = static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get()));
    const auto ivLength = static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get()));
    SecretBytes key = derivePkcs12(sha1.get(), Pkcs12Purpose::Key, source, keyLength);
    SecretBytes iv = derivePkcs12(sha1.get(), Pkcs12Purpose::InitialValue, source, ivLength);
    return {std::move(cipher), std::move(key), std::move(iv)};
}

/** PBES1 and PBES2. OpenSSL wipes what it derives. */
CipherRun startStandard(const Crypto& crypto, const X509_ALGOR* algorithm, ByteView password, bool encrypt)
{
    CipherRun run = owned<CipherRun>(EVP_CIPHER_CTX_new());
    const char* text = password.empty() ? "" : textOf(password).data();
    require(EVP_PBE_CipherInit_ex(const_cast<ASN1_OBJECT*>(objectOf(algorithm)), text,
                                  static_cast<int>(password.size()), algorithm->parameter, run.get(), encrypt,
                                  crypto.context(), nullptr) == 1,
            Code::PfxAlgorithm);
    return run;
}

std::int64_t pbes2Iterations(const X509_ALGOR* algorithm)
{
    const auto parameters = parametersOf<Pbes2Handle>(algorithm, ASN1_ITEM_rptr(PBE2PARAM));
    require(parameters && OBJ_obj2nid(objectOf(parameters->keyfunc)) == NID_id_pbkdf2, Code::PfxAlgorithm);
    const auto derivation = parametersOf<Pbkdf2Handle>(parameters->keyfunc, ASN1_ITEM_rptr(PBKDF2PARAM));
    require(derivation && derivation->salt->type == V_ASN1_OCTET_STRING, Code::PfxAlgorithm);
    saltBytes(derivation->salt->value.octet_string);
    return iterationCount(derivation->iter);
}

} // namespace

SecretBytes derivePkcs12(const EVP_MD* digest, Pkcs12Purpose purpose, const Pkcs12Source& source,
                         std::size_t length)
{
    const int digestLength = EVP_MD_get_size(digest);
    const int blockLength = EVP_MD_get_block_size(digest);
    require(digestLength > 0 && blockLength > 0, Code::PfxAlgorithm);
    const auto block = static_cast<std::size_t>(blockLength);
    SecretBytes input;
    input.reserve(3 * block + source.salt.size() + source.password.size());
    input.assign(block, static_cast<std::uint8_t>(purpose));
    appendRepeated(input, source.salt, block);
    appendRepeated(input, source.password, block);

    const DigestRun run = owned<DigestRun>(EVP_MD_CTX_new());
    SecretBytes part(static_cast<std::size_t>(digestLength));
    SecretBytes addend;
    SecretBytes derived;
    derived.reserve(length + part.size());
    while (true) {
        digestRepeatedly(run.get(), digest, input, source.iterations, part);
        derived.insert(derived.end(), part.begin(), part.end());
        if (derived.size() >= length)
            break;
        addend.clear();
        for (std::size_t i = 0; i < block; ++i)
            addend.push_back(part[i % part.size()]);
        for (std::size_t i = block; i < input.size(); i += block)
            addAndOne(std::span(input).subspan(i, block), addend);
    }
    derived.resize(length);
    return derived;
}

std::int64_t iterationCount(const ASN1_INTEGER* count)
{
    if (!count)
        return 1;
    std::int64_t iterations = 0;
    const bool negative = (ASN1_STRING_type(count) & V_ASN1_NEG) != 0;
    require(negative || ASN1_INTEGER_get_int64(&iterations, count) == 1, Code::PfxTooCostly);
    require(iterations >= 1, Code::PfxAlgorithm);
    return iterations;
}

ByteView saltBytes(const ASN1_STRING* salt)
{
    const ByteView bytes = contentOf(salt);
    require(!bytes.empty() && bytes.size() <= maxSaltLength, Code::PfxAlgorithm);
    return bytes;
}

std::int64_t iterationsOf(const X509_ALGOR* algorithm)
{
    require(isKnown(algorithm), Code::PfxAlgorithm);
    if (OBJ_obj2nid(objectOf(algorithm)) == NID_pbes2)
        return pbes2Iterations(algorithm);
    const auto parameters = parametersOf<PbeHandle>(algorithm, ASN1_ITEM_rptr(PBEPARAM));
    require(parameters != nullptr, Code::PfxAlgorithm);
    saltBytes(parameters->salt);
    return iterationCount(parameters->iter);
}

bool takesWidePassword(const X509_ALGOR* algorithm)
{
    return pkcs12Cipher(algorithm) != nullptr;
}

CipherRun startPbe(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password,
                   bool encrypt)
{
    if (pkcs12Cipher(algorithm))
        return startCipher(pkcs12Setup(crypto, algorithm, password), encrypt);
    if (isKoreanScheme(algorithm))
        return startCipher(setupFromAlgorithm(crypto, algorithm, textOf(password.narrow), INT_MAX), encrypt);
    return startStandard(crypto, algorithm, password.narrow, encrypt);
}

CipherRun startDecryption(const Crypto& crypto, const X509_ALGOR* algorithm, const PasswordReading& password)
{
    return startPbe(crypto, algorithm, password, false);
}

CipherRun startMozillaDecryption(const Crypto& crypto, const X509_ALGOR* algorithm,
                                 const PasswordReading& password)
{
    const auto parameters = parametersOf<PbeHandle>(algorithm, ASN1_ITEM_rptr(PBEPARAM));
    require(parameters != nullptr, Code::PfxAlgorithm);
    const auto iterations = static_cast<int>(iterationCount(parameters->iter));
    return startCipher(
        mozillaSetup(crypto, algorithm, password.wide, saltBytes(parameters->salt), iterations), false);
}

} // namespace qgtk
