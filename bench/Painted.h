#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QTimer>
#include <functional>
#include <utility>

/**
 * Calls a function, out of the event loop, whenever a widget of an object name and its children have painted:
 * once for all that is painted together.
 */
class WhenPainted : public QObject
{
public:
    WhenPainted(QString name, std::function<void()> then) : m_name(std::move(name)), m_then(std::move(then))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const bool wanted =
            object->objectName() == m_name || (object->parent() && object->parent()->objectName() == m_name);
        if (event->type() == QEvent::Paint && wanted && !std::exchange(m_isQueued, true))
            QTimer::singleShot(0, this, [this] {
                m_isQueued = false;
                m_then();
            });
        return false;
    }

private:
    QString m_name;
    std::function<void()> m_then;
    bool m_isQueued = false;
};

/** Closes the modal dialog. */
inline void closeDialog()
{
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        dialog->reject();
}
