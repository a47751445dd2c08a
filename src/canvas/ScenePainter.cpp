#include "canvas/ScenePainter.h"

#include "canvas/ArrayPainter.h"
#include "canvas/MotorPainter.h"
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
/// A target this wide is drawn at a scale of 1 [px].
constexpr double SCALE_ONE_WIDTH = 1000.0;

} // namespace

ScenePainter::ScenePainter(QPainter& painter, const Scene& scene, PaintKit& kit, QSize target, double scale)
    : m_context{painter,
                scene,
                {target.width(), target.height(), scale, scene.marginX, scene.trussLength},
                kit.palette(scene.print, scale),
                kit.texts(),
                target.width(),
                scale}
{
}

void ScenePainter::draw(Order order)
{
    drawTruss();
    if (order == Order::MotorsFirst)
        drawMotors();
    drawLoads();
    if (order == Order::LoadsFirst)
        drawMotors();
    drawFlexionLabel();
}

void ScenePainter::drawMotors()
{
    for (const Motor& motor : m_context.scene.motors)
        drawMotor(motor);
}

void ScenePainter::drawMotor(const Motor& motor)
{
    MotorPainter::draw(m_context, motor);
}

void ScenePainter::drawScreen(const ActiveLoad& segment)
{
    if (const std::optional<ArraySummary> array = arrayOf(segment.groupId))
        ArrayPainter::draw(m_context, *array);
}

// Every segment of an array draws the whole array, in the order of the list.
void ScenePainter::drawLoads()
{
    const QList<ActiveLoad>& loads = m_context.scene.loads;
    for (auto load = loads.cbegin(); load != loads.cend();) {
        if (!Project::isScreen(*load)) {
            drawLoad(*load++);
            continue;
        }
        const auto end = std::find_if_not(load, loads.cend(), [load](const ActiveLoad& other) {
            return Project::isScreen(other) && other.groupId == load->groupId;
        });
        if (const std::optional<ArraySummary> array = arrayOf(load->groupId))
            ArrayPainter::drawRepeatedly(m_context, *array, static_cast<int>(end - load));
        load = end;
    }
}

std::optional<ArraySummary> ScenePainter::arrayOf(int groupId)
{
    if (!m_arrays)
        m_arrays = Arrays::summarize(m_context.scene.loads, m_context.scene.selectedLoadId.value_or(-1));
    const auto array = m_arrays->constFind(groupId);
    return array == m_arrays->cend() ? std::nullopt : std::optional(*array);
}

QColor ScenePainter::chordColour() const
{
    const Rating& rating = m_context.scene.rating;
    const Limits::Level level = Limits::stressLevel(rating.stress);
    if (rating.isUnstable || level == Limits::Level::Exceeded)
        return CanvasPalette::OVERLOADED;
    return level == Limits::Level::Near ? CanvasPalette::NEAR_LIMIT : m_context.palette.accent;
}

void ScenePainter::drawTruss()
{
    QPainter& painter = m_context.painter;
    const TrussGeometry& g = m_context.geometry;
    const CanvasPalette& c = m_context.palette;
    const int left = g.margin();
    const int right = m_context.width - g.margin();
    const int y = g.lineY();

    painter.setPen(QPen(chordColour(), g.scaled(4)));
    painter.drawLine(left, y, right, y);
    painter.setPen(QPen(c.ink, g.scaled(2)));
    painter.drawLine(left, y - g.scaled(25), left, y + g.scaled(25));
    painter.drawLine(right, y - g.scaled(25), right, y + g.scaled(25));

    drawDimension();
    painter.setPen(QPen(c.axis, g.scaled(1), Qt::DashLine));
    painter.drawLine(m_context.width / 2, y - g.scaled(40), m_context.width / 2, y + g.scaled(40));
    drawLattice();

    const int centre = left + g.span() / 2;
    painter.setPen(QPen(c.centreMark, g.scaled(1), Qt::DashLine));
    painter.drawLine(centre, y - g.scaled(30), centre, y + g.scaled(30));
    painter.setFont(c.nameFont);
    m_context.texts.drawCentred(
        painter, QRect(centre - g.scaled(30), y - g.scaled(90), g.scaled(60), g.scaled(15)), u"0.0m"_s);
}

void ScenePainter::drawDimension()
{
    QPainter& painter = m_context.painter;
    const TrussGeometry& g = m_context.geometry;
    const CanvasPalette& c = m_context.palette;
    const int left = g.margin();
    const int right = left + g.span();
    const int top = g.lineY() - g.scaled(130);
    const int lineY = top + g.scaled(7);

    painter.setFont(c.lengthFont);
    painter.setPen(QPen(c.accent, g.scaled(1)));
    m_context.texts.drawCentred(painter, QRect(left, top - g.scaled(22), g.span(), g.scaled(25)),
                                u"LONGITUD TOTAL: %1m"_s.arg(Numbers::fixed(m_context.scene.trussLength, 1)));
    painter.drawLine(left, lineY, right, lineY);
    painter.drawLine(left, top, left, top + g.scaled(14));
    painter.drawLine(right, top, right, top + g.scaled(14));
}

