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
    /// the document at `Outcome::path` was not created: it cannot be, or it would show a drawing of another
    /// report or another user's, which can be neither replaced nor removed
    NotWritten
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

/// The time to generate a report at: now, or where `folder` has a report of this second, whose place the
/// new one would take, the beginning of the next, for which this waits. Gives up after some seconds.
QDateTime freeSecond(const QString& folder);

/// Calculates and draws each project, and writes everything once all of it is there.
Outcome write(const Request& request, const Progress& progress);

} // namespace ConsolidatedReport
