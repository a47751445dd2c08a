#include "canvas/MotorDialog.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QContextMenuEvent>
#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

const LoadLogic::Motor& motorAt(qsizetype index)
{
    return LoadLogic::MotorList.at(index);
}

} // namespace

/// What a property panel shows is what it edits, whatever happened to the project meanwhile.
class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup()
    {
        m_test.reset();
    }

    void motorPanel_showsTheMotor();
    void motorPanel_withoutName_isTitledById();
    void motorPanel_titleIsPlainText();
    void motorPanel_edits();
    void motorPanel_textThatDoesNotParse_isZero();
    void motorPanel_titleFollowsTheName();
    void motorPanel_ofALongName_isNoWider();
    void motorPanel_editSortsNothingAway();
    void loadPanel_showsTheLoad();
    void loadPanel_ofAnUnknownLoad_stays();
    void loadPanel_edits();
    void loadPanel_deletesOneSegment();
    void motorPanel_followsAMotorThatIsPassed();
    void motorPanel_deletesTheMotorItShows();
    void afterUndo_panelShowsTheRestoredMotor();
    void afterUndo_panelOfAGoneMotor_hides();
    void afterUndo_panelShowsTheRestoredLoad();
    void afterUndo_panelOfAGoneLoad_hides();
    void afterUndoOfAMotorDrag_panelShowsTheSelectedLoad();
    void afterUndoOfAMotorDrag_panelOfNothingSelected_stays();
    void repeatedIds_panelFollowsTheDraggedMotor();
    void afterTabSwitch_panelShowsTheOtherTabsMotor();
    void afterTabSwitch_loadPanelHides();
    void afterOpening_panelsFollow();
    void afterReset_panelEditsNothing();
    void afterReset_selectingMakesThePanelWorkAgain();
    void afterAnArrayDrag_panelEditsNothing();
    void afterRebuilding_panelShowsTheNewSegment();
    void afterMenuDeletion_panelHides();
    void afterMenuDeletion_ofAnotherMotor_panelStays();
    void afterMenuDeletion_ofASameNumberedMotor_panelIsRefilled();
    void afterMenuEditing_panelShowsTheNewValues();
    void afterMenuDeletion_ofTheLoad_panelHides();

private:
    /// The pixel of the canvas that shows `x` [m], on the truss's line.
    [[nodiscard]] QPoint pointAt(float x) const
    {
        const TrussView* canvas = m_test->canvas();
        const int span = canvas->width() - 2 * canvas->marginX;
        return {canvas->marginX + static_cast<int>(x / LoadLogic::TrussLength * static_cast<float>(span)),
                canvas->height() / 2};
    }

    void requestMenu(const QPoint& point)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_test->canvas()->mapToGlobal(point));
        QCoreApplication::sendEvent(m_test->canvas(), &event);
    }

    /// Presses the motor at `index` of the list and lets go of it at `x` [m].
    void dragMotor(int index, float x);

    std::optional<Support::TestWindow> m_test;
};

void TestPanels::init()
{
    m_test.emplace();
    m_test->canvas()->resize(800, 600);
    LoadLogic::MotorList[0].modelName = u"Izquierdo"_s;
    LoadLogic::MotorList[1].modelName = u"Derecho"_s;
    LoadLogic::MotorList[1].capacity = 2000.0F;
}

void TestPanels::dragMotor(int index, float x)
{
    QTest::mousePress(m_test->canvas(), Qt::LeftButton, {}, pointAt(motorAt(index).positionX));
    QTest::mouseMove(m_test->canvas(), pointAt(x));
    QTest::mouseRelease(m_test->canvas(), Qt::LeftButton, {}, pointAt(x));
}

void TestPanels::motorPanel_showsTheMotor()
{
    m_test->window.showMotorProperties(1);
    QCOMPARE(m_test->text("motorName"), u"Derecho"_s);
    QCOMPARE(m_test->text("motorCapacity"), u"2000.0"_s);
    QCOMPARE(m_test->text("motorSelfWeight"), u"50.0"_s);
    QCOMPARE(m_test->motorPanel()->findChild<QLabel*>()->text(), u"Propiedades Motor (Derecho)"_s);
    QVERIFY(m_test->loadPanel()->isHidden());
}

void TestPanels::motorPanel_withoutName_isTitledById()
{
    LoadLogic::MotorList[1].modelName.clear();
    m_test->window.showMotorProperties(1);
    QCOMPARE(m_test->motorPanel()->findChild<QLabel*>()->text(), u"Propiedades Motor (M2)"_s);
}

