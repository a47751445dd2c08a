#pragma once

#include "engine/Figures.h"

#include <QList>
#include <QStringList>

class QBrush;
class QTableWidget;
class QTableWidgetItem;

/// Appends projects to the results table of the report page, whose eight columns they share:
/// motors, LED arrays and loads of one project below each other, each kind under a band of its own.
class ReportTable
{
public: // construction
    /// Appends to `table`, which has to outlive this.
    explicit ReportTable(QTableWidget& table);

public: // commands
    /// Appends `projects` in their order.
    void add(const QList<Figures>& projects);

private: // helpers
    void addProject(const Figures& project);
    void addMotors(const Figures& project);
    void addArrays(const Figures& project);
    void addLoads(const Figures& project);
    /// A row of one item over `columns` columns.
    QTableWidgetItem* addBand(const QString& text, int columns, const QBrush& background);
    /// A row of items, of which the last is the verdict: red when it fails.
    void addRow(const QStringList& cells, const QString& verdict, bool isOk);
    void addTrussRow(const QStringList& cells, const Figures& project);

private: // data
    QTableWidget& m_table;
    int m_nextRow;
};
