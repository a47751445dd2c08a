#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "engine/ProjectOpinion.h"
#include "ui/ContrastDialog.h"
#include "ui/LedGroup.h"
#include "ui/ListDialog.h"
#include "ui/LoadPanel.h"
#include "ui/MainWindow.h"
#include "ui/MotorPanel.h"
#include "ui/NoticeLine.h"
#include "ui/ProjectTabBar.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// A drag changes the project faster than anyone reads [ms].
constexpr int NOTICE_INTERVAL = 100;
constexpr int LONGEST_INTERVAL = 1000; // [ms]
/// The open dialog is left alone for so many times as long as it took to be laid out and painted.
constexpr int REST_SHARE = 6;
/// By then a change is painted [ms].
constexpr int PAINTED = 10;

/// Narrower than this a screen that is being typed in leaves the hanging one alone [m].
constexpr float NARROWEST_SCREEN = 0.1F;

bool isOpen(const QWidget* dialog)
{
    return dialog != nullptr && dialog->isVisible();
}

QString textOf(const QWidget* group, const QString& objectName)
{
    return group->findChild<QLineEdit*>(objectName)->text();
}

} // namespace

void MainWindow::startNoticing()
{
    m_noticeTimer = new QTimer(this);
    m_noticeTimer->setSingleShot(true);
    m_noticeTimer->setInterval(NOTICE_INTERVAL);
    connect(m_noticeTimer, &QTimer::timeout, this, &MainWindow::refreshNotices);

    m_noticeLine = new NoticeLine(m_canvas);
    QWidget* before = m_canvas;
    while (before->focusPolicy() == Qt::NoFocus)
        before = before->previousInFocusChain();
    setTabOrder(before, m_noticeLine);
    connect(m_noticeLine, &NoticeLine::activated, this, &MainWindow::answerNotice);
    connect(m_tabBar, &QTabBar::tabMoved, this, &MainWindow::noticeDraggedTabs);
    const auto fields = findChildren<QLineEdit*>();
    for (const QLineEdit* field : fields)
        connect(field, &QLineEdit::textChanged, this, &MainWindow::scheduleNotices);

    m_hyperstaticWarning->installEventFilter(this);
    m_motorPanel->installEventFilter(this);
    m_loadPanel->installEventFilter(this);
    onKey(Qt::Key_F8, [this] { openContrast(); });
    onKey(Qt::CTRL | Qt::SHIFT | Qt::Key_P, [this] { onSheetClicked(); });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && watched == m_hyperstaticWarning)
        openContrast();
    else if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        scheduleNotices(); // a panel came or went
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::scheduleNotices()
{
    if (m_noticeTimer != nullptr && !m_noticeTimer->isActive())
        m_noticeTimer->start();
}

// The snapshot goes at the end: shared lists would be copied by the next step of a drag.
void MainWindow::refreshNotices()
{
    ProjectState solved = LoadLogic::Snapshot();
    solved.tabName = m_tabBar->tabText(currentProjectIndex);
    solved.selectedLoadId = selectedLoadId;
    const bool follows = isOpen(m_contrast);
    m_noticeTimer->setInterval(NOTICE_INTERVAL);
    if (follows || isOpen(m_list))
        restNotices();
    if (follows)
        m_contrast->prepare(solved);
    const SecondOpinion::Opinion opinion =
        ProjectOpinion::of(solved, follows ? m_contrast->tableDeflection() : std::nullopt);
    if (follows)
        m_contrast->follow(opinion);
    if (isOpen(m_list))
        m_list->follow(solved, selectedMotorIndex);
    m_noticeLine->setNotices(Notices::of({solved, opinion, noticedFields(), m_keptNotices}));
}

// However slow the machine, a drag beside the open dialog stays nearly as quick as without.
void MainWindow::restNotices()
{
    QElapsedTimer begun;
    begun.start();
    QTimer::singleShot(PAINTED, this, [this, begun] {
        const int rest = REST_SHARE * static_cast<int>(begun.elapsed() - PAINTED);
        m_noticeTimer->setInterval(std::clamp(rest, NOTICE_INTERVAL, LONGEST_INTERVAL));
    });
}

void MainWindow::keepNotice(const Notice& notice)
{
    dropNotice(notice.id);
    m_keptNotices.append(notice);
}

void MainWindow::dropNotice(const QString& id)
{
    m_keptNotices.removeIf([&id](const Notice& notice) { return notice.id == id; });
    scheduleNotices();
}

void MainWindow::noticeDraggedTabs()
{
    const auto* bar = qobject_cast<const ProjectTabBar*>(m_tabBar);
    if (bar == nullptr || bar->titlesStandByTheirProjects())
        dropNotice(Notices::DRAGGED_TABS);
    else
        keepNotice(Notices::draggedTabs());
}

void MainWindow::noticeSavedFile(const QString& path)
{
    if (const std::optional<Notice> notice = Notices::savedFile(QFileInfo(path).fileName()))
        keepNotice(*notice);
    else
        dropNotice(Notices::UNLISTED_FILE);
}

QList<Notices::Field> MainWindow::noticedFields() const
{
    return trussFields() + screenFields() + panelFields();
}

