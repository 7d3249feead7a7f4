/* Password, keys and the outcome that the host gets. */

#include <QSignalSpy>
#include <QtTest>

#include "BoundedText.h"
#include "DialogBench.h"
#include "FakeService.h"
#include "PasswordEdit.h"

namespace {

QLineEdit& password(const QWidget& window)
{
    return child<QLineEdit>(window, "lineEdit_password");
}

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class AcceptanceTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();

private slots:
    void init()
    {
        service.reset();
        service.certs = {sampleCert("kim"), sampleCert("lee")};
    }

    void okHandsTheOutcomeOver()
    {
        service.keys = {"signing key", "km key", "random value"};
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        clickRow(child<QTableView>(dialog, "tableView_certlist"), 1);
        QTest::keyClicks(&password(dialog), "password1!");
        QSignalSpy accepted(&dialog, &QDialog::accepted);
        press(dialog, "pushButton_ok");
        QCOMPARE(accepted.count(), 1);
        QCOMPARE(dialog.m_nDlgResult, 1);
        QCOMPARE(password(dialog).text(), QString());
        const auto out = outcomeOf(dialog);
        QCOMPARE(out->nMediaType, int(MEDIA_HARDDISK));
        QCOMPARE(out->szSubjectCN, "lee");
        QCOMPARE(bytes(out->szSignKey, out->nSignKeyLen), QByteArray("signing key"));
        QCOMPARE(bytes(out->szKmKey, out->nKmKeyLen), QByteArray("km key"));
        QCOMPARE(bytes(out->szKeyRandom, out->nKeyRandomLen), QByteArray("random value"));
        QCOMPARE(bytes(out->szSignCert, out->nSignCertLen), QByteArray("signing certificate"));
        QCOMPARE(bytes(out->szKmCert, out->nKmCertLen), QByteArray("km certificate"));
        QCOMPARE(out->szSerialNumber, "10000001");
        QCOMPARE(out->szBeforeDay, "2020-01-01");
        QCOMPARE(out->szAfterDay, "2030-12-31");
        QCOMPARE(out->szSignCertPath, "/media/NPKI/signCert.der");
        QCOMPARE(out->szSignKeyPath, "/media/NPKI/signPri.key");
        QCOMPARE(out->szKmCertPath, "/media/NPKI/kmCert.der");
        QCOMPARE(out->szKmKeyPath, "/media/NPKI/kmPri.key");
        expectEmptyFields(*out);
        QCOMPARE(service.buffers, 0);
    }

    void theServiceIsCalledAndGivenItsBuffersBackInOrder()
    {
        service.keys = {"signing key", "km key", "random value"};
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        service.calls.clear();
        char typed[] = "password1!";
        QCOMPARE(dialog.SetSelectCertInfo(0, typed), 0);
        QCOMPARE(service.calls,
                 std::vector<std::string>({"CLP_DecryptPriKeyData(0)", "CLP_GetPriKeyRandom(0)",
                                           "CLP_MemFree(signing key)", "CLP_MemFree(km key)",
                                           "CLP_MemFree(random value)"}));
    }

    void subjectAndPolicyAreUtf8WhileTheRestStaysEucKr()
    {
        copyText(service.certs[0].szSubjectDN, "cn=\xb9\xdf\xb1\xde\xc0\xda,c=kr");
        DialogBench bench;
        const auto out = accept(bench.openDisk());
        QCOMPARE(text(out->szSubjectDN), QString("cn=발급자,c=kr"));
        QCOMPARE(text(out->szCertPolicy), QString("개인 policy"));
        QCOMPARE(out->szIssuerDN, service.certs[0].szIssuerDN);
        QCOMPARE(out->szIssuerCN, "\xb9\xdf\xb1\xde\xc0\xda");
    }

    void theSigningKeysPathNeedsTheCertificatesPath()
    {
        service.certs[0].szSignCertPath[0] = '\0';
        DialogBench bench;
        const auto out = accept(bench.openDisk());
        QCOMPARE(out->szSignCertPath, "");
        QCOMPARE(out->szSignKeyPath, "");
        QCOMPARE(out->szKmCertPath, "/media/NPKI/kmCert.der");
    }

    void tokenFieldsStayEmptyAndPathsGoWithDisksAlone_data()
    {
        QTest::addColumn<int>("media");
        QTest::addColumn<bool>("paths");
        QTest::newRow("hard disk") << int(MEDIA_HARDDISK) << true;
        QTest::newRow("removable") << int(MEDIA_REMOVABLE) << true;
        QTest::newRow("smart card") << int(MEDIA_SMARTCARD) << false;
        QTest::newRow("token") << int(MEDIA_PKCS11) << false;
        QTest::newRow("memory") << int(MEDIA_MEMORY) << false;
        QTest::newRow("USIM") << int(MEDIA_USIM) << false;
    }

