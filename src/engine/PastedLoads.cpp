#include "engine/PastedLoads.h"

#include "engine/FieldRanges.h"
#include "engine/Numbers.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int NAME_COLUMN = 0;
constexpr int MASS_COLUMN = 1;
constexpr int POSITION_COLUMN = 2;
constexpr int COLUMN_COUNT = 3;

/// A position that was rounded to centimetres may lie so far beside the truss [m].
constexpr float ROUNDING = 0.0051F;

/// As much of a cell as a sentence has room for.
constexpr qsizetype LONGEST_QUOTATION = 24;

/// Takes a text apart into rows of cells.
class CellReader
{
public: // construction
    explicit CellReader(const QString& text)
        : m_text(text)
    {
    }

public: // commands
    QList<QStringList> rows()
    {
        for (m_at = 0; m_at < m_text.size(); ++m_at)
            take(m_text.at(m_at));
        endRow();
        return m_rows;
    }

private: // helpers
    /// The null character behind the end.
    [[nodiscard]] QChar charAt(qsizetype at) const
    {
        return at < m_text.size() ? m_text.at(at) : QChar();
    }

    void take(QChar c)
    {
        if (m_isQuoted)
            takeQuoted(c);
        else if (c == u'"' && m_cell.isEmpty() && hasEnd())
            m_isQuoted = true;
        else if (c == u'\t')
            endCell();
        else if (c == u'\n' || c == u'\r')
            endLine(c);
        else
            m_cell += c;
    }

    // Two quotation marks stand for one.
    void takeQuoted(QChar c)
    {
        if (c != u'"')
            m_cell += c;
        else if (charAt(m_at + 1) == u'"')
            m_cell += m_text.at(++m_at);
        else
            m_isQuoted = false;
    }

    /// Whether the quotation mark that is read now is answered by one that ends its cell; else it is a
    /// mark like any other, of inches for example. A cell has no tabs in it.
    [[nodiscard]] bool hasEnd() const
    {
        for (qsizetype at = m_at + 1; at < m_text.size() && m_text.at(at) != u'\t'; ++at) {
            if (m_text.at(at) != u'"')
                continue;
            const QChar next = charAt(at + 1);
            if (next != u'"')
                return next.isNull() || next == u'\t' || next == u'\n' || next == u'\r';
            ++at;
        }
        return false;
    }

    void endCell()
    {
        m_row.append(m_cell);
        m_cell.clear();
    }

    void endRow()
    {
        endCell();
        m_rows.append(m_row);
        m_row.clear();
    }

    void endLine(QChar c)
    {
        if (c == u'\r' && charAt(m_at + 1) == u'\n')
            ++m_at;
        endRow();
    }

private: // data
    const QString& m_text;
    qsizetype m_at = 0;
    bool m_isQuoted = false;
    QString m_cell;
    QStringList m_row;
    QList<QStringList> m_rows;
};

bool isBlank(const QStringList& cells)
{
    return std::all_of(cells.cbegin(), cells.cend(),
                       [](const QString& cell) { return cell.trimmed().isEmpty(); });
}

/// `cell` in so few words that a sentence can quote it.
QString quoted(const QString& cell)
{
    const QString text = cell.simplified();
    const bool isLong = text.size() > LONGEST_QUOTATION;
    return u'«' + (isLong ? text.left(LONGEST_QUOTATION) + u'…' : text) + u'»';
}

/// `cell` as a number is typed: with a point, without its unit.
QString bare(const QString& cell, const QString& unit)
{
    QString text = cell.trimmed();
    if (text.endsWith(unit, Qt::CaseInsensitive))
        text = text.chopped(unit.size()).trimmed();
    return text.replace(u'\u2212', u'-').replace(u',', u'.');
}

/// Whether `number` reads as thousands in one country and as a fraction in another: 1.200 kg.
bool isAmbiguous(const QString& number)
{
    static const QRegularExpression thousands(u"^[+-]?[1-9][0-9]{0,2}\\.[0-9]{3}$"_s);
    return thousands.match(number).hasMatch();
}

/// The name in `cell` as a field for names takes it: in one line.
QString nameFrom(const QString& cell)
{
    return QString(cell).replace(u'\n', u' ').replace(u'\r', u' ').trimmed();
}

/// One row, and what is wrong with it.
class RowReader
{
public: // construction
    RowReader(const QStringList& cells, float trussLength)
        : m_cells(cells)
        , m_trussLength(trussLength)
    {
    }

public: // queries
    /// Nothing where there is a fault.
    [[nodiscard]] std::optional<ActiveLoad> load()
    {
        if (!hasThreeCells())
            return std::nullopt;
        const std::optional<float> mass = readMass();
        const std::optional<float> position = mass ? readPosition() : std::nullopt;
        if (!position)
            return std::nullopt;
        ActiveLoad load;
        load.mass = *mass;
        load.positionX = *position;
        load.type = u"Audio"_s;
        if (const QString name = nameFrom(m_cells.at(NAME_COLUMN)); !name.isEmpty())
            load.name = name;
        return load;
    }
    [[nodiscard]] QString fault() const
    {
        return m_fault;
    }

private: // helpers
    bool hasThreeCells()
    {
        if (m_cells.size() < COLUMN_COUNT)
            m_fault = u"faltan columnas (nombre, masa, posición)"_s;
        else if (!isBlank(m_cells.mid(COLUMN_COUNT)))
            m_fault = u"sobran columnas (nombre, masa, posición)"_s;
        return m_fault.isEmpty();
    }

    std::optional<float> readMass()
    {
        const QString& cell = m_cells.at(MASS_COLUMN);
        const QString text = bare(cell, u"kg"_s);
        const std::optional<float> mass = Numbers::tryParse(text);
        const auto [bottom, top] = FieldRanges::LOAD_MASS;
        if (!mass)
            m_fault = quoted(cell) + u" no es una masa"_s;
        else if (isAmbiguous(text))
            m_fault = quoted(cell) + u" puede ser una masa con decimales o de miles"_s;
        else if (static_cast<double>(*mass) < bottom || static_cast<double>(*mass) > top)
            m_fault = quoted(cell) + u" no es una masa de 0 a 50000 kg"_s;
        return m_fault.isEmpty() ? mass : std::nullopt;
    }

    /// From the truss's left end [m].
    std::optional<float> readPosition()
    {
        const QString& cell = m_cells.at(POSITION_COLUMN);
        const std::optional<float> position = Numbers::tryParse(bare(cell, u"m"_s));
        const float half = m_trussLength * 0.5F;
        if (!position)
            m_fault = quoted(cell) + u" no es una posición"_s;
        else if (!(std::abs(*position) <= half + ROUNDING))
            m_fault = quoted(cell) + u" está fuera del truss"_s;
        else
            return Project::clampToTruss(*position + half, m_trussLength);
        return std::nullopt;
    }

private: // data
    const QStringList& m_cells;
    float m_trussLength; ///< [m]
    QString m_fault;
};

} // namespace

PastedLoads PastedLoads::of(const QString& text, float trussLength)
{
    PastedLoads pasted;
    const QList<QStringList> rows = CellReader(text).rows();
    for (qsizetype row = 0; row < rows.size(); ++row) {
        if (isBlank(rows.at(row)))
            continue;
        RowReader reader(rows.at(row), trussLength);
        if (const std::optional<ActiveLoad> load = reader.load())
            pasted.loads.append(*load);
        else
            pasted.faults.append(u"Fila "_s + QString::number(row + 1) + u": "_s + reader.fault() + u'.');
    }
    return pasted;
}
