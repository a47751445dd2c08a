#include "io/ProjectFile.h"
#include "io/SafeFile.h"

#include <QFile>

#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

// Saves projects as the window does, for tools/kill-save.sh to disturb and for other users to start:
//     saver FILE          the old and the new project over FILE in turn, until it is killed; prints
//                         a line when the first is there
//     saver --old FILE    the old project once; the exit code is 0 only if it says that it is saved
//     saver --new FILE    the new one
//     saver --publish FILE    the new one as a file of a report

namespace
{

/// Large enough for several writes: some 400 kB of text.
constexpr int LOADS = 1500;

ProjectState project(const QString& name, float mass)
{
    ProjectState state;
    state.tabName = name;
    for (int id = 1; id <= LOADS; ++id) {
        ActiveLoad load;
        load.id = id;
        load.mass = mass;
        load.name = name;
        state.loads.append(load);
    }
    return state;
}

ProjectState oldProject()
{
    return project(u"Antes"_s, 100.25F);
}

ProjectState newProject()
{
    return project(u"Después de guardar"_s, 7.5F);
}

int saveOnce(const QString& path, const ProjectState& state)
{
    return ProjectFile::write(path, state) ? 0 : 1;
}

[[noreturn]] void saveForEver(const QString& path)
{
    const ProjectState before = oldProject();
    const ProjectState after = newProject();
    ProjectFile::write(path, before);
    std::puts("saving");
    std::fflush(stdout);
    for (;;) {
        ProjectFile::write(path, after);
        ProjectFile::write(path, before);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc == 2)
        saveForEver(QFile::decodeName(argv[1]));
    if (argc == 3 && std::strcmp(argv[1], "--old") == 0)
        return saveOnce(QFile::decodeName(argv[2]), oldProject());
    if (argc == 3 && std::strcmp(argv[1], "--new") == 0)
        return saveOnce(QFile::decodeName(argv[2]), newProject());
    if (argc == 3 && std::strcmp(argv[1], "--publish") == 0)
        return SafeFile::publish(QFile::decodeName(argv[2]), ProjectFile::toBytes(newProject())) ? 0 : 1;
    std::fputs("usage: saver [--old | --new | --publish] FILE\n", stderr);
    return 2;
}
