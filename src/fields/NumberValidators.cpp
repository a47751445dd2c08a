#include "fields/NumberValidators.h"

#include "engine/Numbers.h"

#include <QDoubleValidator>
#include <QIntValidator>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

QLocale pointLocale()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

/// Takes a fraction as a number that is not finished yet. Refusing its point, as integers do, would let
/// the digits behind it through and make ten times as much of the number: 25 of a typed 2.5.
class IntegerOrFractionValidator : public QIntValidator
{
public: // construction
    using QIntValidator::QIntValidator;

public: // overrides
    QValidator::State validate(QString& input, int& position) const override
    {
        const QValidator::State state = QIntValidator::validate(input, position);
        if (state != QValidator::Invalid || input.count(u'.') != 1)
            return state;
        if (input == "."_L1)
            return QValidator::Intermediate;
        const std::optional<float> value = Numbers::tryParse(input);
        const bool isInRange =
            value && *value >= static_cast<float>(bottom()) && *value <= static_cast<float>(top());
        return isInRange ? QValidator::Intermediate : QValidator::Invalid;
    }
};

} // namespace

QDoubleValidator* NumberValidators::createReal(double bottom, double top, QObject* parent)
{
    auto* validator = new QDoubleValidator(bottom, top, 1, parent);
    validator->setLocale(pointLocale());
    return validator;
}

QIntValidator* NumberValidators::createInteger(int bottom, int top, QObject* parent)
{
    auto* validator = new IntegerOrFractionValidator(bottom, top, parent);
    validator->setLocale(pointLocale());
    return validator;
}
