#include "engine/HangingPoints.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace
{

using HangingPoints::Point;
using SecondOpinion::Layout;
using SecondOpinion::Motor;
using SecondOpinion::Problem;

/// What single precision may add to a distance that was entered as `ONE_POINT`, on a truss of 100 m [m].
constexpr double ENTERED = 1e-5;

/// No figure is larger than this many times the whole weight times the truss's length to the third.
constexpr double HEADROOM = 100.0;

bool isFinite(const Motor& motor)
{
    return std::isfinite(motor.position) && std::isfinite(motor.capacity) && std::isfinite(motor.selfWeight);
}

bool isFinite(const PointMass& load)
{
    return std::isfinite(load.position) && std::isfinite(load.mass);
}

bool areNumbersFinite(const Layout& layout)
{
    return std::isfinite(layout.length) && std::isfinite(layout.selfWeight) && std::isfinite(layout.limitCPL)
           && std::all_of(layout.motors.begin(), layout.motors.end(),
                          [](const Motor& motor) { return isFinite(motor); })
           && std::all_of(layout.loads.begin(), layout.loads.end(),
                          [](const PointMass& load) { return isFinite(load); });
}

bool hasNegative(const Layout& layout)
{
    return layout.length < 0.0 || layout.selfWeight < 0.0
           || std::any_of(layout.motors.begin(), layout.motors.end(),
                          [](const Motor& motor) { return motor.selfWeight < 0.0; })
           || std::any_of(layout.loads.begin(), layout.loads.end(),
                          [](const PointMass& load) { return load.mass < 0.0; });
}

bool hangsOutside(const Layout& layout)
{
    const auto isOutside = [&layout](const auto& item) {
        return item.position < -SecondOpinion::OUTSIDE
               || item.position > layout.length + SecondOpinion::OUTSIDE;
    };
    return std::any_of(layout.motors.begin(), layout.motors.end(), isOutside)
           || std::any_of(layout.loads.begin(), layout.loads.end(), isOutside);
}

/// The largest figure of all is a sag: the weight times the length to the third.
bool overflows(const Layout& layout)
{
    double weight = layout.selfWeight * layout.length;
    for (const PointMass& load : layout.loads)
        weight += load.mass;
    const double length = std::max(1.0, layout.length);
    return !std::isfinite(HEADROOM * weight * length * length * length);
}

double onTruss(double position, const Layout& layout)
{
    return std::clamp(position, 0.0, layout.length);
}

Point pointOf(const Layout& layout, std::vector<std::size_t> motors)
{
    double sum = 0.0;
    const auto positionOf = [&layout](std::size_t i) { return onTruss(layout.motors[i].position, layout); };
    const double first = positionOf(motors.front());
    const double last = positionOf(motors.back());
    for (const std::size_t i : motors)
        sum += positionOf(i) - first;
    std::sort(motors.begin(), motors.end());
    return {first + sum / static_cast<double>(motors.size()), first, last, std::move(motors)};
}

LoadRow loadsOf(const Layout& layout)
{
    std::vector<PointMass> loads = layout.loads;
    for (PointMass& load : loads)
        load.position = onTruss(load.position, layout);
    return LoadRow(std::move(loads));
}

} // namespace

Problem HangingPoints::problemOf(const Layout& layout)
{
    if (!areNumbersFinite(layout))
        return Problem::NotFinite;
    if (hasNegative(layout))
        return Problem::Negative;
    if (hangsOutside(layout))
        return Problem::Outside;
    return overflows(layout) ? Problem::Overflow : Problem::None;
}

std::vector<Point> HangingPoints::points(const Layout& layout)
{
    std::vector<std::size_t> order(layout.motors.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto positionOf = [&layout](std::size_t i) { return onTruss(layout.motors[i].position, layout); };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return positionOf(a) < positionOf(b); });

    std::vector<Point> points;
    std::vector<std::size_t> together;
    for (const std::size_t i : order) {
        const bool isApart =
            !together.empty()
            && positionOf(i) - positionOf(together.back()) >= SecondOpinion::ONE_POINT - ENTERED;
        if (isApart)
            points.push_back(pointOf(layout, std::exchange(together, {})));
        together.push_back(i);
    }
    points.push_back(pointOf(layout, std::move(together)));
    return points;
}

HangingPoints::Show::Show(const Layout& shown)
    : layout(shown)
    , points(HangingPoints::points(shown))
    , row(loadsOf(shown))
{
    std::vector<double> supports;
    supports.reserve(points.size());
    for (const Point& point : points)
        supports.push_back(point.position);
    beam = makeBeam(layout.length, layout.selfWeight, supports, row);
}

double HangingPoints::Show::share(std::size_t point) const
{
    return 1.0 / static_cast<double>(points[point].motors.size());
}
