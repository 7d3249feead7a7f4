#pragma once

#include <ctime>
#include <optional>

#include "toolkit/core/Handles.h"

namespace qgtk {

struct CertificateParts;
void freeCertificateParts(CertificateParts* parts);

/** Algorithm identifier and key bits of a SubjectPublicKeyInfo, undecoded. */
struct PublicKeyParts
{
    AlgorithmHandle algorithm;
    Bytes bits; /**< content of the bit string */
};

/**
 * A certificate that is only read. Its public key stays bytes: decoding it takes OpenSSL thirty times as long
 * as all the rest, and a list needs its length and algorithm alone.
 */
class Certificate
{
public:
    /** Parses one DER certificate; bytes behind it are ignored. Throws CertDamaged. */
    explicit Certificate(ByteView der);

    /** Version as people count it: 3 for X.509v3. */
    long version() const;
    const ASN1_INTEGER* serial() const;
    const X509_ALGOR* signatureAlgorithm() const;
    ByteView signature() const;

    /** The name as a DER Name. */
    ByteView issuerDer() const;
    ByteView subjectDer() const;

    /** The instants of the validity. Throws CertDamaged for a text that is no time. */
    std::time_t notBefore() const;
    std::time_t notAfter() const;

    /** SubjectPublicKeyInfo, DER. */
    ByteView publicKeyDer() const;

    /** Its parts, split at the first call. Throws CertDamaged. */
    const PublicKeyParts& publicKey() const;

    /** All extensions; null when there are none. */
    const STACK_OF(X509_EXTENSION) * extensions() const;

    /** The certificate's own bytes. */
    ByteView der() const { return m_der; }

private:
    Bytes m_der;
    Handle<CertificateParts, freeCertificateParts> m_parts;
    mutable std::optional<PublicKeyParts> m_publicKey;
};

/** Bytes that the certificate at the head of some bytes takes. Throws CertDamaged. */
std::size_t certificateLength(ByteView bytes);

/** Length of the key in bits: of the modulus, or of the curve's field. */
int publicKeyBits(const PublicKeyParts& key);

/**
 * An extension of a certificate, decoded; null when it is absent. Throws CertExtensionDamaged when it is
 * there and can't be decoded, or is there twice.
 */
template <typename H>
H extensionOf(const Certificate& certificate, int nid);

} // namespace qgtk

#include "toolkit/core/Errors.h"

template <typename H>
H qgtk::extensionOf(const Certificate& certificate, int nid)
{
    constexpr int absent = -1;
    int critical = absent;
    H decoded(
        static_cast<typename H::pointer>(X509V3_get_d2i(certificate.extensions(), nid, &critical, nullptr)));
    require(decoded || critical == absent, Code::CertExtensionDamaged);
    return decoded;
}
