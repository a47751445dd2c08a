#pragma once

#include "engine/SecondOpinion.h"

#include <QRectF>

class QPainter;

/// The pictures of the second opinion's level case.
namespace SheetDiagrams
{

/// Draws the bending moment [kg·m] of `opinion` into `area`, positive downwards, with its extremes. Draws
/// nothing where the opinion has no level case.
void paintMoments(QPainter& painter, const QRectF& area, const SecondOpinion::Opinion& opinion);

/// The same of the shear [kg], positive upwards.
void paintShear(QPainter& painter, const QRectF& area, const SecondOpinion::Opinion& opinion);

} // namespace SheetDiagrams
