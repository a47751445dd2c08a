#include "Projects.h"

#include <random>

using namespace Qt::StringLiterals;

namespace
{

constexpr float METRES_PER_MOTOR = 3.0F;
constexpr float SEGMENT_PITCH = 0.5F; // [m]
constexpr float LARGEST_MASS = 90.0F; // [kg]
constexpr float SEGMENT_MASS = 20.0F; // [kg]

/// A number from 0 to below 1; the generator's own sequence is the same everywhere, unlike what
/// the standard's distributions make of it.
float fraction(std::minstd_rand& random)
{
    return static_cast<float>(random() - std::minstd_rand::min())
           / static_cast<float>(std::minstd_rand::max());
}

void addMotors(LoadLogic::ProjectState& project, int count)
{
    for (int i = 0; i < count; ++i) {
        LoadLogic::Motor motor;
        motor.id = i + 1;
        motor.positionX = project.trussLength * static_cast<float>(i) / static_cast<float>(count - 1);
        motor.modelName = u"D8+ "_s + QString::number(motor.id);
        motor.capacity = 1000.0F;
        project.motors.append(motor);
    }
}

void addLoads(LoadLogic::ProjectState& project, int count)
{
    std::minstd_rand random(1);
    for (int i = 0; i < count; ++i) {
        LoadLogic::ActiveLoad load;
        load.id = static_cast<int>(project.loads.size()) + 1;
        load.mass = LARGEST_MASS * fraction(random);
        load.positionX = project.trussLength * fraction(random);
        load.type = u"Audio"_s;
        load.name = u"Carga "_s + QString::number(i + 1);
        project.loads.append(load);
    }
}

void addScreen(LoadLogic::ProjectState& project, float centre, int segments, int groupId)
{
    LoadLogic::ActiveLoad segment;
    segment.type = u"Video_Segment"_s;
    segment.mass = SEGMENT_MASS;
    segment.groupId = groupId;
    segment.screenWidth = SEGMENT_PITCH * static_cast<float>(segments);
    segment.screenHeight = 3.0F;
    segment.screenWeightM2 = 40.0F;
    segment.bumperWeightPerMeter = 10.0F;
    const float leftEdge = centre - segment.screenWidth / 2.0F;
    for (int k = 0; k < segments; ++k) {
        segment.id = static_cast<int>(project.loads.size()) + 1;
        segment.positionX = leftEdge + SEGMENT_PITCH * (static_cast<float>(k) + 0.5F);
        segment.name = u"LED Segment"_s;
        project.loads.append(segment);
    }
}

} // namespace

LoadLogic::ProjectState Projects::make(const Size& size)
{
    LoadLogic::ProjectState project;
    project.tabName = u"Escenario principal"_s;
    project.trussLength = METRES_PER_MOTOR * static_cast<float>(size.motors);
    addMotors(project, size.motors);
    addLoads(project, size.loads);

    const float spacing = project.trussLength / static_cast<float>(size.screens + 1);
    for (int i = 1; i <= size.screens; ++i)
        addScreen(project, spacing * static_cast<float>(i), size.segments, 100 + i);
    return project;
}

void Projects::load(const Size& size)
{
    const LoadLogic::ProjectState project = make(size);
    LoadLogic::MakeCurrent(project);
    LoadLogic::ReserveIds(project);
    LoadLogic::CalcularReacciones();
}
