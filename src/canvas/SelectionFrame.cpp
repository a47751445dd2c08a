#include "canvas/SelectionFrame.h"

#include <QAccessible>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr int GAP = 3;       // between what is framed and the line [px]
constexpr int THICKNESS = 2; // [px]

} // namespace

SelectionFrame::SelectionFrame(QWidget* canvas)
    : QWidget(canvas->parentWidget())
    , m_canvas(canvas)
{
    setObjectName("selectionFrame"_L1);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

const QWidget* SelectionFrame::canvas() const
{
    return m_canvas;
}

// Whatever changes the selection or a place has the canvas painted; only a press shows a motor's panel
// without that.
bool SelectionFrame::mayMoveAt(QEvent::Type type)
{
    switch (type) {
    case QEvent::Paint:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::FocusIn:
        return true;
    default:
        return false;
    }
}

void SelectionFrame::frame(const QRect& area, const QString& text)
{
    if (m_canvas == nullptr)
        return;
    constexpr int REACH = GAP + THICKNESS;
    const QRect around =
        area.adjusted(-REACH, -REACH, REACH, REACH).intersected(m_canvas->rect()).translated(m_canvas->pos());
    if (around.isEmpty()) {
        hide();
        return;
    }
    const bool isNew = isHidden();
    if (text != accessibleName())
        setAccessibleName(text);
    if (around != geometry() || isNew) {
        setGeometry(around);
        setMask(QRegion(rect()) - QRegion(rect().adjusted(THICKNESS, THICKNESS, -THICKNESS, -THICKNESS)));
        show();
        raise();
    }
    if (isNew)
        announce();
}

void SelectionFrame::announce()
{
    if (isHidden())
        return;
    QAccessibleEvent focus(this, QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
    emit announced(accessibleName());
}

void SelectionFrame::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(rect(), Qt::white);
}
