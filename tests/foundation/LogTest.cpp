#include "Log.h"

#include <cerrno>
#include <cstdarg>
#include <filesystem>

#include "FoundationTest.h"
#include "Util.h"

namespace {

struct SystemLogLine
{
    int priority;
    std::string text;
    bool operator==(const SystemLogLine&) const = default;
};

std::vector<SystemLogLine> g_systemLog;

__attribute__((format(printf, 2, 0))) void record(int priority, const char* format, va_list arguments)
{
    char line[8192];
    vsnprintf(line, sizeof(line), format, arguments);
    g_systemLog.push_back({priority, line});
}

constexpr int alertPriority = 1;

} // namespace

// The test program's own system log, in the plain and in the fortified spelling of the C library.
extern "C" __attribute__((format(printf, 2, 3))) void syslog(int priority, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    record(priority, format, arguments);
    va_end(arguments);
}

extern "C" __attribute__((format(printf, 3, 4))) void __syslog_chk(int priority, int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    record(priority, format, arguments);
    va_end(arguments);
}

namespace {

class Log : public testing::Test
{
protected:
    Log() { g_systemLog.clear(); }

    std::string m_path = TestHome::scratch("log") / "quillgate.log";
    StoppedClock m_clock{2026, 1, 2, 3, 4, 5};
};

} // namespace

TEST_F(Log, TheFreeWriterAppendsStampedLinesToTheFile)
{
    SetLogInfo(m_path.c_str(), "[[ %s (%d) ]]", "CLP_LoadCertList() End... ", 0);
    SetLogInfo(m_path.c_str(), "%s", "second");
    EXPECT_EQ(readFile(m_path), "[2026-01-02 03:04:05] [[ CLP_LoadCertList() End...  (0) ]]\n"
                                "[2026-01-02 03:04:05] second\n");
    EXPECT_TRUE(g_systemLog.empty());
}

TEST_F(Log, TheMemberWriterSendsTheLineToTheSystemLogAndMakesTheFile)
{
    CUtil::SetLogInfo(m_path.c_str(), "%s : %d", "CLoadDISK::LoadCertList() End...", 7);
    EXPECT_EQ(readFile(m_path), "");
    EXPECT_EQ(g_systemLog,
              (std::vector<SystemLogLine>{
                  {alertPriority, "[2026-01-02 03:04:05] CLoadDISK::LoadCertList() End... : 7\n"}}));
}

TEST_F(Log, TheMemberWriterKeepsWhatIsInTheFile)
{
    writeFile(m_path, "earlier\n");
    CUtil::SetLogInfo(m_path.c_str(), "%s", "line");
    EXPECT_EQ(readFile(m_path), "earlier\n");
    EXPECT_EQ(g_systemLog.size(), 1u);
}

TEST_F(Log, WithoutAPathNothingIsWritten)
{
    SetLogInfo(nullptr, "%s", "a");
    SetLogInfo("", "%s", "a");
    CUtil::SetLogInfo(nullptr, "%s", "a");
    CUtil::SetLogInfo("", "%s", "a");
    EXPECT_TRUE(g_systemLog.empty());
    EXPECT_FALSE(std::filesystem::exists(m_path));
}

TEST_F(Log, AMissingDirectorySilencesBothWriters)
{
    m_path = TestHome::scratch("log") / "none" / "log";
    SetLogInfo(m_path.c_str(), "%s", "a");
    CUtil::SetLogInfo(m_path.c_str(), "%s", "a");
    EXPECT_TRUE(g_systemLog.empty());
    EXPECT_FALSE(std::filesystem::exists(m_path));
}

TEST_F(Log, AMessageIsCutAt4095CharactersAndStillEndsTheLine)
{
    const std::string message(5000, 'm');
    const std::string line = "[2026-01-02 03:04:05] " + message.substr(0, 4095) + "\n";
    SetLogInfo(m_path.c_str(), "%s", message.c_str());
    CUtil::SetLogInfo(m_path.c_str(), "%s", message.c_str());
    EXPECT_EQ(readFile(m_path), line);
    ASSERT_EQ(g_systemLog.size(), 1u);
    EXPECT_EQ(g_systemLog[0].text, line);
}

TEST_F(Log, PercentSignsInAMessageAreText)
{
    SetLogInfo(m_path.c_str(), "%s", "100%n %s");
    CUtil::SetLogInfo(m_path.c_str(), "%s", "100%n %s");
    EXPECT_EQ(readFile(m_path), "[2026-01-02 03:04:05] 100%n %s\n");
    EXPECT_EQ(g_systemLog[0].text, "[2026-01-02 03:04:05] 100%n %s\n");
}

TEST_F(Log, AFifoADirectoryAndALinkLoopAreNotWrittenAndDoNotBlock)
{
    const std::string folder = TestHome::scratch("log");
    ASSERT_EQ(mkfifo((folder + "/fifo").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder + "/loop", folder + "/loop");
    for (const std::string& path : {folder + "/fifo", folder, folder + "/loop"}) {
        SetLogInfo(path.c_str(), "%s", "a");
        CUtil::SetLogInfo(path.c_str(), "%s", "a");
        CUtil::WriteLogDataFile(path.c_str(), "a");
    }
    EXPECT_TRUE(g_systemLog.empty());
}

TEST_F(Log, ADeviceTakesTheLine)
{
    SetLogInfo("/dev/null", "%s", "a");
    CUtil::SetLogInfo("/dev/null", "%s", "a");
    EXPECT_EQ(g_systemLog.size(), 1u);
}

TEST_F(Log, AFullDiskCostsTheLineAlone)
{
    SetLogInfo("/dev/full", "%s", "a");
    EXPECT_EQ(CUtil::WriteLogDataFile("/dev/full", "a"), 0);
}

TEST_F(Log, ATimeThatNoCalendarHoldsCostsTheLineAlone)
{
    setClock([] { return static_cast<time_t>(INT64_MAX); });
    SetLogInfo(m_path.c_str(), "%s", "a");
    CUtil::SetLogInfo(m_path.c_str(), "%s", "a");
    EXPECT_EQ(readFile(m_path), "");
    EXPECT_TRUE(g_systemLog.empty());
}

TEST_F(Log, TheSystemErrorOfTheCallerIsKept)
{
    errno = EDOM;
    SetLogInfo("/none/log", "%s", "a");
    CUtil::SetLogInfo("/none/log", "%s", "a");
    EXPECT_EQ(errno, EDOM);
}

TEST_F(Log, WriteLogDataFileReplacesEarlierContent)
{
    writeFile(m_path, "a longer earlier content");
    EXPECT_EQ(CUtil::WriteLogDataFile(m_path.c_str(), "new"), 0);
    EXPECT_EQ(readFile(m_path), "new");
}

TEST_F(Log, WriteLogDataFileReportsZeroWhenItCannotOpen)
{
    EXPECT_EQ(CUtil::WriteLogDataFile("/none/data", "a"), 0);
    EXPECT_EQ(CUtil::WriteLogDataFile(nullptr, "a"), 0);
    EXPECT_EQ(CUtil::WriteLogDataFile(m_path.c_str(), nullptr), 0);
    EXPECT_FALSE(std::filesystem::exists(m_path));
}
