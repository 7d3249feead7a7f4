#include "Arguments.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <regex>
#include <stdexcept>

namespace {

unsigned char someBytes[] = {1, 2, 3};
BINSTR withoutBytes = {nullptr, 3};
BINSTR emptyString = {someBytes, 0};
BINSTR negativeLength = {someBytes, -1};
char emptyTextBuffer[4096]; // room for those that are outputs
char someText[] = "/a/path";

Word word(const void* value)
{
    return reinterpret_cast<Word>(value);
}

/** An empty text, even when an earlier call has written to it. */
Word emptyText()
{
    emptyTextBuffer[0] = '\0';
    return word(emptyTextBuffer);
}

bool has(const std::string& text, const std::string& mark)
{
    return text.find(mark) != std::string::npos;
}

bool mustBeEmpty(const Operation& operation, const std::string& name)
{
    return has(operation.tested, name + " (must be empty)");
}

std::vector<std::string> split(const std::string& text, const std::string& separator)
{
    std::vector<std::string> pieces;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + separator.size();
    }
    return pieces;
}

TestedArgument parseTest(const std::string& text)
{
    static const std::regex form("(\\w+)(\\+?)((?: \\([^)]*\\))*)");
    std::smatch match;
    if (!std::regex_match(text, match, form))
        throw std::runtime_error("bad test: " + text);
    const std::string marks = match[3];
    return {match[1], marks, match[2] == "+", has(marks, "(10003)") ? QG_NO_MEMORY : QG_BAD_ARGUMENT};
}

} // namespace

Arguments::Arguments(const Operation& operation) : m_operation(operation)
{
    for (const Parameter& parameter : operation.parameters)
        m_words.push_back(goodValue(parameter, m_words.size()));
}

Word Arguments::goodValue(const Parameter& parameter, std::size_t position)
{
    if (parameter.type == "int")
        return 1000 + position;
    if (parameter.type == "unsigned long")
        return 0x1122334455667788 + position;
    if (parameter.type == "bool")
        return 1;
    m_buffers.push_back(std::make_unique<std::vector<unsigned char>>(4096, '#'));
    unsigned char* buffer = m_buffers.back()->data();
    if (parameter.type == "BINSTR*") {
        m_byteStrings.push_back(std::make_unique<BINSTR>(BINSTR{buffer, 3}));
        return word(m_byteStrings.back().get());
    }
    m_buffers.back()->back() = '\0';
    if (mustBeEmpty(m_operation, parameter.name))
        buffer[0] = '\0';
    return word(buffer);
}

std::size_t Arguments::index(const std::string& name) const
{
    for (std::size_t i = 0; i < m_operation.parameters.size(); ++i)
        if (m_operation.parameters[i].name == name)
            return i;
    throw std::runtime_error(m_operation.name + " has no parameter " + name);
}

void Arguments::clearAllBut(const std::vector<std::string>& names)
{
    for (const Parameter& parameter : m_operation.parameters)
        if (std::find(names.begin(), names.end(), parameter.name) == names.end())
            set(parameter.name, Word{0});
}

std::string Arguments::memory() const
{
    std::string bytes;
    for (const auto& buffer : m_buffers)
        bytes.append(buffer->begin(), buffer->end());
    for (const auto& byteString : m_byteStrings)
        bytes.append(reinterpret_cast<const char*>(byteString.get()), sizeof *byteString);
    return bytes;
}

bool Arguments::matches(const std::string& name, Word recorded) const
{
    const Word own = (*this)[name];
    if (type(name) == "int")
        return number(recorded) == number(own);
    if (type(name) == "bool")
        return static_cast<std::uint8_t>(recorded) == static_cast<std::uint8_t>(own);
    return recorded == own;
}

std::vector<TestedArgument> testsOf(const Operation& operation, Scope scope)
{
    std::vector<TestedArgument> tests;
    for (std::string section : split(operation.tested, "; ")) {
        Scope sectionScope = Scope::Both;
        for (const auto& [title, titleScope] :
             {std::pair("ZR side: ", Scope::Zrtk), std::pair("GPKI side: ", Scope::Gpki)})
            if (section.starts_with(title)) {
                sectionScope = titleScope;
                section.erase(0, std::string(title).size());
            }
        if (sectionScope == scope)
            for (const std::string& text : split(section, ", "))
                tests.push_back(parseTest(text));
    }
    return tests;
}

std::vector<Word> refusedValues(const TestedArgument& test, const Arguments& arguments)
{
    const std::string& type = arguments.type(test.name);
    if (has(test.marks, "(at least 25)"))
        return {24, 0, static_cast<Word>(-1)};
    if (type == "int")
        return {0};
    if (has(test.marks, "(must be empty)"))
        return {0, word(someText)};
    if (has(test.marks, "(non-empty)"))
        return {0, emptyText()};
    if (type != "BINSTR*" || has(test.marks, "(pointer)"))
        return {0};
    std::vector<Word> values = {0, word(&withoutBytes), word(&emptyString)};
    if (test.atLeastOneByte)
        values.push_back(word(&negativeLength));
    return values;
}

std::vector<Word> admittedValues(const TestedArgument& test, const Arguments& arguments)
{
    const std::string& type = arguments.type(test.name);
    if (has(test.marks, "(at least 25)"))
        return {25};
    if (type == "int")
        return {static_cast<Word>(-1)};
    if (type == "char*")
        return has(test.marks, "(non-empty)") ? std::vector<Word>{} : std::vector<Word>{emptyText()};
    if (type != "BINSTR*")
        return {};
    if (has(test.marks, "(pointer)"))
        return {word(&withoutBytes), word(&emptyString), word(&negativeLength)};
    return test.atLeastOneByte ? std::vector<Word>{} : std::vector<Word>{word(&negativeLength)};
}

std::vector<ExpectedCall> expectedCalls(const Operation& operation, const std::string& cell)
{
    std::vector<ExpectedCall> calls;
    if (cell == "-" || cell == "no library call" || cell.starts_with("refused"))
        return calls;
    for (const std::string& text : split(cell, "; ")) {
        const std::size_t open = text.find('(');
        ExpectedCall call = {text.substr(0, open), {}};
        if (open != std::string::npos)
            call.words = split(text.substr(open + 1, text.size() - open - 2), ", ");
        else {
            call.words.push_back("ctx");
            for (const Parameter& parameter : operation.parameters)
                call.words.push_back(parameter.name);
        }
        calls.push_back(call);
    }
    return calls;
}

void expectWord(const std::string& expected, Word recorded, const Arguments& arguments, const void* context)
{
    if (expected == "ctx")
        EXPECT_EQ(recorded, reinterpret_cast<Word>(context));
    else if (expected == "?")
        EXPECT_NE(recorded, 0U);
    else if (std::isdigit(static_cast<unsigned char>(expected[0])) != 0)
        EXPECT_EQ(number(recorded), std::stoi(expected));
    else
        EXPECT_TRUE(arguments.matches(expected, recorded)) << expected;
}
