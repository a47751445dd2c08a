#include "io/ReportPage.h"
#include "support/Browser.h"
#include "support/Dialogs.h"
#include "support/ReportDocument.h"
#include "support/TemporaryDirectory.h"
#include "support/Window.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QProgressDialog>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

using Support::Answer;
using Support::BoxAnswer;
using Support::Browser;
using Support::ReportDocument;
using Support::TemporaryDirectory;
using Support::TestWindow;

namespace
{

QString reportIn(const TemporaryDirectory& folder)
{
    QFile file(folder.path(folder.files(u"informe_rigging_*.html"_s).value(0)));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

ReportPage* pageOf(const TestWindow& test)
{
    return test.window.findChild<ReportPage*>();
}

int currentPage(const TestWindow& test)
{
    return test.window.findChild<QStackedWidget*>(u"centralWidget"_s)->currentIndex();
}

/// All that the user can see of the current project, and what stands behind it.
QStringList seen(const TestWindow& test)
{
    QStringList texts;
    const auto fields = test.window.findChildren<QLineEdit*>();
    for (const QLineEdit* field : fields)
        texts.append(field->text());
    texts.append(QString::number(test.window.selectedLoadId));
    texts.append(QString::number(test.window.selectedMotorIndex));
    texts.append(QString::number(test.loadPanel()->isHidden())
                 + QString::number(test.motorPanel()->isHidden()));
    texts.append(QString::number(test.window.currentProjectIndex) + test.tabBar()->tabText(0));
    texts.append(QString::number(LoadLogic::TrussLength));
    texts.append(QString::number(LoadLogic::TrussStress_Percentage) + QString::number(LoadLogic::isUnstable));
    texts.append(QString::number(LoadLogic::LED_TotalWeight) + QString::number(LoadLogic::Screen_Width));
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        texts.append(motor.modelName + QString::number(motor.positionX) + u' '
                     + QString::number(motor.totalLoad));
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads))
        texts.append(load.name + load.type + QString::number(load.mass) + u' '
                     + QString::number(load.positionX));
    return texts;
}

/// One motor in the middle of the truss.
void makeUnstable()
{
    LoadLogic::MotorList.removeLast();
    LoadLogic::MotorList[0].positionX = 6.0F;
}

/// A project that takes a while to calculate: every load asks every motor where it stands.
LoadLogic::ProjectState largeProject()
{
    constexpr int COUNT = 10'000;
    LoadLogic::ProjectState project;
    LoadLogic::Motor motor;
    motor.positionX = project.trussLength / 2.0F;
    project.motors.fill(motor, COUNT);
    LoadLogic::ActiveLoad load;
    load.positionX = motor.positionX;
    project.loads.fill(load, COUNT);
    return project;
}

/// Presses "Cancelar" in the dialog that shows how far the report is, and keeps its label.
class Cancellation
{
public:
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

    QString label;

private:
    Answer<QProgressDialog> m_answer{[this](QProgressDialog& dialog) {
        label = dialog.labelText();
        dialog.findChild<QPushButton*>()->click();
    }};
};

/// Prints, and answers the box that says that all went well.
void print(TestWindow& test)
{
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Informe Generado"_s);
}

} // namespace

class TestWindowReports : public QObject
{
    Q_OBJECT

private slots:
    void page_isShownAndLeft();
    void page_listsEveryTabUnderItsTitle();
    void page_seesTheLatestEdits();
    void page_leavesTheDesignAsItWas();
    void page_ofASelectedSegment_keepsItSelected();
    void page_withoutProjects_isEmptyAndTouchesNothing();
    void page_keepsItsContentUntilTheNextFill();
    void page_refreshesTheSnapshotOfTheCurrentTabOnly();
    void print_writesADocumentAndADrawingForEachTab();
    void print_opensTheDocumentInTheBrowser();
    void print_leavesTheDesignAsItWas();
    void print_headlineIsTheCurrentTab();
    void print_withoutProjects_isOfNoName();
    void print_takesTitlesFromTheTabs();
    void print_namesStayAsTyped();
    void print_agreesWithThePage();
    void print_drawsEveryProject();
    void print_replacesEarlierDrawings();
    void print_doesNotFollowAPlantedLink();
    void print_withoutBrowser_tellsThePath();
    void print_intoNoFolder_isTold();
    void unsavableDrawing_isNotReported();
    void longReport_canBeCancelledWithoutATrace();
    void longPage_canBeCancelledWithoutATrace();
};

