#pragma once

#include <quillgate/dialogs.h>

/**
 * Prints what the host received as a table on standard output: names, policy, serial number, dates, paths,
 * lengths, a SHA-256 of each key and the proof of each key. Never prints a key, the random or a password.
 * Answers whether every key that came is the certificate's.
 */
bool printSelection(const SELCERTINFO& selection);
