#include "engine/AnyLevelling.h"
#include "support/BeamCases.h"
#include "support/DenseBeam.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

using AnyLevelling::Range;
using BeamCases::beamOf;
using SecondOpinion::Layout;

namespace
{

/// So many by themselves; a slow tool looks for errors of memory, for which every layout is like another.
const int LAYOUTS = 2000 / Support::toolSlowness();

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

/// The range of each motor over all pairs that can carry everything: one on either side of the centre.
std::vector<Range> byPairs(const TrussBeam& beam)
{
    const std::vector<double>& x = beam.supports;
    std::vector<Range> ranges(x.size(), Range{0.0, std::numeric_limits<double>::infinity()});
    for (std::size_t a = 0; a < x.size(); ++a) {
        for (std::size_t b = a + 1; b < x.size(); ++b) {
            if (x[a] > beam.centre || x[b] < beam.centre)
                continue;
            const double onB = beam.weight * (beam.centre - x[a]) / (x[b] - x[a]);
            for (std::size_t k = 0; k < x.size(); ++k) {
                const double carried = k == a ? beam.weight - onB : k == b ? onB : 0.0;
                ranges[k] = {std::max(ranges[k].most, carried), std::min(ranges[k].least, carried)};
            }
        }
    }
    return ranges;
}

/// What the motors carry on springs at uneven heights, chains only pulling; nothing where no set of chains
/// answers within rounding.
std::optional<std::vector<double>> onSprings(const Layout& layout, Shows::Generator& random)
{
    const std::size_t count = layout.motors.size();
    const double bending = Shows::weightOf(layout) * std::pow(layout.length, 3) / 100.0;
    std::vector<DenseBeam::Holder> springs(count);
    for (DenseBeam::Holder& spring : springs)
        spring = {true, random.real(-bending, bending), std::pow(10.0, random.real(-4.0, 2.0))};

    const DenseBeam::Solver solver(layout);
    for (const std::vector<std::size_t>& pulling : BeamCases::subsets(count)) {
        for (std::size_t k = 0; k < count; ++k)
            springs[k].holds = std::binary_search(pulling.begin(), pulling.end(), k);
        const DenseBeam::Answer answer = solver.solve(springs);
        bool holds = true;
        for (std::size_t k = 0; k < count; ++k) {
            holds = holds
                    && (springs[k].holds ? answer.reactions[k] >= 0.0
                                         : answer.deflections[k] <= springs[k].level);
        }
        if (holds)
            return answer.reactions;
    }
    return std::nullopt;
}

} // namespace

class AnyLevellingTest : public QObject
{
    Q_OBJECT

private slots:
    void twoMotors_haveNoChoice();
    void threeMotors_haveOneFree();
    void motorAtTheCentre_mayCarryEverything();
    void onlyMotorOfItsSide_hasALeast();
    void everyLayout_isTheBestOfAllPairs();
    void springsAndUnevenHooks_neverLeaveTheRange();
};

void AnyLevellingTest::twoMotors_haveNoChoice()
{
    const std::vector<Range> ranges =
        AnyLevelling::ranges(makeBeam(10.0, 0.0, {1.0, 9.0}, LoadRow({{3.0, 400.0}})));
    QCOMPARE(ranges[0].most, 300.0);
    QCOMPARE(ranges[0].least, 300.0);
    QCOMPARE(ranges[1].most, 100.0);
    QCOMPARE(ranges[1].least, 100.0);
}

// W = 600 kg at 4 m, motors at 0, 6 and 12 m: with the middle one slack 400 and 200; with the right one
// slack 200 and 400.
void AnyLevellingTest::threeMotors_haveOneFree()
{
    const std::vector<Range> ranges =
        AnyLevelling::ranges(makeBeam(12.0, 0.0, {0.0, 6.0, 12.0}, LoadRow({{4.0, 600.0}})));
    QCOMPARE(ranges[0].most, 400.0);
    QCOMPARE(ranges[0].least, 200.0);
    QCOMPARE(ranges[1].most, 400.0);
    QCOMPARE(ranges[1].least, 0.0);
    QCOMPARE(ranges[2].most, 200.0);
    QCOMPARE(ranges[2].least, 0.0);
}

