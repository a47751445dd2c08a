#pragma once

#include "engine/ContinuousBeam.h"

#include <cstddef>
#include <vector>

/// How the truss bends. Everything is times its stiffness EI, which need not be known to tell where it
/// hangs deepest: EI·y'' = −M, with y [m] positive downwards and x to the right.
namespace Deflection
{

/// The beam at one place, as one walks along it.
struct Section
{
    double moment = 0.0; ///< M [kg·m], positive where the truss sags
    double shear = 0.0;  ///< V [kg], how M grows for each metre walked
    double slope = 0.0;  ///< EI·y' [kg·m²], positive where the truss descends
    double sag = 0.0;    ///< EI·y [kg·m³], positive below the level of the hooks
};

/// The section at the far end of a panel without supports, `length` [m] further on. `fromFarEnd` are
/// the panel's sums from the end that is walked to. Integrates M twice:
///   M' = M + V·s − Σ P·b − w·s²/2,   EI·y = … − (M·s²/2 + V·s³/6 − Σ P·b³/6 − w·s⁴/24)
Section advanced(const Section& start, double length, const PowerSums& fromFarEnd, double weightPerMetre);

/// How the truss bends when the supports `carrying` (places in `beam.supports`, rising) carry it.
struct Line
{
    std::vector<double> sags;   ///< EI·y at each support of `beam`, 0 at those that carry [kg·m³]
    std::vector<double> slopes; ///< EI·y' at each support that carries [kg·m²]
    Section leftEnd;            ///< at the truss's left end, seen to the right
};

/// The line that `solution`, which is that of `beam` on `carrying` alone, bends the truss into. On
/// one support alone the truss is taken to lie level there.
Line line(const TrussBeam& beam, const std::vector<std::size_t>& carrying,
          const ContinuousBeam::Solution& solution);

} // namespace Deflection
