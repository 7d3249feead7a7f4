// Packing and unpacking PFX files in the store.

#include <sys/stat.h>

#include "StoreTest.h"

namespace {

class PfxStore : public DiskTest
{
protected:
    ~PfxStore() override
    {
        release();
        CertUnLoad(&context); // the store leaves that to the next load
    }

    void writePfx(const Texts& certs, const Texts& keys)
    {
        writeFile(path, toolkit.pfxByUsages(certs, keys));
    }

    int get(const char* password = "pw")
    {
        release();
        return store.GetPKCS12(path.data(), const_cast<char*>(password), &data[0], &length[0], &data[1],
                               &length[1], &data[2], &length[2], &data[3], &length[3]);
    }

    int make(const std::string& signCert, const std::string& signKey, const std::string& kmCert = "",
             const std::string& kmKey = "", const char* password = "pw")
    {
        const auto size = [](const std::string& text) {
            return static_cast<int>(text.size());
        };
        const auto bytes = [](const std::string& text) {
            return text.empty() ? nullptr : const_cast<char*>(text.data());
        };
        return store.MakePKCS12(const_cast<char*>(password), path.data(), bytes(signCert), size(signCert),
                                bytes(signKey), size(signKey), bytes(kmCert), size(kmCert), bytes(kmKey),
                                size(kmKey));
    }

    /** What was handed out: sign certificate and key, key-management certificate and key. */
    Texts found() const
    {
        Texts texts;
        for (size_t i = 0; i < 4; ++i)
            texts.push_back(data[i] ? std::string(data[i], static_cast<size_t>(length[i])) : "");
        return texts;
    }

    void release()
    {
        for (size_t i = 0; i < 4; ++i) {
            void* bytes = data[i];
            store.MemFree(&bytes);
            data[i] = nullptr;
            length[i] = -1;
        }
    }

    std::string path = home / "a.pfx";
    char* data[4] = {};
    int length[4] = {-1, -1, -1, -1};
};

} // namespace

// --- Unpacking ----------------------------------------------------------------------------------------

