#pragma once

#include "engine/Project.h"

#include <vector>

/// What the statics need of a load, close together in memory: a load's whole record is ten times as
/// large, and a calculation goes through all of them more than once.
struct PointLoad
{
    float position; ///< [m] from the left end of the truss
    float mass;     ///< [kg]
};

using PointLoads = std::vector<PointLoad>;

/// `loads` as the statics need them, in their order.
PointLoads pointLoads(const QList<ActiveLoad>& loads);

/// True if `a` is left of `b` [m]. What is not a number comes last, so that sorting stays defined.
bool isLeftOf(float a, float b);

/// Sorts by position, left to right as `isLeftOf` tells; loads at one place keep their order.
void sortByPosition(PointLoads& loads);
