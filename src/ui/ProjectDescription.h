#pragma once

#include "engine/Project.h"

#include <QString>

/// The drawing in words, for who cannot see it.
namespace ProjectDescription
{

/// A project that holds its results, in Spanish: the truss, how hard it is
/// worked, and each motor with its place and load. Of very many motors only the first are told.
QString of(const ProjectState& solved);

} // namespace ProjectDescription
