#pragma once

#include "engine/ContinuousBeam.h"
#include "support/DenseBeam.h"
#include "support/Shows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// Beams of layouts, and how their figures are compared.
namespace BeamCases
{

template <typename Values>
bool areNear(const Values& a, const Values& b, double tolerance)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [tolerance](double x, double y) { return std::abs(x - y) <= tolerance; });
}

/// Left to right, as a beam counts its supports.
inline SecondOpinion::Layout sorted(SecondOpinion::Layout layout)
{
    std::sort(layout.motors.begin(), layout.motors.end(),
              [](const auto& a, const auto& b) { return a.position < b.position; });
    return layout;
}

inline TrussBeam beamOf(const SecondOpinion::Layout& layout)
{
    std::vector<double> supports;
    for (const SecondOpinion::Motor& motor : layout.motors)
        supports.push_back(motor.position);
    return makeBeam(layout.length, layout.selfWeight, supports, LoadRow(layout.loads));
}

/// Those of `layout`'s motors whose places in the list are in `motors`.
inline SecondOpinion::Layout onlyWith(const SecondOpinion::Layout& layout,
                                      const std::vector<std::size_t>& motors)
{
    SecondOpinion::Layout fewer = layout;
    fewer.motors.clear();
    for (const std::size_t k : motors)
        fewer.motors.push_back(layout.motors[k]);
    return fewer;
}

/// Every list of two or more of `count` motors.
inline std::vector<std::vector<std::size_t>> subsets(std::size_t count)
{
    std::vector<std::vector<std::size_t>> result;
    for (std::size_t bits = 0; bits < std::size_t{1} << count; ++bits) {
        std::vector<std::size_t> some;
        for (std::size_t k = 0; k < count; ++k) {
            if ((bits >> k) % 2 == 1)
                some.push_back(k);
        }
        if (some.size() > 1)
            result.push_back(some);
    }
    return result;
}

} // namespace BeamCases
