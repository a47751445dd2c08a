#pragma once

#include "engine/Figures.h"
#include "engine/Project.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <functional>

/// Writes the report of several projects, with one drawing each, into a folder.
namespace ConsolidatedReport
{

struct Request
{
    QList<ProjectState> projects; ///< `tabName` is the title
    QString currentTitle;         ///< stands in the heading
    QString folder;
    QDateTime generated;
};

enum class Status
{
    Written,
    Cancelled, ///< nothing was written
    NotWritten ///< the document could not be created at `Outcome::path`
};

struct Outcome
{
    Status status = Status::Written;
    QString path; ///< of the HTML document
    QList<Figures> figures;
    QStringList missingDrawings; ///< paths of those that could not be saved
};

/// Told after each project how many are done; false cancels.
using Progress = std::function<bool(qsizetype done)>;

/// Calculates and draws each project, and writes everything once all of it is there.
Outcome write(const Request& request, const Progress& progress);

} // namespace ConsolidatedReport
