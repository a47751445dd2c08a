#include "canvas/RecordingWindow.h"
#include "canvas/ReferencePainting.h"
#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "support/Dialogs.h"
#include "support/Slowness.h"
#include "support/Warnings.h"

#include <QInputDialog>
#include <QMouseEvent>
#include <QTest>

#include <cmath>
#include <ctime>
#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

LoadLogic::ActiveLoad segmentOf(int groupId, float width)
{
    LoadLogic::ActiveLoad segment;
    segment.type = u"Video_Segment"_s;
    segment.groupId = groupId;
    segment.mass = 50.0F;
    segment.screenWidth = width;
    segment.screenHeight = 3.0F;
    return segment;
}

/// `count` segments every half metre from `first` [m] on.
void hangScreen(int groupId, float width, float first, int count)
{
    LoadLogic::ActiveLoad segment = segmentOf(groupId, width);
    for (int i = 0; i < count; ++i) {
        segment.positionX = first + 0.5F * static_cast<float>(i);
        LoadLogic::ActiveLoads.append(segment);
        LoadLogic::ActiveLoads.last().id = LoadLogic::NextLoadId++;
    }
}

/// What `work` takes of the processor [ms], whatever else the machine does meanwhile.
double processorTime(const std::function<void()>& work)
{
    const std::clock_t begin = std::clock();
    work();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// Moves the pointer over a canvas that need not be shown.
void movePointer(TrussView& view, QPoint point)
{
    QMouseEvent event(QEvent::MouseMove, point, point, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&view, &event);
}

QImage pictureOf(TrussView& view, qreal ratio = 1.0)
{
    QImage image(view.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    view.render(&image);
    return image;
}

QImage referenceOnScreen(QSize size, int selectedLoadId = -2, qreal ratio = 1.0)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    ReferencePainting reference(painter, size.width(), size.height(), 1.0);
    reference.selectedLoadId = selectedLoadId;
    reference.onScreen();
    return image;
}

} // namespace

/// Projects that nobody builds but that a file or a slip of the hand can bring.
class TestExtremes : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void latticeOfALongTruss_hasACrossPerMetre_data();
    void latticeOfALongTruss_hasACrossPerMetre();
    void latticeBeyondTwoMetresAPixel_drawsEachPairOfColumnsOnce();
    void narrowCanvas_isDrawnInsideOut_data();
    void narrowCanvas_isDrawnInsideOut();
    void screenOnALongTruss_marksEachMetre_data();
    void screenBeyondAMetreAPixel_isHatched();
    void screenOnALongTruss_marksEachMetre();
    void screenWiderThanTheTruss_runsOutOfTheCanvas();
    void segmentOfNoArray_drawsNothing();
    void loadNumberedLikeNone_countsAsSelectedInAWindow();
    void longArray_onADensePixelGrid();
    void longArray_inASmallRectangle_data();
    void longArray_inASmallRectangle();
    void longArray_onImagesOfAnyFormat_data();
    void longArray_onImagesOfAnyFormat();
    void hugeScreens_paintAtOnce_data();
    void hugeScreens_paintAtOnce();
    void manySegments_areRenderedInAMoment();

    void undoWhileDragging_keepsTheGrabbedMotor();
    void dragBegunElsewhere_movesThatMotor();
    void indexBeyondTheMotors_movesNothing();
    void dragOnAnImpossibleTruss_keepsPositionsFinite_data();
    void dragOnAnImpossibleTruss_keepsPositionsFinite();
    void positionOfAnImpossibleTruss_canBeAsked_data();
    void positionOfAnImpossibleTruss_canBeAsked();
};

void TestExtremes::init()
{
    Support::failOnWarnings();
    LoadLogic::Reset();
}

// Span 840 px: up to two metres a pixel.
void TestExtremes::latticeOfALongTruss_hasACrossPerMetre_data()
{
    QTest::addColumn<float>("length");
    for (const float length : {839.5F, 840.0F, 841.0F, 1234.5F, 1680.0F})
        QTest::addRow("%g m", static_cast<double>(length)) << length;
}

void TestExtremes::latticeOfALongTruss_hasACrossPerMetre()
{
    QFETCH(float, length);
    LoadLogic::TrussLength = length;
    TrussView view;
    view.resize(1000, 400);
    QCOMPARE(pictureOf(view), referenceOnScreen(view.size()));
}

