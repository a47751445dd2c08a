#include "engine/Edits.h"
#include "io/RecoveryKeeper.h"
#include "io/RecoveryProject.h"
#include "io/RecoveryStore.h"
#include "support/Files.h"
#include "support/Sessions.h"
#ifdef Q_OS_UNIX
#include "support/FullDisk.h"
#endif

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

using Reason = KeptProject::Reason;
using Support::namesIn;
using Support::screenOf;
using Support::workOf;

/// The work of a run is in its file soon after it was shown, and nowhere before.
class TestRecoveryKeeper : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void untouchedProjects_makeNoFile();
    void aChange_isWritten();
    void noChange_isNotWrittenAgain();
    void workThatIsTakenBack_isFollowed();
    void keptProjects_areWrittenNewestFirst();
    void keptProjects_areTheLast20();
    void theSameProject_isKeptOnce();
    void untouchedProjects_areNotKept();
    void hugeKeptProjects_areLeftOut();
    void twoRuns_haveFilesOfTheirOwn();
    void withoutEnd_theFileStaysOpen();
    void end_isUsual();
    void end_withoutWork_leavesNothing();
    void aFullDisk_leavesWhatWasThere();
    void afterAFailure_itIsTriedAgain();
    void twentyThousandLoads_areWrittenInTime();

private:
    [[nodiscard]] QString folder() const
    {
        return m_folder->filePath(u"recuperacion"_s);
    }
    [[nodiscard]] std::unique_ptr<RecoveryKeeper> keeper() const
    {
        return std::make_unique<RecoveryKeeper>(folder(), u"2.0.0"_s);
    }
    /// The session in the one file that is there.
    [[nodiscard]] RecoverySession written() const
    {
        const QList<SessionFile> files = SessionFile::allIn(folder());
        return files.size() == 1 ? RecoveryFile::read(files.at(0).path()).session : RecoverySession();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRecoveryKeeper::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestRecoveryKeeper::untouchedProjects_makeNoFile()
{
    const auto run = keeper();
    QVERIFY(run->save(
        {Edits::freshProject(u"Proyecto 1"_s, 50.0F), Edits::freshProject(u"Proyecto 2"_s, 25.0F)}, 1));
    QVERIFY(!QFile::exists(folder()));
    QVERIFY(!run->hasFailed());
}

void TestRecoveryKeeper::aChange_isWritten()
{
    const auto run = keeper();
    run->look({workOf(u"Uno"_s), screenOf(u"Dos"_s, 5)}, 1);
    QTRY_COMPARE(written().tabs.size(), 2);
    const RecoverySession session = written();
    QCOMPARE(session.current, 1);
    QCOMPARE(session.program, u"2.0.0"_s);
    QCOMPARE(session.process, QCoreApplication::applicationPid());
    QCOMPARE(session.boot, QString::fromLatin1(QSysInfo::bootUniqueId()));
    QVERIFY(qAbs(session.time.secsTo(QDateTime::currentDateTime())) < 60);
    QVERIFY(RecoveryProject::isSame(session.tabs.at(1), screenOf(u"Dos"_s, 5)));

    // Of three tabs one changes; the texts of the others are taken again, each for its own tab.
    QVERIFY(run->save({workOf(u"Uno"_s), workOf(u"Tres"_s, 3.0F), screenOf(u"Dos"_s, 5)}, 0));
    QVERIFY(run->save({workOf(u"Otro"_s), workOf(u"Tres"_s, 4.0F), screenOf(u"Dos"_s, 5)}, 2));
    const RecoverySession later = written();
    QCOMPARE(later.tabs.at(0).tabName, u"Otro"_s);
    QCOMPARE(later.tabs.at(1).loads.at(0).mass, 4.0F);
    QCOMPARE(later.tabs.at(2).loads.size(), 6);
    QCOMPARE(later.current, 2);
}

void TestRecoveryKeeper::noChange_isNotWrittenAgain()
{
    const auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    const QString path = SessionFile::allIn(folder()).at(0).path();
    QVERIFY(QFile::remove(path));
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0)); // equal, not shared
    QVERIFY(!QFile::exists(path));
    QVERIFY(run->save({workOf(u"Uno"_s, 251.0F)}, 0));
    QVERIFY(QFile::exists(path));
}

