#include "canvas/CanvasItems.h"
#include "canvas/CanvasKeys.h"
#include "canvas/ItemText.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr float HUGE_NUMBER = std::numeric_limits<float>::max();

/// The lists of a scene, which points to them, on a truss of 12 m drawn 1 px to the centimetre.
struct Show
{
    QList<Motor> motors;
    QList<ActiveLoad> loads;
    Rating rating;

    [[nodiscard]] Scene scene() const
    {
        return {motors, loads, 12.0F, rating, std::nullopt};
    }
    [[nodiscard]] static TrussGeometry geometry()
    {
        return {1360, 600, 1.0, 80, 12.0F};
    }
    void hangMotor(float x, const QString& name = u"Motor"_s)
    {
        Motor motor;
        motor.id = static_cast<int>(motors.size()) + 1;
        motor.modelName = name;
        motor.positionX = x;
        motors.append(motor);
    }
    void hangLoad(float x, int id, const QString& name = u"Carga"_s)
    {
        ActiveLoad load;
        load.id = id;
        load.name = name;
        load.mass = 100.0F;
        load.positionX = x;
        loads.append(load);
    }
    void hangSegment(float x, int id, int group)
    {
        hangLoad(x, id);
        loads.last().type = u"Video_Segment"_s;
        loads.last().groupId = group;
        loads.last().screenWidth = 2.0F;
        loads.last().screenHeight = 2.0F;
    }
};

/// "M0 L2 A3": kinds and places in their lists.
QString told(const QList<CanvasItem>& items)
{
    QStringList names;
    for (const CanvasItem& item : items) {
        const QChar kind = item.kind == CanvasItem::Kind::Motor   ? u'M'
                           : item.kind == CanvasItem::Kind::Array ? u'A'
                                                                  : u'L';
        names.append(kind + QString::number(item.index));
    }
    return names.join(u' ');
}

QString told(const std::optional<CanvasItem>& item)
{
    return item ? told(QList{*item}) : u"nothing"_s;
}

} // namespace

/// What the keys go through, and where they lead.
class TestItems : public QObject
{
    Q_OBJECT

private slots:
    void items_areMotorsAndLoadsAndWholeArrays();
    void order_isFromLeftToRight();
    void order_withoutAPlace_isLast();
    void steps_goToTheEndsAndNoFurther();
    void selected_isTheMotorOrTheLoadsItem();
    void selected_underASharedId_isTheOneBefore();
    void at_tellsAllThatIsStacked();
    void moved_isExactAfterManySteps();
    void moved_isHeldOnTheTruss();
    void snapped_countsFromTheCentre_data();
    void snapped_countsFromTheCentre();
    void freeDistance_keepsTheArrayWhole();
    void unusableNumbers_giveUsableOnes();
    void keys_meanWhatTheySay_data();
    void keys_meanWhatTheySay();
    void motor_isToldWithItsVerdict();
    void load_isToldWithTheTrusssVerdict();
    void array_isToldAsAWhole();
    void tip_showsNamesAsTheyAre();
    void tip_ofMany_isBrief();
};

void TestItems::items_areMotorsAndLoadsAndWholeArrays()
{
    Show show;
    QVERIFY(CanvasItems::of(show.scene()).isEmpty());
    show.hangMotor(0.0F);
    show.hangLoad(3.0F, 1);
    show.hangSegment(5.0F, 2, 7);
    show.hangLoad(4.0F, 3);
    show.hangSegment(6.0F, 4, 7);
    const QList<CanvasItem> items = CanvasItems::of(show.scene());
    QCOMPARE(told(items), u"M0 L0 A1 L2"_s);
    QCOMPARE(items.at(2).position, 5.5F); // (5 + 6) / 2
    QCOMPARE(items.at(2).firstEnd, 5.0F);
    QCOMPARE(items.at(2).secondEnd, 6.0F);
}

