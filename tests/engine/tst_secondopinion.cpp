#include "engine/SecondOpinion.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using SecondOpinion::Layout;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::State;
using SecondOpinion::Verdict;
using Figure = std::optional<double> MotorOpinion::*;

namespace
{

/// Figures that are written down with one decimal.
constexpr double ONE_DECIMAL = 0.05 + 1e-6;

/// So many by themselves; a slow tool looks for errors of memory, for which every layout is like another.
const int LAYOUTS = 500 / Support::toolSlowness();

bool isNear(const std::optional<double>& figure, double expected, double tolerance)
{
    return figure && std::abs(*figure - expected) <= tolerance;
}

/// All motors have `expected` as this figure [kg].
bool have(const Opinion& opinion, Figure figure, const std::vector<double>& expected,
          double tolerance = ONE_DECIMAL)
{
    if (opinion.motors.size() != expected.size())
        return false;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!isNear(opinion.motors[i].*figure, expected[i], tolerance)) {
            qWarning("motor %zu: %f instead of %f", i, (opinion.motors[i].*figure).value_or(-1e99),
                     expected[i]);
            return false;
        }
    }
    return true;
}

} // namespace

class SecondOpinionTest : public QObject
{
    Q_OBJECT

private slots:
    void concierto_loadsItsEndMotors();
    void pasarela_loadsItsCentre();
    void pantalla_isAsTheLeverSays();
    void voladizo_tips();
    void longOverhang_tips();
    void longOverhang_tips_data();
    void fiveMotors_areToldInTheListsOrder();
    void twoMotorsWithoutOverhang_areAsTheLeverSays();
    void everyLayout_isInBalance();
    void everyLayout_staysInItsRange();
    void threeMotors_oneSlackIsTheMost();
    void mirroredLayout_hasMirroredFigures();
    void scaledMasses_scaleEveryFigure();
    void indispensable_isWhoeverTipsTheTruss();
    void slackMotor_changesNothingForTheOthers();
    void momentIfSlack_isThatOfTheTrussWithoutIt();
    void motorsAtOnePlace_areOnePoint();
    void motorsAtOnePlace_shareWhatOneOfThemLeaves();
    void threeMotorsAtOnePlace_leaveHalfEach();
    void fiveCentimetresApart_areTwoPoints();
    void pairAtTheEnd_isNotIndispensable();
    void levelling_followsTheTable();
    void levelling_isToldOfMotorsThatCarryAlone();
    void percent_isOfTheCentralPointLoad();
    void verdict_isTheProgramsOwn_data();
    void verdict_isTheProgramsOwn();
    void contradiction_isOnTheUnsafeSideOnly();
    void anyLevelling_fitsWhenEveryMostDoes();
    void manyLoads_areQuick();
};

void SecondOpinionTest::concierto_loadsItsEndMotors()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"concierto"_s, {450.0, 180.0, 450.0}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(isNear(opinion.weight, 1080.0, 1e-9));
    QVERIFY(isNear(opinion.centre, 7.0, 1e-12));
    QVERIFY(isNear(opinion.tippingMargin, 6.0, 1e-12));
    QVERIFY(have(opinion, &MotorOpinion::level, {527.5, 25.0, 527.5}));
    QVERIFY(have(opinion, &MotorOpinion::pushing, {527.5, 25.0, 527.5}));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {540.0, 1080.0, 540.0}));
    QVERIFY(have(opinion, &MotorOpinion::most, {540.0, 1080.0, 540.0}));
    QVERIFY(isNear(opinion.level->extremes.smallestMoment, -385.0, 1e-9));
    QVERIFY(isNear(opinion.level->extremes.shear, 390.0, 1e-9));
    QVERIFY(isNear(opinion.percent(opinion.oneSlack->extremes.moment()), 44.1, ONE_DECIMAL));
    QVERIFY(isNear(opinion.level->extremes.largestMoment, 80.0, 1e-9));
}

void SecondOpinionTest::pasarela_loadsItsCentre()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"pasarela"_s, {76.3, 182.7, 76.3}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(have(opinion, &MotorOpinion::level, {62.1, 211.0, 62.1}));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {167.6, 335.2, 167.6}));
}

