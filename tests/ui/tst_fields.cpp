#include "app/Appearance.h"
#include "canvas/MotorDialog.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QClipboard>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QInputMethodEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// What the keys `keys` make of an empty `field`.
QString typed(QLineEdit* field, const QString& keys)
{
    field->clear();
    QTest::keyClicks(field, keys);
    return field->text();
}

/// Turns the wheel over `box` by `angle` eighths of a degree, as the desktop does.
void wheel(QWidget* box, int angle)
{
    const QPointF middle = box->rect().center();
    QWheelEvent event(middle, box->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(box, &event); // sending it would make it the program's own again
}

/// The bar that scrolls `widget` up and down.
QScrollBar* scrolledBy(const QWidget* widget)
{
    for (QWidget* around = widget->parentWidget(); around != nullptr; around = around->parentWidget()) {
        auto* area = qobject_cast<QScrollArea*>(around);
        if (area != nullptr && area->verticalScrollBar()->maximum() > 0)
            return area->verticalScrollBar();
    }
    return nullptr;
}

} // namespace

/// On every desktop the point is the decimal sign, and a typed comma becomes one.
class TestFields : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_before = QLocale();
    }
    void cleanup();

    void comma_becomesAPoint_data();
    void comma_becomesAPoint();
    void comma_fromTheKeypad_becomesAPoint();
    void comma_fromAnInputMethod_becomesAPoint();
    void comma_inAName_stays();
    void comma_inANameDialog_stays();
    void comma_inTheExactPosition_becomesAPoint_data();
    void comma_inTheExactPosition_becomesAPoint();
    void comma_inTheMotorDialog_becomesAPoint_data();
    void comma_inTheMotorDialog_becomesAPoint();
    void comma_inACountBox_changesNothing();
    void setText_withAComma_doesNotParse_data();
    void setText_withAComma_doesNotParse();
    void pastedComma_isRefusedByABoundedField();
    void pastedNumber_isReadLikeATypedOne_data();
    void pastedNumber_isReadLikeATypedOne();
    void pasteOfTheMenu_isReadLikeATypedNumber();
    void pasteOfTheMiddleButton_isReadLikeATypedNumber();
    void pastedIntoTheExactPosition_isReadLikeATypedNumber();
    void pastedIntoACountBox_isNeverTenTimesAsMuch();
    void pastedIntoAName_staysAsItIs();
    void wheel_inPassing_changesNoNumberAndScrolls();
    void wheel_overTheFocusedBox_turnsIt();
    void shownNumbers_haveThePoint_data();
    void shownNumbers_haveThePoint();
    void undoKeys_inADialog_areTheFields();

private:
    /// A window on a desktop that speaks `locale`.
    void build(const QString& locale)
    {
        QLocale::setDefault(QLocale(locale));
        m_test.emplace();
    }

    static void localeRows()
    {
        QTest::addColumn<QString>("locale");
        QTest::newRow("C") << u"C"_s;
        QTest::newRow("es_ES") << u"es_ES"_s;
        QTest::newRow("de_DE") << u"de_DE"_s;
    }

    QLocale m_before;
    std::optional<Support::TestWindow> m_test;
};

void TestFields::cleanup()
{
    m_test.reset();
    QLocale::setDefault(m_before);
}

void TestFields::comma_becomesAPoint_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    for (const QString& locale : {u"C"_s, u"es_ES"_s, u"de_DE"_s}) {
        const auto row = [&locale](const char* name, const QString& keys, const QString& text) {
            QTest::newRow(qUtf8Printable(locale + u' ' + QString::fromLatin1(name) + u' ' + keys))
                << locale << QByteArray(name) << keys << text;
        };
        for (const char* name :
             {"trussLength", "trussWeight", "limitCPL", "motorSelfWeight", "loadMass", "screenWidth",
              "screenHeight", "screenWeightM2", "bumperWeight", "cablePercent"}) {
            row(name, u"8,4"_s, u"8.4"_s);
            row(name, u"8.4"_s, u"8.4"_s);
        }
        row("motorCapacity", u"512,5"_s, u"512.5"_s);
        row("screenWidth", u",5"_s, u".5"_s);
        row("trussLength", u"12,34"_s, u"12.3"_s); // one decimal
        row("trussLength", u"1,2,3"_s, u"1.2"_s);  // a second sign is refused, and so is a second decimal
        row("newLoadMass", u"25"_s, u"25"_s);
        row("newLoadMass", u"2,5"_s, u"2.5"_s); // an integer's field, yet never 25
        row("newLoadMass", u"2.5"_s, u"2.5"_s);
        row("newLoadMass", u",5"_s, u".5"_s);
        row("newLoadMass", u"5000,5"_s, u"5000."_s); // beyond the field's range
    }
}

