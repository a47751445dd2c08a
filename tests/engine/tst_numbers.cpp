#include "engine/Numbers.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float LARGEST_FLOAT = std::numeric_limits<float>::max();

} // namespace

class NumbersTest : public QObject
{
    Q_OBJECT

private slots:
    void textThatIsANumber_parses_data();
    void textThatIsANumber_parses();
    void textThatIsNoNumber_countsAsZero_data();
    void textThatIsNoNumber_countsAsZero();
    void parsing_doesNotFollowTheLocale();
    void fixedPoint_hasTheDecimalsAskedFor_data();
    void fixedPoint_hasTheDecimalsAskedFor();
    void generalForm_isShort_data();
    void generalForm_isShort();
    void pixels_truncateAndSaturate_data();
    void pixels_truncateAndSaturate();
    void integers_truncateAndSaturate_data();
    void integers_truncateAndSaturate();
    void doubleBeyondSinglePrecision_saturates();
};

void NumbersTest::textThatIsANumber_parses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("number");
    QTest::newRow("integer") << u"12"_s << 12.0F;
    QTest::newRow("decimals") << u"8.4"_s << 8.4F;
    QTest::newRow("negative") << u"-0.25"_s << -0.25F;
    QTest::newRow("plus sign") << u"+3.5"_s << 3.5F;
    QTest::newRow("no leading digit") << u".5"_s << 0.5F;
    QTest::newRow("no trailing digit") << u"5."_s << 5.0F;
    QTest::newRow("exponent") << u"1.5e3"_s << 1500.0F;
    QTest::newRow("blanks around") << u" 7 "_s << 7.0F;
    QTest::newRow("largest") << u"3.4028234e38"_s << LARGEST_FLOAT;
    QTest::newRow("zero") << u"0.000"_s << 0.0F;
}

void NumbersTest::textThatIsANumber_parses()
{
    QFETCH(QString, text);
    QFETCH(float, number);
    QVERIFY(Numbers::tryParse(text).has_value());
    QCOMPARE(*Numbers::tryParse(text), number);
    QCOMPARE(Numbers::parseNumber(text), number);
}

void NumbersTest::textThatIsNoNumber_countsAsZero_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"",      " ",   "-",   "+",    ".",        "e5",   "1e",    "abc",   "12m",  "1 2", "8,4",
          "1,000", "nan", "inf", "-inf", "infinity", "1e39", "-1e39", "1e400", "0x10", "--1", "1.2.3"})
        QTest::newRow(*text == '\0' ? "empty" : text) << QString::fromLatin1(text);
    QTest::newRow("null") << QString();
    QTest::newRow("arabic digits") << u"\u0661\u0662"_s;
}

void NumbersTest::textThatIsNoNumber_countsAsZero()
{
    QFETCH(QString, text);
    QVERIFY(!Numbers::tryParse(text).has_value());
    QCOMPARE(Numbers::parseNumber(text), 0.0F);
}

void NumbersTest::parsing_doesNotFollowTheLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    const float point = Numbers::parseNumber(u"8.4"_s);
    const float comma = Numbers::parseNumber(u"8,4"_s);
    const QString written = Numbers::fixed(1234.5F, 1);
    QLocale::setDefault(before);

    QCOMPARE(point, 8.4F);
    QCOMPARE(comma, 0.0F);
    QCOMPARE(written, u"1234.5"_s);
}

void NumbersTest::fixedPoint_hasTheDecimalsAskedFor_data()
{
    QTest::addColumn<float>("number");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << 1600.0F << 0 << u"1600"_s;
    QTest::newRow("one") << 8.4F << 1 << u"8.4"_s;
    QTest::newRow("two") << 4.0F << 2 << u"4.00"_s;
    QTest::newRow("rounds") << 69.56F << 1 << u"69.6"_s;
    QTest::newRow("negative") << -3.25F << 2 << u"-3.25"_s;
    QTest::newRow("no group separators") << 1234567.0F << 1 << u"1234567.0"_s;
}

