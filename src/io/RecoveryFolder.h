#pragma once

#include <QString>

/// The user's folder for what would be lost otherwise.
namespace RecoveryFolder
{

/// Its path. Whoever puts something there makes the folder, for this user alone.
QString path();

} // namespace RecoveryFolder
