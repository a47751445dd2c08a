#pragma once

#include "engine/SecondOpinion.h"
#include "io/SheetBeam.h"
#include "io/SheetProject.h"

#include <QString>

/// The second opinion in the calculation sheet.
namespace SheetOpinion
{

/// Its table, pictures and sentences, as the window shows them.
QString figuresHtml(const SecondOpinion::Opinion& opinion);

/// The section with its equations and the numbers put in.
QString equationsHtml(const SheetProject& project, const SecondOpinion::Opinion& opinion);

} // namespace SheetOpinion

/// The parts of `equationsHtml`.
namespace SheetEquations
{

/// "motor 2", "motores 2 y 3": what hangs at a point.
QString pointName(const SheetBeam& beam, std::size_t point);

/// The turns K of the inner points of the textbook's beam, load by load.
QString turns(const SheetProject& project, const SheetBeam& beam);

/// A case as a table: G, K, M and R.
QString table(const SheetBeam& beam, const SheetBeam::Case& told);

/// Moments and reactions of a case, equation by equation.
QString solution(const SheetProject& project, const SheetBeam& beam, const SheetBeam::Case& told);

/// What each motor of a point carries that several share; where `tellSlack`, also with one of them slack.
QString shared(const SheetBeam& beam, const SheetBeam::Case& told, bool tellSlack);

/// The extremes of moment and shear of a case.
QString extremes(const SheetProject& project, const SheetBeam& beam, const SheetBeam::Case& told);

} // namespace SheetEquations
