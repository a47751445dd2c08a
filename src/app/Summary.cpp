#include "app/Summary.h"

#include "app/Console.h"
#include "app/JsonNumber.h"
#include "app/TextTable.h"
#include "engine/Numbers.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace
{

const QString INDENT = u"  "_s;

QString decimal(float value)
{
    return Numbers::fixed(value, 1);
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
        table.add({Console::shortened(motor.title), motor.position, decimal(motor.atPoint),
                   decimal(motor.staticLoad), decimal(motor.dynamicLoad), decimal(motor.capacity),
                   Figures::verdictText(motor.verdict)});
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

QJsonValue number(float value)
{
    return JsonNumber::rounded(static_cast<double>(value));
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
        {u"posicion_m"_s, number(motor.fromCentre)},
        {u"en_punto_kg"_s, number(motor.atPoint)},
        {u"estatica_kg"_s, number(motor.staticLoad)},
        {u"dinamica_kg"_s, number(motor.dynamicLoad)},
        {u"capacidad_kg"_s, number(motor.capacity)},
        {u"peso_propio_kg"_s, number(motor.selfWeight)},
        {u"veredicto"_s, verdictKey(motor.verdict)},
    };
}

QJsonObject loadObject(const Figures::LoadFigures& load)
{
    return {
        {u"nombre"_s, load.title},
        {u"masa_kg"_s, number(load.mass)},
        {u"posicion_m"_s, number(load.fromCentre)},
        {u"grupo"_s, load.isSegment ? QJsonValue(load.group) : QJsonValue(QJsonValue::Null)},
    };
}

} // namespace

QString Summary::text(const QString& name, const Figures& project)
{
    return Console::printable(name) + u": "_s + Console::printable(project.title) + u'\n' + truss(project)
           + motors(project) + conclusion(project);
}

QJsonObject Summary::json(const QString& name, const Figures& project)
{
    QJsonArray motorObjects;
    for (const Figures::MotorFigures& motor : project.motors)
        motorObjects.append(motorObject(motor));
    QJsonArray loadObjects;
    for (const Figures::LoadFigures& load : project.loads)
        loadObjects.append(loadObject(load));
    return {
        {u"archivo"_s, name},
        {u"proyecto"_s, project.title},
        {u"longitud_m"_s, number(project.trussLength)},
        {u"peso_kg_m"_s, number(project.trussSelfWeight)},
        {u"cpl_kg"_s, number(project.limitCPL)},
        {u"motores"_s, motorObjects},
        {u"cargas"_s, loadObjects},
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
