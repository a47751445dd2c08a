#include "canvas/TrussView.h"
#include "io/HtmlReport.h"
#include "io/ReportPage.h"
#include "support/Contrast.h"
#include "support/ReportDocument.h"

#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QRandomGenerator>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

using namespace Qt::StringLiterals;

using ProjectState = LoadLogic::ProjectState;
using Support::ReportDocument;

namespace
{

LoadLogic::Motor motorAt(int id, float position, float capacity = 1000.0F)
{
    LoadLogic::Motor motor;
    motor.id = id;
    motor.positionX = position;
    motor.capacity = capacity;
    return motor;
}

LoadLogic::ActiveLoad loadAt(int id, float position, float mass)
{
    LoadLogic::ActiveLoad load;
    load.id = id;
    load.positionX = position;
    load.mass = mass;
    load.type = u"Audio"_s;
    return load;
}

LoadLogic::ActiveLoad segmentAt(int id, float position, int groupId)
{
    LoadLogic::ActiveLoad segment = loadAt(id, position, 69.55F);
    segment.type = u"Video_Segment"_s;
    segment.groupId = groupId;
    segment.screenWidth = 4.0F;
    segment.screenHeight = 3.0F;
    segment.screenWeightM2 = 40.0F;
    segment.bumperWeightPerMeter = 10.0F;
    return segment;
}

ProjectState usualProject(const QString& title = u"Sala"_s)
{
    ProjectState project;
    project.tabName = title;
    project.motors = {motorAt(1, 0.0F), motorAt(2, 12.0F)};
    return project;
}

/// 780 kg hang on the first motor alone.
ProjectState heavyProject()
{
    ProjectState project = usualProject(u"Pesado"_s);
    project.trussSelfWeight = 0.0F;
    project.loads = {loadAt(5, 0.0F, 780.0F)};
    return project;
}

ProjectState unstableProject()
{
    ProjectState project = usualProject(u"Voladizo"_s);
    project.motors.removeLast();
    project.loads = {loadAt(1, 3.0F, 10.0F), segmentAt(2, 4.0F, 100)};
    return project;
}

QList<Figures> figuresOf(const QList<ProjectState>& projects)
{
    QList<Figures> figures;
    for (const ProjectState& project : projects)
        figures.append(Figures::of(project));
    return figures;
}

QStringList cells(const ReportPage& page, int row, int columns)
{
    QStringList texts;
    for (int column = 0; column < columns; ++column)
        texts.append(page.table()->item(row, column)->text());
    return texts;
}

bool isRed(const QTableWidgetItem* item)
{
    return item->foreground().style() != Qt::NoBrush && item->foreground().color() == QColor(Qt::red);
}

QPushButton* button(const ReportPage& page, const QString& text)
{
    const auto buttons = page.findChildren<QPushButton*>();
    for (QPushButton* candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

QLabel* label(const ReportPage& page, const QString& text)
{
    const auto labels = page.findChildren<QLabel*>();
    for (QLabel* candidate : labels) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

/// Any project that a rigger could draw, and many that none would.
ProjectState randomProject(QRandomGenerator& random)
{
    const auto upTo = [&random](double most) { return static_cast<float>(random.bounded(most)); };
    ProjectState project;
    project.trussLength = 1.0F + upTo(30.0);
    project.trussSelfWeight = upTo(20.0);
    project.limitCPL = upTo(3000.0);
    const int motors = random.bounded(6);
    for (int i = 0; i < motors; ++i)
        project.motors.append(motorAt(i + 1, upTo(static_cast<double>(project.trussLength)), upTo(1500.0)));
    if (motors > 1 && random.bounded(3) > 0) {
        project.motors[0].positionX = 0.0F;
        project.motors[1].positionX = project.trussLength;
    }
    const int loads = random.bounded(8);
    for (int i = 0; i < loads; ++i) {
        const float position = upTo(static_cast<double>(project.trussLength));
        project.loads.append(random.bounded(3) == 0 ? segmentAt(i + 1, position, 100 + random.bounded(3))
                                                    : loadAt(i + 1, position, upTo(900.0)));
    }
    return project;
}

/// The verdicts of the page's rows below the first band, as they read in the written report.
QStringList pageVerdicts(const ReportPage& page)
{
    QStringList verdicts;
    for (int row = 0; row < page.table()->rowCount(); ++row) {
        if (page.table()->columnSpan(row, 0) > 1)
            continue;
        const QTableWidgetItem* last = page.table()->item(row, 7);
        if (last == nullptr)
            last = page.table()->item(row, 6);
        QString verdict = last->text();
        verdict.chop(2); // its mark
        verdict.replace(u"EXCESO ESTÁTICO"_s, u"SOBRECARGA ESTÁTICA"_s);
        verdict.replace(u"EXCESO DINÁMICO"_s, u"SOBRECARGA DINÁMICA"_s);
        verdicts.append(verdict);
    }
    return verdicts;
}

/// The verdicts of motors, arrays and loads of a document with one project. Its table of arrays has
/// no verdicts: those are the truss's, as of every load.
QStringList documentVerdicts(const ReportDocument& document, const Figures& project)
{
    QStringList verdicts;
    for (const ReportDocument::Row& row : document.tables.constFirst().rows)
        verdicts.append(row.cells.constLast());
    const QString ofTruss =
        project.loads.isEmpty() ? QString() : document.tables.constLast().rows.at(0).cells.at(6);
    verdicts += QStringList(project.arrays.size(), ofTruss);
    for (const ReportDocument::Row& row : document.tables.constLast().rows)
        verdicts.append(row.cells.constLast());
    return verdicts;
}

/// Heading, rows and the frame of one pixel on either side.
int heightOfContent(const QTableWidget* table)
{
    return table->horizontalHeader()->height() + table->verticalHeader()->length() + 2;
}

} // namespace

class TestReportPage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void widgets_areLaidOutAndStyled();
    void table_hasItsHeadersAndCannotBeEdited();
    void table_isAsHighAsItsRows();
    void table_beyondWhatAPageCanShow_scrollsItself();
    void table_thatLostRows_isLowAgain();
    void keysInTheTable_scrollThePage();
    void scrollBar_isSeenOnWhite();
    void bottomBar_hasBothButtons();
    void buttons_emitTheirSignals();
    void drawing_isInPrintMode();
    void noProjects_leaveAnEmptyTableAndAreFit();
    void projectBand_spansAllColumns();
    void motorRow_hasAllColumns();
    void failingMotor_isRed();
    void motorAtItsCapacity_isOk();
    void overloadAtRest_isStaticThoughDynamicIsExceededToo();
    void motorWithoutName_isItsNumber();
    void screens_haveTheirOwnSection();
    void untypedSegments_haveNoSection();
    void loads_areListedUnderTheirBand();
    void projectWithoutLoads_hasNoLoadBand();
    void unstableProject_failsArraysAndLoads();
    void certificate_isComplete();
    void oneFailingProject_raisesTheAlert();
    void stressOfHundred_raisesTheAlert();
    void secondFill_replacesTheFirst();
    void namesInTheTable_stayAsTyped();
    void thousandRandomProjects_getTheVerdictsOfTheHtmlReport();
};

void TestReportPage::init()
{
    LoadLogic::MakeCurrent(ProjectState());
}

void TestReportPage::widgets_areLaidOutAndStyled()
{
    const ReportPage page;
    QCOMPARE(page.layout()->contentsMargins(), QMargins());
    QCOMPARE(page.layout()->spacing(), 0);

    const auto* scrollArea = page.findChild<QScrollArea*>();
    QVERIFY(scrollArea->widgetResizable());
    QCOMPARE(scrollArea->frameShape(), QFrame::NoFrame);
    QCOMPARE(scrollArea->styleSheet(), u"background-color: white;"_s);

    const QWidget* canvas = scrollArea->widget();
    QCOMPARE(canvas->objectName(), u"reportCanvas"_s);
    QCOMPARE(canvas->styleSheet(), u"#reportCanvas { background-color: white; }"_s);
    QCOMPARE(canvas->layout()->contentsMargins(), QMargins(30, 30, 30, 30));
    QCOMPARE(canvas->layout()->spacing(), 20);

    const QLabel* title = label(page, u"INFORME ESTRUCTURAL DE RIGGING"_s);
    QVERIFY(title != nullptr);
    QCOMPARE(title->styleSheet(), u"color: black; font-size: 24px; font-weight: bold; border: none;"_s);
    QCOMPARE(title->alignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(title->parentWidget()->styleSheet(), u"border-bottom: 2px solid #333;"_s);

    const QLabel* tableTitle = label(page, u"ANÁLISIS DE CARGAS Y REACCIONES EN PUNTOS DE CUELGUE"_s);
    QVERIFY(tableTitle != nullptr);
    QCOMPARE(tableTitle->styleSheet(),
             u"color: #333; font-weight: bold; font-size: 14px; margin-bottom: 5px; border: none;"_s);

    QCOMPARE(page.certificate()->text(), QString());
    QVERIFY(page.certificate()->wordWrap());
    QCOMPARE(page.certificate()->styleSheet(), u"color: #444; font-size: 11px; border: none;"_s);
    QCOMPARE(page.certificate()->parentWidget()->styleSheet(),
             u"background: #F8F8F8; border: 1px solid #CCC; border-radius: 4px; padding: 10px;"_s);
}

void TestReportPage::table_hasItsHeadersAndCannotBeEdited()
{
    const ReportPage page;
    const QTableWidget* table = page.table();
    QCOMPARE(table->rowCount(), 0);
    const QStringList headers{u"ID / MOTOR"_s,      u"POSICIÓN (m)"_s,   u"CAPACIDAD MOTOR"_s,
                              u"PESO MOTOR (kg)"_s, u"TOTAL EN PUNTO"_s, u"ESTÁTICA (kg)"_s,
                              u"DINÁMICA (kg)"_s,   u"ESTADO"_s};
    QCOMPARE(table->columnCount(), headers.size());
    for (int column = 0; column < table->columnCount(); ++column) {
        QCOMPARE(table->horizontalHeaderItem(column)->text(), headers.at(column));
        QCOMPARE(table->horizontalHeader()->sectionResizeMode(column), QHeaderView::Stretch);
    }
    QCOMPARE(table->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    QCOMPARE(table->minimumHeight(), 200);
    QCOMPARE(table->styleSheet(),
             u"QTableWidget { color: black; background: #F9F9F9; gridline-color: #DDD; font-family: 'Courier "
             u"New'; "
             "border: 1px solid #CCC; }QHeaderView::section { background-color: #F0F0F0; color: #333; "
             "font-weight: bold; }"_s);
}

void TestReportPage::table_isAsHighAsItsRows()
{
    ReportPage page;
    page.resize(1300, 700);
    page.show();
    page.fill(figuresOf(QList<ProjectState>(30, heavyProject())));
    QCoreApplication::processEvents();
    const QTableWidget* table = page.table();
    QCOMPARE(table->rowCount(), 30 * 5);
    QCOMPARE(table->height(), heightOfContent(table));
    QVERIFY(!table->verticalScrollBar()->isVisible());
    QVERIFY(!table->horizontalScrollBar()->isVisible());
    const QScrollBar* bar = page.findChild<QScrollArea*>()->verticalScrollBar();
    QVERIFY(bar->isVisible());
    QVERIFY(bar->maximum() > table->height() - 700);
}

void TestReportPage::table_beyondWhatAPageCanShow_scrollsItself()
{
    ReportPage page;
    page.resize(1300, 700);
    page.show();
    page.fill(figuresOf({usualProject()}));
    page.table()->setRowCount(50'000);
    QCoreApplication::processEvents();
    QTRY_COMPARE(page.table()->height(), 400'000);
    QVERIFY(page.table()->verticalScrollBar()->isVisible());
}

void TestReportPage::table_thatLostRows_isLowAgain()
{
    ReportPage page;
    page.resize(1300, 700);
    page.show();
    page.fill(figuresOf(QList<ProjectState>(30, heavyProject())));
    QCoreApplication::processEvents();
    page.fill(figuresOf({usualProject()}));
    QCoreApplication::processEvents();
    QTRY_COMPARE(page.table()->height(), 200);
}

void TestReportPage::keysInTheTable_scrollThePage()
{
    ReportPage page;
    page.resize(1300, 700);
    page.show();
    page.fill(figuresOf(QList<ProjectState>(30, heavyProject())));
    QCoreApplication::processEvents();
    QTableWidget* table = page.table();
    QScrollArea* area = page.findChild<QScrollArea*>();
    const auto isSeen = [table, area] {
        const QRect cell = table->visualItemRect(table->currentItem());
        const QPoint middle = table->viewport()->mapTo(area->viewport(), cell.center());
        return area->viewport()->rect().contains(middle);
    };
    table->setCurrentCell(1, 0);
    QVERIFY(isSeen());
    for (int row = 1; row < 149; ++row) {
        QTest::keyClick(table, Qt::Key_Down);
        QVERIFY2(isSeen(), qPrintable(QString::number(row)));
    }
    QTest::keyClick(table, Qt::Key_Home, Qt::ControlModifier);
    QVERIFY(isSeen());
}

void TestReportPage::scrollBar_isSeenOnWhite()
{
    ReportPage page;
    page.resize(1300, 700);
    page.show();
    page.fill(figuresOf(QList<ProjectState>(8, heavyProject())));
    QCoreApplication::processEvents();
    QScrollBar* bar = page.findChild<QScrollArea*>()->verticalScrollBar();
    QVERIFY(bar->isVisible());
    const QImage picture = bar->grab().toImage();
    const QColor handle = picture.pixelColor(picture.width() / 2, 20);
    const QColor groove = picture.pixelColor(picture.width() / 2, picture.height() - 20);
    QVERIFY(Support::contrast(handle, groove) >= 3.0);
    QVERIFY(Support::contrast(handle, Qt::white) >= 3.0);
}

void TestReportPage::bottomBar_hasBothButtons()
{
    const ReportPage page;
    const QPushButton* back = button(page, u"← VOLVER AL DISEÑO"_s);
    QVERIFY(back != nullptr);
    QCOMPARE(back->minimumSize(), QSize(160, 35));
    QCOMPARE(back->maximumSize(), QSize(160, 35));
    QCOMPARE(back->styleSheet(),
             u"QPushButton { background: #555; color: white; border: none; font-weight: bold; }"
             "QPushButton:hover { background: #666; }"_s);
    const QPushButton* print = button(page, u"🖨️ IMPRIMIR / PDF"_s);
    QVERIFY(print != nullptr);
    QCOMPARE(print->minimumSize(), QSize(200, 40));
    QCOMPARE(print->maximumSize(), QSize(200, 40));
    QCOMPARE(print->styleSheet(), u"QPushButton { background: #0078D7; color: white; border: none; "
                                  u"font-weight: bold; font-size: 14px; }"
                                  "QPushButton:hover { background: #0086F0; }"_s);

    const QWidget* bar = back->parentWidget();
    QCOMPARE(bar->styleSheet(), u"background: #2D2D2D; border-top: 1px solid #444;"_s);
    QCOMPARE(bar->layout()->contentsMargins(), QMargins(20, 10, 20, 10));
    QVERIFY(!page.findChild<QScrollArea*>()->isAncestorOf(bar));
}

void TestReportPage::buttons_emitTheirSignals()
{
    ReportPage page;
    const QSignalSpy back(&page, &ReportPage::backClicked);
    const QSignalSpy print(&page, &ReportPage::printClicked);
    button(page, u"← VOLVER AL DISEÑO"_s)->click();
    QCOMPARE(back.count(), 1);
    QCOMPARE(print.count(), 0);
    button(page, u"🖨️ IMPRIMIR / PDF"_s)->click();
    QCOMPARE(print.count(), 1);
}

void TestReportPage::drawing_isInPrintMode()
{
    const ReportPage page;
    QVERIFY(page.drawing()->printMode);
    QCOMPARE(page.drawing()->minimumHeight(), 300);
    QCOMPARE(page.drawing()->parentWidget()->styleSheet(), u"border: 1px solid #DDD; margin: 10px 0;"_s);
}

void TestReportPage::noProjects_leaveAnEmptyTableAndAreFit()
{
    ReportPage page;
    page.fill({});
    QCOMPARE(page.table()->rowCount(), 0);
    QVERIFY(page.certificate()->text().contains(u"SISTEMA COMPLETO APTO"_s));
}

void TestReportPage::projectBand_spansAllColumns()
{
    ReportPage page;
    page.fill(figuresOf({usualProject()}));
    const QTableWidgetItem* band = page.table()->item(0, 0);
    QCOMPARE(band->text(), u"--- PROYECTO: Sala ---"_s);
    QCOMPARE(page.table()->columnSpan(0, 0), 8);
    QCOMPARE(band->background().color(), QColor(0, 191, 255, 40));
    QCOMPARE(band->foreground().color(), QColor(0, 191, 255));
    QCOMPARE(band->font().weight(), QFont::Weight(700));
    QCOMPARE(band->textAlignment(), static_cast<int>(Qt::AlignHCenter | Qt::AlignVCenter));
}

void TestReportPage::motorRow_hasAllColumns()
{
    ReportPage page;
    page.fill(figuresOf({heavyProject()}));
    // 780 + 50 = 830, · 1.25 = 1037.5 of 1000.
    QCOMPARE(cells(page, 1, 8), QStringList({u"Motor"_s, u"-6.00m"_s, u"1000.0"_s, u"50.0"_s, u"780.0"_s,
                                             u"830.0"_s, u"1037.5"_s, u"EXCESO DINÁMICO ❌"_s}));
    QCOMPARE(cells(page, 2, 8), QStringList({u"Motor"_s, u"+6.00m"_s, u"1000.0"_s, u"50.0"_s, u"0.0"_s,
                                             u"50.0"_s, u"62.5"_s, u"OK ✅"_s}));
}

void TestReportPage::failingMotor_isRed()
{
    ReportPage page;
    page.fill(figuresOf({heavyProject()}));
    QVERIFY(isRed(page.table()->item(1, 7)));
    QVERIFY(!isRed(page.table()->item(1, 0)));
    QVERIFY(!isRed(page.table()->item(2, 7)));
}

void TestReportPage::motorAtItsCapacity_isOk()
{
    ProjectState project = heavyProject();
    project.motors[0].capacity = 1037.5F;
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(1, 7)->text(), u"OK ✅"_s);

    project.motors[0].capacity = 780.0F; // what hangs on it is no static overload
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(1, 7)->text(), u"EXCESO DINÁMICO ❌"_s);
}

void TestReportPage::overloadAtRest_isStaticThoughDynamicIsExceededToo()
{
    ProjectState project = heavyProject();
    project.motors[0].capacity = 779.0F;
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(1, 7)->text(), u"EXCESO ESTÁTICO ❌"_s);
    QVERIFY(isRed(page.table()->item(1, 7)));
}

void TestReportPage::motorWithoutName_isItsNumber()
{
    ProjectState project = usualProject();
    project.motors[1].modelName.clear();
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(2, 0)->text(), u"M2"_s);
}

void TestReportPage::screens_haveTheirOwnSection()
{
    ProjectState project = usualProject();
    project.loads = {segmentAt(1, 4.25F, 200), segmentAt(2, 4.75F, 200), segmentAt(3, 9.0F, 30)};
    ReportPage page;
    page.fill(figuresOf({project}));
    const QTableWidgetItem* band = page.table()->item(3, 0);
    QCOMPARE(band->text(), u"--- ESPECIFICACIONES PANTALLAS LED ---"_s);
    QCOMPARE(page.table()->columnSpan(3, 0), 7);
    QCOMPARE(band->background().color(), QColor(30, 144, 255, 30));
    QCOMPARE(band->foreground().color(), QColor(30, 144, 255));
    QCOMPARE(cells(page, 4, 7),
             QStringList({u"LED Array (1)"_s, u"4.0m x 3.0m"_s, u"40.0 kg/m²"_s, u"10.0 kg bumper"_s,
                          u"+7.0% cable"_s, u"69.6 kg (TOT)"_s, u"OK ✅"_s}));
    QCOMPARE(page.table()->item(5, 0)->text(), u"LED Array (2)"_s);
    QCOMPARE(page.table()->item(5, 5)->text(), u"139.1 kg (TOT)"_s);
    QCOMPARE(page.table()->item(7, 0)->text(), u"LED 2 Seg"_s);
    QCOMPARE(page.table()->item(9, 0)->text(), u"LED 1 Seg"_s);
}

void TestReportPage::untypedSegments_haveNoSection()
{
    ProjectState project = usualProject();
    project.loads = {segmentAt(1, 4.25F, 200)};
    project.loads[0].type.clear();
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->rowCount(), 1 + 2 + 2);
    QCOMPARE(page.table()->item(4, 0)->text(), u"LED 0 Seg"_s);
    QCOMPARE(page.table()->item(4, 3)->text(), u"Segmento LED"_s);
}

void TestReportPage::loads_areListedUnderTheirBand()
{
    ProjectState project = usualProject();
    project.loads = {loadAt(5, 6.0F, 500.0F), loadAt(77, 7.5F, 12.34F)};
    project.loads[1].name.clear();
    ReportPage page;
    page.fill(figuresOf({project}));
    const QTableWidgetItem* band = page.table()->item(3, 0);
    QCOMPARE(band->text(), u"--- DESGLOSE INDIVIDUAL DE CARGAS ---"_s);
    QCOMPARE(page.table()->columnSpan(3, 0), 7);
    QCOMPARE(band->background().color(), QColor(241, 196, 15, 30));
    QCOMPARE(band->foreground().style(), Qt::NoBrush);
    QCOMPARE(cells(page, 4, 7), QStringList({u"Carga"_s, u"0.00m"_s, u"500.0 kg"_s, u"Carga Puntual"_s,
                                             u"500.0 kg"_s, u"-"_s, u"OK ✅"_s}));
    QCOMPARE(cells(page, 5, 3), QStringList({u"Carga 77"_s, u"+1.50m"_s, u"12.3 kg"_s}));
}

void TestReportPage::projectWithoutLoads_hasNoLoadBand()
{
    ReportPage page;
    page.fill(figuresOf({usualProject()}));
    QCOMPARE(page.table()->rowCount(), 3);
}

void TestReportPage::unstableProject_failsArraysAndLoads()
{
    ReportPage page;
    page.fill(figuresOf({unstableProject()}));
    // Band, motor, band of screens, array, band of loads, two loads.
    QCOMPARE(page.table()->rowCount(), 7);
    for (const int row : {3, 5, 6}) {
        QCOMPARE(page.table()->item(row, 6)->text(), u"SOBRECARGA ❌"_s);
        QVERIFY(isRed(page.table()->item(row, 6)));
    }
    QCOMPARE(page.table()->item(1, 7)->text(), u"OK ✅"_s);
    QVERIFY(page.certificate()->text().contains(u"ALERTA"_s));
}

void TestReportPage::certificate_isComplete()
{
    ReportPage page;
    page.fill(figuresOf({usualProject()}));
    QCOMPARE(page.certificate()->textFormat(), Qt::RichText);
    const QString expected =
        u"CERTIFICADO DE CÁLCULO ESTRUCTURAL v1.1.0 (CONSOLIDADO)<br>"
        "El presente documento detalla la simulación multi-viga basada en los principios de mecánica "
        "estática "
        "aplicada a todos los proyectos activos.<br><br>"
        "NORMATIVA DE REFERENCIA:<br>"
        "- Eurocódigo 9 (EN 1999) | Directiva 2006/42/CE | DGUV V17/18.<br>"
        "- Factor Dinámico (×1.25) aplicado automáticamente para aceleración/frenado.<br><br>"
        "⚠️ <b style='color: #FFAF00;'>AVISO LEGAL CRÍTICO:</b> Este informe es una simulación basada "
        "en "
        "modelos "
        "teóricos. Los desarrolladores <b>NO</b> se responsabilizan de daños, accidentes o del mal uso de "
        "estos "
        "datos. <b>VALIDACIÓN OBLIGATORIA</b> por ingeniería externa certificada.<br><br>"
        "CONCLUSIÓN TÉCNICA GLOBAL: <span style='color: green; font-weight: bold;'>✅ SISTEMA COMPLETO APTO: "
        "Todos "
        "los proyectos se encuentran dentro de los márgenes de seguridad.</span>"_s;
    QCOMPARE(page.certificate()->text(), expected);
}

void TestReportPage::oneFailingProject_raisesTheAlert()
{
    ReportPage page;
    page.fill(figuresOf({usualProject(), heavyProject(), usualProject()}));
    QVERIFY(page.certificate()->text().endsWith(
        u"CONCLUSIÓN TÉCNICA GLOBAL: <span style='color: red; font-weight: bold;'>❌ ALERTA: Se han detectado "
        "incidencias de seguridad en uno o más proyectos. Revise las tablas superiores.</span>"_s));
    QCOMPARE(page.table()->item(0, 0)->text(), u"--- PROYECTO: Sala ---"_s);
    QCOMPARE(page.table()->item(3, 0)->text(), u"--- PROYECTO: Pesado ---"_s);
}

void TestReportPage::stressOfHundred_raisesTheAlert()
{
    // Without own weight a central load of the CPL stresses the truss by exactly 100 %.
    ProjectState project = usualProject();
    project.trussSelfWeight = 0.0F;
    project.motors[0].capacity = project.motors[1].capacity = 1e6F;
    project.loads = {loadAt(1, 6.0F, 1600.0F)};
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(4, 6)->text(), u"SOBRECARGA ❌"_s);
    QVERIFY(page.certificate()->text().contains(u"ALERTA"_s));
}

