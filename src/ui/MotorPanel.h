#pragma once

#include "engine/Project.h"
#include "ui/PropertyPanel.h"

/// The fields of the selected motor.
class MotorPanel : public PropertyPanel
{
    Q_OBJECT

public: // construction
    MotorPanel();

public: // queries
    /// Id of the motor that the fields stand for, -1 for none.
    [[nodiscard]] int shownId() const;
    /// Whether the fields read what `motor` has, as exactly as they show it.
    [[nodiscard]] bool shows(const Motor& motor) const;

public: // commands
    /// Fills title and fields from `motor`.
    void showMotor(const Motor& motor);
    /// The fields keep their texts but stand for no motor any more, and cannot be edited.
    void forgetMotor();
    /// Writes the fields into `motor`, numbers that do not parse as 0, and renews the title.
    void applyTo(Motor& motor);

private: // data
    QLineEdit* m_name = nullptr;
    QLineEdit* m_capacity = nullptr;
    QLineEdit* m_selfWeight = nullptr;
    int m_shownId = -1;
};
