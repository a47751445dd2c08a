#include "support/Window.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Of a 4 m × 3 m screen of 40 kg/m² with 10 kg/m of bumper and 7 % of cable: 556.4 kg in 8 segments.
constexpr float SEGMENT_MASS = 69.55F; // [kg]

bool isNear(float value, float expected)
{
    return qAbs(value - expected) < 1e-4F;
}

float massOf(int id)
{
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(id);
    return load == nullptr ? -1.0F : load->mass;
}

} // namespace

/// Snapshots of a project, and the way back through them.
class TestUndo : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void capture_readsStaticsFieldsAndSelection();
    void capture_countsTextThatDoesNotParseAsZero();
    void capture_takesTheNameOfTheTabInTheEngine();
    void captureAndRestore_giveTheSameProjectBack();
    void restore_writesFixedDecimals();
    void restore_leavesTheScreenStaticsAlone();
    void restore_doesNotCalculate();
    void restore_pushesNoUndoStep();
    void restore_withUnknownSelection_clearsIt();
    void restore_ofASelectedLoad_fillsItsFields();
    void restore_ofASelectedSegment_showsItsCable();
    void restore_changesNoMass();
    void restore_renewsTheRedMarks();
    void undo_onAnEmptyStack_doesNothing();
    void undo_after25Edits_goesBack20();
    void undo_restoresAFieldThatDoesNotParse();
    void undo_afterDeletingTheSelectedLoad_bringsItBack();
    void undo_inAnotherTab_restoresThere();
    void undo_recalculates();
    void undo_keepsTheMassOfASegment();
    void tabSwitch_keepsTheMassOfASegment();
    void tabSwitch_keepsTheUndoStack();
    void afterASwitch_widthFieldAndStaticDiffer();
    void undoKeys_workWithTheFocusInAField();
    void undoKeys_workWithTheFocusInASpinBox();
    void undoKeys_workWithTheFocusOnAButton();

private:
    std::optional<Support::TestWindow> m_test;
};

void TestUndo::capture_readsStaticsFieldsAndSelection()
{
    LoadLogic::TrussLength = 14.5F;
    LoadLogic::TrussSelfWeight = 9.5F;
    LoadLogic::Limit_CPL = 1800.0F;
    LoadLogic::LED_TotalWeight = 77.5F;
    LoadLogic::TrussStress_Percentage = 12.5F;
    LoadLogic::isUnstable = true;
    m_test->window.isRestoring = true; // the handlers of the fields keep out
    m_test->setText("screenWidth", u"6.25"_s);
    m_test->setText("screenHeight", u"2.5"_s);
    m_test->setText("screenWeightM2", u"33"_s);
    m_test->setText("bumperWeight", u"11"_s);
    m_test->setText("cablePercent", u"9"_s);
    m_test->window.isRestoring = false;
    LoadLogic::Screen_Width = 1.0F; // not what is captured
    m_test->window.selectedLoadId = 42;
    m_test->window.projectCounter = 123;

    const LoadLogic::ProjectState s = m_test->window.captureCurrentState();
    QCOMPARE(s.tabName, u"Proyecto 1"_s);
    QCOMPARE(s.trussLength, 14.5F);
    QCOMPARE(s.trussSelfWeight, 9.5F);
    QCOMPARE(s.limitCPL, 1800.0F);
    QCOMPARE(s.screenWidth, 6.25F);
    QCOMPARE(s.screenHeight, 2.5F);
    QCOMPARE(s.screenWeightM2, 33.0F);
    QCOMPARE(s.bumperWeightPerMeter, 11.0F);
    QCOMPARE(s.cableWeightPercent, 9.0F);
    QCOMPARE(s.ledTotalWeight, 77.5F);
    QCOMPARE(s.trussStressPercentage, 12.5F);
    QVERIFY(s.isUnstable);
    QCOMPARE(s.motors.size(), 2);
    QCOMPARE(s.motors.at(0).staticLoad, 50.4F); // results travel along
    QCOMPARE(s.selectedLoadId, 42);
    QCOMPARE(s.projectCounter, 123);
}

void TestUndo::capture_countsTextThatDoesNotParseAsZero()
{
    for (const QString& text : {u""_s, u"-"_s, u"abc"_s, u"nan"_s, u"inf"_s, u"1e99"_s, u"8,4"_s}) {
        m_test->setText("screenWidth", text);
        QCOMPARE(m_test->window.captureCurrentState().screenWidth, 0.0F);
    }
}

