/* The certificate viewer, opened from the selection dialog and used by mouse and keyboard. */

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QTabWidget>
#include <QTextCodec>
#include <QTextEdit>
#include <QtTest>

#include "BoundedText.h"
#include "CertViewMainDialog.h"
#include "DialogBench.h"
#include "FakeService.h"

namespace {

/** "폐지된 인증서" (revoked certificate) in EUC-KR. */
const char* const revoked = "\xc6\xf3\xc1\xf6\xb5\xc8 \xc0\xce\xc1\xf5\xbc\xad";

QString labelText(const QWidget& viewer, const char* name)
{
    return child<QLabel>(viewer, name).text();
}

bool showsImage(const QWidget& viewer, const char* path)
{
    const QPixmap shown = child<QLabel>(viewer, "label_certimage").pixmap(Qt::ReturnByValue);
    return !shown.isNull() && shown.toImage() == QPixmap(QLatin1String(path)).toImage();
}

QString failMessage(const QString& words)
{
    return '|' + LanguageFolder::korean("MSG_CERTVERIFY_FAIL") + "\n(" +
           LanguageFolder::korean("MSG_CERTVERIFY_DETAILMSG") + " : " + words + ')';
}

} // namespace

class ViewerTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();
    std::unique_ptr<DialogBench> bench;

    QTableView& list() { return child<QTableView>(*bench->dialog, "tableView_certlist"); }

    /** Shows the selection dialog on a list, opens the viewer by its button and runs a step in it. */
    void view(const CERTINFO& cert, const std::function<void(CertViewMainDialog&)>& step, int language = 1)
    {
        bench = std::make_unique<DialogBench>();
        bench->init.nLanguage = language;
        service.certs = {cert};
        bench->openDisk().show();
        again(step);
    }

    void again(const std::function<void(CertViewMainDialog&)>& step)
    {
        bool seen = false;
        whenShown([&](QDialog& dialog) {
            seen = true;
            step(dynamic_cast<CertViewMainDialog&>(dialog));
            dialog.close();
        });
        press(*bench->dialog, "pushButton_view");
        QVERIFY(seen);
    }

    /** The detail tab's row, chosen by a click on its name. */
    static QString chosen(CertViewMainDialog& viewer, int row)
    {
        child<QTabWidget>(viewer, "tabWidget").setCurrentIndex(1);
        auto& table = child<QTableView>(viewer, "tableView_certinfolist");
        table.scrollTo(table.model()->index(row, 0));
        clickRow(table, row);
        return child<QTextEdit>(viewer, "textEdit_certinfo").toPlainText();
    }