void TestFields::comma_becomesAPoint()
{
    QFETCH(QString, locale);
    QFETCH(QByteArray, name);
    QFETCH(QString, keys);
    QFETCH(QString, text);
    build(locale);
    if (name.startsWith("motor"))
        m_test->window.showMotorProperties(0);
    if (name.startsWith("loadM"))
        m_test->window.showLoadProperties(m_test->hangLoad(1.0F, 1.0F));
    QCOMPARE(typed(m_test->field(name.constData()), keys), text);
}

void TestFields::comma_fromTheKeypad_becomesAPoint()
{
    build(u"es_ES"_s);
    QLineEdit* width = m_test->field("screenWidth");
    width->setText(u"2"_s);
    QTest::keyClick(width, Qt::Key_Comma, Qt::KeypadModifier);
    QTest::keyClick(width, '5');
    QCOMPARE(width->text(), u"2.5"_s);
}

void TestFields::comma_fromAnInputMethod_becomesAPoint()
{
    build(u"es_ES"_s);
    for (const char* name : {"screenWidth", "trussLength"}) {
        QLineEdit* field = m_test->field(name);
        field->clear();
        for (const QString& piece : {u"8"_s, u","_s, u"5"_s}) {
            QInputMethodEvent commit;
            commit.setCommitString(piece);
            QCoreApplication::sendEvent(field, &commit);
        }
        QCOMPARE(field->text(), u"8.5"_s);
    }
}

void TestFields::comma_inAName_stays()
{
    build(u"es_ES"_s);
    for (const char* name : {"newLoadName", "motorName", "loadName"}) {
        m_test->window.showMotorProperties(0);
        if (QByteArray(name) == "loadName")
            m_test->window.showLoadProperties(m_test->hangLoad(1.0F, 1.0F));
        QCOMPARE(typed(m_test->field(name), u"Izq, alto"_s), u"Izq, alto"_s);
    }
}

void TestFields::comma_inANameDialog_stays()
{
    build(u"es_ES"_s);
    const Support::Answer<QInputDialog> type([](QInputDialog& dialog) {
        typed(dialog.findChild<QLineEdit*>(), u"Gira,"_s);
        dialog.accept();
    });
    m_test->window.onRenameTab(0);
    QVERIFY(type.given());
    QCOMPARE(m_test->tabBar()->tabText(0), u"Gira,"_s);
}

void TestFields::comma_inTheExactPosition_becomesAPoint_data()
{
    localeRows();
}

// The box speaks the default locale, which the program sets to C before any widget.
void TestFields::comma_inTheExactPosition_becomesAPoint()
{
    QFETCH(QString, locale);
    QLocale::setDefault(QLocale(locale));
    const QString plain = qApp->styleSheet();
    const QPalette palette = QApplication::palette();
    Appearance::apply(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    m_test.emplace();
    TrussView* canvas = m_test->canvas();
    canvas->resize(800, 600);

    const Support::Answer<QInputDialog> type([](QInputDialog& dialog) {
        auto* box = dialog.findChild<QDoubleSpinBox*>();
        box->selectAll();
        QTest::keyClicks(box, u"-0,5"_s);
        dialog.accept();
    });
    // The position label of the left motor: from 119 to 106 px above the truss's line.
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(canvas->marginX, canvas->height() / 2 - 112));
    QVERIFY(type.given());
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 5.5F);

    m_test.reset();
    qApp->setStyleSheet(plain);
    QApplication::setPalette(palette);
}

void TestFields::comma_inTheMotorDialog_becomesAPoint_data()
{
    localeRows();
}

void TestFields::comma_inTheMotorDialog_becomesAPoint()
{
    QFETCH(QString, locale);
    build(locale);
    MotorDialog dialog(LoadLogic::MotorList.constFirst(), &m_test->window);
    const auto fields = dialog.findChildren<QLineEdit*>();
    QCOMPARE(fields.size(), 3);
    for (QLineEdit* field : fields)
        QCOMPARE(typed(field, u"120,5"_s), field->validator() == nullptr ? u"120,5"_s : u"120.5"_s);
}

