/* Whole selections over the real list service and toolkit: what they hand over, and what they leave in
 * memory. */

#include <QtTest>
#include <sys/wait.h>

#include "BoundedText.h"
#include "DialogBench.h"
#include "MemoryScan.h"
#include "Secret.h"
#include "TestHome.h"
#include "samplepki/Authority.h"
#include "samplepki/Media.h"

namespace {

/** A pass phrase, masked, so that this program itself does not hold it. */
const std::string& maskedPassword()
{
    static const std::string masked = "\xc4\xcb\x85\xd0\xcb\xc6\xca\xc8\xc8\xca\xcb\x85\xd5"
                                      "\xc4\xd6\xd6\x85\xd5\xcd\xd7\xc4\xd6\xc0\x85\x92\x84";
    return masked;
}

char passwordAt(std::size_t index)
{
    return static_cast<char>(static_cast<unsigned char>(maskedPassword()[index]) ^ Needle::MASK);
}

/** The later part of the password: its start is the first that reused memory overwrites. */
std::string maskedPart()
{
    return maskedPassword().substr(8, 12);
}

Needle bytePassword()
{
    return Needle::ofMasked(maskedPart());
}

/** The password as the widgets hold it: two bytes a character. */
Needle widePassword()
{
    std::string masked;
    for (char character : maskedPart())
        masked += {character, static_cast<char>(Needle::MASK)};
    return Needle::ofMasked(masked);
}

/** Certificates of one holder whose key fits the record and one whose RSA-4096 key does not. */
void writeCertificates()
{
    using namespace samplepki;
    std::string password;
    for (std::size_t index = 0; index < maskedPassword().size(); ++index)
        password += passwordAt(index);
    const KeyPair& key = KeyPool::key();
    Authority root = Authority::root(nameFromText("cn=KISA RootCA 4,o=KISA,c=KR"), key);
    Authority ca =
        root.intermediate(nameFromText("cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr"), key);
    const auto write = [&](const char* name, const char* folder, const KeyPair& own) {
        const Name subject = nameFromText(name);
        writeNpkiHolder(TestHome::path(), folder, nameText(subject),
                        {filePair(ca.issue({subject, own}), own, password)});
    };
    write("cn=홍길동,ou=personal4IB,o=yessign,c=kr", "yessign", key);
    write("cn=large,ou=personal4IB,o=KICA,c=kr", "KICA", KeyPool::key(KeyKind::Rsa4096));
}

/** Another process makes the files, so that this one has neither seen the password nor the keys. */
bool writeCertificatesElsewhere()
{
    TestHome::path();
    const pid_t child = fork();
    if (child == 0) {
        writeCertificates();
        _exit(0);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

const bool prepared = writeCertificatesElsewhere();

void typePassword(const QDialog& dialog)
{
    for (std::size_t index = 0; index < maskedPassword().size(); ++index)
        QTest::keyClick(&child<QLineEdit>(dialog, "lineEdit_password"), passwordAt(index));
}

void chooseRow(const QDialog& dialog, const QString& name)
{
    auto& table = child<QTableView>(dialog, "tableView_certlist");
    for (int row = 0; row < table.model()->rowCount(); ++row)
        if (rowTexts(table, row).first() == name) {
            table.scrollTo(table.model()->index(row, 0));
            return clickRow(table, row);
        }
    QFAIL("no such row");
}

} // namespace

class SecretsTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<INITOPT> init = std::make_unique<INITOPT>();
    std::unique_ptr<LOADSELECTCERTOPTION> load = std::make_unique<LOADSELECTCERTOPTION>();
    std::unique_ptr<EXTRAOPTION> extra = std::make_unique<EXTRAOPTION>();
    std::unique_ptr<SELCERTINFO> out = std::make_unique<SELCERTINFO>();

    int select() { return ShowUserCert_T(init.get(), load.get(), nullptr, extra.get(), out.get()); }

private slots:
    void initTestCase()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer keeps freed memory, and its own is too large to search");
#endif
        QVERIFY(prepared);
        init->nLanguage = 1;
        copyText(init->szWorkDir, QUILLGATE_WORKDIR);
        load->nCertCAType = CERTTYPE_NPKI;
    }

    void acceptanceHandsOverAndLeavesNothing()
    {
        int typed = 0;
        whenShown([&typed](QDialog& dialog) {
            chooseRow(dialog, "홍길동");
            typePassword(dialog);
            typed = widePassword().count();
            press(dialog, "pushButton_ok");
        });
        QCOMPARE(select(), 0);
        QVERIFY2(typed > 0, "the scan must find what was typed");
        QCOMPARE(QString::fromUtf8(out->szSubjectDN), QString("cn=홍길동,ou=personal4IB,o=yessign,c=kr"));
        QCOMPARE(out->nKeyRandomLen, 20);

        const Needle key(out->szSignKey + 400, 32); // of the private exponent
        QVERIFY2(key.count() > 0, "the scan must find the key in the record");
        wipe(*out);
        QCOMPARE(key.count(), 0);
        QCOMPARE(bytePassword().count(), 0);
        QCOMPARE(widePassword().count(), 0);
    }

    void cancelLeavesNothing()
    {
        whenShown([](QDialog& dialog) {
            typePassword(dialog);
            press(dialog, "pushButton_cancel");
            QCOMPARE(widePassword().count(), 0);
        });
        QCOMPARE(select(), -1);
        QCOMPARE(bytePassword().count(), 0);
    }

    void theCloseButtonLeavesNothingOnceTheDialogIsGone()
    {
        whenShown([](QDialog& dialog) {
            typePassword(dialog);
            dialog.close();
        });
        QCOMPARE(select(), -1);
        QCOMPARE(widePassword().count(), 0);
    }

    void anRsa4096KeyIsRefusedWithAMessage()
    {
        HeardMessages messages;
        whenShown([](QDialog& dialog) {
            chooseRow(dialog, "large");
            typePassword(dialog);
            press(dialog, "pushButton_ok");
            QVERIFY(dialog.isVisible());
            QCOMPARE(static_cast<SelectCertDialog&>(dialog).m_nRv, int(CLPERR_NO_PRIVATE_KEY));
            dialog.close();
        });
        QCOMPARE(select(), -1);
        QCOMPARE(messages.take().size(), 1);
        QCOMPARE(out->nSignKeyLen, 0);
    }
};

QTEST_MAIN(SecretsTest)
#include "SecretsTest.moc"
