#include "canvas/ReferencePainting.h"
#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "support/Slowness.h"
#include "support/Warnings.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

void usualProject()
{
    for (const float x : {0.5F, 6.0F, 11.0F})
        LoadLogic::AddMotor(x);
    LoadLogic::ActiveLoad load;
    load.name = u"PA"_s;
    load.mass = 1200.0F;
    load.positionX = 6.2F; // over the motor in the middle
    LoadLogic::PlaceLoad(load);
    load.type = u"Video_Segment"_s;
    load.groupId = 100;
    load.screenWidth = 3.0F;
    for (const float x : {8.25F, 8.75F, 9.25F, 9.75F, 10.25F, 10.75F}) {
        load.positionX = x;
        LoadLogic::PlaceLoad(load);
    }
    LoadLogic::CalcularReacciones();
}

QImage blank(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

QImage referenceImage(int width, int height)
{
    QImage image = blank(width, height);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    ReferencePainting reference(painter, width, height, width / 1000.0);
    reference.print = true;
    reference.inReport();
    return image;
}

} // namespace

class TestRendering : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Support::failOnWarnings();
        LoadLogic::Reset();
    }

    void image_isThePrintDrawing_data();
    void image_isThePrintDrawing();
    void longArray_looksAsRepeatedForEachSegment();
    void image_hasTwiceTheSizesAtTwiceTheWidth();
    void unstable_showsTheRedChordAndNoWarning();
    void thousandPixels_haveTheGeometryOfTheScreen();
    void printMode_isPutBack();
    void rectangle_isDrawnInTheScreenPaletteOnWhite();
    void longArray_looksTheSameInOtherFormats_data();
    void longArray_looksTheSameInOtherFormats();
    void tinyImage_isStillDrawn();
};

void TestRendering::image_isThePrintDrawing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("report") << QSize(2000, 800);
    QTest::newRow("scale 1") << QSize(1000, 500);
    QTest::newRow("odd") << QSize(1333, 601);
    QTest::newRow("narrow") << QSize(700, 400);
}

void TestRendering::image_isThePrintDrawing()
{
    QFETCH(QSize, size);
    usualProject();
    TrussView view;
    const QImage image = view.renderToImage(size.width(), size.height());
    QCOMPARE(image.format(), QImage::Format_RGB32);
    QCOMPARE(image, referenceImage(size.width(), size.height()));
}

void TestRendering::longArray_looksAsRepeatedForEachSegment()
{
    LoadLogic::TrussLength = 30.0F;
    LoadLogic::ActiveLoad segment;
    segment.type = u"Video_Segment"_s;
    segment.groupId = 100;
    segment.screenWidth = 25.3F;
    for (float x = 2.0F; x < 27.0F; x += 0.5F) {
        segment.positionX = x;
        LoadLogic::PlaceLoad(segment);
    }
    TrussView view;
    QCOMPARE(view.renderToImage(700, 400), referenceImage(700, 400));
    QCOMPARE(view.renderToImage(2000, 800), referenceImage(2000, 800));
}

// Scale 2: chord 8 px thick around y = 400, margins of 160 px.
void TestRendering::image_hasTwiceTheSizesAtTwiceTheWidth()
{
    TrussView view;
    const QImage image = view.renderToImage(2000, 800);
    const int x = 160 + 35; // off the lattice's crossings
    QCOMPARE(image.pixelColor(x, 396), QColor(Qt::black));
    QCOMPARE(image.pixelColor(x, 403), QColor(Qt::black));
    QVERIFY(image.pixelColor(x, 394) != QColor(Qt::black));
    QVERIFY(image.pixelColor(x, 405) != QColor(Qt::black));
    QCOMPARE(image.pixelColor(160, 360), QColor(Qt::black)); // end post
    QCOMPARE(image.pixelColor(150, 360), QColor(Qt::white));
    QCOMPARE(image.pixelColor(1840, 360), QColor(Qt::black));
}

