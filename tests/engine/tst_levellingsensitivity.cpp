#include "engine/LevellingSensitivity.h"
#include "support/BeamCases.h"
#include "support/DenseBeam.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <vector>

using BeamCases::areNear;
using BeamCases::beamOf;
using SecondOpinion::Layout;

class LevellingSensitivityTest : public QObject
{
    Q_OBJECT

private slots:
    void stiffness_isThatOfTheTable();
    void stiffness_needsUsableNumbers();
    void twoEqualSpans_areTheTextbooks();
    void twoMotors_carryTheSameAtAnyLevel();
    void everyMotor_agreesWithTheStiffnessMethod();
};

// f = P·L³/48EI: 1600 kg in the middle of 12 m bend a truss of EI = 3 840 000 kg·m² by 15 mm.
void LevellingSensitivityTest::stiffness_isThatOfTheTable()
{
    QVERIFY(std::abs(LevellingSensitivity::stiffness(1600.0, 12.0, 15.0).value() - 3'840'000.0) < 1e-6);
}

void LevellingSensitivityTest::stiffness_needsUsableNumbers()
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {0.0, -15.0, infinity, std::nan("")}) {
        QVERIFY(!LevellingSensitivity::stiffness(1600.0, 12.0, bad));
        QVERIFY(!LevellingSensitivity::stiffness(bad, 12.0, 15.0));
        QVERIFY(!LevellingSensitivity::stiffness(1600.0, bad, 15.0));
    }
    QVERIFY(!LevellingSensitivity::stiffness(1600.0, 12.0, 1e-320));
    QVERIFY(!LevellingSensitivity::stiffness(1e300, 1e10, 15.0));
}

// Raising the middle one by δ: 48EI·δ/(2s)³ = 6EI·δ/s³; an end one: a quarter of that.
void LevellingSensitivityTest::twoEqualSpans_areTheTextbooks()
{
    const double s = 4.0;
    const TrussBeam beam = makeBeam(10.0, 8.4, {1.0, 5.0, 9.0}, LoadRow({{2.0, 300.0}, {10.0, 50.0}}));
    const double middle = 6.0 / (s * s * s);
    QVERIFY(areNear(LevellingSensitivity::perMetreRaised(beam), {middle / 4.0, middle, middle / 4.0}, 1e-14));
}

void LevellingSensitivityTest::twoMotors_carryTheSameAtAnyLevel()
{
    const TrussBeam beam = makeBeam(10.0, 8.4, {1.0, 9.0}, LoadRow());
    QCOMPARE(LevellingSensitivity::perMetreRaised(beam), (std::vector<double>{0.0, 0.0}));
}

void LevellingSensitivityTest::everyMotor_agreesWithTheStiffnessMethod()
{
    Shows::Generator random(61);
    for (int i = 0; i < 300 / Support::toolSlowness(); ++i) {
        Layout layout = BeamCases::sorted(random.next(6));
        const std::vector<double> raised = LevellingSensitivity::perMetreRaised(beamOf(layout));
        layout.loads.clear();
        layout.selfWeight = 0.0;
        std::vector<DenseBeam::Holder> hooks(layout.motors.size());
        for (std::size_t k = 0; k < hooks.size(); ++k) {
            hooks[k].level = -1.0;
            const double expected = DenseBeam::Solver(layout).solve(hooks).reactions[k];
            hooks[k].level = 0.0;
            QVERIFY2(std::abs(raised[k] - expected) <= 1e-8 * (1.0 + expected),
                     qPrintable(QString::number(i)));
        }
    }
}

QTEST_GUILESS_MAIN(LevellingSensitivityTest)
#include "tst_levellingsensitivity.moc"
