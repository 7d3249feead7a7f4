#pragma once

#include <map>
#include <string>

/**
 * Names out of the issuer configuration.
 *
 * Each look-up reads the whole file anew, and a list asks for the same few names over and over. So answers
 * are kept while a list is loaded, and no longer: the next load asks again.
 */
class IssuerNames
{
public:
    /** Keeps the answers while it lives. */
    class Keep
    {
    public:
        explicit Keep(IssuerNames& names) : m_names(names) { m_names.m_keeps = true; }
        ~Keep();
        Keep(const Keep&) = delete;
        Keep& operator=(const Keep&) = delete;

    private:
        IssuerNames& m_names;
    };

    /** Borrows the path of the configuration, which may change between loads. */
    explicit IssuerNames(const char* configPath) : m_configPath(configPath) {}

    /** The name of a key in a section. A key that is missing or has no value stands for itself. */
    void lookUp(const char* section, const char* key, char (&name)[1024]);

private:
    const char* m_configPath;
    bool m_keeps = false;
    std::map<std::string, std::string> m_kept; /**< by section, "=" and key */
};
