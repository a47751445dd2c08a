#include "engine/Edits.h"

#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr int LARGEST_ID = std::numeric_limits<int>::max();

ActiveLoad loadAt(float x, int groupId = -1, const QString& type = u"Audio"_s)
{
    ActiveLoad load;
    load.positionX = x;
    load.groupId = groupId;
    load.type = type;
    return load;
}

QList<float> positionsOf(const QList<ActiveLoad>& loads)
{
    QList<float> positions;
    for (const ActiveLoad& load : loads)
        positions += load.positionX;
    return positions;
}

QStringList namesOf(const QList<ActiveLoad>& loads)
{
    QStringList names;
    for (const ActiveLoad& load : loads)
        names += load.name;
    return names;
}

/// Metres of screen that weigh 10 kg each: 5 kg a segment.
LedArray screenOf(float width)
{
    return {width, 1.0F, 8.0F, 2.0F, 0.0F};
}

} // namespace

class EditsTest : public QObject
{
    Q_OBJECT

private slots:
    void freshProject_hangsOnTwoMotorsAtItsEnds();
    void resizedTruss_takesMotorsAndLoadsAlong();
    void resizedTruss_keepsTheSpacingOfAnArray();
    void resizedTruss_holdsLoadsInsideItsEnds();
    void trussThatHadNoLength_leavesPositionsAlone();
    void motorAfterTheLargestId_takesTheSmallestFree();
    void oneLoad_hangsInTheMiddleUnderItsName();
    void severalLoads_areSpreadAndNumbered();
    void loadBesideTheTruss_isHeldAtItsEnd();
    void screen_hangsAsEqualSegments();
    void severalScreens_areArraysOfTheirOwn();
    void removedGroup_takesEverythingOfIt();
    void removedScreen_leavesWhatIsNoScreen();
    void movedGroup_isCompressedAtTheEnd();
    void reservedIds_moveTheCountersPastThem();

private: // a list to hang in
    QList<ActiveLoad> m_loads;
    int m_nextId = 1;
    [[nodiscard]] Edits::LoadList list()
    {
        m_loads.clear();
        m_nextId = 1;
        return {m_loads, 12.0F, m_nextId};
    }
};

void EditsTest::freshProject_hangsOnTwoMotorsAtItsEnds()
{
    const ProjectState project = Edits::freshProject(u"Gira"_s, 25.0F);
    QCOMPARE(project.tabName, u"Gira"_s);
    QCOMPARE(project.motors.size(), 2);
    QCOMPARE(project.motors.at(0).id, 1);
    QCOMPARE(project.motors.at(0).positionX, 0.0F);
    QCOMPARE(project.motors.at(1).id, 2);
    QCOMPARE(project.motors.at(1).positionX, 12.0F);
    for (const Motor& motor : project.motors) {
        QCOMPARE(motor.selfWeight, 25.0F);
        QCOMPARE(motor.capacity, 1000.0F);
    }
    QVERIFY(project.loads.isEmpty());
}

void EditsTest::resizedTruss_takesMotorsAndLoadsAlong()
{
    float length = 12.0F;
    QList<Motor> motors(1);
    motors[0].positionX = 3.0F;
    QList<ActiveLoad> loads{loadAt(4.0F)};
    Edits::resizeTruss(24.0F, length, motors, loads);
    QCOMPARE(length, 24.0F);
    QCOMPARE(motors.at(0).positionX, 6.0F);
    QCOMPARE(loads.at(0).positionX, 8.0F);
}

void EditsTest::resizedTruss_keepsTheSpacingOfAnArray()
{
    float length = 12.0F;
    QList<Motor> motors;
    QList<ActiveLoad> loads{loadAt(2.75F, 100), loadAt(3.25F, 100)};
    Edits::resizeTruss(24.0F, length, motors, loads);
    QCOMPARE(positionsOf(loads), (QList<float>{5.75F, 6.25F})); // about 2 · 3 m
}

void EditsTest::resizedTruss_holdsLoadsInsideItsEnds()
{
    float length = 12.0F;
    QList<Motor> motors;
    QList<ActiveLoad> loads{loadAt(0.0F), loadAt(12.0F)};
    Edits::resizeTruss(6.0F, length, motors, loads);
    QCOMPARE(positionsOf(loads), (QList<float>{0.01F, 5.99F}));
}

void EditsTest::trussThatHadNoLength_leavesPositionsAlone()
{
    for (const float before : {0.0F, -3.0F}) {
        float length = before;
        QList<Motor> motors(1);
        motors[0].positionX = 3.0F;
        QList<ActiveLoad> loads{loadAt(4.0F)};
        Edits::resizeTruss(24.0F, length, motors, loads);
        QCOMPARE(motors.at(0).positionX, 3.0F);
        QCOMPARE(loads.at(0).positionX, 4.0F);
    }
}

void EditsTest::motorAfterTheLargestId_takesTheSmallestFree()
{
    QList<Motor> motors(2);
    motors[0].id = 1;
    motors[1].id = LARGEST_ID;
    Edits::hangMotor(motors, 30.0F, 12.0F);
    QCOMPARE(motors.at(2).id, 2);
    QCOMPARE(motors.at(2).positionX, 12.0F);
}

