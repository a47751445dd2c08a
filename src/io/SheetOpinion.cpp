#include "io/SheetOpinion.h"

#include "engine/SecondOpinionText.h"
#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::Opinion;
using SecondOpinion::State;
using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;
using SheetNumbers::trimmed;

constexpr int PLACE_DECIMALS = 9;

QString place(double x)
{
    return operand(trimmed(x, PLACE_DECIMALS));
}

QString centreHtml(const SheetProject& project, double centre)
{
    const QString text = fixed(centre, 3);
    const double first = project.motors.front().position;
    const double last = project.motors.back().position;
    return SheetHtml::paragraph(
        u"Centro de gravedad: c = S / W = "_s + operand(project.momentText()) + u" / "_s
        + project.weightText() + u" = "_s + text + u" m desde la izquierda; desde el centro del truss, "_s
        + text + u" − "_s + exact(project.length) + u" / 2 = "_s + fixed(centre - project.length / 2.0, 2)
        + u" m. Hasta el primer motor: "_s + text + u" − "_s + place(first) + u" = "_s
        + fixed(centre - first, 2) + u" m; hasta el último: "_s + place(last) + u" − "_s + text + u" = "_s
        + fixed(last - centre, 2) + u" m. Si uno de los dos es negativo, el truss vuelca."_s);
}

QString pointsHtml(const SheetProject& project, const SheetBeam& beam)
{
    QString html;
    for (std::size_t k = 0; k < beam.show.points.size(); ++k) {
        const HangingPoints::Point& point = beam.show.points[k];
        if (point.motors.size() == 1)
            continue;
        QStringList places;
        for (const std::size_t i : point.motors)
            places += place(project.motors[i].position);
        html += SheetHtml::paragraph(
            u"Los "_s + SheetEquations::pointName(beam, k)
            + u" están a menos de 0.05 m: son un solo punto de colgado, en medio de ellos, x = ("_s
            + places.join(u" + "_s) + u") / "_s + QString::number(places.size()) + u" = "_s
            + place(point.position) + u" m, y se reparten por igual lo que lleva."_s);
    }
    return html;
}

QString methodHtml()
{
    return SheetHtml::paragraph(u"El truss es una sola viga continua. G es lo que los vanos, cortados sobre "
                                u"los motores, dejarían "
                                "en cada uno (la palanca); K es cuánto giran sus cargas el truss sobre él. "
                                "Ecuación de los tres "
                                "momentos (Clapeyron), con M positivo donde el truss se comba hacia abajo:"_s)
           + SheetHtml::paragraph(u"s₁·M₋ + 2·(s₁ + s₂)·M + s₂·M₊ = −K"_s)
           + SheetHtml::paragraph(u"K = Σ P·d·(s₁² − d²)/s₁ + Σ P·b·(s₂² − b²)/s₂ + w·s₁³/4 + w·s₂³/4"_s)
           + SheetHtml::paragraph(u"R = G + (M₋ − M)/s₁ + (M₊ − M)/s₂"_s)
           + SheetHtml::paragraph(
               u"M₋ y M₊ son los momentos de los motores vecinos, s₁ y s₂ los vanos a la izquierda y a la "
               u"derecha, "
               "d y b las distancias al otro extremo de cada vano. Sobre el primer motor y el último, M sale "
               "del "
               "voladizo. Comprobar es poner los números: los momentos que cumplen todas las ecuaciones son "
               "únicos, porque en cada una pesa más el suyo que los de los vecinos."_s);
}

/// The textbook's beam in full; where it would push, what carries instead.
QString levelHtml(const SheetProject& project, const SheetBeam& beam)
{
    const bool pushes = beam.level && beam.level->carrying.size() < beam.pushing.carrying.size();
    QString html = SheetHtml::heading(3, u"Todos los motores nivelados"_s)
                   + SheetEquations::table(beam, beam.pushing)
                   + SheetEquations::solution(project, beam, beam.pushing);
    if (pushes) {
        html +=
            SheetHtml::heading(3, u"Las cadenas solo tiran"_s)
            + SheetHtml::paragraph(u"Con todos, algún motor tendría que empujar hacia abajo, y una cadena no "
                                   "puede. Llevan el truss los de la tabla; sobre los demás queda por encima "
                                   "de su gancho, y están flojos."_s)
            + SheetEquations::table(beam, *beam.level) + SheetEquations::solution(project, beam, *beam.level);
    }
    if (!beam.level)
        return html;
    return html + SheetEquations::shared(beam, *beam.level, true)
           + SheetEquations::extremes(project, beam, *beam.level);
}

