#include "iniFile.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

using Texts = std::vector<std::string>;

/** An element, or an empty text when the index is out of range. */
std::string textAt(const Texts& texts, unsigned index)
{
    return index < texts.size() ? texts[index] : std::string();
}

/** Removes an element; false when the index is out of range. */
template <typename T>
bool eraseAt(std::vector<T>& list, unsigned index)
{
    if (index >= list.size())
        return false;
    list.erase(list.begin() + index);
    return true;
}

/** Cuts what `blanks` holds from both ends. */
std::string stripped(const std::string& text, const char* blanks)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/** A text formatted as with printf, cut at 2047 bytes. */
__attribute__((format(printf, 1, 0))) std::string formattedList(const char* format, va_list arguments)
{
    char text[2048];
    return std::vsnprintf(text, sizeof(text), format, arguments) < 0 ? std::string() : std::string(text);
}

__attribute__((format(printf, 1, 2))) std::string formatted(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formattedList(format, arguments);
    va_end(arguments);
    return text;
}

} // namespace

void CIniFile::Erase()
{
    names.clear();
    keys.clear();
    comments.clear();
}

std::string CIniFile::CheckCase(std::string name) const
{
    if (caseInsensitive)
        std::ranges::transform(name, name.begin(),
                               [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return stripped(name, " \a\b\f\n\r\t\v");
}

void CIniFile::TrimValue(std::string& value)
{
    value = stripped(value, " ");
}

long CIniFile::FindKey(const std::string& keyname) const
{
    const std::string wanted = CheckCase(keyname);
    const auto found =
        std::ranges::find_if(names, [&](const std::string& name) { return CheckCase(name) == wanted; });
    return found == names.end() ? long{noID} : found - names.begin();
}

long CIniFile::FindValue(unsigned keyID, const std::string& valuename) const
{
    if (keyID >= keys.size())
        return noID;
    const Texts& values = keys[keyID].names;
    const std::string wanted = CheckCase(valuename);
    const auto found =
        std::ranges::find_if(values, [&](const std::string& name) { return CheckCase(name) == wanted; });
    return found == values.end() ? long{noID} : found - values.begin();
}

unsigned CIniFile::AddKeyName(const std::string& keyname)
{
    names.push_back(keyname);
    keys.emplace_back();
    return NumKeys() - 1;
}

std::string CIniFile::KeyName(unsigned keyID) const
{
    return textAt(names, keyID);
}

unsigned CIniFile::NumValues(unsigned keyID) const
{
    return keyID < keys.size() ? static_cast<unsigned>(keys[keyID].names.size()) : 0;
}

unsigned CIniFile::NumValues(const std::string& keyname) const
{
    return NumValues(idOf(keyname));
}

std::string CIniFile::ValueName(unsigned keyID, unsigned valueID) const
{
    return keyID < keys.size() ? textAt(keys[keyID].names, valueID) : std::string();
}

std::string CIniFile::ValueName(const std::string& keyname, unsigned valueID) const
{
    return ValueName(idOf(keyname), valueID);
}

std::string CIniFile::GetValue(unsigned keyID, unsigned valueID, const std::string& defValue) const
{
    return valueID < NumValues(keyID) ? keys[keyID].values[valueID] : defValue;
}

std::string CIniFile::GetValue(const std::string& keyname, const std::string& valuename,
                               const std::string& defValue) const
{
    const unsigned keyID = idOf(keyname);
    return GetValue(keyID, static_cast<unsigned>(FindValue(keyID, valuename)), defValue);
}

int CIniFile::GetValueI(const std::string& keyname, const std::string& valuename, int defValue) const
{
    return std::atoi(GetValue(keyname, valuename, formatted("%d", defValue)).c_str());
}

double CIniFile::GetValueF(const std::string& keyname, const std::string& valuename, double defValue) const
{
    return std::atof(GetValue(keyname, valuename, formatted("%f", defValue)).c_str());
}

int CIniFile::GetValueV(const std::string& keyname, const std::string& valuename, const char* format,
                        ...) const
{
    const std::string value = GetValue(keyname, valuename);
    va_list targets;
    va_start(targets, format);
    const int fields = std::vsscanf(value.c_str(), format, targets);
    va_end(targets);
    return std::max(fields, 0);
}

bool CIniFile::SetValue(unsigned keyID, unsigned valueID, const std::string& value)
{
    if (valueID < NumValues(keyID))
        keys[keyID].values[valueID] = value;
    return false;
}

bool CIniFile::SetValue(const std::string& keyname, const std::string& valuename, const std::string& value,
                        bool create)
{
    long keyID = FindKey(keyname);
    if (keyID == noID && !create)
        return false;
    if (keyID == noID)
        keyID = AddKeyName(keyname);
    key& section = keys[static_cast<std::size_t>(keyID)];
    const long valueID = FindValue(static_cast<unsigned>(keyID), valuename);
    if (valueID == noID && !create)
        return false;
    if (valueID != noID) {
        section.values[static_cast<std::size_t>(valueID)] = value;
        return true;
    }
    section.names.push_back(valuename);
    section.values.push_back(value);
    return true;
}

bool CIniFile::SetValueI(const std::string& keyname, const std::string& valuename, int value, bool /*create*/)
{
    return SetValue(keyname, valuename, formatted("%d", value), true);
}

bool CIniFile::SetValueF(const std::string& keyname, const std::string& valuename, double value,
                         bool /*create*/)
{
    return SetValue(keyname, valuename, formatted("%f", value), true);
}

bool CIniFile::SetValueV(const std::string& keyname, const std::string& valuename, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string value = formattedList(format, arguments);
    va_end(arguments);
    return SetValue(keyname, valuename, value, true);
}

bool CIniFile::DeleteValue(const std::string& keyname, const std::string& valuename)
{
    const unsigned keyID = idOf(keyname);
    const auto valueID = static_cast<unsigned>(FindValue(keyID, valuename));
    return keyID < keys.size() && eraseAt(keys[keyID].names, valueID) && eraseAt(keys[keyID].values, valueID);
}

bool CIniFile::DeleteKey(const std::string& keyname)
{
    const unsigned keyID = idOf(keyname);
    return eraseAt(names, keyID) && eraseAt(keys, keyID);
}

std::string CIniFile::HeaderComment(unsigned commentID) const
{
    return textAt(comments, commentID);
}

bool CIniFile::DeleteHeaderComment(unsigned commentID)
{
    return eraseAt(comments, commentID);
}

unsigned CIniFile::NumKeyComments(unsigned keyID) const
{
    return keyID < keys.size() ? static_cast<unsigned>(keys[keyID].comments.size()) : 0;
}

unsigned CIniFile::NumKeyComments(const std::string& keyname) const
{
    return NumKeyComments(idOf(keyname));
}

bool CIniFile::KeyComment(unsigned keyID, const std::string& comment)
{
    if (keyID >= keys.size())
        return false;
    keys[keyID].comments.push_back(comment);
    return true;
}

bool CIniFile::KeyComment(const std::string& keyname, const std::string& comment)
{
    return KeyComment(idOf(keyname), comment);
}

std::string CIniFile::KeyComment(unsigned keyID, unsigned commentID) const
{
    return keyID < keys.size() ? textAt(keys[keyID].comments, commentID) : std::string();
}

std::string CIniFile::KeyComment(const std::string& keyname, unsigned commentID) const
{
    return KeyComment(idOf(keyname), commentID);
}

bool CIniFile::DeleteKeyComment(unsigned keyID, unsigned commentID)
{
    return keyID < keys.size() && eraseAt(keys[keyID].comments, commentID);
}

bool CIniFile::DeleteKeyComment(const std::string& keyname, unsigned commentID)
{
    return DeleteKeyComment(idOf(keyname), commentID);
}

bool CIniFile::DeleteKeyComments(unsigned keyID)
{
    if (keyID >= keys.size())
        return false;
    keys[keyID].comments.clear();
    return true;
}

bool CIniFile::DeleteKeyComments(const std::string& keyname)
{
    return DeleteKeyComments(idOf(keyname));
}
