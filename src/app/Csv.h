#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// A table for spreadsheets, by RFC 4180: UTF-8 behind a byte order mark, fields separated by commas,
/// records ended by CR and LF, a field that holds one of them or a quotation mark in quotation marks.
class Csv
{
public: // construction
    /// A table with these headings, whose cells are set by them.
    explicit Csv(QStringList columns);

public: // commands
    /// Appends a record. A column that `cells` do not hold stays empty; one that is not in the table
    /// is left out.
    void add(const QHash<QString, QString>& cells);

public: // queries
    /// The mark, the headings and the records.
    [[nodiscard]] QString text() const;

    /// `value` with a decimal point and two decimals: three would be taken for thousands where the
    /// decimal sign is a comma. A dash for what is not a number or infinite.
    static QString number(double value);
    /// `words` on one line. An apostrophe before what a spreadsheet would take for a formula, and run.
    static QString words(const QString& words);

private: // data
    QStringList m_columns;
    QList<QStringList> m_records;
};