void TestFields::comma_inACountBox_changesNothing()
{
    build(u"es_ES"_s);
    QSpinBox* count = m_test->box("loadCount");
    count->selectAll();
    QTest::keyClicks(count, u"2,"_s);
    QCOMPARE(count->value(), 2);
}

void TestFields::setText_withAComma_doesNotParse_data()
{
    localeRows();
}

void TestFields::setText_withAComma_doesNotParse()
{
    QFETCH(QString, locale);
    build(locale);
    m_test->setText("trussWeight", u"10,5"_s);
    QCOMPARE(LoadLogic::TrussSelfWeight, 0.0F);
    QVERIFY(m_test->field("trussWeight")->styleSheet().contains(u"#FF5555"_s));
    m_test->setText("screenWidth", u"2,5"_s);
    QCOMPARE(LoadLogic::Screen_Width, 0.0F);
}

void TestFields::pastedComma_isRefusedByABoundedField()
{
    build(u"es_ES"_s);
    QLineEdit* weight = m_test->field("trussWeight");
    weight->selectAll();
    weight->insert(u"10,5"_s); // as a paste does
    QVERIFY2(weight->text() != u"105"_s, qUtf8Printable(weight->text()));
    QCOMPARE(LoadLogic::TrussSelfWeight, 8.4F);
}

void TestFields::pastedNumber_isReadLikeATypedOne_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("clip");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QString& clip, const QString& text) {
        QTest::newRow(qUtf8Printable(QString::fromLatin1(name) + u' ' + clip.trimmed()))
            << QByteArray(name) << clip << text;
    };
    for (const char* name :
         {"trussLength", "trussWeight", "limitCPL", "motorSelfWeight", "loadMass", "screenWidth",
          "screenHeight", "screenWeightM2", "bumperWeight", "cablePercent"}) {
        row(name, u"8,4"_s, u"8.4"_s);
        row(name, u"8.4"_s, u"8.4"_s);
    }
    row("motorCapacity", u"512,5"_s, u"512.5"_s);
    row("newLoadMass", u"2,5"_s, u"2.5"_s);
    row("trussWeight", u" 10,5\n"_s, u"10.5"_s); // a cell of a spreadsheet
    row("trussWeight", u",5"_s, u".5"_s);
    row("trussWeight", u"1.234,5"_s, u"6"_s); // refused: the field keeps what it had
    row("trussWeight", u"8,44"_s, u"6"_s);    // one decimal
    row("trussWeight", u"ocho"_s, u"6"_s);
}

void TestFields::pastedNumber_isReadLikeATypedOne()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, clip);
    QFETCH(QString, text);
    build(u"es_ES"_s);
    if (name.startsWith("motor"))
        m_test->window.showMotorProperties(0);
    if (name.startsWith("loadM"))
        m_test->window.showLoadProperties(m_test->hangLoad(1.0F, 1.0F));
    QLineEdit* field = m_test->field(name.constData());
    field->setText(u"6"_s);
    field->selectAll();
    QApplication::clipboard()->setText(clip);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(field->text(), text);
}

void TestFields::pasteOfTheMenu_isReadLikeATypedNumber()
{
    build(u"es_ES"_s);
    QApplication::clipboard()->setText(u"10,5"_s);
    for (const char* name : {"trussWeight", "newLoadName"}) {
        QLineEdit* field = m_test->field(name);
        field->selectAll();
        std::unique_ptr<QMenu> menu(field->createStandardContextMenu());
        const QString title = QLineEdit::tr("&Paste");
        const qsizetype entries = menu->actions().size();
        menu->popup(QPoint(0, 0));
        QCOMPARE(menu->actions().size(), entries);
        const QList<QAction*> actions = menu->actions();
        const auto paste = std::find_if(actions.cbegin(), actions.cend(), [&title](const QAction* action) {
            return action->text().startsWith(title);
        });
        QVERIFY(paste != actions.cend());
        QCOMPARE(actions.indexOf(*paste), 5); // after undo, redo, a line, cut and copy
        QVERIFY((*paste)->isEnabled());
        (*paste)->trigger();
        menu->close();
        QCOMPARE(field->text(), field->objectName() == "trussWeight"_L1 ? u"10.5"_s : u"10,5"_s);
    }
    QCOMPARE(LoadLogic::TrussSelfWeight, 10.5F);
}

