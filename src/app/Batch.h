#pragma once

#include "app/CheckedProject.h"
#include "app/CommandLine.h"
#include "engine/Project.h"

#include <QList>

/// The work that needs no window. Each function writes to standard output, tells failures on
/// standard error and returns the program's exit code.
namespace Batch
{

constexpr int ALL_WITHIN_LIMITS = 0;
constexpr int LIMITS_EXCEEDED = 1; ///< or the second opinion contradicts the figures on the unsafe side
constexpr int FAILED = 2;          ///< a file cannot be read or written, or the command cannot be obeyed

struct NamedProject
{
    QString name; ///< the file as given
    ProjectState project;
};

struct BadFile
{
    QString name;
    QString reason;
};

/// What is in the files of a command line, in its order.
struct Input
{
    QList<NamedProject> projects;
    QList<BadFile> badFiles;
};

/// Reads the files of `options`, each once: a pipe tells its content only once. A file that cannot be
/// read is told.
Input read(const CommandLine& options);

/// The projects of `input` with all that `options` want to be told of them.
QList<CheckedProject> check(const Input& input, const CommandLine& options);

/// The verdict on each project, and what contradicts it.
QString verdictLines(const QList<CheckedProject>& projects);

/// The exit code after `projects`; `failed` when not all could be done.
int exitCode(const QList<CheckedProject>& projects, bool failed);

/// Prints the figures of `input`; needs a core application at most.
int summarize(const CommandLine& options, const Input& input);

/// Writes the HTML report of `input` and prints its path and the verdicts; needs an application of any
/// platform.
int report(const CommandLine& options, const Input& input);

} // namespace Batch
