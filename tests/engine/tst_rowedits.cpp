#include "engine/RowEdits.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr float LENGTH = 12.0F;                                     // [m]
const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN(); // [m]
const float ENDLESS = std::numeric_limits<float>::infinity();       // [m]

ActiveLoad load(int id, float x, int groupId = -1)
{
    ActiveLoad made;
    made.id = id;
    made.positionX = x;
    made.groupId = groupId;
    made.name = u'c' + QString::number(id);
    made.type = groupId == -1 ? u"Audio"_s : u"Video_Segment"_s;
    return made;
}

Motor motor(int id, float x)
{
    Motor made;
    made.id = id;
    made.positionX = x;
    made.modelName = u"Cadena "_s + QString::number(id);
    made.capacity = 500.0F;
    made.selfWeight = 22.0F;
    return made;
}

template <class Record>
QList<float> positionsOf(const QList<Record>& records)
{
    QList<float> positions;
    for (const Record& record : records)
        positions += record.positionX;
    return positions;
}

template <class Record>
QList<int> idsOf(const QList<Record>& records)
{
    QList<int> ids;
    for (const Record& record : records)
        ids += record.id;
    return ids;
}

} // namespace

class RowEditsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // A load, a screen of three segments, and two loads that share an id.
        m_loads = {load(1, 2.0F),      load(2, 7.0F, 100), load(3, 7.5F, 100),
                   load(4, 8.0F, 100), load(9, 1.0F),      load(9, 11.0F)};
        m_nextId = 20;
        m_nextGroupId = 200;
    }

    void repeatedIds_areToldApart();
    void removedLoads_areThoseOfTheKeys();
    void removedSegment_takesItsArray();
    void removedMotors_areThoseOfTheKeys();
    void nothingToRemove_isNoChange();
    void mirroredLoads_hangOnTheOtherSide();
    void mirroredSegment_takesItsArray();
    void mirroredMotors_hangOnTheOtherSide();
    void whatHangsInTheMiddle_isNoChange();
    void positionsThatAreNotFinite_stay();
    void mirroredFromBesideTheTruss_isOnIt();
    void duplicatedLoads_hangBesideThem();
    void duplicatedArray_isAnArrayOfItsOwn();
    void duplicatedMotors_hangBesideThem();
    void duplicateWithoutRoom_hangsInThePlace();

private:
    [[nodiscard]] Edits::LoadList list(float length = LENGTH)
    {
        return {m_loads, length, m_nextId};
    }

    QList<ActiveLoad> m_loads;
    int m_nextId = 0;
    int m_nextGroupId = 0;
};

void RowEditsTest::repeatedIds_areToldApart()
{
    const QList<RowKey> keys = RowEdits::keysOf(m_loads);
    QCOMPARE(keys.at(4), (RowKey{9, 0}));
    QCOMPARE(keys.at(5), (RowKey{9, 1}));
    for (qsizetype place = 0; place < keys.size(); ++place)
        QCOMPARE(RowEdits::placeOf(m_loads, keys.at(place)), place);
    QCOMPARE(RowEdits::placeOf(m_loads, {9, 2}), -1);
    QCOMPARE(RowEdits::placeOf(m_loads, {5, 0}), -1);
}

void RowEditsTest::removedLoads_areThoseOfTheKeys()
{
    QVERIFY(RowEdits::removeLoads(m_loads, {{1, 0}, {9, 1}}));
    QCOMPARE(idsOf(m_loads), QList<int>({2, 3, 4, 9}));
    QCOMPARE(m_loads.constLast().positionX, 1.0F);
}

void RowEditsTest::removedSegment_takesItsArray()
{
    QVERIFY(RowEdits::removeLoads(m_loads, {{3, 0}}));
    QCOMPARE(idsOf(m_loads), QList<int>({1, 9, 9}));
}

void RowEditsTest::removedMotors_areThoseOfTheKeys()
{
    QList<Motor> motors{motor(1, 0.0F), motor(1, 6.0F), motor(2, 12.0F)};
    QVERIFY(RowEdits::removeMotors(motors, {{1, 1}}));
    QCOMPARE(positionsOf(motors), QList<float>({0.0F, 12.0F}));
}

void RowEditsTest::nothingToRemove_isNoChange()
{
    QVERIFY(!RowEdits::removeLoads(m_loads, {{77, 0}}));
    QVERIFY(!RowEdits::removeLoads(m_loads, {}));
    QCOMPARE(m_loads.size(), 6);
}

void RowEditsTest::mirroredLoads_hangOnTheOtherSide()
{
    QVERIFY(RowEdits::mirrorLoads(m_loads, {{1, 0}, {9, 0}}, LENGTH));
    // 12 - 2 and 12 - 1
    QCOMPARE(positionsOf(m_loads), QList<float>({10.0F, 7.0F, 7.5F, 8.0F, 11.0F, 11.0F}));
}

void RowEditsTest::mirroredSegment_takesItsArray()
{
    QVERIFY(RowEdits::mirrorLoads(m_loads, {{2, 0}}, LENGTH));
    QCOMPARE(positionsOf(m_loads), QList<float>({2.0F, 5.0F, 4.5F, 4.0F, 1.0F, 11.0F}));
}

