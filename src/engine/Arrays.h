#pragma once

#include "engine/Project.h"

#include <QHash>

#include <optional>

/// One LED array as a whole: all loads that share a `groupId`.
struct ArraySummary
{
    float centre = 0.0F;   ///< mean position of its loads [m]
    float width = 0.0F;    ///< the first width that is not zero among its loads [m]
    bool selected = false; ///< one of its loads is the selected one
};

/// Arrays by `groupId`.
using ArraySummaries = QHash<int, ArraySummary>;

namespace Arrays
{

/// The arrays among `loads`; `selectedLoadId` is -1 for none. The loads of no array share the key -1.
ArraySummaries summarize(const QList<ActiveLoad>& loads, int selectedLoadId);

/// The mean position [m] of the screen loads of array `groupId`, or nothing if it has none.
std::optional<float> centreOfScreen(const QList<ActiveLoad>& loads, int groupId);

} // namespace Arrays
