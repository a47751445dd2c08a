#include "app/Appearance.h"
#include "support/Contrast.h"
#include "support/Window.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/FocusRing.h"
#include "ui/InfoWindow.h"
#include "ui/ProjectDescription.h"

#include <QAccessible>
#include <QApplication>
#include <QHash>
#include <QScrollArea>
#include <QSet>

#include <algorithm>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;
using Support::mostFrequentColour;
using Support::strongestContrast;

namespace
{

QString accessibleName(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

/// Emoji lie beyond the basic plane or among the symbols; a reader would read their names aloud.
bool hasEmoji(const QString& text)
{
    const auto points = text.toUcs4();
    return std::any_of(points.cbegin(), points.cend(), [](uint point) {
        return point > 0xFFFF || (point >= 0x2190 && point <= 0x2BFF) || point == 0xFE0F;
    });
}

/// The line edit of a spin box is the box's own affair.
bool isField(const QWidget* widget)
{
    if (qobject_cast<const QAbstractSpinBox*>(widget) != nullptr)
        return true;
    return qobject_cast<const QLineEdit*>(widget) != nullptr
           && qobject_cast<const QAbstractSpinBox*>(widget->parentWidget()) == nullptr;
}

} // namespace

/// The window for who does not see it, does not see it well, or has no mouse.
class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init()
    {
        m_test.emplace();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void everyField_hasALabelAndAName();
    void everyButton_hasANameWithoutEmoji();
    void everyCloseButton_hasAName();
    void canvas_describesTheProject();
    void canvas_tellsADynamicOverload();
    void canvas_tellsAStaticOverload();
    void canvas_tellsAnOverstressedTruss();
    void canvas_tellsThatALoadHasNoAnswer();
    void canvas_tellsEachLoad();
    void canvas_describesManyLoadsBriefly();
    void canvas_describesAnUnstableProject();
    void canvas_describesManyMotorsBriefly();
    void canvas_isNotDescribedAtEveryDragStep();
    void tabKeys_followTheEye();
    void texts_standOut();
    void ring_framesTheFocusedFieldOrButton();
    void ring_framesEveryTabStop();
    void ring_framesTheStopsOfTheReportPage();
    void ring_framesTheStopsOfTheDialogs();
    void ring_isNotDrawnForAPressedPage();
    void ring_isHiddenForTheCanvas();
    void ring_isWhiteAroundTheAccent();
    void ring_isSeen();
    void ring_letsThePointerThrough();
    void ring_followsItsField();

private:
    [[nodiscard]] FocusRing* ring() const
    {
        return m_test->window.findChild<FocusRing*>();
    }
    void showEverything();

    std::optional<Support::TestWindow> m_test;
};

void TestAccessibility::initTestCase()
{
    Appearance::apply(*qobject_cast<QApplication*>(QCoreApplication::instance()));
}

/// Large enough that nothing is scrolled out of sight, with a panel open.
void TestAccessibility::showEverything()
{
    m_test->window.resize(1600, 1200);
    m_test->window.showMotorProperties(0);
    QVERIFY(m_test->activate());
    m_test->window.resize(1600, 1200);
    QCoreApplication::processEvents();
}

void TestAccessibility::everyField_hasALabelAndAName()
{
    QHash<const QWidget*, QString> labels;
    const auto all = m_test->window.findChildren<QLabel*>();
    for (const QLabel* label : all) {
        if (label->buddy() != nullptr)
            labels.insert(label->buddy(), label->text());
    }
    int fields = 0;
    const auto widgets = m_test->window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (!isField(widget))
            continue;
        ++fields;
        const QByteArray tag = widget->objectName().toUtf8();
        QVERIFY2(!labels.value(widget).isEmpty(), tag.constData());
        QVERIFY2(!widget->accessibleName().isEmpty(), tag.constData());
        QVERIFY2(!accessibleName(widget).isEmpty(), tag.constData());
    }
    QCOMPARE(fields, 17); // 3 of the truss, 6 of the screen, 3 of the next load, 3 + 2 of the panels
}

