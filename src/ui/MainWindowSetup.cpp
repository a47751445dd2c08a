#include "canvas/CanvasKeys.h"
#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "fields/AccentColour.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/LoadPanel.h"
#include "ui/MainWindow.h"
#include "ui/MotorPanel.h"
#include "ui/NumberField.h"
#include "ui/PanelSync.h"
#include "ui/ProjectTabBar.h"
#include "ui/Styles.h"
#include "ui/TrussGroup.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

const QString OPEN_GREEN = u"#2ECC71"_s;
const QString ACCENT_BLUE = ACCENT_COLOUR ""_s;
const QString RESET_RED = u"#FF5050"_s;
const QString UNDO_GREY = u"#AAAAAA"_s;
const QString WARNING_ORANGE = u"#FFAF00"_s;

/// A button of the header row, as it looks and what it is called.
struct HeaderButton
{
    QString text;
    QString name; // without the emoji, for screen readers
    int width;    // [px]
    QString accent;
    QString background;
    QString hoverText;
    QString tip = {}; // with the key, where there is one
};

constexpr int HEADER_BUTTON_HEIGHT = 30; // [px]

QPushButton* createHeaderButton(const HeaderButton& look)
{
    auto* button = new QPushButton(look.text);
    button->setAccessibleName(look.name);
    button->setFixedSize(look.width, HEADER_BUTTON_HEIGHT);
    button->setCursor(Qt::PointingHandCursor);
    button->setToolTip(look.tip);
    button->setStyleSheet(Styles::headerButton(look.accent, look.background, look.hoverText));
    return button;
}

/// An empty widget that scrolls in `area`.
QWidget* createScrolledContent(QScrollArea* area)
{
    auto* content = new QWidget;
    area->setWidgetResizable(true);
    area->setFrameStyle(0);
    area->setWidget(content);
    return content;
}

} // namespace

// The window is built from the outside in: every widget is born or put at its final place before
// it is filled. A style sheet is worked out anew for all that a widget holds whenever it changes its
// parent, and that is most of what a start costs.
void MainWindow::setupUI()
{
    setObjectName("MainWindow"_L1);
    m_pages = new QStackedWidget;
    m_pages->setObjectName("centralWidget"_L1);
    setCentralWidget(m_pages);

    auto* undoKeys = new QShortcut(QKeySequence(u"Ctrl+Z"_s), this);
    connect(undoKeys, &QShortcut::activated, this, &MainWindow::undo);
    startKeys();

    buildDesignPage();
    buildReportPage();
    connectPanels();
    connectControls();
    acceptFilesEverywhere();
    onLEDParamChanged(QString());
}

void MainWindow::loadFirstProject()
{
    const LoadLogic::ProjectState& first = projects.constFirst();
    restoreProjectState(first);

    // The first project is shown in the short notation ("12", not "12.0") until it is edited.
    {
        const QScopedValueRollback<bool> filling(isRestoring, true);
        m_truss->setTexts(Numbers::general(first.trussLength), Numbers::general(first.trussSelfWeight),
                          Numbers::general(first.limitCPL));
        m_led->setTexts({Numbers::general(first.screenWidth), Numbers::general(first.screenHeight),
                         Numbers::general(first.screenWeightM2), Numbers::general(first.bumperWeightPerMeter),
                         Numbers::fixed(first.cableWeightPercent, 1)});
    }
    updateCalculations();
}

// Files are the window's. A field for names takes a text that is dragged into it, and leaves a file to the
// window as well; one for numbers takes nothing.
void MainWindow::acceptFilesEverywhere()
{
    setAcceptDrops(true);
    const auto fields = findChildren<QLineEdit*>();
    for (QLineEdit* field : fields)
        field->setAcceptDrops(!NumberField::takesNumbers(field));
}

void MainWindow::buildDesignPage()
{
    auto* area = new QScrollArea;
    area->setAccessibleName(u"Diseño"_s);
    m_pages->addWidget(area);
    auto* layout = new QVBoxLayout(createScrolledContent(area));
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buildHeaderRow(layout);
    buildTabRow(layout);
    buildWorkRow(layout);
}

