#include "engine/Statics.h"
#include "io/ProjectFile.h"
#include "io/RecoveryDialog.h"
#include "io/RecoveryProject.h"
#include "io/RecoveryStore.h"
#include "support/Dialogs.h"
#include "support/Files.h"
#include "support/Sessions.h"
#include "support/Window.h"
#ifdef Q_OS_UNIX
#include "support/FullDisk.h"
#include "ui/NoticeLine.h"
#endif

#include <QDialogButtonBox>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

using Reason = KeptProject::Reason;
using Support::BoxAnswer;

namespace
{

/// Ticks the rows `wanted` of the next list and no others, keeps what it said before, and opens them or not.
class ListAnswer
{
public: // construction
    explicit ListAnswer(QList<int> wanted, bool accepts = true)
        : m_wanted(std::move(wanted))
        , m_accepts(accepts)
        , m_answer([this](RecoveryDialog& dialog) { choose(dialog); })
    {
    }

public: // queries
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

public: // what the list was
    QList<QStringList> rows;
    QList<int> ticked;
    bool mayOpen = false;

private: // helpers
    void choose(RecoveryDialog& dialog)
    {
        auto* list = dialog.findChild<QTreeWidget*>();
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            QTreeWidgetItem* item = list->topLevelItem(row);
            QStringList texts;
            for (int column = 0; column < list->columnCount(); ++column)
                texts.append(item->text(column));
            rows.append(texts);
            if (item->checkState(0) == Qt::Checked)
                ticked.append(row);
            if (item->flags().testFlag(Qt::ItemIsUserCheckable))
                item->setCheckState(0, m_wanted.contains(row) ? Qt::Checked : Qt::Unchecked);
        }
        mayOpen = openButton(dialog)->isEnabled();
        if (m_accepts && mayOpen)
            openButton(dialog)->click();
        else
            dialog.reject();
    }

    static QAbstractButton* openButton(const RecoveryDialog& dialog)
    {
        const QList<QAbstractButton*> buttons = dialog.findChild<QDialogButtonBox*>()->buttons();
        return *std::find_if(buttons.cbegin(), buttons.cend(), [](const QAbstractButton* button) {
            return button->text() == u"Abrir en pestañas nuevas";
        });
    }

private: // data
    QList<int> m_wanted;
    bool m_accepts;
    Support::Answer<RecoveryDialog> m_answer;
};

} // namespace

/// Whatever is lost in the window can be brought back.
class TestWindowRecovery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void withoutRecovery_nothingIsWritten();
    void aChange_isInTheFileWithinASecond();
    void aDrag_isFollowed();
    void nothingIsWritten_beforeSomebodyWorks();
    void closedTabs_areKept();
    void overwrittenTabs_areKept();
    void everyProjectOfAnyClosing_isSomewhere();
    void resetProjects_areKept();
    void replacedProjects_areKept();
    void untouchedProjects_areNot();
    void f9_listsAndOpens();
    void f9_withNothing_saysSo();
    void aCrash_isToldUntilTheListWasSeen();
    void arrays_comeBackAsArrays();
    void usualEnd_isNotTold();
    void recoverLast_ticksTheLastSession();
    void unreadableFiles_cannotBeTicked();
    void onTheReportPage_theDesignIsShownFirst();
    void copiesOfUnfinishedSaving_comeBack();
    void aFullDisk_isTold();
    void namesOfHostileProjects_arePlainText();

private:
    void keep()
    {
        m_test->window.keepRecovery(m_folder->path());
    }
    /// As after a crash: another window, and the file of the first.
    void crash()
    {
        m_test->window.saveRecovery();
        start();
    }
    void start()
    {
        m_test.reset();
        m_test = std::make_unique<Support::TestWindow>();
        keep();
    }
    [[nodiscard]] RecoverySession written() const
    {
        const QList<SessionFile> files = SessionFile::allIn(m_folder->path());
        return files.isEmpty() ? RecoverySession() : RecoveryFile::read(files.at(0).path()).session;
    }
    [[nodiscard]] QStringList kept() const
    {
        QStringList lines;
        const QList<KeptProject> projects = m_test->window.keptProjects();
        for (const KeptProject& one : projects)
            lines.append(one.project.tabName + QString::number(static_cast<int>(one.reason)));
        return lines;
    }
    void addTab(float mass)
    {
        m_test->window.onAddTab();
        m_test->hangLoad(mass, 3.0F);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Support::TestWindow> m_test;
};

