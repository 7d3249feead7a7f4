#include "Util.h"

#include "FoundationTest.h"

namespace {

/** What GetValidity answers. */
struct Validity
{
    int state = -1;
    int remainDay = -77;
    std::string beforeDay;
    std::string afterDay;
};

Validity validity(bool b1024, int certType, const char* after, const char* oid = "1 2 410 200004 5 2 1 2",
                  const char* before = "2025-01-01 00:00:00")
{
    Validity result;
    char beforeDay[1024] = {};
    char afterDay[1024] = {};
    EXPECT_EQ(CUtil::GetValidity(b1024, certType, oid, before, after, 1024, beforeDay, 1024, afterDay,
                                 &result.remainDay, &result.state),
              0);
    result.beforeDay = beforeDay;
    result.afterDay = afterDay;
    return result;
}

/** "YYYY-MM-DD 12:00:00" so many days, and seconds, from 2026-03-10 12:00:00, where the clock is stopped. */
std::string inDays(int days, int seconds = 0)
{
    const time_t time = StoppedClock::local(2026, 3, 10) + days * 86400L + seconds;
    char text[32];
    strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", localtime(&time));
    return text;
}

int stateInDays(bool b1024, int certType, int days, const char* oid = "1 2 3")
{
    const StoppedClock clock(2026, 3, 10);
    return validity(b1024, certType, inDays(days).c_str(), oid).state;
}

int leapDays(int year, int month, int nextYear, int nextMonth)
{
    tm now{};
    now.tm_year = year;
    now.tm_mon = month;
    return CUtil::yun(&now, {nextYear, nextMonth, 1});
}

} // namespace

TEST(Str2time, ReadsLocalTime)
{
    EXPECT_EQ(CUtil::str2time("2026-01-02 03:04:05"), StoppedClock::local(2026, 1, 2, 3, 4, 5));
    EXPECT_EQ(CUtil::str2time("1970-01-01 09:00:00"), 0); // the tests' zone is nine hours ahead
}

TEST(Str2time, SplitsAtAnyOfItsDelimiters)
{
    const time_t expected = StoppedClock::local(2026, 1, 2, 3, 4, 5);
    EXPECT_EQ(CUtil::str2time("2026:01 02-03--04::05"), expected);
    EXPECT_EQ(CUtil::str2time("2026-01-02 03:04:05 extra"), expected);
}

TEST(Str2time, AnswersTheNumberOfTheFirstMissingField)
{
    EXPECT_EQ(CUtil::str2time("-: "), 1);
    EXPECT_EQ(CUtil::str2time("2026"), 2);
    EXPECT_EQ(CUtil::str2time("2026-01"), 3);
    EXPECT_EQ(CUtil::str2time("2026-01-02"), 4);
    EXPECT_EQ(CUtil::str2time("2026-01-02 03"), 5);
    EXPECT_EQ(CUtil::str2time("2026-01-02 03:04"), 6);
}

TEST(Str2time, Answers10004ForNullEmptyAndOverlongTexts)
{
    EXPECT_EQ(CUtil::str2time(nullptr), 10004);
    EXPECT_EQ(CUtil::str2time(""), 10004);
    const std::string date = "2026-01-02 03:04:05";
    EXPECT_EQ(CUtil::str2time((date + std::string(10, ' ')).c_str()),
              StoppedClock::local(2026, 1, 2, 3, 4, 5));
    EXPECT_EQ(CUtil::str2time((date + std::string(11, ' ')).c_str()), 10004);
}

TEST(Str2time, AnswersSixForADateThatNoCalendarHolds)
{
    EXPECT_EQ(CUtil::str2time("2147483647-2147483647-1 0:0:0"), 6);
    EXPECT_EQ(CUtil::str2time("1970-01-01 08:59:59"), 6); // mktime answers -1, the second before 1970 began
}

