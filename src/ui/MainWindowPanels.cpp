#include "canvas/TrussView.h"
#include "ui/LoadPanel.h"
#include "ui/MainWindow.h"
#include "ui/MotorPanel.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace
{

bool isMotor(int index)
{
    return index >= 0 && index < LoadLogic::MotorList.size();
}

/// Where the motor with this id stands, `otherwise` where there is none.
int indexOfMotor(int id, int otherwise)
{
    const auto& motors = std::as_const(LoadLogic::MotorList);
    const auto found = std::find_if(motors.cbegin(), motors.cend(),
                                    [id](const LoadLogic::Motor& motor) { return motor.id == id; });
    return found == motors.cend() ? otherwise : static_cast<int>(found - motors.cbegin());
}

} // namespace

void MainWindow::showMotorProperties(int index)
{
    if (!isMotor(index))
        return;
    selectedMotorIndex = index;
    selectedLoadId = -1;

    fillMotorPanel();
    m_loadPanel->hide();
    m_motorPanel->show();
}

void MainWindow::showLoadProperties(int id)
{
    selectedLoadId = id;
    selectedMotorIndex = -1;
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(id);
    if (load == nullptr)
        return;

    isRestoring = true;
    m_loadPanel->showLoad(*load);
    m_motorPanel->hide();
    m_loadPanel->show();
    isRestoring = false;
}

void MainWindow::hidePropertyPanels()
{
    selectedLoadId = -1;
    selectedMotorIndex = -1;
    m_motorPanel->hide();
    m_loadPanel->hide();
}

void MainWindow::onMotorPropertyChanged()
{
    if (isRestoring || !isMotor(selectedMotorIndex) || isMotorPanelStale())
        return;
    pushUndoState();
    m_motorPanel->applyTo(LoadLogic::MotorList[selectedMotorIndex]);
    updateCalculations();
}

void MainWindow::deleteSelectedMotor()
{
    if (!isMotor(selectedMotorIndex) || isMotorPanelStale())
        return;
    pushUndoState();
    LoadLogic::MotorList.removeAt(selectedMotorIndex);
    hidePropertyPanels();
    updateCalculations();
}

void MainWindow::onLoadPropertyChanged()
{
    if (isRestoring || selectedLoadId == -1 || isLoadPanelStale())
        return;
    pushUndoState();
    if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId))
        m_loadPanel->applyTo(*load);
    updateCalculations();
}

void MainWindow::deleteSelectedLoad()
{
    if (selectedLoadId == -1 || isLoadPanelStale())
        return;
    pushUndoState();
    LoadLogic::ActiveLoads.removeIf(
        [this](const LoadLogic::ActiveLoad& load) { return load.id == selectedLoadId; });
    hidePropertyPanels();
    updateCalculations();
}

std::optional<MotorIdentity> MainWindow::selectedMotor() const
{
    if (!isMotor(selectedMotorIndex))
        return std::nullopt;
    return MotorIdentity::at(LoadLogic::MotorList, selectedMotorIndex);
}

bool MainWindow::isMotorPanelStale() const
{
    return !m_motorPanel->isHidden()
           && (!isMotor(selectedMotorIndex)
               || LoadLogic::MotorList.at(selectedMotorIndex).id != m_motorPanel->shownId());
}

bool MainWindow::isLoadPanelStale() const
{
    return !m_loadPanel->isHidden() && m_loadPanel->shownId() != selectedLoadId;
}

void MainWindow::followSelectedMotor(const MotorIdentity& motor)
{
    const int index = motor.indexIn(LoadLogic::MotorList);
    if (index >= 0)
        selectedMotorIndex = index;
}

// The canvas may have deleted the motor that is shown, or given it other values: the panel goes with
// it, or is filled again. A panel that stands for no motor at all, as after a reset, stays as it is;
// its fields edit nothing.
void MainWindow::keepMotorPanelTrue()
{
    if (selectedMotorIndex == -1 || m_motorPanel->isHidden() || m_motorPanel->shownId() == -1)
        return;
    if (isMotorPanelStale())
        selectedMotorIndex = indexOfMotor(m_motorPanel->shownId(), selectedMotorIndex);
    if (isMotorPanelStale())
        m_motorPanel->hide();
    else if (!m_motorPanel->shows(LoadLogic::MotorList.at(selectedMotorIndex)))
        fillMotorPanel();
}

void MainWindow::fillMotorPanel()
{
    const QScopedValueRollback<bool> filling(isRestoring, true);
    m_motorPanel->showMotor(LoadLogic::MotorList.at(selectedMotorIndex));
}

// After another project or another state of it came into the engine: the panels follow what they
// stand for, or go. A restored load selection ends that of a motor.
void MainWindow::refreshPanels(const std::optional<MotorIdentity>& motor)
{
    selectedMotorIndex = motor && selectedLoadId == -1 ? motor->indexIn(LoadLogic::MotorList) : -1;
    if (!isMotor(selectedMotorIndex))
        m_motorPanel->hide();
    else if (!m_motorPanel->isHidden())
        fillMotorPanel();
    refreshLoadPanel();
}

void MainWindow::refreshLoadPanel()
{
    if (m_loadPanel->isHidden())
        return;
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId);
    if (load == nullptr) {
        m_loadPanel->hide();
        return;
    }
    const QScopedValueRollback<bool> filling(isRestoring, true);
    m_loadPanel->showLoad(*load);
}

void MainWindow::selectLoad(int id)
{
    selectedLoadId = id;
    selectedMotorIndex = -1;
    m_motorPanel->hide();
    refreshLoadPanel();
}
