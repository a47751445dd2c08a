#pragma once

#include "io/RecoveryFolder.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Reads and writes whole files.
namespace SafeFile
{

/// What is in the file at `path`, through links; of a longer one the first `most` [bytes]. Nothing when
/// it cannot be read to its end. Only regular files are read: a pipe could keep the program waiting, a
/// device could go on for ever.
std::optional<QByteArray> read(const QString& path, qint64 most);

/// As `read`, but of a pipe too, whose content this takes. Waits for as long as somebody goes on writing
/// into it, and at most `patience` [ms] for the next byte; nothing when that is over. Devices, terminals
/// among them, are not read.
std::optional<QByteArray> readOnce(const QString& path, qint64 most, int patience);

/// Puts `bytes` into the user's file at `path`; symbolic links are followed. Owner, group, permissions,
/// access control lists, extended attributes and further names of an existing file stay. Returns true
/// only when all of it is on the disk.
///
/// Where a new file can take the place of the old one without changing any of these, whoever reads the
/// file finds the old content or the new one, never half of it, and after a failure the old one; only
/// if nothing but the folder's own entry could not be synced, it is the new one.
///
/// Otherwise the file is written in place. Meanwhile a copy of the old content, for this user alone, is
/// in the folder `copies`, or in the folder for temporary files where that takes none; without a copy
/// nothing is written. A failure puts the old content back; the copy stays where that fails too, and
/// after a crash. What is neither missing nor a regular file, or is not to be written by this user, or
/// for root by nobody, is refused.
bool save(const QString& path, const QByteArray& bytes, const QString& copies = RecoveryFolder::path());

/// Makes `folder`, parents included, for this user alone. Returns false if it is no folder of this user's
/// own then; a link to one is none.
bool makeOwnFolder(const QString& folder);

/// Puts `bytes` at `path` for this user alone, in a folder that `makeOwnFolder` makes. Whoever reads the
/// file, also after a crash, finds the old content or the new one; a link there is replaced itself. Returns
/// true only when all of it is on the disk.
bool saveForOwner(const QString& path, const QByteArray& bytes);

/// Whether a regular file of this user is at `path`; a link to one is none.
bool isOwnFile(const QString& path);

/// Puts `bytes` at `path`, readable by its owner alone. What was there is removed first, a link itself
/// and not what it leads to: what is old or somebody else's must not be found under that name when the
/// rest fails.
///
/// Returns false when that fails. Then nothing is at `path`, or something that this user can neither
/// replace nor remove: a folder, or another user's file or link in a shared folder like /tmp. QFileInfo
/// tells the two apart, by exists() and, for a link that leads nowhere, isSymLink(). Where something is
/// left, no document may be written that shows what is at `path`.
bool publish(const QString& path, const QByteArray& bytes);

} // namespace SafeFile
