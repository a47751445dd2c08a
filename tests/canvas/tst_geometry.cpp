#include "canvas/TrussGeometry.h"

#include <QTest>

#include <limits>

// On a target of 1160 × 600 at scale 1 the margin is 80 px, the span 1000 px or 100 px a metre of a truss
// of 10 m, the truss line at 300.
class TestGeometry : public QObject
{
    Q_OBJECT

private slots:
    void target_isDividedIntoMarginsAndSpan();
    void scale_truncates();
    void position_truncatesTowardZero();
    void pointer_mapsBack();
    void boxes_areThoseOfTheHand();
    void menuBoxes_areSmaller();
    void edges_belongToTheBox();
    void unusableLengths_areDefined_data();
    void unusableLengths_areDefined();

private:
    const TrussGeometry g{1160, 600, 1.0, 80, 10.0F};
};

void TestGeometry::target_isDividedIntoMarginsAndSpan()
{
    QCOMPARE(g.margin(), 80);
    QCOMPARE(g.span(), 1000);
    QCOMPARE(g.lineY(), 300);
    const TrussGeometry report(2000, 801, 2.0, 80, 10.0F);
    QCOMPARE(report.margin(), 160);
    QCOMPARE(report.span(), 1680);
    QCOMPARE(report.lineY(), 400); // 801 / 2
}

void TestGeometry::scale_truncates()
{
    const TrussGeometry narrow(999, 400, 0.999, 80, 10.0F);
    QCOMPARE(narrow.margin(), 79);     // 79.92
    QCOMPARE(narrow.scaled(1), 0);     // 0.999
    QCOMPARE(narrow.scaled(90), 89);   // 89.91
    QCOMPARE(narrow.scaled(-90), -89); // toward zero
}

void TestGeometry::position_truncatesTowardZero()
{
    QCOMPARE(g.toX(0.0F), 80);
    QCOMPARE(g.toX(10.0F), 1080);
    QCOMPARE(g.toX(2.559F), 80 + 255); // 255.9
    QCOMPARE(g.toX(-0.009F), 80);      // -0.9
    QCOMPARE(g.toX(-0.5F), 30);
}

void TestGeometry::pointer_mapsBack()
{
    QCOMPARE(g.toMetres(80), 0.0F);
    QCOMPARE(g.toMetres(580), 5.0F);
    QCOMPARE(g.toMetres(0), -0.8F); // not clamped
}

void TestGeometry::boxes_areThoseOfTheHand()
{
    Motor motor;
    motor.positionX = 5.0F; // at 580
    QCOMPARE(g.motorLabelBox(motor), QRect(535, 181, 90, 13));
    QCOMPARE(g.motorBodyBox(motor, 70), QRect(545, 265, 70, 70));
    ActiveLoad load;
    load.positionX = 5.0F;
    QCOMPARE(g.loadLabelBox(load), QRect(540, 398, 80, 18));
    QCOMPARE(g.loadBodyBox(load), QRect(555, 295, 50, 60));
    load.screenWidth = 3.0F;
    load.screenHeight = 2.51F;
    QCOMPARE(g.arrayBox(load, 6.0F), QRect(680 - 150, 305, 300, 125)); // 2.51 m × 50 = 125.5 px
}

void TestGeometry::menuBoxes_areSmaller()
{
    ActiveLoad load;
    load.positionX = 5.0F;
    load.screenWidth = 3.0F;
    load.screenHeight = 2.5F;
    QCOMPARE(g.arrayMenuBox(load, 6.0F), QRect(680 - 150, 305, 300, 40));
    QCOMPARE(g.loadMenuBox(load), QRect(565, 305, 30, 25));
}

void TestGeometry::edges_belongToTheBox()
{
    ActiveLoad load;
    load.positionX = 5.0F;
    const QRect box = g.loadMenuBox(load);
    QVERIFY(box.contains(QPoint(565, 305)) && box.contains(QPoint(594, 329)));
    QVERIFY(!box.contains(QPoint(564, 305)) && !box.contains(QPoint(595, 305)));
    QVERIFY(!box.contains(QPoint(565, 304)) && !box.contains(QPoint(565, 330)));
}

void TestGeometry::unusableLengths_areDefined_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<int>("atOne");
    QTest::newRow("0: to infinity, held") << 0.0F << 1'000'000 + 80;
    QTest::newRow("-5: to the left") << -5.0F << 80 - 200;
    QTest::newRow("1e9: all at the left end") << 1e9F << 80;
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 80;
}

void TestGeometry::unusableLengths_areDefined()
{
    QFETCH(float, length);
    QFETCH(int, atOne);
    QCOMPARE(TrussGeometry(1160, 600, 1.0, 80, length).toX(1.0F), atOne);
}

QTEST_GUILESS_MAIN(TestGeometry)
#include "tst_geometry.moc"
