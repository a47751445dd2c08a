#include "ui/MotorPanel.h"

#include "engine/FieldRanges.h"
#include "engine/Numbers.h"
#include "ui/NumberField.h"

using namespace Qt::StringLiterals;

namespace
{

QString titleOf(const Motor& motor)
{
    return u"Propiedades Motor ("_s + Project::motorTitle(motor) + u')';
}

/// Whether `field` stands for `value`, also where it is being typed in or shows it rounded.
bool reads(const QLineEdit* field, float value)
{
    return Numbers::parseNumber(field->text()) == value || field->text() == Numbers::fixed(value, 1);
}

} // namespace

MotorPanel::MotorPanel()
    : PropertyPanel(u"#FFAF00"_s, u"Propiedades Motor (M1)"_s)
{
    setObjectName("motorPanel"_L1);
    setAccessibleName(u"Propiedades del motor"_s);

    m_name = new QLineEdit(u"Motor"_s);
    m_name->setObjectName("motorName"_L1);
    m_name->setAccessibleName(u"Nombre del motor"_s);
    m_capacity = NumberField::createReal(u"1000"_s, u"Capacidad del motor en kilogramos"_s,
                                         FieldRanges::MOTOR_CAPACITY);
    m_capacity->setObjectName("motorCapacity"_L1);
    m_selfWeight =
        NumberField::createReal(u"50"_s, u"Peso propio del motor en kilogramos"_s, FieldRanges::MOTOR_WEIGHT);
    m_selfWeight->setObjectName("motorSelfWeight"_L1);

    addField(u"Nombre:"_s, m_name);
    addField(u"Capacidad (kg):"_s, m_capacity);
    addField(u"Peso Motor (kg):"_s, m_selfWeight);
    addDeleteButton(u"Eliminar Motor"_s);
}

int MotorPanel::shownId() const
{
    return m_shownId;
}

bool MotorPanel::shows(const Motor& motor) const
{
    return m_name->text() == motor.modelName && reads(m_capacity, motor.capacity)
           && reads(m_selfWeight, motor.selfWeight);
}

void MotorPanel::showMotor(const Motor& motor)
{
    m_shownId = motor.id;
    setEnabled(true);
    setPanelTitle(titleOf(motor));
    m_name->setText(motor.modelName);
    m_capacity->setText(Numbers::fixed(motor.capacity, 1));
    m_selfWeight->setText(Numbers::fixed(motor.selfWeight, 1));
}

void MotorPanel::forgetMotor()
{
    m_shownId = -1;
    setEnabled(false);
}

void MotorPanel::applyTo(Motor& motor)
{
    motor.modelName = m_name->text();
    motor.capacity = Numbers::parseNumber(m_capacity->text());
    motor.selfWeight = Numbers::parseNumber(m_selfWeight->text());
    setPanelTitle(titleOf(motor));
}
