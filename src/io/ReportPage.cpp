#include "io/ReportPage.h"

#include "canvas/TrussView.h"
#include "io/ReportTable.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

const QString SCROLL_STYLE = u"background-color: white;"_s;
const QString CANVAS_STYLE = u"#reportCanvas { background-color: white; }"_s;
const QString TITLE_BAR_STYLE = u"border-bottom: 2px solid #333;"_s;
const QString TITLE_STYLE = u"color: black; font-size: 24px; font-weight: bold; border: none;"_s;
const QString DRAWING_FRAME_STYLE = u"border: 1px solid #DDD; margin: 10px 0;"_s;
const QString TABLE_TITLE_STYLE =
    u"color: #333; font-weight: bold; font-size: 14px; margin-bottom: 5px; border: none;"_s;
const QString TABLE_STYLE =
    u"QTableWidget { color: black; background: #F9F9F9; gridline-color: #DDD; font-family: 'Courier New'; "
    "border: 1px solid #CCC; }QHeaderView::section { background-color: #F0F0F0; color: #333; "
    "font-weight: bold; }"_s;
const QString CERTIFICATE_BOX_STYLE =
    u"background: #F8F8F8; border: 1px solid #CCC; border-radius: 4px; padding: 10px;"_s;
const QString CERTIFICATE_STYLE = u"color: #444; font-size: 11px; border: none;"_s;
const QString BOTTOM_BAR_STYLE = u"background: #2D2D2D; border-top: 1px solid #444;"_s;
const QString BACK_STYLE = u"QPushButton { background: #555; color: white; border: none; font-weight: bold; }"
                           "QPushButton:hover { background: #666; }"_s;
const QString PRINT_STYLE =
    u"QPushButton { background: #0078D7; color: white; border: none; font-weight: bold; "
    "font-size: 14px; }QPushButton:hover { background: #0086F0; }"_s;

/// The page's white would leave nothing of the bar to be seen.
const QString SCROLL_BAR_STYLE =
    u"QScrollBar { background: #E4E4E4; border: none; }"
    "QScrollBar:vertical { width: 14px; }QScrollBar:horizontal { height: 14px; }"
    "QScrollBar::handle { background: #666; border-radius: 4px; margin: 2px; }"
    "QScrollBar::handle:vertical { min-height: 30px; }QScrollBar::handle:horizontal { min-width: 30px; }"
    "QScrollBar::handle:hover { background: #333; }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }"
    "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"_s;

/// Beyond this the table scrolls within itself: layouts cannot count much further [px].
constexpr int TALLEST_TABLE = 400'000;

/// Each line feed becomes a line break of the label's rich text.
const QString CERTIFICATE_TEXT = uR"(CERTIFICADO DE CÁLCULO ESTRUCTURAL v1.1.0 (CONSOLIDADO)
El presente documento detalla la simulación multi-viga basada en los principios de mecánica estática aplicada a todos los proyectos activos.

NORMATIVA DE REFERENCIA:
- Eurocódigo 9 (EN 1999) | Directiva 2006/42/CE | DGUV V17/18.
- Factor Dinámico (×1.25) aplicado automáticamente para aceleración/frenado.

⚠️ <b style='color: #FFAF00;'>AVISO LEGAL CRÍTICO:</b> Este informe es una simulación basada en modelos teóricos. Los desarrolladores <b>NO</b> se responsabilizan de daños, accidentes o del mal uso de estos datos. <b>VALIDACIÓN OBLIGATORIA</b> por ingeniería externa certificada.

CONCLUSIÓN TÉCNICA GLOBAL: )"_s;

const QString ALL_FIT = u"<span style='color: green; font-weight: bold;'>✅ SISTEMA COMPLETO APTO: Todos los "
                        "proyectos se encuentran dentro de los márgenes de seguridad.</span>"_s;
const QString ALERT =
    u"<span style='color: red; font-weight: bold;'>❌ ALERTA: Se han detectado incidencias de "
    "seguridad en uno o más proyectos. Revise las tablas superiores.</span>"_s;

/// A table that wants to be as high as its heading and its rows.
class ResultsTable : public QTableWidget
{
public: // overrides
    [[nodiscard]] QSize sizeHint() const override
    {
        const int rows = horizontalHeader()->sizeHint().height() + verticalHeader()->length();
        return {QTableWidget::sizeHint().width(), rows + 2 * frameWidth()};
    }
};

QPushButton* buildButton(const QString& text, const QSize& size, const QString& style)
{
    auto* button = new QPushButton(text);
    button->setFixedSize(size);
    button->setStyleSheet(style);
    return button;
}

} // namespace

ReportPage::ReportPage(QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_area = new QScrollArea;
    layout->addWidget(m_area);
    m_area->setWidgetResizable(true);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setStyleSheet(SCROLL_STYLE);
    m_area->verticalScrollBar()->setStyleSheet(SCROLL_BAR_STYLE);
    m_area->horizontalScrollBar()->setStyleSheet(SCROLL_BAR_STYLE);
    buildCanvas();
    buildBottomBar(layout);
}

TrussView* ReportPage::drawing() const
{
    return m_drawing;
}

QTableWidget* ReportPage::table() const
{
    return m_table;
}

QLabel* ReportPage::certificate() const
{
    return m_certificate;
}

void ReportPage::clear()
{
    m_table->clearSpans();
    m_table->setRowCount(0);
}

