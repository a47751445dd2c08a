#include "engine/LoadLogic.h"
#include "support/Layouts.h"
#include "support/PlainStatics.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using Layouts::Layout;
using Motor = LoadLogic::Motor;

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float LARGEST_FLOAT = std::numeric_limits<float>::max();

/// Motors and loads on a usual truss: 12 m of 8.4 kg/m, 100.8 kg in all.
std::vector<float> carried(const std::vector<float>& motors, const std::vector<Layouts::Load>& loads)
{
    Layouts::calculate({12.0F, 8.4F, 1600.0F, motors, loads});
    return Layouts::staticLoads();
}

/// With three decimals: the last bit depends on the order of adding.
QStringList shown(const std::vector<float>& loads)
{
    QStringList texts;
    for (const float load : loads)
        texts.append(QString::number(static_cast<double>(load), 'f', 3));
    return texts;
}

/// Everything may be anywhere, motors at one place and loads exactly at motors included.
Layout wildLayout(Layouts::Generator& random)
{
    Layout layout;
    layout.length = random.real(0.5F, 60.0F);
    layout.selfWeight = random.real(0.0F, 30.0F);
    layout.cpl = random.real(50.0F, 4000.0F);
    for (int i = random.integer(1, 7); i > 0; --i)
        layout.motors.push_back(random.real(-0.1F, 1.1F) * layout.length);
    if (random.integer(0, 9) == 0)
        layout.motors.push_back(layout.motors.front());
    for (int i = random.integer(0, 15); i > 0; --i) {
        const bool atMotor = random.integer(0, 9) == 0;
        const float x = atMotor ? layout.motors.front() : random.real(-0.2F, 1.2F) * layout.length;
        layout.loads.push_back({x, random.real(0.0F, 2000.0F)});
    }
    return layout;
}

/// To 1e-5 of the larger of what is carried and the heaviest load: the share of a load near a
/// motor is a small difference of large numbers.
bool agrees(const Layout& layout, float actual, double expected)
{
    if (std::isnan(expected))
        return std::isnan(actual);
    double scale = std::abs(expected);
    for (const Layouts::Load& load : layout.loads)
        scale = std::max(scale, static_cast<double>(load.mass));
    return std::abs(static_cast<double>(actual) - expected) <= 1e-5 * scale;
}

} // namespace

class ReactionsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noMotors_returnsAtOnce();
    void oneMotor_carriesTheWholeTruss_data();
    void oneMotor_carriesTheWholeTruss();
    void oneMotor_carriesEveryLoad();
    void loadAtAQuarter_isSharedByTheLeverRule();
    void loadAtMotor_isCarriedByItAlone_data();
    void loadAtMotor_isCarriedByItAlone();
    void loadBetweenMotors_isSharedByItsNeighboursOnly();
    void loadOutsideTheMotors_hangsOnTheNearest();
    void loadOutsideTheTruss_hangsOnTheNearest();
    void trussWeight_isHalvedForEachSpan();
    void overhang_hangsOnItsEndMotor();
    void motorsOutsideTheTruss_haveNoOverhang();
    void motors_areSortedLeftToRight();
    void motorsAtOnePlace_keepTheirOrder();
    void motorsAtOnePlaceWithALoadThere_giveNotANumber();
    void motorsAtOnePlaceWithTheLoadElsewhere_giveNumbers();
    void threeMotorsAtOnePlace_giveTheMiddleOneNothing();
    void ownWeight_countsInTheTotalOnly();
    void earlierResults_areForgotten();
    void shares_addUpToTheLoadExactly();
    void stress_isRefreshed();
    void negativeMass_lifts();
    void notANumber_endsAndSortsLast();
    void infiniteAndHugeInputs_end();
    void randomLayouts_agreeWithThePlainFormulas();
};

void ReactionsTest::init()
{
    LoadLogic::Reset();
}

