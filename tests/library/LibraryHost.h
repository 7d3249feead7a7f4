#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <quillgate/quillgate.h>
#include <string>

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
Holder writeHolder();

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

} // namespace host
