#include "engine/ChainSupports.h"
#include "engine/Deflection.h"
#include "engine/OneSlack.h"
#include "support/BeamCases.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <vector>

using BeamCases::areNear;
using BeamCases::beamOf;
using ChainSupports::State;
using SecondOpinion::Layout;

namespace
{

/// So many by themselves; a slow tool looks for errors of memory, for which every layout is like another.
const int LAYOUTS = 5000 / Support::toolSlowness();

State solved(const TrussBeam& beam)
{
    std::size_t solves = ChainSupports::mostSolves(beam.supports.size());
    return ChainSupports::solve(beam, solves);
}

/// Whether `solves` are enough for `beam`, and how many are left then.
std::optional<std::size_t> left(const TrussBeam& beam, std::size_t solves)
{
    return ChainSupports::solve(beam, solves).converged ? std::optional(solves) : std::nullopt;
}

std::optional<State> slackAt(const TrussBeam& beam, const State& level, std::size_t slack)
{
    std::size_t solves = 100;
    return OneSlack::without(beam, level, slack, solves);
}

bool isUpTo(const std::vector<double>& values, double limit)
{
    return std::all_of(values.begin(), values.end(), [limit](double value) { return value <= limit; });
}

bool isFrom(const std::vector<double>& values, double limit)
{
    return std::all_of(values.begin(), values.end(), [limit](double value) { return value >= limit; });
}

/// The reactions by trying every subset of chains: those that pull, with the truss above the others' hooks.
/// Nothing where there are none.
std::optional<std::vector<double>> bySubsets(const TrussBeam& beam)
{
    const double width = beam.supports.back() - beam.supports.front();
    for (const std::vector<std::size_t>& carrying : BeamCases::subsets(beam.supports.size())) {
        const ContinuousBeam::Solution solution = ContinuousBeam::solve(carriedBy(beam, carrying));
        if (!isFrom(solution.reactions, -1e-10 * beam.weight))
            continue;
        const std::vector<double> sags = Deflection::line(beam, carrying, solution).sags;
        if (!isUpTo(sags, 1e-11 * beam.weight * std::pow(width, 3)))
            continue;
        std::vector<double> reactions(beam.supports.size(), 0.0);
        for (std::size_t j = 0; j < carrying.size(); ++j)
            reactions[carrying[j]] = solution.reactions[j];
        return reactions;
    }
    return std::nullopt;
}

double sumOf(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0);
}

double momentOf(const TrussBeam& beam, const std::vector<double>& reactions)
{
    return std::inner_product(reactions.begin(), reactions.end(), beam.supports.begin(), 0.0);
}

TrussBeam without(const Layout& layout, std::size_t slack)
{
    Layout fewer = layout;
    fewer.motors.erase(fewer.motors.begin() + static_cast<std::ptrdiff_t>(slack));
    return beamOf(fewer);
}

/// A truss that keeps the search busy: many motors at close, uneven distances, a few heavy loads.
TrussBeam crowded(int motors, std::uint32_t seed)
{
    Shows::Generator random(seed);
    const double length = motors * 0.5;
    std::vector<double> supports;
    for (int i = 0; i < motors; ++i)
        supports.push_back(0.5 * i + random.real(0.0, 0.4));
    std::vector<PointMass> loads;
    for (int i = 0; i < motors / 8 + 1; ++i)
        loads.push_back({random.real(0.0, length), random.real(10.0, 900.0)});
    return makeBeam(length, random.real(0.0, 2.0), supports, LoadRow(std::move(loads)));
}

} // namespace

class ChainSupportsTest : public QObject
{
    Q_OBJECT

private slots:
    void loadInOneSpan_leavesTheFarMotorSlack();
    void beamThatPushesNowhere_isTheTextbooks();
    void slackMotor_mayPullAgain();
    void centreAtAMotor_needsNoOther();
    void everyLayout_isTheOneSubsetThatHolds();
    void oneSlack_isTheOneSubsetThatHolds();
    void oneSlackThatTips_hasNoAnswer();
    void oneSlackOnTheEdge_isCarriedByTheOutermost_data();
    void oneSlackOnTheEdge_isCarriedByTheOutermost();
    void crowdedTruss_converges();
    void tooFewSolves_areTold();
    void rounding_letsNoneOfTwoGo();
};

