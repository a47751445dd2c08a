#pragma once

#include "support/Layouts.h"

#include <algorithm>
#include <vector>

/// The formulas of the calculation as a textbook has them: in double precision, without running
/// sums, each moment added up from all loads anew. What the engine is compared with.
namespace PlainStatics
{

/// What the formulas give for a layout.
struct Result
{
    std::vector<double> staticLoads; ///< of the motors, left to right [kg]
    double stress = 0.0;             ///< [%]
    bool unstable = false;
};

inline std::vector<double> sortedMotors(const Layouts::Layout& layout)
{
    std::vector<double> motors(layout.motors.begin(), layout.motors.end());
    std::sort(motors.begin(), motors.end());
    return motors;
}

/// Each load shared by the lever rule, each span's weight halved, each overhang to its end.
inline std::vector<double> staticLoads(const Layouts::Layout& layout)
{
    const std::vector<double> motors = sortedMotors(layout);
    std::vector<double> carried(motors.size(), 0.0);
    if (motors.empty())
        return carried;
    for (const Layouts::Load& load : layout.loads) {
        const double x = load.x;
        const double mass = load.mass;
        const auto right =
            static_cast<std::size_t>(std::lower_bound(motors.begin(), motors.end(), x) - motors.begin());
        const auto beyond =
            static_cast<std::size_t>(std::upper_bound(motors.begin(), motors.end(), x) - motors.begin());
        if (beyond == 0) {
            carried.front() += mass;
        } else if (right == motors.size()) {
            carried.back() += mass;
        } else if (right == beyond - 1) {
            carried[right] += mass;
        } else {
            const std::size_t left = beyond - 1;
            const double share = (motors[right] - x) / (motors[right] - motors[left]) * mass;
            carried[left] += share;
            carried[right] += mass - share;
        }
    }
    const double w = layout.selfWeight;
    for (std::size_t i = 1; i < motors.size(); ++i) {
        carried[i - 1] += (motors[i] - motors[i - 1]) * w / 2.0;
        carried[i] += (motors[i] - motors[i - 1]) * w / 2.0;
    }
    carried.front() += std::max(0.0, motors.front()) * w;
    carried.back() += std::max(0.0, static_cast<double>(layout.length) - motors.back()) * w;
    return carried;
}

/// The bending moment [kg·m] at `u` metres from the left end of the span from `a` to `b` [m].
inline double momentAt(const Layouts::Layout& layout, double a, double b, double u)
{
    const double s = b - a;
    const double w = layout.selfWeight;
    double moment = s * w * 0.5 * u - 0.5 * w * u * u;
    for (const Layouts::Load& load : layout.loads) {
        const double d = static_cast<double>(load.x) - a;
        if (d > 0.0 && d < s) {
            const double mass = load.mass;
            moment += u <= d ? mass * (s - d) * u / s : mass * d * (s - u) / s;
        }
    }
    return moment;
}

/// The largest moment [kg·m] at the middle of the span and at its loads, at least 0.
inline double spanMoment(const Layouts::Layout& layout, double a, double b)
{
    double largest = std::max(0.0, momentAt(layout, a, b, (b - a) / 2.0));
    for (const Layouts::Load& load : layout.loads) {
        const double x = load.x;
        if (x > a && x < b)
            largest = std::max(largest, momentAt(layout, a, b, x - a));
    }
    return largest;
}

/// The moment [kg·m] that the overhang of `length` [m] left of `end` (`side` −1) or right of it
/// (`side` 1) brings to the motor there.
inline double overhangMoment(const Layouts::Layout& layout, double end, double length, double side)
{
    double moment = static_cast<double>(layout.selfWeight) * length * length * 0.5;
    for (const Layouts::Load& load : layout.loads)
        moment += std::max(0.0, side * (static_cast<double>(load.x) - end)) * static_cast<double>(load.mass);
    return moment;
}

/// The stress [%] of a stable layout.
inline double stress(const Layouts::Layout& layout)
{
    const std::vector<double> motors = sortedMotors(layout);
    const double length = layout.length;
    const double reference = length * static_cast<double>(layout.cpl) / 4.0;
    const double cantilever = std::max(1.0, reference / 2.0);
    double largest = 0.0;
    for (std::size_t i = 1; i < motors.size(); ++i) {
        if (motors[i] - motors[i - 1] >= 0.05)
            largest = std::max(largest, spanMoment(layout, motors[i - 1], motors[i]) / reference);
    }
    if (motors.front() > 0.05)
        largest =
            std::max(largest, overhangMoment(layout, motors.front(), motors.front(), -1.0) / cantilever);
    const double right = length - motors.back();
    if (right > 0.05)
        largest = std::max(largest, overhangMoment(layout, motors.back(), right, 1.0) / cantilever);
    return largest * 100.0;
}

inline Result calculate(const Layouts::Layout& layout)
{
    Result result;
    result.staticLoads = staticLoads(layout);
    if (layout.motors.empty() || layout.length <= 0.01F || layout.cpl <= 0.01F)
        return result;
    const std::vector<double> motors = sortedMotors(layout);
    const double limit = 0.45 * static_cast<double>(layout.length);
    result.unstable = motors.front() > limit || static_cast<double>(layout.length) - motors.back() > limit;
    if (!result.unstable)
        result.stress = stress(layout);
    return result;
}

} // namespace PlainStatics
