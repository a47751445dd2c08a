#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// The truss as one straight beam: where it hangs, and what hangs in each of its panels, summed up so
/// that a calculation takes the same time for ten loads and for ten thousand.
///
/// Positions are metres from the truss's LEFT end, masses kilograms, positive downwards. Everything
/// is in double precision; what comes in is finite, masses are not negative, and positions lie on
/// the truss.

/// What hangs at one place of the truss.
struct PointMass
{
    double position; ///< [m]
    double mass;     ///< [kg]
};

/// All loads from left to right, with running sums: what hangs left of a place is known by a search.
struct LoadRow
{
public: // construction
    /// Sorts `masses` and sums them up.
    explicit LoadRow(std::vector<PointMass> masses = {});

public: // data
    /// Left to right.
    std::vector<PointMass> loads;
    std::vector<double> massBefore;   ///< Σ P of the loads before the k-th; one more than loads [kg]
    std::vector<double> momentBefore; ///< Σ P·x of the same [kg·m]

public: // queries
    /// How many loads hang left of `position` [m], not at it.
    [[nodiscard]] std::size_t countLeftOf(double position) const;
    /// How many loads hang left of `position` [m] or at it.
    [[nodiscard]] std::size_t countUpTo(double position) const;
};

/// Σ P·dᵏ for k = 0 … 3, d being the distance from one end of a panel [kg·mᵏ].
using PowerSums = std::array<double, 4>;

/// A piece of the truss between two supports, or between an end and the next support.
struct BeamPanel
{
    double length = 0.0;   ///< [m]
    PowerSums fromLeft{};  ///< d from the panel's left end
    PowerSums fromRight{}; ///< d from its right end

    /// Hangs `mass` [kg] at `distance` [m] from the left end.
    void add(double distance, double mass);
};

/// The panel that two neighbours make when the support between them is taken away. By the binomial
/// theorem Σ P·(s + d)ᵏ = Σⱼ C(k, j)·sᵏ⁻ʲ·Σ P·dʲ; all terms are positive, so nothing cancels.
BeamPanel joined(const BeamPanel& left, const BeamPanel& right);

/// A truss on supports, left to right, at least one. BeamPanel 0 is the left overhang, panel k the span left
/// of support k, the last one the right overhang: one panel more than supports.
struct TrussBeam
{
    double weightPerMetre = 0.0;  ///< [kg/m]
    double weight = 0.0;          ///< of the truss and all that hangs on it [kg]
    double centre = 0.0;          ///< centre of gravity of all that [m]
    std::vector<double> supports; ///< [m], each further right than the one before
    std::vector<BeamPanel> panels;
};

/// The truss of `length` [m] and `weightPerMetre` [kg/m] on `supports` [m], loaded with `row`. A truss
/// that weighs nothing has its centre of gravity in the middle.
TrussBeam makeBeam(double length, double weightPerMetre, const std::vector<double>& supports,
                   const LoadRow& row);

/// `beam` on those of its supports alone whose places in the list are in `carrying`, which rises.
TrussBeam carriedBy(const TrussBeam& beam, const std::vector<std::size_t>& carrying);

/// What `panel` and all that hangs in it weigh [kg].
double weightOf(const BeamPanel& panel, double weightPerMetre);
