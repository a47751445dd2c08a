#pragma once

#include "engine/Arrays.h"

struct PaintContext;

namespace ArrayPainter
{

/// Arrays of more segments than this are worth an image, where repeating can stop early.
inline constexpr int LONG_RUN = 16;

/// Draws the screen of `array`: its frame, its metres on screen, its label.
void draw(const PaintContext& context, const ArraySummary& array);

/// As `times` calls of `draw`, since every segment of an array draws the whole of it.
void drawRepeatedly(const PaintContext& context, const ArraySummary& array, int times);

/// Whether more than `LONG_RUN` segments of one array follow each other.
[[nodiscard]] bool hasLongRun(const QList<ActiveLoad>& loads);

} // namespace ArrayPainter
