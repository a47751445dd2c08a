#include "app/SheetBatch.h"

#include "app/Console.h"
#include "io/CalculationSheet.h"
#include "io/ProjectFile.h"
#include "io/SafeFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace
{

using Status = CalculationSheet::Status;

/// The bytes of the project's file, as `sha256sum` finds them; none where it was a pipe, or where another
/// project is in it by now.
QByteArray bytesOf(const Batch::NamedProject& named)
{
    constexpr qint64 LARGEST = 134'217'728;
    const QByteArray bytes = SafeFile::read(named.name, LARGEST).value_or(QByteArray());
    const std::optional<ProjectState> project = ProjectFile::fromBytes(bytes);
    const bool isSame = project && ProjectFile::toBytes(*project) == ProjectFile::toBytes(named.project);
    return isSame ? bytes : QByteArray();
}

CalculationSheet::Request requestOf(const CommandLine& options, const Batch::Input& input)
{
    CalculationSheet::Request request;
    for (const Batch::NamedProject& named : input.projects)
        request.items.append({named.project, bytesOf(named)});
    const QString folder =
        options.reportFolder.isEmpty() ? QDir::tempPath() : QDir(options.reportFolder).absolutePath();
    const QString name = QFileInfo(input.projects.constFirst().name).completeBaseName();
    request.path = folder + u'/' + CalculationSheet::fileName(name);
    request.version = CommandLine::versionNumber();
    request.date = QDateTime::currentDateTime();
    request.overwrite = options.overwrite;
    return request;
}

/// Prints what could not be written; returns whether it could.
bool isWritten(Status status, const QString& path)
{
    if (status == Status::Written)
        return true;
    Console::printError(u"velmora-master: "_s + Console::printable(path) + u": "_s
                        + (status == Status::Exists
                               ? u"Ya existe y no se toca; con --sobrescribir se reemplaza."_s
                               : u"No se pudo crear el archivo de la memoria."_s));
    return false;
}

} // namespace

int SheetBatch::write(const CommandLine& options, const Batch::Input& input)
{
    if (input.projects.isEmpty())
        return Batch::FAILED;
    const CalculationSheet::Request request = requestOf(options, input);
    const bool written = isWritten(CalculationSheet::write(request), request.path);
    const QList<CheckedProject> projects = Batch::check(input, options);
    const bool printed =
        Console::print((written ? request.path + u'\n' : QString()) + Batch::verdictLines(projects));
    return Batch::exitCode(projects, !written || !printed || !input.badFiles.isEmpty());
}
