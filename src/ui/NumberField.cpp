#include "ui/NumberField.h"

#include "fields/NumberValidators.h"
#include "ui/Styles.h"

#include <QAbstractSpinBox>
#include <QDoubleValidator>
#include <QIntValidator>

QLineEdit* NumberField::create(const QString& text, const QString& accessibleName)
{
    auto* field = new QLineEdit(text);
    field->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    field->setAccessibleName(accessibleName);
    return field;
}

QLineEdit* NumberField::createReal(const QString& text, const QString& accessibleName, double bottom,
                                   double top)
{
    QLineEdit* field = create(text, accessibleName);
    field->setValidator(NumberValidators::createReal(bottom, top, field));
    return field;
}

QLineEdit* NumberField::createReal(const QString& text, const QString& accessibleName,
                                   const FieldRanges::Range& range)
{
    return createReal(text, accessibleName, range.bottom, range.top);
}

QLineEdit* NumberField::createInteger(const QString& text, const QString& accessibleName, int bottom, int top)
{
    QLineEdit* field = create(text, accessibleName);
    field->setValidator(NumberValidators::createInteger(bottom, top, field));
    return field;
}

bool NumberField::takesNumbers(const QObject* object)
{
    if (qobject_cast<const QAbstractSpinBox*>(object) != nullptr)
        return true;
    const auto* field = qobject_cast<const QLineEdit*>(object);
    if (field == nullptr)
        return false;
    return field->inputMethodHints().testFlag(Qt::ImhFormattedNumbersOnly)
           || qobject_cast<const QAbstractSpinBox*>(field->parentWidget()) != nullptr
           || qobject_cast<const QDoubleValidator*>(field->validator()) != nullptr
           || qobject_cast<const QIntValidator*>(field->validator()) != nullptr;
}

void NumberField::mark(QLineEdit* field, bool usable)
{
    const QString style = usable ? QString() : Styles::UNUSABLE_FIELD;
    if (field->styleSheet() != style)
        field->setStyleSheet(style);
}
