// From the double click on a certificate to a viewer that the user can see.

#include "Painted.h"
#include "Session.h"

#include <QLabel>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <quillgate/certlist.h>
#include <quillgate/dialogs.h>

namespace {

using Clock = std::chrono::steady_clock;

/** Runs something that opens a dialog and ends with it; the time counts until the dialog has painted. */
template <typename Open>
void untilPainted(benchmark::State& state, const QString& name, Open open)
{
    Clock::time_point painted;
    const WhenPainted watch(name, [&] {
        painted = Clock::now();
        closeDialog();
    });
    for (auto _ : state) {
        const auto start = Clock::now();
        open();
        state.SetIterationTime(std::chrono::duration<double>(painted - start).count());
    }
}

void FloorViewer(benchmark::State& state)
{
    untilPainted(state, "empty", [] {
        QDialog dialog;
        dialog.setObjectName("empty");
        dialog.setFixedSize(350, 408);
        dialog.exec();
    });
}

/** What any program must pay for the viewer's widgets, with texts that are there already. */
void FloorViewerWidgets(benchmark::State& state)
{
    constexpr int labels = 15;
    constexpr int rows = 16;
    const QString text = QStringLiteral("홍길동 2025-01-01 00:00:00");
    untilPainted(state, "empty", [&] {
        QDialog dialog;
        dialog.setObjectName("empty");
        dialog.setFixedSize(350, 408);
        QTabWidget tabs(&dialog);
        tabs.setGeometry(10, 10, 331, 346);
        QWidget summary;
        QWidget details;
        tabs.addTab(&summary, text);
        tabs.addTab(&details, text);
        for (int i = 0; i < labels; ++i)
            (new QLabel(text, &summary))->setGeometry(10 + i % 2 * 150, 10 + i * 20, 150, 16);
        (new QListView(&summary))->setGeometry(180, 10, 131, 41);
        QStandardItemModel model;
        for (int row = 0; row < rows; ++row)
            model.appendRow({new QStandardItem(text), new QStandardItem(text)});
        QTableView table(&details);
        table.setGeometry(10, 10, 311, 221);
        table.setModel(&model);
        QTextEdit box(&details);
        box.setGeometry(10, 240, 311, 71);
        (new QPushButton(text, &dialog))->setGeometry(10, 360, 162, 41);
        (new QPushButton(text, &dialog))->setGeometry(180, 360, 162, 41);
        dialog.exec();
    });
}

void sendMouse(QWidget& widget, QEvent::Type type, QPoint place)
{
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void doubleClickFirstRow(const QTableView& table)
{
    QWidget& rows = *table.viewport();
    const QPoint place = table.visualRect(table.model()->index(0, 0)).center();
    sendMouse(rows, QEvent::MouseButtonPress, place);
    sendMouse(rows, QEvent::MouseButtonRelease, place);
    sendMouse(rows, QEvent::MouseButtonDblClick, place);
}

void Viewer(benchmark::State& state)
{
    useHomeOf(10);
    const auto init = std::make_unique<INITOPT>();
    workDirectory("work").string().copy(init->szWorkDir, sizeof init->szWorkDir - 1);
    init->nLanguage = 1;
    const auto load = std::make_unique<LOADSELECTCERTOPTION>();
    load->nCertCAType = CERTTYPE_NPKI;
    const auto extra = std::make_unique<EXTRAOPTION>();
    const auto outcome = std::make_unique<SELCERTINFO>();
    bool isMeasured = false;
    const WhenPainted measure("tableView_certlist", [&] {
        if (std::exchange(isMeasured, true))
            return;
        QWidget* dialog = QApplication::activeModalWidget();
        const auto* table = dialog->findChild<QTableView*>("tableView_certlist");
        untilPainted(state, "CertViewMainDialog", [&] { doubleClickFirstRow(*table); });
        closeDialog();
    });
    ShowUserCert_T(init.get(), load.get(), nullptr, extra.get(), outcome.get());
}

BENCHMARK(FloorViewer)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorViewerWidgets)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(Viewer)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
