#include "engine/Numbers.h"

#include <QLocale>
#include <QTest>

#include <clocale>

using namespace Qt::StringLiterals;

/// On a desktop that writes a decimal comma the program goes on with the point.
/// `tools/locales.sh` runs all tests on such desktops, and says so in VELMORA_EXPECT_COMMA.
class TestLocale : public QObject
{
    Q_OBJECT

private slots:
    void desktopOfTheRun_writesAComma();
    void numbers_areWrittenAndReadWithThePoint();
};

void TestLocale::desktopOfTheRun_writesAComma()
{
    if (qgetenv("VELMORA_EXPECT_COMMA") != "1") {
        QSKIP("only where tools/locales.sh set up the desktop");
    }
    // The application object has taken over the desktop's conventions, as it does in the program.
    QCOMPARE(std::localeconv()->decimal_point, ",");
    QCOMPARE(QLocale::system().decimalPoint(), u","_s);
}

void TestLocale::numbers_areWrittenAndReadWithThePoint()
{
    QCOMPARE(Numbers::fixed(8.4F, 1), u"8.4"_s);
    QCOMPARE(Numbers::general(8.4F), u"8.4"_s);
    QCOMPARE(Numbers::parseNumber(u"8.4"_s), 8.4F);
    QVERIFY(!Numbers::tryParse(u"8,4"_s).has_value());
}

QTEST_GUILESS_MAIN(TestLocale)
#include "tst_locale.moc"
