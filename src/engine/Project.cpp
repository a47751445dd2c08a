#include "engine/Project.h"

#include "engine/Numbers.h"
#include "engine/PointLoads.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// Closer to the centre than this a position reads as the centre itself [m].
constexpr float CENTRE_TOLERANCE = 0.001F;

} // namespace

MotorIdentity MotorIdentity::at(const QList<Motor>& motors, int index)
{
    return {motors.at(index).id, motors.at(index).positionX, index};
}

// The sort keeps the order of motors at one place.
MotorIdentity MotorIdentity::beforeSorting(const QList<Motor>& motors, int index)
{
    MotorIdentity motor = at(motors, index);
    const auto comesFirst = [&motor](const Motor& other, bool isEarlier) {
        return isLeftOf(other.positionX, motor.positionX)
               || (isEarlier && !isLeftOf(motor.positionX, other.positionX));
    };
    int sorted = 0;
    for (int i = 0; i < motors.size(); ++i) {
        if (i != index && comesFirst(motors.at(i), i < index))
            ++sorted;
    }
    motor.index = sorted;
    return motor;
}

int MotorIdentity::indexIn(const QList<Motor>& motors) const
{
    const auto isIt = [this](const Motor& motor) { return motor.id == id && motor.positionX == positionX; };
    if (index >= 0 && index < motors.size() && isIt(motors.at(index)))
        return index;

    auto found = std::find_if(motors.cbegin(), motors.cend(), isIt);
    if (found == motors.cend())
        found = std::find_if(motors.cbegin(), motors.cend(),
                             [this](const Motor& motor) { return motor.id == id; });
    return found == motors.cend() ? -1 : static_cast<int>(found - motors.cbegin());
}

QString Project::motorTitle(const Motor& motor)
{
    return motor.modelName.isEmpty() ? u'M' + QString::number(motor.id) : motor.modelName;
}

QString Project::loadTitle(const ActiveLoad& load)
{
    return load.name.isEmpty() ? u'L' + QString::number(load.id) : load.name;
}

bool Project::isScreen(const ActiveLoad& load)
{
    return load.type == "Video_Segment"_L1 || load.type == "Video"_L1;
}

bool Project::isArraySegment(const ActiveLoad& load)
{
    return isScreen(load) && load.groupId != -1;
}

qsizetype Project::indexOfLoad(const QList<ActiveLoad>& loads, int id)
{
    if (id == -1)
        return -1;
    const auto found =
        std::find_if(loads.cbegin(), loads.cend(), [id](const ActiveLoad& load) { return load.id == id; });
    return found == loads.cend() ? -1 : found - loads.cbegin();
}

float Project::clampToTruss(float x, float trussLength)
{
    return std::max(0.0F, std::min(x, trussLength)); // in this order not-a-number gives 0
}

QString Project::formatCoordinate(float x, float trussLength)
{
    const float fromCentre = x - trussLength * 0.5F;
    if (std::abs(fromCentre) < CENTRE_TOLERANCE)
        return u"0.00m"_s;

    const QString sign = fromCentre > CENTRE_TOLERANCE ? u"+"_s : QString();
    return sign + Numbers::fixed(fromCentre, 2) + u'm';
}
