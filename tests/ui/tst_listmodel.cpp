#include "engine/Statics.h"
#include "ui/ListModel.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QLocale>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

const float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
const float ENDLESS = std::numeric_limits<float>::infinity();

ActiveLoad load(int id, float mass, float x)
{
    ActiveLoad made;
    made.id = id;
    made.mass = mass;
    made.positionX = x;
    made.name = u'c' + QString::number(id);
    return made;
}

Motor motor(int id, float x)
{
    Motor made;
    made.id = id;
    made.positionX = x;
    return made;
}

/// 12 m of 8.4 kg/m on motors at both ends, 500 kg in the middle: each carries 50.4 + 250 kg.
ProjectState project()
{
    ProjectState made;
    made.motors = {motor(1, 0.0F), motor(2, 12.0F)};
    made.loads = {load(1, 500.0F, 6.0F)};
    return Statics::solved(made);
}

QStringList idsOf(const ListModel& model)
{
    QStringList ids;
    for (const RowKey& key : model.keys())
        ids += QString::number(key.id) + u'.' + QString::number(key.nth);
    return ids;
}

QList<ListedLoad> rowsOf(const QList<int>& ids)
{
    ProjectState made;
    for (const int id : ids)
        made.loads.append(load(id, 10.0F * static_cast<float>(id), 1.0F));
    return ListRows::loadsOf(made);
}

} // namespace

/// The rows of "Lista", and the models that views see them by.
class ListModelTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QLocale::setDefault(QLocale::c());
    }

    void motor_isShownWithItsFigures();
    void motor_thatExceeds_isRed();
    void motorsAtOnePlace_haveNoVerdict();
    void load_isShownFromTheMiddle();
    void texts_havePointsOnASpanishDesktop();
    void namelessRows_haveTheirTitle();
    void names_standInOneLine();
    void screen_isNumberedAsInReports();
    void numbersThatAreNone_areShownAndSortedLast();
    void trussWithoutLength_hasRows();
    void takes_whatTheFieldsTake_data();
    void takes_whatTheFieldsTake();
    void write_isWhatTheDialogsDo();
    void unchangedText_isNoEdit();
    void typedText_isTold();
    void whatIsNotTaken_isNotTold();
    void results_areNotEditable();
    void segment_isNotMovedAlone();
    void follow_tellsViews_data();
    void follow_tellsViews();
    void follow_keepsRowsByTheirKeys();
    void changedRows_areToldAsRows();
};

void ListModelTest::motor_isShownWithItsFigures()
{
    const ListedMotor row = ListRows::motorsOf(project()).constFirst();
    QStringList shown;
    for (int column = 0; column < static_cast<int>(ListRows::motorColumns().size()); ++column)
        shown += ListRows::cell(row, column).shown;
    // (300.4 + 50) × 1.25 = 438.0
    QCOMPARE(shown, QStringList({u"Motor"_s, u"-6.00m"_s, u"1000.0"_s, u"50.0"_s, u"350.4"_s, u"438.0"_s,
                                 u"OK ✅"_s}));
    QVERIFY(ListRows::cell(row, ListRows::MotorState).tone == ListCell::Tone::Good);
}

void ListModelTest::motor_thatExceeds_isRed()
{
    ProjectState heavy = project();
    heavy.motors[0].capacity = 400.0F; // 300.4 ≤ 400 < 438.0
    MotorModel model(ListRows::motorColumns(), nullptr);
    model.follow(ListRows::motorsOf(heavy));
    const QModelIndex state = model.index(0, ListRows::MotorState);
    QCOMPARE(state.data().toString(), u"EXCESO DINÁMICO ❌"_s);
    const QColor colour = state.data(Qt::ForegroundRole).value<QColor>();
    QVERIFY(colour.red() > 2 * colour.green());
    QVERIFY(!model.index(0, ListRows::MotorStatic).data(Qt::ForegroundRole).isValid());
}

