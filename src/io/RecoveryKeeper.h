#pragma once

#include "io/RecoveryFile.h"
#include "io/SessionFile.h"

#include <QThreadPool>

#include <atomic>
#include <memory>
#include <optional>

/// Keeps the work of this run in its recovery file. Whoever has the projects shows them every now and
/// then; what has changed is written by a thread of its own, so that nobody waits for a disk. Before
/// somebody has worked on a project there is no file.
class RecoveryKeeper
{
public: // construction
    /// For `folder`, which is made when it is needed; `program` is the program's version.
    RecoveryKeeper(const QString& folder, const QString& program);
    /// Waits for what is being written. The file stays, as after a crash.
    ~RecoveryKeeper();
    RecoveryKeeper(const RecoveryKeeper&) = delete;
    RecoveryKeeper& operator=(const RecoveryKeeper&) = delete;

public: // queries
    /// What is not open any more, newest first; at most 20.
    [[nodiscard]] QList<KeptProject> kept() const;
    /// Whether the last attempt to write failed.
    [[nodiscard]] bool hasFailed() const
    {
        return m_hasFailed;
    }

public: // commands
    /// Looks at the open projects and begins to write them if they are not what was written last, in
    /// at most so much time as it takes to compare them. While something is being written, and for some
    /// calls after a failure, it does nothing.
    void look(const QList<ProjectState>& tabs, int current);
    /// Keeps `project` besides, which is about to vanish from its tab for `reason`, unless nobody has
    /// worked on it.
    void keep(const ProjectState& project, KeptProject::Reason reason);
    /// As `look`, but waits; returns whether everything is on the disk.
    bool save(const QList<ProjectState>& tabs, int current);
    /// The run ends as usual, everything is saved.
    void end();

private: // nested types
    enum class Outcome
    {
        Written,
        Writing,
        Failed,
    };

    struct Kept
    {
        quint64 serial; ///< tells it from all others
        KeptProject project;
    };

    struct Picture
    {
        QList<ProjectState> tabs;
        int current = 0;
        QList<Kept> kept;
    };

    class Writer;

private: // helpers
    [[nodiscard]] static bool isSame(const Picture& a, const Picture& b);
    [[nodiscard]] bool hasWork(const Picture& picture) const;
    [[nodiscard]] bool isDue(const Picture& picture) const;
    void begin(const Picture& picture);

private: // data
    QList<Kept> m_kept;
    quint64 m_nextSerial = 0;
    std::optional<Picture> m_last; ///< that was given to the writer
    int m_pause = 0;               ///< so many calls of `look` do nothing after a failure
    std::atomic<Outcome> m_outcome = Outcome::Written;
    std::atomic<bool> m_hasFailed = false; ///< also while it is tried again
    std::unique_ptr<Writer> m_writer;      ///< belongs to the thread while that writes
    QThreadPool m_thread;
};
