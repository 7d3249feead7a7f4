#pragma once

namespace qgtk {

/** How messages of CMP travel. */
enum class CmpProtocol : int
{
    Http = 0, /**< RFC 6712 */
    Tcp = 1   /**< RFC 2510, section 5.2 */
};

/** What a caller sets for the exchanges with authorities that follow. */
struct CmpSettings
{
    CmpProtocol protocol = CmpProtocol::Http;
    int authority = 0; /**< number of a section of the configuration; 0: none */
};

} // namespace qgtk
