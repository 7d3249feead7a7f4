#pragma once

#include <QDialog>
#include <QFont>
#include <QModelIndex>
#include <QStandardItemModel>

#include "LanguagePack.h"
#include "Util.h"
#include "quillgate/certlist.h"
#include "quillgate/dialogs.h"

class RemoveableDialog;
class Ui_SelectCertDialog;
struct KeyBuffers;
struct PairBuffers;

/**
 * The window in which the user picks a certificate and types its password.
 *
 * Order of calls: constructor, SetInitOption, InitSetControl, Initalize, SetInitMediaCert, exec,
 * GetSelectCertinfo. On the shared dialog of ShowUserCert they run once a selection, on the same object.
 * Everything here belongs to the thread of the QApplication. The object takes about 340 KB.
 *
 * The members are open to the exported functions, which read the outcome.
 */
class SelectCertDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SelectCertDialog(QWidget* parent);

    /** Ends the session and wipes passwords, keys and the outcome. */
    ~SelectCertDialog() override;

    /** Everything as before the first selection; wipes secrets. Does not free m_pCertList. */
    void InitVariable();

    /**
     * Takes over what the host wants. An empty text keeps the value of the earlier selection, and the hiding
     * of expired certificates is never switched off again: hosts rely on both. 0, or 10004 for a null
     * argument, in which case nothing is taken over.
     */
    int SetInitOption(tagINITOPT* pInit, tagLOADSELECTCERTOPTION* pLoad, tagEXTRAOPTION* pExtra);

    /** Fills the widgets with the texts of the language pack, the media images and the logo. */
    void InitSetControl();

    /** Opens the session. The code of CLP_Initalize, else that of CLP_SetType. */
    int Initalize();

    /**
     * Gives a media button its image and state. nMode 0 normal and disabled, 1 normal and enabled, 2 pressed
     * and enabled; any other pressed and disabled. nMediaBit is 1, 2, 4, 8, 16 or 32, others do nothing;
     * nLanguage 1 is Korean.
     */
    void SetButtonImage(int nMode, int nMediaBit, int nLanguage);

    /** Shows the logo that the options ask for, else the default one. */
    void SetLogoImage();

    /** Shows a BMP image, given as Base64 text, as the logo. False when it cannot be decoded. */
    bool LoadDataforSetPixmap(char* pszData, int nLen);

    /** Loads the list of medium 1 or 2 into the table. The code of the failing call, or 30006. */
    int LoadCertDisk(int nMediaType, int nSubIndex);

    /** Copies a record of the session to a place of m_pCertList, without the encrypted keys. */
    void CopyCertInfoList(int nIndex, tagCERTINFO* pInfo);

    /** Appends the list to the table. */
    void SetItemTableView();

    /** Locks or frees the password field and says that a certificate has expired, as the options ask. */
    void SetExpiredCert(int nIndex);

    /** The start on medium 6, or on the hard disk for any other value. */
    void SetInitMediaCert(int nMediaType);

    /**
     * Hands certificates and plain keys to the session and loads them into m_pCertList, not into the table.
     * Lengths in bytes; the second pair may be null and 0. The code of the failing call, or 30006.
     */
    int LoadMemoryCert(char* pszSignCert, int nSignCertLen, char* pszSignKey, int nSignKeyLen,
                       char* pszKmCert, int nKmCertLen, char* pszKmKey, int nKmKeyLen);

    /**
     * Opens the keys of a row with the password and builds the outcome. Codes of CLP_DecryptPriKeyData; 30012
     * for a key that does not fit the outcome, 30016 when no key came, 10004 for a row outside the list.
     */
    int SetSelectCertInfo(int nIndex, char* pszPassword);

    /** Fills m_stSelCertInfo from the list. A field without a source keeps the value of an earlier attempt.
     */
    void CopySelectCertInfo(int nIndex, char* pszPassword);

    /** Clears the host's record and fills it with the outcome. Null is passed over. */
    void GetSelectCertinfo(tagSELCERTINFO* pOut);

    /** Imports a PFX file and loads its certificates. 0, or the code of the import or of the load. */
    int LoadCertPKCS12(char* pszFilePath, char* pszPassword);

    int m_nRv;        ///< last result code
    int m_nExitReady; ///< 1 until the first selection of ShowUserCert
    int m_nMediaType; ///< MEDIA_... that the list was asked from
    int m_nDlgResult; ///< -1 no outcome yet, 0 cancelled, 1 accepted
    Ui_SelectCertDialog* ui;
    QStandardItemModel m_certModel;
    QFont m_font;
    void* m_pContext; ///< session of the list service
    CUtil m_util;
    LOADOPT m_stLoadOpt = {};
    LOADCERTOPT m_stLoadCertOpt;
    LOADSELECTCERTOPTION m_stSelectOpt;
    EXTRAOPTION m_stExtraOpt = {};
    SELCERTINFO m_stSelCertInfo;   ///< the outcome, kept for the host's later calls on the shared dialog
    CERTINFO* m_pCertList;         ///< m_nCertCount records, see CertInfoList.h; null when there are none
    int m_nLibAPIType;             ///< toolkit that decodes the logo
    int m_nLanguage;               ///< 1 Korean, any other English
    char m_szLangFolder[260] = {}; ///< stays empty, see on_pushButton_remove_clicked
    char m_szLanguageFile[260];
    bool m_bMemoryCert;
    int m_nCertCount;
    char m_szErrInfo[1024];
    char m_szPFXPassword[1024];

public slots:
    void on_pushButton_hdd_clicked();
    void on_pushButton_remove_clicked();
    void on_pushButton_ok_clicked();
    void on_pushButton_find_clicked();
    void on_pushButton_cancel_clicked();
    void on_pushButton_view_clicked();
    void on_tableView_certlist_doubleClicked(const QModelIndex& index);
    void on_tableView_certlist_clicked(const QModelIndex& index);

protected slots:
    void keyPressEvent(QKeyEvent* event) override;

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }

    /** Shows a message under the dialog's own title. */
    void tell(const char* messageKey);

    /** Shows a message under a title of its own; both are language keys. */
    void tell(const char* messageKey, const char* titleKey, QWidget* parent);

    /** Says what is wrong with the password; what is typed then goes to it again. */
    void blamePassword(const char* messageKey);

    /** Puts a message into the line below the password. */
    void prompt(const char* messageKey);

    /** First selected row of the table; -1 without one. */
    int selectedRow() const;

    bool isListed(int nIndex) const { return m_pCertList && nIndex >= 0 && nIndex < m_nCertCount; }
    void setUpTable();
    void nameForReaders();
    int loadDisk(int nMediaType, int nSubIndex);
    int fillCertList();
    void freeCertList();
    void pickDrive(RemoveableDialog& drives);
    int openKeys(int nIndex, char* pszPassword, KeyBuffers& keys);
    int refuseKey();
    void takeKeyRandom(int nIndex, char* pszPassword, KeyBuffers& keys);
    int showImported(PairBuffers& pair);
    void reportImport(int result, const char* password);
};
