#pragma once

#include <vector>

#include "verification/Case.h"

/// Published figures of continuous beams beside those of the second opinion.
namespace ContinuousBeamCases
{

std::vector<Case> all();

} // namespace ContinuousBeamCases
