#pragma once

#include "engine/Limits.h"
#include "engine/Project.h"

#include <QStringList>

/// One motor as a row of "Lista" shows it. Positions are relative to the truss's middle.
struct ListedMotor
{
    int id = 0;
    QString name;
    float position = 0.0F;    ///< [m]
    float half = 0.0F;        ///< how far it may hang from the middle [m]
    float capacity = 0.0F;    ///< [kg]
    float selfWeight = 0.0F;  ///< [kg]
    float staticLoad = 0.0F;  ///< what hangs on it and its own weight [kg]
    float dynamicLoad = 0.0F; ///< while it starts and stops [kg]
    Limits::MotorVerdict verdict = Limits::MotorVerdict::Fits;
};

/// One load as a row of "Lista" shows it.
struct ListedLoad
{
    int id = 0;
    QString name;
    float mass = 0.0F;      ///< [kg]
    float position = 0.0F;  ///< [m]
    float half = 0.0F;      ///< how far it may hang from the middle [m]
    int screen = -1;        ///< the number of its screen in the reports, -1 for none
    bool isSegment = false; ///< hangs and moves with its whole screen
};

/// What a cell takes that is edited.
struct ListField
{
    enum class Kind
    {
        Result, ///< nothing
        Name,
        Number
    };

    Kind kind = Kind::Result;
    double bottom = 0.0; ///< the smallest number that is taken
    double top = 0.0;    ///< the largest one
    int decimals = 1;
    QString name; ///< for screen readers
    QString rule; ///< what it takes, or why it takes nothing, in a sentence
};

/// What a cell shows.
struct ListCell
{
    enum class Tone
    {
        Plain,
        Good,
        Bad
    };

    QString shown; ///< in one line
    QString typed; ///< what an editor starts with, and what is copied
    ListField field;
    Tone tone = Tone::Plain;
};

/// A column's heading, and the widest that usually stands below it.
struct ListColumn
{
    QString heading;
    QString sample;
};

/// Whether they would be shown the same.
bool operator==(const ListedMotor& a, const ListedMotor& b);
bool operator==(const ListedLoad& a, const ListedLoad& b);

/// Motors and loads as rows of texts, and what is typed into a cell back into them.
namespace ListRows
{

/// Columns of the motors.
enum MotorColumn
{
    MotorName,
    MotorPosition,
    MotorCapacity,
    MotorWeight,
    MotorStatic,
    MotorDynamic,
    MotorState
};

/// Columns of the loads, the first three as they are pasted.
enum LoadColumn
{
    LoadName,
    LoadMass,
    LoadPosition,
    LoadScreen
};

/// The columns of either table.
[[nodiscard]] QList<ListColumn> motorColumns();
[[nodiscard]] QList<ListColumn> loadColumns();

/// The rows of a calculated project, in the order of its lists.
[[nodiscard]] QList<ListedMotor> motorsOf(const ProjectState& solved);
[[nodiscard]] QList<ListedLoad> loadsOf(const ProjectState& solved);

/// What stands in a column of a row.
[[nodiscard]] ListCell cell(const ListedMotor& row, int column);
[[nodiscard]] ListCell cell(const ListedLoad& row, int column);

/// Whether `a` comes before `b` when they are sorted by a column; what is not a number comes last.
[[nodiscard]] bool isLess(const ListedMotor& a, const ListedMotor& b, int column);
[[nodiscard]] bool isLess(const ListedLoad& a, const ListedLoad& b, int column);

/// Whether `field` takes `text`.
[[nodiscard]] bool takes(const ListField& field, const QString& text);

/// Writes `text`, which the field of that column takes, into a record on a truss of `trussLength` [m].
void write(Motor& motor, int column, const QString& text, float trussLength);
void write(ActiveLoad& load, int column, const QString& text, float trussLength);

} // namespace ListRows
