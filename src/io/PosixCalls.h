#pragma once

#include <cerrno>

namespace Posix
{

/// What `call` returns, called again for as long as a signal interrupts it.
template <typename Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace Posix
