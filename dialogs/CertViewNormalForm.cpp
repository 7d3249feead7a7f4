#include "CertViewNormalForm.h"

#include <QLabel>
#include <QListView>
#include <QStringListModel>
#include <cstring>
#include <string_view>

#include "BoundedText.h"
#include "Doors.h"
#include "Secret.h"
#include "UiCertViewNormalForm.h"

namespace {

constexpr struct
{
    QLabel* Ui_CertViewNormalForm::*label;
    const char* key;
} captions[] = {{&Ui_CertViewNormalForm::label_infotitle, "DLG_CERVIEWNORAL_TITLE"},
                {&Ui_CertViewNormalForm::label_certusagetitle, "DLG_CERVIEWNORAL_USAGETITLE"},
                {&Ui_CertViewNormalForm::label_explain, "DLG_CERVIEWNORAL_EXPLAIN"},
                {&Ui_CertViewNormalForm::label_subjecttitle, "DLG_CERVIEWNORAL_SUBJECTTITLE"},
                {&Ui_CertViewNormalForm::label_issuertitle, "DLG_CERVIEWNORAL_ISSUERTITLE"},
                {&Ui_CertViewNormalForm::label_validitytitle, "DLG_CERVIEWNORAL_DATETITLE"},
                {&Ui_CertViewNormalForm::label_usagetitle, "DLG_CERVIEWNORAL_USETITLE"},
                {&Ui_CertViewNormalForm::label_statustitle, "DLG_CERVIEWNORAL_STATETITLE"}};

/** A word of the key usage and its row. The last one reads like the one before: users know it so. */
constexpr struct
{
    const char* word;
    const char* key;
} usages[] = {{"digitalSignature", "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN"},
              {"nonRepudiation", "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION"},
              {"keyEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT"},
              {"dataEncipherment", "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT"},
              {"keyAgreement", "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT"},
              {"keyCertSign", "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN"},
              {"crlSign", "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN"},
              {"encipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"},
              {"decipherOnly", "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY"}};

/**
 * Text and image of the three states. The resource of the second is named "cert_Renewal.bmp", and resources
 * are found by their exact name: a certificate about to expire has its text and no image.
 */
constexpr struct
{
    const char* key;
    const char* image;
} states[] = {{"DLG_CERVIEWNORAL_CERTVALID", ":/bmp/image/Cert_Valid.bmp"},
              {"DLG_CERVIEWNORAL_CERTRENEWAL", ":/bmp/image/Cert_Renewal.bmp"},
              {"DLG_CERVIEWNORAL_CERTEXPIRED", ":/bmp/image/Cert_Invalid.bmp"}};

/** What a toolkit puts in front of the words that are meant for the user. */
constexpr std::string_view MARKER = "<wrenlib>";

/** UTF-8 bytes of a EUC-KR text, at most 1,023. */
std::string utf8Of(const char* text)
{
    return fromEucKr(text).toUtf8().left(messageTextLimit).toStdString();
}

} // namespace

CertViewNormalForm::CertViewNormalForm(QWidget* parent) : QWidget(parent), ui(new Ui_CertViewNormalForm)
{
    ui->setupUi(this);
    InitVariable();
}

CertViewNormalForm::~CertViewNormalForm()
{
    delete ui;
}

void CertViewNormalForm::InitVariable()
{
    m_nResult = QG_OK;
    wipe(m_szLanguageFile);
    m_nCertIndex = 0;
    m_pCertInfo = nullptr;
    m_pContext = nullptr;
}

void CertViewNormalForm::InitSetControl()
{
    m_font.setPointSize(8);
    fillCaptions();
    if (!m_pCertInfo)
        return;
    fillValues();
    SetCertStatus(m_pCertInfo->nCertState);
    ui->listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ui->listView->setModel(new QStringListModel(usageRows(), this));
}

void CertViewNormalForm::fillCaptions()
{
    for (const auto& caption : captions)
        (ui->*caption.label)->setText(texts().ui(caption.key));
    ui->listView->setAccessibleName(ui->label_certusagetitle->text());
}

void CertViewNormalForm::fillValues()
{
    char validity[widgetTextLimit + 1];
    joinText(validity, {m_pCertInfo->szBefore, " ~ ", m_pCertInfo->szAfter});
    ui->label_subject->setText(fromEucKr(m_pCertInfo->szSubjectCN));
    ui->label_issuer->setText(fromEucKr(m_pCertInfo->szIssuerCN));
    ui->label_validity->setText(fromEucKr(validity));
    ui->label_usage->setText(fromEucKr(m_pCertInfo->szDivision));
    for (QLabel* label :
         {ui->label_subject, ui->label_issuer, ui->label_validity, ui->label_usage, ui->label_status})
        label->setFont(m_font);
}

QStringList CertViewNormalForm::usageRows()
{
    QStringList rows;
    for (const auto& usage : usages) {
        if (std::strstr(m_pCertInfo->szKeyUsage, usage.word))
            rows.append(texts().ui(usage.key));
    }
    return rows;
}

void CertViewNormalForm::SetCertStatus(int /*nState*/)
{
    const int state = m_pCertInfo->nCertState;
    if (state < CERTSTATE_VALID_1024 || state > CERTSTATE_EXPIRED)
        return ui->label_status->clear();
    const auto& shown = states[state % CERTSTATE_VALID]; // both families have the same three
    ui->label_certimage->setPixmap(QPixmap(QLatin1String(shown.image)));
    ui->label_status->setText(texts().ui(shown.key));
}

int CertViewNormalForm::VerifyCert()
{
    // A session that has not listed the drives refuses every verification with 10003, and nothing else in the
    // dialog lists them. Should this fail, the verification says so itself.
    char drives[] = "root";
    char anyFormat[] = "";
    CLP_SearchFileList(m_pContext, drives, anyFormat);
    char text[1024] = {};
    m_nResult = CLP_VerifyCert(m_pContext, m_nCertIndex, sizeof(text), text);
    if (m_nResult != QG_OK) {
        tellFailure(text);
        return m_nResult;
    }
    if (m_pCertInfo) {
        m_pCertInfo->nCertState = m_pCertInfo->nCertbit1024 ? CERTSTATE_VALID_1024 : CERTSTATE_VALID;
        SetCertStatus(m_pCertInfo->nCertState);
    }
    return m_nResult;
}

void CertViewNormalForm::tellFailure(const char* toolkitText)
{
    const std::string title = texts().messageBytes("MSG_CERTVERIFY_FAIL", widgetTextLimit);
    const std::string caption = texts().messageBytes("MSG_CERTVERIFY_DETAILMSG");
    std::string words = utf8Of(toolkitText);
    const std::size_t marker = words.find(MARKER);
    if (marker == std::string::npos) {
        ui->label_status->setText(fromEucKr(title.c_str()));
    } else {
        words.erase(0, marker + MARKER.size());
        // UTF-8 by now, and decoded as EUC-KR all the same: Korean words are garbled in this place, and right
        // in the message. Known so.
        ui->label_status->setText(fromEucKr(words.c_str()));
    }
    const std::string message = utf8Of(title.c_str()) + "\n(" + utf8Of(caption.c_str()) + " : " + words + ")";
    showMessage(this, QString(), QString::fromUtf8(message.substr(0, messageTextLimit).c_str()));
}
