#include "canvas/NumberValidators.h"

#include <QDoubleValidator>
#include <QIntValidator>
#include <QLocale>

namespace
{

QLocale pointLocale()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

} // namespace

QDoubleValidator* NumberValidators::createReal(double bottom, double top, QObject* parent)
{
    auto* validator = new QDoubleValidator(bottom, top, 1, parent);
    validator->setLocale(pointLocale());
    return validator;
}

QIntValidator* NumberValidators::createInteger(int bottom, int top, QObject* parent)
{
    auto* validator = new QIntValidator(bottom, top, parent);
    validator->setLocale(pointLocale());
    return validator;
}
