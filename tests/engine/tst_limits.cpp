#include "engine/Limits.h"

#include <QTest>

#include <limits>

using Limits::Level;
using Limits::MotorVerdict;

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

} // namespace

class LimitsTest : public QObject
{
    Q_OBJECT

private slots:
    void dynamicLoad_hasTheOwnWeightInIt();
    void stressLevel_countsItsLimitsAsReached();
    void motorVerdict_isStrict();
    void motorLevel_isNearFromFourFifths();
    void notANumber_fits();
};

void LimitsTest::dynamicLoad_hasTheOwnWeightInIt()
{
    QCOMPARE(Limits::DYNAMIC_FACTOR, 1.25F);
    QCOMPARE(Limits::dynamicLoad(350.0F, 50.0F), 500.0F); // (350 + 50) · 1.25
}

void LimitsTest::stressLevel_countsItsLimitsAsReached()
{
    QCOMPARE(Limits::stressLevel(79.99F), Level::Within);
    QCOMPARE(Limits::stressLevel(80.0F), Level::Near);
    QCOMPARE(Limits::stressLevel(99.99F), Level::Near);
    QCOMPARE(Limits::stressLevel(100.0F), Level::Exceeded);
}

void LimitsTest::motorVerdict_isStrict()
{
    // (350 + 50) · 1.25 = 500
    QCOMPARE(Limits::motorVerdict(350.0F, 50.0F, 500.0F), MotorVerdict::Fits);
    QCOMPARE(Limits::motorVerdict(350.1F, 50.0F, 500.0F), MotorVerdict::DynamicOverload);
    // A hoist of negative own weight keeps the dynamic test out of the way.
    QCOMPARE(Limits::motorVerdict(500.0F, -500.0F, 500.0F), MotorVerdict::Fits);
    QCOMPARE(Limits::motorVerdict(500.1F, -500.0F, 500.0F), MotorVerdict::StaticOverload);
    QCOMPARE(Limits::motorVerdict(600.0F, 50.0F, 500.0F), MotorVerdict::StaticOverload);
}

void LimitsTest::motorLevel_isNearFromFourFifths()
{
    // (270 + 50) · 1.25 = 400 = 80 % of 500
    QCOMPARE(Limits::motorLevel(269.0F, 50.0F, 500.0F), Level::Within);
    QCOMPARE(Limits::motorLevel(270.0F, 50.0F, 500.0F), Level::Near);
    QCOMPARE(Limits::motorLevel(350.0F, 50.0F, 500.0F), Level::Near);
    QCOMPARE(Limits::motorLevel(351.0F, 50.0F, 500.0F), Level::Exceeded);
    QCOMPARE(Limits::motorLevel(501.0F, -500.0F, 500.0F), Level::Exceeded);
}

void LimitsTest::notANumber_fits()
{
    QCOMPARE(Limits::motorVerdict(NOT_A_NUMBER, 50.0F, 500.0F), MotorVerdict::Fits);
    QCOMPARE(Limits::motorLevel(NOT_A_NUMBER, 50.0F, 500.0F), Level::Within);
    QCOMPARE(Limits::stressLevel(NOT_A_NUMBER), Level::Within);
}

QTEST_GUILESS_MAIN(LimitsTest)
#include "tst_limits.moc"
