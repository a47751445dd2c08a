#pragma once

#include <vector>

/// One LED video screen as the user describes it, and how it hangs on a truss: as equal point
/// loads, one for each started half metre of its width.
struct LedArray
{
    float width = 0.0F;                ///< [m]
    float height = 0.0F;               ///< [m]
    float weightM2 = 0.0F;             ///< panels [kg/m²]
    float bumperWeightPerMeter = 0.0F; ///< flying bar [kg/m]
    float cableWeightPercent = 0.0F;   ///< allowance on panels and bar [%]

    /// Panels over the whole area plus the bar over the width, plus the cable allowance [kg].
    [[nodiscard]] float totalWeight() const;
    /// Segments that the width asks for, at least 1.
    [[nodiscard]] int segmentCount() const;
    /// The total weight shared equally among `segmentCount()` [kg].
    [[nodiscard]] float segmentMass() const;
    /// Where the segments hang [m from the left end] when the screen is centred at `centre` [m] of
    /// a truss of `trussLength` [m]. The first is there whatever its place, so that a narrow screen keeps
    /// its weight; the others beyond the screen's or the truss's right end or beyond
    /// `LARGEST_SEGMENT_COUNT` are left out; the rest keep their mass. A negative width, whose edges have
    /// changed sides, hangs nothing: its weight would be negative and relieve the motors.
    [[nodiscard]] std::vector<float> segmentPositions(float centre, float trussLength) const;

    /// Bounds what a billion metres of screen and truss ask for: a screen of 50 km.
    static constexpr int LARGEST_SEGMENT_COUNT = 100'000;
};
