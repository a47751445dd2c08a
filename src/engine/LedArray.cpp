#include "engine/LedArray.h"

#include "engine/Numbers.h"

#include <algorithm>
#include <cmath>

namespace
{

/// One hanging point for each half metre of screen [m].
constexpr float SEGMENT_PITCH = 0.5F;

} // namespace

// In double precision, where the product of three fields cannot overflow.
float LedArray::totalWeight() const
{
    const double w = static_cast<double>(width);
    const double bar = static_cast<double>(bumperWeightPerMeter) * w;
    const double panels = static_cast<double>(height) * w * static_cast<double>(weightM2);
    const double allowance = 1.0 + static_cast<double>(cableWeightPercent) / 100.0;
    return Numbers::toSingle(allowance * (bar + panels));
}

int LedArray::segmentCount() const
{
    return std::max(1, Numbers::toInteger(std::ceil(width / SEGMENT_PITCH)));
}

float LedArray::segmentMass() const
{
    return totalWeight() / static_cast<float>(segmentCount());
}

std::vector<float> LedArray::segmentPositions(float centre, float trussLength) const
{
    const float leftEdge = std::max(0.0F, centre - width / 2.0F);
    const float rightEdge = std::min(trussLength, centre + width / 2.0F);
    const int count = std::min(segmentCount(), LARGEST_SEGMENT_COUNT);

    std::vector<float> positions;
    for (int k = 0; k < count; ++k) {
        const float position = leftEdge + SEGMENT_PITCH / 2.0F + SEGMENT_PITCH * static_cast<float>(k);
        const bool isKeptAnyhow = k == 0 && !(width < 0.0F);
        if (!isKeptAnyhow && !(position <= rightEdge))
            break;
        positions.push_back(position);
    }
    return positions;
}
