#include "engine/PointLoads.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace
{

/// The sort goes by the four bytes of a key.
constexpr std::size_t DIGITS = 4;
constexpr std::size_t DIGIT_BITS = 8;
constexpr std::size_t DIGIT_VALUES = 256;

/// An integer that sorts as `isLeftOf` does. The bits of a float already do so above zero; below it
/// they run backwards.
std::uint32_t sortKey(float position)
{
    constexpr std::uint32_t SIGN = 0x8000'0000U;
    if (std::isnan(position))
        return std::numeric_limits<std::uint32_t>::max();
    std::uint32_t bits = 0;
    std::memcpy(&bits, &position, sizeof(bits));
    return (bits & SIGN) != 0 ? ~bits : bits | SIGN;
}

std::size_t digit(const PointLoad& load, std::size_t index)
{
    return (sortKey(load.position) >> (DIGIT_BITS * index)) % DIGIT_VALUES;
}

} // namespace

PointLoads pointLoads(const QList<ActiveLoad>& loads)
{
    PointLoads gathered;
    gathered.reserve(static_cast<std::size_t>(loads.size()));
    for (const ActiveLoad& load : loads)
        gathered.push_back({load.positionX, load.mass});
    return gathered;
}

bool isLeftOf(float a, float b)
{
    if (std::isnan(a))
        return false;
    return std::isnan(b) || a < b;
}

// Digit by digit of the key, the least one first: every load is moved once for each digit, however
// many loads there are, where comparing them would take more turns the more there are.
void sortByPosition(PointLoads& loads)
{
    std::array<std::array<std::uint32_t, DIGIT_VALUES>, DIGITS> places{};
    for (const PointLoad& load : loads) {
        for (std::size_t index = 0; index < DIGITS; ++index)
            ++places[index][digit(load, index)];
    }
    PointLoads sorted(loads.size());
    for (std::size_t index = 0; index < DIGITS; ++index) {
        std::uint32_t next = 0; // from how many loads there are of a value to where the first one goes
        for (std::uint32_t& place : places[index])
            next += std::exchange(place, next);
        for (const PointLoad& load : loads)
            sorted[places[index][digit(load, index)]++] = load;
        loads.swap(sorted);
    }
}
