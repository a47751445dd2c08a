#include "ui/NoticeLine.h"

#include "canvas/TrussGeometry.h"
#include "fields/AccentColour.h"
#include "ui/AccessibleNotice.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int FONT_SIZE = 12;   // [px]
constexpr int PADDING = 5;      // between frame and text [px]
constexpr int STRIPE = 4;       // the coloured edge [px]
constexpr int GAP = 3;          // to the canvas's edges [px]
constexpr int ARROW_WIDTH = 22; // [px]
constexpr int MOST_LINES = 2;

const QColor BACKGROUND(0x1E, 0x1E, 0x1E);
const QColor FRAME(0x44, 0x44, 0x44);
const QColor FOCUS = accentColour();
const QColor COUNTER(0xBB, 0xBB, 0xBB);

QColor colourOf(Notice::Urgency urgency)
{
    switch (urgency) {
    case Notice::Urgency::Alarm:
        return {0xFF, 0x50, 0x50};
    case Notice::Urgency::Warning:
        return {0xFF, 0xAF, 0x00};
    case Notice::Urgency::Hint:
        break;
    }
    return accentColour();
}

} // namespace

NoticeLine::NoticeLine(QWidget* canvas)
    : QWidget(canvas->parentWidget())
    , m_canvas(canvas)
{
    AccessibleNotice::install();
    setObjectName("noticeLine"_L1);
    setFocusPolicy(Qt::TabFocus); // a click takes the keys from no field
    // Not opaque, though it is: once the canvas has been moved, Qt paints it whole one time, and would then
    // take an opaque line over it for painted.
    setCursor(Qt::PointingHandCursor);
    hide();
    canvas->installEventFilter(this);
}

const QList<Notice>& NoticeLine::notices() const
{
    return m_notices;
}

const Notice& NoticeLine::shown() const
{
    return m_notices.at(m_index);
}

QString NoticeLine::counter() const
{
    if (m_notices.size() < 2)
        return {};
    return u"%1 de %2"_s.arg(QString::number(m_index + 1), QString::number(m_notices.size()));
}

QRect NoticeLine::backArrow() const
{
    if (m_notices.size() < 2)
        return {};
    return {width() - counterWidth(), 0, ARROW_WIDTH, height()};
}

QRect NoticeLine::forwardArrow() const
{
    if (m_notices.size() < 2)
        return {};
    return {width() - ARROW_WIDTH, 0, ARROW_WIDTH, height()};
}

void NoticeLine::setNotices(const QList<Notice>& notices)
{
    if (notices == m_notices)
        return;
    const QString first = m_notices.isEmpty() ? QString() : m_notices.constFirst().id;
    const QString kept = m_notices.isEmpty() ? QString() : shown().id;
    m_notices = notices;
    m_index = 0;
    if (m_notices.isEmpty()) {
        hide();
        return;
    }
    const bool isNews = m_notices.constFirst().id != first;
    const auto same = std::find_if(m_notices.cbegin(), m_notices.cend(),
                                   [&kept](const Notice& notice) { return notice.id == kept; });
    showNotice(isNews || same == m_notices.cend() ? 0 : same - m_notices.cbegin());
    if (isNews) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void NoticeLine::go(int step)
{
    const qsizetype count = m_notices.size();
    if (count > 1)
        showNotice((m_index + step % count + count) % count);
}

void NoticeLine::activate()
{
    if (!m_notices.isEmpty())
        emit activated(QString(shown().id));
}

void NoticeLine::showNotice(qsizetype index)
{
    m_index = index;
    setAccessibleName(shown().text);
    setAccessibleDescription(m_notices.size() < 2
                                 ? u"Aviso. Intro: más."_s
                                 : u"Aviso "_s + counter() + u". Intro: más; flechas: los demás."_s);
    place();
    update();
    show();
}

QFont NoticeLine::textFont() const
{
    QFont font = this->font();
    font.setPixelSize(FONT_SIZE);
    return font;
}

int NoticeLine::counterWidth() const
{
    if (m_notices.size() < 2)
        return 0;
    return 2 * ARROW_WIDTH + QFontMetrics(textFont()).horizontalAdvance(counter());
}

QRect NoticeLine::textArea() const
{
    return rect().adjusted(STRIPE + PADDING, 1, -PADDING - counterWidth(), -1);
}

// In the middle of the canvas's lower edge. The room there is what "Flexión" leaves free; a text too
// long for one line gets a second one, and its end is left out where that is too short as well.
void NoticeLine::place()
{
    if (m_canvas == nullptr || m_notices.isEmpty())
        return;
    const QRect canvas = m_canvas->geometry();
    const QFontMetrics metrics(textFont());
    const int around = STRIPE + 2 * PADDING + counterWidth();
    const int widest = canvas.width() - 2 * GAP;
    const int wanted = metrics.horizontalAdvance(shown().text) + around + 1;
    const int lines = wanted > widest ? MOST_LINES : 1;
    const int free = canvas.height() - canvas.height() / 2 - TrussGeometry::STRESS_LABEL_TOP
                     - TrussGeometry::STRESS_LABEL_HEIGHT - 2 * GAP;
    const int height = std::min(lines * metrics.lineSpacing() + 2 * PADDING, free);
    const int width = std::min(wanted, widest);
    setGeometry(canvas.left() + (canvas.width() - width) / 2, canvas.bottom() + 1 - GAP - height,
                std::max(width, 0), std::max(height, 0));
    raise();
}

bool NoticeLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_canvas && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        place();
    return QWidget::eventFilter(watched, event);
}

void NoticeLine::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_notices.isEmpty())
        return;
    painter.fillRect(rect(), BACKGROUND);
    painter.setPen(hasFocus() ? FOCUS : FRAME);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.fillRect(0, 0, STRIPE, height(), colourOf(shown().urgency()));

    painter.setFont(textFont());
    painter.setPen(Qt::white);
    const QRect area = textArea();
    const QFontMetrics metrics(textFont());
    const int lines = std::max(1, area.height() / metrics.lineSpacing());
    const QString text =
        lines > 1 ? metrics.elidedText(shown().text, Qt::ElideRight, area.width() * lines * 19 / 20)
                  : metrics.elidedText(shown().text, Qt::ElideRight, area.width());
    const int alignment = Qt::AlignVCenter | Qt::AlignLeft;
    const int flags = lines > 1 ? alignment | static_cast<int>(Qt::TextWordWrap) : alignment;
    painter.drawText(area, flags, text);
    paintCounter(painter);
}

void NoticeLine::paintCounter(QPainter& painter) const
{
    if (m_notices.size() < 2)
        return;
    painter.setPen(COUNTER);
    const QRect area(backArrow().topLeft(), forwardArrow().bottomRight());
    painter.drawText(area, Qt::AlignCenter, counter());
    painter.drawText(backArrow(), Qt::AlignCenter, u"‹"_s);
    painter.drawText(forwardArrow(), Qt::AlignCenter, u"›"_s);
}

// The press must not reach what lies under the line.
void NoticeLine::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void NoticeLine::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    if (event->button() != Qt::LeftButton || !rect().contains(point))
        return;
    if (backArrow().contains(point))
        go(-1);
    else if (forwardArrow().contains(point))
        go(1);
    else if (point.x() < width() - counterWidth())
        activate();
}

void NoticeLine::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        go(-1);
        return;
    case Qt::Key_Right:
    case Qt::Key_Down:
        go(1);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        activate();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void NoticeLine::focusInEvent(QFocusEvent* /*event*/)
{
    update();
}

void NoticeLine::focusOutEvent(QFocusEvent* /*event*/)
{
    update();
}
