#include "io/ConsolidatedReport.h"

#include "canvas/TrussView.h"
#include "io/HtmlReport.h"
#include "io/SafeFile.h"

#include <QBuffer>
#include <QImage>

using namespace Qt::StringLiterals;

namespace
{

constexpr int DRAWING_WIDTH = 2000; // [px]
constexpr int DRAWING_HEIGHT = 800; // [px]
constexpr int JPEG_QUALITY = 90;

/// The drawing of the project in the engine, encoded.
QByteArray drawing(TrussView& view)
{
    view.printMode = true;
    view.update();

    QByteArray bytes;
    QBuffer buffer(&bytes);
    view.renderToImage(DRAWING_WIDTH, DRAWING_HEIGHT).save(&buffer, "JPG", JPEG_QUALITY);
    return bytes;
}

struct Drawn
{
    Figures figures;
    QByteArray jpeg;
};

Drawn draw(const LoadLogic::ProjectState& project, TrussView& view)
{
    const EngineLoan loan;
    LoadLogic::MakeCurrent(project);
    LoadLogic::CalcularReacciones();
    ProjectState solved = LoadLogic::Snapshot();
    solved.tabName = project.tabName;
    return {Figures::ofSolved(solved), drawing(view)};
}

} // namespace

ConsolidatedReport::Outcome ConsolidatedReport::write(const Request& request, TrussView& view,
                                                      const Progress& progress)
{
    Outcome outcome;
    QList<QByteArray> drawings;
    for (const LoadLogic::ProjectState& project : request.projects) {
        Drawn drawn = draw(project, view);
        outcome.figures.append(drawn.figures);
        drawings.append(drawn.jpeg);
        if (!progress(drawings.size())) {
            outcome.status = Status::Cancelled;
            return outcome;
        }
    }

    const QString folder = request.folder + u'/';
    for (qsizetype i = 0; i < drawings.size(); ++i) {
        const QString path = folder + HtmlReport::drawingName(i);
        if (!SafeFile::publish(path, drawings.at(i)))
            outcome.missingDrawings.append(path);
    }

    outcome.path = folder + HtmlReport::reportName(request.generated);
    const QString html = HtmlReport::document(outcome.figures, request.currentTitle, request.generated);
    if (!SafeFile::publish(outcome.path, html.toUtf8()))
        outcome.status = Status::NotWritten;
    return outcome;
}