void TestWindowRecovery::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_test = std::make_unique<Support::TestWindow>();
}

void TestWindowRecovery::cleanup()
{
    m_test.reset();
}

void TestWindowRecovery::withoutRecovery_nothingIsWritten()
{
    m_test->hangLoad(100.0F, 3.0F);
    m_test->window.saveRecovery();
    m_test->window.endRecovery();
    m_test->window.recover(RecoveryChoice::Last);
    QVERIFY(!m_test->window.recoveryNotice());
    QVERIFY(m_test->window.keptProjects().isEmpty());
}

void TestWindowRecovery::aChange_isInTheFileWithinASecond()
{
    keep();
    m_test->hangLoad(123.25F, 3.0F);
    QTRY_COMPARE_WITH_TIMEOUT(written().tabs.size(), 1, 2000);
    QVERIFY(RecoveryProject::isSame(written().tabs.at(0), m_test->window.captureCurrentState()));
    m_test->setText("loadMass", u"7"_s);
    m_test->window.onAddMotorClicked();
    QTRY_COMPARE_WITH_TIMEOUT(written().tabs.at(0).motors.size(), 3, 2000);
    m_test->tabBar()->setTabText(0, u"Otro nombre"_s);
    QTRY_COMPARE_WITH_TIMEOUT(written().tabs.at(0).tabName, u"Otro nombre"_s, 2000);
}

void TestWindowRecovery::aDrag_isFollowed()
{
    keep();
    m_test->canvas()->resize(800, 600);
    m_test->hangLoad(100.0F, 3.0F);
    m_test->window.saveRecovery();
    LoadLogic::ActiveLoads[0].positionX = 4.5F; // as a step does
    m_test->window.edited();
    QTRY_COMPARE_WITH_TIMEOUT(written().tabs.at(0).loads.at(0).positionX, 4.5F, 2000);
}

void TestWindowRecovery::nothingIsWritten_beforeSomebodyWorks()
{
    keep();
    m_test->window.onAddTab();
    m_test->window.saveRecovery();
    QVERIFY(Support::namesIn(m_folder->path()).isEmpty());
}

void TestWindowRecovery::closedTabs_areKept()
{
    keep();
    addTab(1.0F);
    addTab(2.0F);
    m_test->window.onTabChanged(0);
    m_test->tabBar()->setCurrentIndex(0);
    m_test->window.onCloseTab(2);
    QCOMPARE(kept(), QStringList(u"Proyecto 30"_s));
    QCOMPARE(m_test->window.keptProjects().at(0).project.loads.at(0).mass, 2.0F);
}

// Closing the current tab leaves its project in the place of the next one.
void TestWindowRecovery::overwrittenTabs_areKept()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    addTab(2.0F);
    addTab(3.0F);
    m_test->tabBar()->setCurrentIndex(1);
    m_test->window.onCloseTab(1);
    QCOMPARE(kept(), QStringList({u"Proyecto 20"_s, u"Proyecto 33"_s}));
    QCOMPARE(m_test->window.keptProjects().at(1).project.loads.at(0).mass, 3.0F);
}

void TestWindowRecovery::everyProjectOfAnyClosing_isSomewhere()
{
    for (int current = 0; current < 4; ++current) {
        for (int closed = 0; closed < 4; ++closed) {
            init();
            keep();
            m_test->hangLoad(1.0F, 3.0F);
            for (const float mass : {2.0F, 3.0F, 4.0F})
                addTab(mass);
            m_test->tabBar()->setCurrentIndex(current);
            m_test->hangLoad(0.5F, 4.0F); // what no snapshot holds yet
            const QList<LoadLogic::ProjectState> before = m_test->window.openProjects();
            m_test->window.onCloseTab(closed);

            QList<LoadLogic::ProjectState> after = m_test->window.openProjects();
            for (const KeptProject& one : m_test->window.keptProjects())
                after.append(one.project);
            for (const LoadLogic::ProjectState& project : before) {
                const bool isThere = std::any_of(after.cbegin(), after.cend(), [&](const auto& other) {
                    return RecoveryProject::isSame(other, project);
                });
                QVERIFY2(isThere, qPrintable(project.tabName + u" of "_s + QString::number(current)
                                             + QString::number(closed)));
            }
            QCOMPARE(m_test->window.keptProjects().at(0).project.tabName, before.at(closed).tabName);
        }
    }
}

