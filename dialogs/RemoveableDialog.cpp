#include "RemoveableDialog.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <new>

#include "BoundedText.h"
#include "Doors.h"
#include "Secret.h"
#include "UiBuilder.h"
#include "UiRemoveableDialog.h"

RemoveableDialog::RemoveableDialog(QWidget* parent) : QDialog(parent), ui(new Ui_RemoveableDialog)
{
    ui->setupUi(this);
    ui->label_text->setFocus(Qt::OtherFocusReason);
}

RemoveableDialog::~RemoveableDialog()
{
    delete ui;
    delete[] m_pDriveInfo;
    wipe(m_szWorkDir);
    wipe(m_szSelectDrive);
    wipe(m_szLanguageFile);
}

void RemoveableDialog::InitSetControl()
{
    makeLanguagePath(m_szLanguageFile, m_szWorkDir, m_nLanguage);
    const LanguagePack pack = texts();
    setWindowTitle(pack.ui("DLG_REMOVABLE_CAPTION"));
    ui->label_text->setText(pack.ui("DLG_REMOVABLE_TITLE"));
    ui->tableView_remobable->setAccessibleName(ui->label_text->text());
    ui->pushButton_ok->setText(pack.ui("DLG_BUTTON_OK"));
    ui->pushButton_cancel->setText(pack.ui("DLG_BUTTON_CANCEL"));
}

int RemoveableDialog::GetRemovableDisk()
{
    m_nRv = readDrives();
    if (m_nRv == QG_OK)
        SetListItem();
    return m_nRv;
}

/** Fills m_pDriveInfo. No drive at all is a failure too. */
int RemoveableDialog::readDrives()
{
    m_model.removeRows(0, m_model.rowCount()); // rows and records are the same numbers, also the second time
    if (CLP_GetRemDriveCount(m_pContext, &m_nDriveCount) != QG_OK || m_nDriveCount <= 0)
        return CLPERR_NO_REMOVABLE_DRIVE;
    delete[] m_pDriveInfo;
    m_pDriveInfo = new (std::nothrow) DRIVEINFO[static_cast<std::size_t>(m_nDriveCount)]();
    if (!m_pDriveInfo)
        return QG_NO_MEMORY;
    const bool read = CLP_GetRemDrive(m_pContext, m_pDriveInfo) == QG_OK;
    return read ? QG_OK : CLPERR_NO_REMOVABLE_DRIVE;
}

void RemoveableDialog::SetListItem()
{
    QTableView* table = ui->tableView_remobable;
    table->setFont(pointFont(8));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_model.setHorizontalHeaderItem(0, new QStandardItem(texts().ui("DLG_REMOVABLE_LIST")));
    table->setModel(&m_model);
    table->setColumnWidth(0, 284);
    // Mount paths are taken as they stand, one character a byte, and not as EUC-KR like all else.
    for (int drive = 0; drive < m_nDriveCount; ++drive)
        m_model.setItem(drive, new QStandardItem(QString::fromLatin1(m_pDriveInfo[drive].szTotalName)));
}

void RemoveableDialog::on_pushButton_ok_clicked()
{
    const QItemSelectionModel* selection = ui->tableView_remobable->selectionModel();
    if (!selection || !selection->hasSelection()) {
        const LanguagePack pack = texts();
        m_nMsgResult = showMessage(this, pack.ui("DLG_REMOVABLE_CAPTION"), pack.ui("DLG_REMOVABLE_TITLE"));
        return;
    }
    m_nSelectIndex = selection->selectedIndexes().first().row();
    copyText(m_szSelectDrive, m_pDriveInfo[m_nSelectIndex].szDrive);
    accept();
}

void RemoveableDialog::on_pushButton_cancel_clicked()
{
    reject();
}

void RemoveableDialog::on_tableView_remobable_doubleClicked(const QModelIndex&)
{
    on_pushButton_ok_clicked();
}

/** Keys other than these two are dropped, the keypad's Enter among them. */
void RemoveableDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        on_pushButton_cancel_clicked();
    else if (event->key() == Qt::Key_Return)
        on_pushButton_ok_clicked();
}
