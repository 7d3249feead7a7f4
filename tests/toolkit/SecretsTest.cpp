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

    RawFile typed(secrets.passwordFile());
    BinString encrypted(library, secrets.sealedKey());
    BINSTR plain = {};
    BinString again(library);
    ASSERT_EQ(call("PRIKEY_Decrypt", typed.text(), &encrypted, &plain), 0);
    EXPECT_EQ(key.count(), 1) << "the caller's copy alone, which shows that the search finds one";
    EXPECT_EQ(call("PRIKEY_Encrypt", 48, typed.text(), &plain, &again), 0);
    EXPECT_EQ(key.count(), 1);
    EXPECT_EQ(password.count(), 1);
    EXPECT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
    typed.wipe();
    EXPECT_EQ(key.count(), 0);
    EXPECT_EQ(password.count(), 0);
}
