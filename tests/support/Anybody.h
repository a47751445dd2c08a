#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace Support
{

/// Nothing is forbidden to root: while this lives, root is nobody in particular.
class Anybody
{
public:
    Anybody()
    {
        if (geteuid() == 0)
            m_left = seteuid(NOBODY) == 0;
    }
    ~Anybody()
    {
        if (m_left && seteuid(0) != 0)
            qFatal("cannot become root again");
    }
    Anybody(const Anybody&) = delete;
    Anybody& operator=(const Anybody&) = delete;

private:
    static constexpr uid_t NOBODY = 65534;
    bool m_left = false;
};

} // namespace Support
