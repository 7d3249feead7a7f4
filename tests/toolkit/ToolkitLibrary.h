#pragma once

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "quillgate/binstr.h"
#include "toolkit/core/Errors.h"

/** One of the two interfaces. */
struct Side
{
    const char* name;
    const char* file; /**< path of the library in the build tree */
    const char* prefix;
    const char* configuration; /**< name of its configuration file */
    const char* policyIds;     /**< name of the operation behind the prefix */
};

extern const Side zrtkSide;
extern const Side gpkiSide;

void PrintTo(const Side& side, std::ostream* out);

/** A library loaded as callers load it, closed at the end. */
class ToolkitLibrary
{
public:
    explicit ToolkitLibrary(const Side& side);
    ~ToolkitLibrary();
    ToolkitLibrary(const ToolkitLibrary&) = delete;
    ToolkitLibrary& operator=(const ToolkitLibrary&) = delete;

    /** The address of an operation by its name behind the prefix; throws when it is missing. */
    void* symbol(const std::string& operation) const;
    bool has(const std::string& operation) const;

    /** Calls an operation with exactly these arguments. */
    template <typename... Arguments>
    int callBare(const std::string& operation, Arguments... arguments) const
    {
        return reinterpret_cast<int (*)(Arguments...)>(symbol(operation))(arguments...);
    }

private:
    const Side& m_side;
    void* m_handle;
};

/** A byte string that is released through the library that filled it. */
class BinString
{
public:
    explicit BinString(const ToolkitLibrary& library) : m_library(library) {}
    BinString(const ToolkitLibrary& library, const std::string& bytes);
    ~BinString();
    BinString(const BinString&) = delete;
    BinString& operator=(const BinString&) = delete;

    BINSTR* operator&() { return &m_record; }
    std::string bytes() const
    {
        return {reinterpret_cast<const char*>(m_record.pData), static_cast<std::size_t>(m_record.nLen)};
    }

private:
    const ToolkitLibrary& m_library;
    BINSTR m_record = {};
};

/** A context on one side over a fresh, empty work directory. */
class ToolkitTest : public testing::TestWithParam<Side>
{
protected:
    ToolkitTest() : library(GetParam()) {}
    void SetUp() override;
    void TearDown() override;

    /** Ends the context and starts one over a work directory with this section of settings. */
    void restartWith(const std::string& settings);

    /** Calls an operation on the context. */
    template <typename... Arguments>
    int call(const std::string& operation, Arguments... arguments)
    {
        return library.callBare(operation, context, arguments...);
    }

    /** Loads a certificate. */
    int load(const std::string& der);

    /** The text of a getter of the loaded certificate; its code when it fails. */
    std::string get(const std::string& getter, int size = 2048);

    /** The text of the last failure, EUC-KR. */
    std::string errorText();

    ToolkitLibrary library;
    void* context = nullptr;
    std::string workDirectory;
};

/** The number of a code. */
inline int number(qgtk::Code code)
{
    return static_cast<int>(code);
}

/** Text as an argument: the interfaces take it without const. */
inline char* text(const char* value)
{
    return const_cast<char*>(value);
}
inline char* text(const std::string& value)
{
    return text(value.c_str());
}

/** UTF-8 as EUC-KR. */
std::string eucKr(const std::string& utf8);

#define INSTANTIATE_BOTH_SIDES(suite)                                                                        \
    INSTANTIATE_TEST_SUITE_P(BothInterfaces, suite, testing::Values(zrtkSide, gpkiSide),                     \
                             [](const auto& side) { return side.param.name; })
