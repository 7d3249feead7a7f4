#pragma once

#include <filesystem>
#include <ostream>
#include <vector>

#include "Samples.h"

/**
 * Prints the holders as a table: name, state, passwords, keys, identity number, and where their files lie.
 * 'places' are relative to the directory that is printed above the table.
 */
void printReport(std::ostream& out, const SampleOptions& options,
                 const std::vector<std::filesystem::path>& places);
