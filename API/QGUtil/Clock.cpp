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

void setClock(ClockFunction clock)
{
    g_clock = clock ? clock : systemTime;
}
