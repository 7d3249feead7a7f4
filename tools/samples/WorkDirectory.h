#pragma once

#include <filesystem>

/**
 * The work directory that samples are copied from: the installed one beside this program
 * ("../share/quillgate/workdir"), or that of the build tree.
 */
std::filesystem::path defaultWorkDirectory();

/**
 * Copies a work directory to parent/"work" (files 0600, directory 0700, links followed) and makes the two
 * links beside it under which the list service opens the toolkits' configuration. Throws
 * std::filesystem::filesystem_error.
 */
void writeWorkDirectory(const std::filesystem::path& source, const std::filesystem::path& parent);
