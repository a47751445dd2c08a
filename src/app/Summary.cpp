#include "app/Summary.h"

#include "app/Console.h"
#include "app/TextTable.h"
#include "engine/Numbers.h"

#include <QJsonArray>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

const QString INDENT = u"  "_s;

/// A longer name would push the figures off the terminal [characters].
constexpr qsizetype LONGEST_TITLE = 40;

QString decimal(float value)
{
    return Numbers::fixed(value, 1);
}

QString shortTitle(const QString& title)
{
    QString harmless = Console::harmless(title);
    if (harmless.size() <= LONGEST_TITLE)
        return harmless;
    return harmless.left(LONGEST_TITLE - 1) + u'…';
}

QString truss(const Figures& project)
{
    return INDENT + u"Viga: "_s + Numbers::fixed(project.trussLength, 2) + u" m, "_s
           + decimal(project.trussSelfWeight) + u" kg/m, CPL "_s + decimal(project.limitCPL) + u" kg\n"_s;
}

QString motors(const Figures& project)
{
    if (project.motors.isEmpty())
        return INDENT + u"Sin motores\n"_s;

    TextTable table;
    table.add({u"Motor"_s, u"Posición"_s, u"En punto (kg)"_s, u"Estática (kg)"_s, u"Dinámica (kg)"_s,
               u"Capacidad (kg)"_s, u"Veredicto"_s});
    for (const Figures::MotorFigures& motor : project.motors) {
        table.add({shortTitle(motor.title), motor.position, decimal(motor.atPoint), decimal(motor.staticLoad),
                   decimal(motor.dynamicLoad), decimal(motor.capacity), Figures::verdictText(motor.verdict)});
    }
    return table.text(INDENT);
}

QString conclusion(const Figures& project)
{
    QString text = INDENT + u"Estrés: "_s + decimal(project.stress) + u" %\n"_s;
    text +=
        INDENT + u"Estabilidad: "_s
        + (project.isUnstable ? u"INESTABLE, voladizo de más del 45 % de la longitud\n"_s : u"estable\n"_s);
    text += INDENT + u"Resultado: "_s + project.resultWord() + u": "_s + project.resultReason() + u'\n';
    if (!project.isCalculable()) {
        text += INDENT
                + u"Aviso: hay motores cuya carga no se puede calcular (dos en el mismo punto con una carga "
                  "encima); el proyecto no se da por bueno\n"_s;
    }
    return text;
}

/// Not-a-number becomes null in the document.
QJsonValue number(float value)
{
    constexpr double THOUSANDTHS = 1000.0;
    return std::round(static_cast<double>(value) * THOUSANDTHS) / THOUSANDTHS;
}

QString verdictKey(Figures::Verdict verdict)
{
    switch (verdict) {
    case Figures::Verdict::StaticOverload:
        return u"exceso_estatico"_s;
    case Figures::Verdict::DynamicOverload:
        return u"exceso_dinamico"_s;
    case Figures::Verdict::Fits:
        break;
    }
    return u"ok"_s;
}

QJsonObject motorObject(const Figures::MotorFigures& motor)
{
    return {
        {u"nombre"_s, motor.title},
        {u"posicion"_s, motor.position},
        {u"en_punto_kg"_s, number(motor.atPoint)},
        {u"estatica_kg"_s, number(motor.staticLoad)},
        {u"dinamica_kg"_s, number(motor.dynamicLoad)},
        {u"capacidad_kg"_s, number(motor.capacity)},
        {u"peso_propio_kg"_s, number(motor.selfWeight)},
        {u"veredicto"_s, verdictKey(motor.verdict)},
    };
}

} // namespace

QString Summary::text(const QString& name, const Figures& project)
{
    return Console::harmless(name) + u": "_s + Console::harmless(project.title) + u'\n' + truss(project)
           + motors(project) + conclusion(project);
}

QJsonObject Summary::json(const QString& name, const Figures& project)
{
    QJsonArray motorObjects;
    for (const Figures::MotorFigures& motor : project.motors)
        motorObjects.append(motorObject(motor));
    return {
        {u"archivo"_s, name},
        {u"proyecto"_s, project.title},
        {u"longitud_m"_s, number(project.trussLength)},
        {u"peso_kg_m"_s, number(project.trussSelfWeight)},
        {u"cpl_kg"_s, number(project.limitCPL)},
        {u"motores"_s, motorObjects},
        {u"estres_pct"_s, number(project.stress)},
        {u"estable"_s, !project.isUnstable},
        {u"calculable"_s, project.isCalculable()},
        {u"apto"_s, isWithinLimits(project)},
    };
}

bool Summary::isWithinLimits(const Figures& project)
{
    return project.fits() && project.isCalculable();
}
