#include "engine/SecondOpinionText.h"

#include "engine/Numbers.h"

#include <QHash>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::State;
using SecondOpinion::Verdict;

/// Stands where a state has no figure.
const QString NO_FIGURE = u"—"_s;

/// Nearer to 0 than this, one decimal shows 0: what is left of rounding gets no sign [kg].
constexpr double NOTHING = 0.05;

/// Nearer to the middle of the truss than this is the middle [m].
constexpr float MIDDLE = 0.001F;

QStringList row(const Opinion& opinion, const MotorOpinion& told)
{
    return {told.motor.title,
            SecondOpinionText::position(told.motor.position, opinion.length),
            SecondOpinionText::mass(told.lever),
            SecondOpinionText::mass(told.level),
            SecondOpinionText::mass(told.oneSlack),
            SecondOpinionText::mass(told.most),
            told.levelVerdict ? SecondOpinionText::verdict(*told.levelVerdict) : NO_FIGURE};
}

} // namespace

QString SecondOpinionText::title()
{
    return u"Contraste (viga continua; no sustituye al cálculo de un técnico)"_s;
}

QStringList SecondOpinionText::columns()
{
    return {u"Motor"_s,
            u"Posición"_s,
            u"Palanca (kg)"_s,
            u"Nivelado (kg)"_s,
            u"Con un motor flojo (kg)"_s,
            u"Máximo posible (kg)"_s,
            u"Veredicto nivelado"_s};
}

QList<QStringList> SecondOpinionText::rows(const Opinion& opinion)
{
    QList<QStringList> rows;
    for (const MotorOpinion& told : opinion.motors)
        rows.append(row(opinion, told));
    return rows;
}

Opinion SecondOpinionText::withDistinctTitles(Opinion opinion)
{
    QHash<QString, int> counts;
    for (const MotorOpinion& told : opinion.motors)
        ++counts[told.motor.title];
    for (MotorOpinion& told : opinion.motors) {
        if (counts.value(told.motor.title) > 1)
            told.motor.title += u" ("_s + position(told.motor.position, opinion.length) + u')';
    }
    return opinion;
}

QString SecondOpinionText::truss(const Opinion& opinion)
{
    if (!opinion.level)
        return {};
    const Opinion named = withDistinctTitles(opinion);
    const auto bending = [&named](const BeamDiagram::Extremes& extremes) {
        const std::optional<double> percent = named.percent(extremes.moment());
        return u"momento de %1 a %2 kg·m%3, cortante de %4 kg"_s.arg(
            mass(extremes.smallestMoment), mass(extremes.largestMoment),
            percent ? u" ("_s + SecondOpinionText::percent(*percent) + u')' : QString(),
            mass(extremes.shear));
    };
    QString text = u"Truss bien nivelado: "_s + bending(named.level->extremes);
    if (named.oneSlack) {
        text += u"; con "_s + named.motors[*named.oneSlackOf].motor.title + u" flojo: "_s
                + bending(named.oneSlack->extremes);
    }
    return text + u'.';
}

QString SecondOpinionText::limits()
{
    return u"Supone cadenas verticales, un solo truss recto de sección constante, cargas quietas y las masas "
           "dadas. Ganchos, techo y lo que ceden las cadenas solo entran en el máximo posible. Un motor que "
           "se rompe es un golpe dinámico: flojo no es roto."_s;
}

QString SecondOpinionText::stateKey(State state)
{
    switch (state) {
    case State::NoMotors:
        return u"sin_motores"_s;
    case State::NotCalculable:
        return u"no_calculable"_s;
    case State::NoLoad:
        return u"sin_carga"_s;
    case State::OneMotor:
        return u"un_motor"_s;
    case State::Tips:
        return u"vuelca"_s;
    case State::OnEdge:
        return u"al_borde"_s;
    case State::NotConverged:
        return u"no_converge"_s;
    case State::Level:
        break;
    }
    return u"ok"_s;
}

QString SecondOpinionText::verdictKey(Verdict verdict)
{
    switch (verdict) {
    case Verdict::StaticOverload:
        return u"exceso_estatico"_s;
    case Verdict::DynamicOverload:
        return u"exceso_dinamico"_s;
    case Verdict::Fits:
        break;
    }
    return u"ok"_s;
}

QString SecondOpinionText::verdict(Verdict verdict)
{
    switch (verdict) {
    case Verdict::StaticOverload:
        return u"EXCESO ESTÁTICO"_s;
    case Verdict::DynamicOverload:
        return u"EXCESO DINÁMICO"_s;
    case Verdict::Fits:
        break;
    }
    return u"OK"_s;
}

QString SecondOpinionText::position(double position, double length)
{
    if (!std::isfinite(position) || !std::isfinite(length))
        return NO_FIGURE;
    const float fromMiddle = Numbers::toSingle(position) - Numbers::toSingle(length) * 0.5F;
    if (std::abs(fromMiddle) < MIDDLE)
        return u"0.00m"_s;
    return (fromMiddle > 0.0F ? u"+"_s : QString()) + Numbers::fixed(fromMiddle, 2) + u'm';
}

QString SecondOpinionText::mass(const std::optional<double>& kilograms)
{
    if (!kilograms)
        return NO_FIGURE;
    return QString::number(std::abs(*kilograms) < NOTHING ? 0.0 : *kilograms, 'f', 1);
}

QString SecondOpinionText::percent(double percent)
{
    return QString::number(percent, 'f', 1) + u" %"_s;
}
