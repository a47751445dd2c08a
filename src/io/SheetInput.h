#pragma once

#include "io/SheetProject.h"

#include <QString>

/// What was entered, with its sums.
namespace SheetInput
{

/// The section on the truss, its motors and its loads.
QString html(const SheetProject& project);

} // namespace SheetInput
