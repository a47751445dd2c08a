#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/TrussGroup.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::size_t UNDO_DEPTH = 20;

/// What the mass field of new loads reads when no load is selected [kg].
const QString IDLE_MASS = u"5"_s;

} // namespace

LoadLogic::ProjectState MainWindow::captureCurrentState() const
{
    LoadLogic::ProjectState s = LoadLogic::Snapshot();
    if (isProject(currentProjectIndex) && m_tabBar != nullptr)
        s.tabName = m_tabBar->tabText(currentProjectIndex);

    const LedArray screen = m_led->screen();
    s.screenWidth = screen.width;
    s.screenHeight = screen.height;
    s.screenWeightM2 = screen.weightM2;
    s.bumperWeightPerMeter = screen.bumperWeightPerMeter;
    s.cableWeightPercent = screen.cableWeightPercent;

    s.selectedLoadId = selectedLoadId;
    s.projectCounter = projectCounter;
    return s;
}

void MainWindow::restoreProjectState(const LoadLogic::ProjectState& s)
{
    const QScopedValueRollback<bool> filling(isRestoring, true);
    const std::optional<MotorIdentity> motor = selectedMotor();
    LoadLogic::MakeCurrent(s);
    selectedLoadId = s.selectedLoadId;
    projectCounter = s.projectCounter;
    if (m_truss == nullptr)
        return;
    m_canvas->endNudging();

    m_truss->setTexts(Numbers::fixed(s.trussLength, 1), Numbers::fixed(s.trussSelfWeight, 1),
                      Numbers::fixed(s.limitCPL, 0));
    m_led->setTexts({Numbers::fixed(s.screenWidth, 2), Numbers::fixed(s.screenHeight, 2),
                     Numbers::fixed(s.screenWeightM2, 1), Numbers::fixed(s.bumperWeightPerMeter, 1),
                     Numbers::fixed(s.cableWeightPercent, 1)});
    m_led->showWeight(s.ledTotalWeight, Numbers::fixed(s.cableWeightPercent, 1));
    LoadLogic::LED_TotalWeight = s.ledTotalWeight;
    fillSelectedLoadFields();
    refreshPanels(motor);
    validateInputs();
}

// The mass field edits the selected load whenever its text changes, restoring or not; here it only
// shows it, rounded, so its handlers are kept out: a segment of 69.55 kg stays one.
void MainWindow::fillSelectedLoadFields()
{
    const QSignalBlocker quiet(m_controls);
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId);
    if (load == nullptr) {
        m_controls->setMassText(IDLE_MASS);
        selectedLoadId = -1;
        return;
    }
    m_controls->setMassText(Numbers::fixed(load->mass, 1));
    m_controls->setName(load->name);
    if (Project::isScreen(*load))
        m_led->typeCable(Numbers::fixed(load->cableWeightPercent, 1));
}

void MainWindow::pushUndoState()
{
    if (isRestoring)
        return;
    if (m_canvas != nullptr)
        m_canvas->endNudging();
    undoStack.push_back(captureCurrentState());
    if (undoStack.size() > UNDO_DEPTH)
        undoStack.pop_front();
}

void MainWindow::undo()
{
    if (undoStack.empty())
        return;
    const LoadLogic::ProjectState last = std::move(undoStack.back());
    undoStack.pop_back();
    restoreProjectState(last);
    updateCalculations();
    if (m_canvas != nullptr)
        m_canvas->update();
}
