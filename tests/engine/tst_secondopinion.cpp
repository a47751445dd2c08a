#include "engine/SecondOpinion.h"
#include "support/Shows.h"
#include "support/Slowness.h"

#include <QTest>

#include <cmath>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using SecondOpinion::Layout;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::State;
using SecondOpinion::Verdict;
using Figure = std::optional<double> MotorOpinion::*;

namespace
{

/// Figures that are written down with one decimal.
constexpr double ONE_DECIMAL = 0.05 + 1e-6;

bool isNear(const std::optional<double>& figure, double expected, double tolerance)
{
    return figure && std::abs(*figure - expected) <= tolerance;
}

/// All motors have `expected` as this figure [kg].
bool have(const Opinion& opinion, Figure figure, const std::vector<double>& expected,
          double tolerance = ONE_DECIMAL)
{
    if (opinion.motors.size() != expected.size())
        return false;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!isNear(opinion.motors[i].*figure, expected[i], tolerance)) {
            qWarning("motor %zu: %f instead of %f", i, (opinion.motors[i].*figure).value_or(-1e99),
                     expected[i]);
            return false;
        }
    }
    return true;
}

} // namespace

class SecondOpinionTest : public QObject
{
    Q_OBJECT

private slots:
    void concierto_loadsItsEndMotors();
    void pasarela_loadsItsCentre();
    void pantalla_isAsTheLeverSays();
    void voladizo_tips();
    void truckOverhang_tips();
};

void SecondOpinionTest::concierto_loadsItsEndMotors()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"concierto"_s, {450.0, 180.0, 450.0}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(isNear(opinion.weight, 1080.0, 1e-9));
    QVERIFY(isNear(opinion.centre, 7.0, 1e-12));
    QVERIFY(isNear(opinion.tippingMargin, 6.0, 1e-12));
    QVERIFY(have(opinion, &MotorOpinion::level, {527.5, 25.0, 527.5}));
    QVERIFY(have(opinion, &MotorOpinion::pushing, {527.5, 25.0, 527.5}));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {540.0, 1080.0, 540.0}));
    QVERIFY(have(opinion, &MotorOpinion::most, {540.0, 1080.0, 540.0}));
    QVERIFY(isNear(opinion.level->extremes.smallestMoment, -385.0, 1e-9));
    QVERIFY(isNear(opinion.level->extremes.shear, 390.0, 1e-9));
    QVERIFY(isNear(opinion.percent(opinion.oneSlack->extremes.moment()), 44.1, ONE_DECIMAL));
    QVERIFY(isNear(opinion.level->extremes.largestMoment, 80.0, 1e-9));
}

void SecondOpinionTest::pasarela_loadsItsCentre()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"pasarela"_s, {76.3, 182.7, 76.3}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(have(opinion, &MotorOpinion::level, {62.1, 211.0, 62.1}));
    QVERIFY(have(opinion, &MotorOpinion::oneSlack, {167.6, 335.2, 167.6}));
}

void SecondOpinionTest::pantalla_isAsTheLeverSays()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"pantalla"_s, {328.6, 328.6}));
    QCOMPARE(opinion.state, State::Level);
    QVERIFY(have(opinion, &MotorOpinion::level, {328.6, 328.6}));
    for (const MotorOpinion& told : opinion.motors) {
        QVERIFY(told.isIndispensable.value());
        QVERIFY(!told.oneSlack);
    }
}

void SecondOpinionTest::voladizo_tips()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"voladizo"_s, {23.1, 260.9}));
    QCOMPARE(opinion.state, State::Tips);
    QVERIFY(isNear(opinion.tippingMargin, -2.82, 0.005));
}

void SecondOpinionTest::truckOverhang_tips()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}}));
    QCOMPARE(opinion.state, State::Tips);
    QVERIFY(isNear(opinion.tippingMargin, -2.99, 0.005));
    QVERIFY(isNear(opinion.centre, 6.0 + 3.99, 0.005));
    QVERIFY(isNear(opinion.weight, 300.8, 1e-9));
}

QTEST_GUILESS_MAIN(SecondOpinionTest)
#include "tst_secondopinion.moc"
