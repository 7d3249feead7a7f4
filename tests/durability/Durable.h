#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ToolkitSession.h"
#include "fault_shim.h"

/** How an operation in a process of its own ended. */
struct Outcome
{
    bool killed = false; /**< by the shim */
    int code = -1;       /**< of the operation, when it came to its end */
    long calls = 0;      /**< that touched files */
    std::string failed;  /**< name of the call that went wrong; empty when it was not reached */
};

/**
 * Operations on the open toolkit that go wrong at each call that touches a file.
 *
 * The session is opened in this process; each operation then runs in a fork of it, under the shim, and this
 * process looks at what is left. Keys have few iterations, so that hundreds of runs take seconds.
 */
class Durable : public ToolkitSession
{
protected:
    using Operation = std::function<int()>;
    using Files = std::map<std::string, std::string>; /**< bytes by path below the home directory */

    Durable() { writeFile(workDir / "ZRCToolkitV30.conf", "[OPEN_TOOLKIT]\nKEY_ITERATIONS=1000\n"); }

    /** A plan whose call atEveryCall chooses. */
    static FaultPlan fault(FaultKind kind, int error = 0, const char* victim = nullptr,
                           const char* away = nullptr)
    {
        return {kind, 0, error, nullptr, victim, away};
    }

    /** Runs an operation in a fork. The plan's root is the home directory. */
    Outcome run(const Operation& operation, FaultPlan plan = {}) const;

    /** The same with preparations in the fork, ahead of the shim. */
    Outcome runPrepared(const std::function<bool()>& prepare, const Operation& operation,
                        FaultPlan plan = {}) const;

    /** All files below a directory, the temporary ones left out. */
    static Files filesIn(const fs::path& directory);

    /** Empties the home directory and puts files there. */
    void restore(const Files& state) const;

    /** Names of temporary files below the home directory. */
    std::vector<std::string> leftovers() const;

    /** Paths of the signing certificates that a fresh listing gives. */
    std::vector<std::string> listing();

    /** Names that the dialog's search for a PFX file offers below the home directory. */
    std::vector<std::string> offered() const;

    /** True when one of the passwords opens the listed certificate's keys and they are the right ones. */
    bool keysOpen(const std::vector<std::string>& passwords, const std::string& signKey,
                  const std::string& kmKey);

    /**
     * Runs the operation from the state once without a fault, to count its calls, and then once for each call
     * with that one going wrong; the check looks at what is left.
     */
    template <typename Check>
    void atEveryCall(FaultPlan plan, const Files& state, const Operation& operation, Check check)
    {
        restore(state);
        const Outcome whole = run(operation);
        ASSERT_EQ(whole.code, 0);
        ASSERT_GT(whole.calls, 10) << "the shim sees too little";
        for (plan.at = 1; plan.at <= whole.calls; ++plan.at) {
            restore(state);
            const Outcome outcome = run(operation, plan);
            SCOPED_TRACE("call " + std::to_string(plan.at) + " of " + std::to_string(whole.calls) + ", " +
                         outcome.failed);
            check(outcome);
            if (HasFailure())
                return;
        }
    }
};
