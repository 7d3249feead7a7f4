#pragma once

#include <QDialog>

#include "CertViewDetailForm.h"
#include "CertViewNormalForm.h"
#include "LanguagePack.h"
#include "Util.h"

class Ui_CertViewMainDialog;

/**
 * The viewer of one certificate: two tabs and a button that verifies it.
 *
 * The creator sets m_szLanguageFile, m_pContext, and index and record of both forms, calls InitSetControl and
 * exec. The record must live as long; only its nCertState is written, by a successful verification. There is
 * no accepted result.
 */
class CertViewMainDialog : public QDialog
{
    Q_OBJECT

public:
    explicit CertViewMainDialog(QWidget* parent);
    ~CertViewMainDialog() override;

    /** Clears the result and the language path. */
    void InitVariable();

    /** Fills shell and tabs with the texts of the language pack and the record's values. */
    void InitSetControl();

    CertViewNormalForm m_normalForm;
    CertViewDetailForm m_detailForm;
    int m_nResult;              ///< of the last verification
    void* m_pContext = nullptr; ///< session of the list service, borrowed
    char m_szLanguageFile[260]; ///< language pack
    Ui_CertViewMainDialog* ui;
    CUtil m_util;

public slots:
    void on_pushButton_verify_clicked();
    void on_pushButton_ok_clicked();

protected:
    void keyPressEvent(QKeyEvent* event) override;

    /** Does nothing: a press beside the widgets neither moves the focus nor goes on to the parent. */
    void mousePressEvent(QMouseEvent* event) override;

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }
    template <class Form>
    void setUpForm(Form& form);
};
