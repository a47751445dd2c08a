#include "ui/FocusRing.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>

namespace
{

constexpr int THICKNESS = 2; // [px]
const QColor ACCENT(0x00, 0xBF, 0xFF);

/// The canvas and the scroll areas would only be framed as a whole.
bool isFieldOrButton(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) != nullptr
           || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr
           || qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

} // namespace

FocusRing::FocusRing(QWidget* window)
    : QWidget(window)
    , m_window(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*before*/, QWidget* now) { follow(now); });
}

QWidget* FocusRing::framed() const
{
    return m_framed;
}

QColor FocusRing::colour() const
{
    const auto* button = qobject_cast<const QAbstractButton*>(m_framed.data());
    const bool isAccented = button != nullptr && button->palette().color(QPalette::ButtonText) == ACCENT;
    return isAccented ? QColor(Qt::white) : ACCENT;
}

void FocusRing::follow(QWidget* focused)
{
    if (m_framed != nullptr)
        m_framed->removeEventFilter(this);
    m_framed = nullptr;
    hide();
    if (m_window == nullptr || focused == nullptr || !isFieldOrButton(focused) || focused->isWindow()
        || focused->window() != m_window)
        return;
    m_framed = focused;
    m_framed->installEventFilter(this);
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
