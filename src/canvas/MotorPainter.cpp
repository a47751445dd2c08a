#include "canvas/MotorPainter.h"

#include "canvas/PaintContext.h"
#include "engine/Limits.h"
#include "engine/Numbers.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

constexpr int LABEL_HEIGHT = 18;
constexpr int HOOK_TOP = 51;     // of the hook block, above the truss line [px]
constexpr int HOIST_TOP = 41;    // of the hoist block, above the truss line [px]
constexpr int HOIST_HEIGHT = 16; // [px]
constexpr int TAG_HEIGHT = 14;   // of the name [px]

Limits::Level levelOf(const Motor& motor)
{
    return Limits::motorLevel(motor.staticLoad, motor.selfWeight, motor.capacity);
}

QColor statusColour(const Motor& motor)
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

void drawBody(const PaintContext& context, int x, bool overloaded)
{
    QPainter& painter = context.painter;
    const TrussGeometry& g = context.geometry;
    const CanvasPalette& c = context.palette;
    const int y = g.lineY();
    const int side = g.scaled(context.scene.motorBoxSize);
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

/// What the motor carries, on a black label.
void drawLabel(const PaintContext& context, const Motor& motor, int x, bool overloaded)
{
    QPainter& painter = context.painter;
    const TrussGeometry& g = context.geometry;
    const Scene& scene = context.scene;
    const QRect label = centredBox(x, g.lineY() - g.scaled(TrussGeometry::MOTOR_LABEL_TOP),
                                   g.scaled(TrussGeometry::MOTOR_LABEL_WIDTH), g.scaled(LABEL_HEIGHT));

    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRect(label);
    if (scene.print || !overloaded || scene.blinkOn) {
        QString text = Numbers::fixed(motor.staticLoad, 0) + u"kg"_s;
        if (scene.print)
            text += u" ("_s + Numbers::fixed(motor.capacity, 0) + u')';
        painter.setPen(statusColour(motor));
        painter.setFont(context.palette.lengthFont);
        context.texts.drawCentred(painter, label, text);
    }
}

void drawPointLoad(const PaintContext& context, const Motor& motor, int x)
{
    const TrussGeometry& g = context.geometry;
    context.painter.setPen(CanvasPalette::POINT_LOAD);
    context.painter.setFont(context.palette.detailFont);
    context.texts.drawCentred(context.painter,
                              QRect(x - g.scaled(50), g.lineY() - g.scaled(78), g.scaled(100), g.scaled(15)),
                              u"Punto: "_s + Numbers::fixed(motor.totalLoad, 0) + u"kg"_s);
}

void drawNameTag(const PaintContext& context, const Motor& motor, int x)
{
    QPainter& painter = context.painter;
    const TrussGeometry& g = context.geometry;
    const int width = g.scaled(context.scene.motorBoxSize) - g.scaled(4);
    const QRect tag =
        centredBox(x, g.lineY() - g.scaled(2) - g.scaled(TAG_HEIGHT), width, g.scaled(TAG_HEIGHT));
    painter.setPen(QPen(context.palette.ink, g.scaled(1)));
    painter.setBrush(context.palette.tagFill);
    painter.drawRect(tag);
    painter.setFont(context.palette.tagFont);
    context.texts.drawCentred(painter, tag, Project::motorTitle(motor));
}

void drawPosition(const PaintContext& context, const Motor& motor, int x)
{
    const TrussGeometry& g = context.geometry;
    const int labelTop = g.lineY() - g.scaled(TrussGeometry::MOTOR_LABEL_TOP);
    context.painter.setPen(context.palette.secondary);
    context.painter.setFont(context.palette.detailFont);
    context.texts.drawCentred(context.painter,
                              centredBox(x, labelTop - g.scaled(TrussGeometry::MOTOR_POSITION_RISE),
                                         g.scaled(TrussGeometry::MOTOR_LABEL_WIDTH),
                                         g.scaled(TrussGeometry::MOTOR_POSITION_HEIGHT)),
                              Project::formatCoordinate(motor.positionX, context.scene.trussLength));
}

} // namespace

void MotorPainter::draw(const PaintContext& context, const Motor& motor)
{
    const bool overloaded = levelOf(motor) == Limits::Level::Exceeded;
    const int x = context.geometry.toX(motor.positionX);
    drawBody(context, x, overloaded);
    drawLabel(context, motor, x, overloaded);
    if (!context.scene.print)
        drawPointLoad(context, motor, x);
    drawNameTag(context, motor, x);
    drawPosition(context, motor, x);
}
