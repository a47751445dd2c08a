#include "ui/MotorBars.h"

#include "engine/SecondOpinionText.h"
#include "fields/AccentColour.h"
#include "ui/Notices.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr double BARS_TOP = 44.0;        // below the legend [px]
constexpr double MOST_CUT = 1.6;         // the maximum of many motors would make all else too small
constexpr double BELOW_BARS = 52.0;      // truss, motors' marks, titles, figures [px]
constexpr double WIDEST_GROUP = 64.0;    // [px]
constexpr double NARROWEST_LABEL = 34.0; // of a group that has its title below it [px]
constexpr double GROUP_FILL = 0.86;      // share of a group that its bars take

struct Bar
{
    const char16_t* name;
    std::optional<double> SecondOpinion::MotorOpinion::*value;
    QColor colour;
    Qt::BrushStyle fill;
};

const Bar BARS[] = {
    {u"Palanca", &SecondOpinion::MotorOpinion::lever, QColor(0xAA, 0xAA, 0xAA), Qt::SolidPattern},
    {u"Nivelado", &SecondOpinion::MotorOpinion::level, accentColour(), Qt::SolidPattern},
    {u"Con un motor flojo", &SecondOpinion::MotorOpinion::oneSlack, QColor(0xFF, 0xAF, 0x00),
     Qt::BDiagPattern},
    {u"Máximo posible", &SecondOpinion::MotorOpinion::most, QColor(0xC0, 0x90, 0xFF), Qt::NoBrush},
};

QString nameOf(const Bar& bar)
{
    return QString::fromUtf16(bar.name);
}

bool exceedsAtLevel(const SecondOpinion::MotorOpinion& told)
{
    return told.levelVerdict.value_or(SecondOpinion::Verdict::Fits) != SecondOpinion::Verdict::Fits;
}

bool canBeDrawn(const SecondOpinion::MotorOpinion& told)
{
    return std::isfinite(told.motor.position);
}

} // namespace

MotorBars::MotorBars()
    : ContrastPicture(u"Barras de cada motor"_s)
{
    setMinimumSize(300, 220);
}

std::vector<std::size_t> MotorBars::order() const
{
    std::vector<std::size_t> places;
    const std::vector<SecondOpinion::MotorOpinion>& motors = opinion().motors;
    for (std::size_t i = 0; i < motors.size(); ++i) {
        if (canBeDrawn(motors[i]))
            places.push_back(i);
    }
    std::stable_sort(places.begin(), places.end(), [&motors](std::size_t a, std::size_t b) {
        return motors[a].motor.position < motors[b].motor.position;
    });
    return places;
}

// Without a figure of the second opinion there is nothing to compare.
std::size_t MotorBars::stops() const
{
    if (opinion().state == SecondOpinion::State::NotCalculable)
        return 0;
    return order().size();
}

double MotorBars::groupWidth() const
{
    return std::min(WIDEST_GROUP, (width() - 2.0) / static_cast<double>(std::max<std::size_t>(stops(), 1)));
}

// Pushed to the right one after the other, then back from the right edge.
std::vector<double> MotorBars::groupCentres() const
{
    const double step = groupWidth();
    std::vector<double> centres;
    double next = step / 2.0 + 1.0;
    for (const std::size_t place : order()) {
        centres.push_back(std::max(toX(opinion().motors[place].motor.position), next));
        next = centres.back() + step;
    }
    double last = width() - 1.0 - step / 2.0;
    for (auto centre = centres.rbegin(); centre != centres.rend(); ++centre) {
        *centre = std::min(*centre, last);
        last = *centre - step;
    }
    return centres;
}

double MotorBars::xOf(std::size_t stop) const
{
    return groupCentres()[stop];
}

QString MotorBars::textOf(std::size_t stop) const
{
    const SecondOpinion::MotorOpinion& told = opinion().motors[order()[stop]];
    QString text = Notices::shortName(told.motor.title) + u" ("_s
                   + SecondOpinionText::position(told.motor.position, opinion().length) + u"): "_s;
    for (const Bar& bar : BARS)
        text += nameOf(bar).toLower() + u' ' + SecondOpinionText::mass(told.*bar.value) + u", "_s;
    return text + u"capacidad "_s + SecondOpinionText::mass(told.motor.capacity) + u" kg"_s;
}

QString MotorBars::description() const
{
    QStringList texts;
    for (std::size_t stop = 0; stop < stops(); ++stop)
        texts.append(textOf(stop) + u'.');
    return texts.isEmpty() ? NOTHING_TO_DRAW : texts.join(u' ');
}

