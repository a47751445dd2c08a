#include "io/SheetLever.h"

#include "engine/SecondOpinionText.h"
#include "io/SheetHtml.h"
#include "io/SheetNumbers.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace
{

using SheetLever::Share;
using SheetNumbers::exact;
using SheetNumbers::fixed;
using SheetNumbers::operand;

/// Decimals of one share, of their sum, of what follows from it, and of the sum of those: so that rounding
/// many numbers does not change the last digit of the next one.
constexpr int SHARE_DECIMALS = 4;
constexpr int POINT_DECIMALS = 2;
constexpr int DYNAMIC_DECIMALS = 1;
constexpr int TOTAL_DECIMALS = 1;

/// The program's figures have one decimal; from here on it is another one [kg].
constexpr double OTHER_FIGURE = 0.1;

/// The motors to derive the figures of, left to right: of many, those nearest to their capacity.
std::vector<std::size_t> derivedMotors(const SheetProject& project)
{
    std::vector<std::size_t> motors(project.motors.size());
    std::iota(motors.begin(), motors.end(), std::size_t{0});
    if (motors.size() <= SheetProject::MOST_MOTORS)
        return motors;
    const auto excess = [&project](std::size_t i) {
        const Figures::MotorFigures& figures = project.motors[i].figures;
        const float value = figures.dynamicLoad - figures.capacity;
        return std::isnan(value) ? std::numeric_limits<float>::infinity() : value;
    };
    std::stable_sort(motors.begin(), motors.end(),
                     [&](std::size_t a, std::size_t b) { return excess(a) > excess(b); });
    motors.resize(SheetProject::MOST_MOTORS);
    std::sort(motors.begin(), motors.end());
    return motors;
}

QString shareTable(const SheetMotor& motor, const std::vector<Share>& shares, double atPoint)
{
    QList<QStringList> rows;
    for (const Share& share : shares)
        rows.append({share.origin, share.formula + u" ="_s, fixed(share.kilograms, SHARE_DECIMALS)});
    rows.append({u"<b>En el punto "_s + QString::number(motor.number) + u"</b>"_s,
                 u"suma de las %1 filas ="_s.arg(shares.size()),
                 u"<b>"_s + fixed(atPoint, POINT_DECIMALS) + u"</b>"_s});
    return SheetHtml::table({u"Qué cuelga"_s, u"Cuenta"_s, u"kg"_s}, rows, {0, 1});
}

QString verdictText(const SheetMotor& motor, const QString& atPoint, const QString& dynamic)
{
    const QString capacity = exact(motor.capacity);
    QString comparison = atPoint + u" ≤ "_s + capacity + u" y "_s + dynamic + u" ≤ "_s + capacity;
    if (motor.figures.verdict == Figures::Verdict::StaticOverload)
        comparison = atPoint + u" > "_s + capacity;
    if (motor.figures.verdict == Figures::Verdict::DynamicOverload)
        comparison = dynamic + u" > "_s + capacity;
    return u"Capacidad: "_s + comparison + u": <b>"_s + SecondOpinionText::verdict(motor.figures.verdict)
           + u"</b>."_s;
}

/// A figure of the program.
QString figure(float value)
{
    return std::isfinite(value) ? fixed(static_cast<double>(value), 1) : u"—"_s;
}

/// The program works in single precision; where that shows, the sheet says so.
QString difference(const SheetMotor& motor, double atPoint)
{
    if (std::abs(static_cast<double>(motor.figures.atPoint) - atPoint) <= OTHER_FIGURE)
        return {};
    return SheetHtml::paragraph(u"<b>Atención:</b> el programa muestra "_s + figure(motor.figures.atPoint)
                                + u" kg; calcula con unas siete cifras, que aquí no bastan."_s);
}

QString motorHtml(const SheetMotor& motor, const std::vector<Share>& shares)
{
    const double atPoint = SheetLever::sum(shares);
    QString html = SheetHtml::heading(3, motor.label() + u" (x = "_s + exact(motor.position) + u" m)"_s)
                   + shareTable(motor, shares, atPoint);
    if (!std::isfinite(atPoint)) {
        return html
               + SheetHtml::paragraph(u"Hay dos motores en el mismo punto y una carga justo ahí: entre los "
                                      "dos no hay palanca, y el programa no da ninguna cifra de ellos."_s);
    }
    const double staticLoad = atPoint + motor.ownWeight;
    const QString point = fixed(atPoint, POINT_DECIMALS);
    const QString total = fixed(staticLoad, POINT_DECIMALS);
    const QString dynamic = fixed(staticLoad * static_cast<double>(Limits::DYNAMIC_FACTOR), DYNAMIC_DECIMALS);
    html += SheetHtml::paragraph(u"Estática, con el motor: "_s + operand(point) + u" + "_s
                                 + operand(exact(motor.ownWeight)) + u" = "_s + total
                                 + u" kg. Dinámica: 1.25 × "_s + operand(total) + u" = "_s + dynamic
                                 + u" kg. "_s + verdictText(motor, point, dynamic));
    return html + difference(motor, atPoint);
}

QString figuresTable(const SheetProject& project)
{
    QList<QStringList> rows;
    for (const SheetMotor& motor : project.motors) {
        if (rows.size() == static_cast<qsizetype>(SheetProject::MOST_LOADS))
            break;
        const Figures::MotorFigures& figures = motor.figures;
        rows.append({QString::number(motor.number), motor.title, figures.position, figure(figures.atPoint),
                     figure(figures.staticLoad), figure(figures.dynamicLoad), exact(motor.capacity),
                     figures.verdict == Figures::Verdict::Fits && !std::isfinite(figures.dynamicLoad)
                         ? u"SIN CIFRA"_s
                         : SecondOpinionText::verdict(figures.verdict)});
    }
    return SheetHtml::table({u"N.º"_s, u"Motor"_s, u"Posición"_s, u"En punto (kg)"_s, u"Estática (kg)"_s,
                             u"Dinámica (kg)"_s, u"Capacidad (kg)"_s, u"Veredicto"_s},
                            rows, {1, 7});
}

QString totalText(const QStringList& points, double total, double weight)
{
    return SheetHtml::paragraph(u"<b>Comprobación.</b> Suma de lo que cuelga de los motores: "_s
                                + points.join(u" + "_s) + u" = "_s + fixed(total, TOTAL_DECIMALS)
                                + u" kg; pesan truss y cargas "_s + fixed(weight, TOTAL_DECIMALS)
                                + u" kg."_s);
}

} // namespace

