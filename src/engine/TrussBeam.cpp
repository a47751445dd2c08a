#include "engine/TrussBeam.h"

#include <algorithm>
#include <utility>

namespace
{

/// Places that differ by less are one place [m]: far more than double precision loses, far less than
/// anything that hangs.
constexpr double SAME_PLACE = 1e-9;

void addPowers(PowerSums& sums, double distance, double mass)
{
    double term = mass;
    for (double& sum : sums) {
        sum += term;
        term *= distance;
    }
}

/// `near` with `far` added, whose distances all grow by `shift` [m].
PowerSums shifted(const PowerSums& near, const PowerSums& far, double shift)
{
    const double square = shift * shift;
    return {near[0] + far[0], near[1] + far[1] + shift * far[0],
            near[2] + far[2] + 2.0 * shift * far[1] + square * far[0],
            near[3] + far[3] + 3.0 * shift * far[2] + 3.0 * square * far[1] + square * shift * far[0]};
}

/// Rounding must not carry the centre of gravity off the truss.
void setGravity(TrussBeam& beam, double length, const LoadRow& row)
{
    const double ownWeight = beam.weightPerMetre * length;
    beam.weight = ownWeight + row.massBefore.back();
    beam.centre = length / 2.0;
    if (beam.weight > 0.0) {
        const double moment = ownWeight * length / 2.0 + row.momentBefore.back();
        beam.centre = std::clamp(moment / beam.weight, 0.0, length);
    }
}

} // namespace

LoadRow::LoadRow(std::vector<PointMass> masses)
    : loads(std::move(masses))
{
    std::stable_sort(loads.begin(), loads.end(),
                     [](const PointMass& a, const PointMass& b) { return a.position < b.position; });
    massBefore.assign(1, 0.0);
    momentBefore.assign(1, 0.0);
    for (const PointMass& load : loads) {
        massBefore.push_back(massBefore.back() + load.mass);
        momentBefore.push_back(momentBefore.back() + load.mass * load.position);
    }
}

std::size_t LoadRow::countLeftOf(double position) const
{
    const auto isLeft = [](const PointMass& load, double x) { return load.position < x - SAME_PLACE; };
    return static_cast<std::size_t>(std::lower_bound(loads.begin(), loads.end(), position, isLeft)
                                    - loads.begin());
}

std::size_t LoadRow::countUpTo(double position) const
{
    const auto isRight = [](double x, const PointMass& load) { return x + SAME_PLACE < load.position; };
    return static_cast<std::size_t>(std::upper_bound(loads.begin(), loads.end(), position, isRight)
                                    - loads.begin());
}

void BeamPanel::add(double distance, double mass)
{
    addPowers(fromLeft, distance, mass);
    addPowers(fromRight, length - distance, mass);
}

BeamPanel joined(const BeamPanel& left, const BeamPanel& right)
{
    return {left.length + right.length, shifted(left.fromLeft, right.fromLeft, left.length),
            shifted(right.fromRight, left.fromRight, right.length)};
}

TrussBeam makeBeam(double length, double weightPerMetre, const std::vector<double>& supports,
                   const LoadRow& row)
{
    TrussBeam beam{weightPerMetre, 0.0, 0.0, supports, {}};
    setGravity(beam, length, row);
    double start = 0.0;
    auto load = row.loads.begin();
    for (std::size_t k = 0; k <= supports.size(); ++k) {
        const bool isLast = k == supports.size();
        const double end = isLast ? length : supports[k];
        BeamPanel panel{end - start, {}, {}};
        for (; load != row.loads.end() && (isLast || load->position <= end); ++load)
            panel.add(load->position - start, load->mass);
        beam.panels.push_back(panel);
        start = end;
    }
    return beam;
}

TrussBeam carriedBy(const TrussBeam& beam, const std::vector<std::size_t>& carrying)
{
    TrussBeam carried{beam.weightPerMetre, beam.weight, beam.centre, {}, {beam.panels.front()}};
    auto next = carrying.begin();
    for (std::size_t k = 0; k < beam.supports.size(); ++k) {
        if (next != carrying.end() && *next == k) {
            carried.supports.push_back(beam.supports[k]);
            carried.panels.push_back(beam.panels[k + 1]);
            ++next;
        } else {
            carried.panels.back() = joined(carried.panels.back(), beam.panels[k + 1]);
        }
    }
    return carried;
}

double weightOf(const BeamPanel& panel, double weightPerMetre)
{
    return panel.fromLeft[0] + weightPerMetre * panel.length;
}