void ReportPage::fill(const QList<Figures>& projects)
{
    clear();
    ReportTable(*m_table).add(projects);

    const bool allFit = std::all_of(projects.cbegin(), projects.cend(),
                                    [](const Figures& project) { return project.fits(); });
    QString text = CERTIFICATE_TEXT;
    text.replace(u'\n', u"<br>"_s);
    m_certificate->setTextFormat(Qt::RichText);
    m_certificate->setText(text + (allFit ? ALL_FIT : ALERT));
    m_drawing->update();
}

void ReportPage::buildCanvas()
{
    auto* canvas = new QWidget;
    m_area->setWidget(canvas);
    canvas->setObjectName(u"reportCanvas"_s);
    canvas->setStyleSheet(CANVAS_STYLE);

    constexpr int MARGIN = 30;
    auto* layout = new QVBoxLayout(canvas);
    layout->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    layout->setSpacing(20);
    buildTitleBar(layout);
    buildDrawingFrame(layout);
    buildTableBlock(layout);
    buildCertificateBox(layout);
}

void ReportPage::buildTitleBar(QBoxLayout* page)
{
    auto* bar = new QFrame;
    page->addWidget(bar);
    bar->setStyleSheet(TITLE_BAR_STYLE);
    auto* title = new QLabel(u"INFORME ESTRUCTURAL DE RIGGING"_s);
    title->setStyleSheet(TITLE_STYLE);
    title->setAlignment(Qt::AlignCenter);
    auto* layout = new QHBoxLayout(bar);
    layout->addWidget(title);
}

void ReportPage::buildDrawingFrame(QBoxLayout* page)
{
    constexpr int MINIMUM_HEIGHT = 300;
    auto* frame = new QFrame;
    page->addWidget(frame);
    frame->setStyleSheet(DRAWING_FRAME_STYLE);
    m_drawing = new TrussView;
    m_drawing->setAccessibleName(u"Dibujo del proyecto actual"_s);
    m_drawing->printMode = true;
    m_drawing->setMinimumHeight(MINIMUM_HEIGHT);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(m_drawing);
}

void ReportPage::buildTableBlock(QBoxLayout* page)
{
    auto* block = new QWidget;
    page->addWidget(block);
    auto* layout = new QVBoxLayout(block);
    auto* title = new QLabel(u"ANÁLISIS DE CARGAS Y REACCIONES EN PUNTOS DE CUELGUE"_s);
    title->setStyleSheet(TABLE_TITLE_STYLE);
    layout->addWidget(title);

    constexpr int MINIMUM_HEIGHT = 200;
    const QStringList headers{u"ID / MOTOR"_s,      u"POSICIÓN (m)"_s,   u"CAPACIDAD MOTOR"_s,
                              u"PESO MOTOR (kg)"_s, u"TOTAL EN PUNTO"_s, u"ESTÁTICA (kg)"_s,
                              u"DINÁMICA (kg)"_s,   u"ESTADO"_s};
    m_table = new ResultsTable;
    layout->addWidget(m_table);
    m_table->setAccessibleName(u"Cargas y reacciones por punto de cuelgue"_s);
    m_table->setStyleSheet(TABLE_STYLE); // before there is anything to be styled
    m_table->setColumnCount(static_cast<int>(headers.size()));
    m_table->setHorizontalHeaderLabels(headers);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setMinimumHeight(MINIMUM_HEIGHT);
    m_table->setMaximumHeight(TALLEST_TABLE);
    m_table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_table->setTabKeyNavigation(false); // the keys would never leave it
    m_table->verticalScrollBar()->setStyleSheet(SCROLL_BAR_STYLE);
    connect(m_table->verticalHeader(), &QHeaderView::sectionCountChanged, m_table, &QWidget::updateGeometry);
    connect(m_table, &QTableWidget::currentCellChanged, this, &ReportPage::showCurrentCell);
}

// The table is as high as its rows and scrolls nothing itself.
void ReportPage::showCurrentCell()
{
    const QTableWidgetItem* cell = m_table->currentItem();
    if (cell == nullptr)
        return;
    const QRect place = m_table->visualItemRect(cell);
    const QPoint middle = m_table->viewport()->mapTo(m_area->widget(), place.center());
    m_area->ensureVisible(middle.x(), middle.y(), 0, place.height());
}

void ReportPage::buildCertificateBox(QBoxLayout* page)
{
    auto* box = new QFrame;
    page->addWidget(box);
    box->setStyleSheet(CERTIFICATE_BOX_STYLE);
    m_certificate = new QLabel;
    m_certificate->setStyleSheet(CERTIFICATE_STYLE);
    m_certificate->setWordWrap(true);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(m_certificate);
}

void ReportPage::buildBottomBar(QBoxLayout* page)
{
    auto* bar = new QFrame;
    page->addWidget(bar);
    bar->setStyleSheet(BOTTOM_BAR_STYLE);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(20, 10, 20, 10);

    auto* back = buildButton(u"← VOLVER AL DISEÑO"_s, {160, 35}, BACK_STYLE);
    back->setAccessibleName(u"Volver al diseño"_s);
    back->setToolTip(u"Volver al diseño (Esc)"_s);
    connect(back, &QPushButton::clicked, this, &ReportPage::backClicked);
    auto* print = buildButton(u"🖨️ IMPRIMIR / PDF"_s, {200, 40}, PRINT_STYLE);
    print->setAccessibleName(u"Imprimir o guardar como PDF"_s);
    connect(print, &QPushButton::clicked, this, &ReportPage::printClicked);
    layout->addWidget(back);
    layout->addStretch();
    layout->addWidget(print);
}
