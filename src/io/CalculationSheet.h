#pragma once

#include "engine/Project.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

/// The calculation sheet: one PDF in which who checks the projects finds every figure with its derivation.
namespace CalculationSheet
{

struct Item
{
    ProjectState project; ///< `tabName` is the title
    QByteArray
        bytes; ///< of its file, which the sheet names by their SHA-256; if empty, what saving would write
};

struct Request
{
    QList<Item> items;      ///< one at least
    QString path;           ///< of the PDF
    QString version;        ///< of the program
    QDateTime date;         ///< on each page
    bool overwrite = false; ///< the user agreed to replace an existing file
    /// For this user alone, and a link at the path is replaced itself, as it may be a stranger's in a shared
    /// folder; false for a file that the user chose like one of their own
    bool isPrivate = true;
};

enum class Status
{
    Written,
    Exists,    ///< there is something at the path, which was left as it is
    NotWritten ///< it could not be created
};

/// "memoria_<name>.pdf", without what a file's name cannot hold everywhere.
QString fileName(const QString& name);

/// Calculates the projects and writes their sheet. Needs an application of any platform.
Status write(const Request& request);

/// As `write`, but writes of each project only its drawing and the second opinion on it, as the window shows
/// them; with a `tableDeflection` [mm], what a millimetre out of level changes too.
Status writeContrast(const Request& request, std::optional<double> tableDeflection);

} // namespace CalculationSheet
