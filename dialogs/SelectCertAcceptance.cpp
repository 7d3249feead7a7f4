/* The lower half of SelectCertDialog: password, keys and the outcome for the host. */

#include <QKeyEvent>
#include <QTextCodec>
#include <strings.h>

#include "BoundedText.h"
#include "Doors.h"
#include "PasswordEdit.h"
#include "Secret.h"
#include "SelectCertDialog.h"
#include "ServiceBuffer.h"
#include "UiSelectCertDialog.h"

namespace {

bool isMemory(int media)
{
    return media == MEDIA_SERVICE_MEMORY || media == MEDIA_MEMORY;
}

bool isDisk(int media)
{
    return media == MEDIA_HARDDISK || media == MEDIA_REMOVABLE;
}

bool isToken(int media)
{
    return media == MEDIA_SMARTCARD || media == MEDIA_PKCS11;
}

/** Copies a byte field with its length when there is one; both fields must hold it. */
template <std::size_t N, std::size_t M>
void copyBytes(char (&target)[N], int& targetLength, const char (&source)[M], int length)
{
    if (length <= 0 || static_cast<std::size_t>(length) > std::min(N, M))
        return;
    std::memcpy(target, source, static_cast<std::size_t>(length));
    targetLength = length;
}

/** Copies text that the host gets in UTF-8. */
template <std::size_t N>
void copyUtf8(char (&target)[N], const char* eucKr)
{
    copyText(target, fromEucKr(eucKr).toUtf8().constData());
}

/**
 * Copies what does not depend on the direction: the list's record into the outcome, and the outcome into the
 * host's record, share these fields and the conditions on them.
 */
template <class Source>
void copyOutcome(SELCERTINFO& target, const Source& source, int media)
{
    target.nMediaType = media;
    copyBytes(target.szSignCert, target.nSignCertLen, source.szSignCert, source.nSignCertLen);
    copyBytes(target.szSignKey, target.nSignKeyLen, source.szSignKey, source.nSignKeyLen);
    copyBytes(target.szEncSignKey, target.nEncSignKeyLen, source.szEncSignKey, source.nEncSignKeyLen);
    copyBytes(target.szKmCert, target.nKmCertLen, source.szKmCert, source.nKmCertLen);
    copyBytes(target.szKmKey, target.nKmKeyLen, source.szKmKey, source.nKmKeyLen);
    copyBytes(target.szEncKmKey, target.nEncKmKeyLen, source.szEncKmKey, source.nEncKmKeyLen);
    copyText(target.szSubjectCN, source.szSubjectCN);
    copyText(target.szIssuerDN, source.szIssuerDN);
    copyText(target.szIssuerCN, source.szIssuerCN);
    copyBytes(target.szKeyRandom, target.nKeyRandomLen, source.szKeyRandom, source.nKeyRandomLen);
    copyText(target.szSerialNumber, source.szSerialNumber);
    copyText(target.szBeforeDay, source.szBeforeDay);
    copyText(target.szAfterDay, source.szAfterDay);
    if (isDisk(media)) {
        copyText(target.szSignCertPath, source.szSignCertPath);
        if (*source.szSignCertPath)
            copyText(target.szSignKeyPath, source.szSignKeyPath);
        copyText(target.szKmCertPath, source.szKmCertPath);
        copyText(target.szKmKeyPath, source.szKmKeyPath);
    }
    if (isToken(media))
        copyText(target.szPinNumber, source.szPinNumber);
    if (isToken(media) || media == MEDIA_USIM)
        copyText(target.szLibPath, source.szLibPath);
}

/** True when a plain key fits the field of the host's record. A key is handed over whole or not at all. */
bool fitsOutcome(int keyLength)
{
    return keyLength <= static_cast<int>(sizeof(SELCERTINFO::szSignKey));
}

} // namespace

void SelectCertDialog::blamePassword(const char* messageKey)
{
    tell(messageKey);
    ui->lineEdit_password->setFocus();
}

void SelectCertDialog::on_pushButton_ok_clicked()
{
    if (ui->lineEdit_password->text().isEmpty())
        return blamePassword("MSG_SELECTCERT_INPUTPASSWORD");
    char password[1024] = {};
    const ScopedWipe<char[1024]> wiper(password);
    {
        const WipedBytes bytes(ui->lineEdit_password->localBytes());
        if (bytes.size() >= static_cast<int>(sizeof(password)))
            return blamePassword("MSG_SELECTCERT_PASSWORD_MAX");
        copyText(password, bytes.data());
    }
    // Letter case does not count here, which users of PFX files have come to rely on.
    if (isMemory(m_nMediaType) && strcasecmp(password, m_szPFXPassword) != 0)
        return blamePassword("MSG_SELECTCERT_PASSWORD_DIFFERENT");
    const int row = selectedRow();
    if (row < 0)
        return tell("MSG_SELECTCERT_NOTSELECTCERT");
    m_nRv = SetSelectCertInfo(row, password);
    if (m_nRv != QG_OK)
        return;
    ui->lineEdit_password->wipeAndClear();
    m_nDlgResult = 1;
    accept();
}

