#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "KeySamples.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"
#include "Unprivileged.h"
#include "samplepki/Authority.h"

namespace fs = std::filesystem;
using qgtk::Code;

namespace {

std::string certificate()
{
    using namespace samplepki;
    return Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0)).certificate();
}

mode_t modeOf(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::vector<std::string> namesIn(const fs::path& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename());
    return names;
}

} // namespace

class MediaOperation : public ToolkitTest
{
protected:
    void SetUp() override
    {
        ToolkitTest::SetUp();
        directory = TestHome::scratch("media");
    }
    bool isZrtk() const { return GetParam().prefix == std::string("ZRTK_"); }
    std::string operation(const char* name) const
    {
        return (isZrtk() ? "MEDIA_DISK_" : "STORAGE_") + std::string(name);
    }
    int read(const std::string& path, std::string* bytes = nullptr)
    {
        BinString result(library);
        const int code = call(operation("ReadFile"), text(path), &result);
        if (bytes)
            *bytes = result.bytes();
        return code;
    }
    int write(const std::string& path, const std::string& bytes)
    {
        BinString data(library, bytes);
        return call(operation("WriteFile"), text(path), &data);
    }
    int readCert(const std::string& path)
    {
        BinString result(library);
        return isZrtk() ? call(operation("ReadCert"), text(path), &result)
                        : call(operation("ReadCert"), 1, text(path), 1, &result);
    }
    int writeCert(const std::string& path, const std::string& der)
    {
        BinString data(library, der);
        return isZrtk() ? call(operation("WriteCert"), text(path), &data)
                        : call(operation("WriteCert"), 1, text(path), 1, &data);
    }
    int readKey(const std::string& path, const std::string& password, std::string* plain = nullptr)
    {
        BinString result(library);
        const int code = isZrtk() ? call(operation("ReadPriKey"), text(path), text(password), &result)
                                  : call(operation("ReadPriKey"), 1, text(path), text(password), 1, &result);
        if (plain)
            *plain = result.bytes();
        return code;
    }
    int writeKey(const std::string& path, const std::string& password, const std::string& plain)
    {
        BinString key(library, plain);
        return isZrtk() ? call(operation("WritePriKey"), 64, text(path), text(password), &key)
                        : call(operation("WritePriKey"), 1, text(path), text(password), 1, 64, &key);
    }
    int deleteCert(const std::string& path)
    {
        return isZrtk() ? call(operation("DeleteCert"), text(path))
                        : call(operation("DeleteCert"), 1, text(path), 1);
    }
    int deleteKey(const std::string& path, const std::string& password)
    {
        return isZrtk() ? call(operation("DeletePriKey"), text(password), text(path))
                        : call(operation("DeletePriKey"), 1, text(path), text(password), 1);
    }

    fs::path directory;
};
INSTANTIATE_BOTH_SIDES(MediaOperation);

TEST_P(MediaOperation, FilesOfEveryLengthComeBackWhole)
{
    for (const std::size_t length :
         {std::size_t{1}, std::size_t{4095}, std::size_t{4096}, std::size_t{5000}, std::size_t{16} << 20}) {
        const std::string path = directory / "file";
        ASSERT_EQ(write(path, std::string(length, 'x')), 0);
        std::string bytes;
        EXPECT_EQ(read(path, &bytes), 0);
        EXPECT_EQ(bytes.size(), length);
    }
}

