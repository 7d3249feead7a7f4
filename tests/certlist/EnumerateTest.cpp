#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "BoundedText.h"
#include "StoreTest.h"

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Enumerate = DiskTest;

TEST_F(Enumerate, EmptyHomeHasNoCertificate)
{
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
    EXPECT_FALSE(store.m_pstCertInfoList);
}

TEST_F(Enumerate, ListRunsFromGpkiOverNpkiToFlatAndHolderMpki)
{
    writeHolder(mpki / "n");
    writeFlat(mpki, "m");
    writeHolder(yessign / "h");
    writeFlat(class1, "g");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(class1 / "g_sig.cer", yessign / "h/signCert.der", mpki / "m_sig.cer",
                                      mpki / "n/signCert.der"));
    EXPECT_EQ(entry(0).nCertType, CERTTYPE_GPKI);
    EXPECT_EQ(entry(1).nCertType, CERTTYPE_NPKI);
    EXPECT_EQ(entry(2).nCertType, CERTTYPE_MPKI);
    EXPECT_EQ(entry(3).nCertType, CERTTYPE_MPKI);
}

TEST_F(Enumerate, OnlyTheFamiliesAskedForAreWalked)
{
    writeFlat(class1, "g");
    writeHolder(yessign / "h");
    writeFlat(mpki, "m");
    store.m_stLoadCertOpt.nCertCAType = CERTTYPE_NPKI;
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(yessign / "h/signCert.der"));
    store.m_stLoadCertOpt.nCertCAType = CERTTYPE_GPKI | CERTTYPE_MPKI;
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(class1 / "g_sig.cer", mpki / "m_sig.cer"));
    store.m_stLoadCertOpt.nCertCAType = 0;
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
}

TEST_F(Enumerate, UpperCaseSuffixIsIgnoredInGpkiAndTakenInMpki)
{
    for (const fs::path& directory : {class1, mpki}) {
        writeFile(directory / "Foo_SIG.CER", "cert");
        writeFile(directory / "Foo_SIG.KEY", "pw:key");
    }
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(mpki / "Foo_SIG.CER"));
}

TEST_F(Enumerate, GpkiRecordNamesKmFilesThatAreMissing)
{
    writeFlat(class2, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    ASSERT_EQ(store.m_nCertCnt, 1);
    EXPECT_EQ(entry(0).szKmCertPath, (class2 / "a_env.cer").string());
    EXPECT_EQ(entry(0).szKmKeyPath, (class2 / "a_env.key").string());
    EXPECT_EQ(entry(0).nKmCertLen, 0);
}

TEST_F(Enumerate, GpkiPathsAreCutFromTheEndWhateverStandsThere)
{
    writeFile(class1 / "a_sig.cer.bak", "cert");
    writeFile(class1 / "a_sig.cer.key", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szSignKeyPath, (class1 / "a_sig.cer.key").string());
    EXPECT_EQ(entry(0).szKmCertPath, (class1 / "a_sig_env.cer").string());
}

TEST_F(Enumerate, NpkiHolderIsListedInTheDisksSpelling)
{
    writeFile(yessign / "h/SIGNCERT.DER", "cert");
    writeFile(yessign / "h/signpri.KEY", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szSignCertPath, (yessign / "h/SIGNCERT.DER").string());
    EXPECT_EQ(entry(0).szSignKeyPath, (yessign / "h/signpri.KEY").string());
}

TEST_F(Enumerate, NpkiKmKeyWithoutKmCertificateNeverAttaches)
{
    writeHolder(yessign / "h");
    writeFile(yessign / "h/kmPri.key", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_STREQ(entry(0).szKmCertPath, "");
    EXPECT_STREQ(entry(0).szKmKeyPath, "");
}

TEST_F(Enumerate, NpkiKmCertificateWithoutKeyAttachesWithAnEmptyKeyPath)
{
    writeHolder(yessign / "h");
    writeFile(yessign / "h/kmCert.der", "km cert");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szKmCertPath, (yessign / "h/kmCert.der").string());
    EXPECT_STREQ(entry(0).szKmKeyPath, "");
    EXPECT_EQ(entry(0).nKmCertLen, 0);
}

TEST_F(Enumerate, FilesAndLinksBesideHolderDirectoriesAreNoHolders)
{
    writeHolder(yessign / "h");
    writeFile(yessign / "signCert.der", "cert");
    fs::create_directory_symlink(yessign / "h", yessign / "link");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(yessign / "h/signCert.der"));
}

