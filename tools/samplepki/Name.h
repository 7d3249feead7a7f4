#pragma once

#include <string>
#include <vector>

#include "samplepki/Der.h"

namespace samplepki {

/** How a name's value is written into the certificate. The value itself is always given in UTF-8. */
enum class StringType
{
    Utf8,        /**< UTF8String */
    Printable,   /**< PrintableString */
    Bmp,         /**< BMPString */
    EucKrInUtf8, /**< EUC-KR bytes under the tag UTF8String, as old issuers wrote them; OpenSSL refuses these
                  */
    EucKrInT61,  /**< EUC-KR bytes under the tag T61String */
};

/** One attribute of a distinguished name: type is "CN", "ou", "serialNumber" or a dotted OID. */
struct NamePart
{
    std::string type;
    std::string value;
    StringType stringType = StringType::Utf8;
};

/** A distinguished name in the order of its DER form: country first, common name last. */
using Name = std::vector<NamePart>;

/**
 * A name from its leaf-first text: "cn=홍길동,ou=personal4IB,o=yessign,c=kr". Values can't hold commas. The
 * country is a PrintableString, the rest has the given type. Throws std::invalid_argument for a part without
 * '='.
 */
Name nameFromText(const std::string& text, StringType stringType = StringType::Utf8);

/** The leaf-first text of a name, with lower-case types and without blanks: the usual name of a holder's
 * directory. */
std::string nameText(const Name& name);

/** Value of the last CN of the name; empty without one. */
std::string commonName(const Name& name);

/** DER of the name. Throws std::invalid_argument for a type that is unknown or a value that can't be
 * converted. */
Bytes encodeName(const Name& name);

} // namespace samplepki
