#include "support/Window.h"

#include <algorithm>
#include <optional>
#include <set>

using namespace Qt::StringLiterals;

namespace
{

bool isNear(float value, float expected)
{
    return qAbs(value - expected) < 1e-3F;
}

const LoadLogic::ActiveLoad& loadAt(qsizetype index)
{
    return LoadLogic::ActiveLoads.at(index);
}

std::vector<float> positions()
{
    std::vector<float> result;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
        result.push_back(load.positionX);
    return result;
}

float meanPosition()
{
    const std::vector<float> all = positions();
    float sum = 0.0F;
    for (const float x : all)
        sum += x;
    return sum / static_cast<float>(all.size());
}

} // namespace

/// The LED screens: their weight, how they are hung, and how a hanging one follows its fields.
class TestScreens : public QObject
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

    void defaults_giveEightSegments();
    void segments_carryTheScreensData();
    void weight_followsEveryField();
    void weight_showsTheCableAsTyped();
    void parameters_goIntoTheEngine();
    void parameters_whileRestoring_areIgnored();
    void width_of1m20_hasThreeSharesAndTwoSegments();
    void width_ofZero_hangsOneWeightlessSegment();
    void width_belowZero_relievesNoMotor_data();
    void width_belowZero_relievesNoMotor();
    void add_oneCopy_selectsItsFirstSegment();
    void add_twoCopies_areSpreadAndNumbered();
    void add_manyCopies_leaveTheSelection();
    void add_weightLabelIsOfOneArray();
    void add_widerThanTheTruss_keepsWhatFits();
    void add_groupIdsOnlyGrow();
    void nearATrussEnd_keepsWhatFits();
    void nearTheRightEnd_keepsWhatFits();
    void edit_rebuildsAroundTheSameCentre();
    void edit_keepsTheGroupAndTheOtherLoads();
    void edit_selectedSegmentIsTheNewFirst();
    void edit_pushesNoUndo();
    void edit_ofAFileLoadWithoutType_rebuildsNothing();
    void edit_ofAScreenWithoutGroup_rebuildsNothing();
    void edit_narrow_keepsOneSegment_data();
    void edit_narrow_keepsOneSegment();
    void edit_intermediateTexts_keepTheArray_data();
    void edit_intermediateTexts_keepTheArray();
    void edit_otherFieldsWithOddTexts_staysDefined_data();
    void edit_otherFieldsWithOddTexts_staysDefined();
    void edit_hugeWidth_staysResponsive();
    void typing_neverDeletesTheArray();
    void updateSelected_movesToX();
    void updateSelected_whileRestoring_doesNothing();
    void hundredCopiesOf100m_takeAQuarterOfASecond();

private:
    [[nodiscard]] QString weightText() const
    {
        return m_test->label("screenWeight")->text();
    }

    std::optional<Support::TestWindow> m_test;
};

// T = 1.07 × (10 × 4 + 3 × 4 × 40) = 556.4 kg, N = 2 × 4 = 8, T / N = 69.55 kg; from 6 - 2 + 0.25 m on
void TestScreens::defaults_giveEightSegments()
{
    m_test->addScreen();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    for (int k = 0; k < 8; ++k) {
        QVERIFY(isNear(loadAt(k).positionX, 4.25F + 0.5F * static_cast<float>(k)));
        QVERIFY(isNear(loadAt(k).mass, 69.55F));
        QCOMPARE(loadAt(k).name, u"LED Segment"_s);
    }
    QCOMPARE(weightText(), u"Peso Total Array: 556.4 kg (+7.0% cable)"_s);
}

void TestScreens::segments_carryTheScreensData()
{
    m_test->setText("screenWidth", u"2.5"_s);
    m_test->setText("screenHeight", u"1.5"_s);
    m_test->setText("screenWeightM2", u"30"_s);
    m_test->setText("bumperWeight", u"12"_s);
    m_test->setText("cablePercent", u"5.5"_s);
    m_test->addScreen();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 5);
    for (const LoadLogic::ActiveLoad& segment : std::as_const(LoadLogic::ActiveLoads)) {
        QCOMPARE(segment.type, u"Video_Segment"_s);
        QCOMPARE(segment.groupId, loadAt(0).groupId);
        QCOMPARE(segment.screenWidth, 2.5F);
        QCOMPARE(segment.screenHeight, 1.5F);
        QCOMPARE(segment.screenWeightM2, 30.0F);
        QCOMPARE(segment.bumperWeightPerMeter, 12.0F);
        QCOMPARE(segment.cableWeightPercent, 5.5F);
        // 1.055 × (12 × 2.5 + 1.5 × 2.5 × 30) / 5 = 1.055 × 142.5 / 5
        QVERIFY(isNear(segment.mass, 30.0675F));
    }
}

