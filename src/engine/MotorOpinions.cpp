#include "engine/MotorOpinions.h"

#include "engine/Numbers.h"

#include <algorithm>
#include <cmath>

namespace
{

/// One slack motor counts as worse than another by this part of the whole weight; below, rounding would
/// decide, and the one further left is named.
constexpr double WORSE = 1e-9;

SecondOpinion::Verdict verdictOf(const SecondOpinion::Motor& motor, double atPoint)
{
    return SecondOpinion::motorVerdict(atPoint, motor.selfWeight, motor.capacity);
}

} // namespace

SecondOpinion::Verdict SecondOpinion::motorVerdict(double atPoint, double selfWeight, double capacity)
{
    return Limits::motorVerdict(Numbers::toSingle(atPoint), Numbers::toSingle(selfWeight),
                                Numbers::toSingle(capacity));
}

SecondOpinion::MotorOpinion MotorOpinions::asked(const SecondOpinion::Motor& motor)
{
    SecondOpinion::MotorOpinion told;
    told.motor = motor;
    told.leverVerdict = verdictOf(motor, motor.lever);
    if (std::isfinite(motor.lever))
        told.lever = motor.lever;
    return told;
}

void MotorOpinions::setLevel(SecondOpinion::MotorOpinion& told, double level, double pushing, bool isSlack)
{
    told.level = std::max(0.0, level);
    told.pushing = pushing;
    told.isSlack = isSlack;
    told.levelVerdict = verdictOf(told.motor, *told.level);
}

void MotorOpinions::setRange(SecondOpinion::MotorOpinion& told, double most, double least)
{
    told.most = most;
    told.least = least;
    told.mostVerdict = verdictOf(told.motor, most);
}

void MotorOpinions::noteOneSlack(SecondOpinion::MotorOpinion& told, double load, std::size_t slack,
                                 double weight)
{
    if (told.oneSlack && load <= *told.oneSlack + WORSE * weight)
        return;
    // Up to a millimetre over the edge one motor is said to carry all, though it can no longer.
    told.oneSlack = std::clamp(load, 0.0, told.most.value_or(weight));
    told.oneSlackOf = slack;
    told.oneSlackVerdict = verdictOf(told.motor, *told.oneSlack);
}
