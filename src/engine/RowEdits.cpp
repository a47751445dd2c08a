#include "engine/RowEdits.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

/// The records of `keys`, in the order of the list.
template <class Record>
QList<qsizetype> placesOf(const QList<Record>& records, const QSet<RowKey>& keys)
{
    const QList<RowKey> all = RowEdits::keysOf(records);
    QList<qsizetype> places;
    for (qsizetype place = 0; place < all.size(); ++place) {
        if (keys.contains(all.at(place)))
            places.append(place);
    }
    return places;
}

template <class Record>
bool removeRecords(QList<Record>& records, const QSet<RowKey>& keys)
{
    const QList<RowKey> all = RowEdits::keysOf(records);
    QList<Record> kept;
    for (qsizetype place = 0; place < all.size(); ++place) {
        if (!keys.contains(all.at(place)))
            kept.append(records.at(place));
    }
    const bool isChanged = kept.size() != records.size();
    records = kept;
    return isChanged;
}

template <class Record>
bool mirrorRecords(QList<Record>& records, const QSet<RowKey>& keys, float trussLength)
{
    bool isChanged = false;
    const QList<qsizetype> places = placesOf(records, keys);
    for (const qsizetype place : places) {
        const float x = records.at(place).positionX;
        const float mirrored = std::isfinite(x) ? Project::clampToTruss(trussLength - x, trussLength) : x;
        if (!std::isfinite(x) || mirrored == x)
            continue;
        records[place].positionX = mirrored;
        isChanged = true;
    }
    return isChanged;
}

/// From where to where something hangs [m].
struct Extent
{
    float first = std::numeric_limits<float>::max();
    float last = std::numeric_limits<float>::lowest();
};

/// How far the duplicate of what hangs there goes to the right [m].
float distanceBeside(const Extent& extent, float trussLength)
{
    if (extent.last + RowEdits::DUPLICATE_DISTANCE <= trussLength)
        return RowEdits::DUPLICATE_DISTANCE;
    return extent.first >= RowEdits::DUPLICATE_DISTANCE ? -RowEdits::DUPLICATE_DISTANCE : 0.0F;
}

/// What an array's duplicate is told by.
struct ArrayCopy
{
    int groupId = -1;
    float distance = 0.0F; ///< [m]
};

/// The groups of the arrays that have a segment among `places`.
QSet<int> arraysAmong(const QList<ActiveLoad>& loads, const QList<qsizetype>& places)
{
    QSet<int> groups;
    for (const qsizetype place : places) {
        if (Project::isArraySegment(loads.at(place)))
            groups.insert(loads.at(place).groupId);
    }
    return groups;
}

/// New arrays for `groups`, numbered in the order in which they stand in `loads`.
QHash<int, ArrayCopy> arrayCopies(const QList<ActiveLoad>& loads, const QSet<int>& groups, float trussLength,
                                  int& nextGroupId)
{
    QHash<int, Extent> extents;
    QHash<int, ArrayCopy> copies;
    for (const ActiveLoad& load : loads) {
        if (!groups.contains(load.groupId))
            continue;
        if (!copies.contains(load.groupId))
            copies.insert(load.groupId, {nextGroupId++});
        Extent& extent = extents[load.groupId];
        extent.first = std::min(extent.first, load.positionX);
        extent.last = std::max(extent.last, load.positionX);
    }
    for (auto copy = copies.begin(); copy != copies.end(); ++copy)
        copy->distance = distanceBeside(extents.value(copy.key()), trussLength);
    return copies;
}

} // namespace

QSet<RowKey> RowEdits::withArrays(const QList<ActiveLoad>& loads, const QSet<RowKey>& keys)
{
    const QSet<int> groups = arraysAmong(loads, placesOf(loads, keys));
    if (groups.isEmpty())
        return keys;
    const QList<RowKey> all = keysOf(loads);
    QSet<RowKey> whole = keys;
    for (qsizetype place = 0; place < all.size(); ++place) {
        if (groups.contains(loads.at(place).groupId))
            whole.insert(all.at(place));
    }
    return whole;
}

bool RowEdits::removeMotors(QList<Motor>& motors, const QSet<RowKey>& keys)
{
    return removeRecords(motors, keys);
}

bool RowEdits::removeLoads(QList<ActiveLoad>& loads, const QSet<RowKey>& keys)
{
    return removeRecords(loads, withArrays(loads, keys));
}

bool RowEdits::mirrorMotors(QList<Motor>& motors, const QSet<RowKey>& keys, float trussLength)
{
    return mirrorRecords(motors, keys, trussLength);
}

bool RowEdits::mirrorLoads(QList<ActiveLoad>& loads, const QSet<RowKey>& keys, float trussLength)
{
    return mirrorRecords(loads, withArrays(loads, keys), trussLength);
}

bool RowEdits::duplicateMotors(QList<Motor>& motors, const QSet<RowKey>& keys, float trussLength)
{
    const QList<qsizetype> places = placesOf(motors, keys);
    for (const qsizetype place : places) {
        const Motor original = motors.at(place);
        const float x = original.positionX;
        Edits::hangMotor(motors, x + distanceBeside({x, x}, trussLength), trussLength);
        Motor& hung = motors.last();
        hung.modelName = original.modelName;
        hung.capacity = original.capacity;
        hung.selfWeight = original.selfWeight;
    }
    return !places.isEmpty();
}

bool RowEdits::duplicateLoads(const Edits::LoadList& list, const QSet<RowKey>& keys, int& nextGroupId)
{
    const QList<qsizetype> places = placesOf(list.loads, withArrays(list.loads, keys));
    const QHash<int, ArrayCopy> arrays =
        arrayCopies(list.loads, arraysAmong(list.loads, places), list.trussLength, nextGroupId);
    for (const qsizetype place : places) {
        ActiveLoad copy = list.loads.at(place);
        const float x = copy.positionX;
        const ArrayCopy alone{-1, distanceBeside({x, x}, list.trussLength)};
        const ArrayCopy array = arrays.value(copy.groupId, alone);
        copy.groupId = array.groupId;
        copy.positionX += array.distance;
        Edits::hangLoad(list, std::move(copy));
    }
    return !places.isEmpty();
}
