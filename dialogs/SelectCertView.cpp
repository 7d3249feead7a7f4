/* SelectCertDialog: the way to the certificate viewer. */

#include "SelectCertDialog.h"

void SelectCertDialog::on_pushButton_view_clicked()
{
    const int row = selectedRow();
    if (!isListed(row))
        return tell("MSG_SELECTCERT_NOTSELECTCERT");
}

/** A double click views; it does not accept. */
void SelectCertDialog::on_tableView_certlist_doubleClicked(const QModelIndex&)
{
    on_pushButton_view_clicked();
}