void SecondOpinionTest::pantalla_isAsTheLeverSays()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"pantalla"_s, {328.6, 328.6}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(have(opinion, &MotorOpinion::level, {328.6, 328.6}));
    for (const MotorOpinion& told : opinion.motors) {
        QVERIFY(told.isIndispensable.value());
        QVERIFY(!told.oneSlack);
    }
}

void SecondOpinionTest::voladizo_tips()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"voladizo"_s, {23.1, 260.9}));
    QCOMPARE(opinion.state, State::Tips);
    QVERIFY(isNear(opinion.tippingMargin, -2.82, 0.005));
}

// The centre of gravity of 100.8 kg of truss at 6 m and of 200 kg at 12 m is at 9.99 m, 2.99 m beyond 7 m.
void SecondOpinionTest::longOverhang_tips_data()
{
    QTest::addColumn<bool>("isMirrored");
    QTest::newRow("to the right") << false;
    QTest::newRow("to the left") << true;
}

void SecondOpinionTest::longOverhang_tips()
{
    QFETCH(bool, isMirrored);
    const Layout layout = Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}});
    const Opinion opinion = SecondOpinion::of(isMirrored ? Shows::mirrored(layout) : layout);
    QCOMPARE(opinion.state, State::Tips);
    QVERIFY(isNear(opinion.tippingMargin, -2.99, 0.005));
    QVERIFY(isNear(opinion.centre, isMirrored ? 2.01 : 9.99, 0.005));
    QVERIFY(opinion.contradicts());
    QVERIFY(isNear(opinion.weight, 300.8, 1e-9));
}

void SecondOpinionTest::fiveMotors_areToldInTheListsOrder()
{
    const Layout layout = Shows::show(20.0, 10.0, {10.0, 0.0, 20.0, 15.0, 5.0}, {});
    const Opinion opinion = SecondOpinion::of(layout);
    // Hicks' table 2.1 for five supports: 11, 32, 26, 32, 11 of w·s/28.
    const double unit = 50.0 / 28.0;
    QVERIFY(
        have(opinion, &MotorOpinion::level, {26 * unit, 11 * unit, 11 * unit, 32 * unit, 32 * unit}, 1e-9));
    // At the end most is carried with its neighbour slack, and that is the fifth of the list.
    QCOMPARE(opinion.motors[1].oneSlackOf.value(), std::size_t{4});
    QCOMPARE(opinion.motors[2].oneSlackOf.value(), std::size_t{3});
    for (std::size_t i = 0; i < 5; ++i) {
        QCOMPARE(opinion.motors[i].motor.title, layout.motors[i].title);
        QVERIFY(!opinion.motors[i].isIndispensable.value());
        QVERIFY(!opinion.motors[i].isSlack.value());
    }
}

// A load P at x: P·(b − x)/(b − a) on the left one; half the truss each.
void SecondOpinionTest::twoMotorsWithoutOverhang_areAsTheLeverSays()
{
    Shows::Generator random(81);
    for (int i = 0; i < LAYOUTS; ++i) {
        Layout layout = random.next(2);
        layout.motors[0].position = 0.0;
        layout.motors[1].position = layout.length;
        double left = layout.selfWeight * layout.length / 2.0;
        for (const PointMass& load : layout.loads)
            left += load.mass * (layout.length - load.position) / layout.length;
        const double weight = Shows::weightOf(layout);
        if (!Shows::hangs(layout))
            continue;
        const std::vector<double> expected{left, weight - left};
        const Opinion opinion = SecondOpinion::of(layout);
        for (const Figure figure :
             {&MotorOpinion::level, &MotorOpinion::pushing, &MotorOpinion::most, &MotorOpinion::least})
            QVERIFY(have(opinion, figure, expected, 1e-12 * weight));
    }
}