double MotorBars::highest() const
{
    double most = 0.0;
    double others = 0.0;
    for (const SecondOpinion::MotorOpinion& told : opinion().motors) {
        most = std::max(most, told.most.value_or(0.0));
        for (const std::optional<double>& value : {told.lever, told.level, told.oneSlack})
            others = std::max(others, value.value_or(0.0));
        if (std::isfinite(told.motor.capacity))
            others = std::max(others, told.motor.capacity);
    }
    return others > 0.0 ? std::min(std::max(most, others), MOST_CUT * others) : most;
}

void MotorBars::draw(QPainter& painter) const
{
    drawLegend(painter);
    const double base = height() - BELOW_BARS;
    const double top = highest();
    const double scale = top > 0.0 ? (base - BARS_TOP) / top : 0.0;
    drawTruss(painter, base + 14.0);

    const std::vector<double> centres = groupCentres();
    const std::vector<std::size_t> places = order();
    for (std::size_t i = 0; i < places.size(); ++i)
        drawGroup(painter, opinion().motors[places[i]], centres[i], scale);
}

void MotorBars::drawLegend(QPainter& painter) const
{
    double x = 6.0;
    const QFontMetricsF metrics(font());
    const double box = 9.0;
    const double room = width() - 12.0;
    double y = 4.0;
    const auto place = [&](const QString& name) {
        const double wanted = box + 4.0 + metrics.horizontalAdvance(name) + 12.0;
        if (x > 6.0 && x + wanted > room) {
            x = 6.0;
            y += metrics.lineSpacing();
        }
        painter.setPen(INK);
        painter.drawText(QPointF(x + box + 4.0, y + metrics.ascent()), name);
        const QRectF sample(x, y + metrics.ascent() - box, box, box);
        x += wanted;
        return sample;
    };
    for (const Bar& bar : BARS) {
        const QRectF sample = place(nameOf(bar));
        painter.setPen(bar.colour);
        painter.setBrush(QBrush(bar.colour, bar.fill));
        painter.drawRect(sample);
    }
    const QRectF sample = place(u"Capacidad"_s);
    painter.setPen(QPen(Qt::white, 2.0));
    painter.drawLine(QPointF(sample.left(), sample.center().y()),
                     QPointF(sample.right(), sample.center().y()));
}

void MotorBars::drawGroup(QPainter& painter, const SecondOpinion::MotorOpinion& told, double centre,
                          double scale) const
{
    const double base = height() - BELOW_BARS;
    const double step = groupWidth();
    const double width = step * GROUP_FILL / static_cast<double>(std::size(BARS));
    double x = centre - 2.0 * width;
    const bool exceeds = exceedsAtLevel(told);
    for (const Bar& bar : BARS) {
        const QRectF room(x + 1.0, base, std::max(width - 2.0, 0.5), 0.0);
        x += width;
        const std::optional<double>& value = told.*bar.value;
        if (!value)
            continue;
        const bool isRed = exceeds && bar.value == &SecondOpinion::MotorOpinion::level;
        const QColor colour = isRed ? OVERLOADED : bar.colour;
        painter.setPen(QPen(colour, 1.0));
        painter.setBrush(QBrush(colour, bar.fill));
        const double high = *value * scale;
        painter.drawRect(room.adjusted(0.0, -std::min(high, base - BARS_TOP), 0.0, 0.0));
        if (high > base - BARS_TOP + 1.0)
            drawCut(painter, {room.center().x(), BARS_TOP});
    }
    painter.setPen(QPen(FAINT, 1.0));
    painter.drawLine(QPointF(centre, base + 1.0), QPointF(toX(told.motor.position), base + 13.0));
    if (std::isfinite(told.motor.capacity) && told.motor.capacity >= 0.0) {
        painter.setPen(QPen(Qt::white, 2.0));
        const double y = base - told.motor.capacity * scale;
        painter.drawLine(QPointF(centre - 0.48 * step, y), QPointF(centre + 0.48 * step, y));
    }
    if (step < NARROWEST_LABEL)
        return;
    const QFontMetricsF metrics(font());
    const QRectF label(centre - step / 2.0, base + 27.0, step, metrics.lineSpacing());
    painter.setPen(INK);
    painter.drawText(label, Qt::AlignHCenter | Qt::AlignTop,
                     metrics.elidedText(told.motor.title.simplified(), Qt::ElideRight, step - 2.0));
    painter.setPen(exceeds ? OVERLOADED : ACCENT);
    painter.drawText(label.translated(0.0, metrics.lineSpacing() - 2.0), Qt::AlignHCenter | Qt::AlignTop,
                     SecondOpinionText::mass(told.level));
}

// A bar that goes on beyond the picture ends in an arrow.
void MotorBars::drawCut(QPainter& painter, const QPointF& top)
{
    painter.drawPolyline(
        QPolygonF{top + QPointF(-3.0, 2.0), top + QPointF(0.0, -5.0), top + QPointF(3.0, 2.0)});
}
