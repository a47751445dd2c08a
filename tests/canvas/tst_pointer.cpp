#include "canvas/RecordingWindow.h"
#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "support/Dialogs.h"
#include "support/Slowness.h"
#include "support/Warnings.h"

#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

// Margin 80, span 1000, a truss of 10 m: 100 px a metre; the truss line at 300.
constexpr QSize SIZE(1160, 600);
constexpr int LINE = 300;

int column(float x)
{
    return 80 + static_cast<int>(x * 100.0F);
}

int hangLoad(float x, const QString& name = u"PA"_s)
{
    LoadLogic::ActiveLoad load;
    load.positionX = x;
    load.name = name;
    return LoadLogic::PlaceLoad(load);
}

QList<int> hangScreen(float centre, const QString& type, int groupId = 100)
{
    QList<int> ids;
    LoadLogic::ActiveLoad segment;
    segment.type = type;
    segment.groupId = groupId;
    segment.screenWidth = 2.0F;
    segment.screenHeight = 3.0F; // 150 px high for the pointer
    for (const float offset : {-0.75F, -0.25F, 0.25F, 0.75F}) {
        segment.positionX = centre + offset;
        ids += LoadLogic::PlaceLoad(segment);
    }
    return ids;
}

float motorAt(int index)
{
    return LoadLogic::MotorList.at(index).positionX;
}

} // namespace

class TestPointer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void motorBody_startsADrag();
    void motorBody_reachesBelowTheTruss();
    void motorDrag_jumpsToThePointer();
    void motorDrag_isHeldOnTheTruss();
    void motorPastAnother_isFollowed();
    void motorOverLoad_wins();
    void earlierMotor_wins();
    void load_isDraggedWithItsGrabOffset();
    void array_isDraggedWhole();
    void arrayAgainstTheEnd_staysCompressed();
    void arrayBox_isAsHighAsTheScreen();
    void arrayWithoutGroup_isALoad();
    void emptyCanvas_clearsTheSelection();
    void anyButton_presses();
    void doubleClick_isTwoPresses();
    void release_returnsToIdle();
    void releaseWithoutDrag_doesNothing();
    void hover_showsAHandOverGrips();
    void printMode_isDeaf();
    void withoutWindow_theEngineIsStillChanged();
    void deletedWhileDragged_endsTheDrag();

    void repeatedIds_thePressedMotorIsDraggedThroughTheOthers_data();
    void repeatedIds_thePressedMotorIsDraggedThroughTheOthers();
    void repeatedIds_theClickedLabelsMotorIsMoved();
    void repeatedIds_theClickedLabelsLoadIsMoved();
    void loadOfIdMinusOne_hasItsDialog();

    void motorLabel_asksForTheExactPosition();
    void exactPosition_isHeldOnTheTruss();
    void exactPosition_ofALoad();
    void cancelledPosition_changesNothing();
    void exactPosition_withoutWindow();
    void unnamedItems_areCalledByTheirIds();

private:
    void press(int x, int y, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(view, button, {}, {x, y});
    }
    void move(int x, int y = LINE)
    {
        QTest::mouseMove(view, {x, y});
    }
    void release()
    {
        QTest::mouseRelease(view, Qt::LeftButton, {}, {1, 1});
    }

    std::unique_ptr<RecordingWindow> window;
    TrussView* view = nullptr;
};

void TestPointer::init()
{
    Support::failOnWarnings();
    LoadLogic::Reset();
    LoadLogic::TrussLength = 10.0F;
    window = std::make_unique<RecordingWindow>();
    view = new TrussView;
    window->setCentralWidget(view);
    window->setFixedSize(SIZE);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QCOMPARE(view->size(), SIZE);
}

void TestPointer::cleanup()
{
    window.reset();
}

void TestPointer::motorBody_startsADrag()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    press(column(8.0F), LINE - 10);
    QCOMPARE(view->draggedMotor, 1);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"motor 1"_s}));
    QCOMPARE(view->cursor().shape(), Qt::ClosedHandCursor);
}

void TestPointer::motorBody_reachesBelowTheTruss()
{
    LoadLogic::AddMotor(2.0F);
    press(column(2.0F), LINE + 34);
    QCOMPARE(view->draggedMotor, 0);
    press(column(2.0F), LINE + 35);
    QCOMPARE(view->draggedMotor, -1);
    press(column(2.0F), LINE - 35);
    QCOMPARE(view->draggedMotor, 0);
    press(column(2.0F), LINE - 36); // drawn there, yet not to be grabbed
    QCOMPARE(view->draggedMotor, -1);
}

