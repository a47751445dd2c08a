#include "canvas/RepeatedPainting.h"
#include "canvas/TrussView.h"
#include "engine/Numbers.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr float FULL_STRESS = 100.0F; // [%]
constexpr float HIGH_STRESS = 80.0F;  // [%]
/// What remains of a truss after its whole metres gets no cross below this length [m].
constexpr float SHORTEST_MODULE = 0.01F;
/// Metre lines keep this far from the edges of a screen [m].
constexpr float EDGE_CLEARANCE = 0.001F;
/// A name that has an emoji in it may be painted this far out of its box [px].
constexpr int TEXT_MARGIN = 8;
/// The label of a screen stays this near to the screen's middle [px].
constexpr int LABEL_REACH = 40;

constexpr int ARRAY_TOP = 5;     // below the truss line [px]
constexpr int ARRAY_HEIGHT = 40; // [px]

QRect screenFrame(const TrussGeometry& g, const ArraySummary& array)
{
    const float a = array.centre - array.width * 0.5F;
    const float b = array.centre + array.width * 0.5F;
    return {g.toX(a), g.lineY() + g.scaled(ARRAY_TOP), g.offset(b) - g.offset(a), g.scaled(ARRAY_HEIGHT)};
}

} // namespace

QString TrussView::loadTitle(const LoadLogic::ActiveLoad& load)
{
    return load.name.isEmpty() ? u'L' + QString::number(load.id) : load.name;
}

TrussGeometry TrussView::geometry(int W, int H, double s) const
{
    return {W, H, s, marginX};
}

const CanvasPalette& TrussView::colours(double s)
{
    if (!m_look || m_look->print != printMode || m_look->scale != s)
        m_look.emplace(Look{printMode, s, CanvasPalette(printMode, s)});
    return m_look->colours;
}

void TrussView::drawScene(QPainter& painter, int W, int H, double s, Order order)
{
    m_arrays = summariseArrays(selectedLoadId());
    drawTruss(painter, W, H, s);
    if (order == Order::MotorsFirst)
        drawMotors(painter, W, H, s);
    drawLoads(painter, W, H, s);
    if (order == Order::LoadsFirst)
        drawMotors(painter, W, H, s);
    drawFlexionLabel(painter, W, H, s);
    m_arrays.reset();
}

void TrussView::drawMotors(QPainter& painter, int W, int H, double s)
{
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        drawMotor(painter, motor, W, H, s);
}

// Every segment of an array draws the whole array, in the order of the list.
void TrussView::drawLoads(QPainter& painter, int W, int H, double s)
{
    const auto& loads = std::as_const(LoadLogic::ActiveLoads);
    for (auto load = loads.cbegin(); load != loads.cend();) {
        if (!LoadLogic::IsScreen(*load)) {
            drawLoad(painter, *load++, W, H, s);
            continue;
        }
        const auto end = std::find_if_not(load, loads.cend(), [load](const LoadLogic::ActiveLoad& other) {
            return LoadLogic::IsScreen(other) && other.groupId == load->groupId;
        });
        drawArrayRun(painter, *load, static_cast<int>(end - load), W, H, s);
        load = end;
    }
}

void TrussView::drawArrayRun(QPainter& painter, const LoadLogic::ActiveLoad& segment, int times, int W, int H,
                             double s)
{
    const auto draw = [&] { drawScreen(painter, segment, W, H, s); };
    const std::optional<ArraySummary> array = arrayOf(segment.groupId);
    if (array && times > LONG_RUN && painter.device()->devType() == QInternal::Image) {
        const TrussGeometry g = geometry(W, H, s);
        const QRect frame = screenFrame(g, *array);
        const int reach = std::max(std::abs(frame.width()), g.scaled(LABEL_REACH)) + g.scaled(TEXT_MARGIN);
        const QRect area(frame.left() + frame.width() / 2 - reach, g.lineY(), 2 * reach,
                         g.scaled(ARRAY_TOP + ARRAY_HEIGHT + TEXT_MARGIN));
        const auto repeat = s == 1.0 ? RepeatedPainting::paintInStrips : RepeatedPainting::paint;
        repeat(painter, *static_cast<const QImage*>(painter.device()), area, times, draw);
        return;
    }
    for (int i = 0; i < times; ++i)
        draw();
}

