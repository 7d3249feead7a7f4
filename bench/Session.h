#pragma once

#include <filesystem>
#include <functional>
#include <string>

/** The password of all keys that are measured, and the iterations of their encryption. */
inline constexpr char password[] = "sample-password";
inline constexpr int rounds = 2048;

/** A certificate list session over a work directory, on the hard disk, for all trees. Throws on failure. */
class Session
{
public:
    explicit Session(const std::filesystem::path& workDirectory);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void* handle() const { return m_handle; }

    /** Loads the list and answers its length. Throws when that is not the expected one. */
    int load(int expected) const;

private:
    void* m_handle = nullptr;
};

/**
 * Makes the tree that fill writes the home directory's NPKI. Each named tree is written once and then only
 * linked to, so that benchmarks can be interleaved.
 */
void useHome(const std::string& name, const std::function<void(const std::filesystem::path& root)>& fill);

/** A home directory of so many NPKI holders without key-management pairs. */
void useHomeOf(long count);

/**
 * A copy of the build's work directory. issuerLines above 0 pads its issuer configuration to that many lines;
 * logging switches the log on, into a file of the copy.
 */
std::filesystem::path workDirectory(const std::string& name, int issuerLines = 0, bool logging = false);
