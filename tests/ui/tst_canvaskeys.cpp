#include "app/Appearance.h"
#include "canvas/MotorDialog.h"
#include "canvas/SelectionFrame.h"
#include "engine/Arrays.h"
#include "engine/Numbers.h"
#include "support/Contrast.h"
#include "support/Dialogs.h"
#include "support/Window.h"
#include "ui/FocusRing.h"
#include "ui/LoadPanel.h"
#include "ui/MotorPanel.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QHelpEvent>
#include <QInputDialog>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Types `metres` into the next dialog for an exact position, and accepts it.
Support::Answer<QInputDialog> positionAnswer(double metres, QString* title = nullptr)
{
    return Support::Answer<QInputDialog>([metres, title](QInputDialog& dialog) {
        if (title != nullptr)
            *title = dialog.windowTitle();
        auto* box = dialog.findChild<QDoubleSpinBox*>();
        box->selectAll();
        QTest::keyClicks(box, QString::number(metres, 'f', 2));
        QTest::keyClick(box, Qt::Key_Return);
    });
}

float centreOf(int groupId)
{
    return Arrays::centreOfScreen(LoadLogic::ActiveLoads, groupId).value_or(-1.0F);
}

} // namespace

/// The canvas for who has no mouse.
class TestCanvasKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup()
    {
        QToolTip::hideText();
        m_test.reset();
    }

    void tabKey_comesAndLeaves();
    void ring_framesTheCanvasForTheTabKeyAlone();
    void arrows_goThroughEverything();
    void arrows_openThePanels();
    void arrows_reachLoadsThatShareAnId();
    void arrows_withNothingThere_doNothing();
    void shiftArrows_moveAMotor();
    void shiftArrows_moveAMotorPastAnother();
    void shiftArrows_moveALoad();
    void shiftArrows_moveAnArray();
    void shiftArrows_stopAtTheEnds();
    void shiftArrows_withoutASelection_doNothing();
    void steps_areOneUndo();
    void steps_afterAnythingElse_areAnotherUndo();
    void enter_asksForAMotorsPlace();
    void enter_asksForALoadsPlace();
    void enter_asksForAnArraysCentre();
    void enter_keepsAnArrayWhole();
    void delete_takesAway_data();
    void delete_takesAway();
    void menuKeys_openTheMenu_data();
    void menuKeys_openTheMenu();
    void menuByKeys_editsAsOneUndo();
    void menuOfThePlatform_isThatOfTheSelection();
    void escape_selectsNothing();
    void whileDragging_keysDoNothing();
    void arrowsUpAndDown_scrollThePage();
    void frame_isAroundTheSelection();
    void frame_followsEveryChange();
    void frame_leavesTheCanvasAsItIs();
    void frame_isHiddenInADrag();
    void frame_isSeen();
    void screenReaders_areToldTheSelection();
    void screenReaders_getTheFiguresThatHold();
    void altDrag_goesByDecimetres();
    void altDrag_ofAnArray_goesByDecimetres();
    void plainDrag_goesByPixels();
    void show_isBuiltByKeysAlone();

private:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(m_test->canvas(), key, modifiers);
    }
    void pressTimes(int times, Qt::Key key, Qt::KeyboardModifiers modifiers) const
    {
        for (int i = 0; i < times; ++i)
            press(key, modifiers);
    }
    /// The middle of a thing at `x` [m], `below` the truss [px].
    [[nodiscard]] QPoint at(float x, int below) const
    {
        const TrussView* canvas = m_test->canvas();
        const auto span = static_cast<float>(canvas->width() - 2 * canvas->marginX);
        return {canvas->marginX + Numbers::toPixel(static_cast<double>(x / LoadLogic::TrussLength * span)),
                canvas->height() / 2 + below};
    }
    [[nodiscard]] SelectionFrame* frame() const
    {
        return m_test->window.findChild<SelectionFrame*>();
    }
    /// What is selected: "M0", "L" and its id, "A" and its group.
    [[nodiscard]] QString selected() const
    {
        const MainWindow& window = m_test->window;
        if (window.selectedMotorIndex != -1)
            return u'M' + QString::number(window.selectedMotorIndex);
        const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(window.selectedLoadId);
        if (load == nullptr)
            return u"nothing"_s;
        return load->groupId == -1 ? u'L' + QString::number(load->id) : u'A' + QString::number(load->groupId);
    }
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers) const;
    void tabTo(const QWidget* wanted) const;
    void type(const char* field, const QString& text) const;
    void click(const QString& button) const;

    std::optional<Support::TestWindow> m_test;
};

