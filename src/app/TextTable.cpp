#include "app/TextTable.h"

#include "app/Console.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

const QString GAP = u"  "_s;

QString blanks(int count)
{
    return QString(std::max(0, count), u' ');
}

} // namespace

void TextTable::add(const QStringList& row)
{
    m_rows.append(row);
}

QString TextTable::text(const QString& indent) const
{
    const QList<int> widths = columnWidths();
    QString result;
    for (const QStringList& row : m_rows) {
        result += indent;
        for (qsizetype i = 0; i < row.size(); ++i) {
            const QString padding = blanks(widths.at(i) - Console::displayWidth(row.at(i)));
            if (i == 0)
                result += row.at(i) + padding;
            else if (i + 1 < row.size())
                result += GAP + padding + row.at(i);
            else
                result += GAP + row.at(i);
        }
        result += u'\n';
    }
    return result;
}

QList<int> TextTable::columnWidths() const
{
    QList<int> widths(m_rows.isEmpty() ? 0 : m_rows.constFirst().size(), 0);
    for (const QStringList& row : m_rows) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), Console::displayWidth(row.at(i)));
    }
    return widths;
}
