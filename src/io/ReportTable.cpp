#include "io/ReportTable.h"

#include "engine/Numbers.h"
#include "fields/AccentColour.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QTableWidget>
#include <QTableWidgetItem>

using namespace Qt::StringLiterals;

namespace
{

constexpr int MOTOR_COLUMNS = 8;
constexpr int LOAD_COLUMNS = 7;

QString decimal(float value)
{
    return Numbers::fixed(value, 1);
}

/// Bands and rows that `project` takes.
int rowCount(const Figures& project)
{
    qsizetype rows = 1 + project.motors.size();
    if (!project.arrays.isEmpty())
        rows += 1 + project.arrays.size();
    if (!project.loads.isEmpty())
        rows += 1 + project.loads.size();
    return static_cast<int>(rows);
}

} // namespace

ReportTable::ReportTable(QTableWidget& table)
    : m_table(table)
    , m_nextRow(table.rowCount())
{
}

void ReportTable::add(const QList<Figures>& projects)
{
    int rows = m_nextRow;
    for (const Figures& project : projects)
        rows += rowCount(project);
    m_table.setRowCount(rows);

    for (const Figures& project : projects)
        addProject(project);
}

void ReportTable::addProject(const Figures& project)
{
    QColor ground = accentColour();
    ground.setAlpha(40);
    QTableWidgetItem* band = addBand(u"--- PROYECTO: "_s + project.title + u" ---"_s, MOTOR_COLUMNS, ground);
    band->setForeground(accentColour());
    QFont font = band->font();
    font.setWeight(QFont::Bold);
    band->setFont(font);
    band->setTextAlignment(Qt::AlignCenter);

    addMotors(project);
    addArrays(project);
    addLoads(project);
}

void ReportTable::addMotors(const Figures& project)
{
    for (const Figures::MotorFigures& motor : project.motors) {
        addRow({motor.title, motor.position, decimal(motor.capacity), decimal(motor.selfWeight),
                decimal(motor.atPoint), decimal(motor.staticLoad), decimal(motor.dynamicLoad)},
               Figures::verdictText(motor.verdict), motor.verdict == Figures::Verdict::Fits);
    }
}

void ReportTable::addArrays(const Figures& project)
{
    if (project.arrays.isEmpty())
        return;

    QTableWidgetItem* band =
        addBand(u"--- ESPECIFICACIONES PANTALLAS LED ---"_s, LOAD_COLUMNS, QColor(30, 144, 255, 30));
    band->setForeground(QColor(30, 144, 255));
    for (const Figures::ArrayFigures& array : project.arrays) {
        addTrussRow({u"LED Array ("_s + QString::number(array.number) + u')',
                     decimal(array.width) + u"m x "_s + decimal(array.height) + u'm',
                     decimal(array.weightM2) + u" kg/m²"_s,
                     decimal(array.bumperWeightPerMeter) + u" kg bumper"_s,
                     u'+' + decimal(array.cableWeightPercent) + u"% cable"_s,
                     decimal(array.totalMass) + u" kg (TOT)"_s},
                    project);
    }
}

void ReportTable::addLoads(const Figures& project)
{
    if (project.loads.isEmpty())
        return;

    addBand(u"--- DESGLOSE INDIVIDUAL DE CARGAS ---"_s, LOAD_COLUMNS, QColor(241, 196, 15, 30));
    for (const Figures::LoadFigures& load : project.loads) {
        const QString title =
            load.isSegment ? u"LED "_s + QString::number(load.arrayNumber) + u" Seg"_s : load.title;
        const QString mass = decimal(load.mass) + u" kg"_s;
        addTrussRow({title, load.position, mass, load.isSegment ? u"Segmento LED"_s : u"Carga Puntual"_s,
                     mass, u"-"_s},
                    project);
    }
}

QTableWidgetItem* ReportTable::addBand(const QString& text, int columns, const QBrush& background)
{
    auto* item = new QTableWidgetItem(text);
    item->setBackground(background);
    m_table.setItem(m_nextRow, 0, item);
    m_table.setSpan(m_nextRow, 0, 1, columns);
    ++m_nextRow;
    return item;
}

void ReportTable::addRow(const QStringList& cells, const QString& verdict, bool isOk)
{
    int column = 0;
    for (const QString& cell : cells)
        m_table.setItem(m_nextRow, column++, new QTableWidgetItem(cell));

    auto* verdictItem = new QTableWidgetItem(verdict);
    if (!isOk)
        verdictItem->setForeground(QColor(Qt::red));
    m_table.setItem(m_nextRow, column, verdictItem);
    ++m_nextRow;
}

void ReportTable::addTrussRow(const QStringList& cells, const Figures& project)
{
    const bool isOk = !project.isTrussOverloaded();
    addRow(cells, isOk ? u"OK ✅"_s : u"SOBRECARGA ❌"_s, isOk);
}
