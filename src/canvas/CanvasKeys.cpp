#include "canvas/CanvasKeys.h"

#include "canvas/SelectionFrame.h"
#include "canvas/TrussView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace
{

constexpr float STEP = 0.1F;       // [m]
constexpr float FINE_STEP = 0.01F; // [m]

using Meaning = CanvasKeys::Meaning;
using Step = CanvasItems::Step;

Meaning plainMeaning(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return CanvasKeys::Select{Step::Back};
    case Qt::Key_Right:
        return CanvasKeys::Select{Step::Forward};
    case Qt::Key_Home:
        return CanvasKeys::Select{Step::First};
    case Qt::Key_End:
        return CanvasKeys::Select{Step::Last};
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return CanvasKeys::AskPosition{};
    case Qt::Key_Delete:
        return CanvasKeys::Remove{};
    case Qt::Key_F10:
    case Qt::Key_Menu:
        return CanvasKeys::OpenMenu{};
    default:
        return std::monostate();
    }
}

Meaning shiftedMeaning(int key, float step)
{
    if (key == Qt::Key_Left)
        return CanvasKeys::Nudge{-step};
    if (key == Qt::Key_Right)
        return CanvasKeys::Nudge{step};
    return std::monostate();
}

} // namespace

CanvasKeys::Meaning CanvasKeys::meaning(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers held = modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (held == Qt::NoModifier)
        return plainMeaning(key);
    if (held == Qt::ShiftModifier && key == Qt::Key_F10)
        return OpenMenu{};
    if (held == Qt::ShiftModifier)
        return shiftedMeaning(key, STEP);
    if (held == (Qt::ShiftModifier | Qt::ControlModifier))
        return shiftedMeaning(key, FINE_STEP);
    return std::monostate();
}

CanvasKeys::CanvasKeys(TrussView* canvas)
    : QObject(canvas)
    , m_canvas(canvas)
    , m_frame(new SelectionFrame(canvas))
{
    canvas->setFocusPolicy(Qt::StrongFocus);
    canvas->installEventFilter(this);
    m_following.setSingleShot(true);
    m_following.setInterval(0);
    connect(&m_following, &QTimer::timeout, this, &CanvasKeys::follow);
}

bool CanvasKeys::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return press(*static_cast<QKeyEvent*>(event));
    case QEvent::ContextMenu:
        return openMenu(*static_cast<QContextMenuEvent*>(event));
    case QEvent::ToolTip:
        return tellAt(static_cast<QHelpEvent*>(event)->pos(), static_cast<QHelpEvent*>(event)->globalPos());
    default:
        if (SelectionFrame::mayMoveAt(event->type()))
            m_following.start();
        return QObject::eventFilter(watched, event);
    }
}

bool CanvasKeys::press(const QKeyEvent& event)
{
    const Meaning wanted = meaning(event.key(), event.modifiers());
    if (std::holds_alternative<std::monostate>(wanted))
        return false;
    act(wanted);
    return true;
}

// A dialog or a menu may outlive the window, and this with it.
void CanvasKeys::act(const Meaning& meaning)
{
    const QPointer<CanvasKeys> self = this;
    if (const auto* select = std::get_if<Select>(&meaning))
        m_canvas->select(select->step);
    else if (const auto* nudge = std::get_if<Nudge>(&meaning))
        m_canvas->nudge(nudge->distance);
    else if (std::holds_alternative<AskPosition>(meaning))
        m_canvas->askSelectedPosition();
    else if (std::holds_alternative<Remove>(meaning))
        m_canvas->removeSelected();
    else
        m_canvas->runSelectedMenu();
    if (self.isNull())
        return;
    const bool wasShown = m_frame->isVisible(); // where not, it is told as it appears
    follow();
    if (wasShown && std::holds_alternative<Select>(meaning))
        m_frame->announce();
    tellSelected();
}

// Where the key for menus makes such an event of its own, its place is not that of what is selected.
bool CanvasKeys::openMenu(const QContextMenuEvent& event)
{
    if (event.reason() != QContextMenuEvent::Keyboard)
        return false;
    act(OpenMenu{});
    return true;
}

bool CanvasKeys::tellAt(QPoint point, QPoint global)
{
    if (m_canvas->isDragging())
        return false;
    const QString tip = m_canvas->tipAt(point);
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(global, tip, m_canvas, QRect(point, QSize(1, 1)));
    return true;
}

void CanvasKeys::tellSelected()
{
    const std::optional<CanvasItem> item = m_canvas->selectedItem();
    if (!item) {
        QToolTip::hideText();
        return;
    }
    const QRect area = m_canvas->areaOf(*item).intersected(m_canvas->rect());
    QToolTip::showText(m_canvas->mapToGlobal(area.bottomLeft()), m_canvas->tipOf(*item), m_canvas);
}

void CanvasKeys::follow()
{
    const std::optional<CanvasItem> item = m_canvas->selectedItem();
    if (item)
        m_frame->frame(m_canvas->areaOf(*item), m_canvas->textOf(*item));
    else
        m_frame->hide();
}
