#include "io/SheetDialogs.h"
#include "ui/ContrastDialog.h"
#include "ui/MainWindow.h"

#include <QTabBar>

void MainWindow::onSheetClicked()
{
    SheetDialogs::save(this, openProjects(), m_tabBar->tabText(currentProjectIndex));
}

void MainWindow::onPrintContrastClicked()
{
    ProjectState shown = captureCurrentState();
    shown.tabName = m_tabBar->tabText(currentProjectIndex);
    SheetDialogs::printContrast(this, shown, m_contrast->tableDeflection());
}
