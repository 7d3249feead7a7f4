/* How the selection dialog is built and lettered: widgets, options, media images, logo. */

#include <QBuffer>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMetaMethod>
#include <QtTest>

#include "BoundedText.h"
#include "DialogBench.h"
#include "FakeService.h"

Q_DECLARE_METATYPE(Qt::FocusPolicy)

namespace {

QImage shownLogo(const SelectCertDialog& dialog)
{
    return child<QLabel>(dialog, "label_logo").pixmap(Qt::ReturnByValue).toImage();
}

QImage resourceLogo(const char* name)
{
    return QPixmap(QLatin1String(":/bmp/image/") + QLatin1String(name)).toImage();
}

/** What a media button shows, compared with an image of the resources. */
bool showsImage(const QPushButton& button, const QString& name)
{
    const QSize size = button.iconSize();
    QIcon expected;
    expected.addPixmap(QPixmap(":/png/image/" + name), QIcon::Normal, QIcon::Off);
    return !button.icon().isNull() && button.icon().pixmap(size).toImage() == expected.pixmap(size).toImage();
}

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { FakeService::instance().reset(); }

    void widgetsStandWhereTheyBelong_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QRect>("geometry");
        const auto row = [](const char* name, const char* parent, const char* type, const QRect& geometry) {
            QTest::newRow(name) << QString(parent) << QString(type) << geometry;
        };
        row("groupBox", "SelectCertDialog", "QGroupBox", {10, 90, 371, 96});
        row("pushButton_hdd", "groupBox", "QPushButton", {4, 24, 58, 68});
        row("pushButton_remove", "groupBox", "QPushButton", {64, 24, 58, 68});
        row("pushButton_bscert", "groupBox", "QPushButton", {124, 24, 58, 68});
        row("pushButton_token", "groupBox", "QPushButton", {184, 24, 58, 68});
        row("pushButton_phone", "groupBox", "QPushButton", {304, 24, 58, 68});
        row("pushButton_smcard", "groupBox", "QPushButton", {244, 24, 58, 68});
        row("label_find", "SelectCertDialog", "QLabel", {10, 340, 281, 31});
        row("pushButton_find", "SelectCertDialog", "QPushButton", {300, 342, 81, 26});
        row("label_pwd", "SelectCertDialog", "QLabel", {10, 370, 91, 21});
        row("lineEdit_password", "SelectCertDialog", "QLineEdit", {100, 372, 281, 21});
        row("tableView_certlist", "SelectCertDialog", "QTableView", {10, 190, 371, 148});
        row("pushButton_ok", "SelectCertDialog", "QPushButton", {10, 420, 122, 34});
        row("pushButton_cancel", "SelectCertDialog", "QPushButton", {136, 420, 122, 34});
        row("pushButton_view", "SelectCertDialog", "QPushButton", {260, 420, 120, 34});
        row("label_logo", "SelectCertDialog", "QLabel", {10, 10, 371, 81});
        row("lineEdit_msg", "SelectCertDialog", "QLineEdit", {10, 396, 371, 21});
    }

    void widgetsStandWhereTheyBelong()
    {
        QFETCH(QString, parent);
        QFETCH(QString, type);
        QFETCH(QRect, geometry);
        const SelectCertDialog dialog(nullptr);
        const QWidget& widget = child(dialog, QTest::currentDataTag());
        QCOMPARE(widget.parentWidget()->objectName(), parent);
        QCOMPARE(QString(widget.metaObject()->className()), type);
        QCOMPARE(widget.geometry(), geometry);
        QCOMPARE(widget.font().pointSize(), 9);
    }

    void theDialogHasOneSizeAndIsModal()
    {
        const SelectCertDialog dialog(nullptr);
        QCOMPARE(dialog.objectName(), QString("SelectCertDialog"));
        QCOMPARE(dialog.minimumSize(), QSize(391, 460));
        QCOMPARE(dialog.maximumSize(), QSize(391, 460));
        QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
        QCOMPARE(dialog.sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
        QCOMPARE(dialog.layoutDirection(), Qt::LeftToRight);
        QVERIFY(dialog.isModal());
        QVERIFY(dialog.autoFillBackground());
        QVERIFY(!dialog.isSizeGripEnabled());
        QCOMPARE(dialog.windowTitle(), QString("Dialog"));
    }

    void widgetsHaveTheirSettings()
    {
        const SelectCertDialog dialog(nullptr);
        const auto& password = child<QLineEdit>(dialog, "lineEdit_password");
        QCOMPARE(password.minimumSize(), QSize(281, 21));
        QCOMPARE(password.maximumSize(), QSize(281, 21));
        QCOMPARE(password.focusPolicy(), Qt::StrongFocus);
        QCOMPARE(password.locale(), QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(password.maxLength(), 1024);
        QVERIFY(password.text().isEmpty());
        const auto& table = child<QTableView>(dialog, "tableView_certlist");
        QCOMPARE(table.focusPolicy(), Qt::WheelFocus);
        QCOMPARE(table.locale(), QLocale(QLocale::Korean, QLocale::SouthKorea));
        QCOMPARE(child(dialog, "label_find").focusPolicy(), Qt::TabFocus);
        QCOMPARE(child(dialog, "label_pwd").focusPolicy(), Qt::TabFocus);
        const auto& message = child<QLineEdit>(dialog, "lineEdit_msg");
        QVERIFY(!message.hasFrame() && message.isReadOnly() && message.inputMask().isEmpty());
        for (const auto* button : dialog.findChildren<QPushButton*>())
            QVERIFY(!button->autoDefault() && !button->isDefault() && !button->isFlat());
        for (const char* name : {"pushButton_ok", "pushButton_view"})
            QCOMPARE(static_cast<int>(child(dialog, name).contextMenuPolicy()), 1);
        QCOMPARE(child<QPushButton>(dialog, "pushButton_hdd").iconSize(), QSize(60, 60));
    }

    void widgetsHaveBuiltInTextsAtFirst()
    {
        const SelectCertDialog dialog(nullptr);
        QCOMPARE(child<QGroupBox>(dialog, "groupBox").title(), QString("저장매체 선택"));
        QCOMPARE(child<QLabel>(dialog, "label_find").text(),
                 QString("인증서가 없을 경우 '찾아보기'버튼을 이용하십시오."));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_find").text(), QString("찾아보기"));
        QCOMPARE(child<QLabel>(dialog, "label_pwd").text(), QString("인증서 비밀번호"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_ok").text(), QString("ok"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_cancel").text(), QString("cancel"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_view").text(), QString("view"));
        QCOMPARE(child<QLabel>(dialog, "label_logo").text(), QString("IMAGE"));
    }

    void tabWalksInOrder()
    {
        const SelectCertDialog dialog(nullptr);
        QStringList order;
        const QWidget& first = child(dialog, "pushButton_hdd");
        const QWidget* widget = &first;
        do {
            if (!widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_") &&
                widget->focusPolicy() != Qt::NoFocus && widget != &dialog)
                order.append(widget->objectName());
            widget = widget->nextInFocusChain();
        } while (widget != &first);
        QCOMPARE(order,
                 QStringList({"pushButton_hdd", "pushButton_remove", "pushButton_bscert", "pushButton_token",
                              "pushButton_smcard", "pushButton_phone", "tableView_certlist", "label_find",
                              "pushButton_find", "label_pwd", "lineEdit_password", "lineEdit_msg",
                              "pushButton_ok", "pushButton_cancel", "pushButton_view"}));
    }

    void slotsStandInOrderBehindThoseOfTheBase()
    {
        const QMetaObject& meta = SelectCertDialog::staticMetaObject;
        QStringList names;
        for (int method = meta.methodOffset(); method < meta.methodCount(); ++method)
            names.append(meta.method(method).methodSignature());
        QCOMPARE(names,
                 QStringList({"on_pushButton_hdd_clicked()", "on_pushButton_remove_clicked()",
                              "on_pushButton_ok_clicked()", "on_pushButton_find_clicked()",
                              "on_pushButton_cancel_clicked()", "on_pushButton_view_clicked()",
                              "on_tableView_certlist_doubleClicked(QModelIndex)",
                              "on_tableView_certlist_clicked(QModelIndex)", "keyPressEvent(QKeyEvent*)"}));
    }

    void textsComeFromTheLanguagePack_data()
    {
        QTest::addColumn<int>("language");
        QTest::newRow("Korean") << 1;
        QTest::newRow("English") << 2;
        QTest::newRow("unknown values are English") << 77;
    }

    void textsComeFromTheLanguagePack()
    {
        QFETCH(int, language);
        DialogBench bench;
        bench.init.nLanguage = language;
        const SelectCertDialog& dialog = bench.open();
        const auto text = language == 1 ? LanguageFolder::korean : LanguageFolder::english;
        QCOMPARE(dialog.windowTitle(), text("DLG_SELCERT_CAPITON"));
        QCOMPARE(child<QGroupBox>(dialog, "groupBox").title(), text("DLG_GROUPBOX_MEDIA"));
        QCOMPARE(child<QLabel>(dialog, "label_find").text(), text("DLG_FINDCERT_TEXT"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_find").text(), text("DLG_BUTTON_FIND"));
        QCOMPARE(child<QLabel>(dialog, "label_pwd").text(), text("DLG_STATIC_CERTPASSWORD"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_ok").text(), text("DLG_BUTTON_OK"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_cancel").text(), text("DLG_BUTTON_CANCEL"));
        QCOMPARE(child<QPushButton>(dialog, "pushButton_view").text(), text("DLG_BUTTON_VIEW"));
        const QAbstractItemModel* model = child<QTableView>(dialog, "tableView_certlist").model();
        const char* const headers[] = {"DLG_CERTLISTCTRL_DN", "DLG_CERTLISTCTRL_ISSUER",
                                       "DLG_CERTLISTCTRL_USAGE", "DLG_CERTLISTCTRL_VALIDITYTO"};
        for (int column = 0; column < 4; ++column)
            QCOMPARE(model->headerData(column, Qt::Horizontal).toString(), text(headers[column]));
        const QString suffix = language == 1 ? ".png" : "E.png";
        QVERIFY(showsImage(child<QPushButton>(dialog, "pushButton_hdd"), "HDD_N" + suffix));
        QVERIFY(showsImage(child<QPushButton>(dialog, "pushButton_phone"), "PHONE_N" + suffix));
    }

    void aMissingKeyLeavesItsWidgetBlank()
    {
        DialogBench bench;
        bench.folder.drop("DLG_BUTTON_OK");
        bench.folder.drop("DLG_STATIC_CERTPASSWORD");
        const SelectCertDialog& dialog = bench.open();
        QCOMPARE(child<QPushButton>(dialog, "pushButton_ok").text(), QString());
        QCOMPARE(child<QLabel>(dialog, "label_pwd").text(), QString());
        QCOMPARE(child<QPushButton>(dialog, "pushButton_cancel").text(),
                 LanguageFolder::korean("DLG_BUTTON_CANCEL"));
    }

    void theTableSelectsSingleRowsAndIsNotEdited()
    {
        DialogBench bench;
        const auto& table = child<QTableView>(bench.open(), "tableView_certlist");
        QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(table.selectionMode(), QAbstractItemView::SingleSelection);
        QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(table.verticalHeader()->isHidden());
        QCOMPARE(table.columnWidth(0), 95);
        QCOMPARE(table.columnWidth(1), 92);
        QCOMPARE(table.columnWidth(2), 92);
        QCOMPARE(table.columnWidth(3), 75);
        QCOMPARE(table.font().pointSize(), 8);
        QCOMPARE(child<QLineEdit>(*bench.dialog, "lineEdit_password").echoMode(), QLineEdit::Password);
    }

    void everySelectionAddsAnUnseenLabel()
    {
        DialogBench bench;
        const SelectCertDialog& dialog = bench.open();
        const auto count = [&dialog] {
            int labels = 0;
            for (const auto* label : dialog.findChildren<QLabel*>())
                labels += label->windowTitle() == "인증서 선택창";
            return labels;
        };
        QCOMPARE(count(), 1);
        bench.reopen();
        QCOMPARE(count(), 2);
    }

    void onlyTheTwoDiskButtonsCanEverBePressed()
    {
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        QVERIFY(child(dialog, "pushButton_hdd").isEnabled());
        QVERIFY(child(dialog, "pushButton_remove").isEnabled());
        for (const char* name :
             {"pushButton_bscert", "pushButton_token", "pushButton_smcard", "pushButton_phone"}) {
            QVERIFY(!child(dialog, name).isEnabled());
            const auto calls = FakeService::instance().calls.size();
            press(dialog, name);
            QCOMPARE(FakeService::instance().calls.size(), calls);
        }
    }

    void buttonModesChooseImageSizeAndState_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("image");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("normal, disabled") << 0 << "MOVE_N.png" << QSize(50, 60) << false;
        QTest::newRow("normal, enabled") << 1 << "MOVE_N.png" << QSize(50, 60) << true;
        QTest::newRow("pressed, enabled") << 2 << "MOVE_P.png" << QSize(52, 62) << true;
        QTest::newRow("other, disabled") << 3 << "MOVE_P.png" << QSize(50, 60) << false;
    }

    void buttonModesChooseImageSizeAndState()
    {
        QFETCH(int, mode);
        QFETCH(QString, image);
        QFETCH(QSize, size);
        QFETCH(bool, enabled);
        DialogBench bench;
        SelectCertDialog& dialog = bench.open();
        dialog.SetButtonImage(mode, 2, 1);
        const auto& button = child<QPushButton>(dialog, "pushButton_remove");
        QVERIFY(showsImage(button, image));
        QCOMPARE(button.iconSize(), size);
        QCOMPARE(button.isEnabled(), enabled);
    }

    void anUnknownMediaBitDoesNothing()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.open();
        dialog.SetButtonImage(0, 3, 1);
        dialog.SetButtonImage(0, 64, 1);
        QVERIFY(child(dialog, "pushButton_hdd").isEnabled());
        QVERIFY(child(dialog, "pushButton_remove").isEnabled());
    }

    void theDefaultLogoIsTheProducts()
    {
        DialogBench bench;
        QCOMPARE(shownLogo(bench.open()), resourceLogo("Logo.bmp"));
        QVERIFY(!resourceLogo("Logo.bmp").isNull());
    }

    void aLogoIsFoundByItsBaseNameAmongTheResources()
    {
        DialogBench bench;
        copyText(bench.load->szLogoName, "/a/path/of/the/host/BriskSealLogo.bmp");
        QCOMPARE(shownLogo(bench.open()), resourceLogo("BriskSealLogo.bmp"));
    }

    void anUnknownLogoGivesTheDefaultOne()
    {
        DialogBench bench;
        copyText(bench.load->szLogoName, "NoSuchLogo.bmp");
        QCOMPARE(shownLogo(bench.open()), resourceLogo("Logo.bmp"));
    }

    void undecodableLogoDataGivesTheDefaultLogo()
    {
        DialogBench bench;
        copyText(bench.load->szLogoName, "LOAD_DATA");
        copyText(bench.extra->szLogoData, "this is no image");
        QCOMPARE(shownLogo(bench.open()), resourceLogo("Logo.bmp"));
    }

    void logoDataIsDecodedByTheToolkit()
    {
        QImage picture(371, 81, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QBuffer bmp;
        QVERIFY(picture.save(&bmp, "BMP"));
        DialogBench bench;
        copyText(bench.init.szWorkDir, QUILLGATE_WORKDIR);
        copyText(bench.load->szLogoName, "LOAD_DATA");
        copyText(bench.extra->szLogoData, bmp.data().toBase64().constData());
        QCOMPARE(shownLogo(bench.open()), picture);
    }

    void theTaxLogoWinsOverAllOthers()
    {
        DialogBench bench;
        copyText(bench.load->szLogoName, "BriskSealLogo.bmp");
        bench.load->bNTSLogo = 1;
        QCOMPARE(shownLogo(bench.open()), resourceLogo("NTSLogo.bmp"));
    }

    void aNullInitOptionIsRefusedAndChangesNothing()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.open();
        bench.load->nCertCAType = CERTTYPE_MPKI;
        QCOMPARE(dialog.SetInitOption(nullptr, bench.load.get(), bench.extra.get()), int(QG_BAD_ARGUMENT));
        QCOMPARE(dialog.m_nRv, int(QG_BAD_ARGUMENT));
        QCOMPARE(dialog.m_stLoadCertOpt.nCertCAType, CERTTYPE_GPKI | CERTTYPE_NPKI);
        QCOMPARE(dialog.SetInitOption(&bench.init, nullptr, bench.extra.get()), int(QG_BAD_ARGUMENT));
        QCOMPARE(dialog.SetInitOption(&bench.init, bench.load.get(), nullptr), int(QG_BAD_ARGUMENT));
    }

    void optionsReachTheService()
    {
        DialogBench bench;
        bench.init.pPKCS11Context = &bench;
        bench.load->nCertUsageType = CERTUSAGE_KM_PAIR;
        bench.load->nExpiredOption = EXPIRED_HIDE;
        copyText(bench.load->szCertDN, "cn=someone");
        copyText(bench.load->szCertSerial, "serial");
        copyText(bench.load->szCertKmSerial, "km serial");
        copyText(bench.load->szCertPolicyIDs, "1 2 3|");
        copyText(bench.load->szSetPrivateCertO, "organisation");
        bench.open();
        const FakeService& service = FakeService::instance();
        QCOMPARE(service.loadOption.szWorkDir, bench.folder.path().constData());
        QCOMPARE(service.loadOption.pPKCS11Context, static_cast<void*>(&bench));
        QCOMPARE(service.loadOption.nLibAPIType, int(TOOLKIT_ZRTK));
        QCOMPARE(service.loadOption.szConfigPath, "");
        QCOMPARE(service.filter.nCertCAType, CERTTYPE_GPKI | CERTTYPE_NPKI);
        QCOMPARE(service.filter.nCertUsageType, int(CERTUSAGE_KM_PAIR));
        QVERIFY(service.filter.bExpiredCertHide && service.filter.bCDROMHide);
        QCOMPARE(service.filter.szCertDN, "cn=someone");
        QCOMPARE(service.filter.szCertSerial, "serial");
        QCOMPARE(service.filter.szCertKmSerial, "km serial");
        QCOMPARE(service.filter.szCertPolicyIDs, "1 2 3|");
        QCOMPARE(service.filter.szSetPrivateCertO, "organisation");
        QCOMPARE(service.filter.szIssuerDN, "");
    }

    void anEmptyTextKeepsTheFormerSelectionsValue()
    {
        DialogBench bench;
        bench.load->nExpiredOption = EXPIRED_HIDE;
        copyText(bench.load->szCertDN, "cn=someone");
        copyText(bench.load->szCarried8, "carried");
        bench.open();
        *bench.load = {};
        bench.reopen();
        const FakeService& service = FakeService::instance();
        QCOMPARE(service.filter.szCertDN, "cn=someone");
        QCOMPARE(bench.dialog->m_stSelectOpt.szCarried8, "carried");
        QVERIFY2(service.filter.bExpiredCertHide, "the hiding is never switched off");
        QCOMPARE(service.filter.nCertCAType, 0);
    }

    void textsWithoutATerminatorAreCut()
    {
        DialogBench bench;
        std::memset(bench.load->szCertDN, 'x', sizeof(bench.load->szCertDN));
        std::memset(bench.init.szWorkDir, 'y', sizeof(bench.init.szWorkDir));
        std::memset(bench.load->szCertSerial, '5', 10);
        const SelectCertDialog& dialog = bench.open();
        QCOMPARE(std::strlen(dialog.m_stSelectOpt.szCertDN), std::size_t(255));
        QCOMPARE(std::strlen(dialog.m_stLoadCertOpt.szCertDN), std::size_t(255));
        QCOMPARE(std::strlen(dialog.m_stLoadOpt.szWorkDir), std::size_t(1023));
        QCOMPARE(std::strlen(dialog.m_szLanguageFile), std::size_t(259));
    }

    void initalizeHandsOnTheCodesOfTheService()
    {
        DialogBench bench;
        SelectCertDialog& dialog = bench.open();
        QCOMPARE(dialog.Initalize(), 0);
        FakeService::instance().fail("CLP_SetType", 10003);
        QCOMPARE(dialog.Initalize(), 10003);
        FakeService::instance().fail("CLP_Initalize", 30003);
        const int before = FakeService::instance().count("CLP_SetType");
        QCOMPARE(dialog.Initalize(), 30003);
        QCOMPARE(FakeService::instance().count("CLP_SetType"), before);
    }

    void theDestructorEndsTheSession()
    {
        DialogBench bench;
        bench.open();
        QCOMPARE(FakeService::instance().sessions, 1);
        bench.dialog.reset();
        QCOMPARE(FakeService::instance().sessions, 0);
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
