/* The upper half of SelectCertDialog: media buttons, loading of the list, the table. */

#include <QSignalBlocker>
#include <QTableView>
#include <utility>

#include "BoundedText.h"
#include "CertInfoCopy.h"
#include "CertInfoList.h"
#include "Doors.h"
#include "PasswordEdit.h"
#include "RemoveableDialog.h"
#include "Secret.h"
#include "SelectCertDialog.h"
#include "UiSelectCertDialog.h"

namespace {

bool isExpired(const CERTINFO& cert)
{
    return cert.nCertState == CERTSTATE_EXPIRED || cert.nCertState == CERTSTATE_EXPIRED_1024;
}

/**
 * Puts a value in the place of "%s" and a percent sign in that of "%%", as printf would. The pattern comes
 * out of a file, so nothing else in it is followed, nor a second "%s". At most 1,023 bytes.
 */
std::string fillPattern(const std::string& pattern, const char* value)
{
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const std::string_view mark = std::string_view(pattern).substr(at, 2);
        if (mark == "%s" && value)
            text += std::exchange(value, nullptr);
        else if (mark == "%%")
            text += '%';
        else {
            text += pattern[at];
            continue;
        }
        ++at;
    }
    return text.substr(0, messageTextLimit);
}

} // namespace

int SelectCertDialog::LoadCertDisk(int nMediaType, int nSubIndex)
{
    m_nRv = loadDisk(nMediaType, nSubIndex);
    if (m_nRv != QG_OK)
        joinText(m_szErrInfo, {"LoadCertDisk() m_nRv : ", std::to_string(m_nRv)});
    return m_nRv;
}

/** Loads the list of a disk medium; the former one is gone whatever comes of it. */
int SelectCertDialog::loadDisk(int nMediaType, int nSubIndex)
{
    m_certModel.removeRows(0, m_certModel.rowCount());
    freeCertList();
    int result = CLP_SetMediaType(m_pContext, nMediaType, nSubIndex);
    if (result != QG_OK)
        return result;
    result = CLP_LoadCertList(m_pContext);
    if (result == QG_OK) {
        m_nCertCount = CLP_GetCertCount(m_pContext);
        if (m_nCertCount == 0)
            result = CLPERR_NOTEXISTCERT;
    }
    if (result == CLPERR_NOTEXISTCERT)
        prompt("MSG_SELECTCERT_NOCERT");
    if (result != QG_OK)
        return result;

    result = fillCertList();
    SetItemTableView();
    ui->tableView_certlist->selectRow(0);
    return result;
}

/**
 * Fills a new list from the session. A record that cannot be read stays zero, so that its row is blank, and
 * the result is that of the last record: rows and indexes of the session remain the same numbers.
 */
int SelectCertDialog::fillCertList()
{
    m_pCertList = makeCertInfoList(m_nCertCount).release();
    if (!m_pCertList) {
        m_nCertCount = 0;
        return QG_NO_MEMORY;
    }
    int result = QG_OK;
    CERTINFO info;
    const ScopedWipe<CERTINFO> wiper(info);
    for (int index = 0; index < m_nCertCount; ++index) {
        info = {};
        result = CLP_GetCertInfo(m_pContext, index, &info);
        if (result == QG_OK)
            CopyCertInfoList(index, &info);
    }
    return result;
}

/** Wipes the keys in the list and frees it. */
void SelectCertDialog::freeCertList()
{
    CertInfoListDeleter{std::exchange(m_nCertCount, 0)}(std::exchange(m_pCertList, nullptr));
}

void SelectCertDialog::CopyCertInfoList(int nIndex, tagCERTINFO* pInfo)
{
    using namespace certinfo;
    if (!pInfo || !isListed(nIndex))
        return;
    CERTINFO& target = m_pCertList[nIndex];
    copyPairs(target, *pInfo);
    copyTextsToCrlDp(target, *pInfo);
    copyTexts<&CERTINFO::szCertPolicy>(target, *pInfo);
    copyTextsFromPolicyIds(target, *pInfo);
    copyKeyRandom(target, *pInfo);
    copyExtensions(target, *pInfo);
    copyStates(target, *pInfo);
    copyTexts<&CERTINFO::szDriveInfo, &CERTINFO::szCertPassword>(target, *pInfo);
}

void SelectCertDialog::SetItemTableView()
{
    constexpr char(CERTINFO::*furtherColumns[])[1024] = {&CERTINFO::szIssuerName, &CERTINFO::szDivision,
                                                         &CERTINFO::szAfterDay};
    const int firstRow = m_certModel.rowCount();
    QList<QStandardItem*> names;
    for (int index = 0; index < m_nCertCount; ++index)
        names.append(new QStandardItem(fromEucKr(m_pCertList[index].szSubjectCN)));
    m_certModel.invisibleRootItem()->appendRows(names);

    // The rows have been announced all at once; announcing each cell as well would cost more than the list.
    const QSignalBlocker quiet(m_certModel);
    for (int index = 0; index < m_nCertCount; ++index) {
        int column = 1;
        for (auto field : furtherColumns)
            m_certModel.setItem(firstRow + index, column++,
                                new QStandardItem(fromEucKr(m_pCertList[index].*field)));
    }
}

