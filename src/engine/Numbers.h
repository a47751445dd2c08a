#pragma once

#include <QString>

#include <optional>

/// Texts to numbers and back, and floats to integers, the same in every locale: the decimal sign
/// is the point, there are no group separators, and every result is defined.
namespace Numbers
{

/// The number that the whole of `text` stands for, or nothing if it does not parse, overflows
/// single precision or is not finite.
std::optional<float> tryParse(const QString& text);

/// As `tryParse`; what does not parse counts as 0.
float parseNumber(const QString& text);

/// `value` as fixed-point text with `decimals` digits after the point.
QString fixed(float value, int decimals);

/// `value` as the shortest text with at most 6 significant digits ("12", "8.4", "1e+06").
QString general(float value);

/// `value` truncated toward zero [px]; not-a-number gives 0, and beyond ±1 000 000 it saturates:
/// far outside any screen, yet small enough that sums of a few of them cannot overflow.
int toPixel(double value);

/// `value` truncated toward zero; not-a-number gives 0, and beyond the integers it saturates.
int toInteger(float value);

/// `value` in single precision; beyond its range it saturates, so that what is computed from it never
/// becomes infinity minus infinity. Not-a-number gives 0.
float toSingle(double value);

} // namespace Numbers
