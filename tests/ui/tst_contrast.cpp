#include "engine/ProjectOpinion.h"
#include "engine/SecondOpinionText.h"
#include "support/Window.h"
#include "ui/BendingCurves.h"
#include "ui/ContrastDialog.h"
#include "ui/MotorBars.h"

#include <QClipboard>
#include <QHeaderView>
#include <QMouseEvent>
#include <QTableWidget>

#include <ctime>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Processor time of one step of `drag` [µs], on the average of so many that the dialog follows several
/// times; the least of some rounds.
template <typename Drag>
double timeOfStep(Drag drag)
{
    constexpr int ROUNDS = 3;
    constexpr int STEPS = 400;
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < ROUNDS; ++round) {
        const std::clock_t start = std::clock();
        for (int step = 0; step < STEPS; ++step)
            drag(step % 100);
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC * 1e6 / STEPS);
    }
    return least;
}

} // namespace

/// "Contraste de reparto" beside a real window.
class TestContrast : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
        m_test->window.resize(1024, 700);
        QVERIFY(m_test->activate());
        m_test->window.openProjectFile(QStringLiteral(VELMORA_SOURCE_DIR "/examples/concierto.rig"));
    }
    void cleanup()
    {
        m_test.reset();
    }

    void key_opensIt();
    void hyperstaticLabel_opensIt();
    void figures_areTheEngines();
    void sentences_areTheEngines();
    void manySentences_areAllThere();
    void dialog_followsTheProject();
    void dialog_followsOnlyWhileOpen();
    void drag_costsLittleMore();
    void deflection_tellsTheLevelling();
    void deflection_isForgottenWithTheTruss();
    void deflection_thatIsNone_isMarked();
    void table_isCopied();
    void table_isCopiedByKey();
    void bars_tellWhatTheyPointAt();
    void bars_standApart();
    void curves_tellWhatTheyPointAt();
    void pictures_sayWhatTheyShow();
    void pictures_withoutFigures_sayNothingIsThere();
    void everything_isReachedByTheTabKey();
    void smallScreen_isEnough();

private:
    ContrastDialog* open()
    {
        m_test->window.openContrast();
        auto* dialog = m_test->window.findChild<ContrastDialog*>();
        const auto isActive = [dialog] { return QApplication::activeWindow() == dialog; };
        dialog->activateWindow();
        if (!QTest::qWaitFor(isActive))
            qFatal("the dialog does not open");
        return dialog;
    }
    [[nodiscard]] static QString cell(const ContrastDialog* dialog, int row, int column)
    {
        return dialog->findChild<QTableWidget*>()->item(row, column)->text();
    }
    [[nodiscard]] static QString told(const ContrastDialog* dialog)
    {
        return dialog->findChild<QLabel*>(u"contradictions"_s)->text() + u'\n'
               + dialog->findChild<QLabel*>(u"sentences"_s)->text() + u'\n'
               + dialog->findChild<QLabel*>(u"moreSentences"_s)->text();
    }
    static SecondOpinion::Opinion opinion()
    {
        return ProjectOpinion::of(LoadLogic::Snapshot());
    }

    std::optional<Support::TestWindow> m_test;
};

void TestContrast::key_opensIt()
{
    QVERIFY(m_test->window.findChild<ContrastDialog*>() == nullptr);
    m_test->field("trussLength")->setFocus();
    QTest::keyClick(m_test->field("trussLength"), Qt::Key_F8);
    const auto* dialog = m_test->window.findChild<ContrastDialog*>();
    QVERIFY(dialog != nullptr && dialog->isVisible() && !dialog->isModal());
    QTest::keyClick(&m_test->window, Qt::Key_F8);
    QCOMPARE(m_test->window.findChildren<ContrastDialog*>().size(), 1);
}

void TestContrast::hyperstaticLabel_opensIt()
{
    QLabel* label = m_test->label("hyperstaticWarning");
    const QString text = label->text();
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(m_test->window.findChild<ContrastDialog*>()->isVisible());
    QCOMPARE(label->text(), text);
}

