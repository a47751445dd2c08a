#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"
#include "io/SheetOpinion.h"
#include "io/SheetPortion.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;
using SheetNumbers::trimmed;

constexpr int PLACE_DECIMALS = 9;

/// A span beside an inner point, seen from its far end.
struct Side
{
    double far;    ///< where the distances are measured from [m]
    double length; ///< [m]
    bool isLeft;   ///< the span is left of the point
};

QString place(double x)
{
    return operand(trimmed(x, PLACE_DECIMALS));
}

/// "(4 − 1)": how far `at` is from the far end.
QString distanceText(const Side& side, const QString& at)
{
    const QString far = place(side.far);
    return side.isLeft ? u'(' + at + u" − "_s + far + u')' : u'(' + far + u" − "_s + at + u')';
}

double distanceOf(const Side& side, const PointMass& mass)
{
    return side.isLeft ? mass.position - side.far : side.far - mass.position;
}

/// Sums of many distances, with the digits that the result needs.
QString sumsFormula(const SheetLoad& load, const std::vector<PointMass>& part, const Side& side)
{
    double first = 0.0;
    double third = 0.0;
    for (const PointMass& mass : part) {
        const double d = distanceOf(side, mass);
        const double weight = load.isListed ? 1.0 : mass.mass;
        first += weight * d;
        third += weight * d * d * d;
    }
    const QString s = trimmed(side.length, PLACE_DECIMALS);
    const QString factor = load.isListed ? operand(exact(part.front().mass)) + u" × "_s : QString();
    return factor + u'(' + s + u"² × "_s + operand(trimmed(first, PLACE_DECIMALS)) + u" − "_s
           + operand(trimmed(third, PLACE_DECIMALS)) + u") / "_s + s;
}

QStringList rowOf(const SheetLoad& load, const std::vector<PointMass>& part, const Side& side, int decimals)
{
    double turn = 0.0;
    for (const PointMass& mass : part) {
        const double d = distanceOf(side, mass);
        turn += mass.mass * d * (side.length * side.length - d * d) / side.length;
    }
    const SheetPortion portion = SheetPortion::of(load, part);
    const QString s = trimmed(side.length, PLACE_DECIMALS);
    const QString d = distanceText(side, portion.placeText);
    const bool isSingle = load.isListed && part.size() == 1;
    const QString formula =
        isSingle ? portion.massText + u" × "_s + d + u" × ("_s + s + u"² − "_s + d + u"²) / "_s + s
                 : sumsFormula(load, part, side);
    return {portion.title, formula + u" ="_s, fixed(turn, decimals)};
}

void addSide(const SheetProject& project, const Side& side, int decimals, QList<QStringList>& rows)
{
    const double s = side.length;
    rows.append({side.isLeft ? u"Truss, a la izquierda"_s : u"Truss, a la derecha"_s,
                 operand(exact(project.selfWeight)) + u" × "_s + trimmed(s, PLACE_DECIMALS) + u"³ / 4 ="_s,
                 fixed(project.selfWeight * s * s * s / 4.0, decimals)});
    for (const SheetLoad& load : project.loads) {
        std::vector<PointMass> part;
        for (const PointMass& mass : load.masses) {
            const double d = distanceOf(side, mass);
            if (d > 0.0 && d < s)
                part.push_back(mass);
        }
        if (!part.empty())
            rows.append(rowOf(load, part, side, decimals));
    }
}

} // namespace

QString SheetEquations::turns(const SheetProject& project, const SheetBeam& beam)
{
    QString html;
    const SheetBeam::Case& told = beam.pushing;
    for (std::size_t j = 1; j + 1 < told.places.size(); ++j) {
        const double left = told.places[j] - told.places[j - 1];
        const double right = told.places[j + 1] - told.places[j];
        QList<QStringList> rows;
        addSide(project, {told.places[j - 1], left, true}, beam.decimals.turn + 2, rows);
        addSide(project, {told.places[j + 1], right, false}, beam.decimals.turn + 2, rows);
        rows.append({u"<b>K</b>"_s, u"suma de las %1 filas ="_s.arg(rows.size()),
                     u"<b>"_s + fixed(told.turns[j], beam.decimals.turn) + u"</b>"_s});
        html += SheetHtml::heading(3, u"K del "_s + pointName(beam, j))
                + SheetHtml::paragraph(u"Vano a su izquierda: s₁ = "_s + place(told.places[j]) + u" − "_s
                                       + place(told.places[j - 1]) + u" = "_s + trimmed(left, PLACE_DECIMALS)
                                       + u" m; a su derecha: s₂ = "_s + place(told.places[j + 1]) + u" − "_s
                                       + place(told.places[j]) + u" = "_s + trimmed(right, PLACE_DECIMALS)
                                       + u" m."_s)
                + SheetHtml::table({u"Qué cuelga"_s, u"Cuenta"_s, u"kg·m²"_s}, rows, {0, 1});
    }
    return html;
}
