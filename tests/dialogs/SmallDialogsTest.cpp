/* The password dialog and the list of removable drives. */

#include <QLabel>
#include <QMessageBox>
#include <QMetaMethod>
#include <QtTest>

#include "BoundedText.h"
#include "DialogBench.h"
#include "FakeService.h"
#include "PasswordDialog.h"
#include "RemoveableDialog.h"

namespace {

QStringList slotsOf(const QMetaObject& meta)
{
    QStringList names;
    for (int method = meta.methodOffset(); method < meta.methodCount(); ++method)
        names.append(meta.method(method).methodSignature());
    return names;
}

void expectWidget(const QWidget& window, const char* name, const QRect& geometry, const char* text)
{
    const QWidget& widget = child(window, name);
    QCOMPARE(widget.geometry(), geometry);
    QCOMPARE(widget.font().pointSize(), 9);
    QCOMPARE(widget.property("text").toString(), QString(text));
}

DRIVEINFO drive(int index, const char* path, const char* name)
{
    DRIVEINFO info = {};
    info.nIndex = index;
    copyText(info.szDrive, path);
    copyText(info.szTotalName, name);
    return info;
}

} // namespace

class SmallDialogsTest : public QObject
{
    Q_OBJECT

    FakeService& service = FakeService::instance();
    LanguageFolder folder;

    /** A password dialog that finds its language pack, unlike that of the selection dialog. */
    std::unique_ptr<PasswordDialog> passwordDialog(int language = 1) const
    {
        auto dialog = std::make_unique<PasswordDialog>(nullptr);
        dialog->m_nLanguage = language;
        copyText(dialog->m_szWorkDir, folder.path().constData());
        dialog->InitSetControl();
        return dialog;
    }

    std::unique_ptr<RemoveableDialog> drivesDialog(int language = 1) const
    {
        auto dialog = std::make_unique<RemoveableDialog>(nullptr);
        dialog->m_nLanguage = language;
        copyText(dialog->m_szWorkDir, folder.path().constData());
        dialog->m_pContext = &FakeService::instance();
        dialog->InitSetControl();
        return dialog;
    }

private slots:
    void init()
    {
        service.reset();
        service.drives = {drive(5, "/media/a", "/a (/media/a)"), drive(9, "/media/b", "/b (/media/b)")};
    }

    void thePasswordDialogIsBuiltToThePixel()
    {
        const PasswordDialog dialog(nullptr);
        QCOMPARE(dialog.objectName(), QString("PasswordDialog"));
        QCOMPARE(dialog.minimumSize(), QSize(400, 110));
        QCOMPARE(dialog.maximumSize(), QSize(400, 110));
        QCOMPARE(dialog.windowTitle(), QString("Dialog"));
        expectWidget(dialog, "label_title", {10, 10, 351, 16}, "비밀번호 입력");
        expectWidget(dialog, "lineEdit_password", {110, 40, 281, 21}, "");
        expectWidget(dialog, "label_pwd", {10, 40, 95, 16}, "비밀번호");
        expectWidget(dialog, "pushButton_ok", {6, 70, 190, 31}, "OK");
        expectWidget(dialog, "pushButton_cancel", {202, 70, 190, 31}, "Cancel");
        QCOMPARE(child(dialog, "label_title").focusPolicy(), Qt::TabFocus);
        for (const char* name : {"pushButton_ok", "pushButton_cancel"})
            QVERIFY(!child<QPushButton>(dialog, name).autoDefault());
        QCOMPARE(QString(child(dialog, "lineEdit_password").metaObject()->className()), QString("QLineEdit"));
        QCOMPARE(slotsOf(PasswordDialog::staticMetaObject),
                 QStringList({"on_pushButton_ok_clicked()", "on_pushButton_cancel_clicked()"}));
    }

    void theDrivesDialogIsBuiltToThePixel()
    {
        RemoveableDialog dialog(nullptr);
        QCOMPARE(dialog.objectName(), QString("RemoveableDialog"));
        QCOMPARE(dialog.minimumSize(), QSize(322, 219));
        QCOMPARE(dialog.maximumSize(), QSize(322, 219));
        QCOMPARE(dialog.windowTitle(), QString("Dialog"));
        expectWidget(dialog, "tableView_remobable", {10, 30, 301, 141}, "");
        expectWidget(dialog, "label_text", {10, 10, 301, 16}, "이동식 디스크 목록");
        expectWidget(dialog, "pushButton_cancel", {163, 180, 150, 36}, "cancel");
        expectWidget(dialog, "pushButton_ok", {10, 180, 150, 36}, "ok");
        QCOMPARE(child(dialog, "tableView_remobable").focusPolicy(), Qt::StrongFocus);
        QCOMPARE(child(dialog, "label_text").focusPolicy(), Qt::TabFocus);
        QCOMPARE(child(dialog, "pushButton_ok").font().family(), QString(".Helvetica Neue DeskInterface"));
        QCOMPARE(dialog.focusWidget(), &child(dialog, "label_text"));
        QCOMPARE(slotsOf(RemoveableDialog::staticMetaObject),
                 QStringList({"on_pushButton_ok_clicked()", "on_pushButton_cancel_clicked()",
                              "on_tableView_remobable_doubleClicked(QModelIndex)"}));
    }

