#include "support/Window.h"

#include <QDoubleValidator>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QMetaMethod>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// A style sheet without the blanks that may be set freely.
QString packed(QString style)
{
    return style.remove(QRegularExpression(u"\\s"_s));
}

QLayout* layoutOf(const QWidget* widget)
{
    return widget->parentWidget()->layout();
}

/// The text of the label before `field` in its form or grid.
QString labelOf(const QWidget& window, const QWidget* field)
{
    const auto labels = window.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->buddy() == field)
            return label->text();
    }
    return {};
}

} // namespace

/// The window as it stands after its construction: what is there, where, how it looks, and what
/// each control is wired to.
class TestStartup : public QObject
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

    void members_haveTheirStartValues();
    void firstProject_hasTwoMotorsOf50kgAtTheEnds();
    void slotsAreDeclaredInOrder();
    void titleAndNames_areSet();
    void pages_designIsShownFirst();
    void fields_readShortNumbersAtStart_data();
    void fields_readShortNumbersAtStart();
    void fields_readFixedDecimalsAfterARestore();
    void countBoxes_goFrom1To100AndRead1();
    void validators_boundTheFields_data();
    void validators_boundTheFields();
    void screenFields_haveNoValidator();
    void integerField_keepsATypedPoint();
    void panelsAndWarning_areHiddenAtStart();
    void screenWeight_isShownAtStart();
    void stress_isCalculatedAtStart();
    void headerButtons_haveTheirSheetsAndSizes_data();
    void headerButtons_haveTheirSheetsAndSizes();
    void header_standsInOrder();
    void tabBar_isSetUp();
    void addTabButton_hasItsSheetAndSize();
    void rows_haveTheirMargins();
    void canvasColumn_holdsWarningCanvasAndReport();
    void controlColumn_holdsPanelsAndGroupsInOrder();
    void panels_haveTheirFramesAndTitles();
    void deleteButtons_haveTheirSheets_data();
    void deleteButtons_haveTheirSheets();
    void controlsGroup_hasItsFieldsAndSheets();
    void screenGroup_standsInItsGrid();
    void blink_invertsEvery500ms();
    void undoKeys_haveWindowContext();
    void buttons_areWired();
    void size_followsTheScreen();

private:
    std::optional<Support::TestWindow> m_test;
};

void TestStartup::members_haveTheirStartValues()
{
    const MainWindow& window = m_test->window;
    QCOMPARE(window.projects.size(), 1);
    QCOMPARE(window.projects.constFirst().tabName, u"Proyecto 1"_s);
    QCOMPARE(window.currentProjectIndex, 0);
    QVERIFY(window.undoStack.empty());
    QCOMPARE(window.selectedLoadId, -1);
    QCOMPARE(window.selectedMotorIndex, -1);
    QCOMPARE(window.projectCounter, 100);
    QVERIFY(!window.isRestoring);
    QVERIFY(!window.blinkOn);
}

void TestStartup::firstProject_hasTwoMotorsOf50kgAtTheEnds()
{
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    const LoadLogic::Motor& left = LoadLogic::MotorList.at(0);
    const LoadLogic::Motor& right = LoadLogic::MotorList.at(1);
    QCOMPARE(left.id, 1);
    QCOMPARE(right.id, 2);
    QCOMPARE(left.positionX, 0.0F);
    QCOMPARE(right.positionX, 12.0F);
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        QCOMPARE(motor.modelName, u"Motor"_s);
        QCOMPARE(motor.capacity, 1000.0F);
        QCOMPARE(motor.selfWeight, 50.0F);
        QCOMPARE(motor.staticLoad, 8.4F * 12.0F / 2.0F); // half the truss each
    }
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
}

