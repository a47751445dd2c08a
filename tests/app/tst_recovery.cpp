#include "engine/Edits.h"
#include "io/RecoveryStore.h"
#include "support/Files.h"
#include "support/Sessions.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#ifdef Q_OS_UNIX
#include <csignal>
#endif

#include <memory>

using namespace Qt::StringLiterals;

using State = SessionFile::State;

namespace
{

const QString EXAMPLE = u"" VELMORA_SOURCE_DIR "/examples/pantalla.rig"_s;
constexpr int PATIENCE = 60'000; // [ms]

} // namespace

/// What the program, in a process of its own, leaves and brings back.
class TestRecovery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aSignal_savesAndLeavesCleanly_data();
    void aSignal_savesAndLeavesCleanly();
    void anIgnoredHangup_staysIgnored();
    void aKill_leavesTheLastState();
    void untouchedProgram_leavesNothing();
    void summary_tellsTheLastSession();
    void summaryAsJson_tellsTheLastSession();
    void summary_ofNothing_exitsWithTwo();
    void summary_tellsWhatCannotBeRead();
    void withoutDisplay_theFiguresAreTold();
    void files_areRefused();

private:
    struct Result
    {
        int code = -1;
        QString out;
        QString err;
    };

    [[nodiscard]] QString folder() const
    {
        return m_home->filePath(u"Velmora/VelmoraMaster/recuperacion"_s);
    }
    [[nodiscard]] QProcessEnvironment environment(bool hasDisplay) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name :
             {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s, u"XDG_RUNTIME_DIR"_s})
            environment.remove(name);
        if (hasDisplay)
            environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"XDG_DATA_HOME"_s, m_home->path());
        environment.insert(u"TMPDIR"_s, m_home->path());
        return environment;
    }
    [[nodiscard]] Result run(const QStringList& arguments) const
    {
        QProcess program;
        program.setProcessEnvironment(environment(false));
        program.start(QStringLiteral(VELMORA_EXECUTABLE), arguments);
        if (!program.waitForFinished(PATIENCE))
            return {};
        return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
                QString::fromUtf8(program.readAllStandardError())};
    }
    /// Starts the window with a project, and waits until that is in the recovery file.
    void startWindow(QProcess& program, const QStringList& arguments = {EXAMPLE}) const
    {
        program.setProcessEnvironment(environment(true));
        program.start(QStringLiteral(VELMORA_EXECUTABLE), arguments);
        QVERIFY(program.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(!SessionFile::allIn(folder()).isEmpty(), PATIENCE);
    }
    void leave(const RecoverySession& session, State state) const
    {
        SessionFile file = SessionFile::fresh(folder());
        QVERIFY(file.write(RecoveryFile::toBytes(session)));
        QVERIFY(state == State::Open || file.become(state));
    }

    std::unique_ptr<QTemporaryDir> m_home;
};

void TestRecovery::init()
{
    m_home = std::make_unique<QTemporaryDir>();
}

void TestRecovery::aSignal_savesAndLeavesCleanly_data()
{
#ifdef Q_OS_UNIX
    QTest::addColumn<int>("signal");
    QTest::newRow("TERM") << SIGTERM;
    QTest::newRow("HUP") << SIGHUP;
    QTest::newRow("INT") << SIGINT;
#endif
}

void TestRecovery::aSignal_savesAndLeavesCleanly()
{
#ifdef Q_OS_UNIX
    QFETCH(const int, signal);
    QProcess program;
    startWindow(program);
    QVERIFY(RecoveryStore(folder()).left().isEmpty()); // it goes on
    QCOMPARE(kill(static_cast<pid_t>(program.processId()), signal), 0);
    QVERIFY(program.waitForFinished(PATIENCE));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    const QList<RecoveryStore::Left> left = RecoveryStore(folder()).left();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left.at(0).state, State::Open);
    QVERIFY(!left.at(0).session.tabs.at(0).loads.isEmpty());
    QCOMPARE(Support::namesIn(folder()).size(), 1); // no lock
#endif
}

