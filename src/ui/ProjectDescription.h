#pragma once

#include <QString>

/// The drawing in words, for who cannot see it.
namespace ProjectDescription
{

/// The project in the engine and its results as they stand, in Spanish: the truss, how hard it is
/// worked, and each motor with its place and load. Of very many motors only the first are told.
QString ofCurrentProject();

} // namespace ProjectDescription
