#include "SelectCertDialog.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QItemSelection>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include "BoundedText.h"
#include "Doors.h"
#include "PasswordEdit.h"
#include "Resources.h"
#include "Secret.h"
#include "StayLoaded.h"
#include "UiBuilder.h"
#include "UiSelectCertDialog.h"

namespace {

/** Texts of 1,024 bytes that the dialog keeps, most of them only for the layout's sake. */
constexpr char (LOADSELECTCERTOPTION::*keptTexts[])[1024] = {
    &LOADSELECTCERTOPTION::szCertSerial,      &LOADSELECTCERTOPTION::szCertKmSerial,
    &LOADSELECTCERTOPTION::szSetPrivateCertO, &LOADSELECTCERTOPTION::szCarried1,
    &LOADSELECTCERTOPTION::szCarried2,        &LOADSELECTCERTOPTION::szCarried3,
    &LOADSELECTCERTOPTION::szCarried4,        &LOADSELECTCERTOPTION::szCarried5,
    &LOADSELECTCERTOPTION::szCarried6,        &LOADSELECTCERTOPTION::szLogoName,
    &LOADSELECTCERTOPTION::szCarried7,        &LOADSELECTCERTOPTION::szCarried8};

/** Copies a byte field of the host with its length, when there is one. */
void takeMemory(char (&target)[4096], int& targetLength, const char (&source)[4096], int length)
{
    if (length <= 0)
        return;
    std::memcpy(target, source, sizeof(target));
    targetLength = length;
}

void takeSelectOption(LOADSELECTCERTOPTION& target, const LOADSELECTCERTOPTION& source)
{
    target.nCertCAType = source.nCertCAType;
    target.nCertUsageType = source.nCertUsageType;
    target.nExpiredOption = source.nExpiredOption;
    copyText(target.szCertDN, source.szCertDN);
    copyText(target.szCertPolicyIDs, source.szCertPolicyIDs);
    for (auto text : keptTexts)
        copyText(target.*text, source.*text);
    std::memcpy(target.abCarried, source.abCarried, sizeof(target.abCarried));
    target.nCarried = source.nCarried;
    target.nNoticeOption = source.nNoticeOption;
    target.bCarried = source.bCarried;
    target.bMemoryCert = source.bMemoryCert;
    target.bNTSLogo = source.bNTSLogo;
}

void takeFilter(LOADCERTOPT& target, const LOADSELECTCERTOPTION& source)
{
    target.bCDROMHide = true;
    if (source.nExpiredOption & EXPIRED_HIDE)
        target.bExpiredCertHide = true;
    target.nCertCAType = source.nCertCAType;
    target.nCertUsageType = source.nCertUsageType;
    copyText(target.szCertDN, source.szCertDN);
    copyText(target.szCertSerial, source.szCertSerial);
    copyText(target.szCertKmSerial, source.szCertKmSerial);
    copyText(target.szCertPolicyIDs, source.szCertPolicyIDs);
    copyText(target.szSetPrivateCertO, source.szSetPrivateCertO);
}

/** Headers and widths of the table's columns. */
constexpr struct
{
    const char* key;
    int width;
} columns[] = {{"DLG_CERTLISTCTRL_DN", 95},
               {"DLG_CERTLISTCTRL_ISSUER", 92},
               {"DLG_CERTLISTCTRL_USAGE", 92},
               {"DLG_CERTLISTCTRL_VALIDITYTO", 75}};

/** Media buttons in the order in which they get their images, with mode and media bit. */
constexpr struct
{
    int mode;
    int mediaBit;
} initialButtons[] = {{1, 1}, {1, 2}, {0, 8}, {0, 4}, {0, 16}, {0, 32}};

} // namespace

SelectCertDialog::SelectCertDialog(QWidget* parent) : QDialog(parent), ui(new Ui_SelectCertDialog)
{
    stayLoaded();
    initResources();
    ui->setupUi(this);
    InitVariable();
    m_nMediaType = MEDIA_HARDDISK;
    qRegisterMetaType<QItemSelection>("QItemSelection");
}

SelectCertDialog::~SelectCertDialog()
{
    delete ui;
    if (m_pContext)
        CLP_UnInitalize(m_pContext);
    freeCertList();
    InitVariable();
}

void SelectCertDialog::InitVariable()
{
    m_nRv = QG_OK;
    m_nExitReady = 1;
    m_nCertCount = 0;
    m_nMediaType = MEDIA_NONE;
    m_bMemoryCert = false;
    m_nDlgResult = -1;
    m_nLibAPIType = TOOLKIT_ZRTK;
    m_nLanguage = 1;
    wipe(m_stLoadCertOpt);
    wipe(m_stSelectOpt);
    wipe(m_stSelCertInfo);
    wipe(m_szErrInfo);
    wipe(m_szLanguageFile);
    wipe(m_szPFXPassword);
    m_pCertList = nullptr;
    m_pContext = nullptr;
}

