#include "UiSelectCertDialog.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QTableView>

#include "PasswordEdit.h"
#include "UiBuilder.h"

namespace {

QPushButton* placeMediaButton(QWidget* group, const char* name, int x)
{
    QPushButton* button = placeButton(group, name, QRect(x, 24, 58, 68));
    button->setIconSize(QSize(60, 60));
    return button;
}

} // namespace

void Ui_SelectCertDialog::setupUi(QDialog* dialog)
{
    shapeWindow(dialog, "SelectCertDialog", QSize(391, 460));
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    dialog->setLayoutDirection(Qt::LeftToRight);
    dialog->setAutoFillBackground(true);
    dialog->setSizeGripEnabled(false);
    dialog->setModal(true);
    dialog->setWindowTitle(QStringLiteral("Dialog"));

    placeMedia(dialog);
    placeList(dialog);
    placeFoot(dialog);

    chainTabOrder({pushButton_hdd, pushButton_remove, pushButton_bscert, pushButton_token, pushButton_smcard,
                   pushButton_phone, tableView_certlist, label_find, pushButton_find, label_pwd,
                   lineEdit_password, lineEdit_msg, pushButton_ok, pushButton_cancel, pushButton_view});
    QMetaObject::connectSlotsByName(dialog);
}

void Ui_SelectCertDialog::placeMedia(QDialog* dialog)
{
    groupBox = placeWidget<QGroupBox>(dialog, "groupBox", QRect(10, 90, 371, 96));
    groupBox->setTitle(QStringLiteral("저장매체 선택"));
    pushButton_hdd = placeMediaButton(groupBox, "pushButton_hdd", 4);
    pushButton_remove = placeMediaButton(groupBox, "pushButton_remove", 64);
    pushButton_bscert = placeMediaButton(groupBox, "pushButton_bscert", 124);
    pushButton_token = placeMediaButton(groupBox, "pushButton_token", 184);
    pushButton_phone = placeMediaButton(groupBox, "pushButton_phone", 304);
    pushButton_smcard = placeMediaButton(groupBox, "pushButton_smcard", 244);
}

void Ui_SelectCertDialog::placeList(QDialog* dialog)
{
    label_find =
        placeLabel(dialog, "label_find", QRect(10, 340, 281, 31),
                   QStringLiteral("인증서가 없을 경우 '찾아보기'버튼을 이용하십시오."), Qt::TabFocus);
    pushButton_find =
        placeButton(dialog, "pushButton_find", QRect(300, 342, 81, 26), QStringLiteral("찾아보기"));
    label_pwd = placeLabel(dialog, "label_pwd", QRect(10, 370, 91, 21), QStringLiteral("인증서 비밀번호"),
                           Qt::TabFocus);
    lineEdit_password = placeWidget<PasswordEdit>(dialog, "lineEdit_password", QRect(100, 372, 281, 21));
    lineEdit_password->setFixedSize(281, 21);
    lineEdit_password->setFocusPolicy(Qt::StrongFocus);
    lineEdit_password->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    lineEdit_password->setMaxLength(1024);
    tableView_certlist = placeWidget<QTableView>(dialog, "tableView_certlist", QRect(10, 190, 371, 148));
    tableView_certlist->setFocusPolicy(Qt::WheelFocus);
    tableView_certlist->setLocale(QLocale(QLocale::Korean, QLocale::SouthKorea));
}

void Ui_SelectCertDialog::placeFoot(QDialog* dialog)
{
    pushButton_ok = placeButton(dialog, "pushButton_ok", QRect(10, 420, 122, 34), QStringLiteral("ok"));
    pushButton_cancel =
        placeButton(dialog, "pushButton_cancel", QRect(136, 420, 122, 34), QStringLiteral("cancel"));
    pushButton_view =
        placeButton(dialog, "pushButton_view", QRect(260, 420, 120, 34), QStringLiteral("view"));
    for (QPushButton* button : {pushButton_ok, pushButton_view})
        button->setContextMenuPolicy(Qt::DefaultContextMenu);
    label_logo = placeLabel(dialog, "label_logo", QRect(10, 10, 371, 81), QStringLiteral("IMAGE"));
    lineEdit_msg = placeWidget<QLineEdit>(dialog, "lineEdit_msg", QRect(10, 396, 371, 21));
    lineEdit_msg->setFrame(false);
    lineEdit_msg->setReadOnly(true);
}
