#include "ui/Notices.h"

#include "engine/Numbers.h"
#include "engine/SecondOpinionText.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using Kind = Notice::Kind;
using SecondOpinion::MotorOpinion;
using SecondOpinion::State;
using SecondOpinion::Verdict;

/// Nobody goes through more of one kind.
constexpr qsizetype MOST_OF_A_KIND = 20;

/// The longest name that a sentence can hold.
constexpr qsizetype LONGEST_NAME = 40;

/// Smaller changes of a truss value are no edit.
constexpr float SMALLEST_CHANGE = 0.01F;

/// At this length [m] and this CPL [kg] or below the truss is not rated.
constexpr float SMALLEST_RATED = 0.01F;

const QString CPL_FIELD = u"limitCPL"_s;

Notice tipping(const SecondOpinion::Opinion& opinion)
{
    return {Kind::Tips, u"tips"_s, SecondOpinionText::contradictions(opinion).value(0).simplified()};
}

bool isPassedButExceeds(const MotorOpinion& told)
{
    return told.leverVerdict == Verdict::Fits && told.levelVerdict.value_or(Verdict::Fits) != Verdict::Fits;
}

QString overloadText(const MotorOpinion& told)
{
    return u"Bien nivelado, %1 lleva %2 kg (palanca: %3): %4."_s.arg(
        Notices::shortName(told.motor.title), SecondOpinionText::mass(told.level),
        SecondOpinionText::mass(told.lever), SecondOpinionText::verdict(*told.levelVerdict));
}

/// A notice of `kind` for each motor for which `applies`, told apart by the motors' places in the list.
template <typename Applies, typename Text>
QList<Notice> forMotors(const std::vector<MotorOpinion>& motors, Kind kind, const QString& id,
                        Applies applies, Text text)
{
    QList<Notice> notices;
    for (std::size_t i = 0; i < motors.size() && notices.size() < MOST_OF_A_KIND; ++i) {
        if (applies(motors[i]))
            notices.append({kind, id + u'/' + QString::number(i), text(motors[i])});
    }
    return notices;
}

QList<Notice> overloads(const SecondOpinion::Opinion& opinion)
{
    return forMotors(opinion.motors, Kind::LevelOverload, u"overload"_s, isPassedButExceeds, overloadText);
}

QList<Notice> missingFigures(const Notices::Facts& facts)
{
    const SecondOpinion::Opinion& opinion = facts.opinion;
    QList<Notice> notices = forMotors(
        opinion.motors, Kind::NoFigure, u"figure"_s, [](const MotorOpinion& told) { return !told.lever; },
        [](const MotorOpinion& told) {
            return u"Lo que lleva %1 no es un número: su etiqueta no vale."_s.arg(
                Notices::shortName(told.motor.title));
        });
    if (!std::isfinite(facts.solved.trussStressPercentage))
        notices.append({Kind::NoFigure, u"stress"_s, u"El estrés del truss no es un número: no vale."_s});
    if (opinion.state == State::NotCalculable || opinion.state == State::NotConverged) {
        notices.append(
            {Kind::NoFigure, u"opinion"_s, SecondOpinionText::contradictions(opinion).value(0).simplified()});
    }
    return notices;
}

/// The motors are sorted once they are calculated, so that those at one place stand side by side.
QList<Notice> motorsTogether(const ProjectState& solved)
{
    QList<Notice> notices;
    for (qsizetype i = 1; i < solved.motors.size() && notices.size() < MOST_OF_A_KIND; ++i) {
        const Motor& left = solved.motors.at(i - 1);
        const Motor& right = solved.motors.at(i);
        if (left.positionX != right.positionX)
            continue;
        notices.append(
            {Kind::MotorsTogether, u"together/"_s + QString::number(i),
             u"%1 y %2 están en el mismo sitio (%3): lo que cuelga ahí no se puede repartir entre ellos."_s
                 .arg(Notices::shortName(Project::motorTitle(left)),
                      Notices::shortName(Project::motorTitle(right)),
                      Project::formatCoordinate(right.positionX, solved.trussLength))});
    }
    return notices;
}

bool hasNoRating(const ProjectState& solved)
{
    return !(solved.limitCPL > SMALLEST_RATED);
}

QString unusedText(const Notices::Field& field)
{
    const QString read = field.text.trimmed().isEmpty()
                             ? u"está vacío"_s
                             : u"«%1» no se usa"_s.arg(Notices::shortName(field.text));
    return u"%1: %2; cuenta %3."_s.arg(field.label, read, Numbers::general(field.counted));
}

