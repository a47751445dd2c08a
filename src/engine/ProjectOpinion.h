#pragma once

#include "engine/Project.h"
#include "engine/SecondOpinion.h"

#include <optional>

/// The second opinion on a project.
namespace ProjectOpinion
{

/// What the second opinion needs of a project that holds its results: the motors in its order, with
/// what today's figures say of them. `tableDeflection` [mm] is that of the truss under its CPL.
SecondOpinion::Layout layoutOf(const ProjectState& solved, std::optional<double> tableDeflection = {});

/// The second opinion on a project that holds its results.
SecondOpinion::Opinion of(const ProjectState& solved, std::optional<double> tableDeflection = {});

} // namespace ProjectOpinion
