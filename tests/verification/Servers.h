#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

#include "samplepki/Der.h"

/** A program that runs until the end of the test that started it. */
class ServerProgram
{
public:
    /** Starts it and waits until it listens. Throws when it ends before. */
    ServerProgram(const std::vector<std::string>& arguments, int port);
    ~ServerProgram();
    ServerProgram(const ServerProgram&) = delete;
    ServerProgram& operator=(const ServerProgram&) = delete;

private:
    pid_t m_child = -1;
};

/** A port of the loopback that nobody listens at. */
int freePort();

/** An entry of a directory: its name, and values by attribute. */
struct Entry
{
    std::string name;
    std::vector<std::pair<std::string, samplepki::Bytes>> values;
    std::vector<std::string> classes = {}; /**< none: by the attribute that names it */
};

/** OpenLDAP's server over entries below "c=KR"; those above them are made. */
class DirectoryServer
{
public:
    explicit DirectoryServer(const std::vector<Entry>& entries, int at = freePort());

    /** "ldap://127.0.0.1:<port>". */
    std::string url() const { return urlAt(port); }
    static std::string urlAt(int port) { return "ldap://127.0.0.1:" + std::to_string(port); }

    const int port;

private:
    std::vector<std::string> prepare(const std::vector<Entry>& entries) const;
    ServerProgram m_program;
};

/** OpenSSL's status responder for one issuer. */
class Responder
{
public:
    /** The index is in the form of "openssl ca"; signer and key are of who signs the answers. */
    Responder(const std::string& index, const samplepki::Bytes& issuer, const samplepki::Bytes& signer,
              const samplepki::Bytes& signerKey);

    std::string url() const { return "http://127.0.0.1:" + std::to_string(port); }

    const int port = freePort();

private:
    ServerProgram m_program;
};

/** Python's file server over a directory. */
class FileServer
{
public:
    explicit FileServer(const std::string& directory);

    std::string url(const std::string& file) const
    {
        return "http://127.0.0.1:" + std::to_string(port) + "/" + file;
    }

    const int port = freePort();

private:
    ServerProgram m_program;
};

/** A server that answers each connection with the bytes that a function writes, on a thread of its own. */
class RawServer
{
public:
    /**
     * The function gets the connected socket once the client has sent something; it may read that, write and
     * return.
     */
    explicit RawServer(std::function<void(int)> answer);
    ~RawServer();
    RawServer(const RawServer&) = delete;
    RawServer& operator=(const RawServer&) = delete;

    int port() const { return m_port; }
    std::string url(const std::string& scheme) const
    {
        return scheme + "://127.0.0.1:" + std::to_string(m_port);
    }

private:
    void serve();

    std::function<void(int)> m_answer;
    int m_port = 0; // before the listener, which sets it
    int m_listener = -1;
    std::vector<int> m_open;
    std::thread m_thread;
};

/** Sends bytes as far as the client takes them; false when it does not take all. */
bool answerWith(int client, const std::string& bytes);

/** The same, and nothing more will come. */
void answerAndEnd(int client, const std::string& bytes);

/** Sends a byte whenever some time has passed, until the client is gone. */
void drip(int client);

/** An HTTP reply with its length. */
std::string httpReply(const std::string& body, const std::string& status = "200 OK",
                      const std::string& more = {});

/** Reads a whole HTTP request; the result is its body. */
std::string readHttpBody(int client);
