// The consolidated report, and what of it is drawing and encoding.

#include "canvas/TrussView.h"
#include "io/ConsolidatedReport.h"

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QTemporaryDir>

#include "Projects.h"

namespace
{

constexpr int TABS = 20;
constexpr Projects::Size USUAL{20, 100, 5, 8};

QList<LoadLogic::ProjectState> tabs()
{
    return QList<LoadLogic::ProjectState>(TABS, Projects::make(USUAL));
}

void writeReport(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QList<LoadLogic::ProjectState> projects = tabs();
    for ([[maybe_unused]] auto _ : state) {
        const ConsolidatedReport::Outcome outcome = ConsolidatedReport::write(
            {projects, projects.first().tabName, folder.path(), QDateTime::currentDateTime()},
            [](qsizetype /*done*/) { return true; });
        if (outcome.status != ConsolidatedReport::Status::Written || !outcome.missingDrawings.isEmpty())
            state.SkipWithError("the report was not written");
    }
}

void renderAndEncode(benchmark::State& state)
{
    TrussView view;
    view.printMode = true;
    Projects::load(USUAL);
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < TABS; ++i) {
            QByteArray bytes;
            QBuffer buffer(&bytes);
            view.renderToImage(2000, 800).save(&buffer, "JPG", 90);
            benchmark::DoNotOptimize(bytes.data());
        }
    }
}

BENCHMARK(writeReport)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(renderAndEncode)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace
