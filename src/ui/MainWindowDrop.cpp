#include "ui/MainWindow.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace
{

/// The project files among what is dragged, in its order.
QStringList projectFiles(const QMimeData* dragged)
{
    QStringList paths;
    const QList<QUrl> urls = dragged->urls();
    for (const QUrl& url : urls) {
        const QString path = url.toLocalFile();
        if (path.endsWith(".rig"_L1, Qt::CaseInsensitive) || path.endsWith(".json"_L1, Qt::CaseInsensitive))
            paths.append(path);
    }
    return paths;
}

} // namespace

// While a dialog waits for an answer, nobody changes the project behind its back.
void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (QApplication::activeModalWidget() == nullptr && !projectFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

// The files are opened once the drop is over: a box about a broken one would hold up the program that
// the files come from.
void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    emit filesDropped(projectFiles(event->mimeData()));
}

// The report page tells of the projects as they were when it was filled, over the drawing of the one
// that is open now: another project under old verdicts would mislead.
void MainWindow::openDroppedFiles(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    onBackToDesignClicked();
    openProjectFile(paths.constFirst());
    for (const QString& path : paths.sliced(1))
        openInNewTab(path);
}

void MainWindow::openInNewTab(const QString& path)
{
    const std::optional<LoadLogic::ProjectState> project = readProject(path);
    if (project)
        addProject(*project);
}

void MainWindow::addProject(const LoadLogic::ProjectState& project)
{
    onAddTab();
    replaceProject(project);
    nameCurrentTab(project.tabName);
}
