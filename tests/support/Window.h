#pragma once

#include "canvas/TrussView.h"
#include "engine/LoadLogic.h"
#include "support/Slowness.h"
#include "support/Warnings.h"
#include "ui/MainWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>

namespace Support
{

/// A main window over a fresh engine, and its widgets by the names they carry.
class TestWindow
{
public: // construction
    TestWindow()
        : window(fresh())
    {
    }

public: // the window
    MainWindow window;

public: // its widgets
    [[nodiscard]] QLineEdit* field(const char* name) const
    {
        return child<QLineEdit>(name);
    }
    [[nodiscard]] QSpinBox* box(const char* name) const
    {
        return child<QSpinBox>(name);
    }
    [[nodiscard]] QWidget* motorPanel() const
    {
        return child<QWidget>("motorPanel");
    }
    [[nodiscard]] QWidget* loadPanel() const
    {
        return child<QWidget>("loadPanel");
    }
    [[nodiscard]] QLabel* label(const char* name) const
    {
        return child<QLabel>(name);
    }
    [[nodiscard]] QTabBar* tabBar() const
    {
        return window.findChild<QTabBar*>();
    }
    [[nodiscard]] QProgressBar* stressBar() const
    {
        return child<QProgressBar>("stressBar");
    }

    /// The push button with exactly this text.
    [[nodiscard]] QPushButton* button(const QString& text) const
    {
        const auto buttons = window.findChildren<QPushButton*>();
        for (QPushButton* candidate : buttons) {
            if (candidate->text() == text)
                return candidate;
        }
        qFatal("no button %s", qUtf8Printable(text));
    }

    /// The canvas of the design page.
    [[nodiscard]] TrussView* canvas() const
    {
        const auto views = window.findChildren<TrussView*>();
        for (TrussView* view : views) {
            if (!view->printMode)
                return view;
        }
        qFatal("no canvas");
    }

    [[nodiscard]] QString text(const char* fieldName) const
    {
        return field(fieldName)->text();
    }
    void setText(const char* fieldName, const QString& text) const
    {
        field(fieldName)->setText(text);
    }
    [[nodiscard]] int undoDepth() const
    {
        return static_cast<int>(window.undoStack.size());
    }

    /// Makes the window visible and active, for what only an active window does.
    [[nodiscard]] bool activate()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    /// Hangs a point load of `mass` [kg] at `x` [m]; returns its id.
    int hangLoad(float mass, float x)
    {
        LoadLogic::ActiveLoad load;
        load.mass = mass;
        load.positionX = x;
        const int id = LoadLogic::PlaceLoad(load);
        window.updateCalculations();
        return id;
    }

    /// Adds the screen that the fields describe, in the middle; returns the id of the selected segment.
    int addScreen()
    {
        window.onAddLEDLoadClicked();
        return window.selectedLoadId;
    }

private: // helpers
    static QWidget* fresh()
    {
        failOnWarnings();
        LoadLogic::Reset();
        return nullptr;
    }

    template <class Widget>
    [[nodiscard]] Widget* child(const char* name) const
    {
        auto* found = window.findChild<Widget*>(QLatin1String(name));
        if (found == nullptr)
            qFatal("no widget %s", name);
        return found;
    }
};

/// Whether the engine was calculated since this object was made: it leaves a mark in the results
/// that a calculation takes away.
class CalculationWatch
{
public: // construction
    CalculationWatch()
    {
        LoadLogic::TrussStress_Percentage = MARK;
    }

public: // queries
    [[nodiscard]] static bool calculated()
    {
        return LoadLogic::TrussStress_Percentage != MARK;
    }

private:                                     // data
    static constexpr float MARK = -12345.0F; // [%], no stress is negative
};

} // namespace Support
