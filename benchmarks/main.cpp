// Measures the program's speed and holds it against the targets of Figures.cpp:
//     velmora-bench [--quick] [OPTION OF GOOGLE BENCHMARK …]
// Ends with 1 where a target is missed.

#include "app/Appearance.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "Figures.h"

using namespace Qt::StringLiterals;

namespace
{

/// Other programs may have disturbed a measurement: a missed figure is taken again this often.
constexpr int RETRIES = 2;

/// Repetitions of everything take turns, so that a slow minute of the machine hits both sides of
/// a ratio.
std::vector<char*> withDefaults(int argc, char* argv[])
{
    static char interleave[] = "--benchmark_enable_random_interleaving=true";
    static char aggregates[] = "--benchmark_report_aggregates_only=true";
    static char repetitions[] = "--benchmark_repetitions=21";
    static char time[] = "--benchmark_min_time=0.05";
    static char quickRepetitions[] = "--benchmark_repetitions=7";
    static char quickTime[] = "--benchmark_min_time=0.02";

    const auto isQuick = [](const char* argument) { return std::strcmp(argument, "--quick") == 0; };
    const bool quick = std::any_of(argv + 1, argv + argc, isQuick);
    std::vector<char*> arguments{argv[0], interleave, aggregates, quick ? quickRepetitions : repetitions,
                                 quick ? quickTime : time};
    std::remove_copy_if(argv + 1, argv + argc, std::back_inserter(arguments), isQuick);
    return arguments;
}

std::string filterFor(const Figure& row)
{
    const std::string baseline = row.baseline.empty() ? "" : "|" + row.baseline;
    return "^(" + row.measured + baseline + ")(/|$)";
}

Result measureAgain(const Figure& row, Result best)
{
    for (int i = 0; i < RETRIES && !best.reaches(row); ++i) {
        Medians medians;
        benchmark::RunSpecifiedBenchmarks(&medians, filterFor(row));
        const Result result = evaluate(row, medians);
        if (!(result.figure >= best.figure))
            best = result;
    }
    return best;
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The platform off screen tells again and again what it cannot do, such as placing windows.
    QLoggingCategory::setFilterRules(u"default.warning=false"_s);
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);

    std::vector<char*> arguments = withDefaults(argc, argv);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;

    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);

    QTextStream out(stdout);
    out << headText();
    bool allReached = true;
    for (const Figure& row : figures()) {
        if (!medians.wasRun(row.measured))
            continue; // was filtered out
        const Result result = measureAgain(row, evaluate(row, medians));
        out << rowText(row, result) << Qt::flush;
        allReached = allReached && result.reaches(row);
    }
    return allReached ? 0 : 1;
}
