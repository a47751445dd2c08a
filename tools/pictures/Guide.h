#pragma once

#include <optional>

#include "Camera.h"

/// The guide's source: HTML in which `src="@picture:NAME@"` stands for a picture.
namespace Guide
{

/// `source` with every picture embedded; nothing if it names a picture that there is not, or leaves
/// one out. What is wrong is told on standard error.
[[nodiscard]] std::optional<QString> embed(const QString& source, const QMap<QString, Picture>& pictures);

} // namespace Guide
