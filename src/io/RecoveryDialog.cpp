#include "io/RecoveryDialog.h"

#include "ui/Styles.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

constexpr int TITLE_COLUMN = 0;
constexpr QSize SIZE(760, 420); // [px]

QString singleLine(QString text)
{
    return text.replace(u'\n', u' ');
}

QStringList textsOf(const RecoveryEntry& entry)
{
    const QString title = singleLine(entry.project.tabName);
    const QString time = entry.time.toString(u"dd/MM/yyyy HH:mm:ss"_s);
    if (!entry.isReadable)
        return {title, time, {}, {}, {}, entry.happened};
    const RecoveryList::Count count = RecoveryList::count(entry.project.loads);
    return {title,
            time,
            QString::number(entry.project.motors.size()),
            QString::number(count.loads),
            QString::number(count.screens),
            entry.happened};
}

QTreeWidgetItem* createItem(const RecoveryEntry& entry)
{
    auto* item = new QTreeWidgetItem(textsOf(entry));
    item->setToolTip(TITLE_COLUMN, item->text(TITLE_COLUMN).toHtmlEscaped());
    item->setFlags(entry.isReadable ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable
                                    : Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    if (entry.isReadable)
        item->setCheckState(TITLE_COLUMN, entry.isChosen ? Qt::Checked : Qt::Unchecked);
    return item;
}

} // namespace

RecoveryDialog::RecoveryDialog(const QList<RecoveryEntry>& entries, QWidget* parent)
    : QDialog(parent)
    , m_entries(entries)
{
    setWindowTitle(u"Recuperar trabajo"_s);
    setObjectName("recoveryDialog"_L1);
    setStyleSheet(Styles::DIALOG);
    resize(SIZE);

    auto* explanation =
        new QLabel(u"Lo que se marque se abre en pestañas nuevas; además sigue en esta lista."_s);
    explanation->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(createList(), 1);
    layout->addWidget(createButtons());
    followChoice();
}

QTreeWidget* RecoveryDialog::createList()
{
    m_list = new QTreeWidget;
    m_list->setObjectName("recoveryList"_L1);
    m_list->setAccessibleName(u"Proyectos que se pueden recuperar"_s);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHeaderLabels(
        {u"Proyecto"_s, u"Hora"_s, u"Motores"_s, u"Cargas"_s, u"Pantallas"_s, u"Qué ocurrió"_s});
    for (const RecoveryEntry& entry : std::as_const(m_entries))
        m_list->addTopLevelItem(createItem(entry));
    m_list->header()->setStretchLastSection(true);
    for (int column = TITLE_COLUMN + 1; column < m_list->columnCount(); ++column)
        m_list->resizeColumnToContents(column);
    m_list->setColumnWidth(TITLE_COLUMN, SIZE.width() / 4);
    m_list->setCurrentItem(m_list->topLevelItem(0));
    connect(m_list, &QTreeWidget::itemChanged, this, &RecoveryDialog::followChoice);
    return m_list;
}

QWidget* RecoveryDialog::createButtons()
{
    auto* buttons = new QDialogButtonBox;
    m_open = buttons->addButton(u"Abrir en pestañas nuevas"_s, QDialogButtonBox::AcceptRole);
    buttons->addButton(u"Cancelar"_s, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

void RecoveryDialog::followChoice()
{
    if (m_open != nullptr)
        m_open->setEnabled(!chosen().isEmpty());
}

QList<ProjectState> RecoveryDialog::chosen() const
{
    QList<ProjectState> projects;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (m_list->topLevelItem(row)->checkState(TITLE_COLUMN) == Qt::Checked)
            projects.append(m_entries.at(row).project);
    }
    return projects;
}
