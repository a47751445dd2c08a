#include "engine/LedArray.h"

#include <QTest>

#include <limits>
#include <vector>

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();

/// The screen that the program starts with: 4 m × 3 m, 40 kg/m², 10 kg/m, 7 %.
LedArray usualScreen()
{
    return {4.0F, 3.0F, 40.0F, 10.0F, 7.0F};
}

LedArray screenOfWidth(float width)
{
    LedArray screen = usualScreen();
    screen.width = width;
    return screen;
}

} // namespace

class LedArrayTest : public QObject
{
    Q_OBJECT

private slots:
    void usualScreen_weighsPanelsBarAndCables();
    void startedHalfMetres_giveTheSegments_data();
    void startedHalfMetres_giveTheSegments();
    void screenInTheMiddle_hangsEveryHalfMetre();
    void centreNearTheLeftEnd_startsAtTheEndAndStopsAtTheScreensEdge();
    void centreNearTheRightEnd_losesWhatOverhangs();
    void segmentExactlyAtTheEdge_stays();
    void widthOfNothing_keepsOneWeightlessSegment();
    void narrowScreen_keepsItsFirstSegment();
    void unevenWidth_keepsItsMassPerSegment();
    void negativeWidth_hangsNothing();
    void trussWithoutLength_keepsTheFirstSegment();
    void hugeScreenOnShortTruss_endsWithTheTruss();
    void hugeScreenOnHugeTruss_isBounded();
    void infiniteWidth_ends();
    void screenNotDescribed_measuresNothing();
};

void LedArrayTest::usualScreen_weighsPanelsBarAndCables()
{
    // 1.07 · (10 · 4 + 4 · 3 · 40) = 1.07 · (40 + 480) = 556.4; of 8 segments each 69.55.
    QCOMPARE(usualScreen().totalWeight(), 556.4F);
    QCOMPARE(usualScreen().segmentCount(), 8);
    QCOMPARE(usualScreen().segmentMass(), 69.55F);

    // Every term counts by itself.
    QCOMPARE((LedArray{4.0F, 3.0F, 40.0F, 0.0F, 0.0F}).totalWeight(), 480.0F);
    QCOMPARE((LedArray{4.0F, 3.0F, 0.0F, 10.0F, 0.0F}).totalWeight(), 40.0F);
    QCOMPARE((LedArray{4.0F, 3.0F, 40.0F, 10.0F, 100.0F}).totalWeight(), 1040.0F);
}

void LedArrayTest::startedHalfMetres_giveTheSegments_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<int>("count");
    QTest::newRow("-3") << -3.0F << 1;
    QTest::newRow("0") << 0.0F << 1;
    QTest::newRow("0.05") << 0.05F << 1;
    QTest::newRow("0.5") << 0.5F << 1;
    QTest::newRow("0.51") << 0.51F << 2;
    QTest::newRow("1") << 1.0F << 2;
    QTest::newRow("1.2") << 1.2F << 3;
    QTest::newRow("4") << 4.0F << 8;
    QTest::newRow("4.01") << 4.01F << 9;
    QTest::newRow("100 km") << 100'000.0F << 200'000;
    QTest::newRow("1e9") << 1e9F << 2'000'000'000;
    QTest::newRow("infinite") << INFINITE << 2'147'483'520;
}

void LedArrayTest::startedHalfMetres_giveTheSegments()
{
    QFETCH(float, width);
    QTEST(screenOfWidth(width).segmentCount(), "count");
}

void LedArrayTest::screenInTheMiddle_hangsEveryHalfMetre()
{
    const std::vector<float> expected{4.25F, 4.75F, 5.25F, 5.75F, 6.25F, 6.75F, 7.25F, 7.75F};
    QCOMPARE(usualScreen().segmentPositions(6.0F, 12.0F), expected);
}

void LedArrayTest::centreNearTheLeftEnd_startsAtTheEndAndStopsAtTheScreensEdge()
{
    // Left edge max(0, 1 − 2) = 0, right edge 1 + 2 = 3: 0.25 … 2.75, the next would be 3.25.
    const std::vector<float> expected{0.25F, 0.75F, 1.25F, 1.75F, 2.25F, 2.75F};
    QCOMPARE(usualScreen().segmentPositions(1.0F, 12.0F), expected);
}

void LedArrayTest::centreNearTheRightEnd_losesWhatOverhangs()
{
    // Left edge 11 − 2 = 9, right edge min(12, 13) = 12.
    const std::vector<float> expected{9.25F, 9.75F, 10.25F, 10.75F, 11.25F, 11.75F};
    QCOMPARE(usualScreen().segmentPositions(11.0F, 12.0F), expected);
}

