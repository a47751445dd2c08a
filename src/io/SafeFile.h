#pragma once

#include <QByteArray>
#include <QString>

/// Writes whole files: whoever reads one finds the old content or the new one, never half of it.
namespace SafeFile
{

/// Puts `bytes` into the user's file at `path`; a symbolic link is followed, the permissions of an
/// existing file stay. Returns true only when all of it is on the disk; otherwise an existing file
/// is as it was, unless its folder takes no new files, so that it had to be written in place.
bool save(const QString& path, const QByteArray& bytes);

/// Puts `bytes` at `path`, readable by its owner alone. Whatever was there is replaced: a link that
/// somebody planted in a shared folder is not followed. Returns false when that fails.
bool publish(const QString& path, const QByteArray& bytes);

} // namespace SafeFile
