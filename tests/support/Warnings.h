#pragma once

#include <QRegularExpression>
#include <QTest>

namespace Support
{

/// From now to the end of the test function any warning fails it. The off-screen platform says of
/// itself what it cannot do; that is no fault of the program's.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}

} // namespace Support
