#pragma once

#include <functional>
#include <string>
#include <vector>

/** The lines that a call writes to the system log, without their time stamp. */
std::vector<std::string> systemLogOf(const std::function<void()>& call);
