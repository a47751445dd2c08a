#pragma once

#include "engine/ContinuousBeam.h"

#include <vector>

/// Bending moment, shear and bent shape of the truss from end to end, exact piece by piece: between two
/// places where something hangs or holds, V is linear, M quadratic and y of the fourth degree.
///
/// M is positive where the truss sags [kg·m]; V is how M grows for each metre to the right [kg]; sags are
/// positive below the level of the hooks, times EI [kg·m³].
namespace BeamDiagram
{

/// What decides on the truss. The moment's largest value is 0 at least and its smallest 0 at most,
/// since it is 0 at the ends. The smallest is at a support, the largest where the shear is zero.
struct Extremes
{
    double largestMoment = 0.0;    ///< [kg·m]
    double largestMomentAt = 0.0;  ///< [m]
    double smallestMoment = 0.0;   ///< [kg·m]
    double smallestMomentAt = 0.0; ///< [m]
    double shear = 0.0;            ///< largest |V| [kg]: beside a support, where what hangs there is in it
    double shearAt = 0.0;          ///< [m]

    /// The larger of both moments, without its sign [kg·m].
    [[nodiscard]] double moment() const;
};

/// The extremes of `beam`, all of whose supports carry as `solution` says, loaded with `row`, in
/// O(supports · log loads).
Extremes extremes(const TrussBeam& beam, const ContinuousBeam::Solution& solution, const LoadRow& row);

/// One point of the line to be drawn. Where V jumps there are two at one place.
struct Point
{
    double position; ///< [m]
    double moment;   ///< [kg·m]
    double shear;    ///< [kg]
    double sag;      ///< EI·y [kg·m³]
};

/// The points from the left end to the right one, `length` [m]: every load, every support, the place of the
/// largest moment, and even steps between so that the curves look round.
std::vector<Point> points(const TrussBeam& beam, double length, const ContinuousBeam::Solution& solution,
                          const LoadRow& row);

} // namespace BeamDiagram
