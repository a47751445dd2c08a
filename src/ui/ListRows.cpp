#include "ui/ListRows.h"

#include "engine/FieldRanges.h"
#include "engine/Figures.h"
#include "engine/Numbers.h"

#include <cmath>
#include <tuple>

using namespace Qt::StringLiterals;

namespace
{

constexpr int MASS_DECIMALS = 1;
constexpr int POSITION_DECIMALS = 2;
/// Closer to the middle than this a position is typed as the middle itself [m].
constexpr float CENTRE_TOLERANCE = 0.005F;

constexpr int NO_SCREEN = -1;
/// Segments from a file have lost the type that tells of a screen: reports number their screen so.
constexpr int UNNUMBERED = 0;

const QString NO_FIGURE = u"—"_s;

/// What is not a number comes last, so that sorting has an order.
bool isLessNumber(float a, float b)
{
    if (std::isnan(a) || std::isnan(b))
        return !std::isnan(a) && std::isnan(b);
    return a < b;
}

bool isLessText(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) < 0;
}

QString motorTitle(const ListedMotor& row)
{
    Motor motor;
    motor.id = row.id;
    motor.modelName = row.name;
    return Project::motorTitle(motor).simplified();
}

QString loadTitle(const ListedLoad& row)
{
    ActiveLoad load;
    load.id = row.id;
    load.name = row.name;
    return Project::loadTitle(load).simplified();
}

ListField nameField(const QString& name)
{
    return {ListField::Kind::Name, 0.0, 0.0, 0, name, {}};
}

ListField resultField(const QString& rule)
{
    return {ListField::Kind::Result, 0.0, 0.0, 0, {}, rule};
}

/// `subject` is what goes from bottom to top, as "La masa".
ListField massField(const QString& name, const QString& subject, const FieldRanges::Range& range)
{
    const QString rule =
        u"%1 va de %2 a %3 kg."_s.arg(subject, QString::number(range.bottom), QString::number(range.top));
    return {ListField::Kind::Number, range.bottom, range.top, MASS_DECIMALS, name, rule};
}

ListField positionField(const QString& name, float half)
{
    const QString end = Numbers::fixed(half, POSITION_DECIMALS);
    const double reach = static_cast<double>(half);
    return {ListField::Kind::Number, -reach, reach,
            POSITION_DECIMALS,       name,   u"La posición va de -%1 a %1 m desde el centro."_s.arg(end)};
}

ListCell massCell(float mass, const ListField& field)
{
    const QString text = Numbers::fixed(mass, MASS_DECIMALS);
    return {text, text, field};
}

ListCell positionCell(float position, float half, const ListField& field)
{
    const float typed = std::abs(position) < CENTRE_TOLERANCE ? 0.0F : position;
    return {Project::formatCoordinate(position + half, 2.0F * half), Numbers::fixed(typed, POSITION_DECIMALS),
            field};
}

ListCell figureCell(float figure)
{
    const QString text = std::isnan(figure) ? NO_FIGURE : Numbers::fixed(figure, MASS_DECIMALS);
    return {text, text, resultField(u"Es un resultado: no se escribe."_s)};
}

// Two motors at one place with a load between them have no figures, and so no verdict.
ListCell stateCell(const ListedMotor& row)
{
    const ListField field = resultField(u"El estado es un resultado: no se escribe."_s);
    if (std::isnan(row.dynamicLoad))
        return {NO_FIGURE, NO_FIGURE, field};
    const QString text = Figures::verdictText(row.verdict);
    const bool fits = row.verdict == Limits::MotorVerdict::Fits;
    return {text, text, field, fits ? ListCell::Tone::Good : ListCell::Tone::Bad};
}

ListCell screenCell(const ListedLoad& row)
{
    const QString text = row.screen < 0 ? QString() : u"LED "_s + QString::number(row.screen);
    return {text, text, resultField(u"La pantalla de un segmento no se cambia."_s)};
}

ListField loadPositionField(const ListedLoad& row)
{
    if (row.isSegment)
        return resultField(u"Una pantalla se mueve entera: arrastrándola en el dibujo o reflejándola."_s);
    return positionField(u"Posición de la carga en metros desde el centro"_s, row.half);
}

/// From the left end of a truss of `trussLength` [m] what is typed from its middle.
float positionFrom(const QString& text, float trussLength)
{
    return Project::clampToTruss(Numbers::parseNumber(text) + trussLength * 0.5F, trussLength);
}

/// Half of a length that a truss may have [m].
float halfOf(float trussLength)
{
    return std::isfinite(trussLength) && trussLength > 0.0F ? trussLength * 0.5F : 0.0F;
}

float motorNumber(const ListedMotor& row, int column)
{
    switch (column) {
    case ListRows::MotorPosition:
        return row.position;
    case ListRows::MotorCapacity:
        return row.capacity;
    case ListRows::MotorWeight:
        return row.selfWeight;
    case ListRows::MotorStatic:
        return row.staticLoad;
    case ListRows::MotorDynamic:
        return row.dynamicLoad;
    default:
        return std::isnan(row.dynamicLoad) ? row.dynamicLoad : static_cast<float>(row.verdict);
    }
}

auto tied(const ListedMotor& row)
{
    return std::tie(row.id, row.name, row.position, row.half, row.capacity, row.selfWeight, row.staticLoad,
                    row.dynamicLoad, row.verdict);
}

auto tied(const ListedLoad& row)
{
    return std::tie(row.id, row.name, row.mass, row.position, row.half, row.screen, row.isSegment);
}

} // namespace

