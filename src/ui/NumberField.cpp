#include "ui/NumberField.h"

#include "ui/Styles.h"

#include <QDoubleValidator>
#include <QIntValidator>
#include <QLocale>

namespace
{

/// The point is the decimal sign whatever the desktop speaks, and nothing groups digits.
QLocale pointLocale()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

} // namespace

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
    auto* validator = new QDoubleValidator(bottom, top, 1, field);
    validator->setLocale(pointLocale());
    field->setValidator(validator);
    return field;
}

QLineEdit* NumberField::createInteger(const QString& text, const QString& accessibleName, int bottom, int top)
{
    QLineEdit* field = create(text, accessibleName);
    auto* validator = new QIntValidator(bottom, top, field);
    validator->setLocale(pointLocale());
    field->setValidator(validator);
    return field;
}

void NumberField::mark(QLineEdit* field, bool usable)
{
    const QString style = usable ? QString() : Styles::UNUSABLE_FIELD;
    if (field->styleSheet() != style)
        field->setStyleSheet(style);
}
