#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include <sys/stat.h>

/// What a POSIX system tells of a file; nothing where it does not.
namespace Posix
{

/// Extended attributes by name.
using Attributes = std::map<std::string, std::string>;

/// Of what is at `path`, a link itself included, or of the open file `descriptor`.
std::optional<struct stat> statusOf(const std::filesystem::path& path);
std::optional<struct stat> statusOf(int descriptor);

/// The extended attributes, in which access control lists and labels are kept too. A file system that
/// has none has no attributes.
std::optional<Attributes> attributesOf(const std::filesystem::path& path);

} // namespace Posix
