#pragma once

#include "engine/LoadLogic.h"

/// The projects that are measured: the same numbers in every run.
namespace Projects
{

/// What hangs on the truss; `screens` arrays of `segments` each stand side by side.
struct Size
{
    int motors = 20;
    int loads = 100;
    int screens = 0;
    int segments = 0;
};

/// A project of `size` on a truss of three metres a motor: motors evenly from end to end, point
/// loads scattered, each screen at its own place.
LoadLogic::ProjectState make(const Size& size);

/// Makes `make(size)` the engine's project and calculates it.
void load(const Size& size);

} // namespace Projects
