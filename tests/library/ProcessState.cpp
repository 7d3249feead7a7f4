#include "ProcessState.h"

#include <clocale>
#include <filesystem>
#include <fstream>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <set>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/** The lines of /proc/self/status that begin with one of the names. */
std::string statusLines()
{
    static const std::set<std::string> names{"Umask:", "Threads:", "SigBlk:", "SigIgn:", "SigCgt:"};
    std::ifstream status("/proc/self/status");
    std::string line;
    std::string result;
    while (std::getline(status, line))
        if (names.count(line.substr(0, line.find('\t'))))
            result += line + "\n";
    return result;
}

std::string openDescriptors()
{
    std::set<std::string> lines;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the iterator's own descriptor
        const std::string target = fs::read_symlink(entry.path(), gone).string();
        if (!gone && target.find("/proc/") != 0)
            lines.insert("fd " + entry.path().filename().string() + " " + target);
    }
    std::string result;
    for (const std::string& line : lines)
        result += line + "\n";
    return result;
}

std::string environment()
{
    std::string result;
    for (char** entry = environ; *entry; ++entry)
        result += std::string("env ") + *entry + "\n";
    return result;
}

/** Whether the default library context can do what the legacy provider alone offers. */
bool defaultContextKnowsSeed()
{
    ERR_set_mark();
    EVP_CIPHER* cipher = EVP_CIPHER_fetch(nullptr, "SEED-CBC", nullptr);
    ERR_pop_to_mark();
    EVP_CIPHER_free(cipher);
    return cipher != nullptr;
}

} // namespace

std::string processState()
{
    std::ostringstream state;
    state << "locale " << std::setlocale(LC_ALL, nullptr) << "\n"
          << "directory " << fs::current_path().string() << "\n"
          << statusLines() << openDescriptors() << environment() << "OpenSSL error " << ERR_peek_error()
          << "\n"
          << "SEED in OpenSSL's default context " << defaultContextKnowsSeed() << "\n";
    return state.str();
}