TEST_F(PfxStore, OneSigningPairFillsItsFourOutputsAlone)
{
    writePfx({"digitalSignature a"}, {"key a"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found(), (Texts{"digitalSignature a", "key a", "", ""}));
    EXPECT_EQ(length[2], -1) << "untouched";
    EXPECT_EQ(data[1][length[1]], '\0');
}

TEST_F(PfxStore, PairsAreMatchedByTheirKeysAndNotByPlace)
{
    writePfx({"keyEncipherment b", "digitalSignature a"}, {"key a", "key b"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found(), (Texts{"digitalSignature a", "key a", "keyEncipherment b", "key b"}));
}

TEST_F(PfxStore, FirstKeyThatFitsEndsTheSearch)
{
    writePfx({"digitalSignature a", "keyEncipherment a"}, {"first a", "second a"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found(), (Texts{"digitalSignature a", "first a", "keyEncipherment a", "first a"}));
    EXPECT_EQ(toolkit.count("PriKeyCheckKeyPair"), 2);
}

TEST_F(PfxStore, CertificateWithoutDigitalSignatureIsForKeyManagement)
{
    writePfx({"nonRepudiation a"}, {"key a"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found(), (Texts{"", "", "nonRepudiation a", "key a"}));
    toolkit.certificateTexts["nonRepudiation a"]["CertGetKeyUsage"] = "keyAgreement, digitalSignature";
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found()[0], "nonRepudiation a");
}

TEST_F(PfxStore, LaterPairOfTheSameUseReplacesTheEarlier)
{
    writePfx({"digitalSignature a", "digitalSignature b"}, {"key a", "key b"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found(), (Texts{"digitalSignature b", "key b", "", ""}));
}

TEST_F(PfxStore, CertificateWithoutAKeyIsPassedOver)
{
    writePfx({"digitalSignature lost", "digitalSignature a"}, {"key a", "key c"});
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found()[0], "digitalSignature a");
}

TEST_F(PfxStore, LastCertificateWithoutAKeyGivesTheCheckersNumber)
{
    writePfx({"digitalSignature a", "keyEncipherment lost"}, {"key a", "key c"});
    EXPECT_EQ(get(), 2007);
    EXPECT_EQ(found(), (Texts{"digitalSignature a", "key a", "", ""})) << "what was found is handed out";
}

TEST_F(PfxStore, FileThatCannotBeReadIsToldLikeAWrongPassword)
{
    EXPECT_EQ(get(), CLPERR_WRONG_PASSWORD);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(get(), CLPERR_WRONG_PASSWORD) << "and is not waited for";
    EXPECT_EQ(toolkit.count("PFXImport"), 0);
}

TEST_F(PfxStore, WrongPasswordIsToldWithoutASecondTry)
{
    writePfx({"digitalSignature a"}, {"key a"});
    EXPECT_EQ(get("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(toolkit.count("PFXImportMultiPair2"), 1);
    EXPECT_EQ(toolkit.count("PFXImportMultiPair2(0,"), 1);
    EXPECT_EQ(found(), NOTHING);
}

TEST_F(PfxStore, OtherFailureIsTriedAgainInTheSecondMode)
{
    writePfx({"digitalSignature a"}, {"key a"});
    toolkit.importFailures = {{0, 9}};
    EXPECT_EQ(get(), 0);
    EXPECT_EQ(found()[1], "key a");
    EXPECT_EQ(toolkit.count("PFXImportMultiPair2(16,"), 1);
    for (const int second : {9, 4505}) {
        toolkit.importFailures = {{0, 9}, {16, second}};
        EXPECT_EQ(get(), CLPERR_PFX_IMPORT) << "a wrong password counts on the first try alone";
    }
    toolkit.importFailures.clear();
    EXPECT_EQ(get(nullptr), CLPERR_PFX_IMPORT);
}

TEST_F(PfxStore, NoCertificateOrAnotherNumberOfKeysIsNone)
{
    writePfx({}, {});
    EXPECT_EQ(get(), CLPERR_NOTEXISTCERT);
    writePfx({"digitalSignature a", "keyEncipherment b"}, {"key a"});
    EXPECT_EQ(get(), CLPERR_NOTEXISTCERT);
    writePfx({"digitalSignature a"}, {"key a", "key b"});
    EXPECT_EQ(get(), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(found(), NOTHING);
}

TEST_F(PfxStore, ListThatCannotBeReadIsAFailedImport)
{
    writePfx({"digitalSignature a"}, {"key a"});
    for (const char* call : {"UTILGetObjectCount", "UTILGetObject"}) {
        toolkit.failures = {{call, 9}};
        EXPECT_EQ(get(), CLPERR_PFX_IMPORT);
        EXPECT_EQ(found(), NOTHING);
    }
}

TEST_F(PfxStore, CertificateThatCannotBeReadIsToldAndNothingIsHandedOut)
{
    writePfx({"digitalSignature a", "keyEncipherment b"}, {"key a", "key b"});
    toolkit.failures = {{"CertLoad(keyEncipherment b)", 9}};
    EXPECT_EQ(get(), CLPERR_CERT_LOAD);
    EXPECT_EQ(found(), NOTHING);
    toolkit.failures = {{"CertGetKeyUsage(1024)", 9}};
    EXPECT_EQ(get(), CLPERR_CERT_FIELD);
}

TEST_F(PfxStore, CertificateStaysLoadedUntilTheNextLoad)
{
    writePfx({"digitalSignature a"}, {"key a"});
    ASSERT_EQ(get(), 0);
    EXPECT_EQ(toolkit.loaded, 1);
}

TEST_F(PfxStore, FileOfThousandsOfPairsIsRefusedBeforeTheyAreTried)
{
    Texts certs;
    Texts keys;
    for (int i = 0; i < 256; ++i) {
        certs.push_back("digitalSignature " + std::to_string(i));
        keys.push_back("key " + std::to_string(i));
    }
    writePfx(certs, keys);
    EXPECT_EQ(get(), 0);
    certs.push_back("digitalSignature more");
    keys.push_back("key more");
    writePfx(certs, keys);
    toolkit.calls.clear();
    EXPECT_EQ(get(), CLPERR_PFX_IMPORT);
    EXPECT_EQ(toolkit.count("PriKeyCheckKeyPair"), 0);
}

TEST_F(PfxStore, MissingOutputsAreRefusedOnlyWhereTheyAreNeeded)
{
    writePfx({"digitalSignature a"}, {"key a"});
    char password[] = "pw";
    EXPECT_EQ(store.GetPKCS12(path.data(), password, &data[0], &length[0], &data[1], &length[1], nullptr,
                              nullptr, nullptr, nullptr),
              0);
    release();
    EXPECT_EQ(store.GetPKCS12(path.data(), password, &data[0], &length[0], nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(store.GetPKCS12(nullptr, password, &data[0], &length[0], &data[1], &length[1], nullptr, nullptr,
                              nullptr, nullptr),
              QG_BAD_ARGUMENT);
    EXPECT_EQ(found(), NOTHING);
}

// --- Packing ------------------------------------------------------------------------------------------

TEST_F(PfxStore, OnePairIsPackedAlone)
{
    EXPECT_EQ(make("digitalSignature a", "key a"), 0);
    EXPECT_EQ(toolkit.count("PFXExport(0,pw,digitalSignature a,key a,nothing else)"), 1);
    EXPECT_EQ(toolkit.count("UTIL"), 0);
    EXPECT_EQ(readFile(path), FakeToolkit::pfx("pw", {"digitalSignature a"}, {"key a"}));
}

TEST_F(PfxStore, TwoPairsArePackedAsLists)
{
    EXPECT_EQ(make("digitalSignature a", "key a", "keyEncipherment b", "key b"), 0);
    EXPECT_EQ(toolkit.count("PFXExportMultiPair(0,pw)"), 1);
    EXPECT_EQ(readFile(path),
              FakeToolkit::pfx("pw", {"digitalSignature a", "keyEncipherment b"}, {"key a", "key b"}));
}

TEST_F(PfxStore, KmPairThatIsNotWholeIsLeftOut)
{
    EXPECT_EQ(make("cert a", "key a", "", "key b"), 0);
    EXPECT_EQ(make("cert a", "key a", "cert b", ""), 0);
    EXPECT_EQ(toolkit.count("PFXExport("), 2);
    EXPECT_EQ(toolkit.count("PFXExportMultiPair"), 0);
}

TEST_F(PfxStore, EveryFailureOfPackingHasOneCode)
{
    for (const char* call : {"PFXExport", "MediaDiskWriteFile"}) {
        toolkit.failures = {{call, 9}};
        EXPECT_EQ(make("cert a", "key a"), CLPERR_PFX_EXPORT) << call;
    }
    for (const char* call : {"UTILAddObject(cert a)", "UTILAddObject(key a)", "UTILAddObject(cert b)",
                             "UTILAddObject(key b)", "PFXExportMultiPair", "MediaDiskWriteFile"}) {
        toolkit.failures = {{call, 9}};
        EXPECT_EQ(make("cert a", "key a", "cert b", "key b"), CLPERR_PFX_EXPORT) << call;
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(PfxStore, MissingPiecesAreFailuresOfPacking)
{
    EXPECT_EQ(make("", "key a"), CLPERR_PFX_EXPORT);
    EXPECT_EQ(make("cert a", ""), CLPERR_PFX_EXPORT);
    EXPECT_EQ(make("cert a", "key a", "", "", nullptr), CLPERR_PFX_EXPORT);
    char some[] = "some";
    EXPECT_EQ(store.MakePKCS12(some, path.data(), some, 4, some, 4, nullptr, 4, nullptr, 4),
              CLPERR_PFX_EXPORT)
        << "lengths decide, and the pointers must keep their word";
    EXPECT_EQ(store.MakePKCS12(some, path.data(), some, -1, some, -1, nullptr, 0, nullptr, 0),
              CLPERR_PFX_EXPORT);
    EXPECT_FALSE(fs::exists(path));
}
