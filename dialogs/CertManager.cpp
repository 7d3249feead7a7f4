/* The exported dialog functions. */

#include <QApplication>
#include <QThread>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

#include "ApplicationThread.h"
#include "Doors.h"
#include "OpenFile.h"
#include "SelectCertDialog.h"
#include "quillgate/dialogs.h"

QApplication* g_pQApplication = nullptr;
SelectCertDialog* g_dlgUserCert = nullptr;

namespace {

/** Answer for a dialog that ended without a choice. */
constexpr int noSelection = -1;

/** Places that the debug lines name. Support staff tell the two lines apart by these numbers. */
constexpr long lineAfterInitalize = 94;
constexpr long lineAtEnd = 152;

/** What follows the last separator, or the whole text. */
const char* afterLast(const char* text, char separator)
{
    const char* found = std::strrchr(text, separator);
    return found ? found + 1 : text;
}

/** Local time, cut into fields, with the milliseconds. */
struct LocalTime
{
    LocalTime()
    {
        timespec now = {};
        clock_gettime(CLOCK_REALTIME, &now);
        localtime_r(&now.tv_sec, &fields);
        milliseconds = static_cast<int>(now.tv_nsec / 1000000);
    }

    tm fields = {};
    int milliseconds;
};

/** Appends to a regular file, made when missing. Anything else of that name, and every failure, is passed
 * over. */
void appendToFile(const char* path, const char* text)
{
    OpenFile file(path, O_RDWR | O_APPEND | O_CREAT | O_NOFOLLOW);
    if (file.isRegular())
        file.write(text, std::strlen(text));
}

/**
 * Writes a debug line to the day's file under /tmp, whatever the log settings say. A message is cut at 4,095
 * bytes, and so is the line. Nothing happens when the level, the file or the function is null.
 */
__attribute__((format(printf, 5, 6))) void LOG_LEVEL(const char* pszLevel, const char* pszFile, long nLine,
                                                     const char* pszFunction, const char* pszFormat, ...)
{
    if (!pszFile || !pszLevel || !pszFunction)
        return;
    char message[4096];
    va_list arguments;
    va_start(arguments, pszFormat);
    vsnprintf(message, sizeof(message), pszFormat, arguments);
    va_end(arguments);

    const char* file = std::strchr(pszFile, '/') ? afterLast(pszFile, '/') : afterLast(pszFile, '\\');
    const LocalTime now;
    char line[4096];
    const int length = snprintf(line, sizeof(line), "[qg4np][%02d:%02d:%02d.%03d][%s][%s:%ld][%s] %s\n",
                                now.fields.tm_hour, now.fields.tm_min, now.fields.tm_sec, now.milliseconds,
                                pszLevel, file, nLine, afterLast(pszFunction, ':'), message);
    if (length >= static_cast<int>(sizeof(line)))
        line[sizeof(line) - 2] = '\n'; // a line that was cut still ends where the next begins

    const LocalTime day;
    char path[260];
    snprintf(path, sizeof(path), "/tmp/quillgate4np_%04d%02d%02d.log", day.fields.tm_year + 1900,
             day.fields.tm_mon + 1, day.fields.tm_mday);
    appendToFile(path, line);
}

/** Runs the body of an exported function. No exception leaves it. */
template <class Body>
int guarded(Body body) noexcept
{
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return QG_NO_MEMORY;
    } catch (...) {
        return noSelection;
    }
}

/** Never returns. A host that asks before ShowUserCertInit ran waits for good, whatever comes later. */
[[noreturn]] void waitForEver()
{
    for (;;)
        pause();
}

bool hasApplication()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

/** True on the thread of a QApplication, the one place where a dialog can be made. */
bool isOnApplicationThread()
{
    return hasApplication() && QThread::currentThread() == QCoreApplication::instance()->thread();
}

/** The start that a host chose: its own certificates in memory, else the hard disk. */
int startMedium(const LOADSELECTCERTOPTION& load)
{
    return load.bMemoryCert ? MEDIA_MEMORY : MEDIA_HARDDISK;
}

/** Makes the shared dialog ready to be shown. The code of SelectCertDialog::Initalize. */
int prepareShared(SelectCertDialog& dialog, INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, EXTRAOPTION* pExtra)
{
    dialog.SetInitOption(pInit, pLoad, pExtra);
    dialog.InitSetControl();
    dialog.m_nExitReady = 0;
    const int result = dialog.Initalize();
    LOG_LEVEL("DEBUG", "CertManager", lineAfterInitalize, "ShowUserCert", "Initalize : %d", result);
    if (result == QG_OK)
        dialog.SetInitMediaCert(startMedium(*pLoad));
    return result;
}

/**
 * The outcome on the shared dialog. m_nDlgResult is never set back, so that a window closed by its own button
 * after an accepted selection hands that selection out once more: hosts rely on it.
 */
