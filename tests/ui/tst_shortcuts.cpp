#include "engine/Edits.h"
#include "io/ProjectFile.h"
#include "support/Browser.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QDir>
#include <QInputDialog>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

LoadLogic::ProjectState projectOfTwentyMetres()
{
    LoadLogic::ProjectState project = Edits::freshProject(u"Veinte"_s, 50.0F);
    project.trussLength = 20.0F;
    return project;
}

} // namespace

/// The keys of the window, wherever the focus is.
class TestShortcuts : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
        QVERIFY(m_test->activate());
    }
    void cleanup()
    {
        m_test.reset();
    }

    void ctrlO_opensAProject();
    void ctrlS_savesTheProject();
    void ctrlT_addsATab();
    void ctrlPageKeys_goThroughTheTabs();
    void ctrlPageKeys_withOneTab_stay();
    void f2_renamesTheCurrentTab();
    void ctrlI_showsTheReport();
    void f1_opensTheGuide();
    void ctrlW_closesNothing();
    void keys_actFromEveryField_data();
    void keys_actFromEveryField();
    void fieldsKeepTheirEditingKeys();
    void onTheReportPage_onlySavingAndTheGuideAct();
    void duringADrag_nothingActs();
    void tips_tellTheKeys_data();
    void tips_tellTheKeys();
    void tabMenu_tellsItsKey();
    void canvasMenus_tellTheirKey();

private:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* focused = QApplication::focusWidget();
        QTest::keyClick(focused == nullptr ? &m_test->window : focused, key, modifiers);
    }
    [[nodiscard]] int page() const
    {
        return qobject_cast<QStackedWidget*>(m_test->window.centralWidget())->currentIndex();
    }

    std::optional<Support::TestWindow> m_test;
};

void TestShortcuts::ctrlO_opensAProject()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"veinte.rig"_s);
    QVERIFY(ProjectFile::write(path, projectOfTwentyMetres()));
    const Support::FileAnswer file(path);
    press(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(file.given());
    QCOMPARE(file.mode, QFileDialog::AcceptOpen);
    QCOMPARE(LoadLogic::TrussLength, 20.0F);
}

void TestShortcuts::ctrlS_savesTheProject()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"guardado.rig"_s);
    const Support::FileAnswer file(path);
    QTimer ok;
    connect(&ok, &QTimer::timeout, &ok, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
    });
    ok.start(5);
    press(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(file.given());
    QCOMPARE(file.mode, QFileDialog::AcceptSave);
    QVERIFY(QFile::exists(path));
}

void TestShortcuts::ctrlT_addsATab()
{
    press(Qt::Key_T, Qt::ControlModifier);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(m_test->window.currentProjectIndex, 1);
}

void TestShortcuts::ctrlPageKeys_goThroughTheTabs()
{
    m_test->window.onAddTab();
    m_test->window.onAddTab();
    const auto reached = [this](Qt::Key key) {
        press(key, Qt::ControlModifier);
        return m_test->window.currentProjectIndex;
    };
    QCOMPARE(reached(Qt::Key_PageUp), 1);
    QCOMPARE(reached(Qt::Key_PageUp), 0);
    QCOMPARE(reached(Qt::Key_PageUp), 2); // round the end
    QCOMPARE(reached(Qt::Key_PageDown), 0);
    QCOMPARE(reached(Qt::Key_PageDown), 1);
}

void TestShortcuts::ctrlPageKeys_withOneTab_stay()
{
    press(Qt::Key_PageUp, Qt::ControlModifier);
    press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(m_test->tabBar()->currentIndex(), 0);
    QCOMPARE(m_test->undoDepth(), 0);
}

void TestShortcuts::f2_renamesTheCurrentTab()
{
    m_test->window.onAddTab();
    const Support::Answer<QInputDialog> name([](QInputDialog& dialog) {
        dialog.setTextValue(u"Gira %1 <b>"_s);
        dialog.accept();
    });
    press(Qt::Key_F2);
    QVERIFY(name.given());
    QCOMPARE(m_test->tabBar()->tabText(1), u"Gira %1 <b>"_s);
    QCOMPARE(m_test->tabBar()->tabText(0), u"Proyecto 1"_s);
}

