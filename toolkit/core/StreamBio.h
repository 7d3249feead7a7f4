#pragma once

#include <exception>
#include <functional>

#include "toolkit/core/Handles.h"

namespace qgtk {

/**
 * A source or sink of OpenSSL's over a function. What the function throws ends the flow, since nothing may be
 * thrown through OpenSSL, and is thrown again by rethrow.
 */
class StreamBio
{
public:
    /** Gives as many bytes as there are for the buffer; 0 at the end. */
    using Read = std::function<std::size_t(std::span<std::uint8_t>)>;
    using Write = std::function<void(ByteView)>;

    explicit StreamBio(Read read);

    /** The bytes are gathered to blocks of 64 KiB; a flush writes what is left. */
    explicit StreamBio(Write write);

    StreamBio(const StreamBio&) = delete;
    StreamBio& operator=(const StreamBio&) = delete;

    BIO* get() const { return m_bio.get(); }
    void rethrow() const;

private:
    StreamBio();
    static int readBytes(BIO* bio, char* target, int size);
    static int writeBytes(BIO* bio, const char* source, int size);
    static long control(BIO* bio, int command, long number, void* pointer);
    template <typename Step>
    int guard(Step&& step) noexcept;
    void gather(ByteView bytes);
    void flush();

    Read m_read;
    Write m_write;
    SecretBytes m_gathered; // a whole block, filled from the front
    std::size_t m_filled = 0;
    std::exception_ptr m_failure;
    Handle<BIO_METHOD, BIO_meth_free> m_method;
    Handle<BIO, BIO_free> m_bio; // behind its method
};

} // namespace qgtk
