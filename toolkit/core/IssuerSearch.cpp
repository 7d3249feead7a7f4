#include "toolkit/core/IssuerSearch.h"

#include <algorithm>

#include "toolkit/core/CertificateList.h"
#include "toolkit/core/Directory.h"

namespace qgtk {

namespace {

/** Certificates that a path is looked for among. */
constexpr std::size_t mostCertificates = 100;

} // namespace

std::vector<std::string> directoriesFor(X509* certificate, const ServerAccess& servers)
{
    std::vector<std::string> addresses;
    const auto append = [&](const std::string& url) {
        constexpr std::string_view scheme = "ldap://";
        const std::string server = url.substr(0, url.find('/', scheme.size()));
        if (url.starts_with(scheme) && std::ranges::find(addresses, server) == addresses.end())
            addresses.push_back(server);
    };
    std::ranges::for_each(crlUrls(certificate), append);
    for (const DirectoryEntry& entry : servers.directories())
        append(entry.url);
    return addresses;
}

IssuerSearch::IssuerSearch(Context& context, ServerAccess& servers)
    : m_context(context), m_servers(servers), m_pool(owned<X509Stack>(sk_X509_new_null()))
{
    for (const ByteView der : splitCertificateList(context.caCertificates()))
        add(der);
}

bool IssuerSearch::add(ByteView der)
{
    if (m_seen.size() >= mostCertificates || !m_seen.emplace(der.begin(), der.end()).second)
        return false;
    push(m_pool, decodeX509(m_context.crypto(), der).get());
    return true;
}

bool IssuerSearch::ask(const std::string& url)
{
    bool added = false;
    try {
        for (const Bytes& der : m_servers.network.fetch(url, ObjectKind::AuthorityCertificate))
            added = add(der) || added;
    } catch (const Failure& failure) {
        // Another place may know; when none does, the issuer is missing.
        if (failure.code() == Code::ServerTimeout && m_stalledServer.empty())
            m_stalledServer = failure.detail();
    }
    return added;
}

std::vector<std::string> IssuerSearch::placesFor(X509* certificate) const
{
    std::vector<std::string> places = serviceUrls(certificate, NID_ad_ca_issuers);
    for (const std::string& server : directoriesFor(certificate, m_servers))
        places.push_back(server + "/" + addressForm(issuerDirectoryName(certificate)) + "?cACertificate");
    return places;
}

bool IssuerSearch::find(X509* certificate)
{
    return std::ranges::any_of(placesFor(certificate), [&](const std::string& url) { return ask(url); });
}

bool IssuerSearch::setAside(X509* certificate)
{
    for (int i = 0; i < sk_X509_num(m_pool.get()); ++i)
        if (X509_cmp(sk_X509_value(m_pool.get(), i), certificate) == 0) {
            X509_free(sk_X509_delete(m_pool.get(), i));
            return true;
        }
    return false;
}

} // namespace qgtk
