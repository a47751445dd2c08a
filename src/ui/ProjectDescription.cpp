#include "ui/ProjectDescription.h"

#include "engine/Numbers.h"
#include "engine/Project.h"

using namespace Qt::StringLiterals;

namespace
{

/// Nobody listens to more of them.
constexpr qsizetype MOST_MOTORS = 20;

QString counted(qsizetype count, const QString& one, const QString& many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString describeMotor(const Motor& motor, float trussLength)
{
    return u" Motor "_s + Project::motorTitle(motor) + u" en "_s
           + Project::formatCoordinate(motor.positionX, trussLength) + u": "_s
           + Numbers::fixed(motor.staticLoad, 1) + u" kg de "_s + Numbers::fixed(motor.capacity, 1)
           + u" kg."_s;
}

} // namespace

QString ProjectDescription::of(const ProjectState& solved)
{
    const QList<Motor>& motors = solved.motors;
    QString text = u"Truss de "_s + Numbers::fixed(solved.trussLength, 1) + u" m con "_s
                   + counted(motors.size(), u"motor"_s, u"motores"_s) + u" y "_s
                   + counted(solved.loads.size(), u"carga"_s, u"cargas"_s) + u". "_s;
    text += solved.isUnstable
                ? u"Sistema inestable."_s
                : u"Estrés estructural: "_s + Numbers::fixed(solved.trussStressPercentage, 1) + u" %."_s;
    for (const Motor& motor : motors.first(qMin(motors.size(), MOST_MOTORS)))
        text += describeMotor(motor, solved.trussLength);
    if (motors.size() > MOST_MOTORS)
        text += u" Y "_s + QString::number(motors.size() - MOST_MOTORS) + u" motores más."_s;
    return text;
}
