// Neither a key nor a password stays in memory when a PFX file has been written or read.

#include <cstdlib>

#include "Needle.h"
#include "PfxSamples.h"
#include "TestHome.h"

namespace {

/** The same needle as UTF-16, big-endian, which a password is derived from. */
Needle wideNeedleOf(const std::string& path, std::size_t length)
{
    std::array<char, 64> narrow{};
    std::array<char, 128> wide{};
    readInto(path, narrow.data(), length);
    for (std::size_t i = 0; i < length; ++i)
        wide[2 * i + 1] = narrow[i];
    const Needle needle(wide.data(), 2 * length);
    OPENSSL_cleanse(narrow.data(), narrow.size());
    OPENSSL_cleanse(wide.data(), wide.size());
    return needle;
}

/** Hands a file to a byte string of the library. */
void readBinString(const ToolkitLibrary& library, const std::string& path, BINSTR* target)
{
    std::array<char, 4096> buffer{};
    const std::size_t length = readInto(path, buffer.data(), buffer.size());
    ASSERT_EQ(library.callBare("BINSTR_SetData", reinterpret_cast<unsigned char*>(buffer.data()),
                               static_cast<int>(length), target),
              0);
    OPENSSL_cleanse(buffer.data(), buffer.size());
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
    const std::string directory = TestHome::scratch("secrets").string();
    const std::string make =
        "cd " + directory +
        " && export LD_PRELOAD= && head -c 18 /dev/urandom | base64 | tr -d '\\n' > pw && "
        "openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=t -keyout k.pem -outform DER -out cert.der 2> "
        "log && "
        "openssl pkcs8 -topk8 -nocrypt -in k.pem -outform DER -out plain.der";
    ASSERT_EQ(std::system(make.c_str()), 0) << readFile(directory + "/log");
    const Needle key = needleOf(directory + "/plain.der", 400, 24);
    const Needle password = needleOf(directory + "/pw", 0, 24);
    const Needle widePassword = wideNeedleOf(directory + "/pw", 24);
    const auto passwords = [&] {
        return password.count() + widePassword.count();
    };
    ASSERT_EQ(key.count() + passwords(), 0);

    std::array<char, 64> typed{};
    readInto(directory + "/pw", typed.data(), typed.size() - 1);
    BinString certificate(library);
    readBinString(library, directory + "/cert.der", &certificate);
    for (const int option : {0, 1}) {
        BINSTR plain = {};
        readBinString(library, directory + "/plain.der", &plain);
        BinString pfx(library);
        ASSERT_EQ(call("PFX_Export", option, typed.data(), &certificate, &plain, &pfx), 0);
        EXPECT_EQ(key.count(), 1) << "the caller's copy alone, which shows that the search finds one";
        EXPECT_EQ(passwords(), 1);
        ASSERT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
        ASSERT_EQ(key.count(), 0);

        BinString certificates(library);
        BINSTR keys = {};
        BinString authorities(library);
        ASSERT_EQ(call("PFX_ImportMultiPair2", 0, typed.data(), &pfx, &certificates, &keys, &authorities), 0);
        EXPECT_EQ(key.count(), 1);
        ASSERT_EQ(call("UTIL_GetObject", &keys, 0, &plain), 0);
        ASSERT_EQ(call("UTIL_AddObject", &plain, &keys), 0);
        EXPECT_EQ(key.count(), 3) << "two in the list, one beside it";
        ASSERT_EQ(library.callBare("BINSTR_Delete", &keys), 0);
        ASSERT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
        EXPECT_EQ(key.count(), 0);
        EXPECT_EQ(passwords(), 1);
    }
    OPENSSL_cleanse(typed.data(), typed.size());
    EXPECT_EQ(passwords(), 0);
}