// From there on every pixel holds a whole metre and a metre's end, so the columns p and p, and p and
// p + 1 are crossed for every p, however long the truss is.
void TestExtremes::latticeBeyondTwoMetresAPixel_drawsEachPairOfColumnsOnce()
{
    QImage expected(1000, 400, QImage::Format_RGB32);
    expected.fill(QColor(0x12, 0x12, 0x12));
    {
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0x44, 0x44, 0x44), 1));
        for (int x = 80; x < 920; ++x) {
            for (const int end : {x, x + 1}) {
                painter.drawLine(x, 190, end, 210);
                painter.drawLine(x, 210, end, 190);
            }
        }
    }
    const QRect belowTheChord(90, 203, 390, 10); // between the end post and the axis
    TrussView view;
    view.resize(1000, 400);
    for (const float length : {1e4F, 3e7F, 1e30F}) {
        LoadLogic::TrussLength = length;
        QCOMPARE(pictureOf(view).copy(belowTheChord), expected.copy(belowTheChord));
    }
}

// Narrower than its margins the canvas has a negative span, and the truss runs from right to left.
void TestExtremes::narrowCanvas_isDrawnInsideOut_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {100, 150, 200})
        QTest::addRow("%d px", width) << width;
}

void TestExtremes::narrowCanvas_isDrawnInsideOut()
{
    QFETCH(int, width);
    LoadLogic::AddMotor(3.0F);
    LoadLogic::AddLoad(4.0F);
    hangScreen(100, 2.0F, 8.25F, 4);
    LoadLogic::CalcularReacciones();
    TrussView view;
    view.resize(width, 400);
    QCOMPARE(view.width(), width);
    QCOMPARE(pictureOf(view), referenceOnScreen(view.size()));
}

void TestExtremes::screenOnALongTruss_marksEachMetre_data()
{
    QTest::addColumn<float>("length");
    for (const float length : {300.5F, 839.5F, 840.0F})
        QTest::addRow("%g m", static_cast<double>(length)) << length;
}

void TestExtremes::screenOnALongTruss_marksEachMetre()
{
    QFETCH(float, length);
    LoadLogic::TrussLength = length;
    hangScreen(100, 0.7F * length, 0.5F * length, 1);
    TrussView view;
    view.resize(1000, 400);
    QCOMPARE(pictureOf(view), referenceOnScreen(view.size()));
}

// Lines in every column merge into bands: 3 px of dash, 4 px of gap, from half a pixel above the frame.
void TestExtremes::screenBeyondAMetreAPixel_isHatched()
{
    LoadLogic::TrussLength = 10'000.0F;
    hangScreen(100, 9000.0F, 5000.0F, 1);
    TrussView view;
    view.resize(1000, 400);
    const QImage image = pictureOf(view);
    const QColor background(0x12, 0x12, 0x12);
    const QColor band = image.pixelColor(300, 213); // the frame's top is 205, its second dash 211.5 to 214.5
    QVERIFY(band.green() > 120 && band.red() < 12);
    for (int x = 130; x < 400; ++x) { // between the frame's edge and its label
        QCOMPARE(image.pixelColor(x, 213), band);
        QCOMPARE(image.pixelColor(x, 216), background);
        QCOMPARE(image.pixelColor(x, 220), band);
    }
    QCOMPARE(image.pixelColor(110, 220), background); // left of it
}

// Its edges and most of its metre lines lie outside; those in the margins are seen.
void TestExtremes::screenWiderThanTheTruss_runsOutOfTheCanvas()
{
    hangScreen(100, 4000.0F, 6.25F, 3);
    TrussView view;
    view.resize(1000, 400);
    QCOMPARE(pictureOf(view), referenceOnScreen(view.size()));
}

void TestExtremes::segmentOfNoArray_drawsNothing()
{
    QImage image(1000, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage blank = image.copy();
    QPainter painter(&image);
    TrussView view;
    view.drawScreen(painter, segmentOf(7, 2.0F), 1000, 400, 1.0);
    QCOMPARE(image, blank);
    hangScreen(100, 2.0F, 6.0F, 4);
    view.drawScreen(painter, segmentOf(7, 2.0F), 1000, 400, 1.0);
    QCOMPARE(image, blank);
}

// A file may number a load -1, the number of no selection. Arrays are asked for a real one.
void TestExtremes::loadNumberedLikeNone_countsAsSelectedInAWindow()
{
    LoadLogic::AddLoad(4.0F);
    LoadLogic::ActiveLoads.first().id = -1;
    hangScreen(100, 2.0F, 8.25F, 4);
    LoadLogic::ActiveLoads.last().id = -1;

    RecordingWindow window;
    auto* view = new TrussView;
    window.setCentralWidget(view);
    window.setFixedSize(1000, 400);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(pictureOf(*view), referenceOnScreen({1000, 400}, -1));

    TrussView alone;
    alone.resize(1000, 400);
    QCOMPARE(pictureOf(alone), referenceOnScreen(alone.size()));
}

void TestExtremes::longArray_onADensePixelGrid()
{
    hangScreen(100, 10.3F, 1.25F, 40);
    TrussView view;
    view.resize(900, 400);
    QCOMPARE(pictureOf(view, 2.0), referenceOnScreen(view.size(), -2, 2.0));
}

// The box behind "LED" keeps its margins, and its font below a point falls back to a large one, so the
// box outgrows the frame.
void TestExtremes::longArray_inASmallRectangle_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {90, 120, 300, 650, 1001})
        QTest::addRow("%d px", width) << width;
}

