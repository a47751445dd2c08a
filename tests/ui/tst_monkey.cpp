#include "engine/Numbers.h"
#include "io/ProjectFile.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QInputDialog>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>

#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::uint32_t SEED = 20'240'607;
constexpr int USUAL_EVENTS = 3000;
/// Beyond this many loads the monkey starts over with a fresh project.
constexpr qsizetype MANY_LOADS = 1500;

/// Making the report of all tabs takes long: it is tried this many times less often than the others.
constexpr int REPORT_RARITY = 20;

/// Positions and sums in single precision agree to this share of their size.
constexpr double TOLERANCE = 1e-3;

bool isWithin(float x, float length)
{
    const float slack = length * 1e-5F;
    return std::isfinite(x) && x >= -slack && x <= length + slack;
}

} // namespace

/// A monkey at the window: presses, moves, keys, menus, dialogs, tabs and undo in a random order that
/// is the same in every run, and after each event the things that must always hold.
class TestMonkey : public QObject
{
    Q_OBJECT

public slots:
    /// Stands in for the browser.
    void ignore(const QUrl&) {}

private slots:
    void initTestCase();
    void anyEvents_keepTheProjectSound();
    void cleanupTestCase();

private:
    using Event = std::function<void()>;

    int random(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<std::uint32_t>(high - low + 1));
    }
    template <class List>
    auto anyOf(const List& list)
    {
        return list[static_cast<typename List::size_type>(random(0, static_cast<int>(list.size()) - 1))];
    }

    void listEvents();
    void listCanvasEvents();
    void listFieldEvents();
    void listWindowEvents();
    void listFileEvents();
    void answerDialogs();
    void answer(QWidget* open);
    [[nodiscard]] QPoint anyPoint();
    void sendMouse(QEvent::Type type, Qt::MouseButton button);
    void typeInto(QLineEdit* field);
    [[nodiscard]] QString anyText();

    void checkIds();
    void checkPositions();
    void checkSelection();
    void checkPanels();
    void checkConservation();
    void check();
    void startOver();

    std::mt19937 m_random{SEED};
    QTemporaryDir m_folder;
    Support::TestWindow* m_test = nullptr;
    std::vector<std::pair<QByteArray, Event>> m_events;
    QString m_wrong;
};

void TestMonkey::initTestCase()
{
    qputenv("TMPDIR", QFile::encodeName(m_folder.path())); // where reports go
    QDesktopServices::setUrlHandler(u"file"_s, this, "ignore");
}

void TestMonkey::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(u"file"_s);
}

QPoint TestMonkey::anyPoint()
{
    const TrussView* canvas = m_test->canvas();
    // Mostly where something hangs.
    if (random(0, 3) != 0 && !LoadLogic::MotorList.isEmpty()) {
        const bool motor = LoadLogic::ActiveLoads.isEmpty() || random(0, 1) == 0;
        const float x =
            motor ? anyOf(LoadLogic::MotorList).positionX : anyOf(LoadLogic::ActiveLoads).positionX;
        const auto span = static_cast<float>(canvas->width() - 2 * canvas->marginX);
        const int px = canvas->marginX + Numbers::toPixel(x / LoadLogic::TrussLength * span);
        return {px + random(-8, 8), canvas->height() / 2 + random(-120, 120)};
    }
    return {random(-20, canvas->width() + 20), random(-20, canvas->height() + 20)};
}

void TestMonkey::sendMouse(QEvent::Type type, Qt::MouseButton button)
{
    const QPoint point = anyPoint();
    TrussView* canvas = m_test->canvas();
    QMouseEvent event(type, point, canvas->mapToGlobal(point), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas, &event);
}

