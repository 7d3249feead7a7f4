#include "UiCertViewNormalForm.h"

#include <QListView>

#include "UiBuilder.h"

void Ui_CertViewNormalForm::setupUi(QWidget* form)
{
    shapeWindow(form, "CertViewNormalForm", QSize(330, 325));
    form->setFont(pointFont(9));
    label_explain = placeLabel(form, "label_explain", QRect(10, 130, 291, 16));
    label_issuertitle = placeLabel(form, "label_issuertitle", QRect(10, 200, 59, 16));
    label_certusagetitle = placeLabel(form, "label_certusagetitle", QRect(10, 60, 131, 16));
    label_usagetitle = placeLabel(form, "label_usagetitle", QRect(10, 260, 59, 16));
    label_infotitle = placeLabel(form, "label_infotitle", QRect(50, 20, 71, 16));
    label_issuer = placeLabel(form, "label_issuer", QRect(80, 200, 251, 16));
    label_validity = placeLabel(form, "label_validity", QRect(80, 230, 251, 16));
    label_statustitle = placeLabel(form, "label_statustitle", QRect(10, 290, 59, 16));
    label_usage = placeLabel(form, "label_usage", QRect(80, 260, 251, 20));
    listView = placeWidget<QListView>(form, "listView", QRect(10, 80, 131, 41));
    listView->setFixedSize(131, 41);
    listView->setFrameShape(QFrame::Panel);
    label_status = placeLabel(form, "label_status", QRect(80, 290, 251, 16));
    label_validitytitle = placeLabel(form, "label_validitytitle", QRect(10, 230, 59, 16));
    label_subjecttitle = placeLabel(form, "label_subjecttitle", QRect(10, 170, 59, 16));
    label_subject = placeLabel(form, "label_subject", QRect(80, 170, 251, 16));
    label_certimage = placeLabel(form, "label_certimage", QRect(10, 15, 38, 25));
    // Certificate texts and the toolkit's words are shown as they stand, never followed as markup.
    for (QLabel* label : {label_issuer, label_validity, label_usage, label_status, label_subject})
        label->setTextFormat(Qt::PlainText);
}
