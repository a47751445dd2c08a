#pragma once

#include "engine/LoadLogic.h"

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

/// Truss layouts for the tests of the calculation: small plain records, a random source that
/// gives the same layouts on every machine, and the way into the engine.
namespace Layouts
{

/// A load of `mass` [kg] at `x` [m].
struct Load
{
    float x = 0.0F;
    float mass = 0.0F;
};

/// A truss with its motors and loads.
struct Layout
{
    float length = 12.0F;      ///< [m]
    float selfWeight = 8.4F;   ///< [kg/m]
    float cpl = 1600.0F;       ///< [kg]
    std::vector<float> motors; ///< positions [m]
    std::vector<Load> loads;
};

/// Makes `layout` the current project and calculates it. Motors get the ids 1, 2 … The records of
/// the last layout are used again: making their texts anew would take most of the time.
inline void calculate(const Layout& layout)
{
    LoadLogic::TrussLength = layout.length;
    LoadLogic::TrussSelfWeight = layout.selfWeight;
    LoadLogic::Limit_CPL = layout.cpl;
    LoadLogic::MotorList.resize(static_cast<qsizetype>(layout.motors.size()));
    LoadLogic::Motor* motor = LoadLogic::MotorList.data();
    for (std::size_t i = 0; i < layout.motors.size(); ++i, ++motor) {
        motor->id = static_cast<int>(i) + 1;
        motor->positionX = layout.motors[i];
    }
    LoadLogic::ActiveLoads.resize(static_cast<qsizetype>(layout.loads.size()));
    LoadLogic::ActiveLoad* record = LoadLogic::ActiveLoads.data();
    for (const Load& load : layout.loads) {
        record->mass = load.mass;
        record->positionX = load.x;
        ++record;
    }
    LoadLogic::CalcularReacciones();
}

/// What each motor carries [kg], left to right.
inline std::vector<float> staticLoads()
{
    std::vector<float> result;
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        result.push_back(motor.staticLoad);
    return result;
}

/// The masses of all loads and the whole weight of the truss [kg].
inline double weightOf(const Layout& layout)
{
    double sum = static_cast<double>(layout.selfWeight) * static_cast<double>(layout.length);
    for (const Load& load : layout.loads)
        sum += static_cast<double>(load.mass);
    return sum;
}

/// Random layouts, the same for the same seed on every machine (the engine's results of
/// std::mt19937 are fixed, those of the standard distributions are not).
class Generator
{
public: // construction
    explicit Generator(std::uint32_t seed)
        : m_random(seed)
    {
    }

public: // queries
    /// An integer from `low` to `high`.
    int integer(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<std::uint32_t>(high - low + 1));
    }

    /// A number from `low` to `high`, in about a million steps.
    float real(float low, float high)
    {
        return low + (high - low) * static_cast<float>(integer(0, 1'000'000)) * 1e-6F;
    }

    /// A place on a truss of `length` [m], a multiple of 1/64 m: sums and differences of such
    /// places are exact, so that a reflected layout is a layout of the same kind.
    float place(float length)
    {
        return static_cast<float>(integer(0, static_cast<int>(length) * 64)) / 64.0F;
    }

    /// A truss of 4 to 20 m with 1 to 5 motors at different places and up to 6 loads, everything
    /// on it. A load hangs at a motor now and then.
    Layout next()
    {
        Layout layout;
        layout.length = static_cast<float>(integer(4, 20));
        layout.selfWeight = static_cast<float>(integer(0, 200)) / 8.0F;
        layout.cpl = static_cast<float>(integer(200, 4000));
        const int motorCount = integer(1, 5);
        for (int i = 0; i < motorCount; ++i)
            addMotor(layout);
        const int loadCount = integer(0, 6);
        for (int i = 0; i < loadCount; ++i)
            layout.loads.push_back(load(layout));
        return layout;
    }

    /// A load somewhere on `layout`.
    Load load(const Layout& layout)
    {
        const float mass = static_cast<float>(integer(0, 8000)) / 8.0F;
        if (integer(0, 4) == 0)
            return {layout.motors[static_cast<std::size_t>(integer(0, 100)) % layout.motors.size()], mass};
        return {place(layout.length), mass};
    }

private: // helpers
    void addMotor(Layout& layout)
    {
        // Half of the motors stand near an end: otherwise few layouts would be stable.
        const float limit = layout.length * 0.375F;
        const float x = integer(0, 1) == 0 ? place(layout.length) : place(limit);
        const float placed = integer(0, 1) == 0 ? x : layout.length - x;
        for (const float other : layout.motors) {
            if (other == placed)
                return;
        }
        layout.motors.push_back(placed);
    }

private: // data
    std::mt19937 m_random;
};

} // namespace Layouts
