#pragma once

/// What the fields of motors and loads take, wherever they stand.
namespace FieldRanges
{

struct Range
{
    double bottom = 0.0; ///< the smallest value that is taken
    double top = 0.0;    ///< the largest one
};

inline constexpr Range MOTOR_CAPACITY{100.0, 5000.0}; ///< [kg]
inline constexpr Range MOTOR_WEIGHT{0.0, 500.0};      ///< the hoist's own weight [kg]
inline constexpr Range LOAD_MASS{0.0, 50000.0};       ///< [kg]

} // namespace FieldRanges
