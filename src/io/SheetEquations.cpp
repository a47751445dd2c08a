#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"
#include "io/SheetOpinion.h"
#include "io/SheetStress.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SheetBeam = ::SheetBeam;
using Case = SheetBeam::Case;
using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;
using SheetNumbers::trimmed;

constexpr int PLACE_DECIMALS = 9;

QString place(double x)
{
    return operand(trimmed(x, PLACE_DECIMALS));
}

/// The loads left of a place, or at it too.
struct LeftOf
{
    double mass;
    double moment;

    LeftOf(const LoadRow& row, std::size_t count)
        : mass(row.massBefore[count])
        , moment(row.momentBefore[count])
    {
    }

    [[nodiscard]] QString massText() const
    {
        return operand(trimmed(mass, PLACE_DECIMALS));
    }
    [[nodiscard]] QString momentText() const
    {
        return operand(trimmed(moment, PLACE_DECIMALS));
    }
};

/// M above an outermost point, from its overhang.
QString overhangMoment(const SheetProject& project, const SheetBeam& beam, const Case& told, bool isLeft)
{
    const LoadRow& row = beam.show.row;
    const double x = isLeft ? told.places.front() : told.places.back();
    const double moment = isLeft ? told.moments.front() : told.moments.back();
    const QString e = isLeft ? place(x) : u'(' + exact(project.length) + u" − "_s + place(x) + u')';
    const LeftOf left(row, row.countLeftOf(x));
    const LeftOf upTo(row, row.countUpTo(x));
    const LeftOf all(row, row.loads.size());
    const QString mass = isLeft ? left.massText() : operand(trimmed(all.mass - upTo.mass, PLACE_DECIMALS));
    const QString loads =
        isLeft ? left.momentText() : operand(trimmed(all.moment - upTo.moment, PLACE_DECIMALS));
    const QString arms = isLeft ? place(x) + u" × "_s + mass + u" − "_s + loads
                                : loads + u" − "_s + place(x) + u" × "_s + mass;
    return (isLeft ? u"Primer motor, con ΣP = "_s : u"Último motor, con ΣP = "_s) + mass + u" y ΣP·x = "_s
           + loads + u" en el voladizo: M = 0 − "_s + operand(exact(project.selfWeight)) + u" × "_s + e
           + u"² / 2 − ("_s + arms + u") = "_s + fixed(moment, beam.decimals.moment) + u" kg·m"_s;
}

QString innerMoment(const SheetBeam& beam, const Case& told, std::size_t j)
{
    const QString s1 = trimmed(told.places[j] - told.places[j - 1], PLACE_DECIMALS);
    const QString s2 = trimmed(told.places[j + 1] - told.places[j], PLACE_DECIMALS);
    const auto moment = [&](std::size_t i) { return operand(fixed(told.moments[i], beam.decimals.moment)); };
    return u"M = (0 − "_s + operand(fixed(told.turns[j], beam.decimals.turn)) + u" − "_s + s1 + u" × "_s
           + moment(j - 1) + u" − "_s + s2 + u" × "_s + moment(j + 1) + u") / (2 × ("_s + s1 + u" + "_s + s2
           + u")) = "_s + fixed(told.moments[j], beam.decimals.moment) + u" kg·m"_s;
}

QString reaction(const SheetBeam& beam, const Case& told, std::size_t j)
{
    const auto moment = [&](std::size_t i) { return operand(fixed(told.moments[i], beam.decimals.moment)); };
    const auto towards = [&](std::size_t other) {
        return u" + ("_s + moment(other) + u" − "_s + moment(j) + u") / "_s
               + trimmed(std::abs(told.places[other] - told.places[j]), PLACE_DECIMALS);
    };
    QString formula = operand(fixed(told.levers[j], beam.decimals.lever));
    if (j > 0)
        formula += towards(j - 1);
    if (j + 1 < told.places.size())
        formula += towards(j + 1);
    return u"R = "_s + formula + u" = "_s + fixed(told.reactions[j], beam.decimals.reaction) + u" kg"_s;
}

