#include "engine/LoadLogic.h"
#include "support/Layouts.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Motor = LoadLogic::Motor;
using ActiveLoad = LoadLogic::ActiveLoad;

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

void setMotorIds(const QList<int>& ids)
{
    LoadLogic::MotorList.clear();
    for (const int id : ids) {
        Motor motor;
        motor.id = id;
        LoadLogic::MotorList.append(motor);
    }
}

/// The id that the engine gives to one more motor, hung right of all others.
int idOfNextMotor()
{
    LoadLogic::AddMotor(LoadLogic::TrussLength);
    return LoadLogic::MotorList.constLast().id;
}

} // namespace

class PlacingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void position_isClampedToTheTruss_data();
    void position_isClampedToTheTruss();
    void addedMotor_hasTheUsualValuesAndIsCalculated();
    void addedMotors_standLeftToRight();
    void motorId_followsTheLargest_data();
    void motorId_followsTheLargest();
    void motorIdAfterTheLargestInteger_isTheSmallestFree();
    void standardLoad_hasTheUsualValues();
    void fullLoad_hasTheValuesGiven();
    void addedLoads_standInOrderOfCreation();
    void addedLoad_isCalculatedAtOnce();
    void placedLoad_isNotCalculated();
    void loadIds_growOverAllProjects();
    void screenWeight_hasNoCableAllowance();
    void coordinate_isRelativeToTheCentre_data();
    void coordinate_isRelativeToTheCentre();
};

void PlacingTest::init()
{
    LoadLogic::Reset();
}

void PlacingTest::position_isClampedToTheTruss_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("x");
    QTest::addColumn<float>("placed");
    QTest::newRow("left of the truss") << 12.0F << -3.0F << 0.0F;
    QTest::newRow("left end") << 12.0F << 0.0F << 0.0F;
    QTest::newRow("inside") << 12.0F << 2.5F << 2.5F;
    QTest::newRow("right end") << 12.0F << 12.0F << 12.0F;
    QTest::newRow("right of the truss") << 12.0F << 20.0F << 12.0F;
    QTest::newRow("infinitely right") << 12.0F << INFINITE << 12.0F;
    QTest::newRow("infinitely left") << 12.0F << -INFINITE << 0.0F;
    QTest::newRow("not a number") << 12.0F << NOT_A_NUMBER << 0.0F;
    QTest::newRow("truss without length") << 0.0F << 3.0F << 0.0F;
    QTest::newRow("truss of negative length") << -5.0F << 3.0F << 0.0F;
    QTest::newRow("huge truss") << 1e9F << 2e9F << 1e9F;
}

void PlacingTest::position_isClampedToTheTruss()
{
    QFETCH(float, length);
    QFETCH(float, x);
    QFETCH(float, placed);
    LoadLogic::TrussLength = length;
    QCOMPARE(LoadLogic::ClampToTruss(x), placed);
    LoadLogic::AddMotor(x);
    QCOMPARE(LoadLogic::MotorList.constLast().positionX, placed);
    LoadLogic::AddLoad(x);
    QCOMPARE(LoadLogic::ActiveLoads.constLast().positionX, placed);
    LoadLogic::AddLoad(1.0F, x, u"Audio"_s, u"PA"_s, -1, 0.0F, 0.0F, 0.0F, 0.0F, 7.0F);
    QCOMPARE(LoadLogic::ActiveLoads.constLast().positionX, placed);
}

void PlacingTest::addedMotor_hasTheUsualValuesAndIsCalculated()
{
    LoadLogic::AddMotor(5.0F);
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    const Motor& motor = LoadLogic::MotorList.constFirst();
    QCOMPARE(motor.id, 1);
    QCOMPARE(motor.modelName, u"Motor"_s);
    QCOMPARE(motor.positionX, 5.0F);
    QCOMPARE(motor.capacity, 1000.0F);
    QCOMPARE(motor.selfWeight, 50.0F);
    QCOMPARE(motor.staticLoad, 100.8F); // the whole truss: 12 · 8.4
    QCOMPARE(motor.totalLoad, 150.8F);
    QVERIFY(LoadLogic::isUnstable);
}

