#include "io/SheetStress.h"

#include "engine/Limits.h"
#include "engine/Numbers.h"
#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"
#include "io/SheetPortion.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

using SheetNumbers::decimalsFor;
using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;
using SheetNumbers::trimmed;
using SheetStress::Candidate;
using Kind = Candidate::Kind;

constexpr int PLACE_DECIMALS = 9;

/// The decimals of a moment: two, or what one decimal of the percentage needs.
int momentDecimals(double reference)
{
    return std::max(2, decimalsFor(0.01 * reference / 100.0));
}

QString place(double x)
{
    return operand(trimmed(x, PLACE_DECIMALS));
}

QString nameOf(const Candidate& candidate)
{
    switch (candidate.kind) {
    case Kind::LeftOverhang:
        return u"Voladizo izquierdo"_s;
    case Kind::RightOverhang:
        return u"Voladizo derecho"_s;
    case Kind::Span:
        break;
    }
    return u"Vano "_s + QString::number(candidate.firstMotor) + u"–"_s
           + QString::number(candidate.firstMotor + 1);
}

/// A row of the deciding moment: origin, formula, value.
QStringList row(const QString& origin, const QString& formula, double moment, int decimals)
{
    return {origin, formula + u" ="_s, fixed(moment, decimals)};
}

struct Term
{
    QString formula;
    double moment;
};

/// What `portion`, which hangs on one side of the place, adds to the deciding moment.
Term termOf(const Candidate& c, const SheetPortion& portion)
{
    const QString from = operand(exact(c.from));
    const QString to = operand(exact(c.to));
    const QString x = place(c.place);
    if (c.kind == Kind::LeftOverhang)
        return {portion.massText + u" × ("_s + to + u" − "_s + portion.placeText + u')',
                portion.mass * (c.to - portion.place)};
    if (c.kind == Kind::RightOverhang)
        return {portion.massText + u" × ("_s + portion.placeText + u" − "_s + from + u')',
                portion.mass * (portion.place - c.from)};
    const QString span = u" / ("_s + to + u" − "_s + from + u')';
    const double s = c.to - c.from;
    if (portion.place < c.place) {
        return {portion.massText + u" × ("_s + portion.placeText + u" − "_s + from + u") × ("_s + to
                    + u" − "_s + x + u')' + span,
                portion.mass * (portion.place - c.from) * (c.to - c.place) / s};
    }
    return {portion.massText + u" × ("_s + to + u" − "_s + portion.placeText + u") × ("_s + x + u" − "_s
                + from + u')' + span,
            portion.mass * (c.to - portion.place) * (c.place - c.from) / s};
}

Term trussTerm(const SheetProject& project, const Candidate& c)
{
    const QString w = operand(exact(project.selfWeight));
    const QString from = operand(exact(c.from));
    const QString to = operand(exact(c.to));
    if (c.kind != Kind::Span)
        return {w + u" × ("_s + to + u" − "_s + from + u")² / 2"_s,
                project.selfWeight * (c.to - c.from) * (c.to - c.from) / 2.0};
    const QString x = place(c.place);
    return {w + u" × ("_s + x + u" − "_s + from + u") × ("_s + to + u" − "_s + x + u") / 2"_s,
            project.selfWeight * (c.place - c.from) * (c.to - c.place) / 2.0};
}

bool counts(const Candidate& c, const PointMass& mass)
{
    switch (c.kind) {
    case Kind::LeftOverhang:
        return mass.position < c.to;
    case Kind::RightOverhang:
        return mass.position > c.from;
    case Kind::Span:
        break;
    }
    return mass.position > c.from && mass.position < c.to;
}

QList<QStringList> rowsOf(const SheetProject& project, const Candidate& c, int decimals)
{
    const Term truss = trussTerm(project, c);
    QList<QStringList> rows{row(u"Truss"_s, truss.formula, truss.moment, decimals)};
    for (const SheetLoad& load : project.loads) {
        std::map<bool, std::vector<PointMass>> sides; // by whether they are at the place or right of it
        for (const PointMass& mass : load.masses) {
            if (counts(c, mass))
                sides[mass.position >= c.place].push_back(mass);
        }
        for (const auto& [side, part] : sides) {
            const SheetPortion portion = SheetPortion::of(load, part);
            const Term term = termOf(c, portion);
            rows.append(row(portion.title, term.formula, term.moment, decimals));
        }
    }
    return rows;
}

QString candidateTable(const std::vector<Candidate>& all)
{
    QList<QStringList> rows;
    for (const Candidate& c : all) {
        const int decimals = momentDecimals(c.reference);
        const QString moment = fixed(c.moment, decimals);
        rows.append(
            {nameOf(c), place(c.place), moment,
             u"100 × "_s + operand(moment) + u" / "_s + trimmed(c.reference, PLACE_DECIMALS) + u" ="_s,
             fixed(c.percent(), 1)});
    }
    return SheetHtml::table(
        {u"Vano o voladizo"_s, u"x (m)"_s, u"M (kg·m)"_s, u"M / M<sub>ref</sub>"_s, u"%"_s}, rows, {0, 3});
}

