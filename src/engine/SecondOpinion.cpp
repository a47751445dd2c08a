#include "engine/SecondOpinion.h"

#include "engine/AnyLevelling.h"
#include "engine/HangingPoints.h"
#include "engine/LevellingSensitivity.h"
#include "engine/MotorOpinions.h"
#include "engine/OneSlack.h"
#include "engine/SlackCases.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

using ChainSupports::FORCE_TOLERANCE;
using HangingPoints::Point;
using HangingPoints::Show;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::State;
using Carried = ChainSupports::State;

/// How many times the smallest distance of two points the truss may be long: double precision knows
/// the centre of gravity to about 1e-16 of the length, and that over the distance has to stay below the
/// figures' own precision.
constexpr double LONGEST = 1e5;

/// Today's stress rates no truss whose limit [kg] or length [m] is not above this.
constexpr double NO_LIMIT = 0.01;

constexpr double MILLIMETRES_PER_METRE = 1000.0;

void tellOneMotor(const Show& show, Opinion& opinion)
{
    const Point& point = show.points.front();
    const double weight = show.beam.weight;
    const double load = weight * show.share(0);
    const bool isAlone = point.motors.size() == 1;
    for (const std::size_t i : point.motors) {
        MotorOpinions::setLevel(opinion.motors[i], load, load, false);
        MotorOpinions::setRange(opinion.motors[i], weight, isAlone ? weight : 0.0);
        opinion.motors[i].isIndispensable = true;
    }
    if (!isAlone)
        SlackCases::tellWithin(show, point, weight, opinion);
}

void tellRanges(const Show& show, Opinion& opinion)
{
    const std::vector<AnyLevelling::Range> ranges = AnyLevelling::ranges(show.beam);
    for (std::size_t k = 0; k < ranges.size(); ++k) {
        const bool isAlone = show.points[k].motors.size() == 1;
        for (const std::size_t i : show.points[k].motors)
            MotorOpinions::setRange(opinion.motors[i], ranges[k].most, isAlone ? ranges[k].least : 0.0);
    }
}

void tellLevel(const Show& show, const Carried& level, Opinion& opinion)
{
    const ContinuousBeam::Solution pushing = ContinuousBeam::solve(show.beam);
    for (std::size_t k = 0; k < show.points.size(); ++k) {
        const double share = show.share(k);
        const bool isSlack = level.reactions[k] <= FORCE_TOLERANCE * show.beam.weight;
        for (const std::size_t i : show.points[k].motors) {
            MotorOpinions::setLevel(opinion.motors[i], level.reactions[k] * share,
                                    pushing.reactions[k] * share, isSlack);
        }
    }
    opinion.level = SlackCases::bendingOf(show, level);
}

/// Only for motors that carry on a point of their own, where three points or more carry.
void tellSensitivity(const Show& show, const Carried& level, Opinion& opinion)
{
    const std::optional<double> stiffness = LevellingSensitivity::stiffness(
        show.layout.limitCPL, show.layout.length, show.layout.tableDeflection.value_or(0.0));
    if (!stiffness || level.carrying.size() < 3)
        return;
    const std::vector<double> perMetre =
        LevellingSensitivity::perMetreRaised(carriedBy(show.beam, level.carrying));
    for (std::size_t j = 0; j < perMetre.size(); ++j) {
        const std::vector<std::size_t>& motors = show.points[level.carrying[j]].motors;
        MotorOpinion& told = opinion.motors[motors.front()];
        const double perMillimetre = *stiffness * perMetre[j] / MILLIMETRES_PER_METRE;
        const double slackBelow = level.reactions[level.carrying[j]] / perMillimetre;
        const bool isAlone = motors.size() == 1 && told.isSlack == false;
        if (isAlone && std::isfinite(perMillimetre) && std::isfinite(slackBelow))
            told.levelling = {perMillimetre, slackBelow};
    }
}

