#include "Log.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>

#include "BoundedText.h"
#include "Clock.h"
#include "OpenFile.h"

namespace {

/** The file gets the line in one write, so that lines of several processes don't mix. */
void writeToFile(OpenFile& file, const char* stamp, const char* message)
{
    char line[4096 + 32];
    const std::size_t length = joinText(line, {"[", stamp, "] ", message, "\n"});
    file.write(line, length);
}

} // namespace

void writeLog(LogSink sink, const char* path, const char* format, va_list arguments)
{
    const int callersErrno = errno;
    std::tm local{};
    char stamp[20];
    OpenFile file(path, O_RDWR | O_CREAT | O_APPEND);
    if ((file.isRegular() || file.isDevice()) && currentLocalTime(local) &&
        std::strftime(stamp, sizeof(stamp), "%Y-%m-%d %H:%M:%S", &local) > 0) {
        char message[4096];
        std::vsnprintf(message, sizeof(message), format, arguments);
        sink(file, stamp, message);
    }
    errno = callersErrno;
}

void SetLogInfo(const char* pszLogPath, const char* format, ...)
{
    if (!logIsOn(pszLogPath))
        return;
    va_list arguments;
    va_start(arguments, format);
    writeLog(writeToFile, pszLogPath, format, arguments);
    va_end(arguments);
}
