#include "toolkit/core/Directory.h"

#include <cerrno>
#include <cstring>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"
#include "toolkit/core/LdapLibrary.h"
#include "toolkit/core/Network.h"

namespace qgtk {

namespace {

using AddressHandle = Handle<LDAPURLDesc, [](LDAPURLDesc* address) {
    ldap_free_urldesc(address);
}>;
using FilterHandle = Handle<char, [](char* text) {
    ldap_memfree(text);
}>;
using MessageHandle = Handle<LDAPMessage, [](LDAPMessage* message) {
    ldap_msgfree(message);
}>;
using SessionHandle = Handle<LDAP, [](LDAP* session) {
    ldap_unbind_ext(session, nullptr, nullptr);
}>;
using ValuesHandle = Handle<berval*, [](berval** values) {
    ldap_value_free_len(values);
}>;

/** What is looked for. */
struct Query
{
    std::string base;
    int scope = LDAP_SCOPE_BASE;
    std::string filter = "(objectClass=*)";
    std::string attribute;
};

AddressHandle parseAddress(const std::string& url)
{
    LDAPURLDesc* parsed = nullptr;
    const int result = ldap_url_parse(url.c_str(), &parsed);
    AddressHandle address(parsed);
    require(result == LDAP_URL_SUCCESS && address->lud_host && *address->lud_host, Code::UrlRefused);
    return address;
}

/**
 * libldap reads configuration files of the machine and of the process's user, of the current directory, and
 * the environment, once a process; a session starts with what these say. What would matter here is set back:
 * server, search base, size limit and encryption are given by ourselves, the connection is made already.
 */
void setOptions(LDAP* session)
{
    const int version = LDAP_VERSION3;
    const int none = 0;
    ldap_set_option(session, LDAP_OPT_PROTOCOL_VERSION, &version);
    ldap_set_option(session, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    ldap_set_option(session, LDAP_OPT_DEREF, &none);
    ldap_set_option(session, LDAP_OPT_TIMELIMIT, &none);
    ldap_set_option(session, LDAP_OPT_TIMEOUT, nullptr);
    ldap_set_option(session, LDAP_OPT_NETWORK_TIMEOUT, nullptr);
    Sockbuf* buffer = nullptr;
    ldap_get_option(session, LDAP_OPT_SOCKBUF, &buffer);
    ber_len_t most = maxReplyLength;
    ber_sockbuf_ctrl(buffer, LBER_SB_OPT_SET_MAX_INCOMING, &most);
}

SessionHandle openSession(const std::string& host, int port, const Deadline& deadline, int connectSeconds)
{
    const std::string portText = std::to_string(port);
    Connection connection(host, portText, deadline.sooner(connectSeconds));
    LDAP* session = nullptr;
    const std::string server = "ldap://localhost:" + portText;
    require(ldap_init_fd(connection.get(), LDAP_PROTO_TCP, server.c_str(), &session) == LDAP_SUCCESS,
            Code::ServerUnreachable);
    connection.release();
    setOptions(session);
    return SessionHandle(session);
}

Code codeOf(int result)
{
    switch (result) {
    case LDAP_NO_SUCH_OBJECT:
    case LDAP_NO_SUCH_ATTRIBUTE:
    case LDAP_UNDEFINED_TYPE:
        return Code::EntryMissing;
    case LDAP_INVALID_DN_SYNTAX:
        return Code::UrlRefused;
    case LDAP_TIMEOUT:
        return Code::ServerTimeout;
    default:
        return Code::ServerRefused;
    }
}

int sendQuery(LDAP* session, const Query& query)
{
    std::string plain = query.attribute;
    std::string binary = query.attribute + ";binary";
    char* attributes[] = {plain.data(), binary.data(), nullptr};
    int id = 0;
    const int result = ldap_search_ext(session, query.base.c_str(), query.scope, query.filter.c_str(),
                                       attributes, 0, nullptr, nullptr, nullptr, 0, &id);
    require(result == LDAP_SUCCESS, codeOf(result));
    return id;
}

/** Why no reply came: too long a one ends like a broken connection, but for the error number. */
Code failureCode(int received, int errorNumber)
{
    if (received == 0)
        return Code::ServerTimeout;
    return errorNumber == ERANGE ? Code::ReplyTooLarge : Code::ServerRefused;
}

MessageHandle search(LDAP* session, const Query& query, const Deadline& deadline)
{
    const int id = sendQuery(session, query);
    const int left = deadline.milliseconds();
    timeval limit{left / 1000, (left % 1000) * 1000L};
    LDAPMessage* received = nullptr;
    errno = 0;
    const int type = ldap_result(session, id, LDAP_MSG_ALL, &limit, &received);
    const int errorNumber = errno;
    MessageHandle message(received);
    require(type > 0, failureCode(type, errorNumber));
    int result = LDAP_OTHER;
    ldap_parse_result(session, message.get(), &result, nullptr, nullptr, nullptr, nullptr, 0);
    require(result == LDAP_SUCCESS, codeOf(result));
    return message;
}

std::vector<Bytes> valuesOf(LDAP* session, LDAPMessage* entry, const std::string& attribute)
{
    std::vector<Bytes> values;
    for (const std::string& name : {attribute, attribute + ";binary"}) {
        const ValuesHandle found(ldap_get_values_len(session, entry, name.c_str()));
        for (berval** value = found.get(); value && *value; ++value)
            values.emplace_back((*value)->bv_val, (*value)->bv_val + (*value)->bv_len);
    }
    return values;
}

/** The attribute without the option that says how its values are carried. */
std::string withoutBinary(const std::string& attribute)
{
    return attribute.substr(0, attribute.find(';'));
}

std::string escapedFilter(const std::string& text)
{
    berval plain{text.size(), const_cast<char*>(text.data())};
    berval escaped{};
    if (ldap_bv2escaped_filter_value(&plain, &escaped) != 0)
        throw std::bad_alloc();
    const FilterHandle owner(escaped.bv_val);
    return {escaped.bv_val, escaped.bv_len};
}

} // namespace

std::vector<Bytes> readDirectory(const std::string& url, const std::string& attribute, bool forced,
                                 const Deadline& deadline, int connectSeconds)
{
    const AddressHandle address = parseAddress(url);
    Query query;
    query.base = address->lud_dn ? address->lud_dn : "";
    query.base.erase(0, query.base.find_first_not_of('/'));
    const bool own = !forced && address->lud_attrs && address->lud_attrs[0];
    query.attribute = withoutBinary(own ? address->lud_attrs[0] : attribute);
    const SessionHandle session = openSession(address->lud_host, address->lud_port, deadline, connectSeconds);
    const MessageHandle message = search(session.get(), query, deadline);
    LDAPMessage* entry = ldap_first_entry(session.get(), message.get());
    std::vector<Bytes> values =
        entry ? valuesOf(session.get(), entry, query.attribute) : std::vector<Bytes>();
    require(!values.empty(), Code::EntryMissing);
    return values;
}

NamedValue findInDirectory(const std::string& host, int port, const std::string& commonName,
                           const std::string& attribute, const Deadline& deadline, int connectSeconds)
{
    const SessionHandle session = openSession(host, port, deadline, connectSeconds);
    const MessageHandle top = search(session.get(), {.base = "", .attribute = "namingContexts"}, deadline);
    LDAPMessage* root = ldap_first_entry(session.get(), top.get());
    require(root != nullptr, Code::EntryMissing);
    for (const Bytes& context : valuesOf(session.get(), root, "namingContexts")) {
        const Query query{std::string(textOf(context)), LDAP_SCOPE_SUBTREE,
                          "(cn=" + escapedFilter(commonName) + ")", attribute};
        const MessageHandle message = search(session.get(), query, deadline);
        for (LDAPMessage* entry = ldap_first_entry(session.get(), message.get()); entry;
             entry = ldap_next_entry(session.get(), entry)) {
            const std::vector<Bytes> values = valuesOf(session.get(), entry, attribute);
            const FilterHandle name(ldap_get_dn(session.get(), entry));
            if (!values.empty() && name)
                return {name.get(), values.front()};
        }
    }
    throw Failure(Code::EntryMissing);
}

std::string addressForm(const std::string& name)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string form;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = byte > 0x20 && byte < 0x7F && !std::strchr("%?#\"<>\\", c);
        if (plain)
            form += c;
        else
            (form += '%') += {digits[byte >> 4], digits[byte & 15]};
    }
    return form;
}

} // namespace qgtk
