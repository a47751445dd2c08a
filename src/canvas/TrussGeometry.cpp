#include "canvas/TrussGeometry.h"

#include "engine/Numbers.h"

namespace
{

/// The frame of an array begins this far below the truss line, at scale 1 [px].
constexpr int ARRAY_DROP = 5;
/// Height of the drawn frame, at scale 1 [px].
constexpr int ARRAY_FRAME_HEIGHT = 40;
/// Height of a screen's box for the pointer, for each metre of the screen's height [px].
constexpr float PIXELS_PER_SCREEN_METRE = 50.0F;

} // namespace

TrussGeometry::TrussGeometry(int width, int height, double scale, int marginX)
    : m_scale(scale)
    , m_margin(scaled(marginX))
    , m_span(width - 2 * m_margin)
    , m_lineY(height / 2)
{
}

int TrussGeometry::scaled(double length) const
{
    return Numbers::toPixel(length * m_scale);
}

int TrussGeometry::margin() const
{
    return m_margin;
}

int TrussGeometry::span() const
{
    return m_span;
}

int TrussGeometry::lineY() const
{
    return m_lineY;
}

int TrussGeometry::offset(float position) const
{
    const float along = position / LoadLogic::TrussLength * static_cast<float>(m_span);
    return Numbers::toPixel(static_cast<double>(along));
}

int TrussGeometry::toX(float position) const
{
    return m_margin + offset(position);
}

float TrussGeometry::toMetres(int x) const
{
    return static_cast<float>(x - m_margin) / static_cast<float>(m_span) * LoadLogic::TrussLength;
}

QRect TrussGeometry::motorLabelBox(const LoadLogic::Motor& motor) const
{
    return {toX(motor.positionX) - 45, m_lineY - 119, 90, 13};
}

QRect TrussGeometry::motorBodyBox(const LoadLogic::Motor& motor, int side) const
{
    return {toX(motor.positionX) - side / 2, m_lineY - side / 2, side, side};
}

QRect TrussGeometry::loadLabelBox(const LoadLogic::ActiveLoad& load) const
{
    return {toX(load.positionX) - 40, m_lineY + 98, 80, 18};
}

QRect TrussGeometry::loadBodyBox(const LoadLogic::ActiveLoad& load) const
{
    return {toX(load.positionX) - 25, m_lineY - 5, 50, 60};
}

QRect TrussGeometry::arrayBox(const LoadLogic::ActiveLoad& segment, float centre) const
{
    const int width = offset(segment.screenWidth);
    const int height = Numbers::toPixel(static_cast<double>(segment.screenHeight * PIXELS_PER_SCREEN_METRE));
    return {toX(centre) - width / 2, m_lineY + ARRAY_DROP, width, height};
}

QRect TrussGeometry::arrayMenuBox(const LoadLogic::ActiveLoad& segment, float centre) const
{
    const int width = offset(segment.screenWidth);
    return {toX(centre) - width / 2, m_lineY + ARRAY_DROP, width, ARRAY_FRAME_HEIGHT};
}

QRect TrussGeometry::loadMenuBox(const LoadLogic::ActiveLoad& load) const
{
    return {toX(load.positionX) - 15, m_lineY + ARRAY_DROP, 30, 25};
}
