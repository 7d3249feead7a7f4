#include <sys/stat.h>

#include "ToolkitSession.h"

namespace {

/** Certificate and key files that are not what they should be. None may crash, hang or open. */
class Damage : public ToolkitSession
{
protected:
    Damage() : files(pair(request())) { folder = writeHolder({.sign = files}); }

    samplepki::FilePair files;
    fs::path folder;
};

} // namespace

TEST_F(Damage, CertificateCutAtAnyByteIsLeftOut)
{
    for (size_t length = 0; length < files.certificate.size(); ++length) {
        writeFile(folder / "signCert.der", files.certificate.substr(0, length));
        ASSERT_EQ(load(), CLPERR_NOTEXISTCERT) << length;
    }
}

TEST_F(Damage, KeyCutAtAnyByteNeverOpens)
{
    for (size_t length = 1; length < files.key.size(); ++length) {
        writeFile(folder / "signPri.key", files.key.substr(0, length));
        ASSERT_EQ(load(), 0);
        ASSERT_NE(CLP_DecryptPriKey(handle, 0, text("pw")), 0) << length;
        ASSERT_EQ(info().nSignKeyLen, 0);
    }
}

TEST_F(Damage, DamagedKeyIsToldApartFromAWrongPassword)
{
    writeFile(folder / "signPri.key", "not a key");
    ASSERT_EQ(load(), 0);
    const int code = CLP_DecryptPriKey(handle, 0, text("pw"));
    EXPECT_NE(code, 0);
    EXPECT_NE(code, CLPERR_WRONG_PASSWORD);
}

TEST_F(Damage, FilesOfOddSizesDoNoHarm)
{
    for (const size_t size : {0u, 1u, 4095u, 4096u, 5000u, 100000u}) {
        for (const char* file : {"signCert.der", "signPri.key"}) {
            writeHolder({.sign = files});
            writeFile(folder / file, std::string(size, '\x30'));
            if (load() == 0) {
                EXPECT_NE(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
            }
        }
    }
}

TEST_F(Damage, RandomBytesInTheCertificateDoNoHarm)
{
    for (size_t at = 0; at < files.certificate.size(); ++at) {
        std::string damaged = files.certificate;
        damaged[at] = static_cast<char>(damaged[at] ^ 0xFF);
        writeFile(folder / "signCert.der", damaged);
        if (load() == 0) {
            EXPECT_LE(std::strlen(info().szSubjectDN), 1023u);
        }
    }
}

TEST_F(Damage, FifoInPlaceOfAKeyFileDoesNotBlockAPasswordChange)
{
    ASSERT_EQ(load(), 0);
    fs::remove(folder / "signPri.key");
    mkfifo((folder / "signPri.key").c_str(), 0600);
    EXPECT_EQ(CLP_ChangePassword(handle, 0, text("pw"), text("new")), CLPERR_FILE_READ);
}

TEST_F(Damage, SparseFilesOfOneGigabyteAreRefused)
{
    for (const char* file : {"signCert.der", "signPri.key"}) {
        writeHolder({.sign = files});
        fs::resize_file(folder / file, 1ULL << 30);
        EXPECT_EQ(load(), CLPERR_NOTEXISTCERT) << file;
    }
}
