#include "app/Console.h"

#include <QByteArray>
#include <QChar>
#include <QList>

#include <algorithm>
#include <array>
#include <cstdio>

namespace
{

struct Range
{
    char32_t first;
    char32_t last;
};

/// Letters and pictures that terminals draw over two columns.
constexpr std::array<Range, 9> WIDE_RANGES{{
    {0x1100, 0x115F},
    {0x2E80, 0xA4CF},
    {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6},
    {0x1F300, 0x1FAFF},
    {0x20000, 0x3FFFD},
}};

/// The marks of the verdicts; they lie outside the ranges.
constexpr std::array<char32_t, 2> WIDE_MARKS{U'✅', U'❌'};

bool isWide(char32_t character)
{
    const auto holds = [character](const Range& range) {
        return character >= range.first && character <= range.last;
    };
    return std::any_of(WIDE_RANGES.cbegin(), WIDE_RANGES.cend(), holds)
           || std::find(WIDE_MARKS.cbegin(), WIDE_MARKS.cend(), character) != WIDE_MARKS.cend();
}

bool takesNoColumn(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing
           || category == QChar::Other_Format;
}

bool isHarmful(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Other_Format
           || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

bool write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

} // namespace

bool Console::print(const QString& text)
{
    return write(stdout, text);
}

void Console::printError(const QString& text)
{
    write(stderr, text + u'\n');
}

QString Console::printable(const QString& text)
{
    QString result = text;
    std::replace_if(result.begin(), result.end(), isHarmful, QChar(QChar::ReplacementCharacter));
    return result;
}

QString Console::shortened(const QString& name)
{
    constexpr qsizetype LONGEST = 40;
    const QString start = printable(name.left(LONGEST + 1));
    return start.size() <= LONGEST ? start : start.left(LONGEST - 1) + u'…';
}

int Console::displayWidth(const QString& text)
{
    int width = 0;
    const auto characters = text.toUcs4();
    for (const uint character : characters) {
        if (!takesNoColumn(character))
            width += isWide(character) ? 2 : 1;
    }
    return width;
}
