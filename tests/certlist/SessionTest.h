#pragma once

#include "BoundedText.h"
#include "CertListProcInterface.h"
#include "StoreTest.h"
#include "quillgate/certlist.h"

/**
 * A session begun as a host begins it, with a work directory of its own, on an empty home directory at noon
 * of 20 November 2026. The CLP_ functions log into logPath() when the test asks for it.
 */
class SessionTest : public testing::Test
{
protected:
    SessionTest()
    {
        TestHome::reset();
        copyText(option.szWorkDir, workDir.c_str());
        certOption.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    }

    ~SessionTest() override
    {
        if (handle)
            CLP_UnInitalize(handle);
        EXPECT_EQ(toolkit.liveBytes, 0);
        EXPECT_EQ(toolkit.unwiped, 0);
        EXPECT_EQ(toolkit.loaded, 0);
        EXPECT_EQ(toolkit.contexts, 0);
        szLogFilePath[0] = '\0';
    }

    int start() { return CLP_Initalize(&handle, &option, nullptr); }

    /** Starts with the filter set and a medium chosen. */
    void startOn(int medium)
    {
        ASSERT_EQ(start(), 0);
        ASSERT_EQ(CLP_SetType(handle, &certOption), 0);
        ASSERT_EQ(CLP_SetMediaType(handle, medium, 0), 0);
    }

    int setPolicies(const char* text)
    {
        LOADCERTOPT changed = certOption;
        copyText(changed.szCertPolicyIDs, text);
        return CLP_SetType(handle, &changed);
    }

    int setMemoryCert(const std::string& cert, const std::string& key, const std::string& kmCert = "",
                      const std::string& kmKey = "")
    {
        return CLP_SetMemoryCert(handle, text(cert), size(cert), text(key), size(key), text(kmCert),
                                 size(kmCert), text(kmKey), size(kmKey));
    }

    /** A text for a parameter that is not const. */
    static char* text(const std::string& value) { return const_cast<char*>(value.c_str()); }
    static int size(const std::string& value) { return static_cast<int>(value.size()); }

    CCertListProcInterface& session() { return *static_cast<CCertListProcInterface*>(handle); }
    CLoadDISK& disk() { return *session().GetDiskPointer(); }
    CLoadMemory& memory() { return *session().GetMemoryPointer(); }

    CERTINFO info(int index)
    {
        CERTINFO record{};
        EXPECT_EQ(CLP_GetCertInfo(handle, index, &record), 0);
        return record;
    }

    static std::string bytes(const char* data, int length) { return {data, static_cast<size_t>(length)}; }

    /** Takes a buffer that was handed out: its bytes, and frees it. */
    std::string take(char*& buffer, int length)
    {
        const std::string content = buffer ? bytes(buffer, length) : "";
        void* address = buffer;
        EXPECT_EQ(CLP_MemFree(handle, &address), buffer ? 0 : QG_BAD_ARGUMENT);
        buffer = nullptr;
        return content;
    }

    fs::path logPath() const { return workDir / "clp.log"; }
    void switchLogOn() { writeFile(workDir / "zrapilog.ini", "[Info]\nPath=" + logPath().string() + "\n"); }

    /** Log lines without their time stamp. */
    std::vector<std::string> logLines() const
    {
        std::vector<std::string> lines;
        std::ifstream in(logPath());
        for (std::string line; std::getline(in, line);)
            lines.push_back(line.substr(std::min<size_t>(22, line.size())));
        return lines;
    }

    StoppedClock clock{2026, 11, 20};
    fs::path workDir = TestHome::scratch("work");
    fs::path mtab = TestHome::scratch("mounts") / "mtab";
    ScopedVariable mtabVariable{"QUILLGATE_TEST_MTAB", mtab.string()};
    fs::path class1 = TestHome::path() / "GPKI/Certificate/class1";
    fs::path yessign = TestHome::path() / "NPKI/yessign/User";
    FakeToolkit toolkit;
    LOADOPT option{};
    LOADCERTOPT certOption{};
    void* handle = nullptr;
};
