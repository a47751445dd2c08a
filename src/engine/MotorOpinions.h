#pragma once

#include "engine/SecondOpinion.h"

#include <cstddef>

/// How what was found out is told of one motor: figure and verdict together.
namespace MotorOpinions
{

/// `motor` with today's figure and its verdict, and nothing else told yet.
SecondOpinion::MotorOpinion asked(const SecondOpinion::Motor& motor);

/// What it carries at level [kg]; a push that is rounding is none.
void setLevel(SecondOpinion::MotorOpinion& told, double level, double pushing, bool isSlack);

/// What it can carry at all [kg].
void setRange(SecondOpinion::MotorOpinion& told, double most, double least);

/// Notes that it carries `load` [kg] while the motor at `slack` in the list hangs slack, if that is the most
/// so far; `weight` is the whole weight [kg].
void noteOneSlack(SecondOpinion::MotorOpinion& told, double load, std::size_t slack, double weight);

} // namespace MotorOpinions
