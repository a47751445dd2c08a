#pragma once

#include "canvas/CanvasItems.h"
#include "engine/Limits.h"

#include <QString>

/// What is told of things on the canvas to who does not see it, or not all of it.
namespace ItemText
{

/// "450.0 kg" of `mass` [kg].
[[nodiscard]] QString kilograms(float mass);
/// A motor's verdict as the report says it, without the emoji; where its dynamic load [kg] is not a number,
/// that.
[[nodiscard]] QString verdict(Limits::MotorVerdict verdict, float dynamicLoad);

/// What the item is called: "Motor" and its title, "Carga" and its title, "Pantalla de 4.0 m".
[[nodiscard]] QString title(const Scene& scene, const CanvasItem& item);
/// One line: name, place, load and verdict. A load's verdict is that of the truss. It is plain text; names
/// stand in it as they are.
[[nodiscard]] QString of(const Scene& scene, const CanvasItem& item);
/// A line for each of `items` as HTML that shows names as they are; of many only the first, and how many
/// more there are. Empty for none.
[[nodiscard]] QString tip(const Scene& scene, const QList<CanvasItem>& items);

} // namespace ItemText
