#pragma once

#include <QList>
#include <QString>

#include <optional>

/// The structural engine: the one project that is currently shown, and the results of its last
/// calculation.
///
/// Positions are metres along the truss from its LEFT end, 0 to `TrussLength`; only texts are
/// relative to the centre (`formatCoordinate`). Masses and forces are kilograms, positive
/// downwards on the truss and upwards in a motor's chain. All state is class-level: there is one
/// current project in the process, it belongs to the current tab, and every part of the program
/// reads and writes it directly. Whoever borrows the engine for another project holds an
/// `EngineLoan` meanwhile.
///
/// The engine reports no errors: numbers that cannot be used give results of zero.
class LoadLogic
{
public: // records
    /// One hanging point: a chain-hoist motor.
    struct Motor
    {
        int id = 0;                                  ///< unique within the project
        QString modelName = QStringLiteral("Motor"); ///< shown as "M" and the id when empty
        float positionX = 0.0F;                      ///< [m] from the left end
        float staticLoad = 0.0F;                     ///< result: what hangs on it [kg]
        float totalLoad = 0.0F;                      ///< result: staticLoad + selfWeight [kg]
        float capacity = 1000.0F;                    ///< working load limit [kg]
        float selfWeight = 50.0F;                    ///< the hoist's own weight [kg]
    };

    /// One load on the truss: a point load, or one segment of an LED screen array.
    struct ActiveLoad
    {
        int id = 0;                                ///< unique for the run of the program
        float mass = 500.0F;                       ///< [kg]
        float positionX = 0.0F;                    ///< [m] from the left end
        QString type = QStringLiteral("Standard"); ///< "Standard", "Audio", "Video_Segment" …
        QString name = QStringLiteral("Carga");    ///< shown as "L" and the id when empty
        int groupId = -1;                          ///< the array it belongs to, -1 for none
        float screenWidth = 0.0F;                  ///< of the whole array [m]
        float screenHeight = 0.0F;                 ///< [m]
        float screenWeightM2 = 0.0F;               ///< [kg/m²]
        float bumperWeightPerMeter = 0.0F;         ///< flying bar [kg/m]
        float cableWeightPercent = 7.0F;           ///< allowance on the screen's weight [%]
    };

    /// Snapshot of one whole project, as kept for each tab and for each undo step. The defaults
    /// are those of a new project.
    struct ProjectState
    {
        QString tabName = QStringLiteral("Proyecto");
        float trussLength = 12.0F;          ///< [m]
        float trussSelfWeight = 8.4F;       ///< [kg/m]
        float limitCPL = 1600.0F;           ///< maximum central point load [kg]
        float screenWidth = 4.0F;           ///< [m]
        float screenHeight = 3.0F;          ///< [m]
        float screenWeightM2 = 40.0F;       ///< [kg/m²]
        float bumperWeightPerMeter = 10.0F; ///< [kg/m]
        float cableWeightPercent = 7.0F;    ///< [%]
        float ledTotalWeight = 0.0F;        ///< [kg]
        float trussStressPercentage = 0.0F; ///< [%]
        bool isUnstable = false;
        QList<Motor> motors;
        QList<ActiveLoad> loads;
        int selectedLoadId = -1;  ///< -1 for none
        int projectCounter = 100; ///< carried along unchanged
    };

public: // constants
    /// What a load grows by while its motors start and stop (DGUV V17/18), without a unit.
    static constexpr float DYNAMIC_FACTOR = 1.25F;

public:                                                  // the current project
    static inline float TrussLength = 12.0F;             ///< [m]
    static inline float TrussSelfWeight = 8.4F;          ///< [kg/m]
    static inline float Limit_CPL = 1600.0F;             ///< maximum central point load [kg]
    static inline float Screen_Width = 4.0F;             ///< [m]
    static inline float Screen_Height = 3.0F;            ///< [m]
    static inline float Screen_Weight_M2 = 40.0F;        ///< [kg/m²]
    static inline float Bumper_Weight_Per_Meter = 10.0F; ///< [kg/m]
    static inline float TrussStress_Percentage = 0.0F;   ///< result, not clamped [%]
    static inline float LED_TotalWeight = 0.0F;          ///< [kg]
    static inline bool isUnstable = false;               ///< result: an overhang is too long
    static inline QList<Motor> MotorList;                ///< left to right after a calculation
    static inline QList<ActiveLoad> ActiveLoads;         ///< in the order of their creation

public: // process-wide counters; they only ever grow
    static inline int NextLoadId = 1;
    static inline int NextGroupId = 100;

public: // calculation
    /// Shares everything that hangs on the truss among the motors: writes every motor's
    /// `staticLoad` and `totalLoad`, sorts `MotorList` by position and refreshes the stress.
    /// Two motors at one place with a load exactly there both get not-a-number.
    static void CalcularReacciones();
    /// Rates the truss: writes `TrussStress_Percentage` [%] and `isUnstable`. A length or a CPL
    /// of 0.01 or less, or no motors, gives 0 % and stable; an unstable truss is rated 0 %.
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
    /// Gives `load` the next id, clamps its position to the truss and appends it, without
    /// recalculating: for whoever adds many and recalculates once. Returns the id.
    static int PlaceLoad(ActiveLoad load);
    /// Moves both counters past the ids that `state` uses, so that what is added later never
    /// shares an id or a group with what a file brought along. Ids beyond half the integers are
    /// left alone, so that the counters cannot overflow.
    static void ReserveIds(const ProjectState& state);

public: // queries
    /// The position `x` [m] as the user reads it: relative to the centre, "+1.50m", "0.00m".
    static QString formatCoordinate(float x);
    /// `x` [m] brought into 0 to `TrussLength`; 0 where the truss has no length.
    static float ClampToTruss(float x);
    /// Where `motor` now stands in `MotorList`: the one with its id and position, else the first
    /// with its id, else -1. Opened files may repeat an id, hence the position.
    static int IndexOfMotor(const Motor& motor);
    /// The first load with this id, or nothing; -1 stands for no load. Invalid once `ActiveLoads` changes.
    static ActiveLoad* FindLoad(int id);
    /// What a motor is called: its model name, or "M" and its id when that is empty.
    static QString MotorTitle(const Motor& motor);
    /// True for the type words of a screen: exactly "Video" or "Video_Segment".
    static bool IsScreen(const ActiveLoad& load);

public: // snapshots
    /// Makes the truss, motors and loads of `state` the current ones; calculates nothing.
    static void Load(const ProjectState& state);
};

/// Gives the engine back: keeps the current project and its results from construction to
/// destruction, so that another project can be calculated in between. The id counters are not
/// part of a project and go on.
class EngineLoan
{
public: // construction
    EngineLoan();
    ~EngineLoan();
    EngineLoan(const EngineLoan&) = delete;
    EngineLoan& operator=(const EngineLoan&) = delete;

private: // data
    LoadLogic::ProjectState m_state;
};
