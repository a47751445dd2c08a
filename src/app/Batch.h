#pragma once

#include "app/CommandLine.h"

/// The work that needs no window. Each function writes to standard output, tells failures on
/// standard error and returns the program's exit code.
namespace Batch
{

constexpr int ALL_WITHIN_LIMITS = 0;
constexpr int LIMITS_EXCEEDED = 1;
constexpr int FAILED = 2; ///< a file cannot be read or written, or the command cannot be obeyed

/// Prints the figures of the files of `options`; needs a core application at most. A file that
/// cannot be read is told and left out.
int summarize(const CommandLine& options);

/// Writes the HTML report of the files of `options` and prints its path and the verdicts; needs an
/// application of any platform.
int report(const CommandLine& options);

} // namespace Batch
