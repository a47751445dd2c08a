#include "engine/Figures.h"

#include "engine/Statics.h"

#include <algorithm>
#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

using ArraysByGroup = std::map<int, Figures::ArrayFigures>; // by group

bool belongsToArray(const ActiveLoad& load)
{
    return load.groupId >= 0;
}

/// A segment whose type word tells of a screen; those from a file have none.
bool countsAsLed(const ActiveLoad& load)
{
    return belongsToArray(load)
           && (load.type.contains("Video"_L1, Qt::CaseInsensitive)
               || load.type.contains("LED"_L1, Qt::CaseInsensitive));
}

Figures::MotorFigures motorFigures(const Motor& motor, float trussLength)
{
    Figures::MotorFigures figures;
    figures.title = Project::motorTitle(motor);
    figures.position = Project::formatCoordinate(motor.positionX, trussLength);
    figures.fromCentre = motor.positionX - trussLength * 0.5F;
    figures.capacity = motor.capacity;
    figures.selfWeight = motor.selfWeight;
    figures.atPoint = motor.staticLoad;
    figures.staticLoad = figures.atPoint + figures.selfWeight;
    figures.dynamicLoad = Limits::dynamicLoad(figures.atPoint, figures.selfWeight);
    figures.verdict = Limits::motorVerdict(figures.atPoint, figures.selfWeight, figures.capacity);
    return figures;
}

ArraysByGroup collectArrays(const QList<ActiveLoad>& loads)
{
    ArraysByGroup arrays;
    for (const ActiveLoad& load : loads) {
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

Figures::LoadFigures loadFigures(const ActiveLoad& load, const ArraysByGroup& arrays, float trussLength)
{
    Figures::LoadFigures figures;
    figures.title = load.name.isEmpty() ? u"Carga "_s + QString::number(load.id) : load.name;
    figures.position = Project::formatCoordinate(load.positionX, trussLength);
    figures.fromCentre = load.positionX - trussLength * 0.5F;
    figures.mass = load.mass;
    figures.isSegment = belongsToArray(load);
    figures.group = load.groupId;
    const auto array = arrays.find(load.groupId);
    figures.arrayNumber = array == arrays.cend() ? 0 : array->second.number;
    return figures;
}

} // namespace

Figures Figures::of(const ProjectState& project)
{
    return ofSolved(Statics::solved(project));
}

Figures Figures::ofSolved(const ProjectState& solved)
{
    Figures figures;
    figures.title = solved.tabName;
    figures.trussLength = solved.trussLength;
    figures.trussSelfWeight = solved.trussSelfWeight;
    figures.limitCPL = solved.limitCPL;
    figures.stress = solved.trussStressPercentage;
    figures.isUnstable = solved.isUnstable;

    for (const Motor& motor : solved.motors)
        figures.motors.append(motorFigures(motor, solved.trussLength));
    const ArraysByGroup arrays = collectArrays(solved.loads);
    for (const auto& [group, array] : arrays)
        figures.arrays.append(array);
    for (const ActiveLoad& load : solved.loads)
        figures.loads.append(loadFigures(load, arrays, solved.trussLength));
    return figures;
}

QString Figures::verdictText(Verdict verdict)
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

QHash<int, int> Figures::arrayNumbers(const QList<ActiveLoad>& loads)
{
    QHash<int, int> numbers;
    for (const auto& [group, array] : collectArrays(loads))
        numbers.insert(group, array.number);
    return numbers;
}

bool Figures::isOverstressed() const
{
    return !(stress < Limits::FULL_STRESS); // a stress that is not a number is none to trust
}

bool Figures::isTrussOverloaded() const
{
    return isOverstressed() || isUnstable;
}

bool Figures::areMotorsFit() const
{
    return std::all_of(motors.cbegin(), motors.cend(),
                       [](const MotorFigures& motor) { return motor.verdict == Verdict::Fits; });
}

bool Figures::fits() const
{
    return areMotorsFit() && !isTrussOverloaded();
}

bool Figures::isCalculable() const
{
    return std::none_of(motors.cbegin(), motors.cend(),
                        [](const MotorFigures& motor) { return std::isnan(motor.dynamicLoad); });
}

QString Figures::resultWord() const
{
    if (isUnstable)
        return u"NO APTO (INESTABLE)"_s;
    return fits() ? u"APTO"_s : u"NO APTO"_s;
}

QString Figures::resultReason() const
{
    if (isUnstable)
        return u"Error de voladizo."_s;
    return fits() ? u"Dentro de márgenes."_s : u"Superación de carga."_s;
}
