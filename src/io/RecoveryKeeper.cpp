#include "io/RecoveryKeeper.h"

#include "io/RecoveryProject.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <algorithm>
#include <map>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype MOST_KEPT = 20;
/// The kept projects take at most so much of the file; of larger ones the oldest go [bytes].
constexpr qsizetype MOST_KEPT_BYTES = 67'108'864;
/// A full disk is tried again after so many looks.
constexpr int PAUSE = 10;

} // namespace

/// Makes the document and writes it. The texts of what has not changed since are taken again.
class RecoveryKeeper::Writer
{
public: // construction
    Writer(const QString& folder, QString program)
        : m_file(SessionFile::fresh(folder))
        , m_program(std::move(program))
    {
    }

public: // queries
    [[nodiscard]] bool hasFile() const
    {
        return m_hasFile;
    }

public: // commands
    bool write(const Picture& picture)
    {
        const QByteArrayList tabs = tabTexts(picture.tabs);
        const QByteArray document = RecoveryFile::join(head(picture), tabs, keptTexts(picture.kept));
        const bool isWritten = document.size() <= RecoveryFile::LARGEST && m_file.write(document);
        m_hasFile = m_hasFile || isWritten;
        return isWritten;
    }

    void end(bool isWorth)
    {
        if (isWorth)
            m_file.become(SessionFile::State::Ended);
        else
            m_file.remove();
        m_file.leave();
    }

private: // helpers
    [[nodiscard]] RecoverySession head(const Picture& picture) const
    {
        RecoverySession session;
        session.program = m_program;
        session.process = QCoreApplication::applicationPid();
        session.boot = QString::fromLatin1(QSysInfo::bootUniqueId());
        session.time = QDateTime::currentDateTime();
        session.current = picture.current;
        return session;
    }

    QByteArrayList tabTexts(const QList<ProjectState>& tabs)
    {
        QByteArrayList texts;
        for (const ProjectState& tab : tabs) {
            const auto known = std::find_if(m_tabs.cbegin(), m_tabs.cend(), [&tab](const auto& one) {
                return one.first.tabName == tab.tabName && RecoveryProject::isSame(one.first, tab);
            });
            texts.append(known != m_tabs.cend() ? known->second : RecoveryFile::textOf(tab));
        }
        m_tabs.clear();
        for (qsizetype i = 0; i < tabs.size(); ++i)
            m_tabs.append({tabs.at(i), texts.at(i)});
        return texts;
    }

    QByteArrayList keptTexts(const QList<Kept>& kept)
    {
        std::map<quint64, QByteArray> texts;
        QByteArrayList fitting;
        qsizetype size = 0;
        for (const Kept& one : kept) {
            const auto known = m_kept.find(one.serial);
            const QByteArray text = known != m_kept.end() ? known->second : RecoveryFile::textOf(one.project);
            texts.emplace(one.serial, text);
            size += text.size();
            if (size <= MOST_KEPT_BYTES)
                fitting.append(text);
        }
        m_kept = std::move(texts);
        return fitting;
    }

private: // data
    SessionFile m_file;
    QString m_program;
    bool m_hasFile = false;
    QList<std::pair<ProjectState, QByteArray>> m_tabs;
    std::map<quint64, QByteArray> m_kept; ///< by serial
};

RecoveryKeeper::RecoveryKeeper(const QString& folder, const QString& program)
    : m_writer(std::make_unique<Writer>(folder, program))
{
    m_thread.setMaxThreadCount(1);
}

RecoveryKeeper::~RecoveryKeeper()
{
    m_thread.waitForDone();
}

QList<KeptProject> RecoveryKeeper::kept() const
{
    QList<KeptProject> projects;
    for (const Kept& one : m_kept)
        projects.append(one.project);
    return projects;
}

bool RecoveryKeeper::isSame(const Picture& a, const Picture& b)
{
    const auto isSameTab = [](const ProjectState& one, const ProjectState& other) {
        return one.tabName == other.tabName && RecoveryProject::isSame(one, other);
    };
    const auto isSameKept = [](const Kept& one, const Kept& other) { return one.serial == other.serial; };
    return a.current == b.current
           && std::equal(a.kept.cbegin(), a.kept.cend(), b.kept.cbegin(), b.kept.cend(), isSameKept)
           && std::equal(a.tabs.cbegin(), a.tabs.cend(), b.tabs.cbegin(), b.tabs.cend(), isSameTab);
}

bool RecoveryKeeper::hasWork(const Picture& picture) const
{
    return !picture.kept.isEmpty()
           || !std::all_of(picture.tabs.cbegin(), picture.tabs.cend(), RecoveryProject::isUntouched);
}

/// Once there is a file it follows also a user who takes all work back.
bool RecoveryKeeper::isDue(const Picture& picture) const
{
    if (m_last && m_outcome == Outcome::Written && isSame(*m_last, picture))
        return false;
    return m_last || hasWork(picture);
}

void RecoveryKeeper::begin(const Picture& picture)
{
    m_last = picture;
    m_outcome = Outcome::Writing;
    m_thread.start([this, picture] {
        m_hasFailed = !m_writer->write(picture);
        m_outcome = m_hasFailed ? Outcome::Failed : Outcome::Written;
    });
}

void RecoveryKeeper::look(const QList<ProjectState>& tabs, int current)
{
    if (m_outcome == Outcome::Writing)
        return;
    if (m_outcome == Outcome::Failed && ++m_pause < PAUSE)
        return;
    m_pause = 0;
    const Picture picture{tabs, current, m_kept};
    if (isDue(picture))
        begin(picture);
}

void RecoveryKeeper::keep(const ProjectState& project, KeptProject::Reason reason)
{
    if (RecoveryProject::isUntouched(project))
        return;
    m_kept.removeIf([&project](const Kept& one) {
        return one.project.project.tabName == project.tabName
               && RecoveryProject::isSame(one.project.project, project);
    });
    m_kept.prepend({m_nextSerial++, {project, QDateTime::currentDateTime(), reason}});
    if (m_kept.size() > MOST_KEPT)
        m_kept.removeLast();
}

bool RecoveryKeeper::save(const QList<ProjectState>& tabs, int current)
{
    m_thread.waitForDone();
    const Picture picture{tabs, current, m_kept};
    if (isDue(picture))
        begin(picture);
    m_thread.waitForDone();
    return m_outcome == Outcome::Written;
}

void RecoveryKeeper::end()
{
    m_thread.waitForDone();
    if (m_last)
        m_writer->end(hasWork(*m_last));
}
