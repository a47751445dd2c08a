#include "support/Window.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

constexpr float CLOSE = 1e-4F;

bool isNear(float value, float expected)
{
    return qAbs(value - expected) < CLOSE;
}

const LoadLogic::ActiveLoad& loadAt(qsizetype index)
{
    return LoadLogic::ActiveLoads.at(index);
}

int hangInGroup(int groupId, float x, const QString& type)
{
    LoadLogic::ActiveLoad load;
    load.groupId = groupId;
    load.positionX = x;
    load.type = type;
    load.screenWidth = 1.0F;
    load.screenHeight = 2.5F;
    return LoadLogic::PlaceLoad(load);
}

} // namespace

/// The truss fields, the buttons that add motors and loads, and the fields of the next load.
class TestControls : public QObject
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

    void length_changeWithinTolerance_isIgnored_data();
    void length_changeWithinTolerance_isIgnored();
    void length_beyondTolerance_isTaken();
    void length_scalesMotorsAndLoads();
    void length_movesAnArrayAsOne();
    void length_holdsLoadsInsideTheTruss();
    void length_doesNotClampMotors();
    void length_groupIsScaledAroundItsOldCentre();
    void length_selectedVideo_fillsTheScreenFields();
    void length_selectedVideoArray_isReadBeforeItIsBuiltAgain();
    void length_selectedSegment_leavesTheScreenFields();
    void length_hugeOrOdd_staysDefined_data();
    void length_hugeOrOdd_staysDefined();
    void weightAndRating_areTaken();
    void weightAndRating_textThatDoesNotParse_isZero();
    void weightAndRating_negativeOrSmallChanges_areIgnored();
    void addMotor_hangsInTheMiddle();
    void addLoad_one_hangsInTheMiddle();
    void addLoad_three_areSpreadEvenly();
    void addLoad_withoutMass_is500kg_data();
    void addLoad_withoutMass_is500kg();
    void addLoad_nameIsTrimmed_data();
    void addLoad_nameIsTrimmed();
    void addLoad_selectsTheLast();
    void addLoad_endsTheMotorSelection();
    void addLoad_fillsAnOpenLoadPanel();
    void addLoad_hundred_isFast();
    void mass_editsTheSelectedLoadWithoutUndo();
    void mass_thatDoesNotParse_isZero();
    void mass_withoutSelection_stillCalculates();
    void mass_isNotGuarded();
    void name_editsTheSelectedLoadAsTyped();
    void name_isGuarded();
    void position_minusOne_calculates();
    void position_withoutSelection_calculates();
    void position_ofAPointLoad_calculates();
    void position_ofAScreenWithoutGroup_doesNotCalculate();
    void position_movesTheWholeArray();
    void position_isGuarded();
    void hyperstaticWarning_comesWithTheThirdMotor();

private:
    std::optional<Support::TestWindow> m_test;
};

void TestControls::length_changeWithinTolerance_isIgnored_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a little more") << u"12.005"_s;
    QTest::newRow("a little less") << u"11.995"_s;
    QTest::newRow("the same") << u"12.0"_s;
    QTest::newRow("too short") << u"0.9"_s;
    QTest::newRow("zero") << u"0"_s;
    QTest::newRow("negative") << u"-12"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("no number") << u"abc"_s;
    QTest::newRow("not a number") << u"nan"_s;
    QTest::newRow("infinite") << u"inf"_s;
    QTest::newRow("too large") << u"1e39"_s;
    QTest::newRow("comma") << u"13,5"_s;
}

void TestControls::length_changeWithinTolerance_isIgnored()
{
    QFETCH(QString, text);
    const Support::CalculationWatch watch;
    m_test->window.onTrussLengthChanged(text);
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(m_test->undoDepth(), 0);
    QVERIFY(!watch.calculated());
}

void TestControls::length_beyondTolerance_isTaken()
{
    m_test->setText("trussLength", u"12.1"_s);
    QCOMPARE(LoadLogic::TrussLength, 12.1F);
    m_test->setText("trussLength", u"1"_s);
    QCOMPARE(LoadLogic::TrussLength, 1.0F);
    QCOMPARE(m_test->undoDepth(), 2);
}

