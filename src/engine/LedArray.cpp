#include "engine/LedArray.h"

#include "engine/Numbers.h"

#include <algorithm>
#include <cmath>

namespace
{

/// One hanging point for each half metre of screen [m].
constexpr float SEGMENT_PITCH = 0.5F;

} // namespace

float LedArray::totalWeight() const
{
    return (1.0F + cableWeightPercent / 100.0F) * (bumperWeightPerMeter * width + height * width * weightM2);
}

int LedArray::segmentCount() const
{
    return std::clamp(Numbers::toInteger(std::ceil(width / SEGMENT_PITCH)), 1, LARGEST_SEGMENT_COUNT);
}

float LedArray::segmentMass() const
{
    return totalWeight() / static_cast<float>(segmentCount());
}

std::vector<float> LedArray::segmentPositions(float centre, float trussLength) const
{
    const float leftEdge = std::max(0.0F, centre - width / 2.0F);
    const float rightEdge = std::min(trussLength, centre + width / 2.0F);
    const int count = segmentCount();

    std::vector<float> positions;
    for (int k = 0; k < count; ++k) {
        const float position = leftEdge + SEGMENT_PITCH / 2.0F + SEGMENT_PITCH * static_cast<float>(k);
        if (k > 0 && !(position <= rightEdge))
            break;
        positions.push_back(position);
    }
    return positions;
}
