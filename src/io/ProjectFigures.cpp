#include "io/ProjectFigures.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// From here on the truss is overstressed [%].
constexpr float STRESS_LIMIT = 100.0F;

using Arrays = std::map<int, ProjectFigures::ArrayFigures>; // by group

bool belongsToArray(const LoadLogic::ActiveLoad& load)
{
    return load.groupId >= 0;
}

/// A segment whose type word tells of a screen; those from a file have none.
bool countsAsLed(const LoadLogic::ActiveLoad& load)
{
    return belongsToArray(load)
           && (load.type.contains("Video"_L1, Qt::CaseInsensitive)
               || load.type.contains("LED"_L1, Qt::CaseInsensitive));
}

/// The static test leaves the motor's own weight out, the dynamic one has it in. Both are strict.
ProjectFigures::Verdict verdictOf(const ProjectFigures::MotorFigures& motor)
{
    if (motor.atPoint > motor.capacity)
        return ProjectFigures::Verdict::StaticOverload;
    if (motor.dynamicLoad > motor.capacity)
        return ProjectFigures::Verdict::DynamicOverload;
    return ProjectFigures::Verdict::Fits;
}

ProjectFigures::MotorFigures motorFigures(const LoadLogic::Motor& motor)
{
    ProjectFigures::MotorFigures figures;
    figures.title = LoadLogic::MotorTitle(motor);
    figures.position = LoadLogic::formatCoordinate(motor.positionX);
    figures.capacity = motor.capacity;
    figures.selfWeight = motor.selfWeight;
    figures.atPoint = motor.staticLoad;
    figures.staticLoad = figures.atPoint + figures.selfWeight;
    figures.dynamicLoad = figures.staticLoad * LoadLogic::DYNAMIC_FACTOR;
    figures.verdict = verdictOf(figures);
    return figures;
}

Arrays collectArrays()
{
    Arrays arrays;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (!countsAsLed(load))
            continue;
        const auto [array, isFirst] = arrays.try_emplace(load.groupId);
        if (isFirst) {
            array->second = {0,
                             load.screenWidth,
                             load.screenHeight,
                             load.screenWeightM2,
                             load.bumperWeightPerMeter,
                             load.cableWeightPercent,
                             0.0F};
        }
        array->second.totalMass += load.mass;
    }

    int number = 0;
    for (auto& [group, array] : arrays)
        array.number = ++number;
    return arrays;
}

ProjectFigures::LoadFigures loadFigures(const LoadLogic::ActiveLoad& load, const Arrays& arrays)
{
    ProjectFigures::LoadFigures figures;
    figures.title = load.name.isEmpty() ? u"Carga "_s + QString::number(load.id) : load.name;
    figures.position = LoadLogic::formatCoordinate(load.positionX);
    figures.mass = load.mass;
    figures.isSegment = belongsToArray(load);
    const auto array = arrays.find(load.groupId);
    figures.arrayNumber = array == arrays.cend() ? 0 : array->second.number;
    return figures;
}

} // namespace

ProjectFigures ProjectFigures::collect(const QString& title)
{
    ProjectFigures figures;
    figures.title = title;
    figures.trussLength = LoadLogic::TrussLength;
    figures.trussSelfWeight = LoadLogic::TrussSelfWeight;
    figures.limitCPL = LoadLogic::Limit_CPL;
    figures.stress = LoadLogic::TrussStress_Percentage;
    figures.isUnstable = LoadLogic::isUnstable;

    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        figures.motors.append(motorFigures(motor));
    const Arrays arrays = collectArrays();
    for (const auto& [group, array] : arrays)
        figures.arrays.append(array);
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
        figures.loads.append(loadFigures(load, arrays));
    return figures;
}

ProjectFigures ProjectFigures::calculate(const LoadLogic::ProjectState& project)
{
    const EngineLoan loan;
    LoadLogic::Load(project);
    LoadLogic::CalcularReacciones();
    return collect(project.tabName);
}

QString ProjectFigures::verdictText(Verdict verdict)
{
    switch (verdict) {
    case Verdict::StaticOverload:
        return u"EXCESO ESTÁTICO ❌"_s;
    case Verdict::DynamicOverload:
        return u"EXCESO DINÁMICO ❌"_s;
    case Verdict::Fits:
        break;
    }
    return u"OK ✅"_s;
}

bool ProjectFigures::isOverstressed() const
{
    return !(stress < STRESS_LIMIT); // a stress that is not a number is none to trust
}

bool ProjectFigures::isTrussOverloaded() const
{
    return isOverstressed() || isUnstable;
}

bool ProjectFigures::areMotorsFit() const
{
    return std::all_of(motors.cbegin(), motors.cend(),
                       [](const MotorFigures& motor) { return motor.verdict == Verdict::Fits; });
}

bool ProjectFigures::fits() const
{
    return areMotorsFit() && !isTrussOverloaded();
}

bool ProjectFigures::isCalculable() const
{
    return std::none_of(motors.cbegin(), motors.cend(),
                        [](const MotorFigures& motor) { return std::isnan(motor.dynamicLoad); });
}
