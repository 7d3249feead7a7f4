/*
 * A host without Qt code of its own: ShowUserCertInit on the main thread, selections on others. A user is
 * played on the application's thread. One scenario a run; exit code 0 when it went as it should.
 */

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

#include "BoundedText.h"
#include "DebugLog.h"
#include "SelectionHost.h"
#include "TestHome.h"
#include "quillgate/dialogs.h"
#include "quillgate/records.h"

namespace {

[[noreturn]] void finish(int code)
{
    std::fflush(nullptr);
    TestHome::remove();
    _exit(code); // the application's loop never ends, so nothing else ends this program
}

void expect(bool holds, const char* what, int line)
{
    if (holds)
        return;
    std::fprintf(stderr, "line %d: %s does not hold\n", line, what);
    finish(1);
}

#define EXPECT(condition) expect(condition, #condition, __LINE__)

std::string workDir;

/** Records of one selection. */
struct Selection
{
    Selection()
    {
        init->nLanguage = 1;
        copyText(init->szWorkDir, workDir.c_str());
        load->nCertCAType = CERTTYPE_NPKI;
    }

    int run()
    {
        return ShowUserCert(nullptr, nullptr, init.get(), load.get(), nullptr, extra.get(), out.get());
    }

    bool isUntouched() const
    {
        const auto zeros = std::make_unique<SELCERTINFO>();
        return std::memcmp(out.get(), zeros.get(), sizeof(*out)) == 0;
    }

    std::unique_ptr<INITOPT> init = std::make_unique<INITOPT>();
    std::unique_ptr<LOADSELECTCERTOPTION> load = std::make_unique<LOADSELECTCERTOPTION>();
    std::unique_ptr<EXTRAOPTION> extra = std::make_unique<EXTRAOPTION>();
    std::unique_ptr<SELCERTINFO> out = std::make_unique<SELCERTINFO>();
};

QApplication* application()
{
    return std::atomic_ref<QApplication*>(g_pQApplication).load();
}

void waitForApplication()
{
    while (!application())
        std::this_thread::yield();
}

template <class Widget>
Widget& child(const QWidget& window, const char* name)
{
    auto* widget = window.findChild<Widget*>(QLatin1String(name));
    EXPECT(widget != nullptr);
    return *widget;
}

/** Has the user do something to the next dialog that opens, on the application's thread. */
void user(const std::function<void(QDialog&)>& step)
{
    waitForApplication();
    const auto watch = [step] {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, [timer, step] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible() || !dialog->windowHandle()->isExposed())
                return;
            timer->stop();
            timer->deleteLater();
            step(*dialog);
        });
        timer->start(0);
    };
    QMetaObject::invokeMethod(application(), watch, Qt::QueuedConnection);
}

void accept(QDialog& dialog)
{
    auto& password = child<QLineEdit>(dialog, "lineEdit_password");
    password.clear();
    QTest::keyClicks(&password, QString::fromStdString(certificatePassword()));
    QTest::mouseClick(&child<QPushButton>(dialog, "pushButton_ok"), Qt::LeftButton);
}

void cancel(QDialog& dialog)
{
    QTest::mouseClick(&child<QPushButton>(dialog, "pushButton_cancel"), Qt::LeftButton);
}

void closeWindow(QDialog& dialog)
{
    dialog.close();
}

void expectAccepted(Selection& selection)
{
    EXPECT(selection.run() == 0);
    EXPECT(selection.out->szSubjectCN == firstName());
    EXPECT(selection.out->nSignKeyLen > 0 && selection.out->nSignCertLen > 0);
    EXPECT(selection.out->nMediaType == MEDIA_HARDDISK);
}

/** Two hundred selections, each on a thread of its own, every fourth of them cancelled. */
void rounds()
{
    for (int round = 0; round < 200; ++round)
        std::thread([round] {
            Selection selection;
            user(round % 4 == 3 ? cancel : accept);
            if (round % 4 != 3)
                return expectAccepted(selection);
            EXPECT(selection.run() == -1);
            EXPECT(selection.isUntouched());
        }).join();
}

