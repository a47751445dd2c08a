#pragma once

class QDoubleValidator;
class QIntValidator;
class QObject;

/// Validators for number fields, owned by `parent`. The point is the decimal sign whatever the
/// desktop speaks, and nothing groups digits.
namespace NumberValidators
{

/// Numbers from `bottom` to `top` with one decimal.
QDoubleValidator* createReal(double bottom, double top, QObject* parent);
/// Integers from `bottom` to `top`; a fraction between them may stand in the field, unfinished, rather
/// than lose its point.
QIntValidator* createInteger(int bottom, int top, QObject* parent);

} // namespace NumberValidators
