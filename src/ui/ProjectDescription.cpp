#include "ui/ProjectDescription.h"

#include "canvas/ItemText.h"
#include "engine/Arrays.h"
#include "engine/Figures.h"
#include "engine/Numbers.h"

#include <QHash>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace
{

using ItemText::kilograms;

/// Nobody listens to more of a kind.
constexpr qsizetype MOST_TOLD = 20;

QString counted(qsizetype count, const QString& one, const QString& many)
{
    return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString describeResult(const Figures& figures)
{
    const QString result =
        u" Resultado: "_s + figures.resultWord() + u". "_s + figures.resultReason()
        + (figures.isCalculable() ? QString() : u" Hay motores cuya carga no se puede calcular."_s);
    if (figures.isUnstable)
        return result + u" Sistema inestable."_s;
    return result + u" Sistema estable. Estrés estructural: "_s + Numbers::fixed(figures.stress, 1) + u" %"_s
           + (figures.isOverstressed() ? u", SOBRECARGA."_s : u"."_s);
}

QString describeMotor(const Figures::MotorFigures& motor)
{
    return u" Motor "_s + motor.title + u" en "_s + motor.position + u": "_s + kilograms(motor.atPoint)
           + u", dinámica "_s + kilograms(motor.dynamicLoad) + u" de "_s + kilograms(motor.capacity) + u", "_s
           + ItemText::verdict(motor.verdict, motor.dynamicLoad) + u'.';
}

/// What the segments of one array come to.
struct Screen
{
    int segments = 0;
    float mass = 0.0F;  ///< [kg]
    qsizetype item = 0; ///< where it is told
};

/// The sentences about what hangs on the truss, in the order of the list: an array is told once, where
/// its first segment stands.
QStringList describeLoads(const ProjectState& solved)
{
    QStringList items;
    QHash<int, Screen> screens;
    for (const ActiveLoad& load : solved.loads) {
        if (Project::isArraySegment(load)) {
            Screen& screen = screens[load.groupId];
            if (screen.segments++ == 0) {
                screen.item = items.size();
                items.append(QString());
            }
            screen.mass += load.mass;
            continue;
        }
        items.append(u" Carga "_s + Project::loadTitle(load) + u" en "_s
                     + Project::formatCoordinate(load.positionX, solved.trussLength) + u": "_s
                     + kilograms(load.mass) + u'.');
    }
    const ArraySummaries arrays = Arrays::summarize(solved.loads, -1);
    for (auto screen = screens.cbegin(); screen != screens.cend(); ++screen) {
        const ArraySummary array = arrays.value(screen.key());
        items[screen->item] = u" Pantalla de "_s + Numbers::fixed(array.width, 1) + u" m en "_s
                              + Project::formatCoordinate(array.centre, solved.trussLength) + u": "_s
                              + kilograms(screen->mass) + u" en "_s
                              + counted(screen->segments, u"segmento"_s, u"segmentos"_s) + u'.';
    }
    return items;
}

/// `items` one after the other; of very many only the first, and how many more there are.
QString told(const QStringList& items, const QString& one, const QString& many)
{
    const qsizetype count = qMin(items.size(), MOST_TOLD);
    QString text = items.first(count).join(QString());
    if (items.size() > count)
        text += u" Y "_s + counted(items.size() - count, one, many) + u" más."_s;
    return text;
}

} // namespace

QString ProjectDescription::of(const ProjectState& solved)
{
    const Figures figures = Figures::ofSolved(solved);
    QStringList motors;
    for (const Figures::MotorFigures& motor : figures.motors)
        motors.append(describeMotor(motor));
    return u"Truss de "_s + Numbers::fixed(solved.trussLength, 1) + u" m con "_s
           + counted(motors.size(), u"motor"_s, u"motores"_s) + u" y "_s
           + counted(solved.loads.size(), u"carga"_s, u"cargas"_s) + u'.' + describeResult(figures)
           + told(motors, u"motor"_s, u"motores"_s)
           + told(describeLoads(solved), u"carga o pantalla"_s, u"cargas o pantallas"_s);
}
