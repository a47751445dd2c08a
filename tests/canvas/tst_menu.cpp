#include "canvas/MotorDialog.h"
#include "canvas/RecordingWindow.h"
#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "support/Dialogs.h"
#include "support/Slowness.h"
#include "support/Warnings.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

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

int hangLoad(float x)
{
    LoadLogic::ActiveLoad load;
    load.positionX = x;
    return LoadLogic::PlaceLoad(load);
}

QList<int> hangScreen(float centre, const QString& type, int groupId)
{
    QList<int> ids;
    LoadLogic::ActiveLoad segment;
    segment.type = type;
    segment.groupId = groupId;
    segment.screenWidth = 2.0F;
    segment.screenHeight = 3.0F;
    for (const float offset : {-0.75F, -0.25F, 0.25F, 0.75F}) {
        segment.positionX = centre + offset;
        ids += LoadLogic::PlaceLoad(segment);
    }
    return ids;
}

} // namespace

class TestMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void motor_offersEditAndDelete();
    void motorDeleted_isGoneAndCanBeUndone();
    void closedMenu_doesNothing();
    void releaseOverTheMenu_endsTheDrag();
    void dialog_showsTheMotor();
    void acceptedDialog_writesTheMotor();
    void rejectedDialog_changesNothing();
    void intermediateTexts_areTaken();
    void array_offersDeleteAndEdit();
    void arrayDeleted_takesAllSegments();
    void arrayEdited_throughItsFirstSegment();
    void arrayBox_isTheDrawnFrame();
    void load_isDeletedAlone();
    void selectedLoadDeleted_clearsTheSelection();
    void segmentOutsideItsFrame_isDeletedSingly();
    void nothing_offersNothing();
    void printMode_offersNothing();
    void withoutWindow_canvasRecalculates();
    void windowDestroyedMeanwhile_doesNotCrash();

private:
    void open(int x, int y, TrussView* on = nullptr)
    {
        TrussView* target = on == nullptr ? view : on;
        const QPoint point(x, y);
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, target->mapToGlobal(point));
        QCoreApplication::sendEvent(target, &event);
    }

    std::unique_ptr<RecordingWindow> window;
    TrussView* view = nullptr;
};

void TestMenu::init()
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
}

void TestMenu::cleanup()
{
    window.reset();
}

void TestMenu::motor_offersEditAndDelete()
{
    LoadLogic::AddMotor(2.0F);
    hangLoad(2.0F);
    Support::MenuAnswer menu;
    open(column(2.0F), LINE + 20);
    QVERIFY(menu.given());
    QCOMPARE(menu.entries, QStringList({u"Editar Especificaciones..."_s, u"Eliminar Motor"_s}));
}

void TestMenu::motorDeleted_isGoneAndCanBeUndone()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(5.0F);
    LoadLogic::AddMotor(8.0F);
    Support::MenuAnswer menu(u"Eliminar Motor"_s);
    open(column(5.0F), LINE);
    QVERIFY(menu.given());
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 8.0F);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"edited"_s}));
}

void TestMenu::closedMenu_doesNothing()
{
    LoadLogic::AddMotor(2.0F);
    Support::MenuAnswer menu;
    open(column(2.0F), LINE);
    QVERIFY(menu.given());
    QVERIFY(window->calls.isEmpty());
    QCOMPARE(LoadLogic::MotorList.size(), 1);
}

// The press opens the menu, and the menu gets the release.
void TestMenu::releaseOverTheMenu_endsTheDrag()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    const QPoint point(column(2.0F), LINE);
    QTest::mousePress(view, Qt::RightButton, Qt::NoModifier, point);
    QCOMPARE(view->draggedMotor, 0);

    bool released = false;
    QTimer::singleShot(0, view, [&released] {
        QWidget* menu = QApplication::activePopupWidget();
        QVERIFY(menu != nullptr);
        QTest::mouseRelease(menu, Qt::RightButton, Qt::NoModifier, QPoint(1, 1));
        released = true;
        menu->close();
    });
    open(point.x(), point.y());
    QVERIFY(released);
    QCOMPARE(view->draggedMotor, -1);
    QTest::mouseMove(view, QPoint(column(5.0F), LINE));
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 2.0F);
}

