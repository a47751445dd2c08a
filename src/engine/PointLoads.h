#pragma once

#include <vector>

/// What the statics need of a load, close together in memory: a load's whole record is ten times as
/// large, and a calculation goes through all of them more than once.
struct PointLoad
{
    float position; ///< [m] from the left end of the truss
    float mass;     ///< [kg]
};

using PointLoads = std::vector<PointLoad>;

/// The loads of the current project, in the order of their creation.
PointLoads currentPointLoads();

/// True if `a` is left of `b` [m]. What is not a number comes last, so that sorting stays defined.
bool isLeftOf(float a, float b);

/// Sorts by position, left to right as `isLeftOf` tells; loads at one place keep their order.
void sortByPosition(PointLoads& loads);

/// What `LoadLogic::CalcularStressTruss` does, for whoever has gathered the loads of the current
/// project already, in any order.
void rateTruss(PointLoads loads);
