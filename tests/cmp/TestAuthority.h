#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "CmpMessage.h"
#include "Servers.h"
#include "TestPki.h"

/** How messages come. */
enum class CmpTransport
{
    Http,
    Tcp
};

/**
 * An authority whose transactions "openssl cmp" handles: its server gives one certificate, which is made for
 * the key of each request before the request is handed on to it. Over TCP, messages are put into HTTP on the
 * way.
 */
class TestAuthority
{
public:
    explicit TestAuthority(CmpTransport transport = CmpTransport::Http);

    int port() const { return m_server.port(); }
    std::string url() const { return m_server.url("http"); }

    /** What the server signs its answers with: an authority's server unless others are set. */
    samplepki::Bytes serverCertificate;
    samplepki::KeyPair serverKey = testKey(3);

    /** What both sides know, or "file:" with a path; empty: they sign. */
    std::string secret;

    /** Options of the server for the transaction of a number, from 0; empty: none. */
    std::function<std::vector<std::string>(std::size_t)> options;

    /** Changes what is issued. */
    std::function<void(Asked&)> bend;

    /** Who issues. */
    samplepki::Authority* issuer = nullptr;

    /** Bodies of the requests that came. */
    std::vector<int> bodies();

    /** The first request of the transaction of a number. */
    samplepki::Bytes request(std::size_t number);

    /** The last answer of the server. */
    samplepki::Bytes lastReply();

    /** What the server answers to a message. */
    samplepki::Bytes handle(const samplepki::Bytes& message);

    /** The head of the last HTTP request. */
    std::string head();

    /** Knows a certificate, so that it can be revoked. */
    void know(const samplepki::Bytes& certificate);

    TestPki pki;
    const std::string authorityFile; /**< DER of pki.ca */

private:
    void answer(int client);
    samplepki::Bytes serve(const samplepki::Bytes& message);
    samplepki::Bytes issue(const Asked& asked) const;
    void start(const samplepki::Bytes& certificate);
    samplepki::Bytes forward(const samplepki::Bytes& message) const;

    CmpTransport m_transport;
    std::string m_directory;
    std::mutex m_mutex;
    std::vector<int> m_bodies;
    std::vector<samplepki::Bytes> m_requests;
    std::string m_head;
    samplepki::Bytes m_reply;
    std::map<samplepki::Bytes, samplepki::Bytes> m_issued;
    std::unique_ptr<ServerProgram> m_program;
    int m_programPort = 0;
    RawServer m_server{[this](int client) {
        answer(client);
    }};
};

/** The serial number of a certificate as it stands in it. */
samplepki::Bytes serialOf(const samplepki::Bytes& certificate);
