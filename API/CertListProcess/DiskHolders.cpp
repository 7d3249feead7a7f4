#include <cstring>
#include <fcntl.h>
#include <string_view>

#include "DirectoryReader.h"
#include "HolderPaths.h"
#include "LoadDISK.h"
#include "OpenFile.h"
#include "PairFiles.h"
#include "quillgate/returncodes.h"

namespace {

/** Holder files in the order of HolderPaths::File. */
constexpr const char* HOLDER_FILES[] = {"signCert.der", "signPri.key", "kmCert.der", "kmPri.key"};
constexpr const char* HOLDER_FILES_UPPER[] = {"SIGNCERT.DER", "SIGNPRI.KEY", "KMCERT.DER", "KMPRI.KEY"};

constexpr std::size_t ENDING_LENGTH = std::string_view("_sig.cer").size();
constexpr std::size_t EXTENSION_LENGTH = std::string_view(".cer").size();

} // namespace

void HolderPaths::keepReadableKm()
{
    // A FIFO, a device and a directory count as a file that can't be opened, and none of them blocks.
    if (path[KM_CERT][0] == '\0' || !OpenFile(path[KM_CERT], O_RDONLY).isRegular())
        path[KM_CERT][0] = path[KM_KEY][0] = '\0';
}

/**
 * GPKI: any file whose name holds "_sig.cer" in this letter case. The other three names follow from cutting
 * the end of the path, and whether those files exist is not asked.
 */
int CLoadDISK::findGpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths)
{
    if (!std::strstr(reader.name(), PairFiles::ENDINGS[HolderPaths::SIGN_CERT]) || reader.isDirectory())
        return CLPERR_PASS;
    paths.clear();
    if (!joinPath(paths.path[HolderPaths::SIGN_CERT], {directory, reader.name()}))
        return CLPERR_PASS;
    paths.regular[HolderPaths::SIGN_CERT] = reader.isKnownRegular();
    const std::string_view path = paths.path[HolderPaths::SIGN_CERT];
    const std::string_view file = path.substr(0, path.size() - EXTENSION_LENGTH);
    const std::string_view holder = path.substr(0, path.size() - ENDING_LENGTH);
    const bool fits = joinPath(paths.path[HolderPaths::SIGN_KEY], {file, ".key"}) &&
                      joinPath(paths.path[HolderPaths::KM_CERT], {holder, "_env.cer"}) &&
                      joinPath(paths.path[HolderPaths::KM_KEY], {holder, "_env.key"});
    return fits ? QG_OK : CLPERR_PASS;
}

/**
 * NPKI: a directory, with the four names in any letter case. One scan finds all of them as four calls of
 * CUtil::findDirectoryAndFile would: the first match in the order of the file system stands.
 */
int CLoadDISK::findNpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths)
{
    char holder[1024];
    if (!reader.isDirectory() || reader.isDots() || !joinPath(holder, {directory, reader.name(), "/"}))
        return CLPERR_PASS;
    paths.clear();
    DirectoryReader files(holder);
    while (files.next()) {
        char folded[1024];
        joinText(folded, {files.name()});
        CUtil::ToUpper(reinterpret_cast<LPBYTE>(folded));
        for (int i = 0; i < HolderPaths::FILES; ++i) {
            if (paths.path[i][0] != '\0' || std::strcmp(folded, HOLDER_FILES_UPPER[i]) != 0)
                continue;
            if (!joinPath(paths.path[i], {holder, files.name()}))
                return CLPERR_PASS;
            paths.regular[i] = files.isKnownRegular();
        }
    }
    paths.keepReadableKm();
    return QG_OK;
}

/** MPKI, flat form: a file whose name holds "_sig.cer" in any letter case, unlike GPKI. */
int CLoadDISK::findMpkiPair(const char* directory, const DirectoryReader& reader, HolderPaths& paths)
{
    if (!strcasestr(reader.name(), PairFiles::ENDINGS[HolderPaths::SIGN_CERT]) || reader.isDirectory())
        return CLPERR_PASS;
    const std::string_view name = reader.name();
    char holder[1024];
    joinText(holder, {name.substr(0, name.size() - ENDING_LENGTH)});
    // The limit is one below the array: with it a path has at most 1022 bytes.
    constexpr int LIMIT = sizeof(paths.path[0]) - 1;
    paths.clear();
    if (!m_pairFiles || !m_pairFiles->isOf(directory))
        m_pairFiles = std::make_unique<PairFiles>(directory);
    auto& [signCert, signKey, kmCert, kmKey] = paths.path;
    const int code = GetGPKICertFilePath(const_cast<char*>(directory), holder, LIMIT, signCert, LIMIT,
                                         signKey, LIMIT, kmCert, LIMIT, kmKey);
    if (code != QG_OK)
        return code;
    paths.keepReadableKm();
    return QG_OK;
}

/**
 * MPKI, holder form: a directory. The names are looked for anywhere in the full path, so a holder directory
 * that carries one of them in its own name makes all its files hit. Settled, hosts rely on it.
 */
int CLoadDISK::findMpkiFiles(const char* directory, const DirectoryReader& reader, HolderPaths& paths)
{
    char holder[1024];
    if (!reader.isDirectory() || reader.isDots() || !joinPath(holder, {directory, reader.name()}))
        return CLPERR_PASS;
    paths.clear();
    DirectoryReader files(holder);
    while (files.next()) {
        char path[1024];
        if (files.isDirectory() || !joinPath(path, {holder, "/", files.name()}))
            continue;
        for (int i = 0; i < HolderPaths::FILES; ++i) {
            if (!strcasestr(path, HOLDER_FILES[i]))
                continue;
            joinText(paths.path[i], {path});
            paths.regular[i] = files.isKnownRegular();
        }
    }
    paths.keepReadableKm();
    return QG_OK;
}

int CLoadDISK::GetGPKICertFilePath(char* pszDirPath, char* pszCNName, int nSignCertPathLen,
                                   char* pszSignCertPath, int nSignKeyPathLen, char* pszSignKeyPath,
                                   int nKmCertPathLen, char* pszKmCertPath, int nKmKeyPathLen,
                                   char* pszKmKeyPath)
{
    return log().traced("CLoadDISK::GetGPKICertFilePath()", [&]() -> int {
        struct Output
        {
            char* text;
            int size;
        };
        const Output given[] = {{pszSignCertPath, nSignCertPathLen},
                                {pszSignKeyPath, nSignKeyPathLen},
                                {pszKmCertPath, nKmCertPathLen},
                                {pszKmKeyPath, nKmKeyPathLen}};
        if (!pszDirPath || !pszCNName || *pszDirPath == '\0' || *pszCNName == '\0')
            return -1;
        std::array<PairFiles::Output, HolderPaths::FILES> outputs{};
        for (size_t i = 0; i < outputs.size(); ++i) {
            if (!given[i].text || given[i].size < 1)
                return -1;
            given[i].text[0] = '\0';
            outputs[i] = {given[i].text, static_cast<std::size_t>(given[i].size)};
        }
        if (m_pairFiles && m_pairFiles->isOf(pszDirPath))
            m_pairFiles->find(pszCNName, outputs);
        else
            PairFiles(pszDirPath).find(pszCNName, outputs);
        return QG_OK;
    });
}
