#include "engine/RowEdits.h"
#include "support/Contrast.h"
#include "support/Window.h"
#include "ui/ListDialog.h"
#include "ui/ListModel.h"
#include "ui/ListTable.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLocale>

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

/// "Lista" beside a real window: a truss of 12 m on motors at its ends, and three loads.
class TestList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void key_opensIt();
    void rows_areThoseOfTheProject();
    void selectedRow_isSelectedInTheWindow();
    void selectedSegment_isGrabbedInTheWindow();
    void whatTheWindowSelects_isSelectedHere();
    void selection_isInOneTable();
    void clearedSelection_isClearedInTheWindow();
    void dialog_followsTheProject();
    void dialog_followsOnlyWhileOpen();
    void dragOnTheCanvas_isFollowed();
    void drag_isFollowedNowAndThen();
    void motorDraggedPastAnother_staysSelected();
    void otherTab_isFollowed();
    void typedMass_isOneStep();
    void typedComma_isAPoint();
    void typedPosition_isMeasuredFromTheMiddle();
    void typedMotorValues_areOneStepEach();
    void typedName_isTakenAsItIs();
    void escape_leavesTheCellThenTheDialog();
    void unusableText_isToldAndNotTaken();
    void unchangedText_isNoStep();
    void result_saysThatItIsNotTyped();
    void panel_showsWhatWasTypedHere();
    void motorTypedPastAnother_keepsItsRow();
    void deletedRows_areOneStep();
    void deletedMotor_isOneStep();
    void deletedSegment_takesItsScreen();
    void duplicatedRows_areOneStepAndSelected();
    void duplicatedMotors_areOneStep();
    void mirroredRows_areOneStep();
    void mirroredInTheMiddle_isNoStep();
    void nothingSelected_isTold();
    void copiedRows_arePartedByTabs();
    void copiedRows_canBePasted();
    void pastedRows_areOneStepAndSelected();
    void pastedFaults_areTold();
    void pastedOnASpanishDesktop_isTheSame();
    void undoKey_undoesTheProject();
    void undoKeyInAnEditor_undoesTheTyping();
    void sorting_keepsIdentity();
    void sortKey_turnsTheOrder();
    void repeatedIds_areEditedEachOnItsOwn();
    void namelessId_canBeEdited();
    void numbersThatAreNotFinite_areShown();
    void manyLoads_openAtOnce();
    void manyLoads_areSelectedAndDuplicatedAtOnce();
    void windowWithAnOpenEditor_goes();
    void everything_isReachedByTheTabKey();
    void spaceKey_selects();
    void widgets_haveNames();
    void smallScreen_isEnough();
    void colours_areReadable();

private:
    ListDialog* open();
    [[nodiscard]] ListTable* motors() const
    {
        return m_dialog->findChild<ListTable*>(u"motorTable"_s);
    }
    [[nodiscard]] ListTable* loads() const
    {
        return m_dialog->findChild<ListTable*>(u"loadTable"_s);
    }
    [[nodiscard]] QString words() const
    {
        return m_dialog->findChild<QLabel*>(u"words"_s)->text();
    }
    static QString text(const ListTable* table, int row, int column)
    {
        return table->model()->index(row, column).data().toString();
    }
    static QList<int> selectedRows(const ListTable* table)
    {
        QList<int> rows;
        for (const QModelIndex& index : table->selectionModel()->selectedRows())
            rows += index.row();
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    static void click(ListTable* table, int row, int column = 0, Qt::KeyboardModifiers keys = {})
    {
        const QModelIndex index = table->model()->index(row, column);
        table->scrollTo(index);
        table->setFocus();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, keys, table->visualRect(index).center());
    }
    static void press(ListTable* table, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        table->setFocus();
        QTest::keyClick(table, key, modifiers);
    }
    /// Types `typed` over a cell and ends with Enter.
    static void type(ListTable* table, int row, int column, const QString& typed)
    {
        click(table, row, column);
        QTest::keyClick(table, Qt::Key_F2);
        QLineEdit* editor = editorOf(table);
        editor->selectAll();
        QTest::keyClicks(editor, typed);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    static QLineEdit* editorOf(const ListTable* table)
    {
        QLineEdit* found = nullptr;
        for (QLineEdit* editor : table->viewport()->findChildren<QLineEdit*>())
            found = editor->isVisible() ? editor : found;
        return found;
    }
    static QList<float> positions()
    {
        QList<float> found;
        for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
            found += load.positionX;
        return found;
    }
    static QStringList names()
    {
        QStringList found;
        for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
            found += load.name;
        return found;
    }
    static void setClipboard(const QString& copied)
    {
        QGuiApplication::clipboard()->setText(copied);
    }

    std::optional<Support::TestWindow> m_test;
    ListDialog* m_dialog = nullptr;
};

