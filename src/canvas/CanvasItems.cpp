#include "canvas/CanvasItems.h"

#include "engine/Arrays.h"
#include "engine/Numbers.h"
#include "engine/PointLoads.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{

/// Closer than this things are drawn over each other [px].
constexpr int SAME_PLACE = 5;
/// Of a load's name, the first of its texts, below the truss line [px].
constexpr int LOAD_NAME_TOP = 75;
/// Of the grid that a drag can be held to [m].
constexpr double GRID = 0.1;
/// What a moved position is rounded to, in parts of a metre.
constexpr double PARTS = 1e5;

using Kind = CanvasItem::Kind;

bool belongsTo(const CanvasItem& item, const ActiveLoad& load, const Scene& scene)
{
    if (item.kind == Kind::Motor)
        return false;
    const ActiveLoad& own = scene.loads.at(item.index);
    if (item.kind == Kind::Array)
        return Project::isArraySegment(load) && load.groupId == own.groupId;
    return &own == &load;
}

/// Where an item is drawn or can be grabbed; apart, for a box around all of a load reaches into its
/// neighbours.
QList<QRect> boxesOf(const Scene& scene, const TrussGeometry& g, const CanvasItem& item)
{
    if (item.kind == Kind::Motor)
        return {CanvasItems::area(scene, g, item),
                g.motorBodyBox(scene.motors.at(item.index), scene.motorBoxSize)};
    const ActiveLoad& load = scene.loads.at(item.index);
    if (item.kind == Kind::Array)
        return {CanvasItems::area(scene, g, item), g.arrayBox(load, item.position)};
    QRect texts = g.loadLabelBox(load);
    texts.setTop(g.lineY() + LOAD_NAME_TOP);
    return {g.loadMenuBox(load), texts, g.loadBodyBox(load)};
}

/// The loads and arrays of `scene`; an array stands where its first segment does.
void appendLoads(QList<CanvasItem>& items, const Scene& scene)
{
    const ArraySummaries arrays = Arrays::summarize(scene.loads, -1);
    QHash<int, qsizetype> places; // of the arrays among the items
    for (qsizetype i = 0; i < scene.loads.size(); ++i) {
        const ActiveLoad& load = scene.loads.at(i);
        const float x = load.positionX;
        if (!Project::isArraySegment(load)) {
            items.append({Kind::Load, i, x, x, x});
            continue;
        }
        const auto place = places.constFind(load.groupId);
        if (place == places.cend()) {
            places.insert(load.groupId, items.size());
            items.append({Kind::Array, i, arrays.value(load.groupId).centre, x, x});
            continue;
        }
        CanvasItem& array = items[*place];
        array.firstEnd = std::min(array.firstEnd, x);
        array.secondEnd = std::max(array.secondEnd, x);
    }
}

} // namespace

QList<CanvasItem> CanvasItems::of(const Scene& scene)
{
    QList<CanvasItem> items;
    for (qsizetype i = 0; i < scene.motors.size(); ++i) {
        const float x = scene.motors.at(i).positionX;
        items.append({Kind::Motor, i, x, x, x});
    }
    appendLoads(items, scene);
    return items;
}

QList<CanvasItem> CanvasItems::leftToRight(const Scene& scene)
{
    QList<CanvasItem> items = of(scene);
    std::stable_sort(items.begin(), items.end(), [](const CanvasItem& a, const CanvasItem& b) {
        return isLeftOf(a.position, b.position);
    });
    return items;
}

std::optional<CanvasItem> CanvasItems::selected(const Scene& scene, int motorIndex, int loadId,
                                                const std::optional<CanvasItem>& before)
{
    const QList<CanvasItem> items = of(scene);
    if (motorIndex >= 0 && motorIndex < scene.motors.size())
        return items.at(motorIndex);
    qsizetype load = Project::indexOfLoad(scene.loads, loadId);
    if (load == -1)
        return std::nullopt;
    const bool wasLoad = before && before->kind == Kind::Load && before->index < scene.loads.size();
    if (wasLoad && scene.loads.at(before->index).id == loadId)
        load = before->index;
    const auto found = std::find_if(items.cbegin(), items.cend(), [&](const CanvasItem& item) {
        return belongsTo(item, scene.loads.at(load), scene);
    });
    return found == items.cend() ? std::nullopt : std::optional(*found);
}

