#pragma once

#include "engine/FieldRanges.h"

#include <QLineEdit>

/// Makes of a line edit a field for numbers.
namespace NumberField
{

/// A field for a number that may hold any text; a typed comma becomes a point.
QLineEdit* create(const QString& text, const QString& accessibleName);
/// As `create`, refusing keystrokes that lead out of `bottom` to `top`, with one decimal.
QLineEdit* createReal(const QString& text, const QString& accessibleName, double bottom, double top);
QLineEdit* createReal(const QString& text, const QString& accessibleName, const FieldRanges::Range& range);
/// As `create`, refusing keystrokes that lead out of the integers `bottom` to `top`.
QLineEdit* createInteger(const QString& text, const QString& accessibleName, int bottom, int top);

/// Whether `object` is a field that numbers are typed into, a spin box, or the line edit of one.
[[nodiscard]] bool takesNumbers(const QObject* object);

/// Marks `field` red, or takes the mark off.
void mark(QLineEdit* field, bool usable);

} // namespace NumberField
