#pragma once

#include "io/SheetText.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

/// The pages of the calculation sheet: A4, with a head and a foot on each.
namespace SheetLayout
{

/// What is told of one project.
struct Part
{
    SheetText text;
    QString digest; ///< SHA-256 of the project's bytes, in hexadecimal digits
};

/// The PDF of `parts`, each beginning on a page of its own. `version` is the program's. Needs an
/// application that has fonts. Nothing where it could not be painted.
QByteArray pdf(const QList<Part>& parts, const QString& version, const QDateTime& date);

} // namespace SheetLayout
