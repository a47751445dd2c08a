#include "canvas/CanvasHost.h"
#include "canvas/TrussView.h"
#include "engine/Arrays.h"
#include "engine/Edits.h"

void TrussView::begin(const HitTest::Target& target, float metres)
{
    if (const auto* motorLabel = std::get_if<HitTest::MotorLabel>(&target))
        askMotorPosition(motorLabel->index);
    else if (const auto* motor = std::get_if<HitTest::MotorBody>(&target))
        beginMotorDrag(motor->index);
    else if (const auto* loadLabel = std::get_if<HitTest::LoadLabel>(&target))
        askLoadPosition(loadLabel->index);
    else if (const auto* load = std::get_if<HitTest::LoadBody>(&target))
        beginLoadDrag(LoadLogic::ActiveLoads.at(load->index).id, metres);
    else if (const auto* array = std::get_if<HitTest::ArrayBody>(&target))
        beginArrayDrag(LoadLogic::ActiveLoads.at(array->index), metres);
    else
        pickNothing();
}

void TrussView::pickNothing()
{
    if (CanvasHost* window = host())
        window->nothingPicked();
    update();
}

void TrussView::beginMotorDrag(int index)
{
    draggedMotor = index;
    m_grabbedMotor = MotorIdentity::at(LoadLogic::MotorList, index);
    setCursor(Qt::ClosedHandCursor);
    aboutToEdit();
    if (CanvasHost* window = host())
        window->motorPicked(index);
}

void TrussView::beginLoadDrag(int id, float metres)
{
    draggedLoad = id;
    dragOffset = metres;
    aboutToEdit();
    if (CanvasHost* window = host())
        window->loadPicked(id);
    update();
}

void TrussView::beginArrayDrag(const LoadLogic::ActiveLoad& segment, float metres)
{
    draggedGroup = segment.groupId;
    dragOffset = metres;
    aboutToEdit();
    if (CanvasHost* window = host())
        window->arrayPicked(segment);
    update();
}

bool TrussView::isDragging() const
{
    return draggedMotor != -1 || draggedGroup != -1 || draggedLoad != -1;
}

void TrussView::drag(float metres, Grid grid)
{
    const bool snaps = grid == Grid::Decimetres;
    if (draggedMotor != -1)
        moveMotor(snaps ? CanvasItems::snapped(metres, LoadLogic::TrussLength) : metres);
    else if (snaps)
        snapLoads(metres);
    else
        moveLoads(metres);
}

// The motor jumps to the pointer. It is the grabbed one even where an undo in the middle of the
// drag has put another one at its index.
void TrussView::moveMotor(float metres)
{
    if (!m_grabbedMotor && draggedMotor >= 0 && draggedMotor < LoadLogic::MotorList.size())
        m_grabbedMotor = MotorIdentity::at(LoadLogic::MotorList, draggedMotor);
    followMotor();
    if (draggedMotor != -1) {
        m_grabbedMotor->positionX = LoadLogic::ClampToTruss(metres);
        LoadLogic::MotorList[draggedMotor].positionX = m_grabbedMotor->positionX;
    }
    if (CanvasHost* window = host()) {
        if (draggedMotor != -1)
            m_grabbedMotor = MotorIdentity::beforeSorting(LoadLogic::MotorList, draggedMotor);
        window->edited();
    }
    followMotor();
    update();
}

// A recalculation sorts the motors: where two have changed places, the index follows the grabbed one.
void TrussView::followMotor()
{
    if (draggedMotor == -1)
        return;
    draggedMotor = m_grabbedMotor ? m_grabbedMotor->indexIn(LoadLogic::MotorList) : -1;
    if (m_grabbedMotor)
        m_grabbedMotor->index = draggedMotor;
}

void TrussView::moveLoads(float metres)
{
    const float distance = metres - dragOffset;
    dragOffset = metres;
    if (draggedGroup != -1)
        Edits::moveGroup(LoadLogic::ActiveLoads, draggedGroup, distance, LoadLogic::TrussLength);
    else if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(draggedLoad))
        Edits::moveLoad(*load, distance, LoadLogic::TrussLength);
    if (CanvasHost* window = host())
        window->edited();
    update();
}

// What is left to the next mark stays between the grip and the pointer.
void TrussView::snapLoads(float metres)
{
    const std::optional<float> place = draggedPlace();
    if (!place)
        return;
    const float to = CanvasItems::snapped(*place + (metres - dragOffset), LoadLogic::TrussLength);
    moveLoads(dragOffset + (to - *place));
}

std::optional<float> TrussView::draggedPlace() const
{
    if (draggedGroup != -1)
        return Arrays::centreOfScreen(LoadLogic::ActiveLoads, draggedGroup);
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(draggedLoad);
    return load == nullptr ? std::nullopt : std::optional(load->positionX);
}

void TrussView::endDrag()
{
    draggedMotor = -1;
    draggedGroup = -1;
    draggedLoad = -1;
    m_grabbedMotor.reset();
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