QString SheetLever::html(const SheetProject& project)
{
    QString html =
        SheetHtml::heading(2, u"3. Motores: reparto por la palanca"_s)
        + SheetHtml::paragraph(
            u"Cada vano reparte lo suyo entre sus dos motores: una carga P en x, entre un motor en "
            "a y otro en b, deja P × (b − x) / (b − a) en el izquierdo y P × (x − a) / (b − a) en "
            "el derecho. Lo que cuelga en un motor, o fuera del último, va entero a él."_s)
        + figuresTable(project);
    const std::vector<std::size_t> motors = derivedMotors(project);
    if (motors.size() < project.motors.size()) {
        html += SheetHtml::note(u"Se desarrollan los %1 motores más cercanos a su capacidad, de %2 que hay; "
                                "en la tabla de arriba están los primeros 60."_s.arg(
                                    QString::number(motors.size()), QString::number(project.motors.size())));
    }
    QStringList points;
    double total = 0.0;
    for (const std::size_t i : motors) {
        const std::vector<Share> shares = SheetLever::shares(project, i);
        html += motorHtml(project.motors[i], shares);
        points += operand(fixed(sum(shares), POINT_DECIMALS));
        total += sum(shares);
    }
    const bool isWhole = motors.size() == project.motors.size() && !motors.empty() && std::isfinite(total);
    if (isWhole)
        html += totalText(points, total, project.weight());
    return html;
}
