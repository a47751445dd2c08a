#include "canvas/RecordingWindow.h"
#include "canvas/ReferencePainting.h"
#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "engine/Numbers.h"
#include "support/Slowness.h"
#include "support/Warnings.h"

#include <QMainWindow>
#include <QTest>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr QSize SIZE(1100, 520);

int hangLoad(float mass, float x, const QString& name)
{
    LoadLogic::ActiveLoad load;
    load.mass = mass;
    load.positionX = x;
    load.name = name;
    return LoadLogic::PlaceLoad(load);
}

/// Segments every half metre around `centre`, typed `type`.
int hangScreen(int groupId, float centre, float width, const QString& type)
{
    LoadLogic::ActiveLoad segment;
    segment.mass = 50.0F;
    segment.type = type;
    segment.groupId = groupId;
    segment.screenWidth = width;
    segment.screenHeight = 3.0F;
    int id = -1;
    for (float x = centre - width / 2.0F + 0.25F; x < centre + width / 2.0F; x += 0.5F) {
        segment.positionX = x;
        id = LoadLogic::PlaceLoad(segment);
    }
    return id;
}

void hangMotors(std::initializer_list<float> positions)
{
    for (const float x : positions)
        LoadLogic::AddMotor(x);
}

QImage pictureOf(TrussView& view)
{
    QImage image(view.size(), QImage::Format_RGB32);
    view.render(&image);
    return image;
}

QImage referenceOnScreen(const std::function<void(ReferencePainting&)>& set, QSize size = SIZE)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    ReferencePainting reference(painter, size.width(), size.height(), 1.0);
    set(reference);
    reference.onScreen();
    return image;
}

} // namespace

class TestDrawing : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Support::failOnWarnings();
        LoadLogic::Reset();
    }

    void scene_isPaintedAsWrittenDown_data();
    void scene_isPaintedAsWrittenDown();
    void loadWithoutWindow_isNotSelected();
    void selectedLoad_isOutlinedInCyan();
    void selectedSegment_framesItsWholeArrayInWhite();
    void overloadedLabel_isHiddenInTheOffHalf();
    void warning_showsInTheOnHalfOnly();
    void longArray_looksAsRepeatedForEachSegment();
    void screenOfAnUnknownGroup_isNotDrawn();
    void lattice_hasOneCrossPerMetre_data();
    void lattice_hasOneCrossPerMetre();
    void chord_tellsTheStress_data();
    void chord_tellsTheStress();
    void extremeTruss_paintsAtOnce_data();
    void extremeTruss_paintsAtOnce();
    void painting_changesNothing();
    void manySegments_paintInBelowASecond();
    void canvas_isSetUp();
};

namespace
{

void usualProject()
{
    hangMotors({0.5F, 6.0F, 11.0F});
    hangLoad(500.0F, 3.0F, u"PA izq"_s);
    hangLoad(12.5F, 9.3F, u""_s);
    hangScreen(100, 6.0F, 4.0F, u"Video_Segment"_s);
    LoadLogic::CalcularReacciones();
}

using BuildScene = void (*)();

const std::initializer_list<std::pair<const char*, BuildScene>> SCENES = {
    {"nothing but the truss", [] {}},
    {"usual project", usualProject},
    {"12.5 m",
     [] {
         LoadLogic::TrussLength = 12.5F;
         hangMotors({0.0F, 12.5F});
     }},
    {"12.005 m", [] { LoadLogic::TrussLength = 12.005F; }},
    {"0.4 m", [] { LoadLogic::TrussLength = 0.4F; }},
    {"0.01 m", [] { LoadLogic::TrussLength = 0.01F; }},
    {"two screens over each other",
     [] {
         hangScreen(100, 5.3F, 4.0F, u"Video"_s);
         hangScreen(101, 6.0F, 2.5F, u"Video_Segment"_s);
     }},
    {"segments of two arrays by turns",
     [] {
         for (int i = 0; i < 4; ++i) {
             hangScreen(100, 3.0F, 0.5F, u"Video_Segment"_s);
             hangScreen(101, 8.0F, 0.5F, u"Video_Segment"_s);
         }
     }},
    {"lower-case type is a point load", [] { hangScreen(100, 5.0F, 2.0F, u"video"_s); }},
    {"screen beyond both ends", [] { hangScreen(100, 6.0F, 16.0F, u"Video_Segment"_s); }},
    {"items outside the truss",
     [] {
         usualProject();
         LoadLogic::MotorList[0].positionX = -1.5F;
         LoadLogic::ActiveLoads[0].positionX = 13.0F;
     }},
    {"overloaded and nearly loaded motors",
     [] {
         hangMotors({1.0F, 11.0F});
         hangLoad(1500.0F, 1.0F, u"PA"_s);
         hangLoad(600.0F, 11.0F, u"PA"_s);
         LoadLogic::CalcularReacciones();
     }},
    {"motors at 80 % of their capacity and just below",
     [] {
         hangMotors({1.0F, 11.0F});
         LoadLogic::MotorList[0].staticLoad = 590.0F; // (590 + 50) × 1.25 = 800
         LoadLogic::MotorList[1].staticLoad = 589.0F;
     }},
    {"unnamed motor",
     [] {
         hangMotors({2.0F, 10.0F});
         LoadLogic::MotorList[1].modelName.clear();
     }},
    {"unstable", [] { hangMotors({6.0F}); }},
};

} // namespace

