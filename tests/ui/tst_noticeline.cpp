#include "io/ProjectFile.h"
#include "support/Browser.h"
#include "support/Dialogs.h"
#include "support/TemporaryDirectory.h"
#include "support/Window.h"
#include "ui/ContrastDialog.h"
#include "ui/NoticeLine.h"
#include "ui/ProjectTabBar.h"

#include <QAccessible>
#include <QHash>
#include <QInputDialog>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

using Kind = Notice::Kind;

Notice notice(const QString& id, const QString& text = u"Un aviso."_s, Kind kind = Kind::Recovery)
{
    return {kind, id, text};
}

} // namespace

/// The line over the canvas in a real window: what brings its notices and takes them away.
class TestNoticeLine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
        m_line = m_test->window.findChild<NoticeLine*>();
        m_test->window.resize(1024, 700);
        QVERIFY(m_test->activate());
        m_test->window.resize(1024, 700);
        settle();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void line_isHiddenWithNothingToSay();
    void line_movesNothingAndPaintsNothingOver();
    void line_leavesFlexionFree_data();
    void line_leavesFlexionFree();
    void line_followsTheCanvas();
    void counter_goesThroughTheNotices();
    void keys_goThroughTheNoticesAndPress();
    void line_keepsWhatItShowsUntilThereIsNews();
    void line_isAnAlertForScreenReaders();
    void tabKey_leadsFromTheCanvasToTheLine();
    void manySteps_areOneOpinion();
    void tipping_comesAndGoes();
    void unusedField_comesAndGoes_data();
    void unusedField_comesAndGoes();
    void unusedField_click_entersIt();
    void unusedPanelField_comesAndGoes();
    void massOfNoLoad_tellsTheUsualOne();
    void narrowScreen_tellsTheHangingOne();
    void editedLoad_isReleasedByEsc();
    void editedLoad_isReleasedByAClick();
    void esc_inADialog_releasesNothing();
    void esc_withoutALoad_doesNothing();
    void draggedTabs_comeAndGo();
    void draggedTabs_areKnownAfterOneIsClosed();
    void draggedTabs_goWithAClick();
    void savedFile_comesAndGoes();
    void markupInANewProject_isToldUntilTheClick();
    void markupInAnyTab_isToldBeforeTheReport();
    void secondOfTwoFiles_isSeen();
    void strangeNotice_isHandedOn();

private:
    [[nodiscard]] bool says(const QString& part) const
    {
        for (const Notice& told : m_line->notices()) {
            if (told.text.contains(part))
                return !m_line->isHidden();
        }
        return false;
    }
    [[nodiscard]] QString shown() const
    {
        return m_line->isHidden() ? QString() : m_line->shown().text;
    }
    /// Until what was scheduled is done.
    static void settle()
    {
        QTest::qWait(150);
    }

    std::optional<Support::TestWindow> m_test;
    NoticeLine* m_line = nullptr;
};

void TestNoticeLine::line_isHiddenWithNothingToSay()
{
    QVERIFY(m_line->isHidden());
    QCOMPARE(m_line->parentWidget(), m_test->canvas()->parentWidget());
    m_test->window.keepNotice(notice(u"x"_s));
    QTRY_VERIFY(m_line->isVisible());
    m_test->window.dropNotice(u"x"_s);
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::line_movesNothingAndPaintsNothingOver()
{
    const auto geometries = [this] {
        QHash<const QWidget*, QRect> all;
        const auto widgets = m_test->window.findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            if (widget != m_line && widget->isVisible())
                all.insert(widget, widget->geometry());
        }
        return all;
    };
    m_test->window.blinkTimer->stop();
    const QImage picture = m_test->canvas()->grab().toImage(); // places what is hidden as well
    const auto before = geometries();
    m_test->window.keepNotice(notice(u"x"_s, u"Un aviso muy largo. "_s.repeated(20)));
    QTRY_VERIFY(m_line->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(geometries(), before);
    QCOMPARE(m_test->canvas()->grab().toImage(), picture);
}

void TestNoticeLine::line_leavesFlexionFree_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("text");
    for (const QSize size : {QSize(1024, 700), QSize(800, 500), QSize(1920, 1080)}) {
        const QString tag = QString::number(size.width());
        QTest::newRow(qPrintable(tag + u" short"_s)) << size << u"Un aviso."_s;
        QTest::newRow(qPrintable(tag + u" long"_s)) << size << u"Un aviso muy largo. "_s.repeated(30);
    }
}

