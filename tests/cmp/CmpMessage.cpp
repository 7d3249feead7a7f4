#include "CmpMessage.h"

#include <openssl/asn1.h>
#include <stdexcept>

using samplepki::Bytes;

std::vector<Element> elementsOf(const Bytes& der)
{
    constexpr int damaged = 0x80;
    std::vector<Element> elements;
    const auto* position = reinterpret_cast<const unsigned char*>(der.data());
    const unsigned char* const end = position + der.size();
    while (position < end) {
        const unsigned char* const start = position;
        long length = 0;
        int tag = 0;
        int tagClass = 0;
        if ((ASN1_get_object(&position, &length, &tag, &tagClass, end - position) & damaged) != 0)
            throw std::invalid_argument("not DER");
        const Bytes content(position, position + length);
        position += length;
        elements.push_back({*start, Bytes(start, position), content});
    }
    return elements;
}

Element at(const Bytes& der, const std::vector<std::size_t>& places)
{
    Element found{0, {}, der};
    for (const std::size_t place : places)
        found = elementsOf(found.content).at(place);
    return found;
}

Element tagged(const Bytes& content, unsigned char tag)
{
    for (const Element& element : elementsOf(content))
        if (element.tag == tag)
            return element;
    return {};
}

int bodyOf(const Bytes& message)
{
    constexpr unsigned numberOfTag = 0x1F;
    return at(message, {0, 1}).tag & numberOfTag;
}

Asked askedBy(const Bytes& message)
{
    Asked asked;
    if (bodyOf(message) == Revocation) {
        const Element wanted = at(message, {0, 1, 0, 0, 0});
        asked.serial = tagged(wanted.content, 0x81).content;
        return asked;
    }
    const Element request = at(message, {0, 1, 0, 0, 0});
    const Element wanted = at(request.content, {1});
    asked.publicKey = samplepki::der::sequence({tagged(wanted.content, 0xA6).content});
    asked.extensions = samplepki::der::sequence({tagged(wanted.content, 0xA9).content});
    if (bodyOf(message) == KeyUpdate)
        asked.serial = at(request.content, {2, 0, 1, 1}).content;
    return asked;
}
