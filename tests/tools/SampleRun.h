#pragma once

#include <filesystem>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Command.h"
#include "toolkit/core/PrivateKey.h"

/** The password that quillgate-samples takes when none is given. */
inline constexpr const char* defaultPassword = "quillgate1!";

/** Runs quillgate-samples. */
CommandResult runSamples(std::vector<std::string> arguments);

/** The names below a directory, relative, sorted. */
std::set<std::string> namesBelow(const std::filesystem::path& directory);

/** The key file that belongs to a certificate file, in the same spelling. */
std::filesystem::path keyOf(const std::filesystem::path& certificate);

/** The plain key of a key file; empty when the password is wrong. */
qgtk::SecretBytes openKey(const std::filesystem::path& keyFile, const std::string& password);

/** A line of the printed table. */
struct Row
{
    std::string name, state, password, key, form, identity, place;
};

/** One run of the program, for all tests that only look at its results. */
class Samples : public testing::Test
{
protected:
    static void SetUpTestSuite();
    void SetUp() override { ASSERT_EQ(result.status, 0) << result.output; }

    /** Files of the home directory with one of these endings, in any letter case. */
    static std::vector<std::filesystem::path> homeFiles(std::initializer_list<const char*> endings);
    static std::vector<std::filesystem::path> certificates();
    static std::vector<std::filesystem::path> signingCertificates();

    /** The printed table: lines of seven columns, two blanks or more between them. */
    static std::vector<Row> rows();

    /** The signing certificate of a printed line. */
    static std::filesystem::path signingCertificate(const Row& row);

    static inline std::filesystem::path directory;
    static inline CommandResult result;
};
