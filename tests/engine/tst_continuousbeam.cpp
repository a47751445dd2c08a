#include "engine/ContinuousBeam.h"
#include "engine/Deflection.h"
#include "support/BeamCases.h"
#include "support/DenseBeam.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using BeamCases::areNear;
using BeamCases::beamOf;
using BeamCases::onlyWith;
using BeamCases::sorted;
using ContinuousBeam::Solution;
using SecondOpinion::Layout;

namespace
{

/// So many by themselves; a slow tool looks for errors of memory, for which every layout is like another.
const int LAYOUTS = 2000 / Support::toolSlowness();

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

/// `count` supports at a distance of `span` [m], from end to end.
TrussBeam equalSpans(int count, double span, double weightPerMetre, std::vector<PointMass> loads = {})
{
    std::vector<double> supports;
    for (int i = 0; i < count; ++i)
        supports.push_back(span * i);
    return makeBeam(span * (count - 1), weightPerMetre, supports, LoadRow(std::move(loads)));
}

std::vector<double> scaled(std::vector<double> values, double factor)
{
    for (double& value : values)
        value *= factor;
    return values;
}

/// The places of one or more of the motors of `layout`, at random.
std::vector<std::size_t> someOf(const Layout& layout, Shows::Generator& random)
{
    std::vector<std::size_t> some;
    for (std::size_t k = 0; k < layout.motors.size(); ++k) {
        if (random.integer(0, 1) == 0)
            some.push_back(k);
    }
    return some.empty() ? std::vector<std::size_t>{0} : some;
}

/// Level hooks that pull and push.
std::vector<DenseBeam::Holder> holders(const Layout& layout)
{
    return std::vector<DenseBeam::Holder>(layout.motors.size());
}

/// What the figures of `layout` are compared with: all that it weighs, or what an overhang makes of that on
/// motors that are near each other [kg].
double largest(const Layout& layout, const std::vector<double>& reactions)
{
    double result = Shows::weightOf(layout) + 1.0;
    for (const double reaction : reactions)
        result = std::max(result, std::abs(reaction));
    return result;
}

} // namespace

Q_DECLARE_METATYPE(std::vector<double>)

class ContinuousBeamTest : public QObject
{
    Q_OBJECT

private slots:
    void equalSpans_matchHicks_data();
    void equalSpans_matchHicks();
    void twoSpans_loadInTheMiddleOfOne();
    void twoSpans_loadAnywhereInOne();
    void twoSpans_loadInTheMiddleOfBoth();
    void overhang_bendsTheOtherSpan();
    void equalOverhangs_underUniformLoad();
    void sunkenMiddle_handsItsLoadOver();
    void loadAtSupport_isCarriedByItAlone();
    void oneSupport_carriesAll();
    void centreOfGravity_isThatOfTrussAndLoads();
    void mergedPanels_areThePanelsOfTheWhole();
    void cantilever_sagsAsTheTextbookSays();
    void simpleSpan_sagsAsTheTextbookSays();
    void everyLayout_agreesWithTheStiffnessMethod();
    void everySubsetOfSupports_agreesWithTheStiffnessMethod();
    void everySettlement_agreesWithTheStiffnessMethod();
};

// Hicks, Civil Engineering Formulas, table 2.1: reactions of equal spans under w, in w·s.
void ContinuousBeamTest::equalSpans_matchHicks_data()
{
    QTest::addColumn<double>("divisor");
    QTest::addColumn<std::vector<double>>("shares");
    QTest::newRow("3") << 8.0 << std::vector<double>{3, 10, 3};
    QTest::newRow("4") << 10.0 << std::vector<double>{4, 11, 11, 4};
    QTest::newRow("5") << 28.0 << std::vector<double>{11, 32, 26, 32, 11};
    QTest::newRow("6") << 38.0 << std::vector<double>{15, 43, 37, 37, 43, 15};
    QTest::newRow("7") << 104.0 << std::vector<double>{41, 118, 100, 106, 100, 118, 41};
    QTest::newRow("8") << 142.0 << std::vector<double>{56, 161, 137, 143, 143, 137, 161, 56};
}

void ContinuousBeamTest::equalSpans_matchHicks()
{
    QFETCH(double, divisor);
    QFETCH(std::vector<double>, shares);
    const double s = 3.5;
    const double w = 12.25;
    const TrussBeam beam = equalSpans(static_cast<int>(shares.size()), s, w);
    QVERIFY(areNear(ContinuousBeam::solve(beam).reactions, scaled(shares, w * s / divisor), 1e-9));
}

