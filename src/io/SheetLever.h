#pragma once

#include "io/SheetProject.h"

#include <QString>

#include <cstddef>
#include <vector>

/// How the program's figures of the motors come about: which load leaves which share on which motor, by the
/// lever of the span that it hangs in.
namespace SheetLever
{

/// What one load, or a piece of the truss, leaves on a motor.
struct Share
{
    QString origin;  ///< what it is and where, HTML
    QString formula; ///< with the numbers put in
    double kilograms;
};

/// All shares of the motor at `index`. One of them is not-a-number where the program has no figure: two
/// motors at one place and a load there.
std::vector<Share> shares(const SheetProject& project, std::size_t index);

/// Their sum [kg].
double sum(const std::vector<Share>& shares);

/// The section: a part for each motor, `MOST_MOTORS` at most, the nearest to their capacity, and the sums.
QString html(const SheetProject& project);

} // namespace SheetLever
