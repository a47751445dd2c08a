#include "app/Appearance.h"
#include "engine/Statics.h"
#include "io/ProjectFile.h"
#include "io/RecoveryProject.h"
#include "io/RecoveryStore.h"
#include "ui/MainWindow.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <random>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

// Kills windows amid random work and looks at what comes back, for tools/kill-session.sh:
//     session TIMES SEED          two windows over one recovery folder at a time, so many kills in all
//     session --full TIMES SEED   the same where the disk has no room for more than the beginning
//     session --work FOLDER JOURNAL SEED
//                                 one window that works until it is killed
//
// A window writes a line into its journal after each event: the time, whether anybody has worked, and
// a hash of all tabs, of what is kept besides, and of the figures that it shows.

namespace
{

/// Older states than this must not come back [ms].
constexpr qint64 LONGEST_LOSS = 1000;
constexpr rlim_t SMALL_DISK = 5000; // [bytes] for each file

qint64 now() // [ms], the same clock in every process
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

/// Of everything that has to come back. `solved` has the figures of the current tab.
QByteArray hashOf(RecoverySession session, const ProjectState& solved)
{
    session = {{}, 0, {}, {}, session.current, session.tabs, session.kept};
    for (KeptProject& kept : session.kept)
        kept.time = {};
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(RecoveryFile::toBytes(session));
    const auto add = [&hash](float value) {
        hash.addData(QByteArrayView(reinterpret_cast<const char*>(&value), sizeof value));
    };
    add(solved.trussStressPercentage);
    for (const Motor& motor : solved.motors) {
        add(motor.staticLoad);
        add(motor.totalLoad);
    }
    return hash.result().toHex();
}

// The window that is killed

class Worker
{
public: // construction
    Worker(const QString& folder, const QString& journal, std::uint32_t seed)
        : m_random(seed)
        , m_project(journal + u".rig"_s)
        , m_journal(journal)
    {
        if (!m_journal.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            qFatal("no journal");
        m_window.show();
        m_window.keepRecovery(folder);
        note();
        listEvents();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { step(); });
        m_timer.start(0);
    }

private: // helpers
    int random(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<std::uint32_t>(high - low + 1));
    }

    void step()
    {
        m_timer.stop(); // dialogs have event loops of their own
        m_events.at(static_cast<std::size_t>(random(0, static_cast<int>(m_events.size()) - 1)))();
        note();
        m_timer.start(random(0, 3) == 0 ? random(50, 900) : random(0, 30));
    }

    void note()
    {
        RecoverySession session;
        session.tabs = m_window.openProjects();
        session.current = m_window.currentProjectIndex;
        session.kept = m_window.keptProjects();
        const bool isWorkedOn =
            !session.kept.isEmpty()
            || !std::all_of(session.tabs.cbegin(), session.tabs.cend(), RecoveryProject::isUntouched);
        const ProjectState shown = session.tabs.value(session.current);
        m_journal.write(QByteArray::number(now()) + (isWorkedOn ? " 1 " : " 0 ") + hashOf(session, shown)
                        + '\n');
    }

    void type(const char* name, const QString& text)
    {
        m_window.findChild<QLineEdit*>(QLatin1StringView(name))->setText(text);
    }

    void reset()
    {
        QTimer::singleShot(0, &m_window, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Yes)->click();
        });
        m_window.onResetProjectClicked();
    }

    /// A load, a screen's segment or a motor goes somewhere else, as at a step of a drag.
    void drag()
    {
        m_window.aboutToEdit();
        const float x = static_cast<float>(random(0, 1200)) / 100.0F;
        if (!LoadLogic::ActiveLoads.isEmpty())
            LoadLogic::ActiveLoads[random(0, static_cast<int>(LoadLogic::ActiveLoads.size()) - 1)].positionX =
                x;
        m_window.edited();
    }

    void open()
    {
        if (random(0, 1) == 0)
            ProjectFile::write(m_project, m_window.captureCurrentState());
        else if (QFile::exists(m_project))
            m_window.openProjectFile(m_project);
    }

    void listEvents()
    {
        auto* tabs = m_window.findChild<QTabBar*>();
        const auto anyTab = [this, tabs] { return random(0, tabs->count() - 1); };
        m_events = {
            [this] { m_window.onAddMotorClicked(); },
            [this] { m_window.onAddLoadClicked(); },
            [this] { m_window.onAddLEDLoadClicked(); },
            [this] { drag(); },
            [this] { drag(); },
            [this] { drag(); },
            [this] { type("trussLength", QString::number(random(60, 240) / 10.0)); },
            [this] { type("newLoadMass", QString::number(random(1, 9000) / 7.0)); },
            [this] { type("newLoadName", u"Nombre "_s + QString::number(random(1, 99))); },
            [this] { type("screenHeight", QString::number(random(10, 60) / 10.0)); },
            [this] { m_window.undo(); },
            [this, tabs] {
                if (tabs->count() < 6)
                    m_window.onAddTab();
            },
            [this, anyTab] { m_window.onCloseTab(anyTab()); },
            [tabs, anyTab] { tabs->setCurrentIndex(anyTab()); },
            [tabs, anyTab] { tabs->moveTab(anyTab(), anyTab()); },
            [this, tabs, anyTab] {
                tabs->setTabText(anyTab(), u"Título «ñ» "_s + QString::number(random(1, 99)));
            },
            [this] { reset(); },
            [this] { open(); },
        };
    }

private: // data
    std::mt19937 m_random;
    QString m_project;
    QFile m_journal;
    MainWindow m_window;
    QTimer m_timer;
    std::vector<std::function<void()>> m_events;
};

