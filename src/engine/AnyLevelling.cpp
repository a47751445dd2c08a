#include "engine/AnyLevelling.h"

#include <algorithm>

namespace
{

/// What a motor at `x` carries when one at `other`, on the other side of the centre of gravity or at it,
/// carries the rest.
double shareAgainst(const TrussBeam& beam, double x, double other)
{
    return beam.weight * ((other - beam.centre) / (other - x));
}

double mostAt(const TrussBeam& beam, double x)
{
    if (x < beam.centre)
        return shareAgainst(beam, x, beam.supports.back());
    if (x > beam.centre)
        return shareAgainst(beam, x, beam.supports.front());
    return beam.weight;
}

} // namespace

std::vector<AnyLevelling::Range> AnyLevelling::ranges(const TrussBeam& beam)
{
    const std::vector<double>& x = beam.supports;
    const std::size_t last = x.size() - 1;
    std::vector<Range> ranges;
    ranges.reserve(x.size());
    for (const double position : x)
        ranges.push_back({mostAt(beam, position), 0.0});

    // Negative where the neighbour is on the same side of the centre of gravity.
    ranges.front().least = std::max(0.0, shareAgainst(beam, x.front(), x[1]));
    ranges.back().least = std::max(0.0, shareAgainst(beam, x.back(), x[last - 1]));
    return ranges;
}
