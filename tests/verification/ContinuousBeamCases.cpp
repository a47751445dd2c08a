#include "verification/ContinuousBeamCases.h"

#include "engine/ContinuousBeam.h"
#include "support/Shows.h"

#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;
using SecondOpinion::Layout;
using SecondOpinion::Opinion;

namespace
{

/// `numerators` of `divisor`: the reactions of equal spans under a uniform load, in w·s.
struct Table
{
    int divisor;
    std::vector<int> numerators;
};

QString supportName(std::size_t index)
{
    return u"support "_s + QString::number(index + 1) + u" [kg]"_s;
}

/// Supports evenly from end to end, `span` [m] apart.
Layout evenly(std::size_t count, double span, double weightPerMetre, std::vector<PointMass> loads)
{
    std::vector<double> motors;
    for (std::size_t i = 0; i < count; ++i)
        motors.push_back(span * static_cast<double>(i));
    return Shows::show(motors.back(), weightPerMetre, motors, std::move(loads));
}

double level(const Opinion& opinion, std::size_t motor)
{
    return opinion.motors.at(motor).level.value_or(std::nan(""));
}

double pushing(const Opinion& opinion, std::size_t motor)
{
    return opinion.motors.at(motor).pushing.value_or(std::nan(""));
}

Case equalSpans(const Table& table)
{
    const double s = 3.5;
    const double w = 12.25;
    const std::size_t count = table.numerators.size();
    const Opinion opinion = SecondOpinion::of(evenly(count, s, w, {}));
    Case beam{QString::number(count) + u" supports, equal spans, uniform load"_s,
              u"s = 3.5 m, w = 12.25 kg/m (Hicks, table 2.1)"_s,
              {}};
    for (std::size_t i = 0; i < count; ++i) {
        const int numerator = table.numerators[i];
        const QString formula = QString::number(numerator) + u"·w·s / "_s + QString::number(table.divisor);
        beam.figures.push_back(
            {supportName(i), formula, numerator * w * s / table.divisor, level(opinion, i)});
    }
    return beam;
}

Case momentsOfTwoSpans()
{
    const double s = 8.0;
    const double w = 10.0;
    const BeamDiagram::Extremes extremes = SecondOpinion::of(evenly(3, s, w, {})).level->extremes;
    return {u"Two equal spans, uniform load: moments and shear"_s,
            u"s = 8 m, w = 10 kg/m"_s,
            {{u"largest moment [kg·m]"_s, u"9·w·s² / 128"_s, 9.0 * w * s * s / 128.0, extremes.largestMoment},
             {u"its place [m]"_s, u"3·s / 8"_s, 3.0 * s / 8.0, extremes.largestMomentAt},
             {u"smallest moment [kg·m]"_s, u"−w·s² / 8"_s, -w * s * s / 8.0, extremes.smallestMoment},
             {u"largest shear [kg]"_s, u"5·w·s / 8"_s, 5.0 * w * s / 8.0, extremes.shear}}};
}

Case momentsOfThreeSpans()
{
    const double s = 5.0;
    const double w = 10.0;
    const BeamDiagram::Extremes extremes = SecondOpinion::of(evenly(4, s, w, {})).level->extremes;
    return {u"Three equal spans, uniform load: moments and shear"_s,
            u"s = 5 m, w = 10 kg/m"_s,
            {{u"largest moment [kg·m]"_s, u"2·w·s² / 25"_s, 2.0 * w * s * s / 25.0, extremes.largestMoment},
             {u"smallest moment [kg·m]"_s, u"−w·s² / 10"_s, -w * s * s / 10.0, extremes.smallestMoment},
             {u"largest shear [kg]"_s, u"3·w·s / 5"_s, 3.0 * w * s / 5.0, extremes.shear}}};
}

Case loadInOneSpan()
{
    const double p = 320.0;
    const Opinion opinion = SecondOpinion::of(evenly(3, 6.0, 0.0, {{3.0, p}}));
    return {u"Two equal spans, a load in the middle of one"_s,
            u"s = 6 m, P = 320 kg; the textbook's supports push, chains do not"_s,
            {{u"support 1 [kg]"_s, u"13·P / 32"_s, 13.0 * p / 32.0, pushing(opinion, 0)},
             {u"support 2 [kg]"_s, u"11·P / 16"_s, 11.0 * p / 16.0, pushing(opinion, 1)},
             {u"support 3 [kg]"_s, u"−3·P / 32"_s, -3.0 * p / 32.0, pushing(opinion, 2)},
             {u"motor 1 [kg]"_s, u"P / 2"_s, p / 2.0, level(opinion, 0)},
             {u"motor 2 [kg]"_s, u"P / 2"_s, p / 2.0, level(opinion, 1)},
             {u"motor 3, slack [kg]"_s, u"0"_s, 0.0, level(opinion, 2)}}};
}

Case loadsInBothSpans()
{
    const double p = 160.0;
    const Opinion opinion = SecondOpinion::of(evenly(3, 4.0, 0.0, {{2.0, p}, {6.0, p}}));
    return {u"Two equal spans, a load in the middle of either"_s,
            u"s = 4 m, P = 160 kg each"_s,
            {{u"support 1 [kg]"_s, u"5·P / 16"_s, 5.0 * p / 16.0, level(opinion, 0)},
             {u"support 2 [kg]"_s, u"11·P / 8"_s, 11.0 * p / 8.0, level(opinion, 1)},
             {u"support 3 [kg]"_s, u"5·P / 16"_s, 5.0 * p / 16.0, level(opinion, 2)},
             {u"largest moment [kg·m]"_s, u"5·P·s / 32"_s, 5.0 * p * 4.0 / 32.0,
              opinion.level->extremes.largestMoment},
             {u"smallest moment [kg·m]"_s, u"−3·P·s / 16"_s, -3.0 * p * 4.0 / 16.0,
              opinion.level->extremes.smallestMoment}}};
}

Case loadAnywhereInOneSpan()
{
    const double s = 5.0;
    const double a = 3.5;
    const double b = s - a;
    const double p = 700.0;
    const Opinion opinion = SecondOpinion::of(evenly(3, s, 0.0, {{a, p}}));
    const double s3 = s * s * s;
    return {u"Two equal spans, a load anywhere in one"_s,
            u"s = 5 m, P = 700 kg, a = 3.5 m from the outer support, b = 1.5 m"_s,
            {{u"support 1 [kg]"_s, u"P·b·(4·s² − a·(s + a)) / 4·s³"_s,
              p * b * (4.0 * s * s - a * (s + a)) / (4.0 * s3), pushing(opinion, 0)},
             {u"support 2 [kg]"_s, u"P·a·(2·s² + b·(s + a)) / 2·s³"_s,
              p * a * (2.0 * s * s + b * (s + a)) / (2.0 * s3), pushing(opinion, 1)},
             {u"support 3 [kg]"_s, u"−P·a·b·(s + a) / 4·s³"_s, -p * a * b * (s + a) / (4.0 * s3),
              pushing(opinion, 2)}}};
}

Case loadOnOverhang()
{
    const double a = 2.0;
    const double s = 6.0;
    const double p = 200.0;
    const LoadRow row({{0.0, p}});
    const ContinuousBeam::Solution two = ContinuousBeam::solve(makeBeam(a + s, 0.0, {a, a + s}, row));
    const ContinuousBeam::Solution three =
        ContinuousBeam::solve(makeBeam(a + 2.0 * s, 0.0, {a, a + s, a + 2.0 * s}, row));
    return {u"A load at the end of an overhang"_s,
            u"a = 2 m, spans of s = 6 m, P = 200 kg, supports that push"_s,
            {{u"two supports: the near one [kg]"_s, u"P·(1 + a / s)"_s, p * (1.0 + a / s), two.reactions[0]},
             {u"two supports: the far one [kg]"_s, u"−P·a / s"_s, -p * a / s, two.reactions[1]},
             {u"three: moment at the first [kg·m]"_s, u"−P·a"_s, -p * a, three.moments[0]},
             {u"three: moment at the second [kg·m]"_s, u"P·a / 4"_s, p * a / 4.0, three.moments[1]},
             {u"three: the last one [kg]"_s, u"P·a / 4·s"_s, p * a / (4.0 * s), three.reactions[2]}}};
}

Case equalOverhangs()
{
    const double a = 3.0;
    const double w = 10.0;
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, w, {a, 12.0 - a}, {}));
    return {u"Equal overhangs, uniform load"_s,
            u"L = 12 m, a = 3 m, w = 10 kg/m"_s,
            {{u"either support [kg]"_s, u"w·L / 2"_s, 60.0, level(opinion, 0)},
             {u"smallest moment [kg·m]"_s, u"−w·a² / 2"_s, -w * a * a / 2.0,
              opinion.level->extremes.smallestMoment},
             {u"largest moment [kg·m]"_s, u"0, where w·s² / 8 = w·a² / 2"_s, 0.0,
              opinion.level->extremes.largestMoment}}};
}