void TestNoticeLine::line_leavesFlexionFree()
{
    QFETCH(QSize, size);
    QFETCH(QString, text);
    m_test->window.resize(size);
    m_test->window.keepNotice(notice(u"x"_s, text));
    QTRY_VERIFY(m_line->isVisible());
    QCoreApplication::processEvents();
    const QRect canvas = static_cast<QWidget*>(m_test->canvas())->geometry();
    const int flexionBottom = canvas.top() + canvas.height() / 2 + 125 + 25;
    QVERIFY(m_line->geometry().top() >= flexionBottom);
    QVERIFY(canvas.contains(m_line->geometry()));
    QVERIFY(m_line->height() >= QFontMetrics(m_line->font()).height());
}

void TestNoticeLine::line_followsTheCanvas()
{
    m_test->window.keepNotice(notice(u"x"_s));
    QTRY_VERIFY(m_line->isVisible());
    const int before = m_line->geometry().center().x();
    m_test->window.resize(1500, 900);
    QCoreApplication::processEvents();
    const QRect canvas = static_cast<QWidget*>(m_test->canvas())->geometry();
    QVERIFY(m_line->geometry().center().x() > before);
    QVERIFY(qAbs(m_line->geometry().center().x() - canvas.center().x()) <= 1);
    QVERIFY(canvas.bottom() - m_line->geometry().bottom() < 10);
}

void TestNoticeLine::counter_goesThroughTheNotices()
{
    m_test->window.keepNotice(notice(u"a"_s, u"Uno."_s));
    QTRY_COMPARE(shown(), u"Uno."_s);
    QCOMPARE(m_line->counter(), QString());
    QVERIFY(m_line->forwardArrow().isEmpty());

    m_test->window.keepNotice(notice(u"b"_s, u"Dos."_s));
    m_test->window.keepNotice(notice(u"c"_s, u"Tres."_s));
    QTRY_COMPARE(m_line->counter(), u"1 de 3"_s);
    const auto click = [this](const QRect& arrow) {
        QTest::mouseClick(m_line, Qt::LeftButton, {}, arrow.center());
    };
    click(m_line->forwardArrow());
    QCOMPARE(shown(), u"Dos."_s);
    QCOMPARE(m_line->counter(), u"2 de 3"_s);
    click(m_line->backArrow());
    click(m_line->backArrow());
    QCOMPARE(shown(), u"Tres."_s);
    click(m_line->forwardArrow());
    QCOMPARE(shown(), u"Uno."_s);
}

void TestNoticeLine::keys_goThroughTheNoticesAndPress()
{
    m_test->window.keepNotice(notice(u"a"_s, u"Uno."_s));
    m_test->window.keepNotice(notice(u"b"_s, u"Dos."_s));
    QTRY_COMPARE(m_line->counter(), u"1 de 2"_s);
    m_line->setFocus();
    QSignalSpy activated(m_line, &NoticeLine::activated);
    QTest::keyClick(m_line, Qt::Key_Right);
    QCOMPARE(shown(), u"Dos."_s);
    QTest::keyClick(m_line, Qt::Key_Return);
    QTest::keyClick(m_line, Qt::Key_Left);
    QTest::keyClick(m_line, Qt::Key_Space);
    QCOMPARE(activated.size(), 2);
    QCOMPARE(activated.at(0).constFirst().toString(), u"b"_s);
    QCOMPARE(activated.at(1).constFirst().toString(), u"a"_s);
}

void TestNoticeLine::line_keepsWhatItShowsUntilThereIsNews()
{
    m_line->setNotices({notice(u"a"_s), notice(u"b"_s)});
    m_line->go(1);
    m_line->setNotices({notice(u"a"_s, u"Otra cifra."_s), notice(u"c"_s), notice(u"b"_s)});
    QCOMPARE(m_line->shown().id, u"b"_s);
    m_line->setNotices({notice(u"a"_s), notice(u"c"_s)});
    QCOMPARE(m_line->shown().id, u"a"_s);
    m_line->go(1);
    m_line->setNotices({notice(u"n"_s), notice(u"a"_s), notice(u"c"_s)});
    QCOMPARE(m_line->shown().id, u"n"_s);
}

void TestNoticeLine::line_isAnAlertForScreenReaders()
{
    m_line->setNotices({notice(u"a"_s, u"Uno."_s)});
    QAccessibleInterface* line = QAccessible::queryAccessibleInterface(m_line);
    QCOMPARE(line->role(), QAccessible::AlertMessage);
    QCOMPARE(line->text(QAccessible::Name), u"Uno."_s);
    m_line->setNotices({notice(u"a"_s, u"Otra cifra."_s), notice(u"b"_s)});
    QCOMPARE(line->text(QAccessible::Name), u"Otra cifra."_s);

    QSignalSpy activated(m_line, &NoticeLine::activated);
    line->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(activated.size(), 1);
}

