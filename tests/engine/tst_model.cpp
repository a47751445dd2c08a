#include "engine/LoadLogic.h"
#include "support/Layouts.h"

#include <QTest>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using Motor = LoadLogic::Motor;
using ActiveLoad = LoadLogic::ActiveLoad;
using ProjectState = LoadLogic::ProjectState;

namespace
{

constexpr int LARGEST_ID = std::numeric_limits<int>::max();

Motor motorAt(int id, float x)
{
    Motor motor;
    motor.id = id;
    motor.positionX = x;
    return motor;
}

ProjectState projectWithLoad(int id, int groupId)
{
    ActiveLoad load;
    load.id = id;
    load.groupId = groupId;
    ProjectState state;
    state.loads.append(load);
    return state;
}

} // namespace

class ModelTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void engineAtProgramStart_hasTheUsualProject();
    void dynamicFactor_isAQuarterMore();
    void newMotor_hasTheUsualValues();
    void newLoad_hasTheUsualValues();
    void newProjectState_equalsTheStartOfTheEngine();
    void copiedState_isIndependent();
    void movedState_leavesTheSourceEmpty();
    void loading_takesTrussMotorsAndLoadsOnly();
    void snapshot_holdsTheProjectAndItsResults();
    void reset_isAsAtTheStart();
    void motor_isFoundByIdAndPosition();
    void motorMovedMeanwhile_isFoundById();
    void motorsAlike_areToldApartByTheirIndex();
    void motorNotInTheList_isNotFound();
    void load_isFoundById();
    void idOfNoLoad_findsNothing();
    void motorWithoutName_isCalledByItsId();
    void screens_areTheTwoTypeWordsExactly();
    void idsOfAnOpenedProject_areReserved();
    void smallerIds_doNotLowerTheCounters();
    void hugeIds_areLeftAlone();

private: // what the engine held when the program started
    ProjectState m_start;
    int m_firstLoadId = 0;
    int m_firstGroupId = 0;
};

void ModelTest::initTestCase()
{
    m_firstLoadId = LoadLogic::NextLoadId;
    m_firstGroupId = LoadLogic::NextGroupId;
    m_start.trussLength = LoadLogic::TrussLength;
    m_start.trussSelfWeight = LoadLogic::TrussSelfWeight;
    m_start.limitCPL = LoadLogic::Limit_CPL;
    m_start.screenWidth = LoadLogic::Screen_Width;
    m_start.screenHeight = LoadLogic::Screen_Height;
    m_start.screenWeightM2 = LoadLogic::Screen_Weight_M2;
    m_start.bumperWeightPerMeter = LoadLogic::Bumper_Weight_Per_Meter;
    m_start.ledTotalWeight = LoadLogic::LED_TotalWeight;
    m_start.trussStressPercentage = LoadLogic::TrussStress_Percentage;
    m_start.isUnstable = LoadLogic::isUnstable;
    m_start.motors = LoadLogic::MotorList;
    m_start.loads = LoadLogic::ActiveLoads;
}

void ModelTest::init()
{
    LoadLogic::Reset();
    LoadLogic::NextLoadId = m_firstLoadId;
    LoadLogic::NextGroupId = m_firstGroupId;
}

void ModelTest::engineAtProgramStart_hasTheUsualProject()
{
    QCOMPARE(m_firstLoadId, 1);
    QCOMPARE(m_firstGroupId, 100);
    QCOMPARE(m_start.trussLength, 12.0F);
    QCOMPARE(m_start.trussSelfWeight, 8.4F);
    QCOMPARE(m_start.limitCPL, 1600.0F);
    QCOMPARE(m_start.screenWidth, 4.0F);
    QCOMPARE(m_start.screenHeight, 3.0F);
    QCOMPARE(m_start.screenWeightM2, 40.0F);
    QCOMPARE(m_start.bumperWeightPerMeter, 10.0F);
    QCOMPARE(m_start.ledTotalWeight, 0.0F);
    QCOMPARE(m_start.trussStressPercentage, 0.0F);
    QVERIFY(!m_start.isUnstable);
    QVERIFY(m_start.motors.isEmpty());
    QVERIFY(m_start.loads.isEmpty());
}