void TestCanvasKeys::initTestCase()
{
    Appearance::apply(*qobject_cast<QApplication*>(QCoreApplication::instance()));
}

void TestCanvasKeys::init()
{
    m_test.emplace();
    m_test->window.resize(1600, 1200);
    QVERIFY(m_test->activate());
    m_test->canvas()->setFocus(Qt::TabFocusReason);
}

// A drag as the pointer makes it: QTest's moves have no modifiers.
void TestCanvasKeys::drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers) const
{
    TrussView* canvas = m_test->canvas();
    QTest::mousePress(canvas, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, canvas->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(canvas, &move);
    QTest::mouseRelease(canvas, Qt::LeftButton, modifiers, to);
}

void TestCanvasKeys::tabKey_comesAndLeaves()
{
    QWidget* report = m_test->button(u"📊 GENERAR INFORME ESTRUCTURAL"_s);
    QTest::keyClick(m_test->canvas(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), report);
    QTest::keyClick(report, Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), m_test->canvas());
    press(Qt::Key_Right); // also with something selected
    press(Qt::Key_Backtab);
    QVERIFY(QApplication::focusWidget() != m_test->canvas());
}

void TestCanvasKeys::ring_framesTheCanvasForTheTabKeyAlone()
{
    const auto* ring = m_test->window.findChild<FocusRing*>();
    m_test->button(u"+"_s)->setFocus(Qt::TabFocusReason);
    m_test->canvas()->setFocus(Qt::TabFocusReason);
    QVERIFY(ring->isVisible());
    QCOMPARE(ring->framed(), m_test->canvas());
    QVERIFY(Support::contrast(ring->colour(), QColor(u"#121212"_s)) >= 3.0);
    m_test->window.setFocus(Qt::ActiveWindowFocusReason); // as when a dialog is closed
    m_test->canvas()->setFocus(Qt::ActiveWindowFocusReason);
    QVERIFY(ring->isVisible());
    m_test->button(u"+"_s)->setFocus();
    QTest::mouseClick(m_test->canvas(), Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(m_test->canvas()->hasFocus());
    QVERIFY(!ring->isVisible());
}

// Motors at 0, 3 and 12 m; loads at 3 and 3 m; a screen around 6 m.
void TestCanvasKeys::arrows_goThroughEverything()
{
    LoadLogic::AddMotor(3.0F);
    const QString first = u'L' + QString::number(m_test->hangLoad(10.0F, 3.0F));
    const QString second = u'L' + QString::number(m_test->hangLoad(20.0F, 3.0F));
    m_test->addScreen();
    const QString array = selected();
    press(Qt::Key_Home);
    QStringList visited{selected()};
    for (int i = 0; i < 7; ++i) {
        press(Qt::Key_Right);
        visited.append(selected());
    }
    QCOMPARE(visited, (QStringList{u"M0"_s, u"M1"_s, first, second, array, u"M2"_s, u"M2"_s, u"M2"_s}));
    press(Qt::Key_Left);
    QCOMPARE(selected(), array);
    press(Qt::Key_End);
    QCOMPARE(selected(), u"M2"_s);
    press(Qt::Key_Home);
    press(Qt::Key_Left);
    QCOMPARE(selected(), u"M0"_s);
    QCOMPARE(m_test->undoDepth(), 1); // the screen's: selecting is no edit
}

void TestCanvasKeys::arrows_openThePanels()
{
    m_test->hangLoad(10.0F, 3.0F);
    press(Qt::Key_Right);
    QVERIFY(m_test->motorPanel()->isVisible());
    press(Qt::Key_Right);
    QVERIFY(m_test->loadPanel()->isVisible());
    QVERIFY(!m_test->motorPanel()->isVisible());
    QVERIFY(m_test->canvas()->hasFocus());
}

void TestCanvasKeys::arrows_reachLoadsThatShareAnId()
{
    m_test->hangLoad(10.0F, 3.0F);
    m_test->hangLoad(20.0F, 5.0F);
    LoadLogic::ActiveLoads[1].id = LoadLogic::ActiveLoads.constFirst().id;
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 3.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).positionX, 5.1F);
    press(Qt::Key_Right);
    QCOMPARE(selected(), u"M1"_s);
}

