#include "UiPasswordDialog.h"

#include "PasswordEdit.h"
#include "UiBuilder.h"

void Ui_PasswordDialog::setupUi(QDialog* dialog)
{
    shapeWindow(dialog, "PasswordDialog", QSize(400, 110));
    dialog->setFont(pointFont(9));
    dialog->setWindowTitle(QStringLiteral("Dialog"));
    label_title = placeLabel(dialog, "label_title", QRect(10, 10, 351, 16), QStringLiteral("비밀번호 입력"),
                             Qt::TabFocus);
    lineEdit_password = placeWidget<PasswordEdit>(dialog, "lineEdit_password", QRect(110, 40, 281, 21));
    label_pwd = placeLabel(dialog, "label_pwd", QRect(10, 40, 95, 16), QStringLiteral("비밀번호"));
    pushButton_ok = placeButton(dialog, "pushButton_ok", QRect(6, 70, 190, 31), QStringLiteral("OK"));
    pushButton_ok->setEnabled(true);
    pushButton_cancel =
        placeButton(dialog, "pushButton_cancel", QRect(202, 70, 190, 31), QStringLiteral("Cancel"));
    // The title line comes first in the order of Tab, yet what is typed belongs to the password.
    lineEdit_password->setFocus();
    QMetaObject::connectSlotsByName(dialog);
}
