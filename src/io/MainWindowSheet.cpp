#include "io/SheetDialogs.h"
#include "ui/ContrastDialog.h"
#include "ui/MainWindow.h"

#include <QTabBar>

void MainWindow::onSheetClicked()
{
    const bool isAskedInDialog = m_contrast != nullptr && m_contrast->isActiveWindow();
    SheetDialogs::save(isAskedInDialog ? static_cast<QWidget*>(m_contrast) : this, openProjects(),
                       m_tabBar->tabText(currentProjectIndex));
}

void MainWindow::onPrintContrastClicked()
{
    ProjectState shown = captureCurrentState();
    shown.tabName = m_tabBar->tabText(currentProjectIndex);
    SheetDialogs::printContrast(m_contrast, shown, m_contrast->tableDeflection());
}
