#include "ui/LoadPanel.h"
#include "ui/MainWindow.h"
#include "ui/MotorPanel.h"
#include "ui/PanelSync.h"

void MainWindow::showMotorProperties(int index)
{
    if (!isMotor(index))
        return;
    selectedMotorIndex = index;
    selectedLoadId = -1;
    m_panels->showMotor(LoadLogic::MotorList.at(index));
    scheduleNotices();
}

void MainWindow::showLoadProperties(int id)
{
    selectedLoadId = id;
    selectedMotorIndex = -1;
    if (const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(id))
        m_panels->showLoad(*load);
    scheduleNotices();
}

void MainWindow::hidePropertyPanels()
{
    selectedLoadId = -1;
    selectedMotorIndex = -1;
    m_panels->hide();
    scheduleNotices();
}

void MainWindow::onMotorPropertyChanged()
{
    if (isRestoring || !isMotorEditable())
        return;
    edit([this] { m_motorPanel->applyTo(LoadLogic::MotorList[selectedMotorIndex]); });
}

void MainWindow::deleteSelectedMotor()
{
    if (!isMotorEditable())
        return;
    edit([this] {
        LoadLogic::MotorList.removeAt(selectedMotorIndex);
        hidePropertyPanels();
    });
}

void MainWindow::onLoadPropertyChanged()
{
    if (isRestoring || !isLoadEditable())
        return;
    edit([this] {
        if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId))
            m_loadPanel->applyTo(*load);
    });
}

void MainWindow::deleteSelectedLoad()
{
    if (!isLoadEditable())
        return;
    edit([this] {
        LoadLogic::ActiveLoads.removeIf(
            [this](const LoadLogic::ActiveLoad& load) { return load.id == selectedLoadId; });
        hidePropertyPanels();
    });
}

bool MainWindow::isMotor(int index)
{
    return index >= 0 && index < LoadLogic::MotorList.size();
}

bool MainWindow::isMotorEditable() const
{
    return isMotor(selectedMotorIndex) && !m_panels->isMotorStale(LoadLogic::MotorList, selectedMotorIndex);
}

bool MainWindow::isLoadEditable() const
{
    return selectedLoadId != -1 && !m_panels->isLoadStale(selectedLoadId);
}

std::optional<MotorIdentity> MainWindow::selectedMotor() const
{
    if (!isMotor(selectedMotorIndex))
        return std::nullopt;
    return MotorIdentity::at(LoadLogic::MotorList, selectedMotorIndex);
}

// After another project or another state of it came into the engine. A restored load selection ends
// that of a motor.
void MainWindow::refreshPanels(const std::optional<MotorIdentity>& motor)
{
    selectedMotorIndex = motor && selectedLoadId == -1 ? motor->indexIn(LoadLogic::MotorList) : -1;
    const LoadLogic::Motor* shown =
        isMotor(selectedMotorIndex) ? &LoadLogic::MotorList.at(selectedMotorIndex) : nullptr;
    m_panels->refresh(shown, LoadLogic::FindLoad(selectedLoadId));
}

void MainWindow::selectLoad(int id)
{
    selectedLoadId = id;
    selectedMotorIndex = -1;
    m_panels->selectLoad(LoadLogic::FindLoad(id));
    scheduleNotices();
}
