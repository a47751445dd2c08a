#pragma once

#include "engine/ChainSupports.h"
#include "engine/HangingPoints.h"
#include "io/SheetProject.h"

#include <QString>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

/// The cases of the second opinion, with the numbers between its equations. They are calculated from what is
/// printed, so that who checks them gets the same.
///
/// With G, what the spans would leave on a motor if they were cut above it (the lever), and K, how a load
/// turns the truss above it:
///   M = (−K − s₁·M₋ − s₂·M₊) / (2·(s₁ + s₂)),   R = G + (M₋ − M)/s₁ + (M₊ − M)/s₂
struct SheetBeam
{
    /// The truss on those of its points that carry it.
    struct Case
    {
        std::optional<std::size_t> slack;  ///< the point that is taken as slack
        std::vector<std::size_t> carrying; ///< points, rising
        std::vector<double> places;        ///< of those [m]
        std::vector<double> levers;        ///< G [kg]
        std::vector<double> turns;         ///< K of the inner ones [kg·m²]; 0 at the outermost
        std::vector<double> moments;       ///< M [kg·m]
        std::vector<double> reactions;     ///< R [kg]
        BeamDiagram::Extremes extremes;
    };

    /// How many decimals each of them needs, so that the next one comes out right.
    struct Decimals
    {
        int lever = 4;
        int turn = 4;
        int moment = 4;
        int reaction = 3;
    };

    std::shared_ptr<const SecondOpinion::Layout> layout;
    HangingPoints::Show show;   ///< refers to `layout`
    Case pushing;               ///< the textbook's beam
    std::optional<Case> level;  ///< chains only pull; nothing where no solution was found
    std::vector<Case> oneSlack; ///< without the point `slack`, where the truss does not tip
    Decimals decimals;

public: // construction
    /// The cases of a project whose centre of gravity lies between its outermost points.
    static SheetBeam of(const SheetProject& project);
};

/// `project` for the second opinion, as it is printed.
SecondOpinion::Layout sheetLayout(const SheetProject& project);
