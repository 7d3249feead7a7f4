#pragma once

#include <ctime>

/** Seconds since 1970, as time(nullptr): the one clock of validity, renewal and log lines. */
std::time_t currentTime();

/** currentTime() broken down in the zone that the process has just now; false when no calendar holds it. */
bool currentLocalTime(std::tm& local);

/** Answers currentTime() in place of the system's clock. */
using ClockFunction = std::time_t (*)();

/** Replaces the clock of the whole process, for tests; null gives the system's clock back. */
void setClock(ClockFunction clock);
