#include "engine/LevellingSensitivity.h"

#include <cmath>

namespace
{

constexpr double MILLIMETRES_PER_METRE = 1000.0;

} // namespace

std::optional<double> LevellingSensitivity::stiffness(double limitCPL, double length, double deflection)
{
    const double metres = deflection / MILLIMETRES_PER_METRE;
    const double result = limitCPL * length * length * length / (48.0 * metres);
    if (!(deflection > 0.0) || !(result > 0.0) || !std::isfinite(result))
        return std::nullopt;
    return result;
}

std::vector<double> LevellingSensitivity::perMetreRaised(const TrussBeam& beam)
{
    TrussBeam unloaded{0.0, 0.0, 0.0, beam.supports, {}};
    for (const BeamPanel& panel : beam.panels)
        unloaded.panels.push_back({panel.length, {}, {}});

    std::vector<double> result;
    std::vector<double> settlements(beam.supports.size(), 0.0);
    for (std::size_t k = 0; k < settlements.size(); ++k) {
        settlements[k] = -1.0;
        result.push_back(ContinuousBeam::solve(unloaded, settlements).reactions[k]);
        settlements[k] = 0.0;
    }
    return result;
}
