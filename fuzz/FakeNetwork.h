#pragma once

#include "toolkit/core/Bytes.h"

/**
 * A target's network. No connection leaves the process: host names are unknown, and each connection to an
 * address is refused, or gets these bytes and then the end of the stream while a reply is set.
 */
class FakeReply
{
public:
    /** The bytes must live as long. What does not fit into a socket's buffer is cut. */
    explicit FakeReply(qgtk::ByteView bytes);
    ~FakeReply();
    FakeReply(const FakeReply&) = delete;
    FakeReply& operator=(const FakeReply&) = delete;
};
