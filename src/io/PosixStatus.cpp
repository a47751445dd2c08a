#include "io/PosixStatus.h"

#include <QtGlobal>

#include <cerrno>

#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

using Posix::Attributes;
using Path = std::filesystem::path;

std::optional<struct stat> Posix::statusOf(const Path& path)
{
    struct stat status
    {
    };
    return lstat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::optional<struct stat> Posix::statusOf(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 ? std::optional(status) : std::nullopt;
}

#ifdef Q_OS_LINUX
namespace
{

std::optional<std::string> attributeOf(const Path& path, const char* name)
{
    const ssize_t size = lgetxattr(path.c_str(), name, nullptr, 0);
    if (size == -1)
        return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    const bool isRead = lgetxattr(path.c_str(), name, value.data(), value.size()) == size;
    return isRead ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<Attributes> Posix::attributesOf(const Path& path)
{
    const ssize_t size = llistxattr(path.c_str(), nullptr, 0);
    if (size == -1)
        return errno == ENOTSUP ? std::optional(Attributes()) : std::nullopt;
    std::string names(static_cast<std::size_t>(size), '\0'); // each ends with a zero
    bool areKnown = llistxattr(path.c_str(), names.data(), names.size()) == size;

    Attributes attributes;
    for (std::size_t at = 0; areKnown && at < names.size(); at = names.find('\0', at) + 1) {
        const std::optional<std::string> value = attributeOf(path, &names[at]);
        areKnown = value.has_value();
        attributes.emplace(&names[at], value.value_or(std::string()));
    }
    return areKnown ? std::optional(attributes) : std::nullopt;
}
#else
std::optional<Attributes> Posix::attributesOf(const Path& /*path*/)
{
    return Attributes();
}
#endif
