#pragma once

#include "canvas/Scene.h"
#include "canvas/TrussGeometry.h"

#include <QList>
#include <QPoint>
#include <QRect>

#include <optional>

/// One thing on the canvas that can be selected: a motor, a point load, or an array as a whole.
struct CanvasItem
{
    enum class Kind
    {
        Motor,
        Array,
        Load
    };

    Kind kind = Kind::Motor;
    qsizetype index = 0;    ///< in the list of motors or of loads; of an array, its first segment's
    float position = 0.0F;  ///< of an array, its centre [m]
    float firstEnd = 0.0F;  ///< of an array, its segment furthest to the left [m]
    float secondEnd = 0.0F; ///< of an array, its segment furthest to the right [m]
};

/// The things on the canvas as who has no pointer goes through them.
namespace CanvasItems
{

/// Where the selection goes.
enum class Step
{
    First,
    Back,
    Forward,
    Last
};

/// The motors of `scene`, then its loads and arrays in the order of the list.
[[nodiscard]] QList<CanvasItem> of(const Scene& scene);
/// The same from left to right. What stands at one place keeps its order; what has no place is last.
[[nodiscard]] QList<CanvasItem> leftToRight(const Scene& scene);

/// The item that the motor at `motorIndex` or else the load `loadId` belongs to, -1 standing for neither.
/// Where loads share the id, `before` is meant if it is one of them.
[[nodiscard]] std::optional<CanvasItem> selected(const Scene& scene, int motorIndex, int loadId,
                                                 const std::optional<CanvasItem>& before);
/// Where `step` leads from `from` among `items`: no further than their ends. From nothing, forward leads to
/// the first and back to the last one. Nothing where there are no items.
[[nodiscard]] std::optional<CanvasItem> reached(const QList<CanvasItem>& items,
                                                const std::optional<CanvasItem>& from, Step step);
/// Whether both are the same motor, load or array of one scene.
[[nodiscard]] bool isSame(const CanvasItem& a, const CanvasItem& b);

/// All that the item is drawn on, at scale 1 [px].
[[nodiscard]] QRect area(const Scene& scene, const TrussGeometry& geometry, const CanvasItem& item);
/// What lies under `point` [px], drawn or to be grabbed, and whatever stands at the place of the first of
/// these.
[[nodiscard]] QList<CanvasItem> at(const Scene& scene, const TrussGeometry& geometry, QPoint point);
/// The item, and whatever stands at its place to the pixel or nearly so.
[[nodiscard]] QList<CanvasItem> stackedWith(const Scene& scene, const TrussGeometry& geometry,
                                            const CanvasItem& item);

/// `position` [m] moved by `distance` [m], to the hundredth of a millimetre, so that ten steps of a
/// centimetre make ten centimetres; held on a truss of `trussLength` [m].
[[nodiscard]] float moved(float position, float distance, float trussLength);
/// `position` [m] brought to the nearest whole decimetre from the centre of the truss; held on it.
[[nodiscard]] float snapped(float position, float trussLength);
/// As much of `distance` [m] as the array `item` can go without any of its segments leaving the truss or
/// being held at its end; 0 for one that is longer than the truss or has no place.
[[nodiscard]] float freeDistance(const CanvasItem& item, float distance, float trussLength);

} // namespace CanvasItems
