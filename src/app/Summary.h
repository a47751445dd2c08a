#pragma once

#include "engine/Figures.h"

#include <QJsonObject>
#include <QString>

/// The figures of projects as a text to read on a terminal, or as JSON for other programs.
namespace Summary
{

/// The truss, its motors in aligned columns, stress and stability of the project in the file `name`.
QString text(const QString& name, const Figures& project);

/// The same as one object:
///
/// - `archivo`, `proyecto`: the file as given, the project's title;
/// - `longitud_m`, `peso_kg_m`, `cpl_kg`: the truss;
/// - `motores`: for each motor, left to right, `nombre`, `posicion` (relative to the centre, as
///   shown), `posicion_m` (the same as a number), `en_punto_kg`, `estatica_kg`, `dinamica_kg`,
///   `capacidad_kg`, `peso_propio_kg`, and `veredicto`: "ok", "exceso_estatico" or "exceso_dinamico";
/// - `cargas`: for each load, in the order of the project, `nombre`, `masa_kg`, `posicion_m` and `grupo`,
///   the number of the screen it belongs to, or null;
/// - `estres_pct`, `estable`, `calculable`, `apto`.
///
/// Numbers are rounded to three decimals; one that cannot be calculated is null.
QJsonObject json(const QString& name, const Figures& project);

/// Everything within its limits, and everything known.
bool isWithinLimits(const Figures& project);

} // namespace Summary
