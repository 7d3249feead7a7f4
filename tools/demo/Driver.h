#pragma once

#include <QObject>
#include <QString>

class QWidget;

/**
 * Uses the dialog as a person would, by mouse and keyboard events: waits for it to appear, clicks the row
 * that holds a text, types a password and presses OK. For a machine without a display.
 *
 * Also takes the pictures of --screenshots, with or without driving.
 */
class Driver : public QObject
{
    Q_OBJECT

public:
    /** What to do. Empty texts: rowText picks the first row, screenshotDirectory takes no pictures. */
    struct Plan
    {
        bool drives = false;
        bool views = false; ///< opens the viewer by a double click first, looks at both tabs and closes it
        QString rowText;
        QString password;
        QString screenshotDirectory;
        QString screenshotSuffix;
    };

    explicit Driver(Plan plan, QObject* parent = nullptr);

private:
    void comeRound();
    void look();
    void screenshot(QWidget& window, const QString& name) const;
    bool clickRow(QWidget& dialog, bool twice) const;
    void lookAtViewer(QWidget& viewer);
    void answerMessage(QWidget& box);
    void drive(QWidget& dialog);

    Plan m_plan;
    bool m_viewed = false;
    bool m_viewerPictured = false;
    bool m_typed = false;
    bool m_pictured = false;
};