/** The close button passes on what was accepted before, and keeps the typed password for the next time. */
void staleOutcome()
{
    Selection closed;
    user(closeWindow);
    EXPECT(closed.run() == -1);
    Selection accepted;
    user(accept);
    expectAccepted(accepted);
    user([](QDialog& dialog) {
        EXPECT(child<QLineEdit>(dialog, "lineEdit_password").text().isEmpty());
        QTest::keyClicks(&child<QLineEdit>(dialog, "lineEdit_password"), "typed");
        dialog.close();
    });
    EXPECT(closed.run() == 0);
    EXPECT(std::memcmp(closed.out.get(), accepted.out.get(), sizeof(*closed.out)) == 0);
    user([](QDialog& dialog) {
        EXPECT(child<QLineEdit>(dialog, "lineEdit_password").text() == "typed");
        cancel(dialog);
    });
    EXPECT(Selection().run() == -1);
    user(closeWindow);
    EXPECT(Selection().run() == -1);
}

/** A call out of the application's own loop. */
void ownThread()
{
    user(accept);
    std::atomic<bool> done = false;
    QMetaObject::invokeMethod(
        application(),
        [&done] {
            Selection selection;
            expectAccepted(selection);
            done = true;
        },
        Qt::BlockingQueuedConnection);
    EXPECT(done);
}

/** A call while the dialog is open ends with -1 and leaves it to the call that opened it. */
void secondCallMeanwhile()
{
    std::thread second;
    user([&second](QDialog& dialog) {
        EXPECT(Selection().run() == -1); // out of the dialog's own loop
        EXPECT(dialog.isVisible());
        second = std::thread([&dialog] {
            EXPECT(Selection().run() == -1);
            QMetaObject::invokeMethod(
                &dialog, [&dialog] { accept(dialog); }, Qt::QueuedConnection);
        });
    });
    Selection selection;
    expectAccepted(selection);
    second.join();
}

/** The selection's loop is the caller's: what the caller queued on its own thread goes on meanwhile. */
void callersLoop()
{
    const QEventLoop makesTheThreadFitForTimers;
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] {
        if (++ticks == 10)
            user(accept);
    });
    timer.start(1);
    Selection selection;
    expectAccepted(selection);
    EXPECT(ticks >= 10);
}

/** The end of the application's loop ends neither the open dialog nor ShowUserCertInit. */
void quitMeanwhile()
{
    user([](QDialog& dialog) {
        QCoreApplication::exit(7);
        QTimer::singleShot(0, &dialog,
                           [&dialog] { QTimer::singleShot(0, &dialog, [&] { accept(dialog); }); });
    });
    Selection selection;
    expectAccepted(selection);
    QMetaObject::invokeMethod(
        application(), [] { QCoreApplication::exit(7); }, Qt::QueuedConnection);
    user(accept);
    expectAccepted(selection);
}

void startFailure()
{
    Selection selection;
    selection.init->szWorkDir[0] = '/';
    copyText(selection.init->szWorkDir, "/nowhere");
    const int result = selection.run();
    EXPECT(result == CLPERR_TOOLKIT_NOT_LOADED);
    EXPECT(selection.isUntouched());
}

int logged(const std::string& text)
{
    std::ifstream log(debugLogPath());
    int count = 0;
    for (std::string line; std::getline(log, line);)
        count += line.find(text) != std::string::npos;
    return count;
}

void debugLines()
{
    const std::string start = "[DEBUG][CertManager:94][ShowUserCert] Initalize : 0";
    const std::string end = "[DEBUG][CertManager:152][ShowUserCert] ShowUserCert end";
    const int starts = logged(start);
    const int ends = logged(end);
    user(cancel);
    EXPECT(Selection().run() == -1);
    EXPECT(logged(start) > starts || !isDebugLogOurs());
    EXPECT(logged(end) > ends || !isDebugLogOurs());
}

