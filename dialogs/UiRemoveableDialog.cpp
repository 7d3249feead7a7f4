#include "UiRemoveableDialog.h"

#include <QTableView>

#include "UiBuilder.h"

void Ui_RemoveableDialog::setupUi(QDialog* dialog)
{
    shapeWindow(dialog, "RemoveableDialog", QSize(322, 219));
    dialog->setFont(pointFont(9));
    dialog->setWindowTitle(QStringLiteral("Dialog"));
    tableView_remobable = placeWidget<QTableView>(dialog, "tableView_remobable", QRect(10, 30, 301, 141));
    tableView_remobable->setFocusPolicy(Qt::StrongFocus);
    label_text = placeLabel(dialog, "label_text", QRect(10, 10, 301, 16),
                            QStringLiteral("이동식 디스크 목록"), Qt::TabFocus);
    pushButton_cancel =
        placeButton(dialog, "pushButton_cancel", QRect(163, 180, 150, 36), QStringLiteral("cancel"));
    pushButton_ok = placeButton(dialog, "pushButton_ok", QRect(10, 180, 150, 36), QStringLiteral("ok"));
    QFont font = pointFont(9);
    font.setFamily(QStringLiteral(".Helvetica Neue DeskInterface"));
    pushButton_ok->setFont(font);
    QMetaObject::connectSlotsByName(dialog);
}
