#include "toolkit/core/TokenCrypto.h"

#include <algorithm>
#include <array>

#include "toolkit/core/Errors.h"
#include "toolkit/core/TokenFailure.h"
#include "toolkit/core/TokenKeyUse.h"
#include "toolkit/core/TokenObjects.h"

namespace qgtk {

namespace {

/** A hash by OpenSSL's name, and what PKCS#11 calls its forms. */
struct TokenHash
{
    std::string_view name;
    CK_MECHANISM_TYPE hash;
    CK_RSA_PKCS_MGF_TYPE mask;
    CK_MECHANISM_TYPE v15;
    CK_MECHANISM_TYPE pss;
    CK_ULONG length;
};
constexpr std::array hashes{
    TokenHash{"SHA1", CKM_SHA_1, CKG_MGF1_SHA1, CKM_SHA1_RSA_PKCS, CKM_SHA1_RSA_PKCS_PSS, 20},
    TokenHash{"SHA224", CKM_SHA224, CKG_MGF1_SHA224, CKM_SHA224_RSA_PKCS, CKM_SHA224_RSA_PKCS_PSS, 28},
    TokenHash{"SHA256", CKM_SHA256, CKG_MGF1_SHA256, CKM_SHA256_RSA_PKCS, CKM_SHA256_RSA_PKCS_PSS, 32},
    TokenHash{"SHA384", CKM_SHA384, CKG_MGF1_SHA384, CKM_SHA384_RSA_PKCS, CKM_SHA384_RSA_PKCS_PSS, 48},
    TokenHash{"SHA512", CKM_SHA512, CKG_MGF1_SHA512, CKM_SHA512_RSA_PKCS, CKM_SHA512_RSA_PKCS_PSS, 64},
};

/** Throws AlgorithmCodeUnknown for SHA-3, which these mechanisms lack. */
const TokenHash& hashOf(std::string_view name)
{
    const auto found = std::ranges::find(hashes, name, &TokenHash::name);
    require(found != hashes.end(), Code::AlgorithmCodeUnknown);
    return *found;
}

/** A mechanism with room for its parameters. */
class Mechanism
{
public:
    explicit Mechanism(CK_MECHANISM_TYPE type) : m_mechanism{type, nullptr, 0} {}
    Mechanism(const TokenHash& hash, CK_MECHANISM_TYPE type) : m_pss{hash.hash, hash.mask, hash.length}
    {
        m_mechanism = {type, &m_pss, sizeof m_pss};
    }
    explicit Mechanism(const TokenHash& hash) : m_oaep{hash.hash, hash.mask, CKZ_DATA_SPECIFIED, nullptr, 0}
    {
        m_mechanism = {CKM_RSA_PKCS_OAEP, &m_oaep, sizeof m_oaep};
    }
    Mechanism(const Mechanism&) = delete;
    Mechanism& operator=(const Mechanism&) = delete;