TEST_P(MediaOperation, WhatCannotBeReadHasItsOwnCodeAndNeverBlocks)
{
    const auto path = [&](const char* name) {
        return (directory / name).string();
    };
    writeFile(path("empty"), "");
    ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", path("device"));
    fs::create_symlink("loop", path("loop"));
    fs::create_symlink("empty/below", path("through"));
    writeFile(path("large"), "x");
    fs::resize_file(path("large"), std::uintmax_t{1} << 30);
    EXPECT_EQ(read(path("missing")), number(Code::FileMissing));
    EXPECT_EQ(read(path("through")), number(Code::FileMissing));
    EXPECT_EQ(read(path("empty")), number(Code::FileEmpty));
    EXPECT_EQ(read(path("fifo")), number(Code::FileNotRegular));
    EXPECT_EQ(read(path("device")), number(Code::FileNotRegular));
    EXPECT_EQ(read(directory), number(Code::FileNotRegular));
    EXPECT_EQ(read(path("loop")), number(Code::FileUnreadable));
    EXPECT_EQ(read(path("large")), number(Code::FileTooLarge));
    EXPECT_EQ(read(directory / std::string(256, 'n')), number(Code::FileUnreadable));
    EXPECT_EQ(read("/" + std::string(5000, 'n')), number(Code::FileUnreadable));
    EXPECT_EQ(read(""), number(Code::BadArgument));
    EXPECT_EQ(call(operation("ReadFile"), static_cast<char*>(nullptr), static_cast<BINSTR*>(nullptr)),
              number(Code::BadArgument));
}

TEST_P(MediaOperation, FailuresNameThePath)
{
    read(directory / "missing");
    EXPECT_EQ(errorText(), eucKr("파일이 없습니다 (1100): ") + (directory / "missing").string());
}

TEST_P(MediaOperation, LongNamesAreReadAndWritten)
{
    const std::string path = directory / std::string(255, 'n');
    ASSERT_EQ(write(path, "bytes"), 0);
    EXPECT_EQ(read(path), 0);
}

TEST_P(MediaOperation, UnreadableFilesAreToldFromMissingOnes)
{
    const std::string closed = directory / "closed";
    writeFile(closed, "x");
    fs::create_directory(directory / "locked");
    writeFile(directory / "locked/file", "x");
    Unprivileged::makeReachable(directory);
    for (const fs::path& place : {fs::path(closed), directory / "locked"})
        fs::permissions(place, fs::perms::none);
    fs::permissions(directory, fs::perms::owner_write, fs::perm_options::remove);
    {
        const Unprivileged user;
        EXPECT_EQ(read(closed), number(Code::FileUnreadable));
        EXPECT_EQ(read(directory / "locked/file"), number(Code::FileUnreadable));
        EXPECT_EQ(write(directory / "new", "x"), number(Code::FileNotWritten));
    }
    for (const fs::path& place : {fs::path(directory), directory / "locked"})
        fs::permissions(place, fs::perms::owner_all);
    EXPECT_FALSE(fs::exists(directory / "new"));
}

TEST_P(MediaOperation, NewFilesAndDirectoriesAreTheOwnersAloneWhateverTheUmask)
{
    for (const mode_t mask : {mode_t{0}, mode_t{0777}}) {
        const fs::path top = directory / std::to_string(mask);
        const mode_t before = umask(mask);
        const int code = write(top / "a/b/signPri.key", "x");
        EXPECT_EQ(umask(before), mask) << "and the umask stays";
        ASSERT_EQ(code, 0);
        EXPECT_EQ(modeOf(top), 0700U);
        EXPECT_EQ(modeOf(top / "a/b"), 0700U);
        EXPECT_EQ(modeOf(top / "a/b/signPri.key"), 0600U);
    }
}

TEST_P(MediaOperation, AnEarlierFileIsReplacedWholeAndItsDirectoryKept)
{
    chmod(directory.c_str(), 0755);
    writeFile(directory / "f", std::string(9000, 'o'));
    ASSERT_EQ(write(directory / "f", "new"), 0);
    EXPECT_EQ(readFile(directory / "f"), "new");
    EXPECT_EQ(modeOf(directory), 0755U) << "a directory that was there keeps its mode";
    EXPECT_THAT(namesIn(directory), testing::ElementsAre("f"));
}

TEST_P(MediaOperation, AFailedWriteLeavesTheOldFileAndNothingElse)
{
    writeFile(directory / "f", "old");
    // A limit on the file size stands for a full disk.
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(write(directory / "f", std::string(9000, 'n')) == number(Code::FileNotWritten) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(directory / "f"), "old");
    EXPECT_THAT(namesIn(directory), testing::ElementsAre("f"));
}