void AnyLevellingTest::motorAtTheCentre_mayCarryEverything()
{
    const std::vector<Range> ranges =
        AnyLevelling::ranges(makeBeam(12.0, 0.0, {0.0, 6.0, 12.0}, LoadRow({{6.0, 600.0}})));
    for (const std::size_t end : {std::size_t{0}, std::size_t{2}}) {
        QCOMPARE(ranges[end].most, 300.0);
        QCOMPARE(ranges[end].least, 0.0);
    }
    QCOMPARE(ranges[1].most, 600.0);
    QCOMPARE(ranges[1].least, 0.0);
}

void AnyLevellingTest::onlyMotorOfItsSide_hasALeast()
{
    const std::vector<Range> right =
        AnyLevelling::ranges(makeBeam(12.0, 0.0, {0.0, 4.0, 6.0, 12.0}, LoadRow({{9.0, 600.0}})));
    QCOMPARE(right[3].least, 300.0); // against the one at 6 m
    QCOMPARE(right[0].least + right[1].least + right[2].least, 0.0);
    const std::vector<Range> left =
        AnyLevelling::ranges(makeBeam(12.0, 0.0, {0.0, 6.0, 8.0, 12.0}, LoadRow({{3.0, 600.0}})));
    QCOMPARE(left[0].least, 300.0);
    QCOMPARE(left[1].least + left[2].least + left[3].least, 0.0);
}

void AnyLevellingTest::everyLayout_isTheBestOfAllPairs()
{
    Shows::Generator random(51);
    for (int i = 0; i < LAYOUTS; ++i) {
        const TrussBeam beam = beamOf(BeamCases::sorted(random.nextHanging(8)));
        const std::vector<Range> ranges = AnyLevelling::ranges(beam);
        const std::vector<Range> expected = byPairs(beam);
        for (std::size_t k = 0; k < expected.size(); ++k) {
            QVERIFY2(isNear(ranges[k].most, expected[k].most, 1e-12 * beam.weight),
                     qPrintable(QString::number(i)));
            QVERIFY2(isNear(ranges[k].least, expected[k].least, 1e-12 * beam.weight),
                     qPrintable(QString::number(i)));
        }
    }
}

void AnyLevellingTest::springsAndUnevenHooks_neverLeaveTheRange()
{
    Shows::Generator random(52);
    int answered = 0;
    for (int i = 0; i < LAYOUTS / 5; ++i) {
        Layout layout = BeamCases::sorted(random.nextHanging(4));
        layout.loads.resize(std::min<std::size_t>(layout.loads.size(), 3));
        if (!Shows::hangs(layout))
            continue;
        const TrussBeam beam = beamOf(layout);
        const std::vector<Range> ranges = AnyLevelling::ranges(beam);
        for (int attempt = 0; attempt < 5; ++attempt) {
            const std::optional<std::vector<double>> reactions = onSprings(layout, random);
            answered += reactions ? 1 : 0;
            for (std::size_t k = 0; reactions && k < ranges.size(); ++k) {
                const double carried = (*reactions)[k];
                QVERIFY2(carried <= ranges[k].most + 1e-7 * beam.weight, qPrintable(QString::number(i)));
                QVERIFY2(carried >= ranges[k].least - 1e-7 * beam.weight, qPrintable(QString::number(i)));
            }
        }
    }
    QVERIFY2(answered > LAYOUTS / 5 * 5 / 2, qPrintable(QString::number(answered)));
}

QTEST_GUILESS_MAIN(AnyLevellingTest)
#include "tst_anylevelling.moc"
