#include "ApplicationThread.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QSemaphore>
#include <QThread>
#include <exception>
#include <limits>

namespace {

bool isCurrentThreadOf(const QObject& object)
{
    return QThread::currentThread() == object.thread();
}

/** Runs exec(); false when a loop of the dialog runs already, which exec() then leaves alone. */
bool execUnlessOpen(QDialog& dialog)
{
    constexpr int recursive = -1; // no dialog here ends with this result
    return dialog.exec() != recursive;
}

/** Lives on the calling thread: its event is the first that the dialog's loop delivers there. */
class LoopBeacon : public QObject
{
public:
    explicit LoopBeacon(QSemaphore& running) : m_running(running)
    {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), std::numeric_limits<int>::max());
    }

    /** Lets the other thread go also when no loop ever ran. */
    ~LoopBeacon() override { m_running.release(); }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        m_running.release();
        return true;
    }

private:
    QSemaphore& m_running;
};

/**
 * Brings a dialog on the screen from its own thread, and keeps that thread waiting until the dialog's loop
 * runs on this one: nothing can end the dialog while exec() still sets itself up, and exec() finds the dialog
 * shown and touches no widget.
 */
class ShownDialog
{
public:
    explicit ShownDialog(QDialog& dialog) : m_dialog(dialog)
    {
        QMetaObject::invokeMethod(
            &dialog, [this] { show(); }, Qt::QueuedConnection);
        m_shown.acquire();
    }

    /** Waits until the dialog's thread is through with whatever ended the dialog. */
    ~ShownDialog()
    {
        m_running.release();
        runOnThreadOf(m_dialog, [this] {
            if (m_ended)
                m_dialog.hide();
        });
    }

    ShownDialog(const ShownDialog&) = delete;
    ShownDialog& operator=(const ShownDialog&) = delete;

    void exec()
    {
        if (!m_visible)
            return;
        const LoopBeacon beacon(m_running);
        m_ended = execUnlessOpen(m_dialog);
    }

private:
    void show()
    {
        m_dialog.setModal(true);
        m_dialog.show();
        m_visible = m_dialog.isVisible();
        m_shown.release();
        m_running.acquire();
    }

    QDialog& m_dialog;
    QSemaphore m_shown;
    QSemaphore m_running;
    bool m_visible = false;
    bool m_ended = true; ///< false when the dialog is another call's, whose loop goes on
};

} // namespace

bool runOnThreadOf(QObject& object, const std::function<void()>& call)
{
    bool ran = false;
    std::exception_ptr failure;
    // Qt's event loop does not take exceptions, so none may reach it.
    const auto guarded = [&] {
        ran = true;
        try {
            call();
        } catch (...) {
            failure = std::current_exception();
        }
    };
    QMetaObject::invokeMethod(
        &object, guarded, isCurrentThreadOf(object) ? Qt::DirectConnection : Qt::BlockingQueuedConnection);
    if (failure)
        std::rethrow_exception(failure);
    return ran;
}

void execOnThisThread(QDialog& dialog)
{
    if (!isCurrentThreadOf(dialog))
        return ShownDialog(dialog).exec();
    dialog.setModal(true);
    if (execUnlessOpen(dialog))
        dialog.hide();
}