void ListModelTest::motorsAtOnePlace_haveNoVerdict()
{
    ProjectState together = project();
    together.motors[1].positionX = 0.0F;
    together.loads[0].positionX = 0.0F;
    together.motors[0].staticLoad = NOT_A_NUMBER;
    const ListedMotor row = ListRows::motorsOf(together).constFirst();
    for (const int column : {ListRows::MotorStatic, ListRows::MotorDynamic, ListRows::MotorState})
        QCOMPARE(ListRows::cell(row, column).shown, u"—"_s);
    QVERIFY(ListRows::cell(row, ListRows::MotorState).tone == ListCell::Tone::Plain);
}

void ListModelTest::load_isShownFromTheMiddle()
{
    ProjectState made = project();
    made.loads = {load(3, 69.55F, 7.5F), load(4, 1.0F, 6.0F)};
    const QList<ListedLoad> rows = ListRows::loadsOf(made);
    QCOMPARE(ListRows::cell(rows.at(0), ListRows::LoadPosition).shown, u"+1.50m"_s);
    QCOMPARE(ListRows::cell(rows.at(0), ListRows::LoadPosition).typed, u"1.50"_s);
    QCOMPARE(ListRows::cell(rows.at(1), ListRows::LoadPosition).shown, u"0.00m"_s);
    QCOMPARE(ListRows::cell(rows.at(1), ListRows::LoadPosition).typed, u"0.00"_s);
    QCOMPARE(ListRows::cell(rows.at(1), ListRows::LoadScreen).shown, QString());
}

void ListModelTest::texts_havePointsOnASpanishDesktop()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    load_isShownFromTheMiddle();
    motor_isShownWithItsFigures();
    const ListField field =
        ListRows::cell(ListRows::motorsOf(project()).at(0), ListRows::MotorPosition).field;
    QVERIFY(ListRows::takes(field, u"1.5"_s));
    QCOMPARE(field.rule, u"La posición va de -6.00 a 6.00 m desde el centro."_s);
}

void ListModelTest::namelessRows_haveTheirTitle()
{
    ProjectState made = project();
    made.motors[0].modelName.clear();
    made.loads[0].name.clear();
    const ListCell motorName = ListRows::cell(ListRows::motorsOf(made).at(0), ListRows::MotorName);
    const ListCell loadName = ListRows::cell(ListRows::loadsOf(made).at(0), ListRows::LoadName);
    QCOMPARE(motorName.shown, u"M1"_s);
    QCOMPARE(motorName.typed, QString());
    QCOMPARE(loadName.shown, u"L1"_s);
    QCOMPARE(loadName.typed, QString());
}

void ListModelTest::names_standInOneLine()
{
    ProjectState made = project();
    made.loads[0].name = u"dos\nlíneas\t%1"_s;
    const ListCell name = ListRows::cell(ListRows::loadsOf(made).at(0), ListRows::LoadName);
    QCOMPARE(name.shown, u"dos líneas %1"_s);
    QCOMPARE(name.typed, u"dos\nlíneas\t%1"_s);
}

// Numbers go by the groups, not by the order in the list.
void ListModelTest::screen_isNumberedAsInReports()
{
    ProjectState made = project();
    for (const int group : {105, 101, 105}) {
        ActiveLoad segment = load(group, 70.0F, 5.0F);
        segment.type = u"Video_Segment"_s;
        segment.groupId = group;
        made.loads.append(segment);
    }
    made.loads.append(load(9, 70.0F, 5.0F));
    made.loads.last().groupId = 103; // as it comes from a file: without a type
    QStringList screens;
    const QList<ListedLoad> rows = ListRows::loadsOf(made);
    for (const ListedLoad& row : rows)
        screens += ListRows::cell(row, ListRows::LoadScreen).shown;
    QCOMPARE(screens, QStringList({QString(), u"LED 2"_s, u"LED 1"_s, u"LED 2"_s, u"LED 0"_s}));
    QVERIFY(ListRows::isLess(rows.at(0), rows.at(2), ListRows::LoadScreen));
    QVERIFY(ListRows::isLess(rows.at(2), rows.at(1), ListRows::LoadScreen));
}

