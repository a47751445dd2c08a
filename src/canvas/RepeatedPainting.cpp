#include "canvas/RepeatedPainting.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <vector>

namespace
{

/// Changed columns closer together than this are one strip [px] …
constexpr int STRIP_GAP = 16;
/// … which reaches this much further on every side, so that no rounding between the pixels of painter
/// and image loses any [px]. Strips never overlap.
constexpr int STRIP_MARGIN = 2;
/// Columns can be compared where a pixel is one QRgb [bits].
constexpr int COMPARABLE_DEPTH = 32;

std::vector<bool> changedColumns(const QImage& before, const QImage& after)
{
    std::vector<bool> changed(static_cast<std::size_t>(before.width()), false);
    for (int y = 0; y < before.height(); ++y) {
        const auto* old = reinterpret_cast<const QRgb*>(before.constScanLine(y));
        const auto* now = reinterpret_cast<const QRgb*>(after.constScanLine(y));
        if (std::equal(old, old + before.width(), now))
            continue;
        for (std::size_t x = 0; x < changed.size(); ++x)
            changed[x] = changed[x] || old[x] != now[x];
    }
    return changed;
}

/// The changed columns of `pixels` [device px] as a few strips.
std::vector<QRect> changedStrips(const std::vector<bool>& changed, const QRect& pixels)
{
    std::vector<QRect> strips;
    for (int x = 0; x < static_cast<int>(changed.size()); ++x) {
        if (!changed[static_cast<std::size_t>(x)])
            continue;
        const int column = pixels.left() + x;
        if (strips.empty() || column - strips.back().right() > STRIP_GAP)
            strips.emplace_back(column, pixels.top(), 1, pixels.height());
        else
            strips.back().setRight(column);
    }
    for (QRect& strip : strips)
        strip.adjust(-STRIP_MARGIN, -STRIP_MARGIN, STRIP_MARGIN, STRIP_MARGIN);
    return strips;
}

/// Calls `paint` up to `times` times, until that changes nothing in `pixels` [device px].
void settle(const QImage& image, const QRect& pixels, int times, const std::function<void()>& paint)
{
    for (int i = 0; i < times; ++i) {
        const QImage before = image.copy(pixels);
        paint();
        if (image.copy(pixels) == before)
            break;
    }
}

QRect toPixels(const QPainter& painter, const QImage& image, const QRect& area)
{
    return painter.deviceTransform().mapRect(area).intersected(image.rect());
}

} // namespace

void RepeatedPainting::paint(QPainter& painter, const QImage& image, const QRect& area, int times,
                             const std::function<void()>& paint)
{
    const QRect pixels = toPixels(painter, image, area);
    if (!pixels.isEmpty())
        settle(image, pixels, times, paint);
}

void RepeatedPainting::paintInStrips(QPainter& painter, const QImage& image, const QRect& area, int times,
                                     const std::function<void()>& paint)
{
    if (image.depth() != COMPARABLE_DEPTH) {
        RepeatedPainting::paint(painter, image, area, times, paint);
        return;
    }
    const QRect pixels = toPixels(painter, image, area);
    if (pixels.isEmpty())
        return;
    const QImage before = image.copy(pixels);
    paint();
    for (const QRect& strip : changedStrips(changedColumns(before, image.copy(pixels)), pixels)) {
        painter.save();
        painter.setClipRegion(painter.deviceTransform().inverted().map(QRegion(strip)), Qt::IntersectClip);
        settle(image, strip, times - 1, paint);
        painter.restore();
    }
}