void MainWindow::buildHeaderRow(QBoxLayout* page)
{
    auto* row = new QWidget;
    page->addWidget(row);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);

    auto* title = new QLabel(u"Velmora Master"_s);
    title->setStyleSheet(Styles::TITLE);
    layout->addWidget(title);
    layout->addSpacing(20);

    const QString blue = u"rgba(0,191,255,0.1)"_s;
    const auto add = [this, layout](const HeaderButton& look, void (MainWindow::*slot)()) {
        QPushButton* button = createHeaderButton(look);
        connect(button, &QPushButton::clicked, this, slot);
        layout->addWidget(button);
    };
    add({u"📂 ABRIR"_s, u"Abrir"_s, 110, OPEN_GREEN, u"rgba(46,204,113,0.1)"_s, u"black"_s,
         u"Abrir un proyecto en esta pestaña (Ctrl+O)"_s},
        &MainWindow::onLoadProjectClicked);
    add({u"💾 GUARDAR"_s, u"Guardar"_s, 120, ACCENT_BLUE, blue, u"black"_s, u"Guardar el proyecto (Ctrl+S)"_s},
        &MainWindow::onSaveProjectClicked);
    add({u"🔄 RESTAURAR PROYECTO"_s, u"Restaurar proyecto"_s, 160, RESET_RED, u"rgba(255,50,50,0.1)"_s,
         u"white"_s},
        &MainWindow::onResetProjectClicked);
    add({u"↩️ DESHACER"_s, u"Deshacer"_s, 120, UNDO_GREY, u"rgba(170,170,170,0.1)"_s, u"black"_s,
         u"Volver un paso atrás (Ctrl+Z)"_s},
        &MainWindow::undo);
    layout->addStretch();
    add({u"📘 GUÍA DE USUARIO"_s, u"Guía de usuario"_s, 160, ACCENT_BLUE, blue, u"black"_s,
         u"Abrir la guía en el navegador (F1)"_s},
        &MainWindow::onOpenUserGuideClicked);
    add({u"⚖️ INFO LEGAL"_s, u"Información legal"_s, 130, WARNING_ORANGE, u"rgba(255,175,0,0.1)"_s,
         u"black"_s},
        &MainWindow::onInfoClicked);
    add({u"⚡ FACTOR DINÁMICO"_s, u"Factor dinámico"_s, 160, ACCENT_BLUE, blue, u"black"_s},
        &MainWindow::onDynamicFactorClicked);
}

void MainWindow::buildTabRow(QBoxLayout* page)
{
    auto* row = new QWidget;
    page->addWidget(row);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 5, 0, 0);
    layout->setSpacing(5);
    layout->addWidget(buildTabBar(row));

    auto* add = new QPushButton(u"+"_s);
    add->setObjectName("addTabButton"_L1);
    add->setAccessibleName(u"Añadir proyecto"_s);
    add->setToolTip(u"Añadir un proyecto (Ctrl+T)"_s);
    add->setFixedSize(30, 30);
    add->setCursor(Qt::PointingHandCursor);
    add->setStyleSheet(Styles::ADD_TAB_BUTTON);
    connect(add, &QPushButton::clicked, this, &MainWindow::onAddTab);
    layout->addWidget(add);
    layout->addStretch();
}

QTabBar* MainWindow::buildTabBar(QWidget* parent)
{
    m_tabBar = new ProjectTabBar(parent);
    m_tabBar->setAccessibleName(u"Proyectos"_s);
    m_tabBar->setToolTip(u"Ctrl+RePág y Ctrl+AvPág: pestaña anterior y siguiente; F2: renombrar"_s);
    m_tabBar->setTabsClosable(true);
    m_tabBar->setMovable(true);
    m_tabBar->setFocusPolicy(Qt::NoFocus);
    m_tabBar->setShape(QTabBar::RoundedNorth);
    m_tabBar->setDrawBase(false); // it would shine through between the tabs
    m_tabBar->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tabBar->setStyleSheet(Styles::TAB_BAR);
    appendTab(projects.constFirst().tabName);
    connect(m_tabBar, &QTabBar::currentChanged, this, &MainWindow::onTabChanged);
    connect(m_tabBar, &QTabBar::tabCloseRequested, this, &MainWindow::onCloseTab);
    connect(m_tabBar, &QTabBar::tabBarDoubleClicked, this, &MainWindow::onRenameTab);
    connect(m_tabBar, &QTabBar::customContextMenuRequested, this, &MainWindow::showTabMenu);
    return m_tabBar;
}

void MainWindow::buildWorkRow(QBoxLayout* page)
{
    auto* row = new QHBoxLayout;
    page->addLayout(row, 1);
    row->setContentsMargins(10, 10, 10, 10);
    row->setSpacing(15);
    buildCanvasColumn(row);
    buildControlColumn(row);
}