void ModelTest::dynamicFactor_isAQuarterMore() {}

void ModelTest::newMotor_hasTheUsualValues()
{
    const Motor motor;
    QCOMPARE(motor.id, 0);
    QCOMPARE(motor.modelName, u"Motor"_s);
    QCOMPARE(motor.positionX, 0.0F);
    QCOMPARE(motor.staticLoad, 0.0F);
    QCOMPARE(motor.totalLoad, 0.0F);
    QCOMPARE(motor.capacity, 1000.0F);
    QCOMPARE(motor.selfWeight, 50.0F);
}

void ModelTest::newLoad_hasTheUsualValues()
{
    const ActiveLoad load;
    QCOMPARE(load.id, 0);
    QCOMPARE(load.mass, 500.0F);
    QCOMPARE(load.positionX, 0.0F);
    QCOMPARE(load.type, u"Standard"_s);
    QCOMPARE(load.name, u"Carga"_s);
    QCOMPARE(load.groupId, -1);
    QCOMPARE(load.screenWidth, 0.0F);
    QCOMPARE(load.screenHeight, 0.0F);
    QCOMPARE(load.screenWeightM2, 0.0F);
    QCOMPARE(load.bumperWeightPerMeter, 0.0F);
    QCOMPARE(load.cableWeightPercent, 7.0F);
}

void ModelTest::newProjectState_equalsTheStartOfTheEngine()
{
    const ProjectState state;
    QCOMPARE(state.tabName, u"Proyecto"_s);
    QCOMPARE(state.trussLength, 12.0F);
    QCOMPARE(state.trussSelfWeight, 8.4F);
    QCOMPARE(state.limitCPL, 1600.0F);
    QCOMPARE(state.screenWidth, 4.0F);
    QCOMPARE(state.screenHeight, 3.0F);
    QCOMPARE(state.screenWeightM2, 40.0F);
    QCOMPARE(state.bumperWeightPerMeter, 10.0F);
    QCOMPARE(state.cableWeightPercent, 7.0F);
    QCOMPARE(state.ledTotalWeight, 0.0F);
    QCOMPARE(state.trussStressPercentage, 0.0F);
    QCOMPARE(state.isUnstable, false);
    QVERIFY(state.motors.isEmpty());
    QVERIFY(state.loads.isEmpty());
    QCOMPARE(state.selectedLoadId, -1);
    QCOMPARE(state.projectCounter, 100);
}

void ModelTest::copiedState_isIndependent()
{
    ProjectState original = projectWithLoad(3, -1);
    original.motors.append(motorAt(1, 2.0F));
    ProjectState copy = original;
    copy.motors[0].positionX = 9.0F;
    copy.loads[0].name = u"Otra"_s;

    QCOMPARE(original.motors.at(0).positionX, 2.0F);
    QCOMPARE(original.loads.at(0).name, u"Carga"_s);
}

void ModelTest::movedState_leavesTheSourceEmpty()
{
    ProjectState original = projectWithLoad(3, -1);
    original.motors.append(motorAt(1, 2.0F));
    const ProjectState moved = std::move(original);

    QCOMPARE(moved.loads.size(), 1);
    QCOMPARE(moved.motors.size(), 1);
    QVERIFY(original.loads.isEmpty()); // NOLINT(bugprone-use-after-move): that is what is tested
    QVERIFY(original.motors.isEmpty());
}

void ModelTest::loading_takesTrussMotorsAndLoadsOnly()
{
    ProjectState state = projectWithLoad(7, -1);
    state.motors.append(motorAt(4, 2.0F));
    state.trussLength = 20.0F;
    state.trussSelfWeight = 5.0F;
    state.limitCPL = 900.0F;
    state.screenWidth = 6.0F;
    state.ledTotalWeight = 123.0F;
    state.trussStressPercentage = 55.0F;
    LoadLogic::MakeCurrent(state);

    QCOMPARE(LoadLogic::TrussLength, 20.0F);
    QCOMPARE(LoadLogic::TrussSelfWeight, 5.0F);
    QCOMPARE(LoadLogic::Limit_CPL, 900.0F);
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    QCOMPARE(LoadLogic::MotorList.at(0).id, 4);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).id, 7);
    // Nothing is calculated, and neither the screen nor the results follow.
    QCOMPARE(LoadLogic::MotorList.at(0).totalLoad, 0.0F);
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
    QCOMPARE(LoadLogic::LED_TotalWeight, 0.0F);
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
}

