#pragma once

#include <QString>

/// Numbers as they stand in the calculation sheet: with so many decimals that a pocket calculator gets
/// every result again from the numbers beside it.
namespace SheetNumbers
{

/// The shortest decimal number that is `entered` in single precision, as the user wrote it: 8.4, and not
/// the 8.399999619 that is kept of it. The sheet calculates with these.
double written(float entered);

/// All digits of `value`, and none but them: "12", "8.4".
QString exact(double value);

/// `value` with up to `decimals` digits after the point, without the zeros at the end.
QString trimmed(double value, int decimals);

/// `value` with `decimals` digits after the point; from 1e12 on with ten digits and a power of ten. What
/// is not a number, or infinite, is a word.
QString fixed(double value, int decimals);

/// `number` as it stands in a formula: in brackets where it begins with a sign.
QString operand(const QString& number);

/// How many decimals keep the error of rounding within `tolerance`, 0 to 12.
int decimalsFor(double tolerance);

} // namespace SheetNumbers