// Two equal spans, P in the middle of one: pushing −3/32 at the far end, so that its chain is slack and the
// other two share.
void ChainSupportsTest::loadInOneSpan_leavesTheFarMotorSlack()
{
    const State state = solved(makeBeam(12.0, 0.0, {0.0, 6.0, 12.0}, LoadRow({{3.0, 320.0}})));
    QVERIFY(state.converged);
    QCOMPARE(state.carrying, (std::vector<std::size_t>{0, 1}));
    QVERIFY(areNear(state.reactions, {160.0, 160.0, 0.0}, 1e-10));
}

void ChainSupportsTest::beamThatPushesNowhere_isTheTextbooks()
{
    const State state = solved(makeBeam(12.0, 8.0, {0.0, 6.0, 12.0}, LoadRow()));
    QCOMPARE(state.carrying, (std::vector<std::size_t>{0, 1, 2}));
    QVERIFY(areNear(state.reactions, {18.0, 60.0, 18.0}, 1e-10));
    QCOMPARE(state.solution.reactions, state.reactions);
}

// Letting everything go that pushes in the textbook's beam would not do: in some layouts one of those pulls
// once the others are slack.
void ChainSupportsTest::slackMotor_mayPullAgain()
{
    Shows::Generator random(41);
    int found = 0;
    for (int i = 0; i < LAYOUTS / 5; ++i) {
        const TrussBeam beam = beamOf(BeamCases::sorted(random.nextHanging(8)));
        const std::vector<double> pushing = ContinuousBeam::solve(beam).reactions;
        const std::vector<double> level = solved(beam).reactions;
        for (std::size_t k = 0; k < level.size(); ++k)
            found += pushing[k] < -1e-3 * beam.weight && level[k] > 1e-3 * beam.weight ? 1 : 0;
    }
    QVERIFY2(found > LAYOUTS / 2500, qPrintable(QString::number(found)));
}

void ChainSupportsTest::centreAtAMotor_needsNoOther()
{
    const State state = solved(makeBeam(12.0, 0.0, {1.0, 4.0, 11.0}, LoadRow({{4.0, 250.0}})));
    QVERIFY(areNear(state.reactions, {0.0, 250.0, 0.0}, 1e-10));
}

void ChainSupportsTest::everyLayout_isTheOneSubsetThatHolds()
{
    Shows::Generator random(42);
    for (int i = 0; i < LAYOUTS; ++i) {
        const TrussBeam beam = beamOf(BeamCases::sorted(random.nextHanging(8)));
        const State state = solved(beam);
        const std::optional<std::vector<double>> expected = bySubsets(beam);
        QVERIFY(state.converged && expected.has_value());
        QVERIFY2(areNear(state.reactions, *expected, 1e-9 * beam.weight), qPrintable(QString::number(i)));
        QVERIFY(std::abs(sumOf(state.reactions) - beam.weight) <= 1e-12 * beam.weight);
        QVERIFY(std::abs(momentOf(beam, state.reactions) - beam.weight * beam.centre)
                <= 1e-12 * beam.weight * beam.supports.back());
    }
}

void ChainSupportsTest::oneSlack_isTheOneSubsetThatHolds()
{
    Shows::Generator random(43);
    for (int i = 0; i < LAYOUTS / 10; ++i) {
        const Layout layout = BeamCases::sorted(random.nextHanging(6));
        const TrussBeam beam = beamOf(layout);
        const State level = solved(beam);
        for (std::size_t slack = 0; slack < layout.motors.size(); ++slack) {
            const TrussBeam others = without(layout, slack);
            const std::optional<State> state = slackAt(beam, level, slack);
            const bool tips = beam.centre < others.supports.front() - OneSlack::EDGE
                              || beam.centre > others.supports.back() + OneSlack::EDGE;
            QCOMPARE(!state.has_value(), tips);
            if (tips || others.supports.size() < 2)
                continue;
            std::vector<double> expected = bySubsets(others).value();
            expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(slack), 0.0);
            QVERIFY(state->converged);
            QVERIFY2(areNear(state->reactions, expected, 1e-9 * beam.weight), qPrintable(QString::number(i)));
            QCOMPARE(state->carrying.size(), state->solution.reactions.size());
            for (std::size_t j = 0; j < state->carrying.size(); ++j)
                QCOMPARE(state->solution.reactions[j] + 1.0, state->reactions[state->carrying[j]] + 1.0);
        }
    }
}

