#include "LanguagePack.h"

#include <QTextCodec>

#include "BoundedText.h"
#include "Util.h"

namespace {

enum LanguageCode
{
    languageKorean = 1
};

} // namespace

QString fromEucKr(const char* text)
{
    QTextCodec* codec = QTextCodec::codecForName("EUC-KR");
    return codec ? codec->toUnicode(text) : QString::fromLatin1(text);
}

void makeLanguagePath(char (&path)[260], const char* folder, int language)
{
    joinText(path, {folder, language == languageKorean ? "/KOR.ini" : "/ENG.ini"});
}

QString LanguagePack::ui(const char* key, LanguageLimit limit) const
{
    char text[messageTextLimit + 1] = {};
    m_util.GetLanguageUIText(m_path, key, limit, text);
    return fromEucKr(text);
}

QString LanguagePack::message(const char* key, LanguageLimit limit) const
{
    return fromEucKr(messageBytes(key, limit).c_str());
}

std::string LanguagePack::messageBytes(const char* key, LanguageLimit limit) const
{
    char text[messageTextLimit + 1] = {};
    m_util.GetLanguageMessageText(m_path, key, limit, text);
    return text;
}
