#pragma once

#include "toolkit/core/CmpRequest.h"

namespace qgtk {

/** Whom a certificate is asked of, and for. */
struct CmpApplication
{
    CmpServer server;
    std::string_view idNumber; /**< of the holder; empty: no identity value is asked for */
    std::string authorityFile; /**< the authority's certificate, DER */
};

/** The certificate of the authority that is asked. Throws as readFile, CertDamaged. */
X509Handle authorityOf(const Crypto& crypto, const CmpApplication& application);

/** A random value for a new key. */
SecretBytes freshRandom(const Crypto& crypto);

/** The kind of new pairs that the configuration says. */
int configuredKeyKind(Context& context);

/**
 * The certificates of one operation. Unless all are there in the end, the revocation of those that are is
 * asked for, as far as the server lets: nobody has their keys.
 */
class CmpIssuing
{
public:
    CmpIssuing(const Crypto& crypto, CmpExchange& exchange) : m_crypto(crypto), m_exchange(exchange) {}
    ~CmpIssuing();
    CmpIssuing(const CmpIssuing&) = delete;
    CmpIssuing& operator=(const CmpIssuing&) = delete;

    /** Requests a certificate for a key; DER. Throws as CmpExchange::request, IdentityMismatch. */
    Bytes request(const CmpSubject& subject, KeyHandle key);

    /** Takes all as done; gives the list of authorities' certificates that came, at least the one asked. */
    Bytes finish(X509* authority);

private:
    void addAuthority(const Bytes& der);
    void withdraw(X509* certificate) noexcept;

    const Crypto& m_crypto;
    CmpExchange& m_exchange;
    std::vector<X509Handle> m_issued;
    std::vector<Bytes> m_authorities;
};

/** Throws BadArgument for what is no reason of RFC 5280, section 5.3.1, nor -1 for none. */
void requireReason(int reason);

} // namespace qgtk
