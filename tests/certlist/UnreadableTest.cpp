// Directories and files that the user may not read are as good as missing ones.

#include "StoreTest.h"
#include "Unprivileged.h"

namespace {

/** One certificate in each tree, and each place closed in turn. */
class Unreadable : public DiskTest
{
protected:
    Unreadable()
    {
        writeFlat(class1, "gpki");
        writeHolder(yessign / "npki");
        writeFlat(mpki, "flat");
        writeHolder(mpki / "holder");
        Unprivileged::makeReachable(home);
    }

    /** Lists without rights, with a place closed. */
    std::vector<std::string> listWithout(const fs::path& place)
    {
        const fs::perms before = fs::status(place).permissions();
        fs::permissions(place, fs::perms::none);
        int code = 0;
        {
            const Unprivileged nobody;
            code = store.LoadCertList();
        }
        fs::permissions(place, before);
        EXPECT_EQ(code, 0) << place;
        return listed();
    }

    std::string gpki = class1 / "gpki_sig.cer";
    std::string npki = yessign / "npki/signCert.der";
    std::string flat = mpki / "flat_sig.cer";
    std::string holder = mpki / "holder/signCert.der";
};

using Paths = std::vector<std::string>;

} // namespace

TEST_F(Unreadable, NothingIsLostWhileAllIsOpen)
{
    const fs::path apart = home / "apart";
    writeFile(apart, "x");
    EXPECT_EQ(listWithout(apart), (Paths{gpki, npki, flat, holder}));
}

TEST_F(Unreadable, EachLevelOfATreeEndsItsBranchAlone)
{
    for (fs::path level = class1; level != home; level = level.parent_path())
        EXPECT_EQ(listWithout(level), (Paths{npki, flat, holder})) << level;
    for (fs::path level = yessign; level != home; level = level.parent_path())
        EXPECT_EQ(listWithout(level), (Paths{gpki, flat, holder})) << level;
    for (fs::path level = mpki; level != home; level = level.parent_path())
        EXPECT_EQ(listWithout(level), (Paths{gpki, npki})) << level;
}

TEST_F(Unreadable, HolderDirectoriesAndFilesAreLeftOut)
{
    EXPECT_EQ(listWithout(yessign / "npki"), (Paths{gpki, flat, holder}));
    EXPECT_EQ(listWithout(mpki / "holder"), (Paths{gpki, npki, flat}));
    EXPECT_EQ(listWithout(npki), (Paths{gpki, flat, holder}));
    EXPECT_EQ(listWithout(yessign / "npki/signPri.key"), (Paths{gpki, flat, holder}));
    EXPECT_EQ(listWithout(class1 / "gpki_sig.key"), (Paths{npki, flat, holder}));
}

TEST_F(Unreadable, KmFilesDoNotAttach)
{
    writeHolder(yessign / "npki", "pw:key", "pw:km");
    EXPECT_EQ(listWithout(yessign / "npki/kmCert.der").size(), 4u);
    EXPECT_STREQ(entry(1).szKmCertPath, "");
    EXPECT_STREQ(entry(1).szKmKeyPath, "");
    EXPECT_EQ(listWithout(yessign / "npki/kmPri.key").size(), 4u);
    EXPECT_GT(entry(1).nKmCertLen, 0);
    EXPECT_EQ(entry(1).nEncKmKeyLen, 0);
}

TEST_F(Unreadable, HomeDirectoryHasNoCertificates)
{
    fs::permissions(home, fs::perms::none);
    int code = 0;
    {
        const Unprivileged nobody;
        code = store.LoadCertList();
    }
    fs::permissions(home, fs::perms::owner_all);
    EXPECT_EQ(code, CLPERR_NOTEXISTCERT);
}
