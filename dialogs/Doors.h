#pragma once

#include <QString>
#include <functional>

class QWidget;

/*
 * The two ways in which the dialogs ask the user through windows that are not theirs. All message boxes and
 * file dialogs go through here, so that tests can answer in the user's place.
 */

/** Shows a message box with the single button Ok and waits for it. Returns the button, QMessageBox::Ok. */
int showMessage(QWidget* parent, const QString& title, const QString& text);

/** Lets the user choose an existing file. Returns its path; empty when nothing was chosen. */
QString askForFile(QWidget* parent, const QString& caption, const QString& directory, const QString& filter);

using MessageDoor = std::function<int(const QString& title, const QString& text)>;
using FileDoor =
    std::function<QString(const QString& caption, const QString& directory, const QString& filter)>;

/** Puts answers in the place of the windows, for tests alone; an empty function brings the windows back. */
void replaceMessageDoor(MessageDoor door);
void replaceFileDoor(FileDoor door);