void badArguments()
{
    Selection s;
    EXPECT(ShowUserCert(nullptr, nullptr, s.init.get(), nullptr, nullptr, s.extra.get(), s.out.get()) ==
           QG_BAD_ARGUMENT);
    EXPECT(ShowUserCert(nullptr, nullptr, s.init.get(), s.load.get(), nullptr, nullptr, s.out.get()) ==
           QG_BAD_ARGUMENT);
    EXPECT(ShowUserCert(nullptr, nullptr, s.init.get(), s.load.get(), nullptr, s.extra.get(), nullptr) ==
           QG_BAD_ARGUMENT);
}

/** True when a thread sits in pause(2). */
bool pauses(long thread)
{
    std::ifstream call("/proc/self/task/" + std::to_string(thread) + "/syscall");
    long number = -1;
    call >> number;
    return number == SYS_pause;
}

/** A call before ShowUserCertInit never returns, not even after selections of others. */
void beforeInit()
{
    static std::atomic<long> early = 0;
    static std::atomic<bool> returned = false;
    std::thread([] {
        early = syscall(SYS_gettid);
        Selection().run();
        returned = true;
    }).detach();
    while (early == 0 || !pauses(early))
        std::this_thread::yield();
    std::thread([] {
        rounds();
        EXPECT(!returned && pauses(early));
        finish(0);
    }).detach();
}

/** Before any selection the loop's end is the end of ShowUserCertInit. */
void quitBeforeAnySelection()
{
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    std::thread([] {
        waitForApplication();
        QMetaObject::invokeMethod(
            application(), [] { QCoreApplication::exit(7); }, Qt::QueuedConnection);
    }).detach();
    EXPECT(ShowUserCertInit(1, arguments) == 7);
    EXPECT(!g_pQApplication && !g_dlgUserCert);
    EXPECT(!QCoreApplication::instance());
    finish(0);
}

/** Objects that are there already are used, not made again. */
void globalsAreSet()
{
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    int count = 1;
    auto* mine = new QApplication(count, arguments);
    g_pQApplication = mine;
    QTimer::singleShot(0, mine, [mine] {
        EXPECT(g_pQApplication == mine && g_dlgUserCert != nullptr);
        EXPECT(QApplication::topLevelWidgets().size() == 1);
        QCoreApplication::exit(3);
    });
    EXPECT(ShowUserCertInit(1, arguments) == 3);
    EXPECT(!g_pQApplication && !g_dlgUserCert);
    finish(0);
}

const std::map<std::string, void (*)()> selections = {{"rounds", rounds},
                                                      {"staleOutcome", staleOutcome},
                                                      {"ownThread", ownThread},
                                                      {"callersLoop", callersLoop},
                                                      {"quitMeanwhile", quitMeanwhile},
                                                      {"startFailure", startFailure},
                                                      {"debugLines", debugLines},
                                                      {"badArguments", badArguments},
                                                      {"secondCallMeanwhile", secondCallMeanwhile}};

const std::map<std::string, void (*)()> beginnings = {{"beforeInit", beforeInit},
                                                      {"quitBeforeAnySelection", quitBeforeAnySelection},
                                                      {"globalsAreSet", globalsAreSet}};

} // namespace

int main(int argc, char** argv)
{
    EXPECT(argc == 2);
    TestHome::path();
    prepareCertificates();
    workDir = workDirectory();
    if (const auto beginning = beginnings.find(argv[1]); beginning != beginnings.end())
        beginning->second();
    else
        std::thread([scenario = selections.at(argv[1])] {
            waitForApplication();
            scenario();
            finish(0);
        }).detach();
    ShowUserCertInit(argc, argv);
    return 2; // it must not come back once a selection has been shown
}
