#include "Doors.h"

#include <QFileDialog>
#include <QMessageBox>
#include <utility>

namespace {

MessageDoor replacedMessageDoor;
FileDoor replacedFileDoor;

} // namespace

int showMessage(QWidget* parent, const QString& title, const QString& text)
{
    if (replacedMessageDoor)
        return replacedMessageDoor(title, text);
    return QMessageBox::information(parent, title, text, QMessageBox::Ok);
}

QString askForFile(QWidget* parent, const QString& caption, const QString& directory, const QString& filter)
{
    if (replacedFileDoor)
        return replacedFileDoor(caption, directory, filter);
    return QFileDialog::getOpenFileName(parent, caption, directory, filter);
}

void replaceMessageDoor(MessageDoor door)
{
    replacedMessageDoor = std::move(door);
}

void replaceFileDoor(FileDoor door)
{
    replacedFileDoor = std::move(door);
}
