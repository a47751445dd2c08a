#include "engine/PointLoads.h"
#include "support/Layouts.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

/// Loads at these places; the mass of each tells which one it was.
PointLoads loadsAt(const std::vector<float>& positions)
{
    PointLoads loads;
    for (const float position : positions)
        loads.push_back({position, static_cast<float>(loads.size())});
    return loads;
}

/// The masses in the order that the program sorts these places into.
std::vector<float> orderOf(const std::vector<float>& positions)
{
    PointLoads loads = loadsAt(positions);
    sortByPosition(loads);
    std::vector<float> order;
    for (const PointLoad& load : loads)
        order.push_back(load.mass);
    return order;
}

/// The same by comparing.
std::vector<float> plainOrderOf(const std::vector<float>& positions)
{
    PointLoads loads = loadsAt(positions);
    std::stable_sort(loads.begin(), loads.end(), [](const PointLoad& a, const PointLoad& b) {
        return std::isnan(b.position) ? !std::isnan(a.position) : a.position < b.position;
    });
    std::vector<float> order;
    for (const PointLoad& load : loads)
        order.push_back(load.mass);
    return order;
}

} // namespace

class PointLoadsTest : public QObject
{
    Q_OBJECT

private slots:
    void leftOf_isStrict();
    void notANumber_isLeftOfNothing();
    void loads_areSortedLeftToRight();
    void loadsAtOnePlace_keepTheirOrder();
    void neighbouringFloats_areSorted();
    void negativeInfiniteAndNotANumber_areSorted();
    void randomPlaces_areSortedAsByComparing();
    void gatheredLoads_keepTheirOrder();
};

void PointLoadsTest::leftOf_isStrict()
{
    QVERIFY(isLeftOf(1.0F, 2.0F));
    QVERIFY(!isLeftOf(2.0F, 1.0F));
    QVERIFY(!isLeftOf(2.0F, 2.0F));
}

void PointLoadsTest::notANumber_isLeftOfNothing()
{
    QVERIFY(isLeftOf(INFINITE, NOT_A_NUMBER));
    QVERIFY(!isLeftOf(NOT_A_NUMBER, -INFINITE));
    QVERIFY(!isLeftOf(NOT_A_NUMBER, NOT_A_NUMBER));
}

void PointLoadsTest::loads_areSortedLeftToRight()
{
    QCOMPARE(orderOf({8.0F, 2.0F, 5.0F}), (std::vector<float>{1.0F, 2.0F, 0.0F}));
    QCOMPARE(orderOf({}), std::vector<float>());
}

void PointLoadsTest::loadsAtOnePlace_keepTheirOrder()
{
    QCOMPARE(orderOf({5.0F, 2.0F, 5.0F, 2.0F}), (std::vector<float>{1.0F, 3.0F, 0.0F, 2.0F}));
}

void PointLoadsTest::neighbouringFloats_areSorted()
{
    // Every digit of the sort decides once: the next float, the next 256th, the next 65536th.
    for (const int steps : {1, 256, 65536}) {
        float later = 1.0F;
        for (int i = 0; i < steps; ++i)
            later = std::nextafter(later, 2.0F);
        QCOMPARE(orderOf({later, 1.0F}), (std::vector<float>{1.0F, 0.0F}));
    }
}

void PointLoadsTest::negativeInfiniteAndNotANumber_areSorted()
{
    QCOMPARE(orderOf({NOT_A_NUMBER, INFINITE, 0.0F, -1.0F, -2.0F, -INFINITE, 1.0F}),
             (std::vector<float>{5.0F, 4.0F, 3.0F, 2.0F, 6.0F, 1.0F, 0.0F}));
    QCOMPARE(orderOf({-NOT_A_NUMBER, 0.0F}), (std::vector<float>{1.0F, 0.0F}));
}

void PointLoadsTest::randomPlaces_areSortedAsByComparing()
{
    Layouts::Generator random(8);
    for (int round = 0; round < 100; ++round) {
        std::vector<float> positions;
        for (int i = random.integer(0, 300); i > 0; --i)
            positions.push_back(random.real(-10.0F, 30.0F));
        QCOMPARE(orderOf(positions), plainOrderOf(positions));
    }
}

void PointLoadsTest::gatheredLoads_keepTheirOrder()
{
    ActiveLoad first;
    first.positionX = 7.0F;
    first.mass = 100.0F;
    ActiveLoad second;
    second.positionX = 3.0F;
    second.mass = 200.0F;
    const PointLoads loads = pointLoads({first, second});
    QCOMPARE(loads.size(), std::size_t(2));
    QCOMPARE(loads[0].position, 7.0F);
    QCOMPARE(loads[0].mass, 100.0F);
    QCOMPARE(loads[1].position, 3.0F);
    QCOMPARE(loads[1].mass, 200.0F);
}

QTEST_GUILESS_MAIN(PointLoadsTest)
#include "tst_pointloads.moc"
