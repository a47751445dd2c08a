#include "canvas/TrussView.h"
#include "engine/Limits.h"
#include "engine/Numbers.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// What remains of a truss after its whole metres gets no cross below this length [m].
constexpr float SHORTEST_MODULE = 0.01F;
/// From two metres a pixel on every column of pixels holds a whole metre.
constexpr float DENSEST_METRES = 2.0F;

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
    m_arrays = Arrays::summarize(LoadLogic::ActiveLoads, selectedLoadId().value_or(-1));
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
        if (!Project::isScreen(*load)) {
            drawLoad(painter, *load++, W, H, s);
            continue;
        }
        const auto end = std::find_if_not(load, loads.cend(), [load](const LoadLogic::ActiveLoad& other) {
            return Project::isScreen(other) && other.groupId == load->groupId;
        });
        drawArrayRun(painter, *load, static_cast<int>(end - load), W, H, s);
        load = end;
    }
}

QColor TrussView::chordColour(const CanvasPalette& c)
{
    const Limits::Level level = Limits::stressLevel(LoadLogic::TrussStress_Percentage);
    if (LoadLogic::isUnstable || level == Limits::Level::Exceeded)
        return CanvasPalette::OVERLOADED;
    return level == Limits::Level::Near ? CanvasPalette::NEAR_LIMIT : c.accent;
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
    m_texts.drawCentred(painter, QRect(centre - g.scaled(30), y - g.scaled(90), g.scaled(60), g.scaled(15)),
                        u"0.0m"_s);
}

void TrussView::drawDimension(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c)
{
    const int left = g.margin();
    const int right = left + g.span();
    const int top = g.lineY() - g.scaled(130);
    const int lineY = top + g.scaled(7);

    painter.setFont(c.lengthFont);
    painter.setPen(QPen(c.accent, g.scaled(1)));
    m_texts.drawCentred(painter, QRect(left, top - g.scaled(22), g.span(), g.scaled(25)),
                        u"LONGITUD TOTAL: %1m"_s.arg(Numbers::fixed(LoadLogic::TrussLength, 1)));
    painter.drawLine(left, lineY, right, lineY);
    painter.drawLine(left, top, left, top + g.scaled(14));
    painter.drawLine(right, top, right, top + g.scaled(14));
}

// One cross for each metre. Where many share a pixel, each pair of columns is crossed once. A target
// narrower than its margins has a negative span.
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

    if (LoadLogic::TrussLength > DENSEST_METRES * std::abs(static_cast<float>(g.span()))) {
        const int right = g.margin() + g.span();
        const int step = g.span() < 0 ? -1 : 1;
        for (int x = g.margin(); x != right; x += step) {
            drawCross(x, x);
            drawCross(x, x + step);
        }
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
    const bool selected = selectedLoadId() == load.id;

    painter.setPen(
        QPen(selected ? c.selectedLoadOutline : c.loadOutline, g.scaled(selected && !printMode ? 3 : 2)));
    painter.setBrush(selected ? c.selectedLoadFill : c.loadFill);
    const QPoint triangle[] = {
        {x - g.scaled(15), y + g.scaled(5)}, {x + g.scaled(15), y + g.scaled(5)}, {x, y + g.scaled(30)}};
    painter.drawPolygon(triangle, 3, Qt::OddEvenFill);

    const int left = x - g.scaled(40);
    painter.setPen(c.ink);
    painter.setFont(c.nameFont);
    m_texts.drawCentred(painter, QRect(left, y + g.scaled(75), g.scaled(80), g.scaled(15)), loadTitle(load));
    painter.setPen(c.mass);
    painter.setFont(c.detailFont);
    m_texts.drawCentred(painter, QRect(left, y + g.scaled(90), g.scaled(80), g.scaled(12)),
                        Numbers::fixed(load.mass, 0) + u"kg"_s);
    painter.setPen(c.secondary);
    painter.setFont(c.loadPositionFont);
    m_texts.drawCentred(painter, QRect(left, y + g.scaled(102), g.scaled(80), g.scaled(10)),
                        LoadLogic::formatCoordinate(load.positionX));
}

void TrussView::drawFlexionLabel(QPainter& painter, int W, int H, double s)
{
    const TrussGeometry g = geometry(W, H, s);
    const CanvasPalette& c = colours(s);
    painter.setPen(c.accent);
    painter.setFont(c.stressFont);
    m_texts.drawCentred(painter,
                        QRect(g.margin() + g.span() / 2 - g.scaled(80), g.lineY() + g.scaled(125),
                              g.scaled(160), g.scaled(25)),
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
