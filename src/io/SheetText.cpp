#include "io/SheetText.h"

#include "engine/ProjectOpinion.h"
#include "engine/SecondOpinionText.h"
#include "engine/Statics.h"
#include "io/SheetHtml.h"
#include "io/SheetInput.h"
#include "io/SheetLever.h"
#include "io/SheetOpinion.h"
#include "io/SheetProject.h"
#include "io/SheetStress.h"

using namespace Qt::StringLiterals;

namespace
{

/// The second opinion's sentences quote the names as they are.
SecondOpinion::Opinion opinionOf(ProjectState solved, std::optional<double> tableDeflection)
{
    for (Motor& motor : solved.motors)
        motor.modelName = SheetHtml::plainName(Project::motorTitle(motor));
    return ProjectOpinion::of(solved, tableDeflection);
}

QString item(const QString& text)
{
    return u"<li>"_s + text + u"</li>"_s;
}

QString assumptions()
{
    return SheetHtml::heading(2, u"Supuestos y límites"_s) + u"<ul>"_s
           + item(
               u"Cadenas verticales, un solo truss recto de sección constante, cargas quietas; las masas y "
               "posiciones son las que se escribieron. Ganchos, eslingas y cables cuentan solo si se "
               "pusieron "
               "como cargas."_s)
           + item(
               u"El reparto por la palanca (secciones 3 a 5) trata cada vano por separado, como si el truss "
               "estuviera cortado sobre cada motor. El contraste lo trata como una viga continua, sin la "
               "deformación por cortante: en trusses de caja y vanos de 3 m o más, cerca del 1 %."_s)
           + item(u"El 1.25 es el factor dinámico de arranque y parada (DGUV V17/18). El veredicto compara "
                  u"con la "
                  "capacidad lo que cuelga del motor, y la dinámica con el peso del motor incluido."_s)
           + item(
               u"El programa calcula el reparto y el estrés con unas siete cifras, y esta memoria con unas "
               "quince: donde un valor cae justo en un límite deciden las del programa."_s)
           + item(u"No se comprueban el truss (barras, uniones), las eslingas, los grilletes, la estructura "
                  u"del techo "
                  "ni sus anclajes. Esta memoria no sustituye al cálculo de un técnico competente."_s)
           + u"</ul>"_s;
}

QString signature()
{
    const QString line = u"&nbsp;"_s;
    return SheetHtml::heading(2, u"Comprobado por"_s)
           + SheetHtml::table({u"Nombre y titulación"_s, u"Fecha"_s, u"Firma"_s},
                              {{line + u"<br>"_s + line + u"<br>"_s + line, line, line}}, {0, 1, 2});
}

/// The document's first line, and what there is to draw.
SheetText begun(const QString& kind, const ProjectState& project, std::optional<double> tableDeflection)
{
    SheetText text;
    text.kind = kind;
    text.solved = Statics::solved(project);
    text.opinion = opinionOf(text.solved, tableDeflection);
    text.title = SheetHtml::plainName(project.tabName);
    text.html = SheetHtml::heading(1, kind + u": "_s + SheetHtml::name(project.tabName));
    return text;
}

} // namespace

SheetText SheetText::of(const ProjectState& project)
{
    SheetText text = begun(u"Memoria de cálculo"_s, project, std::nullopt);
    const SheetProject sheet = SheetProject::of(text.solved);
    if (!sheet.isFinite()) {
        text.html +=
            SheetHtml::paragraph(u"Hay un dato que no es un número finito: no se puede calcular nada."_s);
        return text;
    }
    text.html += SheetInput::html(sheet) + SheetHtml::heading(2, u"2. Dibujo"_s)
                 + SheetHtml::picture(SheetHtml::DRAWING) + SheetLever::html(sheet)
                 + SheetStress::stressHtml(sheet) + SheetStress::stabilityHtml(sheet)
                 + SheetHtml::heading(2, u"6. "_s + SecondOpinionText::title())
                 + SheetOpinion::figuresHtml(text.opinion) + SheetOpinion::equationsHtml(sheet, text.opinion)
                 + assumptions() + signature();
    return text;
}

SheetText SheetText::contrastOf(const ProjectState& project, std::optional<double> tableDeflection)
{
    SheetText text = begun(u"Contraste de reparto"_s, project, tableDeflection);
    text.html += SheetHtml::picture(SheetHtml::DRAWING) + SheetHtml::heading(2, SecondOpinionText::title())
                 + SheetOpinion::figuresHtml(text.opinion);
    return text;
}
