#include "support/Window.h"

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

const QString GREEN = u"#39FF14"_s;
const QString ORANGE = u"#FFAF00"_s;
const QString RED = u"#FF0000"_s;

QString barStyle(const QString& colour)
{
    return u"QProgressBar { border: 1px solid #444; background: #222; border-radius: 3px; height: 12px; }"
           "QProgressBar::chunk { background-color: %1; }"_s.arg(colour);
}

} // namespace

/// The stress bar and label, the warning of a third motor, and the red marks of unusable fields.
class TestResults : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void stress_isShownTruncatedAndColoured_data();
    void stress_isShownTruncatedAndColoured();
    void stress_hugePercentages_stayRed_data();
    void stress_hugePercentages_stayRed();
    void stress_labelKeepsItsColour();
    void stress_unstable_isGreenAndEmpty();
    void stress_goesBackToGreen();
    void warning_followsTheMotorCount();
    void screenWeight_isNotTouched();
    void fields_areMarked_data();
    void fields_areMarked();
    void marks_changeNothingElse();
    void marks_followEveryField();
    void formatCoordinate_isTheEngines();

private:
    /// Sets the rating so that the stress becomes `percent` [%]: with two motors at the ends, no loads
    /// and w = 8 kg/m, the moment is 8 × 12² / 8 = 144 kg·m against 12 × CPL / 4 = 3 CPL.
    void stressTo(double percent)
    {
        LoadLogic::TrussSelfWeight = 8.0F;
        LoadLogic::Limit_CPL = static_cast<float>(144.0 / 3.0 / (percent / 100.0));
        m_test->window.updateCalculations();
    }

    std::optional<Support::TestWindow> m_test;
};

void TestResults::stress_isShownTruncatedAndColoured_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<int>("shown");
    QTest::addColumn<int>("bar");
    QTest::addColumn<QString>("colour");
    QTest::newRow("low") << 3.9 << 3 << 3 << GREEN;
    QTest::newRow("79.99") << 79.99 << 79 << 79 << GREEN;
    QTest::newRow("80") << 80.0 << 80 << 80 << ORANGE;
    QTest::newRow("99.9") << 99.9 << 99 << 99 << ORANGE;
    QTest::newRow("100") << 100.0 << 100 << 100 << RED;
    QTest::newRow("250") << 250.5 << 250 << 100 << RED;
}

void TestResults::stress_isShownTruncatedAndColoured()
{
    QFETCH(double, percent);
    QFETCH(int, shown);
    QFETCH(int, bar);
    QFETCH(QString, colour);
    stressTo(percent);
    QCOMPARE(m_test->label("stressLabel")->text(), u"Estrés Estructural: %1%"_s.arg(shown));
    QCOMPARE(m_test->stressBar()->value(), bar);
    QCOMPARE(m_test->stressBar()->styleSheet(), barStyle(colour));
}

void TestResults::stress_hugePercentages_stayRed_data()
{
    QTest::addColumn<float>("mass");
    QTest::newRow("beyond the integers") << 1e12F;
    QTest::newRow("the largest mass") << std::numeric_limits<float>::max();
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity();
}

void TestResults::stress_hugePercentages_stayRed()
{
    QFETCH(float, mass);
    LoadLogic::Limit_CPL = 0.02F;
    m_test->hangLoad(mass, 6.0F);
    const QString text = m_test->label("stressLabel")->text();
    QVERIFY2(!text.contains(u'-'), qUtf8Printable(text));
    QVERIFY2(text.length() > u"Estrés Estructural: 999%"_s.length(), qUtf8Printable(text));
    QCOMPARE(m_test->stressBar()->value(), 100);
    QCOMPARE(m_test->stressBar()->styleSheet(), barStyle(RED));
}

void TestResults::stress_labelKeepsItsColour()
{
    const QString before = m_test->label("stressLabel")->styleSheet();
    stressTo(300.0);
    QCOMPARE(m_test->label("stressLabel")->styleSheet(), before);
}

void TestResults::stress_unstable_isGreenAndEmpty()
{
    m_test->hangLoad(5000.0F, 6.0F);
    LoadLogic::MotorList.removeLast();
    m_test->window.updateCalculations();
    QVERIFY(LoadLogic::isUnstable);
    QCOMPARE(m_test->label("stressLabel")->text(), u"Estrés Estructural: 0%"_s);
    QCOMPARE(m_test->stressBar()->value(), 0);
    QCOMPARE(m_test->stressBar()->styleSheet(), barStyle(GREEN));
}

