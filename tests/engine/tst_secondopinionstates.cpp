#include "engine/SecondOpinion.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

using SecondOpinion::Layout;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::Problem;
using SecondOpinion::State;

namespace
{

bool isNear(const std::optional<double>& figure, double expected, double tolerance = 1e-9)
{
    return figure && std::abs(*figure - expected) <= tolerance;
}

/// Nothing is told of the motors but today's figure.
bool tellsNothingSolved(const Opinion& opinion)
{
    for (const MotorOpinion& told : opinion.motors) {
        if (told.level || told.pushing || told.oneSlack || told.oneSlackOf || told.most || told.least
            || told.momentIfSlack || told.isSlack || told.isIndispensable || told.levelVerdict
            || told.oneSlackVerdict || told.mostVerdict || told.levelling)
            return false;
    }
    return !opinion.level && !opinion.oneSlack && !opinion.oneSlackOf;
}

bool isFiniteOrEmpty(const std::optional<double>& figure)
{
    return std::isfinite(figure.value_or(0.0));
}

bool isFinite(const std::optional<SecondOpinion::Bending>& bending)
{
    if (!bending)
        return true;
    const BeamDiagram::Extremes& extremes = bending->extremes;
    bool finite = std::isfinite(extremes.largestMoment) && std::isfinite(extremes.smallestMoment)
                  && std::isfinite(extremes.shear);
    for (const BeamDiagram::Point& point : bending->points)
        finite =
            finite && std::isfinite(point.moment) && std::isfinite(point.shear) && std::isfinite(point.sag);
    return finite;
}

bool areAllFinite(const Opinion& opinion)
{
    bool finite = isFiniteOrEmpty(opinion.weight) && isFiniteOrEmpty(opinion.centre)
                  && isFiniteOrEmpty(opinion.tippingMargin) && isFinite(opinion.level)
                  && isFinite(opinion.oneSlack);
    for (const MotorOpinion& told : opinion.motors) {
        for (const auto figure :
             {&MotorOpinion::lever, &MotorOpinion::level, &MotorOpinion::pushing, &MotorOpinion::oneSlack,
              &MotorOpinion::most, &MotorOpinion::least, &MotorOpinion::momentIfSlack})
            finite = finite && isFiniteOrEmpty(told.*figure);
        finite = finite
                 && (!told.levelling
                     || (std::isfinite(told.levelling->perMillimetre)
                         && std::isfinite(told.levelling->slackBelow)));
    }
    return finite;
}

Layout usual()
{
    return Shows::show(12.0, 8.4, {1.0, 6.0, 11.0}, {{3.0, 100.0}, {8.0, 200.0}});
}

/// Numbers of any size that a file may hold, now and then none at all.
double wildNumber(Shows::Generator& random)
{
    switch (random.integer(0, 19)) {
    case 0:
        return std::nan("");
    case 1:
        return std::numeric_limits<double>::infinity();
    case 2:
        return -random.real(0.0, 2.0);
    case 3:
    case 4:
        return 0.0;
    default:
        return std::pow(10.0, random.real(-40.0, 40.0));
    }
}

} // namespace

class SecondOpinionStatesTest : public QObject
{
    Q_OBJECT

private slots:
    void noMotors_leaveNothingToTell();
    void noLoad_leavesNothingToTell();
    void oneMotor_carriesEverything();
    void twoMotorsAtOnePlace_carryEverything();
    void centreOfGravity_decidesBetweenTheStates_data();
    void centreOfGravity_decidesBetweenTheStates();
    void centreAMillimetreInside_isOnTheEdge();
    void centreBetweenTheMotorsOfOnePoint_isOnTheEdge();
    void tippingTruss_tellsNothingSolved();
    void numbersThatCannotBe_areTold_data();
    void numbersThatCannotBe_areTold();
    void lessThanAMillimetreOutside_isTakenToTheEnd();
    void leverThatIsNoNumber_isLeftOut();
    void truss_withoutLimitHasNoPercent();
    void usedUpWork_isNotConverged();
    void closeMotorsOnAnEndlessTruss_areNotConverged();
    void thousandsOfMotors_areToldInTime();
    void motorsAllOverTheTruss_areOnePoint();
    void trussWithoutLength_hangsFromOnePoint();
    void wildNumbers_giveDefinedFigures();
};

