/* SelectCertDialog: certificates out of a PFX file. */

#include <QTableView>

#include "BoundedText.h"
#include "Doors.h"
#include "PasswordDialog.h"
#include "PasswordEdit.h"
#include "Secret.h"
#include "SelectCertDialog.h"
#include "ServiceBuffer.h"
#include "UiSelectCertDialog.h"

namespace {

/** Answer of the import when the user, or the service, called it off. */
constexpr int importCancelled = -1;

/** Bytes of a PFX file's path, terminator included. */
constexpr int pathSize = 260;

} // namespace

void SelectCertDialog::on_pushButton_find_clicked()
{
    const QString file =
        askForFile(this, tr("Open File..."), QStringLiteral("/"), tr("PFX(*.PFX *.pfx);;p12(*.P12 *.p12)"));
    if (file.isEmpty())
        return;
    QByteArray path = file.toLocal8Bit();
    if (path.size() >= pathSize)
        return tell("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT", this);
    PasswordDialog asked(nullptr);
    asked.m_nLanguage = m_nLanguage;
    copyText(asked.m_szWorkDir, m_szLangFolder);
    asked.InitSetControl();
    if (asked.exec() != QDialog::Accepted)
        return;
    char password[1024] = {};
    const ScopedWipe<char[1024]> wiper(password);
    copyText(password, asked.m_szPassword);
    m_nRv = LoadCertPKCS12(path.data(), password);
    reportImport(m_nRv, password);
}

void SelectCertDialog::reportImport(int result, const char* password)
{
    switch (result) {
    case QG_OK:
        prompt("MSG_SELECTCERT_SELCERTINPUTPWD");
        std::memcpy(m_szPFXPassword, password, sizeof(m_szPFXPassword));
        return;
    case CLPERR_WRONG_PASSWORD:
        return tell("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    case importCancelled:
        return tell("MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT", this);
    default:
        return tell("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT", "MSG_MANAGEUSER_ALERT_TITLE_IMPORT", this);
    }
}

int SelectCertDialog::LoadCertPKCS12(char* pszFilePath, char* pszPassword)
{
    PairBuffers pair(m_pContext);
    m_nRv = CLP_ImportPFX(m_pContext, pszFilePath, pszPassword, &pair.signCert.data, &pair.signCert.length,
                          &pair.signKey.data, &pair.signKey.length, &pair.kmCert.data, &pair.kmCert.length,
                          &pair.kmKey.data, &pair.kmKey.length);
    return m_nRv == QG_OK ? showImported(pair) : m_nRv;
}

/** Shows the imported certificates in place of the list. An import without a pair counts as a success. */
int SelectCertDialog::showImported(PairBuffers& pair)
{
    if (!pair.signCert.holds() || !pair.signKey.holds()) {
        tell("MSG_SELECTCERT_NOCERT_SIGN");
        return m_nRv;
    }
    m_certModel.removeRows(0, m_certModel.rowCount());
    freeCertList();
    m_nRv = LoadMemoryCert(pair.signCert.data, pair.signCert.length, pair.signKey.data, pair.signKey.length,
                           pair.kmCert.data, pair.kmCert.length, pair.kmKey.data, pair.kmKey.length);
    if (m_nRv != QG_OK) {
        tell(m_nRv == CLPERR_NOTEXISTCERT ? "MSG_SELECTCERT_NOCERT" : "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT");
        return m_nRv;
    }
    SetItemTableView();
    ui->tableView_certlist->selectRow(0);
    return m_nRv;
}
