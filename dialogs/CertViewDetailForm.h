#pragma once

#include <QItemSelection>
#include <QModelIndex>
#include <QStandardItemModel>
#include <QWidget>

#include "LanguagePack.h"
#include "Util.h"
#include "quillgate/certlist.h"

class QTableView;
class QTextEdit;

/**
 * The viewer's detail tab: sixteen fields of one certificate, and below them the whole value of the chosen
 * one, for reading and copying.
 *
 * The creator sets index and record; CertViewMainDialog gives handle and language path. All are borrowed.
 */
class CertViewDetailForm : public QWidget
{
    Q_OBJECT

public:
    explicit CertViewDetailForm(QWidget* parent);

    /** Everything as before a certificate was set. */
    void InitVariable();

    /** Fills the table. Called once. */
    void InitSetControl();

    /** The two widgets, which are children of the form. */
    struct Widgets
    {
        QTableView* tableView_certinfolist;
        QTextEdit* textEdit_certinfo;
    };

    int m_nResult;
    char m_szLanguageFile[260]; ///< language pack
    int m_nCertIndex;           ///< position in the session's list
    CERTINFO* m_pCertInfo;      ///< the record shown
    void* m_pContext;           ///< session of the list service
    Widgets ui;
    QStandardItemModel m_model;
    CUtil m_util;

public slots:
    /** Shows the value of the chosen row; that of the key's algorithm shows the key itself. */
    void on_tableViewSelection(const QItemSelection& selected, const QItemSelection& deselected);

    /** The same for a click on a row that is chosen already. */
    void on_tableView_certinfolist_clicked(const QModelIndex& index);

private:
    LanguagePack texts() { return {m_util, m_szLanguageFile}; }
    void placeWidgets();
    void setUpTable();
    void fillRows();
    void fillLocation(int row);
};
