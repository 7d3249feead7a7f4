#include "toolkit/core/Connection.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"

namespace qgtk {

namespace {

using AddressList = Handle<addrinfo, freeaddrinfo>;

/** A look-up that runs beside us: the C library's own has no time limit. */
struct Lookup
{
    std::string host;
    std::string port;
    addrinfo wanted = {};
    gaicb request = {};

    Lookup(const std::string& hostName, const std::string& portNumber) : host(hostName), port(portNumber)
    {
        wanted.ai_socktype = SOCK_STREAM;
        wanted.ai_flags = AI_NUMERICSERV;
        request.ar_name = host.c_str();
        request.ar_service = port.c_str();
        request.ar_request = &wanted;
    }
};

/** Waits for a look-up; false when the time is over. */
bool awaitLookup(const gaicb* request, const Deadline& deadline)
{
    while (gai_error(const_cast<gaicb*>(request)) == EAI_INPROGRESS && !deadline.hasPassed()) {
        const int left = deadline.milliseconds();
        const timespec limit{left / 1000, (left % 1000) * 1'000'000L};
        gai_suspend(&request, 1, &limit);
    }
    return gai_error(const_cast<gaicb*>(request)) != EAI_INPROGRESS;
}

AddressList resolve(const std::string& host, const std::string& port, const Deadline& deadline)
{
    auto lookup = std::make_unique<Lookup>(host, port);
    gaicb* request = &lookup->request;
    if (getaddrinfo_a(GAI_NOWAIT, &request, 1, nullptr) != 0)
        throw std::bad_alloc();
    if (!awaitLookup(request, deadline)) {
        // The C library still writes into a look-up that can't be called back: that one is never freed.
        if (gai_cancel(request) == EAI_NOTCANCELED)
            static_cast<void>(lookup.release());
        throw Failure(Code::ServerTimeout, host);
    }
    AddressList addresses(request->ar_result);
    if (gai_error(request) != 0)
        throw Failure(Code::ServerUnreachable, host);
    return addresses;
}

/** Waits until a socket can be written to; the socket's error, ETIMEDOUT when the time is over. */
int awaitConnection(int socket, const Deadline& deadline)
{
    pollfd waiting{socket, POLLOUT, 0};
    int ready = 0;
    do {
        ready = poll(&waiting, 1, deadline.milliseconds());
    } while (ready < 0 && errno == EINTR);
    if (ready <= 0)
        return ETIMEDOUT;
    int error = 0;
    socklen_t length = sizeof(error);
    getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length);
    return error;
}

/** A connected socket; -1 when the address does not answer. */
int connectTo(const addrinfo& address, const Deadline& deadline)
{
    const int socket =
        ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol);
    if (socket < 0)
        return -1;
    int error = connect(socket, address.ai_addr, address.ai_addrlen) == 0 ? 0 : errno;
    if (error == EINPROGRESS)
        error = awaitConnection(socket, deadline);
    if (error == 0)
        return socket;
    close(socket);
    return -1;
}

} // namespace

Deadline Deadline::sooner(int seconds) const
{
    Deadline other(seconds);
    other.m_end = std::min(other.m_end, m_end);
    return other;
}

int Deadline::milliseconds() const
{
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(m_end - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
}

int Deadline::seconds() const
{
    return (milliseconds() + 999) / 1000;
}

Connection::Connection(const std::string& host, const std::string& port, const Deadline& deadline)
{
    const AddressList addresses = resolve(host, port, deadline);
    for (const addrinfo* address = addresses.get(); address && m_socket < 0; address = address->ai_next)
        m_socket = connectTo(*address, deadline);
    if (m_socket < 0)
        throw Failure(deadline.hasPassed() ? Code::ServerTimeout : Code::ServerUnreachable,
                      host + ":" + port);
}

Connection::~Connection()
{
    if (m_socket >= 0)
        close(m_socket);
}

int Connection::release()
{
    return std::exchange(m_socket, -1);
}

} // namespace qgtk