// 6 / 12 = 0.5: 12 → 6, 3 → 1.5
void TestControls::length_scalesMotorsAndLoads()
{
    m_test->hangLoad(100.0F, 3.0F);
    m_test->setText("trussLength", u"6"_s);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 0.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 6.0F);
    QCOMPARE(loadAt(0).positionX, 1.5F);
}

void TestControls::length_movesAnArrayAsOne()
{
    hangInGroup(500, 5.75F, u"Video_Segment"_s);
    hangInGroup(500, 6.25F, u"Video_Segment"_s);
    m_test->setText("trussLength", u"6"_s);
    QVERIFY(isNear(loadAt(0).positionX, 2.75F));
    QVERIFY(isNear(loadAt(1).positionX, 3.25F));
}

void TestControls::length_holdsLoadsInsideTheTruss()
{
    m_test->hangLoad(1.0F, 0.0F);
    m_test->hangLoad(1.0F, 12.0F);
    m_test->setText("trussLength", u"6"_s);
    QVERIFY(isNear(loadAt(0).positionX, 0.01F));
    QVERIFY(isNear(loadAt(1).positionX, 5.99F));

    // An array of 5 m on a truss of 2 m: centre 1, its ends at -1.5 and 3.5 are held back.
    LoadLogic::ActiveLoads.clear();
    hangInGroup(501, 0.5F, u"Video_Segment"_s);
    hangInGroup(501, 5.5F, u"Video_Segment"_s);
    m_test->setText("trussLength", u"2"_s);
    QVERIFY(isNear(loadAt(0).positionX, 0.01F));
    QVERIFY(isNear(loadAt(1).positionX, 1.99F));
}

void TestControls::length_doesNotClampMotors()
{
    LoadLogic::MotorList[1].positionX = 15.0F; // as a file may bring it
    m_test->setText("trussLength", u"6"_s);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 7.5F);
}

// Loads of a group at 2, 3 and 7 m: centre 4. Twice the length: centre 8, offsets -2, -1 and 3.
void TestControls::length_groupIsScaledAroundItsOldCentre()
{
    hangInGroup(502, 2.0F, u"Video_Segment"_s);
    hangInGroup(502, 3.0F, u"Video_Segment"_s);
    hangInGroup(502, 7.0F, QString()); // as after opening a file: no type word, but of the group
    m_test->setText("trussLength", u"24"_s);
    QVERIFY(isNear(loadAt(0).positionX, 6.0F));
    QVERIFY(isNear(loadAt(1).positionX, 7.0F));
    QVERIFY(isNear(loadAt(2).positionX, 11.0F));
}

void TestControls::length_selectedVideo_fillsTheScreenFields()
{
    LoadLogic::ActiveLoad video;
    video.type = u"Video"_s;
    video.positionX = 6.0F;
    video.screenWidth = 2.346F;
    video.screenHeight = 1.5F;
    m_test->window.selectedLoadId = LoadLogic::PlaceLoad(video);
    m_test->setText("trussLength", u"14"_s);
    QCOMPARE(m_test->text("screenWidth"), u"2.35"_s);
    QCOMPARE(m_test->text("screenHeight"), u"1.50"_s);
}

// Writing the width builds the array again, and the load that the height comes from is gone.
void TestControls::length_selectedVideoArray_isReadBeforeItIsBuiltAgain()
{
    m_test->window.selectedLoadId = hangInGroup(503, 6.0F, u"Video"_s); // of 1.0 × 2.5 m
    m_test->setText("trussLength", u"14"_s);
    QCOMPARE(m_test->text("screenWidth"), u"1.00"_s);
    QCOMPARE(m_test->text("screenHeight"), u"2.50"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 2); // 1 m: two segments
    QCOMPARE(loadAt(0).screenHeight, 2.5F);
    QCOMPARE(loadAt(0).groupId, 503);
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
}

void TestControls::length_selectedSegment_leavesTheScreenFields()
{
    m_test->window.selectedLoadId = hangInGroup(504, 6.0F, u"Video_Segment"_s);
    m_test->setText("trussLength", u"14"_s);
    QCOMPARE(m_test->text("screenWidth"), u"4"_s);
    QCOMPARE(m_test->text("screenHeight"), u"3"_s);
}

