#include "io/SafeFile.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace
{

std::filesystem::path nativePath(const QString& path)
{
    return std::filesystem::path(path.toStdU16String());
}

bool writeAll(QFileDevice& file, const QByteArray& bytes)
{
    return file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

bool SafeFile::save(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return false;

    // commit() alone would report success on a full disk: what the buffer still holds is flushed
    // there, and the failure of that is not looked at.
    if (!writeAll(file, bytes)) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool SafeFile::publish(const QString& path, const QByteArray& bytes)
{
    QTemporaryFile file(QFileInfo(path).absolutePath() + u"/.velmora-XXXXXX"_s);
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