void TestItems::order_isFromLeftToRight()
{
    Show show;
    show.hangMotor(0.0F);
    show.hangMotor(5.5F);
    show.hangLoad(9.0F, 1);
    show.hangSegment(6.0F, 2, 7);
    show.hangSegment(5.0F, 3, 7); // with the other one centred at 5.5 m
    show.hangLoad(5.5F, 4);
    show.hangLoad(0.0F, 5);
    QCOMPARE(told(CanvasItems::leftToRight(show.scene())), u"M0 L4 M1 A1 L3 L0"_s);
}

void TestItems::order_withoutAPlace_isLast()
{
    Show show;
    show.hangLoad(NOT_A_NUMBER, 1);
    show.hangLoad(INFINITE, 2);
    show.hangLoad(1.0F, 3);
    show.hangLoad(-INFINITE, 4);
    QCOMPARE(told(CanvasItems::leftToRight(show.scene())), u"L3 L2 L1 L0"_s);
}

void TestItems::steps_goToTheEndsAndNoFurther()
{
    using CanvasItems::Step;
    Show show;
    show.hangMotor(0.0F);
    show.hangLoad(5.0F, 1);
    show.hangMotor(12.0F);
    const QList<CanvasItem> items = CanvasItems::leftToRight(show.scene());
    const auto from = [&items](std::optional<CanvasItem> item, Step step) {
        return told(CanvasItems::reached(items, item, step));
    };
    QCOMPARE(from(std::nullopt, Step::Forward), u"M0"_s);
    QCOMPARE(from(std::nullopt, Step::Back), u"M1"_s);
    QCOMPARE(from(std::nullopt, Step::First), u"M0"_s);
    QCOMPARE(from(std::nullopt, Step::Last), u"M1"_s);
    QCOMPARE(from(items.at(0), Step::Forward), u"L0"_s);
    QCOMPARE(from(items.at(1), Step::Forward), u"M1"_s);
    QCOMPARE(from(items.at(2), Step::Forward), u"M1"_s);
    QCOMPARE(from(items.at(2), Step::Back), u"L0"_s);
    QCOMPARE(from(items.at(0), Step::Back), u"M0"_s);
    QCOMPARE(from(items.at(1), Step::First), u"M0"_s);
    QCOMPARE(from(items.at(1), Step::Last), u"M1"_s);
    QCOMPARE(told(CanvasItems::reached({}, std::nullopt, Step::Forward)), u"nothing"_s);
    QCOMPARE(told(CanvasItems::reached({}, items.at(0), Step::Last)), u"nothing"_s);
}

void TestItems::selected_isTheMotorOrTheLoadsItem()
{
    Show show;
    show.hangMotor(0.0F);
    show.hangLoad(5.0F, 8);
    show.hangSegment(6.0F, 20, 7);
    show.hangSegment(7.0F, 21, 7);
    const auto selected = [&show](int motor, int load) {
        return told(CanvasItems::selected(show.scene(), motor, load, std::nullopt));
    };
    QCOMPARE(selected(0, -1), u"M0"_s);
    QCOMPARE(selected(-1, 8), u"L0"_s);
    QCOMPARE(selected(-1, 21), u"A1"_s); // through any of its segments
    QCOMPARE(selected(-1, -1), u"nothing"_s);
    QCOMPARE(selected(1, -1), u"nothing"_s);
    QCOMPARE(selected(-1, 99), u"nothing"_s);
}

void TestItems::selected_underASharedId_isTheOneBefore()
{
    Show show;
    show.hangLoad(1.0F, 8);
    show.hangLoad(2.0F, 8);
    const CanvasItem second = CanvasItems::of(show.scene()).at(1);
    QCOMPARE(told(CanvasItems::selected(show.scene(), -1, 8, std::nullopt)), u"L0"_s);
    QCOMPARE(told(CanvasItems::selected(show.scene(), -1, 8, second)), u"L1"_s);
    show.loads.removeLast();
    QCOMPARE(told(CanvasItems::selected(show.scene(), -1, 8, second)), u"L0"_s);
}

