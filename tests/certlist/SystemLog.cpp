#include "SystemLog.h"

#include <cstdarg>
#include <cstdio>

namespace {

std::vector<std::string> s_systemLog;

void record(const char* format, va_list arguments)
{
    char line[8192];
    std::vsnprintf(line, sizeof(line), format, arguments);
    s_systemLog.emplace_back(line);
}

} // namespace

// The system log's writers, replaced for this program.
extern "C" __attribute__((format(printf, 2, 3))) void syslog(int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}

extern "C" __attribute__((format(printf, 3, 4))) void __syslog_chk(int, int, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    record(format, arguments);
    va_end(arguments);
}

std::vector<std::string> systemLogOf(const std::function<void()>& call)
{
    s_systemLog.clear();
    call();
    std::vector<std::string> lines;
    for (const std::string& line : s_systemLog)
        lines.push_back(line.substr(22, line.size() - 23)); // stamp and line feed
    return lines;
}
