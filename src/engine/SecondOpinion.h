#pragma once

#include "engine/BeamDiagram.h"
#include "engine/Limits.h"
#include "engine/TrussBeam.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

/// The second opinion on a project: what its motors carry if the truss is one continuous beam, beside
/// today's figures, in which each span shares its loads between its two motors by the lever.
///
/// Positions are metres from the truss's LEFT end, masses and forces kilograms, positive downwards
/// on the truss and upwards in a chain; moments kg·m, positive where the truss sags. Double precision.
/// Nothing here is ever written into today's figures.
///
/// Sources: Clapeyron's three moments; Hicks, Civil Engineering Formulas, table 2.1; Lawson and Hanson,
/// Solving Least Squares Problems (1974); EN 1993-1-1; DGUV Vorschrift 54 § 26 (3): where several
/// hoists carry one load, none may be overloaded even under the least favourable distribution.
/// The shear's part in the bending is left out: for box trusses and spans of 3 m and more that is about
/// 1 %; motors nearer than `CLOSE_SPAN` share among them what cannot be told.
namespace SecondOpinion
{

/// Motors nearer than this [m] are one hanging point, which they share equally. A chain of motors, each
/// nearer than this to the next, is one too.
constexpr double ONE_POINT = 0.05;

/// Below this distance of two hanging points [m] only their sum and their most can be relied on.
constexpr double CLOSE_SPAN = 1.0;

/// How far outside the truss a motor or a load may lie [m] and is still taken to its end.
constexpr double OUTSIDE = 0.001;

/// So much work takes about a second, see `of`.
constexpr std::size_t MOST_WORK = 20'000'000;

// ---- what goes in ----

struct Motor
{
    QString title;           ///< what the user calls it; unchanged in all texts
    double position = 0.0;   ///< [m]
    double capacity = 0.0;   ///< working load limit [kg]
    double selfWeight = 0.0; ///< the hoist's own [kg]
    double lever = 0.0;      ///< today's figure: what hangs on it [kg]; may be not-a-number
};

struct Layout
{
    double length = 0.0;                   ///< [m]
    double selfWeight = 0.0;               ///< of the truss [kg/m]
    double limitCPL = 0.0;                 ///< maximum central point load [kg]; 0.01 or less for none
    std::vector<Motor> motors;             ///< in any order
    std::vector<PointMass> loads;          ///< in any order
    std::optional<double> tableDeflection; ///< of the truss under the CPL, by its maker [mm]
};

// ---- what comes out ----

/// What can be told. All states but `Level` are decided before anything is solved, or when a solve did
/// not come to an end.
enum class State
{
    NoMotors,      ///< there is none
    NotCalculable, ///< a number that nothing can be computed from: see `Problem`
    NoLoad,        ///< everything weighs nothing
    OneMotor,      ///< one hanging point: it carries everything, and the truss hangs tilted
    Tips,          ///< the centre of gravity lies more than 1 mm outside the outermost motors
    OnEdge,        ///< it lies within 1 mm of an outermost one
    NotConverged,  ///< no solution was found: too much work, or rounding would show in it
    Level,         ///< every figure is there
};

/// Why nothing can be calculated.
enum class Problem
{
    None,
    NotFinite, ///< a number that is infinite or none
    Negative,  ///< a length, mass or weight below 0
    Outside,   ///< a motor or load further than `OUTSIDE` from the truss
    Overflow,  ///< sums beyond all numbers
};

/// As for today's figures: `StaticOverload`, `DynamicOverload` or `Fits`.
using Verdict = Limits::MotorVerdict;

/// The program's own tests of a motor, in single precision as it makes them, so that a figure which
/// is the same but for rounding gets the same verdict. `atPoint` [kg] hangs on the motor.
Verdict motorVerdict(double atPoint, double selfWeight, double capacity);

/// How a motor's load follows its own height, round the level.
struct Levelling
{
    double perMillimetre; ///< what it takes on for each millimetre that it alone is raised [kg/mm]
    double slackBelow;    ///< how far it alone can be lowered before it hangs slack [mm]
};

/// What is told of one motor. What has no value in a state is empty; no number is ever infinite or none.
struct MotorOpinion
{
    Motor motor;                          ///< as it went in
    Verdict leverVerdict = Verdict::Fits; ///< of today's figure

    std::optional<double> lever;           ///< today's figure, where it is a number [kg]
    std::optional<double> level;           ///< on level motors whose chains only pull, never below 0 [kg]
    std::optional<double> pushing;         ///< the textbook's beam; negative where it would push [kg]
    std::optional<double> oneSlack;        ///< the most while one other motor hangs slack [kg]
    std::optional<std::size_t> oneSlackOf; ///< which one that is: its place in the list, from 0
    std::optional<double> most;            ///< over every levelling, stiffness and load path [kg]
    std::optional<double> least;           ///< the same [kg]
    std::optional<double> momentIfSlack;   ///< largest |moment| of the truss while this one is slack [kg·m]
    std::optional<bool> isSlack;           ///< carries nothing although all are level
    std::optional<bool> isIndispensable;   ///< without it the truss tips
    std::optional<Verdict> levelVerdict;
    std::optional<Verdict> oneSlackVerdict;
    std::optional<Verdict> mostVerdict;
    std::optional<Levelling> levelling; ///< only with a table deflection, where three or more carry
};

/// The truss of one case: all level, or one motor slack.
struct Bending
{
    BeamDiagram::Extremes extremes;
    std::vector<BeamDiagram::Point> points; ///< from end to end, to be drawn
};

struct Opinion
{
    State state = State::NoMotors;
    Problem problem = Problem::None;
    double length = 0.0;                 ///< of the truss, as it went in [m]
    double limitCPL = 0.0;               ///< as it went in [kg]
    std::vector<MotorOpinion> motors;    ///< in the order in which they went in
    std::optional<double> weight;        ///< of truss and loads [kg]
    std::optional<double> centre;        ///< centre of gravity [m]
    std::optional<double> tippingMargin; ///< how far inside the outermost motors it is; negative: outside [m]
    std::optional<Bending> level;        ///< all motors level
    std::optional<Bending> oneSlack;     ///< the case of one slack motor with the largest |moment|
    std::optional<std::size_t> oneSlackOf; ///< which motor is slack there: its place in the list, from 0

    /// `moment` [kg·m] in % of L·CPL/4, as today's stress is shown; nothing where there is no such limit.
    [[nodiscard]] std::optional<double> percent(double moment) const;
    /// True where today's figures are on the unsafe side: the truss tips or is on the edge, a motor that
    /// they pass exceeds its capacity at level, or nothing could be calculated.
    [[nodiscard]] bool contradicts() const;
    /// True where every motor's most passes: then no levelling overloads any.
    [[nodiscard]] bool fitsAnyLevelling() const;
};

/// The second opinion on `layout`. Every input has an answer. Takes O(loads · log loads) for the loads,
/// and for n motors O(n²) in the usual show. `mostWork` bounds it, in motors times beams solved and cases
/// told; where more would be needed (thousands of motors), the state is `NotConverged`.
Opinion of(const Layout& layout, std::size_t mostWork = MOST_WORK);

} // namespace SecondOpinion