void TestList::init()
{
    m_test.emplace();
    m_test->window.resize(1024, 700);
    QVERIFY(m_test->activate());
    int number = 0;
    for (const float x : {2.0F, 5.0F, 6.0F}) {
        LoadLogic::ActiveLoad load;
        load.name = u"Foco "_s + QString::number(++number);
        load.mass = 100.0F * static_cast<float>(4 - number);
        load.positionX = x;
        LoadLogic::PlaceLoad(load);
    }
    m_test->window.updateCalculations();
    m_dialog = nullptr;
}

void TestList::cleanup()
{
    m_test.reset();
    QLocale::setDefault(QLocale::c());
}

ListDialog* TestList::open()
{
    m_test->window.openList();
    m_dialog = m_test->window.findChild<ListDialog*>();
    const auto isActive = [this] { return QApplication::activeWindow() == m_dialog; };
    m_dialog->activateWindow();
    if (!QTest::qWaitFor(isActive))
        qFatal("the dialog does not open");
    return m_dialog;
}

void TestList::key_opensIt()
{
    QVERIFY(m_test->window.findChild<ListDialog*>() == nullptr);
    m_test->field("trussLength")->setFocus();
    QTest::keyClick(m_test->field("trussLength"), Qt::Key_L, Qt::ControlModifier);
    const auto* dialog = m_test->window.findChild<ListDialog*>();
    QVERIFY(dialog != nullptr && dialog->isVisible() && !dialog->isModal());
    QVERIFY(dialog->windowTitle().startsWith(u"Lista"_s));
    QTest::keyClick(&m_test->window, Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(m_test->window.findChildren<ListDialog*>().size(), 1);
}

void TestList::rows_areThoseOfTheProject()
{
    open();
    QCOMPARE(motors()->model()->rowCount(), 2);
    QCOMPARE(loads()->model()->rowCount(), 3);
    QCOMPARE(text(motors(), 0, ListRows::MotorPosition), u"-6.00m"_s);
    QCOMPARE(text(loads(), 1, ListRows::LoadName), u"Foco 2"_s);
    QCOMPARE(text(loads(), 1, ListRows::LoadMass), u"200.0"_s);
    QCOMPARE(text(loads(), 1, ListRows::LoadPosition), u"-1.00m"_s);
    QCOMPARE(m_test->undoDepth(), 0);
    for (const QString& heading : {u"Motores: 2"_s, u"Cargas: 3"_s}) {
        const auto labels = m_dialog->findChildren<QLabel*>();
        QVERIFY(std::any_of(labels.cbegin(), labels.cend(), [&heading](const QLabel* label) {
            return QString(label->text()).remove(u'&') == heading;
        }));
    }
}

void TestList::selectedRow_isSelectedInTheWindow()
{
    open();
    click(loads(), 1);
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(1).id);
    QVERIFY(m_test->loadPanel()->isVisible());
    QCOMPARE(m_test->text("loadName"), u"Foco 2"_s);
    press(loads(), Qt::Key_Down);
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(2).id);
    click(motors(), 1);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    QVERIFY(m_test->motorPanel()->isVisible());
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestList::selectedSegment_isGrabbedInTheWindow()
{
    m_test->addScreen(); // 4 m: 8 segments behind the loads
    open();
    click(loads(), 5);
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(5).id);
    QVERIFY(!m_test->loadPanel()->isVisible());
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 11);
}

// Two loads that read the same, so that no field tells of the other one.
void TestList::whatTheWindowSelects_isSelectedHere()
{
    LoadLogic::ActiveLoads[1].name = LoadLogic::ActiveLoads.at(2).name;
    LoadLogic::ActiveLoads[1].mass = LoadLogic::ActiveLoads.at(2).mass;
    m_test->window.updateCalculations();
    open();
    m_test->window.showLoadProperties(LoadLogic::ActiveLoads.at(1).id);
    QTRY_COMPARE(selectedRows(loads()), QList<int>({1}));
    m_test->window.showLoadProperties(LoadLogic::ActiveLoads.at(2).id);
    QTRY_COMPARE(selectedRows(loads()), QList<int>({2}));
    QCOMPARE(loads()->currentIndex().row(), 2);
    m_test->window.showMotorProperties(1);
    QTRY_COMPARE(selectedRows(motors()), QList<int>({1}));
    QCOMPARE(selectedRows(loads()), QList<int>());
    m_test->window.nothingPicked();
    QTRY_COMPARE(selectedRows(motors()), QList<int>());
}