void TestScreens::weight_followsEveryField()
{
    m_test->setText("screenWidth", u"5"_s);
    QCOMPARE(weightText(), u"Peso Total Array: 695.5 kg (+7.0% cable)"_s); // 1.07 × (50 + 600)
    m_test->setText("screenHeight", u"2"_s);
    QCOMPARE(weightText(), u"Peso Total Array: 481.5 kg (+7.0% cable)"_s); // 1.07 × (50 + 400)
    m_test->setText("screenWeightM2", u"30"_s);
    QCOMPARE(weightText(), u"Peso Total Array: 374.5 kg (+7.0% cable)"_s); // 1.07 × (50 + 300)
    m_test->setText("bumperWeight", u"0"_s);
    QCOMPARE(weightText(), u"Peso Total Array: 321.0 kg (+7.0% cable)"_s); // 1.07 × 300
    m_test->setText("cablePercent", u"10"_s);
    QCOMPARE(weightText(), u"Peso Total Array: 330.0 kg (+10% cable)"_s);
}

void TestScreens::weight_showsTheCableAsTyped()
{
    for (const QString& text : {u""_s, u"abc"_s, u"7."_s, u" 7 "_s, u"%1"_s, u"<b>7</b>"_s}) {
        m_test->setText("cablePercent", text);
        QVERIFY(weightText().endsWith(u" kg (+"_s + text + u"% cable)"_s));
    }
    QCOMPARE(m_test->label("screenWeight")->textFormat(), Qt::PlainText);
}

void TestScreens::parameters_goIntoTheEngine()
{
    m_test->setText("screenWidth", u"6.5"_s);
    m_test->setText("screenHeight", u"2"_s);
    m_test->setText("screenWeightM2", u"35"_s);
    m_test->setText("bumperWeight", u"8"_s);
    QCOMPARE(LoadLogic::Screen_Width, 6.5F);
    QCOMPARE(LoadLogic::Screen_Height, 2.0F);
    QCOMPARE(LoadLogic::Screen_Weight_M2, 35.0F);
    QCOMPARE(LoadLogic::Bumper_Weight_Per_Meter, 8.0F);
    QVERIFY(isNear(LoadLogic::LED_TotalWeight, 1.07F * (8.0F * 6.5F + 2.0F * 6.5F * 35.0F)));
    m_test->setText("screenWidth", u"-"_s);
    QCOMPARE(LoadLogic::Screen_Width, 0.0F);
    QCOMPARE(LoadLogic::LED_TotalWeight, 0.0F);
}

void TestScreens::parameters_whileRestoring_areIgnored()
{
    m_test->window.isRestoring = true;
    const Support::CalculationWatch watch;
    m_test->setText("screenWidth", u"9"_s);
    m_test->window.isRestoring = false;
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
    QVERIFY(!watch.calculated());
    LoadLogic::CalcularReacciones();
}

// N = 3, the smallest integer not below 2.4. From 5.4 to 6.6 m: 5.65 and 6.15; 6.65 lies beyond.
void TestScreens::width_of1m20_hasThreeSharesAndTwoSegments()
{
    m_test->setText("screenWidth", u"1.2"_s);
    m_test->addScreen();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 2);
    QVERIFY(isNear(loadAt(0).positionX, 5.65F));
    QVERIFY(isNear(loadAt(1).positionX, 6.15F));
    // T = 1.07 × (12 + 144) = 166.92
    QVERIFY(isNear(loadAt(0).mass, 166.92F / 3.0F));
}

void TestScreens::width_ofZero_hangsOneWeightlessSegment()
{
    m_test->setText("screenWidth", u"0"_s);
    m_test->addScreen();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QVERIFY(isNear(loadAt(0).positionX, 6.25F));
    QCOMPARE(loadAt(0).mass, 0.0F);
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
}