std::optional<CanvasItem> CanvasItems::reached(const QList<CanvasItem>& items,
                                               const std::optional<CanvasItem>& from, Step step)
{
    if (items.isEmpty())
        return std::nullopt;
    const auto now = std::find_if(items.cbegin(), items.cend(),
                                  [&from](const CanvasItem& item) { return from && isSame(item, *from); });
    const bool isNew = now == items.cend();
    const qsizetype place = now - items.cbegin();
    switch (step) {
    case Step::First:
        break;
    case Step::Back:
        return items.at(isNew ? items.size() - 1 : std::max<qsizetype>(place - 1, 0));
    case Step::Forward:
        return items.at(isNew ? 0 : std::min(place + 1, items.size() - 1));
    case Step::Last:
        return items.constLast();
    }
    return items.constFirst();
}

bool CanvasItems::isSame(const CanvasItem& a, const CanvasItem& b)
{
    return a.kind == b.kind && a.index == b.index;
}

QRect CanvasItems::area(const Scene& scene, const TrussGeometry& geometry, const CanvasItem& item)
{
    if (item.kind == Kind::Motor) {
        const Motor& motor = scene.motors.at(item.index);
        const int side = scene.motorBoxSize;
        const QRect body(geometry.toX(motor.positionX) - side / 2, geometry.lineY() - side, side, side);
        return body.united(geometry.motorLabelBox(motor));
    }
    const ActiveLoad& load = scene.loads.at(item.index);
    if (item.kind == Kind::Array)
        return geometry.arrayMenuBox(load, item.position).normalized();
    return geometry.loadMenuBox(load).united(geometry.loadLabelBox(load));
}

QList<CanvasItem> CanvasItems::at(const Scene& scene, const TrussGeometry& geometry, QPoint point)
{
    const auto isUnder = [&](const CanvasItem& item) {
        const QList<QRect> boxes = boxesOf(scene, geometry, item);
        return std::any_of(boxes.cbegin(), boxes.cend(),
                           [point](const QRect& box) { return box.contains(point); });
    };
    QList<CanvasItem> found;
    const QList<CanvasItem> items = of(scene);
    std::copy_if(items.cbegin(), items.cend(), std::back_inserter(found), isUnder);
    if (found.isEmpty())
        return {};
    const QList<CanvasItem> stacked = stackedWith(scene, geometry, found.constFirst());
    std::copy_if(stacked.cbegin(), stacked.cend(), std::back_inserter(found),
                 [&](const CanvasItem& item) { return !isUnder(item); });
    return found;
}

QList<CanvasItem> CanvasItems::stackedWith(const Scene& scene, const TrussGeometry& geometry,
                                           const CanvasItem& item)
{
    QList<CanvasItem> stacked{item};
    const int x = geometry.toX(item.position);
    const QList<CanvasItem> items = of(scene);
    std::copy_if(items.cbegin(), items.cend(), std::back_inserter(stacked), [&](const CanvasItem& other) {
        return !isSame(other, item) && std::abs(geometry.toX(other.position) - x) < SAME_PLACE;
    });
    return stacked;
}

float CanvasItems::moved(float position, float distance, float trussLength)
{
    const double to = static_cast<double>(position) + static_cast<double>(distance);
    return Project::clampToTruss(Numbers::toSingle(std::round(to * PARTS) / PARTS), trussLength);
}

float CanvasItems::snapped(float position, float trussLength)
{
    const double half = static_cast<double>(trussLength) * 0.5;
    const double steps = std::round((static_cast<double>(position) - half) / GRID);
    return Project::clampToTruss(Numbers::toSingle(half + steps * GRID), trussLength);
}

float CanvasItems::freeDistance(const CanvasItem& item, float distance, float trussLength)
{
    const float left = -item.firstEnd;
    const float right = trussLength - item.secondEnd;
    if (!(left <= right) || std::isnan(distance)) // longer than the truss, or not a number
        return 0.0F;
    return std::max(left, std::min(distance, right));
}