void TestUndo::capture_takesTheNameOfTheTabInTheEngine()
{
    m_test->window.onAddTab();
    QCOMPARE(m_test->window.captureCurrentState().tabName, u"Proyecto 2"_s);
    m_test->window.currentProjectIndex = 0; // the tab bar stands on the second tab
    QCOMPARE(m_test->window.captureCurrentState().tabName, u"Proyecto 1"_s);
    m_test->window.currentProjectIndex = 7;
    QCOMPARE(m_test->window.captureCurrentState().tabName, u"Proyecto"_s);
    m_test->window.currentProjectIndex = 1;
}

void TestUndo::captureAndRestore_giveTheSameProjectBack()
{
    m_test->hangLoad(321.5F, 3.25F);
    m_test->addScreen();
    const LoadLogic::ProjectState before = m_test->window.captureCurrentState();
    LoadLogic::MotorList.clear();
    LoadLogic::ActiveLoads.clear();
    LoadLogic::TrussLength = 3.0F;
    m_test->window.restoreProjectState(before);
    m_test->window.updateCalculations();
    const LoadLogic::ProjectState after = m_test->window.captureCurrentState();

    QCOMPARE(after.trussLength, before.trussLength);
    QCOMPARE(after.loads.size(), before.loads.size());
    for (qsizetype i = 0; i < after.loads.size(); ++i) {
        QCOMPARE(after.loads.at(i).id, before.loads.at(i).id);
        QCOMPARE(after.loads.at(i).mass, before.loads.at(i).mass);
        QCOMPARE(after.loads.at(i).positionX, before.loads.at(i).positionX);
        QCOMPARE(after.loads.at(i).screenHeight, before.loads.at(i).screenHeight);
    }
    QCOMPARE(after.motors.size(), before.motors.size());
    QCOMPARE(after.motors.at(0).staticLoad, before.motors.at(0).staticLoad);
    QCOMPARE(after.trussStressPercentage, before.trussStressPercentage);
    QCOMPARE(after.selectedLoadId, before.selectedLoadId);
    QCOMPARE(after.ledTotalWeight, before.ledTotalWeight);
}

void TestUndo::restore_writesFixedDecimals()
{
    LoadLogic::ProjectState s;
    s.trussLength = 14.56F;
    s.trussSelfWeight = 9.0F;
    s.limitCPL = 1234.6F;
    s.screenWidth = 5.126F;
    s.screenHeight = 2.0F;
    s.screenWeightM2 = 33.33F;
    s.bumperWeightPerMeter = 11.0F;
    s.cableWeightPercent = 8.26F;
    s.ledTotalWeight = 99.96F;
    m_test->window.restoreProjectState(s);
    QCOMPARE(m_test->text("trussLength"), u"14.6"_s);
    QCOMPARE(m_test->text("trussWeight"), u"9.0"_s);
    QCOMPARE(m_test->text("limitCPL"), u"1235"_s);
    QCOMPARE(m_test->text("screenWidth"), u"5.13"_s);
    QCOMPARE(m_test->text("screenHeight"), u"2.00"_s);
    QCOMPARE(m_test->text("screenWeightM2"), u"33.3"_s);
    QCOMPARE(m_test->text("bumperWeight"), u"11.0"_s);
    QCOMPARE(m_test->text("cablePercent"), u"8.3"_s);
    QCOMPARE(m_test->label("screenWeight")->text(), u"Peso Total Array: 100.0 kg (+8.3% cable)"_s);
    QCOMPARE(LoadLogic::LED_TotalWeight, 99.96F);
    QCOMPARE(LoadLogic::TrussLength, 14.56F);
}

void TestUndo::restore_leavesTheScreenStaticsAlone()
{
    LoadLogic::ProjectState s;
    s.screenWidth = 9.0F;
    s.screenHeight = 9.0F;
    s.screenWeightM2 = 9.0F;
    s.bumperWeightPerMeter = 9.0F;
    m_test->window.restoreProjectState(s);
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
    QCOMPARE(LoadLogic::Screen_Height, 3.0F);
    QCOMPARE(LoadLogic::Screen_Weight_M2, 40.0F);
    QCOMPARE(LoadLogic::Bumper_Weight_Per_Meter, 10.0F);
}

