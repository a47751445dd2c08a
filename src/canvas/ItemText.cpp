#include "canvas/ItemText.h"

#include "engine/Numbers.h"

#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// A tip with more lines than this hides what it is about.
constexpr qsizetype MOST_LINES = 12;
/// A name from a file may be longer than any screen [characters].
constexpr qsizetype LONGEST_LINE = 1000;

/// A longer line than this is broken [characters].
constexpr qsizetype LONGEST_WHOLE_LINE = 100;

/// `text` as a line of a tip. Left to itself, a tip breaks its lines wherever it pleases.
QString lineOf(const QString& text)
{
    return u"<div style='white-space:%1'>%2</div>"_s.arg(
        text.size() > LONGEST_WHOLE_LINE ? u"pre-wrap"_s : u"pre"_s, text.toHtmlEscaped());
}

using ItemText::kilograms;

/// Of the whole truss, as in the reports; a stress that is not a number is none to trust.
QString verdictOf(const Rating& rating)
{
    return rating.isUnstable || !(rating.stress < Limits::FULL_STRESS) ? u"SOBRECARGA"_s : u"OK"_s;
}

QString figuresOf(const Motor& motor)
{
    const float dynamicLoad = Limits::dynamicLoad(motor.staticLoad, motor.selfWeight);
    const Limits::MotorVerdict verdict =
        Limits::motorVerdict(motor.staticLoad, motor.selfWeight, motor.capacity);
    return kilograms(motor.staticLoad) + u", dinámica "_s + kilograms(dynamicLoad) + u" de "_s
           + kilograms(motor.capacity) + u", "_s + ItemText::verdict(verdict, dynamicLoad);
}

QString figuresOfArray(const Scene& scene, int groupId)
{
    float mass = 0.0F;
    int segments = 0;
    for (const ActiveLoad& load : scene.loads) {
        if (load.groupId != groupId || !Project::isArraySegment(load))
            continue;
        mass += load.mass;
        ++segments;
    }
    return kilograms(mass) + u" en "_s + QString::number(segments)
           + (segments == 1 ? u" segmento"_s : u" segmentos"_s);
}

} // namespace

QString ItemText::kilograms(float mass)
{
    return Numbers::fixed(mass, 1) + u" kg"_s;
}

QString ItemText::verdict(Limits::MotorVerdict verdict, float dynamicLoad)
{
    if (std::isnan(dynamicLoad))
        return u"la carga no se puede calcular"_s;
    switch (verdict) {
    case Limits::MotorVerdict::StaticOverload:
        return u"EXCESO ESTÁTICO"_s;
    case Limits::MotorVerdict::DynamicOverload:
        return u"EXCESO DINÁMICO"_s;
    case Limits::MotorVerdict::Fits:
        break;
    }
    return u"OK"_s;
}

QString ItemText::title(const Scene& scene, const CanvasItem& item)
{
    if (item.kind == CanvasItem::Kind::Motor)
        return u"Motor "_s + Project::motorTitle(scene.motors.at(item.index));
    const ActiveLoad& load = scene.loads.at(item.index);
    if (item.kind == CanvasItem::Kind::Load)
        return u"Carga "_s + Project::loadTitle(load);
    return u"Pantalla de "_s + Numbers::fixed(load.screenWidth, 1) + u" m"_s;
}

QString ItemText::of(const Scene& scene, const CanvasItem& item)
{
    const QString place = title(scene, item) + u" en "_s
                          + Project::formatCoordinate(item.position, scene.trussLength) + u": "_s;
    if (item.kind == CanvasItem::Kind::Motor)
        return place + figuresOf(scene.motors.at(item.index)) + u'.';
    const ActiveLoad& load = scene.loads.at(item.index);
    const QString figures =
        item.kind == CanvasItem::Kind::Load ? kilograms(load.mass) : figuresOfArray(scene, load.groupId);
    return place + figures + u". Truss: "_s + verdictOf(scene.rating) + u'.';
}

QString ItemText::tip(const Scene& scene, const QList<CanvasItem>& items)
{
    QStringList lines;
    for (const CanvasItem& item : items.first(qMin(items.size(), MOST_LINES)))
        lines.append(lineOf(of(scene, item).left(LONGEST_LINE)));
    if (items.size() > lines.size())
        lines.append(lineOf(u"y %1 más"_s.arg(items.size() - lines.size())));
    return lines.join(QString());
}
