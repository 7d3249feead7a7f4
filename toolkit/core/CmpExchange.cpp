#include "toolkit/core/CmpExchange.h"

#include <algorithm>
#include <exception>
#include <openssl/cmp.h>
#include <openssl/cmperr.h>
#include <openssl/err.h>

#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/CertificatePath.h"
#include "toolkit/core/CmpRecoveryMessage.h"
#include "toolkit/core/ErrorQueueKeeper.h"
#include "toolkit/core/OwnContext.h"
#include "toolkit/core/PathValidation.h"
#include "toolkit/core/TcpMessage.h"

namespace qgtk {

namespace {

using CmpHandle = Handle<OSSL_CMP_CTX, OSSL_CMP_CTX_free>;
using MessageHandle = Handle<OSSL_CMP_MSG, OSSL_CMP_MSG_free>;
using SubjectHandle = Handle<X509_NAME, X509_NAME_free>;
using PurposesHandle = Handle<EXTENDED_KEY_USAGE, EXTENDED_KEY_USAGE_free>;

/** The body of a message that tells an error (RFC 4210, section 5.1.2). */
constexpr int errorBody = 23;

/** Nothing but memory can lack. */
void requireSet(int done)
{
    if (done != 1)
        throw std::bad_alloc();
}

/** A caller's certificate is refused when OpenSSL can't read its extensions, which it decodes then. */
void requireTaken(int done)
{
    require(done == 1, Code::CertExtensionDamaged);
}

/** Whether an authority has made somebody its server (RFC 6402, section 2.10). */
bool isServer(X509* certificate)
{
    const PurposesHandle purposes(
        static_cast<EXTENDED_KEY_USAGE*>(X509_get_ext_d2i(certificate, NID_ext_key_usage, nullptr, nullptr)));
    for (int i = 0; i < sk_ASN1_OBJECT_num(purposes.get()); ++i) {
        const int purpose = OBJ_obj2nid(sk_ASN1_OBJECT_value(purposes.get(), i));
        if (purpose == NID_cmcCA || purpose == NID_cmcRA)
            return true;
    }
    return false;
}

/** The holders of certificates may not answer for the authority. */
int acceptServer(int accepted, X509_STORE_CTX* run)
{
    if (!accepted || X509_STORE_CTX_get_error_depth(run) != 0)
        return accepted;
    X509* signer = X509_STORE_CTX_get_current_cert(run);
    if (isAuthority(signer) || isServer(signer))
        return 1;
    X509_STORE_CTX_set_error(run, X509_V_ERR_INVALID_PURPOSE);
    return 0;
}

/** A store that trusts an authority alone; nobody for null. */
StoreHandle anchoredAt(const Context& context, X509* authority)
{
    const X509Stack anchors = owned<X509Stack>(sk_X509_new_null());
    if (authority)
        push(anchors, authority);
    return anchoredOn(context, anchors);
}

/** Whether an OpenSSL function on this thread gave one of some reasons for its failure. */
bool hasReason(const std::vector<unsigned long>& errors, std::initializer_list<int> reasons)
{
    for (const unsigned long error : errors)
        for (const int reason : reasons)
            if (ERR_GET_LIB(error) == ERR_LIB_CMP && ERR_GET_REASON(error) == reason)
                return true;
    return false;
}

std::vector<unsigned long> takeErrors()
{
    std::vector<unsigned long> errors;
    while (const unsigned long error = ERR_get_error())
        errors.push_back(error);
    return errors;
}

/** What a server says of a refusal. */
std::string statusText(const OSSL_CMP_CTX* handle, Charset& charset)
{
    char text[OSSL_CMP_PKISI_BUFLEN] = {};
    if (!OSSL_CMP_CTX_snprint_PKIStatus(handle, text, sizeof text))
        return {};
    return charset.fromUtf8(text);
}

/** Whether a server says that a message's MAC is not right. */
bool refusedMac(const OSSL_CMP_CTX* handle)
{
    const int failInfo = OSSL_CMP_CTX_get_failInfoCode(handle);
    return failInfo > 0 && (failInfo & (1 << OSSL_CMP_PKIFAILUREINFO_badMessageCheck)) != 0;
}

std::vector<Bytes> derOfAll(const X509Stack& certificates)
{
    std::vector<Bytes> all;
    all.reserve(static_cast<std::size_t>(std::max(0, sk_X509_num(certificates.get()))));
    for (int i = 0; i < sk_X509_num(certificates.get()); ++i)
        all.push_back(derOf(sk_X509_value(certificates.get(), i)));
    return all;
}

/** OpenSSL would write what it meets to the process's standard error. */
int keepSilent(const char* /*function*/, const char* /*file*/, int /*line*/, OSSL_CMP_severity /*level*/,
               const char* /*message*/)
{
    return 1;
}

/** A name for who has none yet: proofs of possession need one (RFC 4211, section 4.1). */
SubjectHandle nameOf(std::string_view reference)
{
    SubjectHandle name = owned<SubjectHandle>(X509_NAME_new());
    const ByteView text = bytesOf(reference);
    const bool added = X509_NAME_add_entry_by_NID(name.get(), NID_commonName, MBSTRING_UTF8, text.data(),
                                                  static_cast<int>(text.size()), -1, 0) == 1;
    require(added, Code::BadArgument);
    return name;
}

/** A host as it stands in an address. */
std::string hostInUrl(const std::string& host)
{
    const bool bare = host.find(':') != std::string::npos && !host.starts_with('[');
    return bare ? "[" + host + "]" : host;
}

} // namespace

/** What OpenSSL calls back into. */
struct CmpExchange::Run
{
    CmpExchange& exchange;
    const CmpWish* wish = nullptr;
    StoreHandle issuers = nullptr; /**< where paths of issued certificates end */
    std::exception_ptr failure = nullptr;
    bool recovers = false;
    Bytes recovered = {};       /**< the response, when keys were to be recovered */
    bool errorUnproved = false; /**< a message that tells an error came without right proof of the sender */

