#include "support/Dialogs.h"
#include "support/Window.h"

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

enum Panel
{
    NoneOpen,
    MotorOpen,
    LoadOpen,
};

enum Selection
{
    Nothing,
    ThatMotor,
    ThatLoad,
    LastLoad,
    FirstSegment,
};

using Action = std::function<void(Support::TestWindow&)>;

/// What the user has selected before an action.
enum Before
{
    NothingSelected,
    MotorSelected,
    LoadSelected,
    SegmentSelected,
};

void setText(Support::TestWindow& test, const char* field, const QString& text)
{
    test.setText(field, text);
}

} // namespace

Q_DECLARE_METATYPE(Panel)
Q_DECLARE_METATYPE(Selection)
Q_DECLARE_METATYPE(Before)
Q_DECLARE_METATYPE(Action)

/// Every action of the window, told in one table: whether it pushes an undo step, whether it
/// calculates, and what is selected and shown afterwards.
///
/// The project: two motors at the ends, the point load at 3 m, an array of eight segments in the middle.
class TestSelectionTable : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup()
    {
        m_test.reset();
    }

    void action_hasItsEffects_data();
    void action_hasItsEffects();
    void action_whileRestoring_isGuarded_data();
    void action_whileRestoring_isGuarded();

private:
    void select(Before before);
    [[nodiscard]] bool isSelected(Selection selection) const;

    std::optional<Support::TestWindow> m_test;
    int m_load = -1;
    int m_segment = -1;
};

void TestSelectionTable::init()
{
    m_test.emplace();
    m_load = m_test->hangLoad(100.0F, 3.0F);
    m_segment = m_test->addScreen();
    m_test->window.hidePropertyPanels();
    m_test->window.undoStack.clear();
}

void TestSelectionTable::select(Before before)
{
    if (before == MotorSelected)
        m_test->window.showMotorProperties(1);
    if (before == LoadSelected)
        m_test->window.showLoadProperties(m_load);
    if (before == SegmentSelected)
        m_test->window.showLoadProperties(m_segment);
}

bool TestSelectionTable::isSelected(Selection selection) const
{
    const MainWindow& window = m_test->window;
    const int motor = window.selectedMotorIndex;
    const int load = window.selectedLoadId;
    switch (selection) {
    case Nothing:
        return motor == -1 && load == -1;
    case ThatMotor: // the one with id 2, wherever it stands now
        return load == -1 && motor >= 0 && LoadLogic::MotorList.at(motor).id == 2;
    case ThatLoad:
        return motor == -1 && load == m_load;
    case LastLoad:
        return motor == -1 && load == LoadLogic::ActiveLoads.constLast().id;
    case FirstSegment: {
        const LoadLogic::ActiveLoad* segment = LoadLogic::FindLoad(load);
        return motor == -1 && segment != nullptr && Project::isScreen(*segment);
    }
    }
    return false;
}