void TestControls::length_hugeOrOdd_staysDefined_data()
{
    QTest::addColumn<float>("before");
    QTest::newRow("no length") << 0.0F;
    QTest::newRow("negative length") << -5.0F;
    QTest::newRow("a billion metres") << 1e9F;
    QTest::newRow("the largest length") << 3.4e38F;
}

void TestControls::length_hugeOrOdd_staysDefined()
{
    QFETCH(float, before);
    m_test->hangLoad(10.0F, 6.0F);
    LoadLogic::TrussLength = before;
    m_test->setText("trussLength", u"10"_s);
    QCOMPARE(LoadLogic::TrussLength, 10.0F);
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        QVERIFY(qIsFinite(motor.positionX));
    QVERIFY(loadAt(0).positionX >= 0.01F - CLOSE && loadAt(0).positionX <= 9.99F + CLOSE);
}

void TestControls::weightAndRating_areTaken()
{
    m_test->setText("trussWeight", u"10.5"_s);
    QCOMPARE(LoadLogic::TrussSelfWeight, 10.5F);
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, 63.0F); // 10.5 × 12 / 2
    m_test->setText("limitCPL", u"800"_s);
    QCOMPARE(LoadLogic::Limit_CPL, 800.0F);
    QCOMPARE(LoadLogic::TrussStress_Percentage, 7.875F); // 10.5 × 12² / 8 of 12 × 800 / 4
    QCOMPARE(m_test->undoDepth(), 2);
}

void TestControls::weightAndRating_textThatDoesNotParse_isZero()
{
    m_test->setText("trussWeight", u"abc"_s);
    QCOMPARE(LoadLogic::TrussSelfWeight, 0.0F);
    m_test->setText("limitCPL", QString());
    QCOMPARE(LoadLogic::Limit_CPL, 0.0F);
    QCOMPARE(LoadLogic::TrussStress_Percentage, 0.0F);
    QCOMPARE(m_test->undoDepth(), 2);
}

void TestControls::weightAndRating_negativeOrSmallChanges_areIgnored()
{
    const Support::CalculationWatch watch;
    m_test->window.onTrussWeightChanged(u"-1"_s);
    m_test->window.onTrussWeightChanged(u"8.405"_s);
    m_test->window.onCPLChanged(u"-1"_s);
    m_test->window.onCPLChanged(u"1600.005"_s);
    QCOMPARE(LoadLogic::TrussSelfWeight, 8.4F);
    QCOMPARE(LoadLogic::Limit_CPL, 1600.0F);
    QCOMPARE(m_test->undoDepth(), 0);
    QVERIFY(!watch.calculated());
}

void TestControls::addMotor_hangsInTheMiddle()
{
    m_test->setText("trussLength", u"10"_s);
    m_test->window.onAddMotorClicked();
    const LoadLogic::Motor& middle = LoadLogic::MotorList.at(1);
    QCOMPARE(middle.positionX, 5.0F);
    QCOMPARE(middle.id, 3);
    QCOMPARE(middle.selfWeight, 50.0F);
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
}

void TestControls::addLoad_one_hangsInTheMiddle()
{
    const int nextId = LoadLogic::NextLoadId;
    m_test->setText("newLoadMass", u"120"_s);
    m_test->window.onAddLoadClicked();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    const LoadLogic::ActiveLoad& load = loadAt(0);
    QCOMPARE(load.id, nextId);
    QCOMPARE(load.mass, 120.0F);
    QCOMPARE(load.positionX, 6.0F);
    QCOMPARE(load.type, u"Audio"_s);
    QCOMPARE(load.name, u"Carga"_s);
    QCOMPARE(load.groupId, -1);
    QCOMPARE(load.screenWidth, 0.0F);
    QCOMPARE(load.screenHeight, 0.0F);
    QCOMPARE(load.screenWeightM2, 0.0F);
    QCOMPARE(load.bumperWeightPerMeter, 0.0F);
    QCOMPARE(load.cableWeightPercent, 7.0F);
}