void SecondOpinionStatesTest::noMotors_leaveNothingToTell()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 8.4, {}, {{6.0, 100.0}}));
    QCOMPARE(opinion.state, State::NoMotors);
    QVERIFY(!opinion.weight && !opinion.centre && !opinion.tippingMargin);
    QVERIFY(tellsNothingSolved(opinion));
    QVERIFY(!opinion.contradicts());
}

void SecondOpinionStatesTest::noLoad_leavesNothingToTell()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 0.0, {0.0, 12.0}, {{6.0, 0.0}}));
    QCOMPARE(opinion.state, State::NoLoad);
    QCOMPARE(opinion.weight.value(), 0.0);
    QVERIFY(!opinion.centre && !opinion.tippingMargin);
    QVERIFY(tellsNothingSolved(opinion));
    QVERIFY(!opinion.contradicts());
}

void SecondOpinionStatesTest::oneMotor_carriesEverything()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 10.0, {2.0}, {{11.0, 80.0}}));
    QCOMPARE(opinion.state, State::OneMotor);
    QVERIFY(isNear(opinion.weight, 200.0));
    QVERIFY(isNear(opinion.centre, 8.0));
    QVERIFY(!opinion.tippingMargin);
    const MotorOpinion& told = opinion.motors.front();
    for (const auto figure :
         {&MotorOpinion::level, &MotorOpinion::pushing, &MotorOpinion::most, &MotorOpinion::least})
        QVERIFY(isNear(told.*figure, 200.0));
    QVERIFY(!told.oneSlack && !told.oneSlackOf && !told.oneSlackVerdict && !told.levelling);
    QVERIFY(told.isIndispensable.value() && !told.isSlack.value());
    QCOMPARE(told.levelVerdict.value(), SecondOpinion::Verdict::Fits);
    QVERIFY(!opinion.level && !opinion.oneSlack);
    QVERIFY(!opinion.contradicts());
}

void SecondOpinionStatesTest::twoMotorsAtOnePlace_carryEverything()
{
    Layout layout = Shows::show(12.0, 10.0, {6.0, 6.0}, {{11.0, 80.0}});
    layout.motors[1].capacity = 180.0; // (100 + 50)·1.25 = 187.5
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.state, State::OneMotor);
    for (std::size_t i = 0; i < 2; ++i) {
        const MotorOpinion& told = opinion.motors[i];
        QVERIFY(isNear(told.level, 100.0));
        QVERIFY(isNear(told.pushing, 100.0));
        QVERIFY(isNear(told.most, 200.0));
        QVERIFY(isNear(told.least, 0.0));
        QVERIFY(isNear(told.oneSlack, 200.0));
        QCOMPARE(told.oneSlackOf.value(), 1 - i);
        QVERIFY(!told.isIndispensable.value());
    }
    QVERIFY(opinion.contradicts());
}

// A weightless truss of 10 m with one load between motors at 2 and 8 m.
void SecondOpinionStatesTest::centreOfGravity_decidesBetweenTheStates_data()
{
    QTest::addColumn<double>("beyond"); // the left motor
    QTest::addColumn<State>("state");
    QTest::newRow("1.1 mm outside") << 0.0011 << State::Tips;
    QTest::newRow("0.9 mm outside") << 0.0009 << State::OnEdge;
    QTest::newRow("at it") << 0.0 << State::OnEdge;
    QTest::newRow("0.9 mm inside") << -0.0009 << State::OnEdge;
    QTest::newRow("1.1 mm inside") << -0.0011 << State::Level;
}

