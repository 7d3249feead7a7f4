#pragma once

class QLabel;
class QListView;
class QWidget;

/** Widgets of CertViewNormalForm, which owns them. */
class Ui_CertViewNormalForm
{
public:
    QLabel* label_explain;
    QLabel* label_issuertitle;
    QLabel* label_certusagetitle;
    QLabel* label_usagetitle;
    QLabel* label_infotitle;
    QLabel* label_issuer;
    QLabel* label_validity;
    QLabel* label_statustitle;
    QLabel* label_usage;
    QListView* listView;
    QLabel* label_status;
    QLabel* label_validitytitle;
    QLabel* label_subjecttitle;
    QLabel* label_subject;
    QLabel* label_certimage;

    /** Makes the widgets; InitSetControl gives them their texts. */
    void setupUi(QWidget* form);
};
