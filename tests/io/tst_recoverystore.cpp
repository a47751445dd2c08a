#include "engine/Edits.h"
#include "io/RecoveryStore.h"
#include "support/Files.h"
#include "support/Sessions.h"
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

using Failure = RecoveryFile::Failure;
using State = SessionFile::State;
using Support::namesIn;
using Support::sessionOf;
using Support::workOf;

/// What earlier runs left is found, told and, after a while, removed; what goes on or cannot be read
/// is left alone.
class TestRecoveryStore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void nothing_isLeftWhereNothingWas();
    void sessions_areListedNewestFirst();
    void aSessionThatGoesOn_isNotListed();
    void theLockOfADeadProcess_countsForNothing_data();
    void theLockOfADeadProcess_countsForNothing();
    void files_areForTheOwnerAlone();
    void anUnclosedSession_isToldUntilSeen();
    void anEndedSession_isNotToldButListed();
    void sessionsWithoutWork_areNotListed();
    void badFiles_areToldAndLeftAlone_data();
    void badFiles_areToldAndLeftAlone();
    void somebodyElsesFile_isToldAndLeftAlone();
    void otherNames_areNotLookedAt();
    void oldFiles_go();
    void manyBytes_takeTheOldestEndedAway();
    void lastProjects_areThoseSomebodyWorkedOn();
    void anEmptiedFolder_isLockedAgain();
    void aFolderThatIsALink_isNotWritten();

private:
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }
    [[nodiscard]] RecoveryStore store() const
    {
        return RecoveryStore(m_folder->path());
    }
    /// Leaves a session in `state`, written `seconds` ago; returns the path of its file.
    QString leave(const RecoverySession& session, State state, qint64 seconds = 0)
    {
        SessionFile file = SessionFile::fresh(m_folder->path());
        if (!file.write(RecoveryFile::toBytes(session)) || (state != State::Open && !file.become(state)))
            qFatal("not written");
        age(file.path(), seconds);
        return file.path();
    }
    static void age(const QString& path, qint64 seconds)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                                 QFileDevice::FileModificationTime));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRecoveryStore::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestRecoveryStore::nothing_isLeftWhereNothingWas()
{
    const RecoveryStore nowhere(path(u"no existe"_s));
    QVERIFY(nowhere.left().isEmpty());
    QVERIFY(!nowhere.notice());
    QVERIFY(RecoveryStore::lastProjects(nowhere.left()).isEmpty());
    nowhere.markSeen();
    nowhere.removeOld();
    QVERIFY(namesIn(m_folder->path()).isEmpty());
}

void TestRecoveryStore::sessions_areListedNewestFirst()
{
    leave(sessionOf({workOf(u"Vieja"_s)}), State::Ended, 100);
    leave(sessionOf({workOf(u"Nueva"_s)}), State::Open, 10);
    leave(sessionOf({workOf(u"Media"_s)}), State::Seen, 50);
    QStringList titles;
    const QList<RecoveryStore::Left> left = store().left();
    for (const RecoveryStore::Left& one : left)
        titles.append(one.session.tabs.at(0).tabName);
    QCOMPARE(titles, QStringList({u"Nueva"_s, u"Media"_s, u"Vieja"_s}));
    QCOMPARE(left.at(0).state, State::Open);
    QCOMPARE(left.at(1).state, State::Seen);
    QCOMPARE(left.at(2).state, State::Ended);
}

void TestRecoveryStore::aSessionThatGoesOn_isNotListed()
{
    SessionFile going = SessionFile::fresh(m_folder->path());
    QVERIFY(going.write(RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)}))));
    age(going.path(), 40LL * 24 * 3600);
    QVERIFY(going.isInUse());
    QVERIFY(store().left().isEmpty());
    QVERIFY(!store().notice());
    store().markSeen();
    store().removeOld();
    QCOMPARE(SessionFile::allIn(m_folder->path()).at(0).state(), State::Open);

    going.leave();
    QVERIFY(!going.isInUse());
    QCOMPARE(store().left().size(), 1);
}

void TestRecoveryStore::theLockOfADeadProcess_countsForNothing_data()
{
    QTest::addColumn<QByteArray>("lock");
    const QByteArray host =
        QSysInfo::machineHostName().toLocal8Bit() + '\n' + QSysInfo::machineUniqueId() + '\n';
    const QByteArray own = QByteArray::number(QCoreApplication::applicationPid()) + '\n'
                           + QFileInfo(QCoreApplication::applicationFilePath()).fileName().toUtf8() + '\n';
    QTest::newRow("no such process") << QByteArray("2147483646\nvelmora-master\n" + host
                                                   + QSysInfo::bootUniqueId());
    QTest::newRow("another boot") << QByteArray(own + host + "00000000-0000-0000-0000-000000000000\n");
    QTest::newRow("no longer that program")
        << QByteArray("1\nvelmora-master\n" + host + QSysInfo::bootUniqueId() + '\n');
}

