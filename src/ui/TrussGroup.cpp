#include "ui/TrussGroup.h"

#include "engine/Numbers.h"
#include "ui/NumberField.h"

#include <QFormLayout>

using namespace Qt::StringLiterals;

TrussGroup::TrussGroup(const Truss& truss)
    : QGroupBox(u"Configuración Truss"_s)
{
    setObjectName("trussGroup"_L1);
    m_length = NumberField::createReal(Numbers::general(truss.length), u"Longitud del truss en metros"_s, 1.0,
                                       100.0);
    m_length->setObjectName("trussLength"_L1);
    m_weight = NumberField::createReal(Numbers::general(truss.selfWeight),
                                       u"Peso del truss en kilogramos por metro"_s, 0.0, 500.0);
    m_weight->setObjectName("trussWeight"_L1);
    m_cpl = NumberField::createReal(Numbers::general(truss.limitCPL),
                                    u"Carga puntual central máxima en kilogramos"_s, 0.0, 10000.0);
    m_cpl->setObjectName("limitCPL"_L1);

    connect(m_length, &QLineEdit::textChanged, this, &TrussGroup::lengthChanged);
    connect(m_weight, &QLineEdit::textChanged, this, &TrussGroup::weightChanged);
    connect(m_cpl, &QLineEdit::textChanged, this, &TrussGroup::cplChanged);

    auto* form = new QFormLayout(this);
    form->addRow(u"Longitud (m):"_s, m_length);
    form->addRow(u"Peso (kg/m):"_s, m_weight);
    form->addRow(u"CPL Máx:"_s, m_cpl);
}

void TrussGroup::setTexts(const QString& length, const QString& selfWeight, const QString& limitCPL)
{
    m_length->setText(length);
    m_weight->setText(selfWeight);
    m_cpl->setText(limitCPL);
}

void TrussGroup::validate()
{
    const std::optional<float> length = Numbers::tryParse(m_length->text());
    const std::optional<float> weight = Numbers::tryParse(m_weight->text());
    const std::optional<float> cpl = Numbers::tryParse(m_cpl->text());
    NumberField::mark(m_length, length && *length > 0.0F);
    NumberField::mark(m_weight, weight && *weight >= 0.0F);
    NumberField::mark(m_cpl, cpl && *cpl >= 0.0F);
}