void TestWindowRecovery::resetProjects_areKept()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    {
        const BoxAnswer no(QMessageBox::No);
        m_test->window.onResetProjectClicked();
        QVERIFY(no.given());
        QVERIFY(kept().isEmpty());
    }
    const BoxAnswer yes(QMessageBox::Yes);
    m_test->window.onResetProjectClicked();
    QVERIFY(yes.given());
    QCOMPARE(kept(), QStringList(u"Proyecto 11"_s));
    QCOMPARE(m_test->window.keptProjects().at(0).project.loads.size(), 1);
}

void TestWindowRecovery::replacedProjects_areKept()
{
    keep();
    const QString path = m_folder->filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, Support::workOf(u"Archivo"_s)));
    m_test->hangLoad(1.0F, 3.0F);
    QVERIFY(m_test->window.openProjectFile(path));
    QCOMPARE(kept(), QStringList(u"Proyecto 12"_s));
}

void TestWindowRecovery::untouchedProjects_areNot()
{
    keep();
    const QString path = m_folder->filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, Support::workOf(u"Archivo"_s)));
    QVERIFY(m_test->window.openProjectFile(path));
    m_test->window.onAddTab();
    m_test->window.onCloseTab(0);
    QVERIFY(!kept().contains(u"Proyecto 12"_s));
    for (const KeptProject& one : m_test->window.keptProjects())
        QVERIFY(!RecoveryProject::isUntouched(one.project));
}

void TestWindowRecovery::f9_listsAndOpens()
{
    keep();
    m_test->addScreen();
    m_test->hangLoad(44.5F, 3.0F);
    const LoadLogic::ProjectState before = m_test->window.captureCurrentState();
    {
        const BoxAnswer yes(QMessageBox::Yes);
        m_test->window.onResetProjectClicked();
    }
    QVERIFY(m_test->activate());
    const ListAnswer answer({0});
    QTest::keyClick(&m_test->window, Qt::Key_F9);
    QVERIFY(answer.given());
    QCOMPARE(answer.rows.size(), 1);
    QCOMPARE(answer.rows.at(0).at(0), u"Proyecto 1"_s);
    QCOMPARE(answer.rows.at(0).sliced(2), QStringList({u"2"_s, u"1"_s, u"1"_s, u"Proyecto restaurado"_s}));
    QVERIFY(answer.ticked.isEmpty());
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(m_test->tabBar()->currentIndex(), 1);
    QCOMPARE(m_test->tabBar()->tabText(1), u"Proyecto 1"_s);
    QVERIFY(RecoveryProject::isSame(m_test->window.captureCurrentState(), before));
    QCOMPARE(m_test->window.keptProjects().size(), 1); // it stays
}

void TestWindowRecovery::f9_withNothing_saysSo()
{
    keep();
    const BoxAnswer box(QMessageBox::Ok);
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(box.given());
    QCOMPARE(box.text, u"No hay nada que recuperar."_s);
}

void TestWindowRecovery::aCrash_isToldUntilTheListWasSeen()
{
    keep();
    QVERIFY(!m_test->window.recoveryNotice());
    m_test->hangLoad(1.0F, 3.0F);
    addTab(2.0F);
    crash();
    QVERIFY(m_test->window.recoveryNotice()->startsWith(u"Hay trabajo sin cerrar de "_s));
    QVERIFY(m_test->window.recoveryNotice()->endsWith(u": recuperar (F9)"_s));
    QCOMPARE(m_test->tabBar()->count(), 1);
    const auto* line = m_test->window.findChild<NoticeLine*>();
    QVERIFY(line != nullptr);
    const auto tells = [line](const QString& text) {
        const QList<Notice>& notices = line->notices();
        return std::any_of(notices.cbegin(), notices.cend(),
                           [&text](const Notice& notice) { return notice.text == text; });
    };
    const QString notice = m_test->window.recoveryNotice().value();
    QTRY_VERIFY(tells(notice));
    start(); // not answered: nothing is lost
    QVERIFY(m_test->window.recoveryNotice());

    const ListAnswer answer({}, false);
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(answer.given());
    QCOMPARE(answer.ticked, QList<int>({0, 1}));
    QVERIFY(!answer.mayOpen);
    QVERIFY(!m_test->window.recoveryNotice());
    QCOMPARE(m_test->tabBar()->count(), 1);
    start();
    QVERIFY(!m_test->window.recoveryNotice());
    const ListAnswer again({0, 1});
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(again.given());
    QCOMPARE(again.rows.size(), 2);
    QVERIFY(again.ticked.isEmpty());
    QCOMPARE(m_test->tabBar()->count(), 3);
}