    /** Keeps the first failure: what follows are its consequences. */
    void keepFailure()
    {
        if (!failure)
            failure = std::current_exception();
    }

    MessageHandle transfer(OSSL_CMP_CTX* handle, const OSSL_CMP_MSG* message)
    {
        Bytes request = encodeDer<Bytes>(i2d_OSSL_CMP_MSG, message);
        if (recovers)
            request = asRecoveryRequest(exchange.m_context.crypto(), request, exchange.m_secret.code);
        const Bytes reply = exchange.send(request);
        MessageHandle decoded = decodeDer<MessageHandle>(d2i_OSSL_CMP_MSG, reply);
        if (!decoded)
            throw Failure(Code::ReplyDamaged, exchange.m_server.host);
        // An authority that does not know the reference number has no secret to prove itself with, and what
        // an error says can't but fail the exchange.
        const bool isError = OSSL_CMP_MSG_get_bodytype(decoded.get()) == errorBody;
        OSSL_CMP_CTX_set_option(handle, OSSL_CMP_OPT_UNPROTECTED_ERRORS, isError ? 1 : 0);
        errorUnproved = isError && OSSL_CMP_validate_msg(handle, decoded.get()) != 1;
        if (recovers && !isError)
            takeRecovery(handle, decoded, request, reply);
        ERR_clear_error();
        return recovered.empty() ? std::move(decoded) : nullptr;
    }

    /** Takes a response that OpenSSL knows nothing about, in the place of what it does with those it knows.
     */
    void takeRecovery(OSSL_CMP_CTX* handle, const MessageHandle& decoded, ByteView request,
                      const Bytes& reply)
    {
        const bool isWanted = OSSL_CMP_MSG_get_bodytype(decoded.get()) == keyRecoveryResponse;
        require(isWanted, Code::ReplyDamaged);
        require(OSSL_CMP_validate_msg(handle, decoded.get()) == 1, Code::CmpUntrusted);
        require(isAnswerTo(request, reply), Code::ReplyDamaged);
        recovered = reply;
    }

    void accept(OSSL_CMP_CTX* handle, X509* certificate, int failInfo) const
    {
        require(failInfo == 0, Code::CmpCertificateOther);
        const bool isOfAuthority = OSSL_CMP_validate_cert_path(handle, issuers.get(), certificate) == 1;
        require(isOfAuthority, Code::CmpCertificateOther);
        wish->accept(certificate);
    }

    static OSSL_CMP_MSG* transferCallback(OSSL_CMP_CTX* handle, const OSSL_CMP_MSG* message) noexcept
    {
        Run& run = *static_cast<Run*>(OSSL_CMP_CTX_get_transfer_cb_arg(handle));
        try {
            return run.transfer(handle, message).release();
        } catch (...) {
            run.keepFailure();
            return nullptr;
        }
    }

