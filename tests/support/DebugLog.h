#pragma once

#include <string>

/** Path of today's debug log of the dialogs. It is the same for all users of the machine. */
std::string debugLogPath();

/**
 * True when this user may write today's debug log. When another user's process was first the file is that
 * user's, and the library drops this one's lines: the tests of the lines have nothing to look at then.
 */
bool isDebugLogOurs();