void TestAccessibility::everyButton_hasANameWithoutEmoji()
{
    const auto buttons = m_test->window.findChildren<QPushButton*>();
    QVERIFY(buttons.size() >= 16);
    for (QPushButton* button : buttons) {
        const QString name = accessibleName(button);
        QVERIFY2(name.length() > 1, qUtf8Printable(button->text()));
        QVERIFY2(!hasEmoji(name), qUtf8Printable(name));
    }
}

void TestAccessibility::everyCloseButton_hasAName()
{
    m_test->window.onAddTab();
    const auto buttons = m_test->tabBar()->findChildren<QAbstractButton*>();
    QVERIFY(buttons.size() >= 2);
    for (QAbstractButton* button : buttons)
        QVERIFY2(!accessibleName(button).isEmpty(), button->metaObject()->className());
}

// Half of 12 × 8.4 = 100.8 kg for each motor; (50.4 + 50) × 1.25 = 125.5 kg, (100.4 + 50) × 1.25 = 188 kg
void TestAccessibility::canvas_describesTheProject()
{
    TrussView* canvas = m_test->canvas();
    QVERIFY(!canvas->accessibleName().isEmpty());
    QTRY_COMPARE(canvas->accessibleDescription(),
                 u"Truss de 12.0 m con 2 motores y 0 cargas. Resultado: APTO. Dentro de márgenes."
                 " Sistema estable. Estrés estructural: 3.1 %."
                 " Motor Motor en -6.00m: 50.4 kg, dinámica 125.5 kg de 1000.0 kg, OK."
                 " Motor Motor en +6.00m: 50.4 kg, dinámica 125.5 kg de 1000.0 kg, OK."_s);
    m_test->hangLoad(100.0F, 6.0F);
    LoadLogic::MotorList[0].modelName = u"D8+"_s;
    // (151.2 + 100 × 6 × 6 / 12) / 4800 = 9.4 %
    QTRY_COMPARE(canvas->accessibleDescription(),
                 u"Truss de 12.0 m con 2 motores y 1 carga. Resultado: APTO. Dentro de márgenes."
                 " Sistema estable. Estrés estructural: 9.4 %."
                 " Motor D8+ en -6.00m: 100.4 kg, dinámica 188.0 kg de 1000.0 kg, OK."
                 " Motor Motor en +6.00m: 100.4 kg, dinámica 188.0 kg de 1000.0 kg, OK."
                 " Carga Carga en 0.00m: 100.0 kg."_s);
}

// (50.4 + 132.3 + 50) × 1.25 = 290.875 kg are too much for 250 kg, though 182.7 kg are not
void TestAccessibility::canvas_tellsADynamicOverload()
{
    LoadLogic::MotorList[0].capacity = 250.0F;
    m_test->hangLoad(132.3F, 0.0F);
    QString told;
    QTRY_VERIFY2((told = m_test->canvas()->accessibleDescription())
                     .contains(u" Motor Motor en -6.00m: 182.7 kg, dinámica 290.9 kg de 250.0 kg, EXCESO"
                               " DINÁMICO."_s),
                 qUtf8Printable(told));
    QVERIFY(told.contains(u" Resultado: NO APTO. Superación de carga. Sistema estable."_s));
}

void TestAccessibility::canvas_tellsAStaticOverload()
{
    LoadLogic::MotorList[0].capacity = 100.0F;
    m_test->hangLoad(132.3F, 0.0F);
    QTRY_VERIFY(m_test->canvas()->accessibleDescription().contains(u" de 100.0 kg, EXCESO ESTÁTICO."_s));
}

// (151.2 + 2000 × 6 × 6 / 12) / 4800 = 128.15 %
void TestAccessibility::canvas_tellsAnOverstressedTruss()
{
    m_test->hangLoad(2000.0F, 6.0F);
    QString told;
    QTRY_VERIFY2((told = m_test->canvas()->accessibleDescription()).contains(u" Estrés estructural: 128."_s),
                 qUtf8Printable(told));
    QVERIFY(told.contains(u" %, SOBRECARGA."_s));
}

