// Whatever happens while a file is written, each file is the old one or the new one, whole.

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "Durable.h"
#include "Unprivileged.h"

namespace {

constexpr char OLD_PASSWORD[] = "old password";
constexpr char NEW_PASSWORD[] = "new password";
constexpr char SUBJECT[] = "cn=hong,ou=people,o=yessign,c=kr";

/** What a fault may answer: the code of the operation, when a file could not be written. */
template <typename Codes>
void expectOneOf(int code, const Codes& codes)
{
    EXPECT_TRUE(std::find(codes.begin(), codes.end(), code) != codes.end()) << "code " << code;
}

/** Takes the rights from a fork for the rest of its life: root may write everything. */
bool asNobody()
{
    static const Unprivileged nobody;
    return true;
}

/** A holder with two pairs, and two further pairs of the same subject that are saved over them. */
class SaveDurability : public Durable
{
protected:
    SaveDurability()
    {
        // Folder and file names are those that saving uses, so that it replaces them.
        const auto state = [&](const samplepki::FilePair& signPair, const samplepki::FilePair& kmPair) {
            return Files{{folder + "SignCert.der", signPair.certificate},
                         {folder + "SignPri.key", signPair.key},
                         {folder + "KmCert.der", kmPair.certificate},
                         {folder + "KmPri.key", kmPair.key}};
        };
        before = state(pair(request("hong", 0), OLD_PASSWORD), pair(kmRequest(1), OLD_PASSWORD));
        after = state(sign, km);
        directory = home / "NPKI/yessign/User" / SUBJECT;
        start();
    }

    static samplepki::Request kmRequest(unsigned keyNumber)
    {
        samplepki::Request asked = request("hong", keyNumber);
        asked.keyUsage = samplepki::EnvelopeUse;
        return asked;
    }

    /** Saves encrypted keys, so that the new files are known byte for byte. */
    Operation save()
    {
        return [this] {
            return CLP_SaveCert(handle, true, text(NEW_PASSWORD), text(sign.certificate),
                                size(sign.certificate), text(sign.key), size(sign.key), text(km.certificate),
                                size(km.certificate), text(km.key), size(km.key));
        };
    }

    /** Each file is byte for byte the old or the new one, and only those that the operation writes are there.
     */
    void expectOldOrNew(const Files& files, const Files& old)
    {
        for (const auto& [path, content] : files) {
            ASSERT_TRUE(after.count(path)) << path;
            const bool isOld = old.count(path) && old.at(path) == content;
            EXPECT_TRUE(isOld || after.at(path) == content) << path << " is neither";
        }
        for (const auto& [path, content] : old)
            EXPECT_TRUE(files.count(path)) << path << " is gone";
    }

    /** The listing shows the holder and nothing else. */
    void expectListed()
    {
        EXPECT_EQ(listing(), (std::vector<std::string>{(directory / "SignCert.der").string()}));
    }

    /** What a vanished directory took along, under the paths that it had. */
    static Files vanished(const fs::path& target, const std::string& formerDirectory)
    {
        Files gone;
        for (const auto& [path, content] : filesIn(target))
            gone[formerDirectory + path] = content;
        fs::remove_all(target);
        return gone;
    }

    using ToolkitSession::text;
    static char* text(const char* value) { return const_cast<char*>(value); }

    const std::string folder = std::string("NPKI/yessign/User/") + SUBJECT + "/";
    samplepki::FilePair sign = pair(request("hong", 2), NEW_PASSWORD);
    samplepki::FilePair km = pair(kmRequest(3), NEW_PASSWORD);
    Files before;
    Files after;
    fs::path directory;
};

} // namespace

TEST_F(SaveDurability, KilledAtEveryCallEachFileIsOldOrNew)
{
    atEveryCall(fault(FAULT_KILL), before, save(), [&](const Outcome& outcome) {
        EXPECT_TRUE(outcome.killed);
        expectOldOrNew(filesIn(home), before);
        expectListed();
        // The next save ends the work and leaves nothing of the one that was killed.
        EXPECT_EQ(run(save()).code, 0);
        EXPECT_EQ(filesIn(home), after);
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    });
}

TEST_F(SaveDurability, KilledAtEveryCallOfAFirstSaveNoHalfOfAFileIsThere)
{
    atEveryCall(fault(FAULT_KILL), {}, save(), [&](const Outcome& outcome) {
        EXPECT_TRUE(outcome.killed);
        expectOldOrNew(filesIn(home), {});
        const bool pairIsThere = filesIn(home).size() >= 2;
        EXPECT_EQ(listing().size(), pairIsThere ? 1u : 0u);
        EXPECT_EQ(run(save()).code, 0);
        EXPECT_EQ(filesIn(home), after);
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    });
}

