#include "Figures.h"

#include <QString>
#include <QStringList>

#include <limits>
#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

constexpr double MILLISECONDS_PER_SECOND = 1000.0;
constexpr int TITLE_WIDTH = 52;
constexpr int NUMBER_WIDTH = 12;

QString number(double value, const QString& unit)
{
    return QString::number(value, 'f', value < 10.0 ? 3 : 1) + u' ' + unit;
}

QString targetText(const Figure& row)
{
    return row.baseline.empty() ? u"< "_s + QString::number(row.target) + u" ms"_s
                                : u"<= "_s + QString::number(row.target) + u" x"_s;
}

/// The name without how it was run.
std::string plainName(const benchmark::BenchmarkName& name)
{
    return name.args.empty() ? name.function_name : name.function_name + '/' + name.args;
}

/// Processor time, which other programs disturb little; where the benchmark takes its time itself,
/// that one.
double milliseconds(const benchmark::BenchmarkReporter::Run& run)
{
    const bool takenByItself = run.run_name.time_type == "manual_time";
    const double time = takenByItself ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    return time * MILLISECONDS_PER_SECOND / benchmark::GetTimeUnitMultiplier(run.time_unit);
}

QString line(const QStringList& cells)
{
    QString text = cells.first().leftJustified(TITLE_WIDTH);
    for (qsizetype i = 1; i < cells.size(); ++i)
        text += cells.at(i).rightJustified(NUMBER_WIDTH);
    return text + u'\n';
}

} // namespace

const std::vector<Figure>& figures()
{
    static const std::vector<Figure> rows{
        {"Recalculation, growth: 2 000 to 20 000 loads", "recalculate/20000", "recalculate/2000", 12.0, {}},
        {"Recalculation, constant: 500 loads", "recalculate/500", "leverRuleAndSort/500", 3.0, {}},
        {"Second opinion: 500 loads", "secondOpinion/500", "recalculate/500", 25.0, {}},
        {"Second opinion: 500 loads, in time", "secondOpinion/500", {}, 2.0, {}},
        {"Second opinion, growth: 2 000 to 20 000 loads",
         "secondOpinion/20000",
         "secondOpinion/2000",
         16.0,
         {}},
        {"Drag step of a motor", "dragMotor", "paintPicture", 1.5, {}},
        {"Drag step of a motor, in time", "dragMotor", {}, 5.0, {}},
        {"Drag step of a motor, large project", "dragMotorLarge", {}, 33.0, {}},
        {"Drag step of a load", "dragLoad", "paintPicture", 1.5, {}},
        {"Drag step of a load, in time", "dragLoad", {}, 5.0, {}},
        {"Drag step of a load, large project", "dragLoadLarge", {}, 33.0, {}},
        {"Edit under recovery, 20 000 loads", "editUnderRecovery", "editAlone", 1.15, {}},
        {"Recovery's tick, 20 000 loads, nothing to write", "lookInVain", {}, 8.0, {}},
        {"Recovery's tick, 20 000 loads, something to write", "lookForWork", {}, 8.0, {}},
        {"Placing 20 000 segments", "placeSegments", {}, 250.0, {}},
        {"First picture", "startProgram", "startEmptyWindow", 1.6, {}},
        {"Memory after the start", "startProgram", "startEmptyWindow", 1.3, "MiB"},
        {"Opening 10 000 loads", "openProject", "parseDocument", 1.5, {}},
        {"Saving 10 000 loads", "saveProject", "writeDocument", 1.5, {}},
        {"HTML report of 20 tabs", "writeReport", "renderAndEncode", 1.2, {}},
    };
    return rows;
}

bool Medians::ReportContext(const Context& /*context*/)
{
    return true;
}

void Medians::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        std::map<std::string, double>& values = m_values[plainName(run.run_name)];
        if (run.error_occurred)
            GetErrorStream() << run.benchmark_name() << ": " << run.error_message << '\n';
        if (run.aggregate_name != "median")
            continue;
        values["ms"] = milliseconds(run);
        for (const auto& [name, counter] : run.counters)
            values[name] = counter.value;
    }
}

bool Medians::wasRun(const std::string& benchmark) const
{
    return m_values.count(benchmark) != 0;
}

double Medians::value(const std::string& benchmark, const std::string& quantity) const
{
    const auto values = m_values.find(benchmark);
    if (values == m_values.end() || values->second.count(quantity) == 0)
        return std::numeric_limits<double>::quiet_NaN();
    return values->second.at(quantity);
}

Result evaluate(const Figure& row, const Medians& medians)
{
    const std::string quantity = row.counter.empty() ? "ms" : row.counter;
    Result result;
    result.measured = medians.value(row.measured, quantity);
    if (row.baseline.empty()) {
        result.figure = result.measured;
        return result;
    }
    result.baseline = medians.value(row.baseline, quantity);
    result.figure = result.measured / result.baseline;
    return result;
}

QString headText()
{
    return line(QStringList{u"figure"_s, u"measured"_s, u"baseline"_s, u"ratio"_s, u"target"_s, {}});
}

QString rowText(const Figure& row, const Result& result)
{
    const QString unit = row.counter.empty() ? u"ms"_s : u"MiB"_s;
    const bool alone = row.baseline.empty();
    return line(QStringList{QString::fromStdString(row.title), number(result.measured, unit),
                            alone ? u"-"_s : number(result.baseline, unit),
                            alone ? u"-"_s : QString::number(result.figure, 'f', 2) + u" x"_s,
                            targetText(row), result.reaches(row) ? u"ok"_s : u"MISSED"_s});
}
