#include "IssuerNames.h"

#include "BoundedText.h"
#include "LibFile.h"

IssuerNames::Keep::~Keep()
{
    m_names.m_keeps = false;
    m_names.m_kept.clear();
}

void IssuerNames::lookUp(const char* section, const char* key, char (&name)[1024])
{
    const std::string question = std::string(section) + "=" + key;
    if (const auto kept = m_kept.find(question); kept != m_kept.end()) {
        joinText(name, {kept->second});
        return;
    }
    FileGetPrivateProfileString(section, key, key, name, sizeof(name), m_configPath);
    if (name[0] == '\0')
        copyText(name, key);
    if (m_keeps)
        m_kept[question] = name;
}
