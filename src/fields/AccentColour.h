#pragma once

#include <QColor>
#include <QString>

/// The accent of the whole program as a string literal, so that style sheets are put together from it by
/// the compiler: u"color: " ACCENT_COLOUR ";"_s
#define ACCENT_COLOUR u"#00BFFF"

/// The same, to paint with.
inline QColor accentColour()
{
    const QString name = QStringLiteral(ACCENT_COLOUR);
    return QColor(name);
}