void ChainSupportsTest::oneSlackThatTips_hasNoAnswer()
{
    const TrussBeam beam = makeBeam(12.0, 10.0, {1.0, 3.0, 9.0}, LoadRow());
    const State level = solved(beam);
    QVERIFY(slackAt(beam, level, 0).has_value());
    QVERIFY(slackAt(beam, level, 1).has_value());
    QVERIFY(!slackAt(beam, level, 2).has_value());
}

// Motors at 0, 5 and 10 m of a weightless truss, a load near the middle one: within a millimetre of it, the
// middle one carries it all, on whichever side it hangs.
void ChainSupportsTest::oneSlackOnTheEdge_isCarriedByTheOutermost_data()
{
    QTest::addColumn<double>("place");
    QTest::addColumn<bool>("tips");
    QTest::newRow("at it") << 5.0 << false;
    QTest::newRow("just outside") << 4.9991 << false;
    QTest::newRow("outside") << 4.9989 << true;
}

void ChainSupportsTest::oneSlackOnTheEdge_isCarriedByTheOutermost()
{
    QFETCH(double, place);
    QFETCH(bool, tips);
    for (const bool mirrored : {false, true}) {
        const TrussBeam beam =
            makeBeam(10.0, 0.0, {0.0, 5.0, 10.0}, LoadRow({{mirrored ? 10.0 - place : place, 100.0}}));
        const std::size_t slack = mirrored ? 2 : 0;
        // Not as solved: all are said to carry, so that the slack one counts.
        State level = solved(beam);
        level.carrying = {0, 1, 2};
        const std::optional<State> state = slackAt(beam, level, slack);
        QCOMPARE(!state.has_value(), tips);
        if (tips)
            continue;
        QCOMPARE(state->carrying, std::vector<std::size_t>{1});
        QCOMPARE(state->reactions, (std::vector<double>{0.0, 100.0, 0.0}));
    }
}

void ChainSupportsTest::crowdedTruss_converges()
{
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        const TrussBeam beam = crowded(60, seed);
        const double inside =
            std::min(beam.centre - beam.supports.front(), beam.supports.back() - beam.centre);
        if (inside < 0.01)
            continue;
        const State state = solved(beam);
        QVERIFY2(state.converged, qPrintable(QString::number(seed)));
        QVERIFY(isFrom(state.reactions, -1e-11 * beam.weight));
        const double width = beam.supports.back() - beam.supports.front();
        QVERIFY(isUpTo(Deflection::line(beam, state.carrying, state.solution).sags,
                       1e-12 * beam.weight * std::pow(width, 3)));
    }
}

void ChainSupportsTest::tooFewSolves_areTold()
{
    QCOMPARE(ChainSupports::mostSolves(8), std::size_t{100});
    const TrussBeam beam = makeBeam(12.0, 0.0, {0.0, 6.0, 12.0}, LoadRow({{3.0, 320.0}}));
    QVERIFY(!left(beam, 0));
    QCOMPARE(left(beam, 1).value(), std::size_t{0});
    QCOMPARE(left(beam, 10).value(), std::size_t{9});
    QVERIFY(!left(crowded(60, 3), 3));
}

// Two motors 5 cm apart on a truss of a million kilometres: the centre of gravity, at one of them, is known
// to a tenth of a micrometre only, which is more of the distance than the tolerance.
void ChainSupportsTest::rounding_letsNoneOfTwoGo()
{
    const double far = 1e9;
    const TrussBeam beam = makeBeam(2.0 * far, 0.0, {far - 0.05, far}, LoadRow({{far, 70.0}, {far, 30.1}}));
    State start;
    start.carrying = {0, 1};
    start.reactions = {0.0, beam.weight};
    TrussBeam beyond = beam;
    beyond.panels = makeBeam(2.0 * far, 0.0, {far - 0.05, far}, LoadRow({{far + 1e-6, 100.0}})).panels;
    std::size_t solves = 100;
    const State state = ChainSupports::solveFrom(beyond, start, solves);
    QVERIFY(state.converged);
    QCOMPARE(state.carrying.size(), std::size_t{2});
}

QTEST_GUILESS_MAIN(ChainSupportsTest)
#include "tst_chainsupports.moc"
