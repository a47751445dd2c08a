#include "engine/LoadLogic.h"
#include "support/Layouts.h"
#include "support/PlainStatics.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using Layouts::Layout;

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

/// The stress [%] of motors and loads on a usual truss: 12 m of 8.4 kg/m, maximum central point
/// load 1600 kg, hence a reference moment of 12 · 1600 / 4 = 4800 kg·m.
float stressOf(const std::vector<float>& motors, const std::vector<Layouts::Load>& loads = {})
{
    Layouts::calculate({12.0F, 8.4F, 1600.0F, motors, loads});
    return LoadLogic::TrussStress_Percentage;
}

/// The stress [%] of a weightless truss of 12 m.
float stressOfLoads(const std::vector<float>& motors, const std::vector<Layouts::Load>& loads)
{
    Layouts::calculate({12.0F, 0.0F, 1600.0F, motors, loads});
    return LoadLogic::TrussStress_Percentage;
}

/// A layout of random numbers with motors near both ends, so that most are stable.
Layout anyLayout(Layouts::Generator& random)
{
    Layout layout;
    layout.length = random.real(0.5F, 60.0F);
    layout.selfWeight = random.real(0.0F, 30.0F);
    layout.cpl = random.real(0.1F, 4000.0F);
    layout.motors = {random.real(0.0F, 0.46F) * layout.length, random.real(0.54F, 1.0F) * layout.length};
    for (int i = random.integer(0, 5); i > 0; --i)
        layout.motors.push_back(random.real(0.0F, 1.0F) * layout.length);
    for (int i = random.integer(0, 15); i > 0; --i) {
        const bool atMotor = random.integer(0, 9) == 0;
        const float x = atMotor ? layout.motors.front() : random.real(-0.1F, 1.1F) * layout.length;
        layout.loads.push_back({x, random.real(0.0F, 2000.0F)});
    }
    return layout;
}

/// True where a rule changes within what single precision can tell: such layouts have no one
/// right answer.
bool isOnTheEdge(const Layout& layout)
{
    constexpr double TELLABLE = 1e-4;
    const std::vector<double> motors = PlainStatics::sortedMotors(layout);
    const double length = layout.length;
    const double overhangs[] = {motors.front(), length - motors.back()};
    for (const double overhang : overhangs) {
        if (std::abs(overhang - 0.45 * length) < TELLABLE || std::abs(overhang - 0.05) < TELLABLE)
            return true;
    }
    for (std::size_t i = 1; i < motors.size(); ++i) {
        if (std::abs(motors[i] - motors[i - 1] - 0.05) < TELLABLE)
            return true;
    }
    return false;
}

} // namespace

class StressTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void selfWeightAlone_isTheUniformLoadMoment();
    void loadInTheMiddle_addsItsMoment();
    void centralPointLoad_isOneHundredPercent();
    void eccentricLoad_isRatedUnderIt();
    void loadsBothSides_areRatedWhereTheMomentIsLargest();
    void shortSpan_isRatedByTheWholeTruss();
    void oneMotor_isUnstable_data();
    void oneMotor_isUnstable();
    void longOverhang_isUnstable_data();
    void longOverhang_isUnstable();
    void overhangOfExactlyTheShare_isStable();
    void stabilityComesBack();
    void shortOverhangs_areRatedByHalfTheReference();
    void loadOnTheOverhang_isACantilever();
    void cantilever_isRatedByAtLeastOne();
    void overhangOfFiveCentimetres_isNone();
    void spanOfLessThanFiveCentimetres_isNone();
    void loadAtMotor_bendsNothing();
    void loadOutsideTheTruss_countsForTheOverhangOnly();
    void liftingLoads_rateAtLeastZero();
    void unusableTruss_isRatedZeroAndStable_data();
    void unusableTruss_isRatedZeroAndStable();
    void stressAlone_neitherSortsNorLoadsTheMotors();
    void stressAboveOneHundred_isKept();
    void hugeStress_saturates();
    void notANumber_ratesNothing();
    void randomLayouts_agreeWithThePlainFormulas();
};

void StressTest::init()
{
    LoadLogic::Reset();
}

