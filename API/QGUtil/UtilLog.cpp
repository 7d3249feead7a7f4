#include "Util.h"

#include <cstring>
#include <fcntl.h>
#include <syslog.h>

#include "Log.h"
#include "OpenFile.h"

namespace {

/** The file was opened, so that it comes into being, but the line goes elsewhere: administrators rely on it.
 */
void writeToSystemLog(OpenFile& /*file*/, const char* stamp, const char* message)
{
    syslog(LOG_ALERT, "[%s] %s\n", stamp, message);
}

} // namespace

void CUtil::SetLogInfo(const char* pszLogPath, const char* format, ...)
{
    if (!logIsOn(pszLogPath))
        return;
    va_list arguments;
    va_start(arguments, format);
    writeLog(writeToSystemLog, pszLogPath, format, arguments);
    va_end(arguments);
}

int CUtil::WriteLogDataFile(const char* pszFilPath, const char* pszData)
{
    if (!pszFilPath || !pszData)
        return 0;
    OpenFile file(pszFilPath, O_RDWR | O_CREAT | O_TRUNC);
    if (file.isRegular() || file.isDevice())
        file.write(pszData, std::strlen(pszData));
    return 0;
}
