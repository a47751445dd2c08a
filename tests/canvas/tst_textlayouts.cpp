#include "canvas/TextLayouts.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

// What the layouts paint is held against QPainter itself, to the pixel.
class TestTextLayouts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void pixels_areThoseOfThePainter_data();
    void pixels_areThoseOfThePainter();
    void fontAndDensity_areThoseOfThePainter();
    void resolution_isThatOfTheTarget();
    void moreTextsThanAreKept();
    void pen_isThatOfTheMoment();

private:
    using DrawText = std::function<void(QPainter&, const QRect&, const QString&)>;

    /// The font is set once a painter is there, as the canvas does it.
    static QImage picture(const QString& text, const QRect& box, const QFont& font, double density,
                          const DrawText& draw);
    void compare(const QString& text, const QRect& box, const QFont& font, double density = 1.0);

    QFont m_font{u"Monospace"_s, 8, QFont::Bold};
    TextLayouts m_layouts;
};

QImage TestTextLayouts::picture(const QString& text, const QRect& box, const QFont& font, double density,
                                const DrawText& draw)
{
    QImage image(QSize(200, 80) * density, QImage::Format_RGB32);
    image.setDevicePixelRatio(density);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::yellow);
    painter.setFont(font);
    draw(painter, box, text);
    return image;
}

// Twice each: as it is laid out, and as it is found again.
void TestTextLayouts::compare(const QString& text, const QRect& box, const QFont& font, double density)
{
    const auto byPainter = [](QPainter& painter, const QRect& r, const QString& t) {
        painter.drawText(r, Qt::AlignCenter, t);
    };
    const auto byLayouts = [this](QPainter& painter, const QRect& r, const QString& t) {
        m_layouts.drawCentred(painter, r, t);
    };
    const QImage expected = picture(text, box, font, density, byPainter);
    QCOMPARE(picture(text, box, font, density, byLayouts), expected);
    QCOMPARE(picture(text, box, font, density, byLayouts), expected);
}

void TestTextLayouts::initTestCase()
{
    const auto nothing = [](QPainter&, const QRect&, const QString&) {};
    const auto byLayouts = [this](QPainter& painter, const QRect& r, const QString& t) {
        m_layouts.drawCentred(painter, r, t);
    };
    const QRect box(20, 20, 120, 20);
    QVERIFY(picture(u"1250kg"_s, box, m_font, 1.0, byLayouts)
            != picture(u"1250kg"_s, box, m_font, 1.0, nothing));
}

void TestTextLayouts::pixels_areThoseOfThePainter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRect>("box");

    const QRect box(20, 20, 120, 20);
    QTest::newRow("mass") << u"1250kg"_s << box;
    QTest::newRow("odd width") << u"1250kg"_s << QRect(20, 20, 121, 20);
    QTest::newRow("odd height") << u"1250kg"_s << QRect(20, 20, 120, 19);
    QTest::newRow("another place") << u"1250kg"_s << QRect(37, 31, 120, 20);
    QTest::newRow("position") << u"-3.50m"_s << box;
    QTest::newRow("blank inside") << u"Motor 12"_s << box;
    QTest::newRow("accents") << u"Señal día"_s << box;
    QTest::newRow("combining") << u"Sen\u0303al"_s << box;
    QTest::newRow("ampersand") << u"Luz & sonido"_s << box;
    QTest::newRow("emoji") << u"⚠️ 🔊 PA"_s << box;
    QTest::newRow("Hebrew") << u"מנוע 1 (a)"_s << box;
    QTest::newRow("Arabic") << u"محرك"_s << box;
    QTest::newRow("Chinese") << u"电机"_s << box;
    QTest::newRow("nothing") << QString() << box;
    QTest::newRow("blanks") << u"   "_s << box;
    QTest::newRow("blank in front") << u"  PA"_s << box;
    QTest::newRow("blank behind") << u"PA   "_s << box;
    QTest::newRow("no-break space") << u"PA\u00a0"_s << box;
    QTest::newRow("tab") << u"PA\tL"_s << box;
    QTest::newRow("line break") << u"PA\nL"_s << QRect(20, 10, 120, 60);
    QTest::newRow("line separator") << u"PA\u2028L"_s << QRect(20, 10, 120, 60);
    QTest::newRow("paragraph separator") << u"PA\u2029L"_s << QRect(20, 10, 120, 60);
    QTest::newRow("shorter variant") << u"Motor delantero izquierdo\u009cMDI"_s << QRect(20, 20, 60, 20);
    QTest::newRow("soft hyphen") << u"ante\u00adrior"_s << box;
    QTest::newRow("wider than its box") << u"Motor delantero izquierdo"_s << QRect(40, 20, 60, 20);
    QTest::newRow("as wide as its box") << u"1250kg"_s << QRect(20, 20, 42, 20);
    QTest::newRow("higher than its box") << u"Ágjq"_s << QRect(20, 20, 120, 7);
    QTest::newRow("no box") << u"1250kg"_s << QRect(20, 20, 0, 20);
    QTest::newRow("negative box") << u"1250kg"_s << QRect(90, 20, -60, 20);
}

void TestTextLayouts::pixels_areThoseOfThePainter()
{
    QFETCH(QString, text);
    QFETCH(QRect, box);
    compare(text, box, m_font);
}

void TestTextLayouts::fontAndDensity_areThoseOfThePainter()
{
    const QRect box(20, 20, 140, 40);
    for (const double density : {1.0, 1.5, 2.0}) {
        for (const int points : {6, 7, 9, 20}) {
            for (const QFont::Weight weight : {QFont::Normal, QFont::Bold})
                compare(u"1250kg"_s, box, QFont(u"Monospace"_s, points, weight), density);
        }
    }
}

// The same font in points is larger on a target of more dots to the inch.
void TestTextLayouts::resolution_isThatOfTheTarget()
{
    const auto onPaper = [this](bool byLayouts) {
        QImage image(300, 100, QImage::Format_RGB32);
        image.setDotsPerMeterX(8000);
        image.setDotsPerMeterY(8000);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setPen(Qt::yellow);
        painter.setFont(m_font);
        if (byLayouts)
            m_layouts.drawCentred(painter, image.rect(), u"1250kg"_s);
        else
            painter.drawText(image.rect(), Qt::AlignCenter, u"1250kg"_s);
        return image;
    };
    compare(u"1250kg"_s, {20, 20, 120, 20}, m_font);
    QCOMPARE(onPaper(true), onPaper(false));
}

void TestTextLayouts::moreTextsThanAreKept()
{
    QImage image(200, 80, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setFont(m_font);
    for (int mass = 0; mass < 10'000; ++mass)
        m_layouts.drawCentred(painter, {20, 20, 120, 20}, QString::number(mass) + u"kg"_s);
    painter.end();
    compare(u"1kg"_s, {20, 20, 120, 20}, m_font);
    compare(u"9999kg"_s, {20, 20, 120, 20}, m_font);
}

void TestTextLayouts::pen_isThatOfTheMoment()
{
    const auto inColour = [this](QColor colour) {
        return picture(u"1250kg"_s, {20, 20, 120, 20}, m_font, 1.0,
                       [this, colour](QPainter& painter, const QRect& r, const QString& t) {
                           painter.setPen(colour);
                           m_layouts.drawCentred(painter, r, t);
                       });
    };
    const QImage red = inColour(Qt::red);
    QVERIFY(red != inColour(Qt::green));
    QCOMPARE(inColour(Qt::red), red);
}

QTEST_MAIN(TestTextLayouts)
#include "tst_textlayouts.moc"
