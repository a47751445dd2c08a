#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Rows of text whose columns are aligned on a terminal.
class TextTable
{
public: // commands
    /// Appends a row; every row has as many cells as the first.
    void add(const QStringList& row);

public: // queries
    /// The rows, each behind `indent`: first and last column aligned left, those between right.
    [[nodiscard]] QString text(const QString& indent) const;

private: // helpers
    [[nodiscard]] QList<int> columnWidths() const;

private: // data
    QList<QStringList> m_rows;
};
