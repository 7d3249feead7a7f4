#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TestHome.h"
#include "toolkit/core/Errors.h"

using namespace qgtk;

TEST(CodeTable, EveryCodeStandsInTheManualWithBothTexts)
{
    const std::string manual = readFile(QGTK_MANUAL_FILE);
    int count = 0;
#define CHECK_ROW(name, number, english, korean)                                                             \
    EXPECT_THAT(manual, testing::HasSubstr("\n| " #number " | " english " | " korean " |\n"));               \
    ++count;
    QGTK_CODES(CHECK_ROW)
#undef CHECK_ROW
    EXPECT_GT(count, 30);
}

TEST(CodeTable, NumbersThatCallersActUponStay)
{
    EXPECT_EQ(int(Code::KeyDamaged), 2000);
    EXPECT_EQ(int(Code::KeyUndecryptable), 2001);
    EXPECT_EQ(int(Code::WrongPassword), 2004);
    EXPECT_EQ(int(Code::NoKeyRandom), 3500);
    EXPECT_EQ(int(Code::WrongPfxPassword), 4505);
}