TEST_F(Enumerate, CertificateWithoutKeyFileIsInNeitherPass)
{
    writeFlat(class1, "a", "");
    writeFlat(class1, "b");
    writeHolder(yessign / "h", "");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), ElementsAre(class1 / "b_sig.cer"));
}

TEST_F(Enumerate, KeyWithoutCertificateGoesUnnoticed)
{
    writeFile(class1 / "a_sig.key", "pw:key");
    writeFile(yessign / "h/signPri.key", "pw:key");
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
}

TEST_F(Enumerate, MpkiPairFindsItsFilesByTheHolderName)
{
    writeFlat(mpki, "zed", "pw:key", "pw:km");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szSignKeyPath, (mpki / "zed_sig.key").string());
    EXPECT_EQ(entry(0).szKmCertPath, (mpki / "zed_env.cer").string());
    EXPECT_EQ(entry(0).szKmKeyPath, (mpki / "zed_env.key").string());
}

TEST_F(Enumerate, MpkiPairTakesTheLastFilesWhosePathsHoldTheHolderName)
{
    // The directory's own name holds "user", so for that holder every file is a hit.
    const std::string own = mpki / "user_sig.cer";
    writeFlat(mpki, "zed");
    writeFlat(mpki, "user");
    const auto lastCertificate = [&] {
        std::string last;
        for (const auto& file : fs::directory_iterator(mpki))
            last = file.path().extension() == ".cer" ? file.path().string() : last;
        return last;
    };
    for (int i = 0; i < 100 && lastCertificate() == own; ++i)
        writeFlat(mpki, "zed" + std::to_string(i));
    ASSERT_NE(lastCertificate(), own);
    ASSERT_EQ(store.LoadCertList(), 0);
    const auto paths = listed();
    EXPECT_EQ(std::count(paths.begin(), paths.end(), own), 0);
    EXPECT_GE(std::count(paths.begin(), paths.end(), lastCertificate()), 2);
}

TEST_F(Enumerate, MpkiFilesAreReadAnewByEachPass)
{
    writeFlat(mpki, "zed", "pw:key");
    int reads = 0;
    toolkit.onRead = [&](const std::string&) {
        if (++reads == 2) // the count pass has certificate and key behind it
            writeFile(mpki / "zed_env.cer", "km"), writeFile(mpki / "zed_env.key", "pw:km");
    };
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szKmKeyPath, (mpki / "zed_env.key").string());
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_GT(entry(0).nKmCertLen, 0);
}

TEST_F(Enumerate, MpkiPairWithoutKmCertificateHasNoKmPaths)
{
    writeFlat(mpki, "zed");
    writeFile(mpki / "zed_env.key", "pw:km");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_STREQ(entry(0).szKmCertPath, "");
    EXPECT_STREQ(entry(0).szKmKeyPath, "");
}

TEST_F(Enumerate, MpkiFileWithoutAHolderNameEndsTheCountWithMinusOne)
{
    writeFile(mpki / "_sig.cer", "cert");
    EXPECT_EQ(store.LoadCertList(), -1);
}

TEST_F(Enumerate, MpkiHolderNameThatHoldsAFileNameMakesAllFilesHit)
{
    const fs::path holder = mpki / "signCert.der";
    writeFile(holder / "only", "cert");
    ASSERT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT); // certificate and no key
    EXPECT_GE(toolkit.count("MediaDiskReadFile(" + (holder / "only").string()), 1);
}