TrussView::Chord TrussView::chordState()
{
    if (LoadLogic::isUnstable || LoadLogic::TrussStress_Percentage >= FULL_STRESS)
        return Chord::Overloaded;
    return LoadLogic::TrussStress_Percentage >= HIGH_STRESS ? Chord::NearLimit : Chord::Usual;
}

QColor TrussView::chordColour(const CanvasPalette& c)
{
    switch (chordState()) {
    case Chord::Overloaded:
        return CanvasPalette::OVERLOADED;
    case Chord::NearLimit:
        return CanvasPalette::NEAR_LIMIT;
    case Chord::Usual:
        break;
    }
    return c.accent;
}

void TrussView::drawTruss(QPainter& painter, int W, int H, double s)
{
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    const int left = g.margin();
    const int right = W - g.margin();
    const int y = g.lineY();

    painter.setPen(QPen(chordColour(c), g.scaled(4)));
    painter.drawLine(left, y, right, y);
    painter.setPen(QPen(c.ink, g.scaled(2)));
    painter.drawLine(left, y - g.scaled(25), left, y + g.scaled(25));
    painter.drawLine(right, y - g.scaled(25), right, y + g.scaled(25));

    drawDimension(painter, g, c);
    painter.setPen(QPen(c.axis, g.scaled(1), Qt::DashLine));
    painter.drawLine(W / 2, y - g.scaled(40), W / 2, y + g.scaled(40));
    drawLattice(painter, g, c);

    const int centre = left + g.span() / 2;
    painter.setPen(QPen(c.centreMark, g.scaled(1), Qt::DashLine));
    painter.drawLine(centre, y - g.scaled(30), centre, y + g.scaled(30));
    painter.setFont(c.nameFont);
    painter.drawText(QRect(centre - g.scaled(30), y - g.scaled(90), g.scaled(60), g.scaled(15)),
                     Qt::AlignCenter, u"0.0m"_s);
}

void TrussView::drawDimension(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c)
{
    const int left = g.margin();
    const int right = left + g.span();
    const int top = g.lineY() - g.scaled(130);
    const int lineY = top + g.scaled(7);

    painter.setFont(c.lengthFont);
    painter.setPen(QPen(c.accent, g.scaled(1)));
    painter.drawText(QRect(left, top - g.scaled(22), g.span(), g.scaled(25)), Qt::AlignCenter,
                     u"LONGITUD TOTAL: %1m"_s.arg(Numbers::fixed(LoadLogic::TrussLength, 1)));
    painter.drawLine(left, lineY, right, lineY);
    painter.drawLine(left, top, left, top + g.scaled(14));
    painter.drawLine(right, top, right, top + g.scaled(14));
}

// One cross for each metre; where metres are narrower than pixels, one for each pixel.
void TrussView::drawLattice(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c)
{
    const float end = LoadLogic::TrussLength - SHORTEST_MODULE;
    if (!(end > 0.0F))
        return;
    painter.setPen(QPen(c.lattice, g.scaled(1)));
    const int top = g.lineY() - g.scaled(10);
    const int bottom = g.lineY() + g.scaled(10);
    const auto drawCross = [&](int xa, int xb) {
        painter.drawLine(xa, top, xb, bottom);
        painter.drawLine(xa, bottom, xb, top);
    };

    if (LoadLogic::TrussLength > static_cast<float>(g.span())) {
        for (int x = 0; x < g.span(); ++x)
            drawCross(g.margin() + x, g.margin() + x + 1);
        return;
    }
    for (int i = 0; static_cast<float>(i) < end; ++i) {
        const auto metre = static_cast<float>(i);
        drawCross(g.toX(metre), g.toX(std::min(LoadLogic::TrussLength, metre + 1.0F)));
    }
}