    CK_MECHANISM* get() { return &m_mechanism; }

private:
    CK_RSA_PKCS_PSS_PARAMS m_pss = {};
    CK_RSA_PKCS_OAEP_PARAMS m_oaep = {};
    CK_MECHANISM m_mechanism = {};
};

std::unique_ptr<Mechanism> signatureMechanism(bool curve, const SignatureForm& form)
{
    if (curve)
        return std::make_unique<Mechanism>(CKM_ECDSA);
    const TokenHash& hash = hashOf(form.digest);
    return form.rsa == RsaScheme::V15 ? std::make_unique<Mechanism>(hash.v15)
                                      : std::make_unique<Mechanism>(hash, hash.pss);
}

std::unique_ptr<Mechanism> cipherMechanism(const EncryptionForm& form)
{
    return form.rsa == RsaScheme::V15 ? std::make_unique<Mechanism>(CKM_RSA_PKCS)
                                      : std::make_unique<Mechanism>(hashOf(form.oaepDigest));
}

/** Bytes that an RSA key encrypts at most (RFC 8017, sections 7.1.1 and 7.2.1): modules tell it in many ways.
 */
std::size_t capacityOf(const TokenSession& session, CK_OBJECT_HANDLE key, const EncryptionForm& form)
{
    constexpr std::size_t v15Overhead = 11;
    const std::size_t modulus = readAttribute(session, key, CKA_MODULUS).size();
    const std::size_t overhead =
        form.rsa == RsaScheme::V15 ? v15Overhead : 2 * hashOf(form.oaepDigest).length + 2;
    return modulus > overhead ? modulus - overhead : 0;
}

/** Both numbers of a signature as the DER that everybody else has. */
SecretBytes encodeEcdsa(ByteView numbers)
{
    return encodeDer<SecretBytes>(i2d_ECDSA_SIG, ecdsaOf(numbers).get());
}

/** The other way. Throws SignatureWrong for what is no such DER or too long for the curve. */
SecretBytes decodeEcdsa(ByteView der, std::size_t half)
{
    const EcdsaHandle signature = decodeDer<EcdsaHandle>(d2i_ECDSA_SIG, der);
    require(signature != nullptr, Code::SignatureWrong);
    SecretBytes numbers(2 * half);
    const int length = static_cast<int>(half);
    const bool fits =
        BN_bn2binpad(ECDSA_SIG_get0_r(signature.get()), numbers.data(), length) == length &&
        BN_bn2binpad(ECDSA_SIG_get0_s(signature.get()), numbers.data() + half, length) == length;
    require(fits, Code::SignatureWrong);
    return numbers;
}

/** Bytes of a number of the curve of a public key: its point is 04 and two of them, in an OCTET STRING. */
std::size_t curveLength(const TokenSession& session, CK_OBJECT_HANDLE key)
{
    const SecretBytes encoded = readAttribute(session, key, CKA_EC_POINT);
    const StringHandle point = decodeDer<StringHandle>(d2i_ASN1_OCTET_STRING, encoded);
    require(point != nullptr, Code::PublicKeyDamaged);
    return contentOf(point.get()).size() / 2;
}

/** Numbers of quillgate/algorithms.h. */
struct CurveCode
{
    int algorithm;
    int nid;
};
constexpr std::array curves{CurveCode{256, NID_X9_62_prime256v1}, CurveCode{384, NID_secp384r1},
                            CurveCode{521, NID_secp521r1}};
constexpr std::array rsaLengths{2048, 3072, 4096};

/** Throws TokenObjectExists when the token has a key with this identifier. */
void requireFree(const TokenSession& session, ByteView id)
{
    for (const CK_OBJECT_CLASS kind : {CKO_PUBLIC_KEY, CKO_PRIVATE_KEY}) {
        TokenAttributes key(kind);
        key.addBytes(CKA_ID, id);
        require(findObjects(session, key).empty(), Code::TokenObjectExists);
    }
}

TokenAttributes newKey(CK_OBJECT_CLASS kind, ByteView id)
{
    TokenAttributes key(kind);
    key.addBytes(CKA_ID, id);
    key.addFlag(CKA_TOKEN, true);
    key.addFlag(CKA_PRIVATE, kind == CKO_PRIVATE_KEY);
    return key;
}

} // namespace

void generatePair(const TokenSession& session, int algorithm, PairPurpose purpose, ByteView id,
                  bool signsAnyway)
{
    const auto curve = std::ranges::find(curves, algorithm, &CurveCode::algorithm);
    const bool isCurve = curve != curves.end();
    const bool known = isCurve || std::ranges::find(rsaLengths, algorithm) != rsaLengths.end();
    require(known, Code::AlgorithmCodeUnknown);
    session.requireLogin();
    requireFree(session, id);
    TokenAttributes open = newKey(CKO_PUBLIC_KEY, id);
    TokenAttributes secret = newKey(CKO_PRIVATE_KEY, id);
    secret.addFlag(CKA_SENSITIVE, true);
    secret.addFlag(CKA_EXTRACTABLE, false);
    const bool signs = purpose == PairPurpose::Signing;
    open.addFlag(CKA_VERIFY, signs || signsAnyway);
    open.addFlag(CKA_ENCRYPT, !signs && !isCurve);
    secret.addFlag(CKA_SIGN, signs || signsAnyway);
    secret.addFlag(CKA_DECRYPT, !signs && !isCurve);
    secret.addFlag(CKA_DERIVE, !signs && isCurve);

    Bytes curveDer;
    const Bytes exponent{1, 0, 1};
    if (isCurve) {
        curveDer = encodeDer<Bytes>(i2d_ASN1_OBJECT, OBJ_nid2obj(curve->nid));
        open.addBytes(CKA_EC_PARAMS, curveDer);
    } else {
        open.addNumber(CKA_MODULUS_BITS, static_cast<CK_ULONG>(algorithm));
        open.addBytes(CKA_PUBLIC_EXPONENT, exponent);
    }
    Mechanism mechanism(isCurve ? CKM_EC_KEY_PAIR_GEN : CKM_RSA_PKCS_KEY_PAIR_GEN);
    CK_OBJECT_HANDLE publicKey = 0;
    CK_OBJECT_HANDLE privateKey = 0;
    invoke("C_GenerateKeyPair", session.functions().C_GenerateKeyPair, session.handle(), mechanism.get(),
           open.data(), open.count(), secret.data(), secret.count(), &publicKey, &privateKey);
}

SecretBytes signOnToken(const Crypto& crypto, const TokenSession& session, ByteView id,
                        const SignatureForm& form, ByteView data)
{
    const CK_OBJECT_HANDLE key = privateKeyOnToken(session, id);
    const bool curve = isOfCurve(session, key);
    const auto mechanism = signatureMechanism(curve, form);
    if (!curve)
        return signOnce(session, mechanism->get(), key, data);
    return encodeEcdsa(signOnce(session, mechanism->get(), key, crypto.hash(form.digest, data)));
}

void verifyOnToken(const Crypto& crypto, const TokenSession& session, ByteView id, const SignatureForm& form,
                   ByteView data, ByteView signature)
{
    const CK_OBJECT_HANDLE key = keyOnToken(session, CKO_PUBLIC_KEY, id);
    const bool curve = isOfCurve(session, key);
    const auto mechanism = signatureMechanism(curve, form);
    if (curve)
        verifyOnce(session, mechanism->get(), key, crypto.hash(form.digest, data),
                   decodeEcdsa(signature, curveLength(session, key)));
    else
        verifyOnce(session, mechanism->get(), key, data, signature);
}

SecretBytes encryptOnToken(const TokenSession& session, ByteView id, const EncryptionForm& form,
                           ByteView data)
{
    const CK_OBJECT_HANDLE key = keyOnToken(session, CKO_PUBLIC_KEY, id);
    require(!isOfCurve(session, key), Code::KeyUnsuitable);
    require(data.size() <= capacityOf(session, key, form), Code::DataLength);
    return encryptOnce(session, cipherMechanism(form)->get(), key, data);
}

SecretBytes decryptOnToken(const TokenSession& session, ByteView id, const EncryptionForm& form,
                           ByteView data)
{
    const CK_OBJECT_HANDLE key = privateKeyOnToken(session, id);
    require(!isOfCurve(session, key), Code::KeyUnsuitable);
    return decryptOnce(session, cipherMechanism(form)->get(), key, data);
}

} // namespace qgtk