QString slackHtml(const SheetProject& project, const SheetBeam& beam)
{
    QString html =
        SheetHtml::heading(2, u"8. Contraste: un motor flojo"_s)
        + SheetHtml::paragraph(u"Las mismas ecuaciones sin ese motor. El que falta aquí es "
                               "imprescindible (sin él, el truss vuelca) o comparte su punto con otro."_s);
    for (const SheetBeam::Case& told : beam.oneSlack) {
        html += SheetHtml::heading(3, u"Flojo el "_s + SheetEquations::pointName(beam, *told.slack))
                + SheetEquations::table(beam, told) + SheetEquations::shared(beam, told, false)
                + SheetEquations::extremes(project, beam, told);
    }
    return html;
}

QString mostHtml(const SheetProject& project, const SheetBeam& beam)
{
    const std::vector<HangingPoints::Point>& points = beam.show.points;
    const double weight = project.weight();
    const double moment = project.moment();
    const double first = points.front().position;
    const double last = points.back().position;
    QList<QStringList> rows;
    for (std::size_t k = 0; k < points.size(); ++k) {
        const double x = points[k].position;
        QString formula = project.weightText();
        double most = weight;
        if (x < beam.show.beam.centre) {
            formula = u'(' + formula + u" × "_s + place(last) + u" − "_s + operand(project.momentText())
                      + u") / ("_s + place(last) + u" − "_s + place(x) + u')';
            most = (weight * last - moment) / (last - x);
        } else if (x > beam.show.beam.centre) {
            formula = u'(' + operand(project.momentText()) + u" − "_s + formula + u" × "_s + place(first)
                      + u") / ("_s + place(x) + u" − "_s + place(first) + u')';
            most = (moment - weight * first) / (x - first);
        }
        rows.append({SheetEquations::pointName(beam, k), formula + u" ="_s, fixed(most, 1)});
    }
    return SheetHtml::heading(2, u"9. Contraste: máximo posible"_s)
           + SheetHtml::paragraph(
               u"Sean cuales sean la nivelación y la rigidez, Σ R = W y Σ R·x = S con R ≥ 0. Lo más que "
               "puede llevar un motor es lo que llevaría con el último del otro lado del centro "
               "de gravedad, sin los demás."_s)
           + SheetHtml::table({u"Lleva"_s, u"Cuenta"_s, u"kg"_s}, rows, {0, 1});
}

} // namespace

QString SheetOpinion::figuresHtml(const Opinion& opinion)
{
    QList<QStringList> rows = SecondOpinionText::rows(opinion);
    const qsizetype all = rows.size();
    rows.resize(std::min(all, static_cast<qsizetype>(SheetProject::MOST_LOADS)));
    for (QStringList& row : rows)
        row.front() = row.constFirst().toHtmlEscaped();
    QString html = SheetHtml::table(SecondOpinionText::columns(), rows, {0, 6});
    if (rows.size() < all)
        html += SheetHtml::note(u"Se listan los primeros %1 motores de %2."_s.arg(
            QString::number(rows.size()), QString::number(all)));
    QStringList sentences = SecondOpinionText::sentences(opinion);
    sentences.resize(std::min(sentences.size(), static_cast<qsizetype>(SheetProject::MOST_LOADS)));
    for (const QString& sentence : std::as_const(sentences))
        html += SheetHtml::paragraph(sentence.toHtmlEscaped());
    if (opinion.level) {
        html += SheetHtml::paragraph(SecondOpinionText::truss(opinion).toHtmlEscaped())
                + SheetHtml::picture(SheetHtml::MOMENTS) + SheetHtml::picture(SheetHtml::SHEAR);
    }
    return html + SheetHtml::note(SecondOpinionText::limits());
}

QString SheetOpinion::equationsHtml(const SheetProject& project, const Opinion& opinion)
{
    QString html = SheetHtml::heading(2, u"7. Contraste: ecuaciones y cuentas"_s);
    if (!opinion.centre)
        return html
               + SheetHtml::paragraph(u"No hay nada que calcular: "_s
                                      + SecondOpinionText::sentences(opinion).join(u' ').toHtmlEscaped());
    html += centreHtml(project, project.moment() / project.weight());
    if (opinion.state != State::Level)
        return html;
    const SecondOpinion::Layout layout = sheetLayout(project);
    if (SecondOpinion::of(layout).state != State::Level) // a thousandth of a millimetre decides
        return html
               + SheetHtml::paragraph(
                   u"El caso está en un límite: las últimas cifras de los datos deciden."_s);
    if (project.motors.size() > SheetProject::MOST_MOTORS) {
        return html
               + SheetHtml::paragraph(
                   u"Con más de %1 motores las cuentas no se desarrollan aquí; las cifras de la "
                   "tabla salen del mismo método."_s.arg(SheetProject::MOST_MOTORS));
    }
    const SheetBeam beam = SheetBeam::of(project);
    return html + pointsHtml(project, beam) + methodHtml() + SheetEquations::turns(project, beam)
           + levelHtml(project, beam) + slackHtml(project, beam) + mostHtml(project, beam);
}