void TestDrawing::scene_isPaintedAsWrittenDown_data()
{
    QTest::addColumn<BuildScene>("scene");
    QTest::addColumn<bool>("blinkOn");
    QTest::addColumn<bool>("print");
    for (const auto& [name, scene] : SCENES) {
        QTest::addRow("%s, blink off", name) << scene << false << false;
        QTest::addRow("%s, blink on", name) << scene << true << false;
        QTest::addRow("%s, print", name) << scene << false << true;
    }
}

void TestDrawing::scene_isPaintedAsWrittenDown()
{
    QFETCH(BuildScene, scene);
    QFETCH(bool, blinkOn);
    QFETCH(bool, print);
    scene();
    TrussView view;
    view.resize(SIZE);
    view.blinkOn = blinkOn;
    view.printMode = print;
    QCOMPARE(pictureOf(view), referenceOnScreen([&](ReferencePainting& reference) {
                 reference.blinkOn = blinkOn;
                 reference.print = print;
             }));
}

void TestDrawing::loadWithoutWindow_isNotSelected()
{
    hangLoad(500.0F, 6.0F, u"PA"_s);
    QMainWindow window;
    auto* view = new TrussView(&window);
    view->resize(SIZE);
    QCOMPARE(pictureOf(*view), referenceOnScreen([](ReferencePainting&) {}));
}

void TestDrawing::selectedLoad_isOutlinedInCyan()
{
    hangLoad(500.0F, 3.0F, u"a"_s);
    RecordingWindow window;
    window.selected = hangLoad(500.0F, 9.0F, u"b"_s);
    auto* view = new TrussView(&window);
    view->resize(SIZE);
    const QImage picture = pictureOf(*view);
    QCOMPARE(picture, referenceOnScreen([&](ReferencePainting& r) { r.selectedLoadId = window.selected; }));
    QVERIFY(picture != referenceOnScreen([](ReferencePainting&) {}));

    // The fill of a selected load is not there at all: the background shows.
    const int x = 80 + static_cast<int>(9.0F / 12.0F * (SIZE.width() - 160));
    QCOMPARE(picture.pixelColor(x + 5, SIZE.height() / 2 + 12), QColor(0x12, 0x12, 0x12));
    const int other = 80 + static_cast<int>(3.0F / 12.0F * (SIZE.width() - 160));
    QCOMPARE(picture.pixelColor(other + 5, SIZE.height() / 2 + 12), QColor(255, 0, 34));
}

void TestDrawing::selectedSegment_framesItsWholeArrayInWhite()
{
    hangScreen(100, 3.0F, 2.0F, u"Video_Segment"_s);
    RecordingWindow window;
    window.selected = hangScreen(101, 9.0F, 2.0F, u"Video_Segment"_s);
    auto* view = new TrussView(&window);
    view->resize(SIZE);
    QCOMPARE(pictureOf(*view),
             referenceOnScreen([&](ReferencePainting& r) { r.selectedLoadId = window.selected; }));
    QVERIFY(pictureOf(*view) != referenceOnScreen([](ReferencePainting&) {}));
}

