#pragma once

#include "engine/PointLoads.h"
#include "engine/Project.h"

/// What the statics need of a truss.
struct Truss
{
    float length = 12.0F;     ///< [m]
    float selfWeight = 8.4F;  ///< [kg/m]
    float limitCPL = 1600.0F; ///< maximum central point load [kg]
};

/// How hard a truss is worked.
struct Rating
{
    float stress = 0.0F;     ///< largest bending moment against the reference, not clamped [%]
    bool isUnstable = false; ///< an overhang is too long; the stress is 0 then
};

/// The simplified statics of the program: the lever rule for the motors, simply supported spans
/// and cantilevers for the truss. Single precision, in a fixed order, so that the two shares of a
/// load add up to it.
namespace Statics
{

/// Shares everything that hangs on `truss` among `motors`: writes every motor's `staticLoad` and
/// `totalLoad` [kg], sorts the motors by position (those at one place keep their order), and
/// returns the rating. Two motors at one place with a load exactly there both get not-a-number.
Rating solve(const Truss& truss, QList<Motor>& motors, const QList<ActiveLoad>& loads);

/// Rates `truss` on `motors`, which may stand in any order. A length [m] or a CPL [kg] of 0.01 or
/// less, or no motors, gives 0 % and stable; an unstable truss is rated 0 %.
[[nodiscard]] Rating rate(const Truss& truss, const QList<Motor>& motors, PointLoads loads);

/// The truss of `project`.
[[nodiscard]] Truss trussOf(const ProjectState& project);

/// `project` with the results of its motors, its stress and its stability as `solve` makes them.
[[nodiscard]] ProjectState solved(ProjectState project);

} // namespace Statics
