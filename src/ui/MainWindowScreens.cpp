#include "canvas/TrussView.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"

#include <numeric>

using namespace Qt::StringLiterals;

namespace
{

/// Narrower than this a screen that is being typed in leaves the hanging one alone [m].
constexpr float NARROWEST_SCREEN = 0.1F;

LoadLogic::ActiveLoad segmentOf(const LedArray& screen, int groupId)
{
    LoadLogic::ActiveLoad segment;
    segment.mass = screen.segmentMass();
    segment.type = u"Video_Segment"_s;
    segment.groupId = groupId;
    segment.screenWidth = screen.width;
    segment.screenHeight = screen.height;
    segment.screenWeightM2 = screen.weightM2;
    segment.bumperWeightPerMeter = screen.bumperWeightPerMeter;
    segment.cableWeightPercent = screen.cableWeightPercent;
    return segment;
}

/// The mean position [m] of the screen loads of array `groupId`, or nothing if it has none.
std::optional<float> centreOfScreen(int groupId)
{
    double sum = 0.0;
    int count = 0;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (load.groupId != groupId || !LoadLogic::IsScreen(load))
            continue;
        sum += static_cast<double>(load.positionX);
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    return static_cast<float>(sum / count);
}

} // namespace

void MainWindow::onLEDParamChanged(const QString& /*text*/)
{
    if (isRestoring || m_led == nullptr)
        return;
    const LedArray screen = m_led->screen();
    LoadLogic::Screen_Width = screen.width;
    LoadLogic::Screen_Height = screen.height;
    LoadLogic::Screen_Weight_M2 = screen.weightM2;
    LoadLogic::Bumper_Weight_Per_Meter = screen.bumperWeightPerMeter;
    LoadLogic::LED_TotalWeight = screen.totalWeight();
    m_led->showWeight(screen.totalWeight());

    const LoadLogic::ActiveLoad* selected = LoadLogic::FindLoad(selectedLoadId);
    if (selected != nullptr && LoadLogic::IsScreen(*selected))
        updateSelectedLED(-1.0F);
    else
        updateCalculations();
}

void MainWindow::onAddLEDLoadClicked()
{
    pushUndoState();
    const LedArray screen = m_led->screen();
    const int copies = m_led->copies();
    if (copies > 1) {
        const float spacing = LoadLogic::TrussLength / static_cast<float>(copies + 1);
        for (int copy = 1; copy <= copies; ++copy)
            placeNumberedScreen(screen, static_cast<float>(copy) * spacing, copy);
    } else {
        selectLoad(placeScreen(screen, LoadLogic::TrussLength / 2.0F, LoadLogic::NextGroupId++));
    }
    m_led->showWeight(screen.totalWeight());
    updateCalculations();
    m_canvas->update();
}

void MainWindow::placeNumberedScreen(const LedArray& screen, float centre, int number)
{
    LoadLogic::ActiveLoad segment = segmentOf(screen, LoadLogic::NextGroupId++);
    const QString prefix = u"LED "_s + QString::number(number) + u" Seg "_s;
    int segmentNumber = 0;
    for (const float position : screen.segmentPositions(centre, LoadLogic::TrussLength)) {
        segment.name = prefix + QString::number(++segmentNumber);
        segment.positionX = position;
        LoadLogic::PlaceLoad(segment);
    }
}

int MainWindow::placeScreen(const LedArray& screen, float centre, int groupId)
{
    LoadLogic::ActiveLoad segment = segmentOf(screen, groupId);
    segment.name = u"LED Segment"_s;
    int firstId = -1;
    for (const float position : screen.segmentPositions(centre, LoadLogic::TrussLength)) {
        segment.positionX = position;
        const int id = LoadLogic::PlaceLoad(segment);
        firstId = firstId == -1 ? id : firstId;
    }
    return firstId;
}

void MainWindow::updateSelectedLED(float x)
{
    if (isRestoring)
        return;
    const LoadLogic::ActiveLoad* selected = LoadLogic::FindLoad(selectedLoadId);
    if (selected == nullptr || !LoadLogic::IsScreen(*selected) || selected->groupId == -1)
        return;
    const int groupId = selected->groupId;
    const std::optional<float> centre = centreOfScreen(groupId);
    const LedArray screen = m_led->screen();
    if (!centre || screen.width < NARROWEST_SCREEN)
        return;

    LoadLogic::ActiveLoads.removeIf([groupId](const LoadLogic::ActiveLoad& load) {
        return load.groupId == groupId && LoadLogic::IsScreen(load);
    });
    selectedLoadId = placeScreen(screen, x >= 0.0F ? x : *centre, groupId);
    refreshLoadPanel();
    updateCalculations();
}
