#pragma once

#include "engine/Project.h"
#include "io/SheetNumbers.h"
#include "io/SheetProject.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

#include "PocketCalculator.h"

/// Checks the text of a calculation sheet against nothing but itself and what was entered. Each returns what
/// it found wrong, empty when all is well.
namespace SheetChecks
{

/// Rounding: a result may be one off in its last digit, and a little more for the calculator's own.
inline bool agrees(double calculated, double printed, double unit)
{
    return std::abs(calculated - printed) <= unit * 1.0001 + std::abs(printed) * 1e-9;
}

/// What is wrong: `what` ought to be `calculated`.
inline QString wrong(const QString& what, double calculated, double printed)
{
    return what + QStringLiteral(" = ") + QString::number(calculated, 'g', 12) + QStringLiteral(", not ")
           + QString::number(printed, 'g', 12);
}

/// The text without names, whose digits are no numbers.
inline QString withoutNames(QString text, const ProjectState& project)
{
    QStringList names{project.tabName};
    for (const Motor& motor : project.motors)
        names += Project::motorTitle(motor);
    for (const ActiveLoad& load : project.loads)
        names += Project::loadTitle(load);
    std::sort(names.begin(), names.end(),
              [](const QString& a, const QString& b) { return a.size() > b.size(); });
    for (const QString& name : std::as_const(names)) {
        if (!name.isEmpty())
            text.replace(name, QStringLiteral(" nombre "));
    }
    return text;
}

/// Every formula gives what is printed behind it; every "suma de las N filas" is that of the N results above.
inline QString wrongEquation(const std::vector<Pocket::Token>& tokens,
                             const std::vector<Pocket::Equation>& all)
{
    for (const Pocket::Equation& equation : all) {
        if (!agrees(equation.calculated, equation.printed, equation.unit))
            return wrong(equation.left, equation.calculated, equation.printed);
    }
    for (std::size_t i = 6; i + 1 < tokens.size(); ++i) {
        if (!tokens[i].is(u'=') || !tokens[i - 1].is(QLatin1StringView("filas")))
            continue;
        auto count = static_cast<std::size_t>(tokens[i - 2].value);
        const bool isNegative = tokens[i + 1].is(u'−');
        const Pocket::Token& printed = tokens[i + (isNegative ? 2 : 1)];
        auto last = std::find_if(all.begin(), all.end(), [i](const auto& e) { return e.end > i; });
        double sum = 0.0;
        for (; count > 0 && last != all.begin(); --count)
            sum += (--last)->printed;
        if (count > 0 || !agrees(sum, isNegative ? -printed.value : printed.value, printed.unit))
            return wrong(QStringLiteral("a column"), sum, printed.value);
    }
    return {};
}

/// One row of a case's table.
struct Row
{
    double x, lever, turn, moment, reaction;
    double leverUnit, turnUnit, momentUnit, reactionUnit;
};

/// The tables of the cases: rows of "motor 2", x, G, K or a dash, M and R.
inline std::vector<std::vector<Row>> casesOf(const std::vector<Pocket::Token>& tokens)
{
    std::vector<std::vector<Row>> found;
    std::size_t i = 0;
    const auto read = [&](double& value, double& unit) {
        const bool isNegative = i < tokens.size() && tokens[i].is(u'−');
        i += isNegative ? 1 : 0;
        const bool isDash = i < tokens.size() && tokens[i].is(u'—');
        if (i >= tokens.size() || (!tokens[i].isNumber && !isDash))
            return false;
        value = isDash ? 0.0 : (isNegative ? -tokens[i].value : tokens[i].value);
        unit = isDash ? 0.0 : tokens[i].unit;
        ++i;
        return true;
    };
    const auto skipName = [&] { // "motor 2", "motores 2, 3 y 4"
        const bool isOne = tokens[i].is(QLatin1StringView("motor"));
        if (!isOne && !tokens[i].is(QLatin1StringView("motores")))
            return false;
        ++i;
        if (isOne) {
            ++i;
            return true;
        }
        while (i < tokens.size() && !tokens[i].is(u'y'))
            ++i;
        i += 2;
        return true;
    };
    for (; i + 12 < tokens.size();) {
        const bool isHead = tokens[i].is(u'R') && tokens[i + 1].is(u'(')
                            && tokens[i + 2].is(QLatin1StringView("kg")) && tokens[i + 3].is(u')');
        if (!isHead) {
            ++i;
            continue;
        }
        i += 4;
        std::vector<Row> rows;
        double ignored = 0.0;
        for (Row row{}; i < tokens.size() && skipName() && read(row.x, ignored)
                        && read(row.lever, row.leverUnit) && read(row.turn, row.turnUnit)
                        && read(row.moment, row.momentUnit) && read(row.reaction, row.reactionUnit);)
            rows.push_back(row);
        // A table that goes on behind a page's end has its head again.
        const bool goesOn = !found.empty() && !rows.empty() && found.back().back().x < rows.front().x
                            && found.back().size() + rows.size() > 1 && found.back().back().turnUnit > 0.0;
        if (goesOn)
            found.back().insert(found.back().end(), rows.begin(), rows.end());
        else if (!rows.empty())
            found.push_back(rows);
    }
    return found;
}

struct Entered
{
    double length, w;
    std::vector<PointMass> loads;
};

inline Entered enteredOf(const ProjectState& project)
{
    Entered entered{
        SheetNumbers::written(project.trussLength), SheetNumbers::written(project.trussSelfWeight), {}};
    for (const ActiveLoad& load : project.loads)
        entered.loads.push_back({SheetNumbers::written(load.positionX), SheetNumbers::written(load.mass)});
    return entered;
}

/// The lever's share of the support at `k`, by the loads one at a time.
inline double leverOf(const Entered& entered, const std::vector<Row>& rows, std::size_t k)
{
    const double x = rows[k].x;
    const double left = k > 0 ? rows[k - 1].x : -1.0;
    const double right = k + 1 < rows.size() ? rows[k + 1].x : -1.0;
    double sum = entered.w * (k > 0 ? (x - left) / 2.0 : x)
                 + entered.w * (k + 1 < rows.size() ? (right - x) / 2.0 : entered.length - x);
    for (const PointMass& load : entered.loads) {
        const double p = load.position;
        if (p <= x)
            sum += load.mass * (k == 0 ? 1.0 : std::max(0.0, (p - left) / (x - left)));
        else
            sum += load.mass * (k + 1 == rows.size() ? 1.0 : std::max(0.0, (right - p) / (right - x)));
    }
    return sum;
}

inline double turnOf(const Entered& entered, const std::vector<Row>& rows, std::size_t k)
{
    const double s1 = rows[k].x - rows[k - 1].x;
    const double s2 = rows[k + 1].x - rows[k].x;
    double sum = entered.w * (s1 * s1 * s1 + s2 * s2 * s2) / 4.0;
    for (const PointMass& load : entered.loads) {
        const double d = load.position - rows[k - 1].x;
        const double b = rows[k + 1].x - load.position;
        if (d > 0.0 && d < s1)
            sum += load.mass * d * (s1 * s1 - d * d) / s1;
        if (b > 0.0 && b < s2)
            sum += load.mass * b * (s2 * s2 - b * b) / s2;
    }
    return sum;
}

inline double overhangMoment(const Entered& entered, double x, bool isLeft)
{
    const double e = isLeft ? x : entered.length - x;
    double sum = -entered.w * e * e / 2.0;
    for (const PointMass& load : entered.loads)
        sum -= load.mass * std::max(0.0, isLeft ? x - load.position : load.position - x);
    return sum;
}

/// Every number of every case follows from what was entered and from the row's neighbours.
inline QString wrongCase(const std::vector<std::vector<Row>>& all, const ProjectState& project)
{
    const Entered entered = enteredOf(project);
    for (const std::vector<Row>& rows : all) {
        for (std::size_t k = 0; k < rows.size(); ++k) {
            const Row& row = rows[k];
            const bool isInner = k > 0 && k + 1 < rows.size();
            double reaction = row.lever;
            if (k > 0)
                reaction += (rows[k - 1].moment - row.moment) / (row.x - rows[k - 1].x);
            if (k + 1 < rows.size())
                reaction += (rows[k + 1].moment - row.moment) / (rows[k + 1].x - row.x);
            double moment = overhangMoment(entered, row.x, k == 0);
            if (isInner) {
                const double s1 = row.x - rows[k - 1].x;
                const double s2 = rows[k + 1].x - row.x;
                moment = (-row.turn - s1 * rows[k - 1].moment - s2 * rows[k + 1].moment) / (2.0 * (s1 + s2));
                if (!agrees(turnOf(entered, rows, k), row.turn, row.turnUnit))
                    return wrong(QStringLiteral("K"), turnOf(entered, rows, k), row.turn);
            }
            if (rows.size() > 1 && !agrees(moment, row.moment, row.momentUnit))
                return wrong(QStringLiteral("M"), moment, row.moment);
            if (!agrees(leverOf(entered, rows, k), row.lever, row.leverUnit))
                return wrong(QStringLiteral("G"), leverOf(entered, rows, k), row.lever);
            if (!agrees(reaction, row.reaction, row.reactionUnit))
                return wrong(QStringLiteral("R"), reaction, row.reaction);
        }
    }
    return {};
}

/// The moment of a span cut above its motors, or of an overhang, which ends at `a` or begins at `b`.
inline double plainMoment(const Entered& entered, double a, double b, double x)
{
    const double s = b - a;
    double sum = entered.w * (x - a) * (b - x) / 2.0;
    for (const PointMass& load : entered.loads) {
        const double p = load.position;
        if (p > a && p < b)
            sum += load.mass * (p <= x ? (p - a) * (b - x) : (b - p) * (x - a)) / s;
    }
    return sum;
}

/// The rows of spans and overhangs: "Vano 1–2", x, M. Their numbers go to `values`.
inline QString wrongCandidate(const std::vector<Pocket::Token>& tokens, const ProjectState& project,
                              std::vector<double>& values)
{
    const Entered entered = enteredOf(project);
    std::vector<double> motors;
    for (const Motor& motor : project.motors)
        motors.push_back(SheetNumbers::written(motor.positionX));
    std::sort(motors.begin(), motors.end());
    for (std::size_t i = 0; i + 6 < tokens.size(); ++i) {
        const bool isSpan = tokens[i].is(QLatin1StringView("Vano")) && tokens[i + 2].is(u'–');
        const bool isOverhang = tokens[i].is(QLatin1StringView("Voladizo"));
        const std::size_t first = i + (isSpan ? 4 : 2);
        if ((!isSpan && !isOverhang) || !tokens[first].isNumber || !tokens[first + 1].isNumber
            || !tokens[first + 2].is(QLatin1StringView("100")))
            continue;
        const double x = tokens[first].value;
        double moment = 0.0;
        if (isSpan) {
            const auto left = static_cast<std::size_t>(tokens[i + 1].value) - 1;
            moment = std::max(0.0, plainMoment(entered, motors[left], motors[left + 1], x));
            for (const PointMass& load : entered.loads) { // no other place is worse
                const bool isInside = load.position > motors[left] && load.position < motors[left + 1];
                if (isInside
                    && plainMoment(entered, motors[left], motors[left + 1], load.position) > moment + 0.01)
                    return QStringLiteral("a load at %1 bends more").arg(load.position);
            }
        } else {
            moment = -overhangMoment(entered, x, tokens[i + 1].is(QLatin1StringView("izquierdo")));
        }
        if (!agrees(moment, tokens[first + 1].value, tokens[first + 1].unit))
            return wrong(QStringLiteral("M"), moment, tokens[first + 1].value);
        values.insert(values.end(), {x, moment});
    }
    return {};
}

/// Numbers that are allowed to stand in the text: entered, or a checked result.
class Known
{
public:
    void add(double value)
    {
        m_values.insert(std::abs(value));
    }
    [[nodiscard]] bool has(const Pocket::Token& token) const
    {
        const double reach = token.unit * 1.0001 + token.value * 1e-9;
        const auto next = m_values.lower_bound(token.value - reach);
        return next != m_values.end() && *next <= token.value + reach;
    }

private:
    std::set<double> m_values;
};

/// What anybody may take from the project, and from the rules.
inline Known knownOf(const ProjectState& project)
{
    Known known;
    for (const double rule : {0.45, 45.0, 100.0, 1.25, 0.05, 60.0, 1.0, 2.0, 4.0})
        known.add(rule);
    const auto add = [&known](float value) { known.add(SheetNumbers::written(value)); };
    add(project.trussLength);
    add(project.trussSelfWeight);
    add(project.limitCPL);
    for (int i = 0; i <= std::max(project.motors.size(), project.loads.size()) + 8; ++i)
        known.add(i); // numbers of motors, rows and sections
    for (const Motor& motor : project.motors) {
        add(motor.positionX);
        add(motor.capacity);
        add(motor.selfWeight);
        known.add(SheetNumbers::written(motor.positionX) - SheetNumbers::written(project.trussLength) / 2.0);
        for (const Motor& other : project.motors)
            known.add(SheetNumbers::written(motor.positionX) - SheetNumbers::written(other.positionX));
    }
    return known;
}

/// Sums of loads that hang together: left of a place, or of one screen in one span.
inline void addPartialSums(const ProjectState& project, Known& known)
{
    const Entered entered = enteredOf(project);
    std::vector<PointMass> loads = entered.loads;
    for (const PointMass& load : loads) {
        known.add(load.mass);
        known.add(load.position - entered.length / 2.0); // in the drawing
        known.add(load.position);
    }
    std::stable_sort(loads.begin(), loads.end(),
                     [](const PointMass& a, const PointMass& b) { return a.position < b.position; });
    for (int direction = 0; direction < 2; ++direction) {
        double mass = 0.0;
        double moment = 0.0;
        for (const PointMass& load : loads) {
            mass += load.mass;
            moment += load.mass * load.position;
            known.add(mass);
            known.add(moment);
        }
        std::reverse(loads.begin(), loads.end());
    }
}

/// Sums over equal segments, of their distances from `far` and of the third powers of those.
inline void addDistanceSums(const Entered& entered, double far, Known& known)
{
    for (std::size_t i = 0; i < entered.loads.size(); ++i) {
        double first = 0.0;
        double third = 0.0;
        for (std::size_t k = i; k < entered.loads.size(); ++k) {
            const double d = std::abs(entered.loads[k].position - far);
            first += d;
            third += d * d * d;
            known.add(first);
            known.add(third);
        }
    }
}

/// What is wrong with the text of `project`'s sheet; empty when all is well.
inline QString fault(const QString& text, const ProjectState& project)
{
    const std::vector<Pocket::Token> tokens = Pocket::tokens(withoutNames(text, project));
    const std::vector<Pocket::Equation> equations = Pocket::equations(tokens);
    const std::vector<std::vector<Row>> cases = casesOf(tokens);
    std::vector<double> candidates;
    for (const QString& found : {wrongEquation(tokens, equations), wrongCase(cases, project),
                                 wrongCandidate(tokens, project, candidates)}) {
        if (!found.isEmpty())
            return found;
    }
    Known known = knownOf(project);
    addPartialSums(project, known);
    for (const double value : candidates)
        known.add(value);
    for (const Pocket::Equation& equation : equations) {
        known.add(equation.printed);
        known.add(equation.calculated);
    }
    for (std::size_t i = 2; i + 1 < tokens.size(); ++i) { // what a column adds up to
        if (tokens[i].is(u'=') && tokens[i - 1].is(QLatin1StringView("filas")))
            known.add(tokens[i + (tokens[i + 1].is(u'−') ? 2 : 1)].value);
    }
    ProjectState screens = project;
    screens.loads.removeIf([](const ActiveLoad& load) { return load.groupId <= 0; });
    const Entered segments = enteredOf(screens);
    for (const auto& rows : cases) {
        for (std::size_t k = 0; k < rows.size(); ++k) {
            for (const double value : {rows[k].lever, rows[k].turn, rows[k].moment, rows[k].reaction})
                known.add(value);
            if (k > 0)
                known.add(rows[k].reaction + rows[k - 1].reaction);
            if (k > 0)
                known.add(rows[k].x - rows[k - 1].x);
            addDistanceSums(segments, rows[k].x, known);
        }
    }
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].is(QLatin1StringView("Supuestos")))
            break;
        if (tokens[i].isNumber && !known.has(tokens[i])) {
            QString around;
            for (std::size_t k = i < 12 ? 0 : i - 12; k < std::min(tokens.size(), i + 6); ++k)
                around += tokens[k].text + u' ';
            return QStringLiteral("where is ") + tokens[i].text + QStringLiteral(" from: ") + around;
        }
    }
    return {};
}

} // namespace SheetChecks
