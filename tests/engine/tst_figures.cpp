#include "engine/Figures.h"
#include "engine/LoadLogic.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

using Verdict = Figures::Verdict;
using ProjectState = LoadLogic::ProjectState;

namespace
{

LoadLogic::Motor motorAt(float position, float capacity = 1000.0F, float selfWeight = 50.0F)
{
    static int nextId = 1;
    LoadLogic::Motor motor;
    motor.id = nextId++;
    motor.positionX = position;
    motor.capacity = capacity;
    motor.selfWeight = selfWeight;
    return motor;
}

LoadLogic::ActiveLoad loadAt(float position, float mass, int groupId = -1, const QString& type = u"Audio"_s)
{
    LoadLogic::ActiveLoad load;
    load.id = 5;
    load.positionX = position;
    load.mass = mass;
    load.groupId = groupId;
    load.type = type;
    return load;
}

/// A truss of 12 m without weight under two motors at its ends; the load at the left end hangs on
/// the first of them alone.
ProjectState trussWithLoadOnFirstMotor(float mass, float capacity, float selfWeight)
{
    ProjectState project;
    project.trussSelfWeight = 0.0F;
    project.motors = {motorAt(0.0F, capacity, selfWeight), motorAt(12.0F)};
    project.loads = {loadAt(0.0F, mass)};
    return project;
}

Verdict verdictOfFirst(float mass, float capacity, float selfWeight)
{
    return Figures::of(trussWithLoadOnFirstMotor(mass, capacity, selfWeight)).motors.at(0).verdict;
}

} // namespace

class FiguresTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void motor_carriesItsOwnWeightInTheStaticLoad();
    void dynamicLoadEqualToCapacity_fits();
    void loadEqualToCapacity_isNoStaticOverload();
    void staticTest_leavesOutTheOwnWeight();
    void staticOverload_comesBeforeTheDynamicOne();
    void titles_replaceEmptyNames();
    void arrays_areNumberedByAscendingGroup();
    void array_takesDimensionsOfItsFirstSegment();
    void typeWords_countWithoutRegardToCase_data();
    void typeWords_countWithoutRegardToCase();
    void untypedSegments_haveNoArray();
    void stressOfExactlyHundred_isOverstressed();
    void stressJustBelowHundred_isFine();
    void unstable_doesNotFitThoughAllMotorsDo();
    void overloadedMotor_doesNotFitThoughTheTrussDoes();
    void noMotors_fits();
    void figuresOfNothing_areZero();
    void twoMotorsAtOnePlaceUnderALoad_areNotCalculable();
    void stressThatIsNoNumber_isOverstressed();
    void calculate_givesTheEngineBack();
    void positions_areRelativeToTheProjectsOwnCentre();
};

void FiguresTest::init()
{
    LoadLogic::MakeCurrent(ProjectState());
    LoadLogic::CalcularReacciones();
}

void FiguresTest::motor_carriesItsOwnWeightInTheStaticLoad()
{
    const Figures figures = Figures::of(trussWithLoadOnFirstMotor(780.0F, 1000.0F, 50.0F));
    const Figures::MotorFigures& motor = figures.motors.at(0);
    QCOMPARE(motor.atPoint, 780.0F);
    QCOMPARE(motor.staticLoad, 830.0F);
    QCOMPARE(motor.dynamicLoad, 1037.5F);
    QCOMPARE(motor.verdict, Verdict::DynamicOverload);
}

void FiguresTest::dynamicLoadEqualToCapacity_fits()
{
    QCOMPARE(verdictOfFirst(750.0F, 1000.0F, 50.0F), Verdict::Fits); // 800 · 1.25 = 1000
    QCOMPARE(verdictOfFirst(750.1F, 1000.0F, 50.0F), Verdict::DynamicOverload);
}

void FiguresTest::loadEqualToCapacity_isNoStaticOverload()
{
    // Only a motor lighter than nothing keeps the dynamic load below: −200 kg · 1.25.
    QCOMPARE(verdictOfFirst(1000.0F, 1000.0F, -200.0F), Verdict::Fits);
    QCOMPARE(verdictOfFirst(1000.0F, 1000.0F, 50.0F), Verdict::DynamicOverload);
}

void FiguresTest::staticTest_leavesOutTheOwnWeight()
{
    QCOMPARE(verdictOfFirst(999.0F, 1000.0F, 500.0F), Verdict::DynamicOverload); // 1499 with it
}

void FiguresTest::staticOverload_comesBeforeTheDynamicOne()
{
    QCOMPARE(verdictOfFirst(1000.5F, 1000.0F, 50.0F), Verdict::StaticOverload);
    QCOMPARE(Figures::verdictText(Verdict::StaticOverload), u"EXCESO ESTÁTICO ❌"_s);
    QCOMPARE(Figures::verdictText(Verdict::DynamicOverload), u"EXCESO DINÁMICO ❌"_s);
    QCOMPARE(Figures::verdictText(Verdict::Fits), u"OK ✅"_s);
}