void TestList::selection_isInOneTable()
{
    open();
    click(loads(), 0);
    click(loads(), 2, 0, Qt::ControlModifier);
    QCOMPARE(selectedRows(loads()), QList<int>({0, 2}));
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(2).id);
    m_test->window.updateCalculations();
    QTest::qWait(150);
    QCOMPARE(selectedRows(loads()), QList<int>({0, 2})); // following leaves it alone
    click(motors(), 0);
    QCOMPARE(selectedRows(loads()), QList<int>());
}

void TestList::clearedSelection_isClearedInTheWindow()
{
    open();
    click(loads(), 1);
    click(loads(), 1, 0, Qt::ControlModifier);
    QCOMPARE(selectedRows(loads()), QList<int>());
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QVERIFY(!m_test->loadPanel()->isVisible());
}

void TestList::dialog_followsTheProject()
{
    open();
    // 12 × 8.4 / 2 = 50.4; 300·10/12 + 200·7/12 + 100·6/12 = 416.7; and 50 of its own
    QCOMPARE(text(motors(), 0, ListRows::MotorStatic), u"517.1"_s);
    LoadLogic::ActiveLoads[0].mass = 0.0F;
    m_test->window.updateCalculations();
    QTRY_COMPARE(text(motors(), 0, ListRows::MotorStatic), u"267.1"_s);
    QCOMPARE(text(loads(), 0, ListRows::LoadMass), u"0.0"_s);
    LoadLogic::AddMotor(3.0F);
    m_test->window.updateCalculations();
    QTRY_COMPARE(motors()->model()->rowCount(), 3);
    QCOMPARE(text(motors(), 1, ListRows::MotorPosition), u"-3.00m"_s);
}

void TestList::dialog_followsOnlyWhileOpen()
{
    open();
    m_dialog->close();
    LoadLogic::ActiveLoads[0].mass = 7.0F;
    m_test->window.updateCalculations();
    QTest::qWait(200);
    QCOMPARE(text(loads(), 0, ListRows::LoadMass), u"300.0"_s);
    open();
    QCOMPARE(text(loads(), 0, ListRows::LoadMass), u"7.0"_s);
}

void TestList::dragOnTheCanvas_isFollowed()
{
    open();
    LoadLogic::ActiveLoads.removeFirst();
    m_test->window.updateCalculations();
    m_test->window.aboutToEdit();
    m_test->window.loadPicked(LoadLogic::ActiveLoads.at(0).id);
    for (int step = 0; step < 10; ++step) {
        LoadLogic::ActiveLoads[0].positionX += 0.1F;
        m_test->window.edited();
    }
    QTRY_COMPARE(text(loads(), 0, ListRows::LoadPosition), u"0.00m"_s);
    QCOMPARE(selectedRows(loads()), QList<int>({0}));
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::drag_isFollowedNowAndThen()
{
    open();
    QTest::qWait(150);
    int followed = 0;
    connect(loads()->model(), &QAbstractItemModel::dataChanged, m_dialog, [&followed] { ++followed; });
    QElapsedTimer drag;
    drag.start();
    for (int step = 0; step < 100; ++step) {
        LoadLogic::ActiveLoads[0].positionX += 0.01F;
        m_test->window.edited();
        QCoreApplication::processEvents();
    }
    const qint64 times = drag.elapsed() / 100 + 1; // at most every 100 ms
    QVERIFY2(followed <= times, qPrintable(QString::number(followed)));
    QTRY_COMPARE(text(loads(), 0, ListRows::LoadPosition), u"-3.00m"_s);
}

void TestList::motorDraggedPastAnother_staysSelected()
{
    LoadLogic::AddMotor(6.0F);
    m_test->window.updateCalculations();
    open();
    m_test->window.motorPicked(0);
    QTRY_COMPARE(selectedRows(motors()), QList<int>({0}));
    LoadLogic::MotorList[0].positionX = 8.0F;
    m_test->window.edited();
    QTRY_COMPARE(text(motors(), 1, ListRows::MotorPosition), u"+2.00m"_s);
    QCOMPARE(selectedRows(motors()), QList<int>({1}));
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
}

void TestList::otherTab_isFollowed()
{
    open();
    click(loads(), 1);
    m_test->window.onAddTab();
    QTRY_COMPARE(loads()->model()->rowCount(), 0);
    QVERIFY(m_dialog->windowTitle().endsWith(u"Proyecto 2"_s));
    QCOMPARE(selectedRows(motors()), QList<int>());
}

void TestList::typedMass_isOneStep()
{
    open();
    type(loads(), 1, ListRows::LoadMass, u"55.5"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 55.5F);
    QCOMPARE(text(loads(), 1, ListRows::LoadMass), u"55.5"_s);
    QCOMPARE(m_test->undoDepth(), 1);
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 200.0F);
}

