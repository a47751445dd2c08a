#include "app/CommandLine.h"
#include "app/ContrastSummary.h"
#include "app/CsvSummary.h"
#include "app/Summary.h"
#include "engine/Figures.h"
#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"
#include "io/HtmlReport.h"
#include "io/ProjectFile.h"
#include "io/ReportPage.h"

#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstdint>

#include "fuzz/Fuzzing.h"

using namespace Qt::StringLiterals;

// A project file's bytes, the way they go through the program: state, calculation, both reports, the
// second opinion and the documents of the command line, saved, opened again. The same bytes, a line
// each, are options too.

namespace
{

const QDateTime SOME_DAY(QDate(2024, 2, 29), QTime(12, 0));

void report(const ProjectState& project)
{
    const Figures figures = Figures::of(project);
    Fuzzing::check(figures.motors.size() == project.motors.size(), "every motor is reported");
    Fuzzing::check(figures.loads.size() == project.loads.size(), "every load is reported");
    Fuzzing::check(!HtmlReport::document({figures}, project.tabName, SOME_DAY).isEmpty(),
                   "there is a report");

    static ReportPage page;
    page.fill({figures});
}

void contrast(const ProjectState& project)
{
    constexpr double DEFLECTION = 15.0; // [mm]
    const ProjectState solved = Statics::solved(project);
    const SecondOpinion::Opinion opinion = ProjectOpinion::of(solved, DEFLECTION);
    Fuzzing::check(ContrastSummary::warnings(opinion).isEmpty() != opinion.contradicts(),
                   "a contradiction is told, and nothing else");
    Fuzzing::check(ContrastSummary::text(opinion).endsWith(u"flojo no es roto.\n"_s), "all of it is told");

    QJsonObject object = Summary::json(u"a.rig"_s, Figures::ofSolved(solved));
    object[u"contraste"_s] = ContrastSummary::json(opinion, ContrastSummary::Levelling::Told);
    const QByteArray document = QJsonDocument(object).toJson();
    Fuzzing::check(QJsonDocument::fromJson(document).object().keys() == object.keys(),
                   "the document can be read");
    const QString table = CsvSummary::text({object}, CsvSummary::Contrast::ColumnsAndLevelling);
    Fuzzing::check(table.count(u'\n') == 2 + solved.motors.size() + solved.loads.size(),
                   "truss, motors and loads have a record each");
    Fuzzing::check(table.count(u'\n') == table.count(u"\r\n"_s), "each record ends as the book says");
}

void readOptions(const QByteArray& bytes)
{
    const CommandLine line = CommandLine::parse(QString::fromUtf8(bytes).split(u'\n'));
    Fuzzing::check(line.help || line.version || !line.error.isEmpty() || !line.isBatch()
                       || !line.files.isEmpty(),
                   "what can be obeyed has files");
    Fuzzing::check(!line.tableDeflection || *line.tableDeflection > 0.0, "a deflection is one");
}

void saveAndOpen(const ProjectState& project)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    Fuzzing::check(ProjectFile::write(path, project), "a project that was opened can be saved");

    const ProjectFile::Content again = ProjectFile::read(path);
    Fuzzing::check(again.failure == ProjectFile::Failure::None, "a project that was saved can be opened");
    Fuzzing::check(ProjectFile::toBytes(again.project) == ProjectFile::toBytes(project),
                   "it is the same project");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    Fuzzing::startApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    readOptions(bytes);
    const auto project = ProjectFile::fromBytes(bytes);
    if (project) {
        report(*project);
        contrast(*project);
        saveAndOpen(*project);
    }
    return 0;
}
