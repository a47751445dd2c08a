#include "engine/Statics.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace
{

bool standsLeftOf(const Motor& a, const Motor& b)
{
    return isLeftOf(a.positionX, b.positionX);
}

/// The usual list is sorted already; motors at one place keep their order, so that a selection
/// by index does not jump between them.
void sortByPosition(QList<Motor>& motors)
{
    if (!std::is_sorted(motors.cbegin(), motors.cend(), standsLeftOf))
        std::stable_sort(motors.begin(), motors.end(), standsLeftOf);
}

/// The motors' positions [m] and what hangs on them so far [kg], left to right, each list close
/// together in memory.
struct Supports
{
    std::vector<float> positions;
    std::vector<float> loads;
};

/// How many supports stand left of `position`. All are looked at: that takes the same few steps for
/// every load, where the processor would guess wrong at the end of a search again and again.
std::size_t countLeftOf(const std::vector<float>& positions, float position)
{
    return static_cast<std::size_t>(std::count_if(positions.cbegin(), positions.cend(),
                                                  [position](float support) { return support < position; }));
}

/// The lever rule: a load P at x between supports at a and b leaves (b − x) / (b − a) · P on the
/// left one and the rest on the right one; the rest is a difference, so that both add up to P.
void hangLoad(Supports& supports, const PointLoad& load)
{
    // They are sorted: the first support at or right of the load, and the last at or left of it, which
    // is the one before, or the last of those exactly at the load.
    const std::vector<float>& positions = supports.positions;
    const std::size_t count = positions.size();
    const std::size_t right = countLeftOf(positions, load.position);
    std::size_t pastLeft = right;
    while (pastLeft < count && positions[pastLeft] == load.position)
        ++pastLeft;
    // Not so for what is no number: such a support stands last, and such a load hangs nowhere.
    const bool hasRight = right < count && positions[right] >= load.position;
    const bool hasLeft = pastLeft > 0;

    if (hasLeft && hasRight && pastLeft - 1 != right) {
        const std::size_t left = pastLeft - 1;
        const float share =
            (positions[right] - load.position) / (positions[right] - positions[left]) * load.mass;
        supports.loads[left] += share;
        supports.loads[right] += load.mass - share;
    } else if (hasRight) {
        supports.loads[right] += load.mass;
    } else if (hasLeft) {
        supports.loads[pastLeft - 1] += load.mass;
    }
}

/// Half of each span's weight goes to either of its motors, each overhang whole to its end motor.
void hangTruss(Supports& supports, float trussLength, float weightPerMetre)
{
    const std::vector<float>& positions = supports.positions;
    for (std::size_t i = 1; i < positions.size(); ++i) {
        const float half = (positions[i] - positions[i - 1]) * weightPerMetre * 0.5F;
        supports.loads[i - 1] += half;
        supports.loads[i] += half;
    }

    if (positions.front() > 0.0F)
        supports.loads.front() += positions.front() * weightPerMetre;
    if (trussLength > positions.back())
        supports.loads.back() += (trussLength - positions.back()) * weightPerMetre;
}

} // namespace

// Source: statics of the simply supported beam, applied to each span on its own. Loads outside the
// outermost motors go whole to the nearest one; there is no continuous-beam coupling between spans.
Rating Statics::solve(const Truss& truss, QList<Motor>& motors, const QList<ActiveLoad>& loads)
{
    if (motors.isEmpty())
        return {};

    sortByPosition(motors);
    Supports supports;
    for (const Motor& motor : std::as_const(motors))
        supports.positions.push_back(motor.positionX);
    supports.loads.resize(supports.positions.size());

    PointLoads gathered = pointLoads(loads);
    for (const PointLoad& load : gathered)
        hangLoad(supports, load);
    hangTruss(supports, truss.length, truss.selfWeight);

    auto support = supports.loads.cbegin();
    for (Motor& motor : motors) {
        motor.staticLoad = *support++;
        motor.totalLoad = motor.staticLoad + motor.selfWeight;
    }
    return rate(truss, motors, std::move(gathered));
}

Truss Statics::trussOf(const ProjectState& project)
{
    return {project.trussLength, project.trussSelfWeight, project.limitCPL};
}

ProjectState Statics::solved(ProjectState project)
{
    const Rating rating = solve(trussOf(project), project.motors, project.loads);
    project.trussStressPercentage = rating.stress;
    project.isUnstable = rating.isUnstable;
    return project;
}