QString TestMonkey::anyText()
{
    static const QStringList texts{u"0"_s,    u"1"_s,    u"2.5"_s, u"6"_s,   u"12"_s,  u"24"_s,
                                   u"0.05"_s, u"0.25"_s, u"-3"_s,  u"1e9"_s, u"nan"_s, u"."_s,
                                   u"-"_s,    u""_s,     u"8,4"_s, u"500"_s, u"abc"_s, u"99.9"_s,
                                   u"150"_s,  u"1.2"_s,  u"inf"_s, u"%1"_s,  u"<b>"_s, u"40"_s};
    return texts.at(random(0, static_cast<int>(texts.size()) - 1));
}

void TestMonkey::typeInto(QLineEdit* field)
{
    if (!field->isEnabledTo(&m_test->window))
        return;
    if (random(0, 1) == 0)
        field->selectAll();
    QTest::keyClicks(field, anyText());
    if (random(0, 3) == 0)
        QTest::keyClick(field, Qt::Key_Backspace);
    if (random(0, 5) == 0)
        QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    if (random(0, 5) == 0)
        QTest::keyClick(field, Qt::Key_Tab);
}

void TestMonkey::listEvents()
{
    m_events.clear();
    listCanvasEvents();
    listFieldEvents();
    listWindowEvents();
    listFileEvents();
}

void TestMonkey::listCanvasEvents()
{
    for (int weight = 0; weight < 4; ++weight) {
        m_events.emplace_back("press", [this] { sendMouse(QEvent::MouseButtonPress, Qt::LeftButton); });
        m_events.emplace_back("move", [this] { sendMouse(QEvent::MouseMove, Qt::NoButton); });
        m_events.emplace_back("move", [this] { sendMouse(QEvent::MouseMove, Qt::LeftButton); });
        m_events.emplace_back("release", [this] { sendMouse(QEvent::MouseButtonRelease, Qt::LeftButton); });
    }
    m_events.emplace_back("double click", [this] { sendMouse(QEvent::MouseButtonDblClick, Qt::LeftButton); });
    for (int weight = 0; weight < 2; ++weight) {
        m_events.emplace_back("menu", [this] {
            const QPoint point = anyPoint();
            TrussView* canvas = m_test->canvas();
            QContextMenuEvent event(QContextMenuEvent::Mouse, point, canvas->mapToGlobal(point));
            QCoreApplication::sendEvent(canvas, &event);
        });
    }
    m_events.emplace_back("paint", [this] { (void)m_test->canvas()->grab(); });
}

void TestMonkey::listFieldEvents()
{
    for (const char* name : {"trussLength", "trussWeight", "limitCPL", "screenWidth", "screenHeight",
                             "screenWeightM2", "bumperWeight", "cablePercent", "newLoadMass", "newLoadName",
                             "motorName", "motorCapacity", "motorSelfWeight", "loadName", "loadMass"})
        m_events.emplace_back(QByteArray("type ") + name, [this, name] { typeInto(m_test->field(name)); });
    for (const char* name : {"loadCount", "screenCount"})
        m_events.emplace_back(QByteArray("count ") + name,
                              [this, name] { m_test->box(name)->setValue(random(1, 4)); });
}

void TestMonkey::listWindowEvents()
{
    for (const QString& text :
         {u"+ Motor"_s, u"+ Carga"_s, u"AÑADIR PANTALLA"_s, u"↩️ DESHACER"_s, u"Eliminar Motor"_s,
          u"Eliminar Carga"_s, u"🔄 RESTAURAR PROYECTO"_s, u"⚡ FACTOR DINÁMICO"_s, u"⚖️ INFO LEGAL"_s,
          u"+"_s, u"📊 GENERAR INFORME ESTRUCTURAL"_s, u"← VOLVER AL DISEÑO"_s})
        m_events.emplace_back(text.toUtf8(), [this, text] {
            if (text != u"+"_s || m_test->tabBar()->count() < 5)
                m_test->button(text)->click();
        });
    m_events.emplace_back("undo keys",
                          [this] { QTest::keyClick(&m_test->window, Qt::Key_Z, Qt::ControlModifier); });
    m_events.emplace_back("undo", [this] { m_test->window.undo(); });
    m_events.emplace_back(
        "tab", [this] { m_test->tabBar()->setCurrentIndex(random(0, m_test->tabBar()->count() - 1)); });
    m_events.emplace_back("close tab",
                          [this] { m_test->window.onCloseTab(random(0, m_test->tabBar()->count() - 1)); });
    m_events.emplace_back("move tab", [this] {
        const int last = m_test->tabBar()->count() - 1;
        m_test->tabBar()->moveTab(random(0, last), random(0, last));
    });
    m_events.emplace_back("rename", [this] { m_test->window.onRenameTab(random(-1, 2)); });
    m_events.emplace_back("tab menu", [this] {
        emit m_test->tabBar()->customContextMenuRequested(QPoint(random(0, 300), 10));
    });
    m_events.emplace_back("events", [] { QCoreApplication::processEvents(); });
}