void TestRecovery::anIgnoredHangup_staysIgnored()
{
#ifdef Q_OS_UNIX
    QProcess program;
    program.setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
    startWindow(program);
    QCOMPARE(kill(static_cast<pid_t>(program.processId()), SIGHUP), 0);
    constexpr int A_WHILE = 700; // [ms]
    QVERIFY(!program.waitForFinished(A_WHILE));
    program.kill();
    QVERIFY(program.waitForFinished(PATIENCE));
#endif
}

void TestRecovery::aKill_leavesTheLastState()
{
    QProcess program;
    startWindow(program);
    program.kill();
    QVERIFY(program.waitForFinished(PATIENCE));
    QVERIFY(RecoveryStore(folder()).notice());
    const QList<RecoveryStore::Left> left = RecoveryStore(folder()).left();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left.at(0).failure, RecoveryFile::Failure::None);
    QVERIFY(!left.at(0).session.program.isEmpty());
}

void TestRecovery::untouchedProgram_leavesNothing()
{
    QProcess program;
    program.setProcessEnvironment(environment(true));
    program.start(QStringLiteral(VELMORA_EXECUTABLE), QStringList());
    constexpr int SOME_BLINKS = 1500; // [ms]
    QVERIFY(!program.waitForFinished(SOME_BLINKS));
    program.terminate();
    QVERIFY(program.waitForFinished(PATIENCE));
    QCOMPARE(program.exitCode(), 0);
    QVERIFY(!QFile::exists(folder()));
}

void TestRecovery::summary_tellsTheLastSession()
{
    leave(Support::sessionOf({Support::workOf(u"Viejo"_s)}), State::Ended);
    QTest::qWait(20); // the time of a file has steps
    leave(Support::sessionOf({Support::screenOf(u"Último"_s, 4), Edits::freshProject(u"Vacío"_s, 25.0F)}),
          State::Open);
    const Result result = run({u"--recuperar"_s, u"--resumen"_s});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(u"Último"_s));
    QVERIFY(!result.out.contains(u"Vacío"_s));
    QVERIFY(!result.out.contains(u"Viejo"_s));
    QVERIFY(RecoveryStore(folder()).notice()); // figures are no answer
}

void TestRecovery::summaryAsJson_tellsTheLastSession()
{
    leave(Support::sessionOf({Support::workOf(u"Uno"_s, 1000.0F)}), State::Ended);
    const Result result = run({u"--json"_s, u"--recuperar"_s, u"--resumen"_s});
    QCOMPARE(result.code, 0);
    const QJsonArray projects =
        QJsonDocument::fromJson(result.out.toUtf8()).object()["proyectos"_L1].toArray();
    QCOMPARE(projects.size(), 1);
    QCOMPARE(projects.at(0).toObject()["proyecto"_L1].toString(), u"Uno"_s);
    // Half of 1000 kg and of 12 m at 8.4 kg/m
    const QJsonObject motor = projects.at(0).toObject()["motores"_L1].toArray().at(0).toObject();
    QCOMPARE(motor["en_punto_kg"_L1].toDouble(), 550.4);
}

void TestRecovery::summary_ofNothing_exitsWithTwo()
{
    const Result result = run({u"--recuperar"_s, u"--resumen"_s});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u"No hay nada que recuperar."_s));
    QVERIFY(!QFile::exists(folder()));
}

void TestRecovery::summary_tellsWhatCannotBeRead()
{
    leave(Support::sessionOf({Support::workOf(u"Uno"_s)}), State::Ended);
    Support::put(folder() + u"/sesion-0123456789abcdef.abierta.json"_s, "roto");
    const Result result = run({u"--recuperar"_s, u"--resumen"_s});
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(u"Uno"_s));
    QVERIFY(result.err.contains(u"sesion-0123456789abcdef.abierta.json: El archivo está dañado."_s));
}

void TestRecovery::withoutDisplay_theFiguresAreTold()
{
    leave(Support::sessionOf({Support::workOf(u"Uno"_s)}), State::Ended);
    const Result result = run({u"--recuperar"_s});
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(u"Uno"_s));
}

void TestRecovery::files_areRefused()
{
    const Result result = run({u"--recuperar"_s, EXAMPLE});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.startsWith(u"velmora-master: --recuperar no admite archivos\n"_s));
}

QTEST_GUILESS_MAIN(TestRecovery)
#include "tst_recovery.moc"
