#include "Util.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "BoundedText.h"
#include "Clock.h"
#include "quillgate/returncodes.h"

namespace {

using std::tm;

constexpr char governmentOid[] = "1 2 410 100001 5 3";

/** Breaks a time down to local time; all zero for one that no calendar can hold. */
tm localTime(time_t time)
{
    tm fields{};
    localtime_r(&time, &fields);
    return fields;
}

/**
 * As mktime, which looks at the zone's file at every call; that costs several times the rest of a judgement,
 * and a list of certificates needs thousands. So the offset is guessed, and mktime asked only when the guess
 * fails (around a change of the clocks, in summer, for dates out of range). The caller has called tzset.
 */
time_t toInstant(tm fields)
{
    tm asWritten = fields;
    const time_t asUtc = timegm(&asWritten);
    const time_t guess = asUtc - localTime(asUtc).tm_gmtoff;
    const tm found = localTime(guess);
    if (asUtc != -1 && found.tm_isdst == fields.tm_isdst && guess + found.tm_gmtoff == asUtc)
        return guess;
    return mktime(&fields);
}

/** Local standard time to an instant: summer time never counts in a certificate's dates. */
time_t standardTime(tm fields)
{
    fields.tm_isdst = 0;
    return toInstant(fields);
}

/** Reads the six numbers of a date; returns the number of the first that is missing, from 1, or 0. */
int splitDate(const char* date, int (&fields)[6])
{
    char text[30] = {};
    copyText(text, date);
    char* state = nullptr;
    for (int i = 0; i < 6; ++i) {
        const char* field = strtok_r(i == 0 ? text : nullptr, "-: ", &state);
        if (!field)
            return i + 1;
        fields[i] = std::atoi(field);
    }
    return 0;
}

/** str2time in the zone that tzset has set. */
time_t parseTime(const char* date)
{
    if (!date || !*date || std::strlen(date) > 29)
        return QG_BAD_ARGUMENT;
    int fields[6] = {};
    if (const int missing = splitDate(date, fields))
        return missing;
    tm broken{};
    __builtin_sub_overflow(fields[0], 1900, &broken.tm_year);
    __builtin_sub_overflow(fields[1], 1, &broken.tm_mon);
    broken.tm_mday = fields[2];
    broken.tm_hour = fields[3];
    broken.tm_min = fields[4];
    broken.tm_sec = fields[5];
    const time_t time = standardTime(broken);
    return time == -1 ? 6 : time;
}

void formatDate(const tm& date, char* out, int size)
{
    if (!out || size <= 0)
        return;
    char text[64];
    const std::size_t length = std::strftime(text, sizeof(text), "%Y-%m-%d", &date);
    copyField(out, static_cast<std::size_t>(size), {text, length});
}

/** Days before its expiry from which on a certificate can be renewed. */
int renewalWindow(int certType, const char* oid)
{
    if (certType != CERTTYPE_GPKI)
        return 30;
    return oid && std::strstr(oid, governmentOid) ? 90 : 100;
}

/** The last instant of expiry that lies in the window. */
time_t renewalLimit(time_t now, int days)
{
    tm limit = localTime(now);
    limit.tm_mday += days;
    return standardTime(localTime(toInstant(limit)));
}

constexpr bool isLeapYear(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

long floorDivide(long value, long divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

/** Leap years up to and with a year, relative to year 0. */
long leapYearsThrough(long year)
{
    return floorDivide(year, 4) - floorDivide(year, 100) + floorDivide(year, 400);
}

/** Days of a common year before a month; months past the twelfth have 31, as CUtil::day says. */
long daysBeforeMonth(int month)
{
    long days = std::max(0L, static_cast<long>(month) - 13) * 31;
    for (int m = 1; m < std::min(month, 13); ++m)
        days += CUtil::day(m);
    return days;
}

/** Today in local time with the full year and a month from 1. */
tm today()
{
    tm now{};
    currentLocalTime(now);
    now.tm_year += 1900;
    now.tm_mon += 1;
    return now;
}

} // namespace

time_t CUtil::str2time(const char* pszDate)
{
    tzset();
    return parseTime(pszDate);
}

int CUtil::GetCurrentTimeDay(char* szOutTime)
{
    if (!szOutTime)
        return 0;
    tm now{};
    currentLocalTime(now);
    char text[64];
    const std::size_t length = std::strftime(text, sizeof(text), "%Y_%m_%d_%H_%M_%S", &now);
    copyField(szOutTime, 8, {text, length});
    return 0;
}

int CUtil::GetValidity(bool b1024, int nCertType, const char* pszOID, const char* pszBefore,
                       const char* pszAfter, int nOutBeforeLen, char* pszOutBeforeDay, int nOutAfterLen,
                       char* pszOutAfterDay, int* nRemainDay, int* nOutValidity)
{
    const time_t now = currentTime();
    tzset();
    const time_t after = parseTime(pszAfter);
    const tm end = localTime(after);
    formatDate(localTime(parseTime(pszBefore)), pszOutBeforeDay, nOutBeforeLen);
    formatDate(end, pszOutAfterDay, nOutAfterLen);

    int state = b1024 ? CERTSTATE_VALID_1024 : CERTSTATE_VALID;
    if (after < now) {
        state += CERTSTATE_EXPIRED - CERTSTATE_VALID;
    } else if (renewalLimit(now, renewalWindow(nCertType, pszOID)) >= after) {
        state += CERTSTATE_RENEWAL - CERTSTATE_VALID;
        if (nRemainDay)
            *nRemainDay = CalcDay(end.tm_year + 1900, end.tm_mon + 1, end.tm_mday);
    }
    if (nOutValidity)
        *nOutValidity = state;
    return 0;
}

int CUtil::CalcDay(int nYear, int nMon, int nDay)
{
    const tm now = today();
    if (now.tm_year > nYear)
        return 0;
    const long days = (static_cast<long>(nYear) - now.tm_year) * 365 + daysBeforeMonth(nMon) -
                      daysBeforeMonth(now.tm_mon) + nDay - now.tm_mday;
    return static_cast<int>(days + yun(&now, {nYear, nMon, nDay}));
}

int CUtil::yun(const tm* now, Calc next)
{
    if (!now || now->tm_year > next.m_nYear)
        return 0;
    long count = leapYearsThrough(next.m_nYear) - leapYearsThrough(static_cast<long>(now->tm_year) - 1);
    // The year of today counts from March on without its leap day, the last year before March.
    if (isLeapYear(now->tm_year) && now->tm_mon > 2)
        --count;
    if (isLeapYear(next.m_nYear) && next.m_nMon < 3)
        --count;
    return static_cast<int>(count);
}

int CUtil::day(int mon)
{
    if (mon == 2)
        return 28;
    return mon == 4 || mon == 6 || mon == 9 || mon == 11 ? 30 : 31;
}
