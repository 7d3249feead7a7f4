#pragma once

#include <string>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Connection.h"

namespace qgtk {

/**
 * The DER object at an "http:" address, asked for without a proxy. A few redirections are followed, to
 * "http:" addresses alone. Throws UrlRefused, ServerUnreachable, ServerTimeout, ServerRefused,
 * ReplyTooLarge, ReplyDamaged.
 */
Bytes httpGet(const std::string& url, const Deadline& deadline, int connectSeconds);

/** Posts bytes and gives the DER object that is the reply; no redirection is followed. Throws as above. */
Bytes httpPost(const std::string& url, const std::string& contentType, ByteView body,
               const Deadline& deadline, int connectSeconds);

} // namespace qgtk
