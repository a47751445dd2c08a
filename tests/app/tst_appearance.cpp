#include "app/Appearance.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QTest>

using namespace Qt::StringLiterals;

class TestAppearance : public QObject
{
    Q_OBJECT

private slots:
    void style_isFusion();
    void names_areSet();
    void icon_isInTheProgram();
    void palette_isDarkInEveryGroup_data();
    void palette_isDarkInEveryGroup();
    void styleSheet_isThatOfTheDarkDesk();
    void numbers_speakWithThePointEverywhere();
};

void TestAppearance::style_isFusion()
{
    // A style sheet wraps the style, so it is asked without one.
    const QString sheet = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    const QString name = QApplication::style()->name();
    qApp->setStyleSheet(sheet);
    QCOMPARE(name, u"fusion"_s);
}

void TestAppearance::names_areSet()
{
    QCOMPARE(QApplication::applicationName(), u"VelmoraMaster"_s);
    QCOMPARE(QApplication::organizationName(), u"Velmora"_s);
}

void TestAppearance::icon_isInTheProgram()
{
    QVERIFY(!QApplication::windowIcon().isNull());
    QVERIFY(!QIcon(u":/icono-app.ico"_s).pixmap(32).isNull());
}

void TestAppearance::palette_isDarkInEveryGroup_data()
{
    QTest::addColumn<QPalette::ColorRole>("role");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("Window") << QPalette::Window << QColor(u"#121212"_s);
    QTest::newRow("WindowText") << QPalette::WindowText << QColor(Qt::white);
    QTest::newRow("Base") << QPalette::Base << QColor(u"#1a1a1a"_s);
    QTest::newRow("AlternateBase") << QPalette::AlternateBase << QColor(u"#121212"_s);
    QTest::newRow("ToolTipBase") << QPalette::ToolTipBase << QColor(Qt::white);
    QTest::newRow("ToolTipText") << QPalette::ToolTipText << QColor(Qt::white);
    QTest::newRow("Text") << QPalette::Text << QColor(Qt::white);
    QTest::newRow("Button") << QPalette::Button << QColor(u"#2d2d2d"_s);
    QTest::newRow("ButtonText") << QPalette::ButtonText << QColor(Qt::white);
    QTest::newRow("BrightText") << QPalette::BrightText << QColor(Qt::red);
    QTest::newRow("Link") << QPalette::Link << QColor(u"#00BFFF"_s);
    QTest::newRow("Highlight") << QPalette::Highlight << QColor(u"#00BFFF"_s);
    QTest::newRow("HighlightedText") << QPalette::HighlightedText << QColor(Qt::black);
}

void TestAppearance::palette_isDarkInEveryGroup()
{
    QFETCH(const QPalette::ColorRole, role);
    QFETCH(const QColor, colour);
    const QPalette palette = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(palette.color(group, role), colour);
}

void TestAppearance::styleSheet_isThatOfTheDarkDesk()
{
    const QString expected =
        u"QMainWindow, QWidget { background-color: #121212; color: white; font-family: 'SF Pro Display, "
        u"Helvetica "
        "Neue, Arial'; }QGroupBox { border: 1px solid #333333; margin-top: 15px; color: #00BFFF; "
        "font-weight: bold; "
        "border-radius: 4px; }QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 3px; "
        "}QLineEdit, "
        "QSpinBox { background-color: #1a1a1a; border: 1px solid #333333; color: white; padding: 4px; "
        "border-radius: 2px; }QSlider::groove:horizontal { border: 1px solid #333333; height: 4px; "
        "background: "
        "#1a1a1a; margin: 2px 0; }QSlider::handle:horizontal { background: #00BFFF; border: 1px solid "
        "#00BFFF; "
        "width: 14px; margin: -5px 0; border-radius: 7px; }QProgressBar { border: 1px solid #333; "
        "background: #222; "
        "border-radius: 3px; text-align: center; color: white; }QProgressBar::chunk { background-color: "
        "#39FF14; "
        "width: 10px; }QTabBar::tab { background: #1a1a1a; color: #888; padding: 6px 15px; "
        "border-top-left-radius: "
        "4px; border-top-right-radius: 4px; border: 1px solid #333; margin-right: 2px; "
        "}QTabBar::tab:selected { "
        "background: #333; color: #00BFFF; border-bottom: none; }"_s;
    QCOMPARE(qApp->styleSheet(), expected);
}

void TestAppearance::numbers_speakWithThePointEverywhere()
{
    QCOMPARE(QLocale().toString(1234.5, 'f', 1), u"1234.5"_s);
}

int main(int argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    TestAppearance test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_appearance.moc"
