#pragma once

#include "canvas/CanvasPalette.h"
#include "canvas/Scene.h"
#include "canvas/TextLayouts.h"
#include "canvas/TrussGeometry.h"

class QPainter;

/// What every painter of a part of the scene needs, for one picture.
struct PaintContext
{
    QPainter& painter;
    const Scene& scene;
    TrussGeometry geometry;
    const CanvasPalette& palette;
    TextLayouts& texts;
    int width;    ///< of the target [px]
    double scale; ///< 1 on screen
};