void FiguresTest::titles_replaceEmptyNames()
{
    ProjectState project = trussWithLoadOnFirstMotor(10.0F, 1000.0F, 50.0F);
    project.motors[0].id = 31;
    project.motors[0].modelName.clear();
    project.loads[0].id = 77;
    project.loads[0].name.clear();
    project.tabName = u"Título"_s;
    const Figures figures = Figures::of(project);
    QCOMPARE(figures.title, u"Título"_s);
    QCOMPARE(figures.motors.at(0).title, u"M31"_s);
    QCOMPARE(figures.motors.at(1).title, u"Motor"_s);
    QCOMPARE(figures.loads.at(0).title, u"Carga 77"_s);
}

void FiguresTest::arrays_areNumberedByAscendingGroup()
{
    ProjectState project;
    project.motors = {motorAt(0.0F), motorAt(12.0F)};
    project.loads = {loadAt(1.0F, 10.0F, 205, u"Video_Segment"_s), loadAt(2.0F, 20.0F, 0, u"Video"_s),
                     loadAt(3.0F, 30.0F, 205, u"Video_Segment"_s), loadAt(4.0F, 40.0F)};
    const Figures figures = Figures::of(project);
    QCOMPARE(figures.arrays.size(), 2);
    QCOMPARE(figures.arrays.at(0).number, 1);
    QCOMPARE(figures.arrays.at(0).totalMass, 20.0F);
    QCOMPARE(figures.arrays.at(1).number, 2);
    QCOMPARE(figures.arrays.at(1).totalMass, 40.0F);
    QCOMPARE(figures.loads.at(0).arrayNumber, 2);
    QCOMPARE(figures.loads.at(1).arrayNumber, 1);
    QVERIFY(figures.loads.at(1).isSegment);
    QVERIFY(!figures.loads.at(3).isSegment);
}

void FiguresTest::array_takesDimensionsOfItsFirstSegment()
{
    ProjectState project;
    LoadLogic::ActiveLoad first = loadAt(1.0F, 10.0F, 100, u"Video_Segment"_s);
    first.screenWidth = 4.0F;
    first.screenHeight = 3.0F;
    first.screenWeightM2 = 40.0F;
    first.bumperWeightPerMeter = 10.0F;
    first.cableWeightPercent = 8.0F;
    LoadLogic::ActiveLoad second = loadAt(2.0F, 10.0F, 100, u"Video_Segment"_s);
    second.screenWidth = 99.0F;
    project.loads = {first, second};
    const Figures::ArrayFigures array = Figures::of(project).arrays.at(0);
    QCOMPARE(array.width, 4.0F);
    QCOMPARE(array.height, 3.0F);
    QCOMPARE(array.weightM2, 40.0F);
    QCOMPARE(array.bumperWeightPerMeter, 10.0F);
    QCOMPARE(array.cableWeightPercent, 8.0F);
    QCOMPARE(array.totalMass, 20.0F);
}

void FiguresTest::typeWords_countWithoutRegardToCase_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("groupId");
    QTest::addColumn<bool>("counts");
    QTest::newRow("segment") << u"Video_Segment"_s << 100 << true;
    QTest::newRow("lower case") << u"mi video"_s << 100 << true;
    QTest::newRow("led") << u"Muro led"_s << 100 << true;
    QTest::newRow("LED in group 0") << u"LED"_s << 0 << true;
    QTest::newRow("no group") << u"Video_Segment"_s << -1 << false;
    QTest::newRow("another word") << u"Audio"_s << 100 << false;
    QTest::newRow("no word") << QString() << 100 << false;
}

void FiguresTest::typeWords_countWithoutRegardToCase()
{
    QFETCH(const QString, type);
    QFETCH(const int, groupId);
    QFETCH(const bool, counts);
    ProjectState project;
    project.loads = {loadAt(1.0F, 10.0F, groupId, type)};
    QCOMPARE(!Figures::of(project).arrays.isEmpty(), counts);
}

void FiguresTest::untypedSegments_haveNoArray()
{
    ProjectState project;
    project.loads = {loadAt(1.0F, 10.0F, 100, QString())};
    const Figures figures = Figures::of(project);
    QVERIFY(figures.arrays.isEmpty());
    QVERIFY(figures.loads.at(0).isSegment);
    QCOMPARE(figures.loads.at(0).arrayNumber, 0);
}

void FiguresTest::stressOfExactlyHundred_isOverstressed()
{
    // Without own weight the central load that equals the CPL makes exactly the moment of the CPL.
    ProjectState project;
    project.trussSelfWeight = 0.0F;
    project.motors = {motorAt(0.0F, 1e6F), motorAt(12.0F, 1e6F)};
    project.loads = {loadAt(6.0F, 1600.0F)};
    const Figures figures = Figures::of(project);
    QCOMPARE(figures.stress, 100.0F);
    QVERIFY(figures.isOverstressed());
    QVERIFY(figures.isTrussOverloaded());
    QVERIFY(figures.areMotorsFit());
    QVERIFY(!figures.fits());
}

