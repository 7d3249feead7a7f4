#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Operations.h"

/** A set of good arguments for an operation, each its own value, and ways to spoil them. */
class Arguments
{
public:
    explicit Arguments(const Operation& operation);

    const Word* words() const { return m_words.data(); }
    Word operator[](const std::string& name) const { return m_words[index(name)]; }
    void set(const std::string& name, Word word) { m_words[index(name)] = word; }
    void set(const std::string& name, const void* value) { set(name, reinterpret_cast<Word>(value)); }
    const std::string& type(const std::string& name) const
    {
        return m_operation.parameters[index(name)].type;
    }

    /** Gives every argument that is not in names the value null or 0. */
    void clearAllBut(const std::vector<std::string>& names);

    /** Every byte that the arguments point to, records and buffers, one behind the other. */
    std::string memory() const;

    /** Whether a recorded word is the argument, in the argument's own width. */
    bool matches(const std::string& name, Word word) const;

private:
    std::size_t index(const std::string& name) const;
    Word goodValue(const Parameter& parameter, std::size_t position);

    const Operation& m_operation;
    std::vector<Word> m_words;
    std::vector<std::unique_ptr<std::vector<unsigned char>>> m_buffers;
    std::vector<std::unique_ptr<BINSTR>> m_byteStrings;
};

/** One tested argument of a row. */
struct TestedArgument
{
    std::string name;
    std::string marks;
    bool atLeastOneByte;
    int code;
};

enum class Scope
{
    Both,
    Zrtk,
    Gpki
};

/** The tests of a row that stand before "ZR side:" and "GPKI side:", or behind one of them. */
std::vector<TestedArgument> testsOf(const Operation& operation, Scope scope);

/** Values of the argument that the test refuses. The arguments own what they point to. */
std::vector<Word> refusedValues(const TestedArgument& test, const Arguments& arguments);

/** Values that a careless test would refuse too, and this one must let through. */
std::vector<Word> admittedValues(const TestedArgument& test, const Arguments& arguments);

/** One expected call. */
struct ExpectedCall
{
    std::string operation;
    std::vector<std::string> words;
};

/** The calls of an operation cell; empty when nothing may reach the library. */
std::vector<ExpectedCall> expectedCalls(const Operation& operation, const std::string& cell);

/** Expects a recorded word to be what a cell names: "ctx", "?", a number, or an argument. */
void expectWord(const std::string& expected, Word recorded, const Arguments& arguments, const void* context);
