#include "app/JsonNumber.h"

#include <cmath>

QJsonValue JsonNumber::rounded(double value)
{
    constexpr double THOUSANDTHS = 1000.0;
    const double thousandths = std::round(value * THOUSANDTHS);
    if (std::isnan(value) || std::isinf(value))
        return QJsonValue::Null;
    // What is too large for three decimals more has none to round; + 0.0 takes the sign from a zero.
    return std::isinf(thousandths) ? value : thousandths / THOUSANDTHS + 0.0;
}

QJsonValue JsonNumber::rounded(const std::optional<double>& value)
{
    return value ? rounded(*value) : QJsonValue(QJsonValue::Null);
}