/// A place where the shear falls to zero under the truss's own weight, with the digits that can be got from
/// the printed reactions. The moment hardly changes there.
QString zeroText(const SheetProject& project, const SheetBeam& beam, double x, std::size_t reactions)
{
    const double error = static_cast<double>(reactions) * std::pow(10.0, -beam.decimals.reaction);
    const int decimals = SheetNumbers::decimalsFor(error / project.selfWeight);
    return fixed(x, std::clamp(decimals - 1, 0, 3));
}

/// Σ R·(x − xᵢ) − w·x²/2 − (x·ΣP − ΣP·x) of what is left of the place x where V is zero.
QString largestMoment(const SheetProject& project, const SheetBeam& beam, const Case& told)
{
    const double x = told.extremes.largestMomentAt;
    if (!(told.extremes.largestMoment > 0.0))
        return u"M no es positivo en ningún punto: máximo 0.0 kg·m"_s;
    const LoadRow& row = beam.show.row;
    const LeftOf left(row, row.countUpTo(x));
    const std::size_t passed = static_cast<std::size_t>(
        std::lower_bound(told.places.begin(), told.places.end(), x) - told.places.begin());
    const bool isAtLoad = row.countUpTo(x) > row.countLeftOf(x);
    const bool isAtMotor = passed < told.places.size() && told.places[passed] == x;
    const bool isZero = !isAtLoad && !isAtMotor && project.selfWeight > 0.0;
    const QString at = isZero ? operand(zeroText(project, beam, x, passed)) : place(x);

    QStringList pulls;
    QStringList turns;
    for (std::size_t j = 0; j < passed; ++j) {
        pulls += operand(fixed(told.reactions[j], beam.decimals.reaction));
        turns += pulls.constLast() + u" × ("_s + at + u" − "_s + place(told.places[j]) + u')';
    }
    const QString w = operand(exact(project.selfWeight));
    const QString zero = isZero ? u"x = ("_s + pulls.join(u" + "_s) + u" − "_s + left.massText() + u") / "_s
                                      + w + u" = "_s + at + u" m"_s
                                : u"x = "_s + at + u" m"_s;
    return u"máximo, donde el cortante cambia de signo, con ΣP = "_s + left.massText() + u" y ΣP·x = "_s
           + left.momentText() + u" hasta ahí: "_s + zero + u"; M = "_s + turns.join(u" + "_s) + u" − "_s + w
           + u" × "_s + at + u"² / 2 − ("_s + at + u" × "_s + left.massText() + u" − "_s + left.momentText()
           + u") = "_s + fixed(told.extremes.largestMoment, 1) + u" kg·m"_s;
}

QString largestShear(const SheetProject& project, const SheetBeam& beam, const Case& told)
{
    const double x = told.extremes.shearAt;
    const LoadRow& row = beam.show.row;
    QString pulledText = u"0"_s;
    double pulled = 0.0;
    std::size_t j = 0;
    const auto pull = [&] {
        pulled += told.reactions[j];
        pulledText += u" + "_s + operand(fixed(told.reactions[j], beam.decimals.reaction));
    };
    for (; j < told.places.size() && told.places[j] < x; ++j)
        pull();
    LeftOf loads(row, row.countLeftOf(x));
    const auto shear = [&] { return pulled - project.selfWeight * x - loads.mass; };
    const bool isLeft =
        std::abs(std::abs(shear()) - told.extremes.shear) <= 1e-9 * (1.0 + told.extremes.shear);
    if (!isLeft && j < told.places.size()) {
        pull();
        loads = LeftOf(row, row.countUpTo(x));
    }
    return u"cortante mayor, junto a x = "_s + place(x) + u" m, con ΣP = "_s + loads.massText()
           + u" hasta ahí: V = "_s + pulledText + u" − "_s + operand(exact(project.selfWeight)) + u" × "_s
           + place(x) + u" − "_s + loads.massText() + u" = "_s + fixed(shear(), 1) + u" kg"_s;
}

} // namespace

