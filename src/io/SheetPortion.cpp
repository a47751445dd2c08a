#include "io/SheetPortion.h"

#include "io/SheetNumbers.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using SheetNumbers::exact;
using SheetNumbers::operand;

/// The decimals of sums that are not told term by term.
constexpr int SUM_DECIMALS = 9;

/// The middle of evenly spaced segments is that of the outer two, up to this [m].
constexpr double SAME_MIDDLE = 1e-9;

QString count(std::size_t number)
{
    return QString::number(static_cast<qulonglong>(number));
}

/// The mean of the positions of equal masses.
QString meanText(const std::vector<PointMass>& part, double mean)
{
    const PointMass& first = part.front();
    const PointMass& last = part.back();
    if (std::abs((first.position + last.position) / 2.0 - mean) <= SAME_MIDDLE)
        return u'(' + exact(first.position) + u" + "_s + operand(exact(last.position)) + u") / 2"_s;
    QStringList positions;
    for (const PointMass& mass : part)
        positions += operand(exact(mass.position));
    return u'(' + positions.join(u" + "_s) + u") / "_s + count(part.size());
}

void setSums(SheetPortion& portion, const std::vector<PointMass>& part)
{
    double positions = 0.0;
    for (const PointMass& mass : part) {
        portion.mass += mass.mass;
        portion.moment += mass.mass * mass.position;
        positions += mass.position;
    }
    portion.place =
        portion.mass != 0.0 ? portion.moment / portion.mass : positions / static_cast<double>(part.size());
}

void setListed(SheetPortion& portion, const std::vector<PointMass>& part)
{
    if (part.size() == 1) {
        portion.massText = operand(exact(part.front().mass));
        portion.placeText = operand(exact(part.front().position));
        return;
    }
    portion.massText = count(part.size()) + u" × "_s + operand(exact(part.front().mass));
    portion.placeText = meanText(part, portion.place);
}

} // namespace

SheetPortion SheetPortion::of(const SheetLoad& load, const std::vector<PointMass>& part)
{
    SheetPortion portion;
    portion.title = load.title;
    if (load.masses.size() > 1)
        portion.title += u" ("_s + count(part.size()) + u" de "_s + count(load.masses.size()) + u')';
    setSums(portion, part);
    if (load.isListed) {
        setListed(portion, part);
        return portion;
    }
    portion.massText = operand(SheetNumbers::trimmed(portion.mass, SUM_DECIMALS));
    portion.placeText = operand(SheetNumbers::trimmed(portion.place, SUM_DECIMALS));
    return portion;
}
