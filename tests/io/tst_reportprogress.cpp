#include "io/ReportProgress.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

constexpr int PATIENCE = 2000; // [ms]

QProgressDialog* dialogOf(const QWidget& window)
{
    return window.findChild<QProgressDialog*>();
}

} // namespace

class TestReportProgress : public QObject
{
    Q_OBJECT

private slots:
    void quickReport_showsNoDialog();
    void slowReport_showsHowFarItIs();
    void cursor_isBusyMeanwhile();
};

void TestReportProgress::quickReport_showsNoDialog()
{
    QWidget window;
    ReportProgress progress(&window, 2);
    QVERIFY(progress.advance(1));
    QVERIFY(progress.advance(2));
    QVERIFY(dialogOf(window) == nullptr);
}

void TestReportProgress::slowReport_showsHowFarItIs()
{
    QWidget window;
    QWidget otherWindow;
    window.show();
    ReportProgress progress(&window, 4);
    ReportProgress ending(&otherWindow, 4);
    QTest::qWait(PATIENCE + 50);

    // There is nothing left to wait for, or to cancel.
    QVERIFY(ending.advance(4));
    QVERIFY(dialogOf(otherWindow) == nullptr);

    QVERIFY(progress.advance(1));
    const QProgressDialog* dialog = dialogOf(window);
    QVERIFY(dialog != nullptr);
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->windowTitle(), u"Generando Informe"_s);
    QCOMPARE(dialog->labelText(), u"Preparando el informe de los proyectos…"_s);
    QCOMPARE(dialog->windowModality(), Qt::WindowModal);
    QCOMPARE(dialog->minimum(), 0);
    QCOMPARE(dialog->maximum(), 4);
    QCOMPARE(dialog->value(), 1);
    QCOMPARE(dialog->minimumDuration(), 0); // there at the first value, not some time after it

    QVERIFY(progress.advance(2));
    QCOMPARE(dialog->value(), 2);
    dialog->findChild<QPushButton*>()->click();
    QVERIFY(!progress.advance(3));
}

void TestReportProgress::cursor_isBusyMeanwhile()
{
    QWidget window;
    {
        const ReportProgress progress(&window, 1);
        QVERIFY(QGuiApplication::overrideCursor() != nullptr);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::BusyCursor);
    }
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

QTEST_MAIN(TestReportProgress)
#include "tst_reportprogress.moc"