void TestWindowReports::page_isShownAndLeft()
{
    TestWindow test;
    test.button(u"📊 GENERAR INFORME ESTRUCTURAL"_s)->click();
    QCOMPARE(currentPage(test), 1);
    test.button(u"← VOLVER AL DISEÑO"_s)->click();
    QCOMPARE(currentPage(test), 0);
}

void TestWindowReports::page_listsEveryTabUnderItsTitle()
{
    TestWindow test;
    test.tabBar()->setTabText(0, u"Primero"_s);
    test.window.onAddTab();
    makeUnstable();
    test.window.onGenerateReportClicked();
    const QTableWidget* table = pageOf(test)->table();
    QCOMPARE(table->rowCount(), 3 + 2);
    QCOMPARE(table->item(0, 0)->text(), u"--- PROYECTO: Primero ---"_s);
    QCOMPARE(table->item(1, 3)->text(), u"50.0"_s); // the first project's motors are the heavier ones
    QCOMPARE(table->item(3, 0)->text(), u"--- PROYECTO: Proyecto 2 ---"_s);
    QCOMPARE(table->item(4, 3)->text(), u"25.0"_s);
    QVERIFY(pageOf(test)->certificate()->text().contains(u"ALERTA"_s));
}

void TestWindowReports::page_seesTheLatestEdits()
{
    TestWindow test;
    test.hangLoad(123.4F, 6.0F);
    test.window.onGenerateReportClicked();
    QCOMPARE(pageOf(test)->table()->item(4, 2)->text(), u"123.4 kg"_s);
    QCOMPARE(test.window.projects.at(0).loads.size(), 1);
}

void TestWindowReports::page_leavesTheDesignAsItWas()
{
    TestWindow test;
    test.window.onAddTab();
    test.setText("trussLength", u"20"_s);
    test.window.onAddTab();
    test.tabBar()->setCurrentIndex(0);
    test.hangLoad(100.0F, 3.0F);
    test.setText("screenWidth", u"4,5x"_s); // a text that no snapshot could bring back
    test.window.showMotorProperties(1);
    const QStringList before = seen(test);
    const int undoDepth = test.undoDepth();
    test.window.onGenerateReportClicked();
    QCOMPARE(seen(test), before);
    QCOMPARE(test.undoDepth(), undoDepth);
}

void TestWindowReports::page_ofASelectedSegment_keepsItSelected()
{
    TestWindow test;
    test.addScreen();
    test.window.onAddTab();
    test.tabBar()->setCurrentIndex(0);
    const QStringList before = seen(test);
    QVERIFY(test.window.selectedLoadId != -1);
    test.window.onGenerateReportClicked();
    QCOMPARE(seen(test), before);
}

void TestWindowReports::page_withoutProjects_isEmptyAndTouchesNothing()
{
    TestWindow test;
    test.window.projects.clear();
    test.window.currentProjectIndex = -1;
    makeUnstable();
    const Support::CalculationWatch watch;
    test.window.onGenerateReportClicked();
    QVERIFY(!Support::CalculationWatch::calculated());
    QCOMPARE(pageOf(test)->table()->rowCount(), 0);
    QVERIFY(pageOf(test)->certificate()->text().contains(u"SISTEMA COMPLETO APTO"_s));
    QCOMPARE(LoadLogic::MotorList.size(), 1);
}

void TestWindowReports::page_keepsItsContentUntilTheNextFill()
{
    TestWindow test;
    test.window.onGenerateReportClicked();
    test.window.onBackToDesignClicked();
    test.hangLoad(100.0F, 6.0F);
    QCOMPARE(pageOf(test)->table()->rowCount(), 3);
    test.window.onGenerateReportClicked();
    QCOMPARE(pageOf(test)->table()->rowCount(), 5);
}

void TestWindowReports::page_refreshesTheSnapshotOfTheCurrentTabOnly()
{
    TestWindow test;
    test.window.onAddTab();
    test.window.projects[0].tabName = u"otro"_s;
    test.window.onGenerateReportClicked();
    QCOMPARE(test.window.projects.at(0).tabName, u"otro"_s);
    QCOMPARE(test.window.projects.at(1).tabName, u"Proyecto 2"_s);
}

void TestWindowReports::print_writesADocumentAndADrawingForEachTab()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    print(test);

    QCOMPARE(temporary.files(u"truss_schema_*.jpg"_s),
             QStringList({u"truss_schema_0.jpg"_s, u"truss_schema_1.jpg"_s}));
    const QStringList reports = temporary.files(u"*.html"_s);
    QCOMPARE(reports.size(), 1);
    QVERIFY(QRegularExpression(u"^informe_rigging_\\d{8}_\\d{6}\\.html$"_s).match(reports.at(0)).hasMatch());
    QCOMPARE(temporary.files().size(), 3);

    const ReportDocument document(reportIn(temporary));
    QCOMPARE(document.error(), QString());
    QCOMPARE(document.images, temporary.files(u"truss_schema_*.jpg"_s));
    QVERIFY(document.results.contains(
        u"Este informe agrupa 2 proyectos independientes analizados para este evento."_s));
    for (const QString& name : temporary.files(u"*.jpg"_s)) {
        const QImage drawing(temporary.path(name));
        QCOMPARE(drawing.size(), QSize(2000, 800));
    }
}

