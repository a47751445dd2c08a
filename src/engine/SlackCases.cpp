#include "engine/SlackCases.h"

#include "engine/MotorOpinions.h"
#include "engine/OneSlack.h"

#include <algorithm>

namespace
{

using ChainSupports::FORCE_TOLERANCE;
using HangingPoints::Point;
using HangingPoints::Show;
using SecondOpinion::Opinion;
using Carried = ChainSupports::State;

/// What everybody but the motor `slack` carries in `carried`, in which that one hangs slack.
void noteCase(const Show& show, const Carried& carried, std::size_t slack, Opinion& opinion)
{
    for (std::size_t k = 0; k < show.points.size(); ++k) {
        const double load = carried.reactions[k] * show.share(k);
        for (const std::size_t i : show.points[k].motors) {
            if (i != slack)
                MotorOpinions::noteOneSlack(opinion.motors[i], load, slack, show.beam.weight);
        }
    }
}

/// The cases of one slack motor: keeps the one that bends the truss most.
struct WorstCase
{
    std::optional<Carried> carried;
    double moment = 0.0; ///< [kg·m]
    std::size_t slack = 0;

    void note(const Carried& candidate, double candidateMoment, std::size_t motor)
    {
        if (carried && candidateMoment <= moment * (1.0 + FORCE_TOLERANCE))
            return;
        carried = candidate;
        moment = candidateMoment;
        slack = motor;
    }
};

/// The case of one slack motor, which may take so many beams, but no more than are left for all cases.
std::optional<Carried> without(const Show& show, const Carried& level, std::size_t point, std::size_t& left)
{
    const std::size_t allowed = std::min(ChainSupports::mostSolves(show.points.size()), left);
    std::size_t solves = allowed;
    std::optional<Carried> carried = OneSlack::without(show.beam, level, point, solves);
    left -= allowed - solves;
    return carried;
}

/// A motor with a point of its own hangs slack. False where no solution was found.
bool tellSlack(const Show& show, const Carried& level, std::size_t point, std::size_t& solvesLeft,
               WorstCase& worst, Opinion& opinion)
{
    const std::size_t slack = show.points[point].motors.front();
    const std::optional<Carried> carried = without(show, level, point, solvesLeft);
    opinion.motors[slack].isIndispensable = !carried.has_value();
    if (!carried)
        return true;
    if (!carried->converged)
        return false;
    noteCase(show, *carried, slack, opinion);
    const TrussBeam beam = carriedBy(show.beam, carried->carrying);
    const double moment = BeamDiagram::extremes(beam, carried->solution, show.row).moment();
    opinion.motors[slack].momentIfSlack = moment;
    worst.note(*carried, moment, slack);
    return true;
}

/// One of several motors that share a point hangs slack: the truss notices nothing.
void tellSlackWithin(const Show& show, const Carried& level, std::size_t point, WorstCase& worst,
                     Opinion& opinion)
{
    const std::vector<std::size_t>& motors = show.points[point].motors;
    const double moment = opinion.level->extremes.moment();
    SlackCases::tellWithin(show, show.points[point], level.reactions[point], opinion);
    noteCase(show, level, motors.front(), opinion);
    for (const std::size_t i : motors)
        opinion.motors[i].momentIfSlack = moment;
    worst.note(level, moment, motors.front());
}

} // namespace

bool SlackCases::tell(const Show& show, const Carried& level, std::size_t solves, Opinion& opinion)
{
    WorstCase worst;
    for (std::size_t k = 0; k < show.points.size(); ++k) {
        if (solves == 0)
            return false;
        --solves; // what a case takes besides its beams
        if (show.points[k].motors.size() > 1)
            tellSlackWithin(show, level, k, worst, opinion);
        else if (!tellSlack(show, level, k, solves, worst, opinion))
            return false;
    }
    if (worst.carried) {
        opinion.oneSlack = bendingOf(show, *worst.carried);
        opinion.oneSlackOf = worst.slack;
    }
    return true;
}

void SlackCases::tellWithin(const Show& show, const Point& point, double load, Opinion& opinion)
{
    for (const std::size_t i : point.motors) {
        const std::size_t other = i == point.motors.front() ? point.motors[1] : point.motors.front();
        const double shared = load / static_cast<double>(point.motors.size() - 1);
        MotorOpinions::noteOneSlack(opinion.motors[i], shared, other, show.beam.weight);
        opinion.motors[i].isIndispensable = false;
    }
}

SecondOpinion::Bending SlackCases::bendingOf(const Show& show, const Carried& carried)
{
    const TrussBeam beam = carriedBy(show.beam, carried.carrying);
    return {BeamDiagram::extremes(beam, carried.solution, show.row),
            BeamDiagram::points(beam, show.layout.length, carried.solution, show.row)};
}
