// Where a certificate belongs: the four paths that follow from its subject.

#include "StoreTest.h"

namespace {

/** The outputs of MakeCertPath, each filled with a mark that tells whether it was touched. */
struct Paths
{
    static constexpr const char* UNTOUCHED = "untouched";
    std::array<std::vector<char>, 4> text;

    explicit Paths(size_t size = 1024)
    {
        for (auto& output : text) {
            output.assign(std::max<size_t>(size, 16), '\0');
            std::strcpy(output.data(), UNTOUCHED);
        }
    }
    std::vector<std::string> all() const
    {
        return {text[0].data(), text[1].data(), text[2].data(), text[3].data()};
    }
};

const std::vector<std::string> NONE(4, Paths::UNTOUCHED);

class SavePaths : public DiskTest
{
protected:
    int make(const std::string& subject, int medium = MEDIA_HARDDISK, const char* drive = nullptr,
             size_t size = 1024)
    {
        toolkit.texts["CertGetSubjectName"] = subject;
        paths = Paths(size);
        const int limit = static_cast<int>(size);
        auto& text = paths.text;
        return store.MakeCertPath(medium, const_cast<char*>(drive), cert, 4, limit, text[0].data(), limit,
                                  text[1].data(), limit, text[2].data(), limit, text[3].data());
    }

    /** The four paths of a holder directory below a root. */
    static std::vector<std::string> holder(const std::string& root, const std::string& organisation,
                                           const std::string& subject)
    {
        const std::string directory = root + "/NPKI/" + organisation + "/User/" + subject + "/";
        return {directory + "SignCert.der", directory + "SignPri.key", directory + "KmCert.der",
                directory + "KmPri.key"};
    }

    char cert[5] = "cert";
    Paths paths;
};

const char* const YESSIGN = "cn=kim,ou=personal,o=yessign,c=kr";
const char* const PEOPLE = "cn=850kim,ou=people,ou=agency,o=Government of Korea,c=kr";
const char* const OFFICE = "cn=seal,ou=server,o=Government of Korea,c=kr";

} // namespace

TEST_F(SavePaths, NationalCertificateHasADirectoryOfItsWholeSubject)
{
    ASSERT_EQ(make(YESSIGN), 0);
    EXPECT_EQ(paths.all(), holder(home.string(), "yessign", YESSIGN));
    EXPECT_EQ(toolkit.loaded, 0);
    ASSERT_EQ(make(YESSIGN, MEDIA_REMOVABLE, "/media/usb"), 0);
    EXPECT_EQ(paths.all(), holder("/media/usb", "yessign", YESSIGN));
}

TEST_F(SavePaths, GovernmentHolderOnTheHardDiskKeepsOnlyCertificatesBelowTheHome)
{
    const std::string root = home.string();
    ASSERT_EQ(make(PEOPLE), 0);
    EXPECT_EQ(paths.all(), (std::vector<std::string>{root + "/GPKI/Certificate/class2/850kim_sig.cer",
                                                     root + "GPKI/Certificate/class2/850kim_sig.key",
                                                     root + "/GPKI/Certificate/class2/850kim_env.cer",
                                                     root + "GPKI/Certificate/class2/850kim_env.key"}));
}

TEST_F(SavePaths, GovernmentOfficeOnTheHardDiskLandsBesideTheHome)
{
    const std::string beside = home.string() + "GPKI/Certificate/class2/seal";
    ASSERT_EQ(make(OFFICE), 0);
    EXPECT_EQ(paths.all(), (std::vector<std::string>{beside + "_sig.cer", beside + "_sig.key",
                                                     beside + "_env.cer", beside + "_env.key"}));
}

TEST_F(SavePaths, GovernmentCertificateOnADriveIsWhereAListingLooks)
{
    ASSERT_EQ(make(PEOPLE, MEDIA_REMOVABLE, "/usb"), 0);
    EXPECT_EQ(paths.all()[1], "/usb/GPKI/Certificate/class2/850kim_sig.key");
    ASSERT_EQ(make(OFFICE, MEDIA_REMOVABLE, "/usb"), 0);
    EXPECT_EQ(paths.all(), (std::vector<std::string>{"/usb/GPKI/Certificate/class1/seal_sig.cer",
                                                     "/usb/GPKI/Certificate/class1/seal_sig.key",
                                                     "/usb/GPKI/Certificate/class1/seal_env.cer",
                                                     "/usb/GPKI/Certificate/class1/seal_env.key"}));
}

