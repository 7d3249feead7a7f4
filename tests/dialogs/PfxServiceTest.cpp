/* Finding a certificate in a PFX file, over the real list service: its import is not available, whatever the
 * file. */

#include <QtTest>
#include <filesystem>

#include "BoundedText.h"
#include "DialogBench.h"
#include "TestHome.h"
#include "quillgate/certlist.h"
#include "samplepki/Authority.h"
#include "samplepki/Media.h"

namespace fs = std::filesystem;

namespace {

constexpr char certPassword[] = "password1!";

void writeHolder()
{
    using namespace samplepki;
    const KeyPair& key = KeyPool::key();
    Authority root = Authority::root(nameFromText("cn=yessignCA Class 2,o=yessign,c=kr"), key);
    const Name subject = nameFromText("cn=kim,ou=personal4IB,o=yessign,c=kr");
    writeNpkiHolder(TestHome::path(), "yessign", "kim",
                    {filePair(root.issue({subject, key}), key, certPassword)});
}

/** Exports the holder; false when that fails. */
bool exportPfx(const fs::path& workDirectory, const fs::path& path)
{
    LOADOPT options = {};
    LOADCERTOPT filter = {};
    copyText(options.szWorkDir, workDirectory.c_str());
    filter.nCertCAType = CERTTYPE_NPKI;
    void* handle = nullptr;
    std::string password = certPassword;
    std::string file = path;
    const bool exported = CLP_Initalize(&handle, &options, nullptr) == 0 &&
                          CLP_SetType(handle, &filter) == 0 &&
                          CLP_SetMediaType(handle, MEDIA_HARDDISK, 0) == 0 && CLP_LoadCertList(handle) == 0 &&
                          CLP_ExportPFX(handle, 0, password.data(), file.data()) == 0;
    CLP_UnInitalize(handle);
    return exported;
}

} // namespace

class PfxServiceTest : public QObject
{
    Q_OBJECT

    const fs::path files = TestHome::scratch("files");

private slots:
    void initTestCase()
    {
        // The dialog's work directory has its language packs, and lacks a toolkit.
        const fs::path workDirectory = LanguageFolder().path().toStdString();
        const char* const library = "libZRToolkitV30-v3.4.2.20.so";
        fs::create_symlink(fs::path(QUILLGATE_WORKDIR) / library, workDirectory / library);
        writeHolder();
        QVERIFY(exportPfx(QUILLGATE_WORKDIR, files / "real.pfx"));
        writeFile(files / "damaged.pfx", "no PFX file");
        fs::create_directory(files / "directory.pfx");
    }

    void everyFileAndPasswordEndsInTheSameMessage_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("password");
        QTest::newRow("a PFX file and its password") << "real.pfx" << certPassword;
        QTest::newRow("a wrong password") << "real.pfx"
                                          << "wrong";
        QTest::newRow("a damaged file") << "damaged.pfx"
                                        << "x";
        QTest::newRow("a directory") << "directory.pfx"
                                     << "x";
        QTest::newRow("no such file") << "none.pfx"
                                      << "x";
    }

    void everyFileAndPasswordEndsInTheSameMessage()
    {
        QFETCH(QString, name);
        QFETCH(QString, password);
        DialogBench bench;
        bench.load->nCertCAType = CERTTYPE_NPKI;
        ChosenFile file(QString::fromStdString((files / name.toStdString()).string()));
        HeardMessages messages;
        const SelectCertDialog& dialog = bench.openDisk();
        const auto& table = child<QTableView>(dialog, "tableView_certlist");
        QCOMPARE(table.model()->rowCount(), 1);
        const QString prompt = child<QLineEdit>(dialog, "lineEdit_msg").text();
        whenShown([password](QDialog& asked) {
            QTest::keyClicks(&child<QLineEdit>(asked, "lineEdit_password"), password);
            press(asked, "pushButton_ok");
        });
        press(dialog, "pushButton_find");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT",
                                                            "MSG_MANAGEUSER_ALERT_TITLE_IMPORT")));
        QCOMPARE(dialog.m_nRv, int(QG_NOT_AVAILABLE));
        QCOMPARE(dialog.m_szPFXPassword, "");
        QCOMPARE(dialog.m_nMediaType, int(MEDIA_HARDDISK));
        QCOMPARE(rowTexts(table, 0).first(), QString("kim"));
        QCOMPARE(child<QLineEdit>(dialog, "lineEdit_msg").text(), prompt);
    }
};

QTEST_MAIN(PfxServiceTest)
#include "PfxServiceTest.moc"