void RowEditsTest::mirroredMotors_hangOnTheOtherSide()
{
    QList<Motor> motors{motor(1, 1.0F), motor(2, 5.0F)};
    QVERIFY(RowEdits::mirrorMotors(motors, {{2, 0}}, LENGTH));
    QCOMPARE(positionsOf(motors), QList<float>({1.0F, 7.0F}));
}

void RowEditsTest::whatHangsInTheMiddle_isNoChange()
{
    m_loads = {load(1, 6.0F)};
    QVERIFY(!RowEdits::mirrorLoads(m_loads, {{1, 0}}, LENGTH));
}

void RowEditsTest::positionsThatAreNotFinite_stay()
{
    m_loads = {load(1, NOT_A_NUMBER), load(2, ENDLESS), load(3, 1.0F)};
    QVERIFY(!RowEdits::mirrorLoads(m_loads, {{1, 0}, {2, 0}}, LENGTH));
    QVERIFY(RowEdits::mirrorLoads(m_loads, {{1, 0}, {2, 0}, {3, 0}}, LENGTH));
    QVERIFY(std::isnan(m_loads.at(0).positionX));
    QCOMPARE(m_loads.at(1).positionX, ENDLESS);
    QCOMPARE(m_loads.at(2).positionX, 11.0F);
    QVERIFY(RowEdits::duplicateLoads(list(), {{1, 0}, {2, 0}}, m_nextGroupId));
    QCOMPARE(m_loads.at(3).positionX, 0.0F);
    QCOMPARE(m_loads.at(4).positionX, LENGTH);
}

void RowEditsTest::mirroredFromBesideTheTruss_isOnIt()
{
    m_loads = {load(1, 13.0F)};
    QVERIFY(RowEdits::mirrorLoads(m_loads, {{1, 0}}, LENGTH));
    QCOMPARE(m_loads.at(0).positionX, 0.0F);
}

void RowEditsTest::duplicatedLoads_hangBesideThem()
{
    QVERIFY(RowEdits::duplicateLoads(list(), {{1, 0}, {9, 1}}, m_nextGroupId));
    QCOMPARE(idsOf(m_loads.mid(6)), QList<int>({20, 21}));
    QCOMPARE(positionsOf(m_loads.mid(6)), QList<float>({2.5F, 11.5F}));
    QCOMPARE(m_loads.at(6).name, u"c1"_s);
    QCOMPARE(m_loads.at(6).groupId, -1);
    m_loads[0].positionX = 11.75F; // 11.75 + 0.5 > 12
    QVERIFY(RowEdits::duplicateLoads(list(), {{1, 0}}, m_nextGroupId));
    QCOMPARE(m_loads.constLast().positionX, 11.25F);
    QCOMPARE(m_nextGroupId, 200);
}

void RowEditsTest::duplicatedArray_isAnArrayOfItsOwn()
{
    QVERIFY(RowEdits::duplicateLoads(list(), {{4, 0}}, m_nextGroupId));
    QCOMPARE(positionsOf(m_loads.mid(6)), QList<float>({7.5F, 8.0F, 8.5F}));
    for (const ActiveLoad& copy : m_loads.mid(6))
        QCOMPARE(copy.groupId, 200);
    QCOMPARE(m_nextGroupId, 201);
    // The rightmost segment has no room on its right, so that all of them go to the left.
    QVERIFY(RowEdits::duplicateLoads(list(8.25F), {{4, 0}}, m_nextGroupId));
    QCOMPARE(positionsOf(m_loads.mid(9)), QList<float>({6.5F, 7.0F, 7.5F}));
    QCOMPARE(m_loads.constLast().groupId, 201);
}

void RowEditsTest::duplicatedMotors_hangBesideThem()
{
    QList<Motor> motors{motor(4, 0.0F), motor(7, 12.0F)};
    QVERIFY(RowEdits::duplicateMotors(motors, {{4, 0}, {7, 0}}, LENGTH));
    QCOMPARE(positionsOf(motors), QList<float>({0.0F, 12.0F, 0.5F, 11.5F}));
    QCOMPARE(idsOf(motors), QList<int>({4, 7, 8, 9}));
    QCOMPARE(motors.at(3).modelName, u"Cadena 7"_s);
    QCOMPARE(motors.at(3).capacity, 500.0F);
    QCOMPARE(motors.at(3).selfWeight, 22.0F);
    QVERIFY(!RowEdits::duplicateMotors(motors, {{5, 0}}, LENGTH));
}

void RowEditsTest::duplicateWithoutRoom_hangsInThePlace()
{
    m_loads = {load(1, 0.25F)};
    QVERIFY(RowEdits::duplicateLoads(list(0.5F), {{1, 0}}, m_nextGroupId));
    QCOMPARE(positionsOf(m_loads), QList<float>({0.25F, 0.25F}));
}

QTEST_APPLESS_MAIN(RowEditsTest)
#include "tst_rowedits.moc"
