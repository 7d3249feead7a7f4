#include "Driver.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextStream>
#include <QTimer>
#include <QtTest/QTest>
#include <utility>

namespace {

constexpr int lookIntervalMs = 100;
constexpr int subjectRow = 6; // of the viewer's detail tab

} // namespace

Driver::Driver(Plan plan, QObject* parent) : QObject(parent), m_plan(std::move(plan))
{
    comeRound();
}

void Driver::comeRound()
{
    // Single shots in place of one timer, which would not fire inside the loop of a message that look()
    // raised.
    QTimer::singleShot(lookIntervalMs, this, [this] {
        comeRound();
        look();
    });
}

void Driver::look()
{
    QWidget* window = QApplication::activeModalWidget();
    if (!window || !window->isVisible())
        return;
    if (qobject_cast<QMessageBox*>(window))
        return answerMessage(*window);
    if (window->objectName() == "CertViewMainDialog")
        return lookAtViewer(*window);
    if (window->objectName() != "SelectCertDialog")
        return;
    if (!std::exchange(m_pictured, true))
        screenshot(*window, "dialog");
    if (m_plan.drives && m_plan.views && !std::exchange(m_viewed, true))
        clickRow(*window, true);
    else if (m_plan.drives && !std::exchange(m_typed, true))
        drive(*window);
}

void Driver::screenshot(QWidget& window, const QString& name) const
{
    if (m_plan.screenshotDirectory.isEmpty())
        return;
    const QString path =
        QDir(m_plan.screenshotDirectory).filePath(name + "-" + m_plan.screenshotSuffix + ".png");
    QTextStream(stdout) << (window.grab().save(path) ? "picture: " : "cannot write picture: ") << path
                        << "\n";
}

void Driver::lookAtViewer(QWidget& viewer)
{
    auto* tabs = viewer.findChild<QTabWidget*>("tabWidget");
    if (!std::exchange(m_viewerPictured, true)) {
        screenshot(viewer, "viewer");
        tabs->setCurrentIndex(1);
        auto* fields = viewer.findChild<QTableView*>("tableView_certinfolist");
        fields->selectRow(subjectRow);
        screenshot(viewer, "viewer-details");
        tabs->setCurrentIndex(0);
    }
    if (m_plan.drives)
        QTest::mouseClick(viewer.findChild<QPushButton*>("pushButton_ok"), Qt::LeftButton);
}

bool Driver::clickRow(QWidget& dialog, bool twice) const
{
    auto* table = dialog.findChild<QTableView*>("tableView_certlist");
    const QAbstractItemModel* model = table->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex cell = model->index(row, 0);
        if (!m_plan.rowText.isEmpty() && !cell.data().toString().contains(m_plan.rowText))
            continue;
        table->scrollTo(cell);
        const QPoint place = table->visualRect(cell).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        if (twice)
            QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        return true;
    }
    return false;
}

void Driver::drive(QWidget& dialog)
{
    if (!clickRow(dialog, false)) {
        QTextStream(stdout) << "no certificate of that name in the list\n";
        QTest::mouseClick(dialog.findChild<QPushButton*>("pushButton_cancel"), Qt::LeftButton);
        return;
    }
    auto* password = dialog.findChild<QLineEdit*>("lineEdit_password");
    QTest::keyClicks(password, m_plan.password);
    screenshot(dialog, "password");
    QTest::mouseClick(dialog.findChild<QPushButton*>("pushButton_ok"), Qt::LeftButton);
}

void Driver::answerMessage(QWidget& box)
{
    if (!m_plan.drives)
        return;
    screenshot(box, "message");
    QTextStream(stdout) << "the dialog said: " << qobject_cast<QMessageBox*>(&box)->text() << "\n";
    box.close();
    if (QWidget* dialog = box.parentWidget())
        QTest::mouseClick(dialog->findChild<QPushButton*>("pushButton_cancel"), Qt::LeftButton);
}