// P·(13/32, 11/16, −3/32); the moment at the middle support is −3·P·s/32.
void ContinuousBeamTest::twoSpans_loadInTheMiddleOfOne()
{
    const Solution solution = ContinuousBeam::solve(equalSpans(3, 6.0, 0.0, {{3.0, 320.0}}));
    QVERIFY(areNear(solution.reactions, {130.0, 220.0, -30.0}, 1e-10));
    QVERIFY(areNear(solution.moments, {0.0, -180.0, 0.0}, 1e-10));
}

// P at a from the outer support of one of two equal spans, b = s − a:
// R₁ = P·b·(4s² − a·(s + a)) / 4s³, R₂ = P·a·(2s² + b·(s + a)) / 2s³, R₃ = −P·a·b·(s + a) / 4s³.
void ContinuousBeamTest::twoSpans_loadAnywhereInOne()
{
    const double s = 5.0;
    const double p = 700.0;
    for (double a = 0.0; a <= s; a += 0.25) {
        const double b = s - a;
        const double s3 = s * s * s;
        const Solution solution = ContinuousBeam::solve(equalSpans(3, s, 0.0, {{a, p}}));
        const std::vector<double> expected{p * b * (4 * s * s - a * (s + a)) / (4 * s3),
                                           p * a * (2 * s * s + b * (s + a)) / (2 * s3),
                                           -p * a * b * (s + a) / (4 * s3)};
        QVERIFY2(areNear(solution.reactions, expected, 1e-10), qPrintable(QString::number(a)));
    }
}

// P in the middle of both: 5/16, 22/16, 5/16 of P; the moment at the middle support is −3·P·s/16.
void ContinuousBeamTest::twoSpans_loadInTheMiddleOfBoth()
{
    const Solution solution = ContinuousBeam::solve(equalSpans(3, 4.0, 0.0, {{2.0, 160.0}, {6.0, 160.0}}));
    QVERIFY(areNear(solution.reactions, {50.0, 220.0, 50.0}, 1e-10));
    QVERIFY(areNear(solution.moments, {0.0, -120.0, 0.0}, 1e-10));
}

// P at the end of an overhang a beyond two supports s apart: P·(1 + a/s) and −P·a/s. With a third support s
// further on, the moment −P·a at the first bends the second by +P·a/4.
void ContinuousBeamTest::overhang_bendsTheOtherSpan()
{
    const std::vector<PointMass> loads{{0.0, 200.0}};
    const Solution two = ContinuousBeam::solve(makeBeam(8.0, 0.0, {2.0, 8.0}, LoadRow(loads)));
    QVERIFY(areNear(two.reactions, {200.0 * (1.0 + 2.0 / 6.0), -200.0 * 2.0 / 6.0}, 1e-10));
    QVERIFY(areNear(two.moments, {-400.0, 0.0}, 1e-10));

    const Solution three = ContinuousBeam::solve(makeBeam(14.0, 0.0, {2.0, 8.0, 14.0}, LoadRow(loads)));
    QVERIFY(areNear(three.moments, {-400.0, 100.0, 0.0}, 1e-10));
    QVERIFY(areNear(three.reactions, {200.0 + 500.0 / 6.0, -600.0 / 6.0, 100.0 / 6.0}, 1e-10));
}

// w over a + s + a on two supports: w·L/2 each, −w·a²/2 at each.
void ContinuousBeamTest::equalOverhangs_underUniformLoad()
{
    const Solution solution = ContinuousBeam::solve(makeBeam(12.0, 10.0, {3.0, 9.0}, LoadRow()));
    QVERIFY(areNear(solution.reactions, {60.0, 60.0}, 1e-12));
    QVERIFY(areNear(solution.moments, {-45.0, -45.0}, 1e-12));
}

// Two spans s, nothing on them, the middle hook δ lower: it pushes with 6EI·δ/s³, the others with half.
void ContinuousBeamTest::sunkenMiddle_handsItsLoadOver()
{
    const double s = 4.0;
    const Solution solution = ContinuousBeam::solve(equalSpans(3, s, 0.0), {0.0, 64.0, 0.0});
    QVERIFY(areNear(solution.reactions, {3.0, -6.0, 3.0}, 1e-12));
    QVERIFY(areNear(solution.moments, {0.0, 12.0, 0.0}, 1e-12));
}

