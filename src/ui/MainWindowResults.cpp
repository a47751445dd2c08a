#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"
#include "ui/TrussGroup.h"

#include <QLabel>
#include <QTimer>

namespace
{

/// From this many motors on, how the load is shared depends on how well they are levelled.
constexpr int HYPERSTATIC_MOTOR_COUNT = 3;

} // namespace

void MainWindow::updateCalculations()
{
    const std::optional<MotorIdentity> motor =
        isMotor(selectedMotorIndex)
            ? std::optional(MotorIdentity::beforeSorting(LoadLogic::MotorList, selectedMotorIndex))
            : std::nullopt;
    LoadLogic::CalcularReacciones();
    if (const int index = motor ? motor->indexIn(LoadLogic::MotorList) : -1; index >= 0)
        selectedMotorIndex = index;
    selectedMotorIndex = m_panels->followMotor(LoadLogic::MotorList, selectedMotorIndex);

    m_hyperstaticWarning->setVisible(LoadLogic::MotorList.size() >= HYPERSTATIC_MOTOR_COUNT);
    m_controls->showStress(Numbers::toInteger(LoadLogic::TrussStress_Percentage));
    m_canvas->update();
    if (!m_describeTimer->isActive())
        m_describeTimer->start();
    scheduleNotices();
}

void MainWindow::validateInputs()
{
    m_truss->validate();
    m_led->validate();
    m_controls->validate();
}

QString MainWindow::formatCoordinate(float x)
{
    return LoadLogic::formatCoordinate(x);
}
