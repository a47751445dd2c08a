#pragma once

#include "engine/Project.h"
#include "engine/Statics.h"

struct LedArray;

/// The project that is being edited, and the results of its last calculation.
///
/// Positions are metres along the truss from its LEFT end, 0 to `TrussLength`; only texts are
/// relative to the centre (`formatCoordinate`). Masses and forces are kilograms, positive
/// downwards on the truss and upwards in a motor's chain. All state is class-level: there is one
/// current project in the process, and it belongs to the current tab. Only the window's slots and
/// the canvas widget read and write it; everything else takes a project as a value.
///
/// Unusable numbers are no errors here: they give results of zero.
class LoadLogic
{
public: // records
    using Motor = ::Motor;
    using ActiveLoad = ::ActiveLoad;
    using ProjectState = ::ProjectState;

public: // the current project
    /// Length [m].
    static inline float TrussLength = 12.0F;
    static inline float TrussSelfWeight = 8.4F;          ///< [kg/m]
    static inline float Limit_CPL = 1600.0F;             ///< maximum central point load [kg]
    static inline float Screen_Width = 4.0F;             ///< [m]
    static inline float Screen_Height = 3.0F;            ///< [m]
    static inline float Screen_Weight_M2 = 40.0F;        ///< [kg/m²]
    static inline float Bumper_Weight_Per_Meter = 10.0F; ///< [kg/m]
    static inline float TrussStress_Percentage = 0.0F;   ///< result, not clamped [%]
    static inline float LED_TotalWeight = 0.0F;          ///< [kg]
    static inline bool isUnstable = false;               ///< result: an overhang is too long
    static QList<Motor> MotorList;                       ///< left to right after a calculation
    static QList<ActiveLoad> ActiveLoads;                ///< in the order of their creation

public: // process-wide counters; they only ever grow
    static inline int NextLoadId = 1;
    static inline int NextGroupId = 100;

public: // calculation
    /// `Statics::solve` for the current project: writes every motor's `staticLoad` and `totalLoad`,
    /// sorts `MotorList` by position and refreshes the rating.
    static void CalcularReacciones();
    /// `Statics::rate` for the current project: writes `TrussStress_Percentage` [%] and `isUnstable`.
    static void CalcularStressTruss();
    /// Sets `LED_TotalWeight` [kg] from the screen statics, without the cable allowance.
    static void CalcularPesoLED();

public: // placing
    /// Hangs a motor with the usual values at `x` [m], clamped to the truss, and recalculates.
    static void AddMotor(float x);
    /// Hangs a load at `x` [m], clamped to the truss, and recalculates. Units as in `ActiveLoad`.
    static void AddLoad(float mass, float x, QString type, QString name, int groupId, float screenWidth,
                        float screenHeight, float screenWeightM2, float bumperWeightPerMeter,
                        float cableWeightPercent);
    /// Hangs a standard load of 500 kg named "Carga" at `x` [m] and recalculates.
    static void AddLoad(float x);

public: // edits; they calculate nothing, see `Edits`
    /// Hangs `load`, clamped to the truss, under the next id; returns the id.
    static int PlaceLoad(ActiveLoad load);
    static void SpreadLoads(const ActiveLoad& pattern, int count);
    /// Hangs `screen` centred at `centre` [m] as the array `groupId`; returns the id of its first segment,
    /// -1 where it has none.
    static int PlaceScreen(const LedArray& screen, float centre, int groupId);
    static void SpreadScreens(const LedArray& screen, int copies);
    /// Gives the truss the length `length` [m]; motors and loads follow.
    static void ResizeTruss(float length);
    static void ReserveIds(const ProjectState& project);

public: // queries
    /// The position `x` [m] as the user reads it: relative to the centre, "+1.50m", "0.00m".
    static QString formatCoordinate(float x);
    /// `x` [m] brought into 0 to `TrussLength`; 0 where the truss has no length.
    static float ClampToTruss(float x);
    /// The first load with this id, or nothing; -1 stands for no load. Invalid once `ActiveLoads` changes.
    static ActiveLoad* FindLoad(int id);

    /// The truss of the current project.
    static Truss CurrentTruss();

public: // snapshots
    /// The truss, the motors, the loads, the screen's weight and the results. The values that a screen
    /// is made with stand in fields of the window; here they keep their defaults.
    static ProjectState Snapshot();
    /// Makes the truss, motors and loads of `state` the current ones; calculates nothing.
    static void MakeCurrent(const ProjectState& state);
    /// As when the program starts, without motors and loads; only the counters of ids go on.
    static void Reset();
};
