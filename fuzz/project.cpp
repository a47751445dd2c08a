#include "engine/Figures.h"
#include "io/HtmlReport.h"
#include "io/ProjectFile.h"
#include "io/ReportPage.h"

#include <QTemporaryDir>

#include <cstdint>

#include "fuzz/Fuzzing.h"

using namespace Qt::StringLiterals;

// A project file's bytes, the way they go through the program: state, calculation, both reports,
// saved, opened again.

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
    const auto project = ProjectFile::fromBytes(bytes);
    if (project) {
        report(*project);
        saveAndOpen(*project);
    }
    return 0;
}
