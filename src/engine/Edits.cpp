#include "engine/Edits.h"

#include "engine/Arrays.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Ids beyond this do not move the counters, which leaves them a billion steps to go.
constexpr int LARGEST_RESERVED_ID = std::numeric_limits<int>::max() / 2;
/// Loads that follow a change of length stay this far inside the truss [m].
constexpr float END_CLEARANCE = 0.01F;

/// The factor that positions grow by with the truss; a truss that had no length has no proportions
/// to keep.
float lengthRatio(float newLength, float oldLength)
{
    const float ratio = newLength / oldLength;
    return std::isfinite(ratio) && ratio > 0.0F ? ratio : 1.0F;
}

void scaleLoads(QList<ActiveLoad>& loads, float ratio, float rightmost)
{
    const ArraySummaries arrays = Arrays::summarize(loads, -1);
    for (ActiveLoad& load : loads) {
        float scaled = load.positionX * ratio;
        if (load.groupId != -1) {
            const float centre = arrays.value(load.groupId).centre;
            scaled = centre * ratio + (load.positionX - centre);
        }
        load.positionX = std::max(END_CLEARANCE, std::min(scaled, rightmost));
    }
}

int nextMotorId(const QList<Motor>& motors)
{
    int largest = 0;
    for (const Motor& motor : motors)
        largest = std::max(largest, motor.id);
    if (largest < std::numeric_limits<int>::max())
        return largest + 1;

    int id = 1;
    while (std::any_of(motors.cbegin(), motors.cend(), [id](const Motor& motor) { return motor.id == id; }))
        ++id;
    return id;
}

ActiveLoad segmentOf(const LedArray& screen, int groupId)
{
    ActiveLoad segment;
    segment.mass = screen.segmentMass();
    segment.type = u"Video_Segment"_s;
    segment.name = u"LED Segment"_s;
    segment.groupId = groupId;
    segment.screenWidth = screen.width;
    segment.screenHeight = screen.height;
    segment.screenWeightM2 = screen.weightM2;
    segment.bumperWeightPerMeter = screen.bumperWeightPerMeter;
    segment.cableWeightPercent = screen.cableWeightPercent;
    return segment;
}

void hangNumberedScreen(const Edits::LoadList& list, const LedArray& screen, float centre, int groupId,
                        int number)
{
    ActiveLoad segment = segmentOf(screen, groupId);
    const QString prefix = u"LED "_s + QString::number(number) + u" Seg "_s;
    int segmentNumber = 0;
    for (const float position : screen.segmentPositions(centre, list.trussLength)) {
        segment.name = prefix + QString::number(++segmentNumber);
        segment.positionX = position;
        Edits::hangLoad(list, segment);
    }
}

void raiseAbove(int& counter, int usedId)
{
    if (usedId <= LARGEST_RESERVED_ID)
        counter = std::max(counter, usedId + 1);
}

} // namespace

ProjectState Edits::freshProject(const QString& tabName, float motorWeight)
{
    ProjectState project;
    project.tabName = tabName;
    hangMotor(project.motors, 0.0F, project.trussLength);
    hangMotor(project.motors, project.trussLength, project.trussLength);
    for (Motor& motor : project.motors)
        motor.selfWeight = motorWeight;
    return project;
}

void Edits::resizeTruss(float newLength, float& length, QList<Motor>& motors, QList<ActiveLoad>& loads)
{
    const float ratio = lengthRatio(newLength, length);
    length = newLength;
    for (Motor& motor : motors)
        motor.positionX *= ratio;
    scaleLoads(loads, ratio, newLength - END_CLEARANCE);
}

void Edits::hangMotor(QList<Motor>& motors, float x, float trussLength)
{
    Motor motor;
    motor.id = nextMotorId(motors);
    motor.positionX = Project::clampToTruss(x, trussLength);
    motors.append(motor);
}

int Edits::hangLoad(const LoadList& list, ActiveLoad load)
{
    load.id = list.nextId++;
    load.positionX = Project::clampToTruss(load.positionX, list.trussLength);
    list.loads.append(std::move(load));
    return list.loads.constLast().id;
}

void Edits::spreadLoads(const LoadList& list, ActiveLoad pattern, int count)
{
    if (count <= 1) {
        pattern.positionX = list.trussLength * 0.5F;
        hangLoad(list, std::move(pattern));
        return;
    }
    const QString name = pattern.name;
    const float spacing = list.trussLength / static_cast<float>(count + 1);
    for (int i = 1; i <= count; ++i) {
        pattern.name = name + u' ' + QString::number(i);
        pattern.positionX = static_cast<float>(i) * spacing;
        hangLoad(list, pattern);
    }
}

int Edits::hangScreen(const LoadList& list, const LedArray& screen, float centre, int groupId)
{
    ActiveLoad segment = segmentOf(screen, groupId);
    int firstId = -1;
    for (const float position : screen.segmentPositions(centre, list.trussLength)) {
        segment.positionX = position;
        const int id = hangLoad(list, segment);
        firstId = firstId == -1 ? id : firstId;
    }
    return firstId;
}

void Edits::spreadScreens(const LoadList& list, const LedArray& screen, int copies, int& nextGroupId)
{
    const float spacing = list.trussLength / static_cast<float>(copies + 1);
    for (int copy = 1; copy <= copies; ++copy)
        hangNumberedScreen(list, screen, static_cast<float>(copy) * spacing, nextGroupId++, copy);
}

void Edits::removeGroup(QList<ActiveLoad>& loads, int groupId)
{
    loads.removeIf([groupId](const ActiveLoad& load) { return load.groupId == groupId; });
}

void Edits::removeScreen(QList<ActiveLoad>& loads, int groupId)
{
    loads.removeIf(
        [groupId](const ActiveLoad& load) { return load.groupId == groupId && Project::isScreen(load); });
}

void Edits::moveLoad(ActiveLoad& load, float distance, float trussLength)
{
    load.positionX = Project::clampToTruss(load.positionX + distance, trussLength);
}

void Edits::moveGroup(QList<ActiveLoad>& loads, int groupId, float distance, float trussLength)
{
    for (ActiveLoad& load : loads) {
        if (load.groupId == groupId)
            moveLoad(load, distance, trussLength);
    }
}

void Edits::reserveIds(const ProjectState& project, int& nextLoadId, int& nextGroupId)
{
    for (const ActiveLoad& load : project.loads) {
        raiseAbove(nextLoadId, load.id);
        raiseAbove(nextGroupId, load.groupId);
    }
}
