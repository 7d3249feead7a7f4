#include "toolkit/core/Certificate.h"

#include <climits>
#include <openssl/asn1t.h>
#include <openssl/ec.h>

#include "toolkit/core/Oid.h"

namespace qgtk {

/** What is signed. Names and key stay as encoded, header included. */
struct SignedParts
{
    ASN1_INTEGER* version;
    ASN1_INTEGER* serial;
    X509_ALGOR* algorithm;
    ASN1_STRING* issuer;
    X509_VAL* validity;
    ASN1_STRING* subject;
    ASN1_STRING* key;
    ASN1_BIT_STRING* issuerId;
    ASN1_BIT_STRING* subjectId;
    STACK_OF(X509_EXTENSION) * extensions;
};

struct CertificateParts
{
    SignedParts* body;
    X509_ALGOR* algorithm;
    ASN1_BIT_STRING* signature;
};

struct RawPublicKey
{
    X509_ALGOR* algorithm;
    ASN1_BIT_STRING* bits;
};

struct RawRsaKey
{
    ASN1_INTEGER* modulus;
    ASN1_INTEGER* exponent;
};

namespace {

// clang-format off
ASN1_SEQUENCE(SignedParts) = {
    ASN1_EXP_OPT(SignedParts, version, ASN1_INTEGER, 0),
    ASN1_SIMPLE(SignedParts, serial, ASN1_INTEGER),
    ASN1_SIMPLE(SignedParts, algorithm, X509_ALGOR),
    ASN1_SIMPLE(SignedParts, issuer, ASN1_SEQUENCE),
    ASN1_SIMPLE(SignedParts, validity, X509_VAL),
    ASN1_SIMPLE(SignedParts, subject, ASN1_SEQUENCE),
    ASN1_SIMPLE(SignedParts, key, ASN1_SEQUENCE),
    ASN1_IMP_OPT(SignedParts, issuerId, ASN1_BIT_STRING, 1),
    ASN1_IMP_OPT(SignedParts, subjectId, ASN1_BIT_STRING, 2),
    ASN1_EXP_SEQUENCE_OF_OPT(SignedParts, extensions, X509_EXTENSION, 3)
} static_ASN1_SEQUENCE_END(SignedParts)

ASN1_SEQUENCE(CertificateParts) = {
    ASN1_SIMPLE(CertificateParts, body, SignedParts),
    ASN1_SIMPLE(CertificateParts, algorithm, X509_ALGOR),
    ASN1_SIMPLE(CertificateParts, signature, ASN1_BIT_STRING)
} static_ASN1_SEQUENCE_END(CertificateParts)

ASN1_SEQUENCE(RawPublicKey) = {
    ASN1_SIMPLE(RawPublicKey, algorithm, X509_ALGOR),
    ASN1_SIMPLE(RawPublicKey, bits, ASN1_BIT_STRING)
} static_ASN1_SEQUENCE_END(RawPublicKey)

ASN1_SEQUENCE(RawRsaKey) = {
    ASN1_SIMPLE(RawRsaKey, modulus, ASN1_INTEGER),
    ASN1_SIMPLE(RawRsaKey, exponent, ASN1_INTEGER)
} static_ASN1_SEQUENCE_END(RawRsaKey)
    // clang-format on

    template <typename T>
    void freeRaw(T * object, const ASN1_ITEM* item)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(object), item);
}

void freeRawPublicKey(RawPublicKey* key)
{
    freeRaw(key, ASN1_ITEM_rptr(RawPublicKey));
}

void freeRawRsaKey(RawRsaKey* key)
{
    freeRaw(key, ASN1_ITEM_rptr(RawRsaKey));
}

using PartsHandle = Handle<CertificateParts, freeCertificateParts>;

/** Decodes a structure of one of the templates above; the view is moved behind it. Null when it is none. */
template <typename T>
T* decodeRaw(ByteView& der, const ASN1_ITEM* item)
{
    const unsigned char* position = der.data();
    if (der.size() > LONG_MAX)
        return nullptr;
    auto* decoded = ASN1_item_d2i(nullptr, &position, static_cast<long>(der.size()), item);
    der = der.subspan(static_cast<std::size_t>(position - der.data()));
    return reinterpret_cast<T*>(decoded);
}

std::time_t instantOf(const ASN1_TIME* time)
{
    std::tm parts = {};
    require(ASN1_TIME_to_tm(time, &parts) == 1, Code::CertDamaged);
    return timegm(&parts);
}

