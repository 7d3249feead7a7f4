#include "Util.h"

#include "BoundedText.h"
#include "HomeDirectory.h"
#include "LibFile.h"

namespace {

/** Looks a text up in one section and fills exactly nOutValueLen bytes of the output with it. */
void languageText(const char* section, const char* file, const char* keyword, int nOutValueLen, char* out)
{
    if (!out || nOutValueLen <= 0)
        return;
    char text[1024] = {};
    FileGetPrivateProfileString(section, keyword, "", text, sizeof(text), file);
    copyField(out, static_cast<std::size_t>(nOutValueLen), text);
}

} // namespace

CUtil::CUtil()
{
    char home[1024] = {};
    if (homeDirectory(home))
        joinText(m_szLanguagePackPath, {home, "/Zarvane/Quillgate/", "/KOR.ini"});
}

CUtil::CUtil(int nLanguage, const char* pszWorkDir) : m_nLanguage(nLanguage)
{
    if (pszWorkDir && (nLanguage == LANGUAGE_KOREAN || nLanguage == LANGUAGE_ENGLISH))
        joinText(m_szLanguagePackPath, {pszWorkDir, nLanguage == LANGUAGE_KOREAN ? "/KOR.ini" : "/ENG.ini"});
}

int CUtil::GetLanguageCode()
{
    return 100;
}

void CUtil::GetLanguageUIText(const char* pszLanguageFilePath, const char* pszKeyword, int nOutValueLen,
                              char* pszOutValue)
{
    languageText("UserInterface", pszLanguageFilePath, pszKeyword, nOutValueLen, pszOutValue);
}

void CUtil::GetLanguageMessageText(const char* pszLanguageFilePath, const char* pszKeyword, int nOutValueLen,
                                   char* pszOutValue)
{
    languageText("Message", pszLanguageFilePath, pszKeyword, nOutValueLen, pszOutValue);
}