Case sinkingSupport()
{
    const double s = 6.0;
    const double deflection = 15.0;
    Layout layout = evenly(3, s, 10.0, {});
    layout.tableDeflection = deflection;
    const Opinion opinion = SecondOpinion::of(layout);
    const double stiffness = 1600.0 * 12.0 * 12.0 * 12.0 / (48.0 * deflection / 1000.0);
    const double perMillimetre = 6.0 * stiffness / (s * s * s) / 1000.0;
    const double middle = 10.0 * 10.0 * s / 8.0;
    return {u"Two equal spans, an uneven hook"_s,
            u"s = 6 m, w = 10 kg/m, EI = CPL·L³ / 48·f with CPL = 1600 kg, L = 12 m, f = 15 mm"_s,
            {{u"the middle one, 1 mm higher [kg]"_s, u"6·EI / 1000·s³"_s, perMillimetre,
              opinion.motors[1].levelling->perMillimetre},
             {u"an outer one, 1 mm higher [kg]"_s, u"3·EI / 2000·s³"_s, perMillimetre / 4.0,
              opinion.motors[0].levelling->perMillimetre},
             {u"the middle one is slack [mm lower]"_s, u"10·w·s / 8, by the first"_s, middle / perMillimetre,
              opinion.motors[1].levelling->slackBelow}}};
}