void PlacingTest::addedMotors_standLeftToRight()
{
    for (const float x : {8.0F, 2.0F, 5.0F})
        LoadLogic::AddMotor(x);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
    QCOMPARE(LoadLogic::MotorList.at(0).id, 2);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 5.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).id, 3);
    QCOMPARE(LoadLogic::MotorList.at(2).positionX, 8.0F);
    QCOMPARE(LoadLogic::MotorList.at(2).id, 1);
}

void PlacingTest::motorId_followsTheLargest_data()
{
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<int>("next");
    QTest::newRow("no motors") << QList<int>{} << 1;
    QTest::newRow("gaps") << QList<int>{1, 2, 5} << 6;
    QTest::newRow("unordered") << QList<int>{5, 1, 2} << 6;
    QTest::newRow("negative only") << QList<int>{-7, -3} << 1;
    QTest::newRow("repeated") << QList<int>{4, 4} << 5;
    QTest::newRow("last but one integer")
        << QList<int>{std::numeric_limits<int>::max() - 1} << std::numeric_limits<int>::max();
}

void PlacingTest::motorId_followsTheLargest()
{
    QFETCH(QList<int>, ids);
    setMotorIds(ids);
    QTEST(idOfNextMotor(), "next");
}

void PlacingTest::motorIdAfterTheLargestInteger_isTheSmallestFree()
{
    setMotorIds({std::numeric_limits<int>::max(), 1, 3});
    QCOMPARE(idOfNextMotor(), 2);
    QCOMPARE(idOfNextMotor(), 4);
    setMotorIds({std::numeric_limits<int>::max(), 2});
    QCOMPARE(idOfNextMotor(), 1);
}

void PlacingTest::standardLoad_hasTheUsualValues()
{
    const int id = LoadLogic::NextLoadId;
    LoadLogic::AddLoad(2.0F);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    const ActiveLoad& load = LoadLogic::ActiveLoads.constFirst();
    QCOMPARE(load.id, id);
    QCOMPARE(LoadLogic::NextLoadId, id + 1);
    QCOMPARE(load.mass, 500.0F);
    QCOMPARE(load.positionX, 2.0F);
    QCOMPARE(load.type, u"Standard"_s);
    QCOMPARE(load.name, u"Carga"_s);
    QCOMPARE(load.groupId, -1);
    QCOMPARE(load.screenWidth, 0.0F);
    QCOMPARE(load.screenHeight, 0.0F);
    QCOMPARE(load.screenWeightM2, 0.0F);
    QCOMPARE(load.bumperWeightPerMeter, 0.0F);
    QCOMPARE(load.cableWeightPercent, 7.0F);
}

void PlacingTest::fullLoad_hasTheValuesGiven()
{
    const int id = LoadLogic::NextLoadId;
    LoadLogic::AddLoad(69.55F, 4.25F, u"Video_Segment"_s, u"LED 1 Seg 1"_s, 103, 4.0F, 3.0F, 40.0F, 10.0F,
                       5.0F);
    const ActiveLoad& load = LoadLogic::ActiveLoads.constFirst();
    QCOMPARE(load.id, id);
    QCOMPARE(load.mass, 69.55F);
    QCOMPARE(load.positionX, 4.25F);
    QCOMPARE(load.type, u"Video_Segment"_s);
    QCOMPARE(load.name, u"LED 1 Seg 1"_s);
    QCOMPARE(load.groupId, 103);
    QCOMPARE(load.screenWidth, 4.0F);
    QCOMPARE(load.screenHeight, 3.0F);
    QCOMPARE(load.screenWeightM2, 40.0F);
    QCOMPARE(load.bumperWeightPerMeter, 10.0F);
    QCOMPARE(load.cableWeightPercent, 5.0F);
}

void PlacingTest::addedLoads_standInOrderOfCreation()
{
    for (const float x : {8.0F, 2.0F, 5.0F})
        LoadLogic::AddLoad(x);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 8.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).positionX, 2.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(2).positionX, 5.0F);
}

