#include <array>
#include <cstring>
#include <string_view>
#include <strings.h>

#include "DirectoryReader.h"
#include "HolderPaths.h"
#include "HomeDirectory.h"
#include "LoadDISK.h"
#include "PairFiles.h"
#include "SubjectTexts.h"
#include "ToolkitBytes.h"
#include "quillgate/returncodes.h"

namespace {

const char* const TAG = "CLoadDISK::MakeCertPath()";

/** What decides where a certificate belongs; empty where the subject has nothing behind the type. */
struct SubjectNames
{
    char commonName[1024] = {};
    char organisation[1024] = {};
    char unit[1024] = {};
};

/** Directories of the four files of the flat form, in the order of HolderPaths::File. */
using FlatDirectories = std::array<const char*, HolderPaths::FILES>;

/*
 * On the hard disk all but the two certificates of a "people" holder lack the slash behind the root: they
 * land beside the home directory, as "<home>GPKI/...", and no listing finds them again. Settled, hosts rely
 * on it.
 */
constexpr FlatDirectories HARD_DISK_PEOPLE = {"/GPKI/Certificate/class2/", "GPKI/Certificate/class2/",
                                              "/GPKI/Certificate/class2/", "GPKI/Certificate/class2/"};
constexpr FlatDirectories HARD_DISK_OTHERS = {"GPKI/Certificate/class2/", "GPKI/Certificate/class2/",
                                              "GPKI/Certificate/class2/", "GPKI/Certificate/class2/"};
constexpr FlatDirectories DRIVE_PEOPLE = {"/GPKI/Certificate/class2/", "/GPKI/Certificate/class2/",
                                          "/GPKI/Certificate/class2/", "/GPKI/Certificate/class2/"};
constexpr FlatDirectories DRIVE_OTHERS = {"/GPKI/Certificate/class1/", "/GPKI/Certificate/class1/",
                                          "/GPKI/Certificate/class1/", "/GPKI/Certificate/class1/"};

constexpr const char* HOLDER_FILES[] = {"SignCert.der", "SignPri.key", "KmCert.der", "KmPri.key"};

const FlatDirectories& flatDirectories(bool onHardDisk, bool isPeople)
{
    if (onHardDisk)
        return isPeople ? HARD_DISK_PEOPLE : HARD_DISK_OTHERS;
    return isPeople ? DRIVE_PEOPLE : DRIVE_OTHERS;
}

/**
 * True for a value that is one element of a path and stays in its directory. Names come out of certificates
 * that anybody may have made, so what would climb out of the tree, or vanish from the path, is refused.
 */
bool isPathElement(std::string_view value)
{
    return !value.empty() && value != "." && value != ".." && value.find('/') == std::string_view::npos;
}

/** <root>/NPKI/<organisation>/User/<subject>/SignCert.der and so on. */
bool holderPaths(std::string_view root, const char* organisation, const char* subject, HolderPaths& paths)
{
    if (!isPathElement(organisation) || !isPathElement(subject))
        return false;
    bool fits = true;
    for (int i = 0; i < HolderPaths::FILES; ++i)
        fits = joinPath(paths.path[i],
                        {root, "/NPKI/", organisation, "/User/", subject, "/", HOLDER_FILES[i]}) &&
               fits;
    return fits;
}

/** <root>/GPKI/Certificate/class2/<common name>_sig.cer and so on. */
bool flatPaths(std::string_view root, const FlatDirectories& directories, const char* commonName,
               HolderPaths& paths)
{
    if (!isPathElement(commonName))
        return false;
    bool fits = true;
    for (size_t i = 0; i < HolderPaths::FILES; ++i)
        fits = joinPath(paths.path[i], {root, directories[i], commonName, PairFiles::ENDINGS[i]}) && fits;
    return fits;
}

/** An output of the caller's. */
struct PathOutput
{
    char* text;
    int size;
};

/** Hands all four paths out, or none: one that would be cut is another file's. */
int giveOut(const HolderPaths& paths, const std::array<PathOutput, HolderPaths::FILES>& outputs)
{
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (!outputs[i].text || outputs[i].size < 1)
            return QG_BAD_ARGUMENT;
        if (std::strlen(paths.path[i]) >= static_cast<size_t>(outputs[i].size))
            return CLPERR_FILE_WRITE;
    }
    for (size_t i = 0; i < outputs.size(); ++i)
        joinPath(outputs[i].text, static_cast<size_t>(outputs[i].size), {paths.path[i]});
    return QG_OK;
}

