#pragma once

#include "engine/LoadLogic.h"

#include <QtPlugin>

/// What the canvas needs of the window that it stands in. The canvas finds it by casting its
/// top-level window at each event; where there is none, it changes the engine and recalculates by
/// itself.
class CanvasHost
{
public:
    virtual ~CanvasHost() = default;

public: // queries
    /// Id of the selected load, or of the selected segment of an array; -1 for none.
    [[nodiscard]] virtual int selectedLoad() const = 0;

public: // commands
    /// Keeps the project as it stands for undo.
    virtual void pushUndoState() = 0;
    /// Selects the motor at `index` of the motor list and shows its panel.
    virtual void showMotorProperties(int index) = 0;
    /// Selects the load with this id and shows its panel.
    virtual void showLoadProperties(int id) = 0;
    /// Clears the selection and hides both panels.
    virtual void hidePropertyPanels() = 0;
    /// -1: the engine was changed; recalculate and refresh. See `MainWindow`.
    virtual void onPositionChanged(int perMille) = 0;
    /// Recalculates and refreshes everything that shows results.
    virtual void updateCalculations() = 0;
    /// The drag of a point load began.
    virtual void loadDragBegan() = 0;
    /// The drag of the array of `segment` began: selects the segment and fills the screen fields from it.
    virtual void arrayDragBegan(const LoadLogic::ActiveLoad& segment) = 0;
    /// Selects `segment` and writes its width, height and cable allowance into the screen fields as
    /// if the user had typed them, so that its array is built again.
    virtual void editArrayParameters(LoadLogic::ActiveLoad segment) = 0;
    /// Forgets the selected load and empties the mass field of new loads.
    virtual void clearLoadSelection() = 0;
};

Q_DECLARE_INTERFACE(CanvasHost, "Velmora.CanvasHost/1.0")
