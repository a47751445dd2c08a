#pragma once

struct Motor;
struct PaintContext;

namespace MotorPainter
{

/// Draws `motor` over the truss with what it carries. An overloaded one is red, and on screen its
/// label blinks.
void draw(const PaintContext& context, const Motor& motor);

} // namespace MotorPainter
