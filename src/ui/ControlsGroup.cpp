#include "ui/ControlsGroup.h"

#include "engine/Limits.h"
#include "engine/Numbers.h"
#include "ui/NumberField.h"
#include "ui/Styles.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The bar is full when the limit is reached [%].
constexpr int FULL_BAR = static_cast<int>(Limits::FULL_STRESS);

QString stressColour(int percent)
{
    switch (Limits::stressLevel(static_cast<float>(percent))) {
    case Limits::Level::Exceeded:
        return u"#FF0000"_s;
    case Limits::Level::Near:
        return u"#FFAF00"_s;
    case Limits::Level::Within:
        break;
    }
    return u"#39FF14"_s;
}

QPushButton* createAddButton(const QString& text, const QString& accessibleName)
{
    auto* button = new QPushButton(text);
    button->setFixedHeight(35);
    button->setAccessibleName(accessibleName);
    return button;
}

} // namespace

ControlsGroup::ControlsGroup()
    : QGroupBox(u"Controles"_s)
{
    setObjectName("controlsGroup"_L1);
    auto* form = new QFormLayout;
    buildFields(form);
    buildStressRow(form);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buildButtons());
}

void ControlsGroup::buildFields(QFormLayout* form)
{
    m_mass =
        NumberField::createInteger(u"5"_s, u"Masa de la carga nueva o seleccionada en kilogramos"_s, 0, 5000);
    m_mass->setObjectName("newLoadMass"_L1);
    connect(m_mass, &QLineEdit::textChanged, this, &ControlsGroup::massChanged);
    form->addRow(u"Carga (kg):"_s, m_mass);

    m_name = new QLineEdit(u"Carga"_s);
    m_name->setObjectName("newLoadName"_L1);
    m_name->setAccessibleName(u"Nombre de la carga nueva o seleccionada"_s);
    m_name->setPlaceholderText(u"Nombre..."_s);
    connect(m_name, &QLineEdit::textChanged, this, &ControlsGroup::nameChanged);

    m_count = new QSpinBox;
    m_count->setObjectName("loadCount"_L1);
    m_count->setAccessibleName(u"Cantidad de cargas"_s);
    m_count->setRange(1, 100);
    m_count->setStyleSheet(Styles::COUNT_BOX);

    auto* nameLabel = new QLabel(u"Nombre:"_s);
    nameLabel->setBuddy(m_name);
    auto* countLabel = new QLabel(u"Cant:"_s);
    countLabel->setBuddy(m_count);

    auto* row = new QHBoxLayout;
    row->addWidget(nameLabel);
    row->addWidget(m_name, 2);
    row->addSpacing(10);
    row->addWidget(countLabel);
    row->addWidget(m_count, 1);
    form->addRow(row);
}

void ControlsGroup::buildStressRow(QFormLayout* form)
{
    m_stressLabel = new QLabel(u"Estrés Estructural: 0%"_s);
    m_stressLabel->setObjectName("stressLabel"_L1);
    m_stressLabel->setStyleSheet(Styles::STRESS_LABEL);
    m_stressBar = new QProgressBar;
    m_stressBar->setObjectName("stressBar"_L1);
    m_stressBar->setAccessibleName(u"Estrés estructural en tanto por ciento"_s);
    m_stressBar->setRange(0, FULL_BAR);
    m_stressBar->setTextVisible(false);
    m_stressBar->setFixedHeight(12);
    form->addRow(m_stressLabel, m_stressBar);
}

QLayout* ControlsGroup::buildButtons()
{
    QPushButton* addMotor = createAddButton(u"+ Motor"_s, u"Añadir motor"_s);
    connect(addMotor, &QPushButton::clicked, this, &ControlsGroup::addMotorClicked);
    QPushButton* addLoad = createAddButton(u"+ Carga"_s, u"Añadir carga"_s);
    connect(addLoad, &QPushButton::clicked, this, &ControlsGroup::addLoadClicked);

    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(addMotor);
    row->addWidget(addLoad);
    return row;
}

float ControlsGroup::mass() const
{
    return Numbers::parseNumber(m_mass->text());
}

QString ControlsGroup::name() const
{
    return m_name->text();
}

int ControlsGroup::count() const
{
    return m_count->value();
}

void ControlsGroup::setMassText(const QString& text)
{
    m_mass->setText(text);
}

void ControlsGroup::setName(const QString& name)
{
    m_name->setText(name);
}

void ControlsGroup::showStress(int percent)
{
    m_stressBar->setValue(std::min(percent, FULL_BAR));
    m_stressLabel->setText(u"Estrés Estructural: %1%"_s.arg(percent));
    const QString style = Styles::stressBar(stressColour(percent));
    if (m_stressBar->styleSheet() != style)
        m_stressBar->setStyleSheet(style);
}

void ControlsGroup::validate()
{
    const std::optional<float> mass = Numbers::tryParse(m_mass->text());
    NumberField::mark(m_mass, mass && *mass >= 0.0F);
}
