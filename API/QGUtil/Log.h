#pragma once

#include <cstdarg>

/*
 * Trace lines of the list service. Two writers share one mechanism and differ, on purpose, in where the line
 * ends up: SetLogInfo writes it to the file, CUtil::SetLogInfo hands it to the system log. Neither reports a
 * failure, changes errno or holds a file open between calls.
 */

/**
 * Appends "[YYYY-MM-DD hh:mm:ss] message\n", in local time, to a file; a message above 4095 bytes is cut.
 * Nothing happens for a null or empty path. The path names a regular file, made when missing, or a character
 * device.
 */
void SetLogInfo(const char* pszLogPath, const char* format, ...) __attribute__((format(printf, 2, 3)));

class OpenFile;

/** Receives one finished line: the log file, open for appending, the time stamp and the message. */
using LogSink = void (*)(OpenFile& file, const char* stamp, const char* message);

/** The mechanism: opens the file, formats stamp and message, and gives them to the sink. */
void writeLog(LogSink sink, const char* path, const char* format, va_list arguments)
    __attribute__((format(printf, 3, 0)));

/** True when logging is on: the only look that a call costs while it is off. */
inline bool logIsOn(const char* path)
{
    return path && *path;
}
