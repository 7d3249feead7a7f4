#include "toolkit/core/ObjectList.h"

#include <climits>
#include <openssl/asn1.h>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

struct Element
{
    int tag = -1;
    ByteView whole; /**< with its header */
    ByteView content;

    bool isSequence() const { return tag == V_ASN1_SEQUENCE; }
};

/** The element that some bytes begin with. Its tag is -1 when it is none that a list may hold. */
Element firstElement(ByteView bytes)
{
    constexpr int damaged = 0x80;
    constexpr int indefinite = 0x01;
    const unsigned char* position = bytes.data();
    long length = 0;
    int tag = -1;
    int tagClass = 0;
    if (bytes.size() > INT_MAX)
        return {};
    const int kind = ASN1_get_object(&position, &length, &tag, &tagClass, static_cast<long>(bytes.size()));
    const bool isConstructed = (kind & V_ASN1_CONSTRUCTED) != 0;
    const bool fits = (kind & (damaged | indefinite)) == 0 && tagClass == V_ASN1_UNIVERSAL;
    const bool known = isConstructed ? tag == V_ASN1_SEQUENCE : tag == V_ASN1_OCTET_STRING;
    if (!fits || !known)
        return {};
    const auto header = static_cast<std::size_t>(position - bytes.data());
    const auto size = static_cast<std::size_t>(length);
    return {tag, bytes.first(header + size), bytes.subspan(header, size)};
}

} // namespace

std::vector<ByteView> splitObjectList(ByteView list)
{
    std::vector<ByteView> objects;
    while (!list.empty()) {
        const Element element = firstElement(list);
        require(element.tag >= 0, Code::ListDamaged);
        objects.push_back(element.isSequence() ? element.whole : element.content);
        list = list.subspan(element.whole.size());
    }
    return objects;
}

SecretBytes appendObject(ByteView list, ByteView object)
{
    splitObjectList(list);
    SecretBytes longer;
    longer.reserve(list.size() + object.size() + 8);
    longer.assign(list.begin(), list.end());
    const Element element = firstElement(object);
    if (!element.isSequence() || element.whole.size() != object.size()) {
        unsigned char header[8];
        unsigned char* end = header;
        ASN1_put_object(&end, 0, static_cast<int>(object.size()), V_ASN1_OCTET_STRING, V_ASN1_UNIVERSAL);
        longer.insert(longer.end(), header, end);
    }
    longer.insert(longer.end(), object.begin(), object.end());
    return longer;
}

ByteView objectAt(ByteView list, int index)
{
    const std::vector<ByteView> objects = splitObjectList(list);
    require(index >= 0 && static_cast<std::size_t>(index) < objects.size(), Code::ListIndex);
    return objects[static_cast<std::size_t>(index)];
}

} // namespace qgtk