TEST_F(SaveDurability, InputOutputErrorAtEveryCallIsToldOrDoesNoHarm)
{
    int refused = 0;
    atEveryCall(fault(FAULT_ERROR, EIO), before, save(), [&](const Outcome& outcome) {
        const Files files = filesIn(home);
        expectOldOrNew(files, before);
        expectListed();
        if (outcome.code == 0) {
            EXPECT_EQ(files, after);
        } else {
            EXPECT_EQ(outcome.code, CLPERR_FILE_WRITE);
            EXPECT_NE(files, after);
            ++refused;
        }
        if (outcome.failed != "unlink") {
            EXPECT_EQ(leftovers(), std::vector<std::string>());
        }
    });
    // Of each file: making the temporary one, writing, flushing and renaming it must be told.
    EXPECT_GE(refused, 4 * 4);
}

TEST_F(SaveDurability, DiskThatIsFullFromAnyCallOnIsTold)
{
    for (const int error : {ENOSPC, EDQUOT}) {
        int refused = 0;
        atEveryCall(fault(FAULT_FULL, error), before, save(), [&](const Outcome& outcome) {
            const Files files = filesIn(home);
            expectOldOrNew(files, before);
            expectListed();
            expectOneOf(outcome.code, std::array{0, int(CLPERR_FILE_WRITE)});
            EXPECT_EQ(outcome.code == 0, files == after);
            EXPECT_EQ(leftovers(), std::vector<std::string>());
            refused += outcome.code != 0;
        });
        EXPECT_GE(refused, 20);
    }
}

TEST_F(SaveDurability, DirectoryThatVanishesAtEveryCallTakesWholeFilesWithIt)
{
    const fs::path away = TestHome::scratch("away");
    const std::string victim = directory.string();
    const std::string target = (away / "holder").string();
    atEveryCall(fault(FAULT_VANISH, 0, victim.c_str(), target.c_str()), before, save(),
                [&](const Outcome& outcome) {
                    expectOneOf(outcome.code, std::array{0, int(CLPERR_FILE_WRITE)});
                    expectOldOrNew(filesIn(home), {});
                    expectOldOrNew(vanished(target, folder), before);
                });
}

TEST_F(SaveDurability, DirectoryThatMayNotBeWrittenIsToldAndKeepsItsFiles)
{
    restore(before);
    Unprivileged::makeReachable(directory);
    fs::permissions(directory, fs::perms::owner_write, fs::perm_options::remove);
    const auto outcome = runPrepared(asNobody, save());
    fs::permissions(directory, fs::perms::owner_all, fs::perm_options::add);
    EXPECT_EQ(outcome.code, CLPERR_FILE_WRITE);
    EXPECT_EQ(filesIn(home), before);
}

TEST_F(SaveDurability, FileSystemThatIsReadOnlyIsToldAndKeepsItsFiles)
{
    restore(before);
    atEveryCall(fault(FAULT_FULL, EROFS), before, save(), [&](const Outcome& outcome) {
        expectOldOrNew(filesIn(home), before);
        EXPECT_EQ(outcome.code == 0, filesIn(home) == after);
    });
}

