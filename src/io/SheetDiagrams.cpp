#include "io/SheetDiagrams.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

using BeamDiagram::Point;
using SecondOpinion::Opinion;

/// More columns than the eye tells apart: a line of ten thousand loads is drawn with the extremes of each.
constexpr int COLUMNS = 600;
constexpr std::size_t MOST_POINTS = 2400; // four to a column
/// Room for the title and the figures, in parts of the height.
constexpr double TOP = 0.16;
constexpr double BOTTOM = 0.14;

struct Value
{
    double position; ///< [m]
    double value;    ///< upwards
    QString text;    ///< its figure
};

/// Curve and labels of one picture.
struct Diagram
{
    QString title;
    std::vector<QPointF> line; ///< x [m], value upwards
    std::vector<Value> marks;
};

/// First, lowest, highest and last point of each column keep the line's shape.
std::vector<QPointF> thinned(const std::vector<QPointF>& line, double length)
{
    if (line.size() <= MOST_POINTS)
        return line;
    std::vector<QPointF> thin;
    for (auto begin = line.begin(); begin != line.end();) {
        const double edge = (std::floor(begin->x() / length * COLUMNS) + 1.0) * length / COLUMNS;
        const auto end =
            std::find_if(begin + 1, line.end(), [edge](const QPointF& p) { return p.x() >= edge; });
        auto [low, high] =
            std::minmax_element(begin, end, [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
        if (high < low)
            std::swap(low, high);
        thin.insert(thin.end(), {*begin, *low, *high, *(end - 1)});
        begin = end;
    }
    return thin;
}

/// From metres and kilograms to the picture.
class Frame
{
public: // construction
    Frame(const QRectF& area, const Diagram& diagram, double length)
        : m_area(area)
        , m_length(length)
    {
        for (const QPointF& point : diagram.line) {
            m_low = std::min(m_low, point.y());
            m_high = std::max(m_high, point.y());
        }
        if (!(m_high > m_low))
            m_high = m_low + 1.0;
    }

public: // queries
    [[nodiscard]] QPointF at(double position, double value) const
    {
        const double height = m_area.height() * (1.0 - TOP - BOTTOM);
        const double margin = m_area.width() * 0.06;
        return {m_area.left() + margin + (m_area.width() - 2.0 * margin) * position / m_length,
                m_area.top() + m_area.height() * TOP + height * (m_high - value) / (m_high - m_low)};
    }

private: // data
    QRectF m_area;
    double m_length;
    double m_low = 0.0;
    double m_high = 0.0;
};

void paintMark(QPainter& painter, const QRectF& area, const Frame& frame, const Value& mark)
{
    const QPointF at = frame.at(mark.position, mark.value);
    painter.setBrush(Qt::black);
    painter.drawEllipse(at, 2.0, 2.0);
    const QRectF size = painter.boundingRect(area, Qt::AlignLeft | Qt::TextSingleLine, mark.text);
    const double below = at.y() + 2.0;
    const double above = at.y() - size.height() - 2.0;
    QRectF box(at.x() - size.width() / 2.0, mark.value < 0.0 ? below : above, size.width(), size.height());
    box.moveLeft(std::clamp(box.left(), area.left(), area.right() - box.width()));
    painter.drawText(box, Qt::AlignCenter | Qt::TextSingleLine, mark.text);
}

void paint(QPainter& painter, const QRectF& area, const Opinion& opinion, const Diagram& diagram)
{
    const Frame frame(area, diagram, opinion.length);
    painter.save();
    painter.setPen(QPen(Qt::black, 0.8));
    painter.drawText(area, Qt::AlignHCenter | Qt::AlignTop, diagram.title);
    painter.drawLine(frame.at(0.0, 0.0), frame.at(opinion.length, 0.0));

    QPainterPath path(frame.at(0.0, 0.0));
    for (const QPointF& point : thinned(diagram.line, opinion.length))
        path.lineTo(frame.at(point.x(), point.y()));
    path.lineTo(frame.at(opinion.length, 0.0));
    painter.fillPath(path, QColor(225, 236, 245));
    painter.strokePath(path, QPen(QColor(20, 80, 130), 1.2));

    painter.setPen(QPen(Qt::black, 0.8));
    for (const SecondOpinion::MotorOpinion& told : opinion.motors) {
        const QPointF foot = frame.at(std::clamp(told.motor.position, 0.0, opinion.length), 0.0);
        painter.drawLine(foot - QPointF(0.0, 5.0), foot + QPointF(0.0, 5.0));
    }
    for (const Value& mark : diagram.marks)
        paintMark(painter, area, frame, mark);
    painter.restore();
}

QString figure(double value, const QString& unit)
{
    return QString::number(value, 'f', 1) + u' ' + unit;
}

} // namespace

void SheetDiagrams::paintMoments(QPainter& painter, const QRectF& area, const Opinion& opinion)
{
    if (!opinion.level)
        return;
    const BeamDiagram::Extremes& extremes = opinion.level->extremes;
    Diagram diagram{u"Momento flector, todos nivelados (positivo hacia abajo)"_s, {}, {}};
    for (const Point& point : opinion.level->points)
        diagram.line.emplace_back(point.position, -point.moment);
    if (extremes.largestMoment > 0.0)
        diagram.marks.push_back(
            {extremes.largestMomentAt, -extremes.largestMoment, figure(extremes.largestMoment, u"kg·m"_s)});
    if (extremes.smallestMoment < 0.0)
        diagram.marks.push_back({extremes.smallestMomentAt, -extremes.smallestMoment,
                                 figure(extremes.smallestMoment, u"kg·m"_s)});
    paint(painter, area, opinion, diagram);
}

void SheetDiagrams::paintShear(QPainter& painter, const QRectF& area, const Opinion& opinion)
{
    if (!opinion.level)
        return;
    const BeamDiagram::Extremes& extremes = opinion.level->extremes;
    Diagram diagram{u"Cortante, todos nivelados"_s, {}, {}};
    double value = 0.0;
    for (const Point& point : opinion.level->points) {
        diagram.line.emplace_back(point.position, point.shear);
        const bool isThere = std::abs(point.position - extremes.shearAt) < 1e-6;
        if (isThere && std::abs(point.shear) > std::abs(value))
            value = point.shear;
    }
    diagram.marks.push_back({extremes.shearAt, value, u"|V| = "_s + figure(std::abs(value), u"kg"_s)});
    paint(painter, area, opinion, diagram);
}