void TestDrawing::overloadedLabel_isHiddenInTheOffHalf()
{
    hangMotors({1.0F, 11.0F});
    hangLoad(1500.0F, 1.0F, u"PA"_s);
    LoadLogic::CalcularReacciones();
    TrussView view;
    view.resize(SIZE);
    const int x = 80 + static_cast<int>(1.0F / 12.0F * (SIZE.width() - 160));
    const QRect label(x - 45, SIZE.height() / 2 - 105, 90, 18);
    const auto hasRed = [&] {
        const QImage part = pictureOf(view).copy(label);
        for (int y = 0; y < part.height(); ++y) {
            for (int column = 0; column < part.width(); ++column) {
                if (part.pixelColor(column, y).red() > 200)
                    return true;
            }
        }
        return false;
    };
    QVERIFY(!hasRed());
    view.blinkOn = true;
    QVERIFY(hasRed());
    view.blinkOn = false;
    view.printMode = true;
    QVERIFY(hasRed());
}

void TestDrawing::warning_showsInTheOnHalfOnly()
{
    hangMotors({6.0F});
    QVERIFY(LoadLogic::isUnstable);
    TrussView view;
    view.resize(SIZE);
    QCOMPARE(pictureOf(view).pixelColor(2, 2), QColor(0x12, 0x12, 0x12));
    view.blinkOn = true;
    QVERIFY(pictureOf(view).pixelColor(2, 2).red() > 150); // 255 × 180 / 255 over #121212
}

void TestDrawing::longArray_looksAsRepeatedForEachSegment()
{
    LoadLogic::TrussLength = 40.0F;
    hangScreen(100, 20.3F, 30.0F, u"Video_Segment"_s); // 60 segments: long enough to be settled early
    hangScreen(101, 10.0F, 18.0F, u"Video_Segment"_s);
    TrussView view;
    view.resize(SIZE);
    QCOMPARE(pictureOf(view), referenceOnScreen([](ReferencePainting&) {}));
}

void TestDrawing::screenOfAnUnknownGroup_isNotDrawn()
{
    hangScreen(100, 6.0F, 2.0F, u"Video_Segment"_s);
    LoadLogic::ActiveLoad stranger = LoadLogic::ActiveLoads.constFirst();
    stranger.groupId = 101;
    TrussView view;
    QImage picture(SIZE, QImage::Format_RGB32);
    picture.fill(Qt::white);
    const QImage empty = picture.copy();
    QPainter painter(&picture);
    view.drawScreen(painter, stranger, SIZE.width(), SIZE.height(), 1.0);
    painter.end();
    QCOMPARE(picture, empty);
}

void TestDrawing::lattice_hasOneCrossPerMetre_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<int>("crosses");
    QTest::newRow("12 m") << 12.0F << 12;
    QTest::newRow("12.5 m") << 12.5F << 13;
    QTest::newRow("12.005 m") << 12.005F << 12;
    QTest::newRow("0 m") << 0.0F << 0;
    QTest::newRow("-5 m") << -5.0F << 0;
}

// Halfway between the chord and the lattice's edge each cross is met twice. The axis in the middle may
// be met once more, as it is dashed.
void TestDrawing::lattice_hasOneCrossPerMetre()
{
    QFETCH(float, length);
    QFETCH(int, crosses);
    LoadLogic::TrussLength = length;
    TrussView view;
    view.resize(SIZE);
    const QImage picture = pictureOf(view);
    int lines = 0;
    bool inside = false;
    for (int x = 90; x < SIZE.width() - 84; ++x) {
        const bool lit = picture.pixelColor(x, SIZE.height() / 2 - 5) != QColor(0x12, 0x12, 0x12);
        lines += lit && !inside ? 1 : 0;
        inside = lit;
    }
    const int axis = lines - 2 * crosses;
    QVERIFY2(axis == 0 || axis == 1, qPrintable(QString::number(lines)));
}

void TestDrawing::chord_tellsTheStress_data()
{
    QTest::addColumn<float>("stress");
    QTest::addColumn<bool>("unstable");
    QTest::addColumn<QColor>("colour");
    const QColor blue(0x00, 0xBF, 0xFF);
    const QColor orange(0xFF, 0xAF, 0x00);
    QTest::newRow("79.9 %") << 79.9F << false << blue;
    QTest::newRow("80 %") << 80.0F << false << orange;
    QTest::newRow("99.9 %") << 99.9F << false << orange;
    QTest::newRow("100 %") << 100.0F << false << QColor(Qt::red);
    QTest::newRow("unstable") << 0.0F << true << QColor(Qt::red);
}

