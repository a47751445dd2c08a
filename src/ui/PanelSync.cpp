#include "ui/PanelSync.h"

#include "ui/LoadPanel.h"
#include "ui/MotorPanel.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace
{

bool isMotor(const QList<Motor>& motors, int index)
{
    return index >= 0 && index < motors.size();
}

/// Where the motor with this id stands, `otherwise` where there is none.
int indexOfMotor(const QList<Motor>& motors, int id, int otherwise)
{
    const auto found =
        std::find_if(motors.cbegin(), motors.cend(), [id](const Motor& motor) { return motor.id == id; });
    return found == motors.cend() ? otherwise : static_cast<int>(found - motors.cbegin());
}

} // namespace

PanelSync::PanelSync(MotorPanel& motorPanel, LoadPanel& loadPanel, bool& filling)
    : m_motorPanel(motorPanel)
    , m_loadPanel(loadPanel)
    , m_filling(filling)
{
}

bool PanelSync::isMotorStale(const QList<Motor>& motors, int selected) const
{
    return !m_motorPanel.isHidden()
           && (!isMotor(motors, selected) || motors.at(selected).id != m_motorPanel.shownId());
}

bool PanelSync::isLoadStale(int selectedId) const
{
    return !m_loadPanel.isHidden() && m_loadPanel.shownId() != selectedId;
}

void PanelSync::showMotor(const Motor& motor)
{
    fill(motor);
    m_loadPanel.hide();
    m_motorPanel.show();
}

void PanelSync::showLoad(const ActiveLoad& load)
{
    fill(load);
    m_motorPanel.hide();
    m_loadPanel.show();
}

void PanelSync::hide()
{
    m_motorPanel.hide();
    m_loadPanel.hide();
}

void PanelSync::selectLoad(const ActiveLoad* load)
{
    m_motorPanel.hide();
    refreshLoad(load);
}

void PanelSync::grabSegment(int id)
{
    m_motorPanel.forgetMotor();
    if (m_loadPanel.shownId() != id)
        m_loadPanel.forgetLoad();
}

void PanelSync::forget()
{
    m_motorPanel.forgetMotor();
    m_loadPanel.forgetLoad();
}

int PanelSync::followMotor(const QList<Motor>& motors, int selected)
{
    if (selected == -1 || m_motorPanel.isHidden() || m_motorPanel.shownId() == -1)
        return selected;
    const int index =
        isMotorStale(motors, selected) ? indexOfMotor(motors, m_motorPanel.shownId(), selected) : selected;
    if (isMotorStale(motors, index))
        m_motorPanel.hide();
    else if (!m_motorPanel.shows(motors.at(index)))
        fill(motors.at(index));
    return index;
}

void PanelSync::refresh(const Motor* motor, const ActiveLoad* load)
{
    // Where an undo takes the motor away whose panel had taken the place of the load's, that comes back.
    if (motor == nullptr && load != nullptr && !m_motorPanel.isHidden()) {
        showLoad(*load);
        return;
    }
    if (motor == nullptr)
        m_motorPanel.hide();
    else if (!m_motorPanel.isHidden())
        fill(*motor);
    refreshLoad(load);
}

void PanelSync::refreshLoad(const ActiveLoad* load)
{
    if (m_loadPanel.isHidden())
        return;
    if (load == nullptr)
        m_loadPanel.hide();
    else
        fill(*load);
}

void PanelSync::fill(const Motor& motor)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    m_motorPanel.showMotor(motor);
}

void PanelSync::fill(const ActiveLoad& load)
{
    const QScopedValueRollback<bool> filling(m_filling, true);
    m_loadPanel.showLoad(load);
}