void TestWindowReports::print_opensTheDocumentInTheBrowser()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Informe Generado"_s);
    QCOMPARE(box.text, u"Se ha generado un informe consolidado.\n\nEl archivo se ha abierto en su navegador "
                       "predeterminado."_s);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, &test.window);
    QCOMPARE(browser.urls,
             QList<QUrl>{QUrl::fromLocalFile(temporary.path(temporary.files(u"*.html"_s).at(0)))});
}

void TestWindowReports::print_leavesTheDesignAsItWas()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    makeUnstable();
    test.window.onAddTab();
    test.tabBar()->setCurrentIndex(0);
    test.addScreen();
    test.window.showMotorProperties(0);
    test.setText("screenHeight", u"2."_s);
    const QStringList before = seen(test);
    const int undoDepth = test.undoDepth();
    print(test);
    QCOMPARE(seen(test), before);
    QCOMPARE(test.undoDepth(), undoDepth);
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void TestWindowReports::print_headlineIsTheCurrentTab()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    print(test);
    QCOMPARE(ReportDocument(reportIn(temporary)).headings.at(0), u"INFORME: Proyecto 2"_s);
}

void TestWindowReports::print_withoutProjects_isOfNoName()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.projects.clear();
    test.window.currentProjectIndex = -1;
    print(test);
    const ReportDocument document(reportIn(temporary));
    QCOMPARE(document.headings.at(0), u"INFORME: Sin Nombre"_s);
    QVERIFY(document.headings.contains(u"✅ CONFIGURACIÓN GLOBAL APTA"_s));
    QCOMPARE(temporary.files().size(), 1);
}

void TestWindowReports::print_takesTitlesFromTheTabs()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    test.tabBar()->setTabText(0, u"Escenario A"_s);
    print(test);
    const ReportDocument document(reportIn(temporary));
    QVERIFY(document.headings.contains(u"PROYECTO: Escenario A"_s));
    QVERIFY(document.headings.contains(u"PROYECTO: Proyecto 2"_s));
}

void TestWindowReports::print_namesStayAsTyped()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    const QString name = u"50%1 \"A\" %9"_s;
    test.tabBar()->setTabText(0, name);
    LoadLogic::MotorList[0].modelName = name;
    LoadLogic::MotorList[1].modelName = u"<b>"_s;
    print(test);
    const QString html = reportIn(temporary);
    QVERIFY(html.contains(u"INFORME: <span style='font-size: 0.8em;'>"_s + name + u"</span>"_s));
    QVERIFY(html.contains(u"<h3>PROYECTO: "_s + name + u"</h3>"_s));
    QVERIFY(html.contains(u"<tr><td>"_s + name + u"</td><td>-6.00m</td>"_s));
    QVERIFY(html.contains(u"<tr><td><b></td><td>+6.00m</td>"_s));
}

void TestWindowReports::print_agreesWithThePage()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.hangLoad(1500.0F, 6.0F);
    LoadLogic::MotorList[0].capacity = 500.0F;
    test.window.onGenerateReportClicked();
    print(test);
    const ReportDocument document(reportIn(temporary));
    const QTableWidget* table = pageOf(test)->table();
    for (int motor = 0; motor < 2; ++motor) {
        for (int column = 0; column < 7; ++column)
            QCOMPARE(document.tables.at(0).rows.at(motor).cells.at(column),
                     table->item(1 + motor, column)->text());
    }
    QCOMPARE(table->item(1, 7)->text(), u"EXCESO ESTÁTICO ❌"_s);
    QCOMPARE(document.tables.at(0).rows.at(0).cells.at(7), u"SOBRECARGA ESTÁTICA"_s);
}

void TestWindowReports::print_drawsEveryProject()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    test.hangLoad(100.0F, 3.0F);
    print(test);

    // The second project is in the engine, and can be drawn once more.
    QByteArray expected;
    QBuffer buffer(&expected);
    QVERIFY(pageOf(test)->drawing()->renderToImage(2000, 800).save(&buffer, "JPG", 90));
    QFile second(temporary.path(u"truss_schema_1.jpg"_s));
    QVERIFY(second.open(QIODevice::ReadOnly));
    QVERIFY(second.readAll() == expected);

    const QImage first(temporary.path(u"truss_schema_0.jpg"_s));
    QVERIFY(first != QImage(second.fileName()));
    QCOMPARE(first.pixelColor(2, 2), QColor(Qt::white));
    QVERIFY(pageOf(test)->drawing()->printMode);
}

