#include "Util.h"

#include <new>

#include "iniFile.h"
#include "quillgate/returncodes.h"

int CUtil::INIReadData(const char* pszData, void** object)
try {
    if (!object)
        return QG_BAD_ARGUMENT;
    if (!*object)
        *object = new CIniFile("");
    if (pszData && *pszData)
        static_cast<CIniFile*>(*object)->ReadString(pszData);
    return QG_OK;
} catch (const std::bad_alloc&) {
    return QG_NO_MEMORY;
}

void CUtil::INIFreeData(void* object)
{
    delete static_cast<CIniFile*>(object);
}
