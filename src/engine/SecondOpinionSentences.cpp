#include "engine/SecondOpinionText.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::Problem;
using SecondOpinion::State;
using SecondOpinion::Verdict;

/// The truss's moment is used up [%].
constexpr double FULL = 100.0;

/// A capacity as it was entered: "500", "62.5".
QString entered(double kilograms)
{
    const QString text = SecondOpinionText::mass(kilograms);
    return text.endsWith(".0"_L1) ? text.chopped(2) : text;
}

/// A distance [m]: centimetres, or millimetres where centimetres would say nothing.
QString metres(double distance)
{
    return QString::number(distance, 'f', distance < 0.1 ? 3 : 2);
}

/// About two digits: "230", "23", "2.3".
QString about(double value)
{
    return value < 10.0 ? QString::number(value, 'g', 2) : QString::number(value, 'f', 0);
}

/// The places of the motors in the list, left to right.
std::vector<std::size_t> leftToRight(const Opinion& opinion)
{
    std::vector<std::size_t> order(opinion.motors.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&opinion](std::size_t a, std::size_t b) {
        return opinion.motors[a].motor.position < opinion.motors[b].motor.position;
    });
    return order;
}

/// "A", "A y B", "A, B y C".
QString allTitles(const Opinion& opinion)
{
    QStringList titles;
    for (const MotorOpinion& told : opinion.motors)
        titles.append(told.motor.title);
    const QString last = titles.takeLast();
    return titles.isEmpty() ? last : titles.join(u", "_s) + u" y "_s + last;
}

QString problemText(Problem problem)
{
    switch (problem) {
    case Problem::NotFinite:
        return u"hay un dato que no es un número finito"_s;
    case Problem::Negative:
        return u"hay una longitud, una masa o un peso negativo"_s;
    case Problem::Outside:
        return u"hay un motor o una carga fuera del truss"_s;
    case Problem::Overflow:
    case Problem::None:
        break;
    }
    return u"los pesos o la longitud son demasiado grandes"_s;
}

/// The outermost motor that the centre of gravity is at.
QString edgeTitle(const Opinion& opinion)
{
    const std::vector<std::size_t> order = leftToRight(opinion);
    const SecondOpinion::Motor& first = opinion.motors[order.front()].motor;
    const SecondOpinion::Motor& last = opinion.motors[order.back()].motor;
    return *opinion.centre - first.position < last.position - *opinion.centre ? first.title : last.title;
}

/// What a state says by itself; empty for `Level`.
QString stateText(const Opinion& opinion)
{
    const QString centre = opinion.centre ? SecondOpinionText::position(*opinion.centre, opinion.length)
                                          : SecondOpinionText::mass(std::nullopt);
    switch (opinion.state) {
    case State::NoMotors:
        return u"Sin motores no hay nada que contrastar."_s;
    case State::NotCalculable:
        return u"NO SE PUEDE CALCULAR: "_s + problemText(opinion.problem) + u'.';
    case State::NoLoad:
        return u"Ni el truss ni las cargas pesan nada."_s;
    case State::OneMotor:
        return u"Un solo punto de colgado (%1): lleva los %2 kg, y el truss cuelga inclinado."_s.arg(
            allTitles(opinion), SecondOpinionText::mass(opinion.weight));
    case State::Tips:
        return u"VUELCA: el centro de gravedad (%1) queda %2 m fuera de los motores; ningún reparto lo "
               "sostiene."_s.arg(centre, metres(-*opinion.tippingMargin));
    case State::OnEdge:
        return u"AL BORDE DEL VUELCO: el centro de gravedad (%1) está en %2, el motor de fuera; "
               "cualquier cambio lo vuelca."_s.arg(centre, edgeTitle(opinion));
    case State::NotConverged:
        return u"SIN SOLUCIÓN: el cálculo no ha convergido y no da ningún reparto."_s;
    case State::Level:
        break;
    }
    return {};
}

/// What the level case does to one motor: it exceeds, or it hangs slack; empty where neither.
QString levelText(const MotorOpinion& told)
{
    if (told.levelVerdict.value_or(Verdict::Fits) != Verdict::Fits) {
        return u"Bien nivelado, %1 lleva %2 kg (palanca: %3): %4."_s.arg(
            told.motor.title, SecondOpinionText::mass(told.level), SecondOpinionText::mass(told.lever),
            SecondOpinionText::verdict(*told.levelVerdict));
    }
    return {};
}

QString slackText(const MotorOpinion& told)
{
    return told.isSlack.value_or(false)
               ? u"Bien nivelado, %1 queda flojo: no lleva nada."_s.arg(told.motor.title)
               : QString();
}

QString indispensableText(const MotorOpinion& told)
{
    return told.isIndispensable.value_or(false)
               ? u"%1 es imprescindible: sin él, el truss vuelca."_s.arg(told.motor.title)
               : QString();
}

