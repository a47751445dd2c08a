#include "io/SheetStress.h"

#include <algorithm>
#include <cmath>

namespace
{

using SheetStress::Candidate;
using Kind = Candidate::Kind;

/// The limits of the program's own rating: below them there is no length [m] or CPL [kg], no span and no
/// overhang [m], and no reference of an overhang [kg·m].
constexpr double SMALLEST_RATED = 0.01;
constexpr double SHORTEST_SPAN = 0.05;
constexpr double SMALLEST_OVERHANG_REFERENCE = 1.0;

/// What single precision may take from a distance that was entered as the shortest span [m].
constexpr double ENTERED = 1e-6;

LoadRow rowOf(const SheetProject& project)
{
    std::vector<PointMass> masses;
    for (const SheetLoad& load : project.loads)
        masses.insert(masses.end(), load.masses.begin(), load.masses.end());
    return LoadRow(std::move(masses));
}

/// The span's moment at `x`, loads hanging strictly inside it: those left of `x` by their distance to the
/// left motor, the others by theirs to the right one.
double momentAt(const SheetProject& project, const LoadRow& row, const Candidate& span, double x)
{
    const double s = span.to - span.from;
    const std::size_t first = row.countUpTo(span.from);
    const std::size_t end = std::max(first, row.countLeftOf(span.to));
    const std::size_t here = std::clamp(row.countLeftOf(x), first, end);
    const auto mass = [&](std::size_t a, std::size_t b) { return row.massBefore[b] - row.massBefore[a]; };
    const auto moment = [&](std::size_t a, std::size_t b) {
        return row.momentBefore[b] - row.momentBefore[a];
    };
    const double fromLeft = moment(first, here) - span.from * mass(first, here);
    const double fromRight = span.to * mass(here, end) - moment(here, end);
    return project.selfWeight * (x - span.from) * (span.to - x) / 2.0
           + (fromLeft * (span.to - x) + fromRight * (x - span.from)) / s;
}

/// The place of the largest moment is a load's, or the middle.
void rateSpan(const SheetProject& project, const LoadRow& row, Candidate& span)
{
    span.place = (span.from + span.to) / 2.0;
    span.moment = std::max(0.0, momentAt(project, row, span, span.place));
    const std::size_t end = row.countLeftOf(span.to);
    for (std::size_t i = row.countUpTo(span.from); i < end; ++i) {
        const double moment = momentAt(project, row, span, row.loads[i].position);
        if (moment > span.moment) {
            span.moment = moment;
            span.place = row.loads[i].position;
        }
    }
}

void rateOverhang(const SheetProject& project, const LoadRow& row, Candidate& overhang)
{
    const bool isLeft = overhang.kind == Kind::LeftOverhang;
    const double e = overhang.to - overhang.from;
    overhang.place = isLeft ? overhang.to : overhang.from;
    overhang.moment = project.selfWeight * e * e / 2.0;
    for (const PointMass& load : row.loads) {
        const double distance = isLeft ? overhang.place - load.position : load.position - overhang.place;
        overhang.moment += std::max(0.0, distance) * load.mass;
    }
}

} // namespace

double Candidate::percent() const
{
    return 100.0 * moment / reference;
}

bool SheetStress::isRated(const SheetProject& project)
{
    return !project.motors.empty() && project.length > SMALLEST_RATED && project.limitCPL > SMALLEST_RATED;
}

std::vector<Candidate> SheetStress::candidates(const SheetProject& project)
{
    if (!isRated(project))
        return {};
    const std::vector<SheetMotor>& motors = project.motors;
    const double reference = project.length * project.limitCPL / 4.0;
    const double half = std::max(SMALLEST_OVERHANG_REFERENCE, reference / 2.0);
    const LoadRow row = rowOf(project);
    const double first = motors.front().position;
    const double last = motors.back().position;

    std::vector<Candidate> all;
    if (first > SHORTEST_SPAN + ENTERED)
        all.push_back({Kind::LeftOverhang, 0.0, first, 1, 0.0, 0.0, half});
    for (std::size_t i = 1; i < motors.size(); ++i) {
        if (motors[i].position - motors[i - 1].position >= SHORTEST_SPAN - ENTERED) {
            all.push_back({Kind::Span, motors[i - 1].position, motors[i].position, motors[i - 1].number, 0.0,
                           0.0, reference});
        }
    }
    if (project.length - last > SHORTEST_SPAN + ENTERED)
        all.push_back({Kind::RightOverhang, last, project.length, motors.back().number, 0.0, 0.0, half});
    for (Candidate& candidate : all) {
        if (candidate.kind == Kind::Span)
            rateSpan(project, row, candidate);
        else
            rateOverhang(project, row, candidate);
    }
    return all;
}