void TestSelectionTable::action_hasItsEffects_data()
{
    QTest::addColumn<Before>("before");
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("pushesUndo");
    QTest::addColumn<bool>("calculates");
    QTest::addColumn<Selection>("selection");
    QTest::addColumn<Panel>("panel");
    const auto row = [](const char* tag, Before before, const Action& action, bool pushesUndo,
                        bool calculates, Selection selection, Panel panel) {
        QTest::newRow(tag) << before << action << pushesUndo << calculates << selection << panel;
    };
    const bool undo = true;
    const bool noUndo = false;
    const bool calculated = true;
    const bool notCalculated = false;
    const auto text = [](const char* field, const QString& value) {
        return [field, value](Support::TestWindow& b) { setText(b, field, value); };
    };

    row("length, accepted", MotorSelected, text("trussLength", u"14"_s), undo, calculated, ThatMotor,
        MotorOpen);
    row("length, too small a change", MotorSelected, text("trussLength", u"12.005"_s), noUndo, notCalculated,
        ThatMotor, MotorOpen);
    row("length, too short", LoadSelected, text("trussLength", u"0.5"_s), noUndo, notCalculated, ThatLoad,
        LoadOpen);
    row("weight, accepted", LoadSelected, text("trussWeight", u"9"_s), undo, calculated, ThatLoad, LoadOpen);
    row("weight, that does not parse", NothingSelected, text("trussWeight", u"x"_s), undo, calculated,
        Nothing, NoneOpen);
    row("weight, negative", NothingSelected, text("trussWeight", u"-1"_s), noUndo, notCalculated, Nothing,
        NoneOpen);
    row("rating, accepted", MotorSelected, text("limitCPL", u"900"_s), undo, calculated, ThatMotor,
        MotorOpen);
    row("rating, unchanged", MotorSelected, text("limitCPL", u"1600.0"_s), noUndo, notCalculated, ThatMotor,
        MotorOpen);

    const Action addMotor = [](Support::TestWindow& b) { b.window.onAddMotorClicked(); };
    row("add motor, nothing selected", NothingSelected, addMotor, undo, calculated, Nothing, NoneOpen);
    row("add motor, motor selected", MotorSelected, addMotor, undo, calculated, ThatMotor, MotorOpen);
    row("add motor, load selected", LoadSelected, addMotor, undo, calculated, ThatLoad, LoadOpen);

    const Action addLoad = [](Support::TestWindow& b) { b.window.onAddLoadClicked(); };
    row("add load, nothing selected", NothingSelected, addLoad, undo, calculated, LastLoad, NoneOpen);
    row("add load, motor selected", MotorSelected, addLoad, undo, calculated, LastLoad, NoneOpen);
    row("add load, load selected", LoadSelected, addLoad, undo, calculated, LastLoad, LoadOpen);

    const Action addScreen = [](Support::TestWindow& b) { b.window.onAddLEDLoadClicked(); };
    row("add screen, nothing selected", NothingSelected, addScreen, undo, calculated, FirstSegment, NoneOpen);
    row("add screen, motor selected", MotorSelected, addScreen, undo, calculated, FirstSegment, NoneOpen);
    row("add screen, load selected", LoadSelected, addScreen, undo, calculated, FirstSegment, LoadOpen);
    const Action addScreens = [](Support::TestWindow& b) {
        b.box("screenCount")->setValue(2);
        b.window.onAddLEDLoadClicked();
    };
    row("add screens, motor selected", MotorSelected, addScreens, undo, calculated, ThatMotor, MotorOpen);
    row("add screens, load selected", LoadSelected, addScreens, undo, calculated, ThatLoad, LoadOpen);

    row("new load's mass, nothing selected", NothingSelected, text("newLoadMass", u"7"_s), noUndo, calculated,
        Nothing, NoneOpen);
    row("new load's mass, load selected", LoadSelected, text("newLoadMass", u"7"_s), noUndo, calculated,
        ThatLoad, LoadOpen);
    row("new load's name, nothing selected", NothingSelected, text("newLoadName", u"x"_s), noUndo,
        notCalculated, Nothing, NoneOpen);
    row("new load's name, load selected", LoadSelected, text("newLoadName", u"x"_s), noUndo, notCalculated,
        ThatLoad, LoadOpen);

    const Action showMotor = [](Support::TestWindow& b) { b.window.showMotorProperties(1); };
    row("show motor", LoadSelected, showMotor, noUndo, notCalculated, ThatMotor, MotorOpen);
    row(
        "show motor out of range", LoadSelected,
        [](Support::TestWindow& b) { b.window.showMotorProperties(2); }, noUndo, notCalculated, ThatLoad,
        LoadOpen);
    row(
        "show motor -1", LoadSelected, [](Support::TestWindow& b) { b.window.showMotorProperties(-1); },
        noUndo, notCalculated, ThatLoad, LoadOpen);
    row(
        "show load", MotorSelected,
        [](Support::TestWindow& b) { b.window.showLoadProperties(LoadLogic::ActiveLoads.constFirst().id); },
        noUndo, notCalculated, ThatLoad, LoadOpen);
    row(
        "hide panels, motor", MotorSelected, [](Support::TestWindow& b) { b.window.hidePropertyPanels(); },
        noUndo, notCalculated, Nothing, NoneOpen);
    row(
        "hide panels, load", LoadSelected, [](Support::TestWindow& b) { b.window.hidePropertyPanels(); },
        noUndo, notCalculated, Nothing, NoneOpen);

    row("motor's name", MotorSelected, text("motorName", u"D8+"_s), undo, calculated, ThatMotor, MotorOpen);
    row("motor's capacity", MotorSelected, text("motorCapacity", u"500"_s), undo, calculated, ThatMotor,
        MotorOpen);
    row("motor's weight", MotorSelected, text("motorSelfWeight", u"33"_s), undo, calculated, ThatMotor,
        MotorOpen);
    row("motor's name, none selected", NothingSelected, text("motorName", u"D8+"_s), noUndo, notCalculated,
        Nothing, NoneOpen);
    row("load's name", LoadSelected, text("loadName", u"Sub"_s), undo, calculated, ThatLoad, LoadOpen);
    row("load's mass", LoadSelected, text("loadMass", u"33"_s), undo, calculated, ThatLoad, LoadOpen);
    row("load's mass, none selected", NothingSelected, text("loadMass", u"33"_s), noUndo, notCalculated,
        Nothing, NoneOpen);

    const Action deleteMotor = [](Support::TestWindow& b) { b.window.deleteSelectedMotor(); };
    const Action deleteLoad = [](Support::TestWindow& b) { b.window.deleteSelectedLoad(); };
    row("delete motor", MotorSelected, deleteMotor, undo, calculated, Nothing, NoneOpen);
    row("delete motor, none selected", LoadSelected, deleteMotor, noUndo, notCalculated, ThatLoad, LoadOpen);
    row("delete load", LoadSelected, deleteLoad, undo, calculated, Nothing, NoneOpen);
    row("delete segment", SegmentSelected, deleteLoad, undo, calculated, Nothing, NoneOpen);
    row("delete load, none selected", MotorSelected, deleteLoad, noUndo, notCalculated, ThatMotor, MotorOpen);

    row(
        "position -1", MotorSelected, [](Support::TestWindow& b) { b.window.onPositionChanged(-1); }, noUndo,
        calculated, ThatMotor, MotorOpen);
    row(
        "position, array", SegmentSelected, [](Support::TestWindow& b) { b.window.onPositionChanged(300); },
        noUndo, calculated, FirstSegment, LoadOpen);

    row("screen field, nothing selected", NothingSelected, text("screenWidth", u"5"_s), noUndo, calculated,
        Nothing, NoneOpen);
    row("screen field, motor selected", MotorSelected, text("screenWidth", u"5"_s), noUndo, calculated,
        ThatMotor, MotorOpen);
    row("screen field, load selected", LoadSelected, text("screenWidth", u"5"_s), noUndo, calculated,
        ThatLoad, LoadOpen);
    row("screen field, segment selected", SegmentSelected, text("screenWidth", u"5"_s), noUndo, calculated,
        FirstSegment, LoadOpen);
    row("screen field, too narrow", SegmentSelected, text("screenWidth", u"0.05"_s), noUndo, notCalculated,
        FirstSegment, LoadOpen);

    const Action editArray = [](Support::TestWindow& b) {
        b.window.arrayEditRequested(LoadLogic::ActiveLoads.constLast());
    };
    row("edit array, motor selected", MotorSelected, editArray, noUndo, calculated, FirstSegment, NoneOpen);
    row("edit array, load selected", LoadSelected, editArray, noUndo, calculated, FirstSegment, LoadOpen);

    const Action reset = [](Support::TestWindow& b) {
        const Support::BoxAnswer yes(QMessageBox::Yes);
        b.window.onResetProjectClicked();
        QVERIFY(yes.given());
    };
    row("reset, nothing selected", NothingSelected, reset, noUndo, calculated, Nothing, NoneOpen);
    row("reset, load selected", LoadSelected, reset, noUndo, calculated, Nothing, LoadOpen);
    row(
        "add tab, load selected", LoadSelected, [](Support::TestWindow& b) { b.window.onAddTab(); }, noUndo,
        calculated, Nothing, NoneOpen);
}