TEST(Str2time, NormalisesFieldsThatAreTooLarge)
{
    EXPECT_EQ(CUtil::str2time("2026-02-30 00:00:00"), StoppedClock::local(2026, 3, 2, 0));
    EXPECT_EQ(CUtil::str2time("2026-13-01 25:61:00"), StoppedClock::local(2027, 1, 2, 2, 1));
}

TEST(Str2time, TakesTextForZero)
{
    EXPECT_EQ(CUtil::str2time("2026-01-02 a:b:c"), StoppedClock::local(2026, 1, 2, 0));
}

TEST(Str2time, NeverCountsSummerTime)
{
    const ScopedTimeZone newYork("America/New_York");
    // 12:00 without summer time is 13:00 on the clocks of July.
    EXPECT_EQ(CUtil::str2time("2026-07-01 12:00:00"), StoppedClock::local(2026, 7, 1, 13));
    EXPECT_EQ(CUtil::str2time("2026-01-01 12:00:00"), StoppedClock::local(2026, 1, 1, 12));
}

TEST(Str2time, FollowsTheZoneThatTheHostSets)
{
    EXPECT_EQ(CUtil::str2time("1970-01-02 09:00:00"), 86400);
    const ScopedTimeZone utc("UTC");
    EXPECT_EQ(CUtil::str2time("1970-01-02 09:00:00"), 86400 + 9 * 3600);
}

TEST(Str2time, AgreesWithTheSystemsCalendarInEveryZone)
{
    for (const char* zone :
         {"Asia/Seoul", "UTC", "America/New_York", "Australia/Lord_Howe", "Asia/Kathmandu"}) {
        const ScopedTimeZone there(zone);
        for (time_t time = 0; time < 4102444800; time += 40 * 3600 + 1234) {
            tm fields = *localtime(&time);
            char text[32];
            strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &fields);
            fields.tm_isdst = 0;
            ASSERT_EQ(CUtil::str2time(text), mktime(&fields)) << zone << " " << text;
        }
    }
}

TEST(Str2time, FollowsAZoneThatIsOnlySetInTheEnvironment)
{
    const ScopedTimeZone restoredLater("Asia/Seoul");
    EXPECT_EQ(CUtil::str2time("1970-01-02 09:00:00"), 86400);
    setenv("TZ", "UTC", 1);
    EXPECT_EQ(CUtil::str2time("1970-01-02 09:00:00"), 86400 + 9 * 3600);
}

TEST(GetCurrentTimeDay, GivesEightCharactersWithoutATerminator)
{
    const StoppedClock clock(2026, 1, 9);
    auto out = marked(9);
    EXPECT_EQ(CUtil::GetCurrentTimeDay(out.data()), 0);
    EXPECT_EQ(bytesOf(out), "2026_01_x");
    EXPECT_EQ(CUtil::GetCurrentTimeDay(nullptr), 0);
}

TEST(GetValidity, AnswersTheStatesOfTheSecondFamily)
{
    EXPECT_EQ(stateInDays(false, 2, 29), 4);
    EXPECT_EQ(stateInDays(false, 2, 31), 3);
    EXPECT_EQ(stateInDays(false, 1, 31), 4);
    EXPECT_EQ(stateInDays(false, 2, -1), 5);
}

TEST(GetValidity, AnswersTheStatesOfTheFirstFamilyForOldKeys)
{
    EXPECT_EQ(stateInDays(true, 2, 29), 1);
    EXPECT_EQ(stateInDays(true, 2, 31), 0);
    EXPECT_EQ(stateInDays(true, 2, -1), 2);
}

TEST(GetValidity, HasAWindowOf90Or100DaysForTheGovernment)
{
    EXPECT_EQ(stateInDays(false, 1, 100), 4);
    EXPECT_EQ(stateInDays(false, 1, 101), 3);
    EXPECT_EQ(stateInDays(false, 1, 90, "1 2 410 100001 5 3 1 3"), 4);
    EXPECT_EQ(stateInDays(false, 1, 91, "1 2 410 100001 5 3 1 3"), 3);
    EXPECT_EQ(stateInDays(false, 1, 100, nullptr), 4);
    EXPECT_EQ(stateInDays(false, 4, 31), 3);
}