void TestUndo::restore_doesNotCalculate()
{
    const int id = m_test->hangLoad(69.55F, 4.0F);
    m_test->window.showLoadProperties(id);
    const LoadLogic::ProjectState s = m_test->window.captureCurrentState();
    const Support::CalculationWatch watch;
    m_test->window.restoreProjectState(s);
    QVERIFY(!watch.calculated());
}

void TestUndo::restore_pushesNoUndoStep()
{
    LoadLogic::ProjectState s;
    s.trussLength = 20.0F;
    s.trussSelfWeight = 3.0F;
    s.limitCPL = 800.0F;
    m_test->window.restoreProjectState(s);
    QCOMPARE(m_test->undoDepth(), 0);
    QVERIFY(!m_test->window.isRestoring);
    m_test->window.isRestoring = true;
    m_test->window.pushUndoState();
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestUndo::restore_withUnknownSelection_clearsIt()
{
    LoadLogic::ProjectState s;
    s.selectedLoadId = 4711;
    m_test->setText("newLoadMass", u"250"_s);
    m_test->window.restoreProjectState(s);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QCOMPARE(m_test->text("newLoadMass"), u"5"_s);
    QCOMPARE(m_test->text("newLoadName"), u"Carga"_s);
}

void TestUndo::restore_ofASelectedLoad_fillsItsFields()
{
    LoadLogic::ProjectState s = m_test->window.captureCurrentState();
    LoadLogic::ActiveLoad load;
    load.id = 900'001;
    load.mass = 123.45F;
    load.name = u"Line array"_s;
    load.cableWeightPercent = 3.0F;
    s.loads.append(load);
    s.selectedLoadId = load.id;
    m_test->window.restoreProjectState(s);
    QCOMPARE(m_test->text("newLoadMass"), u"123.4"_s); // the nearest float lies below 123.45
    QCOMPARE(m_test->text("newLoadName"), u"Line array"_s);
    QCOMPARE(m_test->text("cablePercent"), u"7.0"_s); // no screen: the field is the project's
    QCOMPARE(massOf(load.id), 123.45F);
}

void TestUndo::restore_ofASelectedSegment_showsItsCable()
{
    const int id = m_test->addScreen();
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads)
        load.cableWeightPercent = 12.5F;
    const LoadLogic::ProjectState s = m_test->window.captureCurrentState();
    m_test->window.restoreProjectState(s);
    QCOMPARE(m_test->text("cablePercent"), u"12.5"_s);
    QCOMPARE(m_test->window.selectedLoadId, id);
}

void TestUndo::restore_changesNoMass()
{
    const int id = m_test->addScreen();
    QVERIFY(isNear(massOf(id), SEGMENT_MASS));
    m_test->window.restoreProjectState(m_test->window.captureCurrentState());
    QCOMPARE(m_test->text("newLoadMass"), u"69.6"_s); // shown rounded, kept exact
    QVERIFY(isNear(massOf(id), SEGMENT_MASS));
}

void TestUndo::restore_renewsTheRedMarks()
{
    const LoadLogic::ProjectState good = m_test->window.captureCurrentState();
    m_test->setText("screenWidth", u"-"_s);
    m_test->setText("trussLength", u"0"_s);
    m_test->setText("newLoadMass", u""_s);
    for (const char* name : {"screenWidth", "trussLength", "newLoadMass"})
        QVERIFY2(m_test->field(name)->styleSheet().contains(u"#FF5555"_s), name);
    m_test->window.restoreProjectState(good);
    for (const char* name : {"screenWidth", "trussLength", "newLoadMass"})
        QCOMPARE(m_test->field(name)->styleSheet(), QString());
}

void TestUndo::undo_onAnEmptyStack_doesNothing()
{
    m_test->hangLoad(10.0F, 1.0F);
    const Support::CalculationWatch watch;
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QVERIFY(!watch.calculated());
    LoadLogic::CalcularReacciones();
}

