#include "ui/LedGroup.h"

#include "engine/Numbers.h"
#include "ui/NumberField.h"
#include "ui/Styles.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace
{

enum class Zero
{
    Usable,
    Unusable
};

void markUnlessUsable(QLineEdit* field, Zero zero)
{
    const std::optional<float> value = Numbers::tryParse(field->text());
    NumberField::mark(field, value && (zero == Zero::Usable ? *value >= 0.0F : *value > 0.0F));
}

} // namespace

LedGroup::LedGroup(const LedArray& screen)
    : QGroupBox(u"Pantalla LED"_s)
{
    setObjectName("ledGroup"_L1);
    auto* grid = new QGridLayout(this);
    buildFields(grid, screen);
    buildCopies(grid);
    buildWeightAndButton(grid);
}

QLineEdit* LedGroup::addField(QGridLayout* grid, const QString& label, const QString& text,
                              const QString& accessibleName)
{
    QLineEdit* field = NumberField::create(text, accessibleName);
    auto* fieldLabel = new QLabel(label);
    fieldLabel->setBuddy(field);
    const int row = grid->rowCount() - (grid->count() == 0 ? 1 : 0);
    grid->addWidget(fieldLabel, row, 0);
    grid->addWidget(field, row, 1);
    connect(field, &QLineEdit::textChanged, this, &LedGroup::parameterChanged);
    return field;
}

void LedGroup::buildFields(QGridLayout* grid, const LedArray& screen)
{
    m_width =
        addField(grid, u"Ancho (m):"_s, Numbers::general(screen.width), u"Ancho de la pantalla en metros"_s);
    m_width->setObjectName("screenWidth"_L1);
    m_height =
        addField(grid, u"Alto (m):"_s, Numbers::general(screen.height), u"Alto de la pantalla en metros"_s);
    m_height->setObjectName("screenHeight"_L1);
    m_weightM2 = addField(grid, u"Peso (kg/m²):"_s, Numbers::general(screen.weightM2),
                          u"Peso de la pantalla en kilogramos por metro cuadrado"_s);
    m_weightM2->setObjectName("screenWeightM2"_L1);
    m_bumper = addField(grid, u"Bumper (kg/m):"_s, Numbers::general(screen.bumperWeightPerMeter),
                        u"Peso del bumper en kilogramos por metro"_s);
    m_bumper->setObjectName("bumperWeight"_L1);
    m_cable = addField(grid, u"Cable (%):"_s, Numbers::fixed(screen.cableWeightPercent, 1),
                       u"Peso del cableado en tanto por ciento"_s);
    m_cable->setObjectName("cablePercent"_L1);
}

void LedGroup::buildCopies(QGridLayout* grid)
{
    m_copies = new QSpinBox;
    m_copies->setObjectName("screenCount"_L1);
    m_copies->setAccessibleName(u"Cantidad de pantallas"_s);
    m_copies->setRange(1, 100);
    m_copies->setStyleSheet(Styles::SCREEN_COUNT_BOX);
    auto* label = new QLabel(u"Cant:"_s);
    label->setBuddy(m_copies);
    grid->addWidget(label, 5, 0);
    grid->addWidget(m_copies, 5, 1);
}

void LedGroup::buildWeightAndButton(QGridLayout* grid)
{
    m_weight = new QLabel(u"Peso Total: 0.0 kg"_s);
    m_weight->setObjectName("screenWeight"_L1);
    m_weight->setTextFormat(Qt::PlainText);
    m_weight->setStyleSheet(Styles::SCREEN_WEIGHT);
    m_weight->setAlignment(Qt::AlignCenter);
    grid->addWidget(m_weight, 6, 0, 1, 2);

    m_add = new QPushButton;
    m_add->setObjectName("addScreenButton"_L1);
    m_add->setAccessibleName(u"Añadir pantalla"_s);
    m_add->setFixedHeight(40);
    m_add->setStyleSheet(Styles::ADD_SCREEN_BUTTON);
    resetButton();
    connect(m_add, &QPushButton::clicked, this, &LedGroup::addClicked);
    grid->addWidget(m_add, 7, 0, 1, 2);
}

LedArray LedGroup::screen() const
{
    return {Numbers::parseNumber(m_width->text()), Numbers::parseNumber(m_height->text()),
            Numbers::parseNumber(m_weightM2->text()), Numbers::parseNumber(m_bumper->text()),
            Numbers::parseNumber(m_cable->text())};
}

int LedGroup::copies() const
{
    return m_copies->value();
}

void LedGroup::setTexts(const Texts& texts)
{
    m_width->setText(texts.width);
    m_height->setText(texts.height);
    m_weightM2->setText(texts.weightM2);
    m_bumper->setText(texts.bumper);
    m_cable->setText(texts.cable);
}

void LedGroup::typeWidth(const QString& text)
{
    m_width->setText(text);
}

void LedGroup::typeHeight(const QString& text)
{
    m_height->setText(text);
}

void LedGroup::typeCable(const QString& text)
{
    m_cable->setText(text);
}

void LedGroup::showWeight(float weight)
{
    showWeight(weight, m_cable->text());
}

void LedGroup::showWeight(float weight, const QString& cable)
{
    m_weight->setText(u"Peso Total Array: "_s + Numbers::fixed(weight, 1) + u" kg (+"_s + cable
                      + u"% cable)"_s);
}

void LedGroup::resetButton()
{
    m_add->setText(u"AÑADIR PANTALLA"_s);
}

void LedGroup::validate()
{
    markUnlessUsable(m_width, Zero::Unusable);
    markUnlessUsable(m_height, Zero::Unusable);
    markUnlessUsable(m_weightM2, Zero::Usable);
    markUnlessUsable(m_bumper, Zero::Usable);
    markUnlessUsable(m_cable, Zero::Usable);
}
