#pragma once

#include <QJsonArray>
#include <QString>

/// Projects as one table for spreadsheets.
namespace CsvSummary
{

/// What is told of the second opinion.
enum class Contrast
{
    None,
    Columns,             ///< what `ContrastSummary::json` tells
    ColumnsAndLevelling, ///< and what a millimetre counts
};

/// A record for each truss, motor and load of `projects`, which are objects of `Summary::json` with the
/// member `contraste` where the table is to have its columns. The column `elemento` tells which: "truss",
/// "motor" or "carga". The other columns have the names of the members. A column that does not concern
/// a record is empty; a figure that has no value is a dash.
QString text(const QJsonArray& projects, Contrast contrast);

} // namespace CsvSummary
