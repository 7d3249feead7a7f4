#pragma once

#include <set>

#include "toolkit/core/ServerAccess.h"

namespace qgtk {

/**
 * The certificates that may be issuers on a path: the context's list of authorities, and what servers give
 * for one that lacks.
 */
class IssuerSearch
{
public:
    /** Throws CertListDamaged, CertDamaged for the context's list. */
    IssuerSearch(Context& context, ServerAccess& servers);

    /**
     * Asks the servers that may know the issuer of a certificate: those that it names itself, and the
     * directories that its revocation list and the configuration name. False when they gave nothing new; a
     * server's failure is passed over.
     */
    bool find(X509* certificate);

    /** The address of the server that let the time run out; empty when none did. */
    const std::string& stalledServer() const { return m_stalledServer; }

    /** Takes a certificate out for good. False when it is not among them. */
    bool setAside(X509* certificate);

    STACK_OF(X509) * pool() const { return m_pool.get(); }

private:
    bool add(ByteView der);
    bool ask(const std::string& url);
    std::vector<std::string> placesFor(X509* certificate) const;

    Context& m_context;
    ServerAccess& m_servers;
    X509Stack m_pool;
    std::set<Bytes> m_seen;
    std::string m_stalledServer;
};

/** Addresses "ldap://host:port" of directories: those of a certificate's revocation lists, then the
 * configured. */
std::vector<std::string> directoriesFor(X509* certificate, const ServerAccess& servers);

} // namespace qgtk
