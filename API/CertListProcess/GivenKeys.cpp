#include "GivenKeys.h"

#include <utility>

#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

int KeyOpening::open(const GivenKey& key, SecretBuffer& plain) const
{
    ToolkitBytes encrypted(log.toolkit());
    ToolkitBytes opened(log.toolkit());
    if (key.present())
        encrypted.set(key.data, key.length);
    const int code = PriKeyDecrypt(log.toolkit(), const_cast<char*>(password), encrypted.get(), opened.get());
    if (code != QG_OK) {
        (log.*line)(tag, "PriKeyDecrypt()", code);
        return CLPERR_KEY_DECRYPT;
    }
    return copyKey({opened.data(), opened.size()}, plain);
}

int copyKey(const GivenKey& key, SecretBuffer& copy)
{
    SecretBuffer made(key.data, key.present() ? static_cast<std::size_t>(key.length) : 0);
    if (!made)
        return QG_NO_MEMORY;
    copy = std::move(made);
    return QG_OK;
}