/** Common name, organisation and unit of a subject. 0, or -1 when it lacks one of them. */
int splitSubject(const SubjectTexts& texts, SubjectNames& names)
{
    if (const int code = CUtil::GetCNString(texts.subject, SUBJECT_TEXT_SIZE, names.commonName))
        return code;
    if (const int code = CUtil::GetOString(texts.subject, SUBJECT_TEXT_SIZE, names.organisation))
        return code;
    return CUtil::GetOUString(texts.subject, SUBJECT_TEXT_SIZE, names.unit);
}

/** Reads the subject of a certificate. 0, CLPERR_CERT_LOAD, CLPERR_CERT_FIELD. */
int readSubject(const OperationLog& trace, const char* data, int length, SubjectTexts& texts)
{
    ToolkitBytes cert(trace.toolkit());
    cert.set(data, length);
    if (const int code = CertLoad(trace.toolkit(), cert.get())) {
        trace.failure(TAG, "CertLoad()", code);
        return CLPERR_CERT_LOAD;
    }
    const char* callee = nullptr;
    const int code = readSubjectTexts(trace.toolkit(), texts, callee);
    // The tag is the parser's: readers of the log know the line so.
    if (code != QG_OK)
        trace.failure("CLoadDISK::ParsingCert()", callee, code);
    CertUnLoad(trace.toolkit());
    return code == QG_OK ? QG_OK : CLPERR_CERT_FIELD;
}

} // namespace

int CLoadDISK::MakeCertPath(int nMediaType, char* pszRemDrv, char* pszCert, int nCertLen, int nCertPathLen,
                            char* pszCertPath, int nKeyPathLen, char* pszKeyPath, int nKmCertPathLen,
                            char* pszKmCertPath, int nKmKeyPathLen, char* pszKmKeyPath)
{
    const OperationLog trace = log();
    return trace.traced(TAG, [&]() -> int {
        SubjectTexts texts;
        SubjectNames names;
        if (const int code = readSubject(trace, pszCert, nCertLen, texts))
            return code;
        if (const int code = splitSubject(texts, names))
            return code;
        // Nothing is known of where these belong: the outputs stay as they were, and that is no failure.
        if (strcasecmp(names.organisation, "Zarvane") == 0)
            return QG_OK;
        const bool onHardDisk = nMediaType == MEDIA_HARDDISK;
        char home[1024] = {};
        if (onHardDisk && !homeDirectory(home))
            return CLPERR_FILE_WRITE;
        const char* root = onHardDisk ? home : pszRemDrv;
        if (!root || *root == '\0')
            return QG_BAD_ARGUMENT;
        const bool isGovernment = strcasecmp(names.organisation, "Government of Korea") == 0;
        const bool isPeople = strcasecmp(names.unit, "people") == 0;
        HolderPaths paths{};
        const bool made =
            isGovernment ? flatPaths(root, flatDirectories(onHardDisk, isPeople), names.commonName, paths)
                         : holderPaths(root, names.organisation, texts.subject, paths);
        if (!made)
            return CLPERR_FILE_WRITE;
        return giveOut(paths, {{{pszCertPath, nCertPathLen},
                                {pszKeyPath, nKeyPathLen},
                                {pszKmCertPath, nKmCertPathLen},
                                {pszKmKeyPath, nKmKeyPathLen}}});
    });
}
