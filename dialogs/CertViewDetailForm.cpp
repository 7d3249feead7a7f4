#include "CertViewDetailForm.h"

#include <QTableView>
#include <QTextEdit>
#include <string>

#include "BoundedText.h"
#include "Secret.h"
#include "UiBuilder.h"

namespace {

enum
{
    KEY_ROW = 7,
    LOCATION_ROW = 15
};

template <auto Field>
std::string textOf(const CERTINFO& cert)
{
    return cert.*Field;
}

std::string keyText(const CERTINFO& cert)
{
    return std::string(cert.szPubKeyAlgo) + " " + cert.szPubKeyLen;
}

/** The rows above the location: key of the name, and the value. */
constexpr struct
{
    const char* key;
    std::string (*value)(const CERTINFO& cert);
} fields[LOCATION_ROW] = {{"DLG_CERVIEWDETAIL_FIELDVERSION", textOf<&CERTINFO::szVersion>},
                          {"DLG_CERVIEWDETAIL_FIELDSERIAL", textOf<&CERTINFO::szSerialNumber>},
                          {"DLG_CERVIEWDETAIL_FIELDSIGNALG", textOf<&CERTINFO::szAlgorithm>},
                          {"DLG_CERVIEWDETAIL_FIELDISSUER", textOf<&CERTINFO::szIssuerDN>},
                          {"DLG_CERVIEWDETAIL_FIELDBEFORE", textOf<&CERTINFO::szBefore>},
                          {"DLG_CERVIEWDETAIL_FIELDAFTER", textOf<&CERTINFO::szAfter>},
                          {"DLG_CERVIEWDETAIL_FIELDDN", textOf<&CERTINFO::szSubjectDN>},
                          {"DLG_CERVIEWDETAIL_FIELDPUBKEYALG", keyText},
                          {"DLG_CERVIEWDETAIL_FIELDAUTHKEYID", textOf<&CERTINFO::szAuthKeyID>},
                          {"DLG_CERVIEWDETAIL_FIELDSUBKEYID", textOf<&CERTINFO::szSubKeyID>},
                          {"DLG_CERVIEWDETAIL_FIELDKEYUSAGE", textOf<&CERTINFO::szKeyUsage>},
                          {"DLG_CERVIEWDETAIL_FIELDPOLICY", textOf<&CERTINFO::szCertPolicy>},
                          {"DLG_CERVIEWDETAIL_FIELDALTNAME", textOf<&CERTINFO::szSubjectAltName>},
                          {"DLG_CERVIEWDETAIL_FIELDCRLDP", textOf<&CERTINFO::szCrlDp>},
                          {"DLG_CERVIEWDETAIL_FIELDAIA", textOf<&CERTINFO::szAIA>}};

/** Key of a medium's name; null for the media that have none here. */
const char* mediumKey(int media)
{
    switch (media) {
    case MEDIA_SMARTCARD:
        return "DLG_BUTTONMEDIA_SMCARD";
    case MEDIA_PKCS11:
        return "DLG_BUTTONMEDIA_PKCS11";
    case MEDIA_SERVICE_MEMORY:
    case MEDIA_MEMORY:
        return "DLG_BUTTONMEDIA_MEMORY";
    case MEDIA_USIM:
        return "DLG_BUTTONMEDIA_USIM";
    default:
        return nullptr;
    }
}

} // namespace

CertViewDetailForm::CertViewDetailForm(QWidget* parent) : QWidget(parent)
{
    shapeWindow(this, "CertViewDetailForm", QSize(330, 327));
    setFont(pointFont(9));
    placeWidgets();
    InitVariable();
    QMetaObject::connectSlotsByName(this);
    qRegisterMetaType<QItemSelection>("QItemSelection");
}

void CertViewDetailForm::placeWidgets()
{
    ui.tableView_certinfolist =
        placeWidget<QTableView>(this, "tableView_certinfolist", QRect(10, 10, 311, 221));
    ui.textEdit_certinfo = placeWidget<QTextEdit>(this, "textEdit_certinfo", QRect(10, 240, 311, 71));
    ui.textEdit_certinfo->setReadOnly(true);
    // Certificate texts are shown as they stand, never followed as markup.
    ui.textEdit_certinfo->setAcceptRichText(false);
    ui.textEdit_certinfo->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    ui.textEdit_certinfo->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    ui.textEdit_certinfo->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
}

void CertViewDetailForm::InitVariable()
{
    m_nResult = QG_OK;
    wipe(m_szLanguageFile);
    m_nCertIndex = 0;
    m_pCertInfo = nullptr;
    m_pContext = nullptr;
}

void CertViewDetailForm::InitSetControl()
{
    setUpTable();
    if (m_pCertInfo)
        fillRows();
    connect(ui.tableView_certinfolist->selectionModel(),
            SIGNAL(selectionChanged(const QItemSelection&, const QItemSelection&)), this,
            SLOT(on_tableViewSelection(const QItemSelection&, const QItemSelection&)));
}

void CertViewDetailForm::setUpTable()
{
    const LanguagePack pack = texts();
    QTableView* table = ui.tableView_certinfolist;
    m_model.setHorizontalHeaderItem(0, new QStandardItem(pack.ui("DLG_CERVIEWDETAIL_LISTFIELD")));
    m_model.setHorizontalHeaderItem(1, new QStandardItem(pack.ui("DLG_CERVIEWDETAIL_LISTCONTENTS")));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setModel(&m_model);
    table->setColumnWidth(0, 95);
    table->setColumnWidth(1, 175);
    table->setFont(pointFont(8));
    ui.textEdit_certinfo->setFont(pointFont(8));
    table->setAccessibleName(pack.ui("DLG_CERVIEWMAIN_TABDETAIL"));
    ui.textEdit_certinfo->setAccessibleName(pack.ui("DLG_CERVIEWDETAIL_LISTCONTENTS"));
}

void CertViewDetailForm::fillRows()
{
    int row = 0;
    for (const auto& field : fields) {
        m_model.setItem(row, 0, new QStandardItem(texts().ui(field.key)));
        m_model.setItem(row, 1, new QStandardItem(fromEucKr(field.value(*m_pCertInfo).c_str())));
        ++row;
    }
    fillLocation(row);
}

void CertViewDetailForm::fillLocation(int row)
{
    m_model.setItem(row, 0, new QStandardItem(texts().ui("DLG_CERVIEWDETAIL_FIELDLOCATION")));
    const int media = m_pCertInfo->nMediaType;
    // A path is the file system's text, and not EUC-KR like all else.
    if (media == MEDIA_HARDDISK || media == MEDIA_REMOVABLE)
        m_model.setItem(row, 1, new QStandardItem(QString::fromUtf8(m_pCertInfo->szSignCertPath)));
    else if (const char* key = mediumKey(media))
        m_model.setItem(row, 1, new QStandardItem(texts().ui(key)));
}

void CertViewDetailForm::on_tableViewSelection(const QItemSelection& selected,
                                               const QItemSelection& /*deselected*/)
{
    const QModelIndexList cells = selected.indexes();
    if (cells.size() < 2)
        return;
    if (cells[0].row() == KEY_ROW)
        return ui.textEdit_certinfo->setPlainText(QString::fromLatin1(m_pCertInfo->szPubKey));
    ui.textEdit_certinfo->setPlainText(cells[1].data().toString());
}

void CertViewDetailForm::on_tableView_certinfolist_clicked(const QModelIndex& /*index*/)
{
    on_tableViewSelection(ui.tableView_certinfolist->selectionModel()->selection(), {});
}
