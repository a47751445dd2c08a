#include "io/SessionFile.h"

#include "io/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// In the order of `SessionFile::State`.
const std::array<QString, 3> STATE_WORDS{u"abierta"_s, u"vista"_s, u"cerrada"_s};

SessionFile::State stateOf(const QString& word)
{
    const auto* found = std::find(STATE_WORDS.begin(), STATE_WORDS.end(), word);
    return static_cast<SessionFile::State>(found - STATE_WORDS.begin());
}

} // namespace

SessionFile::SessionFile(QString folder, QString id, State state)
    : m_folder(std::move(folder))
    , m_id(std::move(id))
    , m_state(state)
{
}

SessionFile SessionFile::fresh(const QString& folder)
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return {folder, u"%1"_s.arg(number, 16, 16, QChar(u'0')), State::Open};
}

QList<SessionFile> SessionFile::allIn(const QString& folder)
{
    const QStringList names = QDir(folder).entryList(
        {u"sesion-*.json"_s}, QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Time);
    static const QRegularExpression own(u"^sesion-([0-9a-f]{16})\\.(abierta|vista|cerrada)\\.json$"_s);
    QList<SessionFile> files;
    for (const QString& name : names) {
        const QRegularExpressionMatch match = own.match(name);
        if (match.hasMatch())
            files.append(SessionFile(folder, match.captured(1), stateOf(match.captured(2))));
    }
    return files;
}

QString SessionFile::path() const
{
    const QString& word = STATE_WORDS.at(static_cast<std::size_t>(m_state));
    return m_folder + u"/sesion-"_s + m_id + u'.' + word + u".json"_s;
}

QString SessionFile::lockPath() const
{
    return m_folder + u"/sesion-"_s + m_id + u".lock"_s;
}

QDateTime SessionFile::written() const
{
    return QFileInfo(path()).lastModified();
}

qint64 SessionFile::size() const
{
    return QFileInfo(path()).size();
}

// Where a lock cannot be made, nobody writes either.
bool SessionFile::isInUse() const
{
    if (!QFileInfo::exists(lockPath()))
        return false;
    QLockFile lock(lockPath());
    lock.setStaleLockTime(0); // a lock does not grow old by itself: a window may be open for weeks
    return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
}

// The lock goes with the folder when somebody empties it.
bool SessionFile::lock()
{
    if (m_lock && QFileInfo::exists(lockPath()))
        return true;
    m_lock = std::make_shared<QLockFile>(lockPath());
    m_lock->setStaleLockTime(0);
    const bool isLocked = SafeFile::makeOwnFolder(m_folder) && m_lock->tryLock(0)
                          && QFile::setPermissions(lockPath(), QFile::ReadOwner | QFile::WriteOwner);
    if (!isLocked)
        m_lock.reset();
    return isLocked;
}

bool SessionFile::write(const QByteArray& bytes)
{
    return lock() && SafeFile::saveForOwner(path(), bytes);
}

void SessionFile::leave()
{
    m_lock.reset();
}

bool SessionFile::become(State state)
{
    const QString before = path();
    const State old = std::exchange(m_state, state);
    if (QFile::rename(before, path()))
        return true;
    m_state = old;
    return false;
}

void SessionFile::remove()
{
    QFile::remove(path());
}