void TestPointer::motorDrag_jumpsToThePointer()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    press(column(2.0F) + 30, LINE);
    window->calls.clear();
    move(column(3.0F));
    QCOMPARE(motorAt(0), 3.0F);
    QCOMPARE(window->calls, QStringList({u"edited"_s}));
}

void TestPointer::motorDrag_isHeldOnTheTruss()
{
    LoadLogic::AddMotor(2.0F);
    press(column(2.0F), LINE);
    move(10);
    QCOMPARE(motorAt(0), 0.0F);
    move(1150);
    QCOMPARE(motorAt(0), 10.0F);
}

void TestPointer::motorPastAnother_isFollowed()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(5.0F);
    const int grabbed = LoadLogic::MotorList.at(0).id;
    press(column(2.0F), LINE);
    move(column(7.0F));
    QCOMPARE(view->draggedMotor, 1);
    QCOMPARE(LoadLogic::MotorList.at(1).id, grabbed);
    move(column(9.0F));
    QCOMPARE(motorAt(0), 5.0F);
    QCOMPARE(motorAt(1), 9.0F);
}

void TestPointer::motorOverLoad_wins()
{
    hangLoad(5.0F);
    LoadLogic::AddMotor(5.0F);
    press(column(5.0F), LINE + 20);
    QCOMPARE(view->draggedMotor, 0);
    QCOMPARE(view->draggedLoad, -1);
}

void TestPointer::earlierMotor_wins()
{
    LoadLogic::AddMotor(5.0F);
    LoadLogic::AddMotor(5.3F);
    press(column(5.2F), LINE);
    QCOMPARE(view->draggedMotor, 0);
}

void TestPointer::load_isDraggedWithItsGrabOffset()
{
    const int id = hangLoad(5.0F);
    press(column(5.1F), LINE + 40);
    QCOMPARE(view->draggedLoad, id);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"load"_s}));
    QVERIFY(qAbs(view->dragOffset - 5.1F) < 0.02F);
    move(column(6.1F));
    QVERIFY(qAbs(LoadLogic::ActiveLoads.at(0).positionX - 6.0F) < 1e-4F);
    QCOMPARE(window->calls.last(), u"edited"_s);
    move(column(9.9F) + 200);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 10.0F);
}

void TestPointer::array_isDraggedWhole()
{
    const QList<int> ids = hangScreen(5.0F, u"Video_Segment"_s);
    press(column(5.5F), LINE + 20);
    QCOMPARE(view->draggedGroup, 100);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"array"_s}));
    QCOMPARE(window->segment.id, ids.first());
    move(column(6.5F));
    QVERIFY(qAbs(LoadLogic::ActiveLoads.at(0).positionX - 5.25F) < 1e-4F);
    QVERIFY(qAbs(LoadLogic::ActiveLoads.at(3).positionX - 6.75F) < 1e-4F);
    QVERIFY(!window->calls.contains(u"load"_s));
}

void TestPointer::arrayAgainstTheEnd_staysCompressed()
{
    hangScreen(5.0F, u"Video_Segment"_s);
    press(column(5.0F), LINE + 20);
    move(column(5.0F) + 460); // 4.6 m to the right: 8.85, 9.35, 9.85 and 10.35, held at 10
    move(column(5.0F));
    QVERIFY(qAbs(LoadLogic::ActiveLoads.at(0).positionX - 4.25F) < 1e-3F);
    QVERIFY(qAbs(LoadLogic::ActiveLoads.at(3).positionX - 5.4F) < 1e-3F);
}

void TestPointer::arrayBox_isAsHighAsTheScreen()
{
    hangScreen(5.0F, u"Video_Segment"_s);
    press(column(5.0F), LINE + 5 + 149);
    QCOMPARE(view->draggedGroup, 100);
    press(column(5.0F), LINE + 5 + 150);
    QCOMPARE(view->draggedGroup, -1);
    press(column(5.0F), LINE + 4);
    QCOMPARE(view->draggedGroup, -1);
}