void TestRecoveryStore::theLockOfADeadProcess_countsForNothing()
{
    QFETCH(const QByteArray, lock);
    const QString file = leave(sessionOf({workOf(u"Uno"_s)}), State::Open);
    QString lockPath = file;
    lockPath.replace(u".abierta.json"_s, u".lock"_s);
    QVERIFY(lockPath != file);
    Support::put(lockPath, lock);
    QCOMPARE(store().left().size(), 1);
}

void TestRecoveryStore::files_areForTheOwnerAlone()
{
#ifdef Q_OS_UNIX
    const QString folder = path(u"dentro/recuperacion"_s);
    const mode_t before = umask(0);
    SessionFile file = SessionFile::fresh(folder);
    const bool isWritten = file.write("{}") && file.write("{ }");
    umask(before);
    QVERIFY(isWritten);
    const auto modeOf = [](const QString& of) {
        struct stat status
        {
        };
        return stat(QFile::encodeName(of).constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
    };
    QCOMPARE(modeOf(folder), 0700U);
    const QStringList names = namesIn(folder);
    QCOMPARE(names.size(), 2);
    for (const QString& name : names)
        QCOMPARE(modeOf(folder + u'/' + name), 0600U);
    QCOMPARE(Support::contentOf(file.path()), QByteArray("{ }"));
#else
    QSKIP("No such permissions here");
#endif
}

void TestRecoveryStore::anUnclosedSession_isToldUntilSeen()
{
    leave(sessionOf({workOf(u"Uno"_s)}), State::Open);
    for (int times = 0; times < 2; ++times)
        QCOMPARE(store().notice(), u"Hay trabajo sin cerrar de 29/02/2024 12:34: recuperar (F9)"_s);
    store().markSeen();
    QVERIFY(!store().notice());
    QCOMPARE(store().left().size(), 1);
    QCOMPARE(store().left().at(0).state, State::Seen);
}

void TestRecoveryStore::anEndedSession_isNotToldButListed()
{
    leave(sessionOf({workOf(u"Uno"_s)}), State::Ended);
    QVERIFY(!store().notice());
    store().markSeen();
    QCOMPARE(store().left().at(0).state, State::Ended);
}

void TestRecoveryStore::sessionsWithoutWork_areNotListed()
{
    const ProjectState fresh = Edits::freshProject(u"Proyecto 1"_s, 50.0F);
    leave(sessionOf({fresh}), State::Open);
    QVERIFY(!store().notice());
    QVERIFY(store().left().isEmpty());
    leave(sessionOf({fresh},
                    {{workOf(u"Cerrado"_s), QDateTime::currentDateTime(), KeptProject::Reason::Closed}}),
          State::Open);
    QVERIFY(store().notice());
    QCOMPARE(store().left().size(), 1);
}

void TestRecoveryStore::badFiles_areToldAndLeftAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<QString>("reason");
    const QByteArray whole = RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)}));
    QTest::newRow("cut") << whole.first(whole.size() / 2) << Failure::Damaged << u"El archivo está dañado."_s;
    QTest::newRow("later") << QByteArray(R"({"velmoraRecovery":99})") << Failure::Newer
                           << u"Lo escribió una versión posterior del programa."_s;
}

void TestRecoveryStore::badFiles_areToldAndLeftAlone()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const Failure, failure);
    QFETCH(const QString, reason);
    const QString bad = path(u"sesion-0123456789abcdef.abierta.json"_s);
    Support::put(bad, bytes);
    QCOMPARE(store().notice(), u"Hay trabajo sin cerrar que no se puede recuperar: detalles (F9)"_s);
    QCOMPARE(store().left().size(), 1);
    QCOMPARE(store().left().at(0).failure, failure);
    QCOMPARE(RecoveryStore::reason(failure), reason);
    QVERIFY(RecoveryStore::lastProjects(store().left()).isEmpty());
    QCOMPARE(Support::contentOf(bad), bytes);
    store().removeOld(QDateTime::currentDateTime().addDays(100));
    QCOMPARE(Support::contentOf(bad), bytes);

    // One that can be read is told first.
    leave(sessionOf({workOf(u"Dos"_s)}), State::Open, 10);
    QVERIFY(store().notice()->contains(u"29/02/2024"_s));
    store().markSeen();
    QCOMPARE(QFile::exists(bad), failure == Failure::Newer);
    QCOMPARE(store().left().size(), 2);
}