void SecondOpinionStatesTest::centreOfGravity_decidesBetweenTheStates()
{
    QFETCH(double, beyond);
    QFETCH(State, state);
    const Layout layout = Shows::show(10.0, 0.0, {2.0, 8.0}, {{2.0 - beyond, 100.0}});
    for (const Layout& seen : {layout, Shows::mirrored(layout)}) {
        const Opinion opinion = SecondOpinion::of(seen);
        QCOMPARE(opinion.state, state);
        QVERIFY(isNear(opinion.tippingMargin, -beyond));
        QCOMPARE(opinion.contradicts(), state != State::Level);
        QCOMPARE(tellsNothingSolved(opinion), state != State::Level);
    }
}

// A mass that is a power of two leaves the place as it is, to the last bit.
void SecondOpinionStatesTest::centreAMillimetreInside_isOnTheEdge()
{
    for (const double place : {2.0 + 0.001, 8.0 - 0.001}) {
        const Layout layout = Shows::show(10.0, 0.0, {2.0, 8.0}, {{place, 64.0}});
        QCOMPARE(SecondOpinion::of(layout).state, State::OnEdge);
    }
}

// The pair's middle is at 2 m, its motors 2 cm on either side; 1 cm left of the middle neither tips surely
// nor can be shared equally.
void SecondOpinionStatesTest::centreBetweenTheMotorsOfOnePoint_isOnTheEdge()
{
    const Layout layout = Shows::show(10.0, 0.0, {1.98, 2.02, 8.0}, {{1.99, 100.0}});
    for (const Layout& seen : {layout, Shows::mirrored(layout)}) {
        const Opinion opinion = SecondOpinion::of(seen);
        QCOMPARE(opinion.state, State::OnEdge);
        QVERIFY(isNear(opinion.tippingMargin, 0.01));
    }
}

void SecondOpinionStatesTest::tippingTruss_tellsNothingSolved()
{
    Layout layout = Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}});
    layout.motors[0].lever = 29.4;
    layout.motors[1].lever = 271.4;
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.state, State::Tips);
    QVERIFY(tellsNothingSolved(opinion));
    QVERIFY(isNear(opinion.motors[1].lever, 271.4));
    QCOMPARE(opinion.length, 12.0);
    QCOMPARE(opinion.limitCPL, 1600.0);
}

void SecondOpinionStatesTest::numbersThatCannotBe_areTold_data()
{
    using Change = std::function<void(Layout&)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<Problem>("problem");
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const auto row = [](const char* name, Problem problem, const Change& change) {
        QTest::newRow(name) << change << problem;
    };
    row("fine", Problem::None, [](Layout&) {});
    row("length", Problem::NotFinite, [nan](Layout& l) { l.length = nan; });
    row("own weight", Problem::NotFinite, [infinity](Layout& l) { l.selfWeight = infinity; });
    row("limit", Problem::NotFinite, [nan](Layout& l) { l.limitCPL = nan; });
    row("motor's place", Problem::NotFinite, [nan](Layout& l) { l.motors[1].position = nan; });
    row("motor's capacity", Problem::NotFinite, [infinity](Layout& l) { l.motors[1].capacity = infinity; });
    row("motor's weight", Problem::NotFinite, [nan](Layout& l) { l.motors[1].selfWeight = nan; });
    row("load's place", Problem::NotFinite, [infinity](Layout& l) { l.loads[1].position = -infinity; });
    row("load's mass", Problem::NotFinite, [nan](Layout& l) { l.loads[1].mass = nan; });
    row("negative length", Problem::Negative, [](Layout& l) { l.length = -12.0; });
    row("negative own weight", Problem::Negative, [](Layout& l) { l.selfWeight = -0.1; });
    row("negative motor", Problem::Negative, [](Layout& l) { l.motors[2].selfWeight = -0.1; });
    row("negative mass", Problem::Negative, [](Layout& l) { l.loads[1].mass = -0.1; });
    row("negative capacity", Problem::None, [](Layout& l) { l.motors[2].capacity = -1.0; });
    row("no limit", Problem::None, [](Layout& l) { l.limitCPL = -1.0; });
    row("motor left", Problem::Outside, [](Layout& l) { l.motors[0].position = -0.0011; });
    row("motor right", Problem::Outside, [](Layout& l) { l.motors[0].position = 12.0011; });
    row("load left", Problem::Outside, [](Layout& l) { l.loads[0].position = -0.0011; });
    row("load right", Problem::Outside, [](Layout& l) { l.loads[0].position = 12.0011; });
    row("motor a millimetre left", Problem::None,
        [](Layout& l) { l.motors[0].position = -SecondOpinion::OUTSIDE; });
    row("load a millimetre right", Problem::None,
        [](Layout& l) { l.loads[0].position = 12.0 + SecondOpinion::OUTSIDE; });
    row("masses", Problem::Overflow, [](Layout& l) { l.loads[0].mass = l.loads[1].mass = 1.7e308; });
    row("moments", Problem::Overflow, [](Layout& l) {
        l.length = 1e90;
        l.loads[0].mass = 1e50;
    });
    row("short and heavy", Problem::Overflow, [](Layout& l) {
        l = Shows::show(0.5, 0.0, {0.0, 0.5}, {{0.2, 1e308}});
    });
    row("heavy", Problem::None, [](Layout& l) { l.loads[0].mass = 1e300; });
}

