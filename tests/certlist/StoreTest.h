#pragma once

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FakeToolkit.h"
#include "FoundationTest.h"
#include "LoadDISK.h"
#include "LoadMemory.h"
#include "TestHome.h"
#include "quillgate/returncodes.h"

using Texts = std::vector<std::string>;

/** What an unpacked PFX file hands out when it hands nothing out: both certificates and keys are missing. */
inline const Texts NOTHING(4, "");

namespace fs = std::filesystem;

/** Writes the four files of the flat form; an empty text leaves a file out. Keys are "password:key". */
inline void writeFlat(const fs::path& directory, const std::string& name,
                      const std::string& signKey = "pw:R:r", const std::string& kmKey = "")
{
    writeFile(directory / (name + "_sig.cer"), "cert " + name);
    if (!signKey.empty())
        writeFile(directory / (name + "_sig.key"), signKey);
    if (kmKey.empty())
        return;
    writeFile(directory / (name + "_env.cer"), "km cert " + name);
    writeFile(directory / (name + "_env.key"), kmKey);
}

/** A new directory below another whose full path has exactly this length. */
inline fs::path deepDirectory(const fs::path& below, size_t length)
{
    fs::path path = below;
    while (path.string().size() + 2 < length)
        path /= std::string(std::min<size_t>(length - path.string().size() - 1, 200), 'd');
    if (path.string().size() != length)
        path = path.parent_path() / (path.filename().string() + "d");
    fs::create_directories(path);
    return path;
}

/** Writes a holder directory. */
inline void writeHolder(const fs::path& directory, const std::string& signKey = "pw:R:r",
                        const std::string& kmKey = "")
{
    writeFile(directory / "signCert.der", "cert " + directory.filename().string());
    if (!signKey.empty())
        writeFile(directory / "signPri.key", signKey);
    if (kmKey.empty())
        return;
    writeFile(directory / "kmCert.der", "km cert " + directory.filename().string());
    writeFile(directory / "kmPri.key", kmKey);
}

/** A disk store on an empty home directory, at noon of 20 November 2026, with all three trees asked for. */
class DiskTest : public testing::Test
{
protected:
    DiskTest()
    {
        TestHome::reset();
        store.m_pZRWrapCtx = &context;
        store.m_stLoadCertOpt.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    }

    ~DiskTest() override
    {
        EXPECT_EQ(toolkit.liveBytes, 0) << "byte strings are left";
        EXPECT_EQ(toolkit.unwiped, 0);
        EXPECT_EQ(toolkit.loaded, 0) << "a certificate is left loaded";
    }

    /** Puts a vfat drive into the mount table and chooses it. */
    fs::path useDrive(const std::string& name = "drive")
    {
        const fs::path drive = TestHome::scratch(name);
        writeFile(mtab, "/dev/sdb1 " + drive.string() + " vfat rw 0 0\n");
        EXPECT_EQ(store.GetRemDriveList(false), 0);
        store.m_nMediaType = MEDIA_REMOVABLE;
        store.SetRemDriveInfo(0);
        return drive;
    }

    /** Names of the listed sign certificates' files, or holder directories, in list order. */
    std::vector<std::string> listed() const
    {
        std::vector<std::string> names;
        for (int i = 0; i < store.m_nCertCnt; ++i)
            names.push_back(store.m_pstCertInfoList[static_cast<size_t>(i)].szSignCertPath);
        return names;
    }

    const CERTINFO& entry(int index) const { return *store.record(index); }

    StoppedClock clock{2026, 11, 20};
    fs::path mtab = TestHome::scratch("mounts") / "mtab";
    ScopedVariable mtabVariable{"QUILLGATE_TEST_MTAB", mtab.string()};
    fs::path home = TestHome::path();
    fs::path class1 = home / "GPKI/Certificate/class1";
    fs::path class2 = home / "GPKI/Certificate/class2";
    fs::path yessign = home / "NPKI/yessign/User";
    fs::path mpki = home / "MPKI/User";
    FakeToolkit toolkit;
    int context = 0;
    CLoadDISK store{1, TOOLKIT_ZRTK, nullptr};
};