    void textsComeFromTheLanguagePack_data()
    {
        QTest::addColumn<int>("language");
        QTest::newRow("Korean") << 1;
        QTest::newRow("English") << 2;
        QTest::newRow("unknown values are English") << 0;
    }

    void textsComeFromTheLanguagePack()
    {
        QFETCH(int, language);
        const auto text = language == 1 ? LanguageFolder::korean : LanguageFolder::english;
        const auto password = passwordDialog(language);
        QCOMPARE(password->windowTitle(), text("DLG_CERTPASSWORD_CAPITON"));
        QCOMPARE(child<QLabel>(*password, "label_title").text(), text("DLG_CERTPASSWORD_INPUT"));
        QCOMPARE(child<QLabel>(*password, "label_pwd").text(), text("DLG_STATIC_CERTPASSWORD"));
        QCOMPARE(child<QPushButton>(*password, "pushButton_ok").text(), text("DLG_BUTTON_OK"));
        QCOMPARE(child<QPushButton>(*password, "pushButton_cancel").text(), text("DLG_BUTTON_CANCEL"));
        QCOMPARE(child<QLineEdit>(*password, "lineEdit_password").echoMode(), QLineEdit::Password);
        const auto drives = drivesDialog(language);
        QCOMPARE(drives->GetRemovableDisk(), 0);
        QCOMPARE(drives->windowTitle(), text("DLG_REMOVABLE_CAPTION"));
        QCOMPARE(child<QLabel>(*drives, "label_text").text(), text("DLG_REMOVABLE_TITLE"));
        QCOMPARE(child<QPushButton>(*drives, "pushButton_ok").text(), text("DLG_BUTTON_OK"));
        QCOMPARE(child<QPushButton>(*drives, "pushButton_cancel").text(), text("DLG_BUTTON_CANCEL"));
        QCOMPARE(drives->m_model.headerData(0, Qt::Horizontal).toString(), text("DLG_REMOVABLE_LIST"));
    }

    void inTheSelectionDialogTheyLookForTheirPackInTheRootDirectory()
    {
        ChosenFile file("/a/file.pfx");
        DialogBench bench;
        const SelectCertDialog& dialog = bench.openDisk();
        const auto expectBlank = [](QDialog& small) {
            QCOMPARE(small.windowTitle(), QString());
            QCOMPARE(child<QPushButton>(small, "pushButton_ok").text(), QString());
            press(small, "pushButton_cancel");
        };
        whenShown(expectBlank);
        press(dialog, "pushButton_find");
        whenShown(expectBlank);
        press(dialog, "pushButton_remove");
    }

    void okWithAnEmptyFieldAsksForAPassword()
    {
        HeardMessages messages;
        const auto dialog = passwordDialog();
        dialog->show();
        child(*dialog, "pushButton_ok").setFocus();
        press(*dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_INPUTPASSWORD")));
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->m_szPassword, "");
        QCOMPARE(dialog->focusWidget(), &child(*dialog, "lineEdit_password"));
    }

    void theTypedPasswordIsHandedOver()
    {
        const auto dialog = passwordDialog();
        child<QLineEdit>(*dialog, "lineEdit_password").insert("secret 가");
        press(*dialog, "pushButton_ok");
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(QString::fromLocal8Bit(dialog->m_szPassword), QString("secret 가"));
    }

    void aPasswordThatDoesNotFitIsTurnedAway()
    {
        HeardMessages messages;
        const auto dialog = passwordDialog();
        auto& edit = child<QLineEdit>(*dialog, "lineEdit_password");
        edit.setText(QString(1024, 'x'));
        press(*dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(koreanMessage("MSG_SELECTCERT_PASSWORD_MAX")));
        QCOMPARE(dialog->m_szPassword, "");
        edit.setText(QString(1023, 'x'));
        press(*dialog, "pushButton_ok");
        QCOMPARE(std::strlen(dialog->m_szPassword), std::size_t(1023));
    }

