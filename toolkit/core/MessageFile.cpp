#include "toolkit/core/MessageFile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <openssl/asn1.h>
#include <openssl/objects.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Handles.h"

namespace qgtk {

namespace {

/** What is not content: certificates, revocation lists, signers, recipients. */
constexpr std::size_t maxRest = 1U << 20;

constexpr std::size_t windowLength = 64U << 10;

/** No header is longer: a tag of 6 bytes, a length with 127 bytes of which zeros may lead. */
constexpr std::size_t headerLength = 160;

constexpr std::size_t markLength = 2;
constexpr std::size_t maxNesting = 8;

} // namespace

MessageFile::MessageFile(const std::string& path) : m_file(path)
{
    if (m_file.length() == 0)
        throw Failure(Code::FileEmpty, path);
    enterWritten(V_ASN1_UNIVERSAL, V_ASN1_SEQUENCE);
    const auto type = decodeDer<ObjectHandle>(d2i_ASN1_OBJECT, copyNext());
    require(type != nullptr, Code::MessageDamaged);
    enterWritten(V_ASN1_CONTEXT_SPECIFIC, 0);
    enterWritten(V_ASN1_UNIVERSAL, V_ASN1_SEQUENCE);
    const int kind = OBJ_obj2nid(type.get());
    require(kind == NID_pkcs7_signed || kind == NID_pkcs7_enveloped, Code::MessageKind);
    if (kind == NID_pkcs7_signed)
        splitSigned();
    else
        splitEnveloped();
}

std::size_t MessageFile::readContent(std::span<std::uint8_t> target)
{
    if (!m_begun) {
        m_begun = true;
        m_place = m_content.body;
        if (m_content.constructed)
            m_parts.push_back(
                {m_content.marked ? m_contentLimit : m_content.body + m_content.length, m_content.marked});
        else
            m_segment = m_content.length;
    }
    std::span<std::uint8_t> rest = target;
    while (!rest.empty() && (m_segment > 0 || nextSegment())) {
        const std::size_t count = std::min(rest.size(), m_segment);
        read(m_place, rest.first(count));
        m_place += count;
        m_segment -= count;
        rest = rest.subspan(count);
    }
    if (!rest.empty())
        finish();
    return target.size() - rest.size();
}

/** SignedData: version, digest algorithms, content, certificates, revocation lists, signers. */
void MessageFile::splitSigned()
{
    copyNext();
    copyNext();
    enterWritten(V_ASN1_UNIVERSAL, V_ASN1_SEQUENCE);
    copyNext();
    if (!atEnd(m_levels.back())) {
        enter(V_ASN1_CONTEXT_SPECIFIC, 0);
        const Element content = next();
        require(content.tagClass == V_ASN1_UNIVERSAL && content.tag == V_ASN1_OCTET_STRING,
                Code::MessageDamaged);
        setContent(content);
        m_place = endOf(content, m_contentLimit, m_file.length());
        leave();
    }
    leaveWritten();
    while (!m_levels.empty())
        copyLevel();
    require(m_place == m_file.length(), Code::MessageDamaged);
}

/** EnvelopedData: version, perhaps certificates, recipients, content, perhaps attributes. */
void MessageFile::splitEnveloped()
{
    for (Element element = next(); element.tagClass != V_ASN1_UNIVERSAL || element.tag != V_ASN1_SEQUENCE;
         element = next())
        copyNext();
    enterWritten(V_ASN1_UNIVERSAL, V_ASN1_SEQUENCE);
    copyNext();
    copyNext();
    if (atEnd(m_levels.back())) {
        while (!m_levels.empty())
            copyLevel();
        require(m_place == m_file.length(), Code::MessageDamaged);
        return;
    }
    const Element content = next();
    require(content.tagClass == V_ASN1_CONTEXT_SPECIFIC && content.tag == 0, Code::MessageDamaged);
    setContent(content);
    for (std::size_t i = 0; i < m_levels.size(); ++i)
        write({0, 0});
}

void MessageFile::setContent(const Element& content)
{
    m_hasContent = true;
    m_content = content;
    m_contentLimit = m_levels.back().end;
}

MessageFile::Element MessageFile::next()
{
    return elementAt(m_place, m_levels.empty() ? m_file.length() : m_levels.back().end);
}

MessageFile::Element MessageFile::enter(int tagClass, int tag)
{
    const Element element = next();
    require(element.tagClass == tagClass && element.tag == tag && element.constructed, Code::MessageDamaged);
    const std::size_t around = m_levels.empty() ? m_file.length() : m_levels.back().end;
    m_levels.push_back({element.marked ? around : element.body + element.length, element.marked});
    m_place = element.body;
    return element;
}

void MessageFile::leave()
{
    require(atEnd(m_levels.back()), Code::MessageDamaged);
    m_place += m_levels.back().marked ? markLength : 0;
    m_levels.pop_back();
}

/** The lengths change with the content gone: structures are written with a mark at their end. */
void MessageFile::enterWritten(int tagClass, int tag)
{
    constexpr std::uint8_t untilMark = 0x80;
    enter(tagClass, tag);
    write({static_cast<std::uint8_t>(tagClass | V_ASN1_CONSTRUCTED | tag), untilMark});
}

void MessageFile::leaveWritten()
{
    leave();
    write({0, 0});
}

bool MessageFile::atEnd(const Level& level)
{
    if (!level.marked)
        return m_place == level.end;
    std::array<std::uint8_t, markLength> mark{0xFF, 0xFF};
    return peek(m_place, mark) == mark.size() && mark[0] == 0 && mark[1] == 0;
}

ByteView MessageFile::copyNext()
{
    const Element element = next();
    const std::size_t most = maxRest - std::min(m_rest.size(), maxRest);
    const std::size_t length = endOf(element, m_levels.back().end, most) - m_place;
    require(length <= most, Code::MessageTooLarge);
    const std::size_t before = m_rest.size();
    m_rest.resize(before + length);
    read(m_place, std::span(m_rest).subspan(before));
    m_place += length;
    return ByteView(m_rest).subspan(before);
}

/** Copies what is left of a structure, and ends it. */
void MessageFile::copyLevel()
{
    while (!atEnd(m_levels.back()))
        copyNext();
    leaveWritten();
}

/** Passes over what is left of a structure, and ends it. */
void MessageFile::skipLevel()
{
    while (!atEnd(m_levels.back()))
        m_place = endOf(next(), m_levels.back().end, m_file.length());
    leave();
}

void MessageFile::write(std::initializer_list<std::uint8_t> bytes)
{
    m_rest.insert(m_rest.end(), bytes);
}

/** Goes to the next bytes of a content that is made of several strings. */
bool MessageFile::nextSegment()
{
    while (!m_parts.empty()) {
        const Level part = m_parts.back();
        if (atEnd(part)) {
            m_place += part.marked ? markLength : 0;
            m_parts.pop_back();
            continue;
        }
        const Element element = elementAt(m_place, part.end);
        require(element.tagClass == V_ASN1_UNIVERSAL && element.tag == V_ASN1_OCTET_STRING &&
                    m_parts.size() < maxNesting,
                Code::MessageDamaged);
        m_place = element.body;
        if (element.constructed)
            m_parts.push_back({element.marked ? part.end : element.body + element.length, element.marked});
        else if ((m_segment = element.length) > 0)
            return true;
    }
    return false;
}

void MessageFile::finish()
{
    if (m_levels.empty())
        return;
    while (!m_levels.empty())
        skipLevel();
    require(m_place == m_file.length(), Code::MessageDamaged);
}

MessageFile::Element MessageFile::elementAt(std::size_t place, std::size_t limit)
{
    constexpr int damaged = 0x80;
    constexpr int untilMark = 0x01;
    std::array<std::uint8_t, headerLength> header{};
    require(place < limit, Code::MessageDamaged);
    peek(place, std::span(header).first(std::min(header.size(), limit - place)));
    const unsigned char* position = header.data();
    long length = 0;
    Element element;
    const int flags = ASN1_get_object(&position, &length, &element.tag, &element.tagClass,
                                      static_cast<long>(limit - place));
    require((flags & damaged) == 0, Code::MessageDamaged);
    element.body = place + static_cast<std::size_t>(position - header.data());
    element.length = static_cast<std::size_t>(length);
    element.constructed = (flags & V_ASN1_CONSTRUCTED) != 0;
    element.marked = (flags & untilMark) != 0;
    return element;
}

/** Where an element ends. One that a mark ends is gone through, at most so many bytes of it. */
std::size_t MessageFile::endOf(const Element& element, std::size_t limit, std::size_t most)
{
    if (!element.marked)
        return element.body + element.length;
    std::size_t place = element.body;
    for (std::size_t open = 1; open > 0;) {
        const Element inner = elementAt(place, limit);
        const bool isMark =
            inner.tagClass == V_ASN1_UNIVERSAL && inner.tag == 0 && inner.length == 0 && !inner.constructed;
        if (isMark)
            --open;
        else if (inner.marked)
            ++open;
        place = inner.body + inner.length;
        require(place - element.body <= most, Code::MessageTooLarge);
    }
    return place;
}

void MessageFile::read(std::size_t place, std::span<std::uint8_t> target)
{
    constexpr std::size_t small = windowLength / 4;
    if (!inWindow(place, target.size()) && target.size() < small)
        fillWindow(place);
    if (inWindow(place, target.size()))
        std::memcpy(target.data(), m_window.data() + (place - m_windowPlace), target.size());
    else
        require(m_file.readAt(place, target) == target.size(), Code::MessageDamaged);
}

/** Reads ahead; gives fewer bytes at the end of the file. What lies far away is read without the window. */
std::size_t MessageFile::peek(std::size_t place, std::span<std::uint8_t> target)
{
    constexpr std::size_t near = 1024;
    const std::size_t windowEnd = m_windowPlace + m_window.size();
    if (!inWindow(place, target.size()) && place >= m_windowPlace && place <= windowEnd + near)
        fillWindow(place);
    if (!inWindow(place, target.size()))
        return m_file.readAt(place, target);
    std::memcpy(target.data(), m_window.data() + (place - m_windowPlace), target.size());
    return target.size();
}

bool MessageFile::inWindow(std::size_t place, std::size_t length) const
{
    return place >= m_windowPlace && place + length <= m_windowPlace + m_window.size();
}

void MessageFile::fillWindow(std::size_t place)
{
    m_window.resize(windowLength);
    m_window.resize(m_file.readAt(place, m_window));
    m_windowPlace = place;
}

} // namespace qgtk
