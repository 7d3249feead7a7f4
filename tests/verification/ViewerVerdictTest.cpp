/* The viewer's verify button over the real list service, the open toolkit and a real directory. */

#include <QElapsedTimer>
#include <QLabel>
#include <QTextCodec>
#include <QtTest>

#include "BoundedText.h"
#include "CertViewMainDialog.h"
#include "DialogBench.h"
#include "Doors.h"
#include "Scenes.h"
#include "TestHome.h"

namespace {

/** Made before the application, which asks for the user's home. */
[[maybe_unused]] const std::filesystem::path& home = TestHome::path();

QString eucKr(const std::string& text)
{
    return QTextCodec::codecForName("EUC-KR")->toUnicode(text.c_str());
}

/** A session of the list service, as the selection dialog has one. */
class Session
{
public:
    Session(const std::string& workDirectory, int toolkit)
    {
        LOADOPT option{};
        option.nLibAPIType = toolkit;
        copyText(option.szWorkDir, workDirectory.c_str());
        LOADCERTOPT filter{};
        filter.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
        if (CLP_Initalize(&handle, &option, nullptr) != 0 || CLP_SetType(handle, &filter) != 0 ||
            CLP_SetMediaType(handle, MEDIA_HARDDISK, 0) != 0 || CLP_LoadCertList(handle) != 0)
            qFatal("no session");
        records.resize(static_cast<std::size_t>(CLP_GetCertCount(handle)));
        for (std::size_t i = 0; i < records.size(); ++i)
            CLP_GetCertInfo(handle, static_cast<int>(i), &records[i]);
    }
    ~Session() { CLP_UnInitalize(handle); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /** Place of a holder in the list. */
    int placeOf(const std::string& holder) const
    {
        for (std::size_t i = 0; i < records.size(); ++i)
            if (holder == records[i].szSubjectCN)
                return static_cast<int>(i);
        qFatal("no such holder");
        return -1;
    }

    void* handle = nullptr;
    std::vector<CERTINFO> records;
};

} // namespace

class ViewerVerdictTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Scenes> scenes;
    QString status; ///< text in the state's place
    int result = -1;

    /** Opens the viewer on a holder, presses its verify button and gives the message that came. */
    QString verify(Session& session, const Scene& scene, const char* pack)
    {
        const int place = session.placeOf(scene.holder);
        CertViewMainDialog viewer(nullptr);
        joinText(viewer.m_szLanguageFile, {scenes->workDirectory().c_str(), pack});
        viewer.m_pContext = session.handle;
        viewer.m_normalForm.m_nCertIndex = viewer.m_detailForm.m_nCertIndex = place;
        viewer.m_normalForm.m_pCertInfo = viewer.m_detailForm.m_pCertInfo =
            &session.records[static_cast<std::size_t>(place)];
        viewer.InitSetControl();
        HeardMessages heard;
        whenShown([&](QDialog& dialog) {
            press(dialog, "pushButton_verify");
            status = child<QLabel>(dialog, "label_status").text();
            dialog.close();
        });
        viewer.setModal(true);
        viewer.exec();
        result = viewer.m_nResult;
        return heard.take().join('\n');
    }

private slots:
    void everyCaseIsToldInTheMessage_data()
    {
        QTest::addColumn<int>("toolkit");
        QTest::addColumn<QString>("language");
        for (const char* language : {"KOR", "ENG"}) {
            QTest::addRow("ZRTK %s", language) << int(TOOLKIT_ZRTK) << language;
            QTest::addRow("GPKI %s", language) << int(TOOLKIT_GPKI) << language;
        }
    }
    void everyCaseIsToldInTheMessage()
    {
        QFETCH(int, toolkit);
        QFETCH(QString, language);
        const bool korean = language == "KOR";
        scenes = std::make_unique<Scenes>(language.toStdString());
        Session session(scenes->workDirectory(), toolkit);
        for (const Scene& scene : scenes->all()) {
            QElapsedTimer passed;
            passed.start();
            const QString message = verify(session, scene, korean ? "/KOR.ini" : "/ENG.ini");
            QVERIFY(passed.elapsed() < 20'000); // three seconds is the limit of each operation
            const char* const holder = scene.holder.c_str();
            if (scene.code == qgtk::Code::Ok) {
                QVERIFY2(message.isEmpty(), qPrintable(holder + message));
                QCOMPARE(result, 0);
                QVERIFY2(status == (korean ? QStringLiteral("유효한 인증서입니다.")
                                           : QString("This certificate is valid.")),
                         qPrintable(holder + status));
                continue;
            }
            QCOMPARE(result, int(CLPERR_CERT_VERIFY));
            const QString words = eucKr(scenes->textOf(scene)).remove("<wrenlib>");
            QVERIFY2(message.contains(words), qPrintable(holder + message));
            QVERIFY2(korean || status.startsWith(words), qPrintable(holder + status));
            QVERIFY(!message.contains("<wrenlib>"));
        }
    }

    /** The whole road: selection dialog, double click, button. */
    void theSelectionDialogsViewerVerifiesToo()
    {
        scenes = std::make_unique<Scenes>();
        INITOPT init = {};
        init.nLanguage = 1;
        copyText(init.szWorkDir, scenes->workDirectory().c_str());
        LOADSELECTCERTOPTION load = {};
        load.nCertCAType = CERTTYPE_NPKI;
        const auto extra = std::make_unique<EXTRAOPTION>();
        const auto out = std::make_unique<SELCERTINFO>();
        QStringList messages;
        HeardMessages heard;
        const auto verifyRow = [&](QTableView& table, int row) {
            whenShown([&](QDialog& viewer) {
                press(viewer, "pushButton_verify");
                messages.append(heard.take().join('\n'));
                viewer.close();
            });
            table.scrollTo(table.model()->index(row, 0));
            clickRow(table, row);
            QTest::mouseDClick(table.viewport(), Qt::LeftButton, {},
                               table.visualRect(table.model()->index(row, 0)).center());
        };
        whenShown([&](QDialog& dialog) {
            auto& table = child<QTableView>(dialog, "tableView_certlist");
            for (const char* holder : {"good", "revoked"})
                for (int row = 0; row < table.model()->rowCount(); ++row)
                    if (rowTexts(table, row).first() == holder)
                        verifyRow(table, row);
            dialog.close();
        });
        ShowUserCert_T(&init, &load, nullptr, extra.get(), out.get());
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages[0], QString());
        QVERIFY2(messages[1].contains(QStringLiteral("폐지된 인증서입니다 (1320): cn=revoked,")),
                 qPrintable(messages[1]));
    }
};

QTEST_MAIN(ViewerVerdictTest)
#include "ViewerVerdictTest.moc"
