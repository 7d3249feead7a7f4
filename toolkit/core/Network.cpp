#include "toolkit/core/Network.h"

#include <algorithm>
#include <openssl/pkcs7.h>
#include <strings.h>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/Directory.h"
#include "toolkit/core/Http.h"
#include "toolkit/core/TcpMessage.h"
#include "toolkit/core/X509Objects.h"

namespace qgtk {

namespace {

using MessageHandle = Handle<PKCS7, PKCS7_free>;

bool hasScheme(const std::string& url, const char* scheme)
{
    const std::size_t colon = url.find("://");
    return colon != std::string::npos && strcasecmp(url.substr(0, colon).c_str(), scheme) == 0;
}

const char* attributeOf(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::AuthorityCertificate:
        return "cACertificate";
    case ObjectKind::UserCertificate:
        return "userCertificate";
    case ObjectKind::Crl:
        return "certificateRevocationList";
    case ObjectKind::AuthorityCrl:
        return "authorityRevocationList";
    }
    return "";
}

bool isOfKind(ByteView der, ObjectKind kind)
{
    if (kind == ObjectKind::Crl || kind == ObjectKind::AuthorityCrl)
        return decodeDer<CrlHandle>(d2i_X509_CRL, der) != nullptr;
    try {
        return certificateLength(der) == der.size();
    } catch (const Failure&) {
        return false;
    }
}

/**
 * The certificates of a reply that is one, or the message of signed data without a signer in which
 * authorities publish several (RFC 5280, section 4.2.2.1).
 */
std::vector<Bytes> certificatesOf(Bytes reply)
{
    const auto message = decodeDer<MessageHandle>(d2i_PKCS7, reply);
    if (!message || !PKCS7_type_is_signed(message.get()) || !message->d.sign)
        return {std::move(reply)};
    const int count = sk_X509_num(message->d.sign->cert); // -1 when there are none at all
    std::vector<Bytes> certificates;
    certificates.reserve(static_cast<std::size_t>(std::max(0, count)));
    for (int i = 0; i < count; ++i)
        certificates.push_back(derOf(sk_X509_value(message->d.sign->cert, i)));
    return certificates;
}

std::vector<Bytes> objectsOf(Bytes reply, ObjectKind kind)
{
    if (kind == ObjectKind::AuthorityCertificate)
        return certificatesOf(std::move(reply));
    return {std::move(reply)};
}

} // namespace

ObjectKind objectKindOf(int dataType)
{
    require(dataType >= static_cast<int>(ObjectKind::AuthorityCertificate) &&
                dataType <= static_cast<int>(ObjectKind::AuthorityCrl),
            Code::BadArgument);
    return static_cast<ObjectKind>(dataType);
}

/** Runs an exchange; its failures carry the address. */
template <typename Exchange>
auto Network::named(const std::string& url, Exchange&& exchange)
{
    try {
        if (m_deadline.hasPassed())
            throw Failure(Code::ServerTimeout);
        return exchange();
    } catch (const Failure& failure) {
        throw Failure(failure.code(), url);
    }
}

std::vector<Bytes> Network::fetchAnew(const std::string& url, ObjectKind kind)
{
    std::vector<Bytes> objects;
    if (hasScheme(url, "ldap"))
        objects = readDirectory(url, attributeOf(kind), false, m_deadline, m_connectSeconds);
    else if (hasScheme(url, "http"))
        objects = objectsOf(httpGet(url, m_deadline, m_connectSeconds), kind);
    else
        throw Failure(Code::UrlRefused);
    std::erase_if(objects, [&](const Bytes& der) { return !isOfKind(der, kind); });
    require(!objects.empty(), Code::ReplyDamaged);
    return objects;
}

std::vector<Bytes> Network::fetch(const std::string& url, ObjectKind kind)
{
    const std::string key = std::to_string(static_cast<int>(kind)) + " " + url;
    if (m_kept && m_kept->contains(key))
        return m_kept->at(key);
    std::vector<Bytes> objects = named(url, [&] { return fetchAnew(url, kind); });
    if (m_kept)
        m_kept->emplace(key, objects);
    return objects;
}

std::vector<Bytes> Network::fetchAttribute(const std::string& url, const std::string& attribute)
{
    return named(url, [&] {
        require(hasScheme(url, "ldap"), Code::UrlRefused);
        return readDirectory(url, attribute, true, m_deadline, m_connectSeconds);
    });
}

NamedValue Network::find(const std::string& host, int port, const std::string& commonName, ObjectKind kind)
{
    return named(host, [&] {
        NamedValue found =
            findInDirectory(host, port, commonName, attributeOf(kind), m_deadline, m_connectSeconds);
        require(isOfKind(found.value, kind), Code::ReplyDamaged);
        return found;
    });
}

Bytes Network::post(const std::string& url, const std::string& contentType, ByteView body)
{
    return named(url, [&] {
        require(hasScheme(url, "http"), Code::UrlRefused);
        return httpPost(url, contentType, body, m_deadline, m_connectSeconds);
    });
}

Bytes Network::send(const std::string& host, int port, ByteView message)
{
    return exchangeByTcp(host, port, message, m_deadline, m_connectSeconds);
}

} // namespace qgtk
