#pragma once

#include <QFont>
#include <QStringList>
#include <QWidget>

#include "LanguagePack.h"
#include "Util.h"
#include "quillgate/certlist.h"

class Ui_CertViewNormalForm;

/**
 * The viewer's summary tab: holder, issuer, validity, purpose, key usage and state of one certificate.
 *
 * The creator sets index and record; CertViewMainDialog gives handle and language path. All are borrowed.
 */
class CertViewNormalForm : public QWidget
{
    Q_OBJECT

public:
    explicit CertViewNormalForm(QWidget* parent);
    ~CertViewNormalForm() override;

    /** Everything as before a certificate was set. */
    void InitVariable();

    /** Fills captions and values. */
    void InitSetControl();

    /**
     * Verifies the certificate, having listed the session's drives, which the list service asks for. Success
     * makes the record and the tab read as valid; a failure is told in the state's place and in a message
     * box. The code of CLP_VerifyCert. Blocks while roots are fetched.
     */
    int VerifyCert();

    /** Shows text and image of the record's nCertState, whatever the argument. */
    void SetCertStatus(int nState);

    int m_nResult;              ///< last result of CLP_VerifyCert
    char m_szLanguageFile[260]; ///< language pack
    int m_nCertIndex;           ///< position in the session's list
    CERTINFO* m_pCertInfo;      ///< the record shown
    void* m_pContext;           ///< session of the list service
    Ui_CertViewNormalForm* ui;
    QFont m_font;
    CUtil m_util;

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }
    void fillCaptions();
    void fillValues();
    QStringList usageRows();
    void tellFailure(const char* toolkitText);
};
