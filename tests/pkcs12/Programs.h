#pragma once

#include <string>
#include <vector>

/** Outcome of a shell command. */
struct Outcome
{
    int status;
    std::string output; /**< both streams */
};

/** Runs a command in a directory, without the preloaded libraries of the test. */
Outcome runIn(const std::string& directory, const std::string& command);

/** The contents of the PEM blocks of a kind, as "CERTIFICATE", in a text. */
std::vector<std::string> pemBlocks(const std::string& text, const std::string& kind);

/** A PEM block. */
std::string pemOf(const std::string& der, const std::string& kind);