void ModelTest::snapshot_holdsTheProjectAndItsResults()
{
    LoadLogic::TrussLength = 14.0F;
    LoadLogic::TrussSelfWeight = 6.0F;
    LoadLogic::Limit_CPL = 800.0F;
    LoadLogic::LED_TotalWeight = 77.0F;
    LoadLogic::AddMotor(1.0F);
    LoadLogic::AddMotor(13.0F);
    LoadLogic::AddLoad(5.0F);
    const ProjectState state = LoadLogic::Snapshot();
    LoadLogic::Reset();
    QCOMPARE(state.trussLength, 14.0F);
    QCOMPARE(state.trussSelfWeight, 6.0F);
    QCOMPARE(state.limitCPL, 800.0F);
    QCOMPARE(state.ledTotalWeight, 77.0F);
    QCOMPARE(state.motors.size(), 2);
    QVERIFY(state.motors.at(0).staticLoad > 0.0F);
    QCOMPARE(state.loads.size(), 1);
    QVERIFY(state.trussStressPercentage > 0.0F);
    QVERIFY(!state.isUnstable);
}

void ModelTest::reset_isAsAtTheStart()
{
    LoadLogic::TrussLength = 14.0F;
    LoadLogic::Screen_Width = 1.0F;
    LoadLogic::Screen_Height = 1.0F;
    LoadLogic::Screen_Weight_M2 = 1.0F;
    LoadLogic::Bumper_Weight_Per_Meter = 1.0F;
    LoadLogic::LED_TotalWeight = 77.0F;
    LoadLogic::AddMotor(1.0F);
    LoadLogic::AddLoad(5.0F);
    QVERIFY(LoadLogic::isUnstable);
    LoadLogic::Reset();
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
    QCOMPARE(LoadLogic::Screen_Height, 3.0F);
    QCOMPARE(LoadLogic::Screen_Weight_M2, 40.0F);
    QCOMPARE(LoadLogic::Bumper_Weight_Per_Meter, 10.0F);
    QCOMPARE(LoadLogic::LED_TotalWeight, 0.0F);
    QVERIFY(LoadLogic::MotorList.isEmpty());
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
    QVERIFY(!LoadLogic::isUnstable);
}

void ModelTest::motor_isFoundByIdAndPosition()
{
    const QList<Motor> motors{motorAt(5, 1.0F), motorAt(2, 3.0F), motorAt(5, 8.0F)};
    QCOMPARE((MotorIdentity{5, 1.0F}.indexIn(motors)), 0);
    QCOMPARE((MotorIdentity{2, 3.0F}.indexIn(motors)), 1);
    QCOMPARE((MotorIdentity{5, 8.0F}.indexIn(motors)), 2);
}

void ModelTest::motorMovedMeanwhile_isFoundById()
{
    QList<Motor> motors{motorAt(2, 3.0F), motorAt(5, 1.0F), motorAt(5, 8.0F)};
    QCOMPARE((MotorIdentity{2, 9.0F}.indexIn(motors)), 0);
    QCOMPARE((MotorIdentity{5, 4.0F}.indexIn(motors)), 1); // the first of that id
    motors.removeFirst();
    QCOMPARE((MotorIdentity{5, 4.0F}.indexIn(motors)), 0);
}

