// Neither a key nor a password stays in memory when a PFX file has been written or read.

#include "PfxSamples.h"
#include "SecretFiles.h"

namespace {

/** The same needle as UTF-16, big-endian, which a password is derived from. */
Needle wideNeedleOf(const std::string& path, std::size_t length)
{
    RawFile narrow(path);
    std::array<char, 128> wide{};
    for (std::size_t i = 0; i < length; ++i)
        wide[2 * i + 1] = narrow.text()[i];
    const Needle needle(wide.data(), 2 * length);
    OPENSSL_cleanse(wide.data(), wide.size());
    return needle;
}

} // namespace

class PfxSecrets : public PfxTest
{};
INSTANTIATE_ZR_SIDE(PfxSecrets);

TEST_P(PfxSecrets, NeitherKeyNorPasswordStaysInMemory)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    const SecretFiles secrets;
    const Needle key = secrets.keyNeedle();
    const Needle password = secrets.passwordNeedle();
    const Needle widePassword = wideNeedleOf(secrets.passwordFile(), SecretFiles::passwordLength);
    const auto passwords = [&] {
        return password.count() + widePassword.count();
    };
    ASSERT_EQ(key.count() + passwords(), 0);

    RawFile typed(secrets.passwordFile());
    BinString certificate(library, secrets.certificate());
    for (const int option : {0, 1}) {
        BINSTR plain = {};
        secrets.readKey(library, &plain);
        BinString pfx(library);
        ASSERT_EQ(call("PFX_Export", option, typed.text(), &certificate, &plain, &pfx), 0);
        EXPECT_EQ(key.count(), 1) << "the caller's copy alone, which shows that the search finds one";
        EXPECT_EQ(passwords(), 1);
        ASSERT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
        ASSERT_EQ(key.count(), 0);

        BinString certificates(library);
        BINSTR keys = {};
        BinString authorities(library);
        ASSERT_EQ(call("PFX_ImportMultiPair2", 0, typed.text(), &pfx, &certificates, &keys, &authorities), 0);
        EXPECT_EQ(key.count(), 1);
        ASSERT_EQ(call("UTIL_GetObject", &keys, 0, &plain), 0);
        ASSERT_EQ(call("UTIL_AddObject", &plain, &keys), 0);
        EXPECT_EQ(key.count(), 3) << "two in the list, one beside it";
        ASSERT_EQ(library.callBare("BINSTR_Delete", &keys), 0);
        ASSERT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
        EXPECT_EQ(key.count(), 0);
        EXPECT_EQ(passwords(), 1);
    }
    typed.wipe();
    EXPECT_EQ(passwords(), 0);
}