void TestControls::addLoad_three_areSpreadEvenly()
{
    m_test->box("loadCount")->setValue(3);
    m_test->setText("newLoadMass", u"120"_s);
    m_test->window.onAddLoadClicked();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(loadAt(i).name, u"Carga %1"_s.arg(i + 1));
        QCOMPARE(loadAt(i).positionX, 3.0F * static_cast<float>(i + 1)); // 12 / 4 apart
        QCOMPARE(loadAt(i).mass, 120.0F);
        QCOMPARE(loadAt(i).type, u"Audio"_s);
        QCOMPARE(loadAt(i).groupId, -1);
    }
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestControls::addLoad_withoutMass_is500kg_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("zero") << u"0"_s;
    QTest::newRow("negative") << u"-5"_s;
    QTest::newRow("no number") << u"abc"_s;
}

void TestControls::addLoad_withoutMass_is500kg()
{
    QFETCH(QString, text);
    m_test->setText("newLoadMass", text);
    m_test->window.onAddLoadClicked();
    QCOMPARE(loadAt(0).mass, 500.0F);
    QCOMPARE(m_test->text("newLoadMass"), u"500"_s);
    QCOMPARE(m_test->field("newLoadMass")->styleSheet(), QString());
}

void TestControls::addLoad_nameIsTrimmed_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"Sub"_s << 1 << u"Sub"_s;
    QTest::newRow("blanks around") << u"  Sub grave "_s << 1 << u"Sub grave"_s;
    QTest::newRow("blanks alone") << u"   "_s << 1 << u"Carga"_s;
    QTest::newRow("empty") << QString() << 1 << u"Carga"_s;
    QTest::newRow("numbered") << u" Sub"_s << 2 << u"Sub 2"_s;
    QTest::newRow("with place holders") << u"50%1 \"A\" %2"_s << 2 << u"50%1 \"A\" %2 2"_s;
}

void TestControls::addLoad_nameIsTrimmed()
{
    QFETCH(QString, typed);
    QFETCH(int, count);
    QFETCH(QString, name);
    m_test->box("loadCount")->setValue(count);
    m_test->setText("newLoadName", typed);
    m_test->window.onAddLoadClicked();
    QCOMPARE(LoadLogic::ActiveLoads.constLast().name, name);
    QCOMPARE(m_test->text("newLoadName"), typed);
}

void TestControls::addLoad_selectsTheLast()
{
    m_test->box("loadCount")->setValue(4);
    m_test->window.onAddLoadClicked();
    QCOMPARE(m_test->window.selectedLoadId, loadAt(3).id);
    // From here on the mass field edits that load.
    m_test->setText("newLoadMass", u"77"_s);
    QCOMPARE(loadAt(3).mass, 77.0F);
    QCOMPARE(loadAt(0).mass, 5.0F);
}

void TestControls::addLoad_endsTheMotorSelection()
{
    m_test->window.showMotorProperties(0);
    m_test->window.onAddLoadClicked();
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
    QVERIFY(m_test->motorPanel()->isHidden());
    QVERIFY(m_test->loadPanel()->isHidden());
}

void TestControls::addLoad_fillsAnOpenLoadPanel()
{
    m_test->window.showLoadProperties(m_test->hangLoad(33.0F, 1.0F));
    m_test->setText("newLoadMass", u"44"_s);
    m_test->setText("newLoadName", u"Nueva"_s);
    m_test->window.onAddLoadClicked();
    QVERIFY(!m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->text("loadMass"), u"44.0"_s);
    QCOMPARE(m_test->text("loadName"), u"Nueva"_s);
    m_test->setText("loadMass", u"55"_s);
    QCOMPARE(LoadLogic::ActiveLoads.constLast().mass, 55.0F);
}

