#include "toolkit/core/Configuration.h"

#include <charconv>
#include <map>
#include <sstream>

#include "toolkit/core/Media.h"

namespace qgtk {

namespace {

using Values = std::map<std::string, std::string, std::less<>>;

std::string trimmed(const std::string& text)
{
    constexpr const char* blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/** The keys of one section of an INI text; the first of two equal keys counts. */
Values sectionOf(const std::string& text, const std::string& section)
{
    Values values;
    bool inside = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line = trimmed(line);
        if (line.starts_with('['))
            inside = line == "[" + section + "]";
        const std::size_t equals = line.find('=');
        if (inside && equals != std::string::npos)
            values.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return values;
}

/** A positive number, or the fallback. */
int numberOf(const Values& values, std::string_view key, int fallback)
{
    const auto found = values.find(key);
    if (found == values.end())
        return fallback;
    const std::string& text = found->second;
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool usable = error == std::errc() && end == text.data() + text.size() && number > 0;
    return usable ? number : fallback;
}

} // namespace

Configuration Configuration::read(const std::string& path)
{
    Configuration result;
    try {
        const SecretBytes bytes = readFile(path, maxObjectLength);
        const Values values = sectionOf(std::string(textOf(bytes)), "OPEN_TOOLKIT");
        result.maxIterations = numberOf(values, "MAX_ITERATIONS", result.maxIterations);
        result.keyIterations = numberOf(values, "KEY_ITERATIONS", result.keyIterations);
        const auto language = values.find("LANGUAGE");
        if (language != values.end() && language->second == "ENG")
            result.language = Language::English;
    } catch (const Failure&) {
        // Without a file the defaults hold; a work directory need not have one.
    }
    return result;
}

} // namespace qgtk
