#pragma once

#include "io/SheetProject.h"

#include <QString>

#include <optional>
#include <vector>

/// How the program's stress and stability come about. Each span is rated as a simply supported beam against
/// M_ref = L·CPL/4, each overhang as a cantilever against half of that.
namespace SheetStress
{

/// A span or an overhang, with its largest moment.
struct Candidate
{
    enum class Kind
    {
        Span,
        LeftOverhang,
        RightOverhang
    };

    Kind kind = Kind::Span;
    double from = 0.0;      ///< its left end [m]
    double to = 0.0;        ///< its right end [m]
    int firstMotor = 0;     ///< the number of the motor at its left end, or of its only one
    double place = 0.0;     ///< of the moment [m]
    double moment = 0.0;    ///< [kg·m]
    double reference = 0.0; ///< [kg·m]

    /// The moment against the reference [%].
    [[nodiscard]] double percent() const;
};

/// False where the program rates nothing: no motors, no length, no CPL.
bool isRated(const SheetProject& project);

/// All that the program compares, left overhang, spans, right overhang; none where it rates nothing.
std::vector<Candidate> candidates(const SheetProject& project);

/// The section: both references, all candidates, and the deciding one load by load.
QString stressHtml(const SheetProject& project);

/// The section on the two overhangs.
QString stabilityHtml(const SheetProject& project);

} // namespace SheetStress
