#include "Scenes.h"

#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTabBar>
#include <QTimer>

#include "Stage.h"

using namespace Qt::StringLiterals;

namespace
{

/// One window and one camera; each function plays one scene and leaves the window for the next.
class Play
{
public: // commands
    void emptyTruss();
    void motorsInPlace();
    void pointLoads();
    void screen();
    void biggerMotor();
    void reports();
    void wholeWindow();
    void groups();
    void panels();
    void details();
    void canvasMenus();
    void motorSpecification();
    void dialogs();
    void tabs();
    void unstable();
    void hyperstatic();
    void contrast();

public: // queries
    [[nodiscard]] const Camera& camera() const
    {
        return m_camera;
    }

private: // helpers
    void takeBand(const QString& name)
    {
        m_camera.take(name, m_stage.canvas(), m_stage.band());
    }
    /// A detail of the canvas: `halfWidth` pixels to both sides of `x` metres from the centre, and
    /// from `above` to `below` pixels from the truss.
    void takeDetail(const QString& name, double x, int halfWidth, int above, int below);
    void takeMenu(const QString& name, QWidget* widget, QPoint point);

private: // data
    Stage m_stage;
    Camera m_camera;
};

void Play::emptyTruss()
{
    takeBand(u"ej1"_s);
}

void Play::motorsInPlace()
{
    m_stage.moveMotor(-6.0, -5.0, [this](QWidget* dialog) { m_camera.take(u"posicion"_s, dialog); });
    m_stage.moveMotor(6.0, 5.0);
    m_stage.pressMotor(-5.0);
    m_stage.type(u"motorName"_s, u"Izquierdo"_s);
    m_stage.pressMotor(5.0);
    m_stage.type(u"motorName"_s, u"Derecho"_s);
    m_stage.pressNothing();
}

void Play::pointLoads()
{
    m_stage.type(u"newLoadMass"_s, u"350"_s);
    m_stage.type(u"newLoadName"_s, u"PA"_s);
    auto* count = m_stage.find<QSpinBox>(u"loadCount"_s);
    count->setValue(2);
    m_stage.window()->onAddLoadClicked();
    m_stage.moveLoad(-2.0, -4.0);
    m_stage.moveLoad(2.0, 4.0);
    m_stage.pressNothing();

    m_stage.type(u"newLoadMass"_s, u"120"_s);
    m_stage.type(u"newLoadName"_s, u"Seguidor"_s);
    count->setValue(1);
    m_stage.window()->onAddLoadClicked();
    m_stage.moveLoad(0.0, 3.0);
    m_stage.pressNothing();
    takeBand(u"ej2"_s);
}

void Play::screen()
{
    m_stage.type(u"cablePercent"_s, u"10"_s);
    m_stage.window()->onAddLEDLoadClicked();
    m_stage.pressNothing();
    takeBand(u"ej3"_s);
    Stage::openDialog([this] { m_stage.window()->onDynamicFactorClicked(); },
                      [this](QWidget* dialog) { m_camera.take(u"dinamico_ej"_s, dialog); });
}

void Play::biggerMotor()
{
    m_stage.pressMotor(5.0);
    m_stage.type(u"motorCapacity"_s, u"2000"_s);
    m_stage.type(u"motorSelfWeight"_s, u"80"_s);
    m_stage.pressNothing();
    takeBand(u"ej4"_s);
}

void Play::reports()
{
    m_stage.resize(1240, 1380);
    m_stage.window()->onGenerateReportClicked();
    m_stage.settle();
    m_camera.take(u"informe"_s, m_stage.window());
    m_stage.window()->onBackToDesignClicked();

    TrussView drawing;
    const QImage scheme = drawing.renderToImage(2000, 800);
    m_camera.keep(u"esquema"_s, scheme, scheme.size() / 2);
}

void Play::wholeWindow()
{
    m_stage.resize(1440, 900);
    m_stage.press(m_stage.at(3.0, -20));
    m_stage.settle();
    m_camera.take(u"ventana"_s, m_stage.window(), Camera::PLAIN);
    m_stage.pressNothing();
}

void Play::groups()
{
    m_camera.take(u"controles"_s, m_stage.find<QWidget>(u"controlsGroup"_s));
    m_camera.take(u"truss"_s, m_stage.find<QWidget>(u"trussGroup"_s));
    m_camera.take(u"led"_s, m_stage.find<QWidget>(u"ledGroup"_s));
}

void Play::panels()
{
    m_stage.pressMotor(5.0);
    m_camera.take(u"panel_motor"_s, m_stage.find<QWidget>(u"motorPanel"_s));
    m_stage.press(m_stage.at(3.0, -20));
    m_camera.take(u"panel_carga"_s, m_stage.find<QWidget>(u"loadPanel"_s));
    m_stage.pressNothing();
}

void Play::takeDetail(const QString& name, double x, int halfWidth, int above, int below)
{
    const QPoint top = m_stage.at(x, above);
    m_camera.take(name, m_stage.canvas(), QRect(top.x() - halfWidth, top.y(), 2 * halfWidth, above + below));
}

void Play::details()
{
    takeDetail(u"detalle_motor"_s, -5.0, 48, 125, 14);
    takeDetail(u"detalle_carga"_s, 3.0, 40, 25, 120);
    takeDetail(u"detalle_led"_s, 0.0, 170, 30, 65);
}

void Play::takeMenu(const QString& name, QWidget* widget, QPoint point)
{
    m_stage.openMenu(widget, point, [this, &name](QWidget* menu) { m_camera.take(name, menu); });
}

void Play::canvasMenus()
{
    takeMenu(u"menu_motor"_s, m_stage.canvas(), m_stage.at(5.0, 10));
    takeMenu(u"menu_pantalla"_s, m_stage.canvas(), m_stage.at(0.0, -20));
    takeMenu(u"menu_carga"_s, m_stage.canvas(), m_stage.at(3.0, -15));
}

void Play::motorSpecification()
{
    m_stage.openMenu(m_stage.canvas(), m_stage.at(5.0, 10), [this](QWidget* menu) {
        QTimer::singleShot(100, m_stage.canvas(), [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            m_camera.take(u"especificaciones"_s, dialog);
            dialog->close();
        });
        auto* actions = qobject_cast<QMenu*>(menu);
        actions->setActiveAction(actions->actions().constFirst());
        QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(actions, &enter);
    });
}

void Play::dialogs()
{
    Stage::openDialog([this] { m_stage.window()->onInfoClicked(); },
                      [this](QWidget* dialog) { m_camera.take(u"legal"_s, dialog, Camera::PLAIN); });
}

void Play::tabs()
{
    auto* bar = m_stage.window()->findChild<QTabBar*>();
    m_stage.window()->onAddTab();
    bar->setTabText(0, u"Escenario"_s);
    bar->setTabText(1, u"Torres de luz"_s);
    m_stage.settle();
    const QRect rows(0, 0, m_stage.window()->width(),
                     bar->mapTo(m_stage.window(), bar->rect().bottomLeft()).y() + 6);
    m_camera.take(u"cabecera"_s, m_stage.window(), rows);
    takeMenu(u"menu_pestana"_s, bar, bar->tabRect(1).center());
}

void Play::unstable()
{
    m_stage.resize(1240, 800);
    m_stage.moveMotor(-6.0, 0.0);
    takeBand(u"inestable"_s);
    m_stage.window()->undo();
}

void Play::hyperstatic()
{
    m_stage.resize(1240, 640);
    m_stage.window()->onAddMotorClicked();
    m_stage.type(u"newLoadMass"_s, u"600"_s);
    m_stage.type(u"newLoadName"_s, u"Torre"_s);
    m_stage.find<QSpinBox>(u"loadCount"_s)->setValue(2);
    m_stage.window()->onAddLoadClicked();
    m_stage.pressNothing();

    auto* warning = m_stage.find<QLabel>(u"hyperstaticWarning"_s);
    QWidget* column = warning->parentWidget();
    const int bottom = m_stage.canvas()->mapTo(column, m_stage.band().bottomLeft()).y();
    m_camera.take(u"hiperestatico"_s, column, QRect(0, 0, column->width(), bottom));
    Stage::openDialog([this] { m_stage.window()->onDynamicFactorClicked(); },
                      [this](QWidget* dialog) { m_camera.take(u"dinamico"_s, dialog); });
}

// It follows the project some time after the last change.
void Play::contrast()
{
    m_stage.window()->openProjectFile(QStringLiteral(VELMORA_EXAMPLES "/concierto.rig"));
    m_stage.window()->openContrast();
    auto* dialog = m_stage.find<QWidget>(u"contrastDialog"_s);
    dialog->resize(1000, 860);
    m_stage.settle();
    m_camera.take(u"contraste"_s, dialog);
    dialog->close();
}

} // namespace

QMap<QString, Picture> Scenes::play()
{
    Play play;
    for (const auto scene :
         {&Play::emptyTruss, &Play::motorsInPlace, &Play::pointLoads, &Play::screen, &Play::biggerMotor,
          &Play::reports, &Play::wholeWindow, &Play::groups, &Play::panels, &Play::details,
          &Play::canvasMenus, &Play::motorSpecification, &Play::dialogs, &Play::tabs, &Play::unstable,
          &Play::hyperstatic, &Play::contrast})
        (play.*scene)();
    return play.camera().pictures();
}
