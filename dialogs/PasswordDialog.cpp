#include "PasswordDialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "BoundedText.h"
#include "Doors.h"
#include "PasswordEdit.h"
#include "Secret.h"
#include "UiPasswordDialog.h"

PasswordDialog::PasswordDialog(QWidget* parent) : QDialog(parent), ui(new Ui_PasswordDialog)
{
    ui->setupUi(this);
}

PasswordDialog::~PasswordDialog()
{
    delete ui;
    wipe(m_szPassword);
    wipe(m_szLanguageFile);
}

void PasswordDialog::InitSetControl()
{
    makeLanguagePath(m_szLanguageFile, m_szWorkDir, m_nLanguage);
    ui->lineEdit_password->setEchoMode(QLineEdit::Password);
    const LanguagePack pack = texts();
    setWindowTitle(pack.ui("DLG_CERTPASSWORD_CAPITON"));
    ui->label_title->setText(pack.ui("DLG_CERTPASSWORD_INPUT"));
    ui->label_pwd->setText(pack.ui("DLG_STATIC_CERTPASSWORD"));
    ui->lineEdit_password->setAccessibleName(ui->label_pwd->text());
    ui->pushButton_ok->setText(pack.ui("DLG_BUTTON_OK"));
    ui->pushButton_cancel->setText(pack.ui("DLG_BUTTON_CANCEL"));
}

void PasswordDialog::on_pushButton_ok_clicked()
{
    if (ui->lineEdit_password->text().isEmpty())
        return blamePassword("MSG_SELECTCERT_INPUTPASSWORD");
    const WipedBytes bytes(ui->lineEdit_password->localBytes());
    // The field admits any length; what does not fit is turned away here, for half a password opens nothing.
    if (bytes.size() >= static_cast<int>(sizeof(m_szPassword)))
        return blamePassword("MSG_SELECTCERT_PASSWORD_MAX");
    wipe(m_szPassword);
    copyText(m_szPassword, bytes.data());
    accept();
}

void PasswordDialog::on_pushButton_cancel_clicked()
{
    reject();
}

/** Keys other than these two are dropped, the keypad's Enter among them. */
void PasswordDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        on_pushButton_cancel_clicked();
    else if (event->key() == Qt::Key_Return)
        on_pushButton_ok_clicked();
}

void PasswordDialog::blamePassword(const char* messageKey)
{
    showMessage(this, texts().ui("DLG_SELCERT_CAPITON", messageTextLimit), texts().message(messageKey));
    ui->lineEdit_password->setFocus();
}
