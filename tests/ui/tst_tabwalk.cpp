#include "app/Appearance.h"
#include "canvas/MotorDialog.h"
#include "canvas/PositionDialog.h"
#include "engine/ProjectOpinion.h"
#include "io/RecoveryDialog.h"
#include "support/Dialogs.h"
#include "support/Window.h"
#include "ui/ContrastDialog.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/InfoWindow.h"
#include "ui/NoticeLine.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QSet>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// What there is for the keys in `window`: everything that can be seen and takes the focus from the Tab key,
/// and whatever can be pressed, lest it takes the focus from nobody. The tab bar has keys of its own, and so
/// has the corner of a table, which selects all of it.
QSet<QWidget*> stopsOf(const QWidget& window)
{
    QSet<QWidget*> stops;
    const auto widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const bool isInTabBar = qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr;
        const bool isPressed = qobject_cast<const QAbstractButton*>(widget) != nullptr && !isInTabBar
                               && !widget->inherits("QTableCornerButton");
        const bool isStop = (widget->focusPolicy() & Qt::TabFocus) != 0 || isPressed;
        const bool isThere = widget->isVisible() && widget->isEnabled() && widget->window() == &window;
        if (isStop && isThere && widget->focusProxy() == nullptr
            && qobject_cast<const QAbstractSpinBox*>(widget->parentWidget()) == nullptr)
            stops.insert(widget);
    }
    return stops;
}

QString names(const QSet<QWidget*>& widgets)
{
    QStringList all;
    for (const QWidget* widget : widgets)
        all.append(QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName() + u' '
                   + widget->accessibleName());
    return all.join(u"; "_s);
}

/// Those of `widgets` that a screen reader could not name.
QString nameless(const QSet<QWidget*>& widgets)
{
    QSet<QWidget*> without;
    for (QWidget* widget : widgets) {
        if (QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
            without.insert(widget);
    }
    return names(without);
}

/// What the key comes to from the focus on, until it comes to the same widget again or stays where it is.
QSet<QWidget*> walk(Qt::Key key)
{
    QSet<QWidget*> visited;
    QWidget* now = QApplication::focusWidget();
    while (now != nullptr && !visited.contains(now)) {
        visited.insert(now);
        QTest::keyClick(now, key);
        now = QApplication::focusWidget();
    }
    return visited;
}

/// What a walk with either key does not reach in `window`, from each of its stops; nothing where all is well.
QString unreached(const QWidget& window)
{
    const QSet<QWidget*> stops = stopsOf(window);
    for (QWidget* start : stops) {
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            start->setFocus(Qt::TabFocusReason);
            const QSet<QWidget*> left = stops - walk(key);
            if (!left.isEmpty())
                return u"from "_s + names({start}) + u" not reached: "_s + names(left);
        }
    }
    return {};
}

bool isActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

QList<RecoveryEntry> twoEntries()
{
    RecoveryEntry entry;
    entry.project.tabName = u"Gira"_s;
    entry.isChosen = true;
    return {entry, entry};
}

} // namespace

/// The Tab key comes to everything that can be worked, and leaves it again, either way.
class TestTabWalk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init()
    {
        m_test.emplace();
        QVERIFY(m_test->activate());
    }
    void cleanup()
    {
        m_test.reset();
    }

    void designPage_data();
    void designPage();
    void reportPage();
    void dialogs_data();
    void dialogs();
    void modalDialogs_data();
    void modalDialogs();

private:
    void openModal(const QString& name);

    std::optional<Support::TestWindow> m_test;
};

void TestTabWalk::initTestCase()
{
    Appearance::apply(*qobject_cast<QApplication*>(QCoreApplication::instance()));
}

void TestTabWalk::designPage_data()
{
    QTest::addColumn<QString>("panel");
    for (const char* panel : {"none", "motor", "load"})
        QTest::newRow(panel) << QString::fromLatin1(panel);
}

void TestTabWalk::designPage()
{
    QFETCH(QString, panel);
    const int load = m_test->hangLoad(10.0F, 3.0F);
    m_test->window.keepNotice({Notice::Kind::Names, u"x"_s, u"Dos motores se llaman igual."_s});
    auto* line = m_test->window.findChild<NoticeLine*>();
    QTRY_VERIFY(line->isVisible());
    if (panel == u"motor"_s)
        m_test->window.showMotorProperties(0);
    else if (panel == u"load"_s)
        m_test->window.showLoadProperties(load);
    QCoreApplication::processEvents();
    const QSet<QWidget*> stops = stopsOf(m_test->window);
    QVERIFY(stops.contains(m_test->canvas()));
    QVERIFY(stops.contains(line));
    QVERIFY(stops.size() >= 27);
    QVERIFY2(nameless(stops).isEmpty(), qUtf8Printable(nameless(stops)));
    const QString left = unreached(m_test->window);
    QVERIFY2(left.isEmpty(), qUtf8Printable(left));
}

void TestTabWalk::reportPage()
{
    m_test->window.onGenerateReportClicked();
    QCoreApplication::processEvents();
    QCOMPARE(stopsOf(m_test->window).size(), 4); // page, table, back, print
    const QString left = unreached(m_test->window);
    QVERIFY2(left.isEmpty(), qUtf8Printable(left));
}

void TestTabWalk::dialogs_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"contrast", "factor", "legal", "recovery"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestTabWalk::dialogs()
{
    QFETCH(QString, name);
    std::unique_ptr<QDialog> dialog;
    if (name == u"contrast"_s) {
        auto contrast = std::make_unique<ContrastDialog>(nullptr);
        const ProjectState project = LoadLogic::Snapshot();
        contrast->prepare(project);
        contrast->follow(ProjectOpinion::of(project, std::nullopt));
        dialog = std::move(contrast);
    } else if (name == u"factor"_s) {
        dialog = std::make_unique<DynamicFactorDialog>(LoadLogic::MotorList, nullptr);
    } else if (name == u"legal"_s) {
        dialog = std::make_unique<InfoWindow>(nullptr);
    } else {
        dialog = std::make_unique<RecoveryDialog>(twoEntries(), nullptr);
    }
    QVERIFY(isActive(*dialog));
    const QSet<QWidget*> stops = stopsOf(*dialog);
    QVERIFY2(stops.size() >= 2, qUtf8Printable(names(stops)));
    const QString left = unreached(*dialog);
    QVERIFY2(left.isEmpty(), qUtf8Printable(left));
}

void TestTabWalk::modalDialogs_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"position", "motor", "rename", "question", "message", "file"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestTabWalk::openModal(const QString& name)
{
    MainWindow& window = m_test->window;
    if (name == u"position"_s)
        PositionDialog::ask(&window, u"Posición"_s, 3.0F, 12.0F);
    else if (name == u"motor"_s)
        MotorDialog(LoadLogic::MotorList.constFirst(), &window).exec();
    else if (name == u"rename"_s)
        window.onRenameTab(0);
    else if (name == u"question"_s)
        window.onResetProjectClicked();
    else if (name == u"message"_s)
        window.openProjectFile(u"/nowhere"_s);
    else
        window.onSaveProjectClicked();
}

void TestTabWalk::modalDialogs()
{
    QFETCH(QString, name);
    QString left = u"never open"_s;
    const Support::Answer<QDialog> answer([&left](QDialog& dialog) {
        QApplication::setActiveWindow(&dialog);
        left = unreached(dialog);
        dialog.reject();
    });
    openModal(name);
    QVERIFY(answer.given());
    QCOMPARE(left, QString());
}

QTEST_MAIN(TestTabWalk)
#include "tst_tabwalk.moc"
