#include "toolkit/core/TcpMessage.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Network.h"

namespace qgtk {

namespace {

/** What a message is. */
enum class MessageKind : std::uint8_t
{
    Plain = 0, /**< a request, or a response */
    Final = 5, /**< a response that needs no more asking */
    Error = 6
};

/** Bytes of the length that stands before each message. */
constexpr std::size_t lengthSize = 4;

/** Waits until a socket can be read or written. Throws ServerTimeout. */
void await(int socket, short event, const Deadline& deadline)
{
    pollfd waiting{socket, event, 0};
    int ready = 0;
    do {
        ready = poll(&waiting, 1, deadline.milliseconds());
    } while (ready < 0 && errno == EINTR);
    require(ready > 0 && !deadline.hasPassed(), Code::ServerTimeout);
}

bool mayRetry()
{
    return errno == EAGAIN || errno == EINTR;
}

void sendAll(int socket, ByteView bytes, const Deadline& deadline)
{
    while (!bytes.empty()) {
        await(socket, POLLOUT, deadline);
        const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        require(count > 0 || mayRetry(), Code::ServerRefused);
        if (count > 0)
            bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

/** Fills a buffer. Throws ServerRefused when the server ends before. */
void receiveAll(int socket, std::span<std::uint8_t> target, const Deadline& deadline)
{
    while (!target.empty()) {
        await(socket, POLLIN, deadline);
        const ssize_t count = recv(socket, target.data(), target.size(), 0);
        require(count > 0 || (count < 0 && mayRetry()), Code::ServerRefused);
        if (count > 0)
            target = target.subspan(static_cast<std::size_t>(count));
    }
}

/** A message: the length of what follows, its kind, the value. */
Bytes framed(ByteView value)
{
    const std::size_t length = value.size() + 1;
    Bytes message;
    for (std::size_t i = lengthSize; i > 0; --i)
        message.push_back(static_cast<std::uint8_t>(length >> (8 * (i - 1))));
    message.push_back(static_cast<std::uint8_t>(MessageKind::Plain));
    message.insert(message.end(), value.begin(), value.end());
    return message;
}

Bytes receiveMessage(int socket, const Deadline& deadline)
{
    std::array<std::uint8_t, lengthSize + 1> head = {};
    receiveAll(socket, head, deadline);
    std::size_t length = 0;
    for (std::size_t i = 0; i < lengthSize; ++i)
        length = length << 8 | head[i];
    const auto kind = static_cast<MessageKind>(head[lengthSize]);
    require(kind != MessageKind::Error, Code::ServerRefused);
    require(kind == MessageKind::Plain || kind == MessageKind::Final, Code::ReplyDamaged);
    require(length > 1, Code::ReplyDamaged);
    require(length - 1 <= maxReplyLength, Code::ReplyTooLarge);
    Bytes value(length - 1);
    receiveAll(socket, value, deadline);
    return value;
}

} // namespace

void requirePort(int port)
{
    constexpr int mostPort = 65535;
    require(port > 0 && port <= mostPort, Code::BadArgument);
}

Bytes exchangeByTcp(const std::string& host, int port, ByteView request, const Deadline& deadline,
                    int connectSeconds)
{
    requirePort(port);
    try {
        const Connection connection(host, std::to_string(port), deadline.sooner(connectSeconds));
        sendAll(connection.get(), framed(request), deadline);
        return receiveMessage(connection.get(), deadline);
    } catch (const Failure& failure) {
        throw Failure(failure.code(), host + ":" + std::to_string(port));
    }
}

} // namespace qgtk
