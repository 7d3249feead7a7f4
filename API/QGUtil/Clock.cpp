#include "Clock.h"

namespace {

std::time_t systemTime()
{
    return std::time(nullptr);
}

ClockFunction g_clock = systemTime;

} // namespace

std::time_t currentTime()
{
    return g_clock();
}

bool currentLocalTime(std::tm& local)
{
    tzset(); // localtime_r alone would keep the zone of its first call
    const std::time_t now = currentTime();
    return localtime_r(&now, &local) != nullptr;
}

void setClock(ClockFunction clock)
{
    g_clock = clock ? clock : systemTime;
}
