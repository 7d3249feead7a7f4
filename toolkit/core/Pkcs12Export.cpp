#include "toolkit/core/Pkcs12Export.h"

#include <algorithm>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/CertificateText.h"
#include "toolkit/core/KeyPair.h"
#include "toolkit/core/KeyProtection.h"
#include "toolkit/core/Pkcs12Encryption.h"
#include "toolkit/core/Pkcs12Mac.h"
#include "toolkit/core/RsaPair.h"
#include "toolkit/core/TextConversion.h"

namespace qgtk {

namespace {

constexpr int pfxVersion = 3;

/** How everything in a file is protected. */
struct Protection
{
    PfxProfile profile;
    PasswordReading password;
    int iterations;
};

/** What marks certificate and key of a pair as belonging together. */
struct PairMarks
{
    Bytes localKeyId;
    SecretBytes friendlyName; /**< UTF-16, big-endian */
};

void check(bool made)
{
    if (!made)
        throw std::bad_alloc();
}

AlgorithmHandle makePbeAlgorithm(const Crypto& crypto, const Protection& protection)
{
    if (protection.profile == PfxProfile::Compatible)
        return owned<AlgorithmHandle>(PKCS5_pbe_set_ex(NID_pbe_WithSHA1And3_Key_TripleDES_CBC,
                                                       protection.iterations, nullptr, 0, crypto.context()));
    KeyProtection strong;
    strong.iterations = protection.iterations;
    return makeAlgorithm(crypto, strong);
}

/** Encrypts some bytes under a fresh salt. */
Bytes seal(const Crypto& crypto, const Protection& protection, const X509_ALGOR* algorithm, ByteView plain)
{
    Bytes cipherText;
    require(runPbe(crypto, algorithm, protection.password, true, plain, cipherText), Code::CryptoUnavailable);
    return cipherText;
}

/** An element as the value of a bag. */
void setValue(ASN1_TYPE*& target, int type, ByteView bytes)
{
    StringHandle string = owned<StringHandle>(ASN1_STRING_type_new(type));
    check(ASN1_STRING_set(string.get(), bytes.data(), static_cast<int>(bytes.size())) == 1);
    if (!target)
        target = owned<Handle<ASN1_TYPE, ASN1_TYPE_free>>(ASN1_TYPE_new()).release();
    ASN1_TYPE_set(target, type, string.release());
}

void setType(ASN1_OBJECT*& target, int nid)
{
    ASN1_OBJECT_free(target);
    target = OBJ_nid2obj(nid);
}

void addBag(const SafeHandle& safe, int type, ByteView value, const PairMarks* marks)
{
    BagHandle bag = newItem<BagHandle>(bagItem());
    setType(bag->type, type);
    setValue(bag->value, V_ASN1_SEQUENCE, value);
    if (marks) {
        check(X509at_add1_attr_by_NID(&bag->attributes, NID_localKeyID, V_ASN1_OCTET_STRING,
                                      marks->localKeyId.data(),
                                      static_cast<int>(marks->localKeyId.size())) != nullptr);
        check(X509at_add1_attr_by_NID(&bag->attributes, NID_friendlyName, V_ASN1_BMPSTRING,
                                      marks->friendlyName.data(),
                                      static_cast<int>(marks->friendlyName.size())) != nullptr);
    }
    check(sk_BagParts_push(safe.get(), bag.get()) > 0);
    (void)bag.release();
}

void addCertificate(const SafeHandle& safe, ByteView der, const PairMarks* marks)
{
    const auto inner = newItem<CertificateBagHandle>(certificateBagItem());
    setType(inner->type, NID_x509Certificate);
    setValue(inner->value, V_ASN1_OCTET_STRING, der);
    addBag(safe, NID_certBag, encodeItem<Bytes>(inner.get(), certificateBagItem()), marks);
}

void addKey(const Crypto& crypto, const Protection& protection, const SafeHandle& safe, ByteView plain,
            const PairMarks& marks)
{
    const AlgorithmHandle algorithm = makePbeAlgorithm(crypto, protection);
    const Bytes cipherText = seal(crypto, protection, algorithm.get(), plain);
    const EncryptedKeyHandle sealed = makeSealedKey(algorithm.get(), cipherText);
    addBag(safe, NID_pkcs8ShroudedKeyBag, encodeDer<Bytes>(i2d_X509_SIG, sealed.get()), &marks);
}

/** A ContentInfo of plain data. */
Pkcs7Handle plainContent(ByteView bytes)
{
    Pkcs7Handle content = owned<Pkcs7Handle>(PKCS7_new());
    check(PKCS7_set_type(content.get(), NID_pkcs7_data) == 1 &&
          ASN1_OCTET_STRING_set(content->d.data, bytes.data(), static_cast<int>(bytes.size())) == 1);
    return content;
}

/** A ContentInfo of encrypted data. */
Pkcs7Handle sealedContent(const Crypto& crypto, const Protection& protection, ByteView bytes)
{
    Pkcs7Handle content = owned<Pkcs7Handle>(PKCS7_new());
    check(PKCS7_set_type(content.get(), NID_pkcs7_encrypted) == 1);
    AlgorithmHandle algorithm = makePbeAlgorithm(crypto, protection);
    const Bytes cipherText = seal(crypto, protection, algorithm.get(), bytes);
    PKCS7_ENC_CONTENT* target = content->d.encrypted->enc_data;
    setType(target->content_type, NID_pkcs7_data);
    X509_ALGOR_free(target->algorithm);
    target->algorithm = algorithm.release();
    target->enc_data = owned<StringHandle>(ASN1_OCTET_STRING_new()).release();
    check(ASN1_OCTET_STRING_set(target->enc_data, cipherText.data(), static_cast<int>(cipherText.size())) ==
          1);
    return content;
}

void push(const ContentsHandle& contents, Pkcs7Handle content)
{
    check(sk_PKCS7_push(contents.get(), content.get()) > 0);
    (void)content.release();
}

PairMarks marksOf(const Crypto& crypto, Charset& charset, const Certificate& certificate)
{
    const std::string name = commonNameOf(certificate, charset);
    return {crypto.hash("SHA1", certificate.publicKey().bits),
            convertText("UTF-16BE", "CP949", bytesOf(name)).value_or(SecretBytes())};
}

bool isInPairs(const std::vector<PfxPair>& pairs, ByteView certificate)
{
    return std::ranges::any_of(
        pairs, [&](const PfxPair& pair) { return std::ranges::equal(pair.certificate, certificate); });
}

bool fits(const Crypto& crypto, const Certificate& certificate, ByteView key)
{
    if (const std::optional<bool> answer = rsaPairFits(certificate, key))
        return *answer;
    try {
        checkKeyPair(crypto, certificate, key);
        return true;
    } catch (const Failure& failure) {
        if (failure.code() != Code::KeyMismatch)
            throw;
        return false;
    }
}

} // namespace

PfxProfile profileOfOption(int option)
{
    require(option == 0 || option == 1, Code::NotSupported);
    return option == 0 ? PfxProfile::Strong : PfxProfile::Compatible;
}

std::vector<PfxPair> matchPairs(const Crypto& crypto, const std::vector<ByteView>& certificates,
                                const std::vector<ByteView>& keys)
{
    require(!certificates.empty() && certificates.size() == keys.size(), Code::BadArgument);
    std::vector<PfxPair> pairs;
    for (std::size_t i = 0; i < certificates.size(); ++i) {
        const Certificate certificate(certificates[i]);
        // The key at the same place nearly always is the one.
        std::size_t tried = 0;
        while (tried < keys.size() && !fits(crypto, certificate, keys[(i + tried) % keys.size()]))
            ++tried;
        require(tried < keys.size(), Code::KeyMismatch);
        pairs.push_back(
            {certificates[i].first(certificateLength(certificates[i])), keys[(i + tried) % keys.size()]});
    }
    for (const ByteView key : keys) {
        const auto isOf = [key](const PfxPair& pair) {
            return std::ranges::equal(pair.key, key);
        };
        require(std::ranges::any_of(pairs, isOf), Code::KeyMismatch);
    }
    return pairs;
}

Bytes writePfx(const Crypto& crypto, Charset& charset, const std::vector<PfxPair>& pairs,
               const std::vector<ByteView>& authorities, std::string_view password, PfxProfile profile,
               int iterations)
{
    const Protection protection{profile, writtenReading(password), iterations};
    const auto certificates = newItem<SafeHandle>(safeItem());
    const auto keys = newItem<SafeHandle>(safeItem());
    for (const PfxPair& pair : pairs) {
        const PairMarks marks = marksOf(crypto, charset, Certificate(pair.certificate));
        addCertificate(certificates, pair.certificate, &marks);
        addKey(crypto, protection, keys, pair.key, marks);
    }
    for (const ByteView authority : authorities)
        if (!isInPairs(pairs, authority))
            addCertificate(certificates, authority, nullptr);

    const ContentsHandle contents = owned<ContentsHandle>(sk_PKCS7_new_null());
    push(contents, sealedContent(crypto, protection, encodeItem<Bytes>(certificates.get(), safeItem())));
    push(contents, plainContent(encodeItem<Bytes>(keys.get(), safeItem())));
    const Bytes content = encodeItem<Bytes>(contents.get(), ASN1_ITEM_rptr(PKCS12_AUTHSAFES));
    const PfxHandle pfx = newItem<PfxHandle>(pfxItem());
    check(ASN1_INTEGER_set(pfx->version, pfxVersion) == 1);
    PKCS7_free(pfx->content);
    pfx->content = plainContent(content).release();
    makeMac(crypto, pfx.get(), content, protection.password,
            profile == PfxProfile::Strong ? "SHA256" : "SHA1", iterations);
    return encodeItem<Bytes>(pfx.get(), pfxItem());
}

} // namespace qgtk
