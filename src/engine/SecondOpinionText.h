#pragma once

#include "engine/SecondOpinion.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// The second opinion in the user's words. Masses have one decimal, positions are relative to the truss's
/// middle, the decimal sign is the point in every locale. What has no value in a state is a dash; names
/// stand as the user wrote them.
namespace SecondOpinionText
{

/// "Contraste (viga continua; no sustituye al cálculo de un técnico)".
QString title();

/// The headings of the table's seven columns, "Motor" to "Veredicto nivelado".
QStringList columns();

/// The table: a row of seven texts for each motor, in the order of the list.
QList<QStringList> rows(const SecondOpinion::Opinion& opinion);

/// `opinion` with titles that tell its motors apart: where several share one, their positions follow it,
/// as in "Motor (-6.00m)". The texts below name motors so.
SecondOpinion::Opinion withDistinctTitles(SecondOpinion::Opinion opinion);

/// The truss at level and in the worst case of one slack motor; empty where there is nothing to tell.
QString truss(const SecondOpinion::Opinion& opinion);

/// All that there is to say, gravest first: state, what exceeds at level, what hangs slack, what one slack
/// motor does, close motors, any levelling, how much a millimetre counts. May be empty.
QStringList sentences(const SecondOpinion::Opinion& opinion);

/// Those sentences alone in which `opinion` contradicts today's figures on the unsafe side; none exactly
/// where `contradicts()` is false.
QStringList contradictions(const SecondOpinion::Opinion& opinion);

/// What all of it takes for granted: to stand below it in small type, always.
QString limits();

/// The state in a document: "sin_motores", "no_calculable", "sin_carga", "un_motor", "vuelca", "al_borde",
/// "no_converge" or "ok".
QString stateKey(SecondOpinion::State state);

/// The verdict in a document: "ok", "exceso_estatico" or "exceso_dinamico".
QString verdictKey(SecondOpinion::Verdict verdict);

/// The verdict in a table: "OK", "EXCESO ESTÁTICO" or "EXCESO DINÁMICO".
QString verdict(SecondOpinion::Verdict verdict);

/// `position` [m from the left end] of a truss of `length` [m] as the program shows it: "+3.99m", "0.00m".
QString position(double position, double length);

/// With one decimal; a dash for nothing [kg], [kg·m].
QString mass(const std::optional<double>& kilograms);

/// "21.9 %".
QString percent(double percent);

} // namespace SecondOpinionText
