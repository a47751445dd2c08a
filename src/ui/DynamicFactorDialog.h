#pragma once

#include "engine/LoadLogic.h"

#include <QDialog>

class QLabel;
class QTableWidget;

/// Lists for each motor its static load, its load on start and stop, and whether the motor may
/// carry that. Shows the engine's motors as they are when it is built.
class DynamicFactorDialog : public QDialog
{
    Q_OBJECT

public: // construction
    explicit DynamicFactorDialog(QWidget* parent);

private: // helpers
    [[nodiscard]] QLabel* createExplanation();
    [[nodiscard]] QTableWidget* createTable();
    [[nodiscard]] QLabel* createSummary();
};