// 14 m of 10 kg/m, motors at 1, 7 and 13 m, 380 kg at both ends, 60 kg at 4, 7 and 10 m: the ends carry
// 527.5 kg each, the middle one 25.
void TestContrast::figures_areTheEngines()
{
    const ContrastDialog* dialog = open();
    const QList<QStringList> rows = SecondOpinionText::rows(opinion());
    const auto* table = dialog->findChild<QTableWidget*>();
    QCOMPARE(table->rowCount(), 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 7; ++column)
            QCOMPARE(cell(dialog, row, column), rows.at(row).at(column));
    }
    QCOMPARE(cell(dialog, 0, 3), u"527.5"_s);
    QCOMPARE(cell(dialog, 1, 3), u"25.0"_s);
    QCOMPARE(cell(dialog, 1, 4), u"1080.0"_s);
    for (int column = 0; column < 7; ++column)
        QCOMPARE(table->horizontalHeaderItem(column)->text(), SecondOpinionText::columns().at(column));
}

void TestContrast::sentences_areTheEngines()
{
    LoadLogic::MotorList[0].capacity = 600.0F; // (527.5 + 50) × 1.25 > 600 ≥ 450; (450 + 50) × 1.25 = 625
    LoadLogic::MotorList[0].selfWeight = 20.0F; // (450 + 20) × 1.25 = 587.5; (527.5 + 20) × 1.25 = 684
    m_test->window.updateCalculations();
    const ContrastDialog* dialog = open();
    const QStringList contradictions = SecondOpinionText::contradictions(opinion());
    QCOMPARE(contradictions.size(), 1);
    QCOMPARE(dialog->findChild<QLabel*>(u"contradictions"_s)->text(), contradictions.constFirst());
    const QStringList sentences = SecondOpinionText::sentences(opinion());
    for (const QString& sentence : sentences)
        QCOMPARE(told(dialog).count(sentence), 1);
    QVERIFY(told(dialog).contains(SecondOpinionText::truss(opinion())));
    const auto labels = dialog->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.cbegin(), labels.cend(),
                        [](const QLabel* label) { return label->text() == SecondOpinionText::limits(); }));
}

void TestContrast::manySentences_areAllThere()
{
    for (int i = 0; i < 12; ++i)
        LoadLogic::AddMotor(1.0F + static_cast<float>(i) * 0.7F);
    m_test->window.updateCalculations();
    const ContrastDialog* dialog = open();
    const QStringList sentences = SecondOpinionText::sentences(opinion());
    QVERIFY(sentences.size() > 6);
    for (const QString& sentence : sentences)
        QVERIFY(told(dialog).contains(sentence));
}

void TestContrast::dialog_followsTheProject()
{
    const ContrastDialog* dialog = open();
    QCOMPARE(cell(dialog, 1, 1), u"0.00m"_s);
    LoadLogic::MotorList[1].positionX = 8.0F;
    m_test->window.onPositionChanged(-1);
    QTRY_COMPARE(cell(dialog, 1, 1), u"+1.00m"_s);
    QCOMPARE(cell(dialog, 1, 3), SecondOpinionText::rows(opinion()).at(1).at(3));
    LoadLogic::AddMotor(4.0F);
    m_test->window.updateCalculations();
    QTRY_COMPARE(dialog->findChild<QTableWidget*>()->rowCount(), 4);
    m_test->window.onAddTab();
    QTRY_COMPARE(dialog->findChild<QTableWidget*>()->rowCount(), 2);
    QVERIFY(dialog->windowTitle().endsWith(u"Proyecto 2"_s));
}

void TestContrast::dialog_followsOnlyWhileOpen()
{
    ContrastDialog* dialog = open();
    dialog->close();
    LoadLogic::MotorList[1].positionX = 8.0F;
    m_test->window.onPositionChanged(-1);
    QTest::qWait(200);
    QCOMPARE(cell(dialog, 1, 1), u"0.00m"_s);
    open();
    QCOMPARE(cell(dialog, 1, 1), u"+1.00m"_s);
}

// Where memory is watched, what a step touches costs more than what it does.
void TestContrast::drag_costsLittleMore()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("The ratio is that of the program alone");
#endif
    const auto drag = [this](int step) {
        LoadLogic::MotorList[1].positionX = 6.0F + 0.02F * static_cast<float>(step);
        m_test->window.onPositionChanged(-1);
        QCoreApplication::processEvents();
    };
    const double closed = timeOfStep(drag);
    open();
    const double opened = timeOfStep(drag);
    const QByteArray figures =
        QByteArray::number(closed) + " us closed, " + QByteArray::number(opened) + " us open";
    QVERIFY2(opened <= 1.5 * closed, figures.constData());
}

