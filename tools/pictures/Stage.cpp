#include "Stage.h"

#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

/// How long a dialog or menu may take to appear [ms].
constexpr int APPEARING = 100;

/// What the drawing reaches above and below the truss [px].
constexpr int REACH = 160;

void sendMouse(QWidget* widget, QEvent::Type type, QPoint point)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, point, widget->mapToGlobal(point), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

Stage::Stage()
    : m_canvas(find<QLabel>(u"hyperstaticWarning"_s)->parentWidget()->findChild<TrussView*>())
{
    // the report page has a canvas as well; this one shares its column with the warning
    m_window.blinkTimer->stop();
    m_window.show();
    resize(1240, 800);
}

MainWindow* Stage::window()
{
    return &m_window;
}

TrussView* Stage::canvas() const
{
    return m_canvas;
}

QRect Stage::band() const
{
    return {0, m_canvas->height() / 2 - REACH, m_canvas->width(), 2 * REACH};
}

QPoint Stage::at(double x, int up) const
{
    const int span = m_canvas->width() - 2 * m_canvas->marginX;
    const double fraction = x / static_cast<double>(LoadLogic::TrussLength) + 0.5;
    return {m_canvas->marginX + static_cast<int>(fraction * span), m_canvas->height() / 2 - up};
}

void Stage::resize(int width, int height)
{
    m_window.setWindowState(Qt::WindowNoState);
    m_window.resize(width, height);
    settle();
}

void Stage::settle()
{
    if (QWidget* focused = QApplication::focusWidget())
        focused->clearFocus();
    // a layout that changes asks the one around it for another round
    constexpr int ROUNDS = 4;
    for (int round = 0; round < ROUNDS; ++round)
        QCoreApplication::processEvents();
    m_window.blinkOn = true;
    m_canvas->blinkOn = true;
}

void Stage::type(const QString& field, const QString& text)
{
    find<QLineEdit>(field)->setText(text);
}

void Stage::press(QPoint point)
{
    sendMouse(m_canvas, QEvent::MouseButtonPress, point);
    sendMouse(m_canvas, QEvent::MouseButtonRelease, point);
    settle();
}

void Stage::pressMotor(double x)
{
    constexpr int BODY = 10;
    press(at(x, BODY));
}

void Stage::pressNothing()
{
    press({5, 5});
}

void Stage::moveMotor(double x, double target, const std::function<void(QWidget*)>& beforeAccepting)
{
    constexpr int LABEL = 112;
    moveThroughDialog(at(x, LABEL), target, beforeAccepting);
}

void Stage::moveLoad(double x, double target)
{
    constexpr int LABEL = -107;
    moveThroughDialog(at(x, LABEL), target, {});
}

void Stage::moveThroughDialog(QPoint label, double target,
                              const std::function<void(QWidget*)>& beforeAccepting)
{
    QTimer::singleShot(APPEARING, m_canvas, [target, &beforeAccepting] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        dialog->findChild<QDoubleSpinBox*>()->setValue(target);
        if (beforeAccepting)
            beforeAccepting(dialog);
        dialog->accept();
    });
    press(label);
}

void Stage::openMenu(QWidget* widget, QPoint point, const std::function<void(QWidget*)>& see)
{
    QTimer::singleShot(APPEARING, widget, [&see] {
        QWidget* menu = QApplication::activePopupWidget();
        see(menu);
        if (menu->isVisible())
            menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, widget->mapToGlobal(point));
    QCoreApplication::sendEvent(widget, &event);
    settle();
}

void Stage::openDialog(const std::function<void()>& open, const std::function<void(QWidget*)>& see)
{
    QTimer::singleShot(APPEARING, qApp, [&see] {
        QWidget* dialog = QApplication::activeModalWidget();
        see(dialog);
        dialog->close();
    });
    open();
}