void TestExtremes::longArray_inASmallRectangle()
{
    QFETCH(int, width);
    hangScreen(100, 10.3F, 1.25F, 40);
    QImage drawn(width + 20, 300, QImage::Format_RGB32);
    drawn.fill(Qt::darkGreen);
    QImage expected = drawn.copy();
    {
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        TrussView().renderTo(painter, QRect(10, 5, width, 290));
    }
    {
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(10, 5, width, 290);
        painter.translate(10, 5);
        painter.fillRect(0, 0, width, 290, Qt::white);
        ReferencePainting(painter, width, 290, width / 1000.0).inRectangle();
    }
    QCOMPARE(drawn, expected);
}

void TestExtremes::longArray_onImagesOfAnyFormat_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("8 bits") << QImage::Format_Grayscale8;
    QTest::newRow("16 bits") << QImage::Format_RGB16;
    QTest::newRow("24 bits") << QImage::Format_RGB888;
    QTest::newRow("32 bits") << QImage::Format_ARGB32_Premultiplied;
    QTest::newRow("64 bits") << QImage::Format_RGBA64_Premultiplied;
}

void TestExtremes::longArray_onImagesOfAnyFormat()
{
    QFETCH(QImage::Format, format);
    hangScreen(100, 10.3F, 1.25F, 40);
    QImage drawn(1000, 300, format);
    drawn.fill(Qt::white);
    QImage expected = drawn.copy();
    {
        QPainter painter(&drawn);
        painter.setRenderHint(QPainter::Antialiasing);
        TrussView().renderTo(painter, drawn.rect());
    }
    {
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        ReferencePainting(painter, 1000, 300, 1.0).inRectangle();
    }
    QCOMPARE(drawn, expected);
}

void TestExtremes::hugeScreens_paintAtOnce_data()
{
    QTest::addColumn<float>("width");
    QTest::addColumn<float>("length");
    for (const float width : {1e4F, 1e9F, std::numeric_limits<float>::max(), INFINITE, -1e9F, NOT_A_NUMBER}) {
        for (const float length : {12.0F, 1e-3F, 1e9F, 0.0F, -5.0F, INFINITE, NOT_A_NUMBER})
            QTest::addRow("%g m on %g m", static_cast<double>(width), static_cast<double>(length))
                << width << length;
    }
}

void TestExtremes::hugeScreens_paintAtOnce()
{
    QFETCH(float, width);
    QFETCH(float, length);
    for (int group = 100; group < 105; ++group)
        hangScreen(group, width, static_cast<float>(group), 8);
    LoadLogic::TrussLength = length;
    LoadLogic::CalcularReacciones();
    TrussView view;
    view.resize(1600, 900);
    pictureOf(view); // fonts are loaded with the first picture
    const double spent = processorTime([&] { pictureOf(view); });
    QVERIFY2(spent < 50.0 * Support::slowness(), qPrintable(QString::number(spent)));
}

// 100 screens of 200 segments, for the report.
void TestExtremes::manySegments_areRenderedInAMoment()
{
    LoadLogic::TrussLength = 100.0F;
    for (int i = 0; i < 100; ++i)
        hangScreen(100 + i, 100.0F, static_cast<float>(i), 200);
    TrussView view;
    const double spent = processorTime([&] { view.renderToImage(2000, 800); });
    QVERIFY2(spent < 2000.0 * Support::slowness(), qPrintable(QString::number(spent)));
}