void ListModelTest::numbersThatAreNone_areShownAndSortedLast()
{
    ProjectState made = project();
    made.loads = {load(1, NOT_A_NUMBER, NOT_A_NUMBER), load(2, ENDLESS, -ENDLESS), load(3, 5.0F, 1.0F)};
    const QList<ListedLoad> rows = ListRows::loadsOf(made);
    for (const int column : {ListRows::LoadMass, ListRows::LoadPosition}) {
        QVERIFY(!ListRows::isLess(rows.at(0), rows.at(0), column));
        QVERIFY(ListRows::isLess(rows.at(1), rows.at(0), column));
        QVERIFY(ListRows::isLess(rows.at(2), rows.at(0), column));
        QVERIFY(!ListRows::isLess(rows.at(0), rows.at(2), column));
        QVERIFY(!ListRows::cell(rows.at(0), column).shown.isEmpty());
        QVERIFY(!ListRows::cell(rows.at(1), column).shown.isEmpty());
    }
    made.motors[0].staticLoad = NOT_A_NUMBER;
    const QList<ListedMotor> motors = ListRows::motorsOf(made);
    for (const int column : {ListRows::MotorStatic, ListRows::MotorDynamic, ListRows::MotorState}) {
        QVERIFY(ListRows::isLess(motors.at(1), motors.at(0), column));
        QVERIFY(!ListRows::isLess(motors.at(0), motors.at(1), column));
    }
}

void ListModelTest::trussWithoutLength_hasRows()
{
    for (const float length : {0.0F, -5.0F, NOT_A_NUMBER, ENDLESS}) {
        ProjectState made = project();
        made.trussLength = length;
        const ListField field = ListRows::cell(ListRows::loadsOf(made).at(0), ListRows::LoadPosition).field;
        QCOMPARE(field.bottom, 0.0);
        QCOMPARE(field.top, 0.0);
    }
}

void ListModelTest::takes_whatTheFieldsTake_data()
{
    QTest::addColumn<bool>("isMotor");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTaken");
    const auto row = [](const char* name, bool isMotor, int column, const QString& text, bool isTaken) {
        QTest::newRow(name) << isMotor << column << text << isTaken;
    };
    row("least capacity", true, ListRows::MotorCapacity, u"100"_s, true);
    row("less capacity", true, ListRows::MotorCapacity, u"99.9"_s, false);
    row("most capacity", true, ListRows::MotorCapacity, u"5000"_s, true);
    row("more capacity", true, ListRows::MotorCapacity, u"5000.1"_s, false);
    row("weightless motor", true, ListRows::MotorWeight, u"0"_s, true);
    row("heavy motor", true, ListRows::MotorWeight, u"500.5"_s, false);
    row("motor at the end", true, ListRows::MotorPosition, u"-6"_s, true);
    row("motor beside the truss", true, ListRows::MotorPosition, u"6.01"_s, false);
    row("any name", true, ListRows::MotorName, u"%1 <b>"_s, true);
    row("no name", false, ListRows::LoadName, QString(), true);
    row("a figure", true, ListRows::MotorStatic, u"5"_s, false);
    row("a verdict", true, ListRows::MotorState, u"OK"_s, false);
    row("a screen", false, ListRows::LoadScreen, u"LED 1"_s, false);
    row("most mass", false, ListRows::LoadMass, u"50000"_s, true);
    row("more mass", false, ListRows::LoadMass, u"50001"_s, false);
    row("negative mass", false, ListRows::LoadMass, u"-0.1"_s, false);
    row("no number", false, ListRows::LoadMass, u"doce"_s, false);
    row("nothing", false, ListRows::LoadMass, QString(), false);
    row("not a number", false, ListRows::LoadMass, u"nan"_s, false);
    row("endless", false, ListRows::LoadPosition, u"inf"_s, false);
}

void ListModelTest::takes_whatTheFieldsTake()
{
    QFETCH(bool, isMotor);
    QFETCH(int, column);
    QFETCH(QString, text);
    const ListCell cell = isMotor ? ListRows::cell(ListRows::motorsOf(project()).at(0), column)
                                  : ListRows::cell(ListRows::loadsOf(project()).at(0), column);
    QTEST(ListRows::takes(cell.field, text), "isTaken");
}

