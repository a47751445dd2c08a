#include "ui/ListTable.h"

#include "ui/ListDelegate.h"
#include "ui/ListModel.h"
#include "ui/Styles.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSortFilterProxyModel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int NARROWEST_COLUMN = 60; // [px]
constexpr int CELL_PADDING = 24;     // beside the widest text of a column, with the arrow of sorting [px]

/// Sorts by the values of the rows, not by their texts.
class RowOrder : public QSortFilterProxyModel
{
public: // construction
    explicit RowOrder(ListModel* model, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_model(model)
    {
        setSourceModel(model);
    }

protected: // overrides
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return m_model->isLess(left.row(), right.row(), left.column());
    }

private: // data
    ListModel* m_model;
};

/// A cell as spreadsheets take it: in one line, without the tabs that part cells.
QString copied(const QModelIndex& index)
{
    QString text = index.data(Qt::EditRole).toString().simplified();
    if (!text.startsWith(u'"'))
        return text;
    return u'"' + text.replace(u'"', QString(2, u'"')) + u'"';
}

} // namespace

ListTable::ListTable(ListModel* model, const QString& accessibleName)
    : m_model(model)
{
    m_sorted = new RowOrder(model, this);
    setModel(m_sorted);
    setAccessibleName(accessibleName);
    setStyleSheet(Styles::LIST_TABLE);
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    buildColumns();

    auto* delegate = new ListDelegate(this);
    setItemDelegate(delegate);
    connect(delegate, &ListDelegate::objected, this, &ListTable::objected);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListTable::picked);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ListTable::picked);
}

// The order of the project comes first; measuring what the cells hold would take long where there are many.
void ListTable::buildColumns()
{
    QHeaderView* header = horizontalHeader();
    header->setMinimumSectionSize(NARROWEST_COLUMN);
    header->setHighlightSections(false);
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    const QList<ListColumn>& columns = m_model->columns();
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
        const auto width = [this](const QString& text) { return fontMetrics().horizontalAdvance(text); };
        const int widest = std::max(width(columns.at(column).heading), width(columns.at(column).sample));
        header->resizeSection(column, widest + CELL_PADDING);
    }
    header->setSectionResizeMode(0, QHeaderView::Stretch);
}

RowKey ListTable::keyAt(int viewRow) const
{
    return m_model->keys().at(m_sorted->mapToSource(m_sorted->index(viewRow, 0)).row());
}

// From the ranges of the selection: a list of all indexes takes long where there are many.
QList<int> ListTable::selectedViewRows() const
{
    QList<int> rows;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.resize(std::distance(rows.begin(), std::unique(rows.begin(), rows.end())));
    return rows;
}

QSet<RowKey> ListTable::selectedKeys() const
{
    QSet<RowKey> keys;
    const QList<int> rows = selectedViewRows();
    for (const int row : rows)
        keys.insert(keyAt(row));
    return keys;
}

std::optional<RowKey> ListTable::pickedKey() const
{
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isSelected(current))
        return keyAt(current.row());
    const QList<int> rows = selectedViewRows();
    return rows.isEmpty() ? std::nullopt : std::optional(keyAt(rows.constLast()));
}

QString ListTable::selectedText() const
{
    QString text;
    const QList<int> rows = selectedViewRows();
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < m_sorted->columnCount(); ++column)
            cells.append(copied(m_sorted->index(row, column)));
        while (cells.constLast().isEmpty())
            cells.removeLast();
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

void ListTable::selectKeys(const QSet<RowKey>& keys, const RowKey& current)
{
    QItemSelection selection;
    QModelIndex toCurrent;
    for (int row = 0; row < m_sorted->rowCount(); ++row) {
        const RowKey key = keyAt(row);
        if (!keys.contains(key))
            continue;
        const QModelIndex index = m_sorted->index(row, std::max(0, currentIndex().column()));
        if (key == current)
            toCurrent = index;
        if (!selection.isEmpty() && selection.constLast().bottom() == row - 1)
            selection.last() = QItemSelectionRange(selection.constLast().topLeft(), index);
        else
            selection.append(QItemSelectionRange(index));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!toCurrent.isValid())
        return;
    selectionModel()->setCurrentIndex(toCurrent, QItemSelectionModel::NoUpdate);
    scrollTo(toCurrent);
}

void ListTable::restAt(int row)
{
    const int last = std::min(row, m_sorted->rowCount() - 1);
    selectionModel()->clearSelection();
    if (last >= 0)
        selectionModel()->setCurrentIndex(m_sorted->index(last, std::max(0, currentIndex().column())),
                                          QItemSelectionModel::NoUpdate);
}

int ListTable::firstSelectedRow() const
{
    const QList<int> rows = selectedViewRows();
    return rows.isEmpty() ? -1 : rows.constFirst();
}

void ListTable::sortByCurrentColumn()
{
    const int column = std::max(0, currentIndex().column());
    QHeaderView* header = horizontalHeader();
    if (header->sortIndicatorSection() != column)
        header->setSortIndicator(column, Qt::AscendingOrder);
    else if (header->sortIndicatorOrder() == Qt::AscendingOrder)
        header->setSortIndicator(column, Qt::DescendingOrder);
    else
        header->setSortIndicator(-1, Qt::AscendingOrder);
    if (currentIndex().isValid())
        scrollTo(currentIndex());
}

// A cell that takes nothing says why.
bool ListTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const bool isWanted = trigger == DoubleClicked || trigger == EditKeyPressed;
    if (isWanted && index.isValid() && !index.flags().testFlag(Qt::ItemIsEditable))
        emit objected(index.data(ListModel::FieldRole).value<ListField>().rule);
    return QTableView::edit(index, trigger, event);
}

// The view would begin to edit with a blank.
void ListTable::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space || !currentIndex().isValid()) {
        QTableView::keyPressEvent(event);
        return;
    }
    const bool isAdded = event->modifiers().testFlag(Qt::ControlModifier);
    selectionModel()->select(
        currentIndex(), QItemSelectionModel::Rows
                            | (isAdded ? QItemSelectionModel::Toggle : QItemSelectionModel::ClearAndSelect));
}
