/* Finding a certificate in a PFX file. */

#include <QtTest>
#include <algorithm>

#include "BoundedText.h"
#include "DialogBench.h"
#include "FakeService.h"

class PfxTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();

    static void typePfxPassword(const char* password)
    {
        whenShown([password](QDialog& dialog) {
            QTest::keyClicks(&child<QLineEdit>(dialog, "lineEdit_password"), password);
            press(dialog, "pushButton_ok");
        });
    }

    static QString importMessage(const char* key)
    {
        return koreanMessage(key, "MSG_MANAGEUSER_ALERT_TITLE_IMPORT");
    }

    static int rows(const SelectCertDialog& dialog)
    {
        return child<QTableView>(dialog, "tableView_certlist").model()->rowCount();
    }

private slots:
    void init()
    {
        service.reset();
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        service.importedCert = "imported certificate";
        service.imported = {"imported key", "", ""};
    }

    void theFileDialogAsksForPfxFiles()
    {
        ChosenFile file("");
        DialogBench bench;
        press(bench.openDisk(), "pushButton_find");
        QCOMPARE(file.asked, QStringList("Open File...|/|PFX(*.PFX *.pfx);;p12(*.P12 *.p12)"));
    }

    void aCancelledFileDialogChangesNothing()
    {
        ChosenFile file("");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        press(dialog, "pushButton_find"); // a password dialog would hold the test here
        QCOMPARE(service.count("CLP_ImportPFX"), 0);
        QCOMPARE(rows(dialog), 2);
    }

    void aCancelledPasswordDialogChangesNothing()
    {
        ChosenFile file("/a/file.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        whenShown([](QDialog& asked) { press(asked, "pushButton_cancel"); });
        press(dialog, "pushButton_find");
        QCOMPARE(service.count("CLP_ImportPFX"), 0);
        QCOMPARE(rows(dialog), 2);
    }

    void aPathThatDoesNotFitIsRefused_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("imports");
        QTest::newRow("259 bytes") << 259 << 1;
        QTest::newRow("260 bytes") << 260 << 0;
        QTest::newRow("5000 bytes") << 5000 << 0;
    }

    void aPathThatDoesNotFitIsRefused()
    {
        QFETCH(int, length);
        QFETCH(int, imports);
        ChosenFile file("/" + QString(length - 1, 'x'));
        HeardMessages messages;
        service.fail("CLP_ImportPFX", QG_NOT_AVAILABLE);
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        if (imports)
            typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(service.count("CLP_ImportPFX"), imports);
        QCOMPARE(messages.take(), QStringList(importMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT")));
    }

    void importFailuresAreSaid_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("wrong password")
            << int(CLPERR_WRONG_PASSWORD) << koreanMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT");
        QTest::newRow("called off") << -1 << importMessage("MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT");
        QTest::newRow("not available here")
            << int(QG_NOT_AVAILABLE) << importMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT");
        QTest::newRow("other failure") << 4711 << importMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT");
    }

    void importFailuresAreSaid()
    {
        QFETCH(int, code);
        QFETCH(QString, message);
        ChosenFile file("/a/file.pfx");
        HeardMessages messages;
        service.fail("CLP_ImportPFX", code);
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(messages.take(), QStringList(message));
        QCOMPARE(dialog.m_nRv, code);
        QCOMPARE(rows(dialog), 2);
        QCOMPARE(dialog.m_szPFXPassword, "");
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_HARDDISK));
    }

    void anImportWithoutAPairKeepsTheRowsAndCountsAsSuccess_data()
    {
        QTest::addColumn<bool>("withCert");
        QTest::newRow("no certificate") << false;
        QTest::newRow("no key") << true;
    }

    void anImportWithoutAPairKeepsTheRowsAndCountsAsSuccess()
    {
        QFETCH(bool, withCert);
        (withCert ? service.imported.signKey : service.importedCert).clear();
        ChosenFile file("/a/file.pfx");
        HeardMessages messages;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_NOCERT_SIGN")));
        QCOMPARE(rows(dialog), 2);
        QCOMPARE(dialog.m_szPFXPassword, "secret");
        QCOMPARE(child<QLineEdit>(dialog, "lineEdit_msg").text(),
                 LanguageFolder::korean("MSG_SELECTCERT_SELCERTINPUTPWD"));
        QCOMPARE(service.buffers, 0);
    }

    void anImportShowsItsCertificateAndTakesItsPasswordInAnyCase()
    {
        ChosenFile file("/a/file.pfx");
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        service.certs = {sampleCert("out of the file")};
        service.imported.kmKey = "km key";
        typePfxPassword("Secret");
        service.calls.clear();
        press(dialog, "pushButton_find");
        QCOMPARE(service.calls,
                 std::vector<std::string>({"CLP_ImportPFX(/a/file.pfx,Secret)", "CLP_SetMemoryCert()",
                                           "CLP_SetMediaType(6,0)", "CLP_LoadCertList()",
                                           "CLP_GetCertCount()", "CLP_GetCertInfo(0)",
                                           "CLP_MemFree(imported certificate)", "CLP_MemFree(imported key)",
                                           "CLP_MemFree(km certificate)", "CLP_MemFree(km key)"}));
        const auto& table = child<QTableView>(dialog, "tableView_certlist");
        QCOMPARE(rows(dialog), 1);
        QCOMPARE(rowTexts(table, 0).first(), QString("out of the file"));
        QCOMPARE(table.selectionModel()->selectedRows().size(), 1);
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_MEMORY));
        QCOMPARE(child<QLineEdit>(dialog, "lineEdit_msg").text(),
                 LanguageFolder::korean("MSG_SELECTCERT_SELCERTINPUTPWD"));
        QTest::keyClicks(&child<QLineEdit>(dialog, "lineEdit_password"), "sEcReT");
        press(dialog, "pushButton_ok");
        QCOMPARE(dialog.m_nDlgResult, 1);
        QCOMPARE(messages.take(), QStringList());
    }

    void anImportLeavesTheMediaButtonsAsTheyWere()
    {
        ChosenFile file("/a/file.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        const auto buttons = [&dialog] {
            QStringList looks;
            for (const auto* button : dialog.findChild<QWidget*>("groupBox")->findChildren<QPushButton*>())
                looks.append(button->objectName() + button->styleSheet() +
                             (button->isEnabled() ? "enabled" : "disabled"));
            return looks;
        };
        const QStringList before = buttons();
        QVERIFY(before.size() > 1);
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_MEMORY));
        QCOMPARE(buttons(), before);
    }

    void anExpiredCertificateOutOfAFileDoesNotLockThePassword()
    {
        ChosenFile file("/a/file.pfx");
        HeardMessages messages;
        DialogBench bench;
        bench.load->nExpiredOption = EXPIRED_LOCK_PASSWORD;
        const SelectCertDialog& dialog = bench.openDisk();
        service.certs = {expiredCert("out of the file")};
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(rows(dialog), 1);
        QVERIFY(child<QLineEdit>(dialog, "lineEdit_password").isEnabled());
        QCOMPARE(messages.take(), QStringList());
    }

    void thePasswordOfAFileStaysUntilTheDialogIsGone()
    {
        ChosenFile file("/a/file.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(dialog.m_szPFXPassword, "secret");
        press(dialog, "pushButton_hdd");
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_HARDDISK));
        QCOMPARE(dialog.m_szPFXPassword, "secret");
        bench.reopen();
        QCOMPARE(dialog.m_szPFXPassword, "secret");
    }

    void aShorterPasswordReplacesAllOfALongerOne()
    {
        ChosenFile file("/a/file.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        for (const char* password : {"a long password", "short"}) {
            typePfxPassword(password);
            press(dialog, "pushButton_find");
        }
        const QByteArray kept(dialog.m_szPFXPassword, 1024);
        QCOMPARE(kept, QByteArray("short").leftJustified(1024, '\0'));
    }

    void aKoreanPathReachesTheServiceInTheLocalesBytes()
    {
        ChosenFile file("/a/인증서.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        const QByteArray path = QString("/a/인증서.pfx").toLocal8Bit();
        QCOMPARE(service.count("CLP_ImportPFX"), 1);
        QVERIFY(std::find(service.calls.begin(), service.calls.end(),
                          "CLP_ImportPFX(" + path.toStdString() + ",secret)") != service.calls.end());
    }

    void aFailingLoadEmptiesTheTableAndIsSaidTwice_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("first");
        QTest::newRow("none") << int(CLPERR_NOTEXISTCERT) << koreanMessage("MSG_SELECTCERT_NOCERT");
        QTest::newRow("other") << 4711 << koreanMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT");
    }

    void aFailingLoadEmptiesTheTableAndIsSaidTwice()
    {
        QFETCH(int, code);
        QFETCH(QString, first);
        ChosenFile file("/a/file.pfx");
        HeardMessages messages;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        service.fail("CLP_LoadCertList", code);
        typePfxPassword("secret");
        press(dialog, "pushButton_find");
        QCOMPARE(messages.take(), QStringList({first, importMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT")}));
        QCOMPARE(rows(dialog), 0);
        QCOMPARE(dialog.m_szPFXPassword, "");
        QCOMPARE(service.buffers, 0);
    }
};

QTEST_MAIN(PfxTest)
#include "PfxTest.moc"
