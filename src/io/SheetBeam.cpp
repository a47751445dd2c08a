#include "io/SheetBeam.h"

#include "engine/ContinuousBeam.h"
#include "engine/OneSlack.h"
#include "io/SheetNumbers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace
{

using Case = SheetBeam::Case;
using ContinuousBeam::EndForces;
using ContinuousBeam::Solution;

/// Σ P·d·(s² − d²)/s + w·s³/4, d from the end that `sums` are measured from.
double turnOf(const PowerSums& sums, double s, double w)
{
    return (s * s * sums[1] - sums[3]) / s + w * s * s * s / 4.0;
}

Case caseOf(const HangingPoints::Show& show, const std::vector<std::size_t>& carrying,
            const Solution& solution)
{
    const TrussBeam beam = carriedBy(show.beam, carrying);
    const double w = beam.weightPerMetre;
    Case told{{}, carrying, beam.supports, {}, {}, solution.moments, solution.reactions, {}};
    told.levers.assign(carrying.size(), 0.0);
    told.turns.assign(carrying.size(), 0.0);
    told.levers.front() += weightOf(beam.panels.front(), w);
    told.levers.back() += weightOf(beam.panels.back(), w);
    for (std::size_t j = 1; j < carrying.size(); ++j) {
        const EndForces forces = ContinuousBeam::endForces(beam.panels[j], w, 0.0, 0.0);
        told.levers[j - 1] += forces.onLeft;
        told.levers[j] += forces.onRight;
        if (j + 1 < carrying.size()) {
            told.turns[j] = turnOf(beam.panels[j].fromLeft, beam.panels[j].length, w)
                            + turnOf(beam.panels[j + 1].fromRight, beam.panels[j + 1].length, w);
        }
    }
    told.extremes = BeamDiagram::extremes(beam, solution, show.row);
    return told;
}

std::vector<std::size_t> allPoints(const HangingPoints::Show& show)
{
    std::vector<std::size_t> all(show.points.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

/// From the last result back to the first number: the moment where it is largest has one decimal, and each
/// number may take a tenth of the next one's last digit, or little more.
SheetBeam::Decimals decimalsOf(const TrussBeam& beam, double length)
{
    double shortest = 1.0;
    for (std::size_t j = 1; j < beam.supports.size(); ++j)
        shortest = std::min(shortest, beam.supports[j] - beam.supports[j - 1]);
    const auto unit = [](int decimals) { return std::pow(10.0, -decimals); };
    const double arms = std::max(1.0, length) * static_cast<double>(beam.supports.size());

    SheetBeam::Decimals decimals;
    decimals.reaction = std::max(decimals.reaction, SheetNumbers::decimalsFor(0.04 / arms));
    decimals.lever = decimals.reaction + 1;
    decimals.moment =
        std::max(decimals.lever, SheetNumbers::decimalsFor(0.1 * unit(decimals.reaction) * shortest));
    decimals.turn =
        std::max(decimals.moment, SheetNumbers::decimalsFor(0.9 * unit(decimals.moment) * shortest));
    return decimals;
}

void tellSlackCases(SheetBeam& told, const ChainSupports::State& level)
{
    for (std::size_t k = 0; k < told.show.points.size(); ++k) {
        std::size_t solves = ChainSupports::mostSolves(told.show.points.size());
        const std::optional<ChainSupports::State> carried =
            told.show.points[k].motors.size() == 1 ? OneSlack::without(told.show.beam, level, k, solves)
                                                   : std::nullopt;
        if (!carried || !carried->converged)
            continue;
        told.oneSlack.push_back(caseOf(told.show, carried->carrying, carried->solution));
        told.oneSlack.back().slack = k;
    }
}

} // namespace

SecondOpinion::Layout sheetLayout(const SheetProject& project)
{
    SecondOpinion::Layout layout;
    layout.length = project.length;
    layout.selfWeight = project.selfWeight;
    layout.limitCPL = project.limitCPL;
    for (const SheetMotor& motor : project.motors) {
        layout.motors.push_back({motor.title, motor.position, motor.capacity, motor.ownWeight,
                                 static_cast<double>(motor.figures.atPoint)});
    }
    for (const SheetLoad& load : project.loads)
        layout.loads.insert(layout.loads.end(), load.masses.begin(), load.masses.end());
    return layout;
}

SheetBeam SheetBeam::of(const SheetProject& project)
{
    auto layout = std::make_shared<const SecondOpinion::Layout>(sheetLayout(project));
    HangingPoints::Show show(*layout);
    const Solution pushing = ContinuousBeam::solve(show.beam);
    const std::vector<std::size_t> all = allPoints(show);
    SheetBeam told{
        std::move(layout), show, caseOf(show, all, pushing), {}, {}, decimalsOf(show.beam, project.length)};

    std::size_t solves = ChainSupports::mostSolves(all.size());
    const ChainSupports::State level = ChainSupports::solve(show.beam, solves);
    if (!level.converged)
        return told;
    told.level = caseOf(show, level.carrying, level.solution);
    tellSlackCases(told, level);
    return told;
}