// A load between two motors at one place has no answer.
void TestAccessibility::canvas_tellsThatALoadHasNoAnswer()
{
    for (LoadLogic::Motor& motor : LoadLogic::MotorList)
        motor.positionX = 6.0F;
    m_test->hangLoad(100.0F, 6.0F);
    LoadLogic::MotorList[0].staticLoad = std::numeric_limits<float>::quiet_NaN();
    const QString told = ProjectDescription::of(LoadLogic::Snapshot());
    QVERIFY2(told.contains(u"nan kg de 1000.0 kg, la carga no se puede calcular."_s), qUtf8Printable(told));
    QVERIFY(told.contains(u" Hay motores cuya carga no se puede calcular."_s));
}

// 1.07 × (10 × 4 + 3 × 4 × 40) = 556.4 kg in 8 segments
void TestAccessibility::canvas_tellsEachLoad()
{
    m_test->addScreen();
    m_test->hangLoad(80.0F, 3.0F);
    LoadLogic::ActiveLoads.last().name = u"PA <izq>"_s;
    m_test->hangLoad(12.5F, 9.25F);
    LoadLogic::ActiveLoads.last().name.clear();
    const QString id = QString::number(LoadLogic::ActiveLoads.constLast().id);
    QString told;
    QTRY_VERIFY2((told = m_test->canvas()->accessibleDescription())
                     .endsWith(u" Pantalla de 4.0 m en 0.00m: 556.4 kg en 8 segmentos."
                               " Carga PA <izq> en -3.00m: 80.0 kg. Carga L"_s
                               + id + u" en +3.25m: 12.5 kg."_s),
                 qUtf8Printable(told));
}

void TestAccessibility::canvas_describesManyLoadsBriefly()
{
    for (int i = 0; i < 25; ++i)
        m_test->hangLoad(1.0F, 6.0F);
    QTRY_VERIFY(m_test->canvas()->accessibleDescription().endsWith(u" Y 5 cargas o pantallas más."_s));
}

void TestAccessibility::canvas_describesAnUnstableProject()
{
    LoadLogic::MotorList.removeLast();
    m_test->window.updateCalculations();
    // (100.8 + 50) × 1.25 = 188.5 kg
    QTRY_COMPARE(
        m_test->canvas()->accessibleDescription(),
        u"Truss de 12.0 m con 1 motor y 0 cargas. Resultado: NO APTO (INESTABLE). Error de voladizo."
        " Sistema inestable. Motor Motor en -6.00m: 100.8 kg, dinámica 188.5 kg de 1000.0 kg, OK."_s);
}

void TestAccessibility::canvas_describesManyMotorsBriefly()
{
    for (int i = 0; i < 1000; ++i)
        LoadLogic::MotorList.append(LoadLogic::MotorList.constFirst());
    m_test->window.updateCalculations();
    QTRY_VERIFY(m_test->canvas()->accessibleDescription().endsWith(u" Y 982 motores más."_s));
}

void TestAccessibility::canvas_isNotDescribedAtEveryDragStep()
{
    TrussView* canvas = m_test->canvas();
    QTRY_VERIFY(!canvas->accessibleDescription().isEmpty());
    const QString before = canvas->accessibleDescription();
    for (int i = 0; i < 100; ++i) {
        LoadLogic::MotorList[0].positionX = static_cast<float>(i) * 0.01F;
        m_test->window.onPositionChanged(-1);
    }
    QCOMPARE(canvas->accessibleDescription(), before);
    QTRY_VERIFY(canvas->accessibleDescription() != before);
}

