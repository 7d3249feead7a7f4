// From the double click on a certificate to a viewer that the user can see.

#include "Painted.h"
#include "Session.h"

#include <QMouseEvent>
#include <QTableView>
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
BENCHMARK(Viewer)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
