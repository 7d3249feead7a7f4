#include "LibraryHost.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <TestHome.h>
#include <samplepki/Authority.h>
#include <samplepki/Media.h>
#include <stdexcept>

namespace host {

std::string password()
{
    // Put together at run time, so that the program's own image does not hold it.
    std::string text = "Qg-";
    for (int i = 0; i < 16; ++i)
        text += static_cast<char>('a' + (i * 7) % 26);
    return text + "!9";
}

Holder writeHolder(const std::string& keyPassword)
{
    using namespace samplepki;
    TestHome::reset();
    Authority root =
        Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 2));
    const KeyPair signKey = KeyPool::key(KeyKind::Rsa2048, 0);
    const KeyPair kmKey = KeyPool::key(KeyKind::Rsa2048, 1);
    const Name name = nameFromText("cn=홍길동,ou=personal,o=yessign,c=kr");
    Request km{name, kmKey};
    km.keyUsage = EnvelopeUse;
    writeNpkiHolder(TestHome::path(), "yessign", "holder",
                    {filePair(root.issue({name, signKey}), signKey, keyPassword),
                     filePair(root.issue(km), kmKey, keyPassword)});
    return {signKey.privateKeyInfo(), kmKey.privateKeyInfo(), signKey.random()};
}

void* openSession(int toolkit)
{
    const auto options = std::make_unique<LOADOPT>();
    options->nLibAPIType = toolkit;
    std::string(WORK_DIR).copy(options->szWorkDir, sizeof options->szWorkDir - 1);
    const auto filter = std::make_unique<LOADCERTOPT>();
    filter->nCertCAType = CERTTYPE_NPKI;
    void* handle = nullptr;
    if (CLP_Initalize(&handle, options.get(), nullptr) != 0 || CLP_SetType(handle, filter.get()) != 0 ||
        CLP_SetMediaType(handle, MEDIA_HARDDISK, 0) != 0 || CLP_LoadCertList(handle) != 0)
        throw std::runtime_error("no session");
    return handle;
}

namespace {

/**
 * Does one step of the ending each time that the event loop comes round with a modal window open. Single
 * shots in place of one timer: a timer does not fire again inside the loop that its own step opened.
 */
class Person : public QObject
{
public:
    Person(Ending ending, const std::string& typed, std::vector<std::string>* said)
        : m_ending(ending), m_typed(typed), m_said(said)
    {
        comeRound();
    }

private:
    void comeRound()
    {
        QTimer::singleShot(0, this, [this] {
            comeRound();
            step();
        });
    }

    void step()
    {
        QWidget* window = QApplication::activeModalWidget();
        if (auto* message = qobject_cast<QMessageBox*>(window)) {
            if (m_said)
                m_said->push_back(message->text().toStdString());
            return message->accept();
        }
        if (!window || window->objectName() != "SelectCertDialog")
            return;
        if (m_ending == Ending::Cancel || m_tried)
            return window->findChild<QPushButton*>("pushButton_cancel")->click();
        m_tried = true;
        std::string text = m_typed;
        if (m_ending == Ending::WrongPasswordThenCancel)
            text += "x";
        window->findChild<QLineEdit*>("lineEdit_password")->setText(QString::fromStdString(text));
        window->findChild<QPushButton*>("pushButton_ok")->click();
    }

    Ending m_ending;
    std::string m_typed;
    std::vector<std::string>* m_said;
    bool m_tried = false;
};

} // namespace

int runDialog(Ending ending, SELCERTINFO& outcome)
{
    Options options;
    return runDialog(ending, options, password(), outcome);
}

Options::Options() : Options(WORK_DIR) {}

Options::Options(const std::string& workDirectory)
{
    workDirectory.copy(init->szWorkDir, sizeof init->szWorkDir - 1);
    init->nLanguage = 1;
    load->nCertCAType = CERTTYPE_NPKI;
}

int runDialog(Ending ending, Options& options, const std::string& typed, SELCERTINFO& outcome,
              std::vector<std::string>* said)
{
    static int argc = 1;
    static char name[] = "host";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
    const Person person(ending, typed, said);
    return ShowUserCert_T(options.init.get(), options.load.get(), nullptr, options.extra.get(), &outcome);
}

} // namespace host
