#pragma once

#include <QGroupBox>

class QFormLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;

/// "Controles": what the next load will be, how hard the truss is worked, and the buttons that add
/// motors and loads.
class ControlsGroup : public QGroupBox
{
    Q_OBJECT

public: // construction
    ControlsGroup();

public: // queries
    /// Mass of the next load [kg]; what does not parse counts as 0.
    [[nodiscard]] float mass() const;
    /// Name of the next load as typed.
    [[nodiscard]] QString name() const;
    /// How many loads to add at once, 1 to 100.
    [[nodiscard]] int count() const;

public: // commands
    /// Write the fields as they are given; whoever listens is told as of typing.
    void setMassText(const QString& text);
    void setName(const QString& name);
    /// Shows the stress `percent` [%]: full and red from 100, orange from 80, else green.
    void showStress(int percent);
    /// Marks the mass red where it is no usable number.
    void validate();

signals:
    /// The text of a field changed, or a button was clicked.
    void massChanged(const QString& text);
    void nameChanged(const QString& text);
    void addMotorClicked();
    void addLoadClicked();

private: // helpers
    void buildFields(QFormLayout* form);
    void buildStressRow(QFormLayout* form);
    [[nodiscard]] QLayout* buildButtons();

private: // data
    QLineEdit* m_mass = nullptr;
    QLineEdit* m_name = nullptr;
    QSpinBox* m_count = nullptr;
    QLabel* m_stressLabel = nullptr;
    QProgressBar* m_stressBar = nullptr;
};