void ListModelTest::write_isWhatTheDialogsDo()
{
    Motor changed = motor(1, 0.0F);
    ListRows::write(changed, ListRows::MotorName, u" %1 "_s, 12.0F);
    ListRows::write(changed, ListRows::MotorPosition, u"-1.5"_s, 12.0F);
    ListRows::write(changed, ListRows::MotorCapacity, u"250.5"_s, 12.0F);
    ListRows::write(changed, ListRows::MotorWeight, u"31"_s, 12.0F);
    ListRows::write(changed, ListRows::MotorStatic, u"9"_s, 12.0F);
    QCOMPARE(changed.modelName, u" %1 "_s);
    QCOMPARE(changed.positionX, 4.5F);
    QCOMPARE(changed.capacity, 250.5F);
    QCOMPARE(changed.selfWeight, 31.0F);
    QCOMPARE(changed.staticLoad, 0.0F);

    ActiveLoad moved = load(1, 1.0F, 0.0F);
    ListRows::write(moved, ListRows::LoadName, u"Foco"_s, 12.0F);
    ListRows::write(moved, ListRows::LoadMass, u"12.5"_s, 12.0F);
    ListRows::write(moved, ListRows::LoadPosition, u"100"_s, 12.0F);
    QCOMPARE(moved.name, u"Foco"_s);
    QCOMPARE(moved.mass, 12.5F);
    QCOMPARE(moved.positionX, 12.0F);
}

// 69.55 kg are shown as 69.5 or 69.6: an editor that is opened and closed must not make them that.
void ListModelTest::unchangedText_isNoEdit()
{
    ProjectState made = project();
    made.loads[0].mass = 69.55F;
    LoadModel model(ListRows::loadColumns(), nullptr);
    model.follow(ListRows::loadsOf(made));
    QSignalSpy typed(&model, &ListModel::typed);
    const QModelIndex mass = model.index(0, ListRows::LoadMass);
    QVERIFY(model.setData(mass, mass.data(Qt::EditRole), Qt::EditRole));
    QCOMPARE(typed.size(), 0);
}

void ListModelTest::typedText_isTold()
{
    LoadModel model(ListRows::loadColumns(), nullptr);
    model.follow(rowsOf({5, 5}));
    QList<RowKey> keys;
    QStringList texts;
    connect(&model, &ListModel::typed, this, [&](const RowKey& key, int column, const QString& text) {
        keys += key;
        texts += QString::number(column) + u' ' + text;
    });
    QVERIFY(model.setData(model.index(1, ListRows::LoadMass), u"7.5"_s, Qt::EditRole));
    QCOMPARE(keys, QList<RowKey>({{5, 1}}));
    QCOMPARE(texts, QStringList(u"1 7.5"_s));
    QCOMPARE(model.index(1, ListRows::LoadMass).data().toString(), u"50.0"_s); // the project did not change
}

void ListModelTest::whatIsNotTaken_isNotTold()
{
    LoadModel model(ListRows::loadColumns(), nullptr);
    model.follow(rowsOf({1}));
    QSignalSpy typed(&model, &ListModel::typed);
    QVERIFY(!model.setData(model.index(0, ListRows::LoadMass), u"x"_s, Qt::EditRole));
    QVERIFY(!model.setData(model.index(0, ListRows::LoadMass), u"-1"_s, Qt::EditRole));
    QVERIFY(!model.setData(model.index(0, ListRows::LoadScreen), u"LED 3"_s, Qt::EditRole));
    QVERIFY(!model.setData(model.index(0, ListRows::LoadMass), u"3"_s, Qt::DisplayRole));
    QVERIFY(!model.setData({}, u"3"_s, Qt::EditRole));
    QCOMPARE(typed.size(), 0);
}

void ListModelTest::results_areNotEditable()
{
    MotorModel model(ListRows::motorColumns(), nullptr);
    model.follow(ListRows::motorsOf(project()));
    for (int column = 0; column < model.columnCount(); ++column) {
        const bool isEditable = model.flags(model.index(0, column)).testFlag(Qt::ItemIsEditable);
        QCOMPARE(isEditable, column < ListRows::MotorStatic);
    }
}

void ListModelTest::segment_isNotMovedAlone()
{
    ProjectState made = project();
    made.loads[0].type = u"Video_Segment"_s;
    made.loads[0].groupId = 100;
    LoadModel model(ListRows::loadColumns(), nullptr);
    model.follow(ListRows::loadsOf(made));
    QVERIFY(!model.flags(model.index(0, ListRows::LoadPosition)).testFlag(Qt::ItemIsEditable));
    QVERIFY(model.flags(model.index(0, ListRows::LoadMass)).testFlag(Qt::ItemIsEditable));
    QVERIFY(model.index(0, ListRows::LoadPosition).data(Qt::ToolTipRole).toString().contains(u"entera"_s));
}