void StressTest::selfWeightAlone_isTheUniformLoadMoment()
{
    QCOMPARE(stressOf({0.0F, 12.0F}), 3.15F); // 8.4 · 12² / 8 = 151.2 of 4800
    QVERIFY(!LoadLogic::isUnstable);
}

void StressTest::loadInTheMiddle_addsItsMoment()
{
    QCOMPARE(stressOf({0.0F, 12.0F}, {{6.0F, 500.0F}}), 34.4F); // 151.2 + 500 · 6 · 6 / 12 = 1651.2
}

void StressTest::centralPointLoad_isOneHundredPercent()
{
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{6.0F, 1600.0F}}), 100.0F);
}

void StressTest::eccentricLoad_isRatedUnderIt()
{
    // 400 · 3 · 9 / 12 = 900 of 4800 under the load; in the middle it would be 600.
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{3.0F, 400.0F}}), 18.75F);
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{9.0F, 400.0F}}), 18.75F);
}

void StressTest::loadsBothSides_areRatedWhereTheMomentIsLargest()
{
    // At 3 m: 400 · 9 · 3 / 12 + 800 · 2 · 3 / 12 = 900 + 400. At 10 m: 400 · 3 · 2 / 12 +
    // 800 · 2 · 10 / 12 = 200 + 1333.3. In the middle: 600 + 800. So at 10 m, 1533.3 of 4800.
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{10.0F, 800.0F}, {3.0F, 400.0F}}), 31.944444F);
}

void StressTest::shortSpan_isRatedByTheWholeTruss()
{
    // The middle span of 4 m: 1200 · 2 · 2 / 4 = 1200 kg·m of the whole truss's 4800.
    QCOMPARE(stressOfLoads({0.0F, 4.0F, 8.0F, 12.0F}, {{6.0F, 1200.0F}}), 25.0F);
}

void StressTest::oneMotor_isUnstable_data()
{
    QTest::addColumn<float>("x");
    for (const float x : {0.0F, 3.0F, 6.0F, 12.0F})
        QTest::addRow("at %g m", static_cast<double>(x)) << x;
}

void StressTest::oneMotor_isUnstable()
{
    QFETCH(float, x);
    QCOMPARE(stressOf({x}, {{6.0F, 500.0F}}), 0.0F);
    QVERIFY(LoadLogic::isUnstable);
}

void StressTest::longOverhang_isUnstable_data()
{
    QTest::addColumn<float>("first");
    QTest::addColumn<float>("last");
    QTest::addColumn<bool>("unstable");
    // 45 % of 12 m are 5.4 m.
    QTest::newRow("left half") << 6.0F << 12.0F << true;
    QTest::newRow("right half") << 0.0F << 6.0F << true;
    QTest::newRow("left, just beyond") << 5.401F << 12.0F << true;
    QTest::newRow("left, just within") << 5.399F << 12.0F << false;
    QTest::newRow("right, just beyond") << 0.0F << 6.599F << true;
    QTest::newRow("right, just within") << 0.0F << 6.601F << false;
}

void StressTest::longOverhang_isUnstable()
{
    QFETCH(float, first);
    QFETCH(float, last);
    QFETCH(bool, unstable);
    const float stress = stressOf({first, last}, {{6.0F, 500.0F}});
    QCOMPARE(LoadLogic::isUnstable, unstable);
    QCOMPARE(stress > 0.0F, !unstable);
}

void StressTest::overhangOfExactlyTheShare_isStable()
{
    Layouts::calculate({20.0F, 8.4F, 1600.0F, {9.0F, 11.0F}, {}}); // 45 % of 20 m are 9 m
    QVERIFY(!LoadLogic::isUnstable);
}

void StressTest::stabilityComesBack()
{
    stressOf({6.0F});
    QVERIFY(LoadLogic::isUnstable);
    stressOf({0.0F, 12.0F});
    QVERIFY(!LoadLogic::isUnstable);
}

void StressTest::shortOverhangs_areRatedByHalfTheReference()
{
    // The span of 10 m has 8.4 · 10² / 8 = 105 of 4800; each end of 1 m has 4.2 of 2400, less.
    QCOMPARE(stressOf({1.0F, 11.0F}), 2.1875F);
    // Ends of 4 m: 8.4 · 4² / 2 = 67.2 of 2400, more than the span's 16.8 of 4800.
    QCOMPARE(stressOf({4.0F, 8.0F}), 2.8F);
    QCOMPARE(stressOf({4.0F, 12.0F}), 2.8F);
    QCOMPARE(stressOf({0.0F, 8.0F}), 2.8F);
}

