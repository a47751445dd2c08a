#pragma once

#include "engine/ChainSupports.h"

#include <cstddef>
#include <optional>

/// What carries the truss while one of its motors hangs slack and the others are level.
namespace OneSlack
{

/// How near to an outermost motor the centre of gravity is on the edge [m]: within it, rounding would
/// decide, and a symmetric show would answer differently on its left and on its right.
constexpr double EDGE = 0.001;

/// What carries `beam` without its support `slack`, or nothing where the truss then tips: the centre
/// of gravity lies further than `EDGE` outside the others. At the edge the outermost one carries all.
/// `level` is what carries with none slack; lists count the supports of `beam`. `solves` as in
/// `ChainSupports::solve`.
std::optional<ChainSupports::State> without(const TrussBeam& beam, const ChainSupports::State& level,
                                            std::size_t slack, std::size_t& solves);

} // namespace OneSlack
