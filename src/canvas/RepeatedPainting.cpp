#include "canvas/RepeatedPainting.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <vector>

namespace
{

/// Changed columns closer together than this are one strip, wider than they are on either side by
/// the second number, so that no rounding between pixels of image and painter loses one.
constexpr int STRIP_GAP = 16;
constexpr int STRIP_MARGIN = 2;

std::vector<bool> changedColumns(const QImage& before, const QImage& after)
{
    std::vector<bool> changed(static_cast<std::size_t>(before.width()), false);
    for (int y = 0; y < before.height(); ++y) {
        const auto* old = reinterpret_cast<const QRgb*>(before.constScanLine(y));
        const auto* now = reinterpret_cast<const QRgb*>(after.constScanLine(y));
        for (std::size_t x = 0; x < changed.size(); ++x) {
            if (old[x] != now[x])
                changed[x] = true;
        }
    }
    return changed;
}

/// The changed columns of `pixels` [device px] as a few strips.
QRegion changedStrips(const std::vector<bool>& changed, const QRect& pixels)
{
    QRegion strips;
    const int count = static_cast<int>(changed.size());
    int first = -1;
    int last = -1;
    const auto close = [&] {
        if (first != -1)
            strips += QRect(QPoint(pixels.left() + first - STRIP_MARGIN, pixels.top() - STRIP_MARGIN),
                            QPoint(pixels.left() + last + STRIP_MARGIN, pixels.bottom() + STRIP_MARGIN));
    };
    for (int x = 0; x < count; ++x) {
        if (!changed[static_cast<std::size_t>(x)])
            continue;
        if (first == -1 || x - last > STRIP_GAP) {
            close();
            first = x;
        }
        last = x;
    }
    close();
    return strips;
}

} // namespace

void RepeatedPainting::paint(QPainter& painter, const QImage& image, const QRect& area, int times,
                             const std::function<void()>& paint)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRect pixels = toDevice.mapRect(area).intersected(image.rect());
    if (pixels.isEmpty())
        return;
    QImage before = image.copy(pixels);
    paint();
    for (int i = 1; i < times; ++i) {
        QImage after = image.copy(pixels);
        const QRegion changed = changedStrips(changedColumns(before, after), pixels);
        if (changed.isEmpty())
            return;
        before = std::move(after);
        painter.save();
        painter.setClipRegion(toDevice.inverted().map(changed), Qt::IntersectClip);
        paint();
        painter.restore();
    }
}
