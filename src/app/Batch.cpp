#include "app/Batch.h"

#include "app/CheckedProject.h"
#include "app/Console.h"
#include "app/ContrastSummary.h"
#include "app/CsvSummary.h"
#include "app/Summary.h"
#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"
#include "io/ConsolidatedReport.h"
#include "io/HtmlReport.h"
#include "io/MarkupNames.h"
#include "io/ProjectFile.h"
#include "io/RecoveryStore.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

using Batch::BadFile;
using Batch::Input;
using Batch::NamedProject;

QString reasonOf(ProjectFile::Failure failure)
{
    return failure == ProjectFile::Failure::Unreadable ? u"No se pudo leer el archivo."_s
                                                       : u"Formato de archivo inválido."_s;
}

void printReason(const QString& name, const QString& reason)
{
    Console::printError(u"velmora-master: "_s + Console::printable(name) + u": "_s + reason);
}

CheckedProject checked(const NamedProject& named, const CommandLine& options)
{
    const ProjectState solved = Statics::solved(named.project);
    CheckedProject project{named.name, Figures::ofSolved(solved), {}};
    if (!options.withoutContrast)
        project.opinion = ProjectOpinion::of(solved, options.tableDeflection);
    return project;
}

QString warnings(const CheckedProject& project)
{
    return project.opinion ? ContrastSummary::warnings(*project.opinion) : QString();
}

bool isSafe(const CheckedProject& project)
{
    return Summary::isWithinLimits(project.figures) && !(project.opinion && project.opinion->contradicts());
}

QString summaryText(const QList<CheckedProject>& projects, const CommandLine& options)
{
    QStringList texts;
    for (const CheckedProject& project : projects) {
        texts.append(Summary::text(project.name, project.figures)
                     + (options.contrast ? ContrastSummary::text(*project.opinion) : warnings(project)));
    }
    return texts.join(u'\n');
}

/// With the second opinion where it is wanted, and where it contradicts what else is told.
QJsonObject projectObject(const CheckedProject& project, const CommandLine& options)
{
    using Levelling = ContrastSummary::Levelling;
    QJsonObject object = Summary::json(project.name, project.figures);
    if (project.opinion && (options.contrast || project.opinion->contradicts())) {
        object[u"contraste"_s] = ContrastSummary::json(
            *project.opinion, options.tableDeflection ? Levelling::Told : Levelling::Untold);
    }
    return object;
}

QJsonArray projectObjects(const QList<CheckedProject>& projects, const CommandLine& options)
{
    QJsonArray objects;
    for (const CheckedProject& project : projects)
        objects.append(projectObject(project, options));
    return objects;
}

/// `proyectos` and `errores` (each `archivo` and `motivo`) in the order of the command line.
QString summaryJson(const Input& input, const QJsonArray& projects)
{
    QJsonArray errors;
    for (const BadFile& file : input.badFiles)
        errors.append(QJsonObject{{u"archivo"_s, file.name}, {u"motivo"_s, file.reason}});

    const QJsonObject document{
        {u"version"_s, CommandLine::versionNumber()},
        {u"proyectos"_s, projects},
        {u"errores"_s, errors},
    };
    return QString::fromUtf8(QJsonDocument(document).toJson(QJsonDocument::Indented));
}

CsvSummary::Contrast columnsOf(const CommandLine& options)
{
    if (!options.contrast)
        return CsvSummary::Contrast::None;
    return options.tableDeflection ? CsvSummary::Contrast::ColumnsAndLevelling
                                   : CsvSummary::Contrast::Columns;
}

QString summaryOf(const Input& input, const QList<CheckedProject>& projects, const CommandLine& options)
{
    if (options.asCsv)
        return CsvSummary::text(projectObjects(projects, options), columnsOf(options));
    return options.asJson ? summaryJson(input, projectObjects(projects, options))
                          : summaryText(projects, options);
}

/// A table has no place for sentences: where it is to say nothing of what contradicts its figures, they
/// go to standard error.
void printContradictions(const QList<CheckedProject>& projects)
{
    for (const CheckedProject& project : projects) {
        const QStringList lines = warnings(project).split(u'\n', Qt::SkipEmptyParts);
        for (const QString& line : lines)
            printReason(project.name, line.trimmed());
    }
}

/// Names that the report shows as a browser takes them.
void printMarkupNames(const Input& input)
{
    for (const Batch::NamedProject& named : input.projects) {
        if (const std::optional<QString> name = MarkupNames::first(named.project)) {
            printReason(named.name,
                        u"«"_s + Console::shortened(*name)
                            + u"» es código HTML: el navegador lo toma como tal, y al abrir el informe "
                              "puede pedir páginas de otros."_s);
        }
    }
}

ConsolidatedReport::Request requestOf(const Input& input, const QString& folder)
{
    ConsolidatedReport::Request request;
    for (const NamedProject& named : input.projects)
        request.projects.append(named.project);
    request.currentTitle = input.projects.constFirst().project.tabName;
    request.folder = folder.isEmpty() ? QDir::tempPath() : QDir(folder).absolutePath();
    request.generated = ConsolidatedReport::freeSecond(request.folder);
    return request;
}

