#pragma once

#include <QString>

/// The terminal: text in UTF-8, whatever the locale says.
namespace Console
{

/// Writes `text` to standard output. Returns false when it could not all be written.
bool print(const QString& text);

/// Writes `text` and a line feed to standard error.
void printError(const QString& text);

/// `text` with control characters and line breaks made visible, so that a name from a file can
/// neither break a table nor command the terminal.
QString printable(const QString& text);

/// A printable `name` of at most 40 characters: a longer one would push the figures off the terminal.
QString shortened(const QString& name);

/// Columns that `text` takes on a terminal: 2 for wide letters and emoji, 0 for combining marks.
int displayWidth(const QString& text);

} // namespace Console