void TestStartup::slotsAreDeclaredInOrder()
{
    const QStringList expected{u"onMassChanged(QString)"_s,
                               u"onAddMotorClicked()"_s,
                               u"onAddLoadClicked()"_s,
                               u"onAddLEDLoadClicked()"_s,
                               u"onGenerateReportClicked()"_s,
                               u"onBackToDesignClicked()"_s,
                               u"onPrintReportClicked()"_s,
                               u"onInfoClicked()"_s,
                               u"onResetProjectClicked()"_s,
                               u"onDynamicFactorClicked()"_s,
                               u"onOpenUserGuideClicked()"_s,
                               u"onTrussLengthChanged(QString)"_s,
                               u"onTrussWeightChanged(QString)"_s,
                               u"onCPLChanged(QString)"_s,
                               u"onLEDParamChanged(QString)"_s,
                               u"onLoadNameChanged(QString)"_s,
                               u"onTabChanged(int)"_s,
                               u"onAddTab()"_s,
                               u"onCloseTab(int)"_s,
                               u"onRenameTab(int)"_s,
                               u"onSaveProjectClicked()"_s,
                               u"onLoadProjectClicked()"_s};
    QStringList declared;
    const QMetaObject& meta = MainWindow::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Slot)
            declared.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(declared, expected);
}

void TestStartup::titleAndNames_areSet()
{
    const MainWindow& window = m_test->window;
    QCOMPARE(window.windowTitle(), u"Velmora Master v2.0 - Engineering Structural Simulation"_s);
    QCOMPARE(window.objectName(), u"MainWindow"_s);
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(window.centralWidget()->objectName(), u"centralWidget"_s);
    QVERIFY(qobject_cast<QStackedWidget*>(window.centralWidget()) != nullptr);
}

void TestStartup::pages_designIsShownFirst()
{
    const auto* pages = qobject_cast<QStackedWidget*>(m_test->window.centralWidget());
    QCOMPARE(pages->count(), 2);
    QCOMPARE(pages->currentIndex(), 0);
    const auto* design = qobject_cast<QScrollArea*>(pages->widget(0));
    QVERIFY(design != nullptr);
    QVERIFY(design->widgetResizable());
    QCOMPARE(design->frameStyle(), 0);
    QVERIFY(pages->widget(0)->isAncestorOf(m_test->canvas()));
}

void TestStartup::fields_readShortNumbersAtStart_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QString& label, const QString& text) {
        QTest::newRow(name) << QByteArray(name) << label << text;
    };
    row("trussLength", u"Longitud (m):"_s, u"12"_s);
    row("trussWeight", u"Peso (kg/m):"_s, u"8.4"_s);
    row("limitCPL", u"CPL Máx:"_s, u"1600"_s);
    row("screenWidth", u"Ancho (m):"_s, u"4"_s);
    row("screenHeight", u"Alto (m):"_s, u"3"_s);
    row("screenWeightM2", u"Peso (kg/m²):"_s, u"40"_s);
    row("bumperWeight", u"Bumper (kg/m):"_s, u"10"_s);
    row("cablePercent", u"Cable (%):"_s, u"7.0"_s);
    row("newLoadMass", u"Carga (kg):"_s, u"5"_s);
    row("newLoadName", u"Nombre:"_s, u"Carga"_s);
    row("motorName", u"Nombre:"_s, u"Motor"_s);
    row("motorCapacity", u"Capacidad (kg):"_s, u"1000"_s);
    row("motorSelfWeight", u"Peso Motor (kg):"_s, u"50"_s);
    row("loadName", u"Nombre:"_s, u"Carga"_s);
    row("loadMass", u"Masa (kg):"_s, u"500"_s);
}

void TestStartup::fields_readShortNumbersAtStart()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, label);
    QFETCH(QString, text);
    const QLineEdit* field = m_test->field(name.constData());
    QCOMPARE(field->text(), text);
    QCOMPARE(labelOf(m_test->window, field), label);
    QCOMPARE(field->styleSheet(), QString());
}

void TestStartup::fields_readFixedDecimalsAfterARestore()
{
    const LoadLogic::ProjectState state = m_test->window.captureCurrentState();
    m_test->window.restoreProjectState(state);
    QCOMPARE(m_test->text("trussLength"), u"12.0"_s);
    QCOMPARE(m_test->text("trussWeight"), u"8.4"_s);
    QCOMPARE(m_test->text("limitCPL"), u"1600"_s);
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
    QCOMPARE(m_test->text("screenHeight"), u"3.00"_s);
    QCOMPARE(m_test->text("screenWeightM2"), u"40.0"_s);
    QCOMPARE(m_test->text("bumperWeight"), u"10.0"_s);
    QCOMPARE(m_test->text("cablePercent"), u"7.0"_s);
    QCOMPARE(m_test->text("newLoadMass"), u"5"_s);
}

