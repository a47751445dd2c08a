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
/// A pixel that one call leaves as it was, every further call leaves too; so the calls end as soon as
/// nothing changes any more.
void paint(QPainter& painter, const QImage& image, const QRect& area, int times,
           const std::function<void()>& paint);

/// As `paint`, where only the strips that the first call changed are painted again. Faster, and the same
/// to the pixel as long as what is painted has whole pixels as coordinates: a line that begins outside
/// the clip between two pixels may be shaded by one step more or less.
void paintInStrips(QPainter& painter, const QImage& image, const QRect& area, int times,
                   const std::function<void()>& paint);

} // namespace RepeatedPainting