bool operator==(const ListedMotor& a, const ListedMotor& b)
{
    return tied(a) == tied(b);
}

bool operator==(const ListedLoad& a, const ListedLoad& b)
{
    return tied(a) == tied(b);
}

QList<ListColumn> ListRows::motorColumns()
{
    return {{u"Nombre"_s, {}},
            {u"Posición (m)"_s, u"-000.00m"_s},
            {u"Capacidad (kg)"_s, u"00000.0"_s},
            {u"Peso motor (kg)"_s, u"00000.0"_s},
            {u"Estática (kg)"_s, u"000000.0"_s},
            {u"Dinámica (kg)"_s, u"000000.0"_s},
            {u"Estado"_s, Figures::verdictText(Limits::MotorVerdict::DynamicOverload)}};
}

QList<ListColumn> ListRows::loadColumns()
{
    return {{u"Nombre"_s, {}},
            {u"Masa (kg)"_s, u"000000.0"_s},
            {u"Posición (m)"_s, u"-000.00m"_s},
            {u"Pantalla"_s, u"LED 0000"_s}};
}

QList<ListedMotor> ListRows::motorsOf(const ProjectState& solved)
{
    const float half = halfOf(solved.trussLength);
    QList<ListedMotor> rows;
    rows.reserve(solved.motors.size());
    for (const Motor& motor : solved.motors) {
        const float atPoint = motor.staticLoad;
        rows.append({motor.id, motor.modelName, motor.positionX - half, half, motor.capacity,
                     motor.selfWeight, atPoint + motor.selfWeight,
                     Limits::dynamicLoad(atPoint, motor.selfWeight),
                     Limits::motorVerdict(atPoint, motor.selfWeight, motor.capacity)});
    }
    return rows;
}

QList<ListedLoad> ListRows::loadsOf(const ProjectState& solved)
{
    const float half = halfOf(solved.trussLength);
    const QHash<int, int> screens = Figures::arrayNumbers(solved.loads);
    QList<ListedLoad> rows;
    rows.reserve(solved.loads.size());
    for (const ActiveLoad& load : solved.loads) {
        const int screen = load.groupId < 0 ? NO_SCREEN : screens.value(load.groupId, UNNUMBERED);
        rows.append({load.id, load.name, load.mass, load.positionX - half, half, screen,
                     Project::isArraySegment(load)});
    }
    return rows;
}

ListCell ListRows::cell(const ListedMotor& row, int column)
{
    switch (column) {
    case MotorName:
        return {motorTitle(row), row.name, nameField(u"Nombre del motor"_s)};
    case MotorPosition:
        return positionCell(row.position, row.half,
                            positionField(u"Posición del motor en metros desde el centro"_s, row.half));
    case MotorCapacity:
        return massCell(row.capacity, massField(u"Capacidad del motor en kilogramos"_s, u"La capacidad"_s,
                                                FieldRanges::MOTOR_CAPACITY));
    case MotorWeight:
        return massCell(row.selfWeight, massField(u"Peso propio del motor en kilogramos"_s,
                                                  u"El peso del motor"_s, FieldRanges::MOTOR_WEIGHT));
    case MotorStatic:
        return figureCell(row.staticLoad);
    case MotorDynamic:
        return figureCell(row.dynamicLoad);
    default:
        return stateCell(row);
    }
}

ListCell ListRows::cell(const ListedLoad& row, int column)
{
    switch (column) {
    case LoadName:
        return {loadTitle(row), row.name, nameField(u"Nombre de la carga"_s)};
    case LoadMass:
        return massCell(row.mass,
                        massField(u"Masa de la carga en kilogramos"_s, u"La masa"_s, FieldRanges::LOAD_MASS));
    case LoadPosition:
        return positionCell(row.position, row.half, loadPositionField(row));
    default:
        return screenCell(row);
    }
}

bool ListRows::isLess(const ListedMotor& a, const ListedMotor& b, int column)
{
    if (column == MotorName)
        return isLessText(motorTitle(a), motorTitle(b));
    return isLessNumber(motorNumber(a, column), motorNumber(b, column));
}

bool ListRows::isLess(const ListedLoad& a, const ListedLoad& b, int column)
{
    switch (column) {
    case LoadName:
        return isLessText(loadTitle(a), loadTitle(b));
    case LoadMass:
        return isLessNumber(a.mass, b.mass);
    case LoadPosition:
        return isLessNumber(a.position, b.position);
    default:
        return a.screen < b.screen;
    }
}

bool ListRows::takes(const ListField& field, const QString& text)
{
    if (field.kind != ListField::Kind::Number)
        return field.kind == ListField::Kind::Name;
    const std::optional<float> number = Numbers::tryParse(text);
    return number && static_cast<double>(*number) >= field.bottom
           && static_cast<double>(*number) <= field.top;
}

void ListRows::write(Motor& motor, int column, const QString& text, float trussLength)
{
    if (column == MotorName)
        motor.modelName = text;
    else if (column == MotorPosition)
        motor.positionX = positionFrom(text, trussLength);
    else if (column == MotorCapacity)
        motor.capacity = Numbers::parseNumber(text);
    else if (column == MotorWeight)
        motor.selfWeight = Numbers::parseNumber(text);
}

void ListRows::write(ActiveLoad& load, int column, const QString& text, float trussLength)
{
    if (column == LoadName)
        load.name = text;
    else if (column == LoadMass)
        load.mass = Numbers::parseNumber(text);
    else if (column == LoadPosition)
        load.positionX = positionFrom(text, trussLength);
}
