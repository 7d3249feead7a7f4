#include <array>
#include <cstdlib>

#include "Needle.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"

class Secrets : public ToolkitTest
{};
INSTANTIATE_BOTH_SIDES(Secrets);

TEST_P(Secrets, NeitherKeyNorPasswordStaysInMemory)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    const std::string directory = TestHome::scratch("secrets").string();
    const std::string make =
        "cd " + directory +
        " && export LD_PRELOAD= && head -c 18 /dev/urandom | base64 | tr -d '\\n' > pw && "
        "openssl genpkey -quiet -algorithm RSA -out k.pem 2> log && "
        "openssl pkcs8 -topk8 -nocrypt -in k.pem -outform DER -out plain.der && "
        "openssl pkcs8 -topk8 -in k.pem -v2 aes-256-cbc -passout file:pw -outform DER "
        "-out key.der";
    ASSERT_EQ(std::system(make.c_str()), 0) << readFile(directory + "/log");
    const Needle key = needleOf(directory + "/plain.der", 400, 24);
    const Needle password = needleOf(directory + "/pw", 0, 24);
    ASSERT_EQ(key.count() + password.count(), 0);

    std::array<char, 64> passwordText{};
    readInto(directory + "/pw", passwordText.data(), passwordText.size() - 1);
    BinString encrypted(library, readFile(directory + "/key.der"));
    BINSTR plain = {};
    BinString again(library);
    ASSERT_EQ(call("PRIKEY_Decrypt", passwordText.data(), &encrypted, &plain), 0);
    EXPECT_EQ(key.count(), 1) << "the caller's copy alone, which shows that the search finds one";
    EXPECT_EQ(call("PRIKEY_Encrypt", 48, passwordText.data(), &plain, &again), 0);
    EXPECT_EQ(key.count(), 1);
    EXPECT_EQ(password.count(), 1);
    EXPECT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
    OPENSSL_cleanse(passwordText.data(), passwordText.size());
    EXPECT_EQ(key.count(), 0);
    EXPECT_EQ(password.count(), 0);
}
