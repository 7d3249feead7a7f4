/* The exported functions, as far as one thread can show them; see SharedSelectionTest for the rest. */

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QRegularExpression>
#include <QtTest>
#include <sys/stat.h>
#include <thread>

#include "DebugLog.h"
#include "DialogBench.h"
#include "FakeService.h"
#include "TestHome.h"

// The debug line's writer is local to its file. This program takes that file in, in the place of the
// library's.
#include "CertManager.cpp" // NOLINT(bugprone-suspicious-include)

namespace {

/** The line of today's debug log that has a text in it. */
QString loggedLine(const QString& text)
{
    for (const QString& line : QString::fromStdString(readFile(debugLogPath())).split('\n'))
        if (line.contains(text))
            return line;
    return {};
}

/** A text that no other line of the log has. */
QString uniqueText(const char* purpose)
{
    return QString("%1-%2-%3").arg(purpose).arg(getpid()).arg(QDateTime::currentMSecsSinceEpoch());
}

} // namespace

class EntryPointsTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();
    DialogBench bench;
    std::unique_ptr<SELCERTINFO> out;

    int select()
    {
        return ShowUserCert_T(&bench.init, bench.load.get(), nullptr, bench.extra.get(), out.get());
    }

    static void typePassword(QDialog& dialog)
    {
        QTest::keyClicks(&child<QLineEdit>(dialog, "lineEdit_password"), "password1!");
    }