void TestMonkey::listFileEvents()
{
    const QString path = m_folder.filePath(u"mono ñ #1.rig"_s);
    m_events.emplace_back("save", [this, path] {
        if (!ProjectFile::write(path, m_test->window.captureCurrentState()))
            m_wrong = u"a project that cannot be saved"_s;
    });
    m_events.emplace_back("open", [this, path] {
        const bool exists = QFile::exists(path);
        if (m_test->window.openProjectFile(path) != exists)
            m_wrong = u"a saved project that cannot be opened"_s;
    });
    m_events.emplace_back("open what is none", [this] { m_test->window.openProjectFile(m_folder.path()); });
    m_events.emplace_back("open several", [this, path] {
        if (m_test->tabBar()->count() < 5)
            m_test->window.openProjectFiles({path, path});
    });
    m_events.emplace_back("print", [this] {
        if (random(1, REPORT_RARITY) == 1)
            m_test->window.onPrintReportClicked();
    });
}

void TestMonkey::answer(QWidget* open)
{
    if (auto* menu = qobject_cast<QMenu*>(open); menu != nullptr) {
        if (random(0, 3) == 0 || menu->actions().isEmpty()) {
            menu->close();
            return;
        }
        menu->setActiveAction(anyOf(menu->actions()));
        QTest::keyClick(menu, Qt::Key_Return);
        return;
    }
    const auto fields = open->findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        field->selectAll();
        QTest::keyClicks(field, anyText());
    }
    auto* dialog = qobject_cast<QDialog*>(open);
    if (auto* box = qobject_cast<QMessageBox*>(open); box != nullptr && random(0, 1) == 0)
        anyOf(box->buttons())->click();
    else if (dialog != nullptr)
        dialog->done(random(0, 1));
    else
        open->close();
}

void TestMonkey::answerDialogs()
{
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* open = popup != nullptr ? popup : QApplication::activeModalWidget();
    if (open != nullptr && open->isVisible())
        answer(open);
}

void TestMonkey::checkIds()
{
    std::set<int> motors;
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        if (!motors.insert(motor.id).second)
            m_wrong = u"a motor's id twice"_s;
    }
    std::set<int> loads;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (!loads.insert(load.id).second)
            m_wrong = u"a load's id twice"_s;
        if (load.id >= LoadLogic::NextLoadId)
            m_wrong = u"a load's id that is still to come"_s;
    }
}

void TestMonkey::checkPositions()
{
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList)) {
        if (!isWithin(motor.positionX, LoadLogic::TrussLength))
            m_wrong = u"a motor off the truss"_s;
    }
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (!isWithin(load.positionX, LoadLogic::TrussLength))
            m_wrong = u"a load off the truss"_s;
        if (!std::isfinite(load.mass))
            m_wrong = u"a load of no finite mass"_s;
    }
    if (!(LoadLogic::TrussLength >= 1.0F))
        m_wrong = u"a truss too short"_s;
}

