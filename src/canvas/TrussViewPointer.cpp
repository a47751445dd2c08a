#include "canvas/CanvasHost.h"
#include "canvas/TrussView.h"
#include "engine/Numbers.h"

#include <QInputDialog>
#include <QMouseEvent>
#include <QPointer>

#include <algorithm>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

bool isArraySegment(const LoadLogic::ActiveLoad& load)
{
    return Project::isScreen(load) && load.groupId != -1;
}

} // namespace

TrussGeometry TrussView::screenGeometry() const
{
    return geometry(width(), height(), 1.0);
}

TrussView::Target TrussView::targetAt(QPoint point) const
{
    const TrussGeometry g = screenGeometry();
    for (int i = 0; i < LoadLogic::MotorList.size(); ++i) {
        const LoadLogic::Motor& motor = LoadLogic::MotorList.at(i);
        if (g.motorLabelBox(motor).contains(point))
            return MotorLabel{i};
        if (g.motorBodyBox(motor, motorBoxSize).contains(point))
            return MotorBody{i};
    }
    return loadTargetAt(point, g);
}

// An array is tried once, through its first segment in the list.
TrussView::Target TrussView::loadTargetAt(QPoint point, const TrussGeometry& g) const
{
    const ArraySummaries arrays = Arrays::summarize(LoadLogic::ActiveLoads, -1);
    std::set<int> tried;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (isArraySegment(load)) {
            if (tried.insert(load.groupId).second
                && g.arrayBox(load, arrays.value(load.groupId).centre).contains(point))
                return Array{load};
            continue;
        }
        if (g.loadLabelBox(load).contains(point))
            return LoadLabel{load.id};
        if (g.loadBodyBox(load).contains(point))
            return LoadBody{load.id};
    }
    return {};
}

void TrussView::mousePressEvent(QMouseEvent* event)
{
    if (printMode)
        return;
    endDrag();
    const QPoint point = event->position().toPoint();
    const Target target = targetAt(point);
    if (const auto* motorLabel = std::get_if<MotorLabel>(&target))
        askMotorPosition(LoadLogic::MotorList.at(motorLabel->index));
    else if (const auto* motor = std::get_if<MotorBody>(&target))
        beginMotorDrag(motor->index);
    else if (const auto* loadLabel = std::get_if<LoadLabel>(&target))
        askLoadPosition(loadLabel->id);
    else if (const auto* load = std::get_if<LoadBody>(&target))
        beginLoadDrag(load->id, screenGeometry().toMetres(point.x()));
    else if (const auto* array = std::get_if<Array>(&target))
        beginArrayDrag(array->segment, screenGeometry().toMetres(point.x()));
    else
        selectNothing();
}

void TrussView::mouseMoveEvent(QMouseEvent* event)
{
    if (printMode)
        return;
    const QPoint point = event->position().toPoint();
    if (!isDragging()) {
        setCursor(isOverGrip(point) ? Qt::OpenHandCursor : Qt::ArrowCursor);
        return;
    }
    const float pointer = screenGeometry().toMetres(point.x());
    if (draggedMotor != -1)
        moveMotor(pointer);
    else
        moveLoads(pointer);
    if (CanvasHost* window = host())
        window->onPositionChanged(-1);
    followDraggedMotor();
    update();
}

void TrussView::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    finishDrag();
}

void TrussView::finishDrag()
{
    if (printMode || !isDragging())
        return;
    endDrag();
    setCursor(Qt::OpenHandCursor);
    LoadLogic::CalcularReacciones();
    update();
}

bool TrussView::isDragging() const
{
    return draggedMotor != -1 || draggedGroup != -1 || draggedLoad != -1;
}

void TrussView::endDrag()
{
    draggedMotor = -1;
    draggedGroup = -1;
    draggedLoad = -1;
    m_grabbedMotor.reset();
}

void TrussView::selectNothing()
{
    if (CanvasHost* window = host())
        window->hidePropertyPanels();
    update();
}

void TrussView::beginMotorDrag(int index)
{
    draggedMotor = index;
    m_grabbedMotor = LoadLogic::MotorList.at(index);
    setCursor(Qt::ClosedHandCursor);
    if (CanvasHost* window = host()) {
        window->pushUndoState();
        window->showMotorProperties(index);
    }
}

void TrussView::beginLoadDrag(int id, float pointer)
{
    draggedLoad = id;
    dragOffset = pointer;
    if (CanvasHost* window = host()) {
        window->pushUndoState();
        window->showLoadProperties(id);
        window->loadDragBegan();
    }
    update();
}