void TestCanvasKeys::arrows_withNothingThere_doNothing()
{
    LoadLogic::MotorList.clear();
    m_test->window.updateCalculations();
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Return,
                              Qt::Key_Delete, Qt::Key_F10})
        press(key);
    QCOMPARE(selected(), u"nothing"_s);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestCanvasKeys::shiftArrows_moveAMotor()
{
    press(Qt::Key_Home);
    pressTimes(12, Qt::Key_Right, Qt::ShiftModifier);
    pressTimes(3, Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 1.17F); // 12 × 0.10 − 3 × 0.01
    // The overhang hangs on it alone: (1.17 + (12 − 1.17) / 2) × 8.4
    QVERIFY(std::abs(LoadLogic::MotorList.constFirst().staticLoad - 55.314F) < 0.01F);
}

void TestCanvasKeys::shiftArrows_moveAMotorPastAnother()
{
    LoadLogic::AddMotor(0.15F);
    const int id = LoadLogic::MotorList.constFirst().id;
    press(Qt::Key_Home);
    pressTimes(3, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(selected(), u"M1"_s);
    QCOMPARE(LoadLogic::MotorList.at(1).id, id);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 0.3F);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestCanvasKeys::shiftArrows_moveALoad()
{
    m_test->hangLoad(10.0F, 3.0F);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    pressTimes(10, Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.constFirst().positionX, 2.9F);
}

void TestCanvasKeys::shiftArrows_moveAnArray()
{
    m_test->addScreen();
    const int group = LoadLogic::ActiveLoads.constFirst().groupId;
    const float width = LoadLogic::ActiveLoads.at(1).positionX - LoadLogic::ActiveLoads.at(0).positionX;
    pressTimes(5, Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(std::abs(centreOf(group) - 6.5F) < 1e-4F);
    const float now = LoadLogic::ActiveLoads.at(1).positionX - LoadLogic::ActiveLoads.at(0).positionX;
    QVERIFY(std::abs(now - width) < 1e-4F);
    QCOMPARE(m_test->undoDepth(), 2); // hanging it, moving it
}

void TestCanvasKeys::shiftArrows_stopAtTheEnds()
{
    press(Qt::Key_Home);
    press(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 0.0F);
    QCOMPARE(m_test->undoDepth(), 0); // nothing moved
    press(Qt::Key_End);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(LoadLogic::MotorList.constLast().positionX, 12.0F);
    QCOMPARE(m_test->undoDepth(), 0);

    m_test->addScreen();
    pressTimes(130, Qt::Key_Right, Qt::ShiftModifier);
    for (const LoadLogic::ActiveLoad& segment : std::as_const(LoadLogic::ActiveLoads))
        QCOMPARE(segment.positionX, 12.0F); // pushed against the end, as by the pointer
    QCOMPARE(m_test->undoDepth(), 2);
    press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(std::abs(centreOf(LoadLogic::ActiveLoads.constFirst().groupId) - 6.0F) < 1e-4F);
}

void TestCanvasKeys::shiftArrows_withoutASelection_doNothing()
{
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 0.0F);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestCanvasKeys::steps_areOneUndo()
{
    press(Qt::Key_Home);
    pressTimes(30, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 3.0F);
    QCOMPARE(m_test->undoDepth(), 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 0.0F);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestCanvasKeys::steps_afterAnythingElse_areAnotherUndo()
{
    const auto isNewStep = [this] {
        const int before = m_test->undoDepth();
        press(Qt::Key_Right, Qt::ShiftModifier);
        return m_test->undoDepth() == before + 1;
    };
    press(Qt::Key_Home);
    QVERIFY(isNewStep());
    QVERIFY(!isNewStep());
    press(Qt::Key_End); // something else was selected
    press(Qt::Key_Home);
    QVERIFY(isNewStep());
    press(Qt::Key_Z, Qt::ControlModifier); // an undo
    QVERIFY(isNewStep());
    m_test->setText("motorCapacity", u"1500"_s); // an edit of the same motor
    QVERIFY(isNewStep());
    drag(at(LoadLogic::MotorList.constFirst().positionX, 0), at(2.0F, 0), {}); // by the pointer
    QVERIFY(isNewStep());
    QVERIFY(!isNewStep());
    m_test->window.onAddTab(); // another project
    m_test->window.showMotorProperties(0);
    QVERIFY(isNewStep());
}

void TestCanvasKeys::enter_asksForAMotorsPlace()
{
    press(Qt::Key_Home);
    const auto answer = positionAnswer(-2.5);
    press(Qt::Key_Return);
    QVERIFY(answer.given());
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 3.5F);
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(selected(), u"M0"_s);
}

void TestCanvasKeys::enter_asksForALoadsPlace()
{
    m_test->hangLoad(10.0F, 3.0F);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    const auto answer = positionAnswer(1.25);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    QVERIFY(answer.given());
    QCOMPARE(LoadLogic::ActiveLoads.constFirst().positionX, 7.25F);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestCanvasKeys::enter_asksForAnArraysCentre()
{
    m_test->addScreen();
    const int group = LoadLogic::ActiveLoads.constFirst().groupId;
    QString title;
    const auto answer = positionAnswer(-1.5, &title);
    press(Qt::Key_Return);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Pantalla de 4.0 m — Posición exacta"_s);
    QVERIFY(std::abs(centreOf(group) - 4.5F) < 1e-4F);
    QCOMPARE(m_test->undoDepth(), 2);
}

// 8 segments, 0.5 m apart: the outermost are 1.75 m from the centre.
void TestCanvasKeys::enter_keepsAnArrayWhole()
{
    m_test->addScreen();
    const int group = LoadLogic::ActiveLoads.constFirst().groupId;
    const auto answer = positionAnswer(6.0);
    press(Qt::Key_Return);
    QVERIFY(answer.given());
    QVERIFY(std::abs(centreOf(group) - (12.0F - 1.75F)) < 1e-3F);
}

void TestCanvasKeys::delete_takesAway_data()
{
    QTest::addColumn<int>("steps"); // to the right of the first motor
    QTest::addColumn<int>("motors");
    QTest::addColumn<int>("loads");
    QTest::newRow("motor") << 0 << 1 << 9;
    QTest::newRow("load") << 1 << 2 << 8;
    QTest::newRow("array") << 2 << 2 << 1; // all of its 8 segments
}

void TestCanvasKeys::delete_takesAway()
{
    QFETCH(int, steps);
    m_test->hangLoad(10.0F, 1.0F);
    m_test->addScreen();
    const int before = m_test->undoDepth();
    press(Qt::Key_Home);
    pressTimes(steps, Qt::Key_Right, {});
    press(Qt::Key_Delete);
    QTEST(static_cast<int>(LoadLogic::MotorList.size()), "motors");
    QTEST(static_cast<int>(LoadLogic::ActiveLoads.size()), "loads");
    QCOMPARE(selected(), u"nothing"_s);
    QVERIFY(!m_test->motorPanel()->isVisible());
    QVERIFY(!m_test->loadPanel()->isVisible());
    QCOMPARE(m_test->undoDepth(), before + 1);
    press(Qt::Key_Delete); // nothing is selected now
    QCOMPARE(m_test->undoDepth(), before + 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 9);
}

void TestCanvasKeys::menuKeys_openTheMenu_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::newRow("F10") << static_cast<int>(Qt::Key_F10) << 0;
    QTest::newRow("Shift+F10") << static_cast<int>(Qt::Key_F10) << static_cast<int>(Qt::ShiftModifier);
    QTest::newRow("Menu") << static_cast<int>(Qt::Key_Menu) << 0;
}

void TestCanvasKeys::menuKeys_openTheMenu()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    m_test->hangLoad(10.0F, 1.0F);
    m_test->addScreen();
    press(Qt::Key_Home);
    for (const auto& first :
         {u"Editar Especificaciones..."_s, u"Eliminar Carga"_s, u"Eliminar Pantalla Completa"_s}) {
        Support::MenuAnswer menu;
        press(static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
        QVERIFY(menu.given());
        QCOMPARE(menu.entries.constFirst(), first);
        press(Qt::Key_Right);
    }
    const Support::MenuAnswer remove(u"Eliminar Motor"_s);
    press(static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QVERIFY(remove.given());
    QCOMPARE(LoadLogic::MotorList.size(), 1);
}

// By the pointer, the press that opens the menu keeps the step.
void TestCanvasKeys::menuByKeys_editsAsOneUndo()
{
    press(Qt::Key_Home);
    QTimer typist;
    connect(&typist, &QTimer::timeout, &typist, [] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            menu->setActiveAction(menu->actions().constFirst());
            QTest::keyClick(menu, Qt::Key_Return);
        } else if (auto* dialog = qobject_cast<MotorDialog*>(QApplication::activeModalWidget())) {
            auto* name = dialog->findChild<QLineEdit*>();
            name->selectAll();
            QTest::keyClicks(name, u"D8"_s);
            dialog->accept();
        }
    });
    typist.start(5);
    press(Qt::Key_F10);
    typist.stop();
    QCOMPARE(LoadLogic::MotorList.constFirst().modelName, u"D8"_s);
    QCOMPARE(m_test->undoDepth(), 1);
    m_test->window.undo();
    QCOMPARE(LoadLogic::MotorList.constFirst().modelName, u"Motor"_s);
}

// Its place is the middle of the widget, where a load hangs.
void TestCanvasKeys::menuOfThePlatform_isThatOfTheSelection()
{
    m_test->hangLoad(10.0F, 6.0F);
    TrussView* canvas = m_test->canvas();
    const QPoint middle = at(6.0F, 10);
    press(Qt::Key_Home);
    Support::MenuAnswer menu;
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, canvas->mapToGlobal(middle));
    QCoreApplication::sendEvent(canvas, &event);
    QVERIFY(menu.given());
    QCOMPARE(menu.entries.constFirst(), u"Editar Especificaciones..."_s);
    QVERIFY(m_test->activate());
    press(Qt::Key_Escape);
    QCOMPARE(selected(), u"nothing"_s);
    const Support::MenuAnswer none;
    QContextMenuEvent again(QContextMenuEvent::Keyboard, middle, canvas->mapToGlobal(middle));
    QCoreApplication::sendEvent(canvas, &again);
    QVERIFY(!none.given());
}

