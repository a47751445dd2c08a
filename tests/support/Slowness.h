#pragma once

#include <QtGlobal>

#include <algorithm>
#include <ctime>

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

/// Processor time since it was made: what else the machine does is not in it.
class CpuTimer
{
public: // queries
    /// [ms]
    [[nodiscard]] qint64 elapsed() const
    {
        return static_cast<qint64>(1000.0 * static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC);
    }

private: // data
    std::clock_t m_start = std::clock();
};

} // namespace Support