void SecondOpinionTest::everyLayout_isInBalance()
{
    Shows::Generator random(82);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.nextHanging(8);
        const Opinion opinion = SecondOpinion::of(layout);
        const double weight = Shows::weightOf(layout);
        for (const Figure figure : {&MotorOpinion::level, &MotorOpinion::pushing}) {
            double sum = 0.0;
            double moment = 0.0;
            double largest = weight;
            for (const MotorOpinion& told : opinion.motors) {
                sum += *(told.*figure);
                moment += *(told.*figure) * told.motor.position;
                largest = std::max(largest, std::abs(*(told.*figure)));
            }
            QVERIFY2(std::abs(sum - weight) <= 1e-12 * largest, qPrintable(QString::number(i)));
            QVERIFY2(std::abs(moment - weight * *opinion.centre) <= 1e-12 * largest * layout.length,
                     qPrintable(QString::number(i)));
        }
    }
}

void SecondOpinionTest::everyLayout_staysInItsRange()
{
    Shows::Generator random(83);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.nextHanging(8);
        const Opinion opinion = SecondOpinion::of(layout);
        const double rounding = 1e-9 * Shows::weightOf(layout);
        for (const MotorOpinion& told : opinion.motors) {
            QVERIFY(*told.least >= 0.0 && *told.level >= 0.0);
            QVERIFY2(*told.least <= *told.level + rounding, qPrintable(QString::number(i)));
            QVERIFY2(*told.level <= *told.most + rounding, qPrintable(QString::number(i)));
            QVERIFY2(told.oneSlack.value_or(0.0) <= *told.most + rounding, qPrintable(QString::number(i)));
            QCOMPARE(told.oneSlack.has_value(), told.oneSlackOf.has_value());
            QVERIFY(!told.oneSlackOf || &opinion.motors[*told.oneSlackOf] != &told);
        }
    }
}

void SecondOpinionTest::threeMotors_oneSlackIsTheMost()
{
    Shows::Generator random(84);
    for (int i = 0; i < LAYOUTS; ++i) {
        Layout layout = random.nextHanging(3);
        if (layout.motors.size() != 3)
            continue;
        const double weight = Shows::weightOf(layout);
        for (const MotorOpinion& told : SecondOpinion::of(layout).motors)
            QVERIFY2(isNear(told.oneSlack, *told.most, 1e-9 * weight), qPrintable(QString::number(i)));
    }
}

void SecondOpinionTest::mirroredLayout_hasMirroredFigures()
{
    Shows::Generator random(85);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.next(8);
        const Opinion opinion = SecondOpinion::of(layout);
        const Opinion mirror = SecondOpinion::of(Shows::mirrored(layout));
        const double rounding = 1e-9 * Shows::weightOf(layout);
        QCOMPARE(mirror.state, opinion.state);
        if (opinion.state != State::Level)
            continue;
        QVERIFY(isNear(mirror.centre, layout.length - *opinion.centre, 1e-9));
        QVERIFY(isNear(mirror.tippingMargin, *opinion.tippingMargin, 1e-9));
        QVERIFY(isNear(mirror.level->extremes.shear, opinion.level->extremes.shear, rounding));
        QVERIFY(isNear(mirror.level->extremes.smallestMoment, opinion.level->extremes.smallestMoment,
                       rounding * layout.length));
        QVERIFY(isNear(mirror.level->extremes.largestMoment, opinion.level->extremes.largestMoment,
                       rounding * layout.length));
        for (std::size_t k = 0; k < layout.motors.size(); ++k) {
            const MotorOpinion& a = opinion.motors[k];
            const MotorOpinion& b = mirror.motors[k];
            QVERIFY2(isNear(b.level, *a.level, rounding), qPrintable(QString::number(i)));
            QVERIFY2(isNear(b.most, *a.most, rounding), qPrintable(QString::number(i)));
            QVERIFY2(isNear(b.least, *a.least, rounding), qPrintable(QString::number(i)));
            QCOMPARE(b.oneSlack.has_value(), a.oneSlack.has_value());
            QVERIFY2(isNear(b.oneSlack.value_or(0.0), a.oneSlack.value_or(0.0), rounding),
                     qPrintable(QString::number(i)));
            QCOMPARE(b.isIndispensable, a.isIndispensable);
            QCOMPARE(b.isSlack, a.isSlack);
        }
    }
}

