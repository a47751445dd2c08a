#pragma once

#include "engine/Project.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

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
    QList<Item> items; ///< one at least
    QString folder;
    QString name;           ///< what the sheet is called after, see `fileName`
    QString version;        ///< of the program
    QDateTime date;         ///< on each page
    bool overwrite = false; ///< the user agreed to replace an existing file
};

enum class Status
{
    Written,
    Exists,    ///< there is something at `Outcome::path`, which was left as it is
    NotWritten ///< it could not be created
};

struct Outcome
{
    Status status = Status::Written;
    QString path; ///< of the PDF
};

/// "memoria_<name>.pdf", without what a file's name cannot hold everywhere.
QString fileName(const QString& name);

/// Calculates the projects and writes their sheet into the folder. Needs an application of any platform.
Outcome write(const Request& request);

} // namespace CalculationSheet