void TestPanels::motorPanel_titleIsPlainText()
{
    LoadLogic::MotorList[1].modelName = u"<b>50%1</b>"_s;
    m_test->window.showMotorProperties(1);
    const QLabel* title = m_test->motorPanel()->findChild<QLabel*>();
    QCOMPARE(title->text(), u"Propiedades Motor (<b>50%1</b>)"_s);
    QCOMPARE(title->textFormat(), Qt::PlainText);
}

void TestPanels::motorPanel_edits()
{
    m_test->window.showMotorProperties(1);
    m_test->setText("motorName", u"  D8+ "_s);
    m_test->setText("motorCapacity", u"320.5"_s);
    m_test->setText("motorSelfWeight", u"33"_s);
    QCOMPARE(motorAt(1).modelName, u"  D8+ "_s);
    QCOMPARE(motorAt(1).capacity, 320.5F);
    QCOMPARE(motorAt(1).selfWeight, 33.0F);
    QCOMPARE(motorAt(1).totalLoad, motorAt(1).staticLoad + 33.0F);
    QCOMPARE(motorAt(0).modelName, u"Izquierdo"_s);
    QCOMPARE(m_test->undoDepth(), 3);
}

void TestPanels::motorPanel_textThatDoesNotParse_isZero()
{
    m_test->window.showMotorProperties(1);
    m_test->setText("motorCapacity", QString());
    QCOMPARE(motorAt(1).capacity, 0.0F);
    QCOMPARE(m_test->text("motorCapacity"), QString()); // what is being typed is left alone
    m_test->setText("motorSelfWeight", u"x"_s);
    QCOMPARE(motorAt(1).selfWeight, 0.0F);
}

void TestPanels::motorPanel_titleFollowsTheName()
{
    m_test->window.showMotorProperties(1);
    m_test->setText("motorName", u"Nuevo"_s);
    const QLabel* title = m_test->motorPanel()->findChild<QLabel*>();
    QCOMPARE(title->text(), u"Propiedades Motor (Nuevo)"_s);
    m_test->setText("motorName", QString());
    QCOMPARE(title->text(), u"Propiedades Motor (M2)"_s);
}

// Otherwise the whole column of controls would be as wide as the name.
void TestPanels::motorPanel_ofALongName_isNoWider()
{
    m_test->window.showMotorProperties(1);
    const int width = m_test->motorPanel()->minimumSizeHint().width();
    m_test->setText("motorName", QString(300, u'W'));
    QCOMPARE(m_test->motorPanel()->minimumSizeHint().width(), width);
}

void TestPanels::motorPanel_editSortsNothingAway()
{
    m_test->window.showMotorProperties(1);
    LoadLogic::MotorList[1].positionX = -1.0F; // the next calculation sorts it to the front
    m_test->setText("motorName", u"Nuevo"_s);
    QCOMPARE(motorAt(0).modelName, u"Nuevo"_s);
    QCOMPARE(m_test->window.selectedMotorIndex, 0);
    m_test->setText("motorSelfWeight", u"77"_s);
    QCOMPARE(motorAt(0).selfWeight, 77.0F);
}