void NumbersTest::fixedPoint_hasTheDecimalsAskedFor()
{
    QFETCH(float, number);
    QFETCH(int, decimals);
    QTEST(Numbers::fixed(number, decimals), "text");
}

void NumbersTest::generalForm_isShort_data()
{
    QTest::addColumn<float>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("integer") << 12.0F << u"12"_s;
    QTest::newRow("decimals") << 8.4F << u"8.4"_s;
    QTest::newRow("six digits") << 123456.0F << u"123456"_s;
    QTest::newRow("seven digits") << 1000000.0F << u"1e+06"_s;
    QTest::newRow("rounds to six digits") << 0.33333334F << u"0.333333"_s;
}

void NumbersTest::generalForm_isShort()
{
    QFETCH(float, number);
    QTEST(Numbers::general(number), "text");
}

void NumbersTest::pixels_truncateAndSaturate_data()
{
    QTest::addColumn<float>("number");
    QTest::addColumn<int>("pixel");
    QTest::newRow("down") << 2.9F << 2;
    QTest::newRow("up, toward zero") << -2.9F << -2;
    QTest::newRow("not a number") << NOT_A_NUMBER << 0;
    QTest::newRow("just inside") << 999'999.0F << 999'999;
    QTest::newRow("limit") << 1'000'000.0F << 1'000'000;
    QTest::newRow("beyond") << 1'000'001.0F << 1'000'000;
    QTest::newRow("just inside, negative") << -999'999.0F << -999'999;
    QTest::newRow("beyond, negative") << -1'000'001.0F << -1'000'000;
    QTest::newRow("infinite") << INFINITE << 1'000'000;
    QTest::newRow("infinite, negative") << -INFINITE << -1'000'000;
}

void NumbersTest::pixels_truncateAndSaturate()
{
    QFETCH(float, number);
    QTEST(Numbers::toPixel(number), "pixel");
}

void NumbersTest::integers_truncateAndSaturate_data()
{
    QTest::addColumn<float>("number");
    QTest::addColumn<int>("integer");
    QTest::newRow("down") << 2.9F << 2;
    QTest::newRow("up, toward zero") << -2.9F << -2;
    QTest::newRow("not a number") << NOT_A_NUMBER << 0;
    QTest::newRow("a million and one") << 1'000'001.0F << 1'000'001;
    QTest::newRow("last below 2^31") << 2'147'483'520.0F << 2'147'483'520;
    QTest::newRow("2^31") << 2'147'483'648.0F << 2'147'483'520;
    QTest::newRow("last above -2^31") << -2'147'483'520.0F << -2'147'483'520;
    QTest::newRow("largest") << LARGEST_FLOAT << 2'147'483'520;
    QTest::newRow("infinite") << INFINITE << 2'147'483'520;
    QTest::newRow("infinite, negative") << -INFINITE << -2'147'483'520;
}

void NumbersTest::integers_truncateAndSaturate()
{
    QFETCH(float, number);
    QTEST(Numbers::toInteger(number), "integer");
}

void NumbersTest::doubleBeyondSinglePrecision_saturates()
{
    QCOMPARE(Numbers::toSingle(0.1), 0.1F);
    QCOMPARE(Numbers::toSingle(static_cast<double>(LARGEST_FLOAT)), LARGEST_FLOAT);
    QCOMPARE(Numbers::toSingle(-static_cast<double>(LARGEST_FLOAT)), -LARGEST_FLOAT);
    QCOMPARE(Numbers::toSingle(1e39), LARGEST_FLOAT);
    QCOMPARE(Numbers::toSingle(-1e39), -LARGEST_FLOAT);
    QCOMPARE(Numbers::toSingle(static_cast<double>(INFINITE)), LARGEST_FLOAT);
    QCOMPARE(Numbers::toSingle(static_cast<double>(NOT_A_NUMBER)), 0.0F);
}

QTEST_GUILESS_MAIN(NumbersTest)
#include "tst_numbers.moc"
