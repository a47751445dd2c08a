#include "io/SheetProject.h"

#include "engine/SecondOpinion.h"
#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SheetNumbers::written;

/// "LED 1 Seg " of "LED 1 Seg 12": what the segments of one screen share.
QString stem(QString title)
{
    while (!title.isEmpty() && title.back().isDigit())
        title.chop(1);
    return title;
}

/// Segments of one screen as the program hangs them: told in one row. Files without groups have 0 everywhere.
bool isSameScreen(const ActiveLoad& a, const ActiveLoad& b)
{
    return a.groupId > 0 && a.groupId == b.groupId && a.mass == b.mass && stem(a.name) == stem(b.name);
}

PointMass massOf(const ActiveLoad& load)
{
    return {written(load.positionX), written(load.mass)};
}

SheetLoad screenOf(QList<ActiveLoad>::const_iterator begin, QList<ActiveLoad>::const_iterator end)
{
    SheetLoad screen;
    screen.title = SheetHtml::name(Project::loadTitle(*begin));
    if (end - begin > 1)
        screen.title += u" … "_s + SheetHtml::name(Project::loadTitle(*(end - 1)));
    std::transform(begin, end, std::back_inserter(screen.masses), massOf);
    return screen;
}

std::vector<SheetLoad> loadsOf(const QList<ActiveLoad>& loads)
{
    std::vector<SheetLoad> shown;
    SheetLoad rest{u"Cargas sin listar"_s, {}, false};
    for (auto load = loads.cbegin(); load != loads.cend();) {
        const auto end = std::find_if_not(
            load, loads.cend(), [load](const ActiveLoad& other) { return isSameScreen(*load, other); });
        const auto next = std::max(end, load + 1);
        const bool isListed = shown.size() < SheetProject::MOST_LOADS
                              && next - load <= static_cast<qsizetype>(SheetProject::MOST_SEGMENTS);
        if (isListed)
            shown.push_back(screenOf(load, next));
        else
            std::transform(load, next, std::back_inserter(rest.masses), massOf);
        load = next;
    }
    if (!rest.masses.empty())
        shown.push_back(std::move(rest));
    return shown;
}

SheetMotor motorOf(const Motor& motor, const Figures::MotorFigures& figures, int number)
{
    return {number,
            SheetHtml::name(figures.title),
            written(motor.positionX),
            written(motor.capacity),
            written(motor.selfWeight),
            figures};
}

double sumOver(const std::vector<SheetLoad>& loads, double (*term)(const PointMass&))
{
    double sum = 0.0;
    for (const SheetLoad& load : loads) {
        for (const PointMass& mass : load.masses)
            sum += term(mass);
    }
    return sum;
}

} // namespace

QString SheetMotor::label() const
{
    return u"Motor "_s + QString::number(number) + u" · "_s + title;
}

SheetProject SheetProject::of(const ProjectState& solved)
{
    SheetProject project;
    project.title = SheetHtml::name(solved.tabName);
    project.length = written(solved.trussLength);
    project.selfWeight = written(solved.trussSelfWeight);
    project.limitCPL = written(solved.limitCPL);
    project.figures = Figures::ofSolved(solved);
    for (qsizetype i = 0; i < solved.motors.size(); ++i) {
        project.motors.push_back(
            motorOf(solved.motors.at(i), project.figures.motors.at(i), static_cast<int>(i) + 1));
    }
    project.loads = loadsOf(solved.loads);
    return project;
}

bool SheetProject::isFinite() const
{
    const auto isMotorFinite = [](const SheetMotor& motor) {
        return std::isfinite(motor.position) && std::isfinite(motor.capacity)
               && std::isfinite(motor.ownWeight);
    };
    return std::isfinite(length) && std::isfinite(selfWeight) && std::isfinite(limitCPL)
           && std::isfinite(loadMass()) && std::isfinite(loadMoment())
           && std::all_of(motors.begin(), motors.end(), isMotorFinite);
}

double SheetProject::loadMass() const
{
    return sumOver(loads, [](const PointMass& load) { return load.mass; });
}

double SheetProject::loadMoment() const
{
    return sumOver(loads, [](const PointMass& load) { return load.mass * load.position; });
}

double SheetProject::weight() const
{
    return selfWeight * length + loadMass();
}

double SheetProject::moment() const
{
    return selfWeight * length * length / 2.0 + loadMoment();
}

// The most that a motor can carry is (W·x − S) over a distance, with one decimal; the centre of gravity is
// S / W, with three.
int SheetProject::sumDecimals() const
{
    double shortest = 1.0;
    for (std::size_t i = 1; i < motors.size(); ++i)
        shortest = std::min(shortest, motors[i].position - motors[i - 1].position);
    shortest = std::max(shortest, SecondOpinion::ONE_POINT);
    const double tolerance = std::min(0.02 * shortest, 0.0003 * weight()) / (length + 1.0);
    return std::max(2, SheetNumbers::decimalsFor(tolerance));
}

QString SheetProject::weightText() const
{
    return SheetNumbers::fixed(weight(), sumDecimals());
}

QString SheetProject::momentText() const
{
    return SheetNumbers::fixed(moment(), sumDecimals());
}
