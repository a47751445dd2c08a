#include "engine/Deflection.h"

namespace
{

using Deflection::Line;
using Deflection::Section;

/// Walks the span between the supports `from` and `to`, which carry, and leaves behind the sags of those
/// between them. The walk starts with the slope 0; the line is turned afterwards so that it ends at the
/// level. `start.slope` becomes the slope at `from`; returns the slope at `to`.
double bendSpan(const TrussBeam& beam, std::size_t from, std::size_t to, Section& start,
                std::vector<double>& sags)
{
    Section section = start;
    for (std::size_t k = from + 1; k <= to; ++k) {
        const BeamPanel& panel = beam.panels[k];
        section = Deflection::advanced(section, panel.length, panel.fromRight, beam.weightPerMetre);
        sags[k] = section.sag;
    }

    const double turn = -section.sag / (beam.supports[to] - beam.supports[from]);
    for (std::size_t k = from + 1; k < to; ++k)
        sags[k] += turn * (beam.supports[k] - beam.supports[from]);
    sags[to] = 0.0;
    start.slope = turn;
    return section.slope + turn;
}

/// The outermost support that carries, seen outwards: what hangs beyond pulls the moment back to 0.
Section outermost(const TrussBeam& carried, const BeamPanel& overhang, double moment, double slope)
{
    return {moment, weightOf(overhang, carried.weightPerMetre), slope, 0.0};
}

void bendRightOverhang(const TrussBeam& beam, std::size_t from, Section section, std::vector<double>& sags)
{
    for (std::size_t k = from + 1; k < beam.supports.size(); ++k) {
        const BeamPanel& panel = beam.panels[k];
        section = Deflection::advanced(section, panel.length, panel.fromRight, beam.weightPerMetre);
        sags[k] = section.sag;
    }
}

/// Returns the truss's left end, seen to the right.
Section bendLeftOverhang(const TrussBeam& beam, std::size_t from, Section section, std::vector<double>& sags)
{
    for (std::size_t k = from + 1; k-- > 0;) {
        sags[k] = section.sag;
        const BeamPanel& panel = beam.panels[k];
        section = Deflection::advanced(section, panel.length, panel.fromLeft, beam.weightPerMetre);
    }
    return {0.0, 0.0, -section.slope, section.sag};
}

} // namespace

Section Deflection::advanced(const Section& start, double length, const PowerSums& fromFarEnd,
                             double weightPerMetre)
{
    const double s = length;
    const double s2 = s * s;
    const double s3 = s2 * s;
    const double w = weightPerMetre;
    const double once = start.moment * s + start.shear * s2 / 2.0 - fromFarEnd[2] / 2.0 - w * s3 / 6.0;
    const double twice =
        start.moment * s2 / 2.0 + start.shear * s3 / 6.0 - fromFarEnd[3] / 6.0 - w * s3 * s / 24.0;
    return {start.moment + start.shear * s - fromFarEnd[1] - w * s2 / 2.0,
            start.shear - fromFarEnd[0] - w * s, start.slope - once, start.sag + start.slope * s - twice};
}

Line Deflection::line(const TrussBeam& beam, const std::vector<std::size_t>& carrying,
                      const ContinuousBeam::Solution& solution)
{
    const TrussBeam carried = carriedBy(beam, carrying);
    const std::vector<double>& moments = solution.moments;
    Line line{std::vector<double>(beam.supports.size(), 0.0), std::vector<double>(carrying.size(), 0.0), {}};

    for (std::size_t j = 1; j < carrying.size(); ++j) {
        const ContinuousBeam::EndForces forces =
            ContinuousBeam::endForces(carried.panels[j], beam.weightPerMetre, moments[j - 1], moments[j]);
        Section start{moments[j - 1], forces.onLeft, 0.0, 0.0};
        line.slopes[j] = bendSpan(beam, carrying[j - 1], carrying[j], start, line.sags);
        line.slopes[j - 1] = start.slope;
    }

    bendRightOverhang(beam, carrying.back(),
                      outermost(carried, carried.panels.back(), moments.back(), line.slopes.back()),
                      line.sags);
    line.leftEnd = bendLeftOverhang(
        beam, carrying.front(),
        outermost(carried, carried.panels.front(), moments.front(), -line.slopes.front()), line.sags);
    return line;
}