void TestPointer::arrayWithoutGroup_isALoad()
{
    const QList<int> ids = hangScreen(5.0F, u"Video_Segment"_s, -1);
    press(column(4.25F), LINE + 20);
    QCOMPARE(view->draggedGroup, -1);
    QCOMPARE(view->draggedLoad, ids.first());
}

void TestPointer::emptyCanvas_clearsTheSelection()
{
    LoadLogic::AddMotor(2.0F);
    press(column(6.0F), 20);
    QCOMPARE(window->calls, QStringList({u"nothing"_s}));
    QCOMPARE(view->draggedMotor, -1);
}

void TestPointer::anyButton_presses()
{
    LoadLogic::AddMotor(2.0F);
    press(column(2.0F), LINE, Qt::RightButton);
    QCOMPARE(view->draggedMotor, 0);
}

void TestPointer::doubleClick_isTwoPresses()
{
    LoadLogic::AddMotor(2.0F);
    press(column(2.0F), LINE);
    release();
    QTest::mouseDClick(view, Qt::LeftButton, {}, {column(2.0F), LINE}); // the second press alone
    QCOMPARE(window->calls.count(u"about to edit"_s), 2);
}

void TestPointer::release_returnsToIdle()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    press(column(2.0F), LINE);
    LoadLogic::MotorList[0].staticLoad = -1.0F;
    release();
    QCOMPARE(view->draggedMotor, -1);
    QCOMPARE(view->cursor().shape(), Qt::OpenHandCursor);
    QVERIFY(LoadLogic::MotorList.at(0).staticLoad > 0.0F); // calculated
    move(column(5.0F));
    QCOMPARE(motorAt(0), 2.0F);
}

void TestPointer::releaseWithoutDrag_doesNothing()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::MotorList[0].staticLoad = -1.0F;
    release();
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, -1.0F);
    QCOMPARE(view->cursor().shape(), Qt::ArrowCursor);
}

void TestPointer::hover_showsAHandOverGrips()
{
    LoadLogic::AddMotor(2.0F);
    hangScreen(5.0F, u"Video_Segment"_s, 100);
    hangScreen(8.0F, u"Video"_s, 101);
    hangLoad(3.5F);
    const auto cursorAt = [this](float x, int y) {
        const QPoint point(column(x), y);
        QMouseEvent event(QEvent::MouseMove, point, view->mapToGlobal(point), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(view, &event);
        return view->cursor().shape();
    };
    QCOMPARE(cursorAt(2.0F, LINE), Qt::OpenHandCursor);
    QCOMPARE(cursorAt(5.0F, LINE + 20), Qt::ArrowCursor); // segments show no hand
    QCOMPARE(cursorAt(8.0F, LINE + 20), Qt::OpenHandCursor);
    QCOMPARE(cursorAt(3.5F, LINE + 20), Qt::ArrowCursor);
    QCOMPARE(cursorAt(2.0F, LINE - 112), Qt::ArrowCursor); // nor do labels
    QVERIFY(window->calls.isEmpty());
}

void TestPointer::printMode_isDeaf()
{
    LoadLogic::AddMotor(2.0F);
    view->printMode = true;
    press(column(2.0F), LINE);
    move(column(4.0F));
    release();
    QVERIFY(window->calls.isEmpty());
    QCOMPARE(motorAt(0), 2.0F);
    QCOMPARE(view->draggedMotor, -1);
}

void TestPointer::withoutWindow_theEngineIsStillChanged()
{
    TrussView bare;
    bare.resize(SIZE);
    LoadLogic::AddMotor(2.0F);
    QTest::mousePress(&bare, Qt::LeftButton, {}, {column(2.0F), LINE});
    QTest::mouseMove(&bare, {column(4.0F), LINE});
    QCOMPARE(motorAt(0), 4.0F);
    QTest::mouseRelease(&bare, Qt::LeftButton, {}, {column(4.0F), LINE});
    QTest::mousePress(&bare, Qt::LeftButton, {}, {column(8.0F), 20});
    QCOMPARE(bare.draggedMotor, -1);
}

void TestPointer::deletedWhileDragged_endsTheDrag()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(5.0F);
    press(column(2.0F), LINE);
    LoadLogic::MotorList.removeFirst();
    move(column(8.0F));
    QCOMPARE(view->draggedMotor, -1);
    QCOMPARE(motorAt(0), 5.0F);
}

