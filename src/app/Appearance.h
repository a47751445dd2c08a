#pragma once

class QApplication;

/// How the whole program looks: a dark desk with sky-blue accents.
namespace Appearance
{

/// Chooses the style; to be called before the application object exists.
void chooseStyle();

/// Gives `application` its names, icon, palette and style sheet, the C locale for all numbers and
/// Qt's own texts in Spanish where they are installed.
void apply(QApplication& application);

} // namespace Appearance