void TestWindowReports::print_replacesEarlierDrawings()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    QFile old(temporary.path(u"truss_schema_0.jpg"_s));
    QVERIFY(old.open(QIODevice::WriteOnly));
    QVERIFY(old.write("viejo") > 0);
    old.close();
    TestWindow test;
    print(test);
    QVERIFY(!QImage(temporary.path(u"truss_schema_0.jpg"_s)).isNull());
}

void TestWindowReports::print_doesNotFollowAPlantedLink()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    const QTemporaryDir elsewhere;
    const QString victim = elsewhere.filePath(u"ajeno"_s);
    QVERIFY(QFile::link(victim, temporary.path(u"truss_schema_0.jpg"_s)));
    TestWindow test;
    print(test);
    QVERIFY(!QFile::exists(victim));
    QVERIFY(!QImage(temporary.path(u"truss_schema_0.jpg"_s)).isNull());
}

void TestWindowReports::print_withoutBrowser_tellsThePath()
{
    const TemporaryDirectory temporary;
    if (QGuiApplication::platformName() != u"offscreen"_s) // which does not even look for one
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Unable to detect a launcher for "_s));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/no/such/folder");
    TestWindow test;
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    qputenv("PATH", path);
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Error de Navegador"_s);
    QCOMPARE(box.text, u"No se pudo abrir el navegador automáticamente.\n\nBusque el archivo en: "_s
                           + temporary.path(temporary.files(u"*.html"_s).at(0)));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.format, Qt::PlainText);
}

void TestWindowReports::print_intoNoFolder_isTold()
{
    if (!QFileInfo::exists(u"/proc/self"_s))
        QSKIP("No folder here that refuses files from everybody");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/proc");
    const Browser browser;
    TestWindow test;
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    qputenv("TMPDIR", before);
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Error de Escritura"_s);
    QVERIFY(box.text.startsWith(u"No se pudo crear el archivo del informe en:\n/proc/informe_rigging_"_s));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(browser.urls.isEmpty());
}

void TestWindowReports::unsavableDrawing_isNotReported()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    QVERIFY(QDir().mkdir(temporary.path(u"truss_schema_0.jpg"_s)));
    TestWindow test;
    print(test);
    QCOMPARE(ReportDocument(reportIn(temporary)).images, QStringList(u"truss_schema_0.jpg"_s));
}

void TestWindowReports::longReport_canBeCancelledWithoutATrace()
{
    const TemporaryDirectory temporary;
    const Browser browser;
    TestWindow test;
    test.hangLoad(100.0F, 3.0F);
    while (test.window.projects.size() < 1000) { // far more than two seconds' worth
        test.window.projects.append(test.window.captureCurrentState());
        test.window.projects.last().trussLength = 30.0F;
    }
    const QStringList before = seen(test);
    const Cancellation cancel;
    QElapsedTimer clock;
    clock.start();
    test.window.onPrintReportClicked();

    QVERIFY(cancel.given());
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(cancel.label, u"Preparando el informe de los proyectos…"_s);
    QCOMPARE(temporary.files(), QStringList());
    QVERIFY(browser.urls.isEmpty());
    QCOMPARE(seen(test), before);
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void TestWindowReports::longPage_canBeCancelledWithoutATrace()
{
    TestWindow test;
    test.hangLoad(100.0F, 3.0F);
    test.window.onGenerateReportClicked();
    QVERIFY(pageOf(test)->table()->rowCount() > 0);
    test.window.onBackToDesignClicked();

    const LoadLogic::ProjectState large = largeProject();
    while (test.window.projects.size() < 40) // far more than two seconds' worth
        test.window.projects.append(large);
    const QStringList before = seen(test);
    const Cancellation cancel;
    QElapsedTimer clock;
    clock.start();
    test.window.onGenerateReportClicked();

    QVERIFY(cancel.given());
    QVERIFY(clock.elapsed() >= 2000);
    QCOMPARE(cancel.label, u"Preparando el informe de los proyectos…"_s);
    QCOMPARE(currentPage(test), 0);
    QCOMPARE(pageOf(test)->table()->rowCount(), 0); // half a report would be taken for a whole one
    QCOMPARE(seen(test), before);
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

QTEST_MAIN(TestWindowReports)
#include "tst_windowreports.moc"
