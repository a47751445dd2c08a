#include "io/CalculationSheet.h"

#include "io/ProjectFile.h"
#include "io/SafeFile.h"
#include "io/SheetLayout.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace
{

/// File systems take 255 bytes; a letter takes up to four.
constexpr qsizetype LONGEST_NAME = 48;

QString digestOf(const CalculationSheet::Item& item)
{
    const QByteArray bytes = item.bytes.isEmpty() ? ProjectFile::toBytes(item.project) : item.bytes;
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

/// The PDF of the texts that `textOf` makes of the projects.
template <class TextOf>
QByteArray pdfOf(const CalculationSheet::Request& request, TextOf textOf)
{
    QList<SheetLayout::Part> parts;
    for (const CalculationSheet::Item& item : request.items)
        parts.append({textOf(item.project), digestOf(item)});
    return SheetLayout::pdf(parts, request.version, request.date);
}

bool isThere(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// A new file at `path`, for this user alone; what another program has put there meanwhile is left alone.
CalculationSheet::Status create(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
        return isThere(path) ? CalculationSheet::Status::Exists : CalculationSheet::Status::NotWritten;
    }
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    if (isWritten && file.error() == QFileDevice::NoError)
        return CalculationSheet::Status::Written;
    file.remove();
    return CalculationSheet::Status::NotWritten;
}

template <class TextOf>
CalculationSheet::Status writePdf(const CalculationSheet::Request& request, TextOf textOf)
{
    using CalculationSheet::Status;
    if (!request.overwrite && isThere(request.path))
        return Status::Exists;
    const QByteArray bytes = pdfOf(request, textOf);
    if (bytes.isEmpty())
        return Status::NotWritten;
    if (!request.overwrite)
        return create(request.path, bytes);
    const bool isWritten =
        request.isPrivate ? SafeFile::publish(request.path, bytes) : SafeFile::save(request.path, bytes);
    return isWritten ? Status::Written : Status::NotWritten;
}

} // namespace

QString CalculationSheet::fileName(const QString& name)
{
    QString safe = name.left(LONGEST_NAME);
    for (QChar& c : safe) {
        if (!c.isLetterOrNumber() && c != u'-' && c != u'_')
            c = u'_';
    }
    return u"memoria_"_s + (safe.isEmpty() ? u"proyecto"_s : safe) + u".pdf"_s;
}

CalculationSheet::Status CalculationSheet::write(const Request& request)
{
    return writePdf(request, SheetText::of);
}

CalculationSheet::Status CalculationSheet::writeContrast(const Request& request,
                                                         std::optional<double> tableDeflection)
{
    return writePdf(request, [tableDeflection](const ProjectState& project) {
        return SheetText::contrastOf(project, tableDeflection);
    });
}
