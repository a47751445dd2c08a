#pragma once

#include "engine/TrussBeam.h"

#include <vector>

/// The truss as a continuous beam whose supports pull and push: the textbook's answer.
///
/// Clapeyron's equation of three moments, for each inner support j between spans s₁ (left) and s₂:
///   s₁·Mⱼ₋₁ + 2(s₁+s₂)·Mⱼ + s₂·Mⱼ₊₁ = −Σ P·d·(s₁²−d²)/s₁ − Σ P·b·(s₂²−b²)/s₂ − w·s₁³/4 − w·s₂³/4
///                                     + 6EI·[(vⱼ−vⱼ₋₁)/s₁ − (vⱼ₊₁−vⱼ)/s₂]
/// with d from the left end of the left span and b from the right end of the right one. The moments
/// at the outermost supports come from the overhangs. The equations are tridiagonal and diagonally
/// dominant; Thomas' elimination solves them in O(supports).
///
/// Moments are positive where the truss sags [kg·m], reactions where a support pulls upwards [kg].
/// A beam hangs from one support at least. On one support it is in balance only if its centre of
/// gravity is there: the support gets all its weight and the larger moment of the two overhangs.
namespace ContinuousBeam
{

struct Solution
{
    std::vector<double> moments;   ///< at each support [kg·m]
    std::vector<double> reactions; ///< of each support [kg]
};

/// What each support of `beam` carries. `settlements` says how far each hook lies below the level,
/// times EI [kg·m³]; empty for level hooks.
Solution solve(const TrussBeam& beam, const std::vector<double>& settlements = {});

/// What a span leaves on its two supports [kg], the moments there [kg·m] known.
struct EndForces
{
    double onLeft;  ///< also the shear just right of the left support
    double onRight; ///< also the shear just left of the right support, sign changed
};

/// Of `span` under its own weight and loads, with the moments at its ends [kg·m].
EndForces endForces(const BeamPanel& span, double weightPerMetre, double leftMoment, double rightMoment);

} // namespace ContinuousBeam