void TestAccessibility::tabKeys_followTheEye()
{
    showEverything();
    const auto button = [this](const QString& text) { return static_cast<QWidget*>(m_test->button(text)); };
    const auto field = [this](const char* name) { return static_cast<QWidget*>(m_test->field(name)); };
    const QList<QWidget*> expected{button(u"📂 ABRIR"_s),
                                   button(u"💾 GUARDAR"_s),
                                   button(u"🔄 RESTAURAR PROYECTO"_s),
                                   button(u"↩️ DESHACER"_s),
                                   button(u"📘 GUÍA DE USUARIO"_s),
                                   button(u"⚖️ INFO LEGAL"_s),
                                   button(u"⚡ FACTOR DINÁMICO"_s),
                                   button(u"+"_s),
                                   button(u"📊 GENERAR INFORME ESTRUCTURAL"_s),
                                   field("motorName"),
                                   field("motorCapacity"),
                                   field("motorSelfWeight"),
                                   button(u"Eliminar Motor"_s),
                                   field("newLoadMass"),
                                   field("newLoadName"),
                                   m_test->box("loadCount"),
                                   button(u"+ Motor"_s),
                                   button(u"+ Carga"_s),
                                   field("trussLength"),
                                   field("trussWeight"),
                                   field("limitCPL"),
                                   field("screenWidth"),
                                   field("screenHeight"),
                                   field("screenWeightM2"),
                                   field("bumperWeight"),
                                   field("cablePercent"),
                                   m_test->box("screenCount"),
                                   button(u"AÑADIR PANTALLA"_s)};
    expected.constFirst()->setFocus();
    QList<QWidget*> visited;
    for (int i = 0; i < 60 && visited.size() < expected.size(); ++i) {
        QWidget* now = QApplication::focusWidget();
        QVERIFY(now != nullptr);
        if (isField(now) || qobject_cast<QPushButton*>(now) != nullptr)
            visited.append(now);
        QTest::keyClick(now, Qt::Key_Tab);
    }
    QCOMPARE(visited.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i)
        QVERIFY2(visited.at(i) == expected.at(i),
                 qPrintable(QString::number(i) + u' ' + accessibleName(visited.at(i))));
}

// At 4.5 : 1, the web's rule for small texts, with anti-aliased strokes counted at their strongest. The
// white on #008888 of one button is prescribed by the house's colours; it reaches 4.3.
void TestAccessibility::texts_standOut()
{
    showEverything();
    const QImage picture = m_test->window.grab().toImage();
    const auto widgets = m_test->window.findChildren<QWidget*>();
    int checked = 0;
    for (QWidget* widget : widgets) {
        const bool hasText = isField(widget) || qobject_cast<QLabel*>(widget) != nullptr
                             || qobject_cast<QPushButton*>(widget) != nullptr;
        if (!hasText || !widget->isVisible() || widget->objectName() == u"addScreenButton"_s)
            continue;
        const QRect area(widget->mapTo(&m_test->window, QPoint(3, 3)), widget->size() - QSize(6, 6));
        const QColor background = mostFrequentColour(picture, area);
        const double reached = strongestContrast(picture, area, background);
        const QByteArray tag =
            (widget->objectName() + u' ' + accessibleName(widget) + u' ' + QString::number(reached)).toUtf8();
        QVERIFY2(reached >= 4.5, tag.constData());
        ++checked;
    }
    QVERIFY(checked > 40);
}

void TestAccessibility::ring_framesTheFocusedFieldOrButton()
{
    showEverything();
    for (QWidget* widget : {static_cast<QWidget*>(m_test->field("trussLength")),
                            static_cast<QWidget*>(m_test->box("screenCount")),
                            static_cast<QWidget*>(m_test->button(u"+ Motor"_s))}) {
        widget->setFocus();
        QVERIFY(ring()->isVisible());
        QCOMPARE(ring()->framed(), widget);
        QCOMPARE(ring()->geometry(), widget->geometry().adjusted(-2, -2, 2, 2));
        QCOMPARE(ring()->colour(), QColor(0x00, 0xBF, 0xFF));
    }
}

void TestAccessibility::ring_framesEveryTabStop()
{
    showEverything();
    m_test->field("trussLength")->setFocus();
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(ring()->isVisible());
        QCOMPARE(ring()->framed(), QApplication::focusWidget());
    }
}

void TestAccessibility::ring_framesTheStopsOfTheReportPage()
{
    showEverything();
    m_test->window.onGenerateReportClicked();
    m_test->button(u"← VOLVER AL DISEÑO"_s)->setFocus();
    QSet<QWidget*> framed;
    for (int i = 0; i < 8; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(ring()->isVisible());
        QCOMPARE(ring()->framed(), QApplication::focusWidget());
        framed.insert(ring()->framed());
        if (qobject_cast<QAbstractScrollArea*>(ring()->framed()) != nullptr)
            QVERIFY(Support::contrast(ring()->colour(), Qt::white) >= 3.0);
    }
    QCOMPARE(framed.size(), 4); // page, table, back, print
}

