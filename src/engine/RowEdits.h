#pragma once

#include "engine/Edits.h"

#include <QHash>
#include <QSet>

#include <functional>

/// Which motor or load of a list is meant. Opened files may repeat an id, hence the number.
struct RowKey
{
    int id = 0;
    int nth = 0; ///< how many records before it in the list have the same id
};

/// Keys are compared, and looked up in sets, by both of their numbers.
inline bool operator==(const RowKey& a, const RowKey& b)
{
    return a.id == b.id && a.nth == b.nth;
}
/// For sets of keys.
inline size_t qHash(const RowKey& key, size_t seed = 0)
{
    return qHashMulti(seed, key.id, key.nth);
}

/// Changes of several motors or loads at once, as a list of rows asks for them. None of them calculates.
/// Positions are metres from the truss's left end, and stay on the truss.
///
/// The segments of a screen hang on one bar: where one of them is meant, all loads of its array are.
namespace RowEdits
{

/// The lists of a project that are changed, and its counters.
struct Lists
{
    QList<Motor>& motors;
    Edits::LoadList loads;
    int& nextGroupId;
};

/// A change of a project; returns whether there was anything to change.
using Change = std::function<bool(const Lists&)>;

/// How far beside its original a duplicate hangs [m].
inline constexpr float DUPLICATE_DISTANCE = 0.5F;

/// The keys of `records`, in their order.
template <class Record>
[[nodiscard]] QList<RowKey> keysOf(const QList<Record>& records)
{
    QHash<int, int> counts;
    QList<RowKey> keys;
    keys.reserve(records.size());
    for (const Record& record : records)
        keys.append({record.id, counts[record.id]++});
    return keys;
}

/// Where the record of this key stands in `records`, else -1.
template <class Record>
[[nodiscard]] qsizetype placeOf(const QList<Record>& records, const RowKey& key)
{
    int nth = 0;
    for (qsizetype place = 0; place < records.size(); ++place) {
        if (records.at(place).id == key.id && nth++ == key.nth)
            return place;
    }
    return -1;
}

/// `keys` and, for each of them that is a screen's segment, the keys of its whole array.
[[nodiscard]] QSet<RowKey> withArrays(const QList<ActiveLoad>& loads, const QSet<RowKey>& keys);

/// Take them away. Return whether there were any, as all of these do that return a truth.
bool removeMotors(QList<Motor>& motors, const QSet<RowKey>& keys);
bool removeLoads(QList<ActiveLoad>& loads, const QSet<RowKey>& keys);

/// Move them to the other side of the truss's middle, at the same distance; a position that is not finite
/// stays as it is.
bool mirrorMotors(QList<Motor>& motors, const QSet<RowKey>& keys, float trussLength);
bool mirrorLoads(QList<ActiveLoad>& loads, const QSet<RowKey>& keys, float trussLength);

/// Hang another one of each beside it: to its right, to its left where there is no room, in its place where
/// there is none either. An array is hung again as an array of its own.
bool duplicateMotors(QList<Motor>& motors, const QSet<RowKey>& keys, float trussLength);
bool duplicateLoads(const Edits::LoadList& list, const QSet<RowKey>& keys, int& nextGroupId);

} // namespace RowEdits
