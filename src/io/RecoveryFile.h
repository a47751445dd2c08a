#pragma once

#include "engine/Project.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QDateTime>
#include <QList>
#include <QString>

/// A project that is not open any more.
struct KeptProject
{
    enum class Reason
    {
        Closed,      ///< its tab was closed
        Reset,       ///< the user started over
        Replaced,    ///< a file was opened in its tab
        Overwritten, ///< by another project, when a tab was closed
    };

    ProjectState project; ///< `tabName` is the text of its tab
    QDateTime time;       ///< when that happened
    Reason reason = Reason::Closed;
};

/// What one run of the program had open, and what of its work was not open any more.
struct RecoverySession
{
    QString program; ///< its version
    qint64 process = 0;
    QString boot;   ///< the computer's run from one start to the next
    QDateTime time; ///< when this was written
    int current = 0;
    QList<ProjectState> tabs; ///< in their order; `tabName` is the text of the tab
    QList<KeptProject> kept;  ///< newest first
};

/// The recovery file: a session as one JSON document.
namespace RecoveryFile
{

/// Of the format; grows when older programs would misread it.
constexpr int VERSION = 1;
/// No larger file is written or read [bytes].
constexpr qint64 LARGEST = 268'435'456;

enum class Failure
{
    None,
    Unreadable, ///< no permission, a failing disk
    NotOwn,     ///< a link, somebody else's, or no file at all
    Damaged,    ///< no recovery file, or not all of one
    Newer,      ///< written by a later version of the program
};

struct Content
{
    Failure failure = Failure::None;
    RecoverySession session; ///< the defaults after a failure
};

/// The document in parts, so that what has not changed need not be written anew: one text for each tab
/// and each kept project, and what joins them.
QByteArray textOf(const ProjectState& project);
QByteArray textOf(const KeptProject& kept);
/// The document of `session`, whose lists do not count: `tabs` and `kept` are the texts of what is in them.
QByteArray join(const RecoverySession& session, const QByteArrayList& tabs, const QByteArrayList& kept);

/// The document of `session`, lists included.
QByteArray toBytes(const RecoverySession& session);

/// The session in `bytes`. A member that is missing or of the wrong type counts as its default, as it
/// does in a project file.
Content fromBytes(const QByteArray& bytes);

/// Reads the file at `path` as `fromBytes` does. What is not this user's own file is not opened.
Content read(const QString& path);

} // namespace RecoveryFile
