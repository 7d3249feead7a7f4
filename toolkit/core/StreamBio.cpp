#include "toolkit/core/StreamBio.h"

#include <cstring>
#include <openssl/bio.h>

namespace qgtk {

namespace {

constexpr std::size_t blockLength = 64U << 10;

/** From here on a call of its own costs less than a copy. */
constexpr std::size_t largeLength = 16U << 10;

StreamBio* self(BIO* bio)
{
    return static_cast<StreamBio*>(BIO_get_data(bio));
}

} // namespace

StreamBio::StreamBio() : m_method(owned<decltype(m_method)>(BIO_meth_new(BIO_TYPE_SOURCE_SINK, "stream")))
{
    BIO_meth_set_read(m_method.get(), readBytes);
    BIO_meth_set_write(m_method.get(), writeBytes);
    BIO_meth_set_ctrl(m_method.get(), control);
    m_bio = owned<decltype(m_bio)>(BIO_new(m_method.get()));
    BIO_set_data(m_bio.get(), this);
    BIO_set_init(m_bio.get(), 1);
}

StreamBio::StreamBio(Read read) : StreamBio()
{
    m_read = std::move(read);
}

StreamBio::StreamBio(Write write) : StreamBio()
{
    m_write = std::move(write);
    m_gathered.resize(blockLength);
}

void StreamBio::rethrow() const
{
    if (m_failure)
        std::rethrow_exception(m_failure);
}

template <typename Step>
int StreamBio::guard(Step&& step) noexcept
{
    try {
        return step();
    } catch (...) {
        m_failure = std::current_exception();
        return -1;
    }
}

int StreamBio::readBytes(BIO* bio, char* target, int size)
{
    StreamBio* stream = self(bio);
    const std::span<std::uint8_t> buffer(reinterpret_cast<std::uint8_t*>(target),
                                         static_cast<std::size_t>(size));
    return stream->guard([&] { return static_cast<int>(stream->m_read(buffer)); });
}

int StreamBio::writeBytes(BIO* bio, const char* source, int size)
{
    StreamBio* stream = self(bio);
    return stream->guard([&] {
        stream->gather(bytesOf({source, static_cast<std::size_t>(size)}));
        return size;
    });
}

long StreamBio::control(BIO* bio, int command, long, void*)
{
    StreamBio* stream = self(bio);
    if (command != BIO_CTRL_FLUSH)
        return 0;
    return stream->guard([&] {
        stream->flush();
        return 1;
    });
}

void StreamBio::gather(ByteView bytes)
{
    const bool large = bytes.size() >= largeLength;
    if (large || m_filled + bytes.size() > blockLength)
        flush();
    if (large) {
        m_write(bytes);
        return;
    }
    std::memcpy(m_gathered.data() + m_filled, bytes.data(), bytes.size());
    m_filled += bytes.size();
}

void StreamBio::flush()
{
    if (m_filled > 0)
        m_write(ByteView(m_gathered).first(m_filled));
    m_filled = 0;
}

} // namespace qgtk