// The truss lies at 300 px, 1 m is 100 px and begins at 80 px.
void TestItems::at_tellsAllThatIsStacked()
{
    Show show;
    show.hangMotor(3.0F);
    show.hangLoad(3.0F, 1);
    show.hangLoad(3.02F, 2); // 2 px further on
    show.hangLoad(3.5F, 3);  // 50 px
    show.hangSegment(7.5F, 4, 7);
    show.hangSegment(8.5F, 5, 7);
    const auto at = [&show](int x, int y) {
        return told(CanvasItems::at(show.scene(), Show::geometry(), {x, y}));
    };
    QCOMPARE(at(380, 200), u"M0 L0 L1"_s); // over the motor's figure
    QCOMPARE(at(380, 400), u"L0 L1 M0"_s); // over the loads' place
    QCOMPARE(at(430, 320), u"L2"_s);
    QCOMPARE(at(410, 360), QString()); // between their triangles and their texts
    QCOMPARE(at(410, 380), u"L0 L1 L2 M0"_s);
    QCOMPARE(at(880, 330), u"A3"_s);
    QCOMPARE(at(880, 60), QString());
    QCOMPARE(at(600, 300), QString());
}

void TestItems::moved_isExactAfterManySteps()
{
    float x = 0.0F;
    for (int i = 0; i < 60; ++i)
        x = CanvasItems::moved(x, 0.1F, 12.0F);
    QCOMPARE(x, 6.0F);
    for (int i = 0; i < 350; ++i)
        x = CanvasItems::moved(x, -0.01F, 12.0F);
    QCOMPARE(x, 2.5F);
}

void TestItems::moved_isHeldOnTheTruss()
{
    QCOMPARE(CanvasItems::moved(0.05F, -0.1F, 12.0F), 0.0F);
    QCOMPARE(CanvasItems::moved(11.95F, 0.1F, 12.0F), 12.0F);
}

void TestItems::snapped_countsFromTheCentre_data()
{
    QTest::addColumn<float>("position");
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("expected");
    QTest::newRow("on the grid") << 3.0F << 12.0F << 3.0F;
    QTest::newRow("below the middle") << 3.04F << 12.0F << 3.0F;
    QTest::newRow("above the middle") << 3.06F << 12.0F << 3.1F;
    QTest::newRow("odd truss") << 3.02F << 12.5F << 3.05F; // 3.23 m from its centre at 6.25 m: 3.2 m
    QTest::newRow("left of the truss") << -1.0F << 12.0F << 0.0F;
    QTest::newRow("right of it") << 20.0F << 12.0F << 12.0F;
}

void TestItems::snapped_countsFromTheCentre()
{
    QFETCH(float, position);
    QFETCH(float, length);
    QFETCH(float, expected);
    QCOMPARE(CanvasItems::snapped(position, length), expected);
}

void TestItems::freeDistance_keepsTheArrayWhole()
{
    const CanvasItem array{CanvasItem::Kind::Array, 0, 6.0F, 5.0F, 7.0F};
    QCOMPARE(CanvasItems::freeDistance(array, 1.0F, 12.0F), 1.0F);
    QCOMPARE(CanvasItems::freeDistance(array, 6.0F, 12.0F), 5.0F);
    QCOMPARE(CanvasItems::freeDistance(array, -6.0F, 12.0F), -5.0F);
    QCOMPARE(CanvasItems::freeDistance(array, 6.0F, 1.0F), 0.0F); // 2 m of segments on 1 m of truss
}

void TestItems::unusableNumbers_giveUsableOnes()
{
    for (const float odd : {NOT_A_NUMBER, INFINITE, -INFINITE, HUGE_NUMBER, -HUGE_NUMBER}) {
        for (const float length : {12.0F, 0.0F, -1.0F}) {
            for (const float x : {CanvasItems::moved(odd, 0.1F, length),
                                  CanvasItems::moved(1.0F, odd, length), CanvasItems::snapped(odd, length)})
                QVERIFY(x >= 0.0F && x <= std::max(length, 0.0F));
        }
        QVERIFY(!std::isnan(CanvasItems::moved(1.0F, 0.1F, odd)));
        QVERIFY(!std::isnan(CanvasItems::snapped(1.0F, odd)));
        const CanvasItem array{CanvasItem::Kind::Array, 0, 6.0F, 5.0F, 7.0F};
        const float distance = CanvasItems::freeDistance(array, odd, 12.0F);
        QVERIFY(distance >= -5.0F && distance <= 5.0F);
        const CanvasItem oddArray{CanvasItem::Kind::Array, 0, odd, odd, odd};
        QVERIFY(!std::isnan(CanvasItems::freeDistance(oddArray, 1.0F, 12.0F)));
        Show show;
        show.hangMotor(odd);
        show.hangLoad(odd, 1);
        show.hangSegment(odd, 2, 7);
        QCOMPARE(CanvasItems::leftToRight(show.scene()).size(), 3);
        for (const CanvasItem& item : CanvasItems::of(show.scene())) {
            QVERIFY(CanvasItems::area(show.scene(), Show::geometry(), item).isValid());
            QVERIFY(!ItemText::of(show.scene(), item).isEmpty());
        }
    }
}