void TestShortcuts::ctrlI_showsTheReport()
{
    press(Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(page(), 1);
    press(Qt::Key_Escape);
    QCOMPARE(page(), 0);
}

void TestShortcuts::f1_opensTheGuide()
{
    const QString guide = QCoreApplication::applicationDirPath() + u"/user_guide.html"_s;
    QFile file(guide);
    const bool isMine = !file.exists();
    QVERIFY(!isMine || file.open(QIODevice::WriteOnly));
    {
        const Support::Browser browser;
        press(Qt::Key_F1);
        QCOMPARE(browser.urls, QList<QUrl>{QUrl::fromLocalFile(guide)});
    }
    if (isMine)
        file.remove();
}

void TestShortcuts::ctrlW_closesNothing()
{
    m_test->window.onAddTab();
    press(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QVERIFY(m_test->window.isVisible());
}

void TestShortcuts::keys_actFromEveryField_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"newLoadMass", "newLoadName", "loadCount", "trussLength", "screenCount"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestShortcuts::keys_actFromEveryField()
{
    QFETCH(QString, name);
    m_test->window.findChild<QWidget*>(name)->setFocus();
    press(Qt::Key_T, Qt::ControlModifier);
    QCOMPARE(m_test->tabBar()->count(), 2);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(m_test->window.currentProjectIndex, 0);
    press(Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(page(), 1);
}

void TestShortcuts::fieldsKeepTheirEditingKeys()
{
    m_test->hangLoad(100.0F, 3.0F);
    QLineEdit* name = m_test->field("newLoadName");
    name->setText(u"Carga"_s);
    name->setFocus();
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    QCOMPARE(name->text(), u"arga"_s);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(name->selectedText(), u"a"_s);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(LoadLogic::ActiveLoads.constFirst().positionX, 3.0F);
}

void TestShortcuts::onTheReportPage_onlySavingAndTheGuideAct()
{
    m_test->window.onAddTab();
    m_test->window.onGenerateReportClicked();
    press(Qt::Key_T, Qt::ControlModifier);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    press(Qt::Key_F2);
    press(Qt::Key_O, Qt::ControlModifier);
    press(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(m_test->window.findChild<QDialog*>(u"listDialog"_s) == nullptr);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(page(), 1);
    const Support::FileAnswer none((QString()));
    press(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(none.given());
}

// Its place would be written into whatever project is current at the next move.
void TestShortcuts::duringADrag_nothingActs()
{
    m_test->window.onAddTab();
    TrussView* canvas = m_test->canvas();
    QTest::mousePress(canvas, Qt::LeftButton, {}, QPoint(canvas->marginX, canvas->height() / 2));
    QVERIFY(canvas->isDragging());
    press(Qt::Key_PageUp, Qt::ControlModifier);
    press(Qt::Key_T, Qt::ControlModifier);
    press(Qt::Key_I, Qt::ControlModifier);
    press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); // would wait in a dialog
    press(Qt::Key_F8);
    QVERIFY(m_test->window.findChild<QDialog*>(u"contrastDialog"_s) == nullptr);
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(page(), 0);
    QTest::mouseRelease(canvas, Qt::LeftButton);
    press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(m_test->window.currentProjectIndex, 0);
}

void TestShortcuts::tips_tellTheKeys_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("key");
    QTest::newRow("open") << u"📂 ABRIR"_s << u"(Ctrl+O)"_s;
    QTest::newRow("save") << u"💾 GUARDAR"_s << u"(Ctrl+S)"_s;
    QTest::newRow("undo") << u"↩️ DESHACER"_s << u"(Ctrl+Z)"_s;
    QTest::newRow("guide") << u"📘 GUÍA DE USUARIO"_s << u"(F1)"_s;
    QTest::newRow("tab") << u"+"_s << u"(Ctrl+T)"_s;
    QTest::newRow("report") << u"📊 GENERAR INFORME ESTRUCTURAL"_s << u"(Ctrl+I)"_s;
    QTest::newRow("back") << u"← VOLVER AL DISEÑO"_s << u"(Esc)"_s;
}

void TestShortcuts::tips_tellTheKeys()
{
    QFETCH(QString, button);
    QFETCH(QString, key);
    const QString tip = m_test->button(button)->toolTip();
    QVERIFY2(tip.endsWith(key), qUtf8Printable(tip));
    for (const auto& told : {u"Ctrl+RePág"_s, u"Ctrl+AvPág"_s, u"F2"_s})
        QVERIFY(m_test->tabBar()->toolTip().contains(told));
    QVERIFY(m_test->label("hyperstaticWarning")->toolTip().endsWith(u"(F8)"_s));
}

void TestShortcuts::tabMenu_tellsItsKey()
{
    QHash<QString, QKeySequence> keys;
    const Support::Answer<QMenu> menu([&keys](QMenu& open) {
        const auto actions = open.actions();
        for (const QAction* action : actions) {
            if (action->isShortcutVisibleInContextMenu())
                keys.insert(action->text(), action->shortcut());
        }
        open.close();
    });
    emit m_test->tabBar()->customContextMenuRequested(m_test->tabBar()->tabRect(0).center());
    QVERIFY(menu.given());
    QCOMPARE(keys.value(u"Renombrar"_s), QKeySequence(Qt::Key_F2));
    QCOMPARE(keys.value(u"Cerrar Pestaña"_s), QKeySequence());
}

void TestShortcuts::canvasMenus_tellTheirKey()
{
    m_test->hangLoad(100.0F, 3.0F);
    TrussView* canvas = m_test->canvas();
    const int line = canvas->height() / 2;
    const int quarter = canvas->marginX + (canvas->width() - 2 * canvas->marginX) / 4;
    for (const QPoint& point : {QPoint(canvas->marginX, line), QPoint(quarter, line + 10)}) {
        QKeySequence key;
        const Support::Answer<QMenu> menu([&key](QMenu& open) {
            const auto actions = open.actions();
            for (const QAction* action : actions) {
                if (action->text().startsWith(u"Eliminar"_s) && action->isShortcutVisibleInContextMenu())
                    key = action->shortcut();
            }
            open.close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, canvas->mapToGlobal(point));
        QCoreApplication::sendEvent(canvas, &event);
        QVERIFY(menu.given());
        QCOMPARE(key, QKeySequence(Qt::Key_Delete));
    }
}

QTEST_MAIN(TestShortcuts)
#include "tst_shortcuts.moc"