// One cross for each metre. Where many share a pixel, each pair of columns is crossed once. A target
// narrower than its margins has a negative span.
void ScenePainter::drawLattice()
{
    QPainter& painter = m_context.painter;
    const TrussGeometry& g = m_context.geometry;
    const float length = m_context.scene.trussLength;
    const float end = length - SHORTEST_MODULE;
    if (!(end > 0.0F))
        return;
    painter.setPen(QPen(m_context.palette.lattice, g.scaled(1)));
    const int top = g.lineY() - g.scaled(10);
    const int bottom = g.lineY() + g.scaled(10);
    const auto drawCross = [&](int xa, int xb) {
        painter.drawLine(xa, top, xb, bottom);
        painter.drawLine(xa, bottom, xb, top);
    };

    if (length > DENSEST_METRES * std::abs(static_cast<float>(g.span()))) {
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
        drawCross(g.toX(metre), g.toX(std::min(length, metre + 1.0F)));
    }
}

void ScenePainter::drawLoad(const ActiveLoad& load)
{
    QPainter& painter = m_context.painter;
    const TrussGeometry& g = m_context.geometry;
    const CanvasPalette& c = m_context.palette;
    const int x = g.toX(load.positionX);
    const int y = g.lineY();
    const bool selected = m_context.scene.selectedLoadId == load.id;

    painter.setPen(QPen(selected ? c.selectedLoadOutline : c.loadOutline,
                        g.scaled(selected && !m_context.scene.print ? 3 : 2)));
    painter.setBrush(selected ? c.selectedLoadFill : c.loadFill);
    const QPoint triangle[] = {
        {x - g.scaled(15), y + g.scaled(5)}, {x + g.scaled(15), y + g.scaled(5)}, {x, y + g.scaled(30)}};
    painter.drawPolygon(triangle, 3, Qt::OddEvenFill);

    const int left = x - g.scaled(TrussGeometry::LOAD_LABEL_WIDTH / 2.0);
    const int width = g.scaled(TrussGeometry::LOAD_LABEL_WIDTH);
    painter.setPen(c.ink);
    painter.setFont(c.nameFont);
    m_context.texts.drawCentred(painter, QRect(left, y + g.scaled(75), width, g.scaled(15)),
                                Project::loadTitle(load));
    painter.setPen(c.mass);
    painter.setFont(c.detailFont);
    m_context.texts.drawCentred(painter, QRect(left, y + g.scaled(90), width, g.scaled(12)),
                                Numbers::fixed(load.mass, 0) + u"kg"_s);
    painter.setPen(c.secondary);
    painter.setFont(c.loadPositionFont);
    m_context.texts.drawCentred(painter, QRect(left, y + g.scaled(102), width, g.scaled(10)),
                                Project::formatCoordinate(load.positionX, m_context.scene.trussLength));
}

void ScenePainter::drawFlexionLabel()
{
    QPainter& painter = m_context.painter;
    const TrussGeometry& g = m_context.geometry;
    const CanvasPalette& c = m_context.palette;
    painter.setPen(c.accent);
    painter.setFont(c.stressFont);
    m_context.texts.drawCentred(painter,
                                QRect(g.margin() + g.span() / 2 - g.scaled(80),
                                      g.lineY() + g.scaled(TrussGeometry::STRESS_LABEL_TOP), g.scaled(160),
                                      g.scaled(TrussGeometry::STRESS_LABEL_HEIGHT)),
                                u"Flexión: %1%"_s.arg(Numbers::fixed(m_context.scene.rating.stress, 1)));
}

void ScenePainter::drawWarning(const QRect& area)
{
    QPainter& painter = m_context.painter;
    if (!m_context.scene.rating.isUnstable || !m_context.scene.blinkOn)
        return;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(CanvasPalette::WARNING_VEIL);
    painter.drawRect(area);
    painter.setPen(Qt::white);
    painter.setFont(QFont(u"Arial"_s, 24, QFont::Bold));
    painter.drawText(area, Qt::AlignCenter,
                     u"⚠️ PELIGRO DE VUELCO - SISTEMA INESTABLE\n"
                     "Distribución de motores inválida: Exceso de voladizo."_s);
    painter.restore();
}

QImage ScenePainter::toImage(const Scene& scene, PaintKit& kit, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    ScenePainter(painter, scene, kit, image.size(), width / SCALE_ONE_WIDTH).draw(Order::MotorsFirst);
    return image;
}

void ScenePainter::paintInto(QPainter& painter, const QRect& area, const Scene& scene, PaintKit& kit)
{
    painter.save();
    painter.setClipRect(area);
    painter.translate(area.topLeft());
    painter.fillRect(0, 0, area.width(), area.height(), Qt::white);
    ScenePainter(painter, scene, kit, area.size(), area.width() / SCALE_ONE_WIDTH).draw(Order::LoadsFirst);
    painter.restore();
}