void TestPanels::loadPanel_showsTheLoad()
{
    const int id = m_test->hangLoad(123.456F, 3.0F);
    LoadLogic::FindLoad(id)->name = u"Sub"_s;
    m_test->window.showMotorProperties(0);
    m_test->window.showLoadProperties(id);
    QCOMPARE(m_test->text("loadName"), u"Sub"_s);
    QCOMPARE(m_test->text("loadMass"), u"123.5"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->mass, 123.456F);
    QVERIFY(m_test->motorPanel()->isHidden());
    QVERIFY(!m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestPanels::loadPanel_ofAnUnknownLoad_stays()
{
    m_test->window.showMotorProperties(0);
    m_test->window.showLoadProperties(987'654);
    QCOMPARE(m_test->window.selectedLoadId, 987'654);
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
    QVERIFY(!m_test->motorPanel()->isHidden());
    // The motor panel is open, but the motor is not selected: it edits nothing.
    m_test->setText("motorName", u"Nadie"_s);
    QCOMPARE(motorAt(0).modelName, u"Izquierdo"_s);
}

void TestPanels::loadPanel_edits()
{
    const int id = m_test->hangLoad(100.0F, 3.0F);
    const int other = m_test->hangLoad(100.0F, 4.0F);
    m_test->window.showLoadProperties(id);
    m_test->setText("loadName", u"Sub"_s);
    m_test->setText("loadMass", u"250.5"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->name, u"Sub"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->mass, 250.5F);
    QCOMPARE(LoadLogic::FindLoad(other)->mass, 100.0F);
    QCOMPARE(m_test->undoDepth(), 2);
    m_test->setText("loadMass", u"-"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->mass, 0.0F);
}

void TestPanels::loadPanel_deletesOneSegment()
{
    m_test->addScreen();
    const int id = LoadLogic::ActiveLoads.at(3).id;
    m_test->window.showLoadProperties(id);
    m_test->button(u"Eliminar Carga"_s)->click();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 7);
    QVERIFY(LoadLogic::FindLoad(id) == nullptr);
    QVERIFY(m_test->loadPanel()->isHidden());
}

void TestPanels::motorPanel_followsAMotorThatIsPassed()
{
    m_test->window.onAddMotorClicked(); // id 3 at 6 m
    m_test->window.showMotorProperties(1);
    LoadLogic::MotorList[1].positionX = 12.5F; // beyond the right one
    m_test->window.onPositionChanged(-1);
    QCOMPARE(m_test->window.selectedMotorIndex, 2);
    m_test->setText("motorName", u"Tercero"_s);
    QCOMPARE(motorAt(2).modelName, u"Tercero"_s);
    QCOMPARE(motorAt(2).id, 3);
}

void TestPanels::motorPanel_deletesTheMotorItShows()
{
    m_test->window.showMotorProperties(1);
    m_test->window.onAddMotorClicked(); // pushes the shown one to index 2
    m_test->button(u"Eliminar Motor"_s)->click();
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(motorAt(0).modelName, u"Izquierdo"_s);
    QCOMPARE(motorAt(1).modelName, u"Motor"_s);
    QVERIFY(m_test->motorPanel()->isHidden());
}

void TestPanels::afterUndo_panelShowsTheRestoredMotor()
{
    m_test->window.showMotorProperties(1);
    m_test->setText("motorCapacity", u"750"_s);
    m_test->window.undo();
    QVERIFY(!m_test->motorPanel()->isHidden());
    QCOMPARE(m_test->text("motorCapacity"), u"2000.0"_s);
    QCOMPARE(motorAt(1).capacity, 2000.0F);
    m_test->setText("motorName", u"Otro"_s);
    QCOMPARE(motorAt(1).modelName, u"Otro"_s);
    QCOMPARE(motorAt(1).capacity, 2000.0F);
}

void TestPanels::afterUndo_panelOfAGoneMotor_hides()
{
    m_test->window.onAddMotorClicked();
    m_test->window.showMotorProperties(1); // the new one
    m_test->window.undo();
    QVERIFY(m_test->motorPanel()->isHidden());
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
}

void TestPanels::afterUndo_panelShowsTheRestoredLoad()
{
    const int id = m_test->hangLoad(100.0F, 3.0F);
    m_test->window.showLoadProperties(id);
    m_test->setText("loadMass", u"300"_s);
    m_test->window.undo();
    QCOMPARE(m_test->text("loadMass"), u"100.0"_s);
    QVERIFY(!m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->window.selectedLoadId, id);
}

void TestPanels::afterUndo_panelOfAGoneLoad_hides()
{
    m_test->window.onAddLoadClicked();
    m_test->window.showLoadProperties(m_test->window.selectedLoadId);
    m_test->window.undo();
    QVERIFY(m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->window.selectedLoadId, -1);
}

// The undone drag took the panel from the load; "Carga (kg):" edits the load again, so that its own panel
// must be seen.
void TestPanels::afterUndoOfAMotorDrag_panelShowsTheSelectedLoad()
{
    const int id = m_test->hangLoad(100.0F, 3.0F);
    m_test->window.showLoadProperties(id);
    dragMotor(0, 2.0F);
    QVERIFY(m_test->loadPanel()->isHidden());
    QVERIFY(!m_test->motorPanel()->isHidden());

    m_test->window.undo();
    QCOMPARE(m_test->window.selectedLoadId, id);
    QVERIFY(m_test->motorPanel()->isHidden());
    QVERIFY(!m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->text("loadMass"), u"100.0"_s);
    m_test->setText("newLoadMass", u"70"_s);
    QCOMPARE(m_test->text("loadMass"), u"70.0"_s);
    m_test->setText("loadMass", u"80"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->mass, 80.0F);
}

void TestPanels::afterUndoOfAMotorDrag_panelOfNothingSelected_stays()
{
    m_test->hangLoad(100.0F, 3.0F);
    dragMotor(0, 2.0F);
    m_test->window.undo();
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QVERIFY(!m_test->motorPanel()->isHidden());
    QVERIFY(m_test->loadPanel()->isHidden());
}

// As from a file in which every motor has the id 0; the dragged one alone weighs 77 kg.
void TestPanels::repeatedIds_panelFollowsTheDraggedMotor()
{
    for (const float x : {3.0F, 6.0F})
        LoadLogic::AddMotor(x);
    for (LoadLogic::Motor& motor : LoadLogic::MotorList)
        motor.id = 0;
    LoadLogic::MotorList[3].selfWeight = 77.0F;
    dragMotor(3, 3.0F); // past the one at 6 m, onto the one at 3 m
    QCOMPARE(motorAt(m_test->window.selectedMotorIndex).selfWeight, 77.0F);
    QCOMPARE(m_test->text("motorSelfWeight"), u"77.0"_s);
    m_test->setText("motorName", u"Derecho"_s);
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        if (motor.selfWeight == 77.0F)
            QCOMPARE(motor.modelName, u"Derecho"_s);
    }
}

void TestPanels::afterTabSwitch_panelShowsTheOtherTabsMotor()
{
    m_test->window.showMotorProperties(1);
    m_test->window.onAddTab();
    // The other project has a motor of this id: the panel shows that one.
    QVERIFY(!m_test->motorPanel()->isHidden());
    QCOMPARE(m_test->text("motorName"), u"Motor"_s);
    QCOMPARE(m_test->text("motorSelfWeight"), u"25.0"_s);
    m_test->setText("motorSelfWeight", u"26"_s);
    QCOMPARE(motorAt(1).selfWeight, 26.0F);
    m_test->tabBar()->setCurrentIndex(0);
    QCOMPARE(m_test->text("motorName"), u"Derecho"_s);
    QCOMPARE(motorAt(1).selfWeight, 50.0F);
}

void TestPanels::afterTabSwitch_loadPanelHides()
{
    m_test->window.showLoadProperties(m_test->hangLoad(100.0F, 3.0F));
    m_test->window.onAddTab();
    QVERIFY(m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->window.selectedLoadId, -1);
}

void TestPanels::afterOpening_panelsFollow()
{
    m_test->window.showMotorProperties(1);
    QVERIFY(m_test->window.openProjectFile(QStringLiteral(VELMORA_SOURCE_DIR "/examples/voladizo.rig")));
    if (m_test->motorPanel()->isHidden()) {
        QCOMPARE(m_test->window.selectedMotorIndex, -1);
        return;
    }
    QCOMPARE(m_test->text("motorName"), motorAt(m_test->window.selectedMotorIndex).modelName);
    m_test->setText("motorName", u"Otro"_s);
    QCOMPARE(motorAt(m_test->window.selectedMotorIndex).modelName, u"Otro"_s);
}

void TestPanels::afterReset_panelEditsNothing()
{
    m_test->window.showMotorProperties(1);
    const Support::BoxAnswer yes(QMessageBox::Yes);
    m_test->window.onResetProjectClicked();
    QVERIFY(!m_test->motorPanel()->isHidden()); // left as it was
    QCOMPARE(m_test->text("motorName"), u"Derecho"_s);
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    m_test->setText("motorName", u"Nadie"_s);
    m_test->window.deleteSelectedMotor();
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(motorAt(1).modelName, u"Motor"_s);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestPanels::afterReset_selectingMakesThePanelWorkAgain()
{
    m_test->window.showMotorProperties(1);
    const Support::BoxAnswer yes(QMessageBox::Yes);
    m_test->window.onResetProjectClicked();
    m_test->window.showMotorProperties(0);
    QVERIFY(m_test->field("motorName")->isEnabledTo(&m_test->window));
    m_test->setText("motorName", u"Primero"_s);
    QCOMPARE(motorAt(0).modelName, u"Primero"_s);
}

void TestPanels::afterAnArrayDrag_panelEditsNothing()
{
    m_test->addScreen();
    const LoadLogic::ActiveLoad segment = LoadLogic::ActiveLoads.constFirst();
    m_test->window.showMotorProperties(1);
    m_test->window.arrayPicked(segment);
    QVERIFY(!m_test->motorPanel()->isHidden()); // panels stay as they were
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
    QCOMPARE(m_test->window.selectedLoadId, segment.id);
    m_test->setText("motorName", u"Nadie"_s);
    QCOMPARE(motorAt(1).modelName, u"Derecho"_s);

    const int id = m_test->hangLoad(10.0F, 1.0F);
    m_test->window.showLoadProperties(id);
    m_test->window.arrayPicked(segment);
    QVERIFY(!m_test->loadPanel()->isHidden());
    m_test->setText("loadName", u"Nadie"_s);
    m_test->window.deleteSelectedLoad();
    QVERIFY(LoadLogic::FindLoad(segment.id) != nullptr);
    QCOMPARE(LoadLogic::FindLoad(segment.id)->name, u"LED Segment"_s);
    QCOMPARE(LoadLogic::FindLoad(id)->name, u"Carga"_s);
}

void TestPanels::afterRebuilding_panelShowsTheNewSegment()
{
    const int id = m_test->addScreen();
    m_test->window.showLoadProperties(id);
    m_test->setText("screenWidth", u"2"_s);
    // 1.07 × (20 + 240) / 4 = 69.55 kg
    QCOMPARE(m_test->text("loadMass"), u"69.6"_s);
    m_test->setText("loadName", u"Primera"_s);
    QCOMPARE(LoadLogic::ActiveLoads.constFirst().name, u"Primera"_s);
}

void TestPanels::afterMenuDeletion_panelHides()
{
    m_test->window.showMotorProperties(1);
    const Support::MenuAnswer remove(u"Eliminar Motor"_s);
    requestMenu(pointAt(12.0F));
    QVERIFY(remove.given());
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    QVERIFY(m_test->motorPanel()->isHidden());
    m_test->setText("motorName", u"Nadie"_s);
    QCOMPARE(motorAt(0).modelName, u"Izquierdo"_s);
    m_test->window.undo();
    QCOMPARE(LoadLogic::MotorList.size(), 2);
}

void TestPanels::afterMenuDeletion_ofAnotherMotor_panelStays()
{
    m_test->window.showMotorProperties(1);
    const Support::MenuAnswer remove(u"Eliminar Motor"_s);
    requestMenu(pointAt(0.0F));
    QVERIFY(!m_test->motorPanel()->isHidden());
    QCOMPARE(m_test->window.selectedMotorIndex, 0);
    m_test->setText("motorName", u"Único"_s);
    QCOMPARE(motorAt(0).modelName, u"Único"_s);
    QCOMPARE(motorAt(0).id, 2);
}

// A file may repeat an id.
void TestPanels::afterMenuDeletion_ofASameNumberedMotor_panelIsRefilled()
{
    LoadLogic::MotorList[1].id = 1;
    m_test->window.showMotorProperties(0);
    const Support::MenuAnswer remove(u"Eliminar Motor"_s);
    requestMenu(pointAt(0.0F));
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    if (!m_test->motorPanel()->isHidden())
        QCOMPARE(m_test->text("motorName"), u"Derecho"_s);
    QCOMPARE(motorAt(0).capacity, 2000.0F);
}

void TestPanels::afterMenuEditing_panelShowsTheNewValues()
{
    m_test->window.showMotorProperties(1);
    const Support::Answer<MotorDialog> fill([](MotorDialog& dialog) {
        const auto fields = dialog.findChildren<QLineEdit*>();
        for (QLineEdit* field : fields)
            field->setText(field->validator() == nullptr ? u"D8+"_s : u"450"_s);
        dialog.accept();
    });
    const Support::MenuAnswer edit(u"Editar Especificaciones..."_s);
    requestMenu(pointAt(12.0F));
    QVERIFY(edit.given());
    QVERIFY(fill.given());
    QCOMPARE(motorAt(1).capacity, 450.0F);
    QCOMPARE(m_test->text("motorName"), u"D8+"_s);
    QCOMPARE(m_test->text("motorCapacity"), u"450.0"_s);
    QCOMPARE(m_test->undoDepth(), 0);
    m_test->setText("motorName", u"D8"_s);
    QCOMPARE(motorAt(1).capacity, 450.0F);
}

void TestPanels::afterMenuDeletion_ofTheLoad_panelHides()
{
    const int id = m_test->hangLoad(100.0F, 6.0F);
    m_test->window.showLoadProperties(id);
    const Support::MenuAnswer remove(u"Eliminar Carga"_s);
    requestMenu(pointAt(6.0F) + QPoint(0, 15));
    QVERIFY(remove.given());
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QVERIFY(m_test->loadPanel()->isHidden());
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QCOMPARE(m_test->text("newLoadMass"), QString());
}

QTEST_MAIN(TestPanels)
#include "tst_panels.moc"
