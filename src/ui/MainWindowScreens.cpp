#include "canvas/TrussView.h"
#include "engine/Arrays.h"
#include "engine/Edits.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"

namespace
{

/// Narrower than this a screen that is being typed in leaves the hanging one alone [m].
constexpr float NARROWEST_SCREEN = 0.1F;

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
    if (selected != nullptr && Project::isScreen(*selected))
        updateSelectedLED(-1.0F);
    else
        updateCalculations();
}

void MainWindow::onAddLEDLoadClicked()
{
    const LedArray screen = m_led->screen();
    const int copies = m_led->copies();
    edit([this, &screen, copies] {
        if (copies > 1)
            LoadLogic::SpreadScreens(screen, copies);
        else
            selectLoad(
                LoadLogic::PlaceScreen(screen, LoadLogic::TrussLength / 2.0F, LoadLogic::NextGroupId++));
        m_led->showWeight(screen.totalWeight());
    });
    m_canvas->update();
}

void MainWindow::updateSelectedLED(float x)
{
    if (isRestoring)
        return;
    const LoadLogic::ActiveLoad* selected = LoadLogic::FindLoad(selectedLoadId);
    if (selected == nullptr || !Project::isScreen(*selected) || selected->groupId == -1)
        return;
    const int groupId = selected->groupId;
    const std::optional<float> centre = Arrays::centreOfScreen(LoadLogic::ActiveLoads, groupId);
    const LedArray screen = m_led->screen();
    if (!centre || screen.width < NARROWEST_SCREEN)
        return;

    Edits::removeScreen(LoadLogic::ActiveLoads, groupId);
    selectedLoadId = LoadLogic::PlaceScreen(screen, x >= 0.0F ? x : *centre, groupId);
    m_panels->refreshLoad(LoadLogic::FindLoad(selectedLoadId));
    updateCalculations();
}
