#include "ui/ListDialog.h"

#include "ui/FocusRing.h"
#include "ui/ListModel.h"
#include "ui/ListTable.h"
#include "ui/Styles.h"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

const QSize USUAL_SIZE(900, 620);    // [px]
const QSize SMALLEST_SIZE(640, 400); // [px]
constexpr int DESKTOP_EDGE = 60;     // left free around the dialog on a small screen [px]
constexpr int MOTOR_SHARE = 2;       // of the height of both tables
constexpr int LOAD_SHARE = 3;
constexpr int LOWEST_TABLE = 70; // heading and a row [px]

QLabel* createHeading(QWidget* buddy)
{
    auto* heading = new QLabel;
    heading->setStyleSheet(Styles::PLAIN_HEADING);
    heading->setBuddy(buddy);
    return heading;
}

ListTable* createTable(ListModel* model, const QString& name)
{
    auto* table = new ListTable(model, name);
    table->setMinimumHeight(LOWEST_TABLE);
    return table;
}

} // namespace

ListDialog::ListDialog(QWidget* parent)
    : QDialog(parent)
{
    setObjectName("listDialog"_L1);
    setWindowTitle(u"Lista"_s);
    setStyleSheet(Styles::DIALOG);
    setMinimumSize(SMALLEST_SIZE);
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    resize(USUAL_SIZE.boundedTo(room - QSize(DESKTOP_EDGE, DESKTOP_EDGE)));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 12, 14, 12);
    column->setSpacing(6);
    buildTables(column);
    buildWords(column);
    buildButtons(column);
    addKeys(this, Qt::WindowShortcut, QKeySequence::Undo, &ListDialog::undoProject);
    new FocusRing(this);
}

// An editor that is open ends with its table, and would tell the dialog what was typed last.
ListDialog::~ListDialog()
{
    for (QObject* child : std::initializer_list<QObject*>{m_motorModel, m_loadModel, m_motors, m_loads})
        child->disconnect(this);
}

void ListDialog::buildTables(QBoxLayout* column)
{
    m_motorModel = new MotorModel(ListRows::motorColumns(), this);
    m_loadModel = new LoadModel(ListRows::loadColumns(), this);
    m_motors = createTable(m_motorModel, u"Motores"_s);
    m_motors->setObjectName("motorTable"_L1);
    m_loads = createTable(m_loadModel, u"Cargas"_s);
    m_loads->setObjectName("loadTable"_L1);
    m_motorHeading = createHeading(m_motors);
    m_loadHeading = createHeading(m_loads);
    column->addWidget(m_motorHeading);
    column->addWidget(m_motors, MOTOR_SHARE);
    column->addWidget(m_loadHeading);
    column->addWidget(m_loads, LOAD_SHARE);

    connect(m_motorModel, &ListModel::typed, this, &ListDialog::changeMotor);
    connect(m_loadModel, &ListModel::typed, this, &ListDialog::changeLoad);
    for (ListTable* table : {m_motors, m_loads}) {
        connect(table, &ListTable::picked, this, [this, table] { onPicked(table); });
        connect(table, &ListTable::objected, this, &ListDialog::say);
        addKeys(table, Qt::WidgetShortcut, QKeySequence::Copy, &ListDialog::copy);
        addKeys(table, Qt::WidgetShortcut, QKeySequence::Paste, &ListDialog::paste);
    }
}

void ListDialog::buildWords(QBoxLayout* column)
{
    m_words = new QLabel;
    m_words->setObjectName("words"_L1);
    m_words->setTextFormat(Qt::PlainText);
    m_words->setWordWrap(true);
    m_words->setStyleSheet(Styles::PLAIN_TEXT);
    column->addWidget(m_words);
    auto* keys = new QLabel(u"F2 o escribir: editar. Espacio: seleccionar. Supr: eliminar. Ctrl+D: duplicar. "
                            "Ctrl+M: reflejar. Ctrl+C, Ctrl+V: copiar, pegar (nombre, masa, posición). "
                            "F7: ordenar. Ctrl+Z: deshacer."_s);
    keys->setWordWrap(true);
    keys->setStyleSheet(Styles::SMALL_PRINT);
    column->addWidget(keys);
}

void ListDialog::buildButtons(QBoxLayout* column)
{
    auto* row = new QHBoxLayout;
    addButton(row, u"DUPLICAR"_s, Qt::CTRL | Qt::Key_D, &ListDialog::duplicate);
    addButton(row, u"REFLEJAR"_s, Qt::CTRL | Qt::Key_M, &ListDialog::mirror);
    addButton(row, u"ELIMINAR"_s, Qt::Key_Delete, &ListDialog::remove);
    addButton(row, u"COPIAR"_s, {}, &ListDialog::copy);
    addButton(row, u"PEGAR CARGAS"_s, {}, &ListDialog::paste);
    addButton(row, u"ORDENAR"_s, Qt::Key_F7, &ListDialog::sort);
    row->addStretch();
    addButton(row, u"CERRAR"_s, {}, &ListDialog::reject);
    column->addLayout(row);
}

