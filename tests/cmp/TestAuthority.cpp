#include "TestAuthority.h"

#include <arpa/inet.h>
#include <openssl/x509.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

#include "TestHome.h"
#include "TimeStampServer.h"
#include "toolkit/core/Handles.h"

using namespace samplepki;

namespace {

std::string freshDirectory()
{
    static int number = 0;
    return TestHome::scratch("authority" + std::to_string(number++)).string() + "/";
}

Bytes serverOf(Authority& ca)
{
    Request wanted{.subject = nameFromText("cn=CMP,o=Sample,c=KR"), .key = testKey(3)};
    wanted.extras = {{"extendedKeyUsage", der::sequence({der::oid("cmcRA")}), false}};
    return ca.issue(wanted);
}

std::string headOf(int client)
{
    std::string head(4096, '\0');
    const ssize_t count = recv(client, head.data(), head.size(), MSG_PEEK);
    head.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return head.substr(0, head.find("\r\n\r\n"));
}

bool beginsTransaction(int body)
{
    return body == InitialRequest || body == KeyUpdate || body == Revocation || body == KeyRecovery;
}

} // namespace

TestAuthority::TestAuthority(CmpTransport transport)
    : authorityFile(freshDirectory() + "ca.der"), m_transport(transport),
      m_directory(authorityFile.substr(0, authorityFile.rfind('/') + 1))
{
    serverCertificate = serverOf(pki.ca);
    issuer = &pki.ca;
    writeFile(authorityFile, pki.ca.certificate());
}

std::vector<int> TestAuthority::bodies()
{
    const std::lock_guard lock(m_mutex);
    return m_bodies;
}

Bytes TestAuthority::request(std::size_t number)
{
    const std::lock_guard lock(m_mutex);
    return m_requests.at(number);
}

Bytes TestAuthority::lastReply()
{
    const std::lock_guard lock(m_mutex);
    return m_reply;
}

std::string TestAuthority::head()
{
    const std::lock_guard lock(m_mutex);
    return m_head;
}

void TestAuthority::know(const Bytes& certificate)
{
    m_issued[serialOf(certificate)] = certificate;
}

void TestAuthority::answer(int client)
{
    if (m_transport == CmpTransport::Tcp) {
        constexpr char finalResponse = 5;
        answerAndEnd(client, stampMessage(handle(readStampMessage(client)), finalResponse));
        return;
    }
    const std::string head = headOf(client);
    {
        const std::lock_guard lock(m_mutex);
        m_head = head;
    }
    answerAndEnd(client,
                 httpReply(handle(readHttpBody(client)), "200 OK", "Content-Type: application/pkixcmp\r\n"));
}

Bytes TestAuthority::handle(const Bytes& message)
{
    const std::lock_guard lock(m_mutex);
    return m_reply = serve(message);
}

Bytes TestAuthority::serve(const Bytes& message)
{
    const int body = bodyOf(message);
    m_bodies.push_back(body);
    if (!beginsTransaction(body))
        return forward(message);
    m_requests.push_back(message);
    if (body == KeyRecovery) {
        start(pki.ca.certificate());
        return forward(message);
    }
    Asked asked = askedBy(message);
    if (body == Revocation) {
        start(m_issued.at(asked.serial));
        return forward(message);
    }
    if (bend)
        bend(asked);
    const Bytes certificate = issue(asked);
    m_issued[serialOf(certificate)] = certificate;
    start(certificate);
    return forward(message);
}

Bytes TestAuthority::issue(const Asked& asked) const
{
    static long next = 5000;
    const auto certificate = qgtk::owned<qgtk::X509Handle>(X509_new());
    const auto ca = qgtk::decodeDer<qgtk::X509Handle>(d2i_X509, qgtk::bytesOf(issuer->certificate()));
    const auto key = qgtk::decodeDer<qgtk::KeyHandle>(d2i_PUBKEY, qgtk::bytesOf(asked.publicKey));
    const auto name = qgtk::owned<qgtk::Handle<X509_NAME, X509_NAME_free>>(X509_NAME_new());
    X509_NAME_add_entry_by_txt(name.get(), "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("Hong"),
                               -1, -1, 0);
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), next++);
    if (!asked.serial.empty())
        ASN1_STRING_set(X509_get_serialNumber(certificate.get()), asked.serial.data(),
                        static_cast<int>(asked.serial.size()));
    X509_set_issuer_name(certificate.get(), X509_get_subject_name(ca.get()));
    X509_set_subject_name(certificate.get(), name.get());
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
    // Renewed certificates have the serial number of the old: the server takes no others.
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 86400 + next);
    X509_set_pubkey(certificate.get(), key.get());
    const auto* position = reinterpret_cast<const unsigned char*>(asked.extensions.data());
    X509_EXTENSIONS* extensions =
        d2i_X509_EXTENSIONS(nullptr, &position, static_cast<long>(asked.extensions.size()));
    for (int i = 0; i < sk_X509_EXTENSION_num(extensions); ++i)
        X509_add_ext(certificate.get(), sk_X509_EXTENSION_value(extensions, i), -1);
    sk_X509_EXTENSION_pop_free(extensions, X509_EXTENSION_free);
    if (X509_sign(certificate.get(), issuer->key().get(), EVP_sha256()) == 0)
        throw std::runtime_error("the certificate is not signed");
    const auto der = qgtk::encodeDer<qgtk::Bytes>(i2d_X509, certificate.get());
    return {der.begin(), der.end()};
}

void TestAuthority::start(const Bytes& certificate)
{
    m_program.reset();
    m_programPort = freePort();
    const std::string trusted = pem(pki.root.certificate(), "CERTIFICATE");
    const std::string authority = pem(pki.ca.certificate(), "CERTIFICATE");
    writeFile(m_directory + "issued", pem(certificate, "CERTIFICATE"));
    writeFile(m_directory + "root", trusted);
    writeFile(m_directory + "ca", authority);
    writeFile(m_directory + "server", pem(serverCertificate, "CERTIFICATE"));
    writeFile(m_directory + "key", pem(serverKey.privateKeyInfo(), "PRIVATE KEY"));
    std::vector<std::string> arguments{"openssl", "cmp", "-port", std::to_string(m_programPort)};
    const auto add = [&](const std::vector<std::string>& more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
    };
    add({"-srv_trusted", m_directory + "root", "-srv_untrusted", m_directory + "ca"});
    add({"-rsp_cert", m_directory + "issued", "-rsp_capubs", m_directory + "ca"});
    if (secret.empty())
        add({"-srv_cert", m_directory + "server", "-srv_key", m_directory + "key"});
    else
        add({"-srv_ref", "server", "-srv_secret", secret.starts_with("file:") ? secret : "pass:" + secret});
    if (options)
        add(options(m_requests.size() - 1));
    m_program = std::make_unique<ServerProgram>(arguments, m_programPort);
}

Bytes TestAuthority::forward(const Bytes& message) const
{
    const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(m_programPort));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("the server is gone");
    answerWith(server, "POST / HTTP/1.0\r\nContent-Type: application/pkixcmp\r\nContent-Length: " +
                           std::to_string(message.size()) + "\r\n\r\n" + message);
    std::string reply;
    char buffer[4096];
    for (ssize_t count = 1; count > 0; reply.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0))
        count = recv(server, buffer, sizeof buffer, 0);
    close(server);
    const std::size_t head = reply.find("\r\n\r\n");
    return head == std::string::npos ? Bytes() : reply.substr(head + 4);
}

Bytes serialOf(const Bytes& certificate)
{
    return at(certificate, {0, 0, 1}).content;
}
