#include <cstring>

#include "BoundedText.h"
#include "DirectoryReader.h"
#include "DiskDirectories.h"
#include "HomeDirectory.h"
#include "LoadDISK.h"
#include "quillgate/returncodes.h"

namespace {

constexpr std::string_view GPKI_FIRST[] = {"GPKI"};
constexpr std::string_view GPKI_SECOND[] = {"certificate"};
constexpr std::string_view GPKI_THIRD[] = {"class1", "class2"};
constexpr std::string_view NPKI_FIRST[] = {"NPKI"};
constexpr std::string_view NPKI_SECOND[] = {"yessign", "signkorea", "tradesign", "crosscert",
                                            "kica",    "signgate",  "ncasign"};
constexpr std::string_view MPKI_FIRST[] = {"MPKI"};
constexpr std::string_view USER[] = {"user"};

constexpr DirectoryLevel GPKI_LEVELS[] = {
    {CUtil::ToUpper, GPKI_FIRST, false},
    {CUtil::ToLower, GPKI_SECOND, false},
    {CUtil::ToLower, GPKI_THIRD, false},
};
constexpr DirectoryLevel NPKI_LEVELS[] = {
    {CUtil::ToUpper, NPKI_FIRST, false},
    {CUtil::ToLower, NPKI_SECOND, true},
    {CUtil::ToLower, USER, false},
};
constexpr DirectoryLevel MPKI_LEVELS[] = {
    {CUtil::ToUpper, MPKI_FIRST, false},
    {CUtil::ToLower, USER, false},
};

/** The text in a copy of its own, folded. */
void foldInto(DirectoryLevel::Fold fold, const char* text, char (&folded)[1024])
{
    joinText(folded, {text});
    fold(reinterpret_cast<LPBYTE>(folded));
}

/** Walks the levels below a root and hands each path of the last level, closed by a slash, to the sink. */
template <typename Accepts, typename Sink>
void walkLevels(const char* root, std::span<const DirectoryLevel> levels, Accepts accepts, Sink sink)
{
    const bool last = levels.size() == 1;
    char path[1024];
    DirectoryReader reader(root);
    while (reader.next()) {
        if (!accepts(levels.front(), reader.name()) ||
            !joinPath(path, {root, "/", reader.name(), last ? "/" : ""}))
            continue;
        if (last)
            sink(path);
        else
            walkLevels(path, levels.subspan(1), accepts, sink);
    }
}

} // namespace

const CLoadDISK::Walk CLoadDISK::GPKI_WALKS[] = {&CLoadDISK::GetGPKICertList};
const CLoadDISK::Walk CLoadDISK::NPKI_WALKS[] = {&CLoadDISK::GetNPKICertList};
const CLoadDISK::Walk CLoadDISK::MPKI_WALKS[] = {&CLoadDISK::GetMPKIGCertList, &CLoadDISK::GetMPKINCertList};

const CLoadDISK::DirectoryKind CLoadDISK::GPKI_KIND = {
    CERTTYPE_GPKI, GPKI_LEVELS, GPKI_WALKS, &CLoadDISK::m_pstCertGPKIDirectory, &CLoadDISK::m_nGPKIDirCnt};
const CLoadDISK::DirectoryKind CLoadDISK::NPKI_KIND = {
    CERTTYPE_NPKI, NPKI_LEVELS, NPKI_WALKS, &CLoadDISK::m_pstCertNPKIDirectory, &CLoadDISK::m_nNPKIDirCnt};
const CLoadDISK::DirectoryKind CLoadDISK::MPKI_KIND = {
    CERTTYPE_MPKI, MPKI_LEVELS, MPKI_WALKS, &CLoadDISK::m_pstCertMPKIDirectory, &CLoadDISK::m_nMPKIDirCnt};
const std::array<const CLoadDISK::DirectoryKind*, 3> CLoadDISK::KINDS = {&GPKI_KIND, &NPKI_KIND, &MPKI_KIND};

int CLoadDISK::findDirectories(const DirectoryKind& kind, bool bOnlyCount, char* pszFindDir, int nDirLen,
                               char* pszCertDir, int* nDirCnt)
{
    if (!pszFindDir || !nDirCnt)
        return QG_BAD_ARGUMENT;
    int count = 0;
    const auto found = [&](const char* path) {
        if (pszCertDir && nDirLen > 0)
            joinText(pszCertDir, static_cast<size_t>(nDirLen), {path});
        // A directory that came into being after the count has no place in the array.
        if (!bOnlyCount && count >= this->*kind.count)
            return;
        if (!bOnlyCount)
            joinText((this->*kind.directories)[static_cast<size_t>(count)].szCertDirPath, {path});
        ++count;
    };
    walkLevels(
        pszFindDir, kind.levels,
        [this](const DirectoryLevel& level, const char* name) { return acceptsLevel(level, name); }, found);
    *nDirCnt = count;
    return QG_OK;
}

bool CLoadDISK::acceptsLevel(const DirectoryLevel& level, const char* name) const
{
    char folded[1024];
    foldInto(level.fold, name, folded);
    for (const std::string_view known : level.names) {
        if (known == folded)
            return true;
    }
    return level.takesAdded && isAddedName(folded);
}

bool CLoadDISK::isAddedName(const char* folded) const
{
    char added[1024];
    for (const std::string& name : m_vtNPKIDirectory) {
        if (name.empty())
            continue;
        foldInto(CUtil::ToLower, name.c_str(), added);
        if (std::strcmp(added, folded) == 0)
            return true;
    }
    return false;
}

