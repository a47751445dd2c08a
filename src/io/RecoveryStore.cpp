#include "io/RecoveryStore.h"

#include "io/RecoveryProject.h"
#include "io/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

using Failure = RecoveryFile::Failure;
using State = SessionFile::State;

namespace
{

constexpr int DAYS_KEPT = 30;
constexpr qint64 MOST_BYTES = 268'435'456;

bool isWorkedOn(const ProjectState& project)
{
    return !RecoveryProject::isUntouched(project);
}

bool hasWork(const RecoverySession& session)
{
    return !session.kept.isEmpty() || std::any_of(session.tabs.cbegin(), session.tabs.cend(), isWorkedOn);
}

RecoveryStore::Left read(const SessionFile& file)
{
    const RecoveryFile::Content content = RecoveryFile::read(file.path());
    return {file.path(), file.state(), content.failure, content.session};
}

QList<RecoveryStore::Left> readAll(const QString& folder, bool (*isWanted)(const SessionFile&))
{
    QList<RecoveryStore::Left> all;
    const QList<SessionFile> files = SessionFile::allIn(folder);
    for (const SessionFile& file : files) {
        if (!isWanted(file) || file.isInUse())
            continue;
        const RecoveryStore::Left left = read(file);
        if (left.failure != Failure::None || hasWork(left.session))
            all.append(left);
    }
    return all;
}

QString noticeOf(const RecoveryStore::Left& left)
{
    if (left.failure != Failure::None)
        return u"Hay trabajo sin cerrar que no se puede recuperar: detalles (F9)"_s;
    return u"Hay trabajo sin cerrar de "_s + left.session.time.toString(u"dd/MM/yyyy HH:mm"_s)
           + u": recuperar (F9)"_s;
}

/// Whether `file` holds a session. What cannot be read is nobody's to throw away.
bool isUnderstood(const SessionFile& file)
{
    return RecoveryFile::read(file.path()).failure == Failure::None;
}

/// Removes what a run that was killed while it wrote has left, when that is older than `limit`.
void removeUnfinished(const QString& folder, const QDateTime& limit)
{
    const QFileInfoList files = QDir(folder).entryInfoList({u".velmora-*"_s}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& file : files) {
        if (file.lastModified() < limit && SafeFile::isOwnFile(file.filePath()))
            QFile::remove(file.filePath());
    }
}

} // namespace

RecoveryStore::RecoveryStore(QString folder)
    : m_folder(std::move(folder))
{
}

QList<RecoveryStore::Left> RecoveryStore::left() const
{
    return readAll(m_folder, [](const SessionFile& /*file*/) { return true; });
}

QList<ProjectState> RecoveryStore::lastProjects(const QList<Left>& left)
{
    for (const Left& one : left) {
        QList<ProjectState> worked;
        std::copy_if(one.session.tabs.cbegin(), one.session.tabs.cend(), std::back_inserter(worked),
                     isWorkedOn);
        if (!worked.isEmpty())
            return worked;
    }
    return {};
}

std::optional<QString> RecoveryStore::notice() const
{
    const QList<Left> open =
        readAll(m_folder, [](const SessionFile& file) { return file.state() == State::Open; });
    const auto readable = std::find_if(open.cbegin(), open.cend(),
                                       [](const Left& one) { return one.failure == Failure::None; });
    if (open.isEmpty())
        return std::nullopt;
    return noticeOf(readable != open.cend() ? *readable : open.constFirst());
}

QString RecoveryStore::reason(Failure failure)
{
    switch (failure) {
    case Failure::None:
        break;
    case Failure::Unreadable:
        return u"No se pudo leer el archivo."_s;
    case Failure::NotOwn:
        return u"No es un archivo propio de este usuario."_s;
    case Failure::Damaged:
        return u"El archivo está dañado."_s;
    case Failure::Newer:
        return u"Lo escribió una versión posterior del programa."_s;
    }
    return {};
}

QList<SessionFile> RecoveryStore::ownFiles() const
{
    QList<SessionFile> files = SessionFile::allIn(m_folder);
    files.removeIf(
        [](const SessionFile& file) { return !SafeFile::isOwnFile(file.path()) || file.isInUse(); });
    return files;
}

void RecoveryStore::markSeen() const
{
    QList<SessionFile> files = ownFiles();
    for (SessionFile& file : files) {
        if (file.state() == State::Open && RecoveryFile::read(file.path()).failure != Failure::Newer)
            file.become(State::Seen);
    }
}

void RecoveryStore::removeOld(const QDateTime& now) const
{
    const QDateTime limit = now.addDays(-DAYS_KEPT);
    removeUnfinished(m_folder, limit);
    qint64 size = 0;
    QList<SessionFile> files = ownFiles();
    for (SessionFile& file : files) {
        size += file.size();
        const bool isOld = file.written() < limit;
        const bool isTooMuch = size > MOST_BYTES && file.state() == State::Ended;
        if (isTooMuch || (isOld && isUnderstood(file)))
            file.remove();
    }
}