TEST(GetValidity, CountsTheLimitItselfAsAboutToExpire)
{
    const StoppedClock clock(2026, 3, 10);
    EXPECT_EQ(validity(false, 2, inDays(30).c_str()).state, 4);
    EXPECT_EQ(validity(false, 2, inDays(30, 1).c_str()).state, 3);
}

TEST(GetValidity, IsNotExpiredInTheVerySecondOfTheEnd)
{
    const StoppedClock clock(2026, 3, 10);
    EXPECT_EQ(validity(false, 2, inDays(0).c_str()).state, 4);
    EXPECT_EQ(validity(false, 2, inDays(0, -1).c_str()).state, 5);
}

TEST(GetValidity, GivesTheDaysLeftOnlyWhenAboutToExpire)
{
    const StoppedClock clock(2026, 3, 10);
    EXPECT_EQ(validity(false, 2, inDays(29).c_str()).remainDay, 29);
    EXPECT_EQ(validity(false, 2, inDays(0).c_str()).remainDay, 0);
    EXPECT_EQ(validity(false, 2, inDays(31).c_str()).remainDay, -77);
    EXPECT_EQ(validity(false, 2, inDays(-1).c_str()).remainDay, -77);
}

TEST(GetValidity, FormatsBothDates)
{
    const StoppedClock clock(2026, 3, 10);
    const Validity result = validity(false, 2, "2027-12-31 23:59:59");
    EXPECT_EQ(result.beforeDay, "2025-01-01");
    EXPECT_EQ(result.afterDay, "2027-12-31");
}

TEST(GetValidity, TakesTheErrorNumbersOfADateForTimes)
{
    const StoppedClock clock(2026, 3, 10);
    const Validity result = validity(false, 2, "2027-12-31", "1", "");
    EXPECT_EQ(result.beforeDay, "1970-01-01");
    EXPECT_EQ(result.afterDay, "1970-01-01");
    EXPECT_EQ(result.state, 5);
}

TEST(GetValidity, FillsTheEndDateToItsSizeWithoutATerminator)
{
    const StoppedClock clock(2026, 3, 10);
    auto out = marked(12);
    int days = 0;
    int state = 0;
    const char* end = "2027-12-31 00:00:00";
    CUtil::GetValidity(false, 2, "1", end, end, 0, nullptr, 10, out.data(), &days, &state);
    EXPECT_EQ(bytesOf(out), "2027-12-31xx");
    CUtil::GetValidity(false, 2, "1", end, end, 0, nullptr, 12, out.data(), &days, &state);
    EXPECT_EQ(bytesOf(out), std::string("2027-12-31\0\0", 12));
}

