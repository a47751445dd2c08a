#pragma once

#include <QColor>
#include <QHash>
#include <QImage>

#include <algorithm>
#include <cmath>

/// Whether what a picture shows can be read.
namespace Support
{

inline double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

inline double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
           + 0.0722 * linear(colour.blueF());
}

/// As the web's guidelines for contrast define it: 1 to 21.
inline double contrast(const QColor& a, const QColor& b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

/// What most of `area` is painted in.
inline QColor mostFrequentColour(const QImage& picture, const QRect& area)
{
    QHash<QRgb, int> counts;
    const QRect inside = area.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QRgb most = 0;
    int mostCount = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > mostCount) {
            mostCount = it.value();
            most = it.key();
        }
    }
    return QColor(most);
}

/// What of `area` stands out most from `background`: the text, at the middle of its strokes.
inline double strongestContrast(const QImage& picture, const QRect& area, const QColor& background)
{
    double strongest = 1.0;
    const QRect inside = area.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            strongest = std::max(strongest, contrast(picture.pixelColor(x, y), background));
    }
    return strongest;
}

} // namespace Support
