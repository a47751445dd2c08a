// The start of the program, in a process of its own, beside that of an empty window.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <chrono>

using namespace Qt::StringLiterals;

namespace
{

constexpr double KILOBYTES_PER_MEGABYTE = 1024.0;

/// This process's environment, but with windows on the X server where there is one.
QProcessEnvironment onScreen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.value(u"DISPLAY"_s).isEmpty())
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    return environment;
}

/// Runs the executable `name`, which lies beside this one, and takes its first picture as the end
/// of an iteration.
void start(benchmark::State& state, const QString& name)
{
    const QString path = QCoreApplication::applicationDirPath() + u'/' + name;
    const QProcessEnvironment environment = onScreen();
    double memory = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const std::chrono::nanoseconds before = std::chrono::steady_clock::now().time_since_epoch();
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(path, {});
        process.waitForFinished();
        const QList<QByteArray> told = process.readAllStandardOutput().simplified().split(' ');
        if (told.size() != 2) {
            state.SkipWithError("the program did not tell of its first picture");
            return;
        }
        const std::chrono::nanoseconds after(told.at(0).toLongLong());
        state.SetIterationTime(std::chrono::duration<double>(after - before).count());
        memory = told.at(1).toDouble() / KILOBYTES_PER_MEGABYTE;
    }
    state.counters["MiB"] = memory;
}

void startProgram(benchmark::State& state)
{
    start(state, u"velmora-bench-start-program"_s);
}

void startEmptyWindow(benchmark::State& state)
{
    start(state, u"velmora-bench-start-empty"_s);
}

BENCHMARK(startProgram)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(startEmptyWindow)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
