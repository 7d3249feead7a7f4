#pragma once

class PasswordEdit;
class QDialog;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

/** Widgets of SelectCertDialog, which owns them. */
class Ui_SelectCertDialog
{
public:
    QGroupBox* groupBox;
    QPushButton* pushButton_hdd;
    QPushButton* pushButton_remove;
    QPushButton* pushButton_bscert;
    QPushButton* pushButton_token;
    QPushButton* pushButton_phone;
    QPushButton* pushButton_smcard;
    QLabel* label_find;
    QPushButton* pushButton_find;
    QLabel* label_pwd;
    PasswordEdit* lineEdit_password;
    QTableView* tableView_certlist;
    QPushButton* pushButton_ok;
    QPushButton* pushButton_cancel;
    QPushButton* pushButton_view;
    QLabel* label_logo;
    QLineEdit* lineEdit_msg;

    /** Makes the widgets, with texts that InitSetControl replaces, and connects the slots by name. */
    void setupUi(QDialog* dialog);

private:
    void placeMedia(QDialog* dialog);
    void placeList(QDialog* dialog);
    void placeFoot(QDialog* dialog);
};
