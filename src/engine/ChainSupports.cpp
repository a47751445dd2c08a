#include "engine/ChainSupports.h"

#include "engine/Deflection.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{

using ChainSupports::State;

/// Nothing of a list.
constexpr std::size_t NONE = static_cast<std::size_t>(-1);

/// How far from the last reactions towards the new ones the first chain goes slack, and which one.
struct Step
{
    double part = 1.0;        ///< 0 to 1
    std::size_t place = NONE; ///< in the list of those that carry
};

Step firstToGoSlack(const State& state, double tolerance)
{
    Step step;
    for (std::size_t j = 0; j < state.carrying.size(); ++j) {
        const double now = state.solution.reactions[j];
        if (now >= -tolerance)
            continue;
        const double before = std::max(0.0, state.reactions[state.carrying[j]]);
        const double part = before / (before - now);
        if (step.place == NONE || part < step.part)
            step = {part, j};
    }
    return step;
}

void stepTowardsSolution(State& state, double part)
{
    for (std::size_t j = 0; j < state.carrying.size(); ++j) {
        double& reaction = state.reactions[state.carrying[j]];
        reaction += part * (state.solution.reactions[j] - reaction);
    }
}

/// Solves the beam on those that carry, letting go one after the other until none pushes. Two that
/// have the centre of gravity between them cannot push but for rounding. False when `solves` is used up.
bool letGo(const TrussBeam& beam, State& state, std::size_t& solves)
{
    while (solves > 0) {
        --solves;
        state.solution = ContinuousBeam::solve(carriedBy(beam, state.carrying));
        const Step step = firstToGoSlack(state, ChainSupports::FORCE_TOLERANCE * beam.weight);
        if (step.place == NONE || state.carrying.size() == 2) {
            stepTowardsSolution(state, 1.0);
            return true;
        }
        stepTowardsSolution(state, step.part);
        state.reactions[state.carrying[step.place]] = 0.0;
        state.carrying.erase(state.carrying.begin() + static_cast<std::ptrdiff_t>(step.place));
    }
    return false;
}

/// The motor below which the truss hangs deepest, or `NONE` where it hangs below no hook's level.
std::size_t deepest(const TrussBeam& beam, const State& state)
{
    const std::vector<double> sags = Deflection::line(beam, state.carrying, state.solution).sags;
    const double width = beam.supports.back() - beam.supports.front();
    double depth = ChainSupports::GAP_TOLERANCE * beam.weight * width * width * width;
    std::size_t found = NONE;
    for (std::size_t k = 0; k < sags.size(); ++k) {
        if (sags[k] > depth) {
            depth = sags[k];
            found = k;
        }
    }
    return found;
}

State nobodyCarries(const TrussBeam& beam)
{
    State state;
    state.reactions.assign(beam.supports.size(), 0.0);
    return state;
}

/// The two neighbours of the centre of gravity, which share the weight by the lever.
State neighboursOfCentre(const TrussBeam& beam)
{
    const std::vector<double>& x = beam.supports;
    const auto second = std::upper_bound(x.begin() + 1, x.end() - 1, beam.centre);
    const auto right = static_cast<std::size_t>(second - x.begin());
    State state = nobodyCarries(beam);
    state.carrying = {right - 1, right};
    state.reactions[right] = beam.weight * (beam.centre - x[right - 1]) / (x[right] - x[right - 1]);
    state.reactions[right - 1] = beam.weight - state.reactions[right];
    return state;
}

} // namespace

State ChainSupports::solve(const TrussBeam& beam, std::size_t& solves)
{
    State all = nobodyCarries(beam);
    all.carrying.resize(beam.supports.size());
    std::iota(all.carrying.begin(), all.carrying.end(), std::size_t{0});
    all.solution = ContinuousBeam::solve(beam);
    if (firstToGoSlack(all, FORCE_TOLERANCE * beam.weight).place == NONE) {
        all.reactions = all.solution.reactions;
        return all;
    }
    return solveFrom(beam, neighboursOfCentre(beam), solves);
}

State ChainSupports::solveFrom(const TrussBeam& beam, State start, std::size_t& solves)
{
    State state = std::move(start);
    while (letGo(beam, state, solves)) {
        const std::size_t next = deepest(beam, state);
        if (next == NONE)
            return state;
        state.carrying.insert(std::lower_bound(state.carrying.begin(), state.carrying.end(), next), next);
    }
    state.converged = false;
    return state;
}
