#include "toolkit/core/ObjectList.h"

#include "toolkit/core/DerElement.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

bool isSequence(const DerElement& element)
{
    return element.tag == V_ASN1_SEQUENCE && element.isConstructed;
}

bool isOctets(const DerElement& element)
{
    return element.tag == V_ASN1_OCTET_STRING && !element.isConstructed;
}

} // namespace

std::vector<ByteView> splitObjectList(ByteView list)
{
    std::vector<ByteView> objects;
    while (!list.empty()) {
        const std::optional<DerElement> element = firstElement(list);
        require(element && (isSequence(*element) || isOctets(*element)), Code::ListDamaged);
        objects.push_back(isSequence(*element) ? element->whole : element->content);
        list = list.subspan(element->whole.size());
    }
    return objects;
}

SecretBytes appendObject(ByteView list, ByteView object)
{
    splitObjectList(list);
    SecretBytes longer;
    longer.reserve(list.size() + object.size() + 8);
    longer.assign(list.begin(), list.end());
    const std::optional<DerElement> element = firstElement(object);
    if (!element || !isSequence(*element) || element->whole.size() != object.size()) {
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
