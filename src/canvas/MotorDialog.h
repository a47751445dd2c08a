#pragma once

#include "engine/Project.h"

#include <QDialog>

class QLineEdit;

/// Name, own weight and capacity of one motor, to be edited.
class MotorDialog : public QDialog
{
    Q_OBJECT

public: // construction
    /// With the values of `motor` in its fields.
    MotorDialog(const Motor& motor, QWidget* parent);

public: // commands
    /// Writes the fields into `motor`; a number that does not parse counts as 0.
    void applyTo(Motor& motor) const;

private: // data
    QLineEdit* m_name = nullptr;
    QLineEdit* m_selfWeight = nullptr;
    QLineEdit* m_capacity = nullptr;
};
