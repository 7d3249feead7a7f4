#include "StoreTest.h"

namespace {

/** Certificate directories of the disk store. */
class Directories : public DiskTest
{
protected:
    /** Counts a kind, makes its array as long as the count or as 'room' says, and fills it. */
    std::vector<std::string> find(int kind, int room = -1)
    {
        const int count = room < 0 ? store.GetDirectoryCount(kind) : room;
        auto& array = kind == CERTTYPE_GPKI   ? store.m_pstCertGPKIDirectory
                      : kind == CERTTYPE_NPKI ? store.m_pstCertNPKIDirectory
                                              : store.m_pstCertMPKIDirectory;
        int& length = kind == CERTTYPE_GPKI   ? store.m_nGPKIDirCnt
                      : kind == CERTTYPE_NPKI ? store.m_nNPKIDirCnt
                                              : store.m_nMPKIDirCnt;
        array = std::make_unique<CERTDIRPATH[]>(static_cast<size_t>(count));
        length = count;
        EXPECT_EQ(store.GetCertDirectory(kind, count), 0);
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i)
            paths.push_back(array[static_cast<size_t>(i)].szCertDirPath);
        std::sort(paths.begin(), paths.end());
        return paths;
    }
};

} // namespace

TEST_F(Directories, HomeWithoutTreesCountsZeroForAllKinds)
{
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_GPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_MPKI), 0);
}

TEST_F(Directories, UnknownKindCountsZeroAndFillsNothing)
{
    fs::create_directories(class2);
    EXPECT_EQ(store.GetDirectoryCount(3), 0);
    EXPECT_EQ(store.GetCertDirectory(8, 1), 0);
}

TEST_F(Directories, OtherMediaCountZeroForGpkiAndMpki)
{
    fs::create_directories(class2);
    fs::create_directories(mpki);
    fs::create_directories(yessign);
    store.m_nMediaType = MEDIA_MEMORY;
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_GPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_MPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 1);
}

TEST_F(Directories, GpkiHasClass1AndClass2ButNoClass3)
{
    fs::create_directories(class1);
    fs::create_directories(class2);
    fs::create_directories(home / "GPKI/Certificate/class3");
    EXPECT_EQ(find(CERTTYPE_GPKI), (std::vector<std::string>{class1.string() + "/", class2.string() + "/"}));
}

TEST_F(Directories, EveryKnownCaIsFoundAndAnyOtherIsNot)
{
    for (const char* ca : {"yessign", "SignKorea", "TRADESIGN", "crosscert", "KICA", "signgate", "NCASign"})
        fs::create_directories(home / "NPKI" / ca / "USER");
    fs::create_directories(home / "NPKI/somename/User");
    EXPECT_EQ(find(CERTTYPE_NPKI).size(), 7u);
}

TEST_F(Directories, AddedCaNameIsFoundInAnyLetterCase)
{
    fs::create_directories(home / "NPKI/somename/User");
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
    store.m_vtNPKIDirectory = {"", "SomeName"};
    EXPECT_EQ(find(CERTTYPE_NPKI), (std::vector<std::string>{(home / "NPKI/somename/User/").string()}));
    store.m_vtNPKIDirectory = {"other"};
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
}

TEST_F(Directories, NamesAddedForTheOtherKindsAreOnlyKept)
{
    fs::create_directories(home / "NPKI/somename/User");
    store.m_vtGPKIDirectory = store.m_vtMPKIDirectory = store.m_vtPRIVATEDirectory = {"somename"};
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
}

TEST_F(Directories, PathKeepsTheSpellingOnDiskAndEndsInASlash)
{
    fs::create_directories(home / "npki/YESSIGN/USER");
    EXPECT_EQ(find(CERTTYPE_NPKI), (std::vector<std::string>{(home / "npki/YESSIGN/USER/").string()}));
}

TEST_F(Directories, TwoSpellingsOfOneDirectoryAreBothListed)
{
    fs::create_directories(home / "NPKI/yessign/User");
    fs::create_directories(home / "NPKI/yessign/USER");
    fs::create_directories(home / "npki/Yessign/user");
    EXPECT_EQ(find(CERTTYPE_NPKI).size(), 3u);
}

TEST_F(Directories, MpkiHasTwoLevels)
{
    fs::create_directories(home / "mpki/USER");
    fs::create_directories(home / "MPKI/other");
    EXPECT_EQ(find(CERTTYPE_MPKI), (std::vector<std::string>{(home / "mpki/USER/").string()}));
}

