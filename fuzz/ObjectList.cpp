// Lists of objects in one byte string.

#include <algorithm>

#include "Target.h"
#include "toolkit/core/ObjectList.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    attempt([&] {
        const std::vector<ByteView> objects = splitObjectList(input);
        const SecretBytes longer = appendObject(input, input);
        expect(splitObjectList(longer).size() == objects.size() + 1);
        expect(std::ranges::equal(objectAt(longer, static_cast<int>(objects.size())), input));
    });
    attempt([&] { objectAt(input, 0); });
    const SecretBytes alone = appendObject({}, input);
    expect(std::ranges::equal(objectAt(alone, 0), input));
}
