#pragma once

#include "engine/RowEdits.h"

#include <QTableView>

#include <optional>

class ListModel;
class QSortFilterProxyModel;

/// One of the tables of "Lista": whole rows are selected, typing edits a cell, a press on a heading sorts,
/// and the Tab key leaves it.
class ListTable : public QTableView
{
    Q_OBJECT

public: // construction
    /// Shows `model` in the order of the project.
    explicit ListTable(ListModel* model, const QString& accessibleName);

public: // queries
    /// What the selected rows stand for.
    [[nodiscard]] QSet<RowKey> selectedKeys() const;
    /// The selected row that is the current one, else another selected one, else nothing.
    [[nodiscard]] std::optional<RowKey> pickedKey() const;
    /// The selected rows as they are seen: cells parted by tabs, rows ended by line feeds, without headings.
    [[nodiscard]] QString selectedText() const;

public: // commands
    /// Selects exactly the rows of `keys`; makes `current` the current one and scrolls to it.
    void selectKeys(const QSet<RowKey>& keys, const RowKey& current);
    /// Makes the row that is now at this place the current one, or the last row, and selects none.
    void restAt(int row);
    /// The first selected row, from the top as it is seen; -1 for none.
    [[nodiscard]] int firstSelectedRow() const;
    /// Sorts by the column of the current cell: upwards, then downwards, then as in the project.
    void sortByCurrentColumn();

signals:
    /// The user selected other rows, or none, or went to another one.
    void picked();
    /// What was typed into a cell is not taken, and why; or it is taken, and there is nothing to say.
    void objected(const QString& objection);

protected: // overrides
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private: // helpers
    void buildColumns();
    [[nodiscard]] QList<int> selectedViewRows() const;
    [[nodiscard]] RowKey keyAt(int viewRow) const;

private: // data
    ListModel* m_model = nullptr;
    QSortFilterProxyModel* m_sorted = nullptr;
};