void TestList::typedComma_isAPoint()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    open();
    click(loads(), 1, ListRows::LoadMass);
    QTest::keyClick(loads(), Qt::Key_7); // a key that is typed begins to edit
    QLineEdit* editor = editorOf(loads());
    QVERIFY(editor != nullptr);
    QTest::keyClicks(editor, u",5"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(LoadLogic::ActiveLoads.at(1).mass, 7.5F);
}

void TestList::typedPosition_isMeasuredFromTheMiddle()
{
    open();
    type(loads(), 0, ListRows::LoadPosition, u"-5.25"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 0.75F);
    type(motors(), 0, ListRows::MotorPosition, u"-4"_s);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
    QCOMPARE(m_test->undoDepth(), 2);
}

void TestList::typedMotorValues_areOneStepEach()
{
    open();
    type(motors(), 1, ListRows::MotorCapacity, u"2000"_s);
    type(motors(), 1, ListRows::MotorWeight, u"60.5"_s);
    QCOMPARE(LoadLogic::MotorList.at(1).capacity, 2000.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).selfWeight, 60.5F);
    QCOMPARE(m_test->undoDepth(), 2);
    // 50.4 + 300·2/12 + 200·5/12 + 100·6/12 = 233.7, and 60.5 of its own
    QCOMPARE(text(motors(), 1, ListRows::MotorStatic), u"294.2"_s);
}

void TestList::typedName_isTakenAsItIs()
{
    open();
    type(loads(), 0, ListRows::LoadName, u" 50% %1 <b> "_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).name, u" 50% %1 <b> "_s);
    type(motors(), 0, ListRows::MotorName, u"Izq & %2"_s);
    QCOMPARE(LoadLogic::MotorList.at(0).modelName, u"Izq & %2"_s);
}

