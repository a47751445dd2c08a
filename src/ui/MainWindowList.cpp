#include "canvas/TrussView.h"
#include "ui/ListDialog.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"

namespace
{

/// The lists of a project after a change.
struct Changed
{
    QList<Motor> motors;
    QList<ActiveLoad> loads;
};

/// What `change` makes of the current project; nothing where there is nothing to change.
std::optional<Changed> changed(const RowEdits::Change& change)
{
    Changed lists{LoadLogic::MotorList, LoadLogic::ActiveLoads};
    const bool isChanged = change(
        {lists.motors, {lists.loads, LoadLogic::TrussLength, LoadLogic::NextLoadId}, LoadLogic::NextGroupId});
    return isChanged ? std::optional(lists) : std::nullopt;
}

/// Whether `lists` has less than the current project, so that what is selected may be gone.
bool isLess(const Changed& lists)
{
    return lists.motors.size() < LoadLogic::MotorList.size()
           || lists.loads.size() < LoadLogic::ActiveLoads.size();
}

} // namespace

void MainWindow::openList()
{
    if (m_list == nullptr) {
        m_list = new ListDialog(this);
        connectList();
    }
    m_list->show();
    m_list->raise();
    m_list->activateWindow();
    refreshNotices();
}

void MainWindow::connectList()
{
    connect(m_list, &ListDialog::followRequested, this, &MainWindow::refreshNotices);
    connect(m_list, &ListDialog::changeRequested, this, &MainWindow::changeListed);
    connect(m_list, &ListDialog::undoRequested, this, [this] {
        undo();
        refreshNotices();
    });
    connect(m_list, &ListDialog::nothingPicked, this, [this] {
        nothingPicked();
        m_canvas->update();
    });
    connect(m_list, &ListDialog::motorPicked, this, [this](const RowKey& key) {
        motorPicked(static_cast<int>(RowEdits::placeOf(LoadLogic::MotorList, key)));
        m_canvas->update();
    });
    connect(m_list, &ListDialog::loadPicked, this, [this](const RowKey& key) {
        const qsizetype place = RowEdits::placeOf(LoadLogic::ActiveLoads, key);
        if (place < 0)
            return;
        const ActiveLoad& load = LoadLogic::ActiveLoads.at(place);
        if (Project::isArraySegment(load))
            arrayPicked(load);
        else
            loadPicked(load.id);
        m_canvas->update();
    });
}

void MainWindow::changeListed(const RowEdits::Change& change)
{
    const std::optional<Changed> lists = changed(change);
    if (!lists)
        return;
    onBackToDesignClicked(); // the report tells what was
    edit([this, &lists] {
        const bool mayBeGone = isLess(*lists);
        LoadLogic::MotorList = lists->motors;
        LoadLogic::ActiveLoads = lists->loads;
        if (mayBeGone)
            hidePropertyPanels();
        m_panels->refreshLoad(LoadLogic::FindLoad(selectedLoadId));
    });
    refreshNotices();
}
