#include "engine/BeamDiagram.h"

#include "engine/Deflection.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace
{

using BeamDiagram::Extremes;
using BeamDiagram::Point;
using ContinuousBeam::Solution;
using Deflection::Section;

/// Even steps between the ends of the truss.
constexpr int STEPS = 120;

/// Places that differ by less are drawn as one [m].
constexpr double SAME_PLACE = 1e-9;

void noteShear(Extremes& extremes, double shear, double position)
{
    if (std::abs(shear) <= extremes.shear)
        return;
    extremes.shear = std::abs(shear);
    extremes.shearAt = position;
}

void noteMoment(Extremes& extremes, double moment, double position)
{
    if (moment > extremes.largestMoment) {
        extremes.largestMoment = moment;
        extremes.largestMomentAt = position;
    }
    if (moment < extremes.smallestMoment) {
        extremes.smallestMoment = moment;
        extremes.smallestMomentAt = position;
    }
}

/// A piece of the truss from a support, where `start` tells moment and shear, to the next one at `end`.
struct Span
{
    Section start;
    double from; ///< [m]
    double end;  ///< [m]
};

/// Notes the moment where the shear turns from positive to negative. It falls all along the span, so
/// that the first load behind which it is negative is found by a search.
void notePeak(Extremes& extremes, const Span& span, double w, const LoadRow& row)
{
    const std::size_t first = row.countUpTo(span.from);
    const auto begin = std::next(row.loads.begin(), static_cast<std::ptrdiff_t>(first));
    const auto end = std::next(row.loads.begin(), static_cast<std::ptrdiff_t>(row.countLeftOf(span.end)));
    const auto risesBehind = [&](const PointMass& load) {
        const auto next = static_cast<std::size_t>(&load - row.loads.data()) + 1;
        const double hanging = row.massBefore[next] - row.massBefore[first];
        return span.start.shear - hanging - w * (load.position - span.from) > 0.0;
    };
    const auto turning = std::partition_point(begin, end, risesBehind);

    const auto passed = static_cast<std::size_t>(turning - row.loads.begin());
    const double mass = row.massBefore[passed] - row.massBefore[first];
    const double moment = row.momentBefore[passed] - row.momentBefore[first];
    double x = turning < end ? turning->position : span.end;
    if (w > 0.0)
        x = std::min(x, span.from + (span.start.shear - mass) / w);
    const double d = x - span.from;
    noteMoment(extremes, span.start.moment + span.start.shear * d - w * d * d / 2.0 - (mass * x - moment), x);
}

struct Event
{
    double position; ///< [m]
    double jump;     ///< of the shear [kg]
    int support;     ///< its place in the list, -1 for none
};

/// What there is to draw, from left to right.
std::vector<Event> events(const TrussBeam& beam, double length, const Solution& solution, const LoadRow& row)
{
    std::vector<Event> events;
    events.reserve(row.loads.size() + beam.supports.size() + STEPS + 2);
    for (std::size_t j = 0; j < beam.supports.size(); ++j)
        events.push_back({beam.supports[j], solution.reactions[j], static_cast<int>(j)});
    for (const PointMass& load : row.loads)
        events.push_back({load.position, -load.mass, -1});
    for (int i = 0; i <= STEPS; ++i)
        events.push_back({length * i / STEPS, 0.0, -1});
    events.push_back({BeamDiagram::extremes(beam, solution, row).largestMomentAt, 0.0, -1});
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& a, const Event& b) { return a.position < b.position; });
    return events;
}

std::vector<std::size_t> allSupports(const TrussBeam& beam)
{
    std::vector<std::size_t> all(beam.supports.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

} // namespace

double BeamDiagram::Extremes::moment() const
{
    return std::max(largestMoment, -smallestMoment);
}

Extremes BeamDiagram::extremes(const TrussBeam& beam, const Solution& solution, const LoadRow& row)
{
    const double w = beam.weightPerMetre;
    Extremes extremes;
    double pulled = 0.0;
    for (std::size_t j = 0; j < beam.supports.size(); ++j) {
        const double x = beam.supports[j];
        noteShear(extremes, pulled - w * x - row.massBefore[row.countLeftOf(x)], x);
        pulled += solution.reactions[j];
        const double shear = pulled - w * x - row.massBefore[row.countUpTo(x)];
        noteShear(extremes, shear, x);
        noteMoment(extremes, solution.moments[j], x);
        if (j + 1 < beam.supports.size() && shear > 0.0)
            notePeak(extremes, {{solution.moments[j], shear, 0.0, 0.0}, x, beam.supports[j + 1]}, w, row);
    }
    return extremes;
}

std::vector<Point> BeamDiagram::points(const TrussBeam& beam, double length, const Solution& solution,
                                       const LoadRow& row)
{
    const Deflection::Line line = Deflection::line(beam, allSupports(beam), solution);
    const std::vector<Event> all = events(beam, length, solution, row);
    std::vector<Point> points;
    points.reserve(all.size() * 2);

    Section section = line.leftEnd;
    double position = 0.0;
    for (auto event = all.begin(); event != all.end();) {
        const double here = event->position;
        section = Deflection::advanced(section, here - position, {}, beam.weightPerMetre);
        position = here;
        points.push_back({here, section.moment, section.shear, section.sag});
        double jump = 0.0;
        for (; event != all.end() && event->position <= here + SAME_PLACE; ++event) {
            jump += event->jump;
            if (event->support >= 0) {
                // Known exactly here: what rounding added up since the last support goes.
                const auto j = static_cast<std::size_t>(event->support);
                section = {solution.moments[j], section.shear, line.slopes[j], 0.0};
            }
        }
        section.shear += jump;
        if (jump != 0.0)
            points.push_back({here, section.moment, section.shear, section.sag});
    }
    return points;
}