void MainWindow::buildCanvasColumn(QBoxLayout* row)
{
    auto* column = new QWidget;
    row->addWidget(column, 7);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);

    m_hyperstaticWarning =
        new QLabel(u"⚠️ SISTEMA HIPERESTÁTICO: La distribución real depende del nivelado perfecto."_s);
    m_hyperstaticWarning->setObjectName("hyperstaticWarning"_L1);
    m_hyperstaticWarning->setAlignment(Qt::AlignCenter);
    m_hyperstaticWarning->setToolTip(u"Contraste de reparto (F8)"_s);
    m_hyperstaticWarning->setStyleSheet(Styles::HYPERSTATIC_WARNING);
    m_hyperstaticWarning->setVisible(false);
    layout->addWidget(m_hyperstaticWarning);

    m_canvas = new TrussView;
    m_canvas->setMinimumHeight(400);
    layout->addWidget(m_canvas, 1);
    new CanvasKeys(m_canvas);

    auto* report = new QPushButton(u"📊 GENERAR INFORME ESTRUCTURAL"_s);
    report->setAccessibleName(u"Generar informe estructural"_s);
    report->setToolTip(u"Ver el informe de todos los proyectos (Ctrl+I)"_s);
    report->setFixedHeight(45);
    report->setCursor(Qt::PointingHandCursor);
    report->setStyleSheet(Styles::REPORT_BUTTON);
    connect(report, &QPushButton::clicked, this, &MainWindow::onGenerateReportClicked);
    layout->addWidget(report);
}

void MainWindow::buildControlColumn(QBoxLayout* row)
{
    auto* area = new QScrollArea;
    area->setAccessibleName(u"Propiedades, controles y configuración"_s);
    row->addWidget(area, 3);
    area->setStyleSheet(Styles::CONTROL_COLUMN);
    auto* layout = new QVBoxLayout(createScrolledContent(area));
    layout->setContentsMargins(0, 0, 5, 0);
    layout->setSpacing(12);

    m_motorPanel = new MotorPanel;
    m_loadPanel = new LoadPanel;
    m_panels = std::make_unique<PanelSync>(*m_motorPanel, *m_loadPanel, isRestoring);
    m_controls = new ControlsGroup;
    m_truss = new TrussGroup(LoadLogic::CurrentTruss());
    m_led = new LedGroup({LoadLogic::Screen_Width, LoadLogic::Screen_Height, LoadLogic::Screen_Weight_M2,
                          LoadLogic::Bumper_Weight_Per_Meter, LoadLogic::ProjectState().cableWeightPercent});
    layout->addWidget(m_motorPanel);
    layout->addWidget(m_loadPanel);
    layout->addWidget(m_controls);
    layout->addWidget(m_truss);
    layout->addWidget(m_led);
    layout->addStretch();
}

void MainWindow::connectPanels()
{
    connect(m_motorPanel, &MotorPanel::edited, this, &MainWindow::onMotorPropertyChanged);
    connect(m_motorPanel, &MotorPanel::deleteRequested, this, &MainWindow::deleteSelectedMotor);
    connect(m_loadPanel, &LoadPanel::edited, this, &MainWindow::onLoadPropertyChanged);
    connect(m_loadPanel, &LoadPanel::deleteRequested, this, &MainWindow::deleteSelectedLoad);
}

// For one keystroke the edit comes first, then the red marks.
void MainWindow::connectControls()
{
    connect(m_controls, &ControlsGroup::massChanged, this, &MainWindow::onMassChanged);
    connect(m_controls, &ControlsGroup::massChanged, this, &MainWindow::validateInputs);
    connect(m_controls, &ControlsGroup::nameChanged, this, &MainWindow::onLoadNameChanged);
    connect(m_controls, &ControlsGroup::addMotorClicked, this, &MainWindow::onAddMotorClicked);
    connect(m_controls, &ControlsGroup::addLoadClicked, this, &MainWindow::onAddLoadClicked);

    connect(m_truss, &TrussGroup::lengthChanged, this, &MainWindow::onTrussLengthChanged);
    connect(m_truss, &TrussGroup::lengthChanged, this, &MainWindow::validateInputs);
    connect(m_truss, &TrussGroup::weightChanged, this, &MainWindow::onTrussWeightChanged);
    connect(m_truss, &TrussGroup::weightChanged, this, &MainWindow::validateInputs);
    connect(m_truss, &TrussGroup::cplChanged, this, &MainWindow::onCPLChanged);
    connect(m_truss, &TrussGroup::cplChanged, this, &MainWindow::validateInputs);

    connect(m_led, &LedGroup::parameterChanged, this, &MainWindow::onLEDParamChanged);
    connect(m_led, &LedGroup::parameterChanged, this, &MainWindow::validateInputs);
    connect(m_led, &LedGroup::addClicked, this, &MainWindow::onAddLEDLoadClicked);
}
