#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace PositionDialog
{

/// Asks for a position on a truss of `trussLength` [m], from which `position` [m] is the present one;
/// the user reads and writes it relative to the centre. Returns it from the left end [m], on the truss;
/// nothing where the user cancels. `parent` may be destroyed meanwhile.
std::optional<float> ask(QWidget* parent, const QString& title, float position, float trussLength);

} // namespace PositionDialog
