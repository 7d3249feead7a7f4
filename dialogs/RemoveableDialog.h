#pragma once

#include <QDialog>
#include <QModelIndex>
#include <QStandardItemModel>

#include "LanguagePack.h"
#include "Util.h"
#include "quillgate/certlist.h"

class Ui_RemoveableDialog;

/**
 * Lists the removable drives.
 *
 * The creator sets m_nLanguage, m_szWorkDir and m_pContext, calls InitSetControl, GetRemovableDisk and exec,
 * and reads m_nSelectIndex when exec returned 1.
 */
class RemoveableDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RemoveableDialog(QWidget* parent);
    ~RemoveableDialog() override;

    /** Fills the widgets with the texts of the language pack. */
    void InitSetControl();

    /** Reads the drives and lists them. 0; 30008 when there are none or they cannot be read; 10003. */
    int GetRemovableDisk();

    /** Shows the drives that were read. */
    void SetListItem();

    int m_nRv = QG_OK;              ///< last result code
    int m_nLanguage = 0;            ///< 1 Korean, any other English
    char m_szWorkDir[1024] = {};    ///< folder of the language pack
    int m_nSelectIndex = 0;         ///< chosen row, not the drive's own number; 0 until the user confirms
    char m_szSelectDrive[260] = {}; ///< mount path of that row
    void* m_pContext = nullptr;     ///< session of the creator
    Ui_RemoveableDialog* ui;
    int m_nMsgResult = 0; ///< answer to the last message box
    QStandardItemModel m_model;
    CUtil m_util;
    DRIVEINFO* m_pDriveInfo = nullptr; ///< m_nDriveCount records, new[]
    int m_nDriveCount = 0;
    char m_szLanguageFile[260] = {};

public slots:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();
    void on_tableView_remobable_doubleClicked(const QModelIndex& index);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }
    int readDrives();
};