void ListModelTest::follow_tellsViews_data()
{
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<QList<int>>("now");
    QTest::newRow("from nothing") << QList<int>{} << QList<int>{1, 2};
    QTest::newRow("to nothing") << QList<int>{1, 2} << QList<int>{};
    QTest::newRow("same") << QList<int>{1, 2} << QList<int>{1, 2};
    QTest::newRow("appended") << QList<int>{1, 2} << QList<int>{1, 2, 3, 4};
    QTest::newRow("put before") << QList<int>{1, 2} << QList<int>{7, 1, 2};
    QTest::newRow("put between") << QList<int>{1, 2} << QList<int>{1, 7, 8, 2};
    QTest::newRow("taken from the end") << QList<int>{1, 2, 3} << QList<int>{1};
    QTest::newRow("taken from within") << QList<int>{1, 2, 3, 4} << QList<int>{1, 4};
    QTest::newRow("scattered") << QList<int>{1, 2, 3, 4, 5} << QList<int>{2, 4};
    QTest::newRow("others") << QList<int>{1, 2, 3} << QList<int>{4, 5};
    QTest::newRow("reordered") << QList<int>{1, 2, 3} << QList<int>{3, 1, 2};
    QTest::newRow("repeated ids") << QList<int>{5, 5, 1} << QList<int>{5, 1};
    QTest::newRow("repeated ids, reordered") << QList<int>{5, 5, 1} << QList<int>{5, 1, 5};
}

void ListModelTest::follow_tellsViews()
{
    QFETCH(QList<int>, before);
    QFETCH(QList<int>, now);
    LoadModel model(ListRows::loadColumns(), nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.follow(rowsOf(before));
    model.follow(rowsOf(now));
    LoadModel fresh(ListRows::loadColumns(), nullptr);
    fresh.follow(rowsOf(now));
    QCOMPARE(idsOf(model), idsOf(fresh));
    for (int row = 0; row < fresh.rowCount(); ++row) {
        for (int column = 0; column < fresh.columnCount(); ++column)
            QCOMPARE(model.index(row, column).data(), fresh.index(row, column).data());
    }
}

void ListModelTest::follow_keepsRowsByTheirKeys()
{
    LoadModel model(ListRows::loadColumns(), nullptr);
    model.follow(rowsOf({1, 2, 3}));
    const QPersistentModelIndex second(model.index(1, ListRows::LoadMass));
    model.follow(rowsOf({3, 2, 1}));
    QCOMPARE(second.row(), 1);
    model.follow(rowsOf({2, 1, 3}));
    QCOMPARE(second.row(), 0);
    model.follow(rowsOf({9, 2, 1, 3}));
    QCOMPARE(second.row(), 1);
    model.follow(rowsOf({9, 1, 3}));
    QVERIFY(!second.isValid());
}

// A single cell would fill an editor that is open in it afresh.
void ListModelTest::changedRows_areToldAsRows()
{
    LoadModel model(ListRows::loadColumns(), nullptr);
    QList<ListedLoad> rows = rowsOf({1, 2, 3, 4, 5});
    model.follow(rows);
    QStringList told;
    connect(&model, &ListModel::dataChanged, this, [&told](const QModelIndex& from, const QModelIndex& to) {
        told += QString::number(from.row()) + u'-' + QString::number(to.row());
        QVERIFY(from.column() == 0 && to.column() > 0);
    });
    model.follow(rows);
    QCOMPARE(told, QStringList());
    rows[1].mass = 1.0F;
    rows[2].mass = 1.0F;
    rows[4].name = u"otro"_s;
    model.follow(rows);
    QCOMPARE(told, QStringList({u"1-2"_s, u"4-4"_s}));
    QCOMPARE(model.index(4, 0).data().toString(), u"otro"_s);
}

QTEST_MAIN(ListModelTest)
#include "tst_listmodel.moc"