int work(const QStringList& arguments, int& argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(u"default.warning=false"_s); // of folders that a desktop session has
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    const Worker worker(arguments.at(2), arguments.at(3), arguments.at(4).toUInt());
    return QApplication::exec();
}

// The one that kills it

struct State
{
    qint64 since = 0; // [ms]
    bool isWorkedOn = false;
    QByteArray hash;
};

QList<State> statesOf(const QString& journal)
{
    QFile file(journal);
    QList<State> states;
    if (!file.open(QIODevice::ReadOnly))
        return states;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 3)
            states.append({words.at(0).toLongLong(), words.at(1) == "1", words.at(2)});
    }
    return states;
}

/// The hash of what the process with this id left, empty if that is nothing; what cannot be read is told.
QByteArray recovered(const QString& folder, qint64 process)
{
    const QList<RecoveryStore::Left> left = RecoveryStore(folder).left();
    for (const RecoveryStore::Left& one : left) {
        if (one.failure != RecoveryFile::Failure::None)
            return "unreadable";
        if (one.session.process != process)
            continue;
        QFile::remove(one.path);
        return hashOf(one.session, Statics::solved(one.session.tabs.value(one.session.current)));
    }
    return {};
}

/// For how long the state `index` had been replaced by another when the window was killed [ms].
qint64 lossOf(const QList<State>& states, qsizetype index, qint64 killed)
{
    return index + 1 < states.size() ? qMax<qint64>(0, killed - states.at(index + 1).since) : 0;
}

/// The loss of what came back, or -1 if that never was [ms].
qint64 lossOf(const QList<State>& states, const QByteArray& hash, qint64 killed)
{
    for (qsizetype i = states.size() - 1; i >= 0; --i) {
        if (hash.isEmpty() ? !states.at(i).isWorkedOn : states.at(i).hash == hash)
            return lossOf(states, i, killed);
    }
    return -1;
}

struct Outcome
{
    int kills = 0;
    int empty = 0;      ///< so many had nothing to bring back
    qint64 longest = 0; ///< loss [ms]
    bool hasFailed = false;
};

class Trial
{
public: // construction
    Trial(const QString& folder, std::uint32_t seed, bool isDiskFull)
        : m_folder(folder)
        , m_journal(folder + u"/journal"_s + QString::number(seed))
        , m_isDiskFull(isDiskFull)
    {
        if (isDiskFull)
            m_process.setChildProcessModifier([] {
                rlimit limit{SMALL_DISK, SMALL_DISK};
                setrlimit(RLIMIT_FSIZE, &limit);
                std::signal(SIGXFSZ, SIG_IGN);
            });
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(),
                        {u"--work"_s, folder + u"/r"_s, m_journal, QString::number(seed)});
        m_process.waitForStarted();
        m_id = m_process.processId();
    }

public: // commands
    void waitUntilItWorks()
    {
        while (statesOf(m_journal).isEmpty() && m_process.state() == QProcess::Running)
            QThread::msleep(5);
    }
    void kill()
    {
        m_killed = now();
        m_process.kill();
        m_process.waitForFinished();
    }
    void judge(Outcome& outcome)
    {
        const QList<State> states = statesOf(m_journal);
        const QByteArray hash = recovered(m_folder + u"/r"_s, m_id);
        const qint64 loss = lossOf(states, hash, m_killed);
        ++outcome.kills;
        outcome.empty += hash.isEmpty() ? 1 : 0;
        outcome.longest = qMax(outcome.longest, loss);
        const bool isLate = !m_isDiskFull && loss > LONGEST_LOSS;
        if (loss < 0 || isLate || states.isEmpty()) {
            outcome.hasFailed = true;
            std::fprintf(stderr, "%s: %s came back, %lld ms too old\n", qPrintable(m_journal),
                         hash.constData(), static_cast<long long>(loss));
            return;
        }
        QFile::remove(m_journal);
        QFile::remove(m_journal + u".rig"_s);
    }

private: // data
    QString m_folder;
    QString m_journal;
    bool m_isDiskFull;
    QProcess m_process;
    qint64 m_id = 0;
    qint64 m_killed = 0; // [ms]
};

int killAll(int times, std::uint32_t seed, bool isDiskFull)
{
    const QTemporaryDir folder;
    std::mt19937 random(seed);
    Outcome outcome;
    while (outcome.kills < times && !outcome.hasFailed) {
        Trial one(folder.path(), static_cast<std::uint32_t>(random()), isDiskFull);
        Trial other(folder.path(), static_cast<std::uint32_t>(random()), isDiskFull);
        one.waitUntilItWorks();
        other.waitUntilItWorks();
        QThread::msleep(random() % 3500);
        one.kill();
        QThread::msleep(random() % 300);
        other.kill();
        one.judge(outcome);
        other.judge(outcome);
    }
    std::printf("%d kills, %d with nothing to bring back, at most %lld ms lost\n", outcome.kills,
                outcome.empty, static_cast<long long>(outcome.longest));
    return outcome.hasFailed ? 1 : 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.value(1) == "--work"_L1 && argc == 5)
        return work(arguments, argc, argv);

    const bool isDiskFull = arguments.removeAll(u"--full"_s) > 0;
    if (arguments.size() != 3) {
        std::fputs("usage: session [--full] TIMES SEED\n", stderr);
        return 2;
    }
    const QCoreApplication application(argc, argv);
    return killAll(arguments.at(1).toInt(), arguments.at(2).toUInt(), isDiskFull);
}
