#include "ui/ListModel.h"

#include <QColor>

#include <algorithm>

namespace
{

const QColor GOOD(0x39, 0xFF, 0x14);
const QColor BAD(0xFF, 0x60, 0x60);

QVariant colourOf(const ListCell& cell)
{
    if (cell.tone == ListCell::Tone::Plain)
        return {};
    return cell.tone == ListCell::Tone::Good ? GOOD : BAD;
}

/// Names stand at the left of their column, figures below each other at the right.
QVariant alignmentOf(const ListField& field)
{
    const bool isText = field.kind == ListField::Kind::Name;
    return QVariant::fromValue(Qt::AlignVCenter | (isText ? Qt::AlignLeft : Qt::AlignRight));
}

} // namespace

ListModel::ListModel(const QList<ListColumn>& columns, QObject* parent)
    : QAbstractTableModel(parent)
    , m_columns(columns)
{
}

const QList<RowKey>& ListModel::keys() const
{
    return m_keys;
}

const QList<ListColumn>& ListModel::columns() const
{
    return m_columns;
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_keys.size());
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const ListCell shown = cell(index.row(), index.column());
    switch (role) {
    case Qt::DisplayRole:
        return shown.shown;
    case Qt::EditRole:
        return shown.typed;
    case Qt::ToolTipRole:
        return shown.field.kind == ListField::Kind::Name ? QVariant() : shown.field.rule;
    case Qt::ForegroundRole:
        return colourOf(shown);
    case Qt::TextAlignmentRole:
        return alignmentOf(shown.field);
    case FieldRole:
        return QVariant::fromValue(shown.field);
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isHeading = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isHeading ? m_columns.value(section).heading : QVariant();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return usual;
    const bool isResult = cell(index.row(), index.column()).field.kind == ListField::Kind::Result;
    return isResult ? usual : usual | Qt::ItemIsEditable;
}

// A value that is shown rounded stays as exact as it is where its text is left as it stands.
bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid())
        return false;
    const ListCell before = cell(index.row(), index.column());
    const QString text = value.toString();
    if (text == before.typed)
        return true;
    if (!ListRows::takes(before.field, text))
        return false;
    emit typed(m_keys.at(index.row()), index.column(), text);
    return true;
}

ListModel::Difference ListModel::differenceTo(const QList<RowKey>& keys) const
{
    const auto [before, now] = std::mismatch(m_keys.cbegin(), m_keys.cend(), keys.cbegin(), keys.cend());
    const auto lastBefore = std::make_reverse_iterator(before);
    const auto lastNow = std::make_reverse_iterator(now);
    const auto [endBefore, endNow] = std::mismatch(m_keys.crbegin(), lastBefore, keys.crbegin(), lastNow);
    return {before - m_keys.cbegin(), lastBefore - endBefore, lastNow - endNow};
}

bool ListModel::isReorderedIn(const QList<RowKey>& keys) const
{
    if (keys.size() != m_keys.size() || keys == m_keys)
        return false;
    return QSet<RowKey>(keys.cbegin(), keys.cend()) == QSet<RowKey>(m_keys.cbegin(), m_keys.cend());
}

void ListModel::movePersistentRowsTo(const QList<RowKey>& keys)
{
    QHash<RowKey, int> rows;
    for (qsizetype row = 0; row < keys.size(); ++row)
        rows.insert(keys.at(row), static_cast<int>(row));
    const QModelIndexList before = persistentIndexList();
    for (const QModelIndex& index : before)
        changePersistentIndex(index, createIndex(rows.value(m_keys.at(index.row())), index.column()));
}

// Row by row, never a single cell: a view would fill an open editor afresh and take away what is being
// typed into it.
void ListModel::tellChanged(const QList<bool>& changed)
{
    auto from = std::find(changed.cbegin(), changed.cend(), true);
    while (from != changed.cend()) {
        const auto end = std::find(from, changed.cend(), false);
        const int first = static_cast<int>(from - changed.cbegin());
        const int last = static_cast<int>(end - changed.cbegin()) - 1;
        emit dataChanged(index(first, 0), index(last, columnCount() - 1));
        from = std::find(end, changed.cend(), true);
    }
}
