#pragma once

#include <string>
#include <vector>

#include "toolkit/core/Bytes.h"
#include "toolkit/core/Connection.h"

namespace qgtk {

/**
 * The values of an attribute of the entry that an address "ldap://host[:port]/name[?attribute]" names, read
 * anonymously. The name may have raw blanks. The address's own attribute is taken unless the given one is
 * forced; both are found with and without ";binary". Throws UrlRefused, ServerUnreachable, ServerTimeout,
 * ServerRefused, EntryMissing, ReplyTooLarge.
 */
std::vector<Bytes> readDirectory(const std::string& url, const std::string& attribute, bool forced,
                                 const Deadline& deadline, int connectSeconds);

/** A value of an entry with the entry's name. */
struct NamedValue
{
    std::string name;
    Bytes value;
};

/**
 * The first entry below the server's naming contexts whose common name is the given one and that has the
 * attribute. Throws as above.
 */
NamedValue findInDirectory(const std::string& host, int port, const std::string& commonName,
                           const std::string& attribute, const Deadline& deadline, int connectSeconds);

/** Escapes a name as a part of an address: what ends or marks parts of one. */
std::string addressForm(const std::string& name);

} // namespace qgtk
