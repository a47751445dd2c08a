#pragma once

#include "engine/ContinuousBeam.h"

#include <optional>
#include <vector>

/// How much a motor's load changes when that motor alone is raised or lowered. It tells of a few
/// millimetres round the level, as long as the same chains pull; it is no bound for ±d mm.
namespace LevellingSensitivity
{

/// The truss's stiffness from the deflection `deflection` [mm] that its maker's table gives under the
/// central point load `limitCPL` [kg] over the whole `length` [m]: EI = CPL·L³ / (48·f) [kg·m²].
/// Nothing where that is no finite positive number.
std::optional<double> stiffness(double limitCPL, double length, double deflection);

/// What each support of `beam` takes on for each metre that it alone is raised, with EI = 1: K_kk
/// [1/m³]. 0 where two supports carry, whatever their level.
std::vector<double> perMetreRaised(const TrussBeam& beam);

} // namespace LevellingSensitivity
