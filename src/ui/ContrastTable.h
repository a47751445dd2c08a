#pragma once

#include <QTableWidget>

/// The table of the second opinion, a row for each motor: as high as a few rows need, not editable, and left
/// by the Tab key.
class ContrastTable : public QTableWidget
{
    Q_OBJECT

public: // construction
    ContrastTable();

public: // queries
    /// Headings and rows, columns parted by tabs and rows by line feeds.
    [[nodiscard]] QString text() const;

public: // commands
    /// Shows `rows`, seven texts each, the last one being the verdict.
    void showRows(const QList<QStringList>& rows);

private: // helpers
    void setRows(int count);
    void fillRow(int row, const QStringList& texts);
};