void TestPointer::repeatedIds_thePressedMotorIsDraggedThroughTheOthers_data()
{
    QTest::addColumn<float>("from");
    QTest::addColumn<QList<float>>("stops");
    QTest::newRow("to the right, onto each") << 1.0F << QList<float>{2.0F, 4.0F, 6.0F, 8.0F, 9.0F};
    QTest::newRow("to the left, onto each") << 9.0F << QList<float>{8.0F, 6.0F, 4.0F, 2.0F, 1.0F};
    QTest::newRow("to the left, past two, onto the third") << 9.0F << QList<float>{4.0F, 3.0F};
    QTest::newRow("to the right, past two, onto the third") << 1.0F << QList<float>{6.0F, 7.0F};
    QTest::newRow("to the left and back") << 9.0F << QList<float>{6.0F, 4.0F, 6.0F, 8.0F, 9.5F};
    QTest::newRow("to the right and back") << 1.0F << QList<float>{6.0F, 4.0F, 2.0F, 0.5F};
}

// As from a file in which every motor has the id 0: the pressed one alone weighs 77 kg.
void TestPointer::repeatedIds_thePressedMotorIsDraggedThroughTheOthers()
{
    QFETCH(float, from);
    QFETCH(QList<float>, stops);
    for (const float x : {2.0F, 4.0F, 6.0F, 8.0F, from}) {
        LoadLogic::AddMotor(x);
        for (LoadLogic::Motor& motor : LoadLogic::MotorList) {
            motor.id = 0;
            motor.selfWeight = motor.positionX == from ? 77.0F : 50.0F;
        }
    }
    press(column(from), LINE - 10);
    for (const float x : stops) {
        move(column(x));
        for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
            if (motor.selfWeight == 77.0F)
                QCOMPARE(motor.positionX, x);
        }
        QCOMPARE(LoadLogic::MotorList.at(view->draggedMotor).selfWeight, 77.0F);
    }
    release();
    QList<float> others;
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        if (motor.selfWeight != 77.0F)
            others.append(motor.positionX);
    }
    QCOMPARE(others, QList<float>({2.0F, 4.0F, 6.0F, 8.0F}));
}

void TestPointer::repeatedIds_theClickedLabelsMotorIsMoved()
{
    for (const float x : {2.0F, 5.0F, 8.0F})
        LoadLogic::AddMotor(x);
    for (LoadLogic::Motor& motor : LoadLogic::MotorList) {
        motor.id = 0;
        motor.modelName = u"D"_s + QString::number(static_cast<int>(motor.positionX));
    }
    QString title;
    double value = 0.0;
    const Support::Answer<QInputDialog> answer([&](QInputDialog& dialog) {
        title = dialog.windowTitle();
        value = dialog.doubleValue();
        dialog.setDoubleValue(1.0);
        dialog.accept();
    });
    press(column(5.0F), LINE - 112);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Motor D5 — Posición exacta"_s);
    QCOMPARE(value, 0.0);
    QCOMPARE(LoadLogic::MotorList.at(1).modelName, u"D5"_s);
    QCOMPARE(motorAt(0), 2.0F);
    QCOMPARE(motorAt(1), 6.0F);
    QCOMPARE(motorAt(2), 8.0F);
}

void TestPointer::repeatedIds_theClickedLabelsLoadIsMoved()
{
    for (const float x : {2.0F, 5.0F, 8.0F})
        hangLoad(x, u"PA"_s + QString::number(static_cast<int>(x)));
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads)
        load.id = 0;
    QString title;
    double value = 0.0;
    const Support::Answer<QInputDialog> answer([&](QInputDialog& dialog) {
        title = dialog.windowTitle();
        value = dialog.doubleValue();
        dialog.setDoubleValue(-1.0);
        dialog.accept();
    });
    press(column(8.0F), LINE + 105);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Carga PA8 — Posición exacta"_s);
    QCOMPARE(value, 3.0);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 2.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).positionX, 5.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(2).positionX, 4.0F);
}

// An id that stands for no load elsewhere, but a file may hold it.
void TestPointer::loadOfIdMinusOne_hasItsDialog()
{
    hangLoad(2.0F);
    hangLoad(8.0F, QString());
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads)
        load.id = -1;
    QString title;
    const Support::Answer<QInputDialog> answer([&](QInputDialog& dialog) {
        title = dialog.windowTitle();
        dialog.setDoubleValue(-1.0);
        dialog.accept();
    });
    press(column(8.0F), LINE + 105);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Carga L-1 — Posición exacta"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(0).positionX, 2.0F);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).positionX, 4.0F);
}

