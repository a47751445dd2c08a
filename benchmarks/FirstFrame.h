#pragma once

class QWidget;

/// For the two programs whose start is measured.
namespace FirstFrame
{

/// Shows `window`, runs the event loop until its first picture is painted, and prints the moment
/// [ns of the steady clock] and the resident memory [kB]. Returns the program's exit code.
int report(QWidget& window);

} // namespace FirstFrame
