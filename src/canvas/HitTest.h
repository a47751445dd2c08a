#pragma once

#include "canvas/Scene.h"
#include "canvas/TrussGeometry.h"

#include <QPoint>

#include <variant>

/// What of a scene lies under the pointer. Motors lie over loads; among each kind the first of the
/// list is on top.
namespace HitTest
{

/// A motor's position text, by its index in the list.
struct MotorLabel
{
    int index;
};
struct MotorBody
{
    int index;
};
/// A load's position text, by its index in the list.
struct LoadLabel
{
    qsizetype index;
};
struct LoadBody
{
    qsizetype index;
};
/// An array, by the index of the segment through which it was hit: the first of its group.
struct ArrayBody
{
    qsizetype index;
};

using Target = std::variant<std::monostate, MotorLabel, MotorBody, LoadLabel, LoadBody, ArrayBody>;

/// What a press at `point` [px] takes hold of.
[[nodiscard]] Target targetAt(const Scene& scene, const TrussGeometry& geometry, QPoint point);
/// What a context menu at `point` [px] is about: a motor, an array or a load.
[[nodiscard]] Target menuTargetAt(const Scene& scene, const TrussGeometry& geometry, QPoint point);
/// Whether the pointer shows a hand at `point` [px]: over motors, and over arrays of whole screens;
/// the segments of an array show none until they are pressed.
[[nodiscard]] bool isOverGrip(const Scene& scene, const TrussGeometry& geometry, QPoint point);

} // namespace HitTest