void ContinuousBeamTest::loadAtSupport_isCarriedByItAlone()
{
    for (std::size_t k = 0; k < 4; ++k) {
        const Solution solution =
            ContinuousBeam::solve(equalSpans(4, 3.0, 0.0, {{3.0 * static_cast<double>(k), 90.0}}));
        std::vector<double> expected(4, 0.0);
        expected[k] = 90.0;
        QVERIFY(areNear(solution.reactions, expected, 1e-12));
        QVERIFY(areNear(solution.moments, {0.0, 0.0, 0.0, 0.0}, 1e-12));
    }
}

void ContinuousBeamTest::oneSupport_carriesAll()
{
    const Solution solution = ContinuousBeam::solve(makeBeam(10.0, 2.0, {4.0}, LoadRow({{1.0, 50.0}})));
    QVERIFY(areNear(solution.reactions, {70.0}, 1e-12));
    QVERIFY(areNear(solution.moments, {-166.0}, 1e-12)); // left: 50·3 + 2·4²/2; right: 2·6²/2 = 36
    const Solution other = ContinuousBeam::solve(makeBeam(10.0, 2.0, {4.0}, LoadRow({{9.0, 50.0}})));
    QVERIFY(areNear(other.moments, {-286.0}, 1e-12)); // right: 50·5 + 36
}

// (12·10·6 + 40·9) / 160 = 6.75; what weighs nothing has it in the middle.
void ContinuousBeamTest::centreOfGravity_isThatOfTrussAndLoads()
{
    const TrussBeam beam = makeBeam(12.0, 10.0, {0.0, 12.0}, LoadRow({{9.0, 40.0}}));
    QCOMPARE(beam.weight, 160.0);
    QCOMPARE(beam.centre, 6.75);
    QCOMPARE(makeBeam(12.0, 0.0, {0.0, 12.0}, LoadRow()).centre, 6.0);
}

void ContinuousBeamTest::mergedPanels_areThePanelsOfTheWhole()
{
    Shows::Generator random(31);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = sorted(random.next(8));
        const std::vector<std::size_t> carrying = someOf(layout, random);
        const TrussBeam carried = carriedBy(beamOf(layout), carrying);
        const TrussBeam expected = beamOf(onlyWith(layout, carrying));
        QCOMPARE(carried.supports, expected.supports);
        QCOMPARE(carried.weight, expected.weight);
        QCOMPARE(carried.centre, expected.centre);
        QCOMPARE(carried.weightPerMetre, expected.weightPerMetre);
        const double scale = Shows::weightOf(layout) * std::pow(layout.length, 3);
        QVERIFY(std::equal(carried.panels.begin(), carried.panels.end(), expected.panels.begin(),
                           expected.panels.end(), [scale](const BeamPanel& a, const BeamPanel& b) {
                               return isNear(a.length, b.length, 1e-12)
                                      && areNear(a.fromLeft, b.fromLeft, 1e-14 * scale)
                                      && areNear(a.fromRight, b.fromRight, 1e-14 * scale);
                           }));
    }
}

// P at the end of a overhang, the span s beside it: the tip sags by P·a²·(a + s)/3EI, and the middle of the
// span rises by P·a·s²/16EI.
void ContinuousBeamTest::cantilever_sagsAsTheTextbookSays()
{
    const double a = 3.0;
    const double s = 8.0;
    const double p = 60.0;
    const TrussBeam right = makeBeam(a + s, 0.0, {0.0, s / 2, s, s + a}, LoadRow({{s + a, p}}));
    const Solution rightSolution = ContinuousBeam::solve(carriedBy(right, {0, 2}));
    const Deflection::Line rightLine = Deflection::line(right, {0, 2}, rightSolution);
    const double tip = p * a * a * (a + s) / 3.0;
    const double rise = p * a * s * s / 16.0;
    QVERIFY(areNear(rightLine.sags, {0.0, -rise, 0.0, tip}, 1e-9));
    // The slopes at the supports: −P·a·s/6 and P·a·s/3.
    QVERIFY(areNear(rightLine.slopes, {-p * a * s / 6.0, p * a * s / 3.0}, 1e-9));

    const TrussBeam left = makeBeam(a + s, 0.0, {0.0, a, a + s / 2, a + s}, LoadRow({{0.0, p}}));
    const Solution leftSolution = ContinuousBeam::solve(carriedBy(left, {1, 3}));
    const Deflection::Line leftLine = Deflection::line(left, {1, 3}, leftSolution);
    QVERIFY(areNear(leftLine.sags, {tip, 0.0, -rise, 0.0}, 1e-9));
    QVERIFY(isNear(leftLine.leftEnd.sag, tip, 1e-9));
    QVERIFY(isNear(leftLine.leftEnd.slope, -p * a * s / 3.0 - p * a * a / 2.0, 1e-9));
}