    void tokenFieldsStayEmptyAndPathsGoWithDisksAlone()
    {
        QFETCH(int, media);
        QFETCH(bool, paths);
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        dialog.m_nMediaType = media;
        char typed[] = "password1!";
        QCOMPARE(dialog.SetSelectCertInfo(0, typed), 0);
        const auto out = outcomeOf(dialog);
        QCOMPARE(out->nMediaType, media);
        QCOMPARE(*out->szSignCertPath != '\0', paths);
        QCOMPARE(*out->szSignKeyPath != '\0', paths);
        QCOMPARE(*out->szKmKeyPath != '\0', paths);
        expectEmptyFields(*out);
        QCOMPARE(service.count("CLP_DecryptPriKeyData"), paths ? 1 : 0);
    }

    void tokenFieldsOfTheListWouldBeHandedOn()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        copyText(dialog.m_pCertList[0].szPinNumber, "pin");
        copyText(dialog.m_pCertList[0].szLibPath, "library");
        char none[] = "";
        dialog.m_nMediaType = MEDIA_USIM;
        dialog.CopySelectCertInfo(0, none);
        QCOMPARE(outcomeOf(dialog)->szPinNumber, "");
        QCOMPARE(outcomeOf(dialog)->szLibPath, "library");
        dialog.m_nMediaType = MEDIA_SMARTCARD;
        dialog.CopySelectCertInfo(0, none);
        QCOMPARE(outcomeOf(dialog)->szPinNumber, "pin");
    }

    void anEarlierAttemptStaysWhereTheNewSourceIsEmpty()
    {
        service.keys.kmKey = "km key";
        service.keys.random = "random";
        service.certs[1].nKmCertLen = 0;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        accept(dialog);
        service.keys = {"other key", "", ""};
        child<QTableView>(dialog, "tableView_certlist").selectRow(1);
        const auto out = accept(dialog);
        QCOMPARE(bytes(out->szSignKey, out->nSignKeyLen).left(9), QByteArray("other key"));
        QCOMPARE(bytes(out->szKmKey, out->nKmKeyLen), QByteArray("km key"));
        QCOMPARE(bytes(out->szKeyRandom, out->nKeyRandomLen), QByteArray("random"));
        QCOMPARE(bytes(out->szKmCert, out->nKmCertLen), QByteArray("km certificate"));
    }

    void theListsOwnRandomReplacesTheServices()
    {
        service.keys.random = "from the service";
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        copyText(dialog.m_pCertList[0].szKeyRandom, "from the list");
        dialog.m_pCertList[0].nKeyRandomLen = 13;
        const auto out = accept(dialog);
        QCOMPARE(bytes(out->szKeyRandom, out->nKeyRandomLen), QByteArray("from the list"));
    }

    void theHostsRecordIsClearedFirst()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        const auto out = std::make_unique<SELCERTINFO>();
        std::memset(out.get(), 0x55, sizeof(*out));
        dialog.GetSelectCertinfo(out.get());
        const QByteArray zeros(sizeof(*out), '\0');
        QVERIFY(std::memcmp(out.get(), zeros.constData(), sizeof(*out)) == 0);
        dialog.GetSelectCertinfo(nullptr);
    }

    void anEmptyPasswordIsAskedFor()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_INPUTPASSWORD")));
        expectStillOpen(dialog, 0);
    }

    void aPasswordOf1023BytesPassesAndOf1024Fails()
    {
        HeardMessages messages;
        service.password = std::string(1023, 'x');
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText(QString(1024, 'x'));
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_PASSWORD_MAX")));
        expectStillOpen(dialog, 0);
        password(dialog).setText(QString(1023, 'x'));
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList());
        QCOMPARE(dialog.m_nDlgResult, 1);
    }

    void aKoreanPasswordCountsInBytes()
    {
        HeardMessages messages;
        const QString korean(342, QChar(0xAC00));
        service.password = korean.left(341).toLocal8Bit().toStdString();
        QCOMPARE(service.password.size(), std::size_t(1023));
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText(korean);
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_PASSWORD_MAX")));
        password(dialog).setText(korean.left(341));
        press(dialog, "pushButton_ok");
        QCOMPARE(dialog.m_nDlgResult, 1);
    }

    void aWrongPasswordLeavesTheTextAndTheDialogForAFurtherTry()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        for (int attempt = 0; attempt < 10; ++attempt) {
            password(dialog).setText("wrong");
            press(dialog, "pushButton_ok");
            QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR")));
            QCOMPARE(password(dialog).text(), QString("wrong"));
            expectStillOpen(dialog, CLPERR_WRONG_PASSWORD);
        }
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(dialog.m_nDlgResult, 1);
    }

    void whatIsTypedBehindARefusalGoesToThePassword()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        QCOMPARE(dialog.focusWidget(), &password(dialog));
        for (const char* typed : {"", "wrong"}) {
            child(dialog, "pushButton_ok").setFocus();
            password(dialog).setText(typed);
            press(dialog, "pushButton_ok");
            QCOMPARE(messages.take().size(), 1);
            QCOMPARE(dialog.focusWidget(), &password(dialog));
        }
        child(dialog, "pushButton_ok").setFocus();
        bench.reopen();
        QCOMPARE(dialog.focusWidget(), &password(dialog));
    }

    void noSelectionIsAskedFor()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        child<QTableView>(dialog, "tableView_certlist").clearSelection();
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_NOTSELECTCERT")));
        expectStillOpen(dialog, 0);
    }

    void failuresOfTheServiceAreShownOrNot_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("key not obtainable") << 30012 << QByteArray("MSG_SELECTCERT_GETPRIKEY");
        QTest::newRow("damaged key") << 30016 << QByteArray();
        QTest::newRow("km key with another password") << 30021 << QByteArray();
        QTest::newRow("a number of the toolkit") << 4711 << QByteArray();
    }

    void failuresOfTheServiceAreShownOrNot()
    {
        QFETCH(int, code);
        QFETCH(QByteArray, message);
        HeardMessages messages;
        service.fail("CLP_DecryptPriKeyData", code);
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(),
                 message.isEmpty() ? QStringList() : QStringList(koreanMessage(message.constData())));
        expectStillOpen(dialog, code);
    }

    void aDecryptionWithoutAKeyIsAFailure()
    {
        HeardMessages messages;
        service.keys.signKey.clear();
        service.keys.kmKey = "km key";
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("DLG_CERTPASSWORD_WRONG_PKCS11")));
        expectStillOpen(dialog, CLPERR_KEY_DECRYPT);
        QCOMPARE(service.buffers, 0);
    }

    void aKeyThatDoesNotFitTheRecordIsRefused_data()
    {
        QTest::addColumn<int>("signLength");
        QTest::addColumn<int>("kmLength");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("both fill their fields") << 2048 << 2048 << true;
        QTest::newRow("signing key too long") << 2049 << 100 << false;
        QTest::newRow("km key too long") << 100 << 2049 << false;
        QTest::newRow("both far too long") << 5000 << 5000 << false;
    }

    void aKeyThatDoesNotFitTheRecordIsRefused()
    {
        QFETCH(int, signLength);
        QFETCH(int, kmLength);
        QFETCH(bool, accepted);
        HeardMessages messages;
        service.keys = {std::string(static_cast<std::size_t>(signLength), 's'),
                        std::string(static_cast<std::size_t>(kmLength), 'k'), ""};
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(dialog.m_nDlgResult == 1, accepted);
        QCOMPARE(service.buffers, 0);
        if (accepted) {
            QCOMPARE(outcomeOf(dialog)->nSignKeyLen, signLength);
            QCOMPARE(outcomeOf(dialog)->szSignKey[2047], 's');
            return;
        }
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_GETPRIKEY")));
        expectStillOpen(dialog, CLPERR_NO_PRIVATE_KEY);
        QCOMPARE(outcomeOf(dialog)->nSignKeyLen, 0);
    }

    void aRandomThatDoesNotFitIsLeftOut()
    {
        service.keys.random = std::string(1025, 'r');
        DialogBench bench;
        QCOMPARE(accept(bench.openDisk())->nKeyRandomLen, 0);
    }

    void aRowOutsideTheListIsRefused()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        char typed[] = "password1!";
        QCOMPARE(dialog.SetSelectCertInfo(2, typed), int(QG_BAD_ARGUMENT));
        QCOMPARE(dialog.SetSelectCertInfo(-1, typed), int(QG_BAD_ARGUMENT));
        QCOMPARE(service.count("CLP_DecryptPriKeyData"), 0);
    }

    void memoryCertificatesOfTheHostTurnEveryPasswordAway()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        dialog.m_nMediaType = MEDIA_MEMORY;
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_PASSWORD_DIFFERENT")));
        expectStillOpen(dialog, 0);
    }

    void aPfxPasswordPassesInAnotherLetterCase()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        dialog.m_nMediaType = MEDIA_MEMORY;
        copyText(dialog.m_szPFXPassword, "Secret-1");
        password(dialog).setText("sECRET-1");
        press(dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList());
        QCOMPARE(dialog.m_nDlgResult, 1);
        QCOMPARE(service.count("CLP_DecryptPriKeyData"), 0);
    }

    void returnAcceptsAndTheKeypadsEnterDoesNothing()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        QTest::keyClicks(&password(dialog), "password1!");
        QTest::keyClick(&password(dialog), Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(dialog.m_nDlgResult, -1);
        QCOMPARE(service.count("CLP_DecryptPriKeyData"), 0);
        QTest::keyClick(&password(dialog), Qt::Key_Return);
        QCOMPARE(dialog.m_nDlgResult, 1);
    }

    void escapeClearsThePasswordAndCancels()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        QTest::keyClicks(&password(dialog), "password1!");
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(rejected.count(), 1);
        QCOMPARE(dialog.m_nDlgResult, 0);
        QCOMPARE(password(dialog).text(), QString());
    }

    void cancelClearsThePassword()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText("password1!");
        press(dialog, "pushButton_cancel");
        QCOMPARE(dialog.m_nDlgResult, 0);
        QCOMPARE(password(dialog).text(), QString());
    }

    void theWindowsCloseButtonLeavesOutcomeAndPassword()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        dialog.show();
        password(dialog).setText("password1!");
        QSignalSpy rejected(&dialog, &QDialog::rejected);
        dialog.close();
        QCOMPARE(rejected.count(), 1);
        QCOMPARE(dialog.m_nDlgResult, -1);
        QCOMPARE(password(dialog).text(), QString("password1!"));
        bench.reopen();
        QCOMPARE(password(dialog).text(), QString("password1!"));
    }

    void viewWithoutASelectionAsksForOne()
    {
        HeardMessages messages;
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        child<QTableView>(dialog, "tableView_certlist").clearSelection();
        press(dialog, "pushButton_view");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_NOTSELECTCERT")));
    }

    void anotherHoldersTextIsNotWiped()
    {
        const QString mine = QString("pass") + "word1!";
        DialogBench bench;
        SelectCertDialog& dialog = bench.openDisk();
        password(dialog).setText(mine);
        press(dialog, "pushButton_ok");
        QCOMPARE(dialog.m_nDlgResult, 1);
        QCOMPARE(mine, QString("password1!"));
    }

    void typingNeverMovesThePasswordAndClearingWipesIt()
    {
        DialogBench bench;
        auto& edit = static_cast<PasswordEdit&>(password(bench.openDisk()));
        QTest::keyClicks(&edit, "p");
        const QChar* first = edit.text().constData();
        QTest::keyClicks(&edit, QString(500, 'q'));
        QCOMPARE(edit.text().constData(), first);
        edit.wipeAndClear();
        QVERIFY(edit.text().isEmpty());
        edit.redo();
        QVERIFY(edit.text().isEmpty());
        QTest::keyClicks(&edit, "again");
        QCOMPARE(edit.text(), QString("again"));
        edit.undo();
        QVERIFY(edit.text().isEmpty());
        edit.redo();
        QVERIFY(edit.text().isEmpty());
    }

