#include "canvas/CanvasHost.h"
#include "canvas/CanvasMenu.h"
#include "canvas/MotorDialog.h"
#include "canvas/PositionDialog.h"
#include "canvas/TrussView.h"
#include "engine/Edits.h"

#include <QPointer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// Where the load at `index` now is, by its id: there, else the first load with it, else -1.
qsizetype indexOf(int id, qsizetype index)
{
    const auto& loads = std::as_const(LoadLogic::ActiveLoads);
    if (index < loads.size() && loads.at(index).id == id)
        return index;
    return Project::indexOfLoad(loads, id);
}

} // namespace

// The list may change while the dialog is open.
void TrussView::askMotorPosition(int index)
{
    const MotorIdentity motor = MotorIdentity::at(LoadLogic::MotorList, index);
    const QString name = Project::motorTitle(LoadLogic::MotorList.at(index));
    const QPointer<TrussView> self = this;
    const std::optional<float> position = PositionDialog::ask(
        this, u"Motor "_s + name + u" — Posición exacta"_s, motor.positionX, LoadLogic::TrussLength);
    const int now = motor.indexIn(LoadLogic::MotorList);
    if (self.isNull() || !position || now == -1)
        return;
    aboutToEdit();
    LoadLogic::MotorList[now].positionX = *position;
    edited();
}

void TrussView::askLoadPosition(qsizetype index)
{
    const LoadLogic::ActiveLoad load = LoadLogic::ActiveLoads.at(index);
    const QPointer<TrussView> self = this;
    const std::optional<float> position =
        PositionDialog::ask(this, u"Carga "_s + Project::loadTitle(load) + u" — Posición exacta"_s,
                            load.positionX, LoadLogic::TrussLength);
    if (self.isNull() || !position)
        return;
    aboutToEdit();
    if (const qsizetype now = indexOf(load.id, index); now != -1)
        LoadLogic::ActiveLoads[now].positionX = *position;
    edited();
}

// Where a press opens the menu, the menu gets the release as well. It still ends the drag that the
// press began; otherwise the item would stick to the pointer afterwards.
int TrussView::chooseFrom(const QStringList& entries, const QList<QKeySequence>& keys, QPoint position)
{
    return CanvasMenu::choose(
        this, entries, position, [this] { finishDrag(); }, keys);
}

void TrussView::runMotorMenu(int index, QPoint position, OpenedBy opened)
{
    const MotorIdentity motor = MotorIdentity::at(LoadLogic::MotorList, index);
    const QPointer<TrussView> self = this;
    const int chosen = chooseFrom({u"Editar Especificaciones..."_s, u"Eliminar Motor"_s},
                                  {QKeySequence(), Qt::Key_Delete}, position);
    if (self.isNull())
        return;
    if (chosen == 0)
        editMotor(motor, opened);
    else if (chosen == 1)
        removeMotor(motor);
}

void TrussView::editMotor(const MotorIdentity& motor, OpenedBy opened)
{
    const int index = motor.indexIn(LoadLogic::MotorList);
    if (index == -1)
        return;
    const QPointer<TrussView> self = this;
    const QPointer<MotorDialog> dialog = new MotorDialog(LoadLogic::MotorList.at(index), this);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (self.isNull())
        return;
    if (accepted && opened == OpenedBy::Keys)
        aboutToEdit();
    const int now = motor.indexIn(LoadLogic::MotorList);
    if (accepted && now != -1)
        dialog->applyTo(LoadLogic::MotorList[now]);
    delete dialog;
    if (accepted)
        edited();
}

void TrussView::removeMotor(const MotorIdentity& motor)
{
    const int index = motor.indexIn(LoadLogic::MotorList);
    if (index == -1)
        return;
    aboutToEdit();
    LoadLogic::MotorList.removeAt(index);
    edited();
}

void TrussView::runArrayMenu(qsizetype index, QPoint position, OpenedBy opened)
{
    const int groupId = LoadLogic::ActiveLoads.at(index).groupId;
    const QPointer<TrussView> self = this;
    const int chosen = chooseFrom({u"Eliminar Pantalla Completa"_s, u"Editar Parámetros de Pantalla"_s},
                                  {Qt::Key_Delete}, position);
    if (self.isNull())
        return;
    if (chosen == 1 && opened == OpenedBy::Keys)
        aboutToEdit();
    if (chosen == 0)
        removeArray(groupId);
    else if (chosen == 1)
        editArray(groupId);
}

void TrussView::removeArray(int groupId)
{
    aboutToEdit();
    Edits::removeGroup(LoadLogic::ActiveLoads, groupId);
    if (CanvasHost* window = host())
        window->selectedLoadRemoved();
    edited();
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
    window->arrayEditRequested(LoadLogic::ActiveLoad(*first)); // the list changes meanwhile
    update();
}

void TrussView::runLoadMenu(qsizetype index, QPoint position)
{
    const int id = LoadLogic::ActiveLoads.at(index).id;
    const QPointer<TrussView> self = this;
    const int chosen = chooseFrom({u"Eliminar Carga"_s}, {Qt::Key_Delete}, position);
    const bool isStillThere =
        index < LoadLogic::ActiveLoads.size() && LoadLogic::ActiveLoads.at(index).id == id;
    if (!self.isNull() && chosen == 0 && isStillThere)
        removeLoad(index);
}

void TrussView::removeLoad(qsizetype index)
{
    aboutToEdit();
    const int id = LoadLogic::ActiveLoads.at(index).id;
    LoadLogic::ActiveLoads.removeAt(index);
    CanvasHost* window = host();
    if (window != nullptr && window->selectedLoad() == id)
        window->selectedLoadRemoved();
    edited();
}

void TrussView::aboutToEdit()
{
    if (CanvasHost* window = host())
        window->aboutToEdit();
}

void TrussView::edited()
{
    if (CanvasHost* window = host()) {
        window->edited();
        return;
    }
    LoadLogic::CalcularReacciones();
    update();
}
