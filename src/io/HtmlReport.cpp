#include "io/HtmlReport.h"

#include "engine/Numbers.h"
#include "fields/AccentColour.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

// Texts are put together by appending only: a template filled with arg() would take a "%9" in a
// user's name for a place of its own.

namespace
{

/// One line of the document, told here a rule a line.
const QString STYLES = uR"(
body { font-family: 'Segoe UI', Arial, sans-serif; padding: 40px; color: #1a1a1a; background: #fff; max-width: 800px; margin: auto; line-height: 1.4; }
h1 { color: #000; border-bottom: 3px solid )" ACCENT_COLOUR uR"(; padding-bottom: 12px; text-transform: uppercase; }
h3 { margin-top: 40px; color: #fff; background: #2d3436; border-left: 8px solid )" ACCENT_COLOUR uR"(; padding: 10px 15px; text-transform: uppercase; font-size: 1.1em; }
h4 { margin-top: 25px; color: #1e90ff; border-bottom: 2px solid #ccc; padding-bottom: 5px; font-weight: bold; }
table { width: 100%; border-collapse: collapse; margin-top: 15px; margin-bottom: 25px; }
th, td { border: 1px solid #444; padding: 10px; text-align: center; font-size: 0.9em; }
th { background-color: #f1f2f6; color: #000; font-weight: bold; text-transform: uppercase; font-size: 0.75em; }
tr:nth-child(even) { background-color: #fcfcfc; }
.status-ok { color: #27ae60; font-weight: bold; }
.status-error { color: #e74c3c; font-weight: bold; }
.project-section { margin-bottom: 70px; padding-bottom: 40px; border-bottom: 2px solid #eee; }
.schema-img { width: 100%; max-width: 780px; height: auto; max-height: 380px; object-fit: contain; display: block; margin: 15px auto; border: 1px solid #ccc; }
.global-summary { background: #f8f9fa; padding: 25px; border-radius: 4px; border: 2px solid #2d3436; margin-bottom: 40px; }
.recommendation-box { background: #fffcf0; padding: 20px; border: 2px solid #f1c40f; border-radius: 4px; margin-top: 30px; margin-bottom: 30px; }
.recommendation-box h4 { color: #d35400; margin-top: 0; }
.disclaimer-box { background: #eee; padding: 20px; font-size: 0.85em; color: #555; border-top: 1px solid #ccc; margin-top: 50px; }
)"_s.simplified();

/// Nothing but the drawings and the styles above: names may hold markup of a stranger.
const QString POLICY =
    u"<meta http-equiv='Content-Security-Policy' content=\"default-src 'none'; img-src 'self' file: data:; "
    "style-src 'unsafe-inline'; frame-src 'none'; connect-src 'none'; base-uri 'none'; form-action 'none'\">"
    "<meta name='referrer' content='no-referrer'><meta http-equiv='x-dns-prefetch-control' content='off'>"_s;

const QString DISCLAIMER =
    u"<b>ANÁLISIS DE SEGURIDAD (DGUV V17/18):</b><br><br>"
    "Según la normativa para elevación sobre personas, se aplica un factor de seguridad dinámico de 1.25 "
    "(25%) "
    "adicional. Las columnas de \"DINÁMICA\" reflejan el esfuerzo real del motor y el punto de anclaje "
    "durante "
    "las fases de arranque y parada.<br><br>"
    "Este informe es una simulación basada en modelos matemáticos. Los desarrolladores NO se responsabilizan "
    "de "
    "daños o accidentes. <b>VALIDACIÓN OBLIGATORIA</b> por ingeniero colegiado antes del montaje."_s;

const QString STRESS_ADVICE =
    u"El diseño supera el 100% de estrés estructural. Reforzar con viga de mayor CPL o reducir la luz "
    "entre apoyos."_s;

const QString STABILITY_ADVICE =
    u"Error de estabilidad por voladizo (Cantilever). Reubicar los motores más hacia los extremos del truss."_s;

QString decimal(float value)
{
    return Numbers::fixed(value, 1);
}

QString statusClass(bool isOk)
{
    return isOk ? u"status-ok"_s : u"status-error"_s;
}

/// Status cells end a row; the others are plain.
QString row(const QStringList& cells, bool isOk, const QString& status)
{
    return u"<tr><td>"_s + cells.join("</td><td>"_L1) + u"</td><td class='"_s + statusClass(isOk) + u"'>"_s
           + status + u"</td></tr>"_s;
}

QString tableHead(const QStringList& titles)
{
    return u"<table><thead><tr><th>"_s + titles.join("</th><th>"_L1) + u"</th></tr></thead><tbody>"_s;
}

const QString TABLE_END = u"</tbody></table>"_s;
const QString SECTION_INDENT = u"\n      "_s;

QString motorStatus(Figures::Verdict verdict)
{
    switch (verdict) {
    case Figures::Verdict::StaticOverload:
        return u"SOBRECARGA ESTÁTICA"_s;
    case Figures::Verdict::DynamicOverload:
        return u"SOBRECARGA DINÁMICA"_s;
    case Figures::Verdict::Fits:
        break;
    }
    return u"OK"_s;
}

QString motorTable(const Figures& project)
{
    QString html = tableHead({u"ID / Motor"_s, u"POS (m)"_s, u"CAPACIDAD MOTOR"_s, u"PESO MOTOR"_s,
                              u"TOTAL EN PUNTO"_s, u"ESTÁTICA"_s, u"DINÁMICA"_s, u"ESTADO"_s});
    for (const Figures::MotorFigures& motor : project.motors) {
        html += row({motor.title, motor.position, decimal(motor.capacity), decimal(motor.selfWeight),
                     decimal(motor.atPoint), decimal(motor.staticLoad), decimal(motor.dynamicLoad)},
                    motor.verdict == Figures::Verdict::Fits, motorStatus(motor.verdict));
    }
    return html + TABLE_END;
}

QString arrayTable(const Figures& project)
{
    if (project.arrays.isEmpty())
        return {};

    QString html =
        u"<h4>ESPECIFICACIONES TÉCNICAS: PANTALLAS LED</h4>"_s
        + tableHead({u"Array ID"_s, u"Dimensiones"_s, u"Construcción"_s, u"Cables"_s, u"Peso Total"_s});
    for (const Figures::ArrayFigures& array : project.arrays) {
        html += u"<tr><td>LED Array ("_s + QString::number(array.number) + u")</td><td>"_s
                + decimal(array.width) + u"m x "_s + decimal(array.height) + u"m</td><td>"_s
                + decimal(array.weightM2) + u" kg/m² + "_s + decimal(array.bumperWeightPerMeter)
                + u" kg/m bumper</td><td>+"_s + decimal(array.cableWeightPercent) + u"%</td><td>"_s
                + decimal(array.totalMass) + u" kg</td></tr>"_s;
    }
    return html + TABLE_END + SECTION_INDENT;
}

QString loadTitle(const Figures::LoadFigures& load)
{
    return load.isSegment ? u"Segment LED (Array "_s + QString::number(load.arrayNumber) + u')' : load.title;
}

QString loadTable(const Figures& project)
{
    QString html = tableHead({u"Nombre de Carga"_s, u"POS (m)"_s, u"Masa (kg)"_s, u"Tipo"_s, u"Total (kg)"_s,
                              u"-"_s, u"Estado"_s});
    const bool isOk = !project.isTrussOverloaded();
    for (const Figures::LoadFigures& load : project.loads) {
        const QString mass = decimal(load.mass) + u" kg"_s;
        html += row({loadTitle(load), load.position, mass, load.isSegment ? u"Segmento LED"_s : u"Puntual"_s,
                     mass, u"-"_s},
                    isOk, isOk ? u"OK"_s : u"SOBRECARGA"_s);
    }
    return html + TABLE_END;
}

QString partialResult(const Figures& project)
{
    return u"<span class='"_s + statusClass(project.fits()) + u"'>"_s + project.resultWord() + u"</span>: "_s
           + project.resultReason();
}

QString section(const Figures& project, qsizetype index)
{
    const QStringList lines{
        u"<div class='project-section'>"_s,
        u"<h3>PROYECTO: "_s + project.title + u"</h3>"_s,
        u"<div class='schema-box'><img src='"_s + HtmlReport::drawingName(index)
            + u"' class='schema-img' alt='Esquema "_s + project.title + u"'></div>"_s,
        u"<h4>Motores y Reacciones</h4>"_s + motorTable(project),
        arrayTable(project) + u"<h4>Desglose Individual de Cargas en Viga</h4>"_s + loadTable(project),
        u"<p><b>Resultado Parcial:</b> "_s + partialResult(project) + u" | Stress: "_s
            + decimal(project.stress) + u"%</p>"_s,
        u"</div>"_s,
    };
    return SECTION_INDENT + lines.join(SECTION_INDENT);
}

QString globalVerdict(const QList<Figures>& projects)
{
    const bool fits = std::all_of(projects.cbegin(), projects.cend(),
                                  [](const Figures& project) { return project.fits(); });
    return fits ? u"<h2 class='status-ok'>✅ CONFIGURACIÓN GLOBAL APTA</h2>"_s
                : u"<h2 class='status-error'>❌ CONFIGURACIÓN GLOBAL CON RIESGOS</h2>"_s;
}

/// Advice in the order of the projects; two projects with one fault give it twice.
QString recommendations(const QList<Figures>& projects)
{
    QString items;
    for (const Figures& project : projects) {
        if (project.isOverstressed())
            items += u"<li>"_s + STRESS_ADVICE + u"</li>"_s;
        if (project.isUnstable)
            items += u"<li>"_s + STABILITY_ADVICE + u"</li>"_s;
    }
    if (items.isEmpty())
        return {};
    return u"<div class='recommendation-box'><h4>⚠️ RECOMENDACIONES TÉCNICAS</h4><ul>"_s + items
           + u"</ul></div>"_s;
}

QString globalSummary(const QList<Figures>& projects)
{
    return u"<div class='global-summary'>"_s + globalVerdict(projects) + u"<p>Este informe agrupa "_s
           + QString::number(projects.size())
           + u" proyectos independientes analizados para este evento.</p></div>"_s;
}

} // namespace

QString HtmlReport::document(const QList<Figures>& projects, const QString& currentTitle,
                             const QDateTime& generated)
{
    QString sections;
    for (qsizetype i = 0; i < projects.size(); ++i)
        sections += section(projects.at(i), i);

    return u"\n<html><head><meta charset='UTF-8'><style>"_s + STYLES + u"</style>"_s + POLICY + u"</head>\n"_s
           + u"<body><h1>INFORME: <span style='font-size: 0.8em;'>"_s + currentTitle + u"</span></h1>\n"_s
           + u"<p><b>Fecha Generación:</b> "_s + generated.toString(u"dd/MM/yyyy HH:mm"_s) + u"</p>\n"_s
           + globalSummary(projects) + u'\n' + sections + recommendations(projects) + u'\n'
           + u"<div class='disclaimer-box'>"_s + DISCLAIMER + u"</div>\n"_s + u"</body></html>\n"_s;
}

QString HtmlReport::drawingName(qsizetype index)
{
    return u"truss_schema_"_s + QString::number(index) + u".jpg"_s;
}

QString HtmlReport::reportName(const QDateTime& generated)
{
    return u"informe_rigging_"_s + generated.toString(u"yyyyMMdd_HHmmss"_s) + u".html"_s;
}