void SecondOpinionStatesTest::numbersThatCannotBe_areTold()
{
    QFETCH(std::function<void(Layout&)>, change);
    QFETCH(Problem, problem);
    Layout layout = usual();
    change(layout);
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.problem, problem);
    QCOMPARE(opinion.state, problem == Problem::None ? State::Level : State::NotCalculable);
    QCOMPARE(tellsNothingSolved(opinion), problem != Problem::None);
    QCOMPARE(opinion.weight.has_value(), problem == Problem::None);
    QVERIFY(areAllFinite(opinion));
    if (problem != Problem::None)
        QVERIFY(opinion.contradicts());
}

void SecondOpinionStatesTest::lessThanAMillimetreOutside_isTakenToTheEnd()
{
    const Opinion at =
        SecondOpinion::of(Shows::show(10.0, 0.0, {0.0, 5.0, 10.0}, {{0.0, 50.0}, {10.0, 90.0}}));
    const Opinion outside = SecondOpinion::of(
        Shows::show(10.0, 0.0, {-0.0009, 5.0, 10.0009}, {{-0.0009, 50.0}, {10.0009, 90.0}}));
    QCOMPARE(outside.state, State::Level);
    QCOMPARE(outside.centre, at.centre);
    for (std::size_t i = 0; i < 3; ++i)
        QCOMPARE(outside.motors[i].level, at.motors[i].level);
    QCOMPARE(outside.motors[0].motor.position, -0.0009); // told as it went in
}

// Two motors at one place with a load right there have no share by the lever.
void SecondOpinionStatesTest::leverThatIsNoNumber_isLeftOut()
{
    Layout layout = usual();
    layout.motors[1].lever = std::nan("");
    layout.motors[2].lever = std::numeric_limits<double>::infinity();
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(opinion.motors[0].lever.has_value());
    QVERIFY(!opinion.motors[1].lever && !opinion.motors[2].lever);
    QCOMPARE(opinion.motors[1].leverVerdict, SecondOpinion::Verdict::Fits);
}

void SecondOpinionStatesTest::truss_withoutLimitHasNoPercent()
{
    Layout layout = usual();
    layout.limitCPL = 0.0;
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(!opinion.percent(opinion.level->extremes.moment()));
}

// A load in the first of three spans hangs from its two motors: one beam for that, one for the case without
// the second motor; the other cases need none, but each of the four is counted. Six times four motors.
void SecondOpinionStatesTest::usedUpWork_isNotConverged()
{
    Layout layout = Shows::show(18.0, 0.0, {0.0, 6.0, 12.0, 18.0}, {{3.0, 320.0}});
    layout.tableDeflection = 10.0;
    for (const std::size_t work : {0U, 3U, 4U, 8U, 12U, 20U, 23U}) {
        const Opinion opinion = SecondOpinion::of(layout, work);
        QCOMPARE(opinion.state, State::NotConverged);
        QVERIFY(tellsNothingSolved(opinion));
        QVERIFY(opinion.weight && opinion.centre && opinion.tippingMargin);
        QVERIFY(opinion.contradicts());
    }
    QCOMPARE(SecondOpinion::of(layout, 24).state, State::Level);
}