/// An empty CPL has a notice of its own.
QList<Notice> unusedFields(const Notices::Facts& facts)
{
    QList<Notice> notices;
    for (const Notices::Field& field : facts.fields) {
        const bool isTold = field.id == CPL_FIELD && hasNoRating(facts.solved);
        if (!isTold && !Notices::isUsed(field))
            notices.append({Kind::UnusedField, u"field/"_s + field.id, unusedText(field)});
    }
    return notices;
}

QList<Notice> editedLoad(const ProjectState& project)
{
    const qsizetype index = Project::indexOfLoad(project.loads, project.selectedLoadId);
    if (index < 0)
        return {};
    const QString title = Notices::shortName(Project::loadTitle(project.loads.at(index)));
    return {{Kind::EditedLoad, u"edited"_s, u"Editando: %1 — Esc la suelta"_s.arg(title)}};
}

} // namespace

const QString Notices::DRAGGED_TABS = u"tabs"_s;
const QString Notices::UNLISTED_FILE = u"file"_s;
const QString Notices::NAMES = u"names"_s;

Notice::Urgency Notice::urgency() const
{
    switch (kind) {
    case Kind::Tips:
    case Kind::LevelOverload:
    case Kind::NoFigure:
        return Urgency::Alarm;
    case Kind::MotorsTogether:
    case Kind::NoRating:
    case Kind::UnusedField:
    case Kind::Recovery:
        return Urgency::Warning;
    case Kind::Names:
    case Kind::EditedLoad:
    case Kind::DraggedTabs:
    case Kind::UnlistedFile:
        break;
    }
    return Urgency::Hint;
}

bool operator==(const Notice& a, const Notice& b)
{
    return a.kind == b.kind && a.id == b.id && a.text == b.text;
}

bool Notices::isUsed(const Field& field)
{
    const std::optional<float> read = Numbers::tryParse(field.text);
    if (!read)
        return false;
    return field.text == Numbers::fixed(field.counted, field.decimals)
           || field.text == Numbers::general(field.counted)
           || std::abs(*read - field.counted) <= SMALLEST_CHANGE;
}

QList<Notice> Notices::of(const Facts& facts)
{
    const SecondOpinion::Opinion& opinion = facts.opinion;
    QList<Notice> notices = facts.standing;
    if ((opinion.state == State::Tips || opinion.state == State::OnEdge) && !facts.solved.isUnstable)
        notices.append(tipping(opinion));
    notices += overloads(opinion);
    notices += missingFigures(facts);
    notices += motorsTogether(facts.solved);
    if (hasNoRating(facts.solved)) {
        notices.append(
            {Kind::NoRating, u"rating"_s,
             u"Sin CPL no hay estrés: escriba en «CPL Máx» la carga puntual central del truss."_s});
    }
    notices += unusedFields(facts);
    notices += editedLoad(facts.solved);
    std::stable_sort(notices.begin(), notices.end(),
                     [](const Notice& a, const Notice& b) { return a.kind < b.kind; });
    return notices;
}

Notice Notices::draggedTabs()
{
    return {Kind::DraggedTabs, DRAGGED_TABS, u"Las pestañas arrastradas llevan su título, no su proyecto."_s};
}

std::optional<Notice> Notices::savedFile(const QString& fileName)
{
    const bool isListed = fileName.endsWith(".rig"_L1, Qt::CaseInsensitive)
                          || fileName.endsWith(".json"_L1, Qt::CaseInsensitive);
    if (isListed)
        return std::nullopt;
    return Notice{Kind::UnlistedFile, UNLISTED_FILE,
                  u"«%1» se guardó sin la extensión .rig: ABRIR no lo mostrará en su lista."_s.arg(
                      shortName(fileName))};
}

Notice Notices::markupName(const QString& name)
{
    return {Kind::Names, NAMES,
            u"«%1» es código HTML: el navegador no lo mostrará así en el informe, y al abrirlo puede pedir "
            "páginas de otros."_s.arg(shortName(name))};
}

QString Notices::shortName(const QString& name)
{
    QString line = name.simplified();
    if (line.length() <= LONGEST_NAME)
        return line;
    QString head = line.left(LONGEST_NAME / 2);
    QString tail = line.right(LONGEST_NAME / 2 - 1);
    if (head.back().isHighSurrogate())
        head.chop(1);
    if (tail.front().isLowSurrogate())
        tail.remove(0, 1);
    return head + u'…' + tail;
}
