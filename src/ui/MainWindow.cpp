#include "ui/MainWindow.h"

#include "canvas/TrussView.h"
#include "engine/Edits.h"
#include "ui/CutTexts.h"
#include "ui/FieldKeys.h"
#include "ui/FieldPaste.h"
#include "ui/FieldPointer.h"
#include "ui/FocusRing.h"
#include "ui/ListDialog.h"
#include "ui/PanelSync.h"
#include "ui/ProjectDescription.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

constexpr int BLINK_INTERVAL = 500;    // [ms]
constexpr int DESCRIBE_INTERVAL = 200; // a drag changes the project faster than anyone listens [ms]
/// On a lower screen than this the window opens maximised [px].
constexpr int SMALLEST_FREE_HEIGHT = 800;
constexpr double WIDTH_SHARE = 0.9;
constexpr double HEIGHT_SHARE = 0.8;

/// The icon that the application has read already; where it has none, as in tests, from the file.
QIcon applicationIcon()
{
    const QIcon icon = QGuiApplication::windowIcon();
    return icon.isNull() ? QIcon(u":/icono-app.ico"_s) : icon;
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    projects.append(Edits::freshProject(u"Proyecto 1"_s, LoadLogic::Motor().selfWeight));
    FieldKeys::install();
    FieldPaste::install();
    FieldPointer::install();
    CutTexts::install();
    startDescribing();
    setupUI();
    startNoticing();
    new FocusRing(this);
    connect(this, &MainWindow::filesDropped, this, &MainWindow::openDroppedFiles, Qt::QueuedConnection);
    loadFirstProject();
    startBlinking();

    setWindowTitle(u"Velmora Master v2.0 - Engineering Structural Simulation"_s);
    setWindowIcon(applicationIcon());
    onLEDParamChanged(QString());
    sizeToScreen();
}

// The list asks for the project when it comes to the front, as it may while this window goes.
MainWindow::~MainWindow()
{
    delete m_list;
}

void MainWindow::startBlinking()
{
    blinkTimer = new QTimer(this);
    connect(blinkTimer, &QTimer::timeout, this, [this] {
        blinkOn = !blinkOn;
        m_canvas->blinkOn = blinkOn;
        m_canvas->update();
    });
    blinkTimer->start(BLINK_INTERVAL);
}

void MainWindow::startDescribing()
{
    m_describeTimer = new QTimer(this);
    m_describeTimer->setSingleShot(true);
    m_describeTimer->setInterval(DESCRIBE_INTERVAL);
    connect(m_describeTimer, &QTimer::timeout, this,
            [this] { m_canvas->setAccessibleDescription(ProjectDescription::of(LoadLogic::Snapshot())); });
}

void MainWindow::sizeToScreen()
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    if (available.height() >= SMALLEST_FREE_HEIGHT)
        resize(static_cast<int>(available.width() * WIDTH_SHARE),
               static_cast<int>(available.height() * HEIGHT_SHARE));
    else
        setWindowState(windowState() | Qt::WindowMaximized);
}
