#include "Servers.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "TestHome.h"
#include "TestPki.h"
#include "toolkit/core/Base64.h"

namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/** A socket that listens at a port of the loopback, 0 for any. */
int listenAt(int& port)
{
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(port);
    socklen_t length = sizeof(address);
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener, 8) != 0)
        throw std::runtime_error("no port to listen at");
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
    return listener;
}

/** Whether somebody listens at a port. Trying it would do, but a responder waits for ever for the request. */
bool isListenedAt(int port)
{
    char wanted[8] = {};
    std::snprintf(wanted, sizeof(wanted), ":%04X", static_cast<unsigned>(port));
    for (const char* table : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        std::ifstream lines(table);
        std::string number, local, remote, state;
        for (std::string line; std::getline(lines, line);) {
            std::istringstream(line) >> number >> local >> remote >> state;
            if (state == "0A" && local.ends_with(wanted))
                return true;
        }
    }
    return false;
}

std::string ldif(const Entry& entry)
{
    std::string text =
        "dn: " + entry.name + "\nobjectClass: extensibleObject\nobjectClass: applicationProcess\n";
    if (!entry.name.starts_with("cn="))
        text = "dn: " + entry.name + "\nobjectClass: organization\n";
    for (const auto& [attribute, value] : entry.values)
        text +=
            attribute + ":: " + std::string(qgtk::textOf(qgtk::base64Encode(qgtk::bytesOf(value)))) + "\n";
    return text + "\n";
}

std::vector<std::string> responderCommand(const std::string& index, const samplepki::Bytes& issuer,
                                          const samplepki::Bytes& signer, const samplepki::Bytes& key,
                                          int port)
{
    const std::string directory = TestHome::scratch("responder" + std::to_string(port)).string() + "/";
    writeFile(directory + "index", index);
    writeFile(directory + "issuer", pem(issuer, "CERTIFICATE"));
    writeFile(directory + "signer", pem(signer, "CERTIFICATE"));
    writeFile(directory + "key", pem(key, "PRIVATE KEY"));
    return {"openssl",  "ocsp",
            "-port",    std::to_string(port),
            "-index",   directory + "index",
            "-CA",      directory + "issuer",
            "-rsigner", directory + "signer",
            "-rkey",    directory + "key",
            "-ndays",   "1"};
}

} // namespace

ServerProgram::ServerProgram(const std::vector<std::string>& arguments, int port)
{
    std::vector<char*> list;
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    const int failed = posix_spawnp(&m_child, list[0], &actions, nullptr, list.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed)
        throw std::runtime_error(arguments.front() + " is not installed");
    constexpr int stepMilliseconds = 20;
    while (!isListenedAt(port)) {
        if (waitpid(m_child, nullptr, WNOHANG) == m_child)
            throw std::runtime_error(arguments.front() + " ended at once");
        poll(nullptr, 0, stepMilliseconds);
    }
}

ServerProgram::~ServerProgram()
{
    kill(m_child, SIGKILL);
    waitpid(m_child, nullptr, 0);
}

int freePort()
{
    int port = 0;
    close(listenAt(port));
    return port;
}

DirectoryServer::DirectoryServer(const std::vector<Entry>& entries) : m_program(prepare(entries), port) {}

std::vector<std::string> DirectoryServer::prepare(const std::vector<Entry>& entries) const
{
    const std::string directory = TestHome::scratch("directory" + std::to_string(port)).string();
    const std::string configuration = directory + "/slapd.conf";
    std::string text = ldif({"o=Sample,c=KR", {{"o", "Sample"}}});
    for (const Entry& entry : entries)
        text += ldif(entry);
    writeFile(directory + "/data.ldif", text);
    writeFile(directory + "/db/keep", "");
    writeFile(configuration,
              "include /etc/ldap/schema/core.schema\nmodulepath /usr/lib/ldap\nmoduleload back_mdb\n"
              "database mdb\nsuffix \"o=Sample,c=KR\"\ndirectory " +
                  directory + "/db\n");
    if (runProgram({"/usr/sbin/slapadd", "-f", configuration, "-l", directory + "/data.ldif"}) != 0)
        throw std::runtime_error("slapadd refused " + directory + "/data.ldif");
    return {"/usr/sbin/slapd", "-d", "0", "-f", configuration, "-h", url()};
}

Responder::Responder(const std::string& index, const samplepki::Bytes& issuer, const samplepki::Bytes& signer,
                     const samplepki::Bytes& signerKey)
    : m_program(responderCommand(index, issuer, signer, signerKey, port), port)
{}

FileServer::FileServer(const std::string& directory)
    : m_program({"python3", "-m", "http.server", "--bind", "127.0.0.1", "--directory", directory,
                 std::to_string(port)},
                port)
{}

RawServer::RawServer(std::function<void(int)> answer)
    : m_answer(std::move(answer)), m_listener(listenAt(m_port)), m_thread([this] { serve(); })
{}

RawServer::~RawServer()
{
    shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    for (const int client : m_open)
        close(client);
    close(m_listener);
}

void RawServer::serve()
{
    for (int client = accept(m_listener, nullptr, nullptr); client >= 0;
         client = accept(m_listener, nullptr, nullptr)) {
        char request[4096];
        m_open.push_back(client); // stays open: a client that gives up is the client's own doing
        if (recv(client, request, sizeof(request), 0) > 0)
            m_answer(client);
    }
}
