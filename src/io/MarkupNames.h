#pragma once

#include "engine/Project.h"

#include <QString>

#include <optional>

/// Names that a browser takes for more than text. The HTML report shows names as they were typed.
namespace MarkupNames
{

/// Whether `name` holds the beginning of an HTML element, its end, a comment or an instruction.
bool isMarkup(const QString& name);

/// The first of `project`'s names that is markup: its title, then those of its motors and loads. Nothing
/// if there is none.
std::optional<QString> first(const ProjectState& project);

} // namespace MarkupNames
