#include "canvas/CanvasHost.h"
#include "canvas/ItemText.h"
#include "canvas/PositionDialog.h"
#include "canvas/TrussView.h"
#include "engine/Edits.h"

#include <QPointer>

using namespace Qt::StringLiterals;

std::optional<CanvasItem> TrussView::selectedItem() const
{
    const CanvasHost* window = host();
    if (window == nullptr || isDragging())
        return std::nullopt;
    return CanvasItems::selected(scene(), window->pickedMotor(), window->selectedLoad(), m_stepped);
}

QRect TrussView::areaOf(const CanvasItem& item) const
{
    return CanvasItems::area(scene(), geometry(), item);
}

QString TrussView::textOf(const CanvasItem& item) const
{
    return ItemText::of(scene(), item);
}

QString TrussView::tipOf(const CanvasItem& item) const
{
    return ItemText::tip(scene(), CanvasItems::stackedWith(scene(), geometry(), item));
}

QString TrussView::tipAt(QPoint point) const
{
    return ItemText::tip(scene(), CanvasItems::at(scene(), geometry(), point));
}

void TrussView::select(CanvasItems::Step step)
{
    CanvasHost* window = host();
    if (window == nullptr || isDragging())
        return;
    m_stepped = CanvasItems::reached(CanvasItems::leftToRight(scene()), selectedItem(), step);
    if (!m_stepped)
        return;
    endNudging();
    if (m_stepped->kind == CanvasItem::Kind::Motor)
        window->motorPicked(static_cast<int>(m_stepped->index));
    else if (m_stepped->kind == CanvasItem::Kind::Array)
        window->arrayPicked(LoadLogic::ActiveLoad(LoadLogic::ActiveLoads.at(m_stepped->index)));
    else
        window->loadPicked(LoadLogic::ActiveLoads.at(m_stepped->index).id);
    update();
}

// The host is told before the first step alone; what it does about it ends the row of steps, as any other
// edit of its own does.
void TrussView::nudge(float distance)
{
    const std::optional<CanvasItem> item = selectedItem();
    if (!item || !canMove(*item, distance))
        return;
    if (!m_isNudging)
        aboutToEdit();
    m_isNudging = true;
    move(*item, distance);
    edited();
    update();
}

void TrussView::endNudging()
{
    m_isNudging = false;
}

bool TrussView::canMove(const CanvasItem& item, float distance)
{
    const float length = LoadLogic::TrussLength;
    if (item.kind != CanvasItem::Kind::Array)
        return CanvasItems::moved(item.position, distance, length) != item.position;
    const float first = distance < 0.0F ? item.secondEnd : item.firstEnd; // the last one to be held
    return LoadLogic::ClampToTruss(first + distance) != first;
}

void TrussView::move(const CanvasItem& item, float distance)
{
    const float length = LoadLogic::TrussLength;
    if (item.kind == CanvasItem::Kind::Array)
        Edits::moveGroup(LoadLogic::ActiveLoads, LoadLogic::ActiveLoads.at(item.index).groupId, distance,
                         length);
    else if (item.kind == CanvasItem::Kind::Motor)
        LoadLogic::MotorList[item.index].positionX = CanvasItems::moved(item.position, distance, length);
    else
        LoadLogic::ActiveLoads[item.index].positionX = CanvasItems::moved(item.position, distance, length);
}

void TrussView::askSelectedPosition()
{
    const std::optional<CanvasItem> item = selectedItem();
    if (!item)
        return;
    if (item->kind == CanvasItem::Kind::Motor)
        askMotorPosition(static_cast<int>(item->index));
    else if (item->kind == CanvasItem::Kind::Load)
        askLoadPosition(item->index);
    else
        askArrayPosition(*item);
}

// The array goes as far as it can as a whole; a drag against an end would compress it.
void TrussView::askArrayPosition(const CanvasItem& array)
{
    const int segment = LoadLogic::ActiveLoads.at(array.index).id;
    const QPointer<TrussView> self = this;
    const std::optional<float> position =
        PositionDialog::ask(this, ItemText::title(scene(), array) + u" — Posición exacta"_s, array.position,
                            LoadLogic::TrussLength);
    if (self.isNull() || !position)
        return;
    const std::optional<CanvasItem> now = CanvasItems::selected(scene(), -1, segment, std::nullopt);
    if (!now || now->kind != CanvasItem::Kind::Array)
        return;
    aboutToEdit();
    const float distance = CanvasItems::freeDistance(*now, *position - now->position, LoadLogic::TrussLength);
    Edits::moveGroup(LoadLogic::ActiveLoads, LoadLogic::ActiveLoads.at(now->index).groupId, distance,
                     LoadLogic::TrussLength);
    edited();
}

void TrussView::removeSelected()
{
    const std::optional<CanvasItem> item = selectedItem();
    if (!item)
        return;
    if (item->kind == CanvasItem::Kind::Load)
        removeLoad(item->index);
    else if (item->kind == CanvasItem::Kind::Array)
        removeArray(LoadLogic::ActiveLoads.at(item->index).groupId);
    else
        removeMotor(MotorIdentity::at(LoadLogic::MotorList, static_cast<int>(item->index)));
    pickNothing();
}

void TrussView::runSelectedMenu()
{
    const std::optional<CanvasItem> item = selectedItem();
    if (!item)
        return;
    const QRect seen = areaOf(*item).intersected(visibleRegion().boundingRect());
    const QPoint position = mapToGlobal(seen.isEmpty() ? rect().center() : seen.center());
    if (item->kind == CanvasItem::Kind::Motor)
        runMotorMenu(static_cast<int>(item->index), position, OpenedBy::Keys);
    else if (item->kind == CanvasItem::Kind::Array)
        runArrayMenu(item->index, position, OpenedBy::Keys);
    else
        runLoadMenu(item->index, position);
}
