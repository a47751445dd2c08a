#include "engine/OneSlack.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace
{

using ChainSupports::State;

/// All supports of a beam but one, and the counting of those lists.
std::vector<std::size_t> allBut(std::size_t count, std::size_t one)
{
    std::vector<std::size_t> others(count);
    std::iota(others.begin(), others.end(), std::size_t{0});
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(one));
    return others;
}

/// `level` without its motor at `place` of those that carry, which has one on either side: these take
/// over its load by the lever. A balance in which nothing pushes, though not the right one yet.
State handedOver(const TrussBeam& beam, const State& level, std::size_t place)
{
    const std::size_t slack = level.carrying[place];
    const std::size_t left = level.carrying[place - 1];
    const std::size_t right = level.carrying[place + 1];
    const std::vector<double>& x = beam.supports;
    const double toRight = level.reactions[slack] * (x[slack] - x[left]) / (x[right] - x[left]);

    State start = level;
    start.reactions[right] += toRight;
    start.reactions[left] += level.reactions[slack] - toRight;
    start.carrying.erase(start.carrying.begin() + static_cast<std::ptrdiff_t>(place));
    start.reactions.erase(start.reactions.begin() + static_cast<std::ptrdiff_t>(slack));
    for (std::size_t& k : start.carrying)
        k -= k > slack ? 1 : 0;
    return start;
}

/// The motor at `support` carries everything.
State aloneOn(const TrussBeam& beam, std::size_t support)
{
    State state;
    state.carrying = {support};
    state.reactions.assign(beam.supports.size(), 0.0);
    state.reactions[support] = beam.weight;
    state.solution = ContinuousBeam::solve(carriedBy(beam, state.carrying));
    return state;
}

/// `state` of the beam without `slack`, its lists counting the slack one as well.
State countedWith(State state, std::size_t slack)
{
    for (std::size_t& k : state.carrying)
        k += k >= slack ? 1 : 0;
    state.reactions.insert(state.reactions.begin() + static_cast<std::ptrdiff_t>(slack), 0.0);
    return state;
}

} // namespace

std::optional<State> OneSlack::without(const TrussBeam& beam, const State& level, std::size_t slack,
                                       std::size_t& solves)
{
    const auto found = std::lower_bound(level.carrying.begin(), level.carrying.end(), slack);
    if (found == level.carrying.end() || *found != slack)
        return level; // it carries nothing anyway

    const TrussBeam others = carriedBy(beam, allBut(beam.supports.size(), slack));
    const double first = others.supports.front();
    const double last = others.supports.back();
    if (beam.centre < first - EDGE || beam.centre > last + EDGE)
        return std::nullopt;
    if (beam.centre <= first)
        return countedWith(aloneOn(others, 0), slack);
    if (beam.centre >= last)
        return countedWith(aloneOn(others, others.supports.size() - 1), slack);

    const auto place = static_cast<std::size_t>(found - level.carrying.begin());
    const bool isBetween = place > 0 && place + 1 < level.carrying.size();
    State state = isBetween ? ChainSupports::solveFrom(others, handedOver(beam, level, place), solves)
                            : ChainSupports::solve(others, solves);
    return countedWith(std::move(state), slack);
}
