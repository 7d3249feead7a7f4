#pragma once

class QDialog;
class QPushButton;
class QTabWidget;
class QWidget;

/** Widgets of CertViewMainDialog, which owns them. */
class Ui_CertViewMainDialog
{
public:
    QTabWidget* tabWidget;
    QWidget* tab_normal;
    QWidget* tab_detail;
    QPushButton* pushButton_verify;
    QPushButton* pushButton_ok;

    /** Makes the widgets, with texts that InitSetControl replaces, and connects the slots by name. */
    void setupUi(QDialog* dialog);
};
