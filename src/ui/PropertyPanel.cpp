#include "ui/PropertyPanel.h"

#include "ui/Styles.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

PropertyPanel::PropertyPanel(const QString& accent, const QString& title)
{
    setStyleSheet(Styles::propertyPanel(accent));
    setVisible(false);

    m_title = new QLabel(title);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setStyleSheet(Styles::panelTitle(accent));
    // A long name is cut off rather than widening the whole column; its field shows all of it.
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_form = new QFormLayout;

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    layout->addWidget(m_title);
    layout->addLayout(m_form);
}

void PropertyPanel::addField(const QString& label, QLineEdit* field)
{
    m_form->addRow(label, field);
    connect(field, &QLineEdit::textChanged, this, &PropertyPanel::edited);
}

void PropertyPanel::addDeleteButton(const QString& text)
{
    auto* remove = new QPushButton(text);
    remove->setFixedHeight(28);
    remove->setCursor(Qt::PointingHandCursor);
    remove->setStyleSheet(Styles::DELETE_BUTTON);
    connect(remove, &QPushButton::clicked, this, &PropertyPanel::deleteRequested);
    layout()->addWidget(remove);
}

void PropertyPanel::setPanelTitle(const QString& title)
{
    m_title->setText(title);
}
