#pragma once

class PasswordEdit;
class QDialog;
class QLabel;
class QPushButton;

/** Widgets of PasswordDialog, which owns them. */
class Ui_PasswordDialog
{
public:
    QLabel* label_title;
    PasswordEdit* lineEdit_password;
    QLabel* label_pwd;
    QPushButton* pushButton_ok;
    QPushButton* pushButton_cancel;

    /** Makes the widgets, with texts that InitSetControl replaces, and connects the slots by name. */
    void setupUi(QDialog* dialog);
};
