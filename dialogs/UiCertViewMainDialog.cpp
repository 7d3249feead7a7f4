#include "UiCertViewMainDialog.h"

#include <QTabWidget>

#include "UiBuilder.h"

void Ui_CertViewMainDialog::setupUi(QDialog* dialog)
{
    shapeWindow(dialog, "CertViewMainDialog", QSize(350, 408));
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->setFocusPolicy(Qt::ClickFocus);
    dialog->setWindowTitle(QStringLiteral("Dialog"));
    tabWidget = placeWidget<QTabWidget>(dialog, "tabWidget", QRect(10, 10, 331, 346));
    // They become tabs when their titles are known.
    tab_normal = placeWidget<QWidget>(tabWidget, "tab_normal", QRect());
    tab_detail = placeWidget<QWidget>(tabWidget, "tab_detail", QRect());
    pushButton_verify =
        placeButton(dialog, "pushButton_verify", QRect(10, 360, 162, 41), QStringLiteral("veify"));
    pushButton_ok = placeButton(dialog, "pushButton_ok", QRect(180, 360, 162, 41), QStringLiteral("ok"));
    QMetaObject::connectSlotsByName(dialog);
}
