#include "canvas/TrussView.h"
#include "engine/Edits.h"
#include "ui/MainWindow.h"

#include <QInputDialog>
#include <QMenu>
#include <QPointer>
#include <QTabBar>

using namespace Qt::StringLiterals;

namespace
{

/// Of the motors of a new tab; those that are added by hand weigh twice as much.
constexpr float NEW_TAB_MOTOR_WEIGHT = 25.0F; // [kg]

} // namespace

bool MainWindow::isProject(int index) const
{
    return index >= 0 && index < projects.size();
}

void MainWindow::storeCurrentProject()
{
    if (isProject(currentProjectIndex))
        projects[currentProjectIndex] = captureCurrentState();
}

void MainWindow::onAddTab()
{
    storeCurrentProject();
    const QString title = u"Proyecto "_s + QString::number(projects.size() + 1);
    projects.append(Edits::freshProject(title, NEW_TAB_MOTOR_WEIGHT));
    m_tabBar->setCurrentIndex(appendTab(title));
}

// The style decides on which side the close button stands; it carries no text that could be read out.
int MainWindow::appendTab(const QString& title)
{
    const int index = m_tabBar->addTab(title);
    for (const QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget* close = m_tabBar->tabButton(index, side))
            close->setAccessibleName(u"Cerrar pestaña"_s);
    }
    return index;
}

void MainWindow::onTabChanged(int index)
{
    if (isRestoring || index == -1 || index == currentProjectIndex)
        return;
    storeCurrentProject();
    if (!isProject(index))
        return;
    currentProjectIndex = index;
    restoreProjectState(projects.at(index));
    updateCalculations();
    m_canvas->update();
}

// The current index is left as it is: removing the tab changes the current one, and that stores
// the project of the engine under the old index before it loads the new one.
void MainWindow::onCloseTab(int index)
{
    if (projects.size() < 2 || !isProject(index))
        return;
    const QList<LoadLogic::ProjectState> before = openProjects();
    projects.removeAt(index);
    m_tabBar->removeTab(index);
    keepVanished(before, index);
}

void MainWindow::onRenameTab(int index)
{
    bool accepted = false;
    const QString name = QInputDialog::getText(this, u"Renombrar Proyecto"_s, u"Nombre del proyecto:"_s,
                                               QLineEdit::Normal, m_tabBar->tabText(index), &accepted);
    if (!accepted || name.isEmpty())
        return;
    m_tabBar->setTabText(index, name);
    if (isProject(index))
        projects[index].tabName = name;
}

void MainWindow::showTabMenu(const QPoint& point)
{
    const int index = m_tabBar->tabAt(point);
    if (index == -1)
        return;
    const QPointer<QMenu> menu = new QMenu(this);
    QAction* rename = menu->addAction(u"Renombrar"_s);
    rename->setShortcut(Qt::Key_F2); // to be read: the window's own action has the key
    rename->setShortcutVisibleInContextMenu(true);
    const QAction* close = menu->addAction(u"Cerrar Pestaña"_s);
    const QAction* chosen = menu->exec(m_tabBar->mapToGlobal(point));
    const bool renames = chosen != nullptr && chosen == rename;
    const bool closes = chosen != nullptr && chosen == close;
    delete menu;

    if (renames)
        onRenameTab(index);
    else if (closes)
        onCloseTab(index);
}
