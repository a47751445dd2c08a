#include "app/ContrastSummary.h"

#include "app/Console.h"
#include "app/JsonNumber.h"
#include "app/TextTable.h"
#include "engine/SecondOpinionText.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace
{

using SecondOpinion::Bending;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;

const QString INDENT = u"  "_s;
const QString DEEP_INDENT = u"    "_s;

/// Texts longer than a sentence are broken into lines of so many columns: with the indent, a terminal's 80.
constexpr int TEXT_WIDTH = 76;

/// With names that can neither command the terminal nor push the figures off it.
Opinion withShortNames(Opinion opinion)
{
    for (MotorOpinion& told : opinion.motors)
        told.motor.title = Console::shortened(told.motor.title);
    return opinion;
}

/// `text` in lines of `TEXT_WIDTH`, each behind the indent; nothing for nothing.
QString paragraph(const QString& text)
{
    QString lines;
    QString line;
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    for (const QString& word : words) {
        if (!line.isEmpty() && Console::displayWidth(line) + 1 + Console::displayWidth(word) > TEXT_WIDTH) {
            lines += DEEP_INDENT + line + u'\n';
            line.clear();
        }
        line += line.isEmpty() ? word : u' ' + word;
    }
    return line.isEmpty() ? lines : lines + DEEP_INDENT + line + u'\n';
}

QString motorTable(const Opinion& opinion)
{
    if (opinion.motors.empty())
        return {};
    TextTable table;
    table.add(SecondOpinionText::columns());
    const QList<QStringList> rows = SecondOpinionText::rows(opinion);
    for (const QStringList& row : rows)
        table.add(row);
    return table.text(DEEP_INDENT);
}

QJsonValue truth(const std::optional<bool>& value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

/// Counted from 1, as people do.
QJsonValue place(const std::optional<std::size_t>& index)
{
    return index ? QJsonValue(static_cast<qint64>(*index) + 1) : QJsonValue(QJsonValue::Null);
}

QJsonValue verdict(const std::optional<SecondOpinion::Verdict>& verdict)
{
    return verdict ? QJsonValue(SecondOpinionText::verdictKey(*verdict)) : QJsonValue(QJsonValue::Null);
}

QJsonObject motorObject(const MotorOpinion& told)
{
    return {
        {u"palanca_kg"_s, JsonNumber::rounded(told.lever)},
        {u"nivelado_kg"_s, JsonNumber::rounded(told.level)},
        {u"empujando_kg"_s, JsonNumber::rounded(told.pushing)},
        {u"flojo"_s, truth(told.isSlack)},
        {u"un_flojo_kg"_s, JsonNumber::rounded(told.oneSlack)},
        {u"un_flojo_cual"_s, place(told.oneSlackOf)},
        {u"maximo_kg"_s, JsonNumber::rounded(told.most)},
        {u"minimo_kg"_s, JsonNumber::rounded(told.least)},
        {u"imprescindible"_s, truth(told.isIndispensable)},
        {u"veredicto_nivelado"_s, verdict(told.levelVerdict)},
    };
}

void addLevelling(const MotorOpinion& told, QJsonObject& motor)
{
    const auto figure = [&told](double SecondOpinion::Levelling::*member) {
        return told.levelling ? std::optional(*told.levelling.*member) : std::nullopt;
    };
    motor[u"kg_por_mm"_s] = JsonNumber::rounded(figure(&SecondOpinion::Levelling::perMillimetre));
    motor[u"flojo_a_mm"_s] = JsonNumber::rounded(figure(&SecondOpinion::Levelling::slackBelow));
}

std::optional<double> fromCentre(const Opinion& opinion)
{
    return opinion.centre ? std::optional(*opinion.centre - opinion.length / 2.0) : std::nullopt;
}

std::optional<double> percent(const Opinion& opinion, const std::optional<Bending>& bending)
{
    return bending ? opinion.percent(bending->extremes.moment()) : std::nullopt;
}

} // namespace

QString ContrastSummary::warnings(const Opinion& opinion)
{
    QString lines;
    const QStringList sentences = SecondOpinionText::contradictions(withShortNames(opinion));
    for (const QString& sentence : sentences)
        lines += INDENT + u"Contraste: "_s + sentence + u'\n';
    return lines;
}

QString ContrastSummary::text(const Opinion& opinion)
{
    const Opinion shortened = withShortNames(opinion);
    QString text = INDENT + SecondOpinionText::title() + u'\n' + motorTable(shortened);
    text += paragraph(SecondOpinionText::truss(shortened));
    const QStringList sentences = SecondOpinionText::sentences(shortened);
    for (const QString& sentence : sentences)
        text += DEEP_INDENT + sentence + u'\n';
    return text + paragraph(SecondOpinionText::limits());
}

QJsonObject ContrastSummary::json(const Opinion& opinion, Levelling levelling)
{
    QJsonArray motors;
    for (const MotorOpinion& told : opinion.motors) {
        QJsonObject motor = motorObject(told);
        if (levelling == Levelling::Told)
            addLevelling(told, motor);
        motors.append(motor);
    }
    const auto level = [&opinion](double BeamDiagram::Extremes::*figure) {
        return opinion.level ? std::optional(opinion.level->extremes.*figure) : std::nullopt;
    };
    return {
        {u"estado"_s, SecondOpinionText::stateKey(opinion.state)},
        {u"centro_de_gravedad_m"_s, JsonNumber::rounded(fromCentre(opinion))},
        {u"margen_vuelco_m"_s, JsonNumber::rounded(opinion.tippingMargin)},
        {u"peso_total_kg"_s, JsonNumber::rounded(opinion.weight)},
        {u"momento_max_kgm"_s, JsonNumber::rounded(level(&BeamDiagram::Extremes::largestMoment))},
        {u"momento_min_kgm"_s, JsonNumber::rounded(level(&BeamDiagram::Extremes::smallestMoment))},
        {u"cortante_max_kg"_s, JsonNumber::rounded(level(&BeamDiagram::Extremes::shear))},
        {u"momento_pct"_s, JsonNumber::rounded(percent(opinion, opinion.level))},
        {u"momento_un_flojo_pct"_s, JsonNumber::rounded(percent(opinion, opinion.oneSlack))},
        {u"motores"_s, motors},
    };
}
