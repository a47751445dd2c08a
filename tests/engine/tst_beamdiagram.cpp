#include "engine/BeamDiagram.h"
#include "engine/ChainSupports.h"
#include "support/BeamCases.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using BeamCases::beamOf;
using BeamDiagram::Extremes;
using BeamDiagram::Point;
using ContinuousBeam::Solution;
using SecondOpinion::Layout;

namespace
{

bool isNear(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance;
}

Extremes extremesOf(double length, double w, const std::vector<double>& supports,
                    std::vector<PointMass> loads)
{
    const LoadRow row(std::move(loads));
    const TrussBeam beam = makeBeam(length, w, supports, row);
    return BeamDiagram::extremes(beam, ContinuousBeam::solve(beam), row);
}

std::vector<Point> pointsOf(double length, double w, const std::vector<double>& supports,
                            std::vector<PointMass> loads)
{
    const LoadRow row(std::move(loads));
    const TrussBeam beam = makeBeam(length, w, supports, row);
    return BeamDiagram::points(beam, length, ContinuousBeam::solve(beam), row);
}

/// Moment and shear just right of `x`, by adding up what is left of it.
struct Cut
{
    double moment = 0.0;
    double shear = 0.0;
};

Cut cutAt(const Layout& layout, const std::vector<double>& reactions, double x)
{
    Cut cut{-layout.selfWeight * x * x / 2.0, -layout.selfWeight * x};
    const auto add = [&cut, x](double position, double force) {
        if (position > x)
            return;
        cut.shear += force;
        cut.moment += force * (x - position);
    };
    for (const PointMass& load : layout.loads)
        add(load.position, -load.mass);
    for (std::size_t k = 0; k < reactions.size(); ++k)
        add(layout.motors[k].position, reactions[k]);
    return cut;
}

const Point& pointAt(const std::vector<Point>& points, double x)
{
    return *std::find_if(points.begin(), points.end(), [x](const Point& p) { return isNear(p.position, x); });
}

} // namespace

class BeamDiagramTest : public QObject
{
    Q_OBJECT

private slots:
    void uniformLoad_peaksInTheMiddle();
    void pointLoad_peaksUnderIt();
    void uniformAndPointLoad_peakBeforeIt();
    void twoSpans_peakAtThreeEighths();
    void overhang_bendsAtItsSupport();
    void loadAtAMotor_shearsNothing();
    void weightlessTruss_keepsItsMomentBetweenEqualLoads();
    void nothing_hasNoExtremes();
    void points_runFromEndToEnd();
    void points_jumpWhereSomethingHangs();
    void points_showTheSag();
    void points_startAnewAtEachSupport();
    void points_showTheLargestMoment();
    void everyLayout_agreesWithItsCuts();
    void everyLayout_hasNoPointBeyondTheExtremes();
};

// w·L²/8 at L/2, w·L/2 beside the motors.
void BeamDiagramTest::uniformLoad_peaksInTheMiddle()
{
    const Extremes extremes = extremesOf(12.0, 8.0, {0.0, 12.0}, {});
    QVERIFY(isNear(extremes.largestMoment, 144.0));
    QVERIFY(isNear(extremes.largestMomentAt, 6.0));
    QVERIFY(isNear(extremes.smallestMoment, 0.0));
    QVERIFY(isNear(extremes.shear, 48.0));
    QVERIFY(isNear(extremes.shearAt, 0.0));
    QVERIFY(isNear(extremes.moment(), 144.0));
}

// P·a·b/L under the load; P·b/L and P·a/L are the shears.
void BeamDiagramTest::pointLoad_peaksUnderIt()
{
    const Extremes extremes = extremesOf(12.0, 0.0, {0.0, 12.0}, {{9.0, 400.0}, {9.0, 80.0}});
    QVERIFY(isNear(extremes.largestMoment, 480.0 * 9.0 * 3.0 / 12.0));
    QVERIFY(isNear(extremes.largestMomentAt, 9.0));
    QVERIFY(isNear(extremes.shear, 360.0));
    QVERIFY(isNear(extremes.shearAt, 12.0));
}

// L = 10 m, w = 20 kg/m, 60 kg at 8 m: left reaction 112, so that V = 0 at 5.6 m, M = 112²/(2·20).
void BeamDiagramTest::uniformAndPointLoad_peakBeforeIt()
{
    const Extremes extremes = extremesOf(10.0, 20.0, {0.0, 10.0}, {{8.0, 60.0}});
    QVERIFY(isNear(extremes.largestMomentAt, 5.6));
    QVERIFY(isNear(extremes.largestMoment, 313.6));
    // The same from behind: V = 0 at 4.4 m, beyond the load.
    const Extremes mirrored = extremesOf(10.0, 20.0, {0.0, 10.0}, {{2.0, 60.0}});
    QVERIFY(isNear(mirrored.largestMomentAt, 4.4));
    QVERIFY(isNear(mirrored.largestMoment, 313.6));
}