void TestScreens::width_belowZero_relievesNoMotor_data()
{
    QTest::addColumn<int>("copies");
    QTest::newRow("one") << 1;
    QTest::newRow("three") << 3;
}

// Half of 12 × 8.4 = 100.8 kg for each motor, whatever is typed. With one screen nothing is selected, as
// there is no segment to select.
void TestScreens::width_belowZero_relievesNoMotor()
{
    QFETCH(int, copies);
    m_test->setText("screenWidth", u"-4"_s);
    m_test->box("screenCount")->setValue(copies);
    m_test->window.onAddLEDLoadClicked();
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QCOMPARE(m_test->window.selectedLoadId, -1);
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        QVERIFY(isNear(motor.staticLoad, 50.4F));
}

void TestScreens::add_oneCopy_selectsItsFirstSegment()
{
    m_test->window.showMotorProperties(1);
    m_test->addScreen();
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
    QVERIFY(m_test->motorPanel()->isHidden());
    QCOMPARE(m_test->undoDepth(), 1);
}

// 12 / 3 = 4 m apart: centres at 4 and 8 m, first segments 1.75 m left of them
void TestScreens::add_twoCopies_areSpreadAndNumbered()
{
    m_test->box("screenCount")->setValue(2);
    const int group = LoadLogic::NextGroupId;
    m_test->window.onAddLEDLoadClicked();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 16);
    for (int j = 0; j < 2; ++j) {
        for (int k = 0; k < 8; ++k) {
            const LoadLogic::ActiveLoad& segment = loadAt(j * 8 + k);
            QCOMPARE(segment.groupId, group + j);
            QCOMPARE(segment.name, u"LED %1 Seg %2"_s.arg(QString::number(j + 1), QString::number(k + 1)));
            const float first = 4.0F * static_cast<float>(j + 1) - 1.75F;
            QVERIFY(isNear(segment.positionX, first + 0.5F * static_cast<float>(k)));
        }
    }
    QCOMPARE(LoadLogic::NextGroupId, group + 2);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestScreens::add_manyCopies_leaveTheSelection()
{
    m_test->box("screenCount")->setValue(3);
    m_test->window.showMotorProperties(1);
    m_test->window.onAddLEDLoadClicked();
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QVERIFY(!m_test->motorPanel()->isHidden());

    const int id = m_test->hangLoad(10.0F, 1.0F);
    m_test->window.showLoadProperties(id);
    m_test->window.onAddLEDLoadClicked();
    QCOMPARE(m_test->window.selectedLoadId, id);
}

void TestScreens::add_weightLabelIsOfOneArray()
{
    m_test->box("screenCount")->setValue(5);
    m_test->window.onAddLEDLoadClicked();
    QCOMPARE(weightText(), u"Peso Total Array: 556.4 kg (+7.0% cable)"_s);
}

// 20 m of screen on 12 m of truss: N = 40, from 0.25 to 11.75 m there is room for 24.
void TestScreens::add_widerThanTheTruss_keepsWhatFits()
{
    m_test->setText("screenWidth", u"20"_s);
    m_test->addScreen();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 24);
    QVERIFY(isNear(loadAt(0).positionX, 0.25F));
    QVERIFY(isNear(loadAt(23).positionX, 11.75F));
    // T = 1.07 × (200 + 2400) = 2782 kg shared by all 40
    QVERIFY(isNear(loadAt(0).mass, 69.55F));
}

void TestScreens::add_groupIdsOnlyGrow()
{
    m_test->addScreen();
    const int first = loadAt(0).groupId;
    m_test->window.undo();
    m_test->addScreen();
    QCOMPARE(loadAt(0).groupId, first + 1);
}

// Centred at 1 m: from max(0, -1) to 3 m: 0.25, 0.75 … 2.75, six of eight
void TestScreens::nearATrussEnd_keepsWhatFits()
{
    m_test->addScreen();
    m_test->window.updateSelectedLED(1.0F);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 6);
    QVERIFY(isNear(loadAt(0).positionX, 0.25F));
    QVERIFY(isNear(loadAt(5).positionX, 2.75F));
    QVERIFY(isNear(loadAt(0).mass, 69.55F));
}

