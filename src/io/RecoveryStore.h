#pragma once

#include "io/RecoveryFile.h"
#include "io/RecoveryFolder.h"
#include "io/SessionFile.h"

#include <optional>

/// What earlier runs of the program left in the recovery folder. Files of runs that go on are not
/// touched, nor are those that cannot be understood: they are named with the reason.
class RecoveryStore
{
public: // nested types
    struct Left
    {
        QString path;
        SessionFile::State state = SessionFile::State::Ended;
        RecoveryFile::Failure failure = RecoveryFile::Failure::None;
        RecoverySession session; ///< the defaults after a failure
    };

public: // construction
    /// Of what lies in `folder`, which need not be there yet.
    explicit RecoveryStore(QString folder = RecoveryFolder::path());

public: // queries
    /// Everything that is left, the newest first, but for the sessions in which nobody worked.
    [[nodiscard]] QList<Left> left() const;
    /// The projects that were open in the newest session of `left` that can be read, and that somebody
    /// worked on.
    [[nodiscard]] static QList<ProjectState> lastProjects(const QList<Left>& left);
    /// The sentence about work of a run that did not end as usual, until it was seen; nothing if there is
    /// none.
    [[nodiscard]] std::optional<QString> notice() const;
    /// Why a file cannot be read, for the user.
    [[nodiscard]] static QString reason(RecoveryFile::Failure failure);

public: // commands
    /// The user was shown everything that is left. What a later version of the program wrote is for that to
    /// tell.
    void markSeen() const;
    /// Removes what was written more than 30 days before `now`, and of the sessions that ended as usual
    /// the oldest where all files take more than 256 MiB. One that cannot be understood is never too old.
    void removeOld(const QDateTime& now = QDateTime::currentDateTime()) const;

private: // helpers
    /// The files of this user of runs that do not go on, newest first.
    [[nodiscard]] QList<SessionFile> ownFiles() const;

private: // data
    QString m_folder;
};
