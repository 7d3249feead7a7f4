#include "toolkit/core/Verification.h"

#include <algorithm>
#include <utility>

namespace qgtk {

namespace {

/** The verdict. Where an issuer lacks and a server let the time run out, that is what is wrong. */
Failure verdictOf(Context& context, const IssuerSearch& issuers, const PathFailure& failure)
{
    if (!failure.lacksIssuer() || issuers.stalledServer().empty())
        return failure.failure(context.charset());
    return failureOf(Code::ServerTimeout, failure.certificate.get(), context.charset(),
                     issuers.stalledServer());
}

/** Finds a valid path: what OpenSSL refuses is tried again with the issuers that servers have, with issuers
 * told apart by their keys, and without what stood in the way. The first failure is the verdict. */
X509Stack findPath(Context& context, IssuerSearch& issuers, PathRun run)
{
    std::optional<PathFailure> first;
    X509Stack path;
    for (;;) {
        run.pool = issuers.pool();
        std::optional<PathFailure> failure = runPath(context, run, path);
        if (!failure)
            return path;
        X509* met = failure->certificate.get();
        const bool lacksIssuer = failure->lacksIssuer();
        const X509Handle kept = share(met);
        if (lacksIssuer && issuers.find(met)) {
            first.reset();
            continue;
        }
        if (!first)
            first = std::move(failure);
        if (!std::exchange(run.matchKeys, true) || issuers.setAside(kept.get()))
            continue;
        throw verdictOf(context, issuers, *first);
    }
}

bool fits(X509* certificate, CertificateUse use)
{
    const std::uint32_t usage = X509_get_key_usage(certificate);
    switch (use) {
    case CertificateUse::Signature:
        return (usage & (KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION)) != 0;
    case CertificateUse::Envelope:
        return (usage & (KU_KEY_ENCIPHERMENT | KU_KEY_AGREEMENT)) != 0;
    case CertificateUse::Authority:
        return isAuthority(certificate);
    case CertificateUse::Any:
    case CertificateUse::Listed:
        break;
    }
    return true;
}

void askResponders(Context& context, ServerAccess& servers, const X509Stack& path,
                   const RequestSigner& signer)
{
    const int issued = sk_X509_num(path.get()) - 1;
    const int count = context.verifySettings.wholeChain ? issued : std::min(1, issued);
    for (int i = 0; i < count; ++i) {
        OcspAnswer answer;
        checkByResponder(context, servers.network, path, i, context.verifySettings.ocspUrl, signer, answer);
    }
}

bool isFinal(Code code)
{
    return code == Code::CertRevoked || code == Code::OcspUntrusted;
}

void checkStatus(Context& context, ServerAccess& servers, const X509Stack& path, const RequestSigner& signer)
{
    RevocationEntry entry;
    const StatusSource source = context.verifySettings.source;
    if (source == StatusSource::None)
        return;
    if (source == StatusSource::Crl)
        return checkRevocationLists(context, servers, path, entry);
    try {
        askResponders(context, servers, path, signer);
    } catch (const Failure& failure) {
        if (source == StatusSource::Ocsp || isFinal(failure.code()))
            throw;
        checkRevocationLists(context, servers, path, entry);
    }
}

/** The settings of one operation in place of the caller's, which come back at its end. */
class SingleStatus
{
public:
    explicit SingleStatus(Context& context)
        : m_context(context), m_wholeChain(context.verifySettings.wholeChain)
    {
        context.verifySettings.wholeChain = false;
    }
    ~SingleStatus() { m_context.verifySettings.wholeChain = m_wholeChain; }
    SingleStatus(const SingleStatus&) = delete;
    SingleStatus& operator=(const SingleStatus&) = delete;

private:
    Context& m_context;
    bool m_wholeChain;
};

} // namespace

CertificateUse certificateUseOf(int certificateType)
{
    require(certificateType >= static_cast<int>(CertificateUse::Any) &&
                certificateType <= static_cast<int>(CertificateUse::Authority),
            Code::BadArgument);
    return static_cast<CertificateUse>(certificateType);
}

std::vector<std::string> policiesOf(std::string_view text)
{
    constexpr const char* separators = ",;|";
    std::vector<std::string> policies;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        std::string policy(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        policy.erase(0, policy.find_first_not_of(' '));
        policy.erase(policy.find_last_not_of(' ') + 1);
        std::ranges::replace(policy, ' ', '.');
        if (policy.empty())
            continue;
        require(ObjectHandle(OBJ_txt2obj(policy.c_str(), 1)) != nullptr, Code::BadArgument);
        policies.push_back(std::move(policy));
    }
    return policies;
}

X509Stack validPath(Context& context, ServerAccess& servers, ByteView der, const VerifyRequest& request)
{
    const X509Handle leaf = decodeX509(context.crypto(), der);
    if (sk_X509_OBJECT_num(X509_STORE_get0_objects(context.trusted())) == 0)
        throw failureOf(Code::NoTrustedRoot, leaf.get(), context.charset());
    IssuerSearch issuers(context, servers);
    PathRun run;
    run.leaf = leaf.get();
    run.policies = policiesOf(request.policies);
    X509Stack path = findPath(context, issuers, std::move(run));
    if (!fits(leaf.get(), request.use))
        throw failureOf(Code::UsageRefused, leaf.get(), context.charset());
    return path;
}

void verifyCertificate(Context& context, ByteView certificate, const VerifyRequest& request)
{
    ServerAccess servers(context, request.configurationFile);
    const X509Stack path = validPath(context, servers, certificate, request);
    checkStatus(context, servers, path, request.signer);
}

void checkStatusByCrl(Context& context, ByteView certificate, RevocationEntry& entry)
{
    const SingleStatus single(context);
    ServerAccess servers(context);
    const X509Stack path = validPath(context, servers, certificate, {});
    checkRevocationLists(context, servers, path, entry);
}

void checkStatusByOcsp(Context& context, ByteView certificate, const ResponderChoice& responder,
                       const RequestSigner& signer, OcspAnswer& answer)
{
    ServerAccess servers(context, responder.configurationFile);
    const X509Stack path = validPath(context, servers, certificate, {});
    if (sk_X509_num(path.get()) > 1)
        checkByResponder(context, servers.network, path, 0, responder.url, signer, answer);
}

} // namespace qgtk
