#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace samplepki {

/** A byte string: DER, a key, a random value. */
using Bytes = std::string;

/**
 * Composes DER by hand. Certificates of the field hold what OpenSSL's own structures refuse (EUC-KR bytes
 * in a UTF8String) and tests need certificates that are wrong on purpose; bytes put together here can hold
 * both.
 */
namespace der {

/** Tags of the elements that certificates and keys are made of. */
enum Tag : unsigned char
{
    Boolean = 0x01,
    Integer = 0x02,
    BitString = 0x03,
    OctetString = 0x04,
    Null = 0x05,
    Oid = 0x06,
    Utf8String = 0x0C,
    PrintableString = 0x13,
    T61String = 0x14,
    Ia5String = 0x16,
    BmpString = 0x1E,
    Sequence = 0x30,
    Set = 0x31,
};

/** One element: the tag byte, the length and the content. */
Bytes element(unsigned char tag, std::string_view content);

/** An element whose content is the given parts, one behind the other. */
Bytes element(unsigned char tag, std::initializer_list<std::string_view> parts);

/** SEQUENCE of the given parts. */
Bytes sequence(std::initializer_list<std::string_view> parts);

/** Context-specific tag [number]: 'constructed' holds elements, else it is an IMPLICIT primitive. */
Bytes context(unsigned number, std::string_view content, bool constructed = true);

/** OBJECT IDENTIFIER from its dotted text or a name that OpenSSL knows. Throws std::invalid_argument. */
Bytes oid(const std::string& text);

/** INTEGER of a number that is not negative. */
Bytes integer(std::uint64_t value);

/** INTEGER of a big-endian number of any length that is not negative. */
Bytes bigInteger(std::string_view bigEndian);

/** BIT STRING of whole bytes; no trailing zero bit is dropped. */
Bytes bitString(std::string_view bytes);

} // namespace der

/** Bytes of a hexadecimal text; an odd count of digits is taken with a leading 0. Throws
 * std::invalid_argument. */
Bytes fromHex(std::string_view hex);

/** Lower-case hexadecimal text of bytes. */
std::string toHex(std::string_view bytes);

/** Text from one charset in another, both by iconv's names. Throws std::invalid_argument for what can't be
 * converted. */
Bytes convertText(std::string_view text, const char* from, const char* to);

} // namespace samplepki