void TestItems::keys_meanWhatTheySay_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, int key, Qt::KeyboardModifiers modifiers, const QString& expected) {
        QTest::newRow(name) << key << static_cast<int>(modifiers) << expected;
    };
    const Qt::KeyboardModifiers fine = Qt::ShiftModifier | Qt::ControlModifier;
    row("left", Qt::Key_Left, {}, u"select 1"_s);
    row("right", Qt::Key_Right, {}, u"select 2"_s);
    row("right of the number pad", Qt::Key_Right, Qt::KeypadModifier, u"select 2"_s);
    row("home", Qt::Key_Home, {}, u"select 0"_s);
    row("end", Qt::Key_End, {}, u"select 3"_s);
    row("shift left", Qt::Key_Left, Qt::ShiftModifier, u"nudge -0.10"_s);
    row("shift right", Qt::Key_Right, Qt::ShiftModifier, u"nudge 0.10"_s);
    row("ctrl shift left", Qt::Key_Left, fine, u"nudge -0.01"_s);
    row("ctrl shift right", Qt::Key_Right, fine, u"nudge 0.01"_s);
    row("ctrl right", Qt::Key_Right, Qt::ControlModifier, u"nothing"_s);
    row("alt right", Qt::Key_Right, Qt::AltModifier, u"nothing"_s);
    row("return", Qt::Key_Return, {}, u"ask"_s);
    row("enter", Qt::Key_Enter, Qt::KeypadModifier, u"ask"_s);
    row("delete", Qt::Key_Delete, {}, u"remove"_s);
    row("shift delete", Qt::Key_Delete, Qt::ShiftModifier, u"nothing"_s);
    row("F10", Qt::Key_F10, {}, u"menu"_s);
    row("shift F10", Qt::Key_F10, Qt::ShiftModifier, u"menu"_s);
    row("menu", Qt::Key_Menu, {}, u"menu"_s);
    for (const int key : {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Escape, Qt::Key_Up, Qt::Key_Down,
                          Qt::Key_PageDown, Qt::Key_Z, Qt::Key_F9, Qt::Key_Space, Qt::Key_Backspace})
        row(qPrintable(QString::number(key)), key, {}, u"nothing"_s);
}

void TestItems::keys_meanWhatTheySay()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    const CanvasKeys::Meaning meaning = CanvasKeys::meaning(key, Qt::KeyboardModifiers(modifiers));
    QString is = u"nothing"_s;
    if (const auto* select = std::get_if<CanvasKeys::Select>(&meaning))
        is = u"select "_s + QString::number(static_cast<int>(select->step));
    else if (const auto* nudge = std::get_if<CanvasKeys::Nudge>(&meaning))
        is = u"nudge "_s + QString::number(static_cast<double>(nudge->distance), 'f', 2);
    else if (std::holds_alternative<CanvasKeys::AskPosition>(meaning))
        is = u"ask"_s;
    else if (std::holds_alternative<CanvasKeys::Remove>(meaning))
        is = u"remove"_s;
    else if (std::holds_alternative<CanvasKeys::OpenMenu>(meaning))
        is = u"menu"_s;
    QTEST(is, "expected");
}

