#pragma once

#include "io/PosixFile.h"

namespace Posix
{

/// What is in the regular file or the pipe at `path`, at most `most` [bytes]; of a pipe it is taken. Waits
/// for those who write into the pipe; nothing when no byte comes for `patience` [ms], or when reading fails.
/// Nothing else is opened: some devices do something then, and a terminal would be waited for.
std::optional<QByteArray> readOnce(const Path& path, qint64 most, int patience);

} // namespace Posix
