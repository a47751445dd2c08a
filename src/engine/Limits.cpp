#include "engine/Limits.h"

Limits::Level Limits::stressLevel(float stress)
{
    if (stress >= FULL_STRESS)
        return Level::Exceeded;
    return stress >= HIGH_STRESS ? Level::Near : Level::Within;
}

float Limits::dynamicLoad(float atPoint, float selfWeight)
{
    return (atPoint + selfWeight) * DYNAMIC_FACTOR;
}

Limits::MotorVerdict Limits::motorVerdict(float atPoint, float selfWeight, float capacity)
{
    if (atPoint > capacity)
        return MotorVerdict::StaticOverload;
    return dynamicLoad(atPoint, selfWeight) > capacity ? MotorVerdict::DynamicOverload : MotorVerdict::Fits;
}

Limits::Level Limits::motorLevel(float atPoint, float selfWeight, float capacity)
{
    if (motorVerdict(atPoint, selfWeight, capacity) != MotorVerdict::Fits)
        return Level::Exceeded;
    const bool isNear = dynamicLoad(atPoint, selfWeight) >= NEAR_CAPACITY_SHARE * capacity;
    return isNear ? Level::Near : Level::Within;
}
