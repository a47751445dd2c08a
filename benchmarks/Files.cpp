// Opening and saving a large project, and what of it is the work of the JSON library.

#include "io/ProjectFile.h"
#include "ui/MainWindow.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "Projects.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr Projects::Size LARGE{20, 10'000, 0, 0};

void openProject(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"project.rig"_s);
    if (!ProjectFile::write(path, Projects::make(LARGE)))
        state.SkipWithError("the project could not be written");

    MainWindow window;
    for ([[maybe_unused]] auto _ : state)
        window.openProjectFile(path);
    if (LoadLogic::ActiveLoads.size() != LARGE.loads)
        state.SkipWithError("the project was not opened");
}

void parseDocument(benchmark::State& state)
{
    const QByteArray bytes = ProjectFile::toBytes(Projects::make(LARGE));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes));
}

void saveProject(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"project.rig"_s);
    const MainWindow window;
    Projects::load(LARGE);
    for ([[maybe_unused]] auto _ : state) {
        if (!ProjectFile::write(path, window.captureCurrentState()))
            state.SkipWithError("the project could not be written");
    }
}

void writeDocument(benchmark::State& state)
{
    const QJsonDocument document = QJsonDocument::fromJson(ProjectFile::toBytes(Projects::make(LARGE)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(document.toJson(QJsonDocument::Indented));
}

BENCHMARK(openProject)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(parseDocument)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(saveProject)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(writeDocument)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace
