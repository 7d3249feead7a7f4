/* SelectCertDialog: the way to the certificate viewer. */

#include "BoundedText.h"
#include "CertViewMainDialog.h"
#include "SelectCertDialog.h"

void SelectCertDialog::on_pushButton_view_clicked()
{
    const int row = selectedRow();
    if (!isListed(row))
        return tell("MSG_SELECTCERT_NOTSELECTCERT");
    CertViewMainDialog viewer(this);
    copyText(viewer.m_szLanguageFile, m_szLanguageFile);
    viewer.m_pContext = m_pContext;
    viewer.m_normalForm.m_nCertIndex = viewer.m_detailForm.m_nCertIndex = row;
    viewer.m_normalForm.m_pCertInfo = viewer.m_detailForm.m_pCertInfo = &m_pCertList[row];
    viewer.InitSetControl();
    viewer.setModal(true);
    viewer.exec();
}

/** A double click views; it does not accept. */
void SelectCertDialog::on_tableView_certlist_doubleClicked(const QModelIndex&)
{
    on_pushButton_view_clicked();
}