void TestNoticeLine::tabKey_leadsFromTheCanvasToTheLine()
{
    m_test->window.keepNotice(notice(u"x"_s));
    QTRY_VERIFY(m_line->isVisible());
    QWidget* report = m_test->button(u"📊 GENERAR INFORME ESTRUCTURAL"_s);
    report->setFocus();
    QTest::keyClick(report, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), m_line);
}

void TestNoticeLine::manySteps_areOneOpinion()
{
    m_test->setText("trussLength", u"0.5"_s);
    for (int i = 0; i < 100; ++i)
        m_test->window.onPositionChanged(-1);
    QVERIFY(m_line->isHidden());
    QTRY_VERIFY(m_line->isVisible());
}

// 100.8 kg at 6 m and 200 kg at 12 m lie at 9.99 m.
void TestNoticeLine::tipping_comesAndGoes()
{
    LoadLogic::MotorList[1].positionX = 7.0F;
    m_test->hangLoad(200.0F, 12.0F);
    QTRY_VERIFY(shown().startsWith(u"VUELCA: "_s));
    QTest::mouseClick(m_line, Qt::LeftButton, {}, QPoint(20, m_line->height() / 2));
    QTRY_VERIFY(m_test->window.findChild<ContrastDialog*>()->isVisible());
    LoadLogic::MotorList[1].positionX = 12.0F;
    m_test->window.updateCalculations();
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::unusedField_comesAndGoes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    QTest::newRow("length") << QByteArray("trussLength") << u"0.5"_s
                            << u"Longitud (m): «0.5» no se usa; cuenta 12."_s;
    QTest::newRow("empty length") << QByteArray("trussLength") << QString()
                                  << u"Longitud (m): está vacío; cuenta 12."_s;
    QTest::newRow("weight") << QByteArray("trussWeight") << QString()
                            << u"Peso (kg/m): está vacío; cuenta 0."_s;
    QTest::newRow("negative weight") << QByteArray("trussWeight") << u"-2"_s
                                     << u"Peso (kg/m): «-2» no se usa; cuenta 8.4."_s;
    QTest::newRow("CPL") << QByteArray("limitCPL") << QString() << u"Sin CPL no hay estrés"_s;
    QTest::newRow("screen height") << QByteArray("screenHeight") << u"x"_s
                                   << u"Alto (m): «x» no se usa; cuenta 0."_s;
    QTest::newRow("screen cable") << QByteArray("cablePercent") << QString()
                                  << u"Cable (%): está vacío; cuenta 0."_s;
    QTest::newRow("mass") << QByteArray("newLoadMass") << QString()
                          << u"Carga (kg): está vacío; cuenta 500."_s;
}

void TestNoticeLine::unusedField_comesAndGoes()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    QFETCH(QString, told);
    const QString before = m_test->text(name.constData());
    m_test->setText(name.constData(), text);
    QTRY_VERIFY2(shown().startsWith(told), qUtf8Printable(shown()));
    m_test->setText(name.constData(), before);
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::unusedField_click_entersIt()
{
    m_test->setText("screenHeight", QString());
    QTRY_VERIFY(m_line->isVisible());
    QTest::mouseClick(m_line, Qt::LeftButton, {}, QPoint(20, m_line->height() / 2));
    QCOMPARE(QApplication::focusWidget(), m_test->field("screenHeight"));
    m_test->setText("screenHeight", u"3"_s);
    m_test->setText("limitCPL", u"0"_s);
    QTRY_VERIFY(shown().startsWith(u"Sin CPL"_s));
    m_line->activate();
    QCOMPARE(QApplication::focusWidget(), m_test->field("limitCPL"));
}

void TestNoticeLine::unusedPanelField_comesAndGoes()
{
    m_test->window.showMotorProperties(0);
    m_test->setText("motorCapacity", QString());
    QTRY_COMPARE(shown(), u"Capacidad (kg): está vacío; cuenta 0."_s);
    m_test->window.hidePropertyPanels();
    QTRY_VERIFY(m_line->isHidden());

    const int id = m_test->hangLoad(30.0F, 6.0F);
    m_test->window.showLoadProperties(id);
    m_test->setText("loadMass", QString());
    QTRY_VERIFY(says(u"Masa (kg): está vacío; cuenta 0."_s));
    m_test->setText("loadMass", u"30"_s);
    QTRY_VERIFY(!says(u"Masa (kg)"_s));
}

