#pragma once

#include "io/SheetProject.h"

#include <QString>

#include <vector>

/// What hangs of one load in one part of the truss, as it stands in a formula.
struct SheetPortion
{
    QString title;       ///< HTML
    QString massText;    ///< "60", "3 × 69.55"
    QString placeText;   ///< where its middle is: "4", "(4.25 + 5.25) / 2"
    double mass = 0.0;   ///< [kg]
    double place = 0.0;  ///< its middle [m]
    double moment = 0.0; ///< Σ P·x [kg·m]

public: // construction
    /// `part` of `load`, which is one of its masses at least.
    static SheetPortion of(const SheetLoad& load, const std::vector<PointMass>& part);
};