Case anyLevelling()
{
    const double weight = 600.0;
    const Opinion opinion = SecondOpinion::of(evenly(3, 6.0, 0.0, {{4.0, weight}}));
    const auto& motors = opinion.motors;
    return {u"Any levelling, and one slack motor"_s,
            u"W = 600 kg at c = 4 m, motors at 0, 6 and 12 m"_s,
            {{u"most of the first [kg]"_s, u"W·(12 − c) / 12"_s, weight * 8.0 / 12.0, *motors[0].most},
             {u"least of the first [kg]"_s, u"W·(6 − c) / 6"_s, weight * 2.0 / 6.0, *motors[0].least},
             {u"most of the second [kg]"_s, u"W·c / 6"_s, weight * 4.0 / 6.0, *motors[1].most},
             {u"most of the third [kg]"_s, u"W·c / 12"_s, weight * 4.0 / 12.0, *motors[2].most},
             {u"the second, the third slack [kg]"_s, u"W·c / 6"_s, weight * 4.0 / 6.0, *motors[1].oneSlack},
             {u"the first, the second slack [kg]"_s, u"W·(12 − c) / 12"_s, weight * 8.0 / 12.0,
              *motors[0].oneSlack}}};
}

Case tippingTruss()
{
    const Opinion opinion = SecondOpinion::of(Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}}));
    const double centre = (8.4 * 12.0 * 6.0 + 200.0 * 12.0) / (8.4 * 12.0 + 200.0);
    return {u"A truss that tips"_s,
            u"L = 12 m, w = 8.4 kg/m, P = 200 kg at L, motors at 0 and 7 m"_s,
            {{u"whole weight [kg]"_s, u"w·L + P"_s, 300.8, *opinion.weight},
             {u"centre of gravity [m]"_s, u"(w·L² / 2 + P·L) / (w·L + P)"_s, centre, *opinion.centre},
             {u"margin [m]"_s, u"7 − c"_s, 7.0 - centre, *opinion.tippingMargin}}};
}

} // namespace

std::vector<Case> ContinuousBeamCases::all()
{
    const std::vector<Table> hicks{{8, {3, 10, 3}},
                                   {10, {4, 11, 11, 4}},
                                   {28, {11, 32, 26, 32, 11}},
                                   {38, {15, 43, 37, 37, 43, 15}},
                                   {104, {41, 118, 100, 106, 100, 118, 41}},
                                   {142, {56, 161, 137, 143, 143, 137, 161, 56}}};
    std::vector<Case> cases;
    for (const Table& table : hicks)
        cases.push_back(equalSpans(table));
    for (const Case& beam : {momentsOfTwoSpans(), momentsOfThreeSpans(), loadInOneSpan(), loadsInBothSpans(),
                             loadAnywhereInOneSpan(), loadOnOverhang(), equalOverhangs(), sinkingSupport(),
                             anyLevelling(), tippingTruss()})
        cases.push_back(beam);
    return cases;
}
