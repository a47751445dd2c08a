#pragma once

#include "engine/ChainSupports.h"
#include "engine/HangingPoints.h"

#include <cstddef>

/// What the motors carry while one of them hangs slack, for each of them in turn.
namespace SlackCases
{

/// Tells `opinion`, to which the level case has been told, of all cases. False where a solution was not
/// found; what was told is then worth nothing. Solves no more than `solves` beams.
bool tell(const HangingPoints::Show& show, const ChainSupports::State& level, std::size_t solves,
          SecondOpinion::Opinion& opinion);

/// One of several motors at `point`, which carries `load` [kg], hangs slack: the others of the point share
/// its load, and nothing tips.
void tellWithin(const HangingPoints::Show& show, const HangingPoints::Point& point, double load,
                SecondOpinion::Opinion& opinion);

/// How the truss bends on those that carry.
SecondOpinion::Bending bendingOf(const HangingPoints::Show& show, const ChainSupports::State& carried);

} // namespace SlackCases
