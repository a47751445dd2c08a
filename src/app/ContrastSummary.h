#pragma once

#include "engine/SecondOpinion.h"

#include <QJsonObject>
#include <QString>

/// The second opinion on a project, as a text to read on a terminal, or as JSON for other programs.
namespace ContrastSummary
{

/// The sentences in which `opinion` contradicts today's figures on the unsafe side, a line each; empty
/// where it does not.
QString warnings(const SecondOpinion::Opinion& opinion);

/// All of `opinion`: its title, the motors in aligned columns, the truss, every sentence, and what it
/// takes for granted.
QString text(const SecondOpinion::Opinion& opinion);

/// What else is told of the motors in a document.
enum class Levelling
{
    Untold,
    Told, ///< for each millimetre, see `--flecha`
};

/// `opinion` as one object:
///
/// - `estado`: "ok", "vuelca", "al_borde", "un_motor", "sin_motores", "sin_carga", "no_calculable" or
///   "no_converge";
/// - `centro_de_gravedad_m` (relative to the centre of the truss), `margen_vuelco_m` (negative: outside
///   the motors), `peso_total_kg`;
/// - `momento_max_kgm`, `momento_min_kgm`, `cortante_max_kg` and `momento_pct` of the truss at level,
///   `momento_un_flojo_pct` in the worst case of one slack motor;
/// - `motores`: for each motor of the project, in its order, `palanca_kg`, `nivelado_kg`, `empujando_kg`,
///   `flojo`, `un_flojo_kg`, `un_flojo_cual` (its place among the motors, from 1), `maximo_kg`,
///   `minimo_kg`, `imprescindible`, `veredicto_nivelado`; with `Levelling::Told` also `kg_por_mm` and
///   `flojo_a_mm`.
///
/// Numbers are rounded to three decimals. What has no value in a state is null.
QJsonObject json(const SecondOpinion::Opinion& opinion, Levelling levelling);

} // namespace ContrastSummary