void ReactionsTest::noMotors_returnsAtOnce()
{
    LoadLogic::TrussStress_Percentage = 12.0F;
    LoadLogic::isUnstable = true;
    carried({}, {{6.0F, 500.0F}});
    QVERIFY(LoadLogic::MotorList.isEmpty());
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
    QVERIFY(!LoadLogic::isUnstable);
}

void ReactionsTest::oneMotor_carriesTheWholeTruss_data()
{
    QTest::addColumn<float>("x");
    for (const float x : {0.0F, 3.0F, 6.0F, 12.0F})
        QTest::addRow("at %g m", static_cast<double>(x)) << x;
}

void ReactionsTest::oneMotor_carriesTheWholeTruss()
{
    QFETCH(float, x);
    QCOMPARE(shown(carried({x}, {})), shown(std::vector<float>{100.8F})); // x · w + (L − x) · w = L · w
}

void ReactionsTest::oneMotor_carriesEveryLoad()
{
    // Left of it, at it, right of it.
    QCOMPARE(shown(carried({4.0F}, {{1.0F, 100.0F}, {4.0F, 200.0F}, {11.0F, 400.0F}})),
             shown(std::vector<float>{800.8F}));
}

void ReactionsTest::loadAtAQuarter_isSharedByTheLeverRule()
{
    // 0.75 P + L · w / 2 and 0.25 P + L · w / 2, with L · w / 2 = 50.4.
    const std::vector<float> expected{750.0F + 50.4F, 250.0F + 50.4F};
    QCOMPARE(shown(carried({0.0F, 12.0F}, {{3.0F, 1000.0F}})), shown(expected));
}

void ReactionsTest::loadAtMotor_isCarriedByItAlone_data()
{
    QTest::addColumn<float>("x");
    QTest::addColumn<int>("motor");
    QTest::newRow("first") << 2.0F << 0;
    QTest::newRow("middle") << 6.0F << 1;
    QTest::newRow("last") << 10.0F << 2;
}

void ReactionsTest::loadAtMotor_isCarriedByItAlone()
{
    QFETCH(float, x);
    QFETCH(int, motor);
    const std::vector<float> motors{2.0F, 6.0F, 10.0F};
    std::vector<float> expected = carried(motors, {});
    expected[static_cast<std::size_t>(motor)] += 300.0F;
    QCOMPARE(shown(carried(motors, {{x, 300.0F}})), shown(expected));
}

void ReactionsTest::loadBetweenMotors_isSharedByItsNeighboursOnly()
{
    const std::vector<float> motors{0.0F, 4.0F, 8.0F, 12.0F};
    std::vector<float> expected = carried(motors, {});
    expected[1] += 300.0F; // (8 − 5) / 4 · 400
    expected[2] += 100.0F;
    QCOMPARE(shown(carried(motors, {{5.0F, 400.0F}})), shown(expected));
}

void ReactionsTest::loadOutsideTheMotors_hangsOnTheNearest()
{
    const std::vector<float> motors{2.0F, 10.0F};
    std::vector<float> expected = carried(motors, {});
    expected[0] += 70.0F;
    expected[1] += 30.0F;
    QCOMPARE(shown(carried(motors, {{1.0F, 70.0F}, {11.0F, 30.0F}})), shown(expected));
}

void ReactionsTest::loadOutsideTheTruss_hangsOnTheNearest()
{
    const std::vector<float> motors{0.0F, 12.0F};
    std::vector<float> expected = carried(motors, {});
    expected[0] += 70.0F;
    expected[1] += 30.0F;
    QCOMPARE(shown(carried(motors, {{-1e6F, 70.0F}, {1e6F, 30.0F}})), shown(expected));
}

void ReactionsTest::trussWeight_isHalvedForEachSpan()
{
    // Spans of 4, 6 and 2 m: 16.8, 16.8 + 25.2, 25.2 + 8.4 and 8.4 kg.
    const std::vector<float> expected{16.8F, 42.0F, 33.6F, 8.4F};
    QCOMPARE(shown(carried({0.0F, 4.0F, 10.0F, 12.0F}, {})), shown(expected));
}

