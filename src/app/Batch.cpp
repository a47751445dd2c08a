#include "app/Batch.h"

#include "app/Console.h"
#include "app/Summary.h"
#include "io/ConsolidatedReport.h"
#include "io/ProjectFile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

struct NamedProject
{
    QString name; ///< the file as given
    ProjectState project;
};

struct BadFile
{
    QString name;
    QString reason;
};

struct Input
{
    QList<NamedProject> projects;
    QList<BadFile> badFiles;
};

QString reasonOf(ProjectFile::Failure failure)
{
    return failure == ProjectFile::Failure::Unreadable ? u"No se pudo leer el archivo."_s
                                                       : u"Formato de archivo inválido."_s;
}

void complain(const QString& name, const QString& reason)
{
    Console::complain(u"velmora-master: "_s + Console::harmless(name) + u": "_s + reason);
}

/// Reads what can be read, and complains about the rest.
Input readAll(const QStringList& files)
{
    Input input;
    for (const QString& name : files) {
        const ProjectFile::Content content = ProjectFile::read(name);
        if (content.failure == ProjectFile::Failure::None) {
            input.projects.append({name, content.project});
            continue;
        }
        input.badFiles.append({name, reasonOf(content.failure)});
        complain(name, input.badFiles.constLast().reason);
    }
    return input;
}

int exitCode(const QList<Figures>& figures, bool failed)
{
    if (failed)
        return Batch::FAILED;
    return std::all_of(figures.cbegin(), figures.cend(), Summary::isWithinLimits) ? Batch::ALL_WITHIN_LIMITS
                                                                                  : Batch::LIMITS_EXCEEDED;
}

QString summaryText(const Input& input, const QList<Figures>& figures)
{
    QStringList texts;
    for (qsizetype i = 0; i < figures.size(); ++i)
        texts.append(Summary::text(input.projects.at(i).name, figures.at(i)));
    return texts.join(u'\n');
}

/// `proyectos` and `errores` (each `archivo` and `motivo`) in the order of the command line.
QString summaryJson(const Input& input, const QList<Figures>& figures)
{
    QJsonArray projects;
    for (qsizetype i = 0; i < figures.size(); ++i)
        projects.append(Summary::json(input.projects.at(i).name, figures.at(i)));
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

QString verdictLines(const Input& input, const QList<Figures>& figures)
{
    QString lines;
    for (qsizetype i = 0; i < figures.size(); ++i) {
        const Figures& project = figures.at(i);
        lines += Console::harmless(input.projects.at(i).name) + u": "_s + project.resultWord() + u": "_s
                 + project.resultReason();
        if (!project.isCalculable())
            lines += u" Aviso: hay motores cuya carga no se puede calcular."_s;
        lines += u'\n';
    }
    return lines;
}

ConsolidatedReport::Request requestOf(const Input& input, const QString& folder)
{
    ConsolidatedReport::Request request;
    for (const NamedProject& named : input.projects)
        request.projects.append(named.project);
    request.currentTitle = input.projects.constFirst().project.tabName;
    request.folder = folder.isEmpty() ? QDir::tempPath() : QDir(folder).absolutePath();
    request.generated = QDateTime::currentDateTime();
    return request;
}

/// Complains about what could not be written; returns whether there was anything.
bool hasFailed(const ConsolidatedReport::Outcome& outcome)
{
    for (const QString& path : outcome.missingDrawings)
        complain(path, u"No se pudo guardar el dibujo."_s);
    if (outcome.status == ConsolidatedReport::Status::NotWritten)
        complain(outcome.path, u"No se pudo crear el archivo del informe."_s);
    return !outcome.missingDrawings.isEmpty() || outcome.status != ConsolidatedReport::Status::Written;
}

} // namespace

int Batch::summarize(const CommandLine& options)
{
    const Input input = readAll(options.files);
    QList<Figures> figures;
    for (const NamedProject& named : input.projects)
        figures.append(Figures::of(named.project));

    const bool printed =
        Console::print(options.asJson ? summaryJson(input, figures) : summaryText(input, figures));
    return exitCode(figures, !printed || !input.badFiles.isEmpty());
}

int Batch::report(const CommandLine& options)
{
    const Input input = readAll(options.files);
    if (input.projects.isEmpty())
        return FAILED;

    const ConsolidatedReport::Outcome outcome = ConsolidatedReport::write(
        requestOf(input, options.reportFolder), [](qsizetype /*done*/) { return true; });
    const bool failed = hasFailed(outcome);
    const bool written = outcome.status == ConsolidatedReport::Status::Written;
    const bool printed =
        Console::print((written ? outcome.path + u'\n' : QString()) + verdictLines(input, outcome.figures));
    return exitCode(outcome.figures, failed || !printed || !input.badFiles.isEmpty());
}