void TestNoticeLine::massOfNoLoad_tellsTheUsualOne()
{
    m_test->setText("newLoadMass", u"0"_s);
    QTRY_COMPARE(shown(), u"Carga (kg): «0» no se usa; cuenta 500."_s);
    m_test->window.onAddLoadClicked();
    QCOMPARE(LoadLogic::ActiveLoads.constLast().mass, 500.0F);
    // Now it edits that load, whose mass it may set to 0.
    m_test->setText("newLoadMass", u"0"_s);
    QTRY_VERIFY(!says(u"Carga (kg)"_s));
    m_test->setText("newLoadMass", QString());
    QTRY_VERIFY(says(u"Carga (kg): está vacío; cuenta 0."_s));
}

void TestNoticeLine::narrowScreen_tellsTheHangingOne()
{
    m_test->addScreen();
    m_test->setText("screenWidth", u"0.05"_s);
    QTRY_VERIFY(says(u"Ancho (m): «0.05» no se usa; cuenta 4."_s));
    m_test->setText("screenWidth", u"2"_s);
    QTRY_VERIFY(!says(u"Ancho (m)"_s));
}

void TestNoticeLine::editedLoad_isReleasedByEsc()
{
    for (const char* name : {"newLoadMass", "trussLength", "newLoadName"}) {
        m_test->window.onAddLoadClicked();
        QTRY_COMPARE(shown(), u"Editando: Carga — Esc la suelta"_s);
        m_test->field(name)->setFocus();
        QTest::keyClick(m_test->field(name), Qt::Key_Escape);
        QCOMPARE(m_test->window.selectedLoadId, -1);
        QVERIFY(m_test->loadPanel()->isHidden());
        QTRY_VERIFY(m_line->isHidden());
    }
    m_test->window.onAddLoadClicked();
    m_test->box("loadCount")->setFocus();
    QTest::keyClick(m_test->box("loadCount"), Qt::Key_Escape);
    QCOMPARE(m_test->window.selectedLoadId, -1);
}

void TestNoticeLine::editedLoad_isReleasedByAClick()
{
    m_test->window.onAddLoadClicked();
    QTRY_VERIFY(m_line->isVisible());
    QTest::mouseClick(m_line, Qt::LeftButton, {}, QPoint(20, m_line->height() / 2));
    QCOMPARE(m_test->window.selectedLoadId, -1);
}

void TestNoticeLine::esc_inADialog_releasesNothing()
{
    m_test->window.onAddLoadClicked();
    const int selected = m_test->window.selectedLoadId;
    Support::Answer<QInputDialog> esc(
        [](QInputDialog& dialog) { QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Escape); });
    m_test->window.onRenameTab(0);
    QVERIFY(esc.given());
    QCOMPARE(m_test->window.selectedLoadId, selected);
}

void TestNoticeLine::esc_withoutALoad_doesNothing()
{
    m_test->window.showMotorProperties(1);
    m_test->field("motorName")->setFocus();
    QTest::keyClick(m_test->field("motorName"), Qt::Key_Escape);
    QCOMPARE(m_test->window.selectedMotorIndex, 1);
    QVERIFY(!m_test->motorPanel()->isHidden());
}

void TestNoticeLine::draggedTabs_comeAndGo()
{
    m_test->window.onAddTab();
    m_test->window.onAddTab();
    m_test->tabBar()->moveTab(0, 2);
    QTRY_COMPARE(shown(), u"Las pestañas arrastradas llevan su título, no su proyecto."_s);
    m_test->tabBar()->moveTab(2, 0);
    QTRY_VERIFY(m_line->isHidden());
}

// "Proyecto 2" and the first project go together; what is left is the title of the one over the other.
void TestNoticeLine::draggedTabs_areKnownAfterOneIsClosed()
{
    m_test->window.onAddTab();
    m_test->window.onAddTab();
    const auto* bar = qobject_cast<const ProjectTabBar*>(m_test->tabBar());
    m_test->tabBar()->moveTab(0, 1);
    m_test->window.onCloseTab(0);
    QCOMPARE(m_test->tabBar()->tabText(0), u"Proyecto 1"_s);
    QVERIFY(!bar->titlesStandByTheirProjects());
    m_test->window.onCloseTab(0);
    QCOMPARE(m_test->tabBar()->tabText(0), u"Proyecto 3"_s);
    QVERIFY(bar->titlesStandByTheirProjects());
}