void TestMenu::dialog_showsTheMotor()
{
    LoadLogic::Motor motor;
    motor.id = 7;
    motor.modelName = u"D8+"_s;
    motor.selfWeight = 47.25F;
    motor.capacity = 1e6F;
    const MotorDialog dialog(motor, view);
    QCOMPARE(dialog.windowTitle(), u"Especificaciones: Motor 7"_s);
    const auto* form = qobject_cast<QFormLayout*>(dialog.layout());
    QStringList rows;
    for (int row = 0; row < 3; ++row) {
        const auto* label = qobject_cast<QLabel*>(form->itemAt(row, QFormLayout::LabelRole)->widget());
        const auto* field = qobject_cast<QLineEdit*>(form->itemAt(row, QFormLayout::FieldRole)->widget());
        rows += label->text() + field->text();
        const auto* validator = qobject_cast<const QDoubleValidator*>(field->validator());
        QCOMPARE(validator != nullptr, row > 0);
        if (row == 1)
            QCOMPARE(std::make_tuple(validator->bottom(), validator->top(), validator->decimals()),
                     std::make_tuple(0.0, 500.0, 1));
        if (row == 2)
            QCOMPARE(std::make_tuple(validator->bottom(), validator->top(), validator->decimals()),
                     std::make_tuple(100.0, 5000.0, 1));
    }
    QCOMPARE(rows,
             QStringList({u"Nombre / Modelo:D8+"_s, u"Peso Motor (kg):47.25"_s, u"Capacidad (kg):1e+06"_s}));
    const auto* buttons = dialog.findChild<QDialogButtonBox*>();
    QCOMPARE(buttons->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
}

namespace
{

void fill(const MotorDialog& dialog, const QString& name, const QString& weight, const QString& capacity)
{
    const QList<QLineEdit*> fields = dialog.findChildren<QLineEdit*>();
    fields.at(0)->setText(name);
    fields.at(1)->setText(weight);
    fields.at(2)->setText(capacity);
}

} // namespace

void TestMenu::acceptedDialog_writesTheMotor()
{
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    Support::MenuAnswer menu(u"Editar Especificaciones..."_s);
    Support::Answer<MotorDialog> dialog([](MotorDialog& open) {
        fill(open, QString(), u"47.5"_s, u"2000"_s);
        open.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    open(column(8.0F), LINE);
    QVERIFY(menu.given() && dialog.given());
    const LoadLogic::Motor& motor = LoadLogic::MotorList.at(1);
    QCOMPARE(motor.modelName, QString());
    QCOMPARE(motor.selfWeight, 47.5F);
    QCOMPARE(motor.capacity, 2000.0F);
    QCOMPARE(window->calls, QStringList({u"edited"_s})); // no undo step
}

void TestMenu::rejectedDialog_changesNothing()
{
    LoadLogic::AddMotor(2.0F);
    Support::MenuAnswer menu(u"Editar Especificaciones..."_s);
    Support::Answer<MotorDialog> dialog([](MotorDialog& open) {
        fill(open, u"X"_s, u"1"_s, u"2000"_s);
        QTest::keyClick(&open, Qt::Key_Escape);
    });
    open(column(2.0F), LINE);
    QVERIFY(menu.given() && dialog.given());
    QCOMPARE(LoadLogic::MotorList.at(0).modelName, u"Motor"_s);
    QCOMPARE(LoadLogic::MotorList.at(0).capacity, 1000.0F);
    QVERIFY(window->calls.isEmpty());
}

void TestMenu::intermediateTexts_areTaken()
{
    LoadLogic::AddMotor(2.0F);
    Support::MenuAnswer menu(u"Editar Especificaciones..."_s);
    Support::Answer<MotorDialog> dialog([](MotorDialog& open) {
        fill(open, u"X"_s, QString(), u"50"_s); // below the least capacity that may be typed
        open.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    open(column(2.0F), LINE);
    QVERIFY(menu.given() && dialog.given());
    QCOMPARE(LoadLogic::MotorList.at(0).selfWeight, 0.0F);
    QCOMPARE(LoadLogic::MotorList.at(0).capacity, 50.0F);
}

void TestMenu::array_offersDeleteAndEdit()
{
    hangScreen(5.0F, u"Video_Segment"_s, 100);
    Support::MenuAnswer menu;
    open(column(5.0F), LINE + 20);
    QVERIFY(menu.given());
    QCOMPARE(menu.entries,
             QStringList({u"Eliminar Pantalla Completa"_s, u"Editar Parámetros de Pantalla"_s}));
}

void TestMenu::arrayDeleted_takesAllSegments()
{
    const int other = hangLoad(1.0F);
    hangScreen(5.0F, u"Video_Segment"_s, 100);
    const QList<int> kept = hangScreen(8.0F, u"Video"_s, 101);
    Support::MenuAnswer menu(u"Eliminar Pantalla Completa"_s);
    open(column(5.0F), LINE + 20);
    QVERIFY(menu.given());
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1 + kept.size());
    QCOMPARE(LoadLogic::ActiveLoads.at(0).id, other);
    QCOMPARE(LoadLogic::ActiveLoads.at(1).id, kept.first());
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"load removed"_s, u"edited"_s}));
}

void TestMenu::arrayEdited_throughItsFirstSegment()
{
    const QList<int> ids = hangScreen(5.0F, u"Video_Segment"_s, 100);
    Support::MenuAnswer menu(u"Editar Parámetros de Pantalla"_s);
    open(column(5.4F), LINE + 20);
    QVERIFY(menu.given());
    QCOMPARE(window->segment.id, ids.first());
    QCOMPARE(window->calls, QStringList({u"edit array"_s})); // no undo step
}

void TestMenu::arrayBox_isTheDrawnFrame()
{
    hangScreen(5.0F, u"Video_Segment"_s, 100);
    {
        Support::MenuAnswer menu;
        open(column(5.0F), LINE + 44);
        QVERIFY(menu.given());
    }
    Support::MenuAnswer none;
    open(column(5.0F), LINE + 45); // within reach of a press, not of the menu
    QVERIFY(!none.given());
}

void TestMenu::load_isDeletedAlone()
{
    hangLoad(3.0F);
    const int id = hangLoad(5.0F);
    const int other = hangLoad(5.1F);
    Support::MenuAnswer menu(u"Eliminar Carga"_s);
    open(column(5.0F) + 5, LINE + 10);
    QVERIFY(menu.given());
    QCOMPARE(menu.entries, QStringList({u"Eliminar Carga"_s}));
    QCOMPARE(LoadLogic::ActiveLoads.size(), 2);
    QVERIFY(LoadLogic::FindLoad(id) == nullptr);
    QVERIFY(LoadLogic::FindLoad(other) != nullptr);
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"edited"_s}));
}

