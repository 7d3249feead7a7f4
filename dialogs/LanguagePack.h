#pragma once

#include <QString>
#include <string>

class CUtil;

/** Bytes of a language text on a widget, and of a message or its title. Longer ones are cut. */
enum LanguageLimit
{
    widgetTextLimit = 259,
    messageTextLimit = 1023,
};

/** Decodes EUC-KR, the encoding of certificate texts and language packs. */
QString fromEucKr(const char* text);

/** Writes "<folder>/KOR.ini" for language 1, "<folder>/ENG.ini" for any other, cut at 259 bytes. */
void makeLanguagePath(char (&path)[260], const char* folder, int language);

/**
 * Texts of one language pack. A view: the helper and the path belong to the dialog. Each look-up reads the
 * file anew; a key that is missing gives the empty text, so that hosts see a blank widget and never a
 * built-in text.
 */
class LanguagePack
{
public:
    LanguagePack(CUtil& util, const char* path) : m_util(util), m_path(path) {}

    /** A text of the section "UserInterface". */
    QString ui(const char* key, LanguageLimit limit = widgetTextLimit) const;

    /** A text of the section "Message". */
    QString message(const char* key, LanguageLimit limit = messageTextLimit) const;

    /** The same, as the bytes of the file. */
    std::string messageBytes(const char* key, LanguageLimit limit = messageTextLimit) const;

private:
    CUtil& m_util;
    const char* m_path;
};
