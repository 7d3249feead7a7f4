#pragma once

#include <functional>

class QDialog;
class QObject;

/*
 * Widgets may be touched on the thread of the QApplication alone, while hosts call ShowUserCert on a thread
 * of their own and expect the selection's loop to run there. These two functions keep both: all work on
 * widgets goes to the application's thread, and QDialog::exec runs on the caller's, so that the host's timers
 * and queued calls on that thread go on while the dialog is open, and the end of the application's own loop
 * (which ShowUserCertInit enters anew) does not end the dialog.
 */

/**
 * Runs a call on the thread of an object and waits for it; at once when that is the current thread, otherwise
 * as soon as its event loop comes to it. What the call throws is thrown here. False when the loop ended and
 * the object died before the call ran.
 */
bool runOnThreadOf(QObject& object, const std::function<void()>& call);

/**
 * Shows a dialog application-modal and runs its exec() on the calling thread until it ends. The dialog is
 * hidden when this returns, and everything that ended it has run to its end on the dialog's thread. A dialog
 * that is open already stays so, and this returns at once.
 */
void execOnThisThread(QDialog& dialog);
