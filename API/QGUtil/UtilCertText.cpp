#include "Util.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <strings.h>

#include "BoundedText.h"

namespace {

/** What GetCertCAType answers for an organisation of no known family. */
constexpr int unknownFamily = 8;

struct Family
{
    const char* word;
    int type;
};

/** Words of an organisation's name, the first match deciding. */
constexpr Family families[] = {
    {"Government", CERTTYPE_GPKI}, {"Ministry", CERTTYPE_MPKI},  {"yessign", CERTTYPE_NPKI},
    {"CrossCert", CERTTYPE_NPKI},  {"KICA", CERTTYPE_NPKI},      {"SignGate", CERTTYPE_NPKI},
    {"NCASign", CERTTYPE_NPKI},    {"SignKorea", CERTTYPE_NPKI}, {"TradeSign", CERTTYPE_NPKI},
};

struct Usage
{
    const char* word;
    const char* key;
};

/** nonRepudiation takes the label of digitalSignature, so that users see it twice: that is how it is shown.
 */
constexpr Usage usages[] = {
    {"digitalSignature", "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN"},
    {"nonRepudiation", "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN"},
    {"keyEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT"},
    {"dataEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT"},
    {"keyAgreement", "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT"},
    {"keyCertSign", "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN"},
    {"crlSign", "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN"},
    {"encipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"},
    {"decipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_DECIPHERONLY"},
};

/** Copies from `begin` to the first comma at or behind `search`; nothing without a comma. */
void copyToComma(const char* begin, const char* search, char* out)
{
    const char* comma = std::strchr(search, ',');
    if (!out || !comma || comma < begin)
        return;
    joinText(out, 1024, {std::string_view(begin, static_cast<std::size_t>(comma - begin))});
}

/** The value behind the first occurrence of an attribute type. */
int copyAttribute(const char* name, std::string_view type, char* out)
{
    const char* found = name ? std::strstr(name, type.data()) : nullptr;
    if (!found)
        return -1;
    copyToComma(found + type.size(), found, out);
    return 0;
}

/** A field's text, which may fill the field to its last byte. */
template <std::size_t N>
std::string_view fieldText(const char (&field)[N])
{
    return {field, strnlen(field, N)};
}

bool equalIgnoringCase(std::string_view field, std::string_view text)
{
    return field.size() == text.size() && strncasecmp(field.data(), text.data(), text.size()) == 0;
}

/** The elements of a list given by pointer and count; none for a null pointer or a count below 1. */
template <typename T>
std::span<const T> listOf(const T* first, int count)
{
    return {first, first && count > 0 ? static_cast<std::size_t>(count) : 0};
}

} // namespace

int CUtil::GetCNString(const char* pszDNString, int /*nLen*/, char* pszCNString)
{
    if (!pszDNString || !std::strstr(pszDNString, "cn="))
        return -1;
    copyToComma(pszDNString + 3, pszDNString, pszCNString);
    return 0;
}

int CUtil::GetOString(const char* pszDNString, int /*nLen*/, char* pszOString)
{
    return copyAttribute(pszDNString, "o=", pszOString);
}

int CUtil::GetOUString(const char* pszDNString, int /*nLen*/, char* pszOUString)
{
    return copyAttribute(pszDNString, "ou=", pszOUString);
}

void CUtil::GetCertCAType(const char* psz0String, int* nCertCAType)
{
    if (!psz0String || !nCertCAType)
        return;
    const auto* found = std::find_if(std::begin(families), std::end(families), [&](const Family& family) {
        return std::strstr(psz0String, family.word) != nullptr;
    });
    *nCertCAType = found == std::end(families) ? unknownFamily : found->type;
}

bool CUtil::CheckPolicyID(const char* szOID, const SETOID* stSetOid, int nCount)
{
    const auto list = listOf(stSetOid, nCount);
    return szOID && std::any_of(list.begin(), list.end(), [&](const SETOID& entry) {
               return equalIgnoringCase(fieldText(entry.szPolicyID), szOID);
           });
}

bool CUtil::GetPolicyName(const char* pszPolicyID, const POLICYID* stPolicyIDList, int nCount,
                          char* pszPolicyName)
{
    if (!pszPolicyID || !pszPolicyName)
        return false;
    bool found = false;
    for (const POLICYID& row : listOf(stPolicyIDList, nCount)) {
        if (!equalIgnoringCase(fieldText(row.szID), pszPolicyID))
            continue;
        copyField(pszPolicyName, 1024, fieldText(row.szName));
        found = true;
    }
    return found;
}

void CUtil::GetKeyUsageName(const char* pszFilePath, const char* pszKeyUsage, const char* pszDiv,
                            int nKeyUsageLen, char* pszKeyUsageString)
{
    if (!pszKeyUsage || !pszDiv || !pszKeyUsageString || nKeyUsageLen <= 0)
        return;
    char names[4096] = {};
    std::size_t length = 0;
    for (const Usage& usage : usages) {
        if (!std::strstr(pszKeyUsage, usage.word))
            continue;
        char label[1024] = {};
        GetLanguageUIText(pszFilePath, usage.key, sizeof(label) - 1, label);
        length += joinText(names + length, sizeof(names) - length, {length > 0 ? pszDiv : "", label});
    }
    copyField(pszKeyUsageString, static_cast<std::size_t>(nKeyUsageLen) - 1, names);
}
