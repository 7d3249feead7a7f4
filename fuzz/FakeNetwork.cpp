#include "FakeNetwork.h"

#include <cerrno>
#include <fcntl.h>
#include <netdb.h>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

std::optional<qgtk::ByteView> reply;

/** The servers' ends of the connections. */
std::vector<int> servers;

/** Puts one end of a pair in the place of a socket; the other end has sent all and ended. */
int answer(int socket)
{
    int pair[2] = {};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, pair) != 0)
        return -1;
    send(pair[1], reply->data(), reply->size(), MSG_NOSIGNAL);
    shutdown(pair[1], SHUT_WR);
    servers.push_back(pair[1]);
    const int placed = dup3(pair[0], socket, O_CLOEXEC);
    close(pair[0]);
    return placed < 0 ? -1 : 0;
}

} // namespace

FakeReply::FakeReply(qgtk::ByteView bytes)
{
    reply = bytes;
}

FakeReply::~FakeReply()
{
    reply.reset();
    for (const int server : servers)
        close(server);
    servers.clear();
}

// The product's calls reach these in place of the C library's.

extern "C" __attribute__((visibility("default"))) int connect(int socket, const sockaddr*, socklen_t)
{
    if (reply)
        return answer(socket);
    errno = ECONNREFUSED;
    return -1;
}

extern "C" __attribute__((visibility("default"))) int getaddrinfo_a(int, gaicb** list, int count, sigevent*)
{
    for (int i = 0; i < count; ++i) {
        addrinfo wanted = *list[i]->ar_request;
        wanted.ai_flags |= AI_NUMERICHOST;
        list[i]->__return = getaddrinfo(list[i]->ar_name, list[i]->ar_service, &wanted, &list[i]->ar_result);
    }
    return 0;
}
