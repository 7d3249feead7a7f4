#include "DialogBench.h"

#include <QApplication>
#include <QMap>
#include <QMessageBox>
#include <QTextCodec>
#include <QTimer>

#include "BoundedText.h"
#include "Doors.h"
#include "TestHome.h"

namespace {

const char* const uiKeys[] = {"DLG_SELCERT_CAPITON",
                              "DLG_GROUPBOX_MEDIA",
                              "DLG_CERTLISTCTRL_DN",
                              "DLG_CERTLISTCTRL_ISSUER",
                              "DLG_CERTLISTCTRL_USAGE",
                              "DLG_CERTLISTCTRL_VALIDITYTO",
                              "DLG_FINDCERT_TEXT",
                              "DLG_BUTTON_FIND",
                              "DLG_STATIC_CERTPASSWORD",
                              "DLG_BUTTON_OK",
                              "DLG_BUTTON_CANCEL",
                              "DLG_BUTTON_VIEW",
                              "DLG_BUTTONMEDIA_HDD",
                              "DLG_BUTTONMEDIA_REMOVE",
                              "DLG_BUTTONMEDIA_USIM",
                              "DLG_BUTTONMEDIA_PKCS11",
                              "DLG_BUTTONMEDIA_SMCARD",
                              "DLG_BUTTONMEDIA_PHONE",
                              "DLG_CERTPASSWORD_CAPITON",
                              "DLG_CERTPASSWORD_INPUT",
                              "DLG_REMOVABLE_CAPTION",
                              "DLG_REMOVABLE_TITLE",
                              "DLG_REMOVABLE_LIST",
                              "MSG_MANAGEUSER_ALERT_TITLE_IMPORT",
                              "DLG_CERVIEWMAIN_TABNORMAL",
                              "DLG_CERVIEWMAIN_TABDETAIL",
                              "DLG_CERTVIEW_CAPITON",
                              "DLG_BUTTON_VERIFY",
                              "DLG_CERVIEWNORAL_TITLE",
                              "DLG_CERVIEWNORAL_USAGETITLE",
                              "DLG_CERVIEWNORAL_EXPLAIN",
                              "DLG_CERVIEWNORAL_SUBJECTTITLE",
                              "DLG_CERVIEWNORAL_ISSUERTITLE",
                              "DLG_CERVIEWNORAL_DATETITLE",
                              "DLG_CERVIEWNORAL_USETITLE",
                              "DLG_CERVIEWNORAL_STATETITLE",
                              "DLG_CERVIEWNORAL_CERTVALID",
                              "DLG_CERVIEWNORAL_CERTRENEWAL",
                              "DLG_CERVIEWNORAL_CERTEXPIRED",
                              "DLG_CERVIEWNORAL_KEYUSAGE_DIGITALSIGN",
                              "DLG_CERVIEWNORAL_KEYUSAGE_NONREPUDIATION",
                              "DLG_CERVIEWNORAL_KEYUSAGE_KEYENCIPHERMENT",
                              "DLG_CERVIEWNORAL_KEYUSAGE_DATAENCIPHERMENT",
                              "DLG_CERVIEWNORAL_KEYUSAGE_KEYAGREEMENT",
                              "DLG_CERVIEWNORAL_KEYUSAGE_KEYCERTSIGN",
                              "DLG_CERVIEWNORAL_KEYUSAGE_CRLSIGN",
                              "DLG_CERVIEWNORAL_KEYUSAGE_ENCIPHERONLY",
                              "DLG_CERVIEWNORAL_KEYUSAGE_DECIPHERONLY",
                              "DLG_CERVIEWDETAIL_LISTFIELD",
                              "DLG_CERVIEWDETAIL_LISTCONTENTS",
                              "DLG_CERVIEWDETAIL_FIELDVERSION",
                              "DLG_CERVIEWDETAIL_FIELDSERIAL",
                              "DLG_CERVIEWDETAIL_FIELDSIGNALG",
                              "DLG_CERVIEWDETAIL_FIELDISSUER",
                              "DLG_CERVIEWDETAIL_FIELDBEFORE",
                              "DLG_CERVIEWDETAIL_FIELDAFTER",
                              "DLG_CERVIEWDETAIL_FIELDDN",
                              "DLG_CERVIEWDETAIL_FIELDPUBKEYALG",
                              "DLG_CERVIEWDETAIL_FIELDAUTHKEYID",
                              "DLG_CERVIEWDETAIL_FIELDSUBKEYID",
                              "DLG_CERVIEWDETAIL_FIELDKEYUSAGE",
                              "DLG_CERVIEWDETAIL_FIELDPOLICY",
                              "DLG_CERVIEWDETAIL_FIELDALTNAME",
                              "DLG_CERVIEWDETAIL_FIELDCRLDP",
                              "DLG_CERVIEWDETAIL_FIELDAIA",
                              "DLG_CERVIEWDETAIL_FIELDLOCATION",
                              "DLG_BUTTONMEDIA_MEMORY"};

const char* const messageKeys[] = {"MSG_SELECTCERT_NOCERT",
                                   "MSG_SELECTCERT_NOCERT_SIGN",
                                   "MSG_SELECTCERT_FAIL",
                                   "MSG_SELECTCERT_NOTSELECTCERT",
                                   "MSG_SELECTCERT_SELCERTINPUTPWD",
                                   "MSG_SELECTCERT_REMDRIVE_GETINFOFAIL",
                                   "MSG_SELECTCERT_INPUTPASSWORD",
                                   "MSG_SELECTCERT_PASSWORD_MAX",
                                   "MSG_SELECTCERT_PASSWORD_DIFFERENT",
                                   "MSG_SELECTCERT_PASSWORD_DIFFERENT_KOR",
                                   "MSG_SELECTCERT_GETPRIKEY",
                                   "DLG_CERTPASSWORD_WRONG_PKCS11",
                                   "MSG_MANAGEUSER_ALERTFAIL_CERTIMPORT",
                                   "MSG_MANAGEUSER_ALERTCANCEL_CERTIMPORT",
                                   "MSG_SELECTCERT_EXIRED",
                                   "MSG_CERTVERIFY_SUCESS",
                                   "MSG_CERTVERIFY_FAIL",
                                   "MSG_CERTVERIFY_DETAILMSG"};

/** Made before the QApplication, which asks for the user's home and so fixes it for the process. */
[[maybe_unused]] const std::filesystem::path& home = TestHome::path();

template <std::size_t N>
QStringList toList(const char* const (&keys)[N])
{
    QStringList list;
    for (const char* key : keys)
        list.append(QLatin1String(key));
    return list;
}

QByteArray folderPath()
{
    static const QByteArray path = QByteArray::fromStdString(TestHome::scratch("workdir").string());
    return path;
}

} // namespace

