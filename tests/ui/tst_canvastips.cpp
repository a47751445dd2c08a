#include "app/Appearance.h"
#include "engine/Numbers.h"
#include "support/Contrast.h"
#include "support/Window.h"

#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

QWidget* shownTip()
{
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->inherits("QTipLabel") && widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// The lines of the tip as who reads it sees them; nothing where there is none.
QStringList shownLines()
{
    if (!QToolTip::isVisible())
        return {};
    QTextDocument document;
    document.setHtml(QToolTip::text());
    return document.toPlainText().split(u'\n');
}

} // namespace

/// What the canvas tells of things under the pointer, and of what is selected.
class TestCanvasTips : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void hover_tellsAMotor();
    void hover_tellsAllThatIsStacked();
    void hover_tellsAnArray();
    void hover_showsNamesAsTheyAre();
    void hover_overNothing_tellsNothing();
    void hover_inADrag_tellsNothing();
    void keys_tellWhatIsSelected();
    void keys_tellWhereItGoes();
    void keys_thatSelectNothing_hideTheTip();
    void tip_standsOut();

private:
    /// Hovers over a thing at `x` [m], `below` the truss [px].
    void hover(float x, int below) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(m_test->canvas(), key, modifiers);
    }
    void name(const QString& text) const
    {
        LoadLogic::ActiveLoads.last().name = text;
    }

    std::optional<Support::TestWindow> m_test;
};

void TestCanvasTips::initTestCase()
{
    Appearance::apply(*qobject_cast<QApplication*>(QCoreApplication::instance()));
}

void TestCanvasTips::init()
{
    m_test.emplace();
    m_test->window.resize(1600, 1200);
    QVERIFY(m_test->activate());
    m_test->canvas()->setFocus();
}

void TestCanvasTips::cleanup()
{
    QToolTip::hideText();
    m_test.reset();
    QTRY_VERIFY(shownTip() == nullptr);
}

void TestCanvasTips::hover(float x, int below) const
{
    TrussView* canvas = m_test->canvas();
    const auto span = static_cast<float>(canvas->width() - 2 * canvas->marginX);
    const QPoint point(canvas->marginX
                           + Numbers::toPixel(static_cast<double>(x / LoadLogic::TrussLength * span)),
                       canvas->height() / 2 + below);
    QHelpEvent event(QEvent::ToolTip, point, canvas->mapToGlobal(point));
    QCoreApplication::sendEvent(canvas, &event);
}

// 12 × 8.4 / 2 = 50.4 kg; (50.4 + 50) × 1.25 = 125.5 kg
void TestCanvasTips::hover_tellsAMotor()
{
    const QStringList told{u"Motor Motor en -6.00m: 50.4 kg, dinámica 125.5 kg de 1000.0 kg, OK."_s};
    for (const int below : {-115, -60, -5, 30}) { // its place, its body, its grip on either side
        hover(0.0F, below);
        QCOMPARE(shownLines(), told);
    }
}

void TestCanvasTips::hover_tellsAllThatIsStacked()
{
    m_test->hangLoad(80.0F, 12.0F);
    name(u"Altavoz de retardo con un nombre que el dibujo corta"_s);
    m_test->hangLoad(20.0F, 12.0F);
    name(u"Luz"_s);
    hover(12.0F, 105);
    QCOMPARE(
        shownLines(),
        (QStringList{
            u"Carga Altavoz de retardo con un nombre que el dibujo corta en +6.00m: 80.0 kg. Truss: OK."_s,
            u"Carga Luz en +6.00m: 20.0 kg. Truss: OK."_s,
            u"Motor Motor en +6.00m: 150.4 kg, dinámica 250.5 kg de 1000.0 kg, OK."_s}));
}

void TestCanvasTips::hover_tellsAnArray()
{
    m_test->addScreen();
    hover(6.5F, 20);
    QCOMPARE(shownLines(), QStringList{u"Pantalla de 4.0 m en 0.00m: 556.4 kg en 8 segmentos. Truss: OK."_s});
}

void TestCanvasTips::hover_showsNamesAsTheyAre()
{
    m_test->hangLoad(80.0F, 6.0F);
    name(u"<b>PA</b> & <img src=x> %1"_s);
    hover(6.0F, 20);
    QCOMPARE(shownLines(), QStringList{u"Carga <b>PA</b> & <img src=x> %1 en 0.00m: 80.0 kg. Truss: OK."_s});
}

void TestCanvasTips::hover_overNothing_tellsNothing()
{
    hover(0.0F, -60);
    QVERIFY(!shownLines().isEmpty());
    hover(3.0F, 0);
    QTRY_VERIFY(shownTip() == nullptr);
}

void TestCanvasTips::hover_inADrag_tellsNothing()
{
    TrussView* canvas = m_test->canvas();
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(canvas->marginX, canvas->height() / 2));
    hover(0.0F, -60);
    QVERIFY(shownTip() == nullptr);
    QTest::mouseRelease(canvas, Qt::LeftButton);
}

void TestCanvasTips::keys_tellWhatIsSelected()
{
    m_test->hangLoad(80.0F, 6.0F);
    name(u"<b>PA</b>"_s);
    m_test->addScreen();
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    QCOMPARE(shownLines(),
             (QStringList{u"Carga <b>PA</b> en 0.00m: 80.0 kg. Truss: OK."_s,
                          u"Pantalla de 4.0 m en 0.00m: 556.4 kg en 8 segmentos. Truss: OK."_s}));
    press(Qt::Key_Right); // what is selected comes first
    QVERIFY(shownLines().constFirst().startsWith(u"Pantalla de 4.0 m "_s));
    QCOMPARE(shownLines().size(), 2);
}

void TestCanvasTips::keys_tellWhereItGoes()
{
    press(Qt::Key_Home);
    press(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
    QVERIFY(shownLines().constFirst().startsWith(u"Motor Motor en -5.99m: "_s));
}

void TestCanvasTips::keys_thatSelectNothing_hideTheTip()
{
    press(Qt::Key_Home);
    QVERIFY(shownTip() != nullptr);
    press(Qt::Key_Delete);
    QTRY_VERIFY(shownTip() == nullptr);
}

// 4.5 : 1 is the web's rule for small texts, 3 : 1 that for frames.
void TestCanvasTips::tip_standsOut()
{
    press(Qt::Key_Home);
    QTRY_VERIFY(shownTip() != nullptr);
    const QImage picture = shownTip()->grab().toImage();
    const QColor ground = Support::mostFrequentColour(picture, picture.rect());
    QVERIFY(Support::strongestContrast(picture, picture.rect().adjusted(2, 2, -2, -2), ground) >= 4.5);
    const QColor edge = picture.pixelColor(0, picture.height() / 2);
    QVERIFY2(Support::contrast(edge, QColor(u"#121212"_s)) >= 3.0, qPrintable(edge.name()));
}

QTEST_MAIN(TestCanvasTips)
#include "tst_canvastips.moc"