private:
    template <std::size_t N>
    static QByteArray bytes(const char (&field)[N], int length)
    {
        return {field, length};
    }

    static std::unique_ptr<SELCERTINFO> outcomeOf(SelectCertDialog& dialog)
    {
        auto out = std::make_unique<SELCERTINFO>();
        dialog.GetSelectCertinfo(out.get());
        return out;
    }

    static std::unique_ptr<SELCERTINFO> accept(SelectCertDialog& dialog)
    {
        password(dialog).setText("password1!");
        press(dialog, "pushButton_ok");
        return outcomeOf(dialog);
    }

    static void expectStillOpen(const SelectCertDialog& dialog, int code)
    {
        QCOMPARE(dialog.m_nDlgResult, -1);
        QCOMPARE(dialog.m_nRv, code);
    }

    static void expectEmptyFields(const SELCERTINFO& out)
    {
        QCOMPARE(out.nEncSignKeyLen, 0);
        QCOMPARE(out.nEncKmKeyLen, 0);
        QCOMPARE(out.szEncSignKey, "");
        QCOMPARE(out.szEncKmKey, "");
        QCOMPARE(out.szPinNumber, "");
        QCOMPARE(out.szLibPath, "");
        QCOMPARE(QByteArray(out.abUnused, sizeof(out.abUnused)), QByteArray(sizeof(out.abUnused), '\0'));
    }
};

QTEST_MAIN(AcceptanceTest)
#include "AcceptanceTest.moc"
