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

/// The recovery file: a session as one JSON document. A project in it is the object that a project
/// file consists of; beside it stands what a project file does not keep: what makes an array of loads,
/// the screen that is being planned, and the bits of the numbers that JSON does not have. So every
/// number comes back as it was, to the bit. Results are not kept; they are calculated.
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

QByteArray toBytes(const RecoverySession& session);

/// The session in `bytes`. A member that is missing or of the wrong type counts as its default, as it
/// does in a project file.
Content fromBytes(const QByteArray& bytes);

/// Reads the file at `path` as `fromBytes` does. What is not this user's own file is not opened.
Content read(const QString& path);

/// Whether `a` and `b` are the same to the bit in all that is kept; the names of their tabs and the
/// results do not count. Lists that are shared are not gone through.
bool isSame(const ProjectState& a, const ProjectState& b);

/// Whether nobody has worked on `project`: it is as a new tab or a reset makes it. The screen that is
/// being planned does not count.
bool isUntouched(const ProjectState& project);

} // namespace RecoveryFile