QList<Notices::Field> MainWindow::trussFields() const
{
    const Truss truss = LoadLogic::CurrentTruss();
    const auto field = [this](const QString& id, const QString& label, float counted, int decimals) {
        return Notices::Field{id, label, textOf(this, id), counted, decimals};
    };
    return {field(u"trussLength"_s, u"Longitud (m)"_s, truss.length, 1),
            field(u"trussWeight"_s, u"Peso (kg/m)"_s, truss.selfWeight, 1),
            field(u"limitCPL"_s, u"CPL Máx"_s, truss.limitCPL, 0)};
}

// What parses counts, for the next screen or the selected one; only a width that is hardly any leaves
// the selected screen as it is.
QList<Notices::Field> MainWindow::screenFields() const
{
    const auto field = [this](const QString& id, const QString& label) {
        const QString text = textOf(this, id);
        return Notices::Field{id, label, text, Numbers::parseNumber(text), 2};
    };
    Notices::Field width = field(u"screenWidth"_s, u"Ancho (m)"_s);
    const LoadLogic::ActiveLoad* selected = LoadLogic::FindLoad(selectedLoadId);
    if (selected != nullptr && Project::isArraySegment(*selected) && width.counted < NARROWEST_SCREEN)
        width.counted = selected->screenWidth;
    return {width, field(u"screenHeight"_s, u"Alto (m)"_s), field(u"screenWeightM2"_s, u"Peso (kg/m²)"_s),
            field(u"bumperWeight"_s, u"Bumper (kg/m)"_s), field(u"cablePercent"_s, u"Cable (%)"_s)};
}

// The mass field is that of the selected load, else of the next one, which never weighs nothing.
QList<Notices::Field> MainWindow::panelFields() const
{
    const auto field = [this](const QString& id, const QString& label, float counted) {
        return Notices::Field{id, label, textOf(this, id), counted, 1};
    };
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId);
    Notices::Field mass = field(u"newLoadMass"_s, u"Carga (kg)"_s, typedLoad().mass);
    if (load != nullptr)
        mass.counted = Numbers::tryParse(mass.text).value_or(load->mass);

    QList<Notices::Field> fields{mass};
    if (!m_motorPanel->isHidden() && isMotorEditable()) {
        const LoadLogic::Motor& motor = LoadLogic::MotorList.at(selectedMotorIndex);
        fields += field(u"motorCapacity"_s, u"Capacidad (kg)"_s, motor.capacity);
        fields += field(u"motorSelfWeight"_s, u"Peso Motor (kg)"_s, motor.selfWeight);
    }
    if (!m_loadPanel->isHidden() && load != nullptr && isLoadEditable())
        fields += field(u"loadMass"_s, u"Masa (kg)"_s, load->mass);
    return fields;
}

void MainWindow::answerNotice()
{
    const Notice notice = m_noticeLine->shown();
    switch (notice.kind) {
    case Notice::Kind::Tips:
    case Notice::Kind::LevelOverload:
    case Notice::Kind::NoFigure:
    case Notice::Kind::MotorsTogether:
        openContrast();
        break;
    case Notice::Kind::NoRating:
        enterField(u"limitCPL"_s);
        break;
    case Notice::Kind::UnusedField:
        enterField(notice.id.section(u'/', 1));
        break;
    case Notice::Kind::EditedLoad:
        releaseLoad();
        break;
    case Notice::Kind::DraggedTabs:
    case Notice::Kind::UnlistedFile:
    case Notice::Kind::Names:
        dropNotice(notice.id);
        break;
    case Notice::Kind::Recovery:
        emit noticePicked(notice.id);
        break;
    }
}

void MainWindow::enterField(const QString& objectName)
{
    auto* field = findChild<QLineEdit*>(objectName);
    if (field == nullptr)
        return;
    for (QWidget* around = field->parentWidget(); around != nullptr; around = around->parentWidget()) {
        if (auto* area = qobject_cast<QScrollArea*>(around))
            area->ensureWidgetVisible(field);
    }
    field->setFocus(Qt::OtherFocusReason);
    field->selectAll();
}

// As a press beside everything on the canvas; not while something hangs on the pointer. A motor is let go
// from the canvas alone: its panel stays open for who leaves one of its fields.
void MainWindow::releaseLoad()
{
    const bool isMotorHeld = isMotor(selectedMotorIndex) && m_canvas->hasFocus();
    if ((selectedLoadId == -1 && !isMotorHeld) || m_canvas->isDragging())
        return;
    nothingPicked();
    updateCalculations();
}

void MainWindow::openContrast()
{
    if (m_contrast == nullptr) {
        m_contrast = new ContrastDialog(this);
        connect(m_contrast, &ContrastDialog::tableDeflectionChanged, this, &MainWindow::scheduleNotices);
        connect(m_contrast, &ContrastDialog::sheetRequested, this, &MainWindow::onSheetClicked);
        connect(m_contrast, &ContrastDialog::printRequested, this, &MainWindow::onPrintContrastClicked);
    }
    m_contrast->show();
    m_contrast->raise();
    m_contrast->activateWindow();
    refreshNotices();
}
