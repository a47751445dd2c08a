#include "io/ConsolidatedReport.h"

#include "canvas/ScenePainter.h"
#include "engine/Statics.h"
#include "io/HtmlReport.h"
#include "io/SafeFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QThread>

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

/// Whether the report would show what is at `path`, which could not be replaced: an old drawing or a
/// stranger's. A folder is no picture.
bool showsAnother(const QString& path)
{
    const QFileInfo info(path);
    return info.isSymLink() || (info.exists() && !info.isDir());
}

/// Returns false where one of the drawings is another's for good.
bool publishDrawings(const QString& folder, const QList<QByteArray>& drawings, QStringList& missing)
{
    for (qsizetype i = 0; i < drawings.size(); ++i) {
        const QString path = folder + HtmlReport::drawingName(i);
        if (SafeFile::publish(path, drawings.at(i)))
            continue;
        if (showsAnother(path))
            return false;
        missing.append(path);
    }
    return true;
}

} // namespace

QDateTime ConsolidatedReport::freeSecond(const QString& folder)
{
    constexpr int MOST_WAITS = 3;
    constexpr int SECOND = 1000; // [ms]
    QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < MOST_WAITS && QFileInfo::exists(folder + u'/' + HtmlReport::reportName(now)); ++i) {
        QThread::msleep(static_cast<unsigned long>(SECOND - now.time().msec()));
        now = QDateTime::currentDateTime();
    }
    return now;
}

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
    outcome.path = folder + HtmlReport::reportName(request.generated);
    const QString html = HtmlReport::document(outcome.figures, request.currentTitle, request.generated);
    const bool isWritten = publishDrawings(folder, drawings, outcome.missingDrawings)
                           && SafeFile::publish(outcome.path, html.toUtf8());
    outcome.status = isWritten ? Status::Written : Status::NotWritten;
    return outcome;
}