QString referenceText(const SheetProject& project)
{
    const double reference = project.length * project.limitCPL / 4.0;
    const QString text = trimmed(reference, PLACE_DECIMALS);
    return SheetHtml::paragraph(u"Referencia de un vano: M<sub>ref</sub> = L·CPL/4: "_s
                                + exact(project.length) + u" × "_s + exact(project.limitCPL) + u" / 4 = "_s
                                + text + u" kg·m. De un voladizo, la mitad: "_s + text + u" / 2 = "_s
                                + trimmed(reference / 2.0, PLACE_DECIMALS)
                                + u" kg·m (como poco, 1 kg·m). Cada vano se mira como viga apoyada en sus "
                                  u"dos motores, en su centro y "
                                  "en cada carga; cada voladizo, empotrado en su motor."_s);
}

QString decidingHtml(const SheetProject& project, const Candidate& c)
{
    const int decimals = momentDecimals(c.reference);
    QList<QStringList> rows = rowsOf(project, c, decimals + 2);
    const QString moment = fixed(c.moment, decimals);
    rows.append({u"<b>M</b>"_s, u"suma de las %1 filas ="_s.arg(rows.size()), u"<b>"_s + moment + u"</b>"_s});
    const QString percent = fixed(c.percent(), 1);
    QString html =
        SheetHtml::heading(3, u"Decide: "_s + nameOf(c) + u", en x = "_s + place(c.place) + u" m"_s)
        + SheetHtml::table({u"Qué cuelga"_s, u"Cuenta"_s, u"kg·m"_s}, rows, {0, 1})
        + SheetHtml::paragraph(
            u"Estrés: 100 × "_s + operand(moment) + u" / "_s + trimmed(c.reference, PLACE_DECIMALS) + u" = "_s
            + percent + u" %. El programa muestra "_s + Numbers::fixed(project.figures.stress, 1) + u" %."_s);
    if (std::abs(static_cast<double>(project.figures.stress) - c.percent()) > 0.1)
        html +=
            SheetHtml::paragraph(u"<b>Atención:</b> la cifra del programa es otra, porque calcula con unas "
                                 "siete cifras, que aquí no bastan."_s);
    return html;
}

} // namespace

QString SheetStress::stressHtml(const SheetProject& project)
{
    const QString title = SheetHtml::heading(2, u"4. Estrés del truss"_s);
    const std::vector<Candidate> all = candidates(project);
    if (project.figures.isUnstable)
        return title + SheetHtml::paragraph(u"El montaje es inestable: el programa no da estrés (0.0 %)."_s);
    if (all.empty())
        return title
               + SheetHtml::paragraph(
                   u"Sin motores, sin CPL o sin vanos ni voladizos no hay estrés que medir: "
                   "el programa muestra 0.0 %, que aquí no dice nada."_s);
    const auto deciding =
        std::max_element(all.begin(), all.end(),
                         [](const Candidate& a, const Candidate& b) { return a.percent() < b.percent(); });
    std::vector<Candidate> listed = all;
    listed.resize(std::min(listed.size(), SheetProject::MOST_MOTORS));
    QString html = title + referenceText(project) + candidateTable(listed);
    if (listed.size() < all.size())
        html += SheetHtml::note(u"Se listan los primeros %1 de %2."_s.arg(QString::number(listed.size()),
                                                                          QString::number(all.size())));
    return html + decidingHtml(project, *deciding);
}

QString SheetStress::stabilityHtml(const SheetProject& project)
{
    QString html = SheetHtml::heading(2, u"5. Estabilidad"_s);
    if (!isRated(project))
        return html
               + SheetHtml::paragraph(u"Sin motores, sin longitud o sin CPL no hay nada que comparar."_s);
    constexpr double SHARE = 0.45;
    const QString length = exact(project.length);
    const QString limit = trimmed(SHARE * project.length, PLACE_DECIMALS);
    const double left = project.motors.front().position;
    const double right = project.length - project.motors.back().position;
    const auto comparison = [&](double overhang) {
        return trimmed(overhang, PLACE_DECIMALS)
               + (overhang > SHARE * project.length + 1e-6 ? u" > "_s : u" ≤ "_s) + limit;
    };
    html += SheetHtml::paragraph(u"Un voladizo de más del 45 % de la longitud hace inestable el montaje. "
                                 "Límite: 0.45 × "_s
                                 + length + u" = "_s + limit + u" m."_s);
    html +=
        SheetHtml::paragraph(u"Voladizo izquierdo: "_s + comparison(left) + u". Voladizo derecho: "_s + length
                             + u" − "_s + operand(exact(project.motors.back().position)) + u" = "_s
                             + trimmed(right, PLACE_DECIMALS) + u"; "_s + comparison(right) + u"."_s);
    return html
           + SheetHtml::paragraph(u"Según el programa, el montaje es <b>"_s
                                  + (project.figures.isUnstable ? u"INESTABLE"_s : u"estable"_s)
                                  + u"</b>. El contraste, más abajo, mira además el centro de gravedad. "
                                    "Resultado del programa: <b>"_s
                                  + project.figures.resultWord() + u"</b>. "_s
                                  + project.figures.resultReason());
}
