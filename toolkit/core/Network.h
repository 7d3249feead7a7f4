#pragma once

#include <map>
#include <string>
#include <vector>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Connection.h"
#include "toolkit/core/Directory.h"
#include "toolkit/core/PipeSignal.h"

namespace qgtk {

/** Bytes that a reply may have. */
inline constexpr std::size_t maxReplyLength = 16U << 20;

/** What is asked of an address; the numbers are those of nDataType. */
enum class ObjectKind : int
{
    AuthorityCertificate = 1,
    UserCertificate = 2,
    Crl = 3,
    AuthorityCrl = 4
};

/** The kind of a caller's number. Throws BadArgument. */
ObjectKind objectKindOf(int dataType);

/** What servers gave, by kind and address. */
using ReplyStore = std::map<std::string, std::vector<Bytes>>;

/**
 * Asks servers for certificates, revocation lists and status answers: all that one operation asks, within one
 * limit of time. Only "ldap:" and "http:" addresses are served.
 */
class Network
{
public:
    /** Limits in seconds. Replies are taken from and put into a store when there is one, which must live on.
     */
    Network(int connectSeconds, int totalSeconds, ReplyStore* kept = nullptr)
        : m_deadline(totalSeconds), m_connectSeconds(connectSeconds), m_kept(kept)
    {}

    /**
     * The objects at an address, at least one, each DER of the kind. An address of a directory may have raw
     * blanks, and an attribute of its own, which goes before the kind's. Throws UrlRefused,
     * ServerUnreachable, ServerTimeout, ServerRefused, EntryMissing, ReplyTooLarge, ReplyDamaged, each with
     * the address.
     */
    std::vector<Bytes> fetch(const std::string& url, ObjectKind kind);

    /** The values of an attribute of a directory entry, whatever they are. Throws as above. */
    std::vector<Bytes> fetchAttribute(const std::string& url, const std::string& attribute);

    /** The entry of a common name anywhere in a directory that has an object of the kind. Throws as above. */
    NamedValue find(const std::string& host, int port, const std::string& commonName, ObjectKind kind);

    /** Posts bytes to an "http:" address and gives the reply, DER of any kind. Throws as above. */
    Bytes post(const std::string& url, const std::string& contentType, ByteView body);

    /** Sends bytes as a message over TCP and gives the reply's. Throws as exchangeByTcp. */
    Bytes send(const std::string& host, int port, ByteView message);

    /** What is left of the limit. */
    const Deadline& deadline() const { return m_deadline; }

private:
    template <typename Exchange>
    auto named(const std::string& url, Exchange&& exchange);
    std::vector<Bytes> fetchAnew(const std::string& url, ObjectKind kind);

    PipeSignal m_noPipeSignal;
    Deadline m_deadline;
    int m_connectSeconds;
    ReplyStore* m_kept;
};

} // namespace qgtk
