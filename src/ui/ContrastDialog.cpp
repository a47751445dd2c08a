#include "ui/ContrastDialog.h"

#include "engine/Numbers.h"
#include "engine/SecondOpinionText.h"
#include "ui/BendingCurves.h"
#include "ui/ContrastTable.h"
#include "ui/MotorBars.h"
#include "ui/NumberField.h"
#include "ui/Styles.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// So many sentences stand above the table, the others below the pictures.
constexpr qsizetype FIRST_SENTENCES = 6;

const QSize USUAL_SIZE(1000, 720);   // [px]
const QSize SMALLEST_SIZE(640, 400); // [px]
constexpr int DESKTOP_EDGE = 60;     // left free around the dialog on a small screen [px]

QLabel* createText(const QString& style)
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setStyleSheet(style);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

void showText(QLabel* label, const QStringList& sentences)
{
    const QString text = sentences.join(u'\n');
    label->setVisible(!text.isEmpty());
    if (label->text() != text)
        label->setText(text);
}

} // namespace

ContrastDialog::ContrastDialog(QWidget* parent)
    : QDialog(parent)
{
    setObjectName("contrastDialog"_L1);
    setWindowTitle(u"Contraste de reparto"_s);
    setStyleSheet(Styles::DIALOG);
    setMinimumSize(SMALLEST_SIZE);
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    resize(USUAL_SIZE.boundedTo(room - QSize(DESKTOP_EDGE, DESKTOP_EDGE)));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(8);

    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameStyle(0);
    area->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(area, 1);
    auto* content = new QWidget;
    area->setWidget(content);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 6, 0);
    column->setSpacing(8);
    buildSentences(column);
    buildTable(column);
    buildPictures(column);
    m_moreSentences = createText(Styles::PLAIN_TEXT);
    m_moreSentences->setObjectName("moreSentences"_L1);
    column->addWidget(m_moreSentences);

    buildDeflection(layout);
    buildButtons(layout);
}

void ContrastDialog::buildSentences(QBoxLayout* column)
{
    auto* title = new QLabel(SecondOpinionText::title());
    title->setStyleSheet(Styles::PLAIN_HEADING);
    title->setWordWrap(true);
    column->addWidget(title);
    m_contradictions = createText(Styles::CONTRADICTION);
    m_contradictions->setObjectName("contradictions"_L1);
    column->addWidget(m_contradictions);
    m_sentences = createText(Styles::PLAIN_TEXT);
    m_sentences->setObjectName("sentences"_L1);
    column->addWidget(m_sentences);
}

void ContrastDialog::buildTable(QBoxLayout* column)
{
    m_table = new ContrastTable;
    column->addWidget(m_table);
    auto* copy = new QShortcut(QKeySequence::Copy, m_table);
    copy->setContext(Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, &ContrastDialog::copyTable);
}

void ContrastDialog::buildPictures(QBoxLayout* column)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    m_bars = new MotorBars;
    m_curves = new BendingCurves;
    row->addWidget(m_bars, 1);
    row->addWidget(m_curves, 1);
    column->addLayout(row, 1);
}

void ContrastDialog::buildDeflection(QBoxLayout* column)
{
    m_deflection = NumberField::create(QString(), u"Flecha de tabla en milímetros"_s);
    m_deflection->setObjectName("tableDeflection"_L1);
    m_deflection->setFixedWidth(80);
    auto* label = new QLabel(u"&Flecha de tabla (mm):"_s);
    label->setBuddy(m_deflection);
    QLabel* use = createText(Styles::SMALL_PRINT);
    use->setTextInteractionFlags(Qt::NoTextInteraction);
    use->setText(u"Lo que baja el centro del truss con su CPL, según la tabla del fabricante para esta "
                 "longitud. Con ella se dice cuánto cambia la carga de cada motor por milímetro de desnivel; "
                 "sin ella, el resto vale igual."_s);
    m_deflection->setAccessibleDescription(use->text());
    connect(m_deflection, &QLineEdit::textChanged, this, &ContrastDialog::onDeflectionEdited);

    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_deflection);
    row->addWidget(use, 1);
    column->addLayout(row);
}

void ContrastDialog::buildButtons(QBoxLayout* column)
{
    QLabel* limits = createText(Styles::SMALL_PRINT);
    limits->setText(SecondOpinionText::limits());
    column->addWidget(limits);

    auto* row = new QHBoxLayout;
    QPushButton* copy = addButton(row, u"COPIAR TABLA"_s);
    connect(copy, &QPushButton::clicked, this, &ContrastDialog::copyTable);
    QPushButton* print = addButton(row, u"IMPRIMIR"_s);
    print->setShortcut(QKeySequence::Print);
    print->setToolTip(u"Abre el contraste en el visor de PDF, que lo imprime (Ctrl+P)"_s);
    connect(print, &QPushButton::clicked, this, &ContrastDialog::printRequested);
    QPushButton* sheet = addButton(row, u"MEMORIA DE CÁLCULO (PDF)"_s);
    sheet->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    sheet->setToolTip(u"Guarda todos los proyectos con todas sus cuentas (Ctrl+Mayús+P)"_s);
    connect(sheet, &QPushButton::clicked, this, &ContrastDialog::sheetRequested);
    row->addStretch();
    QPushButton* close = addButton(row, u"CERRAR"_s);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    column->addLayout(row);
}

// No button is pressed by Enter in the field.
QPushButton* ContrastDialog::addButton(QBoxLayout* row, const QString& text) const
{
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    button->setCursor(Qt::PointingHandCursor);
    button->setStyleSheet(Styles::CLOSE_BUTTON);
    row->addWidget(button);
    return button;
}

std::optional<double> ContrastDialog::tableDeflection() const
{
    const std::optional<float> typed = Numbers::tryParse(m_deflection->text());
    if (!typed || !(*typed > 0.0F))
        return std::nullopt;
    return static_cast<double>(*typed);
}

void ContrastDialog::onDeflectionEdited()
{
    NumberField::mark(m_deflection, m_deflection->text().isEmpty() || tableDeflection().has_value());
    emit tableDeflectionChanged();
}

// The maker's table gives another deflection for each length, load and kind of truss.
void ContrastDialog::prepare(const ProjectState& project)
{
    const bool isSame =
        project.tabName == m_project && project.trussLength == m_length && project.limitCPL == m_limitCPL;
    if (isSame)
        return;
    m_project = project.tabName;
    m_length = project.trussLength;
    m_limitCPL = project.limitCPL;
    setWindowTitle(u"Contraste de reparto: "_s + m_project.simplified());
    m_deflection->clear();
}

void ContrastDialog::follow(const SecondOpinion::Opinion& opinion)
{
    m_opinion = opinion;
    fillSentences();
    m_table->showRows(SecondOpinionText::rows(m_opinion));
    m_bars->setOpinion(m_opinion);
    m_curves->setOpinion(m_opinion);
}

void ContrastDialog::fillSentences()
{
    const QStringList contradictions = SecondOpinionText::contradictions(m_opinion);
    QStringList others = SecondOpinionText::sentences(m_opinion);
    for (const QString& told : contradictions)
        others.removeOne(told);
    const QString truss = SecondOpinionText::truss(m_opinion);
    if (!truss.isEmpty())
        others.append(truss);
    showText(m_contradictions, contradictions);
    showText(m_sentences, others.first(std::min(others.size(), FIRST_SENTENCES)));
    showText(m_moreSentences, others.mid(FIRST_SENTENCES));
}

QString ContrastDialog::tableText() const
{
    return m_table->text();
}

void ContrastDialog::copyTable() const
{
    QGuiApplication::clipboard()->setText(tableText());
}