void StressTest::loadOnTheOverhang_isACantilever()
{
    // 300 kg, 2 m out: 600 of 2400.
    QCOMPARE(stressOfLoads({4.0F, 12.0F}, {{2.0F, 300.0F}}), 25.0F);
    QCOMPARE(stressOfLoads({0.0F, 8.0F}, {{10.0F, 300.0F}}), 25.0F);
    // Both ends, the heavier counts.
    QCOMPARE(stressOfLoads({4.0F, 8.0F}, {{2.0F, 300.0F}, {9.0F, 1200.0F}}), 50.0F);
}

void StressTest::cantilever_isRatedByAtLeastOne()
{
    // Half of 4 · 1 / 4 is 0.5: rated by 1 instead, 2 kg · 1 m give 200 %.
    Layouts::calculate({4.0F, 0.0F, 1.0F, {1.0F, 4.0F}, {{0.0F, 2.0F}}});
    QCOMPARE(LoadLogic::TrussStress_Percentage, 200.0F);
}

void StressTest::overhangOfFiveCentimetres_isNone()
{
    QCOMPARE(stressOfLoads({0.05F, 12.0F}, {{0.0F, 1000.0F}}), 0.0F);
    QVERIFY(stressOfLoads({0.0501F, 12.0F}, {{0.0F, 1000.0F}}) > 0.0F);
    // 12 m less an end of 3/64 m, which is no rounded number.
    QCOMPARE(stressOfLoads({0.0F, 11.953125F}, {{12.0F, 1000.0F}}), 0.0F);
    QVERIFY(stressOfLoads({0.0F, 11.94F}, {{12.0F, 1000.0F}}) > 0.0F);
    // The right end of a truss is exactly as long as that only where floats are fine enough.
    const float last = 0.062000003F;
    const float length = 0.112F;
    QCOMPARE(length - last, 0.05F);
    Layouts::calculate({length, 0.0F, 1600.0F, {0.0F, last}, {{length, 1000.0F}}});
    QVERIFY(!LoadLogic::isUnstable); // 0.45 · 0.112 = 0.0504
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
}

void StressTest::spanOfLessThanFiveCentimetres_isNone()
{
    QCOMPARE(stressOfLoads({0.0F, 0.0499F, 12.0F}, {{0.025F, 1000.0F}}), 0.0F);
    QCOMPARE(stressOfLoads({0.0F, 6.0F, 6.04F, 12.0F}, {{6.02F, 1000.0F}}), 0.0F);
    // 5 cm are a span: 1000 · 0.025 · 0.025 / 0.05 = 12.5 of 4800.
    QCOMPARE(stressOfLoads({0.0F, 0.05F, 12.0F}, {{0.025F, 1000.0F}}), 0.26041667F);
}

void StressTest::loadAtMotor_bendsNothing()
{
    QCOMPARE(stressOfLoads({2.0F, 6.0F, 10.0F}, {{2.0F, 900.0F}, {6.0F, 900.0F}, {10.0F, 900.0F}}), 0.0F);
}

void StressTest::loadOutsideTheTruss_countsForTheOverhangOnly()
{
    // 100 kg, 6 m left of the first motor: 600 of 2400; with the motor at the end there is no overhang.
    QCOMPARE(stressOfLoads({4.0F, 12.0F}, {{-2.0F, 100.0F}}), 25.0F);
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{-2.0F, 100.0F}}), 0.0F);
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{14.0F, 100.0F}}), 0.0F);
}

void StressTest::liftingLoads_rateAtLeastZero()
{
    QCOMPARE(stressOfLoads({2.0F, 10.0F}, {{1.0F, -50.0F}, {6.0F, -500.0F}, {11.0F, -50.0F}}), 0.0F);
    // Half a span lifted: 1000 at 3 m, −900 at 9 m. Under the first 1000 · 9 · 3 / 12 − 900 · 3 · 3 / 12.
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{3.0F, 1000.0F}, {9.0F, -900.0F}}), 32.8125F);
}

