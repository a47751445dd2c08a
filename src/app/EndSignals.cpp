#include "app/EndSignals.h"

#include <QSocketNotifier>

#include <array>
#include <utility>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr std::array SIGNALS{SIGTERM, SIGHUP, SIGINT};

/// A handler may do nothing but write into it: reading end, writing end.
std::array<int, 2> pipeEnds{-1, -1};

extern "C" void noteSignal(int /*signal*/)
{
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
    errno = error;
}

void handle(int signal)
{
    struct sigaction before
    {
    };
    if (sigaction(signal, nullptr, &before) != 0 || before.sa_handler == SIG_IGN)
        return;
    struct sigaction action
    {
    };
    action.sa_handler = noteSignal;
    action.sa_flags = static_cast<int>(SA_RESTART | static_cast<int>(SA_RESETHAND));
    sigaction(signal, &action, nullptr);
}

void stopHandling(int signal)
{
    struct sigaction now
    {
    };
    if (sigaction(signal, nullptr, &now) == 0 && now.sa_handler == noteSignal)
        std::signal(signal, SIG_DFL);
}

bool openPipe()
{
    if (pipe(pipeEnds.data()) != 0)
        return false;
    for (const int end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

} // namespace

EndSignals::EndSignals(std::function<void()> act)
    : m_act(std::move(act))
{
    if (!openPipe())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { come(); });
    for (const int signal : SIGNALS)
        handle(signal);
}

EndSignals::~EndSignals()
{
    for (const int signal : SIGNALS)
        stopHandling(signal);
    m_notifier.reset();
    for (int& end : pipeEnds)
        close(std::exchange(end, -1));
}
#else
EndSignals::EndSignals(std::function<void()> act)
    : m_act(std::move(act))
{
}

EndSignals::~EndSignals() = default;
#endif

void EndSignals::come()
{
    if (std::exchange(m_haveCome, true))
        return;
    m_act();
}
