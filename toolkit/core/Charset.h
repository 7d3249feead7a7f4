#pragma once

#include <iconv.h>
#include <openssl/asn1.h>
#include <string>
#include <string_view>

namespace qgtk {

/**
 * Turns the texts of certificates into EUC-KR.
 *
 * Characters that EUC-KR lacks are taken from its superset CP949; what that lacks as well becomes '?', and so
 * does a control character, which would cut or split a text: nothing else of a text is lost. The converter is
 * opened at the first text that needs it and kept. One thread at a time.
 */
class Charset
{
public:
    Charset() = default;
    ~Charset();
    Charset(const Charset&) = delete;
    Charset& operator=(const Charset&) = delete;

    /** Text of an ASN.1 string of any type; 8-bit types may hold UTF-8 or EUC-KR, whatever the type says. */
    std::string fromAsn1(const ASN1_STRING* string);

    /** Text from UTF-8. Bytes that are no UTF-8 become '?'. */
    std::string fromUtf8(std::string_view utf8);

private:
    bool open();
    std::size_t convertRun(std::string_view utf8, std::string& result);

    iconv_t m_toEucKr = iconv_t(-1);
    bool m_tried = false;
};

/** Bytes of the character that an EUC-KR or CP949 text begins with: 2 for a pair, else 1; 0 at its end. */
std::size_t eucKrCharacterLength(std::string_view text);

/**
 * Writes a text into a caller's buffer of the given size, terminator included: cut between characters when it
 * is longer, always terminated. Throws BadArgument for a null buffer or a size below 1.
 */
void copyCut(std::string_view text, int size, char* buffer);

/** The same for a text that is of no use when cut. Throws BufferTooSmall and leaves an empty text. */
void copyWhole(std::string_view text, int size, char* buffer);

} // namespace qgtk