void TestSelectionTable::action_hasItsEffects()
{
    QFETCH(Before, before);
    QFETCH(Action, action);
    QFETCH(bool, pushesUndo);
    QFETCH(bool, calculates);
    QFETCH(Selection, selection);
    QFETCH(Panel, panel);
    select(before);
    const Support::CalculationWatch watch;
    action(*m_test);
    const bool calculated = watch.calculated();
    LoadLogic::CalcularReacciones();

    QCOMPARE(m_test->undoDepth(), pushesUndo ? 1 : 0);
    QCOMPARE(calculated, calculates);
    QVERIFY(isSelected(selection));
    QCOMPARE(!m_test->motorPanel()->isHidden(), panel == MotorOpen);
    QCOMPARE(!m_test->loadPanel()->isHidden(), panel == LoadOpen);
    QVERIFY(!m_test->window.isRestoring);
}

void TestSelectionTable::action_whileRestoring_isGuarded_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("calculates");
    const auto row = [](const char* tag, const Action& action, bool calculates) {
        QTest::newRow(tag) << action << calculates;
    };
    row(
        "length", [](Support::TestWindow& b) { b.window.onTrussLengthChanged(u"20"_s); }, false);
    row(
        "weight", [](Support::TestWindow& b) { b.window.onTrussWeightChanged(u"20"_s); }, false);
    row(
        "rating", [](Support::TestWindow& b) { b.window.onCPLChanged(u"20"_s); }, false);
    row(
        "mass of a new load", [](Support::TestWindow& b) { b.window.onMassChanged(u"20"_s); }, true);
    row(
        "name of a new load", [](Support::TestWindow& b) { b.window.onLoadNameChanged(u"x"_s); }, false);
    row(
        "motor panel", [](Support::TestWindow& b) { b.window.onMotorPropertyChanged(); }, false);
    row(
        "load panel", [](Support::TestWindow& b) { b.window.onLoadPropertyChanged(); }, false);
    row(
        "screen field", [](Support::TestWindow& b) { b.window.onLEDParamChanged({}); }, false);
    row(
        "selected screen", [](Support::TestWindow& b) { b.window.updateSelectedLED(2.0F); }, false);
    row(
        "position", [](Support::TestWindow& b) { b.window.onPositionChanged(-1); }, false);
    row(
        "tab", [](Support::TestWindow& b) { b.window.onTabChanged(1); }, false);
    // These have no guard of their own; only their undo step is kept out, by the push itself.
    row(
        "add motor", [](Support::TestWindow& b) { b.window.onAddMotorClicked(); }, true);
    row(
        "add screen", [](Support::TestWindow& b) { b.window.onAddLEDLoadClicked(); }, true);
}

void TestSelectionTable::action_whileRestoring_isGuarded()
{
    QFETCH(Action, action);
    QFETCH(bool, calculates);
    m_test->window.selectedLoadId = m_segment;
    m_test->window.isRestoring = true;
    const Support::CalculationWatch watch;
    action(*m_test);
    m_test->window.isRestoring = false;
    const bool calculated = watch.calculated();
    LoadLogic::CalcularReacciones();
    QCOMPARE(calculated, calculates);
    QCOMPARE(m_test->undoDepth(), 0);
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(LoadLogic::TrussSelfWeight, 8.4F);
    QCOMPARE(LoadLogic::Limit_CPL, 1600.0F);
}

QTEST_MAIN(TestSelectionTable)
#include "tst_selection_table.moc"
