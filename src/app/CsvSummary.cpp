#include "app/CsvSummary.h"

#include "app/Csv.h"

#include <QJsonObject>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

using Cells = QHash<QString, QString>;

QStringList columnsOf(CsvSummary::Contrast contrast)
{
    QStringList columns{
        u"proyecto"_s,     u"archivo"_s,        u"elemento"_s,    u"nombre"_s,      u"posicion_m"_s,
        u"masa_kg"_s,      u"grupo"_s,          u"en_punto_kg"_s, u"estatica_kg"_s, u"dinamica_kg"_s,
        u"capacidad_kg"_s, u"peso_propio_kg"_s, u"veredicto"_s,   u"longitud_m"_s,  u"peso_kg_m"_s,
        u"cpl_kg"_s,       u"estres_pct"_s,     u"estable"_s,     u"calculable"_s,  u"apto"_s,
    };
    if (contrast == CsvSummary::Contrast::None)
        return columns;
    columns += {
        u"estado"_s,          u"palanca_kg"_s,     u"nivelado_kg"_s,          u"empujando_kg"_s,
        u"flojo"_s,           u"un_flojo_kg"_s,    u"un_flojo_cual"_s,        u"maximo_kg"_s,
        u"minimo_kg"_s,       u"imprescindible"_s, u"veredicto_nivelado"_s,   u"centro_de_gravedad_m"_s,
        u"margen_vuelco_m"_s, u"peso_total_kg"_s,  u"momento_max_kgm"_s,      u"momento_min_kgm"_s,
        u"cortante_max_kg"_s, u"momento_pct"_s,    u"momento_un_flojo_pct"_s,
    };
    if (contrast == CsvSummary::Contrast::ColumnsAndLevelling)
        columns += {u"kg_por_mm"_s, u"flojo_a_mm"_s};
    return columns;
}

/// Most loads have none.
const QString GROUP = u"grupo"_s;

/// Numbers that count something instead of measuring it.
bool isCount(const QString& column)
{
    return column == GROUP || column == "un_flojo_cual"_L1;
}

QString cell(const QString& column, const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return Csv::words(value.toString());
    case QJsonValue::Bool:
        return value.toBool() ? u"sí"_s : u"no"_s;
    case QJsonValue::Double:
        return isCount(column) ? QString::number(value.toInteger()) : Csv::number(value.toDouble());
    default:
        return column == GROUP ? QString() : Csv::number(std::nan(""));
    }
}

/// Adds the members of `object` that are no list or object themselves.
void fill(const QJsonObject& object, Cells& cells)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!member->isArray() && !member->isObject())
            cells.insert(member.key(), cell(member.key(), *member));
    }
}

/// The cells with which every record of a project begins.
Cells beginning(const QJsonObject& project, const QString& element)
{
    return {{u"proyecto"_s, Csv::words(project[u"proyecto"_s].toString())},
            {u"archivo"_s, Csv::words(project[u"archivo"_s].toString())},
            {u"estado"_s, project[u"contraste"_s][u"estado"_s].toString()},
            {u"elemento"_s, element}};
}

void addTruss(const QJsonObject& project, Csv& table)
{
    Cells cells = beginning(project, u"truss"_s);
    fill(project[u"contraste"_s].toObject(), cells);
    fill(project, cells);
    const double unknown = std::nan("");
    cells.insert(u"masa_kg"_s, Csv::number(project[u"longitud_m"_s].toDouble(unknown)
                                           * project[u"peso_kg_m"_s].toDouble(unknown)));
    table.add(cells);
}

void addMotors(const QJsonObject& project, Csv& table)
{
    const QJsonArray motors = project[u"motores"_s].toArray();
    const QJsonArray opinions = project[u"contraste"_s][u"motores"_s].toArray();
    for (qsizetype i = 0; i < motors.size(); ++i) {
        Cells cells = beginning(project, u"motor"_s);
        fill(motors.at(i).toObject(), cells);
        fill(opinions.at(i).toObject(), cells);
        table.add(cells);
    }
}

void addLoads(const QJsonObject& project, Csv& table)
{
    const QJsonArray loads = project[u"cargas"_s].toArray();
    for (const auto& load : loads) {
        Cells cells = beginning(project, u"carga"_s);
        fill(load.toObject(), cells);
        table.add(cells);
    }
}

} // namespace

QString CsvSummary::text(const QJsonArray& projects, Contrast contrast)
{
    Csv table(columnsOf(contrast));
    for (const auto& value : projects) {
        const QJsonObject project = value.toObject();
        addTruss(project, table);
        addMotors(project, table);
        addLoads(project, table);
    }
    return table.text();
}