void TestResults::stress_goesBackToGreen()
{
    stressTo(300.0);
    stressTo(3.5);
    QCOMPARE(m_test->stressBar()->value(), 3);
    QCOMPARE(m_test->stressBar()->styleSheet(), barStyle(GREEN));
}

void TestResults::warning_followsTheMotorCount()
{
    const QLabel* warning = m_test->label("hyperstaticWarning");
    for (int count = 0; count <= 5; ++count) {
        LoadLogic::MotorList.clear();
        for (int i = 0; i < count; ++i)
            LoadLogic::AddMotor(static_cast<float>(i));
        m_test->window.updateCalculations();
        QCOMPARE(!warning->isHidden(), count >= 3);
    }
}

void TestResults::screenWeight_isNotTouched()
{
    QLabel* weight = m_test->label("screenWeight");
    weight->setText(u"sin tocar"_s);
    m_test->window.updateCalculations();
    QCOMPARE(weight->text(), u"sin tocar"_s);
}

void TestResults::fields_areMarked_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("usable");
    const auto rows = [](const char* name, bool zeroIsUsable) {
        const auto row = [name](const QString& text, bool usable) {
            QTest::newRow(qUtf8Printable(QString::fromLatin1(name) + u" \""_s + text + u'"'))
                << QByteArray(name) << text << usable;
        };
        row(u"2.5"_s, true);
        row(u"1e2"_s, true);
        row(u"0"_s, zeroIsUsable);
        row(u"0.0"_s, zeroIsUsable);
        for (const QString& text :
             {u""_s, u"-1"_s, u"abc"_s, u"8,4"_s, u"nan"_s, u"inf"_s, u"1e39"_s, u"-"_s, u"."_s})
            row(text, false);
    };
    rows("trussLength", false);
    rows("trussWeight", true);
    rows("limitCPL", true);
    rows("screenWidth", false);
    rows("screenHeight", false);
    rows("screenWeightM2", true);
    rows("bumperWeight", true);
    rows("cablePercent", true);
    rows("newLoadMass", true);
}

void TestResults::fields_areMarked()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QFETCH(bool, usable);
    const QString mark = u"border: 1px solid #FF5555; background: #2a1a1a; color: white;"_s;
    m_test->setText(name.constData(), u"7"_s);
    m_test->setText(name.constData(), text);
    QCOMPARE(m_test->field(name.constData())->styleSheet(), usable ? QString() : mark);
}

void TestResults::marks_changeNothingElse()
{
    m_test->window.isRestoring = true;
    m_test->setText("trussLength", u"0"_s);
    m_test->setText("screenWidth", u"abc"_s);
    m_test->window.isRestoring = false;
    const Support::CalculationWatch watch;
    m_test->window.validateInputs();
    QVERIFY(!watch.calculated());
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(m_test->undoDepth(), 0);
    LoadLogic::CalcularReacciones();
}

/// Each of the nine fields renews the marks of all nine.
void TestResults::marks_followEveryField()
{
    const QList<const char*> names{"trussLength",  "trussWeight",  "limitCPL",
                                   "screenWidth",  "screenHeight", "screenWeightM2",
                                   "bumperWeight", "cablePercent", "newLoadMass"};
    for (const char* name : names) {
        QLineEdit* other = m_test->field(name == names.constFirst() ? "trussWeight" : "trussLength");
        other->setStyleSheet(u"color: red"_s);
        m_test->setText(name, u"7"_s);
        QCOMPARE(other->styleSheet(), QString());
        m_test->setText(name, u"8"_s);
    }
}

void TestResults::formatCoordinate_isTheEngines()
{
    for (const float x : {0.0F, 6.0F, 7.5F, 6.0005F})
        QCOMPARE(MainWindow::formatCoordinate(x), LoadLogic::formatCoordinate(x));
    QCOMPARE(MainWindow::formatCoordinate(7.5F), u"+1.50m"_s);
}

QTEST_MAIN(TestResults)
#include "tst_results.moc"