// Lengths 13, 14 … 37; the 20 newest snapshots hold the lengths before: 36, 35 … 17.
void TestUndo::undo_after25Edits_goesBack20()
{
    for (int i = 1; i <= 25; ++i)
        m_test->setText("trussLength", QString::number(12 + i));
    QCOMPARE(m_test->undoDepth(), 20);
    for (int i = 1; i <= 20; ++i) {
        m_test->window.undo();
        QCOMPARE(LoadLogic::TrussLength, static_cast<float>(37 - i));
    }
    QCOMPARE(m_test->undoDepth(), 0);
    for (int i = 21; i <= 25; ++i)
        m_test->window.undo();
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestUndo::undo_restoresAFieldThatDoesNotParse()
{
    m_test->setText("trussWeight", u"10"_s);
    m_test->setText("trussLength", u"abc"_s);
    m_test->window.undo();
    QCOMPARE(m_test->text("trussLength"), u"12.0"_s);
    QCOMPARE(m_test->text("trussWeight"), u"8.4"_s);
    QCOMPARE(m_test->field("trussLength")->styleSheet(), QString());
}

void TestUndo::undo_afterDeletingTheSelectedLoad_bringsItBack()
{
    const int id = m_test->hangLoad(250.0F, 4.0F);
    m_test->window.showLoadProperties(id);
    m_test->window.deleteSelectedLoad();
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(m_test->window.selectedLoadId, id);
    QCOMPARE(m_test->text("newLoadMass"), u"250.0"_s);
}

void TestUndo::undo_inAnotherTab_restoresThere()
{
    m_test->setText("trussLength", u"20"_s); // pushes the project as it was, of 12 m
    m_test->window.onAddMotorClicked();
    m_test->window.onAddTab();
    m_test->window.undo();
    QCOMPARE(LoadLogic::TrussLength, 20.0F); // before "+ Motor", of the first tab
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.at(0).selfWeight, 50.0F); // not the 25 kg of a new tab
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(m_test->tabBar()->tabText(1), u"Proyecto 2"_s);
}

void TestUndo::undo_recalculates()
{
    m_test->window.onAddLoadClicked();
    const Support::CalculationWatch watch;
    m_test->window.undo();
    QVERIFY(watch.calculated());
    QCOMPARE(m_test->label("stressLabel")->text(), u"Estrés Estructural: 3%"_s);
}

void TestUndo::undo_keepsTheMassOfASegment()
{
    const int id = m_test->addScreen();
    m_test->window.onAddMotorClicked();
    m_test->window.undo();
    QCOMPARE(m_test->window.selectedLoadId, id);
    QVERIFY(isNear(massOf(id), SEGMENT_MASS));
}

void TestUndo::tabSwitch_keepsTheMassOfASegment()
{
    const int id = m_test->addScreen();
    m_test->window.onAddTab();
    m_test->tabBar()->setCurrentIndex(0);
    QCOMPARE(m_test->window.selectedLoadId, id);
    QVERIFY(isNear(massOf(id), SEGMENT_MASS));
    // All eight together are the whole screen again.
    float sum = 0.0F;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
        sum += load.mass;
    QVERIFY(qAbs(sum - 556.4F) < 1e-2F);
}

void TestUndo::tabSwitch_keepsTheUndoStack()
{
    m_test->window.onAddMotorClicked();
    m_test->window.onAddTab();
    QCOMPARE(m_test->undoDepth(), 1);
    m_test->tabBar()->setCurrentIndex(0);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestUndo::afterASwitch_widthFieldAndStaticDiffer()
{
    m_test->setText("screenWidth", u"6"_s);
    m_test->window.onAddTab();
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
    QCOMPARE(LoadLogic::Screen_Width, 6.0F);
    m_test->setText("screenHeight", u"2"_s);
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
}

void TestUndo::undoKeys_workWithTheFocusInAField()
{
    QVERIFY(m_test->activate());
    QLineEdit* name = m_test->field("newLoadName");
    name->setFocus();
    QTest::keyClicks(name, u" de prueba"_s); // the field has an undo of its own, which must not come
    const QString typed = name->text();
    m_test->window.onAddMotorClicked();
    QTest::keyClick(name, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(name->text(), typed);
}

void TestUndo::undoKeys_workWithTheFocusInASpinBox()
{
    QVERIFY(m_test->activate());
    QSpinBox* count = m_test->box("loadCount");
    count->setFocus();
    m_test->window.onAddMotorClicked();
    QTest::keyClick(count, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
}

void TestUndo::undoKeys_workWithTheFocusOnAButton()
{
    QVERIFY(m_test->activate());
    QPushButton* button = m_test->button(u"+ Motor"_s);
    button->setFocus();
    m_test->window.onAddMotorClicked();
    QTest::keyClick(button, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
}

QTEST_MAIN(TestUndo)
#include "tst_undo.moc"
