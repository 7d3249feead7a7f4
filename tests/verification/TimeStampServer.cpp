#include "TimeStampServer.h"

#include <sys/socket.h>

#include "TestHome.h"
#include "TestPki.h"

using samplepki::Bytes;

namespace {

/** Reads so many bytes; fewer when the client ends before. */
std::string readExactly(int client, std::size_t count)
{
    std::string bytes(count, '\0');
    const ssize_t got = recv(client, bytes.data(), count, MSG_WAITALL);
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

} // namespace

TimeStampServer::TimeStampServer(const std::string& directory, StampTransport transport, const Bytes& signer,
                                 const Bytes& key)
    : m_directory(directory + "/"), m_transport(transport)
{
    writeFile(m_directory + "signer", pem(signer, "CERTIFICATE"));
    writeFile(m_directory + "key", pem(key, "PRIVATE KEY"));
    writeFile(m_directory + "serial", "0A11\n");
    writeFile(m_directory + "conf", "[tsa]\nserial = " + m_directory +
                                        "serial\nsigner_digest = sha256\ndefault_policy = 1.2.3.4.1\n"
                                        "other_policies = 1.2.3.4.5\ndigests = sha1, sha256, sha512\n"
                                        "ess_cert_id_alg = sha256\n");
}

Bytes TimeStampServer::responseTo(const Bytes& request) const
{
    writeFile(m_directory + "query", request);
    runProgram({"openssl", "ts", "-reply", "-config", m_directory + "conf", "-section", "tsa", "-queryfile",
                m_directory + "query", "-signer", m_directory + "signer", "-inkey", m_directory + "key",
                "-out", m_directory + "reply"});
    return readFile(m_directory + "reply");
}

void TimeStampServer::answer(int client) const
{
    constexpr char finalResponse = 5;
    if (m_transport == StampTransport::Http)
        answerAndEnd(client, httpReply(responseTo(readHttpBody(client))));
    else
        answerAndEnd(client, stampMessage(responseTo(readStampMessage(client)), finalResponse));
}

std::string stampMessage(const std::string& value, char kind)
{
    std::string message;
    for (int shift = 24; shift >= 0; shift -= 8)
        message += static_cast<char>((value.size() + 1) >> shift);
    return message + kind + value;
}

std::string readStampMessage(int client)
{
    constexpr std::size_t lengthSize = 4;
    std::size_t length = 0;
    for (const char byte : readExactly(client, lengthSize))
        length = length << 8 | static_cast<unsigned char>(byte);
    return length == 0 ? std::string() : readExactly(client, length).substr(1);
}