void TestList::escape_leavesTheCellThenTheDialog()
{
    open();
    click(loads(), 0, ListRows::LoadMass);
    QTest::keyClick(loads(), Qt::Key_F2);
    QTest::keyClicks(editorOf(loads()), u"9"_s);
    QTest::keyClick(editorOf(loads()), Qt::Key_Escape);
    QTRY_VERIFY(editorOf(loads()) == nullptr);
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(LoadLogic::ActiveLoads.at(0).mass, 300.0F);
    QCOMPARE(m_test->undoDepth(), 0);
    press(loads(), Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
}

void TestList::unusableText_isToldAndNotTaken()
{
    open();
    click(motors(), 0, ListRows::MotorCapacity);
    QTest::keyClick(motors(), Qt::Key_F2);
    QLineEdit* editor = editorOf(motors());
    editor->selectAll();
    QTest::keyClicks(editor, u"50"_s);
    QVERIFY(!editor->styleSheet().isEmpty());
    QCOMPARE(words(), u"La capacidad va de 100 a 5000 kg."_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::qWait(20);
    QCOMPARE(editorOf(motors()), editor); // still there to be put right
    QCOMPARE(LoadLogic::MotorList.at(0).capacity, 1000.0F);
    QTest::keyClicks(editor, u"0"_s);
    QCOMPARE(words(), QString());
    QVERIFY(editor->styleSheet().isEmpty());
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(LoadLogic::MotorList.at(0).capacity, 500.0F);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::unchangedText_isNoStep()
{
    LoadLogic::ActiveLoads[0].mass = 69.55F;
    m_test->window.updateCalculations();
    open();
    click(loads(), 0, ListRows::LoadMass);
    QTest::keyClick(loads(), Qt::Key_F2);
    QTest::keyClick(editorOf(loads()), Qt::Key_Return);
    QTRY_VERIFY(editorOf(loads()) == nullptr);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).mass, 69.55F);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestList::result_saysThatItIsNotTyped()
{
    open();
    click(motors(), 0, ListRows::MotorStatic);
    QTest::keyClick(motors(), Qt::Key_F2);
    QVERIFY(editorOf(motors()) == nullptr);
    QCOMPARE(words(), u"Es un resultado: no se escribe."_s);
}

void TestList::panel_showsWhatWasTypedHere()
{
    open();
    type(loads(), 1, ListRows::LoadMass, u"77"_s);
    QCOMPARE(m_test->text("loadMass"), u"77.0"_s);
    type(motors(), 0, ListRows::MotorCapacity, u"750"_s);
    QCOMPARE(m_test->text("motorCapacity"), u"750.0"_s);
    QCOMPARE(m_test->undoDepth(), 2);
}

// With the Tab key, so that the next cell is being edited when the rows change places.
void TestList::motorTypedPastAnother_keepsItsRow()
{
    LoadLogic::AddMotor(6.0F);
    m_test->window.updateCalculations();
    open();
    click(motors(), 0, ListRows::MotorPosition);
    QTest::keyClick(motors(), Qt::Key_F2);
    editorOf(motors())->selectAll();
    QTest::keyClicks(editorOf(motors()), u"2"_s);
    QTest::keyClick(editorOf(motors()), Qt::Key_Tab);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 8.0F);
    QCOMPARE(selectedRows(motors()), QList<int>({1}));
    QVERIFY(editorOf(motors()) != nullptr);
    editorOf(motors())->selectAll();
    QTest::keyClicks(editorOf(motors()), u"333"_s);
    QTest::keyClick(editorOf(motors()), Qt::Key_Return);
    QTRY_COMPARE(LoadLogic::MotorList.at(1).capacity, 333.0F);
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    QCOMPARE(m_test->undoDepth(), 2);
    type(motors(), 1, ListRows::MotorCapacity, u"444"_s); // cells can still be edited
    QCOMPARE(LoadLogic::MotorList.at(1).capacity, 444.0F);
}

void TestList::deletedRows_areOneStep()
{
    open();
    click(loads(), 0);
    click(loads(), 2, 0, Qt::ControlModifier);
    press(loads(), Qt::Key_Delete);
    QCOMPARE(names(), QStringList({u"Foco 2"_s}));
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(selectedRows(loads()), QList<int>()); // a second press takes nothing more
    press(loads(), Qt::Key_Delete);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QVERIFY(!m_test->loadPanel()->isVisible());
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
}

void TestList::deletedMotor_isOneStep()
{
    open();
    click(motors(), 0);
    press(motors(), Qt::Key_Delete);
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    QCOMPARE(m_test->window.selectedMotorIndex, -1);
    QVERIFY(!m_test->motorPanel()->isVisible());
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::deletedSegment_takesItsScreen()
{
    m_test->addScreen();
    open();
    click(loads(), 4);
    press(loads(), Qt::Key_Delete);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
    QCOMPARE(words(), u"Eliminado: 8 filas. Ctrl+Z lo recupera."_s);
}

void TestList::duplicatedRows_areOneStepAndSelected()
{
    open();
    click(loads(), 0);
    press(loads(), Qt::Key_Down, Qt::ShiftModifier);
    press(loads(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(positions(), QList<float>({2.0F, 5.0F, 6.0F, 2.5F, 5.5F}));
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(selectedRows(loads()), QList<int>({3, 4}));
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(4).id);
    QCOMPARE(words(), u"Duplicado: 2 filas, al lado del original."_s);
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
}

void TestList::duplicatedMotors_areOneStep()
{
    open();
    click(motors(), 1);
    press(motors(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.size(), 3);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 11.5F);
    QCOMPARE(selectedRows(motors()), QList<int>({1}));
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::mirroredRows_areOneStep()
{
    open();
    click(loads(), 0);
    press(loads(), Qt::Key_A, Qt::ControlModifier);
    press(loads(), Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(positions(), QList<float>({10.0F, 7.0F, 6.0F}));
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(selectedRows(loads()), QList<int>({0, 1, 2}));
    type(motors(), 0, ListRows::MotorPosition, u"-5"_s);
    press(motors(), Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 11.0F);
    QCOMPARE(m_test->undoDepth(), 3);
}

void TestList::mirroredInTheMiddle_isNoStep()
{
    open();
    click(loads(), 2);
    press(loads(), Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(m_test->undoDepth(), 0);
    QCOMPARE(words(), u"Reflejado queda en el mismo sitio."_s);
}

void TestList::nothingSelected_isTold()
{
    open();
    for (const Qt::Key key : {Qt::Key_D, Qt::Key_M, Qt::Key_C}) {
        m_dialog->findChild<QLabel*>(u"words"_s)->clear();
        press(loads(), key, Qt::ControlModifier);
        QCOMPARE(words(), u"No hay ninguna fila seleccionada."_s);
    }
    press(loads(), Qt::Key_Delete);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestList::copiedRows_arePartedByTabs()
{
    LoadLogic::ActiveLoads[0].name = u"Dos\tpartes\nmás"_s;
    m_test->window.updateCalculations();
    open();
    click(loads(), 0);
    press(loads(), Qt::Key_Down, Qt::ShiftModifier);
    press(loads(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"Dos partes más\t300.0\t-4.00\nFoco 2\t200.0\t-1.00\n"_s);
    click(motors(), 0);
    press(motors(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             u"Motor\t-6.00\t1000.0\t50.0\t517.1\t646.3\tOK ✅\n"_s); // 517.07 × 1.25
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestList::copiedRows_canBePasted()
{
    LoadLogic::ActiveLoads[1].name = u"\"15 pulgadas"_s;
    m_test->window.updateCalculations();
    open();
    click(loads(), 1);
    press(loads(), Qt::Key_C, Qt::ControlModifier);
    press(loads(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 4);
    QCOMPARE(LoadLogic::ActiveLoads.at(3).name, u"\"15 pulgadas"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(3).mass, 200.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(3).positionX, 5.0F);
}

void TestList::pastedRows_areOneStepAndSelected()
{
    open();
    setClipboard(u"PA izq\t350\t-4,5\r\nPA der\t350,5\t4.5\r\n"_s);
    press(motors(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 5);
    QCOMPARE(LoadLogic::ActiveLoads.at(4).name, u"PA der"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(4).mass, 350.5F);
    QCOMPARE(LoadLogic::ActiveLoads.at(4).positionX, 10.5F);
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(selectedRows(loads()), QList<int>({3, 4}));
    QCOMPARE(words(), u"Pegado: 2 cargas."_s);
    m_test->window.undo();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
}

void TestList::pastedFaults_areTold()
{
    open();
    setClipboard(u"A\tx\t0\nB\t1\t0\nC\t1.200\t0\nD\t1\nE\t1\t99\nF\t1\t0\tLED 1"_s);
    press(loads(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 4);
    QCOMPARE(words(), u"Pegado: 1 carga. No se ha pegado: Fila 1: «x» no es una masa. Fila 3: «1.200» puede "
                      "ser una masa con decimales o de miles. Fila 4: faltan columnas (nombre, masa, "
                      "posición). Y 2 filas más."_s);
    setClipboard(u"A\tx\t0"_s);
    press(loads(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_test->undoDepth(), 1);
    QVERIFY(words().startsWith(u"Pegado: 0 cargas. "_s));
    setClipboard(u"\n"_s);
    press(loads(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(words(), u"No hay filas que pegar (nombre, masa, posición)."_s);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::pastedOnASpanishDesktop_isTheSame()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    pastedRows_areOneStepAndSelected();
}

void TestList::undoKey_undoesTheProject()
{
    open();
    click(loads(), 0);
    press(loads(), Qt::Key_Delete);
    press(loads(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
    QCOMPARE(loads()->model()->rowCount(), 3); // at once
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestList::undoKeyInAnEditor_undoesTheTyping()
{
    open();
    type(loads(), 1, ListRows::LoadMass, u"55.5"_s);
    click(loads(), 0, ListRows::LoadMass);
    QTest::keyClick(loads(), Qt::Key_F2);
    QLineEdit* editor = editorOf(loads());
    editor->selectAll();
    QTest::keyClicks(editor, u"9"_s);
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(editorOf(loads()) == editor);
    QCOMPARE(m_test->undoDepth(), 1);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 55.5F);
    // Nor do the other keys act on the rows.
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_D, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestList::sorting_keepsIdentity()
{
    open();
    loads()->sortByColumn(ListRows::LoadMass, Qt::AscendingOrder);
    QCOMPARE(text(loads(), 0, ListRows::LoadName), u"Foco 3"_s);
    click(loads(), 0);
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(2).id);
    // 150 kg is between the others: the row goes to its place, and stays the selected one.
    type(loads(), 0, ListRows::LoadMass, u"250"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(2).mass, 250.0F);
    QCOMPARE(text(loads(), 1, ListRows::LoadName), u"Foco 3"_s);
    QCOMPARE(selectedRows(loads()), QList<int>({1}));
    m_test->window.showLoadProperties(LoadLogic::ActiveLoads.at(0).id);
    QTRY_COMPARE(selectedRows(loads()), QList<int>({2}));
    press(loads(), Qt::Key_Delete);
    QCOMPARE(names(), QStringList({u"Foco 2"_s, u"Foco 3"_s}));
}

void TestList::sortKey_turnsTheOrder()
{
    open();
    click(loads(), 0, ListRows::LoadMass);
    const auto first = [this] { return text(loads(), 0, ListRows::LoadName); };
    QCOMPARE(first(), u"Foco 1"_s);
    press(loads(), Qt::Key_F7);
    QCOMPARE(first(), u"Foco 3"_s);
    QCOMPARE(loads()->horizontalHeader()->sortIndicatorSection(), static_cast<int>(ListRows::LoadMass));
    press(loads(), Qt::Key_F7);
    QCOMPARE(first(), u"Foco 1"_s);
    QCOMPARE(loads()->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    press(loads(), Qt::Key_F7);
    QCOMPARE(loads()->horizontalHeader()->sortIndicatorSection(), -1);
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(0).id);
}

void TestList::repeatedIds_areEditedEachOnItsOwn()
{
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads)
        load.id = 7;
    for (LoadLogic::Motor& motor : LoadLogic::MotorList)
        motor.id = 7;
    m_test->window.updateCalculations();
    open();
    type(loads(), 1, ListRows::LoadMass, u"55"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).mass, 300.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 55.0F);
    QCOMPARE(selectedRows(loads()), QList<int>({1})); // the window knows them by the id alone
    m_test->window.updateCalculations();
    QTest::qWait(150);
    QCOMPARE(selectedRows(loads()), QList<int>({1}));
    type(motors(), 1, ListRows::MotorCapacity, u"700"_s);
    QCOMPARE(LoadLogic::MotorList.at(0).capacity, 1000.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).capacity, 700.0F);
    click(loads(), 2);
    press(loads(), Qt::Key_Delete);
    QCOMPARE(names(), QStringList({u"Foco 1"_s, u"Foco 2"_s}));
}

// -1 stands for no load: the window cannot select it.
void TestList::namelessId_canBeEdited()
{
    LoadLogic::ActiveLoads[1].id = -1;
    m_test->window.updateCalculations();
    open();
    click(loads(), 0);
    type(loads(), 1, ListRows::LoadMass, u"55"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).mass, 55.0F);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    press(loads(), Qt::Key_Delete);
    QCOMPARE(names(), QStringList({u"Foco 1"_s, u"Foco 3"_s}));
}

void TestList::numbersThatAreNotFinite_areShown()
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    LoadLogic::ActiveLoads[0].mass = none;
    LoadLogic::ActiveLoads[1].positionX = none;
    LoadLogic::ActiveLoads[2].mass = endless;
    LoadLogic::MotorList[0].positionX = -endless;
    LoadLogic::MotorList[1].capacity = none;
    m_test->window.updateCalculations();
    open();
    for (ListTable* table : {motors(), loads()}) {
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            table->sortByColumn(column, Qt::AscendingOrder);
            table->sortByColumn(column, Qt::DescendingOrder);
        }
        table->sortByColumn(-1, Qt::AscendingOrder);
        click(table, 0);
        press(table, Qt::Key_A, Qt::ControlModifier);
        press(table, Qt::Key_M, Qt::ControlModifier);
        press(table, Qt::Key_D, Qt::ControlModifier);
        press(table, Qt::Key_C, Qt::ControlModifier);
        table->grab();
    }
    QVERIFY(std::isnan(LoadLogic::ActiveLoads.at(0).mass));
    type(loads(), 0, ListRows::LoadMass, u"5"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).mass, 5.0F);
}

void TestList::manyLoads_openAtOnce()
{
    for (int i = 0; i < 20'000; ++i) {
        LoadLogic::ActiveLoad load;
        load.name = u"Carga "_s + QString::number(i);
        load.mass = 1.0F;
        load.positionX = 12.0F * static_cast<float>(i % 1000) / 1000.0F;
        LoadLogic::PlaceLoad(load);
    }
    m_test->window.updateCalculations();
    const Support::CpuTimer timer;
    m_test->window.openList();
    m_dialog = m_test->window.findChild<ListDialog*>();
    m_dialog->grab();
    const qint64 elapsed = timer.elapsed();
    QCOMPARE(loads()->model()->rowCount(), 20'003);
    QVERIFY2(elapsed < 1000 * Support::slowness(), qPrintable(QString::number(elapsed) + u" ms"_s));
}

void TestList::manyLoads_areSelectedAndDuplicatedAtOnce()
{
    for (int i = 0; i < 5'000; ++i)
        LoadLogic::PlaceLoad({});
    m_test->window.updateCalculations();
    open();
    const Support::CpuTimer timer;
    click(loads(), 0);
    press(loads(), Qt::Key_A, Qt::ControlModifier);
    press(loads(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 10'006);
    press(loads(), Qt::Key_C, Qt::ControlModifier);
    press(loads(), Qt::Key_Delete);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 5'003);
    const qint64 elapsed = timer.elapsed();
    QVERIFY2(elapsed < 2000 * Support::slowness(), qPrintable(QString::number(elapsed) + u" ms"_s));
}

void TestList::windowWithAnOpenEditor_goes()
{
    open();
    click(loads(), 0, ListRows::LoadMass);
    QTest::keyClick(loads(), Qt::Key_F2);
    QTest::keyClicks(editorOf(loads()), u"9"_s);
    m_test.reset();
    QCOMPARE(LoadLogic::ActiveLoads.at(0).mass, 300.0F);
}

void TestList::everything_isReachedByTheTabKey()
{
    open();
    motors()->setFocus();
    QSet<QWidget*> visited;
    for (int i = 0; i < 20; ++i) {
        visited.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(visited.contains(motors()) && visited.contains(loads()));
    const auto buttons = m_dialog->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 7);
    for (QPushButton* button : buttons)
        QVERIFY2(visited.contains(button), qPrintable(button->text()));
}

void TestList::spaceKey_selects()
{
    open();
    press(loads(), Qt::Key_Down, Qt::ControlModifier);
    const int row = loads()->currentIndex().row();
    QCOMPARE(selectedRows(loads()), QList<int>());
    press(loads(), Qt::Key_Space);
    QCOMPARE(selectedRows(loads()), QList<int>({row}));
    QCOMPARE(m_test->window.selectedLoadId, LoadLogic::ActiveLoads.at(row).id);
    press(loads(), Qt::Key_Space, Qt::ControlModifier);
    QCOMPARE(selectedRows(loads()), QList<int>());
    QVERIFY(editorOf(loads()) == nullptr);
}

void TestList::widgets_haveNames()
{
    open();
    QCOMPARE(motors()->accessibleName(), u"Motores"_s);
    QCOMPARE(loads()->accessibleName(), u"Cargas"_s);
    click(loads(), 0, ListRows::LoadPosition);
    QTest::keyClick(loads(), Qt::Key_F2);
    QCOMPARE(editorOf(loads())->accessibleName(), u"Posición de la carga en metros desde el centro"_s);
    QCOMPARE(editorOf(loads())->accessibleDescription(),
             u"La posición va de -6.00 a 6.00 m desde el centro."_s);
    QTest::keyClick(editorOf(loads()), Qt::Key_Escape);
    click(loads(), 0, ListRows::LoadName);
    QTest::keyClick(loads(), Qt::Key_F2);
    QCOMPARE(editorOf(loads())->accessibleName(), u"Nombre de la carga"_s);
}

// 960 × 540 is what a large screen has at 200 %.
void TestList::smallScreen_isEnough()
{
    open();
    QVERIFY2(m_dialog->minimumSizeHint().width() <= 960,
             qPrintable(QString::number(m_dialog->minimumSizeHint().width())));
    QVERIFY(m_dialog->minimumSize().height() <= 480);
    m_dialog->resize(900, 480);
    QTest::qWait(50);
    QCOMPARE(m_dialog->size(), QSize(900, 480));
    QVERIFY(motors()->horizontalHeader()->length() <= motors()->viewport()->width());
    QVERIFY(loads()->viewport()->height() >= 3 * loads()->rowHeight(0));
    const auto buttons = m_dialog->findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        QVERIFY2(m_dialog->rect().contains(button->geometry()), qPrintable(button->text()));
}

void TestList::colours_areReadable()
{
    LoadLogic::MotorList[0].capacity = 100.0F;
    m_test->window.updateCalculations();
    open();
    click(loads(), 1);
    press(loads(), Qt::Key_Down, Qt::ShiftModifier);
    const auto readable = [](ListTable* table, int row, int column) {
        const QRect cell = table->visualRect(table->model()->index(row, column)).adjusted(2, 2, -2, -2);
        const QImage picture = table->viewport()->grab(cell).toImage();
        const QColor background = Support::mostFrequentColour(picture, picture.rect());
        return Support::strongestContrast(picture, picture.rect(), background);
    };
    QVERIFY(readable(motors(), 0, ListRows::MotorState) >= 4.5); // red
    QVERIFY(readable(motors(), 1, ListRows::MotorState) >= 4.5); // green
    QVERIFY(readable(loads(), 0, ListRows::LoadMass) >= 4.5);
    QVERIFY(readable(loads(), 1, ListRows::LoadMass) >= 4.5); // selected
    click(motors(), 0);
    QVERIFY(readable(motors(), 0, ListRows::MotorState) >= 4.5); // selected and red
}

QTEST_MAIN(TestList)
#include "tst_list.moc"
