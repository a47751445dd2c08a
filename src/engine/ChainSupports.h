#pragma once

#include "engine/ContinuousBeam.h"

#include <cstddef>
#include <vector>

/// The truss on level motors whose chains only pull: for each motor R ≥ 0, gap ≥ 0 and R·gap = 0, the
/// gap being how far the truss is above the level of the hooks. EI drops out: the conditions are
/// homogeneous in v·EI.
///
/// Method: where the beam whose supports may push has no negative reaction, that is the answer.
/// Otherwise the active-set method of Lawson and Hanson (Solving Least Squares Problems, 1974) on
/// the complementary energy: it starts from the two neighbours of the centre of gravity, takes in the
/// motor below which the truss hangs deepest, solves, steps back to the first reaction that turns
/// negative and lets that motor go. The energy falls at each step. Letting all negative reactions go
/// at once is wrong: a motor that was let go may have to pull again.
namespace ChainSupports
{

/// Reactions down to this part of the whole weight are none: rounding.
constexpr double FORCE_TOLERANCE = 1e-11;

/// EI times a sag is none up to this part of the whole weight times the third power of the distance
/// between the outermost motors: rounding.
constexpr double GAP_TOLERANCE = 1e-12;

/// What carries the truss.
struct State
{
    bool converged = true;             ///< false: no answer was found, and the rest says nothing
    std::vector<std::size_t> carrying; ///< the motors whose chains pull, rising
    std::vector<double> reactions;     ///< of all motors, 0 for those that do not carry [kg]
    ContinuousBeam::Solution solution; ///< the truss on those that carry alone
};

/// The most beams that are solved before a search is given up, for `motors` motors.
constexpr std::size_t mostSolves(std::size_t motors)
{
    return 20 + 10 * motors;
}

/// What carries `beam`, whose centre of gravity lies between its outermost supports. Gives up when it has
/// solved as many beams as `solves` says, from which it takes what it has used.
State solve(const TrussBeam& beam, std::size_t& solves);

/// The same, from a start that is in balance and does not push: its `carrying` (two at least) and their
/// `reactions`.
State solveFrom(const TrussBeam& beam, State start, std::size_t& solves);

} // namespace ChainSupports
