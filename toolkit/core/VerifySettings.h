#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** How the revocation of a certificate is looked up. */
enum class StatusSource
{
    None,
    Crl,        /**< revocation lists */
    Ocsp,       /**< the status responder */
    OcspElseCrl /**< the responder; lists when it gives no verdict */
};

/** What a verification applies, as a caller sets it. The path is always verified up to a trusted root. */
struct VerifySettings
{
    bool wholeChain = true; /**< revocation of all certificates of the path, else of the given one alone */
    StatusSource source = StatusSource::Crl;
    bool keepReplies = false;        /**< what servers gave is kept for later verifications */
    std::optional<std::time_t> time; /**< the instant that is looked at; else now */
    std::string ocspUrl;             /**< a responder to ask in place of the certificates' own */
    Bytes crl;                       /**< a list to use besides those that are fetched */
    Bytes arl;                       /**< the same for certificates of authorities */
};

/** nRange: 0 the whole path, 1 the certificate alone. Throws BadArgument. */
bool wholeChainOf(int range);

/** A reference time, local, "YYYY-MM-DD hh:mm:ss"; null or empty: now. Throws BadTime. */
std::optional<std::time_t> referenceTimeOf(const char* text);

/** A number of a side's list of sources. Throws BadArgument. */
StatusSource sourceOf(int check, std::initializer_list<StatusSource> sources);

} // namespace qgtk
