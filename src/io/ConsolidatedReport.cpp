#include "io/ConsolidatedReport.h"

#include "canvas/ScenePainter.h"
#include "engine/Statics.h"
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

/// The drawing of a project that holds its results, encoded.
QByteArray drawing(const ProjectState& solved, PaintKit& kit)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    ScenePainter::toImage(Scene::forPrint(solved), kit, DRAWING_WIDTH, DRAWING_HEIGHT)
        .save(&buffer, "JPG", JPEG_QUALITY);
    return bytes;
}

} // namespace

ConsolidatedReport::Outcome ConsolidatedReport::write(const Request& request, const Progress& progress)
{
    Outcome outcome;
    QList<QByteArray> drawings;
    PaintKit kit;
    for (const ProjectState& project : request.projects) {
        const ProjectState solved = Statics::solved(project);
        outcome.figures.append(Figures::ofSolved(solved));
        drawings.append(drawing(solved, kit));
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