bool isTooLong(const Show& show)
{
    const std::vector<double>& x = show.beam.supports;
    for (std::size_t k = 1; k < x.size(); ++k) {
        if (show.layout.length > LONGEST * (x[k] - x[k - 1]))
            return true;
    }
    return false;
}

/// Everything that has to be solved, in no more than `solves` beams. False where a solution was not found.
bool tellSolved(const Show& show, std::size_t solves, Opinion& opinion)
{
    if (isTooLong(show))
        return false;
    const std::size_t allowed = std::min(ChainSupports::mostSolves(show.points.size()), solves);
    std::size_t left = allowed;
    const Carried level = ChainSupports::solve(show.beam, left);
    if (!level.converged)
        return false;
    tellRanges(show, opinion);
    tellLevel(show, level, opinion);
    if (!SlackCases::tell(show, level, solves - (allowed - left), opinion))
        return false;
    tellSensitivity(show, level, opinion);
    return true;
}

/// Whether the centre of gravity lies between the points, further than the edge from either end.
bool isBetween(const Show& show)
{
    return show.beam.centre > show.points.front().position + OneSlack::EDGE
           && show.beam.centre < show.points.back().position - OneSlack::EDGE;
}

void tellCarried(const Show& show, std::size_t mostWork, Opinion& opinion)
{
    Opinion solved = opinion;
    solved.state = State::Level;
    opinion.state = State::NotConverged;
    if (tellSolved(show, mostWork / show.layout.motors.size(), solved))
        opinion = std::move(solved);
}

void tellBalance(const Show& show, std::size_t mostWork, Opinion& opinion)
{
    const double centre = show.beam.centre;
    opinion.weight = show.beam.weight;
    opinion.state = State::NoLoad;
    if (!(show.beam.weight > 0.0))
        return;
    opinion.centre = centre;
    if (show.points.size() == 1) {
        opinion.state = State::OneMotor;
        tellOneMotor(show, opinion);
        return;
    }
    const double margin = std::min(centre - show.points.front().first, show.points.back().last - centre);
    opinion.tippingMargin = margin;
    opinion.state = margin < -OneSlack::EDGE ? State::Tips : State::OnEdge;
    if (isBetween(show))
        tellCarried(show, mostWork, opinion);
}

} // namespace

SecondOpinion::Opinion SecondOpinion::of(const Layout& layout, std::size_t mostWork)
{
    Opinion opinion;
    opinion.length = layout.length;
    opinion.limitCPL = layout.limitCPL;
    for (const Motor& motor : layout.motors)
        opinion.motors.push_back(MotorOpinions::asked(motor));
    if (layout.motors.empty())
        return opinion;

    opinion.state = State::NotCalculable;
    opinion.problem = HangingPoints::problemOf(layout);
    if (opinion.problem == Problem::None)
        tellBalance(Show(layout), mostWork, opinion);
    return opinion;
}

std::optional<double> SecondOpinion::Opinion::percent(double moment) const
{
    if (!(limitCPL > NO_LIMIT) || !(length > NO_LIMIT))
        return std::nullopt;
    const double result = moment / (length * limitCPL / 4.0) * 100.0;
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

bool SecondOpinion::Opinion::contradicts() const
{
    const auto isPassedButExceeds = [](const MotorOpinion& told) {
        return told.leverVerdict == Verdict::Fits
               && told.levelVerdict.value_or(Verdict::Fits) != Verdict::Fits;
    };
    switch (state) {
    case State::NotCalculable:
    case State::Tips:
    case State::OnEdge:
    case State::NotConverged:
        return true;
    case State::NoMotors:
    case State::NoLoad:
    case State::OneMotor:
    case State::Level:
        break;
    }
    return std::any_of(motors.begin(), motors.end(), isPassedButExceeds);
}

bool SecondOpinion::Opinion::fitsAnyLevelling() const
{
    const auto fits = [](const MotorOpinion& told) { return told.mostVerdict == Verdict::Fits; };
    return !motors.empty() && std::all_of(motors.begin(), motors.end(), fits);
}