void TestMonkey::checkSelection()
{
    const MainWindow& window = m_test->window;
    if (window.selectedLoadId != -1 && window.selectedMotorIndex != -1)
        m_wrong = u"two things selected"_s;
    if (m_test->undoDepth() > 20)
        m_wrong = u"too many undo steps"_s;
    if (window.isRestoring)
        m_wrong = u"still restoring"_s;
    if (window.projects.size() != m_test->tabBar()->count())
        m_wrong = u"tabs and projects apart"_s;
    if (!m_test->motorPanel()->isHidden() && !m_test->loadPanel()->isHidden())
        m_wrong = u"two panels open"_s;
}

/// An open panel that can be edited shows what is selected.
void TestMonkey::checkPanels()
{
    const MainWindow& window = m_test->window;
    const QWidget* motorPanel = m_test->motorPanel();
    if (!motorPanel->isHidden() && motorPanel->isEnabled() && window.selectedMotorIndex >= 0
        && window.selectedMotorIndex < LoadLogic::MotorList.size()
        && LoadLogic::MotorList.at(window.selectedMotorIndex).modelName != m_test->text("motorName"))
        m_wrong = u"the motor panel shows another motor"_s;
    const QWidget* loadPanel = m_test->loadPanel();
    const LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(window.selectedLoadId);
    if (!loadPanel->isHidden() && loadPanel->isEnabled() && load != nullptr
        && load->name != m_test->text("loadName"))
        m_wrong = u"the load panel shows another load"_s;
}

/// What the motors carry is what hangs: all masses and the truss itself. Two motors at one place with a
/// load exactly there carry no number at all, so such layouts are left out.
void TestMonkey::checkConservation()
{
    const auto& motors = std::as_const(LoadLogic::MotorList);
    if (motors.isEmpty())
        return;
    for (qsizetype i = 1; i < motors.size(); ++i) {
        if (motors.at(i).positionX - motors.at(i - 1).positionX < 1e-4F)
            return;
    }
    double carried = 0.0;
    double size = 0.0;
    for (const LoadLogic::Motor& motor : motors) {
        carried += static_cast<double>(motor.staticLoad);
        size += std::abs(static_cast<double>(motor.staticLoad));
    }
    double hung =
        static_cast<double>(LoadLogic::TrussSelfWeight) * static_cast<double>(LoadLogic::TrussLength);
    size += hung;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        hung += static_cast<double>(load.mass);
        size += std::abs(static_cast<double>(load.mass));
    }
    if (!(std::abs(carried - hung) <= TOLERANCE * size + TOLERANCE))
        m_wrong = u"carried %1 kg, hung %2 kg"_s.arg(QString::number(carried), QString::number(hung));
}

void TestMonkey::check()
{
    checkIds();
    checkPositions();
    checkSelection();
    checkPanels();
    checkConservation();
}

void TestMonkey::startOver()
{
    LoadLogic::ActiveLoads.clear();
    m_test->window.hidePropertyPanels();
    m_test->window.undoStack.clear();
    m_test->window.updateCalculations();
}

void TestMonkey::anyEvents_keepTheProjectSound()
{
    Support::TestWindow test;
    m_test = &test;
    QVERIFY(test.activate());
    test.canvas()->resize(800, 600);
    listEvents();
    QTimer paws;
    connect(&paws, &QTimer::timeout, this, &TestMonkey::answerDialogs);
    paws.start(0);

    const int wanted = qEnvironmentVariableIntValue("VELMORA_MONKEY_EVENTS");
    const int count = wanted > 0 ? wanted : USUAL_EVENTS;
    QByteArrayList last;
    for (int i = 0; i < count; ++i) {
        const auto& [name, event] =
            m_events[static_cast<std::size_t>(random(0, static_cast<int>(m_events.size()) - 1))];
        last.append(name);
        if (last.size() > 12)
            last.removeFirst();
        event();
        check();
        QVERIFY2(m_wrong.isEmpty(),
                 (m_wrong.toUtf8() + " after event " + QByteArray::number(i) + ": " + last.join(", "))
                     .constData());
        if (LoadLogic::ActiveLoads.size() > MANY_LOADS)
            startOver();
    }
    m_test = nullptr;
}

QTEST_MAIN(TestMonkey)
#include "tst_monkey.moc"