private slots:
    void init()
    {
        service.reset();
        service.certs = {sampleCert("kim"), sampleCert("lee")};
        *bench.load = {};
        out = std::make_unique<SELCERTINFO>();
        std::memset(out.get(), 0x55, sizeof(*out));
    }

    /* --- ShowUserCert_T --- */

    void anAcceptedSelectionFillsTheRecord()
    {
        whenShown([](QDialog& dialog) {
            QVERIFY(dialog.isModal());
            QVERIFY(!dialog.parent());
            typePassword(dialog);
            press(dialog, "pushButton_ok");
        });
        QCOMPARE(select(), 0);
        QCOMPARE(out->szSubjectCN, "kim");
        QCOMPARE(QByteArray(out->szSignKey, out->nSignKeyLen), QByteArray("signing key"));
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
        QCOMPARE(service.sessions, 0);
        QCOMPARE(service.buffers, 0);
    }

    void withoutAChoiceTheRecordStaysAsItWas_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"cancel button", "escape", "close button"})
            QTest::newRow(way) << QString(way);
    }

    void withoutAChoiceTheRecordStaysAsItWas()
    {
        QFETCH(QString, way);
        whenShown([way](QDialog& dialog) {
            typePassword(dialog);
            if (way == "cancel button")
                press(dialog, "pushButton_cancel");
            else if (way == "escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                dialog.close();
        });
        QCOMPARE(select(), -1);
        QCOMPARE(QByteArray(reinterpret_cast<char*>(out.get()), sizeof(*out)),
                 QByteArray(sizeof(*out), 0x55));
        QCOMPARE(service.sessions, 0);
    }

    void nothingIsCarriedOverFromAnAcceptedSelection()
    {
        anAcceptedSelectionFillsTheRecord();
        whenShown([](QDialog& dialog) { dialog.close(); });
        QCOMPARE(select(), -1);
    }

    void codesOfTheStartAreReturnedAndNothingIsShown_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<int>("code");
        QTest::newRow("CLP_Initalize") << "CLP_Initalize" << 30003;
        QTest::newRow("CLP_SetType") << "CLP_SetType" << 10003;
    }

    void codesOfTheStartAreReturnedAndNothingIsShown()
    {
        QFETCH(QString, function);
        QFETCH(int, code);
        service.fail(function.toStdString(), code);
        QCOMPARE(select(), code);
        QCOMPARE(service.count("CLP_LoadCertList"), 0);
        QCOMPARE(service.sessions, 0);
    }

    void aFailingListLoadOpensAnEmptyDialog()
    {
        service.fail("CLP_LoadCertList", 4711);
        whenShown([](QDialog& dialog) {
            QCOMPARE(child<QTableView>(dialog, "tableView_certlist").model()->rowCount(), 0);
            dialog.close();
        });
        QCOMPARE(select(), -1);
    }

    void aMemoryCertificateStartsOnMemory()
    {
        bench.load->bMemoryCert = 1;
        bench.load->nMemSignCertLen = bench.load->nMemSignKeyLen = 4;
        whenShown([](QDialog& dialog) { dialog.close(); });
        QCOMPARE(select(), -1);
        QCOMPARE(service.count("CLP_SetMemoryCert"), 1);
    }

    void missingRecordsAreRefused()
    {
        QCOMPARE(ShowUserCert_T(&bench.init, nullptr, nullptr, bench.extra.get(), out.get()),
                 int(QG_BAD_ARGUMENT));
        QCOMPARE(ShowUserCert_T(&bench.init, bench.load.get(), nullptr, nullptr, out.get()),
                 int(QG_BAD_ARGUMENT));
        QCOMPARE(ShowUserCert_T(&bench.init, bench.load.get(), nullptr, bench.extra.get(), nullptr),
                 int(QG_BAD_ARGUMENT));
        QVERIFY(service.calls.empty());
    }

    void onAnotherThreadThanTheApplicationsItIsRefused()
    {
        int result = 0;
        std::thread([&] { result = select(); }).join();
        QCOMPARE(result, int(QG_BAD_ARGUMENT));
        QVERIFY(service.calls.empty());
    }

    void aMissingInitRecordIsPassedOver()
    {
        service.fail("CLP_Initalize", 30001);
        QCOMPARE(ShowUserCert_T(nullptr, bench.load.get(), nullptr, bench.extra.get(), out.get()), 30001);
        QCOMPARE(service.loadOption.szWorkDir, "");
    }

    void noExceptionLeaves()
    {
        service.throwing = true;
        QCOMPARE(select(), int(QG_NO_MEMORY));
        QCOMPARE(service.sessions, 0);
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void messagesAreRealBoxesWithOneButton()
    {
        DialogBench other;
        const SelectCertDialog& dialog = other.openDisk();
        whenShown([&dialog](QDialog& shown) {
            auto* box = qobject_cast<QMessageBox*>(&shown);
            QVERIFY(box);
            QCOMPARE(box->parentWidget(), &dialog);
            QCOMPARE(box->icon(), QMessageBox::Information);
            QCOMPARE(box->windowTitle(), LanguageFolder::korean("DLG_SELCERT_CAPITON"));
            QCOMPARE(box->text(), LanguageFolder::korean("MSG_SELECTCERT_INPUTPASSWORD"));
            QCOMPARE(box->standardButtons(), QMessageBox::Ok);
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        });
        press(dialog, "pushButton_ok");
    }

    /* --- GetSlectFilePath --- */

    void aChosenFileIsHandedOver()
    {
        ChosenFile file("/a/인증서.pfx");
        char path[100];
        std::memset(path, 0x55, sizeof(path));
        QCOMPARE(GetSlectFilePath(sizeof(path), path), 0);
        QCOMPARE(QString::fromLocal8Bit(path), QString("/a/인증서.pfx"));
        QCOMPARE(path[99], '\0');
        QCOMPARE(file.asked, QStringList("Select File|/|"));
    }

    void thePathNeedsOneByteMoreThanItsLength_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("result");
        QTest::newRow("exact length") << 11 << int(QG_BAD_ARGUMENT);
        QTest::newRow("one more") << 12 << 0;
        QTest::newRow("nothing") << 0 << int(QG_BAD_ARGUMENT);
        QTest::newRow("negative") << -1 << int(QG_BAD_ARGUMENT);
    }

    void thePathNeedsOneByteMoreThanItsLength()
    {
        QFETCH(int, size);
        QFETCH(int, result);
        ChosenFile file("/a/file.pfx");
        QByteArray path(13, 'x');
        QCOMPARE(GetSlectFilePath(size, path.data()), result);
        QCOMPARE(path, result == 0 ? QByteArray("/a/file.pfx\0x", 13) : QByteArray(13, 'x'));
    }

    void aCancelledFileDialogLeavesTheBuffer()
    {
        ChosenFile file("");
        char path[] = "untouched";
        QCOMPARE(GetSlectFilePath(sizeof(path), path), 1);
        QCOMPARE(path, "untouched");
    }

    void withoutABufferNothingIsShown()
    {
        ChosenFile file("/a/file.pfx");
        QCOMPARE(GetSlectFilePath(100, nullptr), int(QG_BAD_ARGUMENT));
        QVERIFY(file.asked.isEmpty());
    }

    void theFileDialogIsReal()
    {
        const auto chosen = TestHome::scratch("files") / "chosen.pfx";
        writeFile(chosen, "bytes");
        whenShown([&chosen](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Select File"));
            child<QLineEdit>(dialog, "fileNameEdit").setText(QString::fromStdString(chosen.string()));
            QTest::mouseClick(child<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Open),
                              Qt::LeftButton);
        });
        char path[1024] = {};
        QCOMPARE(GetSlectFilePath(sizeof(path), path), 0);
        QCOMPARE(path, chosen.c_str());
    }

    /* --- LOG_LEVEL --- */

    void aDebugLineHasItsForm()
    {
        if (!isDebugLogOurs())
            QSKIP("another user has today's log");
        const QString text = uniqueText("form");
        LOG_LEVEL("DEBUG", "/some/path\\CertManager", 94, "Class::Function", "%s : %d",
                  text.toLatin1().constData(), 7);
        const QRegularExpression form("^\\[qg4np\\]\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\]\\[DEBUG\\]"
                                      "\\[path\\\\CertManager:94\\]\\[Function\\] " +
                                      text + " : 7$");
        const QString line = loggedLine(text);
        QVERIFY2(form.match(line).hasMatch(), qPrintable(line));
    }

    void theFileIsNamedByItsLastPart()
    {
        if (!isDebugLogOurs())
            QSKIP("another user has today's log");
        const QString text = uniqueText("file");
        LOG_LEVEL("DEBUG", "C:\\folder\\CertManager", 1, "f", "%s", text.toLatin1().constData());
        QVERIFY(loggedLine(text).contains("][CertManager:1][f] "));
    }

    void missingPartsWriteNothing()
    {
        if (!isDebugLogOurs())
            QSKIP("another user has today's log");
        const QString text = uniqueText("missing");
        const QByteArray message = text.toLatin1();
        LOG_LEVEL(nullptr, "file", 1, "f", "%s", message.constData());
        LOG_LEVEL("DEBUG", nullptr, 1, "f", "%s", message.constData());
        LOG_LEVEL("DEBUG", "file", 1, nullptr, "%s", message.constData());
        LOG_LEVEL("DEBUG", "file", 1, "f", "there is a log");
        QCOMPARE(loggedLine(text), QString());
    }

    void aLongMessageIsCut()
    {
        if (!isDebugLogOurs())
            QSKIP("another user has today's log");
        const QString text = uniqueText("long");
        const QByteArray message = text.toLatin1() + QByteArray(5000, 'x');
        LOG_LEVEL("DEBUG", "file", 1, "f", "%s", message.constData());
        const QString line = loggedLine(text);
        QCOMPARE(line.size(), 4094); // with its line feed what the line's buffer holds
        QVERIFY(line.endsWith(text + QString(line.size() - line.indexOf(text) - text.size(), 'x')));
    }

    /* --- ShowUserCertInit --- */

    void aHostWithAnApplicationIsToldSo()
    {
        QCOMPARE(ShowUserCertInit(0, nullptr), int(QG_BAD_ARGUMENT));
        QVERIFY(!g_pQApplication && !g_dlgUserCert);
    }

    void insideARunningLoopNothingIsTornDown()
    {
        g_pQApplication = qobject_cast<QApplication*>(QCoreApplication::instance());
        SelectCertDialog dialog(nullptr);
        g_dlgUserCert = &dialog;
        int result = 0;
        QEventLoop loop;
        QTimer::singleShot(0, [&] {
            result = ShowUserCertInit(0, nullptr);
            loop.quit();
        });
        loop.exec();
        QCOMPARE(result, -1);
        QCOMPARE(g_dlgUserCert, &dialog);
        g_dlgUserCert = nullptr;
        g_pQApplication = nullptr;
    }
};

QTEST_MAIN(EntryPointsTest)
#include "EntryPointsTest.moc"
