#include "engine/Edits.h"
#include "io/ProjectFile.h"
#include "io/RecoveryList.h"
#include "support/Files.h"
#include "support/Sessions.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using State = SessionFile::State;
using Support::screenOf;
using Support::sessionOf;
using Support::workOf;

/// What the user reads about what can be brought back.
class TestRecoveryList : public QObject
{
    Q_OBJECT

private slots:
    void projects_areInOrderWithTheirWords();
    void unclosedProjects_areChosen();
    void theLastSession_isChosen();
    void unreadableFiles_areNamed();
    void aScreen_countsAsOne();
    void copiesOfUnfinishedSaving_areListed();
};

namespace
{

RecoveryStore::Left leftOf(State state, const RecoverySession& session)
{
    return {u"/r/sesion.json"_s, state, RecoveryFile::Failure::None, session};
}

QStringList summary(const QList<RecoveryEntry>& entries)
{
    QStringList lines;
    for (const RecoveryEntry& entry : entries)
        lines.append(entry.project.tabName + u": "_s + entry.happened
                     + (entry.isChosen ? u" *"_s : QString()));
    return lines;
}

QList<RecoveryStore::Left> someSessions()
{
    const QDateTime time(QDate(2024, 3, 1), QTime(9, 0));
    const ProjectState fresh = Edits::freshProject(u"Proyecto 1"_s, 50.0F);
    return {
        leftOf(State::Ended, sessionOf({fresh}, {{workOf(u"Reset"_s), time, KeptProject::Reason::Reset}})),
        leftOf(State::Open, sessionOf({workOf(u"A"_s), fresh, workOf(u"B"_s)},
                                      {{workOf(u"C"_s), time, KeptProject::Reason::Overwritten}})),
        leftOf(State::Seen,
               sessionOf({workOf(u"D"_s)}, {{workOf(u"E"_s), time, KeptProject::Reason::Replaced}})),
        leftOf(State::Ended, sessionOf({workOf(u"F"_s)})),
    };
}

} // namespace

void TestRecoveryList::projects_areInOrderWithTheirWords()
{
    ProjectState selected = workOf(u"Propio"_s);
    selected.selectedLoadId = 1;
    const QDateTime time(QDate(2024, 3, 2), QTime(10, 0));
    const QList<RecoveryEntry> entries = RecoveryList::of({{selected, time, KeptProject::Reason::Closed}},
                                                          someSessions(), RecoveryChoice::Unclosed);
    QCOMPARE(
        summary(entries),
        QStringList({u"Propio: Pestaña cerrada"_s, u"Reset: Proyecto restaurado"_s, u"A: Sin cerrar *"_s,
                     u"B: Sin cerrar *"_s, u"C: Sobrescrito al cerrar otra pestaña"_s, u"D: Sin cerrar"_s,
                     u"E: Reemplazado al abrir un archivo"_s, u"F: Abierto al cerrar el programa"_s}));
    QCOMPARE(entries.at(0).time, time);
    QCOMPARE(entries.at(0).project.selectedLoadId, -1);
    QCOMPARE(entries.at(2).time, sessionOf({}).time);
}

void TestRecoveryList::unclosedProjects_areChosen()
{
    QList<RecoveryStore::Left> left = someSessions();
    left[1].state = State::Seen;
    for (const RecoveryEntry& entry : RecoveryList::of({}, left, RecoveryChoice::Unclosed))
        QVERIFY(!entry.isChosen);
}

void TestRecoveryList::theLastSession_isChosen()
{
    QStringList chosen;
    QList<RecoveryStore::Left> left = someSessions();
    left.removeAt(1);
    for (const RecoveryEntry& entry : RecoveryList::of({}, left, RecoveryChoice::Last)) {
        if (entry.isChosen)
            chosen.append(entry.project.tabName);
    }
    QCOMPARE(chosen, QStringList(u"D"_s));
}

void TestRecoveryList::unreadableFiles_areNamed()
{
    for (const auto choice : {RecoveryChoice::Unclosed, RecoveryChoice::Last}) {
        const QList<RecoveryEntry> entries = RecoveryList::of(
            {}, {{u"/r/sesion.json"_s, State::Open, RecoveryFile::Failure::Newer, {}}}, choice);
        QCOMPARE(entries.size(), 1);
        QVERIFY(!entries.at(0).isReadable);
        QVERIFY(!entries.at(0).isChosen);
        QCOMPARE(entries.at(0).project.tabName, u"/r/sesion.json"_s);
        QCOMPARE(entries.at(0).happened, u"Lo escribió una versión posterior del programa."_s);
    }
}

void TestRecoveryList::aScreen_countsAsOne()
{
    ProjectState project = screenOf(u"Uno"_s, 8);
    project.loads[7].groupId = 101; // the last two are a screen of their own
    project.loads[8].groupId = 101;
    const RecoveryList::Count count = RecoveryList::count(project.loads);
    QCOMPARE(count.loads, 1);
    QCOMPARE(count.screens, 2);
}

void TestRecoveryList::copiesOfUnfinishedSaving_areListed()
{
    const QTemporaryDir folder;
    const QByteArray project = ProjectFile::toBytes(workOf(u"Gira"_s));
    Support::put(folder.filePath(u"gira.rig.0123456789abcdef"_s), project);
    Support::put(folder.filePath(u"gira.rig"_s), project);
    Support::put(folder.filePath(u"gira.rig.ABC"_s), project);
    Support::put(folder.filePath(u"otra.rig.1f"_s), "medio");
    QVERIFY(QFile::link(folder.filePath(u"gira.rig"_s), folder.filePath(u"enlace.rig.2f"_s)));
    const QList<RecoveryEntry> entries = RecoveryList::copiesIn(folder.path());
    QCOMPARE(summary(entries), QStringList{u"Gira: Copia de «gira.rig» de antes de guardar"_s});
    QVERIFY(entries.constFirst().isReadable);
    QCOMPARE(entries.constFirst().project.loads.size(), workOf(u"Gira"_s).loads.size());
    QVERIFY(RecoveryList::copiesIn(folder.filePath(u"ninguna"_s)).isEmpty());
}

QTEST_GUILESS_MAIN(TestRecoveryList)
#include "tst_recoverylist.moc"
