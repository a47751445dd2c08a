#pragma once

#include "app/Batch.h"

/// The calculation sheet on the command line.
namespace SheetBatch
{

/// Writes the calculation sheet of `input` and prints its path and the verdicts; needs an application of any
/// platform. An existing file is told and left alone unless `options` say otherwise. Returns the program's
/// exit code.
int write(const CommandLine& options, const Batch::Input& input);

} // namespace SheetBatch
