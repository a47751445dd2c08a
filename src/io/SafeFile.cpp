#include "io/SafeFile.h"

#include "io/PosixFile.h"
#include "io/PosixPipe.h"
#include "io/SaveWay.h"

#include <QDir>

#include <memory>
#include <string>

using Posix::ExistingFile;
using Posix::NewFile;
using Posix::Path;

namespace
{

/// So much of a file's name fits into a longer one everywhere [bytes].
constexpr std::size_t LONGEST_PART = 200;

/// The beginning of the names of files that are there for a moment: hidden, and short enough beside a
/// name as long as names can be.
Path momentaryName(const Path& target)
{
    return target.parent_path() / ".velmora-";
}

/// Puts a new file in the place of `target`, unless `facts`, which it completes, ask for another way
/// before that.
bool replace(const Path& target, const QByteArray& bytes, FileFacts& facts)
{
    NewFile file(momentaryName(target), facts.exists ? NewFile::Readers::Owner : NewFile::Readers::AsUsual);
    facts.folderRefuses = file.wasRefused();
    if (!file.isOpen())
        return false;
    if (facts.exists)
        file.resemble(target, facts);
    if (chooseWay(facts) != SaveWay::Replace || !file.write(bytes) || !file.finish())
        return false;

    const bool isMoved = file.moveTo(target);
    facts.folderRefuses = file.wasRefused();
    return isMoved && Posix::syncFolder(target.parent_path());
}

std::unique_ptr<NewFile> copyIn(const Path& folder, ExistingFile& file, const std::string& name)
{
    if (folder.empty()) // not known: nobody would look for it in the working folder
        return nullptr;
    auto copy = std::make_unique<NewFile>(folder / (name + '.'), NewFile::Readers::Owner);
    const bool isSafe = copy->copyFrom(file) && copy->finish() && Posix::syncFolder(folder);
    return isSafe ? std::move(copy) : nullptr;
}

/// A copy of `file` that is on the disk, or nothing.
std::unique_ptr<NewFile> safetyCopy(ExistingFile& file, const std::string& name, const Path& folder)
{
    std::unique_ptr<NewFile> copy;
    if (Posix::makePrivateFolder(folder))
        copy = copyIn(folder, file, name);
    return copy ? std::move(copy) : copyIn(Posix::nativePath(QDir::tempPath()), file, name);
}

bool restore(const Path& target, const Path& copy)
{
    ExistingFile from(copy, ExistingFile::Use::Read);
    ExistingFile to(target, ExistingFile::Use::Change);
    return to.copyFrom(from) && to.finish();
}

bool writeInPlace(const Path& target, const QByteArray& bytes, const Path& copies)
{
    ExistingFile file(target, ExistingFile::Use::Change);
    if (!file.lock())
        return false;
    const std::unique_ptr<NewFile> copy =
        safetyCopy(file, target.filename().native().substr(0, LONGEST_PART), copies);
    if (!copy)
        return false;
    if (file.write(bytes) && file.cut(bytes.size()) && file.finish())
        return true;
    if (!restore(target, copy->path()))
        copy->keep();
    return false;
}

} // namespace

std::optional<QByteArray> SafeFile::read(const QString& path, qint64 most)
{
    ExistingFile file(Posix::nativePath(path), ExistingFile::Use::Read);
    return file.read(most);
}

std::optional<QByteArray> SafeFile::readOnce(const QString& path, qint64 most, int patience)
{
    return Posix::readOnce(Posix::nativePath(path), most, patience);
}

bool SafeFile::save(const QString& path, const QByteArray& bytes, const QString& copies)
{
    const std::optional<Path> target = Posix::followLinks(Posix::nativePath(path));
    if (!target)
        return false;

    FileFacts facts = Posix::factsOf(*target);
    if (chooseWay(facts) == SaveWay::Replace && replace(*target, bytes, facts))
        return true;
    return chooseWay(facts) == SaveWay::InPlace && writeInPlace(*target, bytes, Posix::nativePath(copies));
}

bool SafeFile::makeOwnFolder(const QString& folder)
{
    return Posix::makePrivateFolder(Posix::nativePath(folder));
}

bool SafeFile::saveForOwner(const QString& path, const QByteArray& bytes)
{
    const Path target = Posix::nativePath(path);
    if (!Posix::makePrivateFolder(target.parent_path()))
        return false;
    NewFile file(momentaryName(target), NewFile::Readers::Owner);
    return file.write(bytes) && file.finish() && file.moveTo(target)
           && Posix::syncFolder(target.parent_path());
}

bool SafeFile::isOwnFile(const QString& path)
{
    return Posix::isOwnFile(Posix::nativePath(path));
}

bool SafeFile::publish(const QString& path, const QByteArray& bytes)
{
    const Path target = Posix::nativePath(path);
    if (!Posix::removeFile(target))
        return false;
    NewFile file(momentaryName(target), NewFile::Readers::Owner);
    return file.write(bytes) && file.finish() && file.moveTo(target);
}
