#pragma once

#include "engine/LedArray.h"

#include <QGroupBox>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// "Pantalla LED": the screen that is being configured. Its fields take any text; what does not
/// parse counts as 0.
class LedGroup : public QGroupBox
{
    Q_OBJECT

public: // nested types
    /// What the five fields read.
    struct Texts
    {
        QString width;
        QString height;
        QString weightM2;
        QString bumper;
        QString cable;
    };

public: // construction
    /// With the values of `screen` in its fields.
    explicit LedGroup(const LedArray& screen);

public: // queries
    /// The screen that the fields describe.
    [[nodiscard]] LedArray screen() const;
    /// How many copies to add at once, 1 to 100.
    [[nodiscard]] int copies() const;

public: // commands
    /// Writes all five fields; whoever listens is told as of typing.
    void setTexts(const Texts& texts);
    /// These three as if the user had typed them, one after the other.
    void typeWidth(const QString& text);
    void typeHeight(const QString& text);
    void typeCable(const QString& text);
    /// Shows `weight` [kg] with the cable allowance as its field reads.
    void showWeight(float weight);
    /// Shows `weight` [kg] with the cable allowance as given.
    void showWeight(float weight, const QString& cable);
    /// Gives the button that adds screens its text.
    void resetButton();
    /// Marks each field red that holds no usable number.
    void validate();

signals:
    /// The text of a field changed, or the button was clicked.
    void parameterChanged(const QString& text);
    void addClicked();

private: // helpers
    [[nodiscard]] QLineEdit* addField(QGridLayout* grid, const QString& label, const QString& text,
                                      const QString& accessibleName);
    void buildFields(QGridLayout* grid, const LedArray& screen);
    void buildCopies(QGridLayout* grid);
    void buildWeightAndButton(QGridLayout* grid);

private: // data
    QLineEdit* m_width = nullptr;
    QLineEdit* m_height = nullptr;
    QLineEdit* m_weightM2 = nullptr;
    QLineEdit* m_bumper = nullptr;
    QLineEdit* m_cable = nullptr;
    QSpinBox* m_copies = nullptr;
    QLabel* m_weight = nullptr;
    QPushButton* m_add = nullptr;
};