void TestStartup::countBoxes_goFrom1To100AndRead1()
{
    for (const char* name : {"loadCount", "screenCount"}) {
        const QSpinBox* box = m_test->box(name);
        QCOMPARE(box->minimum(), 1);
        QCOMPARE(box->maximum(), 100);
        QCOMPARE(box->value(), 1);
        QCOMPARE(labelOf(m_test->window, box), u"Cant:"_s);
    }
    QCOMPARE(packed(m_test->box("loadCount")->styleSheet()), u"color:white;background:#333;"_s);
    QCOMPARE(packed(m_test->box("screenCount")->styleSheet()),
             u"color:#00FFFF;background:#333;font-weight:bold;"_s);
}

void TestStartup::validators_boundTheFields_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");
    const auto row = [](const char* name, double bottom, double top) {
        QTest::newRow(name) << QByteArray(name) << bottom << top;
    };
    row("trussLength", 1.0, 100.0);
    row("trussWeight", 0.0, 500.0);
    row("limitCPL", 0.0, 10000.0);
    row("motorCapacity", 100.0, 5000.0);
    row("motorSelfWeight", 0.0, 500.0);
    row("loadMass", 0.0, 50000.0);
}

void TestStartup::validators_boundTheFields()
{
    QFETCH(QByteArray, name);
    QFETCH(double, bottom);
    QFETCH(double, top);
    const auto* validator =
        qobject_cast<const QDoubleValidator*>(m_test->field(name.constData())->validator());
    QVERIFY(validator != nullptr);
    QCOMPARE(validator->bottom(), bottom);
    QCOMPARE(validator->top(), top);
    QCOMPARE(validator->decimals(), 1);
}

void TestStartup::screenFields_haveNoValidator()
{
    for (const char* name : {"screenWidth", "screenHeight", "screenWeightM2", "bumperWeight", "cablePercent",
                             "newLoadName", "motorName", "loadName"})
        QVERIFY2(m_test->field(name)->validator() == nullptr, name);
}

void TestStartup::integerField_keepsATypedPoint()
{
    QLineEdit* mass = m_test->field("newLoadMass");
    const auto* validator = qobject_cast<const QIntValidator*>(mass->validator());
    QVERIFY(validator != nullptr);
    QCOMPARE(validator->bottom(), 0);
    QCOMPARE(validator->top(), 5000);
    mass->clear();
    QTest::keyClicks(mass, u"7.5"_s);
    QCOMPARE(mass->text(), u"7.5"_s);
}

void TestStartup::panelsAndWarning_areHiddenAtStart()
{
    QVERIFY(m_test->motorPanel()->isHidden());
    QVERIFY(m_test->loadPanel()->isHidden());
    const QLabel* warning = m_test->label("hyperstaticWarning");
    QVERIFY(warning->isHidden());
    QCOMPARE(warning->text(),
             u"⚠️ SISTEMA HIPERESTÁTICO: La distribución real depende del nivelado perfecto."_s);
    QCOMPARE(warning->alignment(), Qt::AlignCenter);
    QCOMPARE(
        packed(warning->styleSheet()),
        u"color:#FFAF00;font-weight:bold;border:1pxsolid#FFAF00;background:rgba(255,175,0,0.1);padding:5px;"_s);
}

// 1.07 × (10 × 4 + 3 × 4 × 40) = 1.07 × 520 = 556.4
void TestStartup::screenWeight_isShownAtStart()
{
    const QLabel* weight = m_test->label("screenWeight");
    QCOMPARE(weight->text(), u"Peso Total Array: 556.4 kg (+7.0% cable)"_s);
    QCOMPARE(packed(weight->styleSheet()), u"color:#00FFFF;font-weight:bold;"_s);
    QVERIFY(qAbs(LoadLogic::LED_TotalWeight - 556.4F) < 1e-3F);
}