void PlacingTest::addedLoad_isCalculatedAtOnce()
{
    LoadLogic::AddMotor(5.0F);
    LoadLogic::AddLoad(1.0F);
    QCOMPARE(LoadLogic::MotorList.constFirst().staticLoad, 600.8F); // 12 · 8.4 + 500
    LoadLogic::AddLoad(20.0F, 1.0F, u"Audio"_s, u"PA"_s, -1, 0.0F, 0.0F, 0.0F, 0.0F, 7.0F);
    QCOMPARE(LoadLogic::MotorList.constFirst().staticLoad, 620.8F);
}

void PlacingTest::placedLoad_isNotCalculated()
{
    LoadLogic::AddMotor(5.0F);
    ActiveLoad load;
    load.id = -4; // is replaced
    load.positionX = 99.0F;
    const int expected = LoadLogic::NextLoadId;
    QCOMPARE(LoadLogic::PlaceLoad(load), expected);
    QCOMPARE(LoadLogic::NextLoadId, expected + 1);
    QCOMPARE(LoadLogic::ActiveLoads.constLast().id, expected);
    QCOMPARE(LoadLogic::ActiveLoads.constLast().positionX, 12.0F);
    QCOMPARE(LoadLogic::MotorList.constFirst().staticLoad, 100.8F);
}

void PlacingTest::loadIds_growOverAllProjects()
{
    LoadLogic::AddLoad(1.0F);
    LoadLogic::AddLoad(2.0F);
    const int last = LoadLogic::ActiveLoads.constLast().id;
    LoadLogic::MakeCurrent({}); // another project
    LoadLogic::AddLoad(1.0F);
    QCOMPARE(LoadLogic::ActiveLoads.constFirst().id, last + 1);
}

void PlacingTest::screenWeight_hasNoCableAllowance()
{
    LoadLogic::CalcularPesoLED();
    QCOMPARE(LoadLogic::LED_TotalWeight, 520.0F); // 4 · 10 + 3 · 4 · 40

    LoadLogic::Screen_Width = 5.0F;
    LoadLogic::Screen_Height = 2.0F;
    LoadLogic::Screen_Weight_M2 = 30.0F;
    LoadLogic::Bumper_Weight_Per_Meter = 7.0F;
    LoadLogic::CalcularPesoLED();
    QCOMPARE(LoadLogic::LED_TotalWeight, 335.0F); // 5 · 7 + 2 · 5 · 30
}

void PlacingTest::coordinate_isRelativeToTheCentre_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("x");
    QTest::addColumn<QString>("text");
    QTest::newRow("centre") << 12.0F << 6.0F << u"0.00m"_s;
    QTest::newRow("right") << 12.0F << 7.5F << u"+1.50m"_s;
    QTest::newRow("left") << 12.0F << 2.75F << u"-3.25m"_s;
    QTest::newRow("left end") << 12.0F << 0.0F << u"-6.00m"_s;
    QTest::newRow("right end") << 12.0F << 12.0F << u"+6.00m"_s;
    QTest::newRow("a shade right of the centre") << 12.0F << 6.0005F << u"0.00m"_s;
    QTest::newRow("a shade left of the centre") << 12.0F << 5.9995F << u"0.00m"_s;
    QTest::newRow("two millimetres right") << 12.0F << 6.002F << u"+0.00m"_s;
    QTest::newRow("two millimetres left") << 12.0F << 5.998F << u"-0.00m"_s;
    QTest::newRow("one millimetre right of 0") << 0.0F << 0.001F << u"0.00m"_s;
    QTest::newRow("one millimetre left of 0") << 0.0F << -0.001F << u"-0.00m"_s;
    QTest::newRow("odd length") << 9.0F << 4.0F << u"-0.50m"_s;
    QTest::newRow("no group separators") << 0.0F << 123456.0F << u"+123456.00m"_s;
}

void PlacingTest::coordinate_isRelativeToTheCentre()
{
    QFETCH(float, length);
    QFETCH(float, x);
    LoadLogic::TrussLength = length;
    QTEST(LoadLogic::formatCoordinate(x), "text");
}

QTEST_GUILESS_MAIN(PlacingTest)
#include "tst_placing.moc"
