#include "engine/LoadLogic.h"
#include "support/Layouts.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <vector>

#include "verification/Case.h"
#include "verification/ContinuousBeamCases.h"

using namespace Qt::StringLiterals;
using Layouts::Layout;

// Prints docs/verification.md: what textbooks give for beams, what the program gives, and the
// difference. With the path of a page as argument it prints nothing but says whether that page is
// what it would print.

namespace
{

/// The program computes in single precision: to this part of the textbook's figure it has to agree.
constexpr double TOLERANCE = 1e-5;

/// The second opinion computes in double precision, and is held to more.
constexpr double OPINION_TOLERANCE = 1e-9;

/// What the motor at `index`, counted from the left, carries [kg].
double carried(qsizetype index)
{
    return static_cast<double>(LoadLogic::MotorList.at(index).staticLoad);
}

/// The largest bending moment in a span [kg·m], from the stress: M / (L · CPL / 4) · 100 %.
double spanMoment(const Layout& layout)
{
    return static_cast<double>(LoadLogic::TrussStress_Percentage) / 100.0 * static_cast<double>(layout.length)
           * static_cast<double>(layout.cpl) / 4.0;
}

/// The same where an overhang decides, which is rated by half of that reference.
double overhangMoment(const Layout& layout)
{
    return spanMoment(layout) / 2.0;
}

Case centralLoad()
{
    const Layout layout{10.0F, 0.0F, 1600.0F, {0.0F, 10.0F}, {{5.0F, 800.0F}}};
    Layouts::calculate(layout);
    return {u"Central load"_s,
            u"L = 10 m, P = 800 kg at L / 2"_s,
            {{u"left support [kg]"_s, u"P / 2"_s, 800.0 / 2.0, carried(0)},
             {u"right support [kg]"_s, u"P / 2"_s, 800.0 / 2.0, carried(1)},
             {u"largest moment [kg·m]"_s, u"P·L / 4"_s, 800.0 * 10.0 / 4.0, spanMoment(layout)}}};
}

Case eccentricLoad()
{
    const Layout layout{12.0F, 0.0F, 1600.0F, {0.0F, 12.0F}, {{3.5F, 500.0F}}};
    Layouts::calculate(layout);
    return {u"Eccentric load"_s,
            u"L = 12 m, P = 500 kg, a = 3.5 m from the left, b = 8.5 m"_s,
            {{u"left support [kg]"_s, u"P·b / L"_s, 500.0 * 8.5 / 12.0, carried(0)},
             {u"right support [kg]"_s, u"P·a / L"_s, 500.0 * 3.5 / 12.0, carried(1)},
             {u"largest moment [kg·m]"_s, u"P·a·b / L"_s, 500.0 * 3.5 * 8.5 / 12.0, spanMoment(layout)}}};
}

Case twoEqualLoads()
{
    const Layout layout{12.0F, 0.0F, 1600.0F, {0.0F, 12.0F}, {{4.0F, 350.0F}, {8.0F, 350.0F}}};
    Layouts::calculate(layout);
    return {u"Two equal loads at the thirds"_s,
            u"L = 12 m, P = 350 kg each, a = 4 m from either end"_s,
            {{u"left support [kg]"_s, u"P"_s, 350.0, carried(0)},
             {u"right support [kg]"_s, u"P"_s, 350.0, carried(1)},
             {u"largest moment [kg·m]"_s, u"P·a"_s, 350.0 * 4.0, spanMoment(layout)}}};
}

Case threeEqualLoads()
{
    const Layout layout{8.0F, 0.0F, 1600.0F, {0.0F, 8.0F}, {{2.0F, 240.0F}, {4.0F, 240.0F}, {6.0F, 240.0F}}};
    Layouts::calculate(layout);
    return {u"Three equal loads at the quarters"_s,
            u"L = 8 m, P = 240 kg each"_s,
            {{u"left support [kg]"_s, u"3·P / 2"_s, 1.5 * 240.0, carried(0)},
             {u"right support [kg]"_s, u"3·P / 2"_s, 1.5 * 240.0, carried(1)},
             {u"largest moment [kg·m]"_s, u"P·L / 2"_s, 240.0 * 8.0 / 2.0, spanMoment(layout)}}};
}

Case unequalLoads()
{
    const Layout layout{12.0F, 0.0F, 1600.0F, {0.0F, 12.0F}, {{2.0F, 300.0F}, {9.0F, 700.0F}}};
    Layouts::calculate(layout);
    const double right = (300.0 * 2.0 + 700.0 * 9.0) / 12.0;
    return {u"Two unequal loads"_s,
            u"L = 12 m, P = 300 kg at 2 m, Q = 700 kg at 9 m"_s,
            {{u"left support [kg]"_s, u"P + Q − right"_s, 1000.0 - right, carried(0)},
             {u"right support [kg]"_s, u"(P·2 + Q·9) / L"_s, right, carried(1)},
             {u"largest moment [kg·m]"_s, u"right · 3, under Q"_s, right * 3.0, spanMoment(layout)}}};
}

Case uniformLoad()
{
    const Layout layout{12.0F, 8.5F, 1600.0F, {0.0F, 12.0F}, {}};
    Layouts::calculate(layout);
    return {u"Uniform load"_s,
            u"L = 12 m, w = 8.5 kg/m"_s,
            {{u"left support [kg]"_s, u"w·L / 2"_s, 8.5 * 12.0 / 2.0, carried(0)},
             {u"right support [kg]"_s, u"w·L / 2"_s, 8.5 * 12.0 / 2.0, carried(1)},
             {u"largest moment [kg·m]"_s, u"w·L² / 8"_s, 8.5 * 144.0 / 8.0, spanMoment(layout)}}};
}

Case uniformAndCentralLoad()
{
    const Layout layout{15.0F, 12.25F, 2000.0F, {0.0F, 15.0F}, {{7.5F, 600.0F}}};
    Layouts::calculate(layout);
    const double support = 12.25 * 15.0 / 2.0 + 300.0;
    return {u"Uniform and central load"_s,
            u"L = 15 m, w = 12.25 kg/m, P = 600 kg at L / 2"_s,
            {{u"left support [kg]"_s, u"w·L / 2 + P / 2"_s, support, carried(0)},
             {u"right support [kg]"_s, u"w·L / 2 + P / 2"_s, support, carried(1)},
             {u"largest moment [kg·m]"_s, u"w·L² / 8 + P·L / 4"_s, 12.25 * 225.0 / 8.0 + 600.0 * 15.0 / 4.0,
              spanMoment(layout)}}};
}

Case uniformLoadWithOverhangs()
{
    const Layout layout{12.0F, 10.0F, 1600.0F, {3.0F, 9.0F}, {}};
    Layouts::calculate(layout);
    return {u"Uniform load, equal overhangs"_s,
            u"L = 12 m, w = 10 kg/m, overhangs a = 3 m"_s,
            {{u"left support [kg]"_s, u"w·L / 2"_s, 60.0, carried(0)},
             {u"right support [kg]"_s, u"w·L / 2"_s, 60.0, carried(1)},
             {u"moment at a support [kg·m]"_s, u"w·a² / 2"_s, 45.0, overhangMoment(layout)}}};
}

Case loadsOnBothOverhangs()
{
    const Layout layout{12.0F, 0.0F, 1600.0F, {4.0F, 8.0F}, {{1.0F, 200.0F}, {11.0F, 200.0F}}};
    Layouts::calculate(layout);
    return {u"Equal loads on equal overhangs"_s,
            u"supports at 4 m and 8 m of L = 12 m, P = 200 kg, a = 3 m out on either side"_s,
            {{u"left support [kg]"_s, u"P"_s, 200.0, carried(0)},
             {u"right support [kg]"_s, u"P"_s, 200.0, carried(1)},
             {u"moment at a support [kg·m]"_s, u"P·a"_s, 600.0, overhangMoment(layout)}}};
}

Case manySpansUniform()
{
    const Layout layout{20.0F, 9.0F, 1600.0F, {0.0F, 5.0F, 10.0F, 15.0F, 20.0F}, {}};
    Layouts::calculate(layout);
    std::vector<Figure> figures;
    for (qsizetype i = 0; i < 5; ++i) {
        const bool isEnd = i == 0 || i == 4;
        figures.push_back({u"support "_s + QString::number(i + 1) + u" [kg]"_s,
                           isEnd ? u"w·s / 2"_s : u"w·s"_s, isEnd ? 22.5 : 45.0, carried(i)});
    }
    figures.push_back({u"largest moment [kg·m]"_s, u"w·s² / 8"_s, 9.0 * 25.0 / 8.0, spanMoment(layout)});
    return {u"Four equal spans, uniform load"_s, u"s = 5 m, w = 9 kg/m, each span on its own"_s, figures};
}

Case manySpansLoaded()
{
    const Layout layout{18.0F, 0.0F, 1600.0F, {0.0F, 6.0F, 18.0F}, {{3.0F, 400.0F}, {9.0F, 1000.0F}}};
    Layouts::calculate(layout);
    return {u"Two unequal spans, a load in each"_s,
            u"s = 6 m and t = 12 m; P = 400 kg in the middle of s, Q = 1000 kg at a quarter of t"_s,
            {{u"left support [kg]"_s, u"P / 2"_s, 200.0, carried(0)},
             {u"middle support [kg]"_s, u"P / 2 + 3·Q / 4"_s, 950.0, carried(1)},
             {u"right support [kg]"_s, u"Q / 4"_s, 250.0, carried(2)},
             {u"largest moment [kg·m]"_s, u"Q·3·9 / t"_s, 1000.0 * 3.0 * 9.0 / 12.0, spanMoment(layout)}}};
}

// ---- where the lever rule is not statics: expected is what statics give ----

Case shortSpanLongOverhangs()
{
    const Layout layout{12.0F, 8.4F, 1600.0F, {5.3F, 6.7F}, {{0.0F, 400.0F}}};
    Layouts::calculate(layout);
    const double weight = 8.4 * 12.0 + 400.0;
    const double near = (400.0 * 6.7 + 8.4 * 12.0 * 0.7) / 1.4;
    return {
        u"A load at the end of a long overhang"_s,
        u"L = 12 m, w = 8.4 kg/m, motors at 5.3 and 6.7 m, P = 400 kg at 0 m. The program calls it stable "
        "(5.3 m are 44 %\nof 12) and, with motors of 1000 kg, fit; the centre of gravity lies 4.09 m "
        "outside the motors, and no chain pushes:\nthe truss tips"_s,
        {{u"left motor [kg]"_s, u"(P·6.7 + w·L·0.7) / 1.4"_s, near, carried(0)},
         {u"right motor [kg]"_s, u"P + w·L − left"_s, weight - near, carried(1)}}};
}

Case loadOnOneOverhang()
{
    const Layout layout{12.0F, 10.0F, 1600.0F, {3.0F, 9.0F}, {{0.0F, 100.0F}}};
    Layouts::calculate(layout);
    return {u"A load on one overhang"_s,
            u"L = 12 m, w = 10 kg/m, overhangs a = 3 m, s = 6 m, P = 100 kg at 0 m"_s,
            {{u"left motor [kg]"_s, u"w·L / 2 + P·(1 + a / s)"_s, 60.0 + 150.0, carried(0)},
             {u"right motor [kg]"_s, u"w·L / 2 − P·a / s"_s, 60.0 - 50.0, carried(1)}}};
}

Case threeMotorsUniform()
{
    const Layout layout{12.0F, 10.0F, 1600.0F, {0.0F, 6.0F, 12.0F}, {}};
    Layouts::calculate(layout);
    return {u"Three motors, uniform load"_s,
            u"s = 6 m, w = 10 kg/m (Hicks, table 2.1)"_s,
            {{u"either end [kg]"_s, u"3·w·s / 8"_s, 22.5, carried(0)},
             {u"middle [kg]"_s, u"10·w·s / 8"_s, 75.0, carried(1)}}};
}

/// Three moments about the middle: 24·M = 2·6·385 − 2·(540 + 810), so that M = 80 kg·m.
Case threeMotorsWithOverhangs()
{
    const Layout layout{14.0F,
                        10.0F,
                        2000.0F,
                        {1.0F, 7.0F, 13.0F},
                        {{0.0F, 380.0F}, {4.0F, 60.0F}, {7.0F, 60.0F}, {10.0F, 60.0F}, {14.0F, 380.0F}}};
    Layouts::calculate(layout);
    const double moment = (12.0 * 385.0 - 2.0 * (540.0 + 810.0)) / 24.0;
    const double end = 390.0 + 60.0 + (moment + 385.0) / 6.0;
    return {u"Three motors, loads on both overhangs"_s,
            u"examples/concierto.rig: L = 14 m, w = 10 kg/m, motors at 1, 7 and 13 m, 380 kg at either end, "
            "60 kg at 4, 7\nand 10 m; M over the middle by Clapeyron's three moments: 80 kg·m"_s,
            {{u"either end [kg]"_s, u"390 + 60 + (M + 385) / 6"_s, end, carried(0)},
             {u"middle [kg]"_s, u"1080 − 2 · end"_s, 1080.0 - 2.0 * end, carried(1)}}};
}

std::vector<Case> departures()
{
    return {shortSpanLongOverhangs(), loadOnOneOverhang(), threeMotorsUniform(), threeMotorsWithOverhangs()};
}

std::vector<Case> allCases()
{
    return {centralLoad(),          eccentricLoad(),    twoEqualLoads(),         threeEqualLoads(),
            unequalLoads(),         uniformLoad(),      uniformAndCentralLoad(), uniformLoadWithOverhangs(),
            loadsOnBothOverhangs(), manySpansUniform(), manySpansLoaded()};
}

QString introduction()
{
    return u"# Verification\n\n"
           "Textbook cases of beams, and what the program gives for them. `tools/verification.sh` writes "
           "this "
           "page;\nthe tests fail when it is not what the program gives, or when a figure differs by more "
           "than "
           "0.00001 of itself.\n\n"
           "The program treats each span between two motors as a simply supported beam. So for two supports "
           "without\noverhangs its figures are those of statics. Beyond that they are a model, and the first "
           "cases below are those\nwhere model and textbook speak of the same thing. What the model leaves "
           "out "
           "comes after them: with three or more\nmotors a continuous beam loads some of them more, and an "
           "overhang is a lever, which can load the motor beside it\nwith several times what the program "
           "says "
           "and lift the truss off the far one. For that there is the second opinion.\n\n"
           "L: length, w: uniform load, P and Q: point loads, s and t: spans, a and b: distances. The "
           "moments are "
           "computed\nback from the stress in percent, which the program rounds to single precision.\n"_s;
}

QString opinionIntroduction()
{
    return u"\n## The second opinion\n\n"
           "Beside those figures the program gives a second opinion, for which the truss is one continuous "
           "beam on chains\nthat only pull. These are its figures in published cases and in some that are "
           "worked out by hand; none may differ\nby more than 0.000000001 of itself.\n\n"
           "w, P, s, a, b as above; W: whole weight, c: centre of gravity, EI: stiffness, CPL: maximum "
           "central "
           "point load,\nf: the truss's deflection under it.\n"_s;
}

QString number(double value, int digits)
{
    return QString::number(value, 'g', digits);
}

/// What is left of double precision is nothing to tell apart.
QString differenceText(double difference)
{
    return difference > 0.0 && difference < 1e-12 ? u"< 1e-12"_s : number(difference, 2);
}

QString section(const QString& heading, const Case& beam)
{
    QString text = u'\n' + heading + u' ' + beam.title + u"\n\n"_s + beam.given
                   + u".\n\n| Figure | Formula | Textbook | Program | Relative difference |\n"
                     "|---|---|---:|---:|---:|\n"_s;
    for (const Figure& figure : beam.figures) {
        const QStringList cells{figure.name, figure.formula, number(figure.expected, 8),
                                number(figure.actual, 8), differenceText(figure.difference())};
        text += u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
    }
    return text;
}

QString departureIntroduction()
{
    return u"\n## Where the lever rule is not statics\n\n"
           "These figures of the program are not what hangs on the motors. Window, drawing and reports show "
           "them; the second\nopinion tells beside them what statics say. Where it finds a motor beyond its "
           "capacity that the rule passes, or a\ntruss that tips, the command line says so without being "
           "asked. A negative force would have to push.\n"_s;
}

QString departure(const Case& beam)
{
    QString text = u"\n### "_s + beam.title + u"\n\n"_s + beam.given
                   + u".\n\n| Figure | Formula | Statics | Lever rule | The rule tells |\n"
                     "|---|---|---:|---:|---:|\n"_s;
    for (const Figure& figure : beam.figures) {
        const double missing = figure.expected - figure.actual;
        const QString told =
            number(std::abs(missing), 4) + (missing > 0.0 ? u" kg too little"_s : u" kg too much"_s);
        const QStringList cells{figure.name, figure.formula, number(figure.expected, 8),
                                number(figure.actual, 8), told};
        text += u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
    }
    return text;
}

QString page(const std::vector<Case>& cases, const std::vector<Case>& opinions)
{
    QString text = introduction();
    for (const Case& beam : cases)
        text += section(u"##"_s, beam);
    text += departureIntroduction();
    for (const Case& beam : departures())
        text += departure(beam);
    text += opinionIntroduction();
    for (const Case& beam : opinions)
        text += section(u"###"_s, beam);
    return text;
}

bool allAgree(const std::vector<Case>& cases, double tolerance)
{
    const auto agrees = [tolerance](const Figure& figure) { return figure.difference() <= tolerance; };
    return std::all_of(cases.begin(), cases.end(), [&agrees](const Case& beam) {
        return std::all_of(beam.figures.begin(), beam.figures.end(), agrees);
    });
}

bool isPage(const QString& path, const QString& text)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == text.toUtf8();
}

} // namespace

int main(int argc, char* argv[])
{
    const std::vector<Case> cases = allCases();
    const std::vector<Case> opinions = ContinuousBeamCases::all();
    const QString text = page(cases, opinions);
    QTextStream error(stderr);
    if (argc < 2) {
        QTextStream(stdout) << text;
    } else if (!isPage(QFile::decodeName(argv[1]), text)) {
        error << "This is not what tools/verification.sh writes: " << argv[1] << '\n';
        return 1;
    }
    if (!allAgree(cases, TOLERANCE) || !allAgree(opinions, OPINION_TOLERANCE)) {
        error << "A figure differs from the textbook by more than the program's precision.\n";
        return 1;
    }
    return 0;
}
