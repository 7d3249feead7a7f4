#include "toolkit/core/Pkcs12Import.h"

#include <algorithm>
#include <optional>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/MozillaPbe.h"
#include "toolkit/core/Pkcs12Encryption.h"
#include "toolkit/core/Pkcs12Mac.h"

namespace qgtk {

namespace {

constexpr int maxBags = 1000;
constexpr int maxNesting = 8;
/** What a round of MD2 is charged. It takes as long as some eight of SHA-1, but three keep the files of NSS,
 * with 600,000 rounds in each of two places, within the usual limit. */
constexpr int md2Weight = 3;

/** The bytes of a value that is one element of a type; none when it is something else. */
ByteView valueOf(const ASN1_TYPE* value, int type)
{
    if (!value || value->type != type)
        return {};
    return contentOf(value->value.asn1_string);
}

/** The octet string of a ContentInfo of plain data. Throws PfxAlgorithm for signed data and its like,
 * PfxDamaged. */
ByteView plainContent(const PKCS7* content)
{
    require(PKCS7_type_is_data(content), Code::PfxAlgorithm);
    require(content->d.data != nullptr, Code::PfxDamaged);
    return contentOf(content->d.data);
}

/** The encrypted part of a ContentInfo. Throws PfxAlgorithm for other kinds, PfxDamaged. */
const PKCS7_ENC_CONTENT* encryptedContent(const PKCS7* content)
{
    require(PKCS7_type_is_encrypted(content), Code::PfxAlgorithm);
    const bool isComplete =
        content->d.encrypted && content->d.encrypted->enc_data && content->d.encrypted->enc_data->enc_data;
    require(isComplete, Code::PfxDamaged);
    return content->d.encrypted->enc_data;
}

Bytes localKeyIdOf(const BagParts* bag)
{
    const int place = X509at_get_attr_by_NID(bag->attributes, NID_localKeyID, -1);
    if (place < 0)
        return {};
    const ByteView id =
        valueOf(X509_ATTRIBUTE_get0_type(X509at_get_attr(bag->attributes, place), 0), V_ASN1_OCTET_STRING);
    return {id.begin(), id.end()};
}

EncryptedKeyHandle sealedKeyOf(const BagParts* bag)
{
    EncryptedKeyHandle sealed =
        decodeDer<EncryptedKeyHandle>(d2i_X509_SIG, valueOf(bag->value, V_ASN1_SEQUENCE));
    require(sealed != nullptr, Code::PfxDamaged);
    return sealed;
}

/** The certificate in a bag; nothing for a kind that is none of X.509. */
std::optional<Bytes> certificateOf(const BagParts* bag)
{
    const auto inner =
        decodeItem<CertificateBagHandle>(valueOf(bag->value, V_ASN1_SEQUENCE), certificateBagItem());
    require(inner != nullptr, Code::PfxDamaged);
    if (OBJ_obj2nid(inner->type) != NID_x509Certificate)
        return std::nullopt;
    const ByteView der = valueOf(inner->value, V_ASN1_OCTET_STRING);
    const ByteView certificate = der.first(certificateLength(der));
    return Bytes(certificate.begin(), certificate.end());
}

/** Reads one file, step by step. */
class PfxReader
{
public:
    PfxReader(const Crypto& crypto, std::string_view password, int maxIterations)
        : m_crypto(crypto), m_readings(passwordReadings(password)), m_budget(maxIterations)
    {}

    PfxContents read(ByteView file, PfxIntegrity integrity)
    {
        const auto pfx = decodeItem<PfxHandle>(file, pfxItem());
        require(pfx != nullptr, Code::PfxDamaged);
        require(pfx->mac || integrity == PfxIntegrity::WhenPresent, Code::PfxNoMac);
        const ByteView content = plainContent(pfx->content);
        const auto contents = decodeItem<ContentsHandle>(content, ASN1_ITEM_rptr(PKCS12_AUTHSAFES));
        require(contents != nullptr, Code::PfxDamaged);
        if (pfx->mac)
            charge(macIterations(pfx->mac));
        takePlainSafes(contents.get());
        if (pfx->mac)
            verify(pfx->mac, content);
        openSafes(contents.get());
        openBags();
        return std::move(m_contents);
    }

private:
    using Safe = std::vector<const BagParts*>;

    /** Refuses work above what is left for the file. The count is as the file says, up to the type's end. */
    void charge(std::int64_t iterations, int weight = 1)
    {
        require(iterations <= m_budget / weight, Code::PfxTooCostly);
        m_budget -= iterations * weight;
    }

    void charge(const X509_ALGOR* algorithm)
    {
        charge(iterationsOf(algorithm), isMozillaOnly(algorithm) ? md2Weight : 1);
    }

    void takePlainSafes(const STACK_OF(PKCS7) * contents)
    {
        m_safes.resize(static_cast<std::size_t>(std::max(0, sk_PKCS7_num(contents))));
        for (std::size_t i = 0; i < m_safes.size(); ++i) {
            const PKCS7* content = sk_PKCS7_value(contents, static_cast<int>(i));
            if (!PKCS7_type_is_data(content))
                charge(encryptedContent(content)->algorithm);
            else
                require(take(plainContent(content), m_safes[i], 0), Code::PfxDamaged);
        }
    }

