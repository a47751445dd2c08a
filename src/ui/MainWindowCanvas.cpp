#include "engine/Numbers.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"

#include <QScopedValueRollback>

namespace
{

/// Positions are handed over in thousandths of the truss.
constexpr float PER_MILLE = 1000.0F;

} // namespace

void MainWindow::onPositionChanged(int perMille)
{
    if (isRestoring)
        return;
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId);
    if (perMille == -1 || load == nullptr || !Project::isScreen(*load)) {
        updateCalculations();
        return;
    }
    if (load->groupId == -1)
        return;
    updateSelectedLED(static_cast<float>(perMille) / PER_MILLE * LoadLogic::TrussLength);
}

int MainWindow::selectedLoad() const
{
    return selectedLoadId;
}

int MainWindow::pickedMotor() const
{
    return isMotor(selectedMotorIndex) ? selectedMotorIndex : -1;
}

void MainWindow::motorPicked(int index)
{
    showMotorProperties(index);
}

void MainWindow::loadPicked(int id)
{
    showLoadProperties(id);
    m_led->resetButton();
}

void MainWindow::nothingPicked()
{
    hidePropertyPanels();
}

void MainWindow::aboutToEdit()
{
    pushUndoState();
}

void MainWindow::edited()
{
    onPositionChanged(-1);
}

void MainWindow::arrayPicked(const LoadLogic::ActiveLoad& segment)
{
    selectedLoadId = segment.id;
    selectedMotorIndex = -1;
    m_panels->grabSegment(segment.id);
    scheduleNotices();

    const QScopedValueRollback<bool> filling(isRestoring, true);
    m_led->setTexts({Numbers::fixed(segment.screenWidth, 2), Numbers::fixed(segment.screenHeight, 2),
                     Numbers::fixed(segment.screenWeightM2, 1),
                     Numbers::fixed(segment.bumperWeightPerMeter, 1),
                     Numbers::fixed(segment.cableWeightPercent, 1)});
    const LedArray screen{segment.screenWidth, segment.screenHeight, segment.screenWeightM2,
                          segment.bumperWeightPerMeter, segment.cableWeightPercent};
    m_led->showWeight(screen.totalWeight());
}

void MainWindow::arrayEditRequested(const LoadLogic::ActiveLoad& segment)
{
    selectLoad(segment.id);
    m_led->typeWidth(Numbers::general(segment.screenWidth));
    m_led->typeHeight(Numbers::fixed(segment.screenHeight, 2));
    m_led->typeCable(Numbers::fixed(segment.cableWeightPercent, 1));
}

void MainWindow::selectedLoadRemoved()
{
    selectedLoadId = -1;
    m_panels->refreshLoad(nullptr);
    m_controls->setMassText({});
}
