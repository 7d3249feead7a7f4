/* Operations of the main toolkit's interface that other platforms have: smart cards, the Windows certificate
 * store. */

#define QGTK_PREFIX ZRTK_

#include "toolkit/interface/Interface.h"

using namespace qgtk;

namespace {

int refuse(void* handle) noexcept
{
    return callOn(handle, [](Context&) { throw Failure(Code::NoPlatform); });
}

} // namespace

/** An operation with these arguments behind the context, which answers NoPlatform and touches none of them.
 */
#define QGTK_NO_PLATFORM(name, ...)                                                                          \
    QGTK_OPERATION(name)(void* handle, __VA_ARGS__)                                                          \
    {                                                                                                        \
        return refuse(handle);                                                                               \
    }

QGTK_NO_PLATFORM(MEDIA_CARD_ReadCert, int, char*, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_CARD_ReadPriKey, int, char*, char*, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_CARD_WriteCert, int, char*, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_CARD_WritePriKey, int, int, char*, char*, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_CARD_DeleteCert, int, char*)
QGTK_NO_PLATFORM(MEDIA_CARD_DeletePriKey, int, char*, char*)
QGTK_NO_PLATFORM(MEDIA_WINS_WriteCertAndPriKey, int, char*, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_WINS_WriteCert, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_WINS_GetCertCnt, char*, int*)
QGTK_NO_PLATFORM(MEDIA_WINS_GetCertDN, int, int, int*, char*, char*)
QGTK_NO_PLATFORM(MEDIA_WINS_ReadCert, int, BINSTR*)
QGTK_NO_PLATFORM(MEDIA_WINS_ReadPriKey, int, BINSTR*)