TEST_F(Enumerate, MpkiHolderIsListedInAnyLetterCase)
{
    writeFile(mpki / "h/SIGNCERT.der", "cert");
    writeFile(mpki / "h/SIGNPRI.key", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(entry(0).szSignCertPath, (mpki / "h/SIGNCERT.der").string());
}

TEST_F(Enumerate, FileThatVanishesBetweenThePassesLeavesAZeroedRecord)
{
    writeFlat(class1, "a");
    writeFlat(class1, "b");
    int reads = 0;
    toolkit.onRead = [&](const std::string& path) {
        const bool fillPassBegins = ++reads == 2 * 4 + 1; // each certificate has four files, there or not
        if (fillPassBegins)
            fs::remove(class1 / (path.find("/a_sig") == std::string::npos ? "a_sig.cer" : "b_sig.cer"));
    };
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(store.m_nCertCnt, 2);
    const CERTINFO zero{};
    EXPECT_EQ(std::memcmp(&entry(1), &zero, sizeof(zero)), 0);
}

TEST_F(Enumerate, FileThatArrivesBetweenThePassesFindsNoPlace)
{
    writeFlat(class1, "a");
    int reads = 0;
    toolkit.onRead = [&](const std::string&) {
        if (++reads != 4 + 1)
            return;
        for (const char* name : {"b", "c", "d"})
            writeFlat(class1, name), writeFlat(class2, name);
    };
    fs::create_directories(class2);
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(store.m_nCertCnt, 1);
    EXPECT_EQ(toolkit.count("CertLoad"), 2) << "the walk stops when the list is full";
}

TEST_F(Enumerate, EarlierListStaysReadableWhenAllFiltersFail)
{
    writeFlat(class1, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    std::strcpy(store.m_stLoadCertOpt.szCertSerial, "77"); // NOLINT: a literal into 1024 bytes
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(store.m_nCertCnt, 1);
    EXPECT_STREQ(entry(0).szSerialNumber, "0a1b");
}

TEST_F(Enumerate, ReloadReplacesTheList)
{
    writeFlat(class1, "a");
    ASSERT_EQ(store.LoadCertList(), 0);
    fs::remove(class1 / "a_sig.cer");
    writeFlat(class1, "b");
    writeFlat(class1, "c");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_THAT(listed(), UnorderedElementsAre(class1 / "b_sig.cer", class1 / "c_sig.cer"));
}

TEST_F(Enumerate, WalksWithoutDirectoriesLeaveTheCountAlone)
{
    int count = 9;
    EXPECT_EQ(store.GetGPKICertList(true, 0, &count), 0);
    EXPECT_EQ(store.GetNPKICertList(true, 0, &count), 0);
    EXPECT_EQ(store.GetMPKIGCertList(false, 3, &count), 0);
    EXPECT_EQ(store.GetMPKINCertList(true, 0, nullptr), 0);
    EXPECT_EQ(count, 9);
}

// --- Odd entries --------------------------------------------------------------------------------------

TEST_F(Enumerate, DirectoriesFifosDevicesAndLoopsAreNoCertificates)
{
    fs::create_directories(class1 / "a_sig.cer");
    writeFile(class1 / "b_sig.key", "pw:key");
    mkfifo((class1 / "b_sig.cer").c_str(), 0600);
    writeFile(class1 / "c_sig.key", "pw:key");
    fs::create_symlink("/dev/zero", class1 / "c_sig.cer");
    writeFile(class1 / "d_sig.key", "pw:key");
    fs::create_symlink(class1 / "d_sig.cer", class1 / "d_sig.cer");
    fs::create_directories(yessign / "h/signCert.der");
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(toolkit.count("MediaDiskReadFile(" + (class1 / "b_sig.cer").string()), 0);
}

TEST_F(Enumerate, FifoInPlaceOfAKeyIsNoKey)
{
    writeFile(class1 / "a_sig.cer", "cert");
    mkfifo((class1 / "a_sig.key").c_str(), 0600);
    EXPECT_EQ(store.LoadCertList(), CLPERR_NOTEXISTCERT);
}

TEST_F(Enumerate, FifoInPlaceOfAKmCertificateIsNotOpenable)
{
    writeHolder(yessign / "h");
    writeFile(yessign / "h/kmPri.key", "pw:key");
    mkfifo((yessign / "h/kmCert.der").c_str(), 0600);
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_STREQ(entry(0).szKmCertPath, "");
}

TEST_F(Enumerate, LinkToACertificateFileIsFollowed)
{
    writeFlat(home / "elsewhere", "a");
    fs::create_directories(class1);
    fs::create_symlink(home / "elsewhere/a_sig.cer", class1 / "b_sig.cer");
    writeFile(class1 / "b_sig.key", "pw:key");
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(listed().size(), 1u);
}

TEST_F(Enumerate, NamesOf255BytesAreListed)
{
    const std::string name(255 - 8, 'n');
    writeFlat(class1, name);
    writeFlat(mpki, name);
    writeHolder(yessign / std::string(255, 'h'));
    ASSERT_EQ(store.LoadCertList(), 0);
    EXPECT_EQ(store.m_nCertCnt, 3);
}

TEST_F(Enumerate, HolderWhosePathsWouldBeCutIsLeftOut)
{
    // Each directory is as deep as still counts as one; their entries' paths reach 1023 bytes and beyond.
    CERTDIRPATH directory{};
    const fs::path deep = deepDirectory(home, 1000);
    writeFlat(deep, std::string(1023 - 1001 - 8, 'a'));
    writeFlat(deep, std::string(1024 - 1001 - 8, 'b'));
    std::snprintf(directory.szCertDirPath, sizeof(directory.szCertDirPath), "%s/", deep.c_str());
    store.m_pstCertGPKIDirectory = std::make_unique<CERTDIRPATH[]>(1);
    store.m_pstCertGPKIDirectory[0] = directory;
    store.m_nGPKIDirCnt = 1;
    int count = 0;
    ASSERT_EQ(store.GetGPKICertList(true, 0, &count), 0);
    EXPECT_EQ(count, 1);
}

TEST_F(Enumerate, MpkiHolderIsListedBesideAFileWhosePathWouldBeCut)
{
    const fs::path deep = deepDirectory(home, 900);
    writeHolder(deep / "a");
    writeFile(deep / "a" / std::string(200, 'n'), "x");
    store.m_pstCertMPKIDirectory = std::make_unique<CERTDIRPATH[]>(1);
    copyText(store.m_pstCertMPKIDirectory[0].szCertDirPath, (deep.string() + "/").c_str());
    store.m_nMPKIDirCnt = 1;
    int count = 0;
    ASSERT_EQ(store.GetMPKINCertList(true, 0, &count), 0);
    EXPECT_EQ(count, 1);
}

// --- Files of one holder ------------------------------------------------------------------------------

namespace {

/** The four outputs of GetGPKICertFilePath. */
struct Files
{
    char text[4][1024] = {{'x', 0}, {'x', 0}, {'x', 0}, {'x', 0}};

    int find(CLoadDISK& store, const std::string& directory, const std::string& holder, int size = 1024)
    {
        return store.GetGPKICertFilePath(std::string(directory).data(), std::string(holder).data(), size,
                                         text[0], size, text[1], size, text[2], size, text[3]);
    }
};

} // namespace

TEST_F(Enumerate, FilePathsAreFoundWhateverTheLetterCase)
{
    writeFlat(class1, "KIM", "k", "k");
    Files files;
    EXPECT_EQ(files.find(store, class1.string() + "/", "kim"), 0);
    EXPECT_EQ(files.text[0], (class1 / "KIM_sig.cer").string());
    EXPECT_EQ(files.text[3], (class1 / "KIM_env.key").string());
}

TEST_F(Enumerate, FilePathsOfAMissingDirectoryAreEmpty)
{
    Files files;
    EXPECT_EQ(files.find(store, "/nowhere/", "a"), 0);
    EXPECT_STREQ(files.text[0], "");
    EXPECT_STREQ(files.text[3], "");
}

TEST_F(Enumerate, FilePathsRefuseMissingArguments)
{
    char text[1024] = {};
    char name[] = "a";
    EXPECT_EQ(store.GetGPKICertFilePath(nullptr, name, 9, text, 9, text, 9, text, 9, text), -1);
    EXPECT_EQ(store.GetGPKICertFilePath(name, nullptr, 9, text, 9, text, 9, text, 9, text), -1);
    EXPECT_EQ(store.GetGPKICertFilePath(name, name, 9, text, 9, nullptr, 9, text, 9, text), -1);
    EXPECT_EQ(store.GetGPKICertFilePath(text, name, 9, text, 9, text, 9, text, 9, text), -1);
    EXPECT_EQ(store.GetGPKICertFilePath(name, text, 9, text, 9, text, 9, text, 9, text), -1);
}

TEST_F(Enumerate, FilePathThatDoesNotFitItsOutputStaysEmpty)
{
    writeFlat(class1, "kim");
    Files files;
    EXPECT_EQ(files.find(store, class1.string() + "/", "kim", 10), 0);
    EXPECT_STREQ(files.text[0], "");
}