int SelectCertDialog::SetInitOption(tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad, tagEXTRAOPTION* pExtra)
{
    m_nRv = QG_OK;
    if (!pInit || !pLoad || !pExtra)
        return m_nRv = QG_BAD_ARGUMENT;
    m_nLanguage = pInit->nLanguage;
    m_stLoadOpt.nLibAPIType = TOOLKIT_ZRTK;
    copyText(m_stLoadOpt.szWorkDir, pInit->szWorkDir);
    if (pInit->pPKCS11Context)
        m_stLoadOpt.pPKCS11Context = pInit->pPKCS11Context;

    takeSelectOption(m_stSelectOpt, *pLoad);
    // From the dialog's own copy, whose texts end: the host's need not.
    takeFilter(m_stLoadCertOpt, m_stSelectOpt);
    if (pLoad->bMemoryCert) {
        m_bMemoryCert = true;
        takeMemory(m_stSelectOpt.szMemSignCert, m_stSelectOpt.nMemSignCertLen, pLoad->szMemSignCert,
                   pLoad->nMemSignCertLen);
        takeMemory(m_stSelectOpt.szMemSignKey, m_stSelectOpt.nMemSignKeyLen, pLoad->szMemSignKey,
                   pLoad->nMemSignKeyLen);
    }
    std::memcpy(m_stExtraOpt.abCarried, pExtra->abCarried, sizeof(m_stExtraOpt.abCarried));
    copyText(m_stExtraOpt.szLogoData, pExtra->szLogoData);
    return m_nRv;
}

void SelectCertDialog::InitSetControl()
{
    m_font.setPointSize(8);
    makeLanguagePath(m_szLanguageFile, m_stLoadOpt.szWorkDir, m_nLanguage);
    ui->lineEdit_password->setEchoMode(QLineEdit::Password);
    // What is typed goes to the password from the first moment of each selection on.
    ui->lineEdit_password->setFocus();
    // An unseen child whose window title some hosts look for; every selection adds one.
    (new QLabel(this))->setWindowTitle(QStringLiteral("인증서 선택창"));

    const LanguagePack pack = texts();
    setWindowTitle(pack.ui("DLG_SELCERT_CAPITON"));
    ui->groupBox->setTitle(pack.ui("DLG_GROUPBOX_MEDIA"));
    setUpTable();
    ui->label_find->setText(pack.ui("DLG_FINDCERT_TEXT"));
    ui->pushButton_find->setText(pack.ui("DLG_BUTTON_FIND"));
    ui->label_pwd->setText(pack.ui("DLG_STATIC_CERTPASSWORD"));
    ui->pushButton_ok->setText(pack.ui("DLG_BUTTON_OK"));
    ui->pushButton_cancel->setText(pack.ui("DLG_BUTTON_CANCEL"));
    ui->pushButton_view->setText(pack.ui("DLG_BUTTON_VIEW"));
    nameForReaders();

    for (const auto& button : initialButtons)
        SetButtonImage(button.mode, button.mediaBit, m_nLanguage);
    SetLogoImage();
}

void SelectCertDialog::setUpTable()
{
    QTableView* table = ui->tableView_certlist;
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const LanguagePack pack = texts();
    int column = 0;
    for (const auto& header : columns)
        m_certModel.setHorizontalHeaderItem(column++, new QStandardItem(pack.ui(header.key)));
    table->setModel(&m_certModel);
    table->verticalHeader()->setVisible(false);
    column = 0;
    for (const auto& header : columns)
        table->setColumnWidth(column++, header.width);
    table->setFont(m_font);
}

/** Gives the widgets that have no text of their own a name for screen readers. */
void SelectCertDialog::nameForReaders()
{
    ui->lineEdit_password->setAccessibleName(ui->label_pwd->text());
    ui->tableView_certlist->setAccessibleName(windowTitle());
    ui->lineEdit_msg->setAccessibleName(windowTitle());
}

int SelectCertDialog::Initalize()
{
    m_nRv = CLP_Initalize(&m_pContext, &m_stLoadOpt, nullptr);
    if (m_nRv == QG_OK)
        m_nRv = CLP_SetType(m_pContext, &m_stLoadCertOpt);
    return m_nRv;
}

void SelectCertDialog::tell(const char* messageKey)
{
    tell(messageKey, "DLG_SELCERT_CAPITON", this);
}

void SelectCertDialog::tell(const char* messageKey, const char* titleKey, QWidget* parent)
{
    showMessage(parent, texts().ui(titleKey, messageTextLimit), texts().message(messageKey));
}

void SelectCertDialog::prompt(const char* messageKey)
{
    ui->lineEdit_msg->setText(texts().message(messageKey));
}

int SelectCertDialog::selectedRow() const
{
    const QModelIndexList selected = ui->tableView_certlist->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}
