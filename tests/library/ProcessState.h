#pragma once

#include <string>

/**
 * What a library must leave in a host's process as it found it, as a text of one line a fact, so that two
 * states can be compared with EXPECT_EQ and a difference reads well: locale, umask, working directory, signal
 * masks and handlers, open descriptors, threads, environment, OpenSSL's error queue and default context.
 */
std::string processState();
