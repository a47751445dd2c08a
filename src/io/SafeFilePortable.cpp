#include "io/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <filesystem>
#include <system_error>

// For systems without POSIX: what Qt knows of files there. Only where the folder takes no new file is
// the old one written in place, and then without a copy.

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 CHUNK = 65'536; // [bytes]

std::filesystem::path nativePath(const QString& path)
{
    return std::filesystem::path(path.toStdU16String());
}

/// There is something that is no file to be written.
bool isRefused(const QFileInfo& file)
{
    return file.exists() ? !file.isFile() : file.isSymLink();
}

bool writeAll(QFileDevice& file, const QByteArray& bytes)
{
    return file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

std::optional<QByteArray> SafeFile::read(const QString& path, qint64 most)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes;
    QByteArray chunk;
    do {
        chunk = file.read(qMin(CHUNK, most - bytes.size()));
        bytes += chunk;
    } while (!chunk.isEmpty());
    return file.error() == QFileDevice::NoError ? std::optional(bytes) : std::nullopt;
}

// Nothing is known of pipes here.
std::optional<QByteArray> SafeFile::readOnce(const QString& path, qint64 most, int /*patience*/)
{
    return read(path, most);
}

bool SafeFile::save(const QString& path, const QByteArray& bytes, const QString& /*copies*/)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (isRefused(QFileInfo(path)) || !file.open(QIODevice::WriteOnly))
        return false;
    // commit() alone would report success on a full disk: what the buffer still holds is flushed
    // there, and the failure of that is not looked at.
    if (!writeAll(file, bytes)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

// The permissions are those that the system gives the user's own data.
bool SafeFile::makeOwnFolder(const QString& folder)
{
    return !QFileInfo(folder).isSymLink() && QDir().mkpath(folder);
}

bool SafeFile::saveForOwner(const QString& path, const QByteArray& bytes)
{
    const QFileInfo info(path);
    if (isRefused(info) || info.isSymLink() || !makeOwnFolder(info.absolutePath()))
        return false;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
           && writeAll(file, bytes) && file.commit();
}

bool SafeFile::isOwnFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() && !info.isSymLink();
}

bool SafeFile::publish(const QString& path, const QByteArray& bytes)
{
    const QFileInfo old(path);
    if ((old.exists() || old.isSymLink()) && !QFile::remove(path))
        return false;
    QTemporaryFile file(old.absolutePath() + u"/.velmora-XXXXXX"_s);
    if (!file.open() || !writeAll(file, bytes))
        return false;

    const QString temporary = file.fileName(); // before close(): gives the file its name
    file.close();
    std::error_code error;
    std::filesystem::rename(nativePath(temporary), nativePath(path), error);
    if (error)
        return false;
    file.setAutoRemove(false);
    return true;
}
