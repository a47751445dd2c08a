#pragma once

#include "engine/Project.h"

#include <QStringList>

/// Loads that were written in a spreadsheet: a row for each, with name, mass [kg] and position [m] from the
/// truss's middle.
struct PastedLoads
{
    QList<ActiveLoad> loads; ///< without ids; positions [m] from the truss's left end, on the truss
    QStringList faults;      ///< why a row is none of them, in a sentence each

    /// Reads `text`: rows parted by line feeds, cells by tabs, a cell between quotation marks as a
    /// spreadsheet copies one with a line feed in it. Point or comma is the decimal mark, and the unit may
    /// stand behind a number. A row whose numbers cannot be told for sure, or are out of what a load's
    /// fields take, is a fault; empty rows are passed over.
    [[nodiscard]] static PastedLoads of(const QString& text, float trussLength);
};