void TestNoticeLine::draggedTabs_goWithAClick()
{
    m_test->window.onAddTab();
    m_test->tabBar()->moveTab(0, 1);
    QTRY_VERIFY(m_line->isVisible());
    m_line->activate();
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::savedFile_comesAndGoes()
{
    const QTemporaryDir folder;
    const auto save = [&](const QString& name) {
        Support::FileAnswer file(folder.filePath(name));
        Support::BoxAnswer box(QMessageBox::Ok);
        m_test->window.onSaveProjectClicked();
        return file.given() && box.given();
    };
    QVERIFY(save(u"gira"_s));
    QTRY_COMPARE(shown(), u"«gira» se guardó sin la extensión .rig: ABRIR no lo mostrará en su lista."_s);
    QVERIFY(save(u"gira.rig"_s));
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::markupInANewProject_isToldUntilTheClick()
{
    const QTemporaryDir folder;
    const QString text = u"«<b>Gira» es código HTML: el navegador no lo mostrará así en el informe, y al "
                         "abrirlo puede pedir páginas de otros."_s;
    ProjectState project = LoadLogic::Snapshot();
    QVERIFY(ProjectFile::write(folder.filePath(u"gira.rig"_s), project));
    QVERIFY(m_test->window.openProjectFile(folder.filePath(u"gira.rig"_s)));
    project.motors[0].modelName = u"<b>Gira"_s;
    QVERIFY(ProjectFile::write(folder.filePath(u"ajena.rig"_s), project));
    QVERIFY(m_test->window.openProjectFile(folder.filePath(u"ajena.rig"_s)));
    QTRY_COMPARE(shown(), text);
    QCOMPARE(m_line->notices().size(), 1);
    m_line->activate();
    QTRY_VERIFY(m_line->isHidden());
}

void TestNoticeLine::markupInAnyTab_isToldBeforeTheReport()
{
    const Support::TemporaryDirectory folder;
    const Support::Browser browser;
    LoadLogic::MotorList[0].modelName = u"<b>Gira"_s;
    m_test->window.onAddTab();
    m_test->tabBar()->setCurrentIndex(1);
    const Support::BoxAnswer box(QMessageBox::Ok);
    m_test->window.onPrintReportClicked();
    QVERIFY(box.given());
    QTRY_VERIFY(shown().startsWith(u"«<b>Gira» es código HTML"_s));
}

// Opened before the first picture, as at the start: the hyperstatic label of the first comes and goes,
// the canvas moves, and the line stays painted over it while the warnings blink.
void TestNoticeLine::secondOfTwoFiles_isSeen()
{
    const QString examples = QStringLiteral(VELMORA_SOURCE_DIR "/examples/");
    m_test->window.hide(); // it could lie over the other
    MainWindow window;
    window.show();
    QTimer::singleShot(0, &window, [&] {
        window.openProjectFiles({examples + u"concierto.rig"_s, examples + u"vuelca.rig"_s});
    });
    const auto* line = window.findChild<NoticeLine*>();
    QTRY_VERIFY(line->isVisible());
    QVERIFY(line->shown().text.startsWith(u"VUELCA: "_s));
    QTest::qWait(600);
    const QPoint stripe = line->mapTo(&window, QPoint(1, line->height() / 2));
    const auto seen = [&] {
        return window.screen()->grabWindow(window.winId()).toImage().pixelColor(stripe);
    };
    QTRY_COMPARE(seen(), QColor(0xFF, 0x50, 0x50));
}

void TestNoticeLine::strangeNotice_isHandedOn()
{
    QSignalSpy picked(&m_test->window, &MainWindow::noticePicked);
    m_test->window.keepNotice(
        notice(u"recovery"_s, u"Hay trabajo sin cerrar de las 12:30: recuperar (F9)"_s));
    m_test->window.keepNotice(
        notice(u"recovery"_s, u"Hay trabajo sin cerrar de las 12:31: recuperar (F9)"_s));
    QTRY_COMPARE(shown(), u"Hay trabajo sin cerrar de las 12:31: recuperar (F9)"_s);
    QCOMPARE(m_line->notices().size(), 1);
    m_line->activate();
    QCOMPARE(picked.size(), 1);
    QCOMPARE(picked.constFirst().constFirst().toString(), u"recovery"_s);
    QVERIFY(m_line->isVisible());
}

QTEST_MAIN(TestNoticeLine)
#include "tst_noticeline.moc"
