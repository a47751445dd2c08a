#pragma once

class QApplication;

/// How the whole program looks: a dark desk with sky-blue accents.
namespace Appearance
{

/// Chooses the style; to be called before the application object exists.
void chooseStyle();

/// The names by which the system finds the program's own data, and its version.
void nameProgram();

/// Gives `application` its names, icon, palette and style sheet, the C locale for all numbers and
/// Qt's own texts in Spanish where they are installed.
void apply(QApplication& application);

} // namespace Appearance