void TrussView::beginArrayDrag(const LoadLogic::ActiveLoad& segment, float pointer)
{
    draggedGroup = segment.groupId;
    dragOffset = pointer;
    if (CanvasHost* window = host()) {
        window->pushUndoState();
        window->arrayDragBegan(segment);
    }
    update();
}

// The motor jumps to the pointer. It is the grabbed one even where an undo in the middle of the
// drag has put another one at its index.
void TrussView::moveMotor(float pointer)
{
    if (!m_grabbedMotor && draggedMotor >= 0 && draggedMotor < LoadLogic::MotorList.size())
        m_grabbedMotor = LoadLogic::MotorList.at(draggedMotor);
    followDraggedMotor();
    if (draggedMotor == -1)
        return;
    m_grabbedMotor->positionX = LoadLogic::ClampToTruss(pointer);
    LoadLogic::MotorList[draggedMotor].positionX = m_grabbedMotor->positionX;
}

// A recalculation sorts the motors: where two have changed places, the index follows the grabbed one.
void TrussView::followDraggedMotor()
{
    if (draggedMotor != -1)
        draggedMotor = m_grabbedMotor ? LoadLogic::IndexOfMotor(*m_grabbedMotor) : -1;
}

// Each load is held at the truss's ends on its own, so an array that is pushed against one is
// compressed for good.
void TrussView::moveLoads(float pointer)
{
    const float distance = pointer - dragOffset;
    dragOffset = pointer;
    const auto move = [distance](LoadLogic::ActiveLoad& load) {
        load.positionX = LoadLogic::ClampToTruss(load.positionX + distance);
    };
    if (draggedGroup == -1) {
        if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(draggedLoad))
            move(*load);
        return;
    }
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads) {
        if (load.groupId == draggedGroup)
            move(load);
    }
}

// Motors, and arrays of whole screens; the segments of an array show no hand until they are pressed.
bool TrussView::isOverGrip(QPoint point) const
{
    const TrussGeometry g = screenGeometry();
    const auto& motors = std::as_const(LoadLogic::MotorList);
    if (std::any_of(motors.cbegin(), motors.cend(), [&](const LoadLogic::Motor& motor) {
            return g.motorBodyBox(motor, motorBoxSize).contains(point);
        }))
        return true;

    std::optional<ArraySummaries> arrays;
    std::set<int> tried;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (load.type != "Video"_L1 || !tried.insert(load.groupId).second)
            continue;
        if (!arrays)
            arrays = Arrays::summarize(LoadLogic::ActiveLoads, -1);
        if (g.arrayBox(load, arrays->value(load.groupId).centre).contains(point))
            return true;
    }
    return false;
}

// The motor is a copy: the list may change while the dialog is open.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void TrussView::askMotorPosition(LoadLogic::Motor motor)
{
    const QPointer<TrussView> self = this;
    const std::optional<float> position =
        askPosition(u"Motor "_s + Project::motorTitle(motor) + u" — Posición exacta"_s, motor.positionX);
    const int index = LoadLogic::IndexOfMotor(motor);
    if (self.isNull() || !position || index == -1)
        return;
    pushUndo();
    LoadLogic::MotorList[index].positionX = *position;
    recalculate();
}

void TrussView::askLoadPosition(int id)
{
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(id);
    if (load == nullptr)
        return;
    const QPointer<TrussView> self = this;
    const std::optional<float> position =
        askPosition(u"Carga "_s + loadTitle(*load) + u" — Posición exacta"_s, load->positionX);
    if (self.isNull() || !position)
        return;
    pushUndo();
    if (LoadLogic::ActiveLoad* moved = LoadLogic::FindLoad(id))
        moved->positionX = *position;
    recalculate();
}

/// Asks for a position relative to the centre; returns it from the left end [m], on the truss.
std::optional<float> TrussView::askPosition(const QString& title, float position)
{
    const float half = LoadLogic::TrussLength * 0.5F;
    bool accepted = false;
    const double value = QInputDialog::getDouble(
        this, title,
        u"Introduzca la coordenada relativa al centro (m):\n(Negativo = izquierda, Positivo = derecha)"_s,
        static_cast<double>(position - half), static_cast<double>(-half), static_cast<double>(half), 2,
        &accepted, Qt::WindowFlags(), 1.0);
    if (!accepted)
        return std::nullopt;
    return LoadLogic::ClampToTruss(Numbers::toSingle(value) + half);
}

void TrussView::pushUndo()
{
    if (CanvasHost* window = host())
        window->pushUndoState();
}

void TrussView::recalculate()
{
    if (CanvasHost* window = host()) {
        window->updateCalculations();
        return;
    }
    LoadLogic::CalcularReacciones();
    update();
}