void SelectCertDialog::on_pushButton_cancel_clicked()
{
    ui->lineEdit_password->wipeAndClear();
    m_nDlgResult = 0;
    reject();
}

/** Keys other than these two are dropped, the keypad's Enter among them, and never reach QDialog. */
void SelectCertDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        on_pushButton_cancel_clicked();
    else if (event->key() == Qt::Key_Return)
        on_pushButton_ok_clicked();
}

int SelectCertDialog::SetSelectCertInfo(int nIndex, char* pszPassword)
{
    m_nRv = isListed(nIndex) ? QG_OK : QG_BAD_ARGUMENT;
    KeyBuffers keys(m_pContext);
    if (m_nRv == QG_OK && isDisk(m_nMediaType))
        m_nRv = openKeys(nIndex, pszPassword, keys);
    if (m_nRv != QG_OK)
        return m_nRv;
    if (!fitsOutcome(m_pCertList[nIndex].nSignKeyLen) || !fitsOutcome(m_pCertList[nIndex].nKmKeyLen))
        return m_nRv = refuseKey();
    takeKeyRandom(nIndex, pszPassword, keys);
    CopySelectCertInfo(nIndex, pszPassword);
    return m_nRv;
}

/** Decrypts the keys of a row into the list, and says why that failed where the user can help it. */
int SelectCertDialog::openKeys(int nIndex, char* pszPassword, KeyBuffers& keys)
{
    ServiceBuffer& signKey = keys.signKey;
    ServiceBuffer& kmKey = keys.kmKey;
    const int result = CLP_DecryptPriKeyData(m_pContext, nIndex, pszPassword, &signKey.data, &signKey.length,
                                             &kmKey.data, &kmKey.length);
    if (result == CLPERR_WRONG_PASSWORD)
        blamePassword("MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR");
    if (result == CLPERR_NO_PRIVATE_KEY)
        return refuseKey();
    if (result != QG_OK)
        return result;
    if (!signKey.holds()) {
        tell("DLG_CERTPASSWORD_WRONG_PKCS11");
        return CLPERR_KEY_DECRYPT;
    }
    if (!fitsOutcome(signKey.length) || !fitsOutcome(kmKey.length))
        return refuseKey();
    CERTINFO& cert = m_pCertList[nIndex];
    std::memcpy(cert.szSignKey, signKey.data, static_cast<std::size_t>(signKey.length));
    cert.nSignKeyLen = signKey.length;
    if (kmKey.holds()) {
        std::memcpy(cert.szKmKey, kmKey.data, static_cast<std::size_t>(kmKey.length));
        cert.nKmKeyLen = kmKey.length;
    }
    return QG_OK;
}

int SelectCertDialog::refuseKey()
{
    tell("MSG_SELECTCERT_GETPRIKEY");
    return CLPERR_NO_PRIVATE_KEY;
}

/** Puts the random value of the key into the outcome. A key without one is as good. */
void SelectCertDialog::takeKeyRandom(int nIndex, char* pszPassword, KeyBuffers& keys)
{
    ServiceBuffer& random = keys.random;
    CLP_GetPriKeyRandom(m_pContext, nIndex, pszPassword, &random.data, &random.length);
    if (!random.holds() || random.length > static_cast<int>(sizeof(m_stSelCertInfo.szKeyRandom)))
        return;
    std::memcpy(m_stSelCertInfo.szKeyRandom, random.data, static_cast<std::size_t>(random.length));
    m_stSelCertInfo.nKeyRandomLen = random.length;
}

void SelectCertDialog::CopySelectCertInfo(int nIndex, char*)
{
    if (!isListed(nIndex))
        return;
    const CERTINFO& cert = m_pCertList[nIndex];
    copyOutcome(m_stSelCertInfo, cert, m_nMediaType);
    copyText(m_stSelCertInfo.szSubjectDN, cert.szSubjectDN);
    copyText(m_stSelCertInfo.szCertPolicy, cert.szCertPolicy);
}

void SelectCertDialog::GetSelectCertinfo(tagSELCERTINFO* pOut)
{
    if (!pOut)
        return;
    *pOut = {};
    copyOutcome(*pOut, m_stSelCertInfo, m_stSelCertInfo.nMediaType);
    copyUtf8(pOut->szSubjectDN, m_stSelCertInfo.szSubjectDN);
    copyUtf8(pOut->szCertPolicy, m_stSelCertInfo.szCertPolicy);
}