void TestMenu::selectedLoadDeleted_clearsTheSelection()
{
    window->selected = hangLoad(5.0F);
    Support::MenuAnswer menu(u"Eliminar Carga"_s);
    open(column(5.0F), LINE + 10);
    QVERIFY(menu.given());
    QCOMPARE(window->calls, QStringList({u"about to edit"_s, u"load removed"_s, u"edited"_s}));
}

void TestMenu::segmentOutsideItsFrame_isDeletedSingly()
{
    hangScreen(5.0F, u"Video_Segment"_s, 100);
    LoadLogic::ActiveLoads[0].screenWidth = 0.5F; // the menu tests the first segment's width
    Support::MenuAnswer menu(u"Eliminar Carga"_s);
    open(column(5.75F), LINE + 10);
    QVERIFY(menu.given());
    QCOMPARE(LoadLogic::ActiveLoads.size(), 3);
}

void TestMenu::nothing_offersNothing()
{
    LoadLogic::AddMotor(2.0F);
    hangLoad(5.0F);
    Support::MenuAnswer none;
    open(column(5.0F) + 15, LINE + 10);
    open(column(2.0F), LINE - 60);
    QVERIFY(!none.given());
    QVERIFY(window->calls.isEmpty());
}

void TestMenu::printMode_offersNothing()
{
    LoadLogic::AddMotor(2.0F);
    view->printMode = true;
    Support::MenuAnswer none;
    open(column(2.0F), LINE);
    QVERIFY(!none.given());
}

void TestMenu::withoutWindow_canvasRecalculates()
{
    TrussView bare;
    bare.resize(SIZE);
    bare.show();
    LoadLogic::AddMotor(2.0F);
    LoadLogic::AddMotor(8.0F);
    {
        Support::MenuAnswer menu(u"Eliminar Motor"_s);
        open(column(8.0F), LINE, &bare);
        QVERIFY(menu.given());
    }
    QCOMPARE(LoadLogic::MotorList.size(), 1);
    QVERIFY(LoadLogic::isUnstable); // one motor is left: calculated anew

    hangScreen(5.0F, u"Video_Segment"_s, 100);
    Support::MenuAnswer menu(u"Eliminar Pantalla Completa"_s);
    open(column(5.0F), LINE + 20, &bare);
    QVERIFY(menu.given());
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
}

void TestMenu::windowDestroyedMeanwhile_doesNotCrash()
{
    LoadLogic::AddMotor(2.0F);
    Support::Answer<QMenu> menu([this](QMenu&) { window.reset(); });
    open(column(2.0F), LINE);
    QCOMPARE(LoadLogic::MotorList.size(), 1);
}

QTEST_MAIN(TestMenu)
#include "tst_menu.moc"
