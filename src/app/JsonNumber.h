#pragma once

#include <QJsonValue>

#include <optional>

/// Figures as members of a document.
namespace JsonNumber
{

/// `value` rounded to three decimals; null for what is not a number or infinite.
QJsonValue rounded(double value);

/// The same; null for nothing.
QJsonValue rounded(const std::optional<double>& value);

} // namespace JsonNumber