    void openSafes(const STACK_OF(PKCS7) * contents)
    {
        for (std::size_t i = 0; i < m_safes.size(); ++i) {
            const PKCS7* content = sk_PKCS7_value(contents, static_cast<int>(i));
            if (PKCS7_type_is_data(content))
                continue;
            const PKCS7_ENC_CONTENT* sealed = encryptedContent(content);
            open(sealed->algorithm, contentOf(sealed->enc_data),
                 [&](ByteView plain) { return take(plain, m_safes[i], 0); });
        }
    }

    /** Puts the bags of a safe, and of those in it, behind the others. False when the bytes are no safe. */
    bool take(ByteView bytes, Safe& safe, int depth)
    {
        require(depth < maxNesting, Code::PfxDamaged);
        SafeHandle bags = decodeItem<SafeHandle>(bytes, safeItem());
        if (!bags)
            return false;
        for (int i = 0; i < sk_BagParts_num(bags.get()); ++i) {
            const BagParts* bag = sk_BagParts_value(bags.get(), i);
            const int type = OBJ_obj2nid(bag->type);
            require(++m_bagCount <= maxBags, Code::PfxTooCostly);
            if (type == NID_pkcs8ShroudedKeyBag)
                charge(algorithmOf(sealedKeyOf(bag)));
            if (type == NID_safeContentsBag)
                require(take(valueOf(bag->value, V_ASN1_SEQUENCE), safe, depth + 1), Code::PfxDamaged);
            else
                safe.push_back(bag);
        }
        m_kept.push_back(std::move(bags));
        return true;
    }

    void openBags()
    {
        for (const Safe& safe : m_safes)
            for (const BagParts* bag : safe)
                openBag(bag);
    }

    void openBag(const BagParts* bag)
    {
        const int type = OBJ_obj2nid(bag->type);
        if (type == NID_keyBag)
            addKey(bag, valueOf(bag->value, V_ASN1_SEQUENCE));
        else if (type == NID_pkcs8ShroudedKeyBag)
            addKey(bag, openKey(bag));
        else if (type == NID_certBag)
            if (std::optional<Bytes> der = certificateOf(bag))
                m_contents.certificates.push_back({std::move(*der), localKeyIdOf(bag)});
    }

    SecretBytes openKey(const BagParts* bag)
    {
        const EncryptedKeyHandle sealed = sealedKeyOf(bag);
        const X509_ALGOR* algorithm = nullptr;
        const ASN1_OCTET_STRING* cipherText = nullptr;
        X509_SIG_get0(sealed.get(), &algorithm, &cipherText);
        return open(algorithm, contentOf(cipherText), isPlainKey);
    }

    void addKey(const BagParts* bag, ByteView plain)
    {
        require(isPlainKey(plain), Code::PfxDamaged);
        const SecretBytes random = randomAmong(bag->attributes);
        SecretBytes kept =
            random.empty() ? SecretBytes(plain.begin(), plain.end()) : withKeyRandom(plain, random);
        m_contents.keys.push_back({std::move(kept), localKeyIdOf(bag)});
    }

    void verify(const MacParts* mac, ByteView content)
    {
        const std::optional<std::size_t> reading = verifyMac(m_crypto, mac, content, m_readings);
        require(reading.has_value(), Code::WrongPfxPassword);
        std::swap(m_readings.front(), m_readings[*reading]);
        m_failure = Code::PfxDamaged;
    }

    /** Decrypts with the first reading of the password whose outcome is accepted. */
    template <typename Accept>
    SecretBytes open(const X509_ALGOR* algorithm, ByteView cipherText, Accept&& accept)
    {
        SecretBytes plain;
        const auto opens = [&](const auto& start) {
            return [&](const PasswordReading& reading) {
                return runCipher(start(m_crypto, algorithm, reading).get(), cipherText, plain) &&
                       accept(plain);
            };
        };
        const auto part = takesWidePassword(algorithm) ? &PasswordReading::wide : &PasswordReading::narrow;
        const bool opened =
            (!isMozillaOnly(algorithm) && firstReading(m_readings, part, opens(startDecryption))) ||
            (hasMozillaForm(algorithm) &&
             firstReading(m_readings, &PasswordReading::wide, opens(startMozillaDecryption)));
        require(opened, m_failure);
        return plain;
    }

    static const X509_ALGOR* algorithmOf(const EncryptedKeyHandle& sealed)
    {
        const X509_ALGOR* algorithm = nullptr;
        X509_SIG_get0(sealed.get(), &algorithm, nullptr);
        return algorithm;
    }

    const Crypto& m_crypto;
    std::vector<PasswordReading> m_readings;
    std::int64_t m_budget;
    int m_bagCount = 0;
    Code m_failure = Code::WrongPfxPassword; /**< of what does not come out right */
    std::vector<SafeHandle> m_kept;
    std::vector<Safe> m_safes;
    PfxContents m_contents;
};

/** What the parts of a file say about it as a whole. */
Code pfxCode(Code code)
{
    switch (code) {
    case Code::KeyTooCostly:
        return Code::PfxTooCostly;
    case Code::KeyDamaged:
    case Code::KeyAlgorithmUnknown:
    case Code::KeyParameters:
        return Code::PfxAlgorithm;
    case Code::CertDamaged:
        return Code::PfxDamaged;
    default:
        return code;
    }
}

} // namespace

PfxContents readPfx(const Crypto& crypto, ByteView file, std::string_view password, PfxIntegrity integrity,
                    int maxIterations)
{
    require(file.size() <= maxPfxLength, Code::FileTooLarge);
    try {
        return PfxReader(crypto, password, maxIterations).read(file, integrity);
    } catch (const Failure& failure) {
        throw Failure(pfxCode(failure.code()));
    }
}

} // namespace qgtk