TEST_F(SavePaths, EveryMediumButTheHardDiskGoesToTheGivenRoot)
{
    for (const int medium : {0, 2, 3, 99}) {
        ASSERT_EQ(make(YESSIGN, medium, "/x"), 0);
        EXPECT_EQ(paths.all()[0], std::string("/x/NPKI/yessign/User/") + YESSIGN + "/SignCert.der");
    }
}

TEST_F(SavePaths, OrganisationAndUnitAreComparedWithoutCase)
{
    ASSERT_EQ(make("cn=a,ou=PEOPLE,o=GOVERNMENT OF KOREA,c=kr"), 0);
    EXPECT_EQ(paths.all()[0], home.string() + "/GPKI/Certificate/class2/a_sig.cer");
    ASSERT_EQ(make("cn=a,ou=people2,o=government of korea,c=kr"), 0);
    EXPECT_EQ(paths.all()[0], home.string() + "GPKI/Certificate/class2/a_sig.cer");
}

TEST_F(SavePaths, OrganisationOfNoKnownPlaceLeavesTheOutputsAsTheyWere)
{
    EXPECT_EQ(make("cn=a,ou=b,o=zarVANE,c=kr"), 0);
    EXPECT_EQ(paths.all(), NONE);
    EXPECT_EQ(make("cn=../a,ou=b,o=Zarvane,c=kr", MEDIA_REMOVABLE, nullptr), 0);
}

TEST_F(SavePaths, SubjectMustHoldNameUnitAndOrganisation)
{
    for (const char* subject :
         {"ou=b,o=yessign,c=kr", "cn=a,o=yessign,c=kr", "cn=a,ou=b,c=kr", "", "CN=a,ou=b,o=c,"}) {
        EXPECT_EQ(make(subject), -1) << subject;
        EXPECT_EQ(paths.all(), NONE);
        EXPECT_EQ(toolkit.loaded, 0);
    }
}

TEST_F(SavePaths, CertificateThatCannotBeReadIsTold)
{
    toolkit.failures = {{"CertLoad", 9}};
    EXPECT_EQ(make(YESSIGN), CLPERR_CERT_LOAD);
    for (const char* getter : {"CertGetSubjectName", "CertGetPubKeyInfo"}) {
        toolkit.failures = {{getter, 9}};
        EXPECT_EQ(make(YESSIGN), CLPERR_CERT_FIELD);
        EXPECT_EQ(toolkit.loaded, 0);
    }
    EXPECT_EQ(paths.all(), NONE);
    EXPECT_EQ(toolkit.count("CertGetSubjectName(1024)"), 2);
    EXPECT_EQ(toolkit.count("CertGetPubKeyInfo(1024)"), 1);
}

// --- Names that must not become paths -----------------------------------------------------------------

TEST_F(SavePaths, NameThatWouldClimbOutOfTheTreeIsRefused)
{
    for (const char* subject :
         {"cn=a,ou=b,o=..,c=kr", "cn=a,ou=b,o=.,c=kr", "cn=a,ou=b,o=../../x,c=kr", "cn=a,ou=b,o=/etc,c=kr",
          "cn=a,ou=b,o=yessign/..,c=kr", "cn=../../../../etc,ou=b,o=yessign,c=kr",
          "cn=a,ou=/../../../..,o=yessign,c=kr", "cn=a/b,ou=b,o=yessign,c=kr", "cn=a,ou=b,o=yessign,c=/kr",
          // The first "o=" of the text counts, in whatever value it stands.
          "cn=hello=../../x,ou=b,o=yessign,c=kr", "cn=hello=..,ou=b,o=yessign,c=kr"}) {
        EXPECT_EQ(make(subject), CLPERR_FILE_WRITE) << subject;
        EXPECT_EQ(make(subject, MEDIA_REMOVABLE, "/usb"), CLPERR_FILE_WRITE) << subject;
        EXPECT_EQ(paths.all(), NONE);
    }
}

TEST_F(SavePaths, GovernmentNameWithASlashIsRefused)
{
    for (const std::string name : {"../../a", "/a", "a/", "..", ".", ""}) {
        for (const char* unit : {"people", "server"}) {
            const std::string subject = "cn=" + name + ",ou=" + unit + ",o=Government of Korea,c=kr";
            EXPECT_EQ(make(subject), CLPERR_FILE_WRITE) << subject;
            EXPECT_EQ(make(subject, MEDIA_REMOVABLE, "/usb"), CLPERR_FILE_WRITE) << subject;
            EXPECT_EQ(paths.all(), NONE);
        }
    }
}