// 8.4 × 12² / 8 = 151.2 against 12 × 1600 / 4 = 4800: 3.15 %
void TestStartup::stress_isCalculatedAtStart()
{
    QCOMPARE(LoadLogic::TrussStress_Percentage, 3.15F);
    QCOMPARE(m_test->label("stressLabel")->text(), u"Estrés Estructural: 3%"_s);
    QCOMPARE(m_test->stressBar()->value(), 3);
}

void TestStartup::headerButtons_haveTheirSheetsAndSizes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("accent");
    QTest::addColumn<QString>("background");
    QTest::addColumn<QString>("hoverText");
    const auto row = [](const QString& text, int width, const QString& accent, const QString& background,
                        const QString& hoverText) {
        QTest::newRow(qUtf8Printable(text)) << width << accent << background << hoverText;
    };
    const QString blue = u"rgba(0,191,255,0.1)"_s;
    row(u"📂 ABRIR"_s, 110, u"#2ECC71"_s, u"rgba(46,204,113,0.1)"_s, u"black"_s);
    row(u"💾 GUARDAR"_s, 120, u"#00BFFF"_s, blue, u"black"_s);
    row(u"🔄 RESTAURAR PROYECTO"_s, 160, u"#FF5050"_s, u"rgba(255,50,50,0.1)"_s, u"white"_s);
    row(u"↩️ DESHACER"_s, 120, u"#AAAAAA"_s, u"rgba(170,170,170,0.1)"_s, u"black"_s);
    row(u"📘 GUÍA DE USUARIO"_s, 160, u"#00BFFF"_s, blue, u"black"_s);
    row(u"⚖️ INFO LEGAL"_s, 130, u"#FFAF00"_s, u"rgba(255,175,0,0.1)"_s, u"black"_s);
    row(u"⚡ FACTOR DINÁMICO"_s, 160, u"#00BFFF"_s, blue, u"black"_s);
}

void TestStartup::headerButtons_haveTheirSheetsAndSizes()
{
    QFETCH(int, width);
    QFETCH(QString, accent);
    QFETCH(QString, background);
    QFETCH(QString, hoverText);
    const QPushButton* button = m_test->button(QString::fromUtf8(QTest::currentDataTag()));
    QCOMPARE(button->minimumSize(), QSize(width, 30));
    QCOMPARE(button->maximumSize(), QSize(width, 30));
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    const QString expected =
        u"QPushButton{background:%1;color:%2;border:1pxsolid%2;border-radius:15px;font-weight:bold;font-size:"
        u"10px;}"
        "QPushButton:hover{background:%2;color:%3;}"_s.arg(background, accent, hoverText);
    QCOMPARE(packed(button->styleSheet()), packed(expected));
}

void TestStartup::header_standsInOrder()
{
    auto* row = qobject_cast<QHBoxLayout*>(layoutOf(m_test->button(u"📂 ABRIR"_s)));
    QVERIFY(row != nullptr);
    QCOMPARE(row->contentsMargins(), QMargins());
    QStringList order;
    for (int i = 0; i < row->count(); ++i) {
        if (const auto* label = qobject_cast<QLabel*>(row->itemAt(i)->widget()))
            order.append(label->text());
        else if (const auto* button = qobject_cast<QPushButton*>(row->itemAt(i)->widget()))
            order.append(button->text());
        else
            order.append(row->itemAt(i)->spacerItem()->expandingDirections() == Qt::Horizontal ? u"stretch"_s
                                                                                               : u"space"_s);
    }
    const QStringList expected{u"Velmora Master"_s,
                               u"space"_s,
                               u"📂 ABRIR"_s,
                               u"💾 GUARDAR"_s,
                               u"🔄 RESTAURAR PROYECTO"_s,
                               u"↩️ DESHACER"_s,
                               u"stretch"_s,
                               u"📘 GUÍA DE USUARIO"_s,
                               u"⚖️ INFO LEGAL"_s,
                               u"⚡ FACTOR DINÁMICO"_s};
    QCOMPARE(order, expected);
    QCOMPARE(row->itemAt(1)->sizeHint().width(), 20);
    QCOMPARE(packed(row->itemAt(0)->widget()->styleSheet()),
             u"font-size:18px;font-weight:bold;color:#00BFFF;"_s);
}