void TestPointer::motorLabel_asksForTheExactPosition()
{
    LoadLogic::AddMotor(2.0F);
    QString title;
    QString prompt;
    Support::Answer<QInputDialog> answer([&](QInputDialog& dialog) {
        title = dialog.windowTitle();
        prompt = dialog.labelText();
        const auto* box = dialog.findChild<QDoubleSpinBox*>();
        QCOMPARE(box->value(), -3.0); // 2 m from the left of 10 m
        QCOMPARE(box->minimum(), -5.0);
        QCOMPARE(box->maximum(), 5.0);
        QCOMPARE(box->decimals(), 2);
        QCOMPARE(box->singleStep(), 1.0);
        dialog.setDoubleValue(1.25);
        dialog.accept();
    });
    press(column(2.0F), LINE - 112);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Motor Motor — Posición exacta"_s);
    QCOMPARE(
        prompt,
        u"Introduzca la coordenada relativa al centro (m):\n(Negativo = izquierda, Positivo = derecha)"_s);
    QCOMPARE(motorAt(0), 6.25F);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"edited"_s}));
    QCOMPARE(view->draggedMotor, -1);
}

void TestPointer::exactPosition_isHeldOnTheTruss()
{
    LoadLogic::AddMotor(2.0F);
    Support::Answer<QInputDialog> answer([](QInputDialog& dialog) {
        dialog.setDoubleRange(-1000.0, 1000.0);
        dialog.setDoubleValue(100.0);
        dialog.accept();
    });
    press(column(2.0F), LINE - 112);
    QVERIFY(answer.given());
    QCOMPARE(motorAt(0), 10.0F);
}

void TestPointer::exactPosition_ofALoad()
{
    hangLoad(1.0F);
    hangLoad(3.0F);
    QString title;
    Support::Answer<QInputDialog> answer([&](QInputDialog& dialog) {
        title = dialog.windowTitle();
        dialog.setDoubleValue(-4.5);
        dialog.accept();
    });
    press(column(3.0F), LINE + 105);
    QVERIFY(answer.given());
    QCOMPARE(title, u"Carga PA — Posición exacta"_s);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).positionX, 0.5F);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"edited"_s}));
}

void TestPointer::cancelledPosition_changesNothing()
{
    LoadLogic::AddMotor(2.0F);
    Support::Answer<QInputDialog> answer([](QInputDialog& dialog) {
        dialog.setDoubleValue(1.25);
        dialog.reject();
    });
    press(column(2.0F), LINE - 112);
    QVERIFY(answer.given());
    QCOMPARE(motorAt(0), 2.0F);
    QVERIFY(window->calls.isEmpty());
}

void TestPointer::exactPosition_withoutWindow()
{
    TrussView bare;
    bare.resize(SIZE);
    bare.show();
    LoadLogic::AddMotor(2.0F);
    LoadLogic::MotorList[0].staticLoad = -1.0F;
    Support::Answer<QInputDialog> answer([](QInputDialog& dialog) {
        dialog.setDoubleValue(0.0);
        dialog.accept();
    });
    QTest::mousePress(&bare, Qt::LeftButton, {}, {column(2.0F), LINE - 112});
    QVERIFY(answer.given());
    QCOMPARE(motorAt(0), 5.0F);
    QVERIFY(LoadLogic::MotorList.at(0).staticLoad > 0.0F);
}

void TestPointer::unnamedItems_areCalledByTheirIds()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::MotorList[0].modelName.clear();
    const int id = hangLoad(7.0F, QString());
    QStringList titles;
    const auto keepTitle = [&](QInputDialog& dialog) {
        titles += dialog.windowTitle();
        dialog.reject();
    };
    {
        Support::Answer<QInputDialog> answer(keepTitle);
        press(column(2.0F), LINE - 112);
        QVERIFY(answer.given());
    }
    Support::Answer<QInputDialog> answer(keepTitle);
    press(column(7.0F), LINE + 105);
    QVERIFY(answer.given());
    QCOMPARE(titles, QStringList({u"Motor M1 — Posición exacta"_s,
                                  u"Carga L"_s + QString::number(id) + u" — Posición exacta"_s}));
}

QTEST_MAIN(TestPointer)
#include "tst_pointer.moc"
