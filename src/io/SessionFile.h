#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

class QLockFile;

/// The recovery file of one run of the program. Its name tells how that run ended; beside it lies, while
/// the run goes on, a lock with its process and the computer's boot, which does not outlive them: the
/// lock of a process that is gone counts for nothing.
class SessionFile
{
public: // nested types
    enum class State
    {
        Open,  ///< of a run that goes on, or did not end as usual
        Seen,  ///< the same, after the user was shown what there is
        Ended, ///< of a run that ended as usual
    };

public: // construction
    /// A file that is not there yet, for the run of this process.
    static SessionFile fresh(const QString& folder);
    /// All that are in `folder`, of this run and others, newest first.
    static QList<SessionFile> allIn(const QString& folder);

public: // queries
    /// Where it is, and how its session ended.
    [[nodiscard]] QString path() const;
    [[nodiscard]] State state() const
    {
        return m_state;
    }
    /// When it was last written.
    [[nodiscard]] QDateTime written() const;
    [[nodiscard]] qint64 size() const;
    /// Whether its run goes on, here or on another computer that shares the folder.
    [[nodiscard]] bool isInUse() const;

public: // commands, for the run that it belongs to
    /// Writes the file, of at most its owner's reading, all of it or nothing, after the lock. Returns
    /// whether it is on the disk.
    bool write(const QByteArray& bytes);
    /// Gives back the lock.
    void leave();

public: // commands, for a file that is not in use
    /// Renames it to its new state, or takes it away.
    bool become(State state);
    void remove();

private:
    SessionFile(QString folder, QString id, State state);
    [[nodiscard]] QString lockPath() const;
    [[nodiscard]] bool lock();

    QString m_folder;
    QString m_id;
    State m_state;
    std::shared_ptr<QLockFile> m_lock; ///< while this process holds it
};