// Only where the desktop pastes with the middle button, which the off-screen one does not.
void TestFields::pasteOfTheMiddleButton_isReadLikeATypedNumber()
{
    QClipboard* clipboard = QApplication::clipboard();
    if (!clipboard->supportsSelection()) {
        QSKIP("this desktop has no selection to paste");
    }
    build(u"es_ES"_s);
    QLineEdit* weight = m_test->field("trussWeight");
    weight->clear();
    clipboard->setText(u"10,5"_s, QClipboard::Selection);
    QTest::mouseClick(weight, Qt::MiddleButton);
    QCOMPARE(weight->text(), u"10.5"_s);
}

void TestFields::pastedIntoTheExactPosition_isReadLikeATypedNumber()
{
    build(u"C"_s);
    m_test->canvas()->resize(800, 600);
    QApplication::clipboard()->setText(u"-0,5"_s);
    const Support::Answer<QInputDialog> paste([](QInputDialog& dialog) {
        auto* box = dialog.findChild<QDoubleSpinBox*>();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
        dialog.accept();
    });
    TrussView* canvas = m_test->canvas();
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(canvas->marginX, canvas->height() / 2 - 112));
    QVERIFY(paste.given());
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 5.5F);
}

void TestFields::pastedIntoACountBox_isNeverTenTimesAsMuch()
{
    build(u"es_ES"_s);
    QSpinBox* count = m_test->box("loadCount");
    count->selectAll();
    QApplication::clipboard()->setText(u"8,4"_s);
    QTest::keyClick(count, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(count->value(), 1);
    count->selectAll();
    QApplication::clipboard()->setText(u"7\n"_s);
    QTest::keyClick(count, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(count->value(), 7);
}

void TestFields::pastedIntoAName_staysAsItIs()
{
    build(u"es_ES"_s);
    QLineEdit* name = m_test->field("newLoadName");
    name->selectAll();
    QApplication::clipboard()->setText(u"Izq, alto "_s);
    QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(name->text(), u"Izq, alto "_s);
}

// The event is sent as a desktop's: only such ones go on to the widget around.
void TestFields::wheel_inPassing_changesNoNumberAndScrolls()
{
    build(u"C"_s);
    QVERIFY(m_test->activate());
    m_test->window.resize(1000, 500);
    QCoreApplication::processEvents();
    m_test->field("newLoadMass")->setFocus();
    for (const char* name : {"loadCount", "screenCount"}) {
        QSpinBox* box = m_test->box(name);
        box->setValue(5);
        QScrollBar* bar = scrolledBy(box);
        QVERIFY(bar != nullptr && bar->maximum() > 0);
        bar->setValue(0);
        wheel(box, -120);
        QCOMPARE(box->value(), 5);
        QVERIFY(!box->hasFocus());
        QVERIFY(bar->value() > 0);
    }
}

void TestFields::wheel_overTheFocusedBox_turnsIt()
{
    build(u"C"_s);
    QVERIFY(m_test->activate());
    for (const char* name : {"loadCount", "screenCount"}) {
        QSpinBox* box = m_test->box(name);
        box->setValue(5);
        box->setFocus();
        wheel(box, -120);
        QCOMPARE(box->value(), 4);
    }
}

void TestFields::shownNumbers_haveThePoint_data()
{
    localeRows();
}

void TestFields::shownNumbers_haveThePoint()
{
    QFETCH(QString, locale);
    build(locale);
    QCOMPARE(m_test->text("trussWeight"), u"8.4"_s);
    m_test->window.restoreProjectState(m_test->window.captureCurrentState());
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
    m_test->setText("limitCPL", u"2000"_s);
    QCOMPARE(m_test->text("limitCPL"), u"2000"_s);
    QCOMPARE(m_test->label("screenWeight")->text(), u"Peso Total Array: 556.4 kg (+7.0% cable)"_s);
    QVERIFY(m_test->field("trussWeight")->hasAcceptableInput());
}

void TestFields::undoKeys_inADialog_areTheFields()
{
    build(u"C"_s);
    m_test->window.onAddMotorClicked();
    QString after;
    const Support::Answer<QInputDialog> type([&after](QInputDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>();
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, u"Otro"_s);
        QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
        after = field->text();
        dialog.reject();
    });
    m_test->window.onRenameTab(0);
    QVERIFY(type.given());
    QVERIFY2(after != u"Otro"_s, qUtf8Printable(after));
    QCOMPARE(LoadLogic::MotorList.size(), 3); // the project is not undone
}

QTEST_MAIN(TestFields)
#include "tst_fields.moc"
