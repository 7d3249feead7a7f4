#include <new>

#include "CertInfoCopy.h"
#include "DirectoryReader.h"
#include "DiskDirectories.h"
#include "HolderPaths.h"
#include "LoadDISK.h"
#include "PairFiles.h"
#include "Secret.h"
#include "quillgate/returncodes.h"

namespace {

/** Empties a pointer when the scope ends, by an exception too. */
template <typename Pointer>
class ScopedReset
{
public:
    explicit ScopedReset(Pointer& pointer) : m_pointer(pointer) {}
    ~ScopedReset() { m_pointer.reset(); }
    ScopedReset(const ScopedReset&) = delete;
    ScopedReset& operator=(const ScopedReset&) = delete;

private:
    Pointer& m_pointer;
};

} // namespace

int CLoadDISK::LoadCertList()
{
    return log().traced("CLoadDISK::LoadCertList()", [&]() -> int {
        int total = 0;
        CertCounts counts{};
        for (size_t i = 0; i < KINDS.size(); ++i) {
            if (const int code = countKind(*KINDS[i], counts[i], total))
                return code;
        }
        if (total == 0) {
            log().condition("CLoadDISK::LoadCertList()", "CLPERR_NOTEXISTCERT");
            return CLPERR_NOTEXISTCERT;
        }
        m_pstCertInfoList.reset(); // before the new one is made: two may not fit
        m_pstCertInfoList = makeCertInfoList(total);
        if (!m_pstCertInfoList)
            return QG_NO_MEMORY;
        m_nCertCnt = total;
        return fillKinds(counts);
    });
}

/** Rebuilds a kind's directory array, if the kind is asked for, and counts each walk's survivors. */
int CLoadDISK::countKind(const DirectoryKind& kind, KindCounts& counts, int& total)
{
    if ((m_stLoadCertOpt.nCertCAType & kind.certType) == 0)
        return QG_OK;
    const int length = GetDirectoryCount(kind.certType);
    if (length <= 0)
        return QG_OK;
    (this->*kind.directories).reset(new (std::nothrow) CERTDIRPATH[static_cast<size_t>(length)]());
    this->*kind.count = this->*kind.directories ? length : 0;
    if (this->*kind.count == 0)
        return QG_NO_MEMORY;
    if (const int code = GetCertDirectory(kind.certType, length))
        return code;
    for (size_t i = 0; i < kind.walks.size(); ++i) {
        if (const int code = (this->*kind.walks[i])(true, 0, &counts[i]))
            return code;
        total += counts[i];
    }
    return QG_OK;
}

/** Second pass: the same walks in the same order, each that found something. */
int CLoadDISK::fillKinds(const CertCounts& counts)
{
    int index = 0;
    int code = QG_OK;
    for (size_t kind = 0; kind < KINDS.size(); ++kind) {
        for (size_t walk = 0; walk < KINDS[kind]->walks.size(); ++walk) {
            if (counts[kind][walk] > 0)
                code = (this->*KINDS[kind]->walks[walk])(false, index, &index);
        }
    }
    return code;
}

int CLoadDISK::GetGPKICertList(bool bOnlyCount, int nIndex, int* nCount)
{
    return walkList("CLoadDISK::GetGPKICertList()", GPKI_KIND, &CLoadDISK::findGpkiFiles, bOnlyCount, nIndex,
                    nCount);
}

int CLoadDISK::GetNPKICertList(bool bOnlyCount, int nIndex, int* nCount)
{
    return walkList("CLoadDISK::GetNPKICertList()", NPKI_KIND, &CLoadDISK::findNpkiFiles, bOnlyCount, nIndex,
                    nCount);
}

int CLoadDISK::GetMPKIGCertList(bool bOnlyCount, int nIndex, int* nCount)
{
    return walkList("CLoadDISK::GetMPKIGCertList()", MPKI_KIND, &CLoadDISK::findMpkiPair, bOnlyCount, nIndex,
                    nCount);
}

int CLoadDISK::GetMPKINCertList(bool bOnlyCount, int nIndex, int* nCount)
{
    return walkList("CLoadDISK::GetMPKINCertList()", MPKI_KIND, &CLoadDISK::findMpkiFiles, bOnlyCount, nIndex,
                    nCount);
}

int CLoadDISK::walkList(const char* tag, const DirectoryKind& kind, Finder finder, bool bOnlyCount,
                        int nIndex, int* nCount)
{
    return log().traced(tag, [&]() -> int {
        if (!(this->*kind.directories))
            return QG_OK;
        if (!nCount || nIndex < 0)
            return QG_BAD_ARGUMENT;
        ListWalk walk{.finder = finder, .certType = kind.certType, .onlyCount = bOnlyCount};
        walk.position = bOnlyCount ? 0 : nIndex;
        const ScopedWipe wipeRecord(walk.record);
        const ScopedReset forgetPairFiles(m_pairFiles);
        for (int i = 0; i < this->*kind.count; ++i)
            walkDirectory((this->*kind.directories)[static_cast<size_t>(i)].szCertDirPath, walk);
        *nCount = walk.position;
        return walk.result;
    });
}

void CLoadDISK::walkDirectory(const char* directory, ListWalk& walk)
{
    if (*directory == '\0')
        return;
    DirectoryReader reader(directory);
    HolderPaths paths;
    while (reader.next()) {
        // A certificate that came after the count has no place in the list.
        if (!walk.onlyCount && walk.position >= m_nCertCnt)
            return;
        const int found = (this->*walk.finder)(directory, reader, paths);
        if (found == CLPERR_PASS)
            continue;
        walk.result = found;
        if (found == QG_OK && takeEntry(paths, walk))
            ++walk.position;
    }
}

/** Parses one candidate and, when it survives the filters, puts it into the list. */
bool CLoadDISK::takeEntry(const HolderPaths& paths, ListWalk& walk)
{
    certinfo::clearRecord(walk.record);
    walk.record.nCertType = walk.certType;
    paths.copyTo(walk.record);
    if (parseFiles(walk.record, paths.regular) != QG_OK)
        return false;
    if (!walk.onlyCount)
        CopyCertInfo(walk.position, &walk.record);
    return true;
}
