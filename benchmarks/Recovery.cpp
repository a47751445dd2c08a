// What it costs that the work can be brought back: the tick that looks for it, and a keystroke while it is
// being written.

#include "io/RecoveryKeeper.h"
#include "ui/MainWindow.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "Projects.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr Projects::Size LARGE{20, 20'000, 0, 0};

/// A tick that finds something to write.
void lookForWork(benchmark::State& state)
{
    const QTemporaryDir folder;
    RecoveryKeeper keeper(folder.path(), u"0"_s);
    QList<ProjectState> tabs{Projects::make(LARGE)};
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        if (!keeper.save(tabs, 0))
            state.SkipWithError("the work could not be written");
        tabs.first().loads.last().mass += 1.0F;
        state.ResumeTiming();
        keeper.look(tabs, 0);
    }
}

/// A tick that finds nothing, and has looked through everything.
void lookInVain(benchmark::State& state)
{
    const QTemporaryDir folder;
    RecoveryKeeper keeper(folder.path(), u"0"_s);
    const QList<ProjectState> tabs{Projects::make(LARGE)};
    if (!keeper.save(tabs, 0))
        state.SkipWithError("the work could not be written");
    QList<ProjectState> same = tabs;
    same.first().loads.detach(); // as the engine's list is from the one that was written
    for ([[maybe_unused]] auto _ : state)
        keeper.look(same, 0);
}

/// A keystroke in the field "Carga (kg):".
void typeMass(benchmark::State& state, MainWindow& window)
{
    Projects::load(LARGE);
    window.selectedLoadId = LoadLogic::ActiveLoads.constLast().id;
    int mass = 100;
    for ([[maybe_unused]] auto _ : state) {
        window.onMassChanged(QString::number(++mass % 1000));
        QCoreApplication::processEvents(); // the window's timer, now and then
    }
}

void editAlone(benchmark::State& state)
{
    MainWindow window;
    typeMass(state, window);
}

void editUnderRecovery(benchmark::State& state)
{
    const QTemporaryDir folder;
    MainWindow window;
    window.keepRecovery(folder.path());
    typeMass(state, window);
    window.endRecovery();
}

BENCHMARK(lookForWork)->Unit(benchmark::kMillisecond);
BENCHMARK(lookInVain)->Unit(benchmark::kMillisecond);
constexpr double SEVERAL_TICKS = 2.0; // [s]
BENCHMARK(editAlone)->MinTime(SEVERAL_TICKS)->Unit(benchmark::kMillisecond);
BENCHMARK(editUnderRecovery)->MinTime(SEVERAL_TICKS)->Unit(benchmark::kMillisecond);

} // namespace