// Margin 80, span 1000, 10 m: 100 px a metre. The motor from 2 m passes the one at 6 m; then the undone
// project has it at 2 m again, first in the list.
void TestExtremes::undoWhileDragging_keepsTheGrabbedMotor()
{
    LoadLogic::TrussLength = 10.0F;
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(6.0F);
    const auto before = LoadLogic::MotorList;
    RecordingWindow window;
    auto* view = new TrussView;
    window.setCentralWidget(view);
    window.setFixedSize(1160, 600);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QTest::mousePress(view, Qt::LeftButton, {}, {280, 300});
    QTest::mouseMove(view, {880, 300});
    QCOMPARE(view->draggedMotor, 1);
    LoadLogic::MotorList = before;
    QTest::mouseMove(view, {480, 300});
    QCOMPARE(view->draggedMotor, 0);
    QCOMPARE(LoadLogic::MotorList.at(0).id, 1);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 4.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 6.0F);
    QTest::mouseRelease(view, Qt::LeftButton, {}, {480, 300});
}

void TestExtremes::dragBegunElsewhere_movesThatMotor()
{
    LoadLogic::TrussLength = 10.0F;
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(6.0F);
    TrussView view;
    view.resize(1160, 600);
    view.draggedMotor = 1;
    movePointer(view, {780, 300});
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 7.0F);
    QCOMPARE(view.draggedMotor, 1);
}

void TestExtremes::indexBeyondTheMotors_movesNothing()
{
    LoadLogic::AddMotor(2.0F);
    TrussView view;
    view.resize(1160, 600);
    view.draggedMotor = 5;
    movePointer(view, {780, 300});
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
    QCOMPARE(view.draggedMotor, -1);
}

void TestExtremes::dragOnAnImpossibleTruss_keepsPositionsFinite_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<int>("width");
    for (const float length : {0.0F, -5.0F, 1e-30F, 12.0F, 1e9F, std::numeric_limits<float>::max()}) {
        for (const int width : {100, 160, 1000})
            QTest::addRow("%g m on %d px", static_cast<double>(length), width) << length << width;
    }
}

void TestExtremes::dragOnAnImpossibleTruss_keepsPositionsFinite()
{
    QFETCH(float, length);
    QFETCH(int, width);
    LoadLogic::TrussLength = length;
    LoadLogic::AddMotor(0.0F);
    LoadLogic::AddLoad(0.0F);
    hangScreen(100, 2.0F, 0.25F, 4);
    TrussView view;
    view.resize(width, 400);
    for (int kind = 0; kind < 3; ++kind) {
        view.draggedMotor = kind == 0 ? 0 : -1;
        view.draggedGroup = kind == 1 ? 100 : -1;
        view.draggedLoad = kind == 2 ? LoadLogic::ActiveLoads.first().id : -1;
        for (const int x : {-30, 80, 5000, 0, width})
            movePointer(view, {x, 200});
        QTest::mouseRelease(&view, Qt::LeftButton, {}, {1, 1});
    }
    const float end = std::max(0.0F, length);
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        QVERIFY(motor.positionX >= 0.0F && motor.positionX <= end);
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
        QVERIFY(load.positionX >= 0.0F && load.positionX <= end);
}

void TestExtremes::positionOfAnImpossibleTruss_canBeAsked_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("position");
    for (const float length :
         {0.0F, -5.0F, 1e9F, std::numeric_limits<float>::max(), INFINITE, NOT_A_NUMBER}) {
        for (const float position : {0.0F, 1e30F, INFINITE, NOT_A_NUMBER})
            QTest::addRow("%g m, at %g m", static_cast<double>(length), static_cast<double>(position))
                << length << position;
    }
}

void TestExtremes::positionOfAnImpossibleTruss_canBeAsked()
{
    QFETCH(float, length);
    QFETCH(float, position);
    LoadLogic::AddLoad(0.0F);
    LoadLogic::TrussLength = length;
    LoadLogic::ActiveLoads.first().positionX = position;
    TrussView view;
    view.resize(1000, 400);
    view.show();
    const TrussGeometry geometry(1000, 400, 1.0, 80, length);
    const QPoint label = geometry.loadLabelBox(LoadLogic::ActiveLoads.first()).center();

    Support::Answer<QInputDialog> accept([](QInputDialog& dialog) { dialog.accept(); });
    QMouseEvent press(QEvent::MouseButtonPress, label, label, Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&view, &press);
    QVERIFY(accept.given());
    QVERIFY(!std::isnan(LoadLogic::ActiveLoads.first().positionX));
    QVERIFY(LoadLogic::ActiveLoads.first().positionX >= 0.0F);
}

QTEST_MAIN(TestExtremes)
#include "tst_extremes.moc"
