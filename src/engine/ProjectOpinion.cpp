#include "engine/ProjectOpinion.h"

SecondOpinion::Layout ProjectOpinion::layoutOf(const ProjectState& solved,
                                               std::optional<double> tableDeflection)
{
    SecondOpinion::Layout layout;
    layout.length = static_cast<double>(solved.trussLength);
    layout.selfWeight = static_cast<double>(solved.trussSelfWeight);
    layout.limitCPL = static_cast<double>(solved.limitCPL);
    layout.tableDeflection = tableDeflection;
    layout.motors.reserve(static_cast<std::size_t>(solved.motors.size()));
    for (const Motor& motor : solved.motors) {
        layout.motors.push_back({Project::motorTitle(motor), static_cast<double>(motor.positionX),
                                 static_cast<double>(motor.capacity), static_cast<double>(motor.selfWeight),
                                 static_cast<double>(motor.staticLoad)});
    }
    layout.loads.reserve(static_cast<std::size_t>(solved.loads.size()));
    for (const ActiveLoad& load : solved.loads)
        layout.loads.push_back({static_cast<double>(load.positionX), static_cast<double>(load.mass)});
    return layout;
}

SecondOpinion::Opinion ProjectOpinion::of(const ProjectState& solved, std::optional<double> tableDeflection)
{
    return SecondOpinion::of(layoutOf(solved, tableDeflection));
}