void TestRecoveryKeeper::workThatIsTakenBack_isFollowed()
{
    const auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    QVERIFY(run->save({Edits::freshProject(u"Uno"_s, 50.0F)}, 0));
    QVERIFY(written().tabs.at(0).loads.isEmpty());
}

void TestRecoveryKeeper::keptProjects_areWrittenNewestFirst()
{
    const auto run = keeper();
    const ProjectState fresh = Edits::freshProject(u"Proyecto 1"_s, 50.0F);
    run->keep(workOf(u"Uno"_s), Reason::Closed);
    run->keep(screenOf(u"Dos"_s, 3), Reason::Overwritten);
    QVERIFY(run->save({fresh}, 0));
    const QList<KeptProject> kept = written().kept;
    QCOMPARE(kept.size(), 2);
    QCOMPARE(kept.at(0).project.tabName, u"Dos"_s);
    QCOMPARE(kept.at(0).reason, Reason::Overwritten);
    QCOMPARE(kept.at(1).reason, Reason::Closed);
    QVERIFY(qAbs(kept.at(1).time.secsTo(QDateTime::currentDateTime())) < 60);
    QVERIFY(RecoveryProject::isSame(kept.at(0).project, screenOf(u"Dos"_s, 3)));
    QCOMPARE(run->kept().size(), 2);

    run->keep(workOf(u"Tres"_s), Reason::Reset);
    QVERIFY(run->save({fresh}, 0));
    QCOMPARE(written().kept.size(), 3);
    QCOMPARE(written().kept.at(0).project.tabName, u"Tres"_s);
    QCOMPARE(written().kept.at(2).project.tabName, u"Uno"_s);
}

void TestRecoveryKeeper::keptProjects_areTheLast20()
{
    const auto run = keeper();
    for (int i = 1; i <= 23; ++i)
        run->keep(workOf(QString::number(i)), Reason::Closed);
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    QCOMPARE(written().kept.size(), 20);
    QCOMPARE(written().kept.constFirst().project.tabName, u"23"_s);
    QCOMPARE(written().kept.constLast().project.tabName, u"4"_s);
}

void TestRecoveryKeeper::theSameProject_isKeptOnce()
{
    const auto run = keeper();
    run->keep(workOf(u"Uno"_s), Reason::Closed);
    run->keep(workOf(u"Dos"_s), Reason::Closed);
    run->keep(workOf(u"Uno"_s), Reason::Reset);
    QCOMPARE(run->kept().size(), 2);
    QCOMPARE(run->kept().at(0).reason, Reason::Reset);
}

void TestRecoveryKeeper::untouchedProjects_areNotKept()
{
    const auto run = keeper();
    run->keep(Edits::freshProject(u"Proyecto 1"_s, 25.0F), Reason::Closed);
    QVERIFY(run->kept().isEmpty());
}

void TestRecoveryKeeper::hugeKeptProjects_areLeftOut()
{
    const auto run = keeper();
    for (const QString& title : {u"1"_s, u"2"_s, u"3"_s}) {
        ProjectState huge = workOf(title);
        huge.loads[0].name = QString(30'000'000, u'n');
        run->keep(huge, Reason::Closed);
    }
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    QCOMPARE(written().tabs.size(), 1);
    QCOMPARE(written().kept.size(), 2);
    QCOMPARE(written().kept.at(0).project.tabName, u"3"_s);
}