void TestContrast::deflection_tellsTheLevelling()
{
    const ContrastDialog* dialog = open();
    QVERIFY(!told(dialog).contains(u"desnivel"_s));
    auto* field = dialog->findChild<QLineEdit*>(u"tableDeflection"_s);
    QTest::keyClicks(field, u"40,5"_s);
    QCOMPARE(dialog->tableDeflection(), std::optional<double>(40.5));
    QTRY_VERIFY(told(dialog).contains(u"1 mm de desnivel de Centro cambia su carga en unos "_s));
    const SecondOpinion::Opinion expected = ProjectOpinion::of(LoadLogic::Snapshot(), 40.5);
    QVERIFY(told(dialog).contains(SecondOpinionText::sentences(expected).constLast()));
    field->clear();
    QTRY_VERIFY(!told(dialog).contains(u"desnivel"_s));
}

void TestContrast::deflection_isForgottenWithTheTruss()
{
    const ContrastDialog* dialog = open();
    auto* field = dialog->findChild<QLineEdit*>(u"tableDeflection"_s);
    const auto type = [&] {
        field->setText(u"40"_s);
        QTRY_VERIFY(told(dialog).contains(u"desnivel"_s));
    };
    type();
    m_test->window.updateCalculations();
    QTest::qWait(150);
    QCOMPARE(field->text(), u"40"_s);
    m_test->setText("trussLength", u"16"_s);
    QTRY_COMPARE(field->text(), QString());
    QVERIFY(!told(dialog).contains(u"desnivel"_s));
    type();
    m_test->setText("limitCPL", u"1500"_s);
    QTRY_COMPARE(field->text(), QString());
    type();
    m_test->window.onAddTab();
    QTRY_COMPARE(field->text(), QString());
}

void TestContrast::deflection_thatIsNone_isMarked()
{
    const ContrastDialog* dialog = open();
    auto* field = dialog->findChild<QLineEdit*>(u"tableDeflection"_s);
    for (const QString& text : {u"0"_s, u"-3"_s, u"x"_s, u"inf"_s, u"nan"_s}) {
        field->setText(text);
        QVERIFY2(!field->styleSheet().isEmpty(), qPrintable(text));
        QVERIFY(!dialog->tableDeflection());
    }
    field->setText(u"1e-3"_s);
    QVERIFY(field->styleSheet().isEmpty());
    field->clear();
    QVERIFY(field->styleSheet().isEmpty());
}

void TestContrast::table_isCopied()
{
    LoadLogic::MotorList[1].modelName = u"Dos\tpartes\nmás"_s;
    m_test->window.updateCalculations();
    const ContrastDialog* dialog = open();
    dialog->copyTable();
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0).split(u'\t'), SecondOpinionText::columns());
    QCOMPARE(lines.at(1), u"PA izq.\t-6.00m\t450.0\t527.5\t540.0\t540.0\tOK"_s);
    QVERIFY(lines.at(2).startsWith(u"Dos partes más\t0.00m\t"_s));
    QCOMPARE(lines.at(4), QString());
}

void TestContrast::table_isCopiedByKey()
{
    const ContrastDialog* dialog = open();
    QGuiApplication::clipboard()->clear();
    auto* table = dialog->findChild<QTableWidget*>();
    table->setFocus();
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), dialog->tableText());
}