void TrussView::drawLoad(QPainter& painter, const LoadLogic::ActiveLoad& load, int W, int H, double s)
{
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    const int x = g.toX(load.positionX);
    const int y = g.lineY();
    const int selectedId = selectedLoadId();
    const bool selected = selectedId != -1 && load.id == selectedId;

    painter.setPen(
        QPen(selected ? c.selectedLoadOutline : c.loadOutline, g.scaled(selected && !printMode ? 3 : 2)));
    painter.setBrush(selected ? c.selectedLoadFill : c.loadFill);
    const QPoint triangle[] = {
        {x - g.scaled(15), y + g.scaled(5)}, {x + g.scaled(15), y + g.scaled(5)}, {x, y + g.scaled(30)}};
    painter.drawPolygon(triangle, 3, Qt::OddEvenFill);

    const int left = x - g.scaled(40);
    painter.setPen(c.ink);
    painter.setFont(c.nameFont);
    painter.drawText(QRect(left, y + g.scaled(75), g.scaled(80), g.scaled(15)), Qt::AlignCenter,
                     loadTitle(load));
    painter.setPen(c.mass);
    painter.setFont(c.detailFont);
    painter.drawText(QRect(left, y + g.scaled(90), g.scaled(80), g.scaled(12)), Qt::AlignCenter,
                     Numbers::fixed(load.mass, 0) + u"kg"_s);
    painter.setPen(c.secondary);
    painter.setFont(c.loadPositionFont);
    painter.drawText(QRect(left, y + g.scaled(102), g.scaled(80), g.scaled(10)), Qt::AlignCenter,
                     LoadLogic::formatCoordinate(load.positionX));
}

std::optional<ArraySummary> TrussView::arrayOf(int groupId) const
{
    const ArraySummaries arrays = m_arrays ? *m_arrays : summariseArrays(selectedLoadId());
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

// The whole metres of the truss that lie inside the screen, as far as they can be seen. Where
// metres are narrower than pixels every column between the edges holds one.
void TrussView::drawMetres(QPainter& painter, const TrussGeometry& g, const QRect& frame, float a, float b,
                           int W, double s)
{
    QPen pen(CanvasPalette::SCREEN_METRES, s);
    pen.setDashPattern({2, 5});
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
    if (std::abs(LoadLogic::TrussLength) > static_cast<float>(g.span())) {
        for (int x = firstX; x < lastX; ++x)
            drawLine(x);
        return;
    }
    const float first = std::max(std::ceil(a + EDGE_CLEARANCE), std::floor(g.toMetres(firstX)));
    const float last = std::min(b - EDGE_CLEARANCE, g.toMetres(lastX) + 1.0F);
    for (int k = 0; first + static_cast<float>(k) < last; ++k)
        drawLine(g.toX(first + static_cast<float>(k)));
}

void TrussView::drawScreenLabel(QPainter& painter, const CanvasPalette& c, const QRect& frame,
                                const QColor& frameColour)
{
    const QString text = u"LED"_s;
    painter.setFont(c.nameFont);
    if (!printMode) {
        QRect box = QFontMetrics(c.nameFont, painter.device()).boundingRect(text);
        box.moveCenter(QPoint(frame.left() + frame.width() / 2, frame.top() + frame.height() / 2));
        box.adjust(-3, -1, 3, 1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(CanvasPalette::SCREEN_LABEL_BOX);
        painter.drawRect(box);
    }
    painter.setPen(printMode ? QColor(Qt::black) : frameColour);
    painter.setBrush(Qt::NoBrush);
    painter.drawText(frame, Qt::AlignCenter, text);
}

void TrussView::drawFlexionLabel(QPainter& painter, int W, int H, double s)
{
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    painter.setPen(c.accent);
    painter.setFont(c.stressFont);
    painter.drawText(QRect(g.margin() + g.span() / 2 - g.scaled(80), g.lineY() + g.scaled(125), g.scaled(160),
                           g.scaled(25)),
                     Qt::AlignCenter,
                     u"Flexión: %1%"_s.arg(Numbers::fixed(LoadLogic::TrussStress_Percentage, 1)));
}

void TrussView::drawWarning(QPainter& painter)
{
    if (!LoadLogic::isUnstable || !blinkOn)
        return;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(CanvasPalette::WARNING_VEIL);
    painter.drawRect(rect());
    painter.setPen(Qt::white);
    painter.setFont(QFont(u"Arial"_s, 24, QFont::Bold));
    painter.drawText(rect(), Qt::AlignCenter,
                     u"⚠️ PELIGRO DE VUELCO - SISTEMA INESTABLE\n"
                     "Distribución de motores inválida: Exceso de voladizo."_s);
    painter.restore();
}
