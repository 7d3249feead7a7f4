// PFX files on the open toolkit: out of the list and back.

#include <sys/stat.h>

#include "ToolkitSession.h"

namespace {

constexpr char PASSWORD[] = "password1!";

class ToolkitPfx : public ToolkitSession
{
protected:
    explicit ToolkitPfx(int toolkit = TOOLKIT_ZRTK) : ToolkitSession(toolkit) {}

    /** A holder in the list, with or without a key-management pair. */
    void listHolder(bool withKm, const std::string& password = PASSWORD)
    {
        samplepki::Holder holder{pair(request(), password)};
        if (withKm) {
            samplepki::Request asked = request("hong", 1);
            asked.keyUsage = samplepki::EnvelopeUse;
            holder.km = pair(asked, password);
        }
        writeHolder(holder);
        ASSERT_EQ(load(), 0);
    }

    int exportPfx(const std::string& password = PASSWORD)
    {
        return CLP_ExportPFX(handle, 0, text(password), text(path));
    }

    int loadPfx(const std::string& password = PASSWORD)
    {
        start(MEDIA_PFX);
        EXPECT_EQ(CLP_SetPFXInfo(handle, text(path), text(password)), 0);
        return CLP_LoadCertList(handle);
    }

    std::string path = TestHome::scratch("pfx") / "hong.pfx";
};

class GpkiToolkitPfx : public ToolkitPfx
{
protected:
    GpkiToolkitPfx() : ToolkitPfx(TOOLKIT_GPKI) {}
};

} // namespace

TEST_F(ToolkitPfx, BothPairsComeBackWithTheirKeysAndRandoms)
{
    listHolder(true);
    const CERTINFO listed = info();
    ASSERT_EQ(exportPfx(), 0);
    ASSERT_EQ(loadPfx(), 0);
    ASSERT_EQ(CLP_GetCertCount(handle), 1);
    const CERTINFO record = info();
    EXPECT_EQ(bytes(record.szSignCert, record.nSignCertLen), bytes(listed.szSignCert, listed.nSignCertLen));
    EXPECT_EQ(bytes(record.szKmCert, record.nKmCertLen), bytes(listed.szKmCert, listed.nKmCertLen));
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), key().privateKeyInfo());
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), key(1).privateKeyInfo());
    EXPECT_STREQ(record.szSubjectDN, listed.szSubjectDN);
    EXPECT_EQ(record.nMediaType, MEDIA_PFX);
}

TEST_F(ToolkitPfx, OnePairComesBackAlone)
{
    listHolder(false);
    ASSERT_EQ(exportPfx(), 0);
    ASSERT_EQ(loadPfx(), 0);
    EXPECT_EQ(bytes(info().szSignKey, info().nSignKeyLen), key().privateKeyInfo());
    EXPECT_EQ(info().nKmCertLen, 0);
}

TEST_F(ToolkitPfx, RandomIsReadFromTheKeyOfAPfx)
{
    listHolder(false);
    ASSERT_EQ(exportPfx(), 0);
    ASSERT_EQ(loadPfx(), 0);
    CERTINFO record{};
    ASSERT_EQ(CLP_SelectCert(handle, 0, text(PASSWORD), &record), 0);
    EXPECT_EQ(CLP_CheckPassword(handle, text(PASSWORD), record.szEncSignKey, record.nEncSignKeyLen), 0)
        << "the key is there under the file's password too";
}

TEST_F(ToolkitPfx, LoadedPfxIsExportedUnderAnotherPassword)
{
    listHolder(true);
    ASSERT_EQ(exportPfx(), 0);
    ASSERT_EQ(loadPfx(), 0);
    ASSERT_EQ(exportPfx("another 1!"), 0);
    EXPECT_EQ(loadPfx(), CLPERR_WRONG_PASSWORD);
    EXPECT_EQ(loadPfx("another 1!"), 0);
    EXPECT_EQ(bytes(info().szKmKey, info().nKmKeyLen), key(1).privateKeyInfo());
}

TEST_F(ToolkitPfx, WrongPasswordsAreTold)
{
    listHolder(true);
    EXPECT_EQ(exportPfx("wrong"), CLPERR_WRONG_PASSWORD);
    EXPECT_FALSE(fs::exists(path));
    ASSERT_EQ(exportPfx(), 0);
    for (const char* password : {"wrong", "PASSWORD1!", "password1", ""})
        EXPECT_EQ(loadPfx(password), CLPERR_WRONG_PASSWORD) << password;
}

TEST_F(ToolkitPfx, KoreanPasswordOpensWhatItProtects)
{
    const std::string password = "비밀번호 1!";
    listHolder(true, password);
    ASSERT_EQ(exportPfx(password), 0);
    EXPECT_EQ(loadPfx(password), 0);
    EXPECT_EQ(loadPfx("비밀번호 2!"), CLPERR_WRONG_PASSWORD);
}

TEST_F(ToolkitPfx, FileIsTheOwnersAlone)
{
    listHolder(false);
    const mode_t before = umask(0);
    const int code = exportPfx();
    umask(before);
    ASSERT_EQ(code, 0);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ToolkitPfx, FileCutAtAnyLengthGivesNoList)
{
    listHolder(true);
    ASSERT_EQ(exportPfx(), 0);
    const std::string whole = readFile(path);
    for (size_t length = 0; length < whole.size(); length += length < 64 ? 1 : 97) {
        writeFile(path, whole.substr(0, length));
        const int code = loadPfx();
        EXPECT_TRUE(code == CLPERR_PFX_IMPORT || (length == 0 && code == CLPERR_WRONG_PASSWORD))
            << length << " bytes: " << code;
        EXPECT_EQ(CLP_GetCertCount(handle), 0);
    }
}

TEST_F(ToolkitPfx, WhatIsNoPfxIsNotUnpacked)
{
    listHolder(false);
    for (const std::string& content : {readFile(info().szSignCertPath), readFile(info().szSignKeyPath),
                                       std::string("text"), std::string(1 << 20, '\0')}) {
        writeFile(path, content);
        EXPECT_EQ(loadPfx(), CLPERR_PFX_IMPORT);
    }
}

TEST_F(GpkiToolkitPfx, HasNoPfxFiles)
{
    listHolder(true);
    EXPECT_EQ(exportPfx(), CLPERR_PFX_EXPORT);
    EXPECT_FALSE(fs::exists(path));
    writeFile(path, "anything");
    EXPECT_EQ(loadPfx(), CLPERR_PFX_IMPORT);
}
