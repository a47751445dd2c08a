#pragma once

#include "engine/Project.h"

#include <QtPlugin>

/// What the canvas tells the window that it stands in. The canvas finds it by casting its top-level
/// window at each event; where there is none, it changes the engine and recalculates by itself.
class CanvasHost
{
public:
    virtual ~CanvasHost() = default;

public: // queries
    /// Id of the selected load, or of the selected segment of an array; -1 for none.
    [[nodiscard]] virtual int selectedLoad() const = 0;
    /// Index of the selected motor in the motor list; -1 for none.
    [[nodiscard]] virtual int pickedMotor() const
    {
        return -1;
    }

public: // what was picked
    /// The motor at `index` of the motor list was grabbed.
    virtual void motorPicked(int index) = 0;
    /// The point load with this id was grabbed.
    virtual void loadPicked(int id) = 0;
    /// An array was grabbed through `segment`.
    virtual void arrayPicked(const ActiveLoad& segment) = 0;
    /// The empty canvas was pressed.
    virtual void nothingPicked() = 0;

public: // what is being changed
    /// The project will be changed by what follows: the moment to keep it for undo.
    virtual void aboutToEdit() = 0;
    /// The project was changed: the moment to recalculate and to refresh whatever shows it. During a
    /// drag this is told at each step.
    virtual void edited() = 0;
    /// The selected load, or the array it belongs to, is no longer there.
    virtual void selectedLoadRemoved() = 0;
    /// The user wants to edit the array of `segment`: its values go into the screen fields, and what
    /// they become is the array.
    virtual void arrayEditRequested(const ActiveLoad& segment) = 0;
};

Q_DECLARE_INTERFACE(CanvasHost, "Velmora.CanvasHost/2.0")
