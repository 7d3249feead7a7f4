#include "CertViewMainDialog.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>

#include "BoundedText.h"
#include "Secret.h"
#include "UiCertViewMainDialog.h"

CertViewMainDialog::CertViewMainDialog(QWidget* parent)
    : QDialog(parent), m_normalForm(nullptr), m_detailForm(nullptr), ui(new Ui_CertViewMainDialog)
{
    ui->setupUi(this);
    InitVariable();
}

CertViewMainDialog::~CertViewMainDialog()
{
    delete ui;
    // The forms, members and children of the tabs at once, are destroyed first and take leave of the tabs.
}

void CertViewMainDialog::InitVariable()
{
    m_nResult = QG_OK;
    wipe(m_szLanguageFile);
}

/** Gives a form what the shell was given, and fills it. */
template <class Form>
void CertViewMainDialog::setUpForm(Form& form)
{
    form.m_pContext = m_pContext;
    copyText(form.m_szLanguageFile, m_szLanguageFile);
    form.InitSetControl();
}

void CertViewMainDialog::InitSetControl()
{
    const LanguagePack pack = texts();
    ui->tabWidget->addTab(ui->tab_normal, pack.ui("DLG_CERVIEWMAIN_TABNORMAL"));
    ui->tabWidget->addTab(ui->tab_detail, pack.ui("DLG_CERVIEWMAIN_TABDETAIL"));
    ui->tabWidget->setCurrentIndex(0);
    setUpForm(m_normalForm);
    setUpForm(m_detailForm);
    m_normalForm.setParent(ui->tab_normal);
    m_detailForm.setParent(ui->tab_detail);
    setWindowTitle(pack.ui("DLG_CERTVIEW_CAPITON"));
    ui->pushButton_ok->setText(pack.ui("DLG_BUTTON_OK"));
    ui->pushButton_verify->setText(pack.ui("DLG_BUTTON_VERIFY"));
    ui->pushButton_verify->clearFocus();
}

void CertViewMainDialog::on_pushButton_verify_clicked()
{
    m_nResult = m_normalForm.VerifyCert();
}

void CertViewMainDialog::on_pushButton_ok_clicked()
{
    reject();
}

/** Keys other than these two are dropped, the keypad's Enter among them. */
void CertViewMainDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        reject();
    else if (event->key() == Qt::Key_Return)
        on_pushButton_ok_clicked();
}

void CertViewMainDialog::mousePressEvent(QMouseEvent* /*event*/) {}