void TestCanvasKeys::escape_selectsNothing()
{
    m_test->hangLoad(10.0F, 1.0F);
    m_test->addScreen();
    for (const int steps : {0, 1, 2}) {
        press(Qt::Key_Home);
        pressTimes(steps, Qt::Key_Right, {});
        QVERIFY(selected() != u"nothing"_s);
        press(Qt::Key_Escape);
        QCOMPARE(selected(), u"nothing"_s);
        QVERIFY(!m_test->motorPanel()->isVisible());
        QVERIFY(!m_test->loadPanel()->isVisible());
        QTRY_VERIFY(!frame()->isVisible());
    }
}

void TestCanvasKeys::whileDragging_keysDoNothing()
{
    QTest::mousePress(m_test->canvas(), Qt::LeftButton, {}, at(0.0F, 0));
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Return, Qt::Key_Delete, Qt::Key_F10})
        press(key);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(selected(), u"M0"_s);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 0.0F);
    QTest::mouseRelease(m_test->canvas(), Qt::LeftButton, {}, at(0.0F, 0));
    press(Qt::Key_Right);
    QCOMPARE(selected(), u"M1"_s);
}

void TestCanvasKeys::arrowsUpAndDown_scrollThePage()
{
    m_test->window.resize(1000, 400);
    const QScrollBar* bar = m_test->window.findChild<QScrollArea*>()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    const int before = bar->value();
    press(Qt::Key_Down);
    QVERIFY(bar->value() > before);
}

