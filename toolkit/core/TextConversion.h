#pragma once

#include <optional>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/**
 * A text in another charset, both by iconv's names; nothing when it has a character that the other lacks, or
 * is no text of the first. What it holds on the way is wiped.
 */
std::optional<SecretBytes> convertText(const char* to, const char* from, ByteView text);

} // namespace qgtk
