#include "engine/LoadLogic.h"

#include "engine/Edits.h"

#include <utility>

namespace
{

Edits::LoadList currentLoads()
{
    return {LoadLogic::ActiveLoads, LoadLogic::TrussLength, LoadLogic::NextLoadId};
}

void keep(const Rating& rating)
{
    LoadLogic::TrussStress_Percentage = rating.stress;
    LoadLogic::isUnstable = rating.isUnstable;
}

} // namespace

QList<LoadLogic::Motor> LoadLogic::MotorList;
QList<LoadLogic::ActiveLoad> LoadLogic::ActiveLoads;

void LoadLogic::CalcularReacciones()
{
    keep(Statics::solve(CurrentTruss(), MotorList, ActiveLoads));
}

void LoadLogic::CalcularStressTruss()
{
    keep(Statics::rate(CurrentTruss(), MotorList, pointLoads(ActiveLoads)));
}

void LoadLogic::CalcularPesoLED()
{
    LED_TotalWeight =
        Screen_Width * Bumper_Weight_Per_Meter + Screen_Height * Screen_Width * Screen_Weight_M2;
}

void LoadLogic::AddMotor(float x)
{
    Edits::hangMotor(MotorList, x, TrussLength);
    CalcularReacciones();
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

int LoadLogic::PlaceLoad(ActiveLoad load)
{
    return Edits::hangLoad(currentLoads(), std::move(load));
}

void LoadLogic::SpreadLoads(const ActiveLoad& pattern, int count)
{
    Edits::spreadLoads(currentLoads(), pattern, count);
}

int LoadLogic::PlaceScreen(const LedArray& screen, float centre, int groupId)
{
    return Edits::hangScreen(currentLoads(), screen, centre, groupId);
}

void LoadLogic::SpreadScreens(const LedArray& screen, int copies)
{
    Edits::spreadScreens(currentLoads(), screen, copies, NextGroupId);
}

void LoadLogic::ResizeTruss(float length)
{
    Edits::resizeTruss(length, TrussLength, MotorList, ActiveLoads);
}

void LoadLogic::ReserveIds(const ProjectState& project)
{
    Edits::reserveIds(project, NextLoadId, NextGroupId);
}

QString LoadLogic::formatCoordinate(float x)
{
    return Project::formatCoordinate(x, TrussLength);
}

float LoadLogic::ClampToTruss(float x)
{
    return Project::clampToTruss(x, TrussLength);
}

LoadLogic::ActiveLoad* LoadLogic::FindLoad(int id)
{
    const qsizetype index = Project::indexOfLoad(ActiveLoads, id);
    return index < 0 ? nullptr : &ActiveLoads[index];
}

Truss LoadLogic::CurrentTruss()
{
    return {TrussLength, TrussSelfWeight, Limit_CPL};
}

LoadLogic::ProjectState LoadLogic::Snapshot()
{
    ProjectState state;
    state.trussLength = TrussLength;
    state.trussSelfWeight = TrussSelfWeight;
    state.limitCPL = Limit_CPL;
    state.ledTotalWeight = LED_TotalWeight;
    state.trussStressPercentage = TrussStress_Percentage;
    state.isUnstable = isUnstable;
    state.motors = MotorList;
    state.loads = ActiveLoads;
    return state;
}

void LoadLogic::MakeCurrent(const ProjectState& state)
{
    TrussLength = state.trussLength;
    TrussSelfWeight = state.trussSelfWeight;
    Limit_CPL = state.limitCPL;
    MotorList = state.motors;
    ActiveLoads = state.loads;
}

void LoadLogic::Reset()
{
    const ProjectState fresh;
    MakeCurrent(fresh);
    Screen_Width = fresh.screenWidth;
    Screen_Height = fresh.screenHeight;
    Screen_Weight_M2 = fresh.screenWeightM2;
    Bumper_Weight_Per_Meter = fresh.bumperWeightPerMeter;
    LED_TotalWeight = fresh.ledTotalWeight;
    keep({});
}
