#pragma once

#include "engine/Statics.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/// The project file (`.rig`, `.json`): one project as an indented UTF-8 JSON object.
///
/// Numbers are those of the engine, widened to double on writing and narrowed on reading. A load's
/// type word is written but never read: what comes from a file is an untyped load.
namespace ProjectFile
{

enum class Failure
{
    None,
    Unreadable, ///< no such file, no permission, a folder, a device
    NotAProject ///< not JSON, or its top level is no object
};

struct Content
{
    Failure failure = Failure::None;
    ProjectState project; ///< the defaults after a failure
};

/// The object that the file consists of, for `toBytes` or to stand in another document.
QJsonObject toJson(const ProjectState& project);

/// The project that `object` is, a file's or one inside another document; see `fromBytes`.
ProjectState fromJson(const QJsonObject& object, const Truss& fallback = {});

/// The file's text. Infinities and not-a-number become null, as JSON has no such numbers.
QByteArray toBytes(const ProjectState& project);

/// The project that `bytes` hold, or nothing where they are not a JSON object. A member that is
/// missing or of the wrong type counts as its default, the truss's weight [kg/m] and CPL [kg] as those
/// of `fallback`. No number is checked for its range.
std::optional<ProjectState> fromBytes(const QByteArray& bytes, const Truss& fallback = {});

/// Reads the file at `path` as `fromBytes` does. Nothing in the file or of its kind makes this crash or wait.
Content read(const QString& path, const Truss& fallback = {});

/// As `read`, but `path` may also be a pipe, whose content this takes. Waits for as long as somebody goes
/// on writing, and at most `patience` [ms] for the next byte.
Content readOnce(const QString& path, int patience = 30'000);

/// Writes the file at `path`, all of it or nothing. Returns whether it is on the disk.
bool write(const QString& path, const ProjectState& project);

} // namespace ProjectFile
