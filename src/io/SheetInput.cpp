#include "io/SheetInput.h"

#include "engine/SecondOpinionText.h"
#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"
#include "io/SheetPortion.h"

using namespace Qt::StringLiterals;

namespace
{

using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;

QString trussTable(const SheetProject& project)
{
    return SheetHtml::table({u"Truss"_s, u"Valor"_s},
                            {{u"Longitud L (m)"_s, exact(project.length)},
                             {u"Peso propio w (kg/m)"_s, exact(project.selfWeight)},
                             {u"Carga puntual central admisible, CPL (kg)"_s, exact(project.limitCPL)}},
                            {0});
}

QString motorTable(const SheetProject& project)
{
    QList<QStringList> rows;
    for (const SheetMotor& motor : project.motors) {
        if (rows.size() == static_cast<qsizetype>(SheetProject::MOST_LOADS))
            break;
        rows.append({QString::number(motor.number), motor.title, exact(motor.position),
                     motor.figures.position, exact(motor.capacity), exact(motor.ownWeight)});
    }
    QString html = SheetHtml::table({u"N.º"_s, u"Motor"_s, u"x desde la izquierda (m)"_s,
                                     u"Respecto al centro"_s, u"Capacidad (kg)"_s, u"Peso propio (kg)"_s},
                                    rows, {1});
    if (static_cast<std::size_t>(rows.size()) < project.motors.size()) {
        html += SheetHtml::note(u"Se listan los primeros %1 motores de %2."_s.arg(
            QString::number(rows.size()), QString::number(project.motors.size())));
    }
    return html;
}

/// "69.55", "8 × 69.55", and where they hang.
QStringList loadRow(const SheetLoad& load, int decimals)
{
    const SheetPortion whole = SheetPortion::of(load, load.masses);
    QStringList positions;
    for (const PointMass& mass : load.masses) {
        if (load.isListed)
            positions += exact(mass.position);
    }
    const bool isOne = load.masses.size() == 1;
    return {whole.title,
            isOne || !load.isListed ? whole.massText
                                    : whole.massText + u" = "_s + fixed(whole.mass, decimals),
            load.isListed ? positions.join(u"; "_s) : u"su centro: "_s + whole.placeText,
            whole.massText + u" × "_s + whole.placeText + u" ="_s, fixed(whole.moment, decimals)};
}

QString loadTable(const SheetProject& project)
{
    QList<QStringList> rows;
    for (const SheetLoad& load : project.loads)
        rows.append(loadRow(load, project.sumDecimals() + 2));
    if (rows.isEmpty())
        return SheetHtml::paragraph(u"Sin cargas."_s);
    QString html =
        SheetHtml::table({u"Carga"_s, u"Masa P (kg)"_s, u"x desde la izquierda (m)"_s, u"P × x"_s, u"kg·m"_s},
                         rows, {0, 2, 3});
    if (!project.loads.back().isListed) {
        html += SheetHtml::note(
            u"Para que la memoria no crezca sin medida, las cargas a partir de la %1.ª, y las pantallas de "
            u"más "
            "de %2 segmentos, no se listan: entran con su suma, y en las cuentas con la suma de las que caen "
            "en cada vano."_s.arg(QString::number(SheetProject::MOST_LOADS + 1),
                                  QString::number(SheetProject::MOST_SEGMENTS)));
    }
    return html;
}

QString sums(const SheetProject& project)
{
    const QString w = operand(exact(project.selfWeight));
    const QString length = operand(exact(project.length));
    const QString mass = fixed(project.loadMass(), project.sumDecimals());
    const QString moment = fixed(project.loadMoment(), project.sumDecimals());
    return SheetHtml::paragraph(u"<b>Sumas.</b> Cargas: ΣP = "_s + mass + u" kg y ΣP·x = "_s + moment
                                + u" kg·m. Peso total: W = "_s + w + u" × "_s + length + u" + "_s
                                + operand(mass) + u" = "_s + project.weightText()
                                + u" kg. Momento estático: S = "_s + w + u" × "_s + length + u"² / 2 + "_s
                                + operand(moment) + u" = "_s + project.momentText() + u" kg·m."_s)
           + SheetHtml::note(u"x se mide desde el extremo izquierdo del truss. Los números se dan como se "
                             "escribieron en el programa; el punto es el signo decimal."_s);
}

} // namespace

QString SheetInput::html(const SheetProject& project)
{
    return SheetHtml::heading(2, u"1. Datos"_s) + trussTable(project) + motorTable(project)
           + loadTable(project) + sums(project);
}
