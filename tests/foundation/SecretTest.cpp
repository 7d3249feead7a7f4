#include "Secret.h"

#include "AllocationHooks.h"
#include "FoundationTest.h"

TEST(Wipe, ZeroesArraysRecordsAndTexts)
{
    char array[4] = {'a', 'b', 'c', 'd'};
    wipe(array);
    EXPECT_EQ(std::string(array, 4), std::string(4, '\0'));

    struct Record
    {
        int number;
        char text[4];
    } record{7, "pin"};
    wipe(record);
    EXPECT_EQ(record.number, 0);
    EXPECT_EQ(record.text[2], 0);

    char text[] = "password";
    wipeText(text);
    EXPECT_EQ(std::string(text, 8), std::string(8, '\0'));
}

TEST(Wipe, PassesOverNull)
{
    wipe(nullptr, 10);
    wipeText(nullptr);
}

TEST(ScopedWipe, WipesAtTheEndOfTheScope)
{
    char password[8] = "secret";
    {
        const ScopedWipe guard(password);
        EXPECT_STREQ(password, "secret");
    }
    EXPECT_EQ(std::string(password, 8), std::string(8, '\0'));
}

TEST(SecretBuffer, WipesBeforeItFrees)
{
    SecretBuffer buffer("key bytes", 9);
    EXPECT_STREQ(buffer.data(), "key bytes");
    const FreedArrayWatch watch(buffer.data(), buffer.size());
    buffer.clear();
    EXPECT_EQ(watch.contents(), std::string(9, '\0'));
    EXPECT_FALSE(buffer);
}

TEST(SecretBuffer, WipesWhatAnAssignmentReplaces)
{
    SecretBuffer buffer("old", 3);
    const FreedArrayWatch watch(buffer.data(), buffer.size());
    buffer = SecretBuffer("new", 3);
    EXPECT_EQ(watch.contents(), std::string(3, '\0'));
    EXPECT_STREQ(buffer.data(), "new");
}

TEST(SecretBuffer, GivesItsBytesAwayUnwiped)
{
    SecretBuffer buffer("given", 5);
    const std::unique_ptr<char[]> given(buffer.release());
    EXPECT_STREQ(given.get(), "given");
    EXPECT_FALSE(buffer);
    EXPECT_EQ(buffer.size(), 0u);
}

TEST(SecretBuffer, IsEmptyWhenMemoryRunsOut)
{
    const FailingAllocations none;
    const SecretBuffer buffer("bytes", 5);
    EXPECT_FALSE(buffer);
    EXPECT_EQ(buffer.size(), 0u);
}
