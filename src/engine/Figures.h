#pragma once

#include "engine/Limits.h"
#include "engine/Project.h"

#include <QHash>
#include <QList>
#include <QString>

/// What is said of one calculated project on the report page, in the written report and on the
/// command line: the same numbers in all three.
struct Figures
{
    using Verdict = Limits::MotorVerdict;

    struct MotorFigures
    {
        QString title;
        QString position;         ///< relative to the centre, as the user reads it
        float fromCentre = 0.0F;  ///< the same as a number [m]
        float capacity = 0.0F;    ///< [kg]
        float selfWeight = 0.0F;  ///< of the motor [kg]
        float atPoint = 0.0F;     ///< what hangs on it [kg]
        float staticLoad = 0.0F;  ///< atPoint + selfWeight [kg]
        float dynamicLoad = 0.0F; ///< staticLoad × 1.25 [kg]
        Verdict verdict = Verdict::Fits;
    };

    /// One LED array. Its dimensions are those of its first segment in the load list.
    struct ArrayFigures
    {
        int number = 0;                    ///< 1, 2, 3 … by ascending group
        float width = 0.0F;                ///< [m]
        float height = 0.0F;               ///< [m]
        float weightM2 = 0.0F;             ///< [kg/m²]
        float bumperWeightPerMeter = 0.0F; ///< [kg/m]
        float cableWeightPercent = 0.0F;   ///< [%]
        float totalMass = 0.0F;            ///< of all its segments [kg]
    };

    struct LoadFigures
    {
        QString title;           ///< the name, or "Carga " and the id when it is empty
        QString position;        ///< relative to the centre, as the user reads it
        float fromCentre = 0.0F; ///< the same as a number [m]
        float mass = 0.0F;       ///< [kg]
        bool isSegment = false;  ///< belongs to an array
        int group = -1;          ///< the array's in the project, below 0 for none
        int arrayNumber = 0;     ///< 0 for an array without a number: its segments are untyped
    };

public: // what was calculated
    QString title;
    float trussLength = 0.0F;     ///< [m]
    float trussSelfWeight = 0.0F; ///< [kg/m]
    float limitCPL = 0.0F;        ///< [kg]
    QList<MotorFigures> motors;   ///< left to right
    QList<ArrayFigures> arrays;
    QList<LoadFigures> loads;
    float stress = 0.0F; ///< [%]
    bool isUnstable = false;

public: // construction
    /// The figures of `project`, which is calculated first; its title is `tabName`.
    static Figures of(const ProjectState& project);
    /// The figures of a project that holds its results already.
    static Figures ofSolved(const ProjectState& solved);

public: // queries
    /// "OK ✅", "EXCESO ESTÁTICO ❌" or "EXCESO DINÁMICO ❌".
    static QString verdictText(Verdict verdict);
    /// The number that each array of `loads` has here, by its group.
    static QHash<int, int> arrayNumbers(const QList<ActiveLoad>& loads);
    /// The verdict on the project: "NO APTO (INESTABLE)", "NO APTO" or "APTO".
    [[nodiscard]] QString resultWord() const;
    /// What `resultWord` is followed by: why.
    [[nodiscard]] QString resultReason() const;
    /// 100 % of stress or more, or a number that cannot be told.
    [[nodiscard]] bool isOverstressed() const;
    /// The truss's verdict, which every array and load shares: overstressed or unstable.
    [[nodiscard]] bool isTrussOverloaded() const;
    [[nodiscard]] bool areMotorsFit() const;
    /// Every motor and the truss within their limits.
    [[nodiscard]] bool fits() const;
    /// False where a load has no answer: two motors at one place with a load between them. Those
    /// motors' verdicts say nothing.
    [[nodiscard]] bool isCalculable() const;
};