void SecondOpinionTest::scaledMasses_scaleEveryFigure()
{
    Shows::Generator random(86);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.nextHanging(8);
        Layout heavy = layout;
        heavy.selfWeight *= 3.0;
        for (PointMass& load : heavy.loads)
            load.mass *= 3.0;
        const Opinion opinion = SecondOpinion::of(layout);
        const Opinion scaled = SecondOpinion::of(heavy);
        const double rounding = 1e-9 * Shows::weightOf(layout);
        for (std::size_t k = 0; k < layout.motors.size(); ++k) {
            for (const Figure figure : {&MotorOpinion::level, &MotorOpinion::pushing, &MotorOpinion::most,
                                        &MotorOpinion::least, &MotorOpinion::oneSlack}) {
                const std::optional<double>& before = opinion.motors[k].*figure;
                const std::optional<double>& after = scaled.motors[k].*figure;
                QCOMPARE(after.has_value(), before.has_value());
                QVERIFY(isNear(after.value_or(0.0), 3.0 * before.value_or(0.0),
                               rounding + 1e-9 * std::abs(after.value_or(0.0))));
            }
        }
    }
}

// c = 5 m between motors at 1, 3 and 9 m: only the right one has nobody else on its side.
void SecondOpinionTest::indispensable_isWhoeverTipsTheTruss()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(10.0, 10.0, {9.0, 1.0, 3.0}, {}));
    QVERIFY(opinion.motors[0].isIndispensable.value());
    QVERIFY(!opinion.motors[0].momentIfSlack);
    QVERIFY(!opinion.motors[1].isIndispensable.value());
    QVERIFY(!opinion.motors[2].isIndispensable.value());
    // With the left one slack 100 kg at 5 m hang from 3 m and 9 m; with the other one, from 1 m and 9 m.
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {50.0, 50.0, 200.0 / 3.0}, 1e-9));
    QCOMPARE(opinion.motors[0].oneSlackOf.value(), std::size_t{2});
    QCOMPARE(opinion.motors[1].oneSlackOf.value(), std::size_t{2});
    QCOMPARE(opinion.motors[2].oneSlackOf.value(), std::size_t{1});
}

// Two equal spans, P in the middle of one: the far motor is slack, and with it slack all stays as it is.
void SecondOpinionTest::slackMotor_changesNothingForTheOthers()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 0.0, {0.0, 6.0, 12.0}, {{3.0, 320.0}}));
    QVERIFY(have(opinion, &MotorOpinion::level, {160.0, 160.0, 0.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::pushing, {130.0, 220.0, -30.0}, 1e-9));
    QVERIFY(opinion.motors[2].isSlack.value());
    QVERIFY(!opinion.motors[1].isSlack.value());
    QVERIFY(isNear(opinion.motors[2].momentIfSlack, 480.0, 1e-9)); // P·s/4
    QVERIFY(isNear(opinion.level->extremes.largestMoment, 480.0, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {240.0, 160.0, 80.0}, 1e-9));
}

// 12 m, 600 kg in the middle, motors at 0, 6 and 12 m: without the middle one P·L/4; without the left one the
// whole hangs from the middle, and nothing bends.
void SecondOpinionTest::momentIfSlack_isThatOfTheTrussWithoutIt()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 0.0, {0.0, 6.0, 12.0}, {{6.0, 600.0}}));
    QVERIFY(have(opinion, &MotorOpinion::momentIfSlack, {0.0, 1800.0, 0.0}, 1e-9));
    QCOMPARE(opinion.oneSlackOf.value(), std::size_t{1});
    QVERIFY(isNear(opinion.oneSlack->extremes.largestMoment, 1800.0, 1e-9));
    QCOMPARE(opinion.oneSlack->points.back().position, 12.0);
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {300.0, 600.0, 300.0}, 1e-9));
    QCOMPARE(opinion.motors[1].oneSlackOf.value(), std::size_t{0});
}

