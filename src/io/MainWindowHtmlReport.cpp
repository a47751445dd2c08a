#include "io/ConsolidatedReport.h"
#include "io/ReportProgress.h"
#include "ui/Boxes.h"
#include "ui/MainWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QTabBar>
#include <QUrl>

using namespace Qt::StringLiterals;

using ConsolidatedReport::Status;

namespace
{

ConsolidatedReport::Outcome writeReport(const ConsolidatedReport::Request& request, QWidget* window)
{
    ReportProgress progress(window, request.projects.size());
    return ConsolidatedReport::write(request, [&progress](qsizetype done) { return progress.advance(done); });
}

} // namespace

void MainWindow::onPrintReportClicked()
{
    const QList<LoadLogic::ProjectState> reported = reportedProjects();
    noticeMarkup(reported);
    const QString currentTitle =
        isProject(currentProjectIndex) ? m_tabBar->tabText(currentProjectIndex) : u"Sin Nombre"_s;
    const QString folder = QDir::tempPath();
    const ConsolidatedReport::Outcome outcome =
        writeReport({reported, currentTitle, folder, ConsolidatedReport::freeSecond(folder)}, this);
    recalculateAfterReport();

    if (outcome.status == Status::NotWritten) {
        Boxes::say(this, QMessageBox::Critical, u"Error de Escritura"_s,
                   u"No se pudo crear el archivo del informe en:\n"_s + outcome.path);
    }
    if (outcome.status == Status::Written)
        showInBrowser(outcome.path);
}

void MainWindow::showInBrowser(const QString& path)
{
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        Boxes::say(
            this, QMessageBox::Information, u"Informe Generado"_s,
            u"Se ha generado un informe consolidado.\n\nEl archivo se ha abierto en su navegador predeterminado."_s);
        return;
    }
    Boxes::say(this, QMessageBox::Warning, u"Error de Navegador"_s,
               u"No se pudo abrir el navegador automáticamente.\n\nBusque el archivo en: "_s + path);
}
