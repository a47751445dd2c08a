#include "engine/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

/// No screen and no printed page is this wide [px].
constexpr double LARGEST_PIXEL = 1'000'000.0;

/// The largest single-precision number below 2^31.
constexpr double LARGEST_INTEGER = 2'147'483'520.0;

int truncated(double value, double limit)
{
    if (std::isnan(value))
        return 0;
    return static_cast<int>(std::clamp(value, -limit, limit));
}

} // namespace

std::optional<float> Numbers::tryParse(const QString& text)
{
    bool parsed = false;
    const float value = text.toFloat(&parsed);
    if (!parsed || !std::isfinite(value))
        return std::nullopt;
    return value;
}

float Numbers::parseNumber(const QString& text)
{
    return tryParse(text).value_or(0.0F);
}

QString Numbers::fixed(float value, int decimals)
{
    return QString::number(static_cast<double>(value), 'f', decimals);
}

QString Numbers::general(float value)
{
    return QString::number(static_cast<double>(value), 'g', 6);
}

int Numbers::toPixel(double value)
{
    return truncated(value, LARGEST_PIXEL);
}

int Numbers::toInteger(float value)
{
    return truncated(static_cast<double>(value), LARGEST_INTEGER);
}

float Numbers::toSingle(double value)
{
    if (std::isnan(value))
        return 0.0F;
    const double largest = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::clamp(value, -largest, largest));
}
