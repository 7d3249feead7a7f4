// From the host's call to a list that the user can see.

#include "Painted.h"
#include "Session.h"

#include <QDialog>
#include <benchmark/benchmark.h>
#include <memory>
#include <quillgate/certlist.h>
#include <quillgate/dialogs.h>

namespace {

void FloorDialog(benchmark::State& state)
{
    useHomeOf(state.range(0));
    const WhenPainted closer("empty", closeDialog);
    const std::filesystem::path work = workDirectory("work");
    for (auto _ : state) {
        QDialog dialog;
        dialog.setObjectName("empty");
        dialog.setFixedSize(391, 460);
        dialog.exec();
        const Session session(work);
        session.load(static_cast<int>(state.range(0)));
    }
}

void Dialog(benchmark::State& state)
{
    useHomeOf(state.range(0));
    const WhenPainted closer("tableView_certlist", closeDialog);
    const auto init = std::make_unique<INITOPT>();
    workDirectory("work").string().copy(init->szWorkDir, sizeof init->szWorkDir - 1);
    init->nLanguage = 1;
    const auto load = std::make_unique<LOADSELECTCERTOPTION>();
    load->nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    const auto extra = std::make_unique<EXTRAOPTION>();
    const auto outcome = std::make_unique<SELCERTINFO>();
    for (auto _ : state)
        benchmark::DoNotOptimize(ShowUserCert_T(init.get(), load.get(), nullptr, extra.get(), outcome.get()));
}

BENCHMARK(FloorDialog)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Dialog)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
