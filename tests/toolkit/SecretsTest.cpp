#include <array>

#include "SecretFiles.h"

class Secrets : public ToolkitTest
{};
INSTANTIATE_BOTH_SIDES(Secrets);

TEST_P(Secrets, NeitherKeyNorPasswordStaysInMemory)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    const SecretFiles secrets;
    const Needle key = secrets.keyNeedle();
    const Needle password = secrets.passwordNeedle();
    ASSERT_EQ(key.count() + password.count(), 0);

    std::array<char, 64> passwordText{};
    readInto(secrets.passwordFile(), passwordText.data(), passwordText.size() - 1);
    BinString encrypted(library, secrets.sealedKey());
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
