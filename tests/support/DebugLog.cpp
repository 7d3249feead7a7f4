#include "DebugLog.h"

#include <ctime>
#include <fstream>

std::string debugLogPath()
{
    const std::time_t now = std::time(nullptr);
    char path[64];
    std::strftime(path, sizeof path, "/tmp/quillgate4np_%Y%m%d.log", std::localtime(&now));
    return path;
}

bool isDebugLogOurs()
{
    return std::ofstream(debugLogPath(), std::ios::app).is_open();
}
