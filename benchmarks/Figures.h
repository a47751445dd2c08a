#pragma once

#include <benchmark/benchmark.h>

#include <QString>

#include <map>
#include <string>
#include <vector>

/// What is promised of the program's speed, and whether it is kept.

/// One row of the table: what was measured, beside a plain baseline or on its own.
struct Figure
{
    std::string title;
    std::string measured; ///< name of the benchmark
    std::string baseline; ///< name of the benchmark that it is divided by; empty for none
    double target;        ///< largest ratio, or largest time [ms] where there is no baseline
    std::string counter;  ///< compares this counter [MiB] instead of times
};

/// All rows, in the order of the table.
const std::vector<Figure>& figures();

/// The medians of what was run: benchmark by benchmark, its time [ms] as "ms" and its counters.
class Medians : public benchmark::BenchmarkReporter
{
public: // queries
    /// The median of `benchmark`'s `quantity`; not-a-number where it did not run.
    [[nodiscard]] double value(const std::string& benchmark, const std::string& quantity) const;
    /// Whether `benchmark` was run at all, be it with success or not.
    [[nodiscard]] bool wasRun(const std::string& benchmark) const;

public: // overrides
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

private: // data
    std::map<std::string, std::map<std::string, double>> m_values;
};

/// A row's figures as measured.
struct Result
{
    double measured = 0.0; ///< [ms] or [MiB]
    double baseline = 0.0; ///< the same; 0 for none
    double figure = 0.0;   ///< what is held against the target

    [[nodiscard]] bool reaches(const Figure& row) const
    {
        return figure <= row.target;
    }
};

Result evaluate(const Figure& row, const Medians& medians);

/// The table's head, and a row of it.
QString headText();
QString rowText(const Figure& row, const Result& result);
