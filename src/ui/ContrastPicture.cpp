#include "ui/ContrastPicture.h"

#include "fields/AccentColour.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::Opinion;

constexpr int FONT_SIZE = 11;       // [px]
constexpr double SIDE = 42.0;       // left and right of the truss [px]
constexpr double TRIANGLE = 5.0;    // half a motor's mark [px]
constexpr double READOUT_GAP = 4.0; // [px]

const QColor BACKGROUND(0x16, 0x16, 0x16);
const QColor READOUT_BOX(0x2D, 0x2D, 0x2D);

} // namespace

const QString ContrastPicture::NOTHING_TO_DRAW = u"No hay reparto que dibujar."_s;
const QColor ContrastPicture::INK(0xE0, 0xE0, 0xE0);
const QColor ContrastPicture::FAINT(0x66, 0x66, 0x66);
const QColor ContrastPicture::ACCENT = accentColour();
const QColor ContrastPicture::LESS_SAFE(0xFF, 0xAF, 0x00);
const QColor ContrastPicture::OVERLOADED(0xFF, 0x50, 0x50);

ContrastPicture::ContrastPicture(const QString& name)
{
    setAccessibleName(name);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    QFont small = font();
    small.setPixelSize(FONT_SIZE);
    setFont(small);
}

const Opinion& ContrastPicture::opinion() const
{
    return m_opinion;
}

QString ContrastPicture::readout() const
{
    return m_stop && *m_stop < stops() ? textOf(*m_stop) : QString();
}

void ContrastPicture::setOpinion(const Opinion& opinion)
{
    m_opinion = opinion;
    const QString words = description();
    if (accessibleDescription() != words)
        setAccessibleDescription(words);
    update();
}

void ContrastPicture::pointAt(int x)
{
    std::optional<std::size_t> nearest;
    for (std::size_t stop = 0; stop < stops(); ++stop) {
        if (!nearest || std::abs(xOf(stop) - x) < std::abs(xOf(*nearest) - x))
            nearest = stop;
    }
    moveTo(nearest);
}

void ContrastPicture::moveTo(std::optional<std::size_t> stop)
{
    m_stop = stop;
    update();
}

QRectF ContrastPicture::plot() const
{
    return QRectF(rect()).adjusted(SIDE, 0.0, -SIDE, 0.0);
}

double ContrastPicture::toX(double position) const
{
    const QRectF area = plot();
    return m_opinion.length > 0.0 ? area.left() + position / m_opinion.length * area.width() : area.left();
}

void ContrastPicture::drawTruss(QPainter& painter, double y) const
{
    painter.setPen(QPen(INK, 2.0));
    painter.drawLine(QPointF(toX(0.0), y), QPointF(toX(m_opinion.length), y));
    painter.setPen(Qt::NoPen);
    painter.setBrush(INK);
    for (const SecondOpinion::MotorOpinion& told : m_opinion.motors) {
        const double x = toX(told.motor.position);
        painter.drawPolygon(QPolygonF{{x, y + 1.0},
                                      {x - TRIANGLE, y + 1.0 + 2.0 * TRIANGLE},
                                      {x + TRIANGLE, y + 1.0 + 2.0 * TRIANGLE}});
    }
}

void ContrastPicture::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), BACKGROUND);
    if (stops() > 0)
        draw(painter);
    else
        drawNothing(painter);
    drawReadout(painter);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(hasFocus() ? ACCENT : FAINT);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void ContrastPicture::drawNothing(QPainter& painter) const
{
    painter.setPen(INK);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, NOTHING_TO_DRAW);
}

void ContrastPicture::drawReadout(QPainter& painter) const
{
    const QString text = readout();
    if (text.isEmpty())
        return;
    const double x = xOf(*m_stop);
    painter.setPen(QPen(ACCENT, 1.0, Qt::DotLine));
    painter.drawLine(QPointF(x, 0.0), QPointF(x, height()));

    const QRectF room = QRectF(rect()).adjusted(READOUT_GAP, READOUT_GAP, -READOUT_GAP, -READOUT_GAP);
    QRectF box = QFontMetricsF(font()).boundingRect(room, Qt::AlignLeft | Qt::TextWordWrap, text);
    box.adjust(-READOUT_GAP, -READOUT_GAP, READOUT_GAP, READOUT_GAP);
    const bool isRight = x < width() / 2.0;
    box.moveTop(READOUT_GAP);
    box.moveLeft(isRight ? std::min(x + READOUT_GAP, width() - box.width() - READOUT_GAP)
                         : std::max(x - READOUT_GAP - box.width(), READOUT_GAP));
    painter.setPen(ACCENT);
    painter.setBrush(READOUT_BOX);
    painter.drawRect(box);
    painter.setPen(Qt::white);
    painter.drawText(box.adjusted(READOUT_GAP, READOUT_GAP, -READOUT_GAP, -READOUT_GAP),
                     Qt::AlignLeft | Qt::TextWordWrap, text);
}

void ContrastPicture::mouseMoveEvent(QMouseEvent* event)
{
    pointAt(event->position().toPoint().x());
}

void ContrastPicture::leaveEvent(QEvent* /*event*/)
{
    moveTo(std::nullopt);
}

// A screen reader that stands here says the description, which is what the pointer is at for as long as
// it is at something.
void ContrastPicture::keyPressEvent(QKeyEvent* event)
{
    const std::size_t count = stops();
    const bool isForward = event->key() == Qt::Key_Right;
    if ((!isForward && event->key() != Qt::Key_Left) || count == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (!m_stop || *m_stop >= count)
        moveTo(isForward ? 0 : count - 1);
    else
        moveTo((*m_stop + (isForward ? 1 : count - 1)) % count);
    setAccessibleDescription(readout());
}

void ContrastPicture::focusInEvent(QFocusEvent* /*event*/)
{
    update();
}

void ContrastPicture::focusOutEvent(QFocusEvent* /*event*/)
{
    setAccessibleDescription(description());
    moveTo(std::nullopt);
}