// Centred at 11 m: from 9 to min(12, 13) m: 9.25 … 11.75, six of eight
void TestScreens::nearTheRightEnd_keepsWhatFits()
{
    m_test->addScreen();
    m_test->window.updateSelectedLED(11.0F);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 6);
    QVERIFY(isNear(loadAt(0).positionX, 9.25F));
    QVERIFY(isNear(loadAt(5).positionX, 11.75F));
}

void TestScreens::edit_rebuildsAroundTheSameCentre()
{
    m_test->addScreen();
    m_test->window.updateSelectedLED(5.0F);
    m_test->setText("screenWidth", u"6"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 12);
    QVERIFY(isNear(meanPosition(), 5.0F));
    m_test->setText("screenWidth", u"2"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 4);
    QVERIFY(isNear(meanPosition(), 5.0F));
}

void TestScreens::edit_keepsTheGroupAndTheOtherLoads()
{
    const int before = m_test->hangLoad(11.0F, 1.0F);
    m_test->addScreen();
    const int group = LoadLogic::ActiveLoads.constLast().groupId;
    const int after = m_test->hangLoad(22.0F, 2.0F);
    m_test->setText("screenWidth", u"1"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 4);
    QCOMPARE(loadAt(0).id, before);
    QCOMPARE(loadAt(1).id, after); // the new segments come last
    QCOMPARE(loadAt(2).groupId, group);
    QCOMPARE(loadAt(3).groupId, group);
}

void TestScreens::edit_selectedSegmentIsTheNewFirst()
{
    const int old = m_test->addScreen();
    m_test->setText("screenHeight", u"2"_s);
    QVERIFY(m_test->window.selectedLoadId != old);
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
    QVERIFY(LoadLogic::FindLoad(old) == nullptr);
}

void TestScreens::edit_pushesNoUndo()
{
    m_test->addScreen();
    m_test->setText("screenWidth", u"6"_s);
    QCOMPARE(m_test->undoDepth(), 1); // that of the adding
}

void TestScreens::edit_ofAFileLoadWithoutType_rebuildsNothing()
{
    m_test->addScreen();
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads)
        load.type.clear();
    const Support::CalculationWatch watch;
    m_test->setText("screenWidth", u"6"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    QVERIFY(watch.calculated());
}

void TestScreens::edit_ofAScreenWithoutGroup_rebuildsNothing()
{
    LoadLogic::ActiveLoad video;
    video.type = u"Video"_s;
    m_test->window.selectedLoadId = LoadLogic::PlaceLoad(video);
    m_test->setText("screenWidth", u"6"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
}

// The first segment is there whatever the width; without it the array would be gone for good.
void TestScreens::edit_narrow_keepsOneSegment_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<float>("position");
    // at centre - W / 2 + 0.25
    QTest::newRow("0.1") << u"0.1"_s << 6.2F;
    QTest::newRow("0.2") << u"0.2"_s << 6.15F;
    QTest::newRow("0.25") << u"0.25"_s << 6.125F;
    QTest::newRow("0.49") << u"0.49"_s << 6.005F;
    QTest::newRow("0.5") << u"0.5"_s << 6.0F;
}

void TestScreens::edit_narrow_keepsOneSegment()
{
    QFETCH(QString, width);
    QFETCH(float, position);
    m_test->addScreen();
    m_test->setText("screenWidth", width);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QVERIFY(isNear(loadAt(0).positionX, position));
    QCOMPARE(m_test->window.selectedLoadId, loadAt(0).id);
}

void TestScreens::edit_intermediateTexts_keepTheArray_data()
{
    QTest::addColumn<QString>("width");
    for (const QString& text : {u""_s, u"-"_s, u"."_s, u"0"_s, u"nan"_s, u"inf"_s, u"0.05"_s, u"0.09"_s,
                                u"-3"_s, u"abc"_s, u"4,5"_s, u"1e"_s, u"1e99"_s})
        QTest::newRow(qUtf8Printable(u'"' + text + u'"')) << text;
}

void TestScreens::edit_intermediateTexts_keepTheArray()
{
    QFETCH(QString, width);
    const int id = m_test->addScreen();
    const std::vector<float> before = positions();
    m_test->setText("screenWidth", width);
    QCOMPARE(positions(), before);
    QCOMPARE(m_test->window.selectedLoadId, id);
    QVERIFY(isNear(loadAt(0).mass, 69.55F));
}