TEST_F(SavePaths, SlashOutsideTheCommonNameDoesNoHarmToAGovernmentName)
{
    ASSERT_EQ(make("cn=a,ou=people,ou=Ministry A/B,o=Government of Korea,c=kr"), 0);
    EXPECT_EQ(paths.all()[0], home.string() + "/GPKI/Certificate/class2/a_sig.cer");
}

TEST_F(SavePaths, DotsInsideANameAreNoPath)
{
    ASSERT_EQ(make("cn=..a..,ou=b,o=...,c=kr"), 0);
    EXPECT_EQ(paths.all()[0], home.string() + "/NPKI/.../User/cn=..a..,ou=b,o=...,c=kr/SignCert.der");
}

TEST_F(SavePaths, EmptyOrganisationIsRefused)
{
    EXPECT_EQ(make("cn=a,ou=b,o=,c=kr"), CLPERR_FILE_WRITE);
    EXPECT_EQ(make("c=kr,cn=a,ou=b,o=yessign"), CLPERR_FILE_WRITE) << "no comma behind it: no value";
}

TEST_F(SavePaths, PathThatWouldBeCutIsRefusedAndNoneIsHandedOut)
{
    ASSERT_EQ(make(YESSIGN, MEDIA_REMOVABLE, "/usb"), 0);
    const size_t longest = paths.all()[0].size();
    ASSERT_EQ(make(YESSIGN, MEDIA_REMOVABLE, "/usb", longest + 1), 0);
    EXPECT_EQ(paths.all(), holder("/usb", "yessign", YESSIGN));
    // One byte less, and the first path fits no longer, while the shorter three still do.
    EXPECT_EQ(make(YESSIGN, MEDIA_REMOVABLE, "/usb", longest), CLPERR_FILE_WRITE);
    EXPECT_EQ(paths.all(), NONE);
}

TEST_F(SavePaths, SubjectAsLongAsItsBufferIsRefused)
{
    for (const size_t length : {1000u, 1023u, 1024u, 3000u}) {
        const std::string tail = ",ou=b,o=yessign,c=kr";
        EXPECT_EQ(make("cn=" + std::string(length - 3 - tail.size(), 'a') + tail),
                  length <= 1024 ? CLPERR_FILE_WRITE : -1)
            << length;
        EXPECT_EQ(paths.all(), NONE);
    }
}

TEST_F(SavePaths, MissingOutputOrDriveIsRefused)
{
    toolkit.texts["CertGetSubjectName"] = YESSIGN;
    auto& text = paths.text;
    for (size_t missing = 0; missing < 4; ++missing) {
        char* outputs[] = {text[0].data(), text[1].data(), text[2].data(), text[3].data()};
        outputs[missing] = nullptr;
        EXPECT_EQ(store.MakeCertPath(1, nullptr, cert, 4, 1024, outputs[0], 1024, outputs[1], 1024,
                                     outputs[2], 1024, outputs[3]),
                  QG_BAD_ARGUMENT);
        int sizes[] = {1024, 1024, 1024, 1024};
        sizes[missing] = missing == 0 ? -1 : 0;
        EXPECT_EQ(store.MakeCertPath(1, nullptr, cert, 4, sizes[0], text[0].data(), sizes[1], text[1].data(),
                                     sizes[2], text[2].data(), sizes[3], text[3].data()),
                  QG_BAD_ARGUMENT);
    }
    EXPECT_EQ(make(YESSIGN, MEDIA_REMOVABLE, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(make(YESSIGN, MEDIA_REMOVABLE, ""), QG_BAD_ARGUMENT);
    EXPECT_EQ(paths.all(), NONE);
}

TEST_F(SavePaths, MissingCertificateCannotBeLoaded)
{
    toolkit.failures = {{"CertLoad()", QG_BAD_ARGUMENT}}; // as the toolkit refuses an empty one
    auto& text = paths.text;
    for (const int length : {0, -1}) {
        EXPECT_EQ(store.MakeCertPath(1, nullptr, cert, length, 1024, text[0].data(), 1024, text[1].data(),
                                     1024, text[2].data(), 1024, text[3].data()),
                  CLPERR_CERT_LOAD);
    }
}