// 100 kg in the middle of 10 m: the pair at 1 m carries half, a quarter each, the one at 9 m the other half.
void SecondOpinionTest::motorsAtOnePlace_areOnePoint()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(10.0, 0.0, {0.98, 9.0, 1.02}, {{5.0, 100.0}}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(have(opinion, &MotorOpinion::level, {25.0, 50.0, 25.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::pushing, {25.0, 50.0, 25.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::most, {50.0, 50.0, 50.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::least, {0.0, 50.0, 0.0}, 1e-9));
}

void SecondOpinionTest::motorsAtOnePlace_shareWhatOneOfThemLeaves()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(10.0, 0.0, {1.0, 9.0, 1.0}, {{5.0, 100.0}}));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {50.0, 50.0, 50.0}, 1e-9));
    QCOMPARE(opinion.motors[0].oneSlackOf.value(), std::size_t{2});
    QCOMPARE(opinion.motors[1].oneSlackOf.value(), std::size_t{0});
    QCOMPARE(opinion.motors[2].oneSlackOf.value(), std::size_t{0});
    QVERIFY(!opinion.motors[0].isIndispensable.value());
    QVERIFY(opinion.motors[1].isIndispensable.value());
    QVERIFY(isNear(opinion.motors[0].momentIfSlack, 200.0, 1e-9));
    QVERIFY(isNear(opinion.motors[2].momentIfSlack, 200.0, 1e-9));
    QCOMPARE(opinion.oneSlackOf.value(), std::size_t{0});
}

void SecondOpinionTest::threeMotorsAtOnePlace_leaveHalfEach()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(10.0, 0.0, {1.0, 1.04, 0.96, 9.0}, {{5.0, 120.0}}));
    QVERIFY(have(opinion, &MotorOpinion::level, {20.0, 20.0, 20.0, 60.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {30.0, 30.0, 30.0, 60.0}, 1e-9));
    QVERIFY(have(opinion, &MotorOpinion::most, {60.0, 60.0, 60.0, 60.0}, 1e-9));
}

// As single precision knows them: 3.05 − 3 is 0.04999995.
void SecondOpinionTest::fiveCentimetresApart_areTwoPoints()
{
    const double left = static_cast<double>(3.0F);
    const Opinion justApart = SecondOpinion::of(
        Shows::show(10.0, 0.0, {0.0, SecondOpinion::ONE_POINT - 1e-5, 9.0}, {{4.0, 100.0}}));
    QVERIFY(!isNear(justApart.motors[1].level, *justApart.motors[0].level, 1.0));
    const Opinion together = SecondOpinion::of(Shows::show(10.0, 0.0, {3.0, 3.0499, 9.0}, {{4.0, 100.0}}));
    QVERIFY(isNear(together.motors[1].level, *together.motors[0].level, 1e-12));
    const Opinion separate =
        SecondOpinion::of(Shows::show(10.0, 0.0, {left, static_cast<double>(3.05F), 9.0}, {{4.0, 100.0}}));
    QVERIFY(!isNear(separate.motors[1].level, *separate.motors[0].level, 1.0));
}

void SecondOpinionTest::pairAtTheEnd_isNotIndispensable()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(10.0, 10.0, {0.0, 0.0, 10.0, 10.0}, {}));
    for (const MotorOpinion& told : opinion.motors)
        QVERIFY(!told.isIndispensable.value());
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {50.0, 50.0, 50.0, 50.0}, 1e-9));
    // Nothing bends, whoever is slack: the one further left is named.
    const Opinion straight =
        SecondOpinion::of(Shows::show(10.0, 0.0, {0.0, 0.0, 10.0, 10.0}, {{0.0, 50.0}, {10.0, 50.0}}));
    QCOMPARE(straight.oneSlackOf.value(), std::size_t{0});
    QCOMPARE(straight.oneSlack->extremes.moment(), 0.0);
}

