// How long the second opinion takes, all figures and both diagrams, and how that grows with the loads.

#include "engine/SecondOpinion.h"

#include <benchmark/benchmark.h>

#include "Projects.h"

namespace
{

constexpr int MOTORS = 20;

SecondOpinion::Layout layoutOf(const LoadLogic::ProjectState& project)
{
    SecondOpinion::Layout layout;
    layout.length = static_cast<double>(project.trussLength);
    layout.selfWeight = static_cast<double>(project.trussSelfWeight);
    layout.limitCPL = static_cast<double>(project.limitCPL);
    layout.tableDeflection = 15.0;
    for (const LoadLogic::Motor& motor : project.motors) {
        layout.motors.push_back({motor.modelName, static_cast<double>(motor.positionX),
                                 static_cast<double>(motor.capacity), static_cast<double>(motor.selfWeight),
                                 0.0});
    }
    for (const LoadLogic::ActiveLoad& load : project.loads)
        layout.loads.push_back({static_cast<double>(load.positionX), static_cast<double>(load.mass)});
    return layout;
}

void secondOpinion(benchmark::State& state)
{
    const SecondOpinion::Layout layout =
        layoutOf(Projects::make({MOTORS, static_cast<int>(state.range(0)), 0, 0}));
    for ([[maybe_unused]] auto _ : state) {
        SecondOpinion::Opinion opinion = SecondOpinion::of(layout);
        benchmark::DoNotOptimize(opinion);
        if (opinion.state != SecondOpinion::State::Level) {
            state.SkipWithError("The project does not hang level");
            break;
        }
    }
}

BENCHMARK(secondOpinion)->Arg(500)->Arg(2000)->Arg(20000);

} // namespace
