#include "ui/DynamicFactorDialog.h"

#include "engine/Limits.h"
#include "engine/Numbers.h"
#include "ui/FocusRing.h"
#include "ui/Styles.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

const QColor EXCEEDED_TEXT(0xFF, 0x50, 0x50);
const QColor EXCEEDED_BACKGROUND(68, 0, 0);
const QColor WITHIN_TEXT(0x39, 0xFF, 0x14);

QTableWidgetItem* createCell(const QString& text)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignCenter);
    return cell;
}

void fillRow(QTableWidget* table, int row, const Motor& motor)
{
    // Another rule than `Limits::motorVerdict`: this table leaves the motor's own weight out.
    const float dynamicLoad = motor.staticLoad * Limits::DYNAMIC_FACTOR;
    const bool exceeded = dynamicLoad > motor.capacity;
    const QString capacity = Numbers::fixed(motor.capacity, 0);

    QTableWidgetItem* dynamicCell = createCell(Numbers::fixed(dynamicLoad, 1));
    dynamicCell->setForeground(exceeded ? EXCEEDED_TEXT : WITHIN_TEXT);
    QTableWidgetItem* verdict = createCell(exceeded ? u"⚠️ EXCEDE"_s : u"✅ OK"_s);
    verdict->setForeground(exceeded ? EXCEEDED_TEXT : WITHIN_TEXT);
    if (exceeded)
        verdict->setBackground(EXCEEDED_BACKGROUND);

    table->setItem(row, 0, createCell(Project::motorTitle(motor)));
    table->setItem(row, 1, createCell(capacity + u" kg"_s));
    table->setItem(row, 2, createCell(Numbers::fixed(motor.staticLoad, 1)));
    table->setItem(row, 3, dynamicCell);
    table->setItem(row, 4, createCell(capacity));
    table->setItem(row, 5, verdict);
}

QPushButton* createCloseButton(QDialog* dialog)
{
    auto* close = new QPushButton(u"CERRAR"_s);
    close->setCursor(Qt::PointingHandCursor);
    close->setStyleSheet(Styles::CLOSE_BUTTON);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    return close;
}

} // namespace

DynamicFactorDialog::DynamicFactorDialog(const QList<Motor>& motors, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(u"Factor Dinámico de Arranque/Frenado"_s);
    setMinimumSize(700, 450);
    resize(1000, 480); // at its least width the headings would be cut off
    setStyleSheet(Styles::DIALOG);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->addWidget(createExplanation());
    layout->addWidget(createTable(motors));
    layout->addWidget(createSummary(motors));
    layout->addWidget(createCloseButton(this), 0, Qt::AlignRight);
    new FocusRing(this);
}

QLabel* DynamicFactorDialog::createExplanation()
{
    auto* label =
        new QLabel(u"⚠️ <b>Factor Dinámico de Seguridad (DGUV V17/18)</b><br>Según la normativa para "
                   "eventos sobre personas, se aplica un factor <b>1.25 (25%)</b> adicional sobre la "
                   "carga estática para cubrir esfuerzos durante el arranque y parada de los "
                   "motores.<br><i>Tolerancia Cero: Los motores deben soportar este valor "
                   "dinámico.</i>"_s);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    label->setStyleSheet(Styles::FACTOR_EXPLANATION);
    return label;
}

QTableWidget* DynamicFactorDialog::createTable(const QList<Motor>& motors)
{
    const QStringList headers{
        u"Motor"_s,          u"Modelo"_s, u"Carga Estática (kg)"_s, u"Carga Dinámica (kg)"_s,
        u"Capacidad (kg)"_s, u"Estado"_s};
    auto* table = new QTableWidget(static_cast<int>(motors.size()), static_cast<int>(headers.size()));
    table->setAccessibleName(u"Cargas estáticas y dinámicas por motor"_s);
    table->setHorizontalHeaderLabels(headers);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->horizontalHeader()->setStretchLastSection(true);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false); // the keys would never leave it
    table->setStyleSheet(Styles::FACTOR_TABLE);

    int row = 0;
    for (const Motor& motor : motors)
        fillRow(table, row++, motor);
    return table;
}

// The text names another factor than the numbers are made with; that is how this line has always read.
QLabel* DynamicFactorDialog::createSummary(const QList<Motor>& motors)
{
    float staticSum = 0.0F;
    float dynamicSum = 0.0F;
    for (const Motor& motor : motors) {
        staticSum += motor.staticLoad;
        dynamicSum += motor.staticLoad * Limits::DYNAMIC_FACTOR;
    }
    auto* label =
        new QLabel(u"Total Estático: %1 kg  |  Total Dinámico (×1.15): %2 kg  |  Diferencia: +%3 kg"_s.arg(
            Numbers::fixed(staticSum, 1), Numbers::fixed(dynamicSum, 1),
            Numbers::fixed(dynamicSum - staticSum, 1)));
    label->setStyleSheet(Styles::FACTOR_SUMMARY);
    return label;
}