void ReactionsTest::overhang_hangsOnItsEndMotor()
{
    // Half of the 9 m between, 37.8 kg, and the ends of 2 m and 1 m: 16.8 and 8.4 kg.
    const std::vector<float> expected{54.6F, 46.2F};
    QCOMPARE(shown(carried({2.0F, 11.0F}, {})), shown(expected));
}

void ReactionsTest::motorsOutsideTheTruss_haveNoOverhang()
{
    // As the plain formula has it: half of 16 m for each, and nothing for the ends.
    const std::vector<float> expected{67.2F, 67.2F};
    QCOMPARE(shown(carried({-2.0F, 14.0F}, {})), shown(expected));
}

void ReactionsTest::motors_areSortedLeftToRight()
{
    carried({8.0F, 2.0F, 5.0F}, {});
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 5.0F);
    QCOMPARE(LoadLogic::MotorList.at(2).positionX, 8.0F);
    // The ids, given in the order of entering, went along.
    QCOMPARE(LoadLogic::MotorList.at(0).id, 2);
    QCOMPARE(LoadLogic::MotorList.at(1).id, 3);
    QCOMPARE(LoadLogic::MotorList.at(2).id, 1);
}

void ReactionsTest::motorsAtOnePlace_keepTheirOrder()
{
    carried({8.0F, 2.0F, 8.0F, 2.0F}, {});
    QCOMPARE(LoadLogic::MotorList.at(0).id, 2);
    QCOMPARE(LoadLogic::MotorList.at(1).id, 4);
    QCOMPARE(LoadLogic::MotorList.at(2).id, 1);
    QCOMPARE(LoadLogic::MotorList.at(3).id, 3);
}

void ReactionsTest::motorsAtOnePlaceWithALoadThere_giveNotANumber()
{
    const std::vector<float> loads = carried({3.0F, 3.0F, 9.0F}, {{3.0F, 100.0F}});
    QVERIFY(std::isnan(loads[0]));
    QVERIFY(std::isnan(loads[1]));
    QVERIFY(std::isnan(LoadLogic::MotorList.at(0).totalLoad));
    QCOMPARE(loads[2], 50.4F); // half of 6 m and the end of 3 m, as without the load
    QVERIFY(std::isfinite(LoadLogic::TrussStress_Percentage));
}

void ReactionsTest::motorsAtOnePlaceWithTheLoadElsewhere_giveNumbers()
{
    // The span without length weighs nothing; a load right of it hangs on the later of the two.
    const std::vector<float> right = carried({3.0F, 3.0F, 9.0F}, {{6.0F, 100.0F}});
    QCOMPARE(shown(right), shown(std::vector<float>{25.2F, 75.2F, 100.4F}));
    // Left of it, on the earlier.
    const std::vector<float> left = carried({3.0F, 3.0F, 9.0F}, {{1.0F, 100.0F}});
    QCOMPARE(shown(left), shown(std::vector<float>{125.2F, 25.2F, 50.4F}));
}

void ReactionsTest::threeMotorsAtOnePlace_giveTheMiddleOneNothing()
{
    const std::vector<float> loads = carried({6.0F, 6.0F, 6.0F}, {{6.0F, 100.0F}});
    QVERIFY(std::isnan(loads[0]));
    QCOMPARE(loads[1], 0.0F);
    QVERIFY(std::isnan(loads[2]));
}

void ReactionsTest::ownWeight_countsInTheTotalOnly()
{
    carried({0.0F, 12.0F}, {});
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, 50.4F);
    QCOMPARE(LoadLogic::MotorList.at(0).totalLoad, 100.4F);
    LoadLogic::MotorList[1].selfWeight = 33.0F;
    LoadLogic::CalcularReacciones();
    QCOMPARE(LoadLogic::MotorList.at(1).staticLoad, 50.4F);
    QCOMPARE(LoadLogic::MotorList.at(1).totalLoad, 83.4F);
}