/// Prints what could not be written; returns whether there was anything.
bool hasFailed(const ConsolidatedReport::Outcome& outcome)
{
    for (const QString& path : outcome.missingDrawings)
        printReason(path, u"No se pudo guardar el dibujo."_s);
    if (outcome.status == ConsolidatedReport::Status::NotWritten)
        printReason(outcome.path, u"No se pudo crear el archivo del informe."_s);
    return !outcome.missingDrawings.isEmpty() || outcome.status != ConsolidatedReport::Status::Written;
}

/// What in `folder` a report of `count` projects would spoil: an older report, which shows whatever
/// drawings lie beside it, or a drawing. Empty where there is nothing.
QString spoiledIn(const QString& folder, qsizetype count)
{
    const QDir directory(folder);
    QStringList names = directory.entryList({u"informe_rigging_*.html"_s}, QDir::Files | QDir::System);
    for (qsizetype i = 0; i < count; ++i) {
        const QFileInfo drawing(directory.filePath(HtmlReport::drawingName(i)));
        if (drawing.exists() || drawing.isSymLink())
            names.append(drawing.fileName());
    }
    return names.isEmpty() ? QString() : names.constFirst();
}

/// Says so where the folder that was asked for holds an older report; returns whether it does.
bool wouldSpoil(const CommandLine& options, qsizetype count)
{
    if (options.reportFolder.isEmpty() || options.overwrite)
        return false;
    const QString spoiled = spoiledIn(options.reportFolder, count);
    if (!spoiled.isEmpty()) {
        printReason(options.reportFolder,
                    u"Ya hay un informe ("_s + spoiled
                        + u"), que enseñaría los dibujos de este; con --sobrescribir se "
                          "escribe igualmente."_s);
    }
    return !spoiled.isEmpty();
}

/// What the last session had open; prints what cannot be read.
Batch::Input readRecovered()
{
    const QList<RecoveryStore::Left> left = RecoveryStore().left();
    for (const RecoveryStore::Left& one : left) {
        if (one.failure != RecoveryFile::Failure::None)
            printReason(one.path, RecoveryStore::reason(one.failure));
    }
    Batch::Input input;
    const QList<ProjectState> projects = RecoveryStore::lastProjects(left);
    for (const ProjectState& project : projects)
        input.projects.append({project.tabName, project});
    if (projects.isEmpty()) {
        input.badFiles.append({RecoveryFolder::path(), u"No hay nada que recuperar."_s});
        printReason(RecoveryFolder::path(), input.badFiles.constLast().reason);
    }
    return input;
}

} // namespace

Batch::Input Batch::read(const CommandLine& options)
{
    if (options.recover)
        return readRecovered();
    Input input;
    for (const QString& name : options.files) {
        const ProjectFile::Content content = ProjectFile::readOnce(name);
        if (content.failure == ProjectFile::Failure::None) {
            input.projects.append({name, content.project});
            continue;
        }
        input.badFiles.append({name, reasonOf(content.failure)});
        printReason(name, input.badFiles.constLast().reason);
    }
    return input;
}

QList<CheckedProject> Batch::check(const Input& input, const CommandLine& options)
{
    QList<CheckedProject> projects;
    for (const NamedProject& named : input.projects)
        projects.append(checked(named, options));
    return projects;
}

QString Batch::verdictLines(const QList<CheckedProject>& projects)
{
    QString lines;
    for (const CheckedProject& project : projects) {
        const Figures& figures = project.figures;
        lines += Console::printable(project.name) + u": "_s + figures.resultWord() + u": "_s
                 + figures.resultReason();
        if (!figures.isCalculable())
            lines += u" Aviso: hay motores cuya carga no se puede calcular."_s;
        lines += u'\n' + warnings(project);
    }
    return lines;
}

int Batch::exitCode(const QList<CheckedProject>& projects, bool failed)
{
    if (failed)
        return FAILED;
    return std::all_of(projects.cbegin(), projects.cend(), isSafe) ? ALL_WITHIN_LIMITS : LIMITS_EXCEEDED;
}

int Batch::summarize(const CommandLine& options, const Input& input)
{
    const QList<CheckedProject> projects = check(input, options);
    const bool printed = Console::print(summaryOf(input, projects, options));
    if (options.asCsv && !options.contrast)
        printContradictions(projects);
    return exitCode(projects, !printed || !input.badFiles.isEmpty());
}

int Batch::report(const CommandLine& options, const Input& input)
{
    if (input.projects.isEmpty() || wouldSpoil(options, input.projects.size()))
        return FAILED;
    printMarkupNames(input);

    const ConsolidatedReport::Outcome outcome = ConsolidatedReport::write(
        requestOf(input, options.reportFolder), [](qsizetype /*done*/) { return true; });
    const bool failed = hasFailed(outcome);
    const bool written = outcome.status == ConsolidatedReport::Status::Written;
    const QList<CheckedProject> projects = check(input, options);
    const bool printed =
        Console::print((written ? outcome.path + u'\n' : QString()) + verdictLines(projects));
    return exitCode(projects, failed || !printed || !input.badFiles.isEmpty());
}
