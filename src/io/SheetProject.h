#pragma once

#include "engine/Figures.h"
#include "engine/Project.h"
#include "engine/TrussBeam.h"

#include <QString>

#include <cstddef>
#include <vector>

/// A calculated project as the calculation sheet tells of it: what was entered, as it was written, in double
/// precision, beside the program's figures. Positions are metres from the truss's LEFT end.
///
/// A sheet of many loads stays short: the segments of a screen are one load, and beyond `MOST_LOADS`, or
/// `MOST_SEGMENTS` in one screen, the loads that are left are one too, of which only the sums are told.

/// A load, the segments of a screen, or the loads that are not listed.
struct SheetLoad
{
    QString title;                 ///< to be shown, HTML
    std::vector<PointMass> masses; ///< in the order of the list; equal ones where `isListed`
    bool isListed = true;          ///< false: too many to be listed one by one
};

struct SheetMotor
{
    int number = 0; ///< 1, 2, 3 … left to right
    QString title;  ///< to be shown, HTML
    double position = 0.0;
    double capacity = 0.0;         ///< [kg]
    double ownWeight = 0.0;        ///< [kg]
    Figures::MotorFigures figures; ///< of the program

    /// "Motor 2 · Centro".
    [[nodiscard]] QString label() const;
};

struct SheetProject
{
    static constexpr std::size_t MOST_LOADS = 60;
    static constexpr std::size_t MOST_SEGMENTS = 60;
    static constexpr std::size_t MOST_MOTORS = 16; ///< whose figures are derived

    QString title;           ///< to be shown, HTML
    double length = 0.0;     ///< [m]
    double selfWeight = 0.0; ///< of the truss [kg/m]
    double limitCPL = 0.0;   ///< [kg]
    std::vector<SheetMotor> motors;
    std::vector<SheetLoad> loads;
    Figures figures; ///< of the program

public: // construction
    /// What the sheet tells of a project that holds its results.
    static SheetProject of(const ProjectState& solved);

public: // queries
    /// False where there is a number that no formula can be written with.
    [[nodiscard]] bool isFinite() const;
    /// Of all loads [kg].
    [[nodiscard]] double loadMass() const;
    /// Σ P·x of all loads [kg·m].
    [[nodiscard]] double loadMoment() const;
    /// Of truss and loads [kg].
    [[nodiscard]] double weight() const;
    /// Σ P·x of truss and loads [kg·m].
    [[nodiscard]] double moment() const;
    /// How many decimals both need, so that what is calculated from them comes out right.
    [[nodiscard]] int sumDecimals() const;
    /// Both, as they are printed.
    [[nodiscard]] QString weightText() const;
    [[nodiscard]] QString momentText() const;
};