void TestControls::addLoad_hundred_isFast()
{
    m_test->box("loadCount")->setValue(100);
    const Support::CpuTimer timer;
    m_test->window.onAddLoadClicked();
    QVERIFY2(timer.elapsed() < 250 * Support::slowness(), qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(LoadLogic::ActiveLoads.size(), 100);
}

void TestControls::mass_editsTheSelectedLoadWithoutUndo()
{
    const int id = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.showLoadProperties(id);
    m_test->setText("newLoadMass", u"250"_s);
    QCOMPARE(loadAt(0).mass, 250.0F);
    QCOMPARE(m_test->undoDepth(), 0);
    QCOMPARE(m_test->text("loadMass"), u"250.0"_s);
    // (151.2 + 250 × 6 × 6 / 12) / 4800 = 18.775 %
    QCOMPARE(m_test->label("stressLabel")->text(), u"Estrés Estructural: 18%"_s);
}

void TestControls::mass_thatDoesNotParse_isZero()
{
    const int id = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.showLoadProperties(id);
    m_test->setText("newLoadMass", u"x"_s);
    QCOMPARE(loadAt(0).mass, 0.0F);
    QVERIFY(m_test->field("newLoadMass")->styleSheet().contains(u"#FF5555"_s));
}

void TestControls::mass_withoutSelection_stillCalculates()
{
    const Support::CalculationWatch watch;
    m_test->setText("newLoadMass", u"9"_s);
    QVERIFY(watch.calculated());
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestControls::mass_isNotGuarded()
{
    m_test->window.selectedLoadId = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.isRestoring = true;
    m_test->window.onMassChanged(u"70"_s);
    m_test->window.isRestoring = false;
    QCOMPARE(loadAt(0).mass, 70.0F);
}

void TestControls::name_editsTheSelectedLoadAsTyped()
{
    const int id = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.showLoadProperties(id);
    const Support::CalculationWatch watch;
    m_test->setText("newLoadName", u"  PA izquierda "_s);
    QCOMPARE(loadAt(0).name, u"  PA izquierda "_s);
    QCOMPARE(m_test->text("loadName"), u"  PA izquierda "_s);
    QVERIFY(!watch.calculated());
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestControls::name_isGuarded()
{
    m_test->window.selectedLoadId = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.isRestoring = true;
    m_test->window.onLoadNameChanged(u"Otra"_s);
    m_test->window.isRestoring = false;
    QCOMPARE(loadAt(0).name, u"Carga"_s);
}

void TestControls::position_minusOne_calculates()
{
    m_test->addScreen();
    const LoadLogic::ActiveLoad first = loadAt(0);
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(-1);
    QVERIFY(watch.calculated());
    QCOMPARE(loadAt(0).id, first.id); // not built again
}

void TestControls::position_withoutSelection_calculates()
{
    m_test->hangLoad(10.0F, 3.0F);
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(500);
    QVERIFY(watch.calculated());
    QCOMPARE(loadAt(0).positionX, 3.0F);
}

void TestControls::position_ofAPointLoad_calculates()
{
    m_test->window.selectedLoadId = m_test->hangLoad(10.0F, 3.0F);
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(500);
    QVERIFY(watch.calculated());
    QCOMPARE(loadAt(0).positionX, 3.0F);
}

void TestControls::position_ofAScreenWithoutGroup_doesNotCalculate()
{
    m_test->window.selectedLoadId = hangInGroup(-1, 3.0F, u"Video"_s);
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(500);
    QVERIFY(!watch.calculated());
    LoadLogic::CalcularReacciones();
}

// 250 ‰ of 12 m is 3 m: the 8 segments of a 4 m screen run from 1.25 to 4.75 m.
void TestControls::position_movesTheWholeArray()
{
    m_test->addScreen();
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(250);
    QVERIFY(watch.calculated());
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    QCOMPARE(loadAt(0).positionX, 1.25F);
    QCOMPARE(loadAt(7).positionX, 4.75F);
    QVERIFY(!m_test->window.isRestoring);
}

void TestControls::position_isGuarded()
{
    m_test->window.isRestoring = true;
    const Support::CalculationWatch watch;
    m_test->window.onPositionChanged(-1);
    m_test->window.isRestoring = false;
    QVERIFY(!watch.calculated());
    LoadLogic::CalcularReacciones();
}

void TestControls::hyperstaticWarning_comesWithTheThirdMotor()
{
    const QLabel* warning = m_test->label("hyperstaticWarning");
    QVERIFY(warning->isHidden());
    m_test->window.onAddMotorClicked();
    QVERIFY(!warning->isHidden());
    m_test->window.showMotorProperties(1);
    m_test->window.deleteSelectedMotor();
    QVERIFY(warning->isHidden());
}

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
