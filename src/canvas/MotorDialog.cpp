#include "canvas/MotorDialog.h"

#include "engine/FieldRanges.h"
#include "engine/Numbers.h"
#include "fields/NumberValidators.h"

#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace
{

QLineEdit* createField(float value, const FieldRanges::Range& range, const QString& accessibleName)
{
    auto* field = new QLineEdit(Numbers::general(value));
    field->setValidator(NumberValidators::createReal(range.bottom, range.top, field));
    field->setAccessibleName(accessibleName);
    return field;
}

} // namespace

MotorDialog::MotorDialog(const Motor& motor, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(u"Especificaciones: Motor "_s + QString::number(motor.id));
    m_name = new QLineEdit(motor.modelName);
    m_name->setAccessibleName(u"Nombre o modelo del motor"_s);
    m_selfWeight =
        createField(motor.selfWeight, FieldRanges::MOTOR_WEIGHT, u"Peso propio del motor en kilogramos"_s);
    m_capacity =
        createField(motor.capacity, FieldRanges::MOTOR_CAPACITY, u"Capacidad del motor en kilogramos"_s);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout(this);
    form->addRow(u"Nombre / Modelo:"_s, m_name);
    form->addRow(u"Peso Motor (kg):"_s, m_selfWeight);
    form->addRow(u"Capacidad (kg):"_s, m_capacity);
    form->addRow(buttons);
}

void MotorDialog::applyTo(Motor& motor) const
{
    motor.modelName = m_name->text();
    motor.selfWeight = Numbers::parseNumber(m_selfWeight->text());
    motor.capacity = Numbers::parseNumber(m_capacity->text());
}
