#pragma once

#include "engine/RowEdits.h"
#include "ui/ListRows.h"

#include <QAbstractTableModel>

/// One of the tables of "Lista" as views see it: texts that can be edited, in the order of the project.
/// It follows the project and never changes it: what is typed is told.
class ListModel : public QAbstractTableModel
{
    Q_OBJECT

public: // types
    /// What `data` is asked for besides what views ask.
    enum Role
    {
        FieldRole = Qt::UserRole ///< the `ListField`
    };

public: // construction
    /// Without rows.
    ListModel(const QList<ListColumn>& columns, QObject* parent);

public: // queries
    /// What the rows stand for, in their order.
    [[nodiscard]] const QList<RowKey>& keys() const;
    /// The columns of the table.
    [[nodiscard]] const QList<ListColumn>& columns() const;
    /// Whether the row `a` comes before the row `b` when they are sorted by `column`.
    [[nodiscard]] virtual bool isLess(int a, int b, int column) const = 0;

public: // overrides
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    /// Another text was typed into a cell that takes it.
    void typed(const RowKey& key, int column, const QString& text);

protected: // what a row has in a column
    [[nodiscard]] virtual ListCell cell(int row, int column) const = 0;

protected: // helpers
    /// Where two lists of keys differ: at `first` so many of the one are `removed` and so many of the other
    /// `inserted`.
    struct Difference
    {
        qsizetype first = 0;
        qsizetype removed = 0;
        qsizetype inserted = 0;
    };
    [[nodiscard]] Difference differenceTo(const QList<RowKey>& keys) const;
    [[nodiscard]] bool isReorderedIn(const QList<RowKey>& keys) const;
    void movePersistentRowsTo(const QList<RowKey>& keys);
    void tellChanged(const QList<bool>& changed);

    QList<RowKey> m_keys;

private: // data
    QList<ListColumn> m_columns;
};

/// The table of motors or of loads: `Row` is what `ListRows` makes of one.
template <class Row>
class RowModel : public ListModel
{
public: // construction
    using ListModel::ListModel;

public: // queries
    /// By the values of the rows, not by their texts.
    [[nodiscard]] bool isLess(int a, int b, int column) const override
    {
        return ListRows::isLess(m_rows.at(a), m_rows.at(b), column);
    }

public: // commands
    /// Shows `rows`. Rows of the same keys stay the same for views, wherever they now stand.
    void follow(const QList<Row>& rows)
    {
        const QList<RowKey> keys = RowEdits::keysOf(rows);
        if (isReorderedIn(keys))
            reorder(rows, keys);
        const Difference difference = differenceTo(keys);
        remove(difference);
        change(rows, difference);
        insert(rows, keys, difference);
    }

protected: // overrides
    [[nodiscard]] ListCell cell(int row, int column) const override
    {
        return ListRows::cell(m_rows.at(row), column);
    }

private: // helpers
    void reorder(const QList<Row>& rows, const QList<RowKey>& keys)
    {
        emit layoutAboutToBeChanged();
        movePersistentRowsTo(keys);
        m_keys = keys;
        m_rows = rows;
        emit layoutChanged();
    }

    void remove(const Difference& difference)
    {
        if (difference.removed == 0)
            return;
        const int first = static_cast<int>(difference.first);
        beginRemoveRows({}, first, first + static_cast<int>(difference.removed) - 1);
        m_keys.remove(difference.first, difference.removed);
        m_rows.remove(difference.first, difference.removed);
        endRemoveRows();
    }

    /// Renews the rows that are there before and after.
    void change(const QList<Row>& rows, const Difference& difference)
    {
        QList<bool> changed(m_rows.size());
        for (qsizetype row = 0; row < m_rows.size(); ++row) {
            const Row& now = rows.at(row < difference.first ? row : row + difference.inserted);
            changed[row] = !(m_rows.at(row) == now);
            if (changed.at(row))
                m_rows[row] = now;
        }
        tellChanged(changed);
    }

    void insert(const QList<Row>& rows, const QList<RowKey>& keys, const Difference& difference)
    {
        if (difference.inserted == 0)
            return;
        const int first = static_cast<int>(difference.first);
        beginInsertRows({}, first, first + static_cast<int>(difference.inserted) - 1);
        m_keys = keys;
        m_rows = rows;
        endInsertRows();
    }

private: // data
    QList<Row> m_rows;
};

using MotorModel = RowModel<ListedMotor>;
using LoadModel = RowModel<ListedLoad>;
