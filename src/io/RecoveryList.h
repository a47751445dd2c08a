#pragma once

#include "io/RecoveryStore.h"

/// Something that the user may bring back.
struct RecoveryEntry
{
    ProjectState project; ///< nothing is selected in it
    QDateTime time;       ///< when it was last there
    QString happened;     ///< what became of it, or why it cannot come back
    bool isReadable = true;
    bool isChosen = false;
};

/// Which entries are chosen before the user chooses.
enum class RecoveryChoice
{
    Unclosed, ///< what was open in sessions that did not end as usual, until it was seen
    Last,     ///< what was open in the last session
};

/// What there is to bring back, in the order and the words in which the user reads it.
namespace RecoveryList
{

/// The projects `kept` of this session, then those of what is `left`, newest first. Projects that nobody
/// worked on are left out; a file that cannot be read is an entry named by its path.
QList<RecoveryEntry> of(const QList<KeptProject>& kept, const QList<RecoveryStore::Left>& left,
                        RecoveryChoice choice);

/// What project files held before they were written in place, where that was never finished: the copies that
/// `SafeFile::save` has left in `folder`. Newest first; nothing of them is chosen.
QList<RecoveryEntry> copiesIn(const QString& folder);

/// The loads that hang by themselves, and the screens, each of which is one however many segments it has.
struct Count
{
    qsizetype loads = 0;
    qsizetype screens = 0;
};
/// What `loads` are, an array counting as one screen.
Count count(const QList<ActiveLoad>& loads);

} // namespace RecoveryList
