#include "io/RecoveryDesk.h"
#include "io/RecoveryDialog.h"
#include "io/RecoveryProject.h"
#include "ui/Boxes.h"
#include "ui/MainWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QTabBar>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The id of what the notice line says of recovery.
const QString NOTICE = u"recovery"_s;

} // namespace

void MainWindow::keepRecovery(const QString& folder)
{
    const RecoveryStore store(folder);
    store.removeOld();
    m_recovery.reset(new RecoveryDesk{
        folder, store, {folder, QCoreApplication::applicationVersion()}, store.notice(), false});
    connect(blinkTimer, &QTimer::timeout, this, &MainWindow::lookForWork);
    onKey(Qt::Key_F9, [this] { recover(RecoveryChoice::Unclosed); });
    connect(this, &MainWindow::noticePicked, this, [this](const QString& id) {
        if (id == NOTICE)
            recover(RecoveryChoice::Unclosed);
    });
    tellRecovery();
#ifndef QT_NO_SESSIONMANAGER
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this] {
            m_recovery->isDesktopSessionOver = true;
            saveRecovery();
        },
        Qt::DirectConnection);
#endif
}

// While fields are being filled the project in the engine and the texts belong to two states.
void MainWindow::lookForWork()
{
    if (!isRestoring)
        m_recovery->keeper.look(openProjects(), currentProjectIndex);
    tellRecovery();
}

void MainWindow::tellRecovery()
{
    const std::optional<QString> text = recoveryNotice();
    if (text == m_recovery->told)
        return;
    m_recovery->told = text;
    if (text)
        keepNotice({Notice::Kind::Recovery, NOTICE, *text});
    else
        dropNotice(NOTICE);
}

QList<LoadLogic::ProjectState> MainWindow::openProjects() const
{
    QList<LoadLogic::ProjectState> open = projects;
    if (isProject(currentProjectIndex))
        open[currentProjectIndex] = captureCurrentState();
    for (qsizetype i = 0; i < open.size(); ++i)
        open[i].tabName = m_tabBar->tabText(static_cast<int>(i));
    return open;
}

QList<KeptProject> MainWindow::keptProjects() const
{
    return m_recovery ? m_recovery->keeper.kept() : QList<KeptProject>();
}

void MainWindow::keepResetProject()
{
    if (m_recovery && isProject(currentProjectIndex))
        m_recovery->keeper.keep(captureCurrentState(), KeptProject::Reason::Reset);
}

void MainWindow::keepReplacedProject()
{
    if (m_recovery && isProject(currentProjectIndex))
        m_recovery->keeper.keep(captureCurrentState(), KeptProject::Reason::Replaced);
}

// Closing a tab can put the current project into its neighbour's place: what is nowhere afterwards
// was overwritten.
void MainWindow::keepVanished(const QList<LoadLogic::ProjectState>& before, int closed)
{
    if (!m_recovery)
        return;
    const QList<LoadLogic::ProjectState> after = openProjects();
    for (qsizetype i = 0; i < before.size(); ++i) {
        const LoadLogic::ProjectState& project = before.at(i);
        const bool isThere =
            std::any_of(after.cbegin(), after.cend(), [&project](const LoadLogic::ProjectState& other) {
                return RecoveryProject::isSame(other, project);
            });
        if (i != closed && !isThere)
            m_recovery->keeper.keep(project, KeptProject::Reason::Overwritten);
    }
    m_recovery->keeper.keep(before.at(closed), KeptProject::Reason::Closed);
}

std::optional<QString> MainWindow::recoveryNotice() const
{
    if (!m_recovery)
        return std::nullopt;
    if (m_recovery->keeper.hasFailed())
        return u"No se puede guardar la copia de recuperación: guarde sus proyectos"_s;
    return m_recovery->notice;
}

void MainWindow::recover(RecoveryChoice choice)
{
    if (!m_recovery)
        return;
    QList<RecoveryEntry> entries =
        RecoveryList::of(m_recovery->keeper.kept(), m_recovery->store.left(), choice);
    entries += RecoveryList::copiesIn(m_recovery->folder);
    m_recovery->store.markSeen();
    m_recovery->notice.reset();
    tellRecovery();
    if (entries.isEmpty()) {
        Boxes::say(this, QMessageBox::Information, u"Recuperar trabajo"_s, u"No hay nada que recuperar."_s);
        return;
    }
    // The window may be closed, and the dialog with it, while it is open.
    const QPointer<RecoveryDialog> dialog = new RecoveryDialog(entries, this);
    const bool isAccepted = dialog->exec() == QDialog::Accepted && !dialog.isNull();
    const QList<LoadLogic::ProjectState> chosen =
        isAccepted ? dialog->chosen() : QList<LoadLogic::ProjectState>();
    delete dialog;
    if (!chosen.isEmpty())
        onBackToDesignClicked();
    for (const LoadLogic::ProjectState& project : chosen)
        addProject(project);
}

void MainWindow::saveRecovery()
{
    if (m_recovery)
        m_recovery->keeper.save(openProjects(), currentProjectIndex);
}

void MainWindow::endRecovery()
{
    saveRecovery();
    if (m_recovery && !m_recovery->isDesktopSessionOver)
        m_recovery->keeper.end();
}