LanguageFolder::LanguageFolder() : m_ui(toList(uiKeys)), m_messages(toList(messageKeys))
{
    write();
}

QByteArray LanguageFolder::path() const
{
    return folderPath();
}

void LanguageFolder::drop(const char* key)
{
    m_ui.removeAll(QLatin1String(key));
    m_messages.removeAll(QLatin1String(key));
    write();
}

void LanguageFolder::setMessage(const char* key, const char* text)
{
    m_own[QLatin1String(key)] = QLatin1String(text);
    write();
}

void LanguageFolder::write() const
{
    const auto pack = [this](const char* name, auto&& textOf) {
        const auto section = [&](const QStringList& keys) {
            QString lines;
            for (const QString& key : keys)
                lines += key + '=' + m_own.value(key, textOf(key.toLatin1().constData())) + '\n';
            return lines;
        };
        const QString text = "[UserInterface]\n" + section(m_ui) + "[Message]\n" + section(m_messages);
        writeFile((folderPath() + '/' + name).toStdString(),
                  QTextCodec::codecForName("EUC-KR")->fromUnicode(text).toStdString());
    };
    pack("KOR.ini", korean);
    pack("ENG.ini", english);
}

HeardMessages::HeardMessages()
{
    replaceMessageDoor([this](const QString& title, const QString& text) {
        m_heard.append(title + '|' + text);
        return static_cast<int>(QMessageBox::Ok);
    });
}

HeardMessages::~HeardMessages()
{
    replaceMessageDoor({});
}

QString koreanMessage(const char* messageKey, const char* titleKey)
{
    return LanguageFolder::korean(titleKey) + '|' + LanguageFolder::korean(messageKey);
}

ChosenFile::ChosenFile(const QString& path)
{
    replaceFileDoor([this, path](const QString& caption, const QString& directory, const QString& filter) {
        asked.append(caption + '|' + directory + '|' + filter);
        return path;
    });
}

ChosenFile::~ChosenFile()
{
    replaceFileDoor({});
}

DialogBench::DialogBench() : load(new LOADSELECTCERTOPTION()), extra(new EXTRAOPTION())
{
    init.nLanguage = 1;
    copyText(init.szWorkDir, folder.path().constData());
    load->nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI;
}

SelectCertDialog& DialogBench::open()
{
    dialog = std::make_unique<SelectCertDialog>(nullptr);
    reopen();
    return *dialog;
}

void DialogBench::reopen()
{
    dialog->SetInitOption(&init, load.get(), extra.get());
    dialog->InitSetControl();
    dialog->Initalize();
}

SelectCertDialog& DialogBench::openDisk()
{
    open().SetInitMediaCert(MEDIA_HARDDISK);
    return *dialog;
}

void press(const QWidget& window, const char* button)
{
    QTest::mouseClick(&child<QPushButton>(window, button), Qt::LeftButton);
}

void clickRow(const QTableView& table, int row)
{
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(row, 0)).center());
}

QStringList rowTexts(const QTableView& table, int row)
{
    QStringList texts;
    for (int column = 0; column < table.model()->columnCount(); ++column)
        texts.append(table.model()->index(row, column).data().toString());
    return texts;
}

void whenShown(std::function<void(QDialog&)> step)
{
    QWidget* before = QApplication::activeModalWidget();
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, [timer, before, step = std::move(step)] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog == before || !dialog->isVisible())
            return;
        timer->deleteLater();
        timer->stop();
        step(*dialog);
    });
    timer->start(0);
}
