#pragma once

#include "engine/Project.h"

#include <QDialog>

class QLabel;
class QTableWidget;

/// Lists for each motor its static load, its load on start and stop, and whether the motor may
/// carry that.
class DynamicFactorDialog : public QDialog
{
    Q_OBJECT

public: // construction
    /// Lists `motors`, left to right as they are calculated.
    DynamicFactorDialog(const QList<Motor>& motors, QWidget* parent);

private: // helpers
    [[nodiscard]] static QLabel* createExplanation();
    [[nodiscard]] static QTableWidget* createTable(const QList<Motor>& motors);
    [[nodiscard]] static QLabel* createSummary(const QList<Motor>& motors);
};