void TestContrast::bars_tellWhatTheyPointAt()
{
    const ContrastDialog* dialog = open();
    auto* bars = dialog->findChild<MotorBars*>();
    QCOMPARE(bars->readout(), QString());
    const QPointF pointer(bars->width() / 2 + 5, 80.0);
    QMouseEvent move(QEvent::MouseMove, pointer, bars->mapToGlobal(pointer), Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(bars, &move);
    QCOMPARE(bars->readout(), u"Centro (0.00m): palanca 180.0, nivelado 25.0, con un motor flojo 1080.0, "
                              "máximo posible 1080.0, capacidad 1000.0 kg"_s);
    bars->setFocus();
    QTest::keyClick(bars, Qt::Key_Right);
    QVERIFY(bars->readout().startsWith(u"PA der. (+6.00m)"_s));
    QTest::keyClick(bars, Qt::Key_Right);
    QVERIFY(bars->readout().startsWith(u"PA izq. (-6.00m)"_s));
    QTest::keyClick(bars, Qt::Key_Left);
    QVERIFY(bars->readout().startsWith(u"PA der. (+6.00m)"_s));
    QCOMPARE(bars->accessibleDescription(), bars->readout());
}

// Motors at one end of the truss: each one can still be pointed at.
void TestContrast::bars_standApart()
{
    for (int i = 0; i < 5; ++i)
        LoadLogic::AddMotor(13.0F + 0.01F * static_cast<float>(i));
    m_test->window.updateCalculations();
    const ContrastDialog* dialog = open();
    auto* bars = dialog->findChild<MotorBars*>();
    QSet<QString> seen;
    for (int x = 0; x < bars->width(); ++x) {
        bars->pointAt(x);
        seen.insert(bars->readout());
    }
    QCOMPARE(seen.size(), 8);
}

// At level, the middle motor: 14 m × 10 kg/m and the loads; the largest moment is 80.0, right there.
void TestContrast::curves_tellWhatTheyPointAt()
{
    const ContrastDialog* dialog = open();
    auto* curves = dialog->findChild<BendingCurves*>();
    curves->pointAt(curves->width() / 2);
    QVERIFY2(curves->readout().startsWith(u"0.00m, nivelado: momento 80.0 kg·m, cortante "_s),
             qUtf8Printable(curves->readout()));
    curves->pointAt(0);
    QCOMPARE(curves->readout(), u"-7.00m, nivelado: momento 0.0 kg·m, cortante 0.0 kg"_s);
}

void TestContrast::pictures_sayWhatTheyShow()
{
    const ContrastDialog* dialog = open();
    const QString bars = dialog->findChild<MotorBars*>()->accessibleDescription();
    for (const QString& part :
         {u"PA izq. (-6.00m): palanca 450.0, nivelado 527.5"_s, u"Centro"_s, u"PA der."_s})
        QVERIFY2(bars.contains(part), qUtf8Printable(bars));
    const QString curves = dialog->findChild<BendingCurves*>()->accessibleDescription();
    QVERIFY2(curves.startsWith(u"Bien nivelado: momento de -385.0 kg·m en -6.00m a 80.0 kg·m en 0.00m; "
                               "cortante de 390.0 kg en -6.00m. Con PA izq. flojo: momento de -3085.0 kg·m "
                               "en 0.00m a "_s),
             qUtf8Printable(curves));
}

void TestContrast::pictures_withoutFigures_sayNothingIsThere()
{
    LoadLogic::ActiveLoads[0].mass = std::numeric_limits<float>::quiet_NaN();
    m_test->window.updateCalculations();
    const ContrastDialog* dialog = open();
    for (ContrastPicture* picture : dialog->findChildren<ContrastPicture*>()) {
        QCOMPARE(picture->accessibleDescription(), u"No hay reparto que dibujar."_s);
        picture->pointAt(10);
        QTest::keyClick(picture, Qt::Key_Right);
        QCOMPARE(picture->readout(), QString());
        picture->grab();
    }
    QVERIFY(told(dialog).contains(u"NO SE PUEDE CALCULAR"_s));
}

void TestContrast::everything_isReachedByTheTabKey()
{
    const ContrastDialog* dialog = open();
    dialog->findChild<QTableWidget*>()->setFocus();
    QSet<QWidget*> visited;
    for (int i = 0; i < 20; ++i) {
        visited.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const auto widgets = dialog->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const bool isWanted = qobject_cast<QPushButton*>(widget) != nullptr
                              || qobject_cast<QLineEdit*>(widget) != nullptr
                              || qobject_cast<QTableWidget*>(widget) != nullptr
                              || qobject_cast<ContrastPicture*>(widget) != nullptr;
        QVERIFY2(!isWanted || !widget->isVisible() || visited.contains(widget),
                 widget->metaObject()->className());
    }
}

// 960 × 540 is what a large screen has at 200 %.
void TestContrast::smallScreen_isEnough()
{
    ContrastDialog* dialog = open();
    QVERIFY(dialog->minimumSizeHint().width() <= 960);
    QVERIFY(dialog->minimumSize().height() <= 480);
    dialog->resize(900, 480);
    QTest::qWait(50);
    QCOMPARE(dialog->size(), QSize(900, 480));
    const auto* table = dialog->findChild<QTableWidget*>();
    const auto* header = dialog->findChild<QTableWidget*>()->horizontalHeader();
    QVERIFY(header->length() <= table->viewport()->width());
}

QTEST_MAIN(TestContrast)
#include "tst_contrast.moc"
