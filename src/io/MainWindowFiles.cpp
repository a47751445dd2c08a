#include "io/MarkupNames.h"
#include "io/ProjectFile.h"
#include "ui/Boxes.h"
#include "ui/MainWindow.h"

#include <QFileDialog>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace
{

const QString FILE_FILTER = u"Rigging Project (*.rig);;JSON File (*.json)"_s;

} // namespace

void MainWindow::onSaveProjectClicked()
{
    const QString path = QFileDialog::getSaveFileName(this, u"Guardar Proyecto"_s, QString(), FILE_FILTER);
    if (path.isEmpty())
        return;

    if (!ProjectFile::write(path, captureCurrentState())) {
        Boxes::say(this, QMessageBox::Critical, u"Error"_s, u"No se pudo guardar el archivo."_s);
        return;
    }
    noticeSavedFile(path);
    Boxes::say(this, QMessageBox::Information, u"Guardado"_s, u"Proyecto guardado con éxito."_s);
}

void MainWindow::onLoadProjectClicked()
{
    const QString path = QFileDialog::getOpenFileName(this, u"Abrir Proyecto"_s, QString(), FILE_FILTER);
    if (!path.isEmpty())
        openProjectFile(path);
}

bool MainWindow::openProjectFile(const QString& path)
{
    const std::optional<LoadLogic::ProjectState> project = readProject(path);
    if (project)
        replaceProject(*project);
    return project.has_value();
}

void MainWindow::openProjectFiles(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    if (const std::optional<LoadLogic::ProjectState> project = readProject(paths.constFirst())) {
        replaceProject(*project);
        nameCurrentTab(project->tabName);
    }
    for (const QString& path : paths.sliced(1))
        openInNewTab(path);
}

std::optional<LoadLogic::ProjectState> MainWindow::readProject(const QString& path)
{
    const ProjectFile::Content content = ProjectFile::read(path, LoadLogic::CurrentTruss());
    switch (content.failure) {
    case ProjectFile::Failure::None:
        noticeMarkup({content.project});
        return content.project;
    case ProjectFile::Failure::Unreadable:
        Boxes::say(this, QMessageBox::Critical, u"Error"_s, u"No se pudo leer el archivo."_s);
        break;
    case ProjectFile::Failure::NotAProject:
        Boxes::say(this, QMessageBox::Critical, u"Error"_s, u"Formato de archivo inválido."_s);
        break;
    }
    return std::nullopt;
}

void MainWindow::replaceProject(const LoadLogic::ProjectState& project)
{
    keepReplacedProject();
    pushUndoState();
    LoadLogic::ReserveIds(project);
    restoreProjectState(project);
    updateCalculations();
}

void MainWindow::nameCurrentTab(const QString& name)
{
    if (name.isEmpty() || !isProject(currentProjectIndex))
        return;
    m_tabBar->setTabText(currentProjectIndex, name);
    projects[currentProjectIndex].tabName = name;
}

void MainWindow::noticeMarkup(const QList<LoadLogic::ProjectState>& opened)
{
    for (const LoadLogic::ProjectState& project : opened) {
        if (const std::optional<QString> name = MarkupNames::first(project)) {
            keepNotice(Notices::markupName(*name));
            return;
        }
    }
}