void ReactionsTest::earlierResults_areForgotten()
{
    const std::vector<float> first = carried({0.0F, 12.0F}, {{3.0F, 1000.0F}});
    LoadLogic::CalcularReacciones();
    QCOMPARE(Layouts::staticLoads(), first);
}

void ReactionsTest::shares_addUpToTheLoadExactly()
{
    Layouts::Generator random(1);
    for (int i = 0; i < 10'000; ++i) {
        const float mass = random.real(0.1F, 3000.0F);
        Layouts::calculate({12.0F, 0.0F, 1600.0F, {0.0F, 12.0F}, {{random.real(0.0F, 12.0F), mass}}});
        const std::vector<float> loads = Layouts::staticLoads();
        QVERIFY(loads[1] == mass - loads[0]); // to the last bit
    }
}

void ReactionsTest::stress_isRefreshed()
{
    carried({12.0F, 0.0F}, {{6.0F, 500.0F}});
    QCOMPARE(LoadLogic::TrussStress_Percentage, 34.4F); // (151.2 + 500 · 6 · 6 / 12) / 4800
}

void ReactionsTest::negativeMass_lifts()
{
    const std::vector<float> expected{50.4F - 75.0F, 50.4F - 25.0F};
    QCOMPARE(shown(carried({0.0F, 12.0F}, {{3.0F, -100.0F}})), shown(expected));
}

void ReactionsTest::notANumber_endsAndSortsLast()
{
    carried({NOT_A_NUMBER, 6.0F, NOT_A_NUMBER, 2.0F}, {{NOT_A_NUMBER, 100.0F}, {4.0F, NOT_A_NUMBER}});
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 6.0F);
    QVERIFY(std::isnan(LoadLogic::MotorList.at(2).positionX));
    QVERIFY(std::isnan(LoadLogic::MotorList.at(3).positionX));

    // A load that is nowhere hangs nowhere.
    QCOMPARE(shown(carried({0.0F, 12.0F}, {{NOT_A_NUMBER, 100.0F}})),
             shown((std::vector<float>{50.4F, 50.4F})));
}

void ReactionsTest::infiniteAndHugeInputs_end()
{
    for (const float extreme : {INFINITE, -INFINITE, LARGEST_FLOAT, -LARGEST_FLOAT, 1e9F, -5.0F, 0.0F}) {
        Layouts::calculate(
            {extreme, extreme, extreme, {0.0F, extreme, 5.0F}, {{extreme, extreme}, {1.0F, extreme}}});
        QCOMPARE(LoadLogic::MotorList.size(), 3);
        Layouts::calculate({12.0F, 8.4F, 1600.0F, {0.0F, extreme}, {{extreme, 5.0F}, {6.0F, 5.0F}}});
        QCOMPARE(LoadLogic::MotorList.size(), 2);
    }
}

void ReactionsTest::randomLayouts_agreeWithThePlainFormulas()
{
    Layouts::Generator random(2);
    for (int i = 0; i < 10'000; ++i) {
        const Layout layout = wildLayout(random);
        Layouts::calculate(layout);
        const std::vector<float> actual = Layouts::staticLoads();
        const std::vector<double> expected = PlainStatics::staticLoads(layout);
        QCOMPARE(actual.size(), expected.size());
        for (std::size_t motor = 0; motor < actual.size(); ++motor) {
            if (!agrees(layout, actual[motor], expected[motor]))
                qWarning("layout %d, motor %zu: %.9g instead of %.9g", i, motor,
                         static_cast<double>(actual[motor]), expected[motor]);
            QVERIFY(agrees(layout, actual[motor], expected[motor]));
        }
    }
}

QTEST_GUILESS_MAIN(ReactionsTest)
#include "tst_reactions.moc"