void TestScreens::edit_otherFieldsWithOddTexts_staysDefined_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    for (const char* name : {"screenHeight", "screenWeightM2", "bumperWeight", "cablePercent"}) {
        for (const QString& text : {u""_s, u"-"_s, u"."_s, u"0"_s, u"1e9"_s, u"1e38"_s, u"nan"_s, u"-100"_s})
            QTest::newRow(qUtf8Printable(QString::fromLatin1(name) + u' ' + text))
                << QByteArray(name) << text;
    }
}

void TestScreens::edit_otherFieldsWithOddTexts_staysDefined()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    m_test->addScreen();
    m_test->setText(name.constData(), text);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        QVERIFY(qIsFinite(load.mass));
        QVERIFY(qIsFinite(load.positionX));
    }
    // And back to what it was.
    m_test->setText("screenHeight", u"3"_s);
    m_test->setText("screenWeightM2", u"40"_s);
    m_test->setText("bumperWeight", u"10"_s);
    m_test->setText("cablePercent", u"7.0"_s);
    QVERIFY(isNear(loadAt(0).mass, 69.55F));
}

void TestScreens::edit_hugeWidth_staysResponsive()
{
    m_test->addScreen();
    const Support::CpuTimer timer;
    m_test->setText("screenWidth", u"1e9"_s);
    QVERIFY2(timer.elapsed() < 250 * Support::slowness(), qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(LoadLogic::ActiveLoads.size(), 24); // what the truss of 12 m has room for
    m_test->setText("screenWidth", u"4"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    QVERIFY(isNear(meanPosition(), 6.0F));
}

void TestScreens::typing_neverDeletesTheArray()
{
    m_test->addScreen();
    QLineEdit* width = m_test->field("screenWidth");
    for (const QString& number : {u"0.25"_s, u"12.75"_s, u"1e9"_s, u"-4"_s, u".5"_s}) {
        width->selectAll();
        for (const QChar character : number) {
            QTest::keyClick(width, character.toLatin1());
            QVERIFY(!LoadLogic::ActiveLoads.isEmpty());
            QVERIFY(LoadLogic::FindLoad(m_test->window.selectedLoadId) != nullptr);
        }
    }
}

void TestScreens::updateSelected_movesToX()
{
    m_test->addScreen();
    m_test->window.updateSelectedLED(3.0F);
    QVERIFY(isNear(loadAt(0).positionX, 1.25F));
    m_test->window.updateSelectedLED(0.0F); // not negative: the left end
    QVERIFY(isNear(loadAt(0).positionX, 0.25F));
    QCOMPARE(LoadLogic::ActiveLoads.size(), 4); // up to 2 m
}

void TestScreens::updateSelected_whileRestoring_doesNothing()
{
    const int id = m_test->addScreen();
    m_test->window.isRestoring = true;
    m_test->window.updateSelectedLED(3.0F);
    m_test->window.isRestoring = false;
    QCOMPARE(m_test->window.selectedLoadId, id);
    QVERIFY(isNear(loadAt(0).positionX, 4.25F));
}

// Copy j is centred at j × 100 / 101 m; from max(0, x - 50) to min(100, x + 50) m there is room for
// between 101 and 200 of its segments.
void TestScreens::hundredCopiesOf100m_takeAQuarterOfASecond()
{
    m_test->setText("trussLength", u"100"_s);
    m_test->setText("screenWidth", u"100"_s);
    m_test->box("screenCount")->setValue(100);
    const Support::CpuTimer timer;
    m_test->window.onAddLEDLoadClicked();
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed < 250 * Support::slowness(), qPrintable(QString::number(elapsed)));
    QVERIFY(LoadLogic::ActiveLoads.size() > 15'000);

    std::set<int> ids;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        ids.insert(load.id);
        QVERIFY(load.positionX >= 0.0F && load.positionX <= 100.0F);
    }
    QCOMPARE(static_cast<qsizetype>(ids.size()), LoadLogic::ActiveLoads.size());
}

QTEST_MAIN(TestScreens)
#include "tst_screens.moc"