/** Bits of a big-endian number. */
int bitsOf(ByteView number)
{
    while (!number.empty() && number.front() == 0)
        number = number.subspan(1);
    if (number.empty())
        return 0;
    int bits = static_cast<int>(number.size()) * 8;
    for (unsigned first = number.front(); (first & 0x80U) == 0; first <<= 1U)
        --bits;
    return bits;
}

int rsaBits(ByteView key)
{
    const Handle<RawRsaKey, freeRawRsaKey> raw(decodeRaw<RawRsaKey>(key, ASN1_ITEM_rptr(RawRsaKey)));
    require(raw != nullptr, Code::CertPublicKeyUnknown);
    return bitsOf(contentOf(raw->modulus));
}

/** Degree of a named curve; 0 for one that is not known or not named. */
int curveBits(const X509_ALGOR* algorithm)
{
    const void* parameters = nullptr;
    int type = V_ASN1_UNDEF;
    X509_ALGOR_get0(nullptr, &type, &parameters, algorithm);
    if (type != V_ASN1_OBJECT)
        return 0;
    const int curve = OBJ_obj2nid(static_cast<const ASN1_OBJECT*>(parameters));
    const Handle<EC_GROUP, EC_GROUP_free> group(EC_GROUP_new_by_curve_name(curve));
    return group ? EC_GROUP_get_degree(group.get()) : 0;
}

/** Splits a SubjectPublicKeyInfo. Throws CertDamaged. */
PublicKeyParts splitPublicKey(ByteView der)
{
    const Handle<RawPublicKey, freeRawPublicKey> raw(
        decodeRaw<RawPublicKey>(der, ASN1_ITEM_rptr(RawPublicKey)));
    require(raw != nullptr, Code::CertDamaged);
    const ByteView bits = contentOf(raw->bits);
    AlgorithmHandle algorithm(raw->algorithm);
    raw->algorithm = nullptr;
    return {std::move(algorithm), Bytes(bits.begin(), bits.end())};
}

} // namespace

void freeCertificateParts(CertificateParts* parts)
{
    freeRaw(parts, ASN1_ITEM_rptr(CertificateParts));
}

Certificate::Certificate(ByteView der)
{
    ByteView rest = der;
    m_parts.reset(decodeRaw<CertificateParts>(rest, ASN1_ITEM_rptr(CertificateParts)));
    require(m_parts != nullptr, Code::CertDamaged);
    m_der.assign(der.begin(), rest.begin());
}

long Certificate::version() const
{
    const ASN1_INTEGER* version = m_parts->body->version;
    return version ? ASN1_INTEGER_get(version) + 1 : 1;
}

const ASN1_INTEGER* Certificate::serial() const
{
    return m_parts->body->serial;
}

const X509_ALGOR* Certificate::signatureAlgorithm() const
{
    return m_parts->algorithm;
}

ByteView Certificate::signature() const
{
    return contentOf(m_parts->signature);
}

ByteView Certificate::issuerDer() const
{
    return contentOf(m_parts->body->issuer);
}

ByteView Certificate::subjectDer() const
{
    return contentOf(m_parts->body->subject);
}

std::time_t Certificate::notBefore() const
{
    return instantOf(m_parts->body->validity->notBefore);
}

std::time_t Certificate::notAfter() const
{
    return instantOf(m_parts->body->validity->notAfter);
}

ByteView Certificate::publicKeyDer() const
{
    return contentOf(m_parts->body->key);
}

const PublicKeyParts& Certificate::publicKey() const
{
    if (!m_publicKey)
        m_publicKey = splitPublicKey(publicKeyDer());
    return *m_publicKey;
}

const STACK_OF(X509_EXTENSION) * Certificate::extensions() const
{
    return m_parts->body->extensions;
}

std::size_t certificateLength(ByteView bytes)
{
    ByteView rest = bytes;
    const PartsHandle parts(decodeRaw<CertificateParts>(rest, ASN1_ITEM_rptr(CertificateParts)));
    require(parts != nullptr, Code::CertDamaged);
    return bytes.size() - rest.size();
}

int publicKeyBits(const PublicKeyParts& key)
{
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, key.algorithm.get());
    const int nid = OBJ_obj2nid(object);
    if (nid == NID_rsaEncryption || nid == NID_rsassaPss)
        return rsaBits(key.bits);
    const int degree = nid == NID_X9_62_id_ecPublicKey ? curveBits(key.algorithm.get()) : 0;
    return degree > 0 ? degree : static_cast<int>(key.bits.size()) * 8;
}

} // namespace qgtk
