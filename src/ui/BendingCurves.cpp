#include "ui/BendingCurves.h"

#include "engine/SecondOpinionText.h"
#include "ui/Notices.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::Bending;
using SecondOpinion::Opinion;

constexpr double TITLE_HEIGHT = 18.0; // [px]
constexpr double CURVE_MARGIN = 18.0; // above and below a curve, for its figures [px]
constexpr double TITLE_LEFT = 6.0;    // [px]
constexpr double MARK_RADIUS = 2.5;   // [px]

const QColor LABEL_GROUND(0x16, 0x16, 0x16, 200);

const std::vector<BeamDiagram::Point>& levelPoints(const Opinion& opinion)
{
    static const std::vector<BeamDiagram::Point> none;
    return opinion.level ? opinion.level->points : none;
}

QString at(const Opinion& opinion, double position)
{
    return u" en "_s + SecondOpinionText::position(position, opinion.length);
}

/// The extremes of `bending` with their places.
QString extremesText(const Opinion& opinion, const Bending& bending)
{
    const BeamDiagram::Extremes& most = bending.extremes;
    return u"momento de %1 kg·m%2 a %3 kg·m%4; cortante de %5 kg%6."_s.arg(
        SecondOpinionText::mass(most.smallestMoment), at(opinion, most.smallestMomentAt),
        SecondOpinionText::mass(most.largestMoment), at(opinion, most.largestMomentAt),
        SecondOpinionText::mass(most.shear), at(opinion, most.shearAt));
}

/// The title of the motor that is slack in the dashed case; empty where there is none.
QString slackTitle(const Opinion& opinion)
{
    return opinion.oneSlack && opinion.oneSlackOf
               ? Notices::shortName(opinion.motors[*opinion.oneSlackOf].motor.title)
               : QString();
}

} // namespace

BendingCurves::BendingCurves()
    : ContrastPicture(u"Momento y cortante del truss"_s)
{
    setMinimumSize(300, 220);
}

std::size_t BendingCurves::stops() const
{
    return levelPoints(opinion()).size();
}

double BendingCurves::xOf(std::size_t stop) const
{
    return toX(levelPoints(opinion())[stop].position);
}

QString BendingCurves::textOf(std::size_t stop) const
{
    const BeamDiagram::Point& point = levelPoints(opinion())[stop];
    return u"%1, nivelado: momento %2 kg·m, cortante %3 kg"_s.arg(
        SecondOpinionText::position(point.position, opinion().length), SecondOpinionText::mass(point.moment),
        SecondOpinionText::mass(point.shear));
}

QString BendingCurves::description() const
{
    const Opinion& told = opinion();
    if (!told.level)
        return NOTHING_TO_DRAW;
    QString text = u"Bien nivelado: "_s + extremesText(told, *told.level);
    if (told.oneSlack && told.oneSlackOf)
        text += u" Con "_s + slackTitle(told) + u" flojo: "_s + extremesText(told, *told.oneSlack);
    return text;
}

BendingCurves::Mark BendingCurves::farthest(const Bending& bending, Value value)
{
    Mark mark{0.0, 0.0};
    for (const BeamDiagram::Point& point : bending.points) {
        if (std::abs(point.*value) > std::abs(mark.value))
            mark = {point.position, point.*value};
    }
    return mark;
}

double BendingCurves::largest(Value value) const
{
    double largest = 0.0;
    for (const std::optional<Bending>* bending : {&opinion().level, &opinion().oneSlack}) {
        if (*bending)
            largest = std::max(largest, std::abs(farthest(**bending, value).value));
    }
    return largest;
}

void BendingCurves::draw(QPainter& painter) const
{
    const QRectF upper(0.0, 0.0, width(), height() / 2.0);
    drawCurves(painter, upper, u"Momento (kg·m), hacia abajo donde el truss comba"_s,
               {&BeamDiagram::Point::moment, 1.0});
    drawCurves(painter, upper.translated(0.0, upper.height()), u"Cortante (kg)"_s,
               {&BeamDiagram::Point::shear, -1.0});
}

void BendingCurves::drawCurves(QPainter& painter, const QRectF& area, const QString& title,
                               const Curve& curve) const
{
    painter.setPen(INK);
    painter.drawText(QPointF(area.left() + TITLE_LEFT, area.top() + TITLE_HEIGHT - 5.0), title);
    const double half = (area.height() - TITLE_HEIGHT) / 2.0 - CURVE_MARGIN;
    const double zero = area.top() + TITLE_HEIGHT + CURVE_MARGIN + half;
    const double most = largest(curve.value);
    const Scale scale{zero, most > 0.0 ? curve.down * half / most : 0.0};
    drawTruss(painter, zero);

    if (const std::optional<Bending>& slack = opinion().oneSlack) {
        drawLine(painter, *slack, curve, scale, QPen(LESS_SAFE, 1.5, Qt::DashLine));
        painter.drawText(QRectF(area.left(), area.top() + 3.0, area.width() - TITLE_LEFT, TITLE_HEIGHT),
                         Qt::AlignRight | Qt::AlignTop, u"- - con "_s + slackTitle(opinion()) + u" flojo"_s);
        drawMark(painter, farthest(*slack, curve.value), scale);
    }
    const Bending& level = *opinion().level;
    drawLine(painter, level, curve, scale, QPen(ACCENT, 2.0));
    painter.setPen(Qt::white);
    if (curve.value == &BeamDiagram::Point::shear) {
        drawMark(painter, farthest(level, curve.value), scale);
        return;
    }
    drawMark(painter, {level.extremes.largestMomentAt, level.extremes.largestMoment}, scale);
    drawMark(painter, {level.extremes.smallestMomentAt, level.extremes.smallestMoment}, scale);
}

void BendingCurves::drawLine(QPainter& painter, const Bending& bending, const Curve& curve,
                             const Scale& scale, const QPen& pen) const
{
    QPolygonF line;
    for (const BeamDiagram::Point& point : bending.points)
        line.append(QPointF(toX(point.position), scale.zero + point.*curve.value * scale.perUnit));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawPolyline(line);
}

// Its figure stands clear of the curve, on a ground of its own over what crosses it.
void BendingCurves::drawMark(QPainter& painter, const Mark& mark, const Scale& scale) const
{
    const double offset = mark.value * scale.perUnit;
    const QPointF point(toX(mark.position), scale.zero + offset);
    painter.setBrush(painter.pen().color());
    painter.drawEllipse(point, MARK_RADIUS, MARK_RADIUS);

    const QFontMetricsF metrics(font());
    const QString text = SecondOpinionText::mass(mark.value);
    QRectF label(0.0, 0.0, metrics.horizontalAdvance(text) + 4.0, metrics.ascent() + 2.0);
    const double half = label.width() / 2.0;
    label.moveCenter({std::clamp(point.x(), half, std::max(half, width() - half)),
                      point.y() + (offset < 0.0 ? -1.0 : 1.0) * (label.height() / 2.0 + 2.0 * MARK_RADIUS)});
    painter.fillRect(label, LABEL_GROUND);
    painter.drawText(label, Qt::AlignCenter, text);
}
