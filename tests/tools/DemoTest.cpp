// The demo program off-screen on the sample data, as demo.sh runs it on a machine without a display.

#include <fstream>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Command.h"
#include "TestHome.h"

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

namespace {

/** The sample data, made once. */
class Demo : public testing::TestWithParam<const char*>
{
protected:
    static void SetUpTestSuite()
    {
        directory = TestHome::scratch("demo") / "new";
        ASSERT_EQ(runCommand({QUILLGATE_SAMPLES, directory.string(), "--password", password}).status, 0);
        const std::string ids = std::to_string(getuid()) + ":" + std::to_string(getgid());
        writeFile(directory / "passwd",
                  "user:x:" + ids + "::" + (directory / "home").string() + ":/bin/sh\n");
        writeFile(directory / "group", "user:x:" + std::to_string(getgid()) + ":\n");
        fs::create_directory(directory / "run");
        fs::permissions(directory / "run", fs::perms::owner_all);
    }

    static CommandResult run(std::vector<std::string> arguments)
    {
        std::vector<std::string> command{"env",
                                         "LD_PRELOAD=" NSS_WRAPPER,
                                         "NSS_WRAPPER_PASSWD=" + (directory / "passwd").string(),
                                         "NSS_WRAPPER_GROUP=" + (directory / "group").string(),
                                         "XDG_RUNTIME_DIR=" + (directory / "run").string(),
                                         "QT_QPA_PLATFORM=offscreen",
                                         QUILLGATE_DEMO,
                                         "--work",
                                         (directory / "work").string(),
                                         "--language",
                                         GetParam(),
                                         "--unattended",
                                         "--password",
                                         password};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return runCommand(command);
    }

    /** Width and height of a PNG, as its header has them. */
    static std::pair<unsigned, unsigned> sizeOf(const fs::path& picture)
    {
        const std::string bytes = readFile(picture);
        const auto number = [&](std::size_t at) {
            unsigned value = 0;
            for (std::size_t i = at; i < at + 4; ++i)
                value = value << 8 | static_cast<unsigned char>(bytes.at(i));
            return value;
        };
        return {number(16), number(20)};
    }

    static inline fs::path directory;
    static constexpr const char* password = "for-this-test";
};

INSTANTIATE_TEST_SUITE_P(Languages, Demo, testing::Values("kor", "eng"),
                         [](const auto& language) { return std::string(language.param); });

TEST_P(Demo, ViewShowsBothTabsOfTheViewerAndGoesOnToTheSelection)
{
    const fs::path pictures = TestHome::scratch("pictures");
    const CommandResult result = run(
        {"--view", "--holder", "\xED\x99\x8D\xEA\xB8\xB8\xEB\x8F\x99", "--screenshots", pictures.string()});
    EXPECT_EQ(result.status, 0) << result.output;
    const std::string language = GetParam();
    for (const char* window : {"viewer", "viewer-details"})
        EXPECT_EQ(sizeOf(pictures / (std::string(window) + "-" + language + ".png")), std::pair(350U, 408U));
    EXPECT_NE(readFile(pictures / ("viewer-" + language + ".png")),
              readFile(pictures / ("viewer-details-" + language + ".png")))
        << "two tabs";
    EXPECT_TRUE(fs::exists(pictures / ("dialog-" + language + ".png")));
    EXPECT_THAT(result.output, HasSubstr("signed with the key, verified with the certificate"));
    EXPECT_THAT(result.output, Not(HasSubstr(password)));
}

TEST_P(Demo, WithoutViewNoViewerIsShown)
{
    const fs::path pictures = TestHome::scratch("pictures");
    EXPECT_EQ(run({"--screenshots", pictures.string()}).status, 0);
    EXPECT_TRUE(fs::exists(pictures / (std::string("dialog-") + GetParam() + ".png")));
    EXPECT_FALSE(fs::exists(pictures / (std::string("viewer-") + GetParam() + ".png")));
}

} // namespace
