#include "engine/Figures.h"
#include "io/RecoveryFile.h"
#include "io/RecoveryList.h"
#include "io/RecoveryProject.h"
#include "io/RecoveryStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

#include "fuzz/Fuzzing.h"

using namespace Qt::StringLiterals;

// The bytes of a recovery file, the way they go through the next start of the program: read, listed,
// calculated, written again.

namespace
{

/// What is read once is kept as it is from then on.
void writeAgain(const RecoverySession& session)
{
    const QByteArray bytes = RecoveryFile::toBytes(session);
    const RecoveryFile::Content again = RecoveryFile::fromBytes(bytes);
    Fuzzing::check(again.failure == RecoveryFile::Failure::None, "what was written can be read");
    Fuzzing::check(RecoveryFile::toBytes(again.session) == bytes, "it is the same session");
    Fuzzing::check(again.session.tabs.size() == session.tabs.size(), "every tab is kept");
    Fuzzing::check(again.session.kept.size() == session.kept.size(), "so is what is not open any more");
}

void calculate(const RecoverySession& session)
{
    for (const ProjectState& project : session.tabs)
        Fuzzing::check(Figures::of(project).motors.size() == project.motors.size(),
                       "every motor has figures");
}

/// As a file of an earlier run, among those of which the next start makes its list.
void list(const QByteArray& bytes)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(u"sesion-0123456789abcdef.abierta.json"_s));
    Fuzzing::check(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "there is a file");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.close();
    const RecoveryStore store(folder.path());
    const QList<RecoveryStore::Left> left = store.left();
    const QList<ProjectState> worked = RecoveryStore::lastProjects(left);
    for (const ProjectState& project : worked)
        Fuzzing::check(!RecoveryProject::isUntouched(project), "somebody worked on what comes back");
    for (const RecoveryEntry& entry : RecoveryList::of({}, left, RecoveryChoice::Last))
        RecoveryList::count(entry.project.loads);
    Fuzzing::check(file.exists(), "looking removes nothing");
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
    const RecoveryFile::Content content = RecoveryFile::fromBytes(bytes);
    if (content.failure == RecoveryFile::Failure::None) {
        writeAgain(content.session);
        calculate(content.session);
    }
    list(bytes);
    return 0;
}
