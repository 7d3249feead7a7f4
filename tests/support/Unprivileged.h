#pragma once

#include <filesystem>
#include <stdexcept>
#include <unistd.h>

/**
 * The rights of a user who owns nothing, for the length of a scope: root may read everything. The process
 * stays root's otherwise, so that its home directory is the same.
 */
class Unprivileged
{
public:
    Unprivileged()
    {
        if (geteuid() == 0 && seteuid(NOBODY) != 0)
            throw std::runtime_error("the rights can't be dropped");
    }
    ~Unprivileged() { (void)!seteuid(getuid()); }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

    /** Lets everybody walk through the directories that lead to a path. */
    static void makeReachable(const std::filesystem::path& path)
    {
        namespace fs = std::filesystem;
        constexpr fs::perms WALK =
            fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;
        for (fs::path step = path; step != step.root_path(); step = step.parent_path()) {
            if ((fs::status(step).permissions() & WALK) != WALK)
                fs::permissions(step, WALK, fs::perm_options::add);
        }
    }

private:
    static constexpr uid_t NOBODY = 65534;
};