void TestRendering::unstable_showsTheRedChordAndNoWarning()
{
    LoadLogic::AddMotor(6.0F);
    QVERIFY(LoadLogic::isUnstable);
    TrussView view;
    view.blinkOn = true;
    const QImage image = view.renderToImage(2000, 800);
    QCOMPARE(image.pixelColor(195, 400), QColor(Qt::red));
    QCOMPARE(image.pixelColor(5, 5), QColor(Qt::white));
    QCOMPARE(image, referenceImage(2000, 800));
}

void TestRendering::thousandPixels_haveTheGeometryOfTheScreen()
{
    usualProject();
    LoadLogic::ActiveLoads.removeIf([](const LoadLogic::ActiveLoad& load) { return load.groupId != -1; });
    LoadLogic::MotorList.removeAt(1); // nothing overlaps, so the order of loads and motors does not show
    TrussView view;
    view.resize(1000, 500);
    view.printMode = true;
    QImage screen(1000, 500, QImage::Format_RGB32);
    view.render(&screen);
    QCOMPARE(view.renderToImage(1000, 500), screen);
}

void TestRendering::printMode_isPutBack()
{
    TrussView view;
    view.resize(600, 400);
    const auto dark = [&view] {
        QImage image(view.size(), QImage::Format_RGB32);
        view.render(&image);
        return image.pixelColor(2, 2) == QColor(0x12, 0x12, 0x12);
    };
    view.renderToImage(500, 300);
    QVERIFY(!view.printMode);
    QVERIFY(dark());
    view.printMode = true;
    view.renderToImage(500, 300);
    QVERIFY(view.printMode);
}

void TestRendering::rectangle_isDrawnInTheScreenPaletteOnWhite()
{
    usualProject();
    const QRect rect(40, 30, 900, 420);
    QImage drawn(1000, 500, QImage::Format_RGB32);
    drawn.fill(Qt::darkGreen);
    QImage expected = drawn.copy();
    {
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::magenta);
        TrussView view;
        view.renderTo(painter, rect);
        QVERIFY(!view.printMode);
        QCOMPARE(painter.pen().color(), QColor(Qt::magenta));
        QVERIFY(!painter.hasClipping());
    }
    {
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(rect);
        painter.translate(40, 30);
        painter.fillRect(0, 0, 900, 420, Qt::white);
        ReferencePainting(painter, 900, 420, 0.9).inRectangle();
    }
    QCOMPARE(drawn, expected);
    QCOMPARE(drawn.pixelColor(39, 29), QColor(Qt::darkGreen));
}

void TestRendering::longArray_looksTheSameInOtherFormats_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("24 bits") << QImage::Format_RGB888;
    QTest::newRow("16 bits") << QImage::Format_RGB16;
    QTest::newRow("64 bits") << QImage::Format_RGBX64;
}

// Each repetition of the array darkens the box behind its name: in 30 of them to black.
void TestRendering::longArray_looksTheSameInOtherFormats()
{
    QFETCH(const QImage::Format, format);
    LoadLogic::ActiveLoad segment;
    segment.type = u"Video_Segment"_s;
    segment.groupId = 100;
    segment.screenWidth = 4.0F;
    segment.positionX = 10.0F;
    for (int i = 0; i < 30; ++i)
        LoadLogic::PlaceLoad(segment);

    const QRect rect(0, 0, 1000, 500);
    TrussView view;
    QImage drawn(rect.size(), format);
    QPainter painter(&drawn);
    view.renderTo(painter, rect);
    painter.end();

    // Within the frame, on the name's box: the name's letters are 5 px further in.
    const QRect box = QFontMetrics(QFont(u"Monospace"_s, 8, QFont::Bold), &drawn).boundingRect(u"LED"_s);
    const QPoint centre(80 + 700, 250 + 5 + 20);
    const QColor corner = drawn.pixelColor(centre - QPoint(box.width() / 2 + 2, 0));
    QVERIFY2(corner.red() < 10 && corner.green() < 10 && corner.blue() < 10, qPrintable(corner.name()));
}

// Fonts of no size are the toolkit's affair.
void TestRendering::tinyImage_isStillDrawn()
{
    usualProject();
    TrussView view;
    const QImage image = view.renderToImage(60, 40);
    QCOMPARE(image.size(), QSize(60, 40));
    QVERIFY(image != blank(60, 40));
}

QTEST_MAIN(TestRendering)
#include "tst_rendering.moc"
