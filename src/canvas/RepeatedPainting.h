#pragma once

#include <QRect>

#include <functional>

class QImage;
class QPainter;

/// Paints the same thing over itself again and again, as translucent layers pile up.
namespace RepeatedPainting
{

/// Calls `paint` so that `image`, on which `painter` is open, ends up as after `times` calls. What
/// `paint` draws must lie in `area` [px, logical] and not depend on what is there.
///
/// A pixel that one call leaves as it was, every further call leaves too. So after each call only
/// the columns that changed are painted again (the painter is clipped to them), until none does.
void paint(QPainter& painter, const QImage& image, const QRect& area, int times,
           const std::function<void()>& paint);

} // namespace RepeatedPainting