void TestCanvasKeys::frame_isAroundTheSelection()
{
    QVERIFY(!frame()->isVisible());
    press(Qt::Key_Home);
    QVERIFY(frame()->isVisible());
    // The motor's box of 70 px above the truss, its label of 90 px from 119 px above on; 5 px around.
    const QPoint middle = at(0.0F, 0) + m_test->canvas()->pos();
    QCOMPARE(frame()->geometry(), QRect(middle.x() - 45 - 5, middle.y() - 119 - 5, 90 + 10, 119 + 10));
    QCOMPARE(frame()->parentWidget(), m_test->canvas()->parentWidget());
    QVERIFY(frame()->testAttribute(Qt::WA_TransparentForMouseEvents));
}

void TestCanvasKeys::frame_followsEveryChange()
{
    const auto isAt = [this](float x) {
        const int middle = at(x, 0).x() + m_test->canvas()->x();
        return frame()->isVisible() && std::abs(frame()->geometry().center().x() - middle) <= 1;
    };
    press(Qt::Key_End);
    pressTimes(20, Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(isAt(10.0F));
    press(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(isAt(12.0F));
    QTest::mouseClick(m_test->canvas(), Qt::LeftButton, {}, at(0.0F, 0));
    QTRY_VERIFY(isAt(0.0F));
    m_test->window.onAddLoadClicked(); // selects what it hangs
    QTRY_VERIFY(isAt(6.0F));
    m_test->window.resize(1500, 1100);
    QTRY_VERIFY(isAt(6.0F));
    m_test->window.deleteSelectedLoad();
    QTRY_VERIFY(!frame()->isVisible());
}

void TestCanvasKeys::frame_leavesTheCanvasAsItIs()
{
    m_test->window.blinkTimer->stop();
    m_test->window.showMotorProperties(0); // shows its panel, and nothing on the canvas
    QCoreApplication::processEvents();
    frame()->hide();
    const QImage before = m_test->canvas()->grab().toImage();
    press(Qt::Key_Home);
    QVERIFY(frame()->isVisible());
    QCOMPARE(m_test->canvas()->grab().toImage(), before);
    // What lies within the frame can be pressed as ever.
    const QPoint inside = at(0.0F, -2) + m_test->canvas()->pos();
    QCOMPARE(frame()->parentWidget()->childAt(inside), m_test->canvas());
}

void TestCanvasKeys::frame_isHiddenInADrag()
{
    press(Qt::Key_Home);
    QTest::mousePress(m_test->canvas(), Qt::LeftButton, {}, at(0.0F, 0));
    QTRY_VERIFY(!frame()->isVisible());
    QTest::mouseRelease(m_test->canvas(), Qt::LeftButton, {}, at(0.0F, 0));
    QTRY_VERIFY(frame()->isVisible());
}

// 3 : 1 is the web's rule for what is no text.
void TestCanvasKeys::frame_isSeen()
{
    press(Qt::Key_End);
    const QImage picture = m_test->window.grab().toImage();
    const QRect area(frame()->mapTo(&m_test->window, QPoint(0, 0)), frame()->size());
    const QColor line = picture.pixelColor(area.topLeft() + QPoint(area.width() / 2, 0));
    const QRect beside(area.right() + 2, area.top(), 20, area.height());
    const QColor around = Support::mostFrequentColour(picture, beside);
    QCOMPARE(around, QColor(u"#121212"_s));
    QVERIFY(Support::contrast(line, around) >= 3.0);
}

void TestCanvasKeys::screenReaders_areToldTheSelection()
{
    m_test->hangLoad(110.0F, 6.0F);
    LoadLogic::ActiveLoads.last().name = u"PA <izq> %1"_s;
    m_test->addScreen();
    m_test->window.nothingPicked();
    const QSignalSpy told(frame(), &SelectionFrame::announced);
    const auto last = [&told] {
        return told.isEmpty() ? QString() : told.constLast().constFirst().toString();
    };
    // 12 × 8.4 / 2 + 110 / 2 + 556.4 / 2 = 383.6 kg; (383.6 + 50) × 1.25 = 542 kg
    press(Qt::Key_Right);
    QCOMPARE(last(), u"Motor Motor en -6.00m: 383.6 kg, dinámica 542.0 kg de 1000.0 kg, OK."_s);
    press(Qt::Key_Right);
    QCOMPARE(last(), u"Carga PA <izq> %1 en 0.00m: 110.0 kg. Truss: OK."_s);
    press(Qt::Key_Right);
    QCOMPARE(last(), u"Pantalla de 4.0 m en 0.00m: 556.4 kg en 8 segmentos. Truss: OK."_s);

    QAccessibleInterface* entry = QAccessible::queryAccessibleInterface(frame());
    QCOMPARE(entry->role(), QAccessible::ListItem);
    QCOMPARE(told.size(), 3); // each once
    QCOMPARE(QAccessible::queryAccessibleInterface(m_test->canvas())->role(), QAccessible::Canvas);
    QVERIFY(entry->state().focused);
    QVERIFY(entry->state().selected);
    m_test->field("trussLength")->setFocus();
    QVERIFY(!entry->state().focused);
}

void TestCanvasKeys::screenReaders_getTheFiguresThatHold()
{
    press(Qt::Key_Home);
    QVERIFY(frame()->accessibleName().contains(u" en -6.00m: "_s));
    press(Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(frame()->accessibleName().contains(u" en -5.90m: "_s));
    m_test->setText("motorCapacity", u"60"_s);
    QTRY_VERIFY(frame()->accessibleName().endsWith(u" de 60.0 kg, EXCESO DINÁMICO."_s));
}

void TestCanvasKeys::altDrag_goesByDecimetres()
{
    m_test->hangLoad(10.0F, 3.03F);
    drag(at(0.0F, 0), at(1.234F, 0), Qt::AltModifier);
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 1.2F);
    // By 2.0 m from 3.03 m: 5.03 m, and 5.0 m is the nearest mark
    drag(at(3.03F, 30), at(5.03F, 30), Qt::AltModifier);
    QVERIFY(std::abs(LoadLogic::ActiveLoads.constFirst().positionX - 5.0F) < 1e-4F);

    // In small steps, none of which reaches a mark of its own
    TrussView* canvas = m_test->canvas();
    const QPoint from = at(5.0F, 30);
    QTest::mousePress(canvas, Qt::LeftButton, {}, from);
    const int end = at(6.0F, 30).x();
    for (int x = from.x(); x <= end; ++x) {
        const QPoint to(x, from.y());
        QMouseEvent move(QEvent::MouseMove, to, canvas->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::AltModifier);
        QCoreApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton);
    QVERIFY(std::abs(LoadLogic::ActiveLoads.constFirst().positionX - 6.0F) < 1e-4F);
}

void TestCanvasKeys::altDrag_ofAnArray_goesByDecimetres()
{
    m_test->addScreen();
    const int group = LoadLogic::ActiveLoads.constFirst().groupId;
    drag(at(6.0F, 20), at(7.234F, 20), Qt::AltModifier);
    QVERIFY(std::abs(centreOf(group) - 7.2F) < 1e-4F);
}

void TestCanvasKeys::plainDrag_goesByPixels()
{
    const TrussView* canvas = m_test->canvas();
    const auto span = static_cast<float>(canvas->width() - 2 * canvas->marginX);
    drag(at(0.0F, 0), QPoint(canvas->marginX + 101, canvas->height() / 2), {});
    QCOMPARE(LoadLogic::MotorList.constFirst().positionX, 101.0F / span * 12.0F);
}

/// With the Tab key alone, either way.
void TestCanvasKeys::tabTo(const QWidget* wanted) const
{
    for (int i = 0; i < 60 && QApplication::focusWidget() != wanted; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), wanted);
}

void TestCanvasKeys::type(const char* field, const QString& text) const
{
    QWidget* widget = m_test->window.findChild<QWidget*>(QLatin1StringView(field));
    tabTo(widget);
    QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(widget, text);
}

void TestCanvasKeys::click(const QString& button) const
{
    tabTo(m_test->button(button));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
}

// 6 motors, 10 loads and 2 screens on 24 m, each at its place.
void TestCanvasKeys::show_isBuiltByKeysAlone()
{
    type("trussLength", u"24"_s);
    const auto go = [this](double fromCentre) {
        const auto answer = positionAnswer(fromCentre);
        press(Qt::Key_Return);
        QVERIFY(answer.given());
        QVERIFY(m_test->activate()); // off screen no window comes back by itself
    };
    for (int i = 0; i < 4; ++i) { // two hang at the ends already; a new one hangs in the middle
        click(u"+ Motor"_s);
        tabTo(m_test->canvas());
        press(Qt::Key_Home);
        while (std::abs(LoadLogic::MotorList.at(m_test->window.selectedMotorIndex).positionX - 12.0F) > 0.01F)
            press(Qt::Key_Right);
        go(-7.2 + 4.8 * i);
    }
    QCOMPARE(LoadLogic::MotorList.size(), 6);
    for (int i = 0; i < 6; ++i)
        QVERIFY(std::abs(LoadLogic::MotorList.at(i).positionX - 4.8F * static_cast<float>(i)) < 0.01F);
    press(Qt::Key_Escape);

    type("newLoadMass", u"120"_s);
    type("newLoadName", u"PA"_s);
    type("loadCount", u"10"_s);
    click(u"+ Carga"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 10);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); // lets the last one go

    type("screenCount", u"2"_s);
    click(u"AÑADIR PANTALLA"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 10 + 2 * 8);
    const int left = LoadLogic::ActiveLoads.at(10).groupId;
    const int right = LoadLogic::ActiveLoads.constLast().groupId;
    tabTo(m_test->canvas());
    press(Qt::Key_Home);
    for (int i = 0; i < 20 && selected() != u'A' + QString::number(left); ++i)
        press(Qt::Key_Right);
    go(-6.0);
    press(Qt::Key_End);
    for (int i = 0; i < 20 && selected() != u'A' + QString::number(right); ++i)
        press(Qt::Key_Left);
    go(6.0);
    pressTimes(3, Qt::Key_Right, Qt::ShiftModifier);
    pressTimes(3, Qt::Key_Left, Qt::ShiftModifier);
    QVERIFY(std::abs(centreOf(left) - 6.0F) < 0.05F);
    QVERIFY(std::abs(centreOf(right) - 18.0F) < 0.05F);
    QVERIFY(LoadLogic::TrussStress_Percentage > 0.0F);
}

QTEST_MAIN(TestCanvasKeys)
#include "tst_canvaskeys.moc"
