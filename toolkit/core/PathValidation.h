#pragma once

#include <optional>

#include "toolkit/core/Context.h"
#include "toolkit/core/PathFailure.h"

namespace qgtk {

/** Releases a stack of revocation lists with the lists. */
inline void freeCrlStack(STACK_OF(X509_CRL) * stack)
{
    sk_X509_CRL_pop_free(stack, X509_CRL_free);
}

using CrlStack = Handle<STACK_OF(X509_CRL), freeCrlStack>;

/** One validation of a path by OpenSSL; all is borrowed. */
struct PathRun
{
    X509* leaf = nullptr;
    STACK_OF(X509) * pool = nullptr;     /**< certificates that may be issuers */
    std::vector<std::string> policies;   /**< dotted policies of which the path must have one; none: any */
    STACK_OF(X509_CRL) * crls = nullptr; /**< revocation lists */
    unsigned long flags = 0;             /**< X509_V_FLAG bits besides those that every run has */
    bool matchKeys = false;              /**< take for an issuer only whose key made the signature */
};

/**
 * Validates a path from a certificate to one that the context trusts, at the context's reference time. Path
 * is what was found, the trusted certificate last; it is set when the result is none.
 */
std::optional<PathFailure> runPath(Context& context, const PathRun& run, X509Stack& path);

/**
 * A store whose anchors are the certificates of a path that is trusted by now, at the context's reference
 * time: for OpenSSL's functions that verify a signer themselves.
 */
StoreHandle anchoredOn(const Context& context, const X509Stack& path);

} // namespace qgtk
