#include "toolkit/core/CmpIssuing.h"

#include <algorithm>

#include "toolkit/core/KeyOperations.h"

namespace qgtk {

X509Handle authorityOf(const Crypto& crypto, const CmpApplication& application)
{
    return decodeX509(crypto, readCertificateFile(application.authorityFile));
}

SecretBytes freshRandom(const Crypto& crypto)
{
    constexpr std::size_t length = 20;
    SecretBytes random(length);
    crypto.random(random);
    return random;
}

int configuredKeyKind(Context& context)
{
    return context.configuration().cmpAuthority(context.cmp.authority).keyPair;
}

CmpIssuing::~CmpIssuing()
{
    for (const X509Handle& certificate : m_issued)
        withdraw(certificate.get());
}

Bytes CmpIssuing::request(const CmpSubject& subject, KeyHandle key)
{
    CmpWish wish;
    wish.extensions = wishedExtensions(m_crypto, subject, key);
    wish.key = std::move(key);
    wish.old = subject.old ? share(subject.old) : nullptr;
    wish.accept = [&](X509* certificate) {
        requireIdentity(m_crypto, subject, certificate);
    };
    CmpIssued issued = m_exchange.request(wish);
    Bytes der = derOf(issued.certificate.get());
    m_issued.push_back(std::move(issued.certificate));
    for (const Bytes& authority : issued.authorities)
        addAuthority(authority);
    return der;
}

Bytes CmpIssuing::finish(X509* authority)
{
    if (m_authorities.empty())
        addAuthority(derOf(authority));
    Bytes list;
    for (const Bytes& der : m_authorities)
        list.insert(list.end(), der.begin(), der.end());
    m_issued.clear();
    return list;
}

void CmpIssuing::addAuthority(const Bytes& der)
{
    if (std::ranges::find(m_authorities, der) == m_authorities.end())
        m_authorities.push_back(der);
}

void CmpIssuing::withdraw(X509* certificate) noexcept
{
    constexpr int cessationOfOperation = 5;
    try {
        m_exchange.revoke(certificate, cessationOfOperation);
    } catch (...) {
        // Why the operation fails has been told; that the server goes on to refuse changes nothing.
    }
}

void requireReason(int reason)
{
    constexpr int mostReason = 10;
    constexpr int unassigned = 7;
    require(reason >= -1 && reason <= mostReason && reason != unassigned, Code::BadArgument);
}

} // namespace qgtk
