#include "toolkit/core/Revocation.h"

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Directory.h"

namespace qgtk {

namespace {

using ReasonHandle = Handle<ASN1_ENUMERATED, ASN1_ENUMERATED_free>;

/** The addresses that the certificate gives, and the directory entries that it names; else its issuer's. */
std::vector<std::string> placesFor(X509* certificate, const ServerAccess& servers)
{
    std::vector<std::string> places = crlUrls(certificate);
    std::vector<std::string> entries = crlEntries(certificate);
    if (places.empty() && entries.empty())
        entries.push_back(issuerDirectoryName(certificate));
    for (const std::string& server : directoriesFor(certificate, servers))
        for (const std::string& entry : entries)
            places.push_back(server + "/" + addressForm(entry));
    return places;
}

/** The lists of the first place that has any. Throws CrlMissing when there is no place to ask. */
std::vector<Bytes> fetchLists(Context& context, ServerAccess& servers, X509* certificate)
{
    const ObjectKind kind = isAuthority(certificate) ? ObjectKind::AuthorityCrl : ObjectKind::Crl;
    Failure last(Code::CrlMissing);
    for (const std::string& place : placesFor(certificate, servers)) {
        try {
            return servers.network.fetch(place, kind);
        } catch (const Failure& failure) {
            last = failure;
        }
    }
    throw failureOf(last.code(), certificate, context.charset(), last.detail());
}

/** Collects the revocation lists for one path. */
class Lists
{
public:
    Lists(Context& context, ServerAccess& servers)
        : m_context(context), m_servers(servers), m_lists(owned<CrlStack>(sk_X509_CRL_new_null()))
    {
        for (const Bytes* given : {&context.verifySettings.crl, &context.verifySettings.arl})
            if (!given->empty())
                add(*given);
    }

    /** Gets the lists that cover a certificate, unless they are there. */
    void cover(X509* certificate)
    {
        if (covers(certificate))
            return;
        for (const Bytes& der : fetchLists(m_context, m_servers, certificate))
            add(der);
    }

    STACK_OF(X509_CRL) * get() const { return m_lists.get(); }

private:
    void add(ByteView der)
    {
        CrlHandle list = decodeCrl(m_context.crypto(), der);
        if (sk_X509_CRL_push(m_lists.get(), list.get()) == 0)
            throw std::bad_alloc();
        static_cast<void>(list.release());
    }

    /** Whether a list that the caller gave is the issuer's. */
    bool covers(X509* certificate) const
    {
        const Bytes& given =
            isAuthority(certificate) ? m_context.verifySettings.arl : m_context.verifySettings.crl;
        if (given.empty())
            return false;
        const CrlHandle list = decodeCrl(m_context.crypto(), given);
        return X509_NAME_cmp(X509_CRL_get_issuer(list.get()), X509_get_issuer_name(certificate)) == 0;
    }

    Context& m_context;
    ServerAccess& m_servers;
    CrlStack m_lists;
};

RevocationEntry entryOf(X509_REVOKED* revoked)
{
    const ReasonHandle reason(
        static_cast<ASN1_ENUMERATED*>(X509_REVOKED_get_ext_d2i(revoked, NID_crl_reason, nullptr, nullptr)));
    return revocationEntry(X509_REVOKED_get0_revocationDate(revoked),
                           reason ? static_cast<int>(ASN1_ENUMERATED_get(reason.get())) : -1);
}

/** The entry of a certificate in the lists; an empty one when it is in none. */
RevocationEntry lookUp(STACK_OF(X509_CRL) * lists, X509* certificate)
{
    for (int i = 0; i < sk_X509_CRL_num(lists); ++i) {
        X509_REVOKED* revoked = nullptr;
        if (X509_CRL_get0_by_cert(sk_X509_CRL_value(lists, i), &revoked, certificate) == 1)
            return entryOf(revoked);
    }
    return {};
}

/** OpenSSL passes over a list of another key's; when one is there, that is what is wrong. */
bool hasForeignList(STACK_OF(X509_CRL) * lists, X509* certificate, X509* issuer)
{
    EVP_PKEY* key = X509_get0_pubkey(issuer);
    for (int i = 0; i < sk_X509_CRL_num(lists); ++i) {
        X509_CRL* list = sk_X509_CRL_value(lists, i);
        const bool sameName =
            X509_NAME_cmp(X509_CRL_get_issuer(list), X509_get_issuer_name(certificate)) == 0;
        if (sameName && X509_CRL_verify(list, key) != 1)
            return true;
    }
    return false;
}

Failure failureFor(Context& context, const PathFailure& failure, const X509Stack& path,
                   STACK_OF(X509_CRL) * lists)
{
    for (int i = 0; failure.error == X509_V_ERR_UNABLE_TO_GET_CRL && i + 1 < sk_X509_num(path.get()); ++i) {
        X509* certificate = sk_X509_value(path.get(), i);
        const bool met = X509_cmp(certificate, failure.certificate.get()) == 0;
        if (met && hasForeignList(lists, certificate, sk_X509_value(path.get(), i + 1)))
            return failureOf(Code::CrlSignature, certificate, context.charset());
    }
    return failure.failure(context.charset());
}

} // namespace

RevocationEntry revocationEntry(const ASN1_TIME* time, int reason)
{
    std::tm parts = {};
    if (ASN1_TIME_to_tm(time, &parts) != 1)
        return {};
    return {timeText(timegm(&parts)), reason};
}

Bytes fetchRevocationList(Context& context, ServerAccess& servers, X509* certificate)
{
    return fetchLists(context, servers, certificate).front();
}

void checkRevocationLists(Context& context, ServerAccess& servers, const X509Stack& path,
                          RevocationEntry& entry)
{
    const bool all = context.verifySettings.wholeChain;
    const int count = all ? sk_X509_num(path.get()) - 1 : std::min(1, sk_X509_num(path.get()) - 1);
    Lists lists(context, servers);
    for (int i = 0; i < count; ++i)
        lists.cover(sk_X509_value(path.get(), i));
    PathRun run;
    run.leaf = sk_X509_value(path.get(), 0);
    run.pool = path.get();
    run.crls = lists.get();
    run.flags =
        X509_V_FLAG_CRL_CHECK | X509_V_FLAG_EXTENDED_CRL_SUPPORT | (all ? X509_V_FLAG_CRL_CHECK_ALL : 0);
    X509Stack checked;
    const std::optional<PathFailure> failure = runPath(context, run, checked);
    if (!failure)
        return;
    if (failure->error == X509_V_ERR_CERT_REVOKED && X509_cmp(failure->certificate.get(), run.leaf) == 0)
        entry = lookUp(lists.get(), run.leaf);
    throw failureFor(context, *failure, path, lists.get());
}

} // namespace qgtk
