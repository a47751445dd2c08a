#include "io/SheetLever.h"
#include "io/SheetNumbers.h"
#include "io/SheetPortion.h"

#include <algorithm>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

using SheetLever::Share;
using SheetNumbers::exact;
using SheetNumbers::operand;

/// The motors that a load hangs between; twice the same one for what hangs at it or outside.
using Between = std::pair<std::size_t, std::size_t>;

Between between(const std::vector<SheetMotor>& motors, double x)
{
    const auto right = std::find_if(motors.begin(), motors.end(),
                                    [x](const SheetMotor& motor) { return motor.position >= x; });
    const auto left = std::find_if(motors.rbegin(), motors.rend(),
                                   [x](const SheetMotor& motor) { return motor.position <= x; });
    const auto rightIndex = static_cast<std::size_t>(right - motors.begin());
    const auto leftIndex = static_cast<std::size_t>(motors.rend() - left) - 1;
    if (right == motors.end())
        return {leftIndex, leftIndex};
    return left == motors.rend() ? Between{rightIndex, rightIndex} : Between{leftIndex, rightIndex};
}

QString spanName(const SheetProject& project, const Between& pair)
{
    return u"vano "_s + QString::number(project.motors[pair.first].number) + u"–"_s
           + QString::number(project.motors[pair.second].number);
}

Share wholeShare(const SheetPortion& portion)
{
    return {portion.title + u", entera"_s, portion.massText, portion.mass};
}

Share leverShare(const SheetProject& project, const SheetPortion& portion, const Between& pair,
                 std::size_t index)
{
    const double a = project.motors[pair.first].position;
    const double b = project.motors[pair.second].position;
    const QString aText = operand(exact(a));
    const QString bText = operand(exact(b));
    const bool isLeft = index == pair.first;
    const QString arm = isLeft ? bText + u" − "_s + portion.placeText : portion.placeText + u" − "_s + aText;
    const double share = portion.mass * (isLeft ? b - portion.place : portion.place - a) / (b - a);
    return {portion.title + u", "_s + spanName(project, pair),
            portion.massText + u" × ("_s + arm + u") / ("_s + bText + u" − "_s + aText + u')', share};
}

void addTruss(const SheetProject& project, std::size_t index, std::vector<Share>& shares)
{
    const std::vector<SheetMotor>& motors = project.motors;
    const QString w = operand(exact(project.selfWeight));
    const auto addSpan = [&](std::size_t left, std::size_t right) {
        const double s = motors[right].position - motors[left].position;
        shares.push_back({u"Truss, "_s + spanName(project, {left, right}),
                          w + u" × ("_s + operand(exact(motors[right].position)) + u" − "_s
                              + operand(exact(motors[left].position)) + u") / 2"_s,
                          project.selfWeight * s / 2.0});
    };
    if (index == 0 && motors.front().position > 0.0) {
        shares.push_back({u"Truss, voladizo izquierdo"_s, w + u" × "_s + exact(motors.front().position),
                          project.selfWeight * motors.front().position});
    }
    if (index > 0)
        addSpan(index - 1, index);
    if (index + 1 < motors.size())
        addSpan(index, index + 1);
    if (index + 1 == motors.size() && project.length > motors.back().position) {
        shares.push_back(
            {u"Truss, voladizo derecho"_s,
             w + u" × ("_s + exact(project.length) + u" − "_s + operand(exact(motors.back().position)) + u')',
             project.selfWeight * (project.length - motors.back().position)});
    }
}

void addLoad(const SheetProject& project, const SheetLoad& load, std::size_t index,
             std::vector<Share>& shares)
{
    std::map<Between, std::vector<PointMass>> parts;
    for (const PointMass& mass : load.masses) {
        const Between pair = between(project.motors, mass.position);
        if (pair.first == index || pair.second == index)
            parts[pair].push_back(mass);
    }
    for (const auto& [pair, part] : parts) {
        const SheetPortion portion = SheetPortion::of(load, part);
        shares.push_back(pair.first == pair.second ? wholeShare(portion)
                                                   : leverShare(project, portion, pair, index));
    }
}

} // namespace

std::vector<Share> SheetLever::shares(const SheetProject& project, std::size_t index)
{
    std::vector<Share> shares;
    addTruss(project, index, shares);
    for (const SheetLoad& load : project.loads)
        addLoad(project, load, index, shares);
    return shares;
}

double SheetLever::sum(const std::vector<Share>& shares)
{
    double sum = 0.0;
    for (const Share& share : shares)
        sum += share.kilograms;
    return sum;
}
