#include "io/PosixPipe.h"

#include "io/PosixCalls.h"
#include "io/PosixStatus.h"

#include <algorithm>
#include <array>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using Posix::Path;
using Posix::uninterrupted;

namespace
{

constexpr std::size_t CHUNK = 65'536; // [bytes]

bool isRegularOrPipe(const std::optional<struct stat>& status)
{
    return status && (S_ISREG(status->st_mode) || S_ISFIFO(status->st_mode));
}

/// Looks before, because opening some devices does something, and after, because what was looked at may
/// have been replaced. Opening a pipe does not wait for those who write into it.
int openInflow(const Path& path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::is_regular_file(status) && !std::filesystem::is_fifo(status))
        return Posix::OpenFile::NONE;
    const int descriptor =
        uninterrupted([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
    if (isRegularOrPipe(Posix::statusOf(descriptor)))
        return descriptor;
    close(descriptor); // if it was opened
    return Posix::OpenFile::NONE;
}

class Inflow : public Posix::OpenFile
{
public:
    explicit Inflow(const Path& path)
        : OpenFile(openInflow(path))
    {
    }

    /// Whether the next bytes, or the end, came within `patience` [ms].
    [[nodiscard]] bool hasMore(int patience) const
    {
        pollfd waiting{descriptor(), POLLIN, 0};
        return uninterrupted([&] { return poll(&waiting, 1, patience); }) == 1;
    }

    /// The number of bytes, at most `room`, that were put into `chunk`: 0 at the end, -1 after a failure.
    [[nodiscard]] ssize_t take(char* chunk, std::size_t room) const
    {
        return uninterrupted([&] { return ::read(descriptor(), chunk, room); });
    }
};

} // namespace

std::optional<QByteArray> Posix::readOnce(const Path& path, qint64 most, int patience)
{
    const Inflow inflow(path);
    if (!inflow.isOpen()) // poll() would wait all the same
        return std::nullopt;
    QByteArray bytes;
    std::array<char, CHUNK> chunk{};
    while (bytes.size() < most) {
        const std::size_t room = std::min(chunk.size(), static_cast<std::size_t>(most - bytes.size()));
        const ssize_t got = inflow.hasMore(patience) ? inflow.take(chunk.data(), room) : -1;
        if (got == -1)
            return std::nullopt;
        if (got == 0)
            break;
        bytes.append(chunk.data(), got);
    }
    return bytes;
}
