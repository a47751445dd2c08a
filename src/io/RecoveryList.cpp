#include "io/RecoveryList.h"

#include "io/ProjectFile.h"
#include "io/RecoveryProject.h"
#include "io/SafeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

bool isWorkedOn(const ProjectState& project)
{
    return !RecoveryProject::isUntouched(project);
}

QString wordsFor(KeptProject::Reason reason)
{
    switch (reason) {
    case KeptProject::Reason::Closed:
        return u"Pestaña cerrada"_s;
    case KeptProject::Reason::Reset:
        return u"Proyecto restaurado"_s;
    case KeptProject::Reason::Replaced:
        return u"Reemplazado al abrir un archivo"_s;
    case KeptProject::Reason::Overwritten:
        break;
    }
    return u"Sobrescrito al cerrar otra pestaña"_s;
}

RecoveryEntry entryOf(const KeptProject& kept)
{
    RecoveryEntry entry{kept.project, kept.time, wordsFor(kept.reason)};
    entry.project.selectedLoadId = -1;
    return entry;
}

RecoveryEntry entryOf(const ProjectState& tab, const RecoveryStore::Left& left, bool isChosen)
{
    const bool hasEnded = left.state == SessionFile::State::Ended;
    return {tab, left.session.time, hasEnded ? u"Abierto al cerrar el programa"_s : u"Sin cerrar"_s, true,
            isChosen};
}

RecoveryEntry unreadable(const RecoveryStore::Left& left)
{
    RecoveryEntry entry;
    entry.project.tabName = left.path;
    entry.time = QFileInfo(left.path).lastModified();
    entry.happened = RecoveryStore::reason(left.failure);
    entry.isReadable = false;
    return entry;
}

/// Those that were open, then those that were not any more.
QList<RecoveryEntry> entriesOf(const RecoveryStore::Left& left, bool areTabsChosen)
{
    if (left.failure != RecoveryFile::Failure::None)
        return {unreadable(left)};
    QList<RecoveryEntry> entries;
    for (const ProjectState& tab : left.session.tabs) {
        if (isWorkedOn(tab))
            entries.append(entryOf(tab, left, areTabsChosen));
    }
    for (const KeptProject& one : left.session.kept)
        entries.append(entryOf(one));
    return entries;
}

bool hadTabs(const RecoveryStore::Left& left)
{
    return std::any_of(left.session.tabs.cbegin(), left.session.tabs.cend(), isWorkedOn);
}

} // namespace

QList<RecoveryEntry> RecoveryList::of(const QList<KeptProject>& kept, const QList<RecoveryStore::Left>& left,
                                      RecoveryChoice choice)
{
    QList<RecoveryEntry> entries;
    for (const KeptProject& one : kept)
        entries.append(entryOf(one));
    const auto last = std::find_if(left.cbegin(), left.cend(), hadTabs);
    for (auto one = left.cbegin(); one != left.cend(); ++one) {
        const bool isChosen =
            choice == RecoveryChoice::Last ? one == last : one->state == SessionFile::State::Open;
        entries.append(entriesOf(*one, isChosen));
    }
    return entries;
}

QList<RecoveryEntry> RecoveryList::copiesIn(const QString& folder)
{
    static const QRegularExpression name(u"^(.+)\\.[0-9a-f]{1,16}$"_s);
    QList<RecoveryEntry> entries;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::Time);
    for (const QFileInfo& file : files) {
        const QRegularExpressionMatch match = name.match(file.fileName());
        if (!match.hasMatch() || !SafeFile::isOwnFile(file.filePath()))
            continue;
        const ProjectFile::Content content = ProjectFile::read(file.filePath());
        if (content.failure == ProjectFile::Failure::None) {
            entries.append({content.project, file.lastModified(),
                            u"Copia de «%1» de antes de guardar"_s.arg(match.captured(1))});
        }
    }
    return entries;
}

RecoveryList::Count RecoveryList::count(const QList<ActiveLoad>& loads)
{
    Count counted;
    QSet<int> groups;
    for (const ActiveLoad& load : loads) {
        if (Project::isArraySegment(load))
            groups.insert(load.groupId);
        else
            ++counted.loads;
    }
    counted.screens = groups.size();
    return counted;
}