/// ", y el truss al 21.9 % de su momento"; empty where the truss has no limit.
QString slackMomentText(const Opinion& opinion, std::size_t slack)
{
    const std::optional<double> percent = opinion.percent(opinion.motors[slack].momentIfSlack.value_or(0.0));
    return percent ? u", y el truss al %1 de su momento"_s.arg(SecondOpinionText::percent(*percent))
                   : QString();
}

/// The warning that a motor exceeds while another one is slack; empty where it does not.
QString oneSlackText(const Opinion& opinion, const MotorOpinion& told)
{
    const Verdict verdict = told.oneSlackVerdict.value_or(Verdict::Fits);
    if (verdict == Verdict::Fits)
        return {};
    const QString excess = verdict == Verdict::StaticOverload
                               ? u", más que sus "_s + entered(told.motor.capacity)
                               : u" ("_s + SecondOpinionText::verdict(verdict) + u')';
    return u"Si se afloja %1, %2 llega a %3 kg%4%5."_s.arg(
        opinion.motors[*told.oneSlackOf].motor.title, told.motor.title,
        SecondOpinionText::mass(told.oneSlack), excess, slackMomentText(opinion, *told.oneSlackOf));
}

/// The truss's own excess, at level and in the worst case of one slack motor.
QStringList trussTexts(const Opinion& opinion)
{
    QStringList texts;
    const auto percentOf = [&opinion](const std::optional<SecondOpinion::Bending>& bending) {
        return bending ? opinion.percent(bending->extremes.moment()) : std::nullopt;
    };
    const std::optional<double> level = percentOf(opinion.level);
    const std::optional<double> slack = percentOf(opinion.oneSlack);
    if (level >= FULL)
        texts +=
            u"Bien nivelado, el truss llega al %1 de su momento."_s.arg(SecondOpinionText::percent(*level));
    if (slack >= FULL) {
        texts += u"Si se afloja %1, el truss llega al %2 de su momento."_s.arg(
            opinion.motors[*opinion.oneSlackOf].motor.title, SecondOpinionText::percent(*slack));
    }
    return texts;
}

/// Motors so near that only what they carry together can be relied on.
QStringList closeTexts(const Opinion& opinion)
{
    QStringList texts;
    const std::vector<std::size_t> order = leftToRight(opinion);
    for (std::size_t k = 1; k < order.size(); ++k) {
        const MotorOpinion& left = opinion.motors[order[k - 1]];
        const MotorOpinion& right = opinion.motors[order[k]];
        const double distance = right.motor.position - left.motor.position;
        if (!left.level || !right.level || distance >= SecondOpinion::CLOSE_SPAN)
            continue;
        texts +=
            u"%1 y %2 están a %3 m: entre los dos cuentan su suma (%4 kg) y el máximo, no el reparto."_s.arg(
                left.motor.title, right.motor.title, metres(distance),
                SecondOpinionText::mass(*left.level + *right.level));
    }
    return texts;
}

QString levellingText(const MotorOpinion& told)
{
    if (!told.levelling)
        return {};
    return u"1 mm de desnivel de %1 cambia su carga en unos %2 kg; queda flojo si baja %3 mm."_s.arg(
        told.motor.title, about(told.levelling->perMillimetre), about(told.levelling->slackBelow));
}

/// What `text` says of each motor that it says something of.
template <typename Text>
QStringList forEachMotor(const Opinion& opinion, Text text)
{
    QStringList texts;
    for (const MotorOpinion& told : opinion.motors)
        texts.append(text(told));
    texts.removeAll(QString());
    return texts;
}

QStringList nonEmpty(const QString& text)
{
    return text.isEmpty() ? QStringList() : QStringList(text);
}

} // namespace

QStringList SecondOpinionText::sentences(const Opinion& opinion)
{
    const Opinion named = withDistinctTitles(opinion);
    const auto oneSlack = [&named](const MotorOpinion& told) { return oneSlackText(named, told); };
    QStringList texts = nonEmpty(stateText(named));
    texts += forEachMotor(named, levelText);
    texts += forEachMotor(named, slackText);
    if (named.state == State::Level)
        texts += forEachMotor(named, indispensableText);
    texts += forEachMotor(named, oneSlack);
    texts += trussTexts(named);
    texts += closeTexts(named);
    if (named.fitsAnyLevelling())
        texts += u"Con cualquier nivelado, ningún motor pasa de su capacidad."_s;
    return texts + forEachMotor(named, levellingText);
}

QStringList SecondOpinionText::contradictions(const Opinion& opinion)
{
    const Opinion named = withDistinctTitles(opinion);
    const bool isTold = named.state == State::Level || named.state == State::OneMotor;
    const auto exceeds = [](const MotorOpinion& told) {
        return told.leverVerdict == Verdict::Fits ? levelText(told) : QString();
    };
    if (!named.contradicts())
        return {};
    return isTold ? forEachMotor(named, exceeds) : nonEmpty(stateText(named));
}
