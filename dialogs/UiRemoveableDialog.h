#pragma once

class QDialog;
class QLabel;
class QPushButton;
class QTableView;

/** Widgets of RemoveableDialog, which owns them. */
class Ui_RemoveableDialog
{
public:
    QTableView* tableView_remobable;
    QLabel* label_text;
    QPushButton* pushButton_cancel;
    QPushButton* pushButton_ok;

    /** Makes the widgets, with texts that InitSetControl replaces, and connects the slots by name. */
    void setupUi(QDialog* dialog);
};
