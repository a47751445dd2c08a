// How long a recalculation takes, and how that grows with the loads.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Projects.h"

namespace
{

constexpr int MOTORS = 20;

void loadProject(const benchmark::State& state)
{
    Projects::load({MOTORS, static_cast<int>(state.range(0)), 0, 0});
}

void recalculate(benchmark::State& state)
{
    loadProject(state);
    for ([[maybe_unused]] auto _ : state) {
        LoadLogic::CalcularReacciones();
        benchmark::DoNotOptimize(LoadLogic::TrussStress_Percentage);
    }
}

/// The least that has to be done: each load shared between the motors at its sides, in the engine's
/// own arrays.
void shareLoads()
{
    QList<LoadLogic::Motor>& motors = LoadLogic::MotorList;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        const auto right = std::find_if(
            motors.begin() + 1, motors.end() - 1,
            [x = load.positionX](const LoadLogic::Motor& motor) { return motor.positionX >= x; });
        const auto left = right - 1;
        const float share =
            (right->positionX - load.positionX) / (right->positionX - left->positionX) * load.mass;
        left->staticLoad += share;
        right->staticLoad += load.mass - share;
    }
}

void leverRuleAndSort(benchmark::State& state)
{
    loadProject(state);
    std::vector<float> positions(static_cast<std::size_t>(LoadLogic::ActiveLoads.size()));
    for ([[maybe_unused]] auto _ : state) {
        shareLoads();
        std::transform(LoadLogic::ActiveLoads.cbegin(), LoadLogic::ActiveLoads.cend(), positions.begin(),
                       [](const LoadLogic::ActiveLoad& load) { return load.positionX; });
        std::sort(positions.begin(), positions.end());
        benchmark::DoNotOptimize(positions.data());
        benchmark::ClobberMemory();
    }
}

BENCHMARK(recalculate)->Arg(500)->Arg(2000)->Arg(20000);
BENCHMARK(leverRuleAndSort)->Arg(500);

} // namespace
