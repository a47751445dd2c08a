#pragma once

#include <QString>
#include <QTest>

namespace Support
{

/// Adds the column "name" and a row for each kind of name that a file or folder may have and that some
/// program takes for something else: a separator, a place holder, an escape, a command.
inline void awkwardNames()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("spaces") << QStringLiteral("mi gira  2026");
    QTest::newRow("single quotes") << QStringLiteral("l'été 'final'");
    QTest::newRow("double quotes") << QStringLiteral("gira \"final\"");
    QTest::newRow("percent") << QStringLiteral("50% %1 %20 %n");
    QTest::newRow("number sign") << QStringLiteral("sala #3");
    QTest::newRow("query") << QStringLiteral("¿qué?a=b&c=d");
    QTest::newRow("accents") << QStringLiteral("camión ñandú");
    QTest::newRow("accents apart") << QStringLiteral("camio\u0301n");
    QTest::newRow("Chinese") << QStringLiteral("舞台中");
    QTest::newRow("right to left") << QStringLiteral("במה");
    QTest::newRow("emoji") << QStringLiteral("🎤🔊");
    QTest::newRow("commands") << QStringLiteral("$(touch x); `touch x` | touch x & > x");
    QTest::newRow("backslash") << QStringLiteral("a\\b\\n");
    QTest::newRow("wild cards") << QStringLiteral("[a-z]*{b,c}");
    QTest::newRow("option") << QStringLiteral("-rf");
    QTest::newRow("markup") << QStringLiteral("<b>&amp;");
    QTest::newRow("colons") << QStringLiteral("C:D");
    QTest::newRow("long") << QString(200, QChar(u'x'));
}

} // namespace Support
