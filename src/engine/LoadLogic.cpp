#include "engine/LoadLogic.h"

#include "engine/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Closer to the centre than this a position reads as the centre itself [m].
constexpr float CENTRE_TOLERANCE = 0.001F;

/// Ids beyond this do not move the counters, which leaves them a billion steps to go.
constexpr int LARGEST_RESERVED_ID = std::numeric_limits<int>::max() / 2;

int largestMotorId()
{
    int largest = 0;
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        largest = std::max(largest, motor.id);
    return largest;
}

/// A file may bring the largest integer as an id; then the smallest free one is taken.
int nextMotorId()
{
    const int largest = largestMotorId();
    if (largest < std::numeric_limits<int>::max())
        return largest + 1;

    int id = 1;
    while (std::any_of(LoadLogic::MotorList.cbegin(), LoadLogic::MotorList.cend(),
                       [id](const LoadLogic::Motor& motor) { return motor.id == id; }))
        ++id;
    return id;
}

void raiseAbove(int& counter, int usedId)
{
    if (usedId <= LARGEST_RESERVED_ID)
        counter = std::max(counter, usedId + 1);
}

} // namespace

float LoadLogic::ClampToTruss(float x)
{
    return std::max(0.0F, std::min(x, TrussLength)); // in this order not-a-number gives 0
}

void LoadLogic::AddMotor(float x)
{
    Motor motor;
    motor.id = nextMotorId();
    motor.positionX = ClampToTruss(x);
    MotorList.append(motor);
    CalcularReacciones();
}

int LoadLogic::PlaceLoad(ActiveLoad load)
{
    load.id = NextLoadId++;
    load.positionX = ClampToTruss(load.positionX);
    ActiveLoads.append(std::move(load));
    return ActiveLoads.constLast().id;
}

void LoadLogic::AddLoad(float mass, float x, QString type, QString name, int groupId, float screenWidth,
                        float screenHeight, float screenWeightM2, float bumperWeightPerMeter,
                        float cableWeightPercent)
{
    PlaceLoad({0, mass, x, std::move(type), std::move(name), groupId, screenWidth, screenHeight,
               screenWeightM2, bumperWeightPerMeter, cableWeightPercent});
    CalcularReacciones();
}

void LoadLogic::AddLoad(float x)
{
    ActiveLoad standard;
    standard.positionX = x;
    PlaceLoad(standard);
    CalcularReacciones();
}

void LoadLogic::ReserveIds(const ProjectState& state)
{
    for (const ActiveLoad& load : state.loads) {
        raiseAbove(NextLoadId, load.id);
        raiseAbove(NextGroupId, load.groupId);
    }
}

void LoadLogic::CalcularPesoLED()
{
    LED_TotalWeight =
        Screen_Width * Bumper_Weight_Per_Meter + Screen_Height * Screen_Width * Screen_Weight_M2;
}

QString LoadLogic::formatCoordinate(float x)
{
    const float fromCentre = x - TrussLength * 0.5F;
    if (std::abs(fromCentre) < CENTRE_TOLERANCE)
        return u"0.00m"_s;

    const QString sign = fromCentre > CENTRE_TOLERANCE ? u"+"_s : QString();
    return sign + Numbers::fixed(fromCentre, 2) + u'm';
}

int LoadLogic::IndexOfMotor(const Motor& motor)
{
    int sameId = -1;
    for (qsizetype i = 0; i < MotorList.size(); ++i) {
        const Motor& candidate = MotorList.at(i);
        if (candidate.id != motor.id)
            continue;
        if (candidate.positionX == motor.positionX)
            return static_cast<int>(i);
        if (sameId < 0)
            sameId = static_cast<int>(i);
    }
    return sameId;
}

LoadLogic::ActiveLoad* LoadLogic::FindLoad(int id)
{
    if (id == -1)
        return nullptr;
    const auto found = std::find_if(ActiveLoads.cbegin(), ActiveLoads.cend(),
                                    [id](const ActiveLoad& load) { return load.id == id; });
    return found == ActiveLoads.cend() ? nullptr : &ActiveLoads[found - ActiveLoads.cbegin()];
}

QString LoadLogic::MotorTitle(const Motor& motor)
{
    return motor.modelName.isEmpty() ? u'M' + QString::number(motor.id) : motor.modelName;
}

bool LoadLogic::IsScreen(const ActiveLoad& load)
{
    return load.type == "Video_Segment"_L1 || load.type == "Video"_L1;
}

void LoadLogic::Load(const ProjectState& state)
{
    TrussLength = state.trussLength;
    TrussSelfWeight = state.trussSelfWeight;
    Limit_CPL = state.limitCPL;
    MotorList = state.motors;
    ActiveLoads = state.loads;
}

EngineLoan::EngineLoan()
{
    m_state.trussLength = LoadLogic::TrussLength;
    m_state.trussSelfWeight = LoadLogic::TrussSelfWeight;
    m_state.limitCPL = LoadLogic::Limit_CPL;
    m_state.ledTotalWeight = LoadLogic::LED_TotalWeight;
    m_state.trussStressPercentage = LoadLogic::TrussStress_Percentage;
    m_state.isUnstable = LoadLogic::isUnstable;
    m_state.motors = LoadLogic::MotorList;
    m_state.loads = LoadLogic::ActiveLoads;
}

EngineLoan::~EngineLoan()
{
    LoadLogic::Load(m_state);
    LoadLogic::LED_TotalWeight = m_state.ledTotalWeight;
    LoadLogic::TrussStress_Percentage = m_state.trussStressPercentage;
    LoadLogic::isUnstable = m_state.isUnstable;
}
