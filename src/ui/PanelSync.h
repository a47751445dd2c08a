#pragma once

#include "engine/Project.h"

class LoadPanel;
class MotorPanel;

/// Keeps both property panels true to what is selected and to what the project holds: which of them is
/// seen, what its fields read, and whether an edit in them is one of what is selected.
class PanelSync
{
public: // construction
    /// `filling` is set while fields are being filled, so that nobody takes that for typing.
    PanelSync(MotorPanel& motorPanel, LoadPanel& loadPanel, bool& filling);

public: // queries
    /// Whether the open motor panel stands for something else than the motor at `selected` of `motors`.
    [[nodiscard]] bool isMotorStale(const QList<Motor>& motors, int selected) const;
    /// Whether the open load panel stands for something else than the load with this id.
    [[nodiscard]] bool isLoadStale(int selectedId) const;

public: // what was selected
    /// Shows one panel, filled, and hides the other; or hides both.
    void showMotor(const Motor& motor);
    void showLoad(const ActiveLoad& load);
    void hide();
    /// A load is selected without its panel being asked for: the motor's goes, the load's follows.
    void selectLoad(const ActiveLoad* load);
    /// A segment of an array was grabbed: the panels stay as they are; what they show is not selected any
    /// more, unless it is that segment.
    void grabSegment(int id);
    /// Nothing of what the panels show is there any more; they stay as they are and edit nothing.
    void forget();

public: // what became of the project
    /// After a calculation: the motor that is shown may have moved in the list, been deleted or been
    /// edited elsewhere; the panel follows it or goes. Returns where it now is, or `selected`. A panel that
    /// stands for no motor at all, as after a reset, stays as it is.
    int followMotor(const QList<Motor>& motors, int selected);
    /// Another project, or another state of it, is there: the panels stand for `motor` and `load`, or go
    /// where these are nothing.
    void refresh(const Motor* motor, const ActiveLoad* load);
    void refreshLoad(const ActiveLoad* load);

private: // helpers
    void fill(const Motor& motor);
    void fill(const ActiveLoad& load);

private: // data
    MotorPanel& m_motorPanel;
    LoadPanel& m_loadPanel;
    bool& m_filling;
};