void TestRecoveryKeeper::twoRuns_haveFilesOfTheirOwn()
{
    const auto one = keeper();
    const auto other = keeper();
    for (int i = 0; i < 20; ++i) {
        one->look({workOf(u"Uno"_s, static_cast<float>(i))}, 0);
        other->look({workOf(u"Otro"_s, static_cast<float>(-i))}, 0);
    }
    QVERIFY(one->save({workOf(u"Uno"_s, 100.0F)}, 0));
    QVERIFY(other->save({workOf(u"Otro"_s, 200.0F)}, 0));
    QCOMPARE(SessionFile::allIn(folder()).size(), 2);
    QStringList found;
    for (const SessionFile& file : SessionFile::allIn(folder())) {
        QVERIFY(file.isInUse());
        const ProjectState project = RecoveryFile::read(file.path()).session.tabs.at(0);
        found.append(project.tabName + QString::number(project.loads.at(0).mass));
    }
    found.sort();
    QCOMPARE(found, QStringList({u"Otro200"_s, u"Uno100"_s}));
    QVERIFY(RecoveryStore(folder()).left().isEmpty());
}

void TestRecoveryKeeper::withoutEnd_theFileStaysOpen()
{
    auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    run.reset();
    QVERIFY(RecoveryStore(folder()).notice());
    QCOMPARE(RecoveryStore(folder()).left().at(0).state, SessionFile::State::Open);
}

void TestRecoveryKeeper::end_isUsual()
{
    auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    run->end();
    QVERIFY(!RecoveryStore(folder()).notice());
    QCOMPARE(RecoveryStore(folder()).left().at(0).state, SessionFile::State::Ended);
    QCOMPARE(namesIn(folder()).size(), 1); // no lock
}

void TestRecoveryKeeper::end_withoutWork_leavesNothing()
{
    const auto nothing = keeper();
    nothing->end();
    const auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    QVERIFY(run->save({Edits::freshProject(u"Uno"_s, 50.0F)}, 0));
    run->end();
    QVERIFY(namesIn(folder()).isEmpty());
}

void TestRecoveryKeeper::aFullDisk_leavesWhatWasThere()
{
#ifdef Q_OS_UNIX
    const auto run = keeper();
    QVERIFY(run->save({workOf(u"Uno"_s)}, 0));
    {
        const Support::FullDisk disk;
        QVERIFY(!run->save({screenOf(u"Dos"_s, 500)}, 0));
    }
    QVERIFY(run->hasFailed());
    QCOMPARE(written().tabs.at(0).tabName, u"Uno"_s);
    QCOMPARE(namesIn(folder()).size(), 2);
    QVERIFY(run->save({screenOf(u"Dos"_s, 500)}, 0));
    QVERIFY(!run->hasFailed());
    QCOMPARE(written().tabs.at(0).tabName, u"Dos"_s);
#else
    QSKIP("No such limit here");
#endif
}

void TestRecoveryKeeper::afterAFailure_itIsTriedAgain()
{
    Support::put(folder(), "no es una carpeta");
    const auto run = keeper();
    QVERIFY(!run->save({workOf(u"Uno"_s)}, 0));
    QVERIFY(run->hasFailed());
    QVERIFY(QFile::remove(folder()));
    for (int looks = 1; looks < 10; ++looks)
        run->look({workOf(u"Uno"_s)}, 0);
    QVERIFY(!QFile::exists(folder()));
    run->look({workOf(u"Uno"_s)}, 0);
    QTRY_COMPARE(written().tabs.size(), 1);
    QTRY_VERIFY(!run->hasFailed());
}

// A change waits at most half a second to be seen: the other half is for writing it.
void TestRecoveryKeeper::twentyThousandLoads_areWrittenInTime()
{
    const auto run = keeper();
    const ProjectState large = screenOf(u"Grande"_s, 20'000);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(run->save({large}, 0));
    qInfo("written in %lld ms", timer.elapsed());
    QCOMPARE(written().tabs.at(0).loads.size(), large.loads.size());
}

QTEST_GUILESS_MAIN(TestRecoveryKeeper)
#include "tst_recoverykeeper.moc"
