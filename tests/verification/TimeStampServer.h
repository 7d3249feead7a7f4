#pragma once

#include "Servers.h"

/** How a time stamp request came. */
enum class StampTransport
{
    Tcp, /**< with the length of RFC 3161, section 3.3 */
    Http
};

/** "openssl ts -reply" behind a socket: it stamps what it is asked, by policy 1.2.3.4.1 unless asked for .5.
 */
class TimeStampServer
{
public:
    /** Signer and key are of who signs the stamps. */
    TimeStampServer(const std::string& directory, StampTransport transport, const samplepki::Bytes& signer,
                    const samplepki::Bytes& key);

    int port() const { return m_server.port(); }
    std::string url() const { return m_server.url("http") + "/stamp"; }

    /** The server's response to a request, as "openssl ts" gives it. */
    samplepki::Bytes responseTo(const samplepki::Bytes& request) const;

private:
    void answer(int client) const;

    std::string m_directory;
    StampTransport m_transport;
    RawServer m_server{[this](int client) {
        answer(client);
    }};
};

/** A message over TCP: the length of what follows, its kind, the value. */
std::string stampMessage(const std::string& value, char kind);

/** Reads such a message; the result is its value. */
std::string readStampMessage(int client);
