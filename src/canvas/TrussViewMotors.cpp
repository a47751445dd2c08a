#include "canvas/TrussView.h"
#include "engine/Limits.h"
#include "engine/Numbers.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr int LABEL_TOP = 105;   // of what a motor carries, above the truss line [px]
constexpr int LABEL_WIDTH = 90;  // [px]
constexpr int HOOK_TOP = 51;     // of the hook block, above the truss line [px]
constexpr int HOIST_TOP = 41;    // of the hoist block, above the truss line [px]
constexpr int HOIST_HEIGHT = 16; // [px]

Limits::Level levelOf(const LoadLogic::Motor& motor)
{
    return Limits::motorLevel(motor.staticLoad, motor.selfWeight, motor.capacity);
}

bool isOverloaded(const LoadLogic::Motor& motor)
{
    return levelOf(motor) == Limits::Level::Exceeded;
}

QColor statusColour(const LoadLogic::Motor& motor)
{
    switch (levelOf(motor)) {
    case Limits::Level::Exceeded:
        return CanvasPalette::OVERLOADED;
    case Limits::Level::Near:
        return CanvasPalette::NEAR_LIMIT;
    case Limits::Level::Within:
        break;
    }
    return CanvasPalette::WITHIN_LIMIT;
}

/// A rectangle of `width` × `height` whose middle column is `x`.
QRect centredBox(int x, int top, int width, int height)
{
    return {x - width / 2, top, width, height};
}

} // namespace

void TrussView::drawMotor(QPainter& painter, const LoadLogic::Motor& motor, int W, int H, double s)
{
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    const bool overloaded = isOverloaded(motor);
    drawMotorBody(painter, g, c, g.toX(motor.positionX), overloaded);
    drawMotorTexts(painter, g, c, motor, overloaded);
}

void TrussView::drawMotorBody(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c, int x,
                              bool overloaded)
{
    const int y = g.lineY();
    const int side = g.scaled(motorBoxSize);
    painter.setPen(QPen(c.motorOutline, g.scaled(1)));
    painter.setBrush(overloaded ? c.overloadedMotorFill : c.motorFill);
    painter.drawRect(x - side / 2, y - side, side, side);

    const int hookTop = y - g.scaled(HOOK_TOP);
    painter.setPen(QPen(c.ink, g.scaled(1)));
    painter.drawRect(x - g.scaled(12), hookTop, g.scaled(24), g.scaled(10));
    painter.drawLine(x, hookTop, x, y - g.scaled(65));
    painter.drawArc(QRectF(x - g.scaled(4), y - g.scaled(69), g.scaled(8), g.scaled(8)), 0, 180 * 16);
    painter.drawRect(x - g.scaled(6), y - g.scaled(HOIST_TOP), g.scaled(12), g.scaled(HOIST_HEIGHT));

    painter.setPen(QPen(CanvasPalette::CHAIN, g.scaled(1)));
    painter.drawLine(x, y - g.scaled(30), x, y - side / 2);
}

void TrussView::drawMotorTexts(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c,
                               const LoadLogic::Motor& motor, bool overloaded)
{
    const int x = g.toX(motor.positionX);
    const int y = g.lineY();
    const int labelTop = y - g.scaled(LABEL_TOP);
    const int labelWidth = g.scaled(LABEL_WIDTH);
    const QRect label = centredBox(x, labelTop, labelWidth, g.scaled(18));

    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRect(label);
    if (printMode || !overloaded || blinkOn) {
        QString text = Numbers::fixed(motor.staticLoad, 0) + u"kg"_s;
        if (printMode)
            text += u" ("_s + Numbers::fixed(motor.capacity, 0) + u')';
        painter.setPen(statusColour(motor));
        painter.setFont(c.lengthFont);
        m_texts.drawCentred(painter, label, text);
    }
    painter.setFont(c.detailFont);
    if (!printMode) {
        painter.setPen(CanvasPalette::POINT_LOAD);
        m_texts.drawCentred(painter, QRect(x - g.scaled(50), y - g.scaled(78), g.scaled(100), g.scaled(15)),
                            u"Punto: "_s + Numbers::fixed(motor.totalLoad, 0) + u"kg"_s);
    }

    const int tagWidth = g.scaled(motorBoxSize) - g.scaled(4);
    const QRect tag = centredBox(x, y - g.scaled(2) - g.scaled(14), tagWidth, g.scaled(14));
    painter.setPen(QPen(c.ink, g.scaled(1)));
    painter.setBrush(c.tagFill);
    painter.drawRect(tag);
    painter.setFont(c.tagFont);
    m_texts.drawCentred(painter, tag, Project::motorTitle(motor));

    painter.setPen(c.secondary);
    painter.setFont(c.detailFont);
    m_texts.drawCentred(painter, centredBox(x, labelTop - g.scaled(14), labelWidth, g.scaled(13)),
                        LoadLogic::formatCoordinate(motor.positionX));
}
