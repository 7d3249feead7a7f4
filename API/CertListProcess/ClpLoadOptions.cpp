#include "ClpCall.h"

using namespace clp;
using Session = CCertListProcInterface;

namespace {

/** The disk store's list of added names of a kind; null for any other kind. */
CLoadDISK::Names* addedNames(CLoadDISK& disk, const char* kind)
{
    static constexpr struct
    {
        const char* kind;
        CLoadDISK::Names CLoadDISK::*names;
    } LISTS[] = {{"GPKI", &CLoadDISK::m_vtGPKIDirectory},
                 {"NPKI", &CLoadDISK::m_vtNPKIDirectory},
                 {"MPKI", &CLoadDISK::m_vtMPKIDirectory},
                 {"PPKI", &CLoadDISK::m_vtPRIVATEDirectory}};
    for (const auto& list : LISTS) {
        if (strcasecmp(kind, list.kind) == 0)
            return &(disk.*list.names);
    }
    return nullptr;
}

/** Works on the list of a kind; an unknown kind does nothing and is no failure. */
template <typename Work>
int onNames(Session& session, const char* kind, Work work)
{
    CLoadDISK* disk = session.GetDiskPointer();
    if (!disk)
        return QG_NO_CONTEXT;
    if (CLoadDISK::Names* names = addedNames(*disk, kind))
        work(*names);
    return QG_OK;
}

/** Works on the purpose names of the disk store, then of the memory store. */
template <typename Work>
int onOidNames(Session& session, Work work)
{
    if (!session.GetDiskPointer() || !session.GetMemoryPointer())
        return QG_NO_CONTEXT;
    work(session.GetDiskPointer()->m_mapOidList);
    work(session.GetMemoryPointer()->m_mapOidList);
    return QG_OK;
}

} // namespace

int CLP_LoadCertList_ClearPath(void* pContext, char* pszType)
{
    return forward("CLP_LoadCertList_ClearPath", pContext, pszType != nullptr, [&](Session& session) {
        return onNames(session, pszType, [](auto& names) { names.clear(); });
    });
}

int CLP_LoadCertList_AddPath(void* pContext, char* pszType, char* pszPath)
{
    return forward("CLP_LoadCertList_AddPath", pContext, pszType && pszPath, [&](Session& session) {
        return onNames(session, pszType, [&](auto& names) { names.emplace_back(pszPath); });
    });
}

int CLP_LoadCertList_ClearOidInfo(void* pContext)
{
    return forward("CLP_LoadCertList_ClearOidInfo", pContext, [](Session& session) {
        return onOidNames(session, [](OidNames& names) { names.clear(); });
    });
}

int CLP_LoadCertList_OidInfo(void* pContext, char* pszOid, char* pszDivision)
{
    return forward("CLP_LoadCertList_OidInfo", pContext, pszOid && pszDivision, [&](Session& session) {
        return onOidNames(session, [&](OidNames& names) { names[pszOid] = pszDivision; });
    });
}