int CLoadDISK::GPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir,
                                 int* nDirCnt)
{
    return log().traced("CLoadDISK::GPKIFindDirectory()", [&] {
        return findDirectories(GPKI_KIND, bOnlyCount, pszFindDir, nDirLen, pszCertDir, nDirCnt);
    });
}

int CLoadDISK::NPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir,
                                 int* nDirCnt)
{
    // The end line carries the neighbour's name: readers of the log know it so.
    return log().traced("CLoadDISK::NPKIFindDirectory()", "CLoadDISK::GPKIFindDirectory()", [&] {
        return findDirectories(NPKI_KIND, bOnlyCount, pszFindDir, nDirLen, pszCertDir, nDirCnt);
    });
}

int CLoadDISK::MPKIFindDirectory(bool bOnlyCount, char* pszFindDir, int nDirLen, char* pszCertDir,
                                 int* nDirCnt)
{
    return log().traced("CLoadDISK::MPKIFindDirectory()", [&] {
        return findDirectories(MPKI_KIND, bOnlyCount, pszFindDir, nDirLen, pszCertDir, nDirCnt);
    });
}

int CLoadDISK::GetDirectoryCount(int nCertType)
{
    return log().traced("CLoadDISK::GetDirectoryCount()", [&] {
        char home[1024] = {};
        char last[1024] = {};
        homeDirectory(home);
        int count = 0;
        if (nCertType == CERTTYPE_NPKI) {
            // The home directory is counted for a removable drive too: settled, hosts rely on it.
            NPKIFindDirectory(true, home, sizeof(last), last, &count);
            return count;
        }
        if (m_nMediaType != MEDIA_HARDDISK && m_nMediaType != MEDIA_REMOVABLE)
            return 0;
        char* root = m_nMediaType == MEDIA_HARDDISK ? home : m_szSelRemDrive;
        if (nCertType == CERTTYPE_GPKI)
            GPKIFindDirectory(true, root, sizeof(last), last, &count);
        else if (nCertType == CERTTYPE_MPKI)
            MPKIFindDirectory(true, root, sizeof(last), last, &count);
        return count;
    });
}

int CLoadDISK::GetCertDirectory(int nCertType, int /*nDirCount*/)
{
    return log().traced("CLoadDISK::GetCertDirectory()", [&] {
        char home[1024] = {};
        char profile[1] = {};
        homeDirectory(home);
        int count = 0;
        switch (nCertType) {
        case CERTTYPE_GPKI:
            return GetGPKICertDirectory(home, &count);
        case CERTTYPE_NPKI:
            return GetNPKICertDirectory(0, 0, home, home, profile, &count);
        case CERTTYPE_MPKI:
            return GetMPKICertDirectory(0, 0, home, home, profile, &count);
        default:
            return static_cast<int>(QG_OK);
        }
    });
}

int CLoadDISK::GetGPKICertDirectory(char* pszSystemDrv, int* nDirCount)
{
    return log().traced("CLoadDISK::GetGPKICertDirectory()", [&] {
        if (!pszSystemDrv)
            return static_cast<int>(QG_BAD_ARGUMENT);
        char last[1024] = {};
        char* root = m_nMediaType == MEDIA_REMOVABLE ? m_szSelRemDrive : pszSystemDrv;
        return GPKIFindDirectory(false, root, sizeof(last), last, nDirCount);
    });
}

int CLoadDISK::GetNPKICertDirectory(int /*nOS*/, BOOL /*bIs64bit*/, char* pszSystemDrv,
                                    char* pszProgramFilePath, char* /*pszUserProfile*/, int* nDirCount)
{
    return log().traced("CLoadDISK::GetNPKICertDirectory()", [&] {
        if (!pszSystemDrv || !*pszSystemDrv || !pszProgramFilePath || !*pszProgramFilePath)
            return static_cast<int>(QG_BAD_ARGUMENT);
        char last[1024] = {};
        if (m_nMediaType != MEDIA_REMOVABLE)
            return NPKIFindDirectory(false, pszSystemDrv, sizeof(last), last, nDirCount);
        // The walk looks for an NPKI entry below this root once more, so a drive's NPKI/NPKI is what it
        // finds. Settled, hosts rely on it.
        char root[1024];
        if (!joinPath(root, {m_szSelRemDrive, "/NPKI"}))
            return static_cast<int>(QG_OK);
        return NPKIFindDirectory(false, root, sizeof(last), last, nDirCount);
    });
}

int CLoadDISK::GetMPKICertDirectory(int /*nOS*/, BOOL /*bIs64bit*/, char* pszSystemDrv,
                                    char* pszProgramFilePath, char* /*pszUserProfile*/, int* nDirCount)
{
    return log().traced("CLoadDISK::GetMPKICertDirectory()", [&] {
        if (!pszSystemDrv || !*pszSystemDrv || !pszProgramFilePath || !*pszProgramFilePath)
            return static_cast<int>(QG_BAD_ARGUMENT);
        char last[1024] = {};
        if (m_nMediaType != MEDIA_REMOVABLE)
            return MPKIFindDirectory(false, pszSystemDrv, sizeof(last), last, nDirCount);
        // A text that opens nothing on this platform: MPKI on a drive lists no certificate. Settled.
        if (m_nMPKIDirCnt > 0)
            joinText(m_pstCertMPKIDirectory[0].szCertDirPath, {m_szSelRemDrive, "MPKI\\User\\"});
        return static_cast<int>(QG_OK);
    });
}