    static int acceptCallback(OSSL_CMP_CTX* handle, X509* certificate, int failInfo,
                              const char** text) noexcept
    {
        Run& run = *static_cast<Run*>(OSSL_CMP_CTX_get_certConf_cb_arg(handle));
        try {
            run.accept(handle, certificate, failInfo);
            return 0;
        } catch (...) {
            run.keepFailure();
            *text = "not the certificate that was asked for";
            return 1 << OSSL_CMP_PKIFAILUREINFO_incorrectData;
        }
    }

    [[noreturn]] void fail(const OSSL_CMP_CTX* handle, const std::vector<unsigned long>& errors) const
    {
        if (failure)
            std::rethrow_exception(failure);
        const std::string text = statusText(handle, exchange.m_context.charset());
        if (hasReason(errors, {CMP_R_TOTAL_TIMEOUT}))
            throw Failure(Code::ServerTimeout, exchange.m_server.host);
        if (!exchange.m_signer.certificate && (errorUnproved || refusedMac(handle)))
            throw Failure(Code::CmpSecretWrong, text);
        if (hasReason(errors, {CMP_R_RECEIVED_ERROR, CMP_R_REQUEST_REJECTED_BY_SERVER,
                               CMP_R_ENCOUNTERED_WAITING, CMP_R_ENCOUNTERED_KEYUPDATEWARNING}))
            throw Failure(Code::CmpRefused, text);
        if (hasReason(errors, {CMP_R_ERROR_VALIDATING_PROTECTION, CMP_R_ERROR_VALIDATING_SIGNATURE,
                               CMP_R_MISSING_PROTECTION, CMP_R_WRONG_PBM_VALUE,
                               CMP_R_SRVCERT_DOES_NOT_VALIDATE_MSG, CMP_R_NO_SUITABLE_SENDER_CERT}))
            throw Failure(Code::CmpUntrusted, exchange.m_server.host);
        if (hasReason(errors, {CMP_R_ERROR_CREATING_CERTREQ, CMP_R_ERROR_CREATING_RR,
                               CMP_R_ERROR_PROTECTING_MESSAGE, CMP_R_ERROR_CALCULATING_PROTECTION}))
            throw Failure(Code::KeyUnsuitable);
        throw Failure(Code::ReplyDamaged, exchange.m_server.host);
    }
};

CmpExchange::CmpExchange(Context& context, const CmpServer& server, const CmpSecret& secret, CmpSigner signer)
    : m_context(context), m_server(server), m_secret(secret), m_signer(std::move(signer)),
      m_settings(context.configuration().cmpAuthority(context.cmp.authority)), m_servers(context)
{
    if (!m_signer.certificate)
        requireSecret(m_secret);
}

void requireSecret(const CmpSecret& secret)
{
    require(!secret.reference.empty() && !secret.code.empty(), Code::BadArgument);
}

Bytes CmpExchange::send(ByteView message)
{
    const char* const contentType = "application/pkixcmp";
    Network& network = m_servers.network;
    if (m_server.host.find("://") != std::string::npos)
        return network.post(m_server.host, contentType, message);
    if (m_context.cmp.protocol == CmpProtocol::Tcp)
        return network.send(m_server.host, m_server.port, message);
    requirePort(m_server.port);
    return network.post("http://" + hostInUrl(m_server.host) + ":" + std::to_string(m_server.port) + "/" +
                            m_settings.path,
                        contentType, message);
}

void CmpExchange::prepare(OSSL_CMP_CTX* handle) const
{
    StoreHandle servers = anchoredAt(m_context, m_authority.get());
    X509_STORE_set_verify_cb(servers.get(), acceptServer);
    requireSet(OSSL_CMP_CTX_set0_trustedStore(handle, servers.get()));
    static_cast<void>(servers.release());
    if (m_authority) {
        const X509_NAME* name = X509_get_subject_name(m_authority.get());
        requireSet(OSSL_CMP_CTX_set1_recipient(handle, name));
        requireSet(OSSL_CMP_CTX_set1_issuer(handle, name));
    }
    if (m_signer.certificate) {
        requireTaken(OSSL_CMP_CTX_set1_cert(handle, m_signer.certificate.get()));
        requireSet(OSSL_CMP_CTX_set1_pkey(handle, m_signer.key.get()));
    } else {
        const ByteView reference = bytesOf(m_secret.reference);
        const ByteView code = bytesOf(m_secret.code);
        requireSet(OSSL_CMP_CTX_set1_subjectName(handle, nameOf(m_secret.reference).get()));
        requireSet(
            OSSL_CMP_CTX_set1_referenceValue(handle, reference.data(), static_cast<int>(reference.size())));
        requireSet(OSSL_CMP_CTX_set1_secretValue(handle, code.data(), static_cast<int>(code.size())));
    }
    // Authorities sign with keys that are for certificates alone; who may answer is checked otherwise.
    OSSL_CMP_CTX_set_option(handle, OSSL_CMP_OPT_IGNORE_KEYUSAGE, 1);
    const int seconds = m_servers.network.deadline().seconds();
    require(seconds > 0, Code::ServerTimeout); // 0 would be no limit
    OSSL_CMP_CTX_set_option(handle, OSSL_CMP_OPT_TOTAL_TIMEOUT, seconds);
    const DigestHandle digest = m_context.crypto().digest(digestOfCode(m_context.hashAlgorithm));
    require(OSSL_CMP_CTX_set_option(handle, OSSL_CMP_OPT_DIGEST_ALGNID, EVP_MD_get_type(digest.get())) == 1,
            Code::KeyUnsuitable);
}

void CmpExchange::perform(Run& run, const RunFunction& session)
{
    const ErrorQueueKeeper hostErrors;
    const OwnContext own(m_context.crypto());
    const auto handle = owned<CmpHandle>(OSSL_CMP_CTX_new(m_context.crypto().context(), nullptr));
    requireSet(OSSL_CMP_CTX_set_log_cb(handle.get(), keepSilent));
    prepare(handle.get());
    requireSet(OSSL_CMP_CTX_set_transfer_cb(handle.get(), Run::transferCallback));
    requireSet(OSSL_CMP_CTX_set_transfer_cb_arg(handle.get(), &run));
    requireSet(OSSL_CMP_CTX_set_certConf_cb(handle.get(), Run::acceptCallback));
    requireSet(OSSL_CMP_CTX_set_certConf_cb_arg(handle.get(), &run));
    ERR_clear_error();
    if (!session(handle.get()))
        run.fail(handle.get(), takeErrors());
}

CmpIssued CmpExchange::request(const CmpWish& wish)
{
    Run run{*this, &wish, anchoredAt(m_context, m_authority.get())};
    CmpIssued issued;
    perform(run, [&](OSSL_CMP_CTX* handle) {
        EVP_PKEY_up_ref(wish.key.get());
        requireSet(OSSL_CMP_CTX_set0_newPkey(handle, 1, wish.key.get()));
        ExtensionsHandle extensions = owned<ExtensionsHandle>(
            sk_X509_EXTENSION_deep_copy(wish.extensions.get(), X509_EXTENSION_dup, X509_EXTENSION_free));
        requireSet(OSSL_CMP_CTX_set0_reqExtensions(handle, extensions.release()));
        if (wish.old)
            requireTaken(OSSL_CMP_CTX_set1_oldCert(handle, wish.old.get()));
        X509* certificate = wish.old ? OSSL_CMP_exec_KUR_ses(handle) : OSSL_CMP_exec_IR_ses(handle);
        if (!certificate)
            return false;
        issued.certificate = share(certificate);
        issued.authorities = derOfAll(X509Stack(OSSL_CMP_CTX_get1_caPubs(handle)));
        return true;
    });
    return issued;
}

Bytes CmpExchange::recover(const CmpSigner& holder)
{
    Run run{*this};
    run.recovers = true;
    perform(run, [&](OSSL_CMP_CTX* handle) {
        requireTaken(OSSL_CMP_CTX_set1_cert(handle, holder.certificate.get()));
        requireSet(OSSL_CMP_CTX_set1_pkey(handle, holder.key.get()));
        requireSet(OSSL_CMP_CTX_set1_subjectName(handle, X509_get_subject_name(holder.certificate.get())));
        static_cast<void>(OSSL_CMP_exec_IR_ses(handle));
        return !run.recovered.empty();
    });
    return std::move(run.recovered);
}

void CmpExchange::revoke(X509* certificate, int reason)
{
    Run run{*this};
    perform(run, [&](OSSL_CMP_CTX* handle) {
        requireTaken(OSSL_CMP_CTX_set1_oldCert(handle, certificate));
        OSSL_CMP_CTX_set_option(handle, OSSL_CMP_OPT_REVOCATION_REASON, reason);
        return OSSL_CMP_exec_RR_ses(handle) == 1;
    });
}

void CmpExchange::revokeAll(const std::vector<X509*>& certificates, int reason)
{
    IssuerSearch search(m_context, m_servers);
    setAuthority(findIssuer(m_context, search, certificates.back()));
    for (X509* certificate : certificates)
        if (certificate == certificates.back() || X509_cmp(certificate, certificates.back()) != 0)
            revoke(certificate, reason);
}

} // namespace qgtk
