#pragma once

#include "ui/MainWindow.h"

#include <QPoint>
#include <QString>

#include <functional>

class QLineEdit;
class TrussView;

/// The program's window on a stage: works it as a user does, with the pointer and with texts typed
/// into its fields. The warnings do not blink, they show.
class Stage
{
public: // construction
    Stage();

public: // queries
    [[nodiscard]] MainWindow* window();
    [[nodiscard]] TrussView* canvas() const;
    /// The widget of the window with this object name.
    template <class Widget>
    [[nodiscard]] Widget* find(const QString& name)
    {
        return m_window.findChild<Widget*>(name);
    }
    /// The band of the canvas that holds the drawing [px of the canvas].
    [[nodiscard]] QRect band() const;
    /// The point of the canvas `up` pixels above the truss at `x` metres from its centre.
    [[nodiscard]] QPoint at(double x, int up) const;

public: // commands
    void resize(int width, int height);
    /// Lets the window lay itself out and shows the warnings.
    void settle();
    void type(const QString& field, const QString& text);
    void press(QPoint point);
    void pressMotor(double x);
    void pressNothing();
    /// Moves a motor or a load from `x` to `target` [m from the centre] through its dialog;
    /// `beforeAccepting` sees the dialog.
    void moveMotor(double x, double target, const std::function<void(QWidget*)>& beforeAccepting = {});
    void moveLoad(double x, double target);
    /// Opens the context menu at `point` of `widget`; `see` gets it, and it closes.
    void openMenu(QWidget* widget, QPoint point, const std::function<void(QWidget*)>& see);
    /// Runs `open`, which opens a dialog; `see` gets it, and it closes.
    static void openDialog(const std::function<void()>& open, const std::function<void(QWidget*)>& see);

private: // helpers
    void moveThroughDialog(QPoint label, double target, const std::function<void(QWidget*)>& beforeAccepting);

private: // data
    MainWindow m_window;
    TrussView* m_canvas;
};