void FiguresTest::stressJustBelowHundred_isFine()
{
    ProjectState project;
    project.trussSelfWeight = 0.0F;
    project.motors = {motorAt(0.0F, 1e6F), motorAt(12.0F, 1e6F)};
    project.loads = {loadAt(6.0F, 1599.0F)};
    QVERIFY(Figures::of(project).fits());
}

void FiguresTest::unstable_doesNotFitThoughAllMotorsDo()
{
    ProjectState project;
    project.motors = {motorAt(6.0F)};
    const Figures figures = Figures::of(project);
    QVERIFY(figures.areMotorsFit());
    QVERIFY(figures.isUnstable);
    QVERIFY(!figures.isOverstressed());
    QVERIFY(figures.isTrussOverloaded());
    QVERIFY(!figures.fits());
}

void FiguresTest::overloadedMotor_doesNotFitThoughTheTrussDoes()
{
    const Figures figures = Figures::of(trussWithLoadOnFirstMotor(2000.0F, 1000.0F, 50.0F));
    QVERIFY(!figures.isTrussOverloaded());
    QVERIFY(!figures.areMotorsFit());
    QVERIFY(!figures.fits());
}

void FiguresTest::noMotors_fits()
{
    const Figures figures = Figures::of(ProjectState());
    QVERIFY(figures.motors.isEmpty());
    QVERIFY(figures.fits());
    QVERIFY(figures.isCalculable());
}

void FiguresTest::twoMotorsAtOnePlaceUnderALoad_areNotCalculable()
{
    ProjectState project;
    project.motors = {motorAt(0.0F), motorAt(6.0F), motorAt(6.0F), motorAt(12.0F)};
    project.loads = {loadAt(6.0F, 100.0F)};
    const Figures figures = Figures::of(project);
    QVERIFY(std::isnan(figures.motors.at(1).atPoint));
    QCOMPARE(figures.motors.at(1).verdict, Verdict::Fits); // no comparison with it is true
    QVERIFY(!figures.isCalculable());
}

void FiguresTest::stressThatIsNoNumber_isOverstressed()
{
    Figures figures;
    figures.stress = std::numeric_limits<float>::quiet_NaN();
    QVERIFY(!figures.fits());
}

void FiguresTest::calculate_givesTheEngineBack()
{
    LoadLogic::TrussLength = 20.0F;
    LoadLogic::AddMotor(5.0F);
    LoadLogic::AddMotor(15.0F);
    LoadLogic::AddLoad(7.0F);
    const float stress = LoadLogic::TrussStress_Percentage;
    const float carried = LoadLogic::MotorList.at(0).staticLoad;

    ProjectState other;
    other.motors = {motorAt(3.0F)};
    QVERIFY(Figures::of(other).isUnstable);

    QCOMPARE(LoadLogic::TrussLength, 20.0F);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, carried);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(LoadLogic::TrussStress_Percentage, stress);
    QVERIFY(!LoadLogic::isUnstable);
}

void FiguresTest::positions_areRelativeToTheProjectsOwnCentre()
{
    LoadLogic::TrussLength = 100.0F;
    ProjectState project;
    project.trussLength = 8.0F;
    project.motors = {motorAt(1.0F), motorAt(7.0F)};
    project.loads = {loadAt(4.0F, 5.0F)};
    const Figures figures = Figures::of(project);
    QCOMPARE(figures.motors.at(0).position, u"-3.00m"_s);
    QCOMPARE(figures.motors.at(1).position, u"+3.00m"_s);
    QCOMPARE(figures.loads.at(0).position, u"0.00m"_s);
    QCOMPARE(figures.motors.at(0).fromCentre, -3.0F);
    QCOMPARE(figures.motors.at(1).fromCentre, 3.0F);
    QCOMPARE(figures.loads.at(0).fromCentre, 0.0F);
}

void FiguresTest::figuresOfNothing_areZero()
{
    const Figures project;
    QCOMPARE(project.trussLength, 0.0F);
    QCOMPARE(project.trussSelfWeight, 0.0F);
    QCOMPARE(project.limitCPL, 0.0F);
    QCOMPARE(project.stress, 0.0F);
    QVERIFY(!project.isUnstable);

    const Figures::MotorFigures motor;
    QCOMPARE(motor.capacity, 0.0F);
    QCOMPARE(motor.selfWeight, 0.0F);
    QCOMPARE(motor.atPoint, 0.0F);
    QCOMPARE(motor.staticLoad, 0.0F);
    QCOMPARE(motor.dynamicLoad, 0.0F);

    const Figures::ArrayFigures array;
    QCOMPARE(array.number, 0);
    QCOMPARE(array.width, 0.0F);
    QCOMPARE(array.height, 0.0F);
    QCOMPARE(array.weightM2, 0.0F);
    QCOMPARE(array.bumperWeightPerMeter, 0.0F);
    QCOMPARE(array.cableWeightPercent, 0.0F);
    QCOMPARE(array.totalMass, 0.0F);

    const Figures::LoadFigures load;
    QCOMPARE(load.mass, 0.0F);
    QVERIFY(!load.isSegment);
    QCOMPARE(load.arrayNumber, 0);
}

QTEST_GUILESS_MAIN(FiguresTest)
#include "tst_figures.moc"
