#include "io/SheetNumbers.h"

#include "engine/Numbers.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// From here on a number is written with a power of ten.
constexpr double LONGEST = 1e12;
/// Digits that a pocket calculator shows.
constexpr int CALCULATOR_DIGITS = 10;
constexpr int MOST_DECIMALS = 12;

QString noNumber(double value)
{
    return std::isnan(value) ? u"sin valor"_s : u"infinito"_s;
}

/// The minus sign of formulas instead of the hyphen; what is only the sign of a zero goes.
QString signedText(QString text)
{
    if (!text.startsWith(u'-'))
        return text;
    const bool isZero =
        std::none_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'1' && c <= u'9'; });
    return isZero ? text.mid(1) : u'−' + text.mid(1);
}

} // namespace

double SheetNumbers::written(float entered)
{
    std::array<char, 64> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), entered);
    return error == std::errc() ? QByteArray(text.data(), end - text.data()).toDouble() : 0.0;
}

QString SheetNumbers::exact(double value)
{
    if (!std::isfinite(value))
        return noNumber(value);
    const char format = std::abs(value) < LONGEST ? 'f' : 'g';
    return signedText(QString::number(value, format, QLocale::FloatingPointShortest));
}

QString SheetNumbers::trimmed(double value, int decimals)
{
    QString text = fixed(value, decimals);
    if (!text.contains(u'.') || text.contains(u'e'))
        return text;
    while (text.endsWith(u'0'))
        text.chop(1);
    return text.endsWith(u'.') ? text.chopped(1) : text;
}

QString SheetNumbers::fixed(double value, int decimals)
{
    if (!std::isfinite(value))
        return noNumber(value);
    return signedText(std::abs(value) < LONGEST ? QString::number(value, 'f', decimals)
                                                : QString::number(value, 'g', CALCULATOR_DIGITS));
}

QString SheetNumbers::operand(const QString& number)
{
    return number.startsWith(u'−') ? u'(' + number + u')' : number;
}

int SheetNumbers::decimalsFor(double tolerance)
{
    if (!(tolerance > 0.0))
        return MOST_DECIMALS;
    return std::clamp(Numbers::toInteger(static_cast<float>(std::ceil(-std::log10(2.0 * tolerance)))), 0,
                      MOST_DECIMALS);
}
