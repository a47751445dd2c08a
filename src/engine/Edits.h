#pragma once

#include "engine/LedArray.h"
#include "engine/Project.h"

/// Changes of a project, on whatever lists they are told to. None of them calculates. Positions are
/// metres from the truss's left end, and stay on the truss unless said otherwise.
namespace Edits
{

/// The list that loads are hung in.
struct LoadList
{
    QList<ActiveLoad>& loads;
    float trussLength; ///< [m]
    int& nextId;       ///< the id of the next load; grows with each
};

/// An empty project named `tabName` with two motors of `motorWeight` [kg] at its ends.
[[nodiscard]] ProjectState freshProject(const QString& tabName, float motorWeight);

/// Gives the truss the length `newLength` [m], positive and finite: motors and loads follow in
/// proportion, an array by its centre with its segments' spacing kept, loads at most to 1 cm inside
/// the truss's ends. A truss that had no length has no proportions to keep. Motors are not held.
void resizeTruss(float newLength, float& length, QList<Motor>& motors, QList<ActiveLoad>& loads);

/// Hangs a motor with the usual values at `x` [m]. Its id is one more than the largest; where that
/// is the largest integer, the smallest free one.
void hangMotor(QList<Motor>& motors, float x, float trussLength);

/// Gives `load` the next id and appends it; returns the id.
int hangLoad(const LoadList& list, ActiveLoad load);

/// Hangs `count` loads like `pattern`: one in the middle, several with equal gaps, the truss's ends
/// included, and numbered from 1 in their names.
void spreadLoads(const LoadList& list, ActiveLoad pattern, int count);

/// Hangs `screen` centred at `centre` [m], as the array `groupId`; returns the id of its first segment,
/// -1 where it has none.
int hangScreen(const LoadList& list, const LedArray& screen, float centre, int groupId);

/// Hangs `copies` of `screen` with equal gaps, the truss's ends included, each as an array of its
/// own with numbered segments; `nextGroupId` grows with each.
void spreadScreens(const LoadList& list, const LedArray& screen, int copies, int& nextGroupId);

/// Takes away all loads of the array `groupId`.
void removeGroup(QList<ActiveLoad>& loads, int groupId);

/// Takes away the screen loads of the array `groupId`.
void removeScreen(QList<ActiveLoad>& loads, int groupId);

/// Moves `load` by `distance` [m].
void moveLoad(ActiveLoad& load, float distance, float trussLength);

/// Moves all loads of the array `groupId` by `distance` [m]. Each is held at the truss's ends on its
/// own, so an array that is pushed against one is compressed for good.
void moveGroup(QList<ActiveLoad>& loads, int groupId, float distance, float trussLength);

/// Moves both counters past the ids that `project` uses, so that what is added later never shares an
/// id or a group with what a file brought along. Ids beyond half the integers are left alone, so
/// that the counters cannot overflow.
void reserveIds(const ProjectState& project, int& nextLoadId, int& nextGroupId);

} // namespace Edits