// Two equal spans under w: 9·w·s²/128 at 3·s/8, −w·s²/8 at the middle, 5·w·s/8 beside it.
void BeamDiagramTest::twoSpans_peakAtThreeEighths()
{
    const Extremes extremes = extremesOf(16.0, 10.0, {0.0, 8.0, 16.0}, {});
    QVERIFY(isNear(extremes.largestMoment, 9.0 * 640.0 / 128.0));
    QVERIFY(isNear(extremes.largestMomentAt, 3.0));
    QVERIFY(isNear(extremes.smallestMoment, -80.0));
    QVERIFY(isNear(extremes.smallestMomentAt, 8.0));
    QVERIFY(isNear(extremes.shear, 50.0));
    QVERIFY(isNear(extremes.shearAt, 8.0));
    QVERIFY(isNear(extremes.moment(), 80.0));
}

void BeamDiagramTest::overhang_bendsAtItsSupport()
{
    const Extremes right = extremesOf(12.0, 0.0, {0.0, 9.0}, {{12.0, 100.0}});
    QVERIFY(isNear(right.smallestMoment, -300.0));
    QVERIFY(isNear(right.smallestMomentAt, 9.0));
    QVERIFY(isNear(right.largestMoment, 0.0));
    QVERIFY(isNear(right.shear, 100.0));
    QVERIFY(isNear(right.shearAt, 9.0));
    const Extremes left = extremesOf(12.0, 10.0, {4.0, 12.0}, {});
    QVERIFY(isNear(left.smallestMoment, -80.0));
    QVERIFY(isNear(left.smallestMomentAt, 4.0));
}

// What hangs right at a motor goes into its chain: beside it, only the rest is left.
void BeamDiagramTest::loadAtAMotor_shearsNothing()
{
    const Extremes extremes =
        extremesOf(12.0, 2.0, {0.0, 6.0, 12.0}, {{6.0, 900.0}, {0.0, 700.0}, {12.0, 800.0}});
    QVERIFY(isNear(extremes.shear, 7.5)); // 5/8·w·s
}

// Two equal loads at the thirds: constant moment P·a between them, found at the first of them.
void BeamDiagramTest::weightlessTruss_keepsItsMomentBetweenEqualLoads()
{
    const Extremes extremes = extremesOf(12.0, 0.0, {0.0, 12.0}, {{4.0, 350.0}, {8.0, 350.0}});
    QVERIFY(isNear(extremes.largestMoment, 1400.0));
    QVERIFY(extremes.largestMomentAt >= 4.0 - 1e-9 && extremes.largestMomentAt <= 8.0 + 1e-9);
}

void BeamDiagramTest::nothing_hasNoExtremes()
{
    const Extremes extremes = extremesOf(12.0, 0.0, {0.0, 6.0, 12.0}, {});
    QCOMPARE(extremes.largestMoment, 0.0);
    QCOMPARE(extremes.smallestMoment, 0.0);
    QCOMPARE(extremes.shear, 0.0);
    QCOMPARE(extremes.moment(), 0.0);
}

void BeamDiagramTest::points_runFromEndToEnd()
{
    const std::vector<Point> points = pointsOf(12.0, 8.0, {2.0, 10.0}, {{0.0, 30.0}, {12.0, 30.0}});
    QCOMPARE(points.front().position, 0.0);
    QCOMPARE(points.back().position, 12.0);
    QVERIFY(std::is_sorted(points.begin(), points.end(),
                           [](const Point& a, const Point& b) { return a.position < b.position; }));
    // Nothing at the very ends, and the load right after.
    QCOMPARE(points.front().shear, 0.0);
    QCOMPARE(points[1].shear, -30.0);
    QVERIFY(isNear((points.end() - 2)->shear, 30.0));
    QVERIFY(isNear(points.back().shear, 0.0));
    QVERIFY(isNear(points.back().moment, 0.0));
    // No step is longer than a hundredth of the truss.
    for (std::size_t i = 1; i < points.size(); ++i)
        QVERIFY(points[i].position - points[i - 1].position <= 0.12);
}

void BeamDiagramTest::points_jumpWhereSomethingHangs()
{
    const std::vector<Point> points = pointsOf(12.0, 0.0, {0.0, 12.0}, {{6.0, 100.0}, {6.0, 60.0}});
    std::vector<double> shears;
    for (const Point& point : points) {
        if (isNear(point.position, 6.0))
            shears.push_back(point.shear);
    }
    QCOMPARE(shears.size(), std::size_t{2});
    QVERIFY(isNear(shears[0], 80.0));
    QVERIFY(isNear(shears[1], -80.0));
}

