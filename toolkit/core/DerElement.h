#pragma once

#include <climits>
#include <openssl/asn1.h>
#include <optional>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** An element of definite length at the head of some bytes. */
struct DerElement
{
    int tag; /**< universal */
    bool isConstructed;
    ByteView whole; /**< with its header */
    ByteView content;
};

/** The element that some bytes begin with; nothing when they are none, or fewer than its length says. */
inline std::optional<DerElement> firstElement(ByteView bytes)
{
    constexpr int damagedOrIndefinite = 0x81;
    const unsigned char* position = bytes.data();
    long length = 0;
    int tag = -1;
    int tagClass = 0;
    if (bytes.empty() || bytes.size() > INT_MAX)
        return std::nullopt;
    const int kind = ASN1_get_object(&position, &length, &tag, &tagClass, static_cast<long>(bytes.size()));
    if ((kind & damagedOrIndefinite) != 0 || tagClass != V_ASN1_UNIVERSAL)
        return std::nullopt;
    const auto header = static_cast<std::size_t>(position - bytes.data());
    const auto size = static_cast<std::size_t>(length);
    return DerElement{tag, (kind & V_ASN1_CONSTRUCTED) != 0, bytes.first(header + size),
                      bytes.subspan(header, size)};
}

} // namespace qgtk