// No button is pressed by Enter in a table. The keys are those of the tables, not of an open editor.
void ListDialog::addButton(QBoxLayout* row, const QString& text, const QKeySequence& keys,
                           void (ListDialog::*act)())
{
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    button->setCursor(Qt::PointingHandCursor);
    button->setStyleSheet(Styles::NARROW_BUTTON);
    connect(button, &QPushButton::clicked, this, act);
    row->addWidget(button);
    if (keys.isEmpty())
        return;
    addKeys(m_motors, Qt::WidgetShortcut, keys, act);
    addKeys(m_loads, Qt::WidgetShortcut, keys, act);
}

void ListDialog::addKeys(QWidget* widget, Qt::ShortcutContext context, const QKeySequence& keys,
                         void (ListDialog::*act)())
{
    auto* action = new QAction(widget);
    action->setShortcut(keys);
    action->setShortcutContext(context);
    connect(action, &QAction::triggered, this, act);
    widget->addAction(action);
}

// In front it shows what is there: a key that is pressed at once means the rows that are seen.
void ListDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        emit followRequested();
}

void ListDialog::follow(const ProjectState& solved, int selectedMotor)
{
    const QScopedValueRollback<bool> following(m_isFollowing, true);
    m_trussLength = solved.trussLength;
    followIn(m_motors, m_motorModel, ListRows::motorsOf(solved));
    followIn(m_loads, m_loadModel, ListRows::loadsOf(solved));
    setWindowTitle(u"Lista: "_s + solved.tabName.simplified());
    m_motorHeading->setText(u"&Motores: "_s + QString::number(m_motorModel->rowCount()));
    m_loadHeading->setText(u"&Cargas: "_s + QString::number(m_loadModel->rowCount()));

    const Picked picked = pickedIn(solved, selectedMotor);
    if (isTold(picked))
        return;
    m_told = picked;
    showPicked(picked);
}

// Rows that come and go take the selection of others along where several are moved at once.
template <class Row>
void ListDialog::followIn(ListTable* table, RowModel<Row>* model, const QList<Row>& rows)
{
    const QSet<RowKey> selected = table->selectedKeys();
    const std::optional<RowKey> current = table->pickedKey();
    model->follow(rows);
    if (current && table->selectedKeys() != selected)
        table->selectKeys(selected, *current);
}

ListDialog::Picked ListDialog::pickedIn(const ProjectState& project, int selectedMotor) const
{
    if (Project::indexOfLoad(project.loads, project.selectedLoadId) >= 0)
        return {m_loads, {project.selectedLoadId, 0}};
    const QList<RowKey>& motors = m_motorModel->keys();
    if (selectedMotor >= 0 && selectedMotor < motors.size())
        return {m_motors, motors.at(selectedMotor)};
    return {};
}

// The window knows a load by its id alone: any row of this id is the one that it has selected.
bool ListDialog::isTold(const Picked& picked) const
{
    if (picked.table != m_told.table)
        return false;
    const bool isSameLoad = picked.table == m_loads && picked.key.id == m_told.key.id;
    return picked.table == nullptr || isSameLoad || picked.key == m_told.key;
}

void ListDialog::showPicked(const Picked& picked)
{
    m_motors->clearSelection();
    m_loads->clearSelection();
    if (picked.table != nullptr)
        picked.table->selectKeys({picked.key}, picked.key);
}

void ListDialog::onPicked(ListTable* table)
{
    if (m_isFollowing)
        return;
    ListTable* other = table == m_motors ? m_loads : m_motors;
    const std::optional<RowKey> key = table->pickedKey();
    if (key) {
        const QScopedValueRollback<bool> following(m_isFollowing, true);
        other->clearSelection();
        tell({table, *key});
    } else if (!other->pickedKey()) {
        tell({});
    }
}

// A load of the id -1 is none that the window could select.
void ListDialog::tell(const Picked& picked)
{
    const Picked told = picked.table == m_loads && picked.key.id == -1 ? Picked() : picked;
    if (told.table == m_told.table && told.key == m_told.key)
        return;
    m_told = told;
    if (told.table == m_motors)
        emit motorPicked(told.key);
    else if (told.table == m_loads)
        emit loadPicked(told.key);
    else
        emit nothingPicked();
}
