#pragma once

#include <string>

#include "toolkit/core/Context.h"

namespace qgtk {

/**
 * Sends a time stamp request and gives the response, DER and unverified. The server is an "http:" address,
 * whose port stands in it, or a host with a TCP port (RFC 3161, sections 3.3 and 3.4). The context keeps the
 * request for verifying the response. Throws StampRequestDamaged, BadArgument for a port out of range,
 * UrlRefused, ServerUnreachable, ServerTimeout, ServerRefused, ReplyTooLarge, ReplyDamaged.
 */
Bytes exchangeTimeStamp(Context& context, const std::string& host, int port, ByteView request);

} // namespace qgtk