void SelectCertDialog::SetExpiredCert(int nIndex)
{
    if (!isListed(nIndex))
        return;
    const CERTINFO& cert = m_pCertList[nIndex];
    const bool expired = isExpired(cert);
    if (m_stSelectOpt.nExpiredOption & EXPIRED_LOCK_PASSWORD)
        ui->lineEdit_password->setEnabled(!expired);
    if (!expired || !(m_stSelectOpt.nNoticeOption & NOTICE_EXPIRED))
        return;
    const std::string notice = fillPattern(texts().messageBytes("MSG_SELECTCERT_EXIRED"), cert.szAfterDay);
    showMessage(this, texts().ui("DLG_SELCERT_CAPITON", messageTextLimit), fromEucKr(notice.c_str()));
}

void SelectCertDialog::SetInitMediaCert(int nMediaType)
{
    // The table stays as it is on medium 6: hosts' own certificates cannot be picked in it.
    if (nMediaType == MEDIA_MEMORY)
        LoadMemoryCert(m_stSelectOpt.szMemSignCert, m_stSelectOpt.nMemSignCertLen, m_stSelectOpt.szMemSignKey,
                       m_stSelectOpt.nMemSignKeyLen, nullptr, 0, nullptr, 0);
    else
        on_pushButton_hdd_clicked();
}

int SelectCertDialog::LoadMemoryCert(char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                                     char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen)
{
    m_nMediaType = MEDIA_MEMORY;
    m_nRv = CLP_SetMemoryCert(m_pContext, pszSignCert, nSignCertLen, pszSignKey, nSignKeyLen, pszKmCert,
                              nKmCertLen, pszKmKey, nKmKeyLen);
    if (m_nRv == QG_OK)
        m_nRv = CLP_SetMediaType(m_pContext, MEDIA_MEMORY, 0);
    if (m_nRv == QG_OK)
        m_nRv = CLP_LoadCertList(m_pContext);
    if (m_nRv != QG_OK)
        return m_nRv;
    freeCertList();
    m_nCertCount = CLP_GetCertCount(m_pContext);
    return m_nRv = m_nCertCount == 0 ? static_cast<int>(CLPERR_NOTEXISTCERT) : fillCertList();
}

void SelectCertDialog::on_pushButton_hdd_clicked()
{
    m_nMediaType = MEDIA_HARDDISK;
    SetButtonImage(2, 1, m_nLanguage);
    m_nRv = LoadCertDisk(MEDIA_HARDDISK, 0);
    if (m_nRv != QG_OK)
        return;
    prompt("MSG_SELECTCERT_SELCERTINPUTPWD");
    SetExpiredCert(0);
}

void SelectCertDialog::on_pushButton_remove_clicked()
{
    RemoveableDialog drives(nullptr);
    drives.m_nLanguage = m_nLanguage;
    // The folder is empty, so the small dialog looks for its language pack in "/" and is blank where there is
    // none. Hosts that want it lettered have put a pack there.
    copyText(drives.m_szWorkDir, m_szLangFolder);
    drives.m_pContext = m_pContext;
    drives.InitSetControl();
    if (drives.GetRemovableDisk() == QG_OK)
        return pickDrive(drives);
    m_nRv = CLPERR_NO_REMOVABLE_DRIVE;
    tell("MSG_SELECTCERT_REMDRIVE_GETINFOFAIL", "DLG_REMOVABLE_CAPTION", this);
}

/** Lets the user pick a drive. The button that led here is locked afterwards, until the next selection. */
void SelectCertDialog::pickDrive(RemoveableDialog& drives)
{
    m_nMediaType = MEDIA_REMOVABLE;
    if (drives.exec() == QDialog::Accepted) {
        SetButtonImage(1, 1, m_nLanguage);
        SetButtonImage(2, 2, m_nLanguage);
        m_nRv = LoadCertDisk(MEDIA_REMOVABLE, drives.m_nSelectIndex);
    }
    SetButtonImage(1, 1, m_nLanguage);
    SetButtonImage(0, 2, m_nLanguage);
}

void SelectCertDialog::on_tableView_certlist_clicked(const QModelIndex&)
{
    const int row = selectedRow();
    if (row < 0)
        return tell("MSG_SELECTCERT_NOTSELECTCERT");
    SetExpiredCert(row);
}
