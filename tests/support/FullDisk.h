#pragma once

#include <csignal>

#include <sys/resource.h>

namespace Support
{

/// Like a disk that fills up: no file of this process may grow beyond `size` [bytes] meanwhile.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size = 10)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit tight = m_before;
        tight.rlim_cur = size;
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

} // namespace Support
