#include "engine/LoadLogic.h"
#include "support/Layouts.h"
#include "support/Slowness.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <vector>

using Layouts::Layout;

namespace
{

/// So many by themselves; a slow tool looks for errors of memory, for which every layout is like another.
const int LAYOUTS = 100'000 / Support::toolSlowness();

/// Results that single precision computes in another order agree to this, of the whole weight.
constexpr double ROUNDING = 1e-5;

bool areClose(double a, double b, double scale)
{
    return std::abs(a - b) <= ROUNDING * scale;
}

/// The layout seen from behind the truss.
Layout mirrored(const Layout& layout)
{
    Layout mirror = layout;
    for (float& x : mirror.motors)
        x = layout.length - x;
    for (Layouts::Load& load : mirror.loads)
        load.x = layout.length - load.x;
    return mirror;
}

bool mirrorsStaticLoads(const Layout& layout)
{
    Layouts::calculate(layout);
    const std::vector<float> original = Layouts::staticLoads();
    const double stress = static_cast<double>(LoadLogic::TrussStress_Percentage);
    const bool unstable = LoadLogic::isUnstable;

    Layouts::calculate(mirrored(layout));
    std::vector<float> mirror = Layouts::staticLoads();
    std::reverse(mirror.begin(), mirror.end());
    const double weight = Layouts::weightOf(layout);
    const auto sameLoad = [weight](float a, float b) {
        return areClose(static_cast<double>(a), static_cast<double>(b), weight);
    };
    return std::equal(original.begin(), original.end(), mirror.begin(), mirror.end(), sameLoad)
           && areClose(stress, static_cast<double>(LoadLogic::TrussStress_Percentage), stress)
           && unstable == LoadLogic::isUnstable;
}

/// Doubling is exact in binary, so all of it must be.
bool doublesExactly(const Layout& layout)
{
    Layouts::calculate(layout);
    std::vector<float> expected = Layouts::staticLoads();
    for (float& load : expected)
        load *= 2.0F;
    const float stress = LoadLogic::TrussStress_Percentage * 2.0F;

    Layout heavy = layout;
    heavy.selfWeight *= 2.0F;
    for (Layouts::Load& load : heavy.loads)
        load.mass *= 2.0F;
    Layouts::calculate(heavy);
    return Layouts::staticLoads() == expected && LoadLogic::TrussStress_Percentage == stress;
}

std::vector<float> carriedWith(Layout layout, std::vector<Layouts::Load> loads)
{
    layout.loads = std::move(loads);
    Layouts::calculate(layout);
    return Layouts::staticLoads();
}

/// Half of the loads, the other half, all and none.
bool superposes(const Layout& layout)
{
    const auto middle = layout.loads.begin() + static_cast<std::ptrdiff_t>(layout.loads.size() / 2);
    const std::vector<float> all = carriedWith(layout, layout.loads);
    const std::vector<float> some = carriedWith(layout, {layout.loads.begin(), middle});
    const std::vector<float> others = carriedWith(layout, {middle, layout.loads.end()});
    const std::vector<float> none = carriedWith(layout, {});
    const double weight = Layouts::weightOf(layout);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const double together = static_cast<double>(all[i]) + static_cast<double>(none[i]);
        const double apart = static_cast<double>(some[i]) + static_cast<double>(others[i]);
        if (!areClose(together, apart, weight))
            return false;
    }
    return true;
}

/// Where a load hangs: how many motors stand left of it.
std::size_t spanOf(const std::vector<float>& motors, float x)
{
    return static_cast<std::size_t>(std::upper_bound(motors.begin(), motors.end(), x) - motors.begin());
}

/// Moves the first load to another place of its span: no other motor may notice, to the last bit.
bool movesWithinItsSpan(Layout layout, Layouts::Generator& random)
{
    std::sort(layout.motors.begin(), layout.motors.end());
    const std::size_t right = spanOf(layout.motors, layout.loads.front().x);
    if (right == 0 || right == layout.motors.size())
        return true;
    Layouts::calculate(layout);
    const std::vector<float> before = Layouts::staticLoads();
    const float a = layout.motors[right - 1];
    layout.loads.front().x = a + random.real(0.0F, 0.99F) * (layout.motors[right] - a);
    Layouts::calculate(layout);
    const std::vector<float> after = Layouts::staticLoads();

    for (std::size_t i = 0; i < before.size(); ++i) {
        if (i != right && i + 1 != right && before[i] != after[i])
            return false;
    }
    const auto pair = [right](const std::vector<float>& loads) {
        return static_cast<double>(loads[right - 1]) + static_cast<double>(loads[right]);
    };
    return areClose(pair(before), pair(after), Layouts::weightOf(layout));
}

bool neverLowers(Layout layout, const Layouts::Load& added)
{
    Layouts::calculate(layout);
    const std::vector<float> before = Layouts::staticLoads();
    const float stress = LoadLogic::TrussStress_Percentage;
    layout.loads.push_back(added);
    Layouts::calculate(layout);
    const std::vector<float> after = Layouts::staticLoads();
    const auto isNotLower = [](float old, float now) { return now >= old; };
    return std::equal(before.begin(), before.end(), after.begin(), isNotLower)
           && static_cast<double>(LoadLogic::TrussStress_Percentage)
                  >= static_cast<double>(stress) * (1.0 - ROUNDING);
}

} // namespace

class PropertiesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyKilogram_isCarried();
    void mirroredLayout_hasMirroredFigures();
    void doubledMasses_doubleEverything();
    void loadSets_superpose();
    void loadMovedWithinItsSpan_isNoticedByItsTwoMotorsOnly();
    void addedLoad_lowersNothing();
};

void PropertiesTest::everyKilogram_isCarried()
{
    Layouts::Generator random(11);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.next();
        Layouts::calculate(layout);
        double carried = 0.0;
        for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
            carried += static_cast<double>(motor.staticLoad);
        const double weight = Layouts::weightOf(layout);
        QVERIFY2(areClose(carried, weight, weight), qPrintable(QString::number(i)));
    }
}

void PropertiesTest::mirroredLayout_hasMirroredFigures()
{
    Layouts::Generator random(12);
    for (int i = 0; i < LAYOUTS; ++i)
        QVERIFY2(mirrorsStaticLoads(random.next()), qPrintable(QString::number(i)));
}

void PropertiesTest::doubledMasses_doubleEverything()
{
    Layouts::Generator random(13);
    for (int i = 0; i < LAYOUTS; ++i)
        QVERIFY2(doublesExactly(random.next()), qPrintable(QString::number(i)));
}

void PropertiesTest::loadSets_superpose()
{
    Layouts::Generator random(14);
    for (int i = 0; i < LAYOUTS; ++i)
        QVERIFY2(superposes(random.next()), qPrintable(QString::number(i)));
}

void PropertiesTest::loadMovedWithinItsSpan_isNoticedByItsTwoMotorsOnly()
{
    Layouts::Generator random(15);
    for (int i = 0; i < LAYOUTS; ++i) {
        Layout layout = random.next();
        layout.loads.insert(layout.loads.begin(), random.load(layout));
        QVERIFY2(movesWithinItsSpan(layout, random), qPrintable(QString::number(i)));
    }
}

void PropertiesTest::addedLoad_lowersNothing()
{
    Layouts::Generator random(16);
    for (int i = 0; i < LAYOUTS; ++i) {
        const Layout layout = random.next();
        QVERIFY2(neverLowers(layout, random.load(layout)), qPrintable(QString::number(i)));
    }
}

QTEST_GUILESS_MAIN(PropertiesTest)
#include "tst_properties.moc"