TEST(GetValidity, RefusesOutputsWithoutRoom)
{
    auto out = marked(4);
    const char* date = "2027-12-31 00:00:00";
    EXPECT_EQ(
        CUtil::GetValidity(false, 2, nullptr, nullptr, nullptr, 4, nullptr, 4, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(CUtil::GetValidity(false, 2, "1", date, date, -1, out.data(), 0, out.data(), nullptr, nullptr),
              0);
    EXPECT_EQ(out, marked(4));
}

TEST(GetValidity, KeepsTheWindowAcrossSummerTime)
{
    // The limit is the same hour on the clock 30 days on, read without summer time: an hour later.
    const ScopedTimeZone newYork("America/New_York");
    const StoppedClock clock(2026, 3, 1, 12);
    EXPECT_EQ(validity(false, 2, "2026-03-31 12:00:00").state, 4);
    EXPECT_EQ(validity(false, 2, "2026-03-31 12:00:01").state, 4);
    EXPECT_EQ(validity(false, 2, "2026-03-31 13:00:00").state, 4);
    EXPECT_EQ(validity(false, 2, "2026-03-31 13:00:01").state, 3);
}

TEST(GetValidity, KeepsTheWindowFromSummerToWinter)
{
    // Noon of summer time 30 days on is eleven by the clocks of winter.
    const ScopedTimeZone newYork("America/New_York");
    const StoppedClock clock(2026, 10, 20, 12);
    EXPECT_EQ(validity(false, 2, "2026-11-19 11:00:00").state, 4);
    EXPECT_EQ(validity(false, 2, "2026-11-19 11:00:01").state, 3);
}

TEST(CalcDay, CountsAcrossTheYear)
{
    const StoppedClock clock(2025, 12, 31);
    EXPECT_EQ(CUtil::CalcDay(2026, 1, 1), 1);
}

TEST(CalcDay, CountsTheLeapDay)
{
    const StoppedClock clock(2028, 2, 1);
    EXPECT_EQ(CUtil::CalcDay(2028, 3, 1), 29);
}

TEST(CalcDay, IsZeroForAPastYearAndNegativeForAPastDayOfThisYear)
{
    const StoppedClock clock(2026, 3, 10);
    EXPECT_EQ(CUtil::CalcDay(2025, 12, 31), 0);
    EXPECT_EQ(CUtil::CalcDay(2026, 3, 10), 0);
    EXPECT_EQ(CUtil::CalcDay(2026, 3, 1), -9);
    EXPECT_EQ(CUtil::CalcDay(2026, 1, 10), -59);
}

TEST(CalcDay, AgreesWithTheCalendarOverTenYears)
{
    const StoppedClock clock(2023, 3, 15);
    const time_t today = currentTime();
    for (int days = 0; days < 3653; ++days) {
        const time_t then = today + days * 86400L;
        const tm date = *localtime(&then);
        ASSERT_EQ(CUtil::CalcDay(date.tm_year + 1900, date.tm_mon + 1, date.tm_mday), days);
    }
}

TEST(CalcDay, TakesSenselessDatesWithoutHanging)
{
    const StoppedClock clock(2026, 3, 10);
    CUtil::CalcDay(2147483647, 2147483647, 2147483647);
    CUtil::CalcDay(-2147483647 - 1, -1, -1);
    EXPECT_EQ(CUtil::CalcDay(2026, 13, 1) - CUtil::CalcDay(2026, 12, 31), 1);
    EXPECT_EQ(CUtil::CalcDay(2026, 14, 1) - CUtil::CalcDay(2026, 13, 1), 31);
    EXPECT_EQ(CUtil::CalcDay(2026, 0, 1), CUtil::CalcDay(2026, 1, 1));
}

TEST(Yun, CountsLeapYearsFromThePresentToTheNext)
{
    EXPECT_EQ(leapDays(2023, 1, 2029, 1), 2); // 2024 and 2028
    EXPECT_EQ(leapDays(2024, 2, 2024, 3), 1);
    EXPECT_EQ(leapDays(2024, 3, 2024, 3), 0);
    EXPECT_EQ(leapDays(2024, 2, 2024, 2), 0);
    EXPECT_EQ(leapDays(2096, 3, 2104, 3), 1); // 2100 is none, 2096 is past February
    EXPECT_EQ(leapDays(1999, 1, 2001, 1), 1); // 2000 is one
    EXPECT_EQ(leapDays(2024, 1, 2023, 12), 0);
}

TEST(Yun, MayTakeBothCorrectionsInOneLeapYear)
{
    EXPECT_EQ(leapDays(2024, 3, 2024, 2), -1);
    EXPECT_EQ(CUtil::yun(nullptr, {2024, 1, 1}), 0);
}

TEST(Day, KnowsNoLeapYears)
{
    const int expected[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(CUtil::day(month), expected[month - 1]);
    EXPECT_EQ(CUtil::day(0), 31);
    EXPECT_EQ(CUtil::day(13), 31);
}
