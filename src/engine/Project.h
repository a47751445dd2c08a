#pragma once

#include <QList>
#include <QString>

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

/// One whole project, as kept for each tab and for each undo step. The defaults are those of a
/// new project.
///
/// Positions are metres along the truss from its LEFT end, 0 to `trussLength`. Masses and forces
/// are kilograms, positive downwards on the truss and upwards in a motor's chain.
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
    float trussStressPercentage = 0.0F; ///< result [%]
    bool isUnstable = false;            ///< result: an overhang is too long
    QList<Motor> motors;
    QList<ActiveLoad> loads;
    int selectedLoadId = -1;  ///< -1 for none
    int projectCounter = 100; ///< carried along unchanged
};

/// Which motor of a project is meant, through recalculations that sort the motors and edits that
/// move them. Opened files may repeat an id, hence the position, and motors may share both, hence
/// the index.
struct MotorIdentity
{
    int id = 0;
    float positionX = 0.0F; ///< where it last stood [m]
    int index = -1;         ///< where it last was in the list

public: // construction
    /// The motor at `index` of `motors`, which must be one of them.
    static MotorIdentity at(const QList<Motor>& motors, int index);
    /// As `at`, with the index that the motor will have once a calculation has sorted the motors by their
    /// positions: a motor that was moved may then stand at another motor's place, under the same id.
    static MotorIdentity beforeSorting(const QList<Motor>& motors, int index);

public: // queries
    /// Where the motor now is in `motors`: at its index if the motor there has its id and position, else
    /// the first one that has both, else the first with its id, else -1.
    [[nodiscard]] int indexIn(const QList<Motor>& motors) const;
};

/// Questions about the records of a project, whoever holds them.
namespace Project
{

/// What a motor is called: its model name, or "M" and its id when that is empty.
QString motorTitle(const Motor& motor);
/// What a load is called on the canvas: its name, or "L" and its id when that is empty.
QString loadTitle(const ActiveLoad& load);
/// True for the type words of a screen: exactly "Video" or "Video_Segment".
bool isScreen(const ActiveLoad& load);
/// True for a screen's load that belongs to an array.
bool isArraySegment(const ActiveLoad& load);
/// Where the first load with this id stands in `loads`, else -1; the id -1 stands for no load.
qsizetype indexOfLoad(const QList<ActiveLoad>& loads, int id);
/// `x` [m] brought into 0 to `trussLength` [m]; 0 where the truss has no length or `x` is not a number.
float clampToTruss(float x, float trussLength);
/// The position `x` [m] on a truss of `trussLength` [m] as the user reads it: relative to the
/// centre, "+1.50m", "0.00m".
QString formatCoordinate(float x, float trussLength);

} // namespace Project
