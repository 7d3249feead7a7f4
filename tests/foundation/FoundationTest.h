#pragma once

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <gtest/gtest.h>

#include "Clock.h"
#include "TestHome.h"

/** Stops the clock at a local time while it lives. */
class StoppedClock
{
public:
    explicit StoppedClock(int year, int month, int day, int hour = 12, int minute = 0, int second = 0)
    {
        s_time = local(year, month, day, hour, minute, second);
        setClock([] { return s_time; });
    }
    ~StoppedClock() { setClock(nullptr); }

    /** The instant of a local time, summer time or not as the zone has it. */
    static time_t local(int year, int month, int day, int hour = 12, int minute = 0, int second = 0)
    {
        std::tm fields{};
        fields.tm_year = year - 1900;
        fields.tm_mon = month - 1;
        fields.tm_mday = day;
        fields.tm_hour = hour;
        fields.tm_min = minute;
        fields.tm_sec = second;
        fields.tm_isdst = -1;
        return mktime(&fields);
    }

private:
    static inline time_t s_time = 0;
};

/** Sets an environment variable while it lives. */
class ScopedVariable
{
public:
    ScopedVariable(const char* name, const std::string& value) : m_name(name)
    {
        if (const char* earlier = getenv(name)) {
            m_earlier = earlier;
            m_wasSet = true;
        }
        setenv(name, value.c_str(), 1);
    }
    ~ScopedVariable()
    {
        if (m_wasSet)
            setenv(m_name, m_earlier.c_str(), 1);
        else
            unsetenv(m_name);
    }

private:
    const char* m_name;
    std::string m_earlier;
    bool m_wasSet = false;
};

/** Puts the process into another time zone while it lives. */
class ScopedTimeZone
{
public:
    explicit ScopedTimeZone(const char* zone) : m_variable("TZ", zone) { tzset(); }

private:
    struct ReadAgain
    {
        ~ReadAgain() { tzset(); }
    };
    ReadAgain m_readAgain;
    ScopedVariable m_variable;
};

/** A buffer of `size` bytes 'x': what an operation writes, and what it leaves alone, can be told apart. */
inline std::vector<char> marked(std::size_t size)
{
    return std::vector<char>(size, 'x');
}

/** The whole content of a buffer as bytes, zeros included. */
inline std::string bytesOf(const std::vector<char>& buffer)
{
    return {buffer.begin(), buffer.end()};
}
