#include "engine/ContinuousBeam.h"

#include <algorithm>

namespace
{

/// The moment at a support beyond which an overhang of `length` [m] is free: −Σ P·d − w·a²/2.
double overhangMoment(const PowerSums& fromSupport, double length, double weightPerMetre)
{
    return -fromSupport[1] - weightPerMetre * length * length / 2.0;
}

/// Σ P·d·(s² − d²)/s + w·s³/4: how a span's load turns the end that `sums` are NOT measured from.
double loadTerm(const PowerSums& sums, double s, double weightPerMetre)
{
    return (s * s * sums[1] - sums[3]) / s + weightPerMetre * s * s * s / 4.0;
}

/// 6EI·[(vⱼ−vⱼ₋₁)/s₁ − (vⱼ₊₁−vⱼ)/s₂], `settlements` being EI·v.
double settlementTerm(const std::vector<double>& settlements, std::size_t j, double s1, double s2)
{
    if (settlements.empty())
        return 0.0;
    return 6.0 * ((settlements[j] - settlements[j - 1]) / s1 - (settlements[j + 1] - settlements[j]) / s2);
}

/// Thomas' elimination over the inner supports; the moments at the outermost ones are known.
void solveThreeMoments(const TrussBeam& beam, const std::vector<double>& settlements,
                       std::vector<double>& moments)
{
    const std::size_t last = moments.size() - 1;
    std::vector<double> upper(last, 0.0); // Mⱼ = moments[j] − upper[j]·Mⱼ₊₁ on the way back
    for (std::size_t j = 1; j < last; ++j) {
        const BeamPanel& left = beam.panels[j];
        const BeamPanel& right = beam.panels[j + 1];
        const double s1 = left.length;
        const double s2 = right.length;
        const double known = settlementTerm(settlements, j, s1, s2)
                             - loadTerm(left.fromLeft, s1, beam.weightPerMetre)
                             - loadTerm(right.fromRight, s2, beam.weightPerMetre);
        const double pivot = 2.0 * (s1 + s2) - s1 * upper[j - 1];
        upper[j] = s2 / pivot;
        moments[j] = (known - s1 * moments[j - 1]) / pivot;
    }
    for (std::size_t j = last; j-- > 1;)
        moments[j] -= upper[j] * moments[j + 1];
}

std::vector<double> reactionsOf(const TrussBeam& beam, const std::vector<double>& moments)
{
    const double w = beam.weightPerMetre;
    std::vector<double> reactions(moments.size(), 0.0);
    reactions.front() += weightOf(beam.panels.front(), w);
    for (std::size_t j = 1; j < moments.size(); ++j) {
        const ContinuousBeam::EndForces forces =
            ContinuousBeam::endForces(beam.panels[j], w, moments[j - 1], moments[j]);
        reactions[j - 1] += forces.onLeft;
        reactions[j] += forces.onRight;
    }
    reactions.back() += weightOf(beam.panels.back(), w);
    return reactions;
}

} // namespace

ContinuousBeam::EndForces ContinuousBeam::endForces(const BeamPanel& span, double weightPerMetre,
                                                    double leftMoment, double rightMoment)
{
    const double s = span.length;
    const double turn = (rightMoment - leftMoment) / s;
    const double half = weightPerMetre * s / 2.0;
    return {half + span.fromRight[1] / s + turn, half + span.fromLeft[1] / s - turn};
}

ContinuousBeam::Solution ContinuousBeam::solve(const TrussBeam& beam, const std::vector<double>& settlements)
{
    const BeamPanel& left = beam.panels.front();
    const BeamPanel& right = beam.panels.back();
    const double atFirst = overhangMoment(left.fromRight, left.length, beam.weightPerMetre);
    const double atLast = overhangMoment(right.fromLeft, right.length, beam.weightPerMetre);

    Solution solution;
    solution.moments.resize(beam.supports.size());
    if (beam.supports.size() == 1) {
        solution.moments.front() = std::min(atFirst, atLast);
    } else {
        solution.moments.front() = atFirst;
        solution.moments.back() = atLast;
        solveThreeMoments(beam, settlements, solution.moments);
    }
    solution.reactions = reactionsOf(beam, solution.moments);
    return solution;
}