void StressTest::unusableTruss_isRatedZeroAndStable_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("cpl");
    QTest::newRow("no length") << 0.0F << 1600.0F;
    QTest::newRow("a centimetre") << 0.01F << 1600.0F;
    QTest::newRow("negative length") << -5.0F << 1600.0F;
    QTest::newRow("CPL 0") << 12.0F << 0.0F;
    QTest::newRow("CPL 0.01") << 12.0F << 0.01F;
    QTest::newRow("negative CPL") << 12.0F << -1600.0F;
}

void StressTest::unusableTruss_isRatedZeroAndStable()
{
    QFETCH(float, length);
    QFETCH(float, cpl);
    LoadLogic::isUnstable = true;
    LoadLogic::TrussStress_Percentage = 50.0F;
    // One motor at a third would be unstable on any usable truss.
    Layouts::calculate({length, 8.4F, cpl, {length / 3.0F}, {{6.0F, 500.0F}}});
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
    QVERIFY(!LoadLogic::isUnstable);

    Layouts::calculate({0.02F, 8.4F, 0.02F, {0.02F / 3.0F}, {}});
    QVERIFY(LoadLogic::isUnstable);
}

void StressTest::stressAlone_neitherSortsNorLoadsTheMotors()
{
    stressOf({12.0F, 0.0F});
    std::swap(LoadLogic::MotorList[0], LoadLogic::MotorList[1]);
    LoadLogic::MotorList[0].staticLoad = -1.0F;
    LoadLogic::TrussStress_Percentage = 0.0F;
    LoadLogic::CalcularStressTruss();
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 12.0F);
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, -1.0F);
    QCOMPARE(LoadLogic::TrussStress_Percentage, 3.15F);
}

void StressTest::stressAboveOneHundred_isKept()
{
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{6.0F, 16000.0F}}), 1000.0F);
}

void StressTest::hugeStress_saturates()
{
    Layouts::calculate({12.0F, 0.0F, 0.02F, {0.0F, 12.0F}, {{6.0F, 3e38F}}});
    QCOMPARE(LoadLogic::TrussStress_Percentage, std::numeric_limits<float>::max());
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{6.0F, INFINITE}}), std::numeric_limits<float>::max());
}

void StressTest::notANumber_ratesNothing()
{
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{6.0F, NOT_A_NUMBER}}), 0.0F);
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{NOT_A_NUMBER, 500.0F}}), 0.0F);
    // A place that is not a number disturbs no other load.
    QCOMPARE(stressOfLoads({0.0F, 12.0F}, {{NOT_A_NUMBER, 500.0F}, {6.0F, 1600.0F}}), 100.0F);
    QCOMPARE(stressOfLoads({4.0F, 8.0F}, {{NOT_A_NUMBER, 500.0F}, {10.0F, 300.0F}}), 25.0F);
    // An infinite moment of an infinite truss.
    Layouts::calculate({INFINITE, 8.4F, 1600.0F, {0.0F, 12.0F}, {}});
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
    Layouts::calculate({NOT_A_NUMBER, 8.4F, 1600.0F, {0.0F, 12.0F}, {}});
    QVERIFY(!std::isnan(LoadLogic::TrussStress_Percentage));
}

void StressTest::randomLayouts_agreeWithThePlainFormulas()
{
    Layouts::Generator random(3);
    int compared = 0;
    int unstable = 0;
    while (compared < 10'000) {
        const Layout layout = anyLayout(random);
        if (isOnTheEdge(layout))
            continue;
        Layouts::calculate(layout);
        const PlainStatics::Result expected = PlainStatics::calculate(layout);
        const double actual = static_cast<double>(LoadLogic::TrussStress_Percentage);
        QCOMPARE(LoadLogic::isUnstable, expected.unstable);
        if (std::abs(actual - expected.stress) > 1e-5 * expected.stress)
            qWarning("layout %d: %.9g %% instead of %.9g %%", compared, actual, expected.stress);
        QVERIFY(std::abs(actual - expected.stress) <= 1e-5 * expected.stress);
        unstable += expected.unstable ? 1 : 0;
        ++compared;
    }
    QVERIFY(unstable > 100 && unstable < 5'000);
}

QTEST_GUILESS_MAIN(StressTest)
#include "tst_stress.moc"