TEST_F(Directories, FilesWhereDirectoriesAreExpectedEndTheirBranch)
{
    writeFile(home / "NPKI", "");
    writeFile(home / "GPKI/Certificate", "");
    writeFile(home / "MPKI/other", "");
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_GPKI), 0);
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_MPKI), 0);
}

TEST_F(Directories, LinkLoopEndsItsBranch)
{
    fs::create_directory_symlink(home / "NPKI", home / "NPKI");
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
}

TEST_F(Directories, DirectoryThatCameAfterTheCountIsDropped)
{
    fs::create_directories(class1);
    fs::create_directories(class2);
    const auto found = find(CERTTYPE_GPKI, 1);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_NE(found[0].find("/GPKI/Certificate/class"), std::string::npos);
    int count = -1;
    EXPECT_EQ(store.GetGPKICertDirectory(home.string().data(), &count), 0);
    EXPECT_EQ(count, 1);
}

TEST_F(Directories, PathThatWouldBeCutBelongsToNoEntry)
{
    char last[1024] = {};
    int count = -1;
    fs::path fits = deepDirectory(home, 1023 - std::string("/GPKI/Certificate/class1/").size());
    fs::create_directories(fits / "GPKI/Certificate/class1");
    EXPECT_EQ(store.GPKIFindDirectory(true, fits.string().data(), sizeof(last), last, &count), 0);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(std::strlen(last), 1023u);
    fs::path tooDeep = deepDirectory(home, 1024 - std::string("/GPKI/Certificate/class1/").size());
    fs::create_directories(tooDeep / "GPKI/Certificate/class1");
    EXPECT_EQ(store.GPKIFindDirectory(true, tooDeep.string().data(), sizeof(last), last, &count), 0);
    EXPECT_EQ(count, 0);
}

TEST_F(Directories, WalkGivesTheLastPathWithinItsBuffer)
{
    fs::create_directories(class2);
    char last[12] = {};
    int count = 0;
    EXPECT_EQ(store.GPKIFindDirectory(true, home.string().data(), sizeof(last), last, &count), 0);
    EXPECT_EQ(std::string(last), class2.string().substr(0, 11));
    EXPECT_EQ(store.GPKIFindDirectory(true, home.string().data(), 0, nullptr, &count), 0);
    EXPECT_EQ(count, 1);
}

TEST_F(Directories, GpkiOnADriveIsWalkedAtTheMountPoint)
{
    const fs::path drive = useDrive();
    fs::create_directories(drive / "GPKI/Certificate/class1");
    EXPECT_EQ(find(CERTTYPE_GPKI), (std::vector<std::string>{(drive / "GPKI/Certificate/class1/").string()}));
}

TEST_F(Directories, NpkiOnADriveIsNotSeenWithoutNpkiAtHome)
{
    const fs::path drive = useDrive();
    fs::create_directories(drive / "NPKI/yessign/User");
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_NPKI), 0);
}

TEST_F(Directories, NpkiOnADriveIsCountedAtHomeAndFoundBelowASecondNpki)
{
    const fs::path drive = useDrive();
    fs::create_directories(yessign);
    fs::create_directories(drive / "NPKI/yessign/User");
    fs::create_directories(drive / "NPKI/NPKI/kica/User");
    EXPECT_EQ(find(CERTTYPE_NPKI), (std::vector<std::string>{(drive / "NPKI/NPKI/kica/User/").string()}));
}

TEST_F(Directories, MpkiOnADriveGivesATextThatNothingOpens)
{
    const fs::path drive = useDrive();
    fs::create_directories(drive / "MPKI/User");
    EXPECT_EQ(find(CERTTYPE_MPKI), (std::vector<std::string>{drive.string() + "MPKI\\User\\"}));
    writeFlat(drive / "MPKI/User", "a");
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
}

TEST_F(Directories, FillingRefusesMissingRoots)
{
    char empty[1] = {};
    char root[] = "/";
    int count = 7;
    EXPECT_EQ(store.GetGPKICertDirectory(nullptr, &count), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetNPKICertDirectory(0, 0, nullptr, root, empty, &count), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetNPKICertDirectory(0, 0, empty, root, empty, &count), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetNPKICertDirectory(0, 0, root, nullptr, empty, &count), QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetMPKICertDirectory(0, 0, root, empty, empty, &count), QG_BAD_ARGUMENT);
    EXPECT_EQ(count, 7);
}

TEST_F(Directories, HomeIsTheUserDatabasesAndNotTheVariable)
{
    fs::create_directories(class1);
    const ScopedVariable other("HOME", "/nowhere");
    EXPECT_EQ(store.GetDirectoryCount(CERTTYPE_GPKI), 1);
}
