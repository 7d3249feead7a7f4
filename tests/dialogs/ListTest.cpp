/* The list panel: loading from the media, the table, expired certificates. */

#include <QAbstractButton>
#include <QtTest>

#include "BoundedText.h"
#include "DialogBench.h"
#include "FakeService.h"

namespace {

const QTableView& table(const SelectCertDialog& dialog)
{
    return child<QTableView>(dialog, "tableView_certlist");
}

QString promptOf(const SelectCertDialog& dialog)
{
    return child<QLineEdit>(dialog, "lineEdit_msg").text();
}

int selectedRow(const SelectCertDialog& dialog)
{
    const QModelIndexList rows = table(dialog).selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

bool passwordEnabled(const SelectCertDialog& dialog)
{
    return child(dialog, "lineEdit_password").isEnabled();
}

DRIVEINFO drive(const char* path)
{
    DRIVEINFO info = {};
    info.nIndex = 7;
    copyText(info.szDrive, path);
    joinText(info.szTotalName, {"/usb (", path, ")"});
    return info;
}

} // namespace

class ListTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();

private slots:
    void init() { service.reset(); }

    void oneCertificateEndsWithItsRowSelectedAndThePrompt()
    {
        service.certs = {sampleCert("kim")};
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(table(dialog).model()->rowCount(), 1);
        QCOMPARE(selectedRow(dialog), 0);
        QCOMPARE(promptOf(dialog), LanguageFolder::korean("MSG_SELECTCERT_SELCERTINPUTPWD"));
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_HARDDISK));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_hdd").iconSize(), QSize(52, 62));
    }

    void rowsShowNameIssuerPurposeAndEndInTheListsOrder()
    {
        service.certs = {sampleCert("zeta"), sampleCert("alpha"), expiredCert("middle")};
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(rowTexts(table(dialog), 0), QStringList({"zeta", "발급자 name", "개인", "2030-12-31"}));
        QCOMPARE(rowTexts(table(dialog), 1).first(), QString("alpha"));
        QCOMPARE(rowTexts(table(dialog), 2), QStringList({"middle", "발급자 name", "개인", "2020-12-31"}));
    }

    void theServiceIsCalledInOrder()
    {
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        DialogBench bench;
        bench.open();
        service.calls.clear();
        bench.dialog->SetInitMediaCert(MEDIA_HARDDISK);
        QCOMPARE(service.calls, std::vector<std::string>({"CLP_SetMediaType(1,0)", "CLP_LoadCertList()",
                                                          "CLP_GetCertCount()", "CLP_GetCertInfo(0)",
                                                          "CLP_GetCertInfo(1)"}));
    }

    void theDialogsListHasNoEncryptedKeysNorTokenFields()
    {
        service.certs = {sampleCert("kim")};
        DialogBench bench;
        const CERTINFO& cert = bench.openDisk().m_pCertList[0];
        QCOMPARE(cert.szSubjectCN, "kim");
        QCOMPARE(cert.szCertPolicy, service.certs[0].szCertPolicy);
        QCOMPARE(cert.nSignCertLen, service.certs[0].nSignCertLen);
        QCOMPARE(cert.nCertType, int(CERTTYPE_NPKI));
        QCOMPARE(cert.nMediaType, int(MEDIA_HARDDISK));
        QCOMPARE(cert.nEncSignKeyLen, 0);
        QCOMPARE(cert.nEncKmKeyLen, 0);
        QCOMPARE(cert.nRemainDay, 0);
        QCOMPARE(cert.szEncSignKey, "");
        QCOMPARE(cert.szLibPath, "");
        QCOMPARE(cert.szPinNumber, "");
    }

    void aMediumWithoutCertificatesSaysSo_data()
    {
        QTest::addColumn<int>("code");
        QTest::newRow("the load says none") << int(CLPERR_NOTEXISTCERT);
        QTest::newRow("the count is 0") << int(QG_OK);
    }

    void aMediumWithoutCertificatesSaysSo()
    {
        QFETCH(int, code);
        service.results["CLP_LoadCertList"] = code;
        HeardMessages messages;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(dialog.m_nRv, int(CLPERR_NOTEXISTCERT));
        QCOMPARE(promptOf(dialog), LanguageFolder::korean("MSG_SELECTCERT_NOCERT"));
        QCOMPARE(table(dialog).model()->rowCount(), 0);
        QCOMPARE(dialog.m_szErrInfo, "LoadCertDisk() m_nRv : 30006");
        QCOMPARE(messages.take(), QStringList());
    }

    void otherLoadFailuresShowNothing_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<int>("code");
        QTest::newRow("CLP_LoadCertList") << "CLP_LoadCertList" << 10003;
        QTest::newRow("CLP_SetMediaType") << "CLP_SetMediaType" << 10004;
    }

    void otherLoadFailuresShowNothing()
    {
        QFETCH(QString, function);
        QFETCH(int, code);
        service.certs = {sampleCert("kim")};
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        const QString before = promptOf(dialog);
        service.fail(function.toStdString(), code);
        QCOMPARE(dialog.LoadCertDisk(MEDIA_HARDDISK, 0), code);
        QCOMPARE(dialog.m_nRv, code);
        QCOMPARE(table(dialog).model()->rowCount(), 0);
        QVERIFY(!dialog.m_pCertList);
        QCOMPARE(promptOf(dialog), before);
        QCOMPARE(QString(dialog.m_szErrInfo), QString("LoadCertDisk() m_nRv : %1").arg(code));
        QCOMPARE(messages.take(), QStringList());
    }

    void anUnreadableRecordIsABlankRow()
    {
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        service.unreadable = 0;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(rowTexts(table(dialog), 0), QStringList({"", "", "", ""}));
        QCOMPARE(rowTexts(table(dialog), 1).first(), QString("lee"));
        QCOMPARE(promptOf(dialog), LanguageFolder::korean("MSG_SELECTCERT_SELCERTINPUTPWD"));
    }

    void anUnreadableLastRecordLeavesItsCodeAndNoPrompt()
    {
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        service.unreadable = 1;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(table(dialog).model()->rowCount(), 2);
        QCOMPARE(dialog.m_nRv, int(CLPERR_CERT_FIELD));
        QCOMPARE(promptOf(dialog), QString());
        QCOMPARE(selectedRow(dialog), 0);
    }

    void aSecondPressOnTheDiskButtonReloadsAll()
    {
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        clickRow(table(dialog), 1);
        QCOMPARE(selectedRow(dialog), 1);
        service.certs.push_back(sampleCert("park"));
        press(dialog, "pushButton_hdd");
        QCOMPARE(table(dialog).model()->rowCount(), 3);
        QCOMPARE(selectedRow(dialog), 0);
        QCOMPARE(service.count("CLP_LoadCertList"), 2);
    }

    void anExpiredCertificateLocksThePasswordUntilAValidOneIsChosen()
    {
        service.certs = {expiredCert("old"), sampleCert("new")};
        DialogBench bench;
        bench.load->nExpiredOption = EXPIRED_LOCK_PASSWORD;
        const SelectCertDialog& dialog = bench.openDisk();
        QVERIFY(!passwordEnabled(dialog));
        clickRow(table(dialog), 1);
        QVERIFY(passwordEnabled(dialog));
        clickRow(table(dialog), 0);
        QVERIFY(!passwordEnabled(dialog));
    }

    void withoutTheLockClicksNeverChangeThePasswordField()
    {
        service.certs = {expiredCert("old"), sampleCert("new")};
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        auto& password = child(dialog, "lineEdit_password");
        clickRow(table(dialog), 0);
        QVERIFY(password.isEnabled());
        password.setEnabled(false);
        clickRow(table(dialog), 1);
        QVERIFY(!password.isEnabled());
    }

    void theMemoryStatesOfExpiryCountToo()
    {
        service.certs = {expiredCert("old")};
        service.certs[0].nCertState = CERTSTATE_EXPIRED_1024;
        DialogBench bench;
        bench.load->nExpiredOption = EXPIRED_LOCK_PASSWORD;
        QVERIFY(!passwordEnabled(bench.openDisk()));
    }

    void theNoticeNamesTheDayOfExpiry()
    {
        service.certs = {expiredCert("old")};
        HeardMessages messages;
        DialogBench bench;
        bench.folder.setMessage("MSG_SELECTCERT_EXIRED", "ended on %s, 100%% sure, %n %s");
        bench.load->nNoticeOption = NOTICE_EXPIRED;
        bench.openDisk();
        QCOMPARE(messages.take(), QStringList(LanguageFolder::korean("DLG_SELCERT_CAPITON") +
                                              "|ended on 2020-12-31, 100% sure, %n %s"));
    }

    void withoutTheNoticeTheLockStillApplies()
    {
        service.certs = {expiredCert("old")};
        HeardMessages messages;
        DialogBench bench;
        bench.load->nExpiredOption = EXPIRED_LOCK_PASSWORD;
        QVERIFY(!passwordEnabled(bench.openDisk()));
        QCOMPARE(messages.take(), QStringList());
    }

    void aRowOutsideTheListIsPassedOver()
    {
        service.certs = {expiredCert("old")};
        HeardMessages messages;
        DialogBench bench;
        bench.load->nNoticeOption = NOTICE_EXPIRED;
        SelectCertDialog& dialog = bench.openDisk();
        messages.take();
        dialog.SetExpiredCert(-1);
        dialog.SetExpiredCert(1);
        QCOMPARE(messages.take(), QStringList());
    }

    void aClickWithoutASelectionAsksForOne()
    {
        service.certs = {sampleCert("kim")};
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        child<QTableView>(dialog, "tableView_certlist").clearSelection();
        const int before = dialog.m_nRv;
        dialog.on_tableView_certlist_clicked({});
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_NOTSELECTCERT")));
        QCOMPARE(dialog.m_nRv, before);
    }

    void anUnreadableDriveListIsSaidAndChangesNoMedium()
    {
        service.certs = {sampleCert("kim")};
        HeardMessages messages;
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        press(dialog, "pushButton_remove");
        QCOMPARE(messages.take(),
                 QStringList(koreanMessage("MSG_SELECTCERT_REMDRIVE_GETINFOFAIL", "DLG_REMOVABLE_CAPTION")));
        QCOMPARE(dialog.m_nRv, int(CLPERR_NO_REMOVABLE_DRIVE));
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_HARDDISK));
        QVERIFY(child(dialog, "pushButton_remove").isEnabled());
    }

    void aChosenDriveIsLoadedByItsRow()
    {
        service.certs = {sampleCert("kim")};
        service.drives = {drive("/media/a"), drive("/media/b")};
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        const QString before = promptOf(dialog);
        service.certs = {expiredCert("on the drive")};
        whenShown([](QDialog& drives) {
            clickRow(child<QTableView>(drives, "tableView_remobable"), 1);
            press(drives, "pushButton_ok");
        });
        press(dialog, "pushButton_remove");
        QCOMPARE(service.calls.back(), std::string("CLP_GetCertInfo(0)"));
        QCOMPARE(service.count("CLP_SetMediaType"), 2);
        QVERIFY(std::count(service.calls.begin(), service.calls.end(), "CLP_SetMediaType(2,1)") == 1);
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_REMOVABLE));
        QCOMPARE(rowTexts(table(dialog), 0).first(), QString("on the drive"));
        QCOMPARE(promptOf(dialog), before);
        expectLockedRemovable(dialog);
    }

    void aCancelledDriveListLeavesTheFormerList()
    {
        service.certs = {sampleCert("kim")};
        service.drives = {drive("/media/a")};
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        whenShown([](QDialog& drives) { press(drives, "pushButton_cancel"); });
        press(dialog, "pushButton_remove");
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_REMOVABLE));
        QCOMPARE(rowTexts(table(dialog), 0).first(), QString("kim"));
        expectLockedRemovable(dialog);
        bench.reopen();
        QVERIFY2(child(dialog, "pushButton_remove").isEnabled(), "the next selection frees the button");
    }

    void aStartOnMemoryFillsTheListAndNotTheTable()
    {
        service.certs = {sampleCert("kim")};
        DialogBench bench;
        bench.load->bMemoryCert = 1;
        copyText(bench.load->szMemSignCert, "certificate of the host");
        bench.load->nMemSignCertLen = 23;
        bench.load->nMemSignKeyLen = 10;
        SelectCertDialog& dialog = bench.open();
        service.calls.clear();
        dialog.SetInitMediaCert(MEDIA_MEMORY);
        QCOMPARE(service.calls, std::vector<std::string>({"CLP_SetMemoryCert()", "CLP_SetMediaType(6,0)",
                                                          "CLP_LoadCertList()", "CLP_GetCertCount()",
                                                          "CLP_GetCertInfo(0)"}));
        QCOMPARE(service.memoryCert, std::string("certificate of the host"));
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_MEMORY));
        QCOMPARE(dialog.m_nCertCount, 1);
        QCOMPARE(dialog.m_pCertList[0].szSubjectCN, "kim");
        QCOMPARE(table(dialog).model()->rowCount(), 0);
        QCOMPARE(selectedRow(dialog), -1);
    }

    void aStartOnMemoryKeepsTheRowsOfTheFormerSelection()
    {
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        service.certs = {expiredCert("memory")};
        bench.load->nExpiredOption = EXPIRED_LOCK_PASSWORD;
        bench.load->bMemoryCert = 1;
        bench.load->nMemSignCertLen = bench.load->nMemSignKeyLen = 4;
        bench.reopen();
        dialog.SetInitMediaCert(MEDIA_MEMORY);
        QCOMPARE(table(dialog).model()->rowCount(), 2);
        QCOMPARE(dialog.m_nCertCount, 1);
        QCOMPARE(dialog.m_pCertList[0].szSubjectCN, "memory");
        clickRow(table(dialog), 1); // a row that the list does not have any more
        QVERIFY(passwordEnabled(dialog));
        clickRow(table(dialog), 0);
        QVERIFY(!passwordEnabled(dialog));
    }

    void memoryFailuresAreHandedOn_data()
    {
        QTest::addColumn<QString>("function");
        for (const char* function : {"CLP_SetMemoryCert", "CLP_SetMediaType", "CLP_LoadCertList"})
            QTest::newRow(function) << QString(function);
    }

    void memoryFailuresAreHandedOn()
    {
        QFETCH(QString, function);
        service.certs = {sampleCert("kim")};
        service.fail(function.toStdString(), 4711);
        DialogBench bench;
        char bytes[] = "bytes";
        QCOMPARE(bench.open().LoadMemoryCert(bytes, 5, bytes, 5, nullptr, 0, nullptr, 0), 4711);
        QCOMPARE(service.count("CLP_GetCertCount"), 0);
    }

    void anEmptyMemoryListIsNoCertificate()
    {
        DialogBench bench;
        char bytes[] = "bytes";
        QCOMPARE(bench.open().LoadMemoryCert(bytes, 5, bytes, 5, nullptr, 0, nullptr, 0),
                 int(CLPERR_NOTEXISTCERT));
    }

private:
    static void expectLockedRemovable(const SelectCertDialog& dialog)
    {
        QVERIFY(!child(dialog, "pushButton_remove").isEnabled());
        QVERIFY(child(dialog, "pushButton_hdd").isEnabled());
        QCOMPARE(child<QPushButton>(dialog, "pushButton_hdd").iconSize(), QSize(50, 60));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_remove").iconSize(), QSize(50, 60));
    }
};

QTEST_MAIN(ListTest)
#include "ListTest.moc"
