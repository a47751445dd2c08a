#include "engine/Limits.h"
#include "engine/Numbers.h"
#include "engine/Statics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace
{

/// Below this a truss has no length [m] or no rating [kg] to be compared with.
constexpr float SMALLEST_RATED = 0.01F;
/// Spans shorter than this are one hanging point, overhangs up to this are none [m].
constexpr float SHORTEST_SPAN = 0.05F;
/// An overhang is rated against this share of the reference moment …
constexpr double CANTILEVER_SHARE = 0.5;
/// … but never against less than this [kg·m].
constexpr double SMALLEST_CANTILEVER_MOMENT = 1.0;

std::vector<float> sortedPositions(const QList<Motor>& motors)
{
    std::vector<float> positions;
    positions.reserve(static_cast<std::size_t>(motors.size()));
    for (const Motor& motor : motors)
        positions.push_back(motor.positionX);
    std::sort(positions.begin(), positions.end(), isLeftOf);
    return positions;
}

/// The loads strictly between `a` and `b`, as a range of `loads`; a `b` that is not a number lies right
/// of every load that has a place.
std::pair<PointLoads::const_iterator, PointLoads::const_iterator> loadsBetween(const PointLoads& loads,
                                                                               float a, float b)
{
    const auto begin =
        std::upper_bound(loads.cbegin(), loads.cend(), a, [](float position, const PointLoad& load) {
            return isLeftOf(position, load.position);
        });
    const auto end = std::lower_bound(begin, loads.cend(), b, [](const PointLoad& load, float position) {
        return isLeftOf(load.position, position);
    });
    return {begin, end};
}

/// The largest bending moment [kg·m] in the span from `a` to `b` [m], at least 0.
///
/// At u metres from the left motor of a span of s metres, the self-weight w gives
/// w·u·(s − u) / 2, and a load P at d gives P·(s − d)·u / s where u ≤ d, else P·d·(s − u) / s
/// (simply supported beam). The loads are sorted, so the sums of P·d left of u and of P·(s − d)
/// right of it run along instead of being added up anew at each of the check points.
double spanMoment(const PointLoads& loads, float a, float b, double w)
{
    const double s = static_cast<double>(b - a);
    const auto [begin, end] = loadsBetween(loads, a, b);

    double rightSum = 0.0; // Σ P·(s − d) over the loads at or right of u
    for (auto load = end; load != begin;) {
        --load;
        rightSum += static_cast<double>(load->mass) * (s - static_cast<double>(load->position - a));
    }

    const auto moment = [s, w](double u, double left, double right) {
        return 0.5 * w * u * (s - u) + (u * right + (s - u) * left) / s;
    };

    double leftSum = 0.0; // Σ P·d over the loads left of u
    double largest = 0.0;
    bool middleDone = false;
    for (auto load = begin; load != end; ++load) {
        const double d = static_cast<double>(load->position - a);
        const double mass = static_cast<double>(load->mass);
        if (!middleDone && d >= 0.5 * s) {
            largest = std::max(largest, moment(0.5 * s, leftSum, rightSum));
            middleDone = true;
        }
        largest = std::max(largest, moment(d, leftSum, rightSum));
        leftSum += mass * d;
        rightSum -= mass * (s - d);
    }
    if (!middleDone)
        largest = std::max(largest, moment(0.5 * s, leftSum, 0.0));
    return largest;
}

/// The moment [kg·m] at the end motor of an overhang of `length` metres: w·e² / 2 + Σ P·distance.
double overhangMoment(PointLoads::const_iterator begin, PointLoads::const_iterator end, float support,
                      float length, double w)
{
    const double e = static_cast<double>(length);
    double moment = 0.5 * w * e * e;
    for (auto load = begin; load != end; ++load)
        moment += std::abs(static_cast<double>(load->position) - static_cast<double>(support))
                  * static_cast<double>(load->mass);
    return moment;
}

double largestSpanMoment(const std::vector<float>& motors, const PointLoads& loads, double w)
{
    double largest = 0.0;
    for (std::size_t i = 1; i < motors.size(); ++i) {
        if (motors[i] - motors[i - 1] >= SHORTEST_SPAN)
            largest = std::max(largest, spanMoment(loads, motors[i - 1], motors[i], w));
    }
    return largest;
}

double largestOverhangMoment(float first, float last, float trussLength, const PointLoads& loads, double w)
{
    double largest = 0.0;
    if (first > SHORTEST_SPAN) {
        const auto end = loadsBetween(loads, -std::numeric_limits<float>::infinity(), first).second;
        largest = std::max(largest, overhangMoment(loads.cbegin(), end, first, first, w));
    }
    const float length = trussLength - last;
    if (length > SHORTEST_SPAN) {
        const auto [begin, end] = loadsBetween(loads, last, std::numeric_limits<float>::quiet_NaN());
        largest = std::max(largest, overhangMoment(begin, end, last, length, w));
    }
    return largest;
}

} // namespace

// Every span is rated against M_ref = L·CPL / 4, the moment of the maximum central point load on a
// truss simply supported at its ends; an overhang against half of that. Both references are those
// of the whole truss, however short the span or the overhang.
Rating Statics::rate(const Truss& truss, const QList<Motor>& motors, PointLoads loads)
{
    if (truss.length <= SMALLEST_RATED || truss.limitCPL <= SMALLEST_RATED || motors.isEmpty())
        return {};

    const std::vector<float> supports = sortedPositions(motors);
    const float longestOverhang = Limits::LARGEST_OVERHANG_SHARE * truss.length;
    if (supports.front() > longestOverhang || truss.length - supports.back() > longestOverhang)
        return {0.0F, true};

    sortByPosition(loads);
    const double w = static_cast<double>(truss.selfWeight);
    const double referenceMoment =
        static_cast<double>(truss.length) * static_cast<double>(truss.limitCPL) * 0.25;
    const double cantileverMoment = std::max(SMALLEST_CANTILEVER_MOMENT, CANTILEVER_SHARE * referenceMoment);

    const double spans = largestSpanMoment(supports, loads, w) / referenceMoment;
    const double overhangs =
        largestOverhangMoment(supports.front(), supports.back(), truss.length, loads, w) / cantileverMoment;
    // Starting from 0, what is not a number (infinite moment by infinite rating) rates nothing.
    return {Numbers::toSingle(std::max({0.0, spans, overhangs}) * 100.0), false};
}