void TestAccessibility::ring_framesTheStopsOfTheDialogs()
{
    InfoWindow legal(nullptr);
    DynamicFactorDialog factor(LoadLogic::MotorList, nullptr);
    for (QDialog* dialog : {static_cast<QDialog*>(&legal), static_cast<QDialog*>(&factor)}) {
        dialog->show();
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        const auto* frame = dialog->findChild<FocusRing*>();
        dialog->findChild<QPushButton*>()->setFocus();
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QVERIFY(frame->isVisible());
            QCOMPARE(frame->framed(), QApplication::focusWidget());
            QVERIFY(Support::contrast(frame->colour(), QColor(u"#2D2D2D"_s)) >= 3.0);
        }
    }
}

// A press between the fields gives the page the focus, for the wheel; nobody looks for the keys then.
void TestAccessibility::ring_isNotDrawnForAPressedPage()
{
    showEverything();
    m_test->field("trussLength")->setFocus();
    auto* area = m_test->window.findChild<QScrollArea*>();
    area->setFocus(Qt::MouseFocusReason);
    QVERIFY(area->hasFocus());
    QVERIFY(!ring()->isVisible());
}

void TestAccessibility::ring_isHiddenForTheCanvas()
{
    showEverything();
    m_test->field("trussLength")->setFocus();
    m_test->canvas()->setFocus();
    QVERIFY(!ring()->isVisible());
    m_test->field("trussLength")->setFocus();
    QVERIFY(ring()->isVisible());
    m_test->window.setFocus();
    QVERIFY(!ring()->isVisible());
}

void TestAccessibility::ring_isWhiteAroundTheAccent()
{
    showEverything();
    m_test->button(u"💾 GUARDAR"_s)->setFocus();
    QCOMPARE(ring()->colour(), QColor(Qt::white));
    m_test->button(u"📂 ABRIR"_s)->setFocus();
    QCOMPARE(ring()->colour(), QColor(0x00, 0xBF, 0xFF));
}

void TestAccessibility::ring_isSeen()
{
    showEverything();
    for (QWidget* widget : {static_cast<QWidget*>(m_test->field("trussLength")),
                            static_cast<QWidget*>(m_test->button(u"📂 ABRIR"_s))}) {
        widget->setFocus();
        const QImage picture = m_test->window.grab().toImage();
        const QPoint corner = ring()->mapTo(&m_test->window, QPoint(0, 0));
        for (const QPoint& point :
             {QPoint(0, 0), QPoint(ring()->width() / 2, 0), QPoint(ring()->width() / 2, 1),
              QPoint(ring()->width() - 1, ring()->height() - 1)})
            QCOMPARE(picture.pixelColor(corner + point), QColor(0x00, 0xBF, 0xFF));
    }
    const QString file = qEnvironmentVariable("VELMORA_SCREENSHOT");
    if (!file.isEmpty())
        QVERIFY(m_test->window.grab().save(file));
}

void TestAccessibility::ring_letsThePointerThrough()
{
    showEverything();
    QPushButton* button = m_test->button(u"📂 ABRIR"_s); // the header has no room around it
    button->setFocus();
    QWidget* parent = button->parentWidget();
    QCOMPARE(parent->childAt(button->geometry().center()), button);
    QCOMPARE(parent->childAt(button->geometry().topLeft() + QPoint(1, 1)), button);
}

void TestAccessibility::ring_followsItsField()
{
    showEverything();
    QLineEdit* field = m_test->field("trussLength");
    field->setFocus();
    m_test->window.hidePropertyPanels(); // everything below moves up
    QTRY_COMPARE(ring()->geometry(), field->geometry().adjusted(-2, -2, 2, 2));
    m_test->window.resize(1300, 1100);
    QTRY_COMPARE(ring()->geometry(), field->geometry().adjusted(-2, -2, 2, 2));
}

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