void EditsTest::oneLoad_hangsInTheMiddleUnderItsName()
{
    ActiveLoad pattern = loadAt(0.0F);
    pattern.name = u"Sub"_s;
    Edits::spreadLoads(list(), pattern, 1);
    QCOMPARE(namesOf(m_loads), QStringList(u"Sub"_s));
    QCOMPARE(positionsOf(m_loads), QList<float>{6.0F});
}

void EditsTest::severalLoads_areSpreadAndNumbered()
{
    ActiveLoad pattern = loadAt(0.0F);
    pattern.name = u"Sub"_s;
    Edits::spreadLoads(list(), pattern, 2);
    QCOMPARE(namesOf(m_loads), (QStringList{u"Sub 1"_s, u"Sub 2"_s}));
    QCOMPARE(positionsOf(m_loads), (QList<float>{4.0F, 8.0F}));
    QCOMPARE(m_loads.at(0).id, 1);
    QCOMPARE(m_loads.at(1).id, 2);
    QCOMPARE(m_nextId, 3);
}

void EditsTest::loadBesideTheTruss_isHeldAtItsEnd()
{
    const Edits::LoadList truss = list();
    Edits::hangLoad(truss, loadAt(-1.0F));
    Edits::hangLoad(truss, loadAt(13.0F));
    QCOMPARE(positionsOf(m_loads), (QList<float>{0.0F, 12.0F}));
}

void EditsTest::screen_hangsAsEqualSegments()
{
    QCOMPARE(Edits::hangScreen(list(), screenOf(2.0F), 6.0F, 100), 1);
    QCOMPARE(positionsOf(m_loads), (QList<float>{5.25F, 5.75F, 6.25F, 6.75F}));
    for (const ActiveLoad& segment : std::as_const(m_loads)) {
        QCOMPARE(segment.mass, 5.0F); // 2 · (1 · 8 + 2) / 4
        QCOMPARE(segment.name, u"LED Segment"_s);
        QCOMPARE(segment.type, u"Video_Segment"_s);
        QCOMPARE(segment.groupId, 100);
        QCOMPARE(segment.screenWidth, 2.0F);
        QCOMPARE(segment.screenHeight, 1.0F);
        QCOMPARE(segment.screenWeightM2, 8.0F);
        QCOMPARE(segment.bumperWeightPerMeter, 2.0F);
        QCOMPARE(segment.cableWeightPercent, 0.0F);
    }
}

void EditsTest::severalScreens_areArraysOfTheirOwn()
{
    int nextGroupId = 100;
    Edits::spreadScreens(list(), screenOf(1.0F), 2, nextGroupId);
    QCOMPARE(nextGroupId, 102);
    QCOMPARE(namesOf(m_loads),
             (QStringList{u"LED 1 Seg 1"_s, u"LED 1 Seg 2"_s, u"LED 2 Seg 1"_s, u"LED 2 Seg 2"_s}));
    QCOMPARE(positionsOf(m_loads), (QList<float>{3.75F, 4.25F, 7.75F, 8.25F})); // about 4 m and 8 m
    QCOMPARE(m_loads.at(1).groupId, 100);
    QCOMPARE(m_loads.at(2).groupId, 101);
}

void EditsTest::removedGroup_takesEverythingOfIt()
{
    QList<ActiveLoad> loads{loadAt(1.0F, 100, u"Video"_s), loadAt(2.0F, 100), loadAt(3.0F, 101),
                            loadAt(4.0F)};
    Edits::removeGroup(loads, 100);
    QCOMPARE(positionsOf(loads), (QList<float>{3.0F, 4.0F}));
}

void EditsTest::removedScreen_leavesWhatIsNoScreen()
{
    QList<ActiveLoad> loads{loadAt(1.0F, 100, u"Video"_s), loadAt(2.0F, 100), loadAt(3.0F, 101, u"Video"_s)};
    Edits::removeScreen(loads, 100);
    QCOMPARE(positionsOf(loads), (QList<float>{2.0F, 3.0F}));
}

void EditsTest::movedGroup_isCompressedAtTheEnd()
{
    QList<ActiveLoad> loads{loadAt(10.0F, 100), loadAt(11.0F, 100, u"Video"_s), loadAt(5.0F)};
    Edits::moveGroup(loads, 100, 1.5F, 12.0F);
    QCOMPARE(positionsOf(loads), (QList<float>{11.5F, 12.0F, 5.0F}));
    Edits::moveGroup(loads, 100, -1.5F, 12.0F);
    QCOMPARE(positionsOf(loads), (QList<float>{10.0F, 10.5F, 5.0F}));
}

void EditsTest::reservedIds_moveTheCountersPastThem()
{
    ProjectState project;
    project.loads = {loadAt(1.0F, 107), loadAt(2.0F, LARGEST_ID)};
    project.loads[0].id = 41;
    project.loads[1].id = LARGEST_ID / 2 + 1;
    int nextLoadId = 5;
    int nextGroupId = 200;
    Edits::reserveIds(project, nextLoadId, nextGroupId);
    QCOMPARE(nextLoadId, 42);
    QCOMPARE(nextGroupId, 200);
}

QTEST_GUILESS_MAIN(EditsTest)
#include "tst_edits.moc"
