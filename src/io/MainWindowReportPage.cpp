#include "canvas/TrussView.h"
#include "io/ReportPage.h"
#include "io/ReportProgress.h"
#include "ui/MainWindow.h"

#include <QStackedWidget>

namespace
{

constexpr int DESIGN_PAGE = 0;
constexpr int REPORT_PAGE = 1;

/// Nothing when the user cancelled.
std::optional<QList<Figures>> calculateAll(const QList<LoadLogic::ProjectState>& projects,
                                           ReportProgress& progress)
{
    QList<Figures> figures;
    figures.reserve(projects.size());
    for (const LoadLogic::ProjectState& project : projects) {
        figures.append(Figures::of(project));
        if (!progress.advance(figures.size()))
            return std::nullopt;
    }
    return figures;
}

} // namespace

void MainWindow::buildReportPage()
{
    m_reportPage = new ReportPage(m_pages);
    m_pages->addWidget(m_reportPage);
    connect(m_reportPage, &ReportPage::backClicked, this, &MainWindow::onBackToDesignClicked);
    connect(m_reportPage, &ReportPage::printClicked, this, &MainWindow::onPrintReportClicked);
}

void MainWindow::onGenerateReportClicked()
{
    m_pages->setCurrentIndex(REPORT_PAGE);
    const QList<LoadLogic::ProjectState> reported = reportedProjects();
    m_reportPage->clear();

    ReportProgress progress(this, reported.size());
    const std::optional<QList<Figures>> figures = calculateAll(reported, progress);
    recalculateAfterReport();
    if (figures)
        m_reportPage->fill(*figures);
    else
        onBackToDesignClicked();
    update();
}

void MainWindow::onBackToDesignClicked()
{
    m_pages->setCurrentIndex(DESIGN_PAGE);
}

QList<LoadLogic::ProjectState> MainWindow::reportedProjects()
{
    storeCurrentProject();
    return openProjects();
}

void MainWindow::recalculateAfterReport()
{
    if (!isProject(currentProjectIndex))
        return;
    LoadLogic::CalcularReacciones();
    m_canvas->update();
}
