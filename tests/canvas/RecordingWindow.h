#pragma once

#include "canvas/CanvasHost.h"

#include <QMainWindow>
#include <QStringList>

/// A window that writes down what the canvas asks of it, and does what the engine needs of it.
class RecordingWindow : public QMainWindow, public CanvasHost
{
    Q_OBJECT
    Q_INTERFACES(CanvasHost)

public: // what happened
    QStringList calls;
    int selected = -1;
    LoadLogic::ActiveLoad segment;

public: // queries
    [[nodiscard]] int selectedLoad() const override
    {
        return selected;
    }

public: // commands
    void pushUndoState() override
    {
        calls += QStringLiteral("push");
    }
    void showMotorProperties(int index) override
    {
        calls += QStringLiteral("motor ") + QString::number(index);
    }
    void showLoadProperties(int id) override
    {
        selected = id;
        calls += QStringLiteral("load");
    }
    void hidePropertyPanels() override
    {
        selected = -1;
        calls += QStringLiteral("hide");
    }
    void onPositionChanged(int perMille) override
    {
        calls += QStringLiteral("position ") + QString::number(perMille);
        LoadLogic::CalcularReacciones();
    }
    void updateCalculations() override
    {
        calls += QStringLiteral("update");
        LoadLogic::CalcularReacciones();
    }
    void loadDragBegan() override
    {
        calls += QStringLiteral("load drag");
    }
    void arrayDragBegan(const LoadLogic::ActiveLoad& load) override
    {
        selected = load.id;
        segment = load;
        calls += QStringLiteral("array drag");
    }
    void editArrayParameters(LoadLogic::ActiveLoad load) override
    {
        segment = load;
        calls += QStringLiteral("edit array");
    }
    void clearLoadSelection() override
    {
        selected = -1;
        calls += QStringLiteral("clear");
    }
};
