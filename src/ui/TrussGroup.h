#pragma once

#include "engine/Statics.h"

#include <QGroupBox>

class QLineEdit;

/// "Configuración Truss": length, self-weight and rating of the truss.
class TrussGroup : public QGroupBox
{
    Q_OBJECT

public: // construction
    /// With the values of `truss` in its fields.
    explicit TrussGroup(const Truss& truss);

public: // commands
    /// Writes all three fields; whoever listens is told as of typing.
    void setTexts(const QString& length, const QString& selfWeight, const QString& limitCPL);
    /// Marks each field red that holds no usable number.
    void validate();

signals:
    /// The text of the field changed.
    void lengthChanged(const QString& text);
    void weightChanged(const QString& text);
    void cplChanged(const QString& text);

private: // data
    QLineEdit* m_length = nullptr;
    QLineEdit* m_weight = nullptr;
    QLineEdit* m_cpl = nullptr;
};