void LedArrayTest::segmentExactlyAtTheEdge_stays()
{
    // Left edge 10 − 2 = 8, right edge min(10.25, 12); 8 + 0.25 + 4 · 0.5 = 10.25.
    const std::vector<float> expected{8.25F, 8.75F, 9.25F, 9.75F, 10.25F};
    QCOMPARE(usualScreen().segmentPositions(10.0F, 10.25F), expected);
}

void LedArrayTest::widthOfNothing_keepsOneWeightlessSegment()
{
    QCOMPARE(screenOfWidth(0.0F).segmentMass(), 0.0F);
    QCOMPARE(screenOfWidth(0.0F).segmentPositions(6.0F, 12.0F), std::vector<float>{6.25F});
}

void LedArrayTest::narrowScreen_keepsItsFirstSegment()
{
    // Left edge 6 − 0.125; its quarter metre lies beyond the right edge 6 + 0.125 by nothing: 6.125.
    QCOMPARE(screenOfWidth(0.25F).segmentPositions(6.0F, 12.0F), std::vector<float>{6.125F});
    // 6 − 0.0625 + 0.25 = 6.1875 lies beyond the right edge 6.0625.
    QCOMPARE(screenOfWidth(0.125F).segmentPositions(6.0F, 12.0F), std::vector<float>{6.1875F});
}

void LedArrayTest::unevenWidth_keepsItsMassPerSegment()
{
    // 1.2 m start three half metres, but the third point lies beyond the edge:
    // 5.4 + 0.25, + 0.75; 5.4 + 1.25 = 6.65 > 6.6.
    const LedArray screen = screenOfWidth(1.2F);
    const std::vector<float> positions = screen.segmentPositions(6.0F, 12.0F);
    QCOMPARE(positions.size(), std::size_t(2));
    QCOMPARE(positions[0], 5.65F);
    QCOMPARE(positions[1], 6.15F);
    QCOMPARE(screen.segmentMass(), screen.totalWeight() / 3.0F);
}

void LedArrayTest::negativeWidth_hangsNothing()
{
    // Left edge max(0, 6 + 1.5) = 7.5; its first quarter metre lies beyond the right edge 6 − 1.5 = 4.5.
    QVERIFY(screenOfWidth(-3.0F).segmentPositions(6.0F, 12.0F).empty());
    QVERIFY(screenOfWidth(-0.001F).segmentPositions(6.0F, 12.0F).empty());
    QVERIFY(screenOfWidth(-1e9F).segmentPositions(6.0F, 12.0F).empty());
    QVERIFY(screenOfWidth(-INFINITE).segmentPositions(6.0F, 12.0F).empty());
    QCOMPARE(screenOfWidth(-0.0F).segmentPositions(6.0F, 12.0F), std::vector<float>{6.25F});
}

void LedArrayTest::trussWithoutLength_keepsTheFirstSegment()
{
    QCOMPARE(usualScreen().segmentPositions(0.0F, 0.0F), std::vector<float>{0.25F});
    QCOMPARE(usualScreen().segmentPositions(0.0F, -5.0F), std::vector<float>{0.25F});
}

void LedArrayTest::hugeScreenOnShortTruss_endsWithTheTruss()
{
    // 0.25, 0.75 … 11.75: two a metre.
    QCOMPARE(screenOfWidth(1e9F).segmentPositions(6.0F, 12.0F).size(), std::size_t(24));
    QCOMPARE(screenOfWidth(1e9F).segmentMass(), screenOfWidth(1e9F).totalWeight() / 2e9F);
}

void LedArrayTest::hugeScreenOnHugeTruss_isBounded()
{
    QCOMPARE(LedArray::LARGEST_SEGMENT_COUNT, 100'000);
    QCOMPARE(screenOfWidth(1e9F).segmentPositions(5e8F, 1e9F).size(), std::size_t(100'000));
}

void LedArrayTest::infiniteWidth_ends()
{
    QCOMPARE(screenOfWidth(INFINITE).segmentPositions(6.0F, 12.0F).size(), std::size_t(24));
    QVERIFY(!screenOfWidth(std::numeric_limits<float>::quiet_NaN()).segmentPositions(6.0F, 12.0F).empty());
}

void LedArrayTest::screenNotDescribed_measuresNothing()
{
    const LedArray screen;
    QCOMPARE(screen.width, 0.0F);
    QCOMPARE(screen.height, 0.0F);
    QCOMPARE(screen.weightM2, 0.0F);
    QCOMPARE(screen.bumperWeightPerMeter, 0.0F);
    QCOMPARE(screen.cableWeightPercent, 0.0F);
}

QTEST_GUILESS_MAIN(LedArrayTest)
#include "tst_ledarray.moc"