void TestRecoveryStore::somebodyElsesFile_isToldAndLeftAlone()
{
    const QString outside = path(u"fuera"_s);
    Support::put(outside, RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)})));
    const QString link = path(u"sesion-0123456789abcdef.abierta.json"_s);
    QVERIFY(QFile::link(outside, link));
    QCOMPARE(store().left().at(0).failure, Failure::NotOwn);
    QCOMPARE(RecoveryStore::reason(Failure::NotOwn), u"No es un archivo propio de este usuario."_s);
    store().markSeen();
    store().removeOld(QDateTime::currentDateTime().addDays(100));
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(QFile::exists(outside));
#ifdef Q_OS_UNIX
    QVERIFY(QFile::remove(link));
    QCOMPARE(mkfifo(QFile::encodeName(link).constData(), 0600), 0);
    QCOMPARE(store().left().at(0).failure, Failure::NotOwn); // and nobody waits for it
    QVERIFY(QFile::remove(link));
    if (geteuid() != 0)
        return;
    Support::put(link, RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)})));
    QCOMPARE(chown(QFile::encodeName(link).constData(), 65534, 65534), 0);
    QCOMPARE(store().left().at(0).failure, Failure::NotOwn);
    store().removeOld(QDateTime::currentDateTime().addDays(100));
    QVERIFY(QFile::exists(link));
#endif
}

void TestRecoveryStore::otherNames_areNotLookedAt()
{
    const QByteArray whole = RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)}));
    const QStringList names{u"proyecto.rig.0123456789abcdef"_s, u"sesion-0123456789abcdef.json"_s,
                            u"sesion-0123456789ABCDEF.abierta.json"_s, u"sesion-.abierta.json"_s,
                            u"sesion-0123456789abcdef.otra.json"_s};
    for (const QString& name : names)
        Support::put(path(name), whole);
    QVERIFY(store().left().isEmpty());
    store().removeOld(QDateTime::currentDateTime().addDays(100));
    QCOMPARE(namesIn(m_folder->path()).size(), names.size());
}

void TestRecoveryStore::oldFiles_go()
{
    constexpr qint64 DAY = 24 * 3600;
    for (const State state : {State::Open, State::Seen, State::Ended}) {
        leave(sessionOf({workOf(u"Vieja"_s)}), state, 30 * DAY + 60);
        leave(sessionOf({workOf(u"Nueva"_s)}), state, 30 * DAY - 60);
    }
    const QString oldRest = path(u".velmora-0123456789abcdef"_s);
    const QString newRest = path(u".velmora-fedcba9876543210"_s);
    for (const QString& rest : {oldRest, newRest}) // of runs that were killed
        Support::put(rest, "medio");
    age(oldRest, 30 * DAY + 60);
    store().removeOld();
    QVERIFY(!QFile::exists(oldRest));
    QVERIFY(QFile::exists(newRest));
    const QList<RecoveryStore::Left> left = store().left();
    QCOMPARE(left.size(), 3);
    for (const RecoveryStore::Left& one : left)
        QCOMPARE(one.session.tabs.at(0).tabName, u"Nueva"_s);
}

void TestRecoveryStore::manyBytes_takeTheOldestEndedAway()
{
    const auto leaveLarge = [this](const QString& title, State state, qint64 seconds) {
        const QString file = leave(sessionOf({workOf(title)}), state, seconds);
        QVERIFY(QFile::resize(file, 100'000'000)); // takes no room
        age(file, seconds);
    };
    leaveLarge(u"1"_s, State::Ended, 10);
    leaveLarge(u"2"_s, State::Ended, 20);
    leaveLarge(u"3"_s, State::Open, 30);
    leaveLarge(u"4"_s, State::Ended, 40);
    store().removeOld();
    QCOMPARE(SessionFile::allIn(m_folder->path()).size(), 3);
    for (const SessionFile& file : SessionFile::allIn(m_folder->path()))
        QVERIFY(file.written().secsTo(QDateTime::currentDateTime()) < 35);
}

void TestRecoveryStore::lastProjects_areThoseSomebodyWorkedOn()
{
    leave(sessionOf({workOf(u"Antes"_s)}), State::Ended, 50);
    leave(sessionOf({workOf(u"Uno"_s), Edits::freshProject(u"Proyecto 2"_s, 25.0F), workOf(u"Tres"_s)}),
          State::Ended, 5);
    const QList<ProjectState> projects = RecoveryStore::lastProjects(store().left());
    QCOMPARE(projects.size(), 2);
    QCOMPARE(projects.at(0).tabName, u"Uno"_s);
    QCOMPARE(projects.at(1).tabName, u"Tres"_s);
}

void TestRecoveryStore::anEmptiedFolder_isLockedAgain()
{
    SessionFile going = SessionFile::fresh(path(u"r"_s));
    QVERIFY(going.write("{}"));
    QVERIFY(QDir(path(u"r"_s)).removeRecursively());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Could not remove our own lock file"_s));
    QVERIFY(going.write("{}"));
    QVERIFY(going.isInUse());
    QCOMPARE(namesIn(path(u"r"_s)).size(), 2);
}

void TestRecoveryStore::aFolderThatIsALink_isNotWritten()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"otra"_s));
    QVERIFY(QFile::link(path(u"otra"_s), path(u"r"_s)));
    SessionFile file = SessionFile::fresh(path(u"r"_s));
    QVERIFY(!file.write("{}"));
    QVERIFY(namesIn(path(u"otra"_s)).isEmpty());
}

QTEST_GUILESS_MAIN(TestRecoveryStore)
#include "tst_recoverystore.moc"