void TestDrawing::chord_tellsTheStress()
{
    QFETCH(float, stress);
    QFETCH(bool, unstable);
    QFETCH(QColor, colour);
    LoadLogic::TrussStress_Percentage = stress;
    LoadLogic::isUnstable = unstable;
    TrussView view;
    view.resize(SIZE);
    // Off the lattice's crossings and the centre.
    const QColor drawn = pictureOf(view).pixelColor(80 + 20, SIZE.height() / 2);
    QCOMPARE(drawn, colour);
}

void TestDrawing::extremeTruss_paintsAtOnce_data()
{
    QTest::addColumn<float>("length");
    for (const float length : {0.0F, -5.0F, 1e-30F, 1e9F, 1e30F, std::numeric_limits<float>::max()})
        QTest::addRow("%g", static_cast<double>(length)) << length;
}

void TestDrawing::extremeTruss_paintsAtOnce()
{
    QFETCH(float, length);
    usualProject();
    hangScreen(101, 3.0F, 1e9F > length ? 2.0F : 0.5F * length > 1e6F ? 1e6F : 2.0F, u"Video"_s);
    LoadLogic::ActiveLoads.last().screenWidth = length;
    LoadLogic::ActiveLoads.last().groupId = 500;
    LoadLogic::TrussLength = length;
    LoadLogic::MotorList[0].positionX = std::numeric_limits<float>::quiet_NaN();
    LoadLogic::ActiveLoads[0].positionX = std::numeric_limits<float>::infinity();
    LoadLogic::ActiveLoads[1].mass = std::numeric_limits<float>::quiet_NaN();
    LoadLogic::CalcularReacciones();
    while (LoadLogic::ActiveLoads.size() > 60)
        LoadLogic::ActiveLoads.removeLast();
    TrussView view;
    view.resize(1600, 900);
    pictureOf(view); // fonts are loaded with the first picture
    const Support::CpuTimer clock;
    pictureOf(view);
    QVERIFY2(clock.elapsed() < 50 * Support::slowness(), qPrintable(QString::number(clock.elapsed())));
}

void TestDrawing::painting_changesNothing()
{
    usualProject();
    TrussView view;
    view.resize(SIZE);
    view.dragOffset = 3.5F;
    const auto motors = LoadLogic::MotorList;
    const auto loads = LoadLogic::ActiveLoads;
    const QImage once = pictureOf(view);
    QCOMPARE(pictureOf(view), once);
    QVERIFY(!view.printMode && !view.blinkOn);
    QCOMPARE(view.draggedMotor, -1);
    QCOMPARE(view.dragOffset, 3.5F);
    QVERIFY(LoadLogic::MotorList.isSharedWith(motors));
    QVERIFY(LoadLogic::ActiveLoads.isSharedWith(loads));
}

void TestDrawing::manySegments_paintInBelowASecond()
{
    LoadLogic::TrussLength = 100.0F;
    for (int i = 0; i < 100; ++i)
        hangScreen(100 + i, static_cast<float>(i) + 0.5F, 100.0F, u"Video_Segment"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 20'000);
    TrussView view;
    view.resize(1600, 900);
    const Support::CpuTimer clock;
    pictureOf(view);
    QVERIFY2(clock.elapsed() < 1000 * Support::slowness(), qPrintable(QString::number(clock.elapsed())));
}

void TestDrawing::canvas_isSetUp()
{
    const TrussView view;
    QCOMPARE(view.minimumHeight(), 300);
    QVERIFY(view.hasMouseTracking());
    QVERIFY(!view.blinkOn && !view.printMode);
    QCOMPARE(view.draggedMotor, -1);
    QCOMPARE(view.draggedGroup, -1);
    QCOMPARE(view.draggedLoad, -1);
    QCOMPARE(view.dragOffset, 0.0F);
    QCOMPARE(view.marginX, 80);
    QCOMPARE(view.motorBoxSize, 70);
}

QTEST_MAIN(TestDrawing)
#include "tst_drawing.moc"
