#include "Servers.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <poll.h>
#include <set>
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

/** The structural class of an entry by the attribute that names it. */
std::string classOf(const std::string& name)
{
    static const std::map<std::string, std::string> classes{
        {"c=", "country"}, {"o=", "organization"}, {"ou", "organizationalUnit"}};
    const auto found = classes.find(name.substr(0, 2));
    return found == classes.end() ? "applicationProcess" : found->second;
}

std::string ldif(const Entry& entry)
{
    std::string text = "dn: " + entry.name + "\n";
    for (const std::string& name : entry.classes.empty() ? std::vector{classOf(entry.name)} : entry.classes)
        text += "objectClass: " + name + "\n";
    text += "objectClass: extensibleObject\n";
    for (const auto& [attribute, value] : entry.values)
        text +=
            attribute + ":: " + std::string(qgtk::textOf(qgtk::base64Encode(qgtk::bytesOf(value)))) + "\n";
    return text + "\n";
}

/** The entries behind those that stand above them, each once. */
std::vector<Entry> withParents(const std::vector<Entry>& entries)
{
    std::vector<Entry> all;
    std::set<std::string> made;
    for (const Entry& entry : entries)
        made.insert(entry.name);
    for (const Entry& entry : entries) {
        std::vector<Entry> above;
        for (std::size_t comma = entry.name.find(','); comma != std::string::npos;
             comma = entry.name.find(',', comma + 1))
            if (made.insert(entry.name.substr(comma + 1)).second)
                above.insert(above.begin(), Entry{entry.name.substr(comma + 1), {}});
        all.insert(all.end(), above.begin(), above.end());
    }
    all.insert(all.end(), entries.begin(), entries.end());
    return all;
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
    // The server ends with the test, also when that is killed.
    std::vector<std::string> words = {"setpriv", "--pdeathsig", "KILL"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> list;
    for (std::string& word : words)
        list.push_back(word.data());
    list.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    const int failed = posix_spawnp(&m_child, list[0], &actions, nullptr, list.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed)
        throw std::runtime_error("setpriv is not installed");
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

DirectoryServer::DirectoryServer(const std::vector<Entry>& entries, int at)
    : port(at), m_program(prepare(entries), port)
{}

std::vector<std::string> DirectoryServer::prepare(const std::vector<Entry>& entries) const
{
    const std::string directory = TestHome::scratch("directory" + std::to_string(port)).string();
    const std::string configuration = directory + "/slapd.conf";
    std::string text;
    for (const Entry& entry : withParents(entries))
        text += ldif(entry);
    writeFile(directory + "/data.ldif", text);
    writeFile(directory + "/db/keep", "");
    writeFile(configuration,
              "include /etc/ldap/schema/core.schema\nmodulepath /usr/lib/ldap\nmoduleload back_mdb\n"
              "database mdb\nsuffix \"c=KR\"\ndirectory " +
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
        if (recv(client, request, sizeof(request), MSG_PEEK) > 0)
            m_answer(client);
    }
}

bool answerWith(int client, const std::string& bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = send(client, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

void answerAndEnd(int client, const std::string& bytes)
{
    answerWith(client, bytes);
    shutdown(client, SHUT_WR);
}

void drip(int client)
{
    constexpr int pauseMilliseconds = 50;
    pollfd gone{client, POLLRDHUP, 0};
    while (poll(&gone, 1, pauseMilliseconds) == 0)
        if (!answerWith(client, "0"))
            return;
}

std::string httpReply(const std::string& body, const std::string& status, const std::string& more)
{
    return "HTTP/1.0 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" + more +
           "\r\n" + body;
}

std::string readHttpBody(int client)
{
    const std::string lengthField = "Content-Length: ";
    std::string request;
    std::size_t wanted = std::string::npos;
    char buffer[4096];
    while (request.size() < wanted) {
        const ssize_t count = recv(client, buffer, sizeof(buffer), 0);
        if (count <= 0)
            return {};
        request.append(buffer, static_cast<std::size_t>(count));
        const std::size_t head = request.find("\r\n\r\n");
        const std::size_t length = request.find(lengthField);
        if (head != std::string::npos && length < head)
            wanted = head + 4 + std::stoul(request.substr(length + lengthField.size()));
    }
    return request.substr(request.find("\r\n\r\n") + 4);
}
