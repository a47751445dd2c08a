#pragma once

#include "engine/SecondOpinion.h"

#include <cstddef>
#include <vector>

/// What a layout has to pass before anything is solved, and where the truss hangs.
namespace HangingPoints
{

/// One place that the truss hangs from: a motor, or several that are too near to be told apart.
struct Point
{
    double position = 0.0;           ///< the middle of its motors [m]
    double first = 0.0;              ///< its leftmost motor [m]
    double last = 0.0;               ///< its rightmost motor [m]
    std::vector<std::size_t> motors; ///< their places in the list
};

/// Why nothing can be calculated from `layout`, or `None`.
SecondOpinion::Problem problemOf(const SecondOpinion::Layout& layout);

/// The points of `layout`, which has a motor at least, left to right. Motors just outside the truss
/// are taken to its end.
std::vector<Point> points(const SecondOpinion::Layout& layout);

/// A layout without a problem, as the statics need it. `layout` has to outlive it.
struct Show
{
    explicit Show(const SecondOpinion::Layout& shown);

    /// The part of its point's load that each motor of `point` carries.
    [[nodiscard]] double share(std::size_t point) const;

    const SecondOpinion::Layout& layout;
    std::vector<Point> points; ///< left to right
    LoadRow row;               ///< all loads
    TrussBeam beam;            ///< the truss on all its points
};

} // namespace HangingPoints
