#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

class QSocketNotifier;

/// Ends the program from its event loop when the system asks it to: by SIGTERM, SIGHUP or SIGINT. Where
/// one of them is ignored when the program starts, as under nohup, it stays so. A second one ends the
/// program at once. Systems without POSIX have nothing of this.
class EndSignals
{
public: // construction
    /// `act` is called once, from the event loop of this thread; there is one such object at a time.
    explicit EndSignals(std::function<void()> act);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

public: // queries
    /// Whether `act` was called.
    [[nodiscard]] bool haveCome() const
    {
        return m_haveCome;
    }

private: // helpers
    void come();

private: // data
    std::function<void()> m_act;
    bool m_haveCome = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
