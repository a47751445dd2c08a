#include "Camera.h"

#include <QApplication>
#include <QBuffer>
#include <QHash>
#include <QImage>
#include <QPalette>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace
{

constexpr int PALETTE_SIZE = 256;

/// The colours of `image`, the most frequent first.
QList<QRgb> coloursByFrequency(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            ++counts[line[x]];
    }
    QList<QRgb> colours = counts.keys();
    // Equally frequent colours by value: a hash has no order of its own.
    std::sort(colours.begin(), colours.end(), [&counts](QRgb a, QRgb b) {
        const int difference = counts.value(a) - counts.value(b);
        return difference != 0 ? difference > 0 : a < b;
    });
    return colours;
}

int distance(QRgb a, QRgb b)
{
    const int red = qRed(a) - qRed(b);
    const int green = qGreen(a) - qGreen(b);
    const int blue = qBlue(a) - qBlue(b);
    return red * red + green * green + blue * blue;
}

int nearest(const QList<QRgb>& palette, QRgb colour)
{
    const auto found = std::min_element(palette.cbegin(), palette.cend(), [colour](QRgb a, QRgb b) {
        return distance(a, colour) < distance(b, colour);
    });
    return static_cast<int>(found - palette.cbegin());
}

/// The window has few colours and many shades between them: a palette of the most frequent ones
/// makes the file a third as large, and the eye does not see it.
QImage withPalette(const QImage& image)
{
    const QList<QRgb> colours = coloursByFrequency(image);
    const QList<QRgb> palette = colours.first(std::min<qsizetype>(PALETTE_SIZE, colours.size()));
    QHash<QRgb, int> indices;
    for (const QRgb colour : colours)
        indices.insert(colour, nearest(palette, colour));

    QImage indexed(image.size(), QImage::Format_Indexed8);
    indexed.setColorTable(palette);
    for (int y = 0; y < image.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* to = indexed.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            to[x] = static_cast<uchar>(indices.value(from[x]));
    }
    return indexed;
}

QByteArray encode(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    constexpr int SMALLEST = 0; // the quality of a PNG: zero packs it best
    withPalette(image.convertToFormat(QImage::Format_RGB32)).save(&buffer, "PNG", SMALLEST);
    return bytes;
}

} // namespace

const QMap<QString, Picture>& Camera::pictures() const
{
    return m_pictures;
}

void Camera::take(const QString& name, QWidget* widget, double fineness)
{
    take(name, widget, widget->rect(), fineness);
}

void Camera::take(const QString& name, QWidget* widget, const QRect& area, double fineness)
{
    QImage image((QSizeF(area.size()) * fineness).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(fineness);
    image.fill(QApplication::palette().color(QPalette::Window)); // groups let it show through
    widget->render(&image, QPoint(), area);
    keep(name, image, area.size());
}

void Camera::keep(const QString& name, const QImage& image, const QSize& size)
{
    m_pictures.insert(name, {encode(image), size});
}