    void keysOfThePasswordDialog()
    {
        HeardMessages messages;
        const auto dialog = passwordDialog();
        dialog->show();
        auto& edit = child<QLineEdit>(*dialog, "lineEdit_password");
        QTest::keyClicks(&edit, "secret");
        QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
        QVERIFY(dialog->isVisible());
        QTest::keyClick(&edit, Qt::Key_Return);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        dialog->show();
        QTest::keyClick(&edit, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    }

    void withoutADriveTheDialogIsNeverShown()
    {
        service.drives.clear();
        const auto dialog = drivesDialog();
        QCOMPARE(dialog->GetRemovableDisk(), int(CLPERR_NO_REMOVABLE_DRIVE));
        QCOMPARE(dialog->m_nRv, int(CLPERR_NO_REMOVABLE_DRIVE));
    }

    void failuresOfTheServiceAreNoDrives_data()
    {
        QTest::addColumn<QString>("function");
        QTest::newRow("count") << "CLP_GetRemDriveCount";
        QTest::newRow("list") << "CLP_GetRemDrive";
    }

    void failuresOfTheServiceAreNoDrives()
    {
        QFETCH(QString, function);
        service.fail(function.toStdString(), 4711);
        QCOMPARE(drivesDialog()->GetRemovableDisk(), int(CLPERR_NO_REMOVABLE_DRIVE));
    }

    void drivesAreListedAndNoneIsPreselected()
    {
        const auto dialog = drivesDialog();
        QCOMPARE(dialog->GetRemovableDisk(), 0);
        const auto& table = child<QTableView>(*dialog, "tableView_remobable");
        QCOMPARE(table.model()->rowCount(), 2);
        QCOMPARE(rowTexts(table, 1), QStringList("/b (/media/b)"));
        QVERIFY(!table.selectionModel()->hasSelection());
        QCOMPARE(table.columnWidth(0), 284);
        QCOMPARE(table.font().pointSize(), 8);
        QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
    }

    void drivesAreListedAnewEachTime()
    {
        const auto dialog = drivesDialog();
        QCOMPARE(dialog->GetRemovableDisk(), 0);
        service.drives.pop_back();
        QCOMPARE(dialog->GetRemovableDisk(), 0);
        const auto& table = child<QTableView>(*dialog, "tableView_remobable");
        QCOMPARE(table.model()->rowCount(), 1);
        QCOMPARE(rowTexts(table, 0), QStringList("/a (/media/a)"));
        service.fail("CLP_GetRemDrive", 4711);
        dialog->GetRemovableDisk();
        QCOMPARE(table.model()->rowCount(), 0);
    }

    void okWithoutASelectionPromptsAndStaysOpen()
    {
        HeardMessages messages;
        const auto dialog = drivesDialog();
        dialog->GetRemovableDisk();
        dialog->show();
        press(*dialog, "pushButton_ok");
        QCOMPARE(messages.take(), QStringList(LanguageFolder::korean("DLG_REMOVABLE_CAPTION") + '|' +
                                              LanguageFolder::korean("DLG_REMOVABLE_TITLE")));
        QCOMPARE(dialog->m_nMsgResult, int(QMessageBox::Ok));
        QVERIFY(dialog->isVisible());
    }

    void theChosenNumberIsTheRowAndNotTheDrivesOwn()
    {
        const auto dialog = drivesDialog();
        dialog->GetRemovableDisk();
        dialog->show();
        clickRow(child<QTableView>(*dialog, "tableView_remobable"), 1);
        press(*dialog, "pushButton_ok");
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(dialog->m_nSelectIndex, 1);
        QCOMPARE(dialog->m_szSelectDrive, "/media/b");
    }

    void aDoubleClickAcceptsTheRow()
    {
        const auto dialog = drivesDialog();
        dialog->GetRemovableDisk();
        dialog->show();
        const auto& table = child<QTableView>(*dialog, "tableView_remobable");
        const QPoint place = table.visualRect(table.model()->index(1, 0)).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(dialog->m_nSelectIndex, 1);
    }

    void keysOfTheDrivesDialog()
    {
        HeardMessages messages;
        const auto dialog = drivesDialog();
        dialog->GetRemovableDisk();
        dialog->show();
        QTest::keyClick(dialog.get(), Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(messages.take(), QStringList());
        QTest::keyClick(dialog.get(), Qt::Key_Return);
        QCOMPARE(messages.take().size(), 1);
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
    }
};

QTEST_MAIN(SmallDialogsTest)
#include "SmallDialogsTest.moc"