// 5·w·s⁴/384 in the middle under w, P·s³/48 under P there; the slope at the left end is w·s³/24 and P·s²/16.
void ContinuousBeamTest::simpleSpan_sagsAsTheTextbookSays()
{
    const double s = 8.0;
    const TrussBeam uniform = makeBeam(s, 12.0, {0.0, s / 2, s}, LoadRow());
    const Deflection::Line line =
        Deflection::line(uniform, {0, 2}, ContinuousBeam::solve(carriedBy(uniform, {0, 2})));
    QVERIFY(areNear(line.sags, {0.0, 5.0 * 12.0 * 4096.0 / 384.0, 0.0}, 1e-9));
    QVERIFY(areNear(line.slopes, {12.0 * 512.0 / 24.0, -12.0 * 512.0 / 24.0}, 1e-9));

    const TrussBeam central = makeBeam(s, 0.0, {0.0, s / 2, s}, LoadRow({{4.0, 90.0}}));
    const Deflection::Line other =
        Deflection::line(central, {0, 2}, ContinuousBeam::solve(carriedBy(central, {0, 2})));
    QVERIFY(areNear(other.sags, {0.0, 90.0 * 512.0 / 48.0, 0.0}, 1e-9));
    QVERIFY(areNear(other.slopes, {90.0 * 64.0 / 16.0, -90.0 * 64.0 / 16.0}, 1e-9));
}

void ContinuousBeamTest::everyLayout_agreesWithTheStiffnessMethod()
{
    Shows::Generator random(32);
    for (int i = 0; i < LAYOUTS / 4; ++i) {
        const Layout layout = sorted(random.next(8));
        const std::vector<double> reactions = ContinuousBeam::solve(beamOf(layout)).reactions;
        const DenseBeam::Answer expected = DenseBeam::Solver(layout).solve(holders(layout));
        QVERIFY2(areNear(reactions, expected.reactions, 1e-9 * largest(layout, expected.reactions)),
                 qPrintable(QString::number(i)));
    }
}

void ContinuousBeamTest::everySubsetOfSupports_agreesWithTheStiffnessMethod()
{
    Shows::Generator random(33);
    for (int i = 0; i < LAYOUTS / 4; ++i) {
        const Layout layout = sorted(random.next(8));
        const std::vector<std::size_t> carrying = someOf(layout, random);
        if (carrying.size() < 2)
            continue;
        const TrussBeam beam = beamOf(layout);
        const Solution solution = ContinuousBeam::solve(carriedBy(beam, carrying));
        std::vector<DenseBeam::Holder> holding = holders(layout);
        for (std::size_t k = 0; k < holding.size(); ++k)
            holding[k].holds = std::binary_search(carrying.begin(), carrying.end(), k);
        const DenseBeam::Answer expected = DenseBeam::Solver(layout).solve(holding);
        for (std::size_t j = 0; j < carrying.size(); ++j)
            QVERIFY(isNear(solution.reactions[j], expected.reactions[carrying[j]],
                           1e-9 * largest(layout, expected.reactions)));
        QVERIFY2(areNear(Deflection::line(beam, carrying, solution).sags, expected.deflections,
                         1e-9 * largest(layout, expected.reactions) * std::pow(layout.length, 3)),
                 qPrintable(QString::number(i)));
    }
}

void ContinuousBeamTest::everySettlement_agreesWithTheStiffnessMethod()
{
    Shows::Generator random(34);
    for (int i = 0; i < LAYOUTS / 4; ++i) {
        const Layout layout = sorted(random.next(6));
        std::vector<double> settlements;
        std::vector<DenseBeam::Holder> holding = holders(layout);
        for (DenseBeam::Holder& holder : holding) {
            holder.level = random.real(-20.0, 20.0);
            settlements.push_back(holder.level);
        }
        const std::vector<double> reactions = ContinuousBeam::solve(beamOf(layout), settlements).reactions;
        const DenseBeam::Answer expected = DenseBeam::Solver(layout).solve(holding);
        QVERIFY2(areNear(reactions, expected.reactions, 1e-9 * largest(layout, expected.reactions)),
                 qPrintable(QString::number(i)));
    }
}

QTEST_GUILESS_MAIN(ContinuousBeamTest)
#include "tst_continuousbeam.moc"
