#include "ui/LoadPanel.h"

#include "engine/FieldRanges.h"
#include "engine/Numbers.h"
#include "fields/AccentColour.h"
#include "ui/NumberField.h"

using namespace Qt::StringLiterals;

LoadPanel::LoadPanel()
    : PropertyPanel(ACCENT_COLOUR ""_s, u"Propiedades Carga"_s)
{
    setObjectName("loadPanel"_L1);
    setAccessibleName(u"Propiedades de la carga"_s);

    m_name = new QLineEdit(u"Carga"_s);
    m_name->setObjectName("loadName"_L1);
    m_name->setAccessibleName(u"Nombre de la carga"_s);
    m_mass = NumberField::createReal(u"500"_s, u"Masa de la carga en kilogramos"_s, FieldRanges::LOAD_MASS);
    m_mass->setObjectName("loadMass"_L1);

    addField(u"Nombre:"_s, m_name);
    addField(u"Masa (kg):"_s, m_mass);
    addDeleteButton(u"Eliminar Carga"_s);
}

int LoadPanel::shownId() const
{
    return m_shownId;
}

void LoadPanel::showLoad(const ActiveLoad& load)
{
    m_shownId = load.id;
    setEnabled(true);
    m_name->setText(load.name);
    m_mass->setText(Numbers::fixed(load.mass, 1));
}

void LoadPanel::applyTo(ActiveLoad& load) const
{
    load.name = m_name->text();
    load.mass = Numbers::parseNumber(m_mass->text());
}

void LoadPanel::forgetLoad()
{
    m_shownId = -1;
    setEnabled(false);
}