void TestReportPage::secondFill_replacesTheFirst()
{
    ReportPage page;
    page.fill(figuresOf({unstableProject(), heavyProject()}));
    page.fill(figuresOf({usualProject()}));
    QCOMPARE(page.table()->rowCount(), 3);
    QCOMPARE(page.table()->columnSpan(2, 0), 1); // a band of the first fill was here
    QVERIFY(page.certificate()->text().contains(u"SISTEMA COMPLETO APTO"_s));
}

void TestReportPage::namesInTheTable_stayAsTyped()
{
    const QString name = u"50%1 \"A\" %9 <b>x</b>"_s;
    ProjectState project = usualProject(name);
    project.motors[0].modelName = name;
    project.loads = {loadAt(1, 6.0F, 1.0F)};
    project.loads[0].name = name;
    ReportPage page;
    page.fill(figuresOf({project}));
    QCOMPARE(page.table()->item(0, 0)->text(), u"--- PROYECTO: "_s + name + u" ---"_s);
    QCOMPARE(page.table()->item(1, 0)->text(), name);
    QCOMPARE(page.table()->item(4, 0)->text(), name);
}

void TestReportPage::thousandRandomProjects_getTheVerdictsOfTheHtmlReport()
{
    QRandomGenerator random(20260309);
    ReportPage page;
    int unfit = 0;
    for (int i = 0; i < 1000; ++i) {
        const QList<Figures> figures = figuresOf({randomProject(random)});
        page.fill(figures);
        const QString html = HtmlReport::document(figures, u"A"_s, QDateTime());
        const ReportDocument document(html);
        QCOMPARE(document.error(), QString());
        QCOMPARE(pageVerdicts(page), documentVerdicts(document, figures.at(0)));

        const bool pageIsFit = page.certificate()->text().contains(u"SISTEMA COMPLETO APTO"_s);
        QCOMPARE(html.contains(u"CONFIGURACIÓN GLOBAL APTA"_s), pageIsFit);
        QCOMPARE(html.contains(u"<span class='status-ok'>APTO</span>"_s), pageIsFit);
        unfit += pageIsFit ? 0 : 1;
    }
    QVERIFY(unfit > 100 && unfit < 900); // both kinds were among them
}

QTEST_MAIN(TestReportPage)
#include "tst_reportpage.moc"
