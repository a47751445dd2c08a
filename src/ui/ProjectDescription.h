#pragma once

#include "engine/Project.h"

#include <QString>

/// The drawing in words, for who cannot see it.
namespace ProjectDescription
{

/// A project that holds its results, in Spanish: the result and its reason, whether the truss is stable
/// and how hard it is worked, each motor with its place, load, dynamic load and verdict, each load by
/// name, place and mass, a screen as one. Of very many motors or loads only the first are told.
QString of(const ProjectState& solved);

} // namespace ProjectDescription