private slots:
    void init() { service.reset(); }
    void cleanup() { bench.reset(); }

    void geometryIsExact()
    {
        static const struct
        {
            const char* name;
            QRect geometry;
        } widgets[] = {{"tabWidget", {10, 10, 331, 346}},
                       {"pushButton_verify", {10, 360, 162, 41}},
                       {"pushButton_ok", {180, 360, 162, 41}},
                       {"CertViewNormalForm", {0, 0, 330, 325}},
                       {"label_explain", {10, 130, 291, 16}},
                       {"label_issuertitle", {10, 200, 59, 16}},
                       {"label_certusagetitle", {10, 60, 131, 16}},
                       {"label_usagetitle", {10, 260, 59, 16}},
                       {"label_infotitle", {50, 20, 71, 16}},
                       {"label_issuer", {80, 200, 251, 16}},
                       {"label_validity", {80, 230, 251, 16}},
                       {"label_statustitle", {10, 290, 59, 16}},
                       {"label_usage", {80, 260, 251, 20}},
                       {"listView", {10, 80, 131, 41}},
                       {"label_status", {80, 290, 251, 16}},
                       {"label_validitytitle", {10, 230, 59, 16}},
                       {"label_subjecttitle", {10, 170, 59, 16}},
                       {"label_subject", {80, 170, 251, 16}},
                       {"label_certimage", {10, 15, 38, 25}},
                       {"CertViewDetailForm", {0, 0, 330, 327}},
                       {"tableView_certinfolist", {10, 10, 311, 221}},
                       {"textEdit_certinfo", {10, 240, 311, 71}}};
        view(sampleCert("holder"), [&](CertViewMainDialog& viewer) {
            QCOMPARE(viewer.size(), QSize(350, 408));
            QCOMPARE(viewer.minimumSize(), viewer.maximumSize());
            QCOMPARE(viewer.objectName(), QString("CertViewMainDialog"));
            QCOMPARE(viewer.windowModality(), Qt::ApplicationModal);
            QCOMPARE(viewer.focusPolicy(), Qt::ClickFocus);
            for (const auto& widget : widgets)
                QVERIFY2(child(viewer, widget.name).geometry() == widget.geometry, widget.name);
            auto& usages = child<QListView>(viewer, "listView");
            QCOMPARE(usages.maximumSize(), QSize(131, 41));
            QCOMPARE(usages.frameShape(), QFrame::Panel);
            for (const char* name : {"pushButton_verify", "pushButton_ok"})
                QVERIFY(!child<QPushButton>(viewer, name).autoDefault());
            QVERIFY(child(viewer, "label_subject").isVisible());
            QVERIFY(!child(viewer, "tableView_certinfolist").isVisible());
            QVERIFY(!child(viewer, "pushButton_verify").hasFocus());
            QCOMPARE(child(viewer, "label_infotitle").font().pointSize(), 9);
            for (const char* name : {"label_subject", "label_issuer", "label_validity", "label_usage",
                                     "label_status", "tableView_certinfolist", "textEdit_certinfo"})
                QCOMPARE(child(viewer, name).font().pointSize(), 8);
        });
    }

    void textsComeFromTheLanguagePack_data()
    {
        QTest::addColumn<int>("language");
        QTest::newRow("Korean") << 1;
        QTest::newRow("English") << 2;
    }
    void textsComeFromTheLanguagePack()
    {
        QFETCH(int, language);
        const auto text = [&](const char* key) {
            return language == 1 ? LanguageFolder::korean(key) : LanguageFolder::english(key);
        };
        const auto check = [&](CertViewMainDialog& viewer) {
            QCOMPARE(viewer.windowTitle(), text("DLG_CERTVIEW_CAPITON"));
            const auto& tabs = child<QTabWidget>(viewer, "tabWidget");
            QCOMPARE(tabs.count(), 2);
            QCOMPARE(tabs.currentIndex(), 0);
            QCOMPARE(tabs.tabText(0), text("DLG_CERVIEWMAIN_TABNORMAL"));
            QCOMPARE(tabs.tabText(1), text("DLG_CERVIEWMAIN_TABDETAIL"));
            QCOMPARE(child<QPushButton>(viewer, "pushButton_ok").text(), text("DLG_BUTTON_OK"));
            QCOMPARE(child<QPushButton>(viewer, "pushButton_verify").text(), text("DLG_BUTTON_VERIFY"));
            static const std::pair<const char*, const char*> captions[] = {
                {"label_infotitle", "TITLE"},         {"label_certusagetitle", "USAGETITLE"},
                {"label_explain", "EXPLAIN"},         {"label_subjecttitle", "SUBJECTTITLE"},
                {"label_issuertitle", "ISSUERTITLE"}, {"label_validitytitle", "DATETITLE"},
                {"label_usagetitle", "USETITLE"},     {"label_statustitle", "STATETITLE"}};
            for (const auto& [label, key] : captions)
                QCOMPARE(labelText(viewer, label), text((QByteArray("DLG_CERVIEWNORAL_") + key).constData()));
            const QAbstractItemModel& details = *child<QTableView>(viewer, "tableView_certinfolist").model();
            QCOMPARE(details.headerData(0, Qt::Horizontal).toString(), text("DLG_CERVIEWDETAIL_LISTFIELD"));
            QCOMPARE(details.headerData(1, Qt::Horizontal).toString(),
                     text("DLG_CERVIEWDETAIL_LISTCONTENTS"));
        };
        view(sampleCert("holder"), check, language);
    }

    void summaryShowsTheRecord()
    {
        view(sampleCert("holder"), [](CertViewMainDialog& viewer) {
            QCOMPARE(labelText(viewer, "label_subject"), QString("holder"));
            QCOMPARE(labelText(viewer, "label_issuer"), QStringLiteral("발급자"));
            QCOMPARE(labelText(viewer, "label_validity"),
                     QString("2020-01-01 00:00:00 ~ 2030-12-31 23:59:59"));
            QCOMPARE(labelText(viewer, "label_usage"), QStringLiteral("개인"));
        });
    }

    void markupInAFieldIsShownAsItStands()
    {
        view(sampleCert("<b>x</b>"), [](CertViewMainDialog& viewer) {
            QCOMPARE(child<QLabel>(viewer, "label_subject").textFormat(), Qt::PlainText);
        });
    }

    void longDatesAreCut()
    {
        CERTINFO cert = sampleCert("holder");
        copyText(cert.szBefore, std::string(1000, 'b').c_str());
        view(cert, [](CertViewMainDialog& viewer) {
            QCOMPARE(labelText(viewer, "label_validity"), QString(259, 'b'));
        });
    }

    void stateGivesTextAndImage_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("image");
        const QString valid = ":/bmp/image/Cert_Valid.bmp";
        const QString invalid = ":/bmp/image/Cert_Invalid.bmp";
        QTest::newRow("0") << 0 << "CERTVALID" << valid;
        QTest::newRow("1, whose image has another name") << 1 << "CERTRENEWAL"
                                                         << "";
        QTest::newRow("2") << 2 << "CERTEXPIRED" << invalid;
        QTest::newRow("3") << 3 << "CERTVALID" << valid;
        QTest::newRow("4, whose image has another name") << 4 << "CERTRENEWAL"
                                                         << "";
        QTest::newRow("5") << 5 << "CERTEXPIRED" << invalid;
        QTest::newRow("6 is blank") << 6 << ""
                                    << "";
        QTest::newRow("beyond is blank") << 1000 << ""
                                         << "";
        QTest::newRow("negative is blank") << -1 << ""
                                           << "";
    }
    void stateGivesTextAndImage()
    {
        QFETCH(int, state);
        QFETCH(QString, key);
        QFETCH(QString, image);
        CERTINFO cert = sampleCert("holder");
        cert.nCertState = state;
        view(cert, [&](CertViewMainDialog& viewer) {
            const QByteArray full = "DLG_CERVIEWNORAL_" + key.toLatin1();
            QCOMPARE(labelText(viewer, "label_status"),
                     key.isEmpty() ? QString() : LanguageFolder::korean(full.constData()));
            const QPixmap shown = child<QLabel>(viewer, "label_certimage").pixmap(Qt::ReturnByValue);
            QCOMPARE(shown.isNull(), image.isEmpty());
            QVERIFY(image.isEmpty() || showsImage(viewer, image.toLatin1()));
        });
        QVERIFY(QFile::exists(":/bmp/image/cert_Renewal.bmp"));
        QVERIFY(!QFile::exists(":/bmp/image/Cert_Renewal.bmp"));
    }

    void keyUsageHasARowForEachWord_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("none") << "" << QStringList();
        QTest::newRow("own order") << "nonRepudiation, digitalSignature"
                                   << QStringList({"DIGITALSIGN", "NONREPUDIATION"});
        QTest::newRow("decipherOnly reads like encipherOnly")
            << "encipherOnly,decipherOnly" << QStringList({"ENCIPHERONLY", "ENCIPHERONLY"});
        QTest::newRow("case counts") << "CRLSign,DigitalSignature,crlSign" << QStringList({"CRLSIGN"});
        QTest::newRow("the rest") << "keyEncipherment dataEncipherment keyAgreement keyCertSign"
                                  << QStringList({"KEYENCIPHERMENT", "DATAENCIPHERMENT", "KEYAGREEMENT",
                                                  "KEYCERTSIGN"});
    }
    void keyUsageHasARowForEachWord()
    {
        QFETCH(QString, words);
        QFETCH(QStringList, rows);
        CERTINFO cert = sampleCert("holder");
        cert.szKeyUsage[0] = '\0';
        copyText(cert.szKeyUsage, words.toLatin1());
        view(cert, [&](CertViewMainDialog& viewer) {
            auto& usages = child<QListView>(viewer, "listView");
            QCOMPARE(usages.editTriggers(), QAbstractItemView::NoEditTriggers);
            QCOMPARE(usages.model()->rowCount(), rows.size());
            for (int row = 0; row < rows.size(); ++row) {
                const QByteArray key = "DLG_CERVIEWNORAL_KEYUSAGE_" + rows[row].toLatin1();
                QCOMPARE(usages.model()->index(row, 0).data().toString(),
                         LanguageFolder::korean(key.constData()));
            }
        });
    }

    void goodCertificateReadsAsValidFromThenOn()
    {
        view(expiredCert("holder"), [&](CertViewMainDialog& viewer) {
            HeardMessages heard;
            QVERIFY(showsImage(viewer, ":/bmp/image/Cert_Invalid.bmp"));
            press(viewer, "pushButton_verify");
            QCOMPARE(labelText(viewer, "label_status"), LanguageFolder::korean("DLG_CERVIEWNORAL_CERTVALID"));
            QVERIFY(showsImage(viewer, ":/bmp/image/Cert_Valid.bmp"));
            QVERIFY(heard.take().isEmpty());
            QCOMPARE(viewer.m_nResult, 0);
        });
        QVERIFY(service.count("CLP_VerifyCert") == 1);
        QVERIFY(std::count(service.calls.begin(), service.calls.end(), "CLP_VerifyCert(0,1024)") == 1);
        QCOMPARE(bench->dialog->m_pCertList[0].nCertState, 3);
        again([](CertViewMainDialog& viewer) { QVERIFY(showsImage(viewer, ":/bmp/image/Cert_Valid.bmp")); });
    }

    void verificationListsTheDrivesFirstWhateverComesOfIt()
    {
        for (const int code : {0, 10003}) {
            service.reset();
            service.fail("CLP_SearchFileList", code);
            view(expiredCert("holder"), [](CertViewMainDialog& viewer) {
                HeardMessages heard;
                press(viewer, "pushButton_verify");
                QVERIFY(heard.take().isEmpty());
                QCOMPARE(viewer.m_nResult, 0);
            });
            const auto verified =
                std::find(service.calls.begin(), service.calls.end(), "CLP_VerifyCert(0,1024)");
            QVERIFY(verified != service.calls.end());
            QCOMPARE(QString::fromStdString(*(verified - 1)), QString("CLP_SearchFileList(root,)"));
        }
    }

    void goodCertificateOfTheOldClassTakesTheOtherState()
    {
        CERTINFO cert = expiredCert("holder");
        cert.nCertbit1024 = 1;
        view(cert, [](CertViewMainDialog& viewer) { press(viewer, "pushButton_verify"); });
        QCOMPARE(bench->dialog->m_pCertList[0].nCertState, 0);
    }

    void failureWithoutTheMarkerShowsTheTitleAndTheWholeText_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("text of the toolkit") << 30090 << QByteArray(revoked);
        QTest::newRow("no text") << 30090 << QByteArray();
        QTest::newRow("out of memory") << 10003 << QByteArray();
        QTest::newRow("not available") << 10005 << QByteArray();
    }
    void failureWithoutTheMarkerShowsTheTitleAndTheWholeText()
    {
        QFETCH(int, code);
        QFETCH(QByteArray, text);
        service.fail("CLP_VerifyCert", code);
        service.verifyText = text.toStdString();
        view(expiredCert("holder"), [&](CertViewMainDialog& viewer) {
            HeardMessages heard;
            press(viewer, "pushButton_verify");
            const QString words = QTextCodec::codecForName("EUC-KR")->toUnicode(text);
            QCOMPARE(heard.take(), QStringList(failMessage(words)));
            QCOMPARE(labelText(viewer, "label_status"), LanguageFolder::korean("MSG_CERTVERIFY_FAIL"));
            QVERIFY(showsImage(viewer, ":/bmp/image/Cert_Invalid.bmp"));
            QCOMPARE(viewer.m_nResult, code);
        });
        QCOMPARE(bench->dialog->m_pCertList[0].nCertState, 5);
    }

    void failureWithTheMarkerShowsWhatIsBehindItDecodedTwiceInTheLabel()
    {
        service.fail("CLP_VerifyCert", 30090);
        service.verifyText = std::string("ahead<wrenlib>") + revoked;
        view(sampleCert("holder"), [&](CertViewMainDialog& viewer) {
            HeardMessages heard;
            press(viewer, "pushButton_verify");
            const QString words = QStringLiteral("폐지된 인증서");
            QCOMPARE(heard.take(), QStringList(failMessage(words)));
            QCOMPARE(labelText(viewer, "label_status"),
                     QTextCodec::codecForName("EUC-KR")->toUnicode(words.toUtf8()));
            QVERIFY(labelText(viewer, "label_status") != words);
        });
    }

    void failureWithTheMarkerInEnglishIsLegibleInBothPlaces()
    {
        service.fail("CLP_VerifyCert", 30090);
        service.verifyText = "<wrenlib>certificate revoked";
        view(sampleCert("holder"), [&](CertViewMainDialog& viewer) {
            HeardMessages heard;
            press(viewer, "pushButton_verify");
            QCOMPARE(heard.take(), QStringList(failMessage("certificate revoked")));
            QCOMPARE(labelText(viewer, "label_status"), QString("certificate revoked"));
        });
    }

    void longFailureTextIsCut()
    {
        service.fail("CLP_VerifyCert", 30090);
        service.verifyText = std::string(5000, 'w');
        view(sampleCert("holder"), [&](CertViewMainDialog& viewer) {
            HeardMessages heard;
            press(viewer, "pushButton_verify");
            QCOMPARE(heard.take().value(0).toUtf8().size(), 1 + 1023);
        });
    }

    void detailRowsShowTheFields()
    {
        view(sampleCert("holder"), [](CertViewMainDialog& viewer) {
            const auto& table = child<QTableView>(viewer, "tableView_certinfolist");
            QCOMPARE(table.model()->rowCount(), 16);
            static const std::pair<const char*, QString> rows[] = {
                {"VERSION", "V3"},
                {"SERIAL", "10000001"},
                {"SIGNALG", "sha256WithRSAEncryption"},
                {"ISSUER", QStringLiteral("cn=발급자,o=yessign,c=kr")},
                {"BEFORE", "2020-01-01 00:00:00"},
                {"AFTER", "2030-12-31 23:59:59"},
                {"DN", "cn=holder,o=yessign,c=kr"},
                {"PUBKEYALG", "rsaEncryption 2048 Bits"},
                {"AUTHKEYID", ""},
                {"SUBKEYID", ""},
                {"KEYUSAGE", "digitalSignature,nonRepudiation"},
                {"POLICY", QStringLiteral("개인 policy")},
                {"ALTNAME", ""},
                {"CRLDP", ""},
                {"AIA", ""},
                {"LOCATION", "/media/NPKI/signCert.der"}};
            int row = 0;
            for (const auto& [key, value] : rows) {
                const QByteArray full = QByteArray("DLG_CERVIEWDETAIL_FIELD") + key;
                QCOMPARE(rowTexts(table, row++),
                         QStringList({LanguageFolder::korean(full.constData()), value}));
            }
            QCOMPARE(table.columnWidth(0), 95);
            QCOMPARE(table.columnWidth(1), 175);
            QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
            QCOMPARE(table.selectionMode(), QAbstractItemView::SingleSelection);
            QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
            auto& box = child<QTextEdit>(viewer, "textEdit_certinfo");
            QVERIFY(box.isReadOnly());
            QCOMPARE(box.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
            QCOMPARE(box.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
            QCOMPARE(box.sizeAdjustPolicy(), QAbstractScrollArea::AdjustToContents);
        });
    }

    void locationFollowsTheMedium_data()
    {
        QTest::addColumn<int>("medium");
        QTest::addColumn<QString>("text");
        const auto key = [](const char* name) {
            return LanguageFolder::korean(name);
        };
        QTest::newRow("none") << 0 << "";
        QTest::newRow("hard disk") << 1 << "/media/NPKI/signCert.der";
        QTest::newRow("removable") << 2 << "/media/NPKI/signCert.der";
        QTest::newRow("smart card") << 3 << key("DLG_BUTTONMEDIA_SMCARD");
        QTest::newRow("token") << 4 << key("DLG_BUTTONMEDIA_PKCS11");
        QTest::newRow("service's memory") << 5 << key("DLG_BUTTONMEDIA_MEMORY");
        QTest::newRow("memory") << 6 << key("DLG_BUTTONMEDIA_MEMORY");
        QTest::newRow("USIM") << 7 << key("DLG_BUTTONMEDIA_USIM");
        QTest::newRow("PFX") << 8 << "";
        QTest::newRow("unknown") << 99 << "";
    }
    void locationFollowsTheMedium()
    {
        QFETCH(int, medium);
        QFETCH(QString, text);
        CERTINFO cert = sampleCert("holder");
        cert.nMediaType = medium;
        view(cert, [&](CertViewMainDialog& viewer) {
            QCOMPARE(chosen(viewer, 15), text);
            const bool none = medium == 0 || medium > 7;
            QCOMPARE(viewer.m_detailForm.m_model.item(15, 1) == nullptr, none);
        });
    }

    void chosenRowShowsItsWholeValue()
    {
        view(sampleCert("holder"), [](CertViewMainDialog& viewer) {
            auto& box = child<QTextEdit>(viewer, "textEdit_certinfo");
            QCOMPARE(box.toPlainText(), QString());
            QVERIFY(!child<QTableView>(viewer, "tableView_certinfolist").selectionModel()->hasSelection());
            QCOMPARE(chosen(viewer, 3), QStringLiteral("cn=발급자,o=yessign,c=kr"));
            QCOMPARE(chosen(viewer, 7), QString("30820122"));
            QCOMPARE(chosen(viewer, 14), QString());
            auto& table = child<QTableView>(viewer, "tableView_certinfolist");
            QTest::keyClick(&table, Qt::Key_Up);
            QTest::keyClick(&table, Qt::Key_Up);
            QTest::keyClick(&table, Qt::Key_Up);
            QCOMPARE(box.toPlainText(), QStringLiteral("개인 policy"));
            box.clear();
            QCOMPARE(chosen(viewer, 11), QStringLiteral("개인 policy"));
        });
    }

    void markupInAValueIsShownAsItStands()
    {
        CERTINFO cert = sampleCert("holder");
        copyText(cert.szSubjectDN, "<img src='/etc/passwd'>");
        view(cert, [](CertViewMainDialog& viewer) {
            QCOMPARE(chosen(viewer, 6), QString("<img src='/etc/passwd'>"));
        });
    }

    void fullFieldsAreShown()
    {
        CERTINFO cert = sampleCert("holder");
        std::memset(cert.szSerialNumber, 's', sizeof(cert.szSerialNumber) - 1);
        std::memset(cert.szPubKey, 'k', sizeof(cert.szPubKey) - 1);
        view(cert, [](CertViewMainDialog& viewer) {
            QCOMPARE(chosen(viewer, 1), QString(2047, 's'));
            QCOMPARE(chosen(viewer, 7), QString(2047, 'k'));
        });
    }

    void doubleClickOpensTheViewerAndKeepsTheSelection()
    {
        bench = std::make_unique<DialogBench>();
        service.certs = {sampleCert("first"), sampleCert("second")};
        bench->openDisk().show();
        clickRow(list(), 1);
        QString subject;
        whenShown([&](QDialog& dialog) {
            subject = labelText(dialog, "label_subject");
            QCOMPARE(dynamic_cast<CertViewMainDialog&>(dialog).m_normalForm.m_nCertIndex, 1);
            dialog.close();
        });
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                           list().visualRect(list().model()->index(1, 0)).center());
        QCOMPARE(subject, QString("second"));
        QVERIFY(bench->dialog->isVisible());
        QCOMPARE(list().selectionModel()->selectedRows().value(0).row(), 1);
        QCOMPARE(bench->dialog->m_nDlgResult, -1);
    }

    void viewWithoutASelectionSaysSo()
    {
        bench = std::make_unique<DialogBench>();
        service.certs = {sampleCert("first")};
        bench->openDisk().show();
        list().clearSelection();
        HeardMessages heard;
        press(*bench->dialog, "pushButton_view");
        QCOMPARE(heard.take(), QStringList(koreanMessage("MSG_SELECTCERT_NOTSELECTCERT")));
    }

    void keysCloseTheDialogOrAreDropped()
    {
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
            view(sampleCert("holder"), [&](CertViewMainDialog& viewer) {
                QTest::keyClick(&viewer, Qt::Key_Enter);
                QTest::keyClick(&viewer, Qt::Key_A);
                QVERIFY(viewer.isVisible());
                QTest::keyClick(&viewer, key);
                QVERIFY(!viewer.isVisible());
                QCOMPARE(viewer.result(), static_cast<int>(QDialog::Rejected));
            });
        }
        QCOMPARE(service.count("CLP_VerifyCert"), 0);
    }

    void okButtonRejects()
    {
        view(sampleCert("holder"), [](CertViewMainDialog& viewer) {
            press(viewer, "pushButton_ok");
            QVERIFY(!viewer.isVisible());
            QCOMPARE(viewer.result(), static_cast<int>(QDialog::Rejected));
        });
    }

    void mousePressBesideTheWidgetsGoesNowhere()
    {
        view(sampleCert("holder"), [](CertViewMainDialog& viewer) {
            QMouseEvent event(QEvent::MouseButtonPress, QPointF(2, 2), Qt::LeftButton, Qt::LeftButton, {});
            QApplication::sendEvent(&viewer, &event);
            QVERIFY(event.isAccepted());
            QVERIFY(viewer.isVisible());
        });
    }

    void missingLanguagePackBlanksTheViewer()
    {
        view(sampleCert("holder"), [](CertViewMainDialog&) {});
        bench->dialog->m_szLanguageFile[0] = '\0';
        again([](CertViewMainDialog& viewer) {
            QCOMPARE(viewer.windowTitle(), QString());
            QCOMPARE(labelText(viewer, "label_infotitle"), QString());
            QCOMPARE(labelText(viewer, "label_subject"), QString("holder"));
        });
    }
};

QTEST_MAIN(ViewerTest)
#include "ViewerTest.moc"