// The centre of gravity of a truss of 6000 km cannot be told to the distance of motors 5 cm apart.
void SecondOpinionStatesTest::closeMotorsOnAnEndlessTruss_areNotConverged()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(6e6, 1.0, {0.0, 0.06, 6e6}, {}));
    QCOMPARE(opinion.state, State::NotConverged);
    QVERIFY(tellsNothingSolved(opinion));
    QCOMPARE(SecondOpinion::of(Shows::show(6e6, 1.0, {0.0, 3e6, 6e6}, {})).state, State::Level);
    QCOMPARE(SecondOpinion::of(Shows::show(5e3, 1.0, {0.0, 0.06, 5e3}, {})).state, State::Level);
}

void SecondOpinionStatesTest::thousandsOfMotors_areToldInTime()
{
    Shows::Generator random(91);
    std::vector<double> motors;
    std::vector<PointMass> loads;
    for (int i = 0; i < 2000 / Support::toolSlowness(); ++i)
        motors.push_back(0.06 * i);
    const double length = motors.back();
    for (int i = 0; i < 100; ++i)
        loads.push_back({random.real(0.0, length), random.real(0.0, 900.0)});
    const Support::CpuTimer timer;
    const Opinion opinion = SecondOpinion::of(Shows::show(length, 0.1, motors, loads), 200'000);
    QVERIFY(opinion.state == State::NotConverged || Support::toolSlowness() > 1);
    QVERIFY2(timer.elapsed() < 1000 * Support::slowness(), qPrintable(QString::number(timer.elapsed())));
}

void SecondOpinionStatesTest::motorsAllOverTheTruss_areOnePoint()
{
    std::vector<double> motors;
    for (int i = 0; i <= 1200; ++i)
        motors.push_back(0.01 * i);
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 1201.0, motors, {}));
    QCOMPARE(opinion.state, State::OneMotor);
    QVERIFY(isNear(opinion.motors[77].level, 12.0));
}

void SecondOpinionStatesTest::trussWithoutLength_hangsFromOnePoint()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(0.0, 8.4, {0.0, 0.0}, {{0.0, 60.0}}));
    QCOMPARE(opinion.state, State::OneMotor);
    QVERIFY(isNear(opinion.motors[1].level, 30.0));
}

void SecondOpinionStatesTest::wildNumbers_giveDefinedFigures()
{
    Shows::Generator random(92);
    std::vector<int> seen(8, 0);
    for (int i = 0; i < 10'000 / Support::toolSlowness(); ++i) {
        Layout layout;
        layout.length = random.integer(0, 2) == 0 ? wildNumber(random) : random.real(0.0, 30.0);
        layout.selfWeight = wildNumber(random);
        layout.limitCPL = wildNumber(random);
        layout.tableDeflection = wildNumber(random);
        const auto place = [&] {
            return random.integer(0, 29) == 0 ? wildNumber(random)
                                              : layout.length * random.integer(0, 16) / 16.0;
        };
        for (int left = random.integer(0, 6); left > 0; --left)
            layout.motors.push_back({{}, place(), wildNumber(random), 0.0, wildNumber(random)});
        for (int left = random.integer(0, 3); left > 0; --left)
            layout.loads.push_back({place(), wildNumber(random)});
        const Opinion opinion = SecondOpinion::of(layout);
        QVERIFY2(areAllFinite(opinion), qPrintable(QString::number(i)));
        ++seen[static_cast<std::size_t>(opinion.state)];
    }
    QVERIFY(seen[static_cast<std::size_t>(State::Level)] > 100 / Support::toolSlowness());
    QVERIFY(seen[static_cast<std::size_t>(State::NotCalculable)] > 100 / Support::toolSlowness());
}

QTEST_GUILESS_MAIN(SecondOpinionStatesTest)
#include "tst_secondopinionstates.moc"
