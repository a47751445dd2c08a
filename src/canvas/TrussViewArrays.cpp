#include "canvas/RepeatedPainting.h"
#include "canvas/TrussView.h"
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

constexpr int ARRAY_TOP = 5;     // below the truss line [px]
constexpr int ARRAY_HEIGHT = 40; // [px]

QString labelText()
{
    return u"LED"_s;
}

QRect screenFrame(const TrussGeometry& g, const ArraySummary& array)
{
    const float a = array.centre - array.width * 0.5F;
    const float b = array.centre + array.width * 0.5F;
    return {g.toX(a), g.lineY() + g.scaled(ARRAY_TOP), g.offset(b) - g.offset(a), g.scaled(ARRAY_HEIGHT)};
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

} // namespace

void TrussView::drawArrayRun(QPainter& painter, const LoadLogic::ActiveLoad& segment, int times, int W, int H,
                             double s)
{
    const auto draw = [&] { drawScreen(painter, segment, W, H, s); };
    const std::optional<ArraySummary> array = arrayOf(segment.groupId);
    if (array && times > LONG_RUN && painter.device()->devType() == QInternal::Image) {
        painter.setFont(colours(s).nameFont); // the painter knows the size of a font that has none
        const QRect area = touchedArea(screenFrame(geometry(W, H, s), *array), painter.fontMetrics(), s);
        const auto repeat = s == 1.0 ? RepeatedPainting::paintInStrips : RepeatedPainting::paint;
        repeat(painter, *static_cast<const QImage*>(painter.device()), area, times, draw);
        return;
    }
    for (int i = 0; i < times; ++i)
        draw();
}

std::optional<ArraySummary> TrussView::arrayOf(int groupId) const
{
    const ArraySummaries arrays =
        m_arrays ? *m_arrays : Arrays::summarize(LoadLogic::ActiveLoads, selectedLoadId().value_or(-1));
    const auto array = arrays.constFind(groupId);
    return array == arrays.cend() ? std::nullopt : std::optional(*array);
}

void TrussView::drawScreen(QPainter& painter, const LoadLogic::ActiveLoad& segment, int W, int H, double s)
{
    const std::optional<ArraySummary> array = arrayOf(segment.groupId);
    if (!array)
        return;
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    const float a = array->centre - array->width * 0.5F;
    const float b = array->centre + array->width * 0.5F;
    const QRect frame = screenFrame(g, *array);

    const QColor& colour = array->selected ? c.selectedScreenFrame : c.screenFrame;
    painter.setPen(QPen(colour, array->selected && !printMode ? 2.0 * s : s));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
    if (!printMode)
        drawMetres(painter, g, frame, a, b, W, s);
    drawScreenLabel(painter, c, frame, colour);
}

// The whole metres of the truss that lie inside the screen, as far as they can be seen.
void TrussView::drawMetres(QPainter& painter, const TrussGeometry& g, const QRect& frame, float a, float b,
                           int W, double s)
{
    QPen pen(CanvasPalette::SCREEN_METRES, s);
    pen.setDashPattern({METRE_DASH, METRE_GAP});
    painter.setPen(pen);
    const int width = static_cast<int>(std::ceil(s)) + 1;
    const QRegion seen =
        painter.hasClipping() ? painter.clipRegion() : QRegion(-width, frame.top(), W + 2 * width, 1);
    const int top = frame.top();
    const auto drawLine = [&](int x) {
        if (x > frame.left() && x < frame.left() + frame.width()
            && seen.intersects(
                QRect(x - width, seen.boundingRect().top(), 2 * width, seen.boundingRect().height())))
            painter.drawLine(x, top, x, top + frame.height());
    };

    const int firstX = std::max(frame.left(), -width);
    const int lastX = std::min(frame.left() + frame.width(), W + width);
    if (!(std::abs(LoadLogic::TrussLength) <= std::abs(static_cast<float>(g.span())))) {
        const int columns = lastX - firstX - 1; // strictly between the edges
        if (columns > 0)
            fillMetres(painter, QRectF(firstX + 1 - s / 2.0, top, columns - 1 + s, frame.height()), s);
        return;
    }
    // In this order what is seen counts where an edge is not a number, and nothing is seen of a truss
    // that has neither length nor span.
    const float first = std::max(std::floor(g.toMetres(firstX)), std::ceil(a + EDGE_CLEARANCE));
    const float last = std::min(g.toMetres(lastX) + 1.0F, b - EDGE_CLEARANCE);
    for (int k = 0; first + static_cast<float>(k) < last; ++k)
        drawLine(g.toX(first + static_cast<float>(k)));
}

// Where metres are narrower than pixels every column between the edges holds one, and their lines merge
// into bands, one for each dash; a dash is longer than its name says by its square ends.
void TrussView::fillMetres(QPainter& painter, const QRectF& area, double s)
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

void TrussView::drawScreenLabel(QPainter& painter, const CanvasPalette& c, const QRect& frame,
                                const QColor& frameColour)
{
    painter.setFont(c.nameFont);
    if (!printMode) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(CanvasPalette::SCREEN_LABEL_BOX);
        painter.drawRect(labelBox(frame, painter.fontMetrics()));
    }
    painter.setPen(printMode ? QColor(Qt::black) : frameColour);
    painter.setBrush(Qt::NoBrush);
    m_texts.drawCentred(painter, frame, labelText());
}
