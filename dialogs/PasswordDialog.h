#pragma once

#include <QDialog>

#include "LanguagePack.h"
#include "Util.h"

class Ui_PasswordDialog;

/**
 * Asks for the password of a PFX file.
 *
 * The creator sets m_nLanguage and m_szWorkDir, calls InitSetControl and exec, and reads m_szPassword when
 * exec returned 1. The destructor wipes it.
 */
class PasswordDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PasswordDialog(QWidget* parent);
    ~PasswordDialog() override;

    /** Fills the widgets with the texts of the language pack. */
    void InitSetControl();

    int m_nLanguage = 1;          ///< 1 Korean, any other English
    char m_szWorkDir[1024] = {};  ///< folder of the language pack
    char m_szPassword[1024] = {}; ///< local encoding; empty until the user confirms

private:
    Ui_PasswordDialog* ui;
    CUtil m_util;
    char m_szLanguageFile[260] = {};

public slots:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }

    /** Says what is wrong with the password; what is typed then goes to it again. */
    void blamePassword(const char* messageKey);
};
