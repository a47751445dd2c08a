#include "canvas/CanvasHost.h"
#include "canvas/MotorDialog.h"
#include "canvas/TrussView.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Calls `released` whenever a mouse button is released over what it watches.
class ReleaseWatcher : public QObject
{
public: // construction
    ReleaseWatcher(std::function<void()> released, QObject* parent)
        : QObject(parent)
        , m_released(std::move(released))
    {
    }

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonRelease)
            m_released();
        return QObject::eventFilter(watched, event);
    }

private: // data
    std::function<void()> m_released;
};

} // namespace

// Where a press opens the menu, the menu gets the release as well. It still ends the drag that the
// press began; otherwise the item would stick to the pointer afterwards.
int TrussView::chooseFrom(const QStringList& entries, QPoint position)
{
    const QPointer<QMenu> menu = new QMenu(this);
    for (const QString& entry : entries)
        menu->addAction(entry);
    menu->installEventFilter(new ReleaseWatcher([this] { finishDrag(); }, menu));
    QAction* chosen = menu->exec(position);
    const int index =
        menu.isNull() || chosen == nullptr ? -1 : static_cast<int>(menu->actions().indexOf(chosen));
    delete menu;
    return index;
}

void TrussView::contextMenuEvent(QContextMenuEvent* event)
{
    if (printMode)
        return;
    const TrussGeometry g = screenGeometry();
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        if (g.motorBodyBox(motor, motorBoxSize).contains(event->pos())) {
            runMotorMenu(motor, event->globalPos());
            return;
        }
    }
    if (const int groupId = arrayForMenuAt(event->pos()); groupId != -1) {
        runArrayMenu(groupId, event->globalPos());
        return;
    }
    for (qsizetype i = 0; i < LoadLogic::ActiveLoads.size(); ++i) {
        if (g.loadMenuBox(LoadLogic::ActiveLoads.at(i)).contains(event->pos())) {
            runLoadMenu(i, event->globalPos());
            return;
        }
    }
}

int TrussView::arrayForMenuAt(QPoint point) const
{
    const TrussGeometry g = screenGeometry();
    const ArraySummaries arrays = Arrays::summarize(LoadLogic::ActiveLoads, -1);
    std::set<int> tried;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (!Project::isScreen(load) || load.groupId == -1 || !tried.insert(load.groupId).second)
            continue;
        if (g.arrayMenuBox(load, arrays.value(load.groupId).centre).contains(point))
            return load.groupId;
    }
    return -1;
}

// The motor is a copy: the list may change while the menu is open.
// cppcheck-suppress passedByValue
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void TrussView::runMotorMenu(LoadLogic::Motor motor, QPoint position)
{
    const QPointer<TrussView> self = this;
    const int chosen = chooseFrom({u"Editar Especificaciones..."_s, u"Eliminar Motor"_s}, position);
    if (self.isNull())
        return;
    if (chosen == 0)
        editMotor(motor);
    else if (chosen == 1)
        removeMotor(motor);
}

void TrussView::editMotor(const LoadLogic::Motor& motor)
{
    const QPointer<TrussView> self = this;
    const QPointer<MotorDialog> dialog = new MotorDialog(motor, this);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (self.isNull())
        return;
    const int index = LoadLogic::IndexOfMotor(motor);
    if (accepted && index != -1)
        dialog->applyTo(LoadLogic::MotorList[index]);
    delete dialog;
    if (accepted)
        positionChanged();
}

void TrussView::removeMotor(const LoadLogic::Motor& motor)
{
    const int index = LoadLogic::IndexOfMotor(motor);
    if (index == -1)
        return;
    pushUndo();
    LoadLogic::MotorList.removeAt(index);
    recalculate();
}

void TrussView::runArrayMenu(int groupId, QPoint position)
{
    const QPointer<TrussView> self = this;
    const int chosen =
        chooseFrom({u"Eliminar Pantalla Completa"_s, u"Editar Parámetros de Pantalla"_s}, position);
    if (self.isNull())
        return;
    if (chosen == 0)
        removeArray(groupId);
    else if (chosen == 1)
        editArray(groupId);
}

void TrussView::removeArray(int groupId)
{
    pushUndo();
    LoadLogic::ActiveLoads.removeIf(
        [groupId](const LoadLogic::ActiveLoad& load) { return load.groupId == groupId; });
    if (CanvasHost* window = host())
        window->clearLoadSelection();
    positionChanged();
}

void TrussView::editArray(int groupId)
{
    CanvasHost* window = host();
    const auto& loads = std::as_const(LoadLogic::ActiveLoads);
    const auto first =
        std::find_if(loads.cbegin(), loads.cend(),
                     [groupId](const LoadLogic::ActiveLoad& load) { return load.groupId == groupId; });
    if (window == nullptr || first == loads.cend())
        return;
    window->editArrayParameters(*first);
    update();
}

void TrussView::runLoadMenu(qsizetype index, QPoint position)
{
    const int id = LoadLogic::ActiveLoads.at(index).id;
    const QPointer<TrussView> self = this;
    const int chosen = chooseFrom({u"Eliminar Carga"_s}, position);
    const bool isStillThere =
        index < LoadLogic::ActiveLoads.size() && LoadLogic::ActiveLoads.at(index).id == id;
    if (!self.isNull() && chosen == 0 && isStillThere)
        removeLoad(index);
}

void TrussView::removeLoad(qsizetype index)
{
    pushUndo();
    const int id = LoadLogic::ActiveLoads.at(index).id;
    LoadLogic::ActiveLoads.removeAt(index);
    CanvasHost* window = host();
    if (window != nullptr && window->selectedLoad() == id)
        window->clearLoadSelection();
    positionChanged();
}

// As after a drag step; without a window the canvas recalculates by itself.
void TrussView::positionChanged()
{
    if (CanvasHost* window = host()) {
        window->onPositionChanged(-1);
        return;
    }
    LoadLogic::CalcularReacciones();
    update();
}
