#include "engine/LoadLogic.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>
#include <vector>

namespace
{

/// Left to right. A position that is not a number comes last, so that sorting stays defined.
bool standsLeftOf(const LoadLogic::Motor& a, const LoadLogic::Motor& b)
{
    if (std::isnan(a.positionX))
        return false;
    return std::isnan(b.positionX) || a.positionX < b.positionX;
}

/// The usual list is sorted already; motors at one place keep their order, so that a selection
/// by index does not jump between them.
void sortByPosition(QList<LoadLogic::Motor>& motors)
{
    if (!std::is_sorted(motors.cbegin(), motors.cend(), standsLeftOf))
        std::stable_sort(motors.begin(), motors.end(), standsLeftOf);
}

/// What the scan over the loads needs of a motor, close together in memory.
struct Support
{
    float position; // [m]
    float load;     // [kg]
};

using Supports = std::vector<Support>;

/// The lever rule: a load P at x between supports at a and b leaves (b − x) / (b − a) · P on the
/// left one and the rest on the right one; the rest is a difference, so that both add up to P.
void hangLoad(Supports& supports, float position, float mass)
{
    // They are sorted: the first support at or right of the load, and the last at or left of it, which
    // is the one before, or the last of those exactly at the load.
    const auto firstRight =
        std::find_if(supports.begin(), supports.end(),
                     [position](const Support& support) { return support.position >= position; });
    auto pastLeft = std::find_if(firstRight, supports.end(),
                                 [position](const Support& support) { return support.position != position; });
    while (pastLeft != supports.begin() && !(std::prev(pastLeft)->position <= position))
        --pastLeft; // over positions that are no numbers
    Support* right = firstRight == supports.end() ? nullptr : &*firstRight;
    Support* left = pastLeft == supports.begin() ? nullptr : &*std::prev(pastLeft);

    if (left != nullptr && right != nullptr && left != right) {
        const float share = (right->position - position) / (right->position - left->position) * mass;
        left->load += share;
        right->load += mass - share;
        return;
    }
    if (Support* only = right != nullptr ? right : left)
        only->load += mass;
}

/// Half of each span's weight goes to either of its motors, each overhang whole to its end motor.
void hangTruss(Supports& supports, float trussLength, float weightPerMetre)
{
    for (std::size_t i = 1; i < supports.size(); ++i) {
        const float half = (supports[i].position - supports[i - 1].position) * weightPerMetre * 0.5F;
        supports[i - 1].load += half;
        supports[i].load += half;
    }

    Support& first = supports.front();
    if (first.position > 0.0F)
        first.load += first.position * weightPerMetre;
    Support& last = supports.back();
    if (trussLength > last.position)
        last.load += (trussLength - last.position) * weightPerMetre;
}

} // namespace

// Source: statics of the simply supported beam, applied to each span on its own. Loads outside the
// outermost motors go whole to the nearest one; there is no continuous-beam coupling between spans.
void LoadLogic::CalcularReacciones()
{
    if (MotorList.isEmpty()) {
        CalcularStressTruss();
        return;
    }

    sortByPosition(MotorList);
    Supports supports;
    supports.reserve(static_cast<std::size_t>(MotorList.size()));
    for (const Motor& motor : std::as_const(MotorList))
        supports.push_back({motor.positionX, 0.0F});

    for (const ActiveLoad& load : std::as_const(ActiveLoads))
        hangLoad(supports, load.positionX, load.mass);
    hangTruss(supports, TrussLength, TrussSelfWeight);

    auto support = supports.cbegin();
    for (Motor& motor : MotorList) {
        motor.staticLoad = support->load;
        motor.totalLoad = motor.staticLoad + motor.selfWeight;
        ++support;
    }
    CalcularStressTruss();
}
