#pragma once

#include "engine/Project.h"

#include <QList>
#include <QString>

#include <optional>

class QWidget;

/// The calculation sheet as the user asks for it in the window.
namespace SheetDialogs
{

/// Asks where to keep the sheet of `projects`, which is called after `title`, writes it there and shows it
/// in the desktop's viewer. A failure is told in a box.
void save(QWidget* window, const QList<ProjectState>& projects, const QString& title);

/// Shows the second opinion on `project` as a PDF in the desktop's viewer, which prints it. The file is in
/// the temporary folder. `tableDeflection` as in `CalculationSheet::writeContrast`.
void printContrast(QWidget* window, const ProjectState& project, std::optional<double> tableDeflection);

} // namespace SheetDialogs