TEST_P(MediaOperation, FilesThatAKilledWriterLeftAreRemovedByTheNext)
{
    writeFile(directory / ".qgtk-a1B2c3", "half of a ke");
    writeFile(directory / ".qgtk-a1B2c4", "");
    ASSERT_EQ(write(directory / "f", "new"), 0);
    EXPECT_THAT(namesIn(directory), testing::ElementsAre("f"));
}

TEST_P(MediaOperation, WhatNoWriterLeftStays)
{
    for (const char* name : {".qgtk-", ".qgtk-short", ".qgtk-toolong", "qgtk-a1B2c3", "x.qgtk-a1B2c3"})
        writeFile(directory / name, "x");
    fs::create_directory(directory / ".qgtk-direct");
    ASSERT_EQ(mkfifo((directory / ".qgtk-fifo00").c_str(), 0600), 0);
    writeFile(directory / "target", "x");
    fs::create_symlink(directory / "target", directory / ".qgtk-symlin");
    const std::size_t before = namesIn(directory).size();
    ASSERT_EQ(write(directory / "target", "new"), 0);
    EXPECT_EQ(namesIn(directory).size(), before);
}

TEST_P(MediaOperation, TemporaryFileOfALivingWriterStays)
{
    const fs::path temporary = directory / ".qgtk-living";
    writeFile(temporary, "half of a ke");
    const int writer = open(temporary.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    ASSERT_EQ(write(directory / "f", "new"), 0);
    EXPECT_TRUE(fs::exists(temporary));
    close(writer);
    ASSERT_EQ(write(directory / "f", "newer"), 0);
    EXPECT_FALSE(fs::exists(temporary));
}

TEST_P(MediaOperation, WritersOfOneDirectoryDoNotDisturbEachOther)
{
    constexpr int writers = 4;
    constexpr int rounds = 50;
    for (int writer = 0; writer < writers; ++writer) {
        if (fork() != 0)
            continue;
        // Each process writes a file of its own and one that all write.
        int failures = 0;
        for (int round = 0; round < rounds; ++round) {
            failures += write(directory / std::to_string(writer), std::to_string(round)) != 0;
            failures += write(directory / "shared", std::string(5000, static_cast<char>('a' + writer))) != 0;
        }
        _exit(failures == 0 ? 0 : 1);
    }
    for (int writer = 0; writer < writers; ++writer) {
        int status = 0;
        ASSERT_GT(wait(&status), 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(namesIn(directory).size(), writers + 1U) << "no temporary file is left";
    const std::string shared = readFile(directory / "shared");
    EXPECT_EQ(shared, std::string(5000, shared[0])) << "one writer's, whole";
    EXPECT_EQ(readFile(directory / "0"), std::to_string(rounds - 1));
}

TEST_P(MediaOperation, WhatIsInTheWayIsNotReplaced)
{
    fs::create_directory(directory / "d");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    writeFile(directory / "file", "x");
    EXPECT_EQ(write(directory / "d", "x"), number(Code::FileNotRegular));
    EXPECT_EQ(write(directory / "fifo", "x"), number(Code::FileNotRegular));
    EXPECT_EQ(write(directory / "file/below", "x"), number(Code::FileNotWritten));
    EXPECT_EQ(write(directory / std::string(256, 'n'), "x"), number(Code::FileNotWritten));
    EXPECT_EQ(namesIn(directory).size(), 3U) << "no temporary file is left";
}

TEST_P(MediaOperation, CertificatesAndKeysAsFiles)
{
    const std::string certPath = directory / "NPKI/yessign/User/cn=a,o=yessign,c=kr/signCert.der";
    const std::string keyPath = directory / "NPKI/yessign/User/cn=a,o=yessign,c=kr/signPri.key";
    const std::string plain(qgtk::textOf(rsaKeyWithRandom()));
    ASSERT_EQ(writeCert(certPath, certificate()), 0);
    ASSERT_EQ(writeKey(keyPath, "p", plain), 0);
    EXPECT_EQ(readCert(certPath), 0);
    std::string opened;
    EXPECT_EQ(readKey(keyPath, "p", &opened), 0);
    EXPECT_EQ(opened, plain);
    EXPECT_EQ(readKey(keyPath, "q"), 2004);
    EXPECT_EQ(readKey(certPath, "p"), 2000);
    EXPECT_EQ(readCert(keyPath), number(Code::CertDamaged));
    EXPECT_EQ(writeCert(directory / "no", "text"), number(Code::CertDamaged));
    EXPECT_EQ(writeKey(directory / "no", "p", "text"), number(Code::KeyNotPlain));
    EXPECT_FALSE(fs::exists(directory / "no"));
}

TEST_P(MediaOperation, AKeyIsDeletedWithItsPasswordAlone)
{
    const std::string path = directory / "signPri.key";
    ASSERT_EQ(writeKey(path, "p", std::string(qgtk::textOf(rsaKey()))), 0);
    EXPECT_EQ(deleteKey(path, "q"), 2004);
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(deleteKey(path, "p"), 0);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(deleteKey(path, "p"), number(Code::FileMissing));
}

TEST_P(MediaOperation, ACertificateIsDeleted)
{
    writeFile(directory / "c", certificate());
    EXPECT_EQ(deleteCert(directory / "c"), 0);
    EXPECT_EQ(deleteCert(directory / "c"), number(Code::FileMissing));
    EXPECT_EQ(deleteCert(directory), number(Code::FileNotRegular));
    EXPECT_TRUE(fs::exists(directory));
}

TEST_P(MediaOperation, ModulesAreLoadedWhenTheyAreOnes)
{
    const std::string prefix = isZrtk() ? "MEDIA_" : "STORAGE_";
    writeFile(directory / "text.so", "no library");
    ASSERT_EQ(mkfifo((directory / "fifo.so").c_str(), 0600), 0);
    EXPECT_EQ(call(prefix + "Load", text(directory / "text.so")), number(Code::ModuleNotLoaded));
    EXPECT_EQ(call(prefix + "Load", text(directory / "fifo.so")), number(Code::ModuleNotLoaded));
    EXPECT_EQ(call(prefix + "Load", text(directory / "none.so")), number(Code::ModuleNotLoaded));
    EXPECT_EQ(call(prefix + "Load", text("libm.so.6")), number(Code::ModuleUnsuitable));
    EXPECT_EQ(call(prefix + "Load", text(QGTK_MODULE_FILE)), 0);
    EXPECT_EQ(call(prefix + "Unload"), 0);
    EXPECT_EQ(call(prefix + "Unload"), 0);
}

class GpkiMedium : public ToolkitTest
{};
INSTANTIATE_TEST_SUITE_P(Gpki, GpkiMedium, testing::Values(gpkiSide));

TEST_P(GpkiMedium, OtherMediaThanTheDiskAreRefused)
{
    BinString result(library);
    for (const int medium : {0, 3, -1})
        EXPECT_EQ(call("STORAGE_ReadCert", medium, text("/x"), 1, &result), number(Code::NotSupported));
}

TEST_P(GpkiMedium, SmartCardsAreNotOfThisPlatform)
{
    constexpr int card = 2;
    BinString data(library, "as it was");
    const int refused = number(Code::NoPlatform);
    EXPECT_EQ(call("STORAGE_ReadCert", card, text("1"), 1, &data), refused);
    EXPECT_EQ(call("STORAGE_ReadPriKey", card, text("1"), text("p"), 1, &data), refused);
    EXPECT_EQ(call("STORAGE_WriteCert", card, text("1"), 1, &data), refused);
    EXPECT_EQ(call("STORAGE_WritePriKey", card, text("1"), text("p"), 1, 64, &data), refused);
    EXPECT_EQ(call("STORAGE_DeleteCert", card, text("1"), 1), refused);
    EXPECT_EQ(call("STORAGE_DeletePriKey", card, text("1"), text("p"), 1), refused);
    EXPECT_EQ(data.bytes(), "as it was");
}