// 12 m, 1600 kg, 15 mm: EI = 3 840 000 kg·m². The middle of two spans of 6 m: 6·EI/s³ = 106 667 kg/m, the
// ends a quarter of that. Under 10 kg/m: 5/8·10·12 = 75 kg in the middle, 22.5 kg at the ends.
void SecondOpinionTest::levelling_followsTheTable()
{
    Layout layout = Shows::show(12.0, 10.0, {0.0, 6.0, 12.0}, {});
    QVERIFY(!SecondOpinion::of(layout).motors[1].levelling);
    layout.tableDeflection = 15.0;
    const Opinion opinion = SecondOpinion::of(layout);
    const double middle = 3'840'000.0 * 6.0 / 216.0 / 1000.0;
    QVERIFY(isNear(opinion.motors[1].levelling->perMillimetre, middle, 1e-9));
    QVERIFY(isNear(opinion.motors[1].levelling->slackBelow, 75.0 / middle, 1e-9));
    QVERIFY(isNear(opinion.motors[2].levelling->perMillimetre, middle / 4.0, 1e-9));
    QVERIFY(isNear(opinion.motors[2].levelling->slackBelow, 22.5 / (middle / 4.0), 1e-9));
    layout.tableDeflection = -15.0;
    QVERIFY(!SecondOpinion::of(layout).motors[1].levelling);
}

// Not of one that hangs slack, nor of those that share a point, nor where only two carry. The stiffness is
// that of the chains that pull.
void SecondOpinionTest::levelling_isToldOfMotorsThatCarryAlone()
{
    Layout two = Shows::show(12.0, 10.0, {0.0, 12.0}, {});
    two.tableDeflection = 15.0;
    QVERIFY(!SecondOpinion::of(two).motors[0].levelling);

    Layout pair = Shows::show(12.0, 10.0, {0.0, 6.0, 6.0, 12.0}, {});
    pair.tableDeflection = 15.0;
    const Opinion shared = SecondOpinion::of(pair);
    QVERIFY(shared.motors[0].levelling.has_value());
    QVERIFY(!shared.motors[1].levelling && !shared.motors[2].levelling);

    // Touching is not carrying: nothing hangs on the two at the ends.
    Layout touching = Shows::show(12.0, 0.0, {0.0, 6.0, 12.0}, {{6.0, 300.0}});
    touching.tableDeflection = 15.0;
    const Opinion middle = SecondOpinion::of(touching);
    QVERIFY(!middle.motors[0].levelling && middle.motors[1].levelling && !middle.motors[2].levelling);

    Layout slack = Shows::show(18.0, 0.0, {0.0, 6.0, 12.0, 18.0}, {{3.0, 300.0}, {9.0, 300.0}});
    slack.tableDeflection = 15.0;
    const Opinion opinion = SecondOpinion::of(slack);
    QVERIFY(opinion.motors[3].isSlack.value() && !opinion.motors[3].levelling);
    const double stiffness = 1600.0 * 18.0 * 18.0 * 18.0 / 48.0 / 15.0; // EI/1000, for kg/mm
    QVERIFY(isNear(opinion.motors[1].levelling->perMillimetre, stiffness * 6.0 / 216.0, 1e-6));
}

void SecondOpinionTest::percent_isOfTheCentralPointLoad()
{
    Opinion opinion;
    opinion.length = 12.0;
    opinion.limitCPL = 1600.0;
    QVERIFY(isNear(opinion.percent(2400.0), 50.0, 1e-12));
    opinion.limitCPL = 0.01;
    QVERIFY(!opinion.percent(2400.0));
    opinion.limitCPL = 0.02;
    QVERIFY(isNear(opinion.percent(6e-4), 1.0, 1e-9));
    QVERIFY(!opinion.percent(1e308));
    opinion.length = 0.01;
    QVERIFY(!opinion.percent(1.0));
}