// (300 + 50) × 1.25 = 437.5 kg
void TestItems::motor_isToldWithItsVerdict()
{
    Show show;
    show.hangMotor(3.0F, u"D8+ %1"_s);
    Motor& motor = show.motors.first();
    motor.staticLoad = 300.0F;
    const auto text = [&show] { return ItemText::of(show.scene(), CanvasItems::of(show.scene()).first()); };
    QCOMPARE(text(), u"Motor D8+ %1 en -3.00m: 300.0 kg, dinámica 437.5 kg de 1000.0 kg, OK."_s);
    motor.capacity = 400.0F;
    QCOMPARE(text(), u"Motor D8+ %1 en -3.00m: 300.0 kg, dinámica 437.5 kg de 400.0 kg, EXCESO DINÁMICO."_s);
    motor.capacity = 299.0F;
    QCOMPARE(text(), u"Motor D8+ %1 en -3.00m: 300.0 kg, dinámica 437.5 kg de 299.0 kg, EXCESO ESTÁTICO."_s);
    motor.staticLoad = NOT_A_NUMBER;
    QVERIFY(text().endsWith(u", la carga no se puede calcular."_s));
}

void TestItems::load_isToldWithTheTrusssVerdict()
{
    Show show;
    show.hangLoad(7.5F, 4, u"PA"_s);
    const auto text = [&show] { return ItemText::of(show.scene(), CanvasItems::of(show.scene()).first()); };
    show.rating.stress = 99.0F;
    QCOMPARE(text(), u"Carga PA en +1.50m: 100.0 kg. Truss: OK."_s);
    show.rating.stress = 100.0F;
    QCOMPARE(text(), u"Carga PA en +1.50m: 100.0 kg. Truss: SOBRECARGA."_s);
    show.rating = {0.0F, true};
    QCOMPARE(text(), u"Carga PA en +1.50m: 100.0 kg. Truss: SOBRECARGA."_s);
    show.rating = {NOT_A_NUMBER, false};
    QCOMPARE(text(), u"Carga PA en +1.50m: 100.0 kg. Truss: SOBRECARGA."_s);
    show.loads.first().name.clear();
    QVERIFY(text().startsWith(u"Carga L4 en "_s));
}

void TestItems::array_isToldAsAWhole()
{
    Show show;
    show.hangSegment(5.5F, 1, 7);
    const auto text = [&show] { return ItemText::of(show.scene(), CanvasItems::of(show.scene()).first()); };
    QCOMPARE(text(), u"Pantalla de 2.0 m en -0.50m: 100.0 kg en 1 segmento. Truss: OK."_s);
    show.hangSegment(6.5F, 2, 7);
    show.hangSegment(9.0F, 3, 8);
    QCOMPARE(text(), u"Pantalla de 2.0 m en 0.00m: 200.0 kg en 2 segmentos. Truss: OK."_s);
}

void TestItems::tip_showsNamesAsTheyAre()
{
    Show show;
    show.hangLoad(6.0F, 1, u"<b>PA</b> & %1"_s);
    show.hangLoad(6.0F, 2, u"Luz"_s);
    const QString tip = ItemText::tip(show.scene(), CanvasItems::of(show.scene()));
    QCOMPARE(tip, u"<div style='white-space:pre'>Carga &lt;b&gt;PA&lt;/b&gt; &amp; %1 en 0.00m: 100.0 kg."
                  " Truss: OK.</div>"
                  "<div style='white-space:pre'>Carga Luz en 0.00m: 100.0 kg. Truss: OK.</div>"_s);
    QCOMPARE(ItemText::tip(show.scene(), {}), QString());
}

void TestItems::tip_ofMany_isBrief()
{
    Show show;
    for (int i = 0; i < 40; ++i)
        show.hangLoad(6.0F, i + 1, QString(5000, u'x'));
    const QString tip = ItemText::tip(show.scene(), CanvasItems::of(show.scene()));
    QCOMPARE(tip.count(u"<div style='white-space:pre-wrap'>"_s), 12); // too long for one line
    QVERIFY(tip.endsWith(u"<div style='white-space:pre'>y 28 más</div>"_s));
    QVERIFY(tip.size() < 13'000);
}

QTEST_GUILESS_MAIN(TestItems)
#include "tst_items.moc"