// P·s³/48 in the middle of the span; −P·s²/16 is the slope at which the free end of 2 m goes on.
void BeamDiagramTest::points_showTheSag()
{
    const std::vector<Point> points = pointsOf(12.0, 0.0, {2.0, 10.0}, {{6.0, 90.0}});
    QVERIFY(isNear(pointAt(points, 6.0).sag, 90.0 * 512.0 / 48.0));
    QVERIFY(isNear(pointAt(points, 2.0).sag, 0.0));
    QVERIFY(isNear(pointAt(points, 10.0).sag, 0.0));
    QVERIFY(isNear(points.front().sag, -2.0 * 90.0 * 64.0 / 16.0));
    QVERIFY(isNear(points.back().sag, -2.0 * 90.0 * 64.0 / 16.0));
}

// Rounding must not add up from support to support: the last of them is as exact as the first.
void BeamDiagramTest::points_startAnewAtEachSupport()
{
    std::vector<double> supports;
    std::vector<PointMass> loads;
    for (int i = 0; i <= 40; ++i) {
        supports.push_back(1.0 + 2.7 * i);
        loads.push_back({2.0 + 2.6 * i, 310.0});
    }
    const std::vector<Point> points = pointsOf(112.0, 8.4, supports, loads);
    for (const double support : supports) {
        const auto behind = std::find_if(points.rbegin(), points.rend(), [support](const Point& point) {
            return isNear(point.position, support);
        });
        QCOMPARE(behind->sag, 0.0);
    }
}

void BeamDiagramTest::points_showTheLargestMoment()
{
    const std::vector<Point> points = pointsOf(10.0, 20.0, {0.0, 10.0}, {{8.123, 61.7}});
    const Extremes extremes = extremesOf(10.0, 20.0, {0.0, 10.0}, {{8.123, 61.7}});
    QVERIFY(isNear(pointAt(points, extremes.largestMomentAt).moment, extremes.largestMoment));
}

void BeamDiagramTest::everyLayout_agreesWithItsCuts()
{
    Shows::Generator random(71);
    for (int i = 0; i < 300 / Support::toolSlowness(); ++i) {
        const Layout layout = BeamCases::sorted(random.nextHanging(6));
        const TrussBeam beam = beamOf(layout);
        const LoadRow row(layout.loads);
        const Solution solution = ContinuousBeam::solve(beam);
        const std::vector<Point> points = BeamDiagram::points(beam, layout.length, solution, row);
        double scale = beam.weight;
        for (const double reaction : solution.reactions)
            scale = std::max(scale, std::abs(reaction));
        for (std::size_t k = 0; k < points.size(); ++k) {
            // The last of several points at one place is behind everything there.
            if (k + 1 < points.size() && points[k + 1].position - points[k].position < 1e-6)
                continue;
            const Cut cut = cutAt(layout, solution.reactions, points[k].position + 1e-9);
            QVERIFY2(isNear(points[k].shear, cut.shear, 1e-8 * scale), qPrintable(QString::number(i)));
            QVERIFY2(isNear(points[k].moment, cut.moment, 1e-8 * scale * layout.length),
                     qPrintable(QString::number(i)));
        }
    }
}

// What is drawn reaches the extremes and nothing beyond them.
void BeamDiagramTest::everyLayout_hasNoPointBeyondTheExtremes()
{
    Shows::Generator random(72);
    for (int i = 0; i < 300 / Support::toolSlowness(); ++i) {
        const Layout layout = BeamCases::sorted(random.nextHanging(6));
        const TrussBeam all = beamOf(layout);
        std::size_t solves = 100;
        const ChainSupports::State state = ChainSupports::solve(all, solves);
        const TrussBeam beam = carriedBy(all, state.carrying);
        const LoadRow row(layout.loads);
        const Extremes extremes = BeamDiagram::extremes(beam, state.solution, row);
        double largest = 0.0;
        double smallest = 0.0;
        double shear = 0.0;
        for (const Point& point : BeamDiagram::points(beam, layout.length, state.solution, row)) {
            largest = std::max(largest, point.moment);
            smallest = std::min(smallest, point.moment);
            shear = std::max(shear, std::abs(point.shear));
        }
        const double rounding = 1e-9 * all.weight * layout.length;
        QVERIFY2(isNear(largest, extremes.largestMoment, rounding), qPrintable(QString::number(i)));
        QVERIFY2(isNear(smallest, extremes.smallestMoment, rounding), qPrintable(QString::number(i)));
        QVERIFY2(isNear(shear, extremes.shear, rounding), qPrintable(QString::number(i)));
    }
}

QTEST_GUILESS_MAIN(BeamDiagramTest)
#include "tst_beamdiagram.moc"