void SecondOpinionTest::verdict_isTheProgramsOwn_data()
{
    QTest::addColumn<double>("atPoint");
    QTest::addColumn<double>("capacity");
    QTest::addColumn<SecondOpinion::Verdict>("verdict");
    QTest::newRow("fits") << 300.0 << 500.0 << Verdict::Fits;
    QTest::newRow("just fits") << 350.0 << 500.0 << Verdict::Fits; // (350 + 50)·1.25
    QTest::newRow("just fits, but for rounding") << 350.000001 << 500.0 << Verdict::Fits;
    QTest::newRow("dynamic") << 350.01 << 500.0 << Verdict::DynamicOverload;
    QTest::newRow("all of it") << 500.0 << 500.0 << Verdict::DynamicOverload;
    QTest::newRow("static") << 500.01 << 500.0 << Verdict::StaticOverload;
    QTest::newRow("huge") << 1e300 << 500.0 << Verdict::StaticOverload;
    QTest::newRow("none") << std::nan("") << 500.0 << Verdict::Fits;
}

void SecondOpinionTest::verdict_isTheProgramsOwn()
{
    QFETCH(double, atPoint);
    QFETCH(double, capacity);
    QFETCH(Verdict, verdict);
    QCOMPARE(SecondOpinion::motorVerdict(atPoint, 50.0, capacity), verdict);
}

// concierto with motors of 715 kg: (527.5 + 50)·1.25 = 721.9 at level, (450 + 50)·1.25 = 625 by the lever.
void SecondOpinionTest::contradiction_isOnTheUnsafeSideOnly()
{
    Layout layout = Shows::example(u"concierto"_s, {450.0, 180.0, 450.0});
    QVERIFY(!SecondOpinion::of(layout).contradicts());
    layout.motors[0].capacity = 715.0;
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.motors[0].leverVerdict, Verdict::Fits);
    QCOMPARE(opinion.motors[0].levelVerdict.value(), Verdict::DynamicOverload);
    QVERIFY(opinion.contradicts());
    // Whom today's figures do not pass, nobody has to be warned of again.
    layout.motors[0].lever = 600.0;
    QVERIFY(!SecondOpinion::of(layout).contradicts());
    // The centre carries less than the lever says: that is no contradiction.
    layout.motors[0].capacity = 1000.0;
    layout.motors[1].capacity = 250.0;
    QCOMPARE(SecondOpinion::of(layout).motors[1].leverVerdict, Verdict::DynamicOverload);
    QVERIFY(!SecondOpinion::of(layout).contradicts());
}

// pasarela: 335.2 kg on the centre at most, so that (335.2 + 18)·1.25 = 441.5 is what it needs.
void SecondOpinionTest::anyLevelling_fitsWhenEveryMostDoes()
{
    Layout layout = Shows::example(u"pasarela"_s, {76.3, 182.7, 76.3});
    QVERIFY(!SecondOpinion::of(layout).fitsAnyLevelling());
    layout.motors[1].capacity = 441.0;
    const Opinion opinion = SecondOpinion::of(layout);
    QCOMPARE(opinion.motors[1].mostVerdict.value(), Verdict::DynamicOverload);
    QCOMPARE(opinion.motors[1].oneSlackVerdict.value(), Verdict::DynamicOverload);
    QVERIFY(!opinion.fitsAnyLevelling());
    layout.motors[1].capacity = 442.0;
    QVERIFY(SecondOpinion::of(layout).fitsAnyLevelling());
    QVERIFY(!SecondOpinion::of(Shows::show(12.0, 8.4, {}, {})).fitsAnyLevelling());
    QVERIFY(!SecondOpinion::of(Shows::example(u"voladizo"_s, {23.1, 260.9})).fitsAnyLevelling());
}

void SecondOpinionTest::manyLoads_areQuick()
{
    Shows::Generator random(87);
    std::vector<double> motors;
    std::vector<PointMass> loads;
    for (int i = 0; i < 50; ++i)
        motors.push_back(3.0 * i);
    for (int i = 0; i < 2000; ++i)
        loads.push_back({random.real(0.0, 150.0), random.real(0.0, 90.0)});
    const Layout layout = Shows::show(150.0, 10.0, motors, loads);
    const Support::CpuTimer timer;
    QCOMPARE(SecondOpinion::of(layout).state, State::Level);
    QVERIFY2(timer.elapsed() < 50 * Support::slowness(), qPrintable(QString::number(timer.elapsed())));
}

QTEST_GUILESS_MAIN(SecondOpinionTest)
#include "tst_secondopinion.moc"
