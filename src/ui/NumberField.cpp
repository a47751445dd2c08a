#include "ui/NumberField.h"

#include "ui/Styles.h"

#include <QDoubleValidator>
#include <QIntValidator>

#include "fields/NumberValidators.h"

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

QLineEdit* NumberField::createInteger(const QString& text, const QString& accessibleName, int bottom, int top)
{
    QLineEdit* field = create(text, accessibleName);
    field->setValidator(NumberValidators::createInteger(bottom, top, field));
    return field;
}

void NumberField::mark(QLineEdit* field, bool usable)
{
    const QString style = usable ? QString() : Styles::UNUSABLE_FIELD;
    if (field->styleSheet() != style)
        field->setStyleSheet(style);
}
