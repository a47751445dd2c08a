#include "canvas/TrussGeometry.h"

#include "engine/Numbers.h"

namespace
{

/// Height of a screen's box for the pointer, for each metre of the screen's height [px].
constexpr float PIXELS_PER_SCREEN_METRE = 50.0F;

} // namespace

TrussGeometry::TrussGeometry(int width, int height, double scale, int marginX, float trussLength)
    : m_scale(scale)
    , m_margin(scaled(marginX))
    , m_span(width - 2 * m_margin)
    , m_lineY(height / 2)
    , m_trussLength(trussLength)
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
    const float along = position / m_trussLength * static_cast<float>(m_span);
    return Numbers::toPixel(static_cast<double>(along));
}

int TrussGeometry::toX(float position) const
{
    return m_margin + offset(position);
}

float TrussGeometry::toMetres(int x) const
{
    return static_cast<float>(x - m_margin) / static_cast<float>(m_span) * m_trussLength;
}

QRect TrussGeometry::motorLabelBox(const Motor& motor) const
{
    return {toX(motor.positionX) - MOTOR_LABEL_WIDTH / 2, m_lineY - MOTOR_LABEL_TOP - MOTOR_POSITION_RISE,
            MOTOR_LABEL_WIDTH, MOTOR_POSITION_HEIGHT};
}

QRect TrussGeometry::motorBodyBox(const Motor& motor, int side) const
{
    return {toX(motor.positionX) - side / 2, m_lineY - side / 2, side, side};
}

QRect TrussGeometry::loadLabelBox(const ActiveLoad& load) const
{
    return {toX(load.positionX) - LOAD_LABEL_WIDTH / 2, m_lineY + 98, LOAD_LABEL_WIDTH, 18};
}

QRect TrussGeometry::loadBodyBox(const ActiveLoad& load) const
{
    return {toX(load.positionX) - 25, m_lineY - 5, 50, 60};
}

QRect TrussGeometry::arrayBox(const ActiveLoad& segment, float centre) const
{
    const int width = offset(segment.screenWidth);
    const int height = Numbers::toPixel(static_cast<double>(segment.screenHeight * PIXELS_PER_SCREEN_METRE));
    return {toX(centre) - width / 2, m_lineY + ARRAY_TOP, width, height};
}

QRect TrussGeometry::arrayMenuBox(const ActiveLoad& segment, float centre) const
{
    const int width = offset(segment.screenWidth);
    return {toX(centre) - width / 2, m_lineY + ARRAY_TOP, width, ARRAY_HEIGHT};
}

QRect TrussGeometry::loadMenuBox(const ActiveLoad& load) const
{
    return {toX(load.positionX) - 15, m_lineY + ARRAY_TOP, 30, 25};
}
