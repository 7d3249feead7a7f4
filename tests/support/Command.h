#pragma once

#include <string>
#include <vector>

/** What a program printed (both streams) and how it ended. */
struct CommandResult
{
    int status; /**< exit status; -1 when a signal ended it */
    std::string output;
};

/** Runs a program with arguments, without a shell, in the C.UTF-8 locale and without the preloaded libraries
 * of the test. */
CommandResult runCommand(const std::vector<std::string>& arguments);