namespace {

/** Writes a text into a file of the kernel's. */
bool tell(const char* path, const std::string& words)
{
    const int descriptor = open(path, O_WRONLY | O_CLOEXEC);
    const bool told = descriptor >= 0 &&
                      write(descriptor, words.data(), words.size()) == static_cast<ssize_t>(words.size());
    close(descriptor);
    return told;
}

/** A mount table of this process's own, as the same user. */
bool ownMounts()
{
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    if (geteuid() != 0 && (unshare(CLONE_NEWUSER) != 0 || !tell("/proc/self/setgroups", "deny") ||
                           !tell("/proc/self/uid_map", user + " " + user + " 1") ||
                           !tell("/proc/self/gid_map", group + " " + group + " 1")))
        return false;
    return unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

TEST_F(SaveDurability, SmallDiskThatIsReallyFullIsToldAndKeepsItsFiles)
{
    Files left;
    const fs::path copy = TestHome::scratch("copy");
    const auto fullDisk = [&] {
        if (!ownMounts() || mount("tmpfs", home.c_str(), "tmpfs", 0, "size=64k,mode=0700") != 0)
            return false;
        for (const auto& [path, content] : before)
            writeFile(home / path, content);
        const int filler = open((home / "filler").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        const std::string page(4096, 'f');
        while (write(filler, page.data(), page.size()) > 0) {
        }
        close(filler);
        return true;
    };
    TestHome::reset();
    const Outcome outcome = runPrepared(fullDisk, [&] {
        const int code = save()();
        // The mount ends with this process.
        fs::copy(home / "NPKI", copy / "NPKI", fs::copy_options::recursive);
        return code;
    });
    if (outcome.calls == 0)
        GTEST_SKIP() << "no mounts of one's own here; the shim plays the full disk";
    EXPECT_EQ(outcome.code, CLPERR_FILE_WRITE);
    EXPECT_EQ(filesIn(copy), before);
    for (const auto& entry : fs::recursive_directory_iterator(copy))
        EXPECT_NE(entry.path().filename().string().compare(0, 6, ".qgtk-"), 0) << "a temporary file is left";
}

// --- Changing the password ----------------------------------------------------------------------------

namespace {

class ChangeDurability : public SaveDurability
{
protected:
    ChangeDurability()
    {
        restore(before);
        EXPECT_EQ(CLP_LoadCertList(handle), 0);
    }

    Operation change()
    {
        return [this] {
            return CLP_ChangePassword(handle, 0, text(OLD_PASSWORD), text(NEW_PASSWORD));
        };
    }

    /** The certificates stand, and each key opens with one of the passwords to what it was. */
    void expectWholeKeys()
    {
        const Files files = filesIn(home);
        EXPECT_EQ(files.size(), before.size());
        for (const auto& [path, content] : before)
            if (path.find("Cert.der") != std::string::npos) {
                EXPECT_EQ(files.at(path), content);
            }
        expectListed();
        EXPECT_TRUE(keysOpen({OLD_PASSWORD, NEW_PASSWORD}, key(0).privateKeyInfo(), key(1).privateKeyInfo()));
    }
};

} // namespace

TEST_F(ChangeDurability, KilledAtEveryCallBothKeysOpenWithTheOldOrTheNewPassword)
{
    atEveryCall(fault(FAULT_KILL), before, change(), [&](const Outcome& outcome) {
        EXPECT_TRUE(outcome.killed);
        expectWholeKeys();
    });
}

TEST_F(ChangeDurability, InputOutputErrorAtEveryCallIsToldOrDoesNoHarm)
{
    int refused = 0;
    atEveryCall(fault(FAULT_ERROR, EIO), before, change(), [&](const Outcome& outcome) {
        expectOneOf(outcome.code, std::array{0, int(CLPERR_FILE_READ), int(CLPERR_FILE_WRITE)});
        expectWholeKeys();
        if (outcome.failed != "unlink") {
            EXPECT_EQ(leftovers(), std::vector<std::string>());
        }
        refused += outcome.code != 0;
        if (outcome.code == 0) {
            EXPECT_TRUE(keysOpen({NEW_PASSWORD}, key(0).privateKeyInfo(), key(1).privateKeyInfo()));
        }
    });
    EXPECT_GE(refused, 2 * 6);
}

TEST_F(ChangeDurability, DiskThatIsFullFromAnyCallOnIsTold)
{
    atEveryCall(fault(FAULT_FULL, ENOSPC), before, change(), [&](const Outcome& outcome) {
        expectOneOf(outcome.code, std::array{0, int(CLPERR_FILE_WRITE)});
        expectWholeKeys();
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    });
}

TEST_F(ChangeDurability, DirectoryThatVanishesAtEveryCallTakesWholeKeysWithIt)
{
    const std::string victim = directory.string();
    const std::string target = (TestHome::scratch("away") / "holder").string();
    atEveryCall(fault(FAULT_VANISH, 0, victim.c_str(), target.c_str()), before, change(),
                [&](const Outcome& outcome) {
                    expectOneOf(outcome.code, std::array{0, int(CLPERR_FILE_READ), int(CLPERR_FILE_WRITE)});
                    const Files made = filesIn(home);
                    Files files = vanished(target, folder);
                    restore(files);
                    expectWholeKeys();
                    for (const auto& [path, content] : made)
                        files[path] = content;
                    restore(files);
                    expectWholeKeys();
                });
}

TEST_F(ChangeDurability, DirectoryThatMayNotBeWrittenIsToldAndKeepsItsFiles)
{
    Unprivileged::makeReachable(directory);
    for (const auto& [path, content] : before)
        fs::permissions(home / path, fs::perms::others_read, fs::perm_options::add);
    fs::permissions(directory, fs::perms::owner_write, fs::perm_options::remove);
    const auto outcome = runPrepared(asNobody, change());
    fs::permissions(directory, fs::perms::owner_all, fs::perm_options::add);
    EXPECT_EQ(outcome.code, CLPERR_FILE_WRITE);
    EXPECT_EQ(filesIn(home), before);
}

// --- Exporting ----------------------------------------------------------------------------------------

namespace {

class ExportDurability : public SaveDurability
{
protected:
    ExportDurability()
    {
        restore(before);
        EXPECT_EQ(CLP_LoadCertList(handle), 0);
        fs::create_directory(home / "export");
        EXPECT_EQ(exportPfx()(), 0);
        before = filesIn(home);
    }

    Operation exportPfx()
    {
        return [this] {
            return CLP_ExportPFX(handle, 0, text(OLD_PASSWORD), text(path));
        };
    }

    /** True when the file gives both keys, as the session unpacks it. */
    bool isWhole()
    {
        EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_PFX, 0), 0);
        EXPECT_EQ(CLP_SetPFXInfo(handle, text(path), text(OLD_PASSWORD)), 0);
        const bool loaded = CLP_LoadCertList(handle) == 0;
        const CERTINFO record = loaded ? info(0) : CERTINFO{};
        EXPECT_EQ(CLP_SetMediaType(handle, MEDIA_HARDDISK, 0), 0);
        return bytes(record.szSignKey, record.nSignKeyLen) == key(0).privateKeyInfo() &&
               bytes(record.szKmKey, record.nKmKeyLen) == key(1).privateKeyInfo();
    }

    /** The earlier file or a new one, whole, and no other that a search would show. */
    void expectWholePfx(bool isNew)
    {
        Files files = filesIn(home);
        ASSERT_EQ(files.size(), before.size());
        EXPECT_EQ(files.at("export/hong.pfx") != before.at("export/hong.pfx"), isNew);
        if (isNew) {
            EXPECT_TRUE(isWhole());
        }
        EXPECT_EQ(offered(), std::vector<std::string>{"hong.pfx"});
        files["export/hong.pfx"] = before.at("export/hong.pfx");
        EXPECT_EQ(files, before);
        expectListed();
    }

    /** True when the file is another than before. */
    bool replaced() const { return readFile(path) != before.at("export/hong.pfx"); }

    std::string path = home / "export/hong.pfx";
};

} // namespace

TEST_F(ExportDurability, KilledAtEveryCallTheFileIsOldOrNew)
{
    atEveryCall(fault(FAULT_KILL), before, exportPfx(), [&](const Outcome& outcome) {
        EXPECT_TRUE(outcome.killed);
        expectWholePfx(replaced());
    });
}

TEST_F(ExportDurability, InputOutputErrorAtEveryCallIsToldOrDoesNoHarm)
{
    int refused = 0;
    atEveryCall(fault(FAULT_ERROR, EIO), before, exportPfx(), [&](const Outcome& outcome) {
        expectOneOf(outcome.code, std::array{0, int(CLPERR_PFX_EXPORT)});
        expectWholePfx(outcome.code == 0);
        refused += outcome.code != 0;
    });
    EXPECT_GE(refused, 4);
}

TEST_F(ExportDurability, DiskThatIsFullFromAnyCallOnIsTold)
{
    atEveryCall(fault(FAULT_FULL, ENOSPC), before, exportPfx(), [&](const Outcome& outcome) {
        expectOneOf(outcome.code, std::array{0, int(CLPERR_PFX_EXPORT)});
        expectWholePfx(outcome.code == 0);
        EXPECT_EQ(leftovers(), std::vector<std::string>());
    });
}

TEST_F(ExportDurability, FirstExportThatIsKilledLeavesNoHalf)
{
    Files without = before;
    without.erase("export/hong.pfx");
    without["export/note.txt"] = "the directory is there";
    atEveryCall(fault(FAULT_KILL), without, exportPfx(), [&](const Outcome& outcome) {
        EXPECT_TRUE(outcome.killed);
        const bool exported = fs::exists(path);
        EXPECT_EQ(offered().size(), exported ? 1u : 0u);
        EXPECT_EQ(isWhole(), exported);
    });
}

TEST_F(ExportDurability, DirectoryThatVanishesAtEveryCallTakesAWholeFileWithIt)
{
    const std::string victim = (home / "export").string();
    const std::string target = (TestHome::scratch("away") / "export").string();
    atEveryCall(fault(FAULT_VANISH, 0, victim.c_str(), target.c_str()), before, exportPfx(),
                [&](const Outcome& outcome) {
                    expectOneOf(outcome.code, std::array{0, int(CLPERR_PFX_EXPORT)});
                    const Files made = filesIn(home);
                    const Files gone = vanished(target, "export/");
                    ASSERT_EQ(gone.size(), 1u);
                    restore(gone);
                    EXPECT_TRUE(isWhole());
                    if (made.count("export/hong.pfx")) {
                        restore(made);
                        EXPECT_TRUE(isWhole());
                    }
                });
}

TEST_F(ExportDurability, DirectoryThatMayNotBeWrittenIsToldAndKeepsItsFile)
{
    restore(before);
    Unprivileged::makeReachable(home / "export");
    fs::permissions(home / "export", fs::perms::owner_write, fs::perm_options::remove);
    const auto outcome = runPrepared(asNobody, exportPfx());
    fs::permissions(home / "export", fs::perms::owner_all, fs::perm_options::add);
    EXPECT_EQ(outcome.code, CLPERR_PFX_EXPORT);
    EXPECT_EQ(filesIn(home), before);
}
