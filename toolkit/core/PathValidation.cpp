#include "toolkit/core/PathValidation.h"

namespace qgtk {

namespace {

using RunHandle = Handle<X509_STORE_CTX, X509_STORE_CTX_free>;

/** Authorities may share a name: the run says whether the signature has to be tried to tell them apart. */
int isIssuedBy(X509_STORE_CTX* handle, X509* certificate, X509* issuer)
{
    const int relation = X509_check_issued(issuer, certificate);
    // An issuer that may not issue is found all the same, so that the verdict can say so.
    if (relation != X509_V_OK && relation != X509_V_ERR_KEYUSAGE_NO_CERTSIGN)
        return 0;
    const auto* run = static_cast<const PathRun*>(X509_STORE_CTX_get_app_data(handle));
    if (!run || !run->matchKeys)
        return 1;
    EVP_PKEY* key = X509_get0_pubkey(issuer);
    return key && X509_verify(certificate, key) == 1 ? 1 : 0;
}

/** Revocation is not asked of what is trusted by itself; OpenSSL asks it of every certificate. */
int acceptAnchor(int accepted, X509_STORE_CTX* handle)
{
    const auto* run = static_cast<const PathRun*>(X509_STORE_CTX_get_app_data(handle));
    const int last = sk_X509_num(X509_STORE_CTX_get0_chain(handle)) - 1;
    const bool anchor = run && run->crls && X509_STORE_CTX_get_error_depth(handle) == last;
    const int error = X509_STORE_CTX_get_error(handle);
    if (accepted || !anchor || error == X509_V_ERR_CERT_HAS_EXPIRED || error == X509_V_ERR_CERT_NOT_YET_VALID)
        return accepted;
    X509_STORE_CTX_set_error(handle, X509_V_OK);
    return 1;
}

void addPolicies(X509_VERIFY_PARAM* parameters, const std::vector<std::string>& policies)
{
    for (const std::string& policy : policies) {
        ObjectHandle object(OBJ_txt2obj(policy.c_str(), 1));
        require(object != nullptr, Code::BadArgument);
        if (X509_VERIFY_PARAM_add0_policy(parameters, object.get()) == 1)
            static_cast<void>(object.release());
    }
}

void setParameters(const Context& context, const PathRun& run, X509_VERIFY_PARAM* parameters)
{
    unsigned long flags = X509_V_FLAG_PARTIAL_CHAIN | X509_V_FLAG_POLICY_CHECK | run.flags;
    if (!run.policies.empty())
        flags |= X509_V_FLAG_EXPLICIT_POLICY;
    X509_VERIFY_PARAM_set_flags(parameters, flags);
    if (context.verifySettings.time)
        X509_VERIFY_PARAM_set_time(parameters, *context.verifySettings.time);
    addPolicies(parameters, run.policies);
}

PathFailure failureOfRun(X509_STORE_CTX* handle, const PathRun& run)
{
    X509* met = X509_STORE_CTX_get_current_cert(handle);
    return {X509_STORE_CTX_get_error(handle), share(met ? met : run.leaf)};
}

} // namespace

std::optional<PathFailure> runPath(Context& context, const PathRun& run, X509Stack& path)
{
    const auto handle = owned<RunHandle>(X509_STORE_CTX_new_ex(context.crypto().context(), nullptr));
    X509_STORE_set_check_issued(context.trusted(), isIssuedBy);
    if (X509_STORE_CTX_init(handle.get(), context.trusted(), run.leaf, run.pool) != 1)
        throw std::bad_alloc();
    setParameters(context, run, X509_STORE_CTX_get0_param(handle.get()));
    X509_STORE_CTX_set_app_data(handle.get(), const_cast<PathRun*>(&run));
    X509_STORE_CTX_set_verify_cb(handle.get(), acceptAnchor);
    if (run.crls)
        X509_STORE_CTX_set0_crls(handle.get(), run.crls);
    if (X509_verify_cert(handle.get()) != 1)
        return failureOfRun(handle.get(), run);
    path.reset(X509_STORE_CTX_get1_chain(handle.get()));
    return std::nullopt;
}

StoreHandle anchoredOn(const Context& context, const X509Stack& path)
{
    auto store = owned<StoreHandle>(X509_STORE_new());
    for (int i = 0; i < sk_X509_num(path.get()); ++i)
        if (X509_STORE_add_cert(store.get(), sk_X509_value(path.get(), i)) != 1)
            throw std::bad_alloc();
    X509_VERIFY_PARAM* parameters = X509_STORE_get0_param(store.get());
    X509_VERIFY_PARAM_set_flags(parameters, X509_V_FLAG_PARTIAL_CHAIN);
    if (context.verifySettings.time)
        X509_VERIFY_PARAM_set_time(parameters, *context.verifySettings.time);
    return store;
}

} // namespace qgtk