int takeShared(SelectCertDialog& dialog, SELCERTINFO* pOut)
{
    if (dialog.m_nDlgResult != 1)
        return noSelection;
    dialog.GetSelectCertinfo(pOut);
    return QG_OK;
}

int selectOnSharedDialog(QApplication& application, INITOPT* pInit, LOADSELECTCERTOPTION* pLoad,
                         EXTRAOPTION* pExtra, SELCERTINFO* pOut)
{
    int result = noSelection;
    // Once the application's loop runs this, the dialog is there: it is made before the loop is entered.
    runOnThreadOf(application, [&] { result = prepareShared(*g_dlgUserCert, pInit, pLoad, pExtra); });
    if (result != QG_OK)
        return result;
    execOnThisThread(*g_dlgUserCert);
    runOnThreadOf(application, [&] { result = takeShared(*g_dlgUserCert, pOut); });
    LOG_LEVEL("DEBUG", "CertManager", lineAtEnd, "ShowUserCert", "ShowUserCert end");
    return result;
}

int selectOnOwnDialog(INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, EXTRAOPTION* pExtra, SELCERTINFO* pOut)
{
    // On the heap: with all its records the dialog is too large for the stack of many a host's thread.
    const auto dialog = std::make_unique<SelectCertDialog>(nullptr);
    dialog->SetInitOption(pInit, pLoad, pExtra);
    dialog->InitSetControl();
    const int result = dialog->Initalize();
    if (result != QG_OK)
        return result;
    dialog->SetInitMediaCert(startMedium(*pLoad));
    if (dialog->exec() != QDialog::Accepted)
        return noSelection;
    dialog->GetSelectCertinfo(pOut);
    return QG_OK;
}

/** Runs the event loop until it ends before the first selection; after that, for good. */
int runEventLoop()
{
    int result = QApplication::exec();
    while (g_dlgUserCert->m_nExitReady != 1)
        result = QApplication::exec();
    return result;
}

/** True on the application's thread while no loop of it runs: only there can the event loop be entered. */
bool canEnterEventLoop()
{
    return QThread::currentThread() == g_pQApplication->thread() &&
           QThread::currentThread()->loopLevel() == 0;
}

void tearDown()
{
    delete std::exchange(g_dlgUserCert, nullptr);
    QCoreApplication::exit(0);
    delete std::exchange(g_pQApplication, nullptr);
}

} // namespace

int ShowUserCertInit(int argc, char** argv)
{
    return guarded([&argc, argv]() -> int {
        std::atomic_ref<QApplication*> shared(g_pQApplication);
        if (!shared.load()) {
            if (QCoreApplication::instance())
                return QG_BAD_ARGUMENT; // the host has an application: ShowUserCert_T is its function
            shared.store(new QApplication(argc, argv));
        }
        if (!g_dlgUserCert)
            g_dlgUserCert = new SelectCertDialog(nullptr);
        if (!canEnterEventLoop())
            return QApplication::exec(); // -1; what another loop uses stays alive
        const int result = runEventLoop();
        tearDown();
        return result;
    });
}

int ShowUserCert(void*, void*, INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, void*, EXTRAOPTION* pExtra,
                 SELCERTINFO* pOut)
{
    QApplication* application = std::atomic_ref<QApplication*>(g_pQApplication).load();
    if (!application)
        waitForEver();
    if (!pLoad || !pExtra || !pOut)
        return QG_BAD_ARGUMENT;
    return guarded([&] { return selectOnSharedDialog(*application, pInit, pLoad, pExtra, pOut); });
}

int ShowUserCert_T(INITOPT* pInit, LOADSELECTCERTOPTION* pLoad, void*, EXTRAOPTION* pExtra, SELCERTINFO* pOut)
{
    if (!pLoad || !pExtra || !pOut || !isOnApplicationThread())
        return QG_BAD_ARGUMENT;
    return guarded([&] { return selectOnOwnDialog(pInit, pLoad, pExtra, pOut); });
}

int GetSlectFilePath(int nLen, char* pszOut)
{
    if (!pszOut || !hasApplication())
        return QG_BAD_ARGUMENT;
    return guarded([&]() -> int {
        QString chosen;
        runOnThreadOf(*QCoreApplication::instance(), [&] {
            chosen = askForFile(nullptr, QStringLiteral("Select File"), QStringLiteral("/"), QString());
        });
        if (chosen.isEmpty())
            return 1;
        const QByteArray path = chosen.toLocal8Bit();
        if (nLen <= path.size())
            return QG_BAD_ARGUMENT;
        std::memset(pszOut, 0, static_cast<std::size_t>(nLen));
        std::memcpy(pszOut, path.constData(), static_cast<std::size_t>(path.size()));
        return QG_OK;
    });
}
