#include "ui/ContrastTable.h"

#include "engine/SecondOpinionText.h"
#include "ui/Styles.h"

#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// With more motors the table scrolls.
constexpr int MOST_ROWS = 8;

constexpr int NARROWEST_COLUMN = 60; // [px]

const QColor OVERLOADED(0xFF, 0x50, 0x50);
const QColor FITTING(0x39, 0xFF, 0x14);
const QColor NEUTRAL(0xE0, 0xE0, 0xE0);

QColor verdictColour(const QString& verdict)
{
    using SecondOpinion::Verdict;
    if (verdict == SecondOpinionText::verdict(Verdict::Fits))
        return FITTING;
    const bool exceeds = verdict == SecondOpinionText::verdict(Verdict::StaticOverload)
                         || verdict == SecondOpinionText::verdict(Verdict::DynamicOverload);
    return exceeds ? OVERLOADED : NEUTRAL;
}

} // namespace

ContrastTable::ContrastTable()
    : QTableWidget(0, static_cast<int>(SecondOpinionText::columns().size()))
{
    setAccessibleName(u"Contraste de cada motor"_s);
    setHorizontalHeaderLabels(SecondOpinionText::columns());
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    horizontalHeader()->setMinimumSectionSize(NARROWEST_COLUMN);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);
    setStyleSheet(Styles::CONTRAST_TABLE);
}

// Measuring the columns takes longer than all else in a drag, and figures hardly grow wider than headings.
void ContrastTable::showRows(const QList<QStringList>& rows)
{
    const int count = static_cast<int>(rows.size());
    const bool isResized = rowCount() != count;
    if (isResized)
        setRows(count);
    for (int row = 0; row < count; ++row)
        fillRow(row, rows.at(row));
    if (isResized)
        resizeColumnsToContents();
}

void ContrastTable::setRows(int count)
{
    setRowCount(count);
    setFixedHeight(horizontalHeader()->sizeHint().height()
                   + std::clamp(count, 1, MOST_ROWS) * verticalHeader()->defaultSectionSize()
                   + 2 * frameWidth());
}

// A name stands in one line and one column, also where it is pasted.
void ContrastTable::fillRow(int row, const QStringList& texts)
{
    for (int column = 0; column < static_cast<int>(texts.size()); ++column) {
        QTableWidgetItem* cell = item(row, column);
        if (cell == nullptr) {
            cell = new QTableWidgetItem;
            cell->setTextAlignment(Qt::AlignCenter);
            setItem(row, column, cell);
        }
        const QString text = texts.at(column).simplified();
        if (cell->text() == text)
            continue;
        cell->setText(text);
        if (column == columnCount() - 1)
            cell->setForeground(verdictColour(text));
    }
}

QString ContrastTable::text() const
{
    QStringList lines{SecondOpinionText::columns().join(u'\t')};
    for (int row = 0; row < rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < columnCount(); ++column)
            cells.append(item(row, column)->text());
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n') + u'\n';
}
