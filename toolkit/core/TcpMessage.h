#pragma once

#include <string>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Connection.h"

namespace qgtk {

/** Throws BadArgument for what is no port of TCP. */
void requirePort(int port);

/**
 * Sends a message over TCP and gives the one that answers it, both behind their length and kind (RFC 2510,
 * section 5.2; RFC 3161, section 3.3). Throws BadArgument for the port, ServerUnreachable, ServerTimeout,
 * ServerRefused, ReplyTooLarge, ReplyDamaged (what needs asking again later, too), each with host and port.
 */
Bytes exchangeByTcp(const std::string& host, int port, ByteView request, const Deadline& deadline,
                    int connectSeconds);

} // namespace qgtk
