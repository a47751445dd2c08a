#include "ui/ProjectDescription.h"

#include "engine/LoadLogic.h"
#include "engine/Numbers.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Nobody listens to more of them.
constexpr qsizetype MOST_MOTORS = 20;

QString counted(qsizetype count, const QString& one, const QString& many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString describeMotor(const LoadLogic::Motor& motor)
{
    return u" Motor "_s + Project::motorTitle(motor) + u" en "_s
           + LoadLogic::formatCoordinate(motor.positionX) + u": "_s + Numbers::fixed(motor.staticLoad, 1)
           + u" kg de "_s + Numbers::fixed(motor.capacity, 1) + u" kg."_s;
}

} // namespace

QString ProjectDescription::ofCurrentProject()
{
    const auto& motors = std::as_const(LoadLogic::MotorList);
    QString text = u"Truss de "_s + Numbers::fixed(LoadLogic::TrussLength, 1) + u" m con "_s
                   + counted(motors.size(), u"motor"_s, u"motores"_s) + u" y "_s
                   + counted(LoadLogic::ActiveLoads.size(), u"carga"_s, u"cargas"_s) + u". "_s;
    text += LoadLogic::isUnstable
                ? u"Sistema inestable."_s
                : u"Estrés estructural: "_s + Numbers::fixed(LoadLogic::TrussStress_Percentage, 1) + u" %."_s;
    for (const LoadLogic::Motor& motor : motors.first(qMin(motors.size(), MOST_MOTORS)))
        text += describeMotor(motor);
    if (motors.size() > MOST_MOTORS)
        text += u" Y "_s + QString::number(motors.size() - MOST_MOTORS) + u" motores más."_s;
    return text;
}
