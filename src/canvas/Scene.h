#pragma once

#include "engine/Project.h"
#include "engine/Statics.h"

#include <optional>

/// What is drawn: a calculated project and how it is looked at. Points to the lists, which have to
/// outlive it and stay unchanged meanwhile.
struct Scene
{
    const QList<Motor>& motors;     ///< left to right
    const QList<ActiveLoad>& loads; ///< in the order of their creation
    float trussLength;              ///< [m]
    Rating rating;
    std::optional<int> selectedLoadId; ///< nothing where nobody selects
    bool print = false;                ///< black on white
    bool blinkOn = false;              ///< phase of the warnings
    int marginX = 80;                  ///< from the target's edge to a truss end, at scale 1 [px]
    int motorBoxSize = 70;             ///< side of a motor's body, at scale 1 [px]

public: // construction
    /// The scene of a project that holds its results already, for print.
    static Scene forPrint(const ProjectState& solved)
    {
        const Rating rating{solved.trussStressPercentage, solved.isUnstable};
        return {solved.motors, solved.loads, solved.trussLength, rating, std::nullopt, true};
    }
};
