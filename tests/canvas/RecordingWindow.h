#pragma once

#include "canvas/CanvasHost.h"
#include "engine/LoadLogic.h"

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

public: // what was picked
    void motorPicked(int index) override
    {
        calls += QStringLiteral("motor ") + QString::number(index);
    }
    void loadPicked(int id) override
    {
        selected = id;
        calls += QStringLiteral("load");
    }
    void arrayPicked(const LoadLogic::ActiveLoad& load) override
    {
        selected = load.id;
        segment = load;
        calls += QStringLiteral("array");
    }
    void nothingPicked() override
    {
        selected = -1;
        calls += QStringLiteral("nothing");
    }

public: // what is being changed
    void aboutToEdit() override
    {
        calls += QStringLiteral("about to edit");
    }
    void edited() override
    {
        calls += QStringLiteral("edited");
        LoadLogic::CalcularReacciones();
    }
    void selectedLoadRemoved() override
    {
        selected = -1;
        calls += QStringLiteral("load removed");
    }
    void arrayEditRequested(const LoadLogic::ActiveLoad& load) override
    {
        segment = load;
        calls += QStringLiteral("edit array");
    }
};