void TestStartup::tabBar_isSetUp()
{
    const QTabBar* tabs = m_test->tabBar();
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(tabs->tabText(0), u"Proyecto 1"_s);
    QVERIFY(tabs->tabsClosable());
    QVERIFY(tabs->isMovable());
    QCOMPARE(tabs->focusPolicy(), Qt::NoFocus);
    QCOMPARE(tabs->shape(), QTabBar::RoundedNorth);
    QCOMPARE(tabs->contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(packed(tabs->styleSheet()),
             u"QTabBar::tab{background:#333;color:#aaa;padding:8px20px;border-top-left-radius:4px;"
             "border-top-right-radius:4px;margin-right:2px;min-width:100px;}"
             "QTabBar::tab:selected{background:#444;color:#00BFFF;border-bottom:2pxsolid#00BFFF;}"
             "QTabBar::tab:hover{background:#3a3a3a;}"_s);
}

void TestStartup::addTabButton_hasItsSheetAndSize()
{
    const QPushButton* add = m_test->button(u"+"_s);
    QCOMPARE(add->minimumSize(), QSize(30, 30));
    QCOMPARE(add->maximumSize(), QSize(30, 30));
    QCOMPARE(add->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(packed(add->styleSheet()),
             u"QPushButton{background:#444;color:white;border:none;border-radius:15px;font-weight:bold;"
             "font-size:16px;}QPushButton:hover{background:#555;color:#00BFFF;}"_s);
}

void TestStartup::rows_haveTheirMargins()
{
    const auto* tabRow = qobject_cast<QHBoxLayout*>(layoutOf(m_test->tabBar()));
    QCOMPARE(tabRow->contentsMargins(), QMargins(0, 5, 0, 0));
    QCOMPARE(tabRow->spacing(), 5);
    QCOMPARE(tabRow->itemAt(0)->widget(), m_test->tabBar());
    QCOMPARE(tabRow->itemAt(1)->widget(), m_test->button(u"+"_s));

    const auto* column = qobject_cast<QVBoxLayout*>(layoutOf(tabRow->parentWidget()));
    QCOMPARE(column->contentsMargins(), QMargins());
    QCOMPARE(column->spacing(), 0);
    QCOMPARE(column->count(), 3);
    QCOMPARE(column->stretch(2), 1);
    const auto* workRow = qobject_cast<QHBoxLayout*>(column->itemAt(2)->layout());
    QCOMPARE(workRow->contentsMargins(), QMargins(10, 10, 10, 10));
    QCOMPARE(workRow->spacing(), 15);
    QCOMPARE(workRow->stretch(0), 7);
    QCOMPARE(workRow->stretch(1), 3);
}

void TestStartup::canvasColumn_holdsWarningCanvasAndReport()
{
    const auto* column = qobject_cast<QVBoxLayout*>(layoutOf(m_test->canvas()));
    QCOMPARE(column->contentsMargins(), QMargins());
    QCOMPARE(column->spacing(), 10);
    QCOMPARE(column->itemAt(0)->widget(), m_test->label("hyperstaticWarning"));
    QCOMPARE(column->itemAt(1)->widget(), m_test->canvas());
    QCOMPARE(column->stretch(1), 1);
    QCOMPARE(m_test->canvas()->minimumHeight(), 400);

    const QPushButton* report = m_test->button(u"📊 GENERAR INFORME ESTRUCTURAL"_s);
    QCOMPARE(column->itemAt(2)->widget(), report);
    QCOMPARE(report->minimumHeight(), 45);
    QCOMPARE(report->maximumHeight(), 45);
    QCOMPARE(report->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(
        packed(report->styleSheet()),
        u"QPushButton{background:rgba(255,175,0,0.1);color:#FFAF00;border:1pxsolid#FFAF00;border-radius:4px;"
        "font-weight:bold;font-size:13px;letter-spacing:1px;}QPushButton:hover{background:#FFAF00;color:black;}"_s);
}

void TestStartup::controlColumn_holdsPanelsAndGroupsInOrder()
{
    const auto* column = qobject_cast<QVBoxLayout*>(layoutOf(m_test->motorPanel()));
    QCOMPARE(column->contentsMargins(), QMargins(0, 0, 5, 0));
    QCOMPARE(column->spacing(), 12);
    QCOMPARE(column->itemAt(0)->widget(), m_test->motorPanel());
    QCOMPARE(column->itemAt(1)->widget(), m_test->loadPanel());
    QStringList titles;
    for (int i = 2; i < 5; ++i)
        titles.append(qobject_cast<QGroupBox*>(column->itemAt(i)->widget())->title());
    QCOMPARE(titles, QStringList({u"Controles"_s, u"Configuración Truss"_s, u"Pantalla LED"_s}));
    QVERIFY(column->itemAt(5)->spacerItem() != nullptr);

    const auto* area =
        qobject_cast<QScrollArea*>(m_test->motorPanel()->parentWidget()->parentWidget()->parentWidget());
    QVERIFY(area != nullptr);
    QVERIFY(area->widgetResizable());
    QCOMPARE(area->frameStyle(), 0);
    QCOMPARE(packed(area->styleSheet()), u"background:transparent;"_s);
}

void TestStartup::panels_haveTheirFramesAndTitles()
{
    const auto check = [](QWidget* panel, const QString& accent, const QString& title) {
        auto* box = qobject_cast<QGroupBox*>(panel);
        QCOMPARE(box->title(), QString());
        QCOMPARE(
            packed(box->styleSheet()),
            u"QGroupBox{border:1pxsolid%1;border-radius:6px;padding:10px;margin-top:5px;}"_s.arg(accent));
        const auto* layout = qobject_cast<QVBoxLayout*>(box->layout());
        QCOMPARE(layout->spacing(), 8);
        const auto* label = qobject_cast<QLabel*>(layout->itemAt(0)->widget());
        QCOMPARE(label->text(), title);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(packed(label->styleSheet()),
                 u"color:%1;font-weight:bold;font-size:12px;border:none;"_s.arg(accent));
        QVERIFY(qobject_cast<QFormLayout*>(layout->itemAt(1)->layout()) != nullptr);
    };
    check(m_test->motorPanel(), u"#FFAF00"_s, u"Propiedades Motor (M1)"_s);
    check(m_test->loadPanel(), u"#00BFFF"_s, u"Propiedades Carga"_s);
}

void TestStartup::deleteButtons_haveTheirSheets_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("motor") << u"Eliminar Motor"_s;
    QTest::newRow("load") << u"Eliminar Carga"_s;
}

void TestStartup::deleteButtons_haveTheirSheets()
{
    QFETCH(QString, text);
    const QPushButton* button = m_test->button(text);
    QCOMPARE(button->minimumHeight(), 28);
    QCOMPARE(button->maximumHeight(), 28);
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(packed(button->styleSheet()),
             u"QPushButton{background:transparent;color:#FF5050;border:1pxsolid#FF5050;border-radius:4px;"
             "font-size:10px;font-weight:bold;}QPushButton:hover{background:#FF5050;color:white;}"_s);
}

void TestStartup::controlsGroup_hasItsFieldsAndSheets()
{
    QCOMPARE(m_test->field("newLoadName")->placeholderText(), u"Nombre..."_s);
    const QLabel* label = m_test->label("stressLabel");
    QCOMPARE(packed(label->styleSheet()), u"color:#39FF14;font-weight:bold;margin-top:5px;"_s);
    const QProgressBar* bar = m_test->stressBar();
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QVERIFY(!bar->isTextVisible());
    QCOMPARE(bar->minimumHeight(), 12);
    QCOMPARE(bar->maximumHeight(), 12);
    for (const QString& text : {u"+ Motor"_s, u"+ Carga"_s}) {
        const QPushButton* button = m_test->button(text);
        QCOMPARE(button->minimumHeight(), 35);
        QCOMPARE(button->maximumHeight(), 35);
        QCOMPARE(button->styleSheet(), QString());
        QCOMPARE(button->cursor().shape(), Qt::ArrowCursor);
    }
}

void TestStartup::screenGroup_standsInItsGrid()
{
    QPushButton* add = m_test->button(u"AÑADIR PANTALLA"_s);
    QCOMPARE(add->objectName(), u"addScreenButton"_s);
    QCOMPARE(add->minimumHeight(), 40);
    QCOMPARE(add->maximumHeight(), 40);
    QCOMPARE(packed(add->styleSheet()), u"background-color:#008888;color:white;font-weight:bold;"_s);

    auto* grid = qobject_cast<QGridLayout*>(layoutOf(add));
    const auto at = [grid](int row, int column) { return grid->itemAtPosition(row, column)->widget(); };
    int row = 0;
    for (const char* name : {"screenWidth", "screenHeight", "screenWeightM2", "bumperWeight", "cablePercent"})
        QCOMPARE(at(row++, 1), static_cast<QWidget*>(m_test->field(name)));
    QCOMPARE(at(5, 1), static_cast<QWidget*>(m_test->box("screenCount")));
    for (const int column : {0, 1}) {
        QCOMPARE(at(6, column), static_cast<QWidget*>(m_test->label("screenWeight")));
        QCOMPARE(at(7, column), static_cast<QWidget*>(add));
    }
    QVERIFY(m_test->label("screenWeight")->alignment().testFlag(Qt::AlignHCenter));
}

void TestStartup::blink_invertsEvery500ms()
{
    MainWindow& window = m_test->window;
    QCOMPARE(window.blinkTimer->interval(), 500);
    QVERIFY(window.blinkTimer->isActive());
    QVERIFY(!window.blinkTimer->isSingleShot());
    QCOMPARE(window.blinkTimer->parent(), &window);

    QSignalSpy beats(window.blinkTimer, &QTimer::timeout);
    QVERIFY(beats.wait(2000));
    QVERIFY(window.blinkOn);
    QVERIFY(m_test->canvas()->blinkOn);
    QVERIFY(beats.wait(2000));
    QVERIFY(!window.blinkOn);
    QVERIFY(!m_test->canvas()->blinkOn);
}

void TestStartup::undoKeys_haveWindowContext()
{
    const auto shortcuts = m_test->window.findChildren<QShortcut*>();
    QCOMPARE(shortcuts.size(), 1);
    QCOMPARE(shortcuts.constFirst()->key(), QKeySequence(u"Ctrl+Z"_s));
    QCOMPARE(shortcuts.constFirst()->context(), Qt::WindowShortcut);
}

void TestStartup::buttons_areWired()
{
    const MainWindow& window = m_test->window;
    m_test->button(u"+ Motor"_s)->click();
    QCOMPARE(LoadLogic::MotorList.size(), 3);
    m_test->button(u"+ Carga"_s)->click();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    m_test->button(u"AÑADIR PANTALLA"_s)->click();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 9); // 4 m of screen: 8 segments
    m_test->button(u"↩️ DESHACER"_s)->click();
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);

    m_test->button(u"+"_s)->click();
    QCOMPARE(window.projects.size(), 2);
    m_test->button(u"📊 GENERAR INFORME ESTRUCTURAL"_s)->click();
    QCOMPARE(qobject_cast<QStackedWidget*>(window.centralWidget())->currentIndex(), 1);
}

void TestStartup::size_followsTheScreen()
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const MainWindow& window = m_test->window;
    if (available.height() <= 799) {
        QVERIFY(window.windowState().testFlag(Qt::WindowMaximized));
        return;
    }
    QVERIFY(!window.windowState().testFlag(Qt::WindowMaximized));
    const QSize wanted(static_cast<int>(available.width() * 0.9), static_cast<int>(available.height() * 0.8));
    // Qt may have to make the window larger, where its contents need more room.
    QCOMPARE(window.size(), wanted.expandedTo(window.minimumSizeHint()));
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
