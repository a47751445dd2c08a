#include "app/Csv.h"

#include "app/Console.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

const QString LINE_END = u"\r\n"_s;

QString field(const QString& content)
{
    const auto needsMarks = [](QChar character) {
        return character == u',' || character == u'"' || character == u'\r' || character == u'\n';
    };
    if (std::none_of(content.cbegin(), content.cend(), needsMarks))
        return content;
    return u'"' + QString(content).replace(u'"', u"\"\""_s) + u'"';
}

QString record(const QStringList& contents)
{
    QStringList fields;
    for (const QString& content : contents)
        fields.append(field(content));
    return fields.join(u',') + LINE_END;
}

} // namespace

Csv::Csv(QStringList columns)
    : m_columns(std::move(columns))
{
}

void Csv::add(const QHash<QString, QString>& cells)
{
    QStringList contents;
    for (const QString& column : std::as_const(m_columns))
        contents.append(cells.value(column));
    m_records.append(contents);
}

QString Csv::text() const
{
    QString text = QChar(QChar::ByteOrderMark) + record(m_columns);
    for (const QStringList& contents : m_records)
        text += record(contents);
    return text;
}

QString Csv::number(double value)
{
    if (!std::isfinite(value))
        return u"—"_s;
    const QString text = QString::number(value, 'f', 2);
    return text == "-0.00"_L1 ? u"0.00"_s : text;
}

QString Csv::words(const QString& words)
{
    const QString printable = Console::printable(words);
    const bool isFormula = !printable.isEmpty() && u"=+-@"_s.contains(printable.front());
    return isFormula ? u'\'' + printable : printable;
}