void TestWindowRecovery::arrays_comeBackAsArrays()
{
    keep();
    m_test->setText("screenHeight", u"3.75"_s);
    m_test->addScreen();
    const LoadLogic::ProjectState before = m_test->window.captureCurrentState();
    QVERIFY(Project::isArraySegment(before.loads.at(0)));
    crash();
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(answer.given());
    const LoadLogic::ProjectState after = m_test->window.captureCurrentState();
    QVERIFY(RecoveryProject::isSame(after, before));
    QCOMPARE(after.trussStressPercentage, before.trussStressPercentage);
    for (qsizetype i = 0; i < after.motors.size(); ++i)
        QCOMPARE(after.motors.at(i).totalLoad, before.motors.at(i).totalLoad);
    QCOMPARE(after.loads.at(0).screenHeight, 3.75F);
    QCOMPARE(LoadLogic::NextGroupId > after.loads.at(0).groupId, true);
}

void TestWindowRecovery::usualEnd_isNotTold()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    m_test->window.endRecovery();
    start();
    QVERIFY(!m_test->window.recoveryNotice());
    const ListAnswer answer({}, false);
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(answer.given());
    QCOMPARE(answer.rows.size(), 1);
    QCOMPARE(answer.rows.at(0).constLast(), u"Abierto al cerrar el programa"_s);
    QVERIFY(answer.ticked.isEmpty());
}

void TestWindowRecovery::recoverLast_ticksTheLastSession()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    m_test->window.endRecovery();
    start();
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Last);
    QVERIFY(answer.given());
    QCOMPARE(answer.ticked, QList<int>({0}));
    QCOMPARE(m_test->tabBar()->count(), 2);
}

void TestWindowRecovery::unreadableFiles_cannotBeTicked()
{
    const QString path = m_folder->filePath(u"sesion-0123456789abcdef.abierta.json"_s);
    Support::put(path, "roto");
    keep();
    QCOMPARE(m_test->window.recoveryNotice(),
             u"Hay trabajo sin cerrar que no se puede recuperar: detalles (F9)"_s);
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Last);
    QVERIFY(answer.given());
    QVERIFY(!answer.mayOpen);
    QCOMPARE(answer.rows.at(0).at(0), path);
    QCOMPARE(answer.rows.at(0).constLast(), u"El archivo está dañado."_s);
}

// Old verdicts must not stand beside another project's drawing.
void TestWindowRecovery::onTheReportPage_theDesignIsShownFirst()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    crash();
    const auto* pages = m_test->window.findChild<QStackedWidget*>(u"centralWidget"_s);
    m_test->window.onGenerateReportClicked();
    QCOMPARE(pages->currentIndex(), 1);
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(answer.given());
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(pages->currentIndex(), 0);
}

void TestWindowRecovery::copiesOfUnfinishedSaving_comeBack()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    Support::put(m_folder->filePath(u"gira.rig.0123456789abcdef"_s),
                 ProjectFile::toBytes(LoadLogic::Snapshot()));
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Last);
    QVERIFY(answer.given());
    QCOMPARE(answer.rows.size(), 1);
    QVERIFY(answer.ticked.isEmpty());
    QCOMPARE(answer.rows.at(0).constLast(), u"Copia de «gira.rig» de antes de guardar"_s);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
}

void TestWindowRecovery::aFullDisk_isTold()
{
#ifdef Q_OS_UNIX
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    {
        const Support::FullDisk disk;
        m_test->window.saveRecovery();
    }
    QCOMPARE(m_test->window.recoveryNotice(),
             u"No se puede guardar la copia de recuperación: guarde sus proyectos"_s);
    m_test->window.saveRecovery();
    QVERIFY(!m_test->window.recoveryNotice());
#else
    QSKIP("No such limit here");
#endif
}

void TestWindowRecovery::namesOfHostileProjects_arePlainText()
{
    keep();
    m_test->hangLoad(1.0F, 3.0F);
    m_test->tabBar()->setTabText(0, u"<b>Uno</b>\n%1 & Co"_s);
    crash();
    const ListAnswer answer({0});
    m_test->window.recover(RecoveryChoice::Unclosed);
    QVERIFY(answer.given());
    QCOMPARE(answer.rows.at(0).at(0), u"<b>Uno</b> %1 & Co"_s);
    QCOMPARE(m_test->tabBar()->tabText(1), u"<b>Uno</b>\n%1 & Co"_s);
}

QTEST_MAIN(TestWindowRecovery)
#include "tst_windowrecovery.moc"