void ModelTest::motorsAlike_areToldApartByTheirIndex()
{
    const QList<Motor> motors{motorAt(0, 3.0F), motorAt(0, 3.0F), motorAt(0, 8.0F)};
    QCOMPARE(MotorIdentity::at(motors, 0).indexIn(motors), 0);
    QCOMPARE(MotorIdentity::at(motors, 1).indexIn(motors), 1);
    // The motor at its index is another one now: the first that is like it.
    QCOMPARE((MotorIdentity{0, 3.0F, 2}.indexIn(motors)), 0);
    QCOMPARE((MotorIdentity{0, 3.0F, 3}.indexIn(motors)), 0);
}

void ModelTest::motorNotInTheList_isNotFound()
{
    QCOMPARE((MotorIdentity{1, 0.0F}.indexIn({})), -1);
    QCOMPARE((MotorIdentity{1, 3.0F, 0}.indexIn({motorAt(2, 3.0F)})), -1);
}

void ModelTest::load_isFoundById()
{
    LoadLogic::AddLoad(1.0F);
    LoadLogic::AddLoad(2.0F);
    QCOMPARE(LoadLogic::FindLoad(3), nullptr);
    ActiveLoad* second = LoadLogic::FindLoad(2);
    QVERIFY(second != nullptr);
    QCOMPARE(second->positionX, 2.0F);
    second->mass = 12.0F;
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 12.0F);
}

void ModelTest::idOfNoLoad_findsNothing()
{
    ActiveLoad load;
    load.id = -1; // files may say so
    LoadLogic::ActiveLoads.append(load);
    QCOMPARE(LoadLogic::FindLoad(-1), nullptr);
}

void ModelTest::motorWithoutName_isCalledByItsId()
{
    Motor motor = motorAt(12, 0.0F);
    QCOMPARE(Project::motorTitle(motor), u"Motor"_s);
    motor.modelName = u"Grúa %1 ñ"_s;
    QCOMPARE(Project::motorTitle(motor), u"Grúa %1 ñ"_s);
    motor.modelName.clear();
    QCOMPARE(Project::motorTitle(motor), u"M12"_s);
}

void ModelTest::screens_areTheTwoTypeWordsExactly()
{
    ActiveLoad load;
    for (const QString& type : {u"Video"_s, u"Video_Segment"_s}) {
        load.type = type;
        QVERIFY2(Project::isScreen(load), qPrintable(type));
    }
    for (const QString& type :
         {u""_s, u"video"_s, u"VIDEO_SEGMENT"_s, u"Video_Segments"_s, u"Audio"_s, u"Standard"_s}) {
        load.type = type;
        QVERIFY2(!Project::isScreen(load), qPrintable(type));
    }
}

void ModelTest::idsOfAnOpenedProject_areReserved()
{
    LoadLogic::ReserveIds(projectWithLoad(41, 107));
    QCOMPARE(LoadLogic::NextLoadId, 42);
    QCOMPARE(LoadLogic::NextGroupId, 108);
}

void ModelTest::smallerIds_doNotLowerTheCounters()
{
    LoadLogic::NextLoadId = 50;
    LoadLogic::NextGroupId = 150;
    LoadLogic::ReserveIds(projectWithLoad(41, -1));
    LoadLogic::ReserveIds(projectWithLoad(std::numeric_limits<int>::min(), std::numeric_limits<int>::min()));
    QCOMPARE(LoadLogic::NextLoadId, 50);
    QCOMPARE(LoadLogic::NextGroupId, 150);
}

void ModelTest::hugeIds_areLeftAlone()
{
    LoadLogic::ReserveIds(projectWithLoad(LARGEST_ID, LARGEST_ID));
    LoadLogic::ReserveIds(projectWithLoad(LARGEST_ID / 2 + 1, LARGEST_ID / 2 + 1));
    QCOMPARE(LoadLogic::NextLoadId, 1);
    QCOMPARE(LoadLogic::NextGroupId, 100);

    LoadLogic::ReserveIds(projectWithLoad(LARGEST_ID / 2, LARGEST_ID / 2));
    QCOMPARE(LoadLogic::NextLoadId, LARGEST_ID / 2 + 1);
    QCOMPARE(LoadLogic::NextGroupId, LARGEST_ID / 2 + 1);
}

QTEST_GUILESS_MAIN(ModelTest)
#include "tst_model.moc"
