#include "ui/FocusRing.h"

#include "canvas/TrussView.h"
#include "fields/AccentColour.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>

namespace
{

constexpr int THICKNESS = 2; // [px]
const QColor ACCENT = accentColour();
const QColor ACCENT_ON_WHITE(0x00, 0x5A, 0x9E);

bool isFieldOrButton(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) != nullptr
           || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr
           || qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

bool isScrolled(const QWidget* widget)
{
    return qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
}

bool isCanvas(const QWidget* widget)
{
    return qobject_cast<const TrussView*>(widget) != nullptr;
}

/// Whether the focus only came back, from a dialog or a menu: how it once came still holds.
bool isReturn(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

bool isTabKey(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

} // namespace

FocusRing::FocusRing(QWidget* window)
    : QWidget(window)
    , m_window(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*before*/, QWidget* now) { follow(now); });
}

QWidget* FocusRing::framed() const
{
    return m_framed;
}

QColor FocusRing::colour() const
{
    if (isScrolled(m_framed)) {
        const bool isWhite = m_framed->palette().color(QPalette::Window).lightness() > 128;
        return isWhite ? ACCENT_ON_WHITE : ACCENT;
    }
    const auto* button = qobject_cast<const QAbstractButton*>(m_framed.data());
    const bool isAccented = button != nullptr && button->palette().color(QPalette::ButtonText) == ACCENT;
    return isAccented ? QColor(Qt::white) : ACCENT;
}

void FocusRing::follow(QWidget* focused)
{
    m_framed = nullptr;
    hide();
    const bool isShown =
        focused != nullptr
        && (isFieldOrButton(focused) || ((isScrolled(focused) || isCanvas(focused)) && m_byTabKey));
    if (m_window == nullptr || !isShown || focused->isWindow() || focused->window() != m_window)
        return;
    m_framed = focused;
    setParent(m_framed->parentWidget());
    place();
}

// Around the widget where there is room, else over its edge.
void FocusRing::place()
{
    const QRect around = m_framed->geometry().adjusted(-THICKNESS, -THICKNESS, THICKNESS, THICKNESS);
    setGeometry(around.intersected(parentWidget()->rect()));
    setMask(QRegion(rect()) - QRegion(rect().adjusted(THICKNESS, THICKNESS, -THICKNESS, -THICKNESS)));
    raise();
    setVisible(m_framed->isVisible());
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && watched->isWidgetType()) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        m_byTabKey = isTabKey(reason) || (m_byTabKey && isReturn(reason));
    }
    const bool moved = event->type() == QEvent::Move || event->type() == QEvent::Resize
                       || event->type() == QEvent::Show || event->type() == QEvent::Hide;
    if (moved && watched == m_framed)
        place();
    return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(rect(), colour());
}
