#pragma once

#include "Camera.h"

/// The scenes that the guide shows, in the order in which its reader meets them.
namespace Scenes
{

/// Plays them all on one window and returns their pictures.
[[nodiscard]] QMap<QString, Picture> play();

} // namespace Scenes
