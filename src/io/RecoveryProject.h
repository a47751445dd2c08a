#pragma once

#include "engine/Project.h"

#include <QJsonObject>

/// A project as it stands in the recovery file: the object that a project file consists of, and beside
/// it what a project file does not keep: what makes an array of loads, the screen that is being planned,
/// and the bits of the numbers that JSON does not have. So every number comes back as it was, to the
/// bit. Results are not kept; they are calculated.
namespace RecoveryProject
{

/// `project` as a member of a document.
QJsonObject toJson(const ProjectState& project);

/// A member that is missing or of the wrong type counts as its default, as it does in a project file.
ProjectState fromJson(const QJsonObject& object);

/// Whether `a` and `b` are the same to the bit in all that is kept; the names of their tabs and the
/// results do not count. Lists that are shared are not gone through.
bool isSame(const ProjectState& a, const ProjectState& b);

/// Whether nobody has worked on `project`: it is as a new tab or a reset makes it. The screen that is
/// being planned does not count.
bool isUntouched(const ProjectState& project);

} // namespace RecoveryProject
