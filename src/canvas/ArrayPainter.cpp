#include "canvas/ArrayPainter.h"

#include "canvas/PaintContext.h"
#include "canvas/RepeatedPainting.h"
#include "engine/Numbers.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// Metre lines keep this far from the edges of a screen [m].
constexpr float EDGE_CLEARANCE = 0.001F;
/// Pens and glyphs reach no further than this out of frame and label [px].
constexpr int REACH = 8;

/// Dashes and gaps of the metre lines, in widths of their pen.
constexpr double METRE_DASH = 2.0;
constexpr double METRE_GAP = 5.0;

QString labelText()
{
    return u"LED"_s;
}

QRect screenFrame(const TrussGeometry& g, const ArraySummary& array)
{
    const float a = array.centre - array.width * 0.5F;
    const float b = array.centre + array.width * 0.5F;
    return {g.toX(a), g.lineY() + g.scaled(TrussGeometry::ARRAY_TOP), g.offset(b) - g.offset(a),
            g.scaled(TrussGeometry::ARRAY_HEIGHT)};
}

/// The box behind the label, in the middle of the frame.
QRect labelBox(const QRect& frame, const QFontMetrics& metrics)
{
    QRect box = metrics.boundingRect(labelText());
    box.moveCenter({frame.left() + frame.width() / 2, frame.top() + frame.height() / 2});
    return box.adjusted(-3, -1, 3, 1);
}

/// All that an array is drawn on [px]. At a small scale its label is larger than its frame.
QRect touchedArea(const QRect& frame, const QFontMetrics& metrics, double scale)
{
    const int reach = REACH + static_cast<int>(std::ceil(scale));
    return frame.normalized().united(labelBox(frame, metrics)).adjusted(-reach, -reach, reach, reach);
}

/// Where metres are narrower than pixels every column between the edges holds one, and their lines
/// merge into bands, one for each dash; a dash is longer than its name says by its square ends.
void fillMetres(QPainter& painter, const QRectF& area, double s)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(CanvasPalette::SCREEN_METRES);
    const double first = area.top() - s / 2.0;
    const double pitch = (METRE_DASH + METRE_GAP) * s;
    const int count = Numbers::toPixel(std::ceil((area.bottom() - first) / pitch));
    for (int i = 0; i < count; ++i) {
        const double top = first + i * pitch;
        const double bottom = std::min(top + (METRE_DASH + 1.0) * s, area.bottom() + s / 2.0);
        painter.drawRect(QRectF(area.left(), top, area.width(), bottom - top));
    }
}

/// The whole metres of the truss that lie inside a screen from `a` to `b` [m], as far as they can be
/// seen: where the metres are wider than pixels.
void drawMetreLines(const PaintContext& context, const QRect& frame, float a, float b, int firstX, int lastX)
{
    QPainter& painter = context.painter;
    const TrussGeometry& g = context.geometry;
    const int width = static_cast<int>(std::ceil(context.scale)) + 1;
    const QRegion seen = painter.hasClipping() ? painter.clipRegion()
                                               : QRegion(-width, frame.top(), context.width + 2 * width, 1);
    const QRect bounds = seen.boundingRect();
    const auto drawLine = [&](int x) {
        if (x > frame.left() && x < frame.left() + frame.width()
            && seen.intersects(QRect(x - width, bounds.top(), 2 * width, bounds.height())))
            painter.drawLine(x, frame.top(), x, frame.top() + frame.height());
    };
    // In this order what is seen counts where an edge is not a number, and nothing is seen of a truss
    // that has neither length nor span.
    const float first = std::max(std::floor(g.toMetres(firstX)), std::ceil(a + EDGE_CLEARANCE));
    const float last = std::min(g.toMetres(lastX) + 1.0F, b - EDGE_CLEARANCE);
    for (int k = 0; first + static_cast<float>(k) < last; ++k)
        drawLine(g.toX(first + static_cast<float>(k)));
}

void drawMetres(const PaintContext& context, const QRect& frame, float a, float b)
{
    const double s = context.scale;
    QPen pen(CanvasPalette::SCREEN_METRES, s);
    pen.setDashPattern({METRE_DASH, METRE_GAP});
    context.painter.setPen(pen);
    const int width = static_cast<int>(std::ceil(s)) + 1;
    const int firstX = std::max(frame.left(), -width);
    const int lastX = std::min(frame.left() + frame.width(), context.width + width);
    const auto span = static_cast<float>(context.geometry.span());
    if (std::abs(context.scene.trussLength) <= std::abs(span)) {
        drawMetreLines(context, frame, a, b, firstX, lastX);
        return;
    }
    const int columns = lastX - firstX - 1; // strictly between the edges
    if (columns > 0)
        fillMetres(context.painter,
                   QRectF(firstX + 1 - s / 2.0, frame.top(), columns - 1 + s, frame.height()), s);
}

void drawLabel(const PaintContext& context, const QRect& frame, const QColor& frameColour)
{
    QPainter& painter = context.painter;
    const bool print = context.scene.print;
    painter.setFont(context.palette.nameFont);
    if (!print) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(CanvasPalette::SCREEN_LABEL_BOX);
        painter.drawRect(labelBox(frame, painter.fontMetrics()));
    }
    painter.setPen(print ? QColor(Qt::black) : frameColour);
    painter.setBrush(Qt::NoBrush);
    context.texts.drawCentred(painter, frame, labelText());
}

} // namespace

void ArrayPainter::draw(const PaintContext& context, const ArraySummary& array)
{
    const double s = context.scale;
    const CanvasPalette& c = context.palette;
    const bool print = context.scene.print;
    const QRect frame = screenFrame(context.geometry, array);

    const QColor& colour = array.selected ? c.selectedScreenFrame : c.screenFrame;
    context.painter.setPen(QPen(colour, array.selected && !print ? 2.0 * s : s));
    context.painter.setBrush(Qt::NoBrush);
    context.painter.drawRect(frame);
    if (!print)
        drawMetres(context, frame, array.centre - array.width * 0.5F, array.centre + array.width * 0.5F);
    drawLabel(context, frame, colour);
}

void ArrayPainter::drawRepeatedly(const PaintContext& context, const ArraySummary& array, int times)
{
    QPainter& painter = context.painter;
    const auto paint = [&] { draw(context, array); };
    if (times > LONG_RUN && painter.device()->devType() == QInternal::Image) {
        painter.setFont(context.palette.nameFont); // the painter knows the size of a font that has none
        const QRect area =
            touchedArea(screenFrame(context.geometry, array), painter.fontMetrics(), context.scale);
        const auto repeat = context.scale == 1.0 ? RepeatedPainting::paintInStrips : RepeatedPainting::paint;
        repeat(painter, *static_cast<const QImage*>(painter.device()), area, times, paint);
        return;
    }
    for (int i = 0; i < times; ++i)
        paint();
}

bool ArrayPainter::hasLongRun(const QList<ActiveLoad>& loads)
{
    int run = 0;
    int groupId = -1;
    for (const ActiveLoad& load : loads) {
        const bool goesOn = Project::isScreen(load) && load.groupId == groupId;
        groupId = load.groupId;
        run = goesOn ? run + 1 : 1;
        if (run > LONG_RUN)
            return true;
    }
    return false;
}
