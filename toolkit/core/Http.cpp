#include "toolkit/core/Http.h"

#include <openssl/err.h>
#include <openssl/http.h>
#include <openssl/httperr.h>

#include "toolkit/core/Call.h"
#include "toolkit/core/Handles.h"
#include "toolkit/core/Network.h"

namespace qgtk {

namespace {

inline void freeText(char* text)
{
    OPENSSL_free(text);
}

using BioHandle = Handle<BIO, BIO_free_all>;
using ExchangeHandle = Handle<OSSL_HTTP_REQ_CTX, OSSL_HTTP_REQ_CTX_free>;
using TextHandle = Handle<char, freeText>;

/** What is sent; no body for asking. */
struct Message
{
    const char* contentType = nullptr;
    ByteView body;
};

struct Address
{
    std::string host;
    std::string port;
    std::string path;
};

Address parseAddress(const std::string& url)
{
    int encrypted = 0;
    char* host = nullptr;
    char* port = nullptr;
    char* path = nullptr;
    const bool parsed = OSSL_HTTP_parse_url(url.c_str(), &encrypted, nullptr, &host, &port, nullptr, &path,
                                            nullptr, nullptr) == 1;
    const TextHandle owners[] = {TextHandle(host), TextHandle(port), TextHandle(path)};
    require(parsed && !encrypted, Code::UrlRefused);
    return {host, port, path};
}

/**
 * Why an exchange gave nothing. OpenSSL puts the reason first and general words behind it; where the host has
 * left errors of its own in the queue, these hide it.
 */
Code failureCode(const Deadline& deadline)
{
    if (deadline.hasPassed())
        return Code::ServerTimeout;
    const unsigned long error = ERR_peek_error();
    if (ERR_GET_LIB(error) == ERR_LIB_BIO && ERR_GET_REASON(error) == BIO_R_TRANSFER_TIMEOUT)
        return Code::ServerTimeout;
    if (ERR_GET_LIB(error) != ERR_LIB_HTTP)
        return Code::ServerRefused;
    switch (ERR_GET_REASON(error)) {
    case HTTP_R_MAX_RESP_LEN_EXCEEDED:
        return Code::ReplyTooLarge;
    case HTTP_R_MISSING_ASN1_ENCODING:
    case HTTP_R_INCONSISTENT_CONTENT_LENGTH:
        return Code::ReplyDamaged;
    default:
        return Code::ServerRefused;
    }
}

/** Runs an exchange to its end: the object received, or the address to ask instead. */
Bytes receive(OSSL_HTTP_REQ_CTX* run, bool mayRedirect, const Deadline& deadline, std::string& redirection)
{
    const ErrorQueueMark mark;
    char* target = nullptr;
    const BioHandle reply(OSSL_HTTP_exchange(run, mayRedirect ? &target : nullptr));
    const TextHandle owner(target);
    if (target)
        redirection = target;
    require(reply || target, failureCode(deadline));
    const char* bytes = nullptr;
    const long length = reply ? BIO_get_mem_data(reply.get(), &bytes) : 0;
    return Bytes(bytes, bytes + length);
}

/** Null when nothing is sent. */
BioHandle bodyOf(const Message& message)
{
    if (!message.contentType)
        return nullptr;
    return owned<BioHandle>(BIO_new_mem_buf(message.body.data(), static_cast<int>(message.body.size())));
}

/** One request; an empty reply with the address to ask instead, when the server gives one. */
Bytes exchange(const Address& address, const Message& message, const Deadline& deadline, int connectSeconds,
               std::string& redirection)
{
    Connection connection(address.host, address.port, deadline.sooner(connectSeconds));
    const int seconds = deadline.seconds();
    require(seconds > 0, Code::ServerTimeout); // 0 would be no limit
    const auto socket = owned<BioHandle>(BIO_new_socket(connection.get(), BIO_NOCLOSE));
    const BioHandle body = bodyOf(message);
    const auto run =
        owned<ExchangeHandle>(OSSL_HTTP_open(address.host.c_str(), address.port.c_str(), nullptr, nullptr, 0,
                                             socket.get(), socket.get(), nullptr, nullptr, 0, seconds));
    const bool set = OSSL_HTTP_set1_request(run.get(), address.path.c_str(), nullptr, message.contentType,
                                            body.get(), nullptr, 1, maxReplyLength, seconds, 0) == 1;
    require(set, Code::UrlRefused);
    return receive(run.get(), !message.contentType, deadline, redirection);
}

} // namespace

Bytes httpGet(const std::string& url, const Deadline& deadline, int connectSeconds)
{
    constexpr int mostRedirections = 5;
    Address address = parseAddress(url);
    for (int i = 0; i <= mostRedirections; ++i) {
        std::string redirection;
        Bytes reply = exchange(address, {}, deadline, connectSeconds, redirection);
        if (redirection.empty())
            return reply;
        if (redirection.starts_with('/'))
            address.path = redirection;
        else
            address = parseAddress(redirection);
    }
    throw Failure(Code::ServerRefused);
}

Bytes httpPost(const std::string& url, const std::string& contentType, ByteView body,
               const Deadline& deadline, int connectSeconds)
{
    std::string redirection;
    return exchange(parseAddress(url), {contentType.c_str(), body}, deadline, connectSeconds, redirection);
}

} // namespace qgtk
