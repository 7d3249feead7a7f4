#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <quillgate/quillgate.h>
#include <string>
#include <vector>

class QWidget;

/** What the tests of this suite share: one holder in the home directory, sessions over it, the dialog driven.
 */
namespace host {

/** Password of the holder's keys. Unusual enough to be found in memory only where it was typed. */
std::string password();

/** One NPKI holder with a key-management pair and key randoms, alone in an emptied home directory. */
struct Holder
{
    std::string signKey; /**< plain PKCS#8 */
    std::string kmKey;
    std::string random;
};
Holder writeHolder(const std::string& keyPassword = password());

/** A session on the hard disk with its list loaded, for the toolkit TOOLKIT_ZRTK or TOOLKIT_GPKI. */
void* openSession(int toolkit = TOOLKIT_ZRTK);

/** How a person ends the dialog. */
enum class Ending
{
    RightPassword,
    WrongPasswordThenCancel,
    Cancel
};

/** Runs ShowUserCert_T under the process's QApplication, which is made at the first call, and uses the
 * dialog. */
int runDialog(Ending ending, SELCERTINFO& outcome);

/** Option records of a host that asks for NPKI certificates in Korean. */
struct Options
{
    /** Over the build's work directory. */
    Options();
    explicit Options(const std::string& workDirectory);

    std::unique_ptr<INITOPT> init = std::make_unique<INITOPT>();
    std::unique_ptr<LOADSELECTCERTOPTION> load = std::make_unique<LOADSELECTCERTOPTION>();
    std::unique_ptr<EXTRAOPTION> extra = std::make_unique<EXTRAOPTION>();
};

/** The same with records and a password of the caller's. A person who is refused says Ok and cancels. What
 * the message boxes said is added to `said`, in UTF-8. */
int runDialog(Ending ending, Options& options, const std::string& typed, SELCERTINFO& outcome,
              std::vector<std::string>* said = nullptr);

} // namespace host