QString SheetEquations::pointName(const SheetBeam& beam, std::size_t point)
{
    QStringList numbers;
    for (const std::size_t i : beam.show.points[point].motors)
        numbers += QString::number(static_cast<qulonglong>(i) + 1);
    if (numbers.size() == 1)
        return u"motor "_s + numbers.constFirst();
    const QString last = numbers.takeLast();
    return u"motores "_s + numbers.join(u", "_s) + u" y "_s + last;
}

QString SheetEquations::table(const SheetBeam& beam, const Case& told)
{
    QList<QStringList> rows;
    for (std::size_t j = 0; j < told.places.size(); ++j) {
        const bool isInner = j > 0 && j + 1 < told.places.size();
        rows.append({pointName(beam, told.carrying[j]), trimmed(told.places[j], PLACE_DECIMALS),
                     fixed(told.levers[j], beam.decimals.lever),
                     isInner ? fixed(told.turns[j], beam.decimals.turn) : u"—"_s,
                     fixed(told.moments[j], beam.decimals.moment),
                     fixed(told.reactions[j], beam.decimals.reaction)});
    }
    return SheetHtml::table({u"Lleva"_s, u"x (m)"_s, u"G (kg)"_s, u"K (kg·m²)"_s, u"M (kg·m)"_s, u"R (kg)"_s},
                            rows, {0});
}

QString SheetEquations::solution(const SheetProject& project, const SheetBeam& beam, const Case& told)
{
    QString html = SheetHtml::paragraph(overhangMoment(project, beam, told, true) + u"."_s)
                   + SheetHtml::paragraph(overhangMoment(project, beam, told, false) + u"."_s);
    for (std::size_t j = 0; j < told.places.size(); ++j) {
        const bool isInner = j > 0 && j + 1 < told.places.size();
        QString name = pointName(beam, told.carrying[j]);
        name.front() = u'M';
        html +=
            SheetHtml::paragraph(name + u": "_s + (isInner ? innerMoment(beam, told, j) + u"; "_s : QString())
                                 + reaction(beam, told, j) + u"."_s);
    }
    return html;
}

QString SheetEquations::shared(const SheetBeam& beam, const Case& told, bool tellSlack)
{
    QString html;
    for (std::size_t j = 0; j < told.carrying.size(); ++j) {
        const std::size_t motors = beam.show.points[told.carrying[j]].motors.size();
        if (motors == 1)
            continue;
        const QString reaction = operand(fixed(told.reactions[j], beam.decimals.reaction));
        const auto part = [&](std::size_t count) {
            return reaction + u" / "_s + QString::number(static_cast<qulonglong>(count)) + u" = "_s
                   + fixed(told.reactions[j] / static_cast<double>(count), 1) + u" kg"_s;
        };
        html += SheetHtml::paragraph(
            u"Cada uno de los "_s + pointName(beam, told.carrying[j]) + u": R = "_s + part(motors)
            + (tellSlack ? u"; con uno de ellos flojo, cada uno de los otros: R = "_s + part(motors - 1)
                         : QString())
            + u"."_s);
    }
    return html;
}

QString SheetEquations::extremes(const SheetProject& project, const SheetBeam& beam, const Case& told)
{
    const BeamDiagram::Extremes& extremes = told.extremes;
    const double reference = project.length * project.limitCPL / 4.0;
    QString html = u"Momento "_s + largestMoment(project, beam, told) + u"; mínimo, en x = "_s
                   + place(extremes.smallestMomentAt) + u" m: "_s + fixed(extremes.smallestMoment, 1)
                   + u" kg·m; "_s + largestShear(project, beam, told);
    if (SheetStress::isRated(project)) {
        const int decimals = std::max(2, SheetNumbers::decimalsFor(0.01 * reference / 100.0));
        const QString moment = fixed(extremes.moment(), decimals);
        html += u". El mayor, "_s + moment + u" kg·m, es 100 × "_s + moment + u" / ("_s
                + exact(project.length) + u" × "_s + exact(project.limitCPL) + u" / 4) = "_s
                + fixed(100.0 * extremes.moment() / reference, 1) + u" % de L·CPL/4"_s;
    }
    return SheetHtml::paragraph(html + u"."_s);
}
