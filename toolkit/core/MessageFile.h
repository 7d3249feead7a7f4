#pragma once

#include <optional>
#include <vector>

#include "toolkit/core/FileStream.h"

namespace qgtk {

/**
 * A signed or enveloped message in a file (BER, RFC 5652), its content apart from the rest: OpenSSL decodes
 * whole messages only, and the content may be larger than memory. What is not content has at most 1 MiB.
 */
class MessageFile
{
public:
    /** Throws as FileSource; FileEmpty, MessageDamaged, MessageKind (neither signed nor enveloped),
     * MessageTooLarge (what is not content). */
    explicit MessageFile(const std::string& path);

    /** The message without its content, BER. What stands behind an envelope's content is not in it. */
    const Bytes& rest() const { return m_rest; }

    /** Whether the message carries its content. */
    bool carriesContent() const { return m_hasContent; }

    /** Reads on in the content; 0 at its end, when the file ends as it must. Throws MessageDamaged. */
    std::size_t readContent(std::span<std::uint8_t> target);

private:
    /** A structure that has begun and not ended. */
    struct Level
    {
        std::size_t end; /**< where it ends; when a mark does that, where the structure around it ends */
        bool marked;
    };
    struct Element
    {
        std::size_t body = 0;
        std::size_t length = 0; /**< 0 when a mark ends it */
        int tagClass = 0;
        int tag = 0;
        bool constructed = false;
        bool marked = false;
    };

    void splitSigned();
    void splitEnveloped();
    void setContent(const Element& content);

    Element next();
    Element enter(int tagClass, int tag);
    void leave();
    void enterWritten(int tagClass, int tag);
    void leaveWritten();
    bool atEnd(const Level& level);
    ByteView copyNext();
    void copyLevel();
    void skipLevel();
    void write(std::initializer_list<std::uint8_t> bytes);

    bool nextSegment();
    void finish();

    Element elementAt(std::size_t place, std::size_t limit);
    std::size_t endOf(const Element& element, std::size_t limit, std::size_t most);
    void read(std::size_t place, std::span<std::uint8_t> target);
    std::size_t peek(std::size_t place, std::span<std::uint8_t> target);
    bool inWindow(std::size_t place, std::size_t length) const;
    void fillWindow(std::size_t place);

    FileSource m_file;
    std::size_t m_place = 0;
    std::vector<Level> m_levels;
    Bytes m_rest;

    bool m_hasContent = false;
    bool m_begun = false;
    Element m_content;
    std::size_t m_contentLimit = 0;
    std::vector<Level> m_parts; /**< strings of which the content is made, one in the other */
    std::size_t m_segment = 0;  /**< bytes of the content that stand at m_place */

    SecretBytes m_window; /**< bytes of the file from m_windowPlace on */
    std::size_t m_windowPlace = 0;
};

} // namespace qgtk
