#pragma once

#include <QtGlobal>

#include <algorithm>

namespace Support
{

/// How many times slower programs are under the tool that runs the test, as that says in
/// VELMORA_SLOWNESS; 1 when nothing is said.
inline int toolSlowness()
{
    return std::max(1, qEnvironmentVariableIntValue("VELMORA_SLOWNESS"));
}

/// What a time limit is multiplied by: more in builds that are made for finding errors, not for speed,
/// and more again under a slow tool.
inline int slowness()
{
#if defined(__SANITIZE_ADDRESS__)
    constexpr int BUILD = 10;
#elif !defined(NDEBUG)
    constexpr int BUILD = 4;
#else
    constexpr int BUILD = 1;
#endif
    return BUILD * toolSlowness();
}

} // namespace Support
